// Distribution fills: Kolmogorov-Smirnov tests against the exact distribution
// functions and moment checks, with fixed seeds (so every run draws the same
// numbers and the outcome is deterministic).
//
// Each KS test uses the 0.1% critical value 1.9495 / sqrt(n): a correct fill
// from an ideal source would fail one case in a thousand, so about 3% of all
// seed choices would fail one of the ~30 cases below. For discrete
// distributions the KS test is conservative (fails less often). Means are
// checked within 5 standard errors (false failure 6e-7 per check).
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

using namespace rovane;

namespace {

constexpr int kN = 20000;
const double kKsCrit = 1.9495 / std::sqrt(double(kN));

double Phi(double z) { return 0.5 * std::erfc(-z / std::numbers::sqrt2); }

std::vector<double> Values(const TVec& v) {
    std::vector<double> r(static_cast<size_t>(v.Length()));
    for (int32_t i = 0; i < v.Length(); ++i) r[size_t(i)] = v[i];
    return r;
}

double KsDistance(std::vector<double> x, const std::function<double(double)>& cdf) {
    std::sort(x.begin(), x.end());
    const double n = double(x.size());
    double d = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double f = cdf(x[i]);
        d = std::max({d, f - double(i) / n, double(i + 1) / n - f});
    }
    return d;
}

double Mean(const std::vector<double>& x) {
    double s = 0;
    for (double v : x) s += v;
    return s / double(x.size());
}

struct ContCase {
    std::string name;
    std::function<void(TRngStream&, TVec&)> fill;
    std::function<double(double)> cdf;
    double mean, sd;  // sd 0: no moment check
};

// Regularised incomplete beta for integer shapes: a binomial tail.
double BetaCdfInt(double x, int a, int b) {
    if (x <= 0) return 0;
    if (x >= 1) return 1;
    const int n = a + b - 1;
    double s = 0;
    for (int j = a; j <= n; ++j)
        s += std::exp(std::lgamma(n + 1.0) - std::lgamma(j + 1.0) - std::lgamma(n - j + 1.0)) * std::pow(x, j) *
             std::pow(1 - x, n - j);
    return s;
}

}  // namespace

