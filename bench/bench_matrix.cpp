// Matrix products and transposition against OpenBLAS called directly,
// Eigen (fixed 4 x 4 at n = 4), and plain loops; a closing table prints
// each competitor's time over the library's. OpenBLAS runs on one thread
// for both sides, so the ratios compare the calls, not the machine's load.
#include <benchmark/benchmark.h>
#include <cblas.h>
#include <rovane/Rovane.h>

#include <Eigen/Core>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

extern "C" void openblas_set_num_threads(int);

using namespace rovane;

namespace {

enum Impl : int64_t { kRovane, kBlas, kEigen, kLoop };
enum Case : int64_t { kMulD, kMulZ, kTranspIn, kTranspOut };
const char* kCaseName[] = {"dMul", "zMul", "Transp in place", "Transp out of place"};
const char* kImplName[] = {"rovane", "openblas", "eigen", "loop"};

void FillRandom(TMtx& m, int n, bool complex) {
    m.Size(n, n, complex);
    m.RandUniform(-1, 1);
}

void BM_MulD(benchmark::State& st) {
    const int n = int(st.range(1));
    const auto impl = Impl(st.range(2));
    TMtx a, b, c;
    FillRandom(a, n, false);
    FillRandom(b, n, false);
    c.Size(n, n);
    if (impl == kRovane) {
        for (auto _ : st) {
            c.Mul(a, b);
            benchmark::DoNotOptimize(c.Values);
            benchmark::ClobberMemory();
        }
    } else if (impl == kBlas) {
        for (auto _ : st) {
            cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, n, n, n, 1.0, a.Values, n, b.Values, n, 0.0,
                        c.Values, n);
            benchmark::DoNotOptimize(c.Values);
            benchmark::ClobberMemory();
        }
    } else if (impl == kEigen) {
        if (n == 4) {
            Eigen::Matrix4d ea = Eigen::Map<Eigen::Matrix4d>(a.Values), eb = Eigen::Map<Eigen::Matrix4d>(b.Values), ec;
            for (auto _ : st) {
                benchmark::DoNotOptimize(ea.data());
                ec.noalias() = ea * eb;
                benchmark::DoNotOptimize(ec.data());
                benchmark::ClobberMemory();
            }
        } else {
            Eigen::MatrixXd ea = Eigen::Map<Eigen::MatrixXd>(a.Values, n, n),
                            eb = Eigen::Map<Eigen::MatrixXd>(b.Values, n, n), ec(n, n);
            for (auto _ : st) {
                ec.noalias() = ea * eb;
                benchmark::DoNotOptimize(ec.data());
                benchmark::ClobberMemory();
            }
        }
    } else {
        std::vector<double> pa(a.Values, a.Values + n * n), pb(b.Values, b.Values + n * n), pc(n * n);
        for (auto _ : st) {
            // Plain i-k-j loop on row-major arrays.
            for (int i = 0; i < n; ++i) {
                double* ci = pc.data() + i * n;
                for (int j = 0; j < n; ++j) ci[j] = 0;
                for (int k = 0; k < n; ++k) {
                    const double x = pa[i * n + k];
                    const double* bk = pb.data() + k * n;
                    for (int j = 0; j < n; ++j) ci[j] += x * bk[j];
                }
            }
            benchmark::DoNotOptimize(pc.data());
            benchmark::ClobberMemory();
        }
    }
    st.counters["flop/s"] = benchmark::Counter(2.0 * n * n * n, benchmark::Counter::kIsIterationInvariantRate);
}

void BM_MulZ(benchmark::State& st) {
    const int n = int(st.range(1));
    const auto impl = Impl(st.range(2));
    TMtx a, b, c;
    FillRandom(a, n, true);
    FillRandom(b, n, true);
    c.Size(n, n, true);
    const TCplx one(1, 0), zero(0, 0);
    for (auto _ : st) {
        if (impl == kRovane)
            c.Mul(a, b);
        else
            cblas_zgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, n, n, n, &one, a.CValues, n, b.CValues, n, &zero,
                        c.CValues, n);
        benchmark::DoNotOptimize(c.Values);
        benchmark::ClobberMemory();
    }
}

constexpr int kTile = 32;

