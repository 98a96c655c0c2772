// Expj against its definition, SinCos then RealToCplx, on the same angles:
// the two should take about the same time (Expj is that composition, chunked).
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

using namespace rovane;

namespace {

void Angles(TVec& v, int32_t n, bool isDouble) {
    v.Size(n, false, isDouble);
    for (int32_t i = 0; i < n; ++i) v[i] = 0.001 * i - 300.0;
}

// range(0): length, range(1): 1 for double, 0 for single.
void BM_Expj(benchmark::State& state) {
    TVec omega, z;
    Angles(omega, static_cast<int32_t>(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        z.Expj(omega);
        benchmark::DoNotOptimize(z.ValuesPointer);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_SinCosThenRealToCplx(benchmark::State& state) {
    TVec omega, s, c, z;
    Angles(omega, static_cast<int32_t>(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        omega.SinCos(s, c);
        z.RealToCplx(c, s);
        benchmark::DoNotOptimize(z.ValuesPointer);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

const std::vector<std::vector<int64_t>> kArgs = {{1000, 1000000}, {1, 0}};
BENCHMARK(BM_Expj)->ArgsProduct(kArgs)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SinCosThenRealToCplx)->ArgsProduct(kArgs)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