TEST(Distributions, ContinuousFillsFollowTheirDistributions) {
    const double pi = std::numbers::pi;
    const std::vector<ContCase> cases = {
        {"uniform", [](TRngStream& s, TVec& v) { s.RandomUniform(v, 2, 5); }, [](double x) { return (x - 2) / 3; }, 3.5,
         std::sqrt(0.75)},
        {"gauss boxmuller", [](TRngStream& s, TVec& v) { s.RandomGaussian(v, 1, 2, grmBoxMuller); },
         [](double x) { return Phi((x - 1) / 2); }, 1, 2},
        {"gauss boxmuller2", [](TRngStream& s, TVec& v) { s.RandomGaussian(v, 1, 2, grmBoxMuller2); },
         [](double x) { return Phi((x - 1) / 2); }, 1, 2},
        {"gauss icdf", [](TRngStream& s, TVec& v) { s.RandomGaussian(v, 1, 2, grmICDF); },
         [](double x) { return Phi((x - 1) / 2); }, 1, 2},
        {"exponential", [](TRngStream& s, TVec& v) { s.RandomExponential(v, 1, 2); },
         [](double x) { return x < 1 ? 0 : 1 - std::exp(-(x - 1) / 2); }, 3, 2},
        {"laplace", [](TRngStream& s, TVec& v) { s.RandomLaplace(v, 1, 2); },
         [](double x) { return x < 1 ? 0.5 * std::exp((x - 1) / 2) : 1 - 0.5 * std::exp(-(x - 1) / 2); }, 1,
         2 * std::numbers::sqrt2},
        {"weibull", [](TRngStream& s, TVec& v) { s.RandomWeibull(v, 1.5, 1, 2); },
         [](double x) { return x < 1 ? 0 : 1 - std::exp(-std::pow((x - 1) / 2, 1.5)); },
         1 + 2 * std::tgamma(1 + 1 / 1.5), 2 * std::sqrt(std::tgamma(1 + 2 / 1.5) - std::pow(std::tgamma(1 + 1 / 1.5), 2))},
        {"cauchy", [](TRngStream& s, TVec& v) { s.RandomCauchy(v, 1, 2); },
         [pi](double x) { return 0.5 + std::atan((x - 1) / 2) / pi; }, 0, 0},
        {"rayleigh", [](TRngStream& s, TVec& v) { s.RandomRayleigh(v, 1, 2); },
         [](double x) { return x < 1 ? 0 : 1 - std::exp(-std::pow((x - 1) / 2, 2)); }, 1 + std::sqrt(pi),
         2 * std::sqrt(1 - pi / 4)},
        {"lognormal", [](TRngStream& s, TVec& v) { s.RandomLogNormal(v, 0.5, 0.7, 1, 2); },
         [](double x) { return x <= 1 ? 0 : Phi((std::log((x - 1) / 2) - 0.5) / 0.7); }, 1 + 2 * std::exp(0.5 + 0.245),
         2 * std::exp(0.5 + 0.245) * std::sqrt(std::exp(0.49) - 1)},
        {"gumbel", [](TRngStream& s, TVec& v) { s.RandomGumbel(v, 1, 2); },
         [](double x) { return 1 - std::exp(-std::exp((x - 1) / 2)); }, 1 - 2 * std::numbers::egamma, 2 * pi / std::sqrt(6.0)},
        {"gamma 2.5", [](TRngStream& s, TVec& v) { s.RandomGamma(v, 2.5, 1, 2); },
         [](double x) { return x <= 1 ? 0 : IGamma((x - 1) / 2, 2.5); }, 6, 2 * std::sqrt(2.5)},
        {"gamma 0.4", [](TRngStream& s, TVec& v) { s.RandomGamma(v, 0.4, 0, 1); },
         [](double x) { return x <= 0 ? 0 : IGamma(x, 0.4); }, 0.4, std::sqrt(0.4)},
        {"beta 2 5", [](TRngStream& s, TVec& v) { s.RandomBeta(v, 2, 5, 1, 2); },
         [](double x) { return BetaCdfInt((x - 1) / 2, 2, 5); }, 1 + 2 * 2.0 / 7, 2 * std::sqrt(10.0 / (49 * 8))},
        {"beta 0.5 0.5", [](TRngStream& s, TVec& v) { s.RandomBeta(v, 0.5, 0.5, 0, 1); },
         [pi](double x) { return x <= 0 ? 0 : x >= 1 ? 1 : 2 / pi * std::asin(std::sqrt(x)); }, 0.5, std::sqrt(0.125)},
    };
    uint32_t seed = 1000;
    for (const auto& c : cases) {
        for (auto kind : {rgPHILOX4X32X10, rgSFMT19937}) {
            TRngStream s;
            s.NewStream(RngCode(kind), ++seed);
            TVec v;
            v.Size(kN);
            c.fill(s, v);
            const auto x = Values(v);
            EXPECT_LT(KsDistance(x, c.cdf), kKsCrit) << c.name << " on " << kind;
            if (c.sd > 0) EXPECT_NEAR(Mean(x), c.mean, 5 * c.sd / std::sqrt(double(kN))) << c.name << " on " << kind;
        }
    }
}

// The inverse distribution method maps each uniform draw u through the
// normal quantile: Phi(x) gives u back to about 1e-15 relative, in the
// centre and in both tails (a wrong coefficient of any region shows here,
// where the statistical test above could not see it).
TEST(Distributions, InverseMethodIsTheNormalQuantileOfEachDraw) {
    for (auto kind : {rgMT19937, rgSFMT19937}) {
        TRngStream a, b;
        a.NewStream(RngCode(kind), 77);
        b.NewStream(RngCode(kind), 77);
        TVec u, x;
        u.Size(20000);
        x.Size(20000);
        a.RandomUniform(u, 0, 1);
        b.RandomGaussian(x, 0, 1, grmICDF);
        int tails = 0;
        for (int32_t i = 0; i < x.Length(); ++i) {
            const long double z = x[i];
            // The smaller of Phi(z) and 1 - Phi(z), against the draw's side.
            const long double side = 0.5L * std::erfc(std::fabs(z) / std::sqrt(2.0L));
            // Draws of a 32-bit generator are multiples of 2^-32; the method
            // moves them into the open interval by half a step.
            const long double open = (long double)u[i] + 0x1p-33L;
            const long double want = z < 0 ? open : 1 - open;
            ASSERT_NEAR(double(side / want), 1.0, 1e-13) << "draw " << u[i] << " gave " << x[i];
            tails += std::fabs(u[i] - 0.5) > 0.425;
        }
        EXPECT_GT(tails, 2000);
    }
}

