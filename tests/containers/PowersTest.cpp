// Powers, roots, exponentials and logarithms on TVec against long double
// references and their formulas written out; the power rules at zero.
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <functional>
#include <span>

#include "ContainerTestUtil.h"

using namespace rovane;
using namespace rovane::test;

namespace {

using LD = long double;
using CLD = std::complex<LD>;

void Make(TVec& v, const std::vector<double>& values, bool complex, bool isDouble) {
    v.Size(0, complex, isDouble);
    v.SetIt(complex, std::span<const double>(values));
}

// Distance in units of the last place of F between two values rounded to F.
template <class F>
int64_t Ulps(double a, double b) {
    return test_util::UlpDistance<F>(static_cast<F>(a), static_cast<F>(b));
}

// Element by element within tol units of the last place of F.
template <class F>
void ExpectUlps(const std::vector<double>& got, const std::vector<double>& want, int64_t tol) {
    ASSERT_EQ(got.size(), want.size());
    for (size_t i = 0; i < got.size(); ++i)
        EXPECT_LE(Ulps<F>(got[i], want[i]), tol) << "element " << i << ": " << got[i] << " vs " << want[i];
}

template <class F>
constexpr LD Eps() { return std::numeric_limits<F>::epsilon(); }

// Complex element i of a vector, as doubles.
TCplx At(const TVec& v, int i) {
    const auto r = Reals(v);
    return TCplx(r[2 * i], r[2 * i + 1]);
}

// Both parts within k epsilons of F relative to the modulus of the reference.
template <class F>
void ExpectNear(const TCplx& got, const CLD& ref, LD k, const std::string& what) {
    const LD tol = k * Eps<F>() * std::abs(ref);
    EXPECT_LE(std::fabs(got.Re - ref.real()), tol) << what << " re " << got.Re << " vs " << double(ref.real());
    EXPECT_LE(std::fabs(got.Im - ref.imag()), tol) << what << " im " << got.Im << " vs " << double(ref.imag());
}

template <class F>
class PowersTyped : public ::testing::Test {};
using FieldTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(PowersTyped, FieldTypes);

// The member OP as a call d.OP(x).
#define ROVANE_OP(OP) #OP, [](TVec& d, const TVec& x) { d.OP(x); }

struct RealCase {
    const char* name;
    std::function<void(TVec&, const TVec&)> op;
    std::function<LD(LD)> ref;
    std::vector<double> inputs;
    int64_t ulps;
};

}  // namespace

