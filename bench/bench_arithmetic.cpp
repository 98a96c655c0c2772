// The arithmetic families through the container frame against a plain loop
// and Eigen on the same data: Add and Mul out of place, AddScaled in place
// (BLAS axpy), and Mul on complex data, at 1e3 and 1e6 doubles. The summary at
// the end prints each competitor's time over the library's time (above 1: the
// library is faster).
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

#include <Eigen/Core>
#include <complex>
#include <cstdio>
#include <map>
#include <set>
#include <utility>
#include <string>
#include <vector>

using namespace rovane;

namespace {

enum Impl { kRovane, kLoop, kEigen };
enum Op { kAdd, kMul, kAddScaled, kCMul };
const char* kOpName[] = {"Add", "Mul", "AddScaled", "complex Mul"};

// A scaled step that keeps AddScaled's accumulating operand finite.
constexpr double kFactor = 1e-9;

void Fill(std::vector<double>& v, double seed) {
    for (size_t i = 0; i < v.size(); ++i) v[i] = seed + static_cast<double>(i % 97) * 0.01;
}

void BM_Arith(benchmark::State& st) {
    const auto n = static_cast<int32_t>(st.range(0));
    const auto impl = static_cast<Impl>(st.range(1));
    const auto op = static_cast<Op>(st.range(2));
    const bool cplx = op == kCMul;
    const size_t reals = static_cast<size_t>(n) * (cplx ? 2 : 1);
    std::vector<double> x(reals), y(reals), d(reals);
    Fill(x, 1.5);
    Fill(y, 2.5);

    TVec a, b, c;
    a.Size(n, cplx);
    b.Size(n, cplx);
    a.CopyFromArray(std::span<const double>(x));
    b.CopyFromArray(std::span<const double>(y));
    Eigen::Map<Eigen::VectorXd> ex(x.data(), static_cast<Eigen::Index>(reals));
    Eigen::Map<Eigen::VectorXd> ey(y.data(), static_cast<Eigen::Index>(reals));
    Eigen::Map<Eigen::VectorXd> ed(d.data(), static_cast<Eigen::Index>(reals));
    using CV = Eigen::Matrix<std::complex<double>, Eigen::Dynamic, 1>;
    Eigen::Map<CV> cx(reinterpret_cast<std::complex<double>*>(x.data()), n);
    Eigen::Map<CV> cy(reinterpret_cast<std::complex<double>*>(y.data()), n);
    Eigen::Map<CV> cd(reinterpret_cast<std::complex<double>*>(d.data()), n);

    for (auto _ : st) {
        switch (impl) {
            case kRovane:
                if (op == kAdd) c.Add(a, b);
                else if (op == kMul || op == kCMul) c.Mul(a, b);
                else b.AddScaled(a, kFactor);
                benchmark::DoNotOptimize(c.Values);
                benchmark::DoNotOptimize(b.Values);
                break;
            case kLoop:
                if (op == kAdd) {
                    for (size_t i = 0; i < reals; ++i) d[i] = x[i] + y[i];
                } else if (op == kMul) {
                    for (size_t i = 0; i < reals; ++i) d[i] = x[i] * y[i];
                } else if (op == kAddScaled) {
                    for (size_t i = 0; i < reals; ++i) y[i] += kFactor * x[i];
                } else {
                    // the product written out, as a complex type would need
                    // its NaN recovery otherwise
                    for (size_t i = 0; i < reals; i += 2) {
                        const double xr = x[i], xi = x[i + 1], yr = y[i], yi = y[i + 1];
                        d[i] = xr * yr - xi * yi;
                        d[i + 1] = xr * yi + xi * yr;
                    }
                }
                benchmark::DoNotOptimize(d.data());
                benchmark::DoNotOptimize(y.data());
                break;
            case kEigen:
                if (op == kAdd) ed.noalias() = ex + ey;
                else if (op == kMul) ed.noalias() = ex.cwiseProduct(ey);
                else if (op == kAddScaled) ey.noalias() += kFactor * ex;
                else cd.noalias() = cx.cwiseProduct(cy);
                benchmark::DoNotOptimize(d.data());
                benchmark::DoNotOptimize(y.data());
                break;
        }
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * n);
}

void Args(benchmark::internal::Benchmark* b) {
    for (int64_t op : {kAdd, kMul, kAddScaled, kCMul})
        for (int64_t n : {1000, 1000000})
            for (int64_t impl : {kRovane, kLoop, kEigen}) b->Args({n, impl, op});
}
BENCHMARK(BM_Arith)->Apply(Args)->UseRealTime();

// Console output plus a closing table of ratios: competitor time / library time.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        // With repetitions the median stands for the case, else the one run.
        for (const Run& r : runs) {
            const bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (r.run_type != Run::RT_Iteration && !median) continue;
            const std::string name = r.run_name.str();  // BM_Arith/<n>/<impl>/<op>[/real_time]
            std::vector<int64_t> a;
            for (size_t p = name.find('/'); p != std::string::npos && a.size() < 3; p = name.find('/', p + 1))
                a.push_back(std::stoll(name.substr(p + 1)));
            const std::string key = std::string(kOpName[a[2]]) + " n=" + std::to_string(a[0]);
            if (median || !medians_.count({key, a[1]})) times_[key][a[1]] = r.GetAdjustedRealTime();
            if (median) medians_.insert({key, a[1]});
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nRatio of each competitor's time to the library's (kernels: %s)\n",
                    PrimitiveIsaName(PrimitiveIsa()));
        std::printf("%-24s %12s %12s %10s %10s\n", "case", "rovane ns", "loop ns", "loop", "eigen");
        for (const auto& [key, t] : times_) {
            if (!t.count(kRovane)) continue;
            auto ratio = [&](int impl) -> std::string {
                const auto it = t.find(impl);
                if (it == t.end()) return "-";
                char buf[32];
                std::snprintf(buf, sizeof buf, "%.2f", it->second / t.at(kRovane));
                return buf;
            };
            const double loop = t.count(kLoop) ? t.at(kLoop) : 0;
            std::printf("%-24s %12.0f %12.0f %10s %10s\n", key.c_str(), t.at(kRovane), loop, ratio(kLoop).c_str(),
                        ratio(kEigen).c_str());
        }
    }

private:
    std::map<std::string, std::map<int64_t, double>> times_;
    std::set<std::pair<std::string, int64_t>> medians_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
