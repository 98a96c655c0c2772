// Parallel loop: the start-to-finish cost of an empty job on the workers
// against creating and joining std::threads and against an OpenMP parallel
// for; the cost of one index in greedy mode; and a block-wise TVec::Sin on
// the workers against the single-threaded call. Closes with a table of
// ratios.
#include <benchmark/benchmark.h>
#include <omp.h>
#include <rovane/Rovane.h>

#include <atomic>
#include <cstdio>
#include <map>
#include <string>
#include <thread>
#include <vector>

using namespace rovane;

namespace {

int32_t Workers() { return std::max(1, static_cast<int32_t>(std::thread::hardware_concurrency())); }

TMtxForLoop& Loop() {
    static TMtxForLoop loop;
    static const bool sized = (loop.SetThreadCount(Workers()), true);
    (void)sized;
    return loop;
}

// ---- start to finish of an empty job, one index per worker ----------------
void BM_Start_DoForLoop(benchmark::State& state) {
    TMtxForLoop& loop = Loop();
    const int32_t n = Workers();
    for (auto _ : state) DoForLoop(0, n - 1, [](int32_t, int32_t, TLoopContext, int32_t) {}, &loop);
}
BENCHMARK(BM_Start_DoForLoop)->UseRealTime();

void BM_Start_StdThreads(benchmark::State& state) {
    const int32_t n = Workers();
    std::vector<std::thread> threads;
    threads.reserve(static_cast<size_t>(n));
    for (auto _ : state) {
        for (int32_t i = 0; i < n; ++i) threads.emplace_back([] {});
        for (auto& t : threads) t.join();
        threads.clear();
    }
}
BENCHMARK(BM_Start_StdThreads)->UseRealTime();

void BM_Start_OpenMP(benchmark::State& state) {
    const int32_t n = Workers();
    std::atomic<int> sink{0};
    for (auto _ : state) {
#pragma omp parallel for num_threads(n) schedule(static)
        for (int32_t i = 0; i < n; ++i) sink.fetch_add(0, std::memory_order_relaxed);
    }
}
BENCHMARK(BM_Start_OpenMP)->UseRealTime();

// ---- cost per index -----------------------------------------------------------
constexpr int32_t kIndexes = 200000;

void BM_PerIndex_Greedy(benchmark::State& state) {
    TMtxForLoop& loop = Loop();
    for (auto _ : state)
        DoForLoop(0, kIndexes - 1, [](int32_t i, TLoopContext, int32_t) { benchmark::DoNotOptimize(i); }, &loop);
    state.SetItemsProcessed(state.iterations() * kIndexes);
}
BENCHMARK(BM_PerIndex_Greedy)->UseRealTime();

void BM_PerIndex_Range(benchmark::State& state) {
    TMtxForLoop& loop = Loop();
    for (auto _ : state)
        DoForLoop(
            0, kIndexes - 1,
            [](int32_t lo, int32_t hi, TLoopContext, int32_t) {
                for (int32_t i = lo; i <= hi; ++i) benchmark::DoNotOptimize(i);
            },
            &loop);
    state.SetItemsProcessed(state.iterations() * kIndexes);
}
BENCHMARK(BM_PerIndex_Range)->UseRealTime();

// ---- a memory-light body: Sin over blocks of a long vector ------------------------
constexpr int32_t kLength = 10000000;
constexpr int32_t kBlock = 65536;

struct SinData {
    TVec x, y;
    SinData() {
        x.Size(kLength);
        for (int32_t i = 0; i < kLength; ++i) x.Values[i] = 1e-6 * i;
        y.Size(kLength);
    }
};
SinData& Data() {
    static SinData data;
    return data;
}

void BM_Sin_Serial(benchmark::State& state) {
    SinData& d = Data();
    for (auto _ : state) {
        d.y.Sin(d.x, 0, 0, kLength);
        benchmark::DoNotOptimize(d.y.Values);
    }
    state.SetItemsProcessed(state.iterations() * kLength);
}
BENCHMARK(BM_Sin_Serial)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_Sin_Loop(benchmark::State& state) {
    SinData& d = Data();
    TMtxForLoop& loop = Loop();
    constexpr int32_t blocks = (kLength + kBlock - 1) / kBlock;
    for (auto _ : state) {
        DoForLoop(
            0, blocks - 1,
            [&](int32_t b, TLoopContext, int32_t) {
                const int32_t at = b * kBlock;
                d.y.Sin(d.x, at, at, std::min(kBlock, kLength - at));
            },
            &loop);
        benchmark::DoNotOptimize(d.y.Values);
    }
    state.SetItemsProcessed(state.iterations() * kLength);
}
BENCHMARK(BM_Sin_Loop)->UseRealTime()->Unit(benchmark::kMillisecond);

// Console output, then the ratios.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            const bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (r.run_type != Run::RT_Iteration && !median) continue;
            std::string name = r.run_name.function_name;
            if (median || !fMedian.count(name)) fTime[name] = r.GetAdjustedRealTime() * Scale(r.time_unit);
            if (median) fMedian[name] = true;
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        auto t = [&](const char* name) { return fTime.count(name) ? fTime.at(name) : 0.0; };
        auto ratio = [&](double a, double b) { return b > 0 ? a / b : 0.0; };
        std::printf("\n%d workers; the machine may be shared with other work: read the ratios as rough.\n",
                    Workers());
        std::printf("Empty job, start to finish (ns): loop %.0f, std::thread create+join %.0f, OpenMP %.0f\n",
                    t("BM_Start_DoForLoop"), t("BM_Start_StdThreads"), t("BM_Start_OpenMP"));
        std::printf("  std::thread / loop = %.2f   OpenMP / loop = %.2f\n",
                    ratio(t("BM_Start_StdThreads"), t("BM_Start_DoForLoop")),
                    ratio(t("BM_Start_OpenMP"), t("BM_Start_DoForLoop")));
        const double greedy = t("BM_PerIndex_Greedy") / kIndexes, range = t("BM_PerIndex_Range") / kIndexes;
        std::printf("Per index (ns): greedy %.2f, ranges %.3f; greedy / ranges = %.1f\n", greedy, range,
                    ratio(greedy, range));
        std::printf("Sin over %d doubles (ms): single thread %.2f, loop %.2f; speed-up %.2f\n", kLength,
                    t("BM_Sin_Serial") * 1e-6, t("BM_Sin_Loop") * 1e-6, ratio(t("BM_Sin_Serial"), t("BM_Sin_Loop")));
    }

private:
    static double Scale(benchmark::TimeUnit unit) {
        switch (unit) {
            case benchmark::kSecond: return 1e9;
            case benchmark::kMillisecond: return 1e6;
            case benchmark::kMicrosecond: return 1e3;
            default: return 1;
        }
    }
    std::map<std::string, double> fTime;
    std::map<std::string, bool> fMedian;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