TYPED_TEST(PowersTyped, RealValuesWithinAFewUlps) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    const std::vector<double> positive{1e-3, 0.1, 0.5, 0.999, 1.5, 2, 3.7, 10, 123.456, 7.5e5};
    const std::vector<RealCase> cases{
        {ROVANE_OP(Cbrt), [](LD x) { return cbrtl(x); }, {-27, -0.5, 1e-3, 8, 100, 3}, 1},
        {ROVANE_OP(Ln), [](LD x) { return logl(x); }, positive, 1},
        {ROVANE_OP(Log10), [](LD x) { return log10l(x); }, positive, 1},
        {ROVANE_OP(Log2), [](LD x) { return log2l(x); }, positive, 3},
        {ROVANE_OP(Exp), [](LD x) { return expl(x); }, {-20, -0.7, 0, 0.3, 1, 2.5, 20}, 1},
        {ROVANE_OP(Exp2), [](LD x) { return exp2l(x); }, {-2.5, -0.3, 0, 0.75, 1, 2}, 4},
        {ROVANE_OP(Exp10), [](LD x) { return powl(10, x); }, {-1, -0.25, 0, 0.5, 1}, 4},
        {ROVANE_OP(InvSqrt), [](LD x) { return 1 / sqrtl(x); }, positive, 1},
        {ROVANE_OP(InvCbrt), [](LD x) { return 1 / cbrtl(x); }, {-8, -0.3, 0.01, 2, 1000}, 1},
        {ROVANE_OP(Erf), [](LD x) { return erfl(x); }, {-2, -0.5, 0, 0.1, 0.9, 3}, 1},
        {ROVANE_OP(Erfc), [](LD x) { return erfcl(x); }, {-2, -0.5, 0, 0.1, 0.9, 3, 9}, 1},
    };
    for (const RealCase& c : cases) {
        std::vector<double> in;
        for (double v : c.inputs) in.push_back(static_cast<F>(v));  // exact inputs of the precision
        TVec x, d;
        Make(x, in, false, dbl);
        c.op(d, x);
        ASSERT_EQ(d.IsDouble(), dbl) << c.name;
        for (size_t i = 0; i < in.size(); ++i)
            EXPECT_LE(Ulps<F>(d[int32_t(i)], double(static_cast<F>(c.ref(in[i])))), c.ulps)
                << c.name << "(" << in[i] << ")";
    }
    // Sqr and Inv are single roundings in F.
    {
        TVec x, d;
        Make(x, {-3.25, 0.1, 1e10, 7, 1e-3}, false, dbl);
        d.Sqr(x);
        for (int32_t i = 0; i < x.Length(); ++i) EXPECT_EQ(d[i], double(F(x[i]) * F(x[i])));
        d.Inv(x);
        for (int32_t i = 0; i < x.Length(); ++i) EXPECT_EQ(d[i], double(F(1) / F(x[i])));
    }
    // ErfInv: erf of the result gives the argument back.
    TVec x, d;
    Make(x, {-0.9, -0.3, 0, 0.2, 0.75}, false, dbl);
    d.ErfInv(x);
    for (int32_t i = 0; i < x.Length(); ++i)
        EXPECT_LE(Ulps<F>(double(static_cast<F>(erfl(LD(d[i])))), x[i]), 2) << "ErfInv(" << x[i] << ")";
}

TYPED_TEST(PowersTyped, ComplexCompositionsFollowTheirFormulas) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    const std::vector<double> zs{0.5, 0.25, -1.5, 2, 3, -4, -0.2, -0.7, 10, 1};
    const LD ln2 = static_cast<F>(LN2), ln10 = static_cast<F>(LN10);
    auto expOf = [](CLD z) { return CLD(cosl(z.imag()) * expl(z.real()), sinl(z.imag()) * expl(z.real())); };
    auto lnOf = [](CLD z) { return CLD(logl(std::abs(z)), atan2l(z.imag(), z.real())); };
    struct Case {
        const char* name;
        std::function<void(TVec&, const TVec&)> op;
        std::function<CLD(CLD)> ref;
        LD k;
    };
    const std::vector<Case> cases{
        {ROVANE_OP(Exp), expOf, 4}, {ROVANE_OP(Exp2), [&](CLD z) { return expOf(z * ln2); }, 8},
        {ROVANE_OP(Exp10), [&](CLD z) { return expOf(z * ln10); }, 16},
        {ROVANE_OP(Ln), lnOf, 4}, {ROVANE_OP(Log10), [&](CLD z) { return lnOf(z) / logl(10); }, 4},
        {ROVANE_OP(Log2), [&](CLD z) { return lnOf(z) / logl(2); }, 4},
        {ROVANE_OP(Cbrt), [&](CLD z) { return expOf(lnOf(z) / 3.0L); }, 16},
        {ROVANE_OP(InvCbrt), [&](CLD z) { return expOf(-lnOf(z) / 3.0L); }, 16},
        {ROVANE_OP(InvSqrt), [&](CLD z) { return 1.0L / std::sqrt(z); }, 4},
    };
    TVec x, d;
    Make(x, zs, true, dbl);
    for (const Case& c : cases) {
        c.op(d, x);
        ASSERT_TRUE(d.Complex()) << c.name;
        for (int i = 0; i < x.Length(); ++i) {
            const TCplx z = At(x, i);
            ExpectNear<F>(At(d, i), c.ref(CLD(z.Re, z.Im)), c.k, c.name);
        }
    }

    // Sqr and Inv are exact formulas in F: (x*x - y*y, x*y + y*x) and
    // conj(z) * (1 / (x*x + y*y)).
    d.Sqr(x);
    for (int i = 0; i < x.Length(); ++i) {
        const F re = F(At(x, i).Re), im = F(At(x, i).Im);
        EXPECT_EQ(At(d, i).Re, double(F(re * re - im * im)));
        EXPECT_EQ(At(d, i).Im, double(F(re * im + im * re)));
    }
    d.Inv(x);
    for (int i = 0; i < x.Length(); ++i) {
        const F re = F(At(x, i).Re), im = F(At(x, i).Im);
        const F k = F(1) / (re * re + im * im);
        EXPECT_EQ(At(d, i).Re, double(re * k));
        EXPECT_EQ(At(d, i).Im, double(-im * k));
    }
}

