// Reductions against a long double reference, on every kernel table the
// processor runs, for double and single, real and complex data, whole and on
// ranges. Each member has its stated bound below.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cmath>
#include <random>
#include <vector>

namespace rovane {
namespace {

using LD = long double;

struct Data {
    std::vector<double> re;  // reals, or (re, im) pairs
    bool complex, isDouble;
};

// Random data in the precision of the vector (single values are exactly
// the stored ones), with a spread of magnitudes and signs.
void Make(TVec& v, int32_t n, bool complex, bool isDouble, uint32_t seed, double offset = 0) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    v.Size(n, complex, isDouble);
    for (int32_t i = 0; i < (complex ? 2 * n : n); ++i) v[i] = offset + u(g) * std::exp2(double(int(g() % 9) - 4));
}
std::vector<LD> RealsOf(const TVec& v, int32_t index, int32_t len) {
    const int k = v.Complex() ? 2 : 1;
    std::vector<LD> r;
    for (int32_t i = index * k; i < (index + len) * k; ++i) r.push_back(LD(v[i]));
    return r;
}

class ReduceTables : public ::testing::TestWithParam<TPrimitiveIsa> {
protected:
    void SetUp() override {
        if (GetParam() > BestPrimitiveIsa()) GTEST_SKIP() << "table not run by this processor";
        ASSERT_TRUE(SetPrimitiveIsa(GetParam()));
    }
    void TearDown() override { SetPrimitiveIsa(DefaultPrimitiveIsa()); }
};

// Lengths around the vector widths, the accumulator blocks, the extreme
// blocks (1024) and the Sum() blocks (2000).
const int32_t kLengths[] = {1, 2, 3, 7, 16, 33, 64, 127, 1000, 1024, 1025, 2001, 4099, 20011};

// The rounding unit of the accumulation (double) and of the result.
double Eps(bool isDouble) { return isDouble ? 0x1p-52 : 0x1p-23; }

TEST_P(ReduceTables, SumsDotsAndNormsAgreeWithLongDouble) {
    for (bool isDouble : {true, false})
        for (bool complex : {false, true})
            for (int32_t n : kLengths) {
                TVec x, y;
                Make(x, n + 5, complex, isDouble, 7 + n);
                Make(y, n + 5, complex, isDouble, 9 + n);
                const int32_t index = n % 5, len = n;
                SCOPED_TRACE(testing::Message() << "n=" << n << " complex=" << complex << " double=" << isDouble);
                const auto a = RealsOf(x, index, len), b = RealsOf(y, index + 1, len);
                LD sum = 0, sumRe = 0, sumIm = 0, abs = 0, sq = 0, dsq = 0, dabs = 0, dmax = 0, mag = 0, magMax = 0;
                for (size_t i = 0; i < a.size(); ++i) {
                    sum += a[i];
                    (i % 2 ? sumIm : sumRe) += a[i];
                    abs += std::fabs(a[i]);
                    sq += a[i] * a[i];
                    dsq += (a[i] - b[i]) * (a[i] - b[i]);
                    dabs += std::fabs(a[i] - b[i]);
                    dmax = std::max(dmax, std::fabs(a[i] - b[i]));
                }
                LD absMax = 0;
                for (LD v : a) absMax = std::max(absMax, std::fabs(v));
                for (size_t i = 0; complex && i < a.size(); i += 2) {
                    const LD m = std::sqrt(a[i] * a[i] + a[i + 1] * a[i + 1]);
                    mag += m;
                    magMax = std::max(magMax, m);
                    const LD dm = std::sqrt((a[i] - b[i]) * (a[i] - b[i]) + (a[i + 1] - b[i + 1]) * (a[i + 1] - b[i + 1]));
                    if (i == 0) dabs = dmax = 0;
                    dabs += dm;
                    dmax = std::max(dmax, dm);
                }
                // Bound of a sum of m terms accumulated in double: m * eps * sum of
                // magnitudes; single results add one rounding to single.
                const double m = double(a.size());
                const double acc = (m + 2) * 0x1p-52, out = Eps(isDouble);
                const auto near = [&](double got, LD want, LD scale) {
                    EXPECT_LE(std::fabs(got - double(want)), double(acc * scale + out * std::fabs(want)))
                        << got << " vs " << double(want);
                };
                if (!complex) {
                    near(x.Sum(index, len), sum, abs);
                    near(x.Mean(index, len), sum / len, abs / len);
                    double d = x.DotProd(y, index + 1, index, len);
                    LD dot = 0;
                    for (size_t i = 0; i < a.size(); ++i) dot += a[i] * b[i];
                    EXPECT_LE(std::fabs(d - double(dot)), double(acc * (abs + sq) * 4)) << "DotProd";
                    near(x.NormL1(index, len), abs, abs);
                    near(x.NormC(index, len), absMax, 0);
                } else {
                    const TCplx s = x.Sumc(index, len);
                    near(s.Re, sumRe, abs);
                    near(s.Im, sumIm, abs);
                    const TCplx mc = x.Meanc(index, len);
                    near(mc.Re, sumRe / len, abs / len);
                    near(x.NormL1(index, len), mag, mag);
                    near(x.NormC(index, len), magMax, magMax);
                    LD re = 0, im = 0, cre = 0, cim = 0;
                    for (size_t i = 0; i < a.size(); i += 2) {
                        re += a[i] * b[i] - a[i + 1] * b[i + 1];
                        im += a[i] * b[i + 1] + a[i + 1] * b[i];
                        cre += b[i] * a[i] + b[i + 1] * a[i + 1];  // conj(y) * x
                        cim += b[i] * a[i + 1] - b[i + 1] * a[i];
                    }
                    const TCplx dc = x.DotProdc(y, index + 1, index, len);
                    near(dc.Re, re, 2 * sq + dsq);
                    near(dc.Im, im, 2 * sq + dsq);
                    // Conjugated: BLAS dotc, which accumulates single data in single.
                    const TCplx dj = x.DotProdc(y, true, index + 1, index, len);
                    const double blasAcc = (m + 2) * Eps(isDouble);
                    EXPECT_LE(std::fabs(dj.Re - double(cre)), double(blasAcc * (2 * sq + dsq)));
                    EXPECT_LE(std::fabs(dj.Im - double(cim)), double(blasAcc * (2 * sq + dsq)));
                }
                near(x.NormL2(index, len), std::sqrt(sq), std::sqrt(sq));
                near(x.SumOfSquares(index, len), sq, sq);
                near(x.NormL2(y, index + 1, index, len, false), std::sqrt(dsq), std::sqrt(dsq));
                near(x.NormL1(y, index + 1, index, len, false), dabs, dabs);
                near(x.NormC(y, index + 1, index, len, false), dmax, dmax);
                near(x.NormL2(y, index + 1, index, len, true), std::sqrt(dsq) / std::sqrt(sq), std::sqrt(dsq / sq));
            }
}

TEST_P(ReduceTables, MixedDotProductTakesTheRealOperandFirst) {
    for (bool isDouble : {true, false})
        for (int32_t n : {1, 5, 17, 1000}) {
            TVec r, c;
            Make(r, n, false, isDouble, 3);
            Make(c, n, true, isDouble, 4);
            LD re = 0, im = 0, scale = 0;
            for (int32_t i = 0; i < n; ++i) {
                re += LD(r[i]) * c[2 * i];
                im += LD(r[i]) * c[2 * i + 1];
                scale += std::fabs(LD(r[i])) * (std::fabs(LD(c[2 * i])) + std::fabs(LD(c[2 * i + 1])));
            }
            for (const TCplx got : {r.DotProdc(c), c.DotProdc(r)}) {
                EXPECT_LE(std::fabs(got.Re - double(re)), double(scale * (n + 2) * 0x1p-52));
                EXPECT_LE(std::fabs(got.Im - double(im)), double(scale * (n + 2) * 0x1p-52));
            }
        }
}

// Extremes are exact: the value and the index of the forward scan with a
// strict comparison, also with ties, NaNs and the extreme in any block.
TEST_P(ReduceTables, ExtremesMatchTheForwardScan) {
    for (bool isDouble : {true, false})
        for (int32_t n : kLengths) {
            TVec x;
            Make(x, n, false, isDouble, 11 + n);
            // Ties: the data rounded to a few levels, so extremes repeat.
            for (int32_t i = 0; i < n; ++i) x[i] = std::round(x[i] * 2);
            if (n > 40) x[n / 3] = std::nan("");
            for (int32_t index : {0, n > 3 ? 2 : 0}) {
                const int32_t len = n - index;
                double best = x[index], worst = x[index];
                int32_t at = index, atMin = index;
                for (int32_t i = index + 1; i < n; ++i) {
                    if (x[i] > best) best = x[i], at = i;
                    if (x[i] < worst) worst = x[i], atMin = i;
                }
                double v;
                int32_t i;
                x.Max(v, i, index, len);
                EXPECT_EQ(i, at) << n;
                EXPECT_EQ(v, best);
                x.Min(v, i, index, len);
                EXPECT_EQ(i, atMin) << n;
                EXPECT_EQ(v, worst);
            }
        }
}

// MeanAndStdDev and StdDev in one pass hold the accuracy of the two-pass
// formula, also with a large mean (where a naive one-pass formula loses all
// digits): bound 4 (n + 2) eps relative to the deviation plus the mean's.
TEST_P(ReduceTables, MeanAndStdDevHoldTwoPassAccuracy) {
    for (bool isDouble : {true, false})
        for (double offset : {0.0, 1e6})
            for (int32_t n : {2, 3, 17, 511, 512, 513, 5000, 20011}) {
                TVec x;
                Make(x, n, false, isDouble, 5 + n, offset);
                LD s = 0;
                for (int32_t i = 0; i < n; ++i) s += x[i];
                const LD mean = s / n;
                LD q = 0;
                for (int32_t i = 0; i < n; ++i) q += (x[i] - mean) * (x[i] - mean);
                const LD sd = std::sqrt(q / (n - 1));
                double m, d;
                x.MeanAndStdDev(m, d);
                const double tol = 4 * (n + 2) * 0x1p-52 + Eps(isDouble);
                EXPECT_LE(std::fabs(m - double(mean)), tol * std::fabs(double(mean)) + tol) << n;
                EXPECT_LE(std::fabs(d - double(sd)), tol * double(sd) + tol * std::fabs(offset) * 1e-3) << n;
                EXPECT_LE(std::fabs(x.StdDev() - double(sd)), tol * double(sd) + tol * std::fabs(offset) * 1e-3);
            }
}

INSTANTIATE_TEST_SUITE_P(AllIsas, ReduceTables, ::testing::Values(piReference, piBaseline, piAvx2, piAvx512),
                         [](const auto& info) { return std::string(PrimitiveIsaName(info.param)); });

// The Euclidean norm neither overflows nor underflows, on huge and tiny data,
// real and complex, and the largest magnitude of complex data likewise.
TEST(NormL2, HugeAndTinyValues) {
    for (double scale : {0x1p+1000, 0x1p-1060, 1.0})
        for (bool complex : {false, true}) {
            TVec x;
            x.Size(3, complex, true);
            const int k = complex ? 2 : 1;
            for (int i = 0; i < 3 * k; ++i) x[i] = 0;
            x[0] = 3 * scale;
            x[k] = 4 * scale;
            EXPECT_DOUBLE_EQ(x.NormL2() / scale, 5.0) << scale;
            EXPECT_DOUBLE_EQ(x.NormL1() / scale, 7.0) << scale;
            if (complex) {
                x[1] = 4 * scale;  // element 0 is 3 + 4i
                EXPECT_DOUBLE_EQ(x.NormC() / scale, 5.0) << scale;
            }
        }
    TVec inf;
    inf.SetIt({1.0, INF, 2.0});
    EXPECT_EQ(inf.NormL2(), INF);
    inf.SetIt({1.0, NAN_, 2.0});
    EXPECT_TRUE(std::isnan(inf.NormL2()));
    EXPECT_TRUE(std::isnan(inf.NormC()));
}

}  // namespace
}  // namespace rovane
