// Accuracy of the _A53 and _A24 functions: the error in units of the last
// place against a long double reference, over wide argument ranges with their
// edges (huge trigonometric arguments, subnormals, the overflow limits of
// Exp), under every kernel table. The bound of the suffix is one ULP.
#include <cfloat>
#include <cmath>
#include <functional>

#include "PrimTestUtil.h"

using namespace rovane;
using primtest::IsaTest;

namespace {

using test_util::UlpError;

// Arguments: uniform on [lo, hi] plus the listed edges.
template <class F>
std::vector<F> Uniform(double lo, double hi, size_t n, unsigned seed, std::vector<double> edges = {}) {
    auto v = primtest::Random<F>(n, static_cast<F>(lo), static_cast<F>(hi), seed);
    for (double e : edges) v.push_back(static_cast<F>(e));
    return v;
}
// Magnitudes spread evenly in the exponent between 2^e0 and 2^e1, both signs
// unless positive only.
template <class F>
std::vector<F> LogSpread(int e0, int e1, size_t n, unsigned seed, bool positive) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(e0, e1);
    std::vector<F> v(n);
    for (size_t i = 0; i < n; ++i) {
        const F m = static_cast<F>(std::exp2(u(g)));
        v[i] = positive || (i & 1) ? m : -m;
    }
    v.push_back(std::numeric_limits<F>::denorm_min());
    v.push_back(std::numeric_limits<F>::min());
    return v;
}

using Prim64 = IppStatus (*)(const double*, int32_t, double*, int32_t, int32_t);
using Prim32 = IppStatus (*)(const float*, int32_t, float*, int32_t, int32_t);

template <class F, class P>
double MaxUlp(P prim, const std::vector<F>& x, const std::function<long double(long double)>& ref, F* worst) {
    std::vector<F> d(x.size() + 1);
    EXPECT_EQ(prim(x.data(), 0, d.data(), 1, static_cast<int32_t>(x.size())), 0);
    double m = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double u = UlpError<F>(d[i + 1], ref(x[i]));
        if (u > m) {
            m = u;
            *worst = x[i];
        }
    }
    return m;
}

struct Case {
    const char* name;
    Prim64 p64;
    Prim32 p32;
    std::function<long double(long double)> ref;
    std::vector<double> (*args64)();
    std::vector<float> (*args32)();
};

constexpr size_t kN = 6000;

