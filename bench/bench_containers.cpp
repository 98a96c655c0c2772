// Containers: a cached temporary against the heap, and Add through the
// operation frame against a plain loop and Eigen on the same data.
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

#include <Eigen/Core>
#include <thread>
#include <vector>

using namespace rovane;

namespace {

// Runs the benchmark loop on a thread that owns a pool of its own.
template <class Body>
void OnMarkedThread(benchmark::State& state, Body body) {
    std::thread worker([&] {
        Controller->MarkThread();
        body(state);
        Controller->UnMarkThread();
    });
    worker.join();
}

void BM_CacheTemporary(benchmark::State& state) {
    OnMarkedThread(state, [](benchmark::State& s) {
        for (auto _ : s) {
            TVec* v = nullptr;
            CreateIt(v);
            v->Size(1000);
            benchmark::DoNotOptimize(v->Values);
            FreeIt(v);
        }
    });
}
BENCHMARK(BM_CacheTemporary)->UseRealTime();

void BM_HeapTVec(benchmark::State& state) {
    for (auto _ : state) {
        auto* v = new TVec();
        v->Size(1000);
        benchmark::DoNotOptimize(v->Values);
        delete v;
    }
}
BENCHMARK(BM_HeapTVec)->UseRealTime();

void BM_StdVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<double> v(1000);
        benchmark::DoNotOptimize(v.data());
    }
}
BENCHMARK(BM_StdVector)->UseRealTime();

void BM_AddRovane(benchmark::State& state) {
    const auto n = static_cast<int32_t>(state.range(0));
    TVec a, b, c;
    a.Size(n);
    b.Size(n);
    a.SetVal(1.5);
    b.SetVal(2.5);
    for (auto _ : state) {
        c.Add(a, b);
        benchmark::DoNotOptimize(c.Values);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_AddRovane)->Arg(1000)->Arg(1000000);

void BM_AddPlainLoop(benchmark::State& state) {
    const auto n = static_cast<size_t>(state.range(0));
    std::vector<double> a(n, 1.5), b(n, 2.5), c(n);
    for (auto _ : state) {
        for (size_t i = 0; i < n; ++i) c[i] = a[i] + b[i];
        benchmark::DoNotOptimize(c.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(n));
}
BENCHMARK(BM_AddPlainLoop)->Arg(1000)->Arg(1000000);

void BM_AddEigen(benchmark::State& state) {
    const auto n = state.range(0);
    Eigen::VectorXd a = Eigen::VectorXd::Constant(n, 1.5), b = Eigen::VectorXd::Constant(n, 2.5), c(n);
    for (auto _ : state) {
        c.noalias() = a + b;
        benchmark::DoNotOptimize(c.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_AddEigen)->Arg(1000)->Arg(1000000);

}  // namespace

// The cost of one call at n = 8: checks, sizing, the overlap test and the
// dispatch, with next to no elements to hide them.
void BM_PerCallSin(benchmark::State& state) {
    const bool complex = state.range(0) != 0;
    TVec x, d;
    x.Size(8, complex);
    x.SetVal(0.5);
    for (auto _ : state) {
        d.Sin(x);
        benchmark::DoNotOptimize(d.Values);
    }
}
BENCHMARK(BM_PerCallSin)->ArgName("complex")->Arg(0)->Arg(1);

void BM_PerCallAbs(benchmark::State& state) {
    TVec x, d;
    x.Size(8, true);
    x.SetVal(0.5);
    for (auto _ : state) {
        d.Abs(x);
        benchmark::DoNotOptimize(d.Values);
    }
}
BENCHMARK(BM_PerCallAbs);

void BM_PerCallAdd(benchmark::State& state) {
    TVec a, b;
    a.Size(8);
    b.Size(8);
    a.SetVal(1);
    b.SetVal(2);
    for (auto _ : state) {
        a.Add(b);
        benchmark::DoNotOptimize(a.Values);
    }
}
BENCHMARK(BM_PerCallAdd);

BENCHMARK_MAIN();
