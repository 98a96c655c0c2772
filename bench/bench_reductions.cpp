// Reductions through the containers against OpenBLAS (where it has the
// operation), Eigen and a plain loop on the same data, at 1e3 and 1e6
// doubles: Sum (OpenBLAS's dsum), DotProd (ddot), NormL1 (dasum), NormL2 (dnrm2; also against the
// library's own sum of squares), Max with its index, MeanAndStdDev. The
// summary prints ns per element and each competitor's time over the
// library's (above 1: the library is faster).
#include <benchmark/benchmark.h>
#include <cblas.h>
#include <rovane/Rovane.h>

#include <Eigen/Core>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace rovane;

namespace {

enum Impl { kRovane, kLoop, kEigen, kBlas, kSumSq };
const char* kImplName[] = {"rovane", "loop", "eigen", "openblas", "rovane SumOfSquares"};
enum Op { kSum, kDot, kNormL1, kNormL2, kMaxIdx, kMeanStd };
const char* kOpName[] = {"Sum", "DotProd", "NormL1", "NormL2", "Max+index", "MeanAndStdDev"};

void BM_Reduce(benchmark::State& st) {
    const auto n = static_cast<int32_t>(st.range(0));
    const auto impl = static_cast<Impl>(st.range(1));
    const auto op = static_cast<Op>(st.range(2));
    TVec x, y;
    x.Size(n);
    y.Size(n);
    for (int32_t i = 0; i < n; ++i) {
        x[i] = 1.0 + std::sin(0.001 * i) + (i == n / 2 ? 9.0 : 0.0);  // the maximum sits mid-run
        y[i] = 0.5 + std::cos(0.002 * i);
    }
    const double* xp = x.Values;
    const double* yp = y.Values;
    Eigen::Map<const Eigen::VectorXd> ex(xp, n), ey(yp, n);
    for (auto _ : st) {
        double r = 0;
        int32_t idx = 0;
        switch (impl) {
            case kRovane:
                switch (op) {
                    case kSum: r = x.Sum(); break;
                    case kDot: r = x.DotProd(y); break;
                    case kNormL1: r = x.NormL1(); break;
                    case kNormL2: r = x.NormL2(); break;
                    case kMaxIdx: x.Max(r, idx); break;
                    case kMeanStd: {
                        double m, s;
                        x.MeanAndStdDev(m, s);
                        r = m + s;
                    } break;
                }
                break;
            case kSumSq: r = x.SumOfSquares(); break;
            case kLoop:
                switch (op) {
                    case kSum:
                        for (int32_t i = 0; i < n; ++i) r += xp[i];
                        break;
                    case kDot:
                        for (int32_t i = 0; i < n; ++i) r += xp[i] * yp[i];
                        break;
                    case kNormL1:
                        for (int32_t i = 0; i < n; ++i) r += std::fabs(xp[i]);
                        break;
                    case kNormL2:
                        for (int32_t i = 0; i < n; ++i) r += xp[i] * xp[i];
                        r = std::sqrt(r);
                        break;
                    case kMaxIdx:
                        r = xp[0];
                        for (int32_t i = 1; i < n; ++i)
                            if (xp[i] > r) r = xp[i], idx = i;
                        break;
                    case kMeanStd: {
                        double s = 0;
                        for (int32_t i = 0; i < n; ++i) s += xp[i];
                        const double m = s / n;
                        double q = 0;
                        for (int32_t i = 0; i < n; ++i) q += (xp[i] - m) * (xp[i] - m);
                        r = m + std::sqrt(q / (n - 1));
                    } break;
                }
                break;
            case kEigen:
                switch (op) {
                    case kSum: r = ex.sum(); break;
                    case kDot: r = ex.dot(ey); break;
                    case kNormL1: r = ex.lpNorm<1>(); break;
                    case kNormL2: r = ex.norm(); break;
                    case kMaxIdx: {
                        Eigen::Index i;
                        r = ex.maxCoeff(&i);
                        idx = int32_t(i);
                    } break;
                    case kMeanStd: {
                        const double m = ex.mean();
                        r = m + std::sqrt((ex.array() - m).square().sum() / (n - 1));
                    } break;
                }
                break;
            case kBlas:
                switch (op) {
                    case kSum: r = cblas_dsum(n, xp, 1); break;
                    case kDot: r = cblas_ddot(n, xp, 1, yp, 1); break;
                    case kNormL1: r = cblas_dasum(n, xp, 1); break;
                    case kNormL2: r = cblas_dnrm2(n, xp, 1); break;
                    default: break;
                }
                break;
        }
        benchmark::DoNotOptimize(r);
        benchmark::DoNotOptimize(idx);
    }
    st.SetItemsProcessed(st.iterations() * n);
}

void Args(benchmark::internal::Benchmark* b) {
    for (int64_t op : {kSum, kDot, kNormL1, kNormL2, kMaxIdx, kMeanStd})
        for (int64_t n : {1000, 1000000})
            for (int64_t impl : {kRovane, kLoop, kEigen, kBlas, kSumSq}) {
                const bool blas = op == kSum || op == kDot || op == kNormL1 || op == kNormL2;
                if (impl == kBlas && !blas) continue;
                if (impl == kSumSq && op != kNormL2) continue;
                b->Args({n, impl, op});
            }
}
BENCHMARK(BM_Reduce)->Apply(Args)->UseRealTime();

// Console output plus a closing table: ns per element of the library, and
// each competitor's time over the library's.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            const bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (r.run_type != Run::RT_Iteration && !median) continue;
            const std::string name = r.run_name.str();  // BM_Reduce/<n>/<impl>/<op>[/real_time]
            std::vector<int64_t> a;
            for (size_t p = name.find('/'); p != std::string::npos && a.size() < 3; p = name.find('/', p + 1))
                a.push_back(std::stoll(name.substr(p + 1)));
            const std::pair<int64_t, int64_t> key{a[2], a[0]};
            if (median || !medians_.count({key, a[1]})) times_[key][a[1]] = r.GetAdjustedRealTime();
            if (median) medians_.insert({key, a[1]});
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nns per element of the library, and each competitor's time over the library's (kernels: %s)\n",
                    PrimitiveIsaName(PrimitiveIsa()));
        std::printf("%-24s %10s %8s %8s %8s %10s\n", "case", "ns/elem", "loop", "eigen", "openblas", "sum sq");
        for (const auto& [key, t] : times_) {
            if (!t.count(kRovane)) continue;
            const double base = t.at(kRovane);
            auto ratio = [&](int impl) -> std::string {
                const auto it = t.find(impl);
                if (it == t.end()) return "-";
                char buf[32];
                std::snprintf(buf, sizeof buf, "%.2f", it->second / base);
                return buf;
            };
            const std::string name = std::string(kOpName[key.first]) + " n=" + std::to_string(key.second);
            std::printf("%-24s %10.3f %8s %8s %8s %10s\n", name.c_str(), base / double(key.second),
                        ratio(kLoop).c_str(), ratio(kEigen).c_str(), ratio(kBlas).c_str(), ratio(kSumSq).c_str());
        }
        std::printf("(%s: %s)\n", kImplName[kSumSq], "time of SumOfSquares over NormL2's, below 1: NormL2 slower");
    }

private:
    std::map<std::pair<int64_t, int64_t>, std::map<int64_t, double>> times_;
    std::set<std::pair<std::pair<int64_t, int64_t>, int64_t>> medians_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    // One thread for OpenBLAS, as the library's kernels use one.
    openblas_set_num_threads(1);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