TEST(Distributions, SingleFillsAreTheDoubleFillsRounded) {
    // Parameters that single precision holds exactly, so that both fills
    // see the same ones.
    for (auto fill : std::vector<std::function<void(TRngStream&, TVec&)>>{
             [](TRngStream& s, TVec& v) { s.RandomGaussian(v, 0.5, 3, grmBoxMuller2); },
             [](TRngStream& s, TVec& v) { s.RandomGamma(v, 0.25, 2, 3); },
             [](TRngStream& s, TVec& v) { s.RandomExponential(v, 0.5, 2); }}) {
        TRngStream a, b;
        a.NewStream(RngCode(rgMT19937), 3);
        b.NewStream(RngCode(rgMT19937), 3);
        TVec d, f;
        d.Size(5001);
        f.Size(5001, false, false);
        fill(a, d);
        fill(b, f);
        for (int32_t i = 0; i < d.Length(); ++i) ASSERT_EQ(float(f[i]), float(d[i])) << i;
    }
    // Uniform single values stay below the upper end after rounding.
    TRngStream s;
    s.NewStream(RngCode(rgPHILOX4X32X10), 1);
    TVec f;
    f.Size(100000, false, false);
    s.RandomUniform(f, 1, 1.0000001);
    for (int32_t i = 0; i < f.Length(); ++i) ASSERT_LT(f[i], double(float(1.0000001)));
    // Complex data: both parts of every element.
    TVec c;
    c.Size(1000, true);
    s.RandomUniform(c, 5, 6);
    for (int32_t i = 0; i < 2000; ++i) ASSERT_GE(c.Values1D[i], 5.0);
}

namespace {

struct DiscCase {
    std::string name;
    std::function<void(TRngStream&, TVecInt&)> fill;
    std::function<double(int64_t)> pmf;
    int64_t lo, hi;  // support (hi inclusive) over which pmf is summed
};

double LogChoose(double n, double k) { return std::lgamma(n + 1) - std::lgamma(k + 1) - std::lgamma(n - k + 1); }

}  // namespace

TEST(Distributions, DiscreteFillsFollowTheirDistributions) {
    auto binom = [](int n, double p) {
        return [=](int64_t k) { return std::exp(LogChoose(n, double(k)) + double(k) * std::log(p) + double(n - k) * std::log1p(-p)); };
    };
    auto poisson = [](double l) { return [=](int64_t k) { return std::exp(-l + double(k) * std::log(l) - std::lgamma(double(k) + 1)); }; };
    const std::vector<DiscCase> cases = {
        {"uniformI", [](TRngStream& s, TVecInt& v) { s.RandomUniformI(v, -3, 7); }, [](int64_t) { return 0.1; }, -3, 6},
        {"bernoulli", [](TRngStream& s, TVecInt& v) { s.RandomBernoulli(v, 0.3); },
         [](int64_t k) { return k ? 0.3 : 0.7; }, 0, 1},
        {"geometric", [](TRngStream& s, TVecInt& v) { s.RandomGeometric(v, 0.2); },
         [](int64_t k) { return 0.2 * std::pow(0.8, double(k)); }, 0, 200},
        {"binomial 20", [](TRngStream& s, TVecInt& v) { s.RandomBinomial(v, 20, 0.3); }, binom(20, 0.3), 0, 20},
        {"binomial 50 0.9", [](TRngStream& s, TVecInt& v) { s.RandomBinomial(v, 50, 0.9); }, binom(50, 0.9), 0, 50},
        {"binomial 100000", [](TRngStream& s, TVecInt& v) { s.RandomBinomial(v, 100000, 0.4); }, binom(100000, 0.4),
         38500, 41500},
        {"hypergeometric", [](TRngStream& s, TVecInt& v) { s.RandomHypergeometric(v, 100, 30, 40); },
         [](int64_t k) { return std::exp(LogChoose(40, double(k)) + LogChoose(60, double(30 - k)) - LogChoose(100, 30)); },
         0, 30},
        {"poisson 3.5", [](TRngStream& s, TVecInt& v) { s.RandomPoisson(v, 3.5); }, poisson(3.5), 0, 60},
        {"poisson 40", [](TRngStream& s, TVecInt& v) { s.RandomPoisson(v, 40, prmPTPE); }, poisson(40), 0, 200},
        {"poisson 0.2 normal", [](TRngStream& s, TVecInt& v) { s.RandomPoisson(v, 0.2, prmNormal); }, poisson(0.2), 0, 30},
        {"negbinomial", [](TRngStream& s, TVecInt& v) { s.RandomNegbinomial(v, 2.5, 0.4); },
         [](int64_t k) {
             return std::exp(std::lgamma(double(k) + 2.5) - std::lgamma(2.5) - std::lgamma(double(k) + 1) + 2.5 * std::log(0.4) +
                             double(k) * std::log(0.6));
         },
         0, 400},
    };
    uint32_t seed = 2000;
    for (const auto& c : cases) {
        TRngStream s;
        s.NewStream(RngCode(rgPHILOX4X32X10), ++seed);
        TVecInt v;
        v.Size(kN);
        c.fill(s, v);
        std::vector<int64_t> cnt(size_t(c.hi - c.lo + 1), 0);
        double mean = 0, mu = 0, m2 = 0;
        for (int32_t i = 0; i < kN; ++i) {
            const int64_t k = v.IValues[i];
            ASSERT_TRUE(k >= c.lo && k <= c.hi) << c.name << " drew " << k;
            ++cnt[size_t(k - c.lo)];
            mean += double(k);
        }
        double F = 0, Fn = 0, d = 0;
        for (int64_t k = c.lo; k <= c.hi; ++k) {
            const double p = c.pmf(k);
            F += p;
            mu += double(k) * p;
            m2 += double(k) * double(k) * p;
            Fn += double(cnt[size_t(k - c.lo)]) / kN;
            d = std::max(d, std::fabs(F - Fn));
        }
        EXPECT_NEAR(F, 1.0, 1e-9) << c.name;  // the support covers the distribution
        EXPECT_LT(d, kKsCrit) << c.name;
        EXPECT_NEAR(mean / kN, mu, 5 * std::sqrt((m2 - mu * mu) / kN)) << c.name;
    }
}

