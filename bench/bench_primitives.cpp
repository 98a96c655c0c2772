// Primitive layer against SLEEF called directly (AVX2, the widest set this
// program is built for), a plain std:: loop and Eigen, at 1e3 and 1e6
// elements. The summary at the end prints each competitor's time over the
// library's time (above 1: the library is faster).
#include <benchmark/benchmark.h>
#include <immintrin.h>
#include <sleef.h>

#include <Eigen/Core>
#include <cmath>
#include <complex>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "rovane/Rovane.h"

using namespace rovane;

namespace {

template <class F>
std::vector<F> Data(size_t n, double lo, double hi) {
    std::mt19937_64 g(42);
    std::uniform_real_distribution<double> u(lo, hi);
    std::vector<F> v(n);
    for (auto& x : v) x = static_cast<F>(u(g));
    return v;
}

// Applies a 4-wide (double) or 8-wide (float) SLEEF routine over an array.
template <class F, class Fn>
void SleefLoop(const F* x, F* d, size_t n, Fn fn) {
    constexpr size_t W = 32 / sizeof(F);
    size_t i = 0;
    for (; i + W <= n; i += W) {
        if constexpr (sizeof(F) == 8) _mm256_storeu_pd(d + i, fn(_mm256_loadu_pd(x + i)));
        else _mm256_storeu_ps(d + i, fn(_mm256_loadu_ps(x + i)));
    }
    for (; i < n; ++i) d[i] = x[i];
}

enum Impl { kRovane, kSleef, kStd, kEigen };
const char* kImplName[] = {"rovane", "sleef", "std", "eigen"};

#define ROVANE_BENCH_MATH(NAME, LO, HI, PRIM64, PRIM32, SLEEF64, SLEEF32, STDF, EIGENF)                        \
    template <class F>                                                                                        \
    void BM_##NAME(benchmark::State& st) {                                                                    \
        const size_t n = static_cast<size_t>(st.range(0));                                                    \
        const Impl impl = static_cast<Impl>(st.range(1));                                                     \
        const auto x = Data<F>(n, LO, HI);                                                                    \
        std::vector<F> d(n);                                                                                  \
        Eigen::Map<const Eigen::Array<F, Eigen::Dynamic, 1>> ex(x.data(), n);                                  \
        Eigen::Map<Eigen::Array<F, Eigen::Dynamic, 1>> ed(d.data(), n);                                        \
        for (auto _ : st) {                                                                                   \
            switch (impl) {                                                                                   \
                case kRovane:                                                                                 \
                    if constexpr (sizeof(F) == 8) PRIM64; else PRIM32;                                        \
                    break;                                                                                    \
                case kSleef:                                                                                  \
                    if constexpr (sizeof(F) == 8) SleefLoop(x.data(), d.data(), n, [](auto v) { return SLEEF64; }); \
                    else SleefLoop(x.data(), d.data(), n, [](auto v) { return SLEEF32; });                    \
                    break;                                                                                    \
                case kStd:                                                                                    \
                    for (size_t i = 0; i < n; ++i) d[i] = STDF;                                               \
                    break;                                                                                    \
                case kEigen: ed = EIGENF; break;                                                              \
            }                                                                                                 \
            benchmark::DoNotOptimize(d.data());                                                               \
            benchmark::ClobberMemory();                                                                       \
        }                                                                                                     \
        st.SetLabel(kImplName[impl]);                                                                         \
        st.SetItemsProcessed(st.iterations() * static_cast<int64_t>(n));                                      \
    }

#define N_ static_cast<int32_t>(n)
ROVANE_BENCH_MATH(Sin, -10, 10, ippsSin_64f_A53_Idx(x.data(), 0, d.data(), 0, N_), sippsSin_32f_A24_Idx(x.data(), 0, d.data(), 0, N_),
                  Sleef_sind4_u10avx2(v), Sleef_sinf8_u10avx2(v), std::sin(x[i]), ex.sin())
ROVANE_BENCH_MATH(Cos, -10, 10, ippsCos_64f_A53_Idx(x.data(), 0, d.data(), 0, N_), sippsCos_32f_A24_Idx(x.data(), 0, d.data(), 0, N_),
                  Sleef_cosd4_u10avx2(v), Sleef_cosf8_u10avx2(v), std::cos(x[i]), ex.cos())
ROVANE_BENCH_MATH(Exp, -50, 50, ippsExp_64f_A53_Idx(x.data(), 0, d.data(), 0, N_), sippsExp_32f_A24_Idx(x.data(), 0, d.data(), 0, N_),
                  Sleef_expd4_u10avx2(v), Sleef_expf8_u10avx2(v), std::exp(x[i]), ex.exp())
