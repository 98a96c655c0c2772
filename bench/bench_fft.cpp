// FFT benchmarks: the library's transforms through committed dfti
// descriptors against FFTW with plans made once (FFTW_MEASURE and
// FFTW_ESTIMATE), and the cost of a descriptor cache hit. FFTW is used here
// only. After the runs a table prints each case's time per element and the
// ratio Rovane / FFTW (below 1: Rovane faster), with numpy's figures.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "rovane/primitives/DFTIDescriptors.h"
#include "rovane/primitives/fft/FftEngine.h"

using namespace rovane;

namespace {

const int kComplexSizes[] = {1000, 1024, 4099, 30030, 65536};
const int kRealSize = 65536;

template <class T>
std::vector<T> Noise(size_t n) {
    std::mt19937_64 g(42);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<T> v(n);
    for (auto& x : v) x = static_cast<T>(u(g));
    return v;
}

// ----- Rovane ------------------------------------------------------------------
template <class T>
void RovaneComplex(benchmark::State& st) {
    const int n = static_cast<int>(st.range(0));
    TDftiHandle h = nullptr;
    dfti_create_descriptor_highd(h, sizeof(T) == 8 ? DFTI_DOUBLE : DFTI_SINGLE, DFTI_COMPLEX, 1, &n);
    dfti_set_value_intval(h, DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    dfti_commit_descriptor_external(h);
    auto in = Noise<T>(2 * size_t(n)), out = std::vector<T>(2 * size_t(n));
    for (auto _ : st) {
        if constexpr (sizeof(T) == 8)
            dfti_compute_forward_z_out_Idx(h, reinterpret_cast<const TCplx*>(in.data()), 0,
                                           reinterpret_cast<TCplx*>(out.data()), 0);
        else
            dfti_compute_forward_c_out_Idx(h, reinterpret_cast<const TSCplx*>(in.data()), 0,
                                           reinterpret_cast<TSCplx*>(out.data()), 0);
        benchmark::DoNotOptimize(out.data());
    }
    dfti_free_descriptor_external(h);
    st.SetItemsProcessed(st.iterations() * n);
}

template <class T>
void RovaneReal(benchmark::State& st) {
    const int n = static_cast<int>(st.range(0));
    TDftiHandle h = nullptr;
    dfti_create_descriptor_highd(h, sizeof(T) == 8 ? DFTI_DOUBLE : DFTI_SINGLE, DFTI_REAL, 1, &n);
    dfti_set_value_intval(h, DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    dfti_commit_descriptor_external(h);
    auto in = Noise<T>(size_t(n)), out = std::vector<T>(size_t(n) + 2);
    for (auto _ : st) {
        if constexpr (sizeof(T) == 8) dfti_compute_forward_d_out_Idx(h, in.data(), 0, out.data(), 0);
        else dfti_compute_forward_s_out_Idx(h, in.data(), 0, out.data(), 0);
        benchmark::DoNotOptimize(out.data());
    }
    dfti_free_descriptor_external(h);
    st.SetItemsProcessed(st.iterations() * n);
}

// ----- FFTW ----------------------------------------------------------------------
template <class T>
void FftwComplex(benchmark::State& st) {
    const int n = static_cast<int>(st.range(0));
    const unsigned flags = st.range(1) ? FFTW_MEASURE : FFTW_ESTIMATE;
    auto src = Noise<T>(2 * size_t(n));
    if constexpr (sizeof(T) == 8) {
        fftw_complex* in = fftw_alloc_complex(size_t(n));
        fftw_complex* out = fftw_alloc_complex(size_t(n));
        fftw_plan p = fftw_plan_dft_1d(n, in, out, FFTW_FORWARD, flags);
        std::copy(src.begin(), src.end(), &in[0][0]);
        for (auto _ : st) {
            fftw_execute(p);
            benchmark::DoNotOptimize(out);
        }
        fftw_destroy_plan(p);
        fftw_free(in);
        fftw_free(out);
    } else {
        fftwf_complex* in = fftwf_alloc_complex(size_t(n));
        fftwf_complex* out = fftwf_alloc_complex(size_t(n));
        fftwf_plan p = fftwf_plan_dft_1d(n, in, out, FFTW_FORWARD, flags);
        std::copy(src.begin(), src.end(), &in[0][0]);
        for (auto _ : st) {
            fftwf_execute(p);
            benchmark::DoNotOptimize(out);
        }
        fftwf_destroy_plan(p);
        fftwf_free(in);
        fftwf_free(out);
    }
    st.SetItemsProcessed(st.iterations() * n);
}

template <class T>
void FftwReal(benchmark::State& st) {
    const int n = static_cast<int>(st.range(0));
    const unsigned flags = st.range(1) ? FFTW_MEASURE : FFTW_ESTIMATE;
    auto src = Noise<T>(size_t(n));
    if constexpr (sizeof(T) == 8) {
        double* in = fftw_alloc_real(size_t(n));
        fftw_complex* out = fftw_alloc_complex(size_t(n / 2 + 1));
        fftw_plan p = fftw_plan_dft_r2c_1d(n, in, out, flags);
        std::copy(src.begin(), src.end(), in);
        for (auto _ : st) {
            fftw_execute(p);
            benchmark::DoNotOptimize(out);
        }
        fftw_destroy_plan(p);
        fftw_free(in);
        fftw_free(out);
    } else {
        float* in = fftwf_alloc_real(size_t(n));
        fftwf_complex* out = fftwf_alloc_complex(size_t(n / 2 + 1));
        fftwf_plan p = fftwf_plan_dft_r2c_1d(n, in, out, flags);
        std::copy(src.begin(), src.end(), in);
        for (auto _ : st) {
            fftwf_execute(p);
            benchmark::DoNotOptimize(out);
        }
        fftwf_destroy_plan(p);
        fftwf_free(in);
        fftwf_free(out);
    }
    st.SetItemsProcessed(st.iterations() * n);
}

// A lookup that hits the hinted slot, and its release.
void CacheHit(benchmark::State& st) {
    TDFTIDescriptorCache& cache = DFTIDescriptorCache();
    int32_t hint = 0;
    cache.GetDesc(1024, dftfInPlace | dftfScaleBackward, hint);
    cache.ReleaseDscr(hint);
    for (auto _ : st) {
        benchmark::DoNotOptimize(cache.GetDesc(1024, dftfInPlace | dftfScaleBackward, hint));
        cache.ReleaseDscr(hint);
    }
}

void Register() {
    for (int n : kComplexSizes) {
        benchmark::RegisterBenchmark(("cfft/double/rovane/" + std::to_string(n)).c_str(), RovaneComplex<double>)->Arg(n);
        benchmark::RegisterBenchmark(("cfft/double/fftw_measure/" + std::to_string(n)).c_str(), FftwComplex<double>)
            ->Args({n, 1});
        benchmark::RegisterBenchmark(("cfft/double/fftw_estimate/" + std::to_string(n)).c_str(), FftwComplex<double>)
            ->Args({n, 0});
        benchmark::RegisterBenchmark(("cfft/single/rovane/" + std::to_string(n)).c_str(), RovaneComplex<float>)->Arg(n);
        benchmark::RegisterBenchmark(("cfft/single/fftw_measure/" + std::to_string(n)).c_str(), FftwComplex<float>)
            ->Args({n, 1});
        benchmark::RegisterBenchmark(("cfft/single/fftw_estimate/" + std::to_string(n)).c_str(), FftwComplex<float>)
            ->Args({n, 0});
    }
    const std::string r = std::to_string(kRealSize);
    benchmark::RegisterBenchmark(("rfft/double/rovane/" + r).c_str(), RovaneReal<double>)->Arg(kRealSize);
    benchmark::RegisterBenchmark(("rfft/double/fftw_measure/" + r).c_str(), FftwReal<double>)->Args({kRealSize, 1});
    benchmark::RegisterBenchmark(("rfft/double/fftw_estimate/" + r).c_str(), FftwReal<double>)->Args({kRealSize, 0});
    benchmark::RegisterBenchmark(("rfft/single/rovane/" + r).c_str(), RovaneReal<float>)->Arg(kRealSize);
    benchmark::RegisterBenchmark(("rfft/single/fftw_measure/" + r).c_str(), FftwReal<float>)->Args({kRealSize, 1});
    benchmark::RegisterBenchmark(("rfft/single/fftw_estimate/" + r).c_str(), FftwReal<float>)->Args({kRealSize, 0});
    benchmark::RegisterBenchmark("cache/hit", CacheHit);
}

// Keeps each run's processor time per iteration (ns; less disturbed than
// wall time on a shared machine) by its name without the argument
// suffix that the library appends.
class TCollect : public benchmark::ConsoleReporter {
public:
    std::map<std::string, double> ns;
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& r : runs) {
            if (r.run_type != Run::RT_Iteration || r.error_occurred) continue;
            std::string name = r.benchmark_name();
            const size_t slash = name.find("/min_time");
            if (slash != std::string::npos) name.resize(slash);
            // Drop the trailing argument parts ("/1024/1").
            for (int i = 0; i < 2; ++i) {
                const size_t p = name.rfind('/');
                const std::string tail = name.substr(p + 1);
                if (!tail.empty() && tail.find_first_not_of("0123456789") == std::string::npos &&
                    std::count(name.begin(), name.end(), '/') > 3)
                    name.resize(p);
            }
            // The fastest repetition: the least disturbed by other jobs.
            const double t = r.GetAdjustedCPUTime();
            auto it = ns.find(name);
            if (it == ns.end() || t < it->second) ns[name] = t;
        }
        ConsoleReporter::ReportRuns(runs);
    }
};

// numpy (pocketfft) per element, ns, from the project's peer figures.
double NumpyNs(const std::string& kind, int n) {
    if (kind == "cfft") {
        if (n == 1024) return 7.0;
        if (n == 65536) return 9.4;
        if (n == 30030) return 13;
        if (n == 4099) return 52;
    }
    if (kind == "rfft" && n == 65536) return 4.8;
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    // Five repetitions unless asked otherwise; the table takes the fastest.
    std::vector<char*> args(argv, argv + argc);
    std::string reps = "--benchmark_repetitions=5";
    bool given = false;
    for (int i = 1; i < argc; ++i) given |= std::string(argv[i]).rfind("--benchmark_repetitions", 0) == 0;
    if (!given) args.push_back(reps.data());
    int n = static_cast<int>(args.size());
    benchmark::Initialize(&n, args.data());
    Register();
    TCollect rep;
    benchmark::RunSpecifiedBenchmarks(&rep);
    std::printf("\nFFT isa: %s (shared machine: other jobs run beside this one; ratios are same-run)\n",
                PrimitiveIsaName(FftIsa()));
    std::printf("%-6s %-6s %7s %10s %10s %10s %9s %9s %10s\n", "kind", "prec", "n", "rovane", "fftw_meas",
                "fftw_est", "r/meas", "r/est", "numpy");
    std::printf("%-6s %-6s %7s %10s %10s %10s %9s %9s %10s\n", "", "", "", "ns/elem", "ns/elem", "ns/elem", "", "",
                "ns/elem*");
    auto row = [&](const std::string& kind, const std::string& prec, int n) {
        const std::string base = kind + "/" + prec + "/";
        const std::string sn = "/" + std::to_string(n);
        const double r = rep.ns[base + "rovane" + sn] / n, m = rep.ns[base + "fftw_measure" + sn] / n,
                     e = rep.ns[base + "fftw_estimate" + sn] / n;
        const double np = prec == "double" ? NumpyNs(kind, n) : 0;
        std::printf("%-6s %-6s %7d %10.3f %10.3f %10.3f %9.2f %9.2f %10s\n", kind.c_str(), prec.c_str(), n, r, m, e,
                    m > 0 ? r / m : 0, e > 0 ? r / e : 0, np > 0 ? std::to_string(np).substr(0, 4).c_str() : "-");
    };
    for (const char* prec : {"double", "single"})
        for (int n : kComplexSizes) row("cfft", prec, n);
    for (const char* prec : {"double", "single"}) row("rfft", prec, kRealSize);
    std::printf("descriptor cache hit (GetDesc + ReleaseDscr): %.1f ns\n", rep.ns["cache/hit"]);
    std::printf("* numpy figures come from another run on this machine kind (not same-run).\n");
    benchmark::Shutdown();
    return 0;
}