#define ARGS(EXPR64, EXPR32) [] { using F = double; (void)sizeof(F); return EXPR64; }, [] { using F = float; (void)sizeof(F); return EXPR32; }

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = {
        {"Sin", ippsSin_64f_A53_Idx, sippsSin_32f_A24_Idx, [](long double x) { return sinl(x); },
         ARGS(Uniform<F>(-10, 10, kN, 1, {0.0, -0.0, 1e300, -1e300, 1e22, 5e-324, 1.7976931348623157e308}),
              Uniform<F>(-10, 10, kN, 1, {0.0, 1e38, -3e37, 1e-45}))},
        {"SinHuge", ippsSin_64f_A53_Idx, sippsSin_32f_A24_Idx, [](long double x) { return sinl(x); },
         ARGS(LogSpread<F>(-1074, 1023, kN, 2, false), LogSpread<F>(-149, 127, kN, 2, false))},
        {"Cos", ippsCos_64f_A53_Idx, sippsCos_32f_A24_Idx, [](long double x) { return cosl(x); },
         ARGS(LogSpread<F>(-30, 1023, kN, 3, false), LogSpread<F>(-20, 127, kN, 3, false))},
        {"Tan", ippsTan_64f_A53_Idx, sippsTan_32f_A24_Idx, [](long double x) { return tanl(x); },
         ARGS(LogSpread<F>(-60, 1023, kN, 4, false), LogSpread<F>(-30, 127, kN, 4, false))},
        {"Exp", ippsExp_64f_A53_Idx, sippsExp_32f_A24_Idx, [](long double x) { return expl(x); },
         ARGS(Uniform<F>(-746, 710, kN, 5, {709.782712893384, 709.7827128933841, -745.1332191019412, -708.5, 0.0}),
              Uniform<F>(-104, 89, kN, 5, {88.72283, 88.72284, -103.97, 0.0}))},
        {"ExpNearOverflow", ippsExp_64f_A53_Idx, sippsExp_32f_A24_Idx, [](long double x) { return expl(x); },
         ARGS(Uniform<F>(709, 709.79, kN / 4, 6), Uniform<F>(88, 88.8, kN / 4, 6))},
        {"Ln", ippsLn_64f_A53_Idx, sippsLn_32f_A24_Idx, [](long double x) { return logl(x); },
         ARGS(LogSpread<F>(-1074, 1024, kN, 7, true), LogSpread<F>(-149, 128, kN, 7, true))},
        {"LnNearOne", ippsLn_64f_A53_Idx, sippsLn_32f_A24_Idx, [](long double x) { return logl(x); },
         ARGS(Uniform<F>(0.9, 1.1, kN / 4, 8), Uniform<F>(0.9, 1.1, kN / 4, 8))},
        {"Log10", ippsLog10_64f_A53_Idx, sippsLog10_32f_A24_Idx, [](long double x) { return log10l(x); },
         ARGS(LogSpread<F>(-1074, 1024, kN, 9, true), LogSpread<F>(-149, 128, kN, 9, true))},
        {"Sqrt", ippsSqrt_64f_A53_Idx, sippsSqrt_32f_A24_Idx, [](long double x) { return sqrtl(x); },
         ARGS(LogSpread<F>(-1074, 1024, kN, 10, true), LogSpread<F>(-149, 128, kN, 10, true))},
        {"Cbrt", ippsCbrt_64f_A53_Idx, sippsCbrt_32f_A24_Idx, [](long double x) { return cbrtl(x); },
         ARGS(LogSpread<F>(-1074, 1024, kN, 11, false), LogSpread<F>(-149, 128, kN, 11, false))},
        {"InvSqrt", ippsInvSqrt_64f_A53_Idx, sippsInvSqrt_32f_A24_Idx, [](long double x) { return 1 / sqrtl(x); },
         ARGS(LogSpread<F>(-1000, 1024, kN, 12, true), LogSpread<F>(-126, 128, kN, 12, true))},
        {"InvCbrt", ippsInvCbrt_64f_A53_Idx, sippsInvCbrt_32f_A24_Idx, [](long double x) { return 1 / cbrtl(x); },
         ARGS(LogSpread<F>(-1000, 1024, kN, 13, false), LogSpread<F>(-126, 128, kN, 13, false))},
        {"Inv", ippsInv_64f_A53_Idx, sippsInv_32f_A24_Idx, [](long double x) { return 1 / x; },
         ARGS(LogSpread<F>(-1022, 1022, kN, 14, false), LogSpread<F>(-126, 126, kN, 14, false))},
        {"Asin", ippsAsin_64f_A53_Idx, sippsAsin_32f_A24_Idx, [](long double x) { return asinl(x); },
         ARGS(Uniform<F>(-1, 1, kN, 15, {1.0, -1.0, 1e-300}), Uniform<F>(-1, 1, kN, 15, {1.0, -1.0, 1e-40}))},
        {"Acos", ippsAcos_64f_A53_Idx, sippsAcos_32f_A24_Idx, [](long double x) { return acosl(x); },
         ARGS(Uniform<F>(-1, 1, kN, 16, {1.0, -1.0, 0.9999999999}), Uniform<F>(-1, 1, kN, 16, {1.0, -1.0}))},
        {"Atan", ippsAtan_64f_A53_Idx, sippsAtan_32f_A24_Idx, [](long double x) { return atanl(x); },
         ARGS(LogSpread<F>(-1074, 1024, kN, 17, false), LogSpread<F>(-149, 128, kN, 17, false))},
        {"Sinh", ippsSinh_64f_A53_Idx, sippsSinh_32f_A24_Idx, [](long double x) { return sinhl(x); },
         ARGS(Uniform<F>(-711, 711, kN, 18, {1e-300, -1e-20}), Uniform<F>(-89.5, 89.5, kN, 18, {1e-30f}))},
        {"Cosh", ippsCosh_64f_A53_Idx, sippsCosh_32f_A24_Idx, [](long double x) { return coshl(x); },
         ARGS(Uniform<F>(-711, 711, kN, 19, {0.0}), Uniform<F>(-89.5, 89.5, kN, 19, {0.0}))},
        {"Tanh", ippsTanh_64f_A53_Idx, sippsTanh_32f_A24_Idx, [](long double x) { return tanhl(x); },
         ARGS(Uniform<F>(-20, 20, kN, 20, {1e-300, 0.0}), Uniform<F>(-10, 10, kN, 20, {1e-30f}))},
        {"Asinh", ippsAsinh_64f_A53_Idx, sippsAsinh_32f_A24_Idx, [](long double x) { return asinhl(x); },
         ARGS(LogSpread<F>(-1074, 1023, kN, 21, false), LogSpread<F>(-149, 127, kN, 21, false))},
        {"Acosh", ippsAcosh_64f_A53_Idx, sippsAcosh_32f_A24_Idx, [](long double x) { return acoshl(x); },
         ARGS(Uniform<F>(1, 20, kN, 22, {1.0, 1e300, 1.7976931348623157e308}), Uniform<F>(1, 20, kN, 22, {1.0f, 3e38f}))},
        {"Atanh", ippsAtanh_64f_A53_Idx, sippsAtanh_32f_A24_Idx, [](long double x) { return atanhl(x); },
         ARGS(Uniform<F>(-1, 1, kN, 23, {0.9999999999999999, 1e-300}), Uniform<F>(-1, 1, kN, 23, {0.99999994f}))},
        {"Erf", ippsErf_64f_A53_Idx, sippsErf_32f_A24_Idx, [](long double x) { return erfl(x); },
         ARGS(Uniform<F>(-6, 6, kN, 24, {1e-300, 0.0}), Uniform<F>(-4, 4, kN, 24, {1e-30f}))},
        {"Erfc", ippsErfc_64f_A53_Idx, sippsErfc_32f_A24_Idx, [](long double x) { return erfcl(x); },
         ARGS(Uniform<F>(-6, 27.2, kN, 25, {26.5, 27.3}), Uniform<F>(-4, 10.1, kN, 25, {10.0f}))},
    };
    return cases;
}

}  // namespace