ROVANE_BENCH_MATH(Ln, 1e-3, 1e3, ippsLn_64f_A53_Idx(x.data(), 0, d.data(), 0, N_), sippsLn_32f_A24_Idx(x.data(), 0, d.data(), 0, N_),
                  Sleef_logd4_u10avx2(v), Sleef_logf8_u10avx2(v), std::log(x[i]), ex.log())
ROVANE_BENCH_MATH(Sqrt, 0, 1e3, ippsSqrt_64f_A53_Idx(x.data(), 0, d.data(), 0, N_), sippsSqrt_32f_A24_Idx(x.data(), 0, d.data(), 0, N_),
                  Sleef_sqrtd4_u05avx2(v), Sleef_sqrtf8_u05avx2(v), std::sqrt(x[i]), ex.sqrt())
ROVANE_BENCH_MATH(Power, 0.1, 10, ippsPowx_64f_A53_Idx(x.data(), 0, 2.7, d.data(), 0, N_), sippsPowx_32f_A24_Idx(x.data(), 0, 2.7f, d.data(), 0, N_),
                  Sleef_powd4_u10avx2(v, _mm256_set1_pd(2.7)), Sleef_powf8_u10avx2(v, _mm256_set1_ps(2.7f)), std::pow(x[i], F(2.7)), ex.pow(F(2.7)))

// Arithmetic: d = x + y, d = x * y, y += a * x.
enum ArithOp { kAdd, kMul, kAxpy, kCMul, kCExp };
const char* kArithName[] = {"Add", "Mul", "AddScaled", "CplxMul", "CplxExp"};

