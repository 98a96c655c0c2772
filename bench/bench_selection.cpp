// Selection and integer containers on 1e6 elements, each case beside a plain
// loop (or the standard sorts) in the same run; the ratios Rovane / peer are
// printed at the end (below 1: Rovane is faster).
//   FindIndexes with "<" against a scalar      vs a plain loop
//   GatherByMask (count -1 and count given)    vs a plain loop
//   SortAscend of random doubles, no index     vs std::sort
//   SortAscend with the index vector           vs std::sort and std::stable_sort of (value, index) pairs
//   int16 saturated Add                        vs a plain loop
// The sort cases copy the unsorted data in first, on both sides.
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace rovane;

namespace {

constexpr int32_t kN = 1000000;

const std::vector<double>& Data() {
    static const std::vector<double> d = [] {
        std::mt19937_64 g(42);
        std::uniform_real_distribution<double> u(0, 1);
        std::vector<double> v(kN);
        for (auto& x : v) x = u(g);
        return v;
    }();
    return d;
}

const std::vector<int32_t>& Mask() {
    static const std::vector<int32_t> m = [] {
        std::mt19937 g(7);
        std::vector<int32_t> v(kN);
        for (auto& x : v) x = int32_t(g() & 1);
        return v;
    }();
    return m;
}

void Load(TVec& v) { v.CopyFromArray(std::span<const double>(Data())); }

// ---- FindIndexes ----
void BM_FindIndexes_Rovane(benchmark::State& s) {
    TVec a;
    Load(a);
    TVecInt ix;
    for (auto _ : s) {
        FindIndexes(ix, a, "<", 0.5);
        benchmark::DoNotOptimize(ix.IValues);
    }
}
void BM_FindIndexes_Loop(benchmark::State& s) {
    const double* a = Data().data();
    std::vector<int32_t> ix(kN);
    for (auto _ : s) {
        int32_t k = 0;
        for (int32_t i = 0; i < kN; ++i)
            if (!(a[i] >= 0.5)) ix[k++] = i;  // the same relation: unordered counts as a match
        benchmark::DoNotOptimize(ix.data());
        benchmark::DoNotOptimize(k);
    }
}

// ---- GatherByMask ----
void BM_GatherByMask_Rovane(benchmark::State& s) {
    TVec x, d;
    Load(x);
    TVecInt m;
    m.SetIt(std::span<const int32_t>(Mask()));
    for (auto _ : s) {
        d.GatherByMask(x, &m);
        benchmark::DoNotOptimize(d.Values);
    }
}
void BM_GatherByMaskCounted_Rovane(benchmark::State& s) {
    TVec x, d;
    Load(x);
    TVecInt m;
    m.SetIt(std::span<const int32_t>(Mask()));
    const int64_t count = m.Sum();
    for (auto _ : s) {
        d.GatherByMask(x, &m, int32_t(count));
        benchmark::DoNotOptimize(d.Values);
    }
}
void BM_GatherByMask_Loop(benchmark::State& s) {
    const double* x = Data().data();
    const int32_t* m = Mask().data();
    std::vector<double> d(kN);
    for (auto _ : s) {
        int32_t k = 0;
        for (int32_t i = 0; i < kN; ++i)
            if (m[i] > 0) d[k++] = x[i];
        benchmark::DoNotOptimize(d.data());
        benchmark::DoNotOptimize(k);
    }
}

// ---- sorts ----
void BM_Sort_Rovane(benchmark::State& s) {
    TVec v;
    Load(v);
    for (auto _ : s) {
        v.CopyFromArray(std::span<const double>(Data()));
        v.SortAscend();
        benchmark::DoNotOptimize(v.Values);
    }
}
void BM_Sort_Std(benchmark::State& s) {
    std::vector<double> v(kN);
    for (auto _ : s) {
        std::copy(Data().begin(), Data().end(), v.begin());
        std::sort(v.begin(), v.end());
        benchmark::DoNotOptimize(v.data());
    }
}
void BM_SortIndex_Rovane(benchmark::State& s) {
    TVec v;
    Load(v);
    TVecInt ix;
    for (auto _ : s) {
        v.CopyFromArray(std::span<const double>(Data()));
        v.SortAscend(&ix);
        benchmark::DoNotOptimize(ix.IValues);
    }
}
template <bool Stable>
void SortPairs(benchmark::State& s) {
    std::vector<std::pair<double, int32_t>> p(kN);
    for (auto _ : s) {
        for (int32_t i = 0; i < kN; ++i) p[i] = {Data()[i], i};
        auto less = [](const auto& a, const auto& b) { return a.first < b.first; };
        if (Stable)
            std::stable_sort(p.begin(), p.end(), less);
        else
            std::sort(p.begin(), p.end(), less);
        benchmark::DoNotOptimize(p.data());
    }
}
void BM_SortIndex_StdSortPairs(benchmark::State& s) { SortPairs<false>(s); }
void BM_SortIndex_StdStableSortPairs(benchmark::State& s) { SortPairs<true>(s); }

// ---- int16 saturated add ----
std::vector<int32_t> Int16Data(unsigned seed) {
    std::mt19937 g(seed);
    std::vector<int32_t> v(kN);
    for (auto& x : v) x = int32_t(g() % 65536) - 32768;
    return v;
}
void BM_AddInt16_Rovane(benchmark::State& s) {
    TVecInt a, b, c;
    a.Size(0, prInt16);
    b.Size(0, prInt16);
    a.SetIt(Int16Data(1));
    b.SetIt(Int16Data(2));
    c.Size(kN, prInt16);
    for (auto _ : s) {
        c.Add(a, b);
        benchmark::DoNotOptimize(c.SIValues);
    }
}
void BM_AddInt16_Loop(benchmark::State& s) {
    std::vector<int16_t> a(kN), b(kN), c(kN);
    auto x = Int16Data(1), y = Int16Data(2);
    for (int32_t i = 0; i < kN; ++i) a[i] = int16_t(x[i]), b[i] = int16_t(y[i]);
    for (auto _ : s) {
        for (int32_t i = 0; i < kN; ++i) {
            const int v = int(a[i]) + b[i];
            c[i] = int16_t(v > 32767 ? 32767 : v < -32768 ? -32768 : v);
        }
        benchmark::DoNotOptimize(c.data());
    }
}

// Keeps the fastest real time per case, for the ratio table.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& r : runs) {
            // Each repetition, or the median when only aggregates are reported.
            const bool rep = r.run_type == Run::RT_Iteration && r.iterations > 0;
            if (!rep && !(r.run_type == Run::RT_Aggregate && r.aggregate_name == "median")) continue;
            const double t = r.GetAdjustedRealTime();
            auto& best = fBest[r.run_name.function_name];
            if (best == 0 || t < best) best = t;
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void PrintRatios() const {
        const std::pair<const char*, const char*> pairs[] = {
            {"BM_FindIndexes_Rovane", "BM_FindIndexes_Loop"},
            {"BM_GatherByMask_Rovane", "BM_GatherByMask_Loop"},
            {"BM_GatherByMaskCounted_Rovane", "BM_GatherByMask_Loop"},
            {"BM_Sort_Rovane", "BM_Sort_Std"},
            {"BM_SortIndex_Rovane", "BM_SortIndex_StdSortPairs"},
            {"BM_SortIndex_Rovane", "BM_SortIndex_StdStableSortPairs"},
            {"BM_AddInt16_Rovane", "BM_AddInt16_Loop"},
        };
        std::printf("\nRatios on %s (Rovane / peer, best real time; below 1: Rovane faster)\n",
                    PrimitiveIsaName(PrimitiveIsa()));
        for (auto [a, b] : pairs) {
            auto ia = fBest.find(a), ib = fBest.find(b);
            if (ia == fBest.end() || ib == fBest.end()) continue;
            std::printf("  %-32s / %-34s %7.3f  (%.3f / %.3f ms)\n", a, b, ia->second / ib->second, ia->second, ib->second);
        }
    }

private:
    std::map<std::string, double> fBest;
};

}  // namespace

BENCHMARK(BM_FindIndexes_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_FindIndexes_Loop)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_GatherByMask_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_GatherByMaskCounted_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_GatherByMask_Loop)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_Sort_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_Sort_Std)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_SortIndex_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_SortIndex_StdSortPairs)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_SortIndex_StdStableSortPairs)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_AddInt16_Rovane)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_AddInt16_Loop)->Unit(benchmark::kMillisecond)->Repetitions(5);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    benchmark::Shutdown();
    return 0;
}