TEST(Distributions, PoissonNormalMethodAndVectorOfMeans) {
    TRngStream s;
    s.NewStream(RngCode(rgMT19937), 77);
    TVecInt v;
    v.Size(kN);
    s.RandomPoisson(v, 400, prmNormal);  // normal approximation: mean and spread
    double m = 0, q = 0;
    for (int32_t i = 0; i < kN; ++i) {
        m += v.IValues[i];
        q += double(v.IValues[i]) * v.IValues[i];
    }
    m /= kN;
    EXPECT_NEAR(m, 400, 5 * 20 / std::sqrt(double(kN)));
    EXPECT_NEAR(std::sqrt(q / kN - m * m), 20, 0.5);
    std::vector<double> lam(static_cast<size_t>(kN));
    for (int i = 0; i < kN; ++i) lam[size_t(i)] = i % 2 ? 30.0 : 2.0;
    s.RandomPoisson(v, lam);
    double a = 0, b = 0;
    for (int i = 0; i < kN; ++i) (i % 2 ? b : a) += v.IValues[i];
    EXPECT_NEAR(a / (kN / 2), 2.0, 5 * std::sqrt(2.0 / (kN / 2)));
    EXPECT_NEAR(b / (kN / 2), 30.0, 5 * std::sqrt(30.0 / (kN / 2)));
}

TEST(Distributions, MultinomialCountsAndMultivariateNormal) {
    TRngStream s;
    s.NewStream(RngCode(rgPHILOX4X32X10), 5);
    TVecInt v;
    v.Size(3 * 5000 + 2);  // a partial vector at the end stays untouched
    v.IValues[v.Length() - 1] = -7;
    const double p[3] = {0.2, 0.3, 0.5};
    s.RandomMultinomial(v, 10, 3, p);
    double sums[3] = {};
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(v.IValues[3 * i] + v.IValues[3 * i + 1] + v.IValues[3 * i + 2], 10);
        for (int j = 0; j < 3; ++j) sums[j] += v.IValues[3 * i + j];
    }
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(sums[j] / 5000, 10 * p[j], 5 * std::sqrt(10 * p[j] * (1 - p[j]) / 5000));
    EXPECT_EQ(v.IValues[v.Length() - 1], -7);

    const double S[3][3] = {{4, 1, 0.5}, {1, 2, 0.3}, {0.5, 0.3, 1}};
    TMtx sigma, x;
    sigma.Size(3, 3);
    for (int i = 0; i < 9; ++i) sigma[i] = S[i / 3][i % 3];
    TVec mean;
    mean.Size(3);
    mean[0] = 1;
    mean[1] = -2;
    mean[2] = 0.5;
    x.Size(kN, 3);
    s.RandomGaussianMV(x, mean, sigma, grmICDF);
    double mu[3] = {}, cov[3][3] = {};
    for (int r = 0; r < kN; ++r)
        for (int a = 0; a < 3; ++a) mu[a] += x[r * 3 + a] / kN;
    for (int r = 0; r < kN; ++r)
        for (int a = 0; a < 3; ++a)
            for (int b = 0; b < 3; ++b) cov[a][b] += (x[r * 3 + a] - mu[a]) * (x[r * 3 + b] - mu[b]) / kN;
    for (int a = 0; a < 3; ++a) {
        EXPECT_NEAR(mu[a], mean[a], 5 * std::sqrt(S[a][a] / kN));
        for (int b = 0; b < 3; ++b)
            EXPECT_NEAR(cov[a][b], S[a][b], 5 * std::sqrt((S[a][a] * S[b][b] + S[a][b] * S[a][b]) / kN)) << a << b;
    }
}