void BM_Arith(benchmark::State& st) {
    const size_t n = static_cast<size_t>(st.range(0));
    const Impl impl = static_cast<Impl>(st.range(1));
    const ArithOp op = static_cast<ArithOp>(st.range(2));
    const bool cplx = op >= kCMul;
    const size_t m = cplx ? 2 * n : n;
    const auto x = Data<double>(m, -2, 2), y = Data<double>(m, -2, 2);
    std::vector<double> d(m);
    const auto* xc = reinterpret_cast<const TCplx*>(x.data());
    const auto* yc = reinterpret_cast<const TCplx*>(y.data());
    auto* dc = reinterpret_cast<TCplx*>(d.data());
    const auto* xs = reinterpret_cast<const std::complex<double>*>(x.data());
    const auto* ys = reinterpret_cast<const std::complex<double>*>(y.data());
    auto* ds = reinterpret_cast<std::complex<double>*>(d.data());
    using EA = Eigen::Array<double, Eigen::Dynamic, 1>;
    using EC = Eigen::Array<std::complex<double>, Eigen::Dynamic, 1>;
    Eigen::Map<const EA> ex(x.data(), n), ey(y.data(), n);
    Eigen::Map<EA> ed(d.data(), n);
    Eigen::Map<const EC> ecx(xs, n), ecy(ys, n);
    Eigen::Map<EC> ecd(ds, n);
    const int32_t len = static_cast<int32_t>(n);
    TVec vx, vd;
    if (op == kCExp) {
        vx.Size(len, true);
        vx.CopyFromArray(std::span<const TCplx>(xc, n));
    } else if (op == kAxpy) {
        vx.Size(len);
        vx.CopyFromArray(std::span<const double>(x.data(), n));
        vd.Size(len);
        vd.SetZero();
    }
    const double a = 1.25;
    for (auto _ : st) {
        switch (op) {
            case kAdd:
                if (impl == kRovane) ippsAdd_64f_Idx(x.data(), 0, y.data(), 0, d.data(), 0, len);
                else if (impl == kStd) for (size_t i = 0; i < n; ++i) d[i] = x[i] + y[i];
                else ed = ex + ey;
                break;
            case kMul:
                if (impl == kRovane) ippsMul_64f_Idx(x.data(), 0, y.data(), 0, d.data(), 0, len);
                else if (impl == kStd) for (size_t i = 0; i < n; ++i) d[i] = x[i] * y[i];
                else ed = ex * ey;
                break;
            case kAxpy:
                // The container's AddScaled (BLAS axpy).
                if (impl == kRovane) {
                    vd.AddScaled(vx, a);
                    benchmark::DoNotOptimize(vd.Values);
                } else if (impl == kStd) for (size_t i = 0; i < n; ++i) d[i] += a * x[i];
                else ed += a * ex;
                break;
            case kCMul:
                if (impl == kRovane) ippsMul_64fc_Idx(xc, 0, yc, 0, dc, 0, len);
                else if (impl == kStd) for (size_t i = 0; i < n; ++i) ds[i] = xs[i] * ys[i];
                else ecd = ecx * ecy;
                break;
            case kCExp:
                // The container's Exp: the composition on split parts,
                // exp(x) (cos y, sin y), run chunk by chunk.
                if (impl == kRovane) {
                    vd.Exp(vx);
                    benchmark::DoNotOptimize(vd.CValues);
                } else if (impl == kSleef) {
                    // SLEEF's exp and sincos on four split elements at a time.
                    alignas(32) double re[4], im[4];
                    for (size_t i = 0; i + 4 <= n; i += 4) {
                        for (int j = 0; j < 4; ++j) re[j] = x[2 * (i + j)], im[j] = x[2 * (i + j) + 1];
                        const __m256d e = Sleef_expd4_u10avx2(_mm256_load_pd(re));
                        const Sleef___m256d_2 sc = Sleef_sincosd4_u10avx2(_mm256_load_pd(im));
                        _mm256_store_pd(re, _mm256_mul_pd(e, sc.y));
                        _mm256_store_pd(im, _mm256_mul_pd(e, sc.x));
                        for (int j = 0; j < 4; ++j) d[2 * (i + j)] = re[j], d[2 * (i + j) + 1] = im[j];
                    }
                } else if (impl == kStd) for (size_t i = 0; i < n; ++i) ds[i] = std::exp(xs[i]);
                else ecd = ecx.exp();
                break;
        }
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    st.SetLabel(kImplName[impl]);
    st.SetItemsProcessed(st.iterations() * static_cast<int64_t>(n));
}

void MathArgs(benchmark::internal::Benchmark* b) {
    for (int64_t n : {1000, 1000000})
        for (int64_t impl : {kRovane, kSleef, kStd, kEigen}) b->Args({n, impl});
}
void ArithArgs(benchmark::internal::Benchmark* b) {
    for (int64_t op : {kAdd, kMul, kAxpy, kCMul, kCExp})
        for (int64_t n : {1000, 1000000})
            for (int64_t impl : {kRovane, kSleef, kStd, kEigen})
                if (impl != kSleef || op == kCExp) b->Args({n, impl, op});
}

BENCHMARK_TEMPLATE(BM_Sin, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Sin, float)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Cos, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Cos, float)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Exp, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Exp, float)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Ln, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Ln, float)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Sqrt, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Sqrt, float)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Power, double)->Apply(MathArgs);
BENCHMARK_TEMPLATE(BM_Power, float)->Apply(MathArgs);
BENCHMARK(BM_Arith)->Apply(ArithArgs);

// Console output plus a closing table of ratios: competitor time / library time.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            if (r.run_type != Run::RT_Iteration) continue;
            std::string name = r.benchmark_name();  // e.g. BM_Sin<double>/1000/2 or BM_Arith/1000/1/3
            const auto slash = name.find('/');
            std::string base = name.substr(0, slash);
            std::vector<int64_t> a;
            for (size_t p = slash; p != std::string::npos; p = name.find('/', p + 1))
                a.push_back(std::stoll(name.substr(p + 1)));
            if (base == "BM_Arith") base = kArithName[a[2]];
            const std::string key = base + " n=" + std::to_string(a[0]);
            times_[key][a[1]] = r.GetAdjustedRealTime();
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nRatio of each competitor's time to the library's (kernels: %s)\n",
                    PrimitiveIsaName(PrimitiveIsa()));
        std::printf("%-28s %10s %10s %10s\n", "case", "sleef", "std", "eigen");
        for (const auto& [key, t] : times_) {
            auto ratio = [&](int impl) -> std::string {
                const auto it = t.find(impl);
                if (it == t.end() || !t.count(kRovane)) return "-";
                char buf[32];
                std::snprintf(buf, sizeof buf, "%.2f", it->second / t.at(kRovane));
                return buf;
            };
            std::printf("%-28s %10s %10s %10s\n", key.c_str(), ratio(kSleef).c_str(), ratio(kStd).c_str(),
                        ratio(kEigen).c_str());
        }
    }

private:
    std::map<std::string, std::map<int64_t, double>> times_;
};

}  // namespace

int main(int argc, char** argv) {
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) {
        std::printf("This benchmark needs AVX2 and FMA.\n");
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