TEST_P(IsaTest, TranscendentalsWithinOneUlp) {
    for (const Case& c : Cases()) {
        double worst64 = 0;
        float worst32 = 0;
        const double u64 = MaxUlp<double>(c.p64, c.args64(), c.ref, &worst64);
        const double u32 = MaxUlp<float>(c.p32, c.args32(), c.ref, &worst32);
        EXPECT_LE(u64, 1.0) << c.name << " double, worst at " << worst64;
        EXPECT_LE(u32, 1.0) << c.name << " single, worst at " << worst32;
        RecordProperty(std::string(c.name) + "_ulp64", std::to_string(u64));
        if (::testing::GTEST_FLAG(also_run_disabled_tests)) printf("%-16s %8.4f %8.4f\n", c.name, u64, u32);
    }
}

// Binary functions over pairs: Pow (base, exponent) and Atan2 (ordinate, abscissa).
TEST_P(IsaTest, PowAndAtan2WithinOneUlp) {
    const auto b = LogSpread<double>(-30, 30, kN, 31, true);
    const auto e = Uniform<double>(-30, 30, b.size(), 32);
    const auto y = LogSpread<double>(-1000, 1000, b.size(), 33, false);
    std::vector<double> d(b.size());
    const int32_t n = static_cast<int32_t>(b.size());
    ASSERT_EQ(ippsPow_64f_A53_Idx(b.data(), 0, e.data(), 0, d.data(), 0, n), 0);
    double m = 0;
    for (int32_t i = 0; i < n; ++i) m = std::max(m, UlpError<double>(d[i], powl(b[i], e[i])));
    EXPECT_LE(m, 1.0) << "Pow";
    ASSERT_EQ(ippsAtan2_64f_A53_Idx(y.data(), 0, e.data(), 0, d.data(), 0, n), 0);
    m = 0;
    for (int32_t i = 0; i < n; ++i) m = std::max(m, UlpError<double>(d[i], atan2l(y[i], e[i])));
    EXPECT_LE(m, 1.0) << "Atan2";
    std::vector<float> bf(b.begin(), b.end()), ef(e.begin(), e.end()), df(b.size());
    for (auto& v : ef) v /= 4;  // keep single results mostly finite
    ASSERT_EQ(sippsPow_32f_A24_Idx(bf.data(), 0, ef.data(), 0, df.data(), 0, n), 0);
    m = 0;
    for (int32_t i = 0; i < n; ++i) m = std::max(m, UlpError<float>(df[i], powl(bf[i], ef[i])));
    EXPECT_LE(m, 1.0) << "Pow single";
    // Powx and SinCos go through the same routines with other shapes.
    ASSERT_EQ(ippsPowx_64f_A53_Idx(b.data(), 0, 2.5, d.data(), 0, n), 0);
    m = 0;
    for (int32_t i = 0; i < n; ++i) m = std::max(m, UlpError<double>(d[i], powl(b[i], 2.5L)));
    EXPECT_LE(m, 1.0) << "Powx";
    std::vector<double> c(b.size());
    ASSERT_EQ(ippsSinCos_64f_A53_Idx(y.data(), 0, d.data(), 0, c.data(), 0, n), 0);
    m = 0;
    for (int32_t i = 0; i < n; ++i)
        m = std::max({m, UlpError<double>(d[i], sinl(y[i])), UlpError<double>(c[i], cosl(y[i]))});
    EXPECT_LE(m, 1.0) << "SinCos";
}