TEST(Powers, ComplexInvAndLogarithmScaleFactors) {
    // x*x + y*y overflows, so the reciprocal underflows to zero rather than
    // giving the representable 2.5e-201 of a scaled division; 1/0 is untested.
    TVec x, d, ln;
    Make(x, {1e200, 1e200, 0, 0}, true, true);
    d.Inv(x);
    EXPECT_EQ(Reals(d)[0], 0.0);
    EXPECT_TRUE(std::signbit(Reals(d)[1]));
    EXPECT_FALSE(std::isfinite(Reals(d)[2]) || std::isfinite(Reals(d)[3]));
    Make(x, {2, 3, -1, 0.5}, true, true);
    ln.Ln(x);
    d.Log10(x);
    const double k10 = 1 / LN10;  // formed at the call, not the rounded INVLN10
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(At(d, i).Re, At(ln, i).Re * k10);
        EXPECT_EQ(At(d, i).Im, At(ln, i).Im * k10);
    }
    d.Log2(x);
    EXPECT_EQ(At(d, 1).Im, At(ln, 1).Im * INVLN2);
    d.LogN(3, x);
    EXPECT_LE(Ulps<double>(At(d, 0).Re, At(ln, 0).Re / std::log(3.0)), 1);
}

TYPED_TEST(PowersTyped, LogNRealAndItsForms) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec x, d;
    Make(x, {2, 9, 81, 0.5}, false, dbl);
    d.LogN(3, x);
    for (int32_t i = 0; i < 4; ++i) EXPECT_LE(Ulps<F>(d[i], double(F(logl(LD(x[i])) / logl(3)))), 3) << i;
    d.Copy(x);
    d.LogN(3, 1, 2);  // range in place
    EXPECT_EQ(d[0], 2);
    EXPECT_LE(Ulps<F>(d[1], 2), 2);
    EXPECT_LE(Ulps<F>(d[2], 4), 2);
    EXPECT_EQ(d[3], 0.5);
    d.SetVal(7);
    d.LogN(2, x, 3, 1, 1);  // range from X
    EXPECT_EQ(d[0], 7);
    EXPECT_LE(Ulps<F>(d[1], -1), 2);
    EXPECT_EQ(d[2], 7);
}