void BM_Transp(benchmark::State& st) {
    const bool inPlace = st.range(0) == kTranspIn;
    const int n = int(st.range(1));
    const auto impl = Impl(st.range(2));
    TMtx a, b;
    FillRandom(a, n, false);
    b.Size(n, n);
    double* p = a.Values;
    double* q = b.Values;
    for (auto _ : st) {
        if (impl == kRovane) {
            if (inPlace)
                a.Transp();
            else
                b.Transp(a);
        } else if (inPlace) {
            // Blocked swap of mirror tiles.
            for (int i0 = 0; i0 < n; i0 += kTile)
                for (int j0 = i0; j0 < n; j0 += kTile)
                    for (int i = i0; i < std::min(i0 + kTile, n); ++i)
                        for (int j = std::max(j0, i + 1); j < std::min(j0 + kTile, n); ++j)
                            std::swap(p[i * n + j], p[j * n + i]);
        } else {
            for (int i0 = 0; i0 < n; i0 += kTile)
                for (int j0 = 0; j0 < n; j0 += kTile)
                    for (int i = i0; i < std::min(i0 + kTile, n); ++i)
                        for (int j = j0; j < std::min(j0 + kTile, n); ++j) q[j * n + i] = p[i * n + j];
        }
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(q);
        benchmark::ClobberMemory();
    }
    st.SetBytesProcessed(st.iterations() * int64_t(n) * n * 8 * 2);
}

void MulArgs(benchmark::internal::Benchmark* b) {
    for (int64_t n : {4, 8, 16, 64, 256, 1024})
        for (int64_t impl : {kRovane, kBlas, kEigen, kLoop}) {
            if (impl == kLoop && n > 256) continue;
            b->Args({kMulD, n, impl});
        }
}
BENCHMARK(BM_MulD)->Apply(MulArgs)->UseRealTime();
BENCHMARK(BM_MulZ)->Args({kMulZ, 256, kRovane})->Args({kMulZ, 256, kBlas})->UseRealTime();
BENCHMARK(BM_Transp)
    ->Args({kTranspIn, 1000, kRovane})
    ->Args({kTranspIn, 1000, kLoop})
    ->Args({kTranspOut, 1000, kRovane})
    ->Args({kTranspOut, 1000, kLoop})
    ->UseRealTime();

// Console output plus a closing table of ratios: competitor time / library time.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            const bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (r.run_type != Run::RT_Iteration && !median) continue;
            const std::string name = r.run_name.str();  // BM_x/<case>/<n>/<impl>[/real_time]
            std::vector<int64_t> a;
            for (size_t p = name.find('/'); p != std::string::npos && a.size() < 3; p = name.find('/', p + 1))
                a.push_back(std::stoll(name.substr(p + 1)));
            const std::string key = std::string(kCaseName[a[0]]) + " n=" + std::to_string(a[1]);
            if (median || !medians_.count({key, a[2]})) times_[key][a[2]] = r.GetAdjustedRealTime();
            if (median) medians_.insert({key, a[2]});
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nTime of each competitor over the library's (>1: the library is faster; kernels: %s)\n",
                    PrimitiveIsaName(PrimitiveIsa()));
        std::printf("%-26s %12s %10s %10s %10s\n", "case", "rovane ns", kImplName[kBlas], kImplName[kEigen],
                    kImplName[kLoop]);
        for (const auto& [key, t] : times_) {
            if (!t.count(kRovane)) continue;
            auto ratio = [&](int impl) -> std::string {
                const auto it = t.find(impl);
                if (it == t.end()) return "-";
                char buf[32];
                std::snprintf(buf, sizeof buf, "%.3f", it->second / t.at(kRovane));
                return buf;
            };
            std::printf("%-26s %12.1f %10s %10s %10s\n", key.c_str(), t.at(kRovane), ratio(kBlas).c_str(),
                        ratio(kEigen).c_str(), ratio(kLoop).c_str());
        }
    }

private:
    std::map<std::string, std::map<int64_t, double>> times_;
    std::set<std::pair<std::string, int64_t>> medians_;
};

}  // namespace

int main(int argc, char** argv) {
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) {
        std::printf("bench_matrix needs AVX2 and FMA (Eigen is compiled for them)\n");
        return 0;
    }
    openblas_set_num_threads(1);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