// ErfInv, judged by the residual of erf at the result: the error of y is
// (erf(y) - x) / erf'(y), and towards one the residual is taken from erfc,
// where 1 - x is exact.
TEST_P(IsaTest, ErfInvWithinOneUlp) {
    auto x = Uniform<double>(-1, 1, kN, 41, {0.999999999999, -0.9999999999999999, 1e-300, 0.5, 0.75});
    const auto tail = LogSpread<double>(-52, -1, 500, 42, true);
    for (double t : tail) x.push_back(1 - t);
    std::vector<double> y(x.size());
    ASSERT_EQ(ippsErfInv_64f_A53_Idx(x.data(), 0, y.data(), 0, static_cast<int32_t>(x.size())), 0);
    double m = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const long double yl = y[i], ax = fabsl(x[i]);
        const long double r = ax <= 0.5L ? erfl(fabsl(yl)) - ax : (1 - ax) - erfcl(fabsl(yl));
        const long double dy = r / (1.1283791670955125739L * expl(-yl * yl));
        int e;
        frexpl(yl, &e);
        m = std::max(m, static_cast<double>(fabsl(dy) / ldexpl(1, std::max(e - 53, -1074))));
    }
    EXPECT_LE(m, 1.0);
    const double one[2] = {1.0, -1.0};
    double r[2];
    ippsErfInv_64f_A53_Idx(one, 0, r, 0, 2);
    EXPECT_TRUE(std::isinf(r[0]) && r[0] > 0 && std::isinf(r[1]) && r[1] < 0);
}