TYPED_TEST(PowersTyped, InvThresholdRules) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec a, d;
    Make(a, {0, 0.5, -0.5, 1, -1, 4, -2}, false, dbl);
    d.Inv(a, 2.0);
    EXPECT_EQ(Reals(d), (std::vector<double>{0.5, 0.5, -0.5, 0.5, -0.5, 0.25, -0.5}));
    d.Inv(a, 0.0);  // level 0: plain reciprocal, 1/0 included
    EXPECT_TRUE(std::isinf(d[0]));
    EXPECT_EQ(d[5], 0.25);

    // complex: zero -> 1/L, below the floor the phase is kept with magnitude 1/L
    Make(a, {0, 0, 0.3, 0.4, 3, 4}, true, dbl);
    d.Inv(a, 2.0);
    EXPECT_EQ(At(d, 0).Re, 0.5);
    EXPECT_EQ(At(d, 0).Im, 0);
    EXPECT_LE(Ulps<F>(At(d, 1).Re, 0.3), 2);  // conj(z) * (|z|/L) / |z|^2 = (0.3, -0.4) / 2 / 0.5
    EXPECT_LE(Ulps<F>(At(d, 1).Im, -0.4), 2);
    EXPECT_LE(Ulps<F>(At(d, 2).Re, 0.12), 2);  // above the floor: conj(z) / 25
    EXPECT_LE(Ulps<F>(At(d, 2).Im, -0.16), 2);

    // A negative threshold is refused by the primitive: data unchanged.
    const auto before = Reals(a);
    a.Inv(-1.0);
    EXPECT_EQ(Reals(a), before);
    a.Inv(-1.0, 1, 2);
    EXPECT_EQ(Reals(a), before);
    Make(d, {7, 7, 7, 7, 7, 7}, true, dbl);
    d.Inv(a, -0.5, 0, 1, 2);
    EXPECT_EQ(Reals(d), (std::vector<double>{7, 7, 7, 7, 7, 7}));

    // range forms with a valid threshold
    Make(a, {0.1, 8, 0.1}, false, dbl);
    a.Inv(1.0, 1, 2);
    EXPECT_EQ(Reals(a), (std::vector<double>{double(F(0.1)), 0.125, 1}));
    Make(d, {9, 9}, false, dbl);
    d.Inv(a, 4.0, 1, 1, 1);
    EXPECT_EQ(Reals(d), (std::vector<double>{9, 0.25}));
}

TYPED_TEST(PowersTyped, PowerWithARealExponent) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec a, b, e;
    // Exponent 0 gives 1 for every element, 0 and NaN included.
    Make(a, {0, NAN_, -3, INF}, false, dbl);
    b.Power(a, 0.0);
    EXPECT_EQ(Reals(b), (std::vector<double>{1, 1, 1, 1}));
    Make(e, {0, 0, 0, 0}, false, dbl);
    b.PowerVec(a, e);
    EXPECT_EQ(Reals(b), (std::vector<double>{1, 1, 1, 1}));
    Make(a, {0, 0, NAN_, 1}, true, dbl);
    a.Power(0.0);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 0, 1, 0}));
    // Complex data in place: INF at the zeros for a negative exponent, 0 for
    // a positive one, ordinary values elsewhere.
    Make(a, {0, 0, 2, 0, 0, 0.5}, true, dbl);
    b.Power(a, 2.0);
    a.Power(-1.0);
    EXPECT_TRUE(std::isinf(At(a, 0).Re) && At(a, 0).Im == 0);
    ExpectNear<F>(At(a, 1), CLD(0.5, 0), 8, "2^-1");
    ExpectNear<F>(At(a, 2), CLD(0, -2), 8, "(0.5i)^-1");
    EXPECT_EQ(At(b, 0).Re, 0);
    EXPECT_EQ(At(b, 0).Im, 0);
    ExpectNear<F>(At(b, 2), CLD(-0.25, 0), 8, "(0.5i)^2");
    // Real exponent vector with a scalar base: ippsPow of the filled Self.
    Make(e, {0.5, -1, 3}, false, dbl);
    b.Power(4.0, e);
    ASSERT_FALSE(b.Complex());
    ExpectUlps<F>(Reals(b), {2, 0.25, 64}, 1);
}