TEST(Distributions, ParametersOutsideTheirDomainRaise) {
    TRngStream s;
    s.NewStream(RngCode(rgMCG31), 1);
    TVec v;
    v.Size(10);
    TVecInt k;
    k.Size(10);
    const std::string bad = "Random generator returned unknown error: -3";
    auto msg = [](const std::function<void()>& f) {
        try {
            f();
        } catch (const ERovaneException& e) {
            return std::string(e.what());
        }
        return std::string("(no exception)");
    };
    EXPECT_EQ(msg([&] { s.RandomUniform(v, 1, 1); }), bad);
    EXPECT_EQ(msg([&] { s.RandomGaussian(v, 0, 0); }), bad);
    EXPECT_EQ(msg([&] { s.RandomGaussian(v, 0, NAN); }), bad);
    EXPECT_EQ(msg([&] { s.RandomGamma(v, -1, 0, 1); }), bad);
    EXPECT_EQ(msg([&] { s.RandomBeta(v, 1, 1, 0, 0); }), bad);
    EXPECT_EQ(msg([&] { s.RandomBinomial(k, -1, 0.5); }), bad);
    EXPECT_EQ(msg([&] { s.RandomHypergeometric(k, 10, 11, 3); }), bad);
    EXPECT_EQ(msg([&] { s.RandomPoisson(k, 0); }), bad);
    EXPECT_EQ(msg([&] { s.RandomGeometric(k, 0); }), bad);
    const double p[2] = {0.7, 0.7};
    EXPECT_EQ(msg([&] { s.RandomMultinomial(k, 5, 2, p); }), "Bad multinomial distribution probability array");
    TMtx x, sg;
    TVec m;
    x.Size(4, 2);
    m.Size(3);
    sg.Size(2, 2);
    EXPECT_EQ(msg([&] { s.RandomGaussianMV(x, m, sg); }), "Mean.Length <> d, d = Dst.Cols");
    m.Size(2);
    sg.Size(3, 2);
    EXPECT_EQ(msg([&] { s.RandomGaussianMV(x, m, sg); }), "(Sigma.Cols <> d) or (Sigma.Rows <> d), d = Dst.Cols");
    m.Size(2, false, false);
    EXPECT_EQ(msg([&] { s.RandomGaussianMV(x, m, sg); }), "Dst.FloatPrecision <> Mean.FloatPrecision");
    // A failed fill leaves the stream usable.
    s.RandomUniform(v, 0, 1);
    EXPECT_LT(v[9], 1.0);
}

TEST(Distributions, DestinationsOfEveryForm) {
    // A sub-range is filled in place and nothing around it changes; a 16-bit
    // integer vector becomes 32-bit with its length; both fills draw the same
    // elements as a plain vector would.
    TRngStream a, b;
    a.NewStream(RngCode(rgARS5), 12);
    b.NewStream(RngCode(rgARS5), 12);
    TVec whole, ref;
    whole.Size(100);
    whole.SetVal(0.0);
    ref.Size(30);
    whole.SetSubRange(40, 30);
    a.RandomExponential(whole, 0, 1);
    whole.SetFullRange();
    b.RandomExponential(ref, 0, 1);
    for (int32_t i = 0; i < 100; ++i) ASSERT_EQ(whole[i], i >= 40 && i < 70 ? ref[i - 40] : 0.0) << i;

    TVecInt k, kref;
    k.Size(50, prInt16);
    kref.Size(50);
    a.RandomBinomial(k, 10, 0.5);
    b.RandomBinomial(kref, 10, 0.5);
    EXPECT_EQ(k.IntPrecision(), prInt32);
    ASSERT_EQ(k.Length(), 50);
    for (int32_t i = 0; i < 50; ++i) ASSERT_EQ(k.IValues[i], kref.IValues[i]) << i;
}
