// Random streams: 1e7 uniform doubles and 1e7 standard normal numbers per
// basic generator, against std::mt19937_64 with the 53-bit conversion (and
// std::normal_distribution on it) run in the same process, and against the
// numpy figures of the shared performance anchors (measured elsewhere: a
// ratio to them is indicative only).
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

using namespace rovane;

namespace {

constexpr int64_t kN = 10'000'000;
// The anchors' figures, ns per number on their machine: mt19937_64 with the
// 53-bit conversion for uniforms, numpy default_rng (ziggurat) for normals.
constexpr double kAnchorUniformNs = 1.82, kNumpyNormalNs = 9.4;

std::vector<double>& Buffer() {
    static std::vector<double> b(static_cast<size_t>(kN));
    return b;
}

void Finish(benchmark::State& st) { st.SetItemsProcessed(int64_t(st.iterations()) * kN); }

void BM_Uniform(benchmark::State& st, TBasicRandomGenerator g) {
    TRngStream s;
    s.NewStream(RngCode(g), 1);
    double* d = Buffer().data();
    for (auto _ : st) {
        s.RandomUniform(d, kN, 0.0, 1.0);
        benchmark::DoNotOptimize(d);
        benchmark::ClobberMemory();
    }
    Finish(st);
}

void BM_Normal(benchmark::State& st, TBasicRandomGenerator g, TGaussRandMethod m) {
    TRngStream s;
    s.NewStream(RngCode(g), 1);
    double* d = Buffer().data();
    for (auto _ : st) {
        s.RandomGaussian(d, kN, 0.0, 1.0, m);
        benchmark::DoNotOptimize(d);
        benchmark::ClobberMemory();
    }
    Finish(st);
}

void BM_StdUniform(benchmark::State& st) {
    std::mt19937_64 g(1);
    double* d = Buffer().data();
    for (auto _ : st) {
        for (int64_t i = 0; i < kN; ++i) d[i] = double(g() >> 11) * 0x1p-53;
        benchmark::DoNotOptimize(d);
        benchmark::ClobberMemory();
    }
    Finish(st);
}

void BM_StdNormal(benchmark::State& st) {
    std::mt19937_64 g(1);
    std::normal_distribution<double> nd;
    double* d = Buffer().data();
    for (auto _ : st) {
        for (int64_t i = 0; i < kN; ++i) d[i] = nd(g);
        benchmark::DoNotOptimize(d);
        benchmark::ClobberMemory();
    }
    Finish(st);
}

// Keeps ns per number of every run for the ratio table.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    std::map<std::string, double> ns;
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& r : runs)
            if (r.run_type == Run::RT_Iteration)
                // CPU time: on a shared machine, wall time counts other programs' turns.
                ns[r.benchmark_name()] = r.GetAdjustedCPUTime() * 1e6 / double(kN);  // reported in ms
        ConsoleReporter::ReportRuns(runs);
    }
};

}  // namespace

#define ROVANE_KINDS(X) X(MT19937) X(SFMT19937) X(MRG32K3A) X(PHILOX4X32X10) X(ARS5) X(MCG59)
#define ROVANE_U(K) BENCHMARK_CAPTURE(BM_Uniform, K, rg##K)->Unit(benchmark::kMillisecond);
#define ROVANE_G(K) BENCHMARK_CAPTURE(BM_Normal, K, rg##K, grmBoxMuller2)->Unit(benchmark::kMillisecond);
ROVANE_KINDS(ROVANE_U)
ROVANE_KINDS(ROVANE_G)
BENCHMARK_CAPTURE(BM_Normal, PHILOX4X32X10_ICDF, rgPHILOX4X32X10, grmICDF)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdUniform)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdNormal)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter rep;
    benchmark::RunSpecifiedBenchmarks(&rep);
    const double stdU = rep.ns["BM_StdUniform"], stdN = rep.ns["BM_StdNormal"];
    std::printf("\nCPU ns per number, and ratio Rovane / peer (below 1: Rovane faster)\n");
    std::printf("%-22s %8s %10s %10s %8s %10s %10s\n", "generator", "uniform", "/mt19937_64", "/anchor*", "normal",
                "/std", "/numpy*");
    for (const char* k : {"MT19937", "SFMT19937", "MRG32K3A", "PHILOX4X32X10", "ARS5", "MCG59"}) {
        const double u = rep.ns[std::string("BM_Uniform/") + k], g = rep.ns[std::string("BM_Normal/") + k];
        if (u <= 0) continue;
        std::printf("%-22s %8.3f %10.2f %10.2f %8.3f %10.2f %10.2f\n", k, u, u / stdU, u / kAnchorUniformNs, g, g / stdN,
                    g / kNumpyNormalNs);
    }
    const double icdf = rep.ns["BM_Normal/PHILOX4X32X10_ICDF"];
    if (icdf > 0) std::printf("%-22s %8s %10s %10s %8.3f %10.2f %10.2f\n", "PHILOX (ICDF normals)", "", "", "", icdf, icdf / stdN, icdf / kNumpyNormalNs);
    std::printf("peers in this run: mt19937_64 + 53-bit %.3f ns, std::normal_distribution %.3f ns\n", stdU, stdN);
    std::printf("* anchor figures (mt19937_64 %.2f ns, numpy normal %.2f ns) come from the anchor machine, not this run\n",
                kAnchorUniformNs, kNumpyNormalNs);
    benchmark::Shutdown();
    return 0;
}