TYPED_TEST(PowersTyped, PowerWithAComplexExponentOrBase) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec a, b, e;
    // Imaginary part 0 on real data: the real power, widened.
    Make(a, {4, 9}, false, dbl);
    a.Power(TCplx(0.5, 0));
    ASSERT_TRUE(a.Complex());
    ExpectUlps<F>(Reals(a), {2, 0, 3, 0}, 1);
    // Otherwise Ln, Mul, Exp: a zero base gives CNAN, a negative real base
    // the complex power of the scalar library.
    const CLD ce(static_cast<F>(1.0 / 3), static_cast<F>(0.5));
    Make(a, {0, -8, 2}, false, dbl);
    b.Power(a, TCplx(1.0 / 3, 0.5));
    EXPECT_TRUE(std::isnan(At(b, 0).Re) && std::isnan(At(b, 0).Im));
    ExpectNear<F>(At(b, 1), std::pow(CLD(-8, 0), ce), 16, "(-8)^e");
    ExpectNear<F>(At(b, 2), std::pow(CLD(2, 0), ce), 16, "2^e");
    a.Power(TCplx(1.0 / 3, 0.5));  // in place: the same values, bit for bit
    ExpectUlps<F>(Reals(a), Reals(b), 0);
    b.Power(a, TCplx(0, 0));
    EXPECT_EQ(Reals(b), (std::vector<double>{1, 0, 1, 0, 1, 0}));
    // complex data, complex exponent
    Make(a, {0, 0, 1, 1}, true, dbl);
    a.Power(TCplx(0.5, 1));
    EXPECT_TRUE(std::isnan(At(a, 0).Re) && std::isnan(At(a, 0).Im));
    ExpectNear<F>(At(a, 1), std::pow(CLD(1, 1), CLD(0.5, 1)), 16, "(1+i)^(0.5+i)");

    // Power(0.0, complex exponent): CNAN, C_ONE, (INF, 0), C_ZERO
    Make(e, {1, 1, 0, 0, -2, 0, 2, 0}, true, dbl);
    b.Power(0.0, e);
    EXPECT_TRUE(std::isnan(At(b, 0).Re) && std::isnan(At(b, 0).Im));
    EXPECT_EQ(Reals(b)[2], 1);
    EXPECT_EQ(Reals(b)[3], 0);
    EXPECT_TRUE(std::isinf(At(b, 2).Re) && At(b, 2).Re > 0 && At(b, 2).Im == 0);
    EXPECT_EQ(At(b, 3).Re, 0);
    EXPECT_EQ(At(b, 3).Im, 0);
    Make(e, {0.5, 0, 2, 1}, true, dbl);
    b.Power(-4.0, e);
    ExpectNear<F>(At(b, 0), CLD(0, 2), 16, "(-4)^0.5");
    ExpectNear<F>(At(b, 1), std::pow(CLD(-4, 0), CLD(2, 1)), 16, "(-4)^(2+i)");
    // complex scalar base over a real exponent vector
    Make(e, {0.5, 3}, false, dbl);
    b.Power(TCplx(0, 2), e);
    ASSERT_TRUE(b.Complex());
    ExpectNear<F>(At(b, 0), CLD(1, 1), 8, "(2i)^0.5");
    ExpectNear<F>(At(b, 1), CLD(0, -8), 8, "(2i)^3");
}

TYPED_TEST(PowersTyped, PowerVecAcrossKinds) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec b, e, d;
    Make(b, {2, 9, -8}, false, dbl);
    Make(e, {10, 0.5, 3}, false, dbl);
    d.PowerVec(b, e);
    ExpectUlps<F>(Reals(d), {1024, 3, -512}, 1);
    // real base, complex exponent: the negative base by the complex power
    Make(e, {1, 1, 0.5, 0, 0.5, 0}, true, dbl);
    d.Power(b, e);
    ASSERT_TRUE(d.Complex());
    ExpectNear<F>(At(d, 0), std::pow(CLD(2, 0), CLD(1, 1)), 16, "2^(1+i)");
    ExpectNear<F>(At(d, 1), CLD(3, 0), 16, "9^0.5");
    ExpectNear<F>(At(d, 2), std::pow(CLD(-8, 0), CLD(0.5, 0)), 16, "(-8)^0.5");
    // complex base, real exponent; then both complex
    Make(b, {0, 0, 0, 1, 1, 1}, true, dbl);
    Make(e, {-2, 2, 3}, false, dbl);
    d.PowerVec(b, e);
    EXPECT_TRUE(std::isinf(At(d, 0).Re) && At(d, 0).Im == 0);
    ExpectNear<F>(At(d, 1), CLD(-1, 0), 8, "i^2");
    ExpectNear<F>(At(d, 2), CLD(-2, 2), 16, "(1+i)^3");
    Make(e, {1, 0, 0, 0, 1, 1}, true, dbl);
    d.PowerVec(b, e);
    EXPECT_EQ(Reals(d)[0], 0);
    EXPECT_EQ(Reals(d)[1], 0);
    EXPECT_EQ(Reals(d)[2], 1);
    ExpectNear<F>(At(d, 2), std::pow(CLD(1, 1), CLD(1, 1)), 16, "(1+i)^(1+i)");
}

TYPED_TEST(PowersTyped, IntPowerRoutes) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec a, b, d;
    // Real data: square-and-multiply in F, x * x^2 * x^4; the reciprocal last.
    Make(a, {1.1, -3, 0.5, 2}, false, dbl);
    d.IntPower(a, 7);
    TVec inv;
    inv.IntPower(a, -2);
    for (int32_t i = 0; i < 4; ++i) {
        const F x = F(a[i]), x2 = x * x, x4 = x2 * x2;
        EXPECT_EQ(d[i], double(x * x2 * x4)) << i;
        EXPECT_EQ(inv[i], double(F(1) / x2)) << i;
    }
    a.IntPower(0);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 1, 1, 1}));

    // Complex data in place, |n| < 5: complex products, so (1+i)^4 is exactly
    // -4. From 5 on, and for every complex base of the two-argument form, the
    // polar route: its phase pi/4 * n leaves a rounding residue.
    Make(a, {1, 1, 0.5, -2}, true, dbl);
    Make(b, {1, 1, 0.5, -2}, true, dbl);
    a.IntPower(4);
    EXPECT_EQ(At(a, 0).Re, -4);
    EXPECT_EQ(At(a, 0).Im, 0);
    const F re = 0.5f, im = -2, r2 = re * re - im * im, i2 = re * im + im * re;
    EXPECT_EQ(At(a, 1).Re, double(F(r2 * r2 - i2 * i2)));
    EXPECT_EQ(At(a, 1).Im, double(F(r2 * i2 + i2 * r2)));
    d.IntPower(b, 4);
    EXPECT_NE(At(d, 0).Im, 0.0);
    ExpectNear<F>(At(d, 0), CLD(-4, 0), 8, "(1+i)^4 polar");
    a.Copy(b);
    a.IntPower(5);
    EXPECT_NE(At(a, 0).Re, -4.0);
    ExpectNear<F>(At(a, 0), CLD(-4, -4), 8, "(1+i)^5");
    ExpectNear<F>(At(a, 1), std::pow(CLD(0.5, -2), 5), 8, "(0.5-2i)^5");
    a.Copy(b);
    a.IntPower(-5);
    ExpectNear<F>(At(a, 1), std::pow(CLD(0.5, -2), -5), 8, "(0.5-2i)^-5");
    d.IntPower(b, -1);
    ExpectNear<F>(At(d, 0), CLD(0.5, -0.5), 4, "(1+i)^-1");
}

TYPED_TEST(PowersTyped, RangesAndSubRanges) {
    using F = TypeParam;
    const bool dbl = std::is_same_v<F, double>;
    TVec a, ref, view;
    Make(a, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, true, dbl);
    ref.Exp(a);
    view.SetSubRange(a, 2, 3);
    view.Exp();
    view.SetFullRange();
    for (int i = 0; i < 6; ++i) {
        const TCplx want = i >= 2 && i < 5 ? At(ref, i) : TCplx(2 * i + 1, 2 * i + 2);
        EXPECT_EQ(At(a, i).Re, want.Re) << i;
        EXPECT_EQ(At(a, i).Im, want.Im) << i;
    }
    // Self a sub-range of a larger vector, out of place and by range
    TVec big, x;
    Make(big, {0, 0, 0, 0, 0, 0}, false, dbl);
    Make(x, {8, 27, 64}, false, dbl);
    view.SetSubRange(big, 1, 3);
    view.Cbrt(x);
    view.SetFullRange();
    ExpectUlps<F>(Reals(big), {0, 2, 3, 4, 0, 0}, 1);
    big.InvCbrt(x, 0, 4, 2);
    ExpectUlps<F>(Reals(big), {0, 2, 3, 4, 0.5, 1.0 / 3}, 1);
    // a sub-range base for the powers
    view.SetSubRange(x, 1, 2);
    TVec p;
    p.IntPower(view, 2);
    EXPECT_EQ(Reals(p), (std::vector<double>{729, 4096}));
    p.Power(view, 1.0 / 3);
    EXPECT_LE(Ulps<F>(p[0], 3), 2);
    EXPECT_LE(Ulps<F>(p[1], 4), 2);
    view.SetFullRange();
}

TEST(Powers, LengthZeroAndFailureTexts) {
    TVec a, b, c;
    a.Size(0, false, true);
    a.IntPower(3).Power(2.0).Inv(0.5).LogN(2).Power(TCplx(1, 1));  // only Power(TCplx) widens
    EXPECT_TRUE(a.Complex());
    EXPECT_EQ(a.Length(), 0);

    Fill(a, {1, 2, 3});
    Fill(b, {1, 2, 3, 4}, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Ln(a); }, "Ln: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.Exp2(a, 0, 0, 1); }, "Exp2: Self.Complex <> X.Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Inv(a, 0.5); }, "Inv: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.Inv(a, 0.5, 0, 0, 1); }, "Inv: Self.Complex <> X.Complex");

    // The error functions refuse complex data, also with checks off.
    for (bool check : {true, false}) {
        a.SetConditionCheck(check);
        b.SetConditionCheck(check);
        ExpectMessage<ERovaneInvalidArgument>([&] { b.Erf(); }, "TRovane.Erf: Self.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { b.Erfc(0, 1); }, "TRovane.Erfc: Self.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { b.ErfInv(); }, "TRovane.ErfInv: Self.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Erf(b); }, "TRovane.Erf: Src.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Erf(a); }, "TRovane.Erf: Self = Src");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.ErfInv(b); }, "TRovane.Erfc: Src.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.ErfInv(a, 0, 0, 1); }, "TRovane.Erfc: Self = Src");
        ExpectMessage<ERovaneInvalidArgument>([&] { b.ErfInv(a, 0, 0, 1); }, "TRovane.Erfc: Self.Complex = True");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.LogN(0); }, "N = 0");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.LogN(0, 0, 1); }, "TRovane.LogN: N = 0");
        ExpectMessage<ERovaneInvalidArgument>([&] { c.LogN(0, a); }, "TVec.LogN: N = 0");
        ExpectMessage<ERovaneInvalidArgument>([&] { c.LogN(0, a, 0, 0, 1); }, "TRovane.LogN: N = 0");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Power(a, 2.0); }, "Self = Base");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Power(a, TCplx(1, 1)); }, "Self = Base");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.IntPower(a, 2); }, "Self = Base");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Power(2.0, a); }, "Self = Exponent");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Power(TCplx(2, 0), a); }, "Self = Exponent");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.PowerVec(a, b); }, "Self = Base");
        ExpectMessage<ERovaneInvalidArgument>([&] { a.Power(b, a); }, "Self = Exponent");
        ExpectMessage<ERovaneInvalidArgument>([&] { c.PowerVec(a, b); }, "Base.Length <> Exponent.Length");
        EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 3}));  // refused calls leave Self as it was
    }
    a.SetConditionCheck(true);
    b.SetConditionCheck(true);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.LogN(2, a); }, "TVec.LogN: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.LogN(2, a, 0, 1, 1); }, "TRovane.LogN: Self = X");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.LogN(2, a, 0, 0, 1); }, "TRovane.LogN: X.Complex <> Self.Complex");
    Fill(c, {1, 2, 3}, false, false);
    ExpectMessage<ERovaneRangeError>([&] { b.PowerVec(a, c); },
                                     "X params not matching floating point precision: fIsDouble <> X.fIsDouble");
}
