#include <gtest/gtest.h>

#include "NumericTestUtil.h"

#include <cmath>
#include <complex>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include <rovane/Rovane.h>

using namespace rovane;

namespace {

using L = long double;
using CL = std::complex<long double>;

using test_util::UlpDistance;

// Exact real results, {got, want} each; a NaN wants a NaN.
void ExpectExactReal(std::initializer_list<std::pair<double, double>> cases) {
    int i = 0;
    for (const auto& [got, want] : cases)
        EXPECT_TRUE(got == want || (std::isnan(got) && std::isnan(want))) << "case " << i++ << ": " << got;
}

// Exact complex results, {got, want} each.
void ExpectExact(std::initializer_list<std::pair<TCplx, TCplx>> cases) {
    int i = 0;
    for (const auto& [got, want] : cases)
        EXPECT_TRUE(got.Re == want.Re && got.Im == want.Im)
            << "case " << i++ << ": (" << got.Re << ", " << got.Im << ") want (" << want.Re << ", " << want.Im << ")";
}

void ExpectNear(const TCplx& z, L re, L im, double tol) {
    EXPECT_NEAR(z.Re, re, tol) << "re of (" << z.Re << ", " << z.Im << ")";
    EXPECT_NEAR(z.Im, im, tol) << "im of (" << z.Re << ", " << z.Im << ")";
}

}  // namespace

// ---------------------------------------------------------------------------
// Real elementary functions.
// ---------------------------------------------------------------------------
TEST(ScalarMathElementary, DoubleFormsWithinOneUlpOfExtendedReference) {
    struct Case {
        const char* name;
        double (*f)(double);
        L (*ref)(L);
        double lo, hi;
    };
    const Case cases[] = {
        {"Sin", Sin, [](L x) { return std::sin(x); }, -10, 10},
        {"Cos", Cos, [](L x) { return std::cos(x); }, -10, 10},
        {"Tan", Tan, [](L x) { return std::tan(x); }, -1.5, 1.5},
        {"Sinh", Sinh, [](L x) { return std::sinh(x); }, -20, 20},
        {"Cosh", Cosh, [](L x) { return std::cosh(x); }, -20, 20},
        {"Tanh", Tanh, [](L x) { return std::tanh(x); }, -5, 5},
        {"TanhX", TanhX, [](L x) { return std::tanh(x); }, -5, 5},
        {"ArcSin", ArcSin, [](L x) { return std::asin(x); }, -1, 1},
        {"ArcCos", ArcCos, [](L x) { return std::acos(x); }, -1, 1},
        {"ArcTan", ArcTan, [](L x) { return std::atan(x); }, -50, 50},
        {"ArcSinh", ArcSinh, [](L x) { return std::asinh(x); }, -50, 50},
        {"ArcCosh", ArcCosh, [](L x) { return std::acosh(x); }, 1, 50},
        {"ArcTanh", ArcTanh, [](L x) { return std::atanh(x); }, -0.99, 0.99},
        {"Exp", Exp, [](L x) { return std::exp(x); }, -700, 700},
        {"Exp2", Exp2, [](L x) { return std::exp2(x); }, -1000, 1000},
        {"Exp10", Exp10, [](L x) { return std::pow(10.0L, x); }, -300, 300},
        {"Ln", Ln, [](L x) { return std::log(x); }, 1e-3, 1e3},
        {"Log2", Log2, [](L x) { return std::log2(x); }, 1e-3, 1e3},
        {"Log10", Log10, [](L x) { return std::log10(x); }, 1e-3, 1e3},
        {"Log2X", Log2X, [](L x) { return std::log2(x); }, 0.1, 10},
        {"Ln1", Ln1, [](L x) { return std::log1p(x); }, -0.9, 10},
        {"Sqrt", Sqrt, [](L x) { return std::sqrt(x); }, 0, 1e6},
    };
    for (const Case& c : cases) {
        for (int i = 0; i <= 200; ++i) {
            const double x = c.lo + (c.hi - c.lo) * i / 200.0;
            const double expected = static_cast<double>(c.ref(x));
            EXPECT_LE(UlpDistance(c.f(x), expected), 1) << c.name << "(" << x << ")";
        }
    }
}

TEST(ScalarMathElementary, SingleFormsAreRoundedOnceFromExtended) {
    // A single form computed in float or through a double intermediate would
    // differ from the correctly rounded value on some of these arguments.
    for (int i = 1; i <= 400; ++i) {
        const float x = static_cast<float>(i) * 0.0731f;
        EXPECT_EQ(Sinf(x), static_cast<float>(std::sin(L(x)))) << x;
        EXPECT_EQ(Expf(x * 0.5f), static_cast<float>(std::exp(L(x * 0.5f)))) << x;
        EXPECT_EQ(Lnf(x), static_cast<float>(std::log(L(x)))) << x;
    }
    // 1.1f^97 by 7 squarings and products: float accumulation misses by several ulps.
    EXPECT_EQ(IntPowerf(1.1f, 97), static_cast<float>(std::pow(L(1.1f), 97)));
    EXPECT_EQ(Powerf(1.1f, 97.5f), static_cast<float>(std::pow(L(1.1f), 97.5L)));
}

TEST(ScalarMathElementary, ReciprocalAndInverseFamiliesOnKnownValues) {
    const double eps = 4e-16;
    // {got, want, tolerance}; sinh(ln 2) = 3/4, tanh(ln 2) = 3/5
    const double cases[][3] = {{Sec(PI / 3), 2.0, eps * 4},          {Csc(PI / 6), 2.0, eps * 4},
                               {Cot(PI / 4), 1.0, eps * 2},          {Sech(0.0), 1.0, 0},
                               {Csch(LN2), 4.0 / 3.0, eps * 4},      {Coth(LN2), 5.0 / 3.0, eps * 4},
                               {ArcSec(2.0), PI / 3, eps * 4},       {ArcCsc(2.0), PI / 6, eps * 2},
                               {ArcCot(1.0), PI / 4, eps * 2},       {ArcCot(0.0), PIDIV2, eps * 2},
                               {ArcSech(1.0), 0.0, 0},               {ArcCsch(1.0), std::log(1.0 + SQRT2), eps * 2},
                               {ArcCoth(2.0), 0.5 * std::log(3.0), eps * 2}};
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_NEAR(cases[i][0], cases[i][1], cases[i][2]) << "case " << i;
    EXPECT_TRUE(std::isnan(ArcSin(1.5)));
    EXPECT_TRUE(std::isnan(Ln(-1.0)));
    EXPECT_EQ(Ln(0.0), -INF);
    EXPECT_NEAR(ArcTan2(1.0, -1.0), 3 * PI / 4, eps * 4);
    EXPECT_EQ(LogN(2.0, 1024.0), 10.0);
    EXPECT_NEAR(LogN(10.0, 1e-5), -5.0, eps * 20);

    double s, c;
    SinCos(PI / 6, s, c);
    EXPECT_NEAR(s, 0.5, eps);
    EXPECT_NEAR(c, std::sqrt(3.0) / 2, eps);
    SinhCosh(LN2, s, c);
    EXPECT_NEAR(s, 0.75, eps);
    EXPECT_NEAR(c, 1.25, eps);
}

TEST(ScalarMathElementary, NearOneAndSaturatingForms) {
    // References from the series, independent of any log routine.
    const double e = (1.0 + 1e-10) - 1.0;  // exactly the step above 1 that 1 + 1e-10 holds
    const L series = (L(e) - L(e) * e / 2 + L(e) * e * e / 3) / std::log(2.0L);
    EXPECT_LE(UlpDistance(Log2X(1.0 + e), static_cast<double>(series)), 1);
    ExpectExactReal({{Log2X(1.0), 0},       {Log2X(8.0), 3},       {Ln1(1e-20), 1e-20},  {TanhX(1e-20), 1e-20},
                     {TanhX(1000.0), 1},    {TanhX(-1e300), -1},   {Exp(710.0), INF},    {DegToRad(180.0), PI},
                     {RadToDeg(PI), 180},   {Exp2(-1074.0), std::numeric_limits<double>::denorm_min()}});
}

// ---------------------------------------------------------------------------
// Power and IntPower.
// ---------------------------------------------------------------------------
TEST(ScalarMathPower, RealEdgeValues) {
    // {base, exponent, result}
    const double cases[][3] = {{0, 0, 1},       {NAN_, 0, 1},     {INF, 0, 1},        {0, 2.5, 0},
                               {0, -1, INF},    {-0.0, -3, INF},  {-2, 3, -8},        {-2, -2, 0.25},
                               {-2, 0.5, NAN_}, {NAN_, 1, NAN_},  {2, 1024, INF},     {10, -400, 0},
                               {0.5, INF, 0},   {2, 1023, std::ldexp(1.0, 1023)},
                               {2, -1074, std::numeric_limits<double>::denorm_min()}};
    for (const auto& c : cases) {
        const double got = Power(c[0], c[1]);
        EXPECT_TRUE(got == c[2] || (std::isnan(got) && std::isnan(c[2]))) << c[0] << "^" << c[1] << " = " << got;
    }
    EXPECT_EQ(Powerf(0.0f, 0.0f), 1.0f);
    EXPECT_EQ(Powerf(-3.0f, 3.0f), -27.0f);
}

TEST(ScalarMathPower, RealAccuracyOverWideExponents) {
    for (int i = 1; i <= 60; ++i) {
        const double b = 0.037 * i * i;
        for (double e : {-300.0 / i, -7.25, -0.5, 0.3, 1.0, 3.0, 13.7, 190.0 / i}) {
            const L ref = std::pow(L(b), L(e));
            if (!std::isfinite(static_cast<double>(ref)) || std::fabs(static_cast<double>(ref)) < 1e-300) continue;
            EXPECT_LE(UlpDistance(Power(b, e), static_cast<double>(ref)), 1) << b << "^" << e;
        }
    }
}

TEST(ScalarMathPower, IntPowerRealAndComplex) {
    const int32_t lowest = std::numeric_limits<int32_t>::min();
    ExpectExactReal({{IntPower(NAN_, 0), 1},         {IntPower(3.0, 5), 243},   {IntPower(-2.0, -3), -0.125},
                     {IntPower(2.0, lowest), 0},      {IntPower(0.5, lowest), INF},
                     {IntPower(2.0, -1074), std::numeric_limits<double>::denorm_min()}});
    // Squaring doubles the relative error at each step: with a long double
    // accumulator the error stays near n * 2^-64, with a double one near n * 2^-53.
    const double b = 1.0000001;
    EXPECT_LE(UlpDistance(IntPower(b, 1000), static_cast<double>(std::pow(L(b), 1000))), 1);
    EXPECT_LE(UlpDistance(IntPower(b, 1000000), static_cast<double>(std::pow(L(b), 1000000))), 1000);

    ExpectExact({{IntPower(TCplx(1, 1), 8), {16, 0}}, {IntPower(CNAN, 0), {1, 0}}});
    ExpectNear(IntPower(TCplx(1, 1), -2), 0, -0.5, 1e-16);
    const TSCplx s = IntPower(TSCplx(0.0f, 2.0f), 3);
    EXPECT_EQ(s.Re, 0.0f);
    EXPECT_EQ(s.Im, -8.0f);
}

TEST(ScalarMathPower, ComplexForms) {
    ExpectExact({{Power(CNAN, 0.0), {1, 0}}, {Power(C_ZERO, -2.0), {0, 0}}, {Power(TCplx(3, 4), C_ZERO), {1, 0}}});
    ExpectNear(Power(C_I, 2.0), -1, 0, 1e-15);
    ExpectNear(Power(TCplx(-8, 0), 1.0 / 3.0), 1, std::sqrt(3.0L), 1e-15);
    ExpectNear(Power(-1.0, TCplx(0.5, 0)), 0, 1, 1e-15);
    ExpectNear(Power(C_I, C_I), std::exp(-PIDIV2), 0, 1e-16);
    for (double re : {-2.5, -0.3, 0.7, 4.0}) {
        for (double im : {-3.0, 0.4, 2.0}) {
            const TCplx z(re, im), w(0.3 * im, -0.2 * re);
            const CL ref = std::pow(CL(re, im), CL(w.Re, w.Im));
            ExpectNear(Power(z, w), ref.real(), ref.imag(), 1e-14 * std::abs(ref));
        }
    }
    TSCplx r;
    Power(TSCplx(0, 1), 2.0f, r);
    EXPECT_NEAR(r.Re, -1.0f, 1e-7f);
    EXPECT_NEAR(r.Im, 0.0f, 1e-7f);
}

// ---------------------------------------------------------------------------
// Complex arithmetic.
// ---------------------------------------------------------------------------
TEST(ScalarMathComplex, SqrtStaysInRightHalfPlane) {
    ExpectExact({{CSqrt(TCplx(-4, 0)), {0, 2}}, {CSqrt(TCplx(-4, -0.0)), {0, -2}}, {CSqrt(TCplx(3, 4)), {2, 1}},
                 {CSqrt(TCplx(-3, 4)), {1, 2}}, {CSqrt(TCplx(-3, -4)), {1, -2}}, {CSqrt(C_ZERO), {0, 0}}});
    for (double re : {-5.0, -1e-3, 0.0, 2.0, 1e10}) {
        for (double im : {-7.0, -1e-8, 3.0, 1e-200}) {
            const TCplx r = Sqrt(TCplx(re, im));
            EXPECT_GE(r.Re, 0.0);
            const TCplx sq = CSqr(r);
            ExpectNear(sq, re, im, 1e-15 * CAbs(TCplx(re, im)));
        }
    }
}

TEST(ScalarMathComplex, DivisionAndInverse) {
    EXPECT_FALSE(std::isfinite(CInv(C_ZERO).Re) || std::isfinite(CInv(C_ZERO).Im));
    EXPECT_FALSE(std::isfinite(CDiv(1.0, C_ZERO).Re));
    ExpectExact({{CInv(TCplx(0, 2)), {0, -0.5}},
                 {CDiv(1.0, TCplx(0, 2)), {0, -0.5}},
                 {CDiv(TCplx(1, 2), 4.0), {0.25, 0.5}}});
    ExpectNear(CDiv(TCplx(1, 2), TCplx(3, 4)), 0.44, 0.08, 1e-16);
    // The unscaled magnitude still holds in extended precision.
    EXPECT_EQ(CAbs(TCplx(std::ldexp(3.0, 700), std::ldexp(4.0, 700))), std::ldexp(5.0, 700));
    EXPECT_EQ(CAbs(TSCplx(std::ldexp(3.0f, 100), std::ldexp(4.0f, 100))), std::ldexp(5.0f, 100));
    EXPECT_EQ(CAbs1(TCplx(-3, 4)), 7.0);
    EXPECT_EQ(Norm(TCplx(-3, 4)), 25.0);
    EXPECT_NEAR(Arg(TCplx(-1, -1)), -3 * PI / 4, 1e-15);
}

TEST(ScalarMathComplex, PartOperationsAndInPlaceForms) {
    const TCplx z(1, -2);
    TCplx r;
    MulI(z, r);
    ExpectExact({{Conj(z), {1, 2}},         {Flip(z), {-2, 1}},      {FlipConj(z), {-2, -1}},
                 {MulI(z), {2, 1}},         {Neg(z), {-1, 2}},       {Sign(z), {-1, 2}},
                 {r, {2, 1}},               {CAdd(1.0, z), {2, -2}}, {CSub(1.0, z), {0, 2}},
                 {CMul(z, z), {-3, -4}},    {CRound(TCplx(2.5, -2.5)), {2, -2}},
                 {CRound(TCplx(3.5, -0.4)), {4, 0}}, {CTrunc(TCplx(-1.75, 1.75)), {-1, 1}},
                 {CFrac(TCplx(-1.75, 1.75)), {-0.75, 0.75}}, {CplxDouble(TSCplx(0.5f, 0.25f)), {0.5, 0.25}}});
    EXPECT_EQ(Sign(2.5), -2.5);
    EXPECT_EQ(Real(z), 1.0);
    EXPECT_EQ(Imag(z), -2.0);

    TCplx a(5, 5);
    CSubMulI(a, TCplx(1, 1), C_I);  // (4 + 4i) * i
    ExpectNear(a, -4, 4, 0);
    a = TCplx(0, 2);
    CInvMulI(a, TCplx(4, 0));  // 4 / (2i)
    ExpectNear(a, 0, -2, 0);
    a = TCplx(1, 1);
    CAddI(a, 2.0);
    CMulI(a, TCplx(0, 1));
    CSubI(a, TCplx(1, 1));
    TCplx t, f;
    TruncAndFrac(TCplx(-3.25, 7.5), t, f);
    ExpectExact({{a, {-2, 2}}, {t, {-3, 7}}, {f, {-0.25, 0.5}}});

    const TSCplx s = CplxSingle(TCplx(1e40, 0.1));
    EXPECT_EQ(s.Re, INF_SINGLE);
    EXPECT_EQ(s.Im, 0.1f);
    EXPECT_EQ(ToSingle(0.1), 0.1f);
}

TEST(ScalarMathComplex, RootsPolarAndPythag) {
    ExpectNear(Root(TCplx(-8, 0), 3), 1, std::sqrt(3.0L), 1e-15);
    ExpectNear(Root(TCplx(-8, 0), 3, 1), -2, 0, 1e-15);
    ExpectNear(Root(TCplx(0, 16), 4, 0), 2 * std::cos(PI / 8), 2 * std::sin(PI / 8), 1e-15);
    EXPECT_TRUE(IsNaN(Root(TCplx(1, 1), 0)));

    double amp, phase;
    CartToPolar(TCplx(-1, 1), amp, phase);
    EXPECT_NEAR(amp, SQRT2, 1e-16);
    EXPECT_NEAR(phase, 3 * PI / 4, 1e-15);
    ExpectNear(PolarToCart(amp, phase), -1, 1, 1e-15);

    for (auto [a, b, want] :
         {std::tuple{3.0, -4.0, 5.0}, {0.0, -2.0, 2.0}, {1e300, 1e300, 1e300 * SQRT2}, {INF, 1.0, INF}})
        EXPECT_EQ(Pythag(a, b), want) << a << " " << b;
    EXPECT_TRUE(std::isnan(Pythag(NAN_, 1.0)));
    ExpectExact({{Pythag(TCplx(3, 0), TCplx(4, 0)), {5, 0}}, {Pythag(C_ONE, C_I), {0, 0}}});
}

TEST(ScalarMathComplex, ElementaryAgainstExtendedComplex) {
    struct Case {
        const char* name;
        TCplx (*f)(const TCplx&);
        CL (*ref)(const CL&);
    };
    const Case cases[] = {
        {"Sin", Sin, [](const CL& z) { return std::sin(z); }},
        {"Cos", Cos, [](const CL& z) { return std::cos(z); }},
        {"Tan", Tan, [](const CL& z) { return std::tan(z); }},
        {"Sec", Sec, [](const CL& z) { return 1.0L / std::cos(z); }},
        {"Coth", Coth, [](const CL& z) { return std::cosh(z) / std::sinh(z); }},
        {"Exp", Exp, [](const CL& z) { return std::exp(z); }},
        {"Exp2", Exp2, [](const CL& z) { return std::pow(CL(2), z); }},
        {"Exp10", Exp10, [](const CL& z) { return std::pow(CL(10), z); }},
        {"Ln", Ln, [](const CL& z) { return std::log(z); }},
        {"Log10", Log10, [](const CL& z) { return std::log10(z); }},
        {"ArcSin", ArcSin, [](const CL& z) { return std::asin(z); }},
        {"ArcCos", ArcCos, [](const CL& z) { return std::acos(z); }},
        {"ArcTan", ArcTan, [](const CL& z) { return std::atan(z); }},
        {"ArcCosh", ArcCosh, [](const CL& z) { return std::acosh(z); }},
        {"ArcCot", ArcCot, [](const CL& z) { return std::atan(1.0L / z); }},
        {"Expj", Expj, [](const CL& z) { return std::exp(CL(0, 1) * z); }},
    };
    for (const Case& c : cases) {
        for (double re : {-1.7, -0.2, 0.5, 2.3}) {
            for (double im : {-1.1, 0.3, 1.9}) {
                const CL ref = c.ref(CL(re, im));
                const TCplx r = c.f(TCplx(re, im));
                EXPECT_NEAR(r.Re, ref.real(), 4e-16 * std::abs(ref)) << c.name << "(" << re << ", " << im << ")";
                EXPECT_NEAR(r.Im, ref.imag(), 4e-16 * std::abs(ref)) << c.name << "(" << re << ", " << im << ")";
            }
        }
    }
    // Principal branches: the signed zero of Im picks the side of a cut,
    // ArcCosh keeps a non-negative real part.
    EXPECT_GT(ArcSin(TCplx(2, 0.0)).Im, 0.0);
    EXPECT_LT(ArcSin(TCplx(2, -0.0)).Im, 0.0);
    ExpectNear(ArcCosh(TCplx(2, 0)), std::acosh(2.0L), 0, 1e-15);
    EXPECT_GT(ArcCosh(TCplx(0.5, -3)).Re, 0.0);
    ExpectNear(LogN(2.0, TCplx(8, 0)), 3, 0, 1e-15);
    ExpectNear(Log2(TCplx(-8, 0)), 3, PI / LN2, 1e-15);
    TCplx s, c;
    SinCos(TCplx(0.5, 1), s, c);
    const TCplx one = CSqr(s) + CSqr(c);
    ExpectNear(one, 1, 0, 1e-15);
}

// ---------------------------------------------------------------------------
// Rounding and sign.
// ---------------------------------------------------------------------------
TEST(ScalarMathRounding, RemFixAngleAndSgn) {
    ExpectExactReal({{Rem(-7.0, 3.0), -1}, {Rem(7.0, -3.0), 1}, {Rem(5.5, 2.0), 1.5}, {Rem(1.0, 0.0), NAN_}});
    EXPECT_EQ(Remf(-7.0f, 3.0f), -1.0f);
    ExpectExact({{Rem(TCplx(7, -5), TCplx(3, 0)), {1, -2}}});

    EXPECT_NEAR(std::fabs(FixAngle(3 * PI)), PI, 1e-15);
    EXPECT_NEAR(FixAngle(7.0), 7.0 - TWOPI, 1e-15);
    EXPECT_NEAR(FixAngle(-7.0), -7.0 + TWOPI, 1e-15);
    EXPECT_NEAR(FixAngle(-20.0), -20.0 + 3 * TWOPI, 1e-14);
    EXPECT_EQ(FixAngle(1.0), 1.0);

    for (auto [x, sign] : {std::pair{NAN_, 1}, {-0.0, 0}, {-1e-300, -1}}) EXPECT_EQ(Sgn(x), sign) << x;
    for (auto [z, sign] : {std::pair{C_ZERO, 0}, {TCplx(0, -2), -1}, {TCplx(-1, 5), -1}, {TCplx(NAN_, -1), 1}})
        EXPECT_EQ(Sgn(z), sign) << z.Re << " " << z.Im;
    EXPECT_EQ(Sgnf(NAN_SINGLE), 1);
    EXPECT_EQ(Sgn(TSCplx(0.0f, 3.0f)), 1);

    double t, f;
    TruncAndFrac(-3.25, t, f);
    ExpectExactReal({{Ceil(-1.5), -1}, {Floor(-1.5), -2}, {Ceil(NAN_), NAN_}, {t, -3}, {f, -0.25},
                     {Max(1.0, 2.0), 2}, {Min(-1.0, 2.0), -1}, {Max(NAN_, 1.0), NAN_}, {Min(1.0, NAN_), NAN_}});
    EXPECT_EQ(Max(int32_t(-3), int32_t(2)), 2);
    EXPECT_EQ(Minf(3.0f, -2.0f), -2.0f);
    double x = 1, y = 2;
    Swap(x, y);
    EXPECT_EQ(x, 2.0);
    EXPECT_EQ(y, 1.0);
}

// ---------------------------------------------------------------------------
// Tests, order and ranges.
// ---------------------------------------------------------------------------
TEST(ScalarMathTests, NonFiniteClassification) {
    EXPECT_TRUE(IsNaN(NAN_) && !IsNaN(INF) && IsInf(-INF) && IsInfNan(NAN_) && IsNanInf(INF) && !IsInfNan(1e308));
    EXPECT_TRUE(IsNaN(TCplx(1, NAN_)) && IsInf(TSCplx(1, -INF_SINGLE)) && !IsInf(TCplx(NAN_, 1)));
    EXPECT_TRUE(IsInfNan(TCplx(NAN_, 1)) && IsNaNf(NAN_SINGLE));
}

TEST(ScalarMathTests, RealOrderTests) {
    EXPECT_TRUE(Smaller2(1.0, 2.0));
    EXPECT_FALSE(Smaller2(2.0, 2.0));
    EXPECT_FALSE(Smaller2(NAN_, 1.0));
    EXPECT_FALSE(Bigger2(1.0, NAN_));
    EXPECT_TRUE(SmallerOrEqual(2.0, 2.0));
    EXPECT_FALSE(BiggerOrEqual(NAN_, NAN_));
    // Within the tolerance a pair is both smaller-or-equal and bigger-or-equal,
    // and neither smaller nor bigger.
    EXPECT_TRUE(SmallerOrEqual(1.05, 1.0, 0.1));
    EXPECT_TRUE(BiggerOrEqual(1.0, 1.05, 0.1));
    EXPECT_FALSE(Smaller(1.0, 1.05, 0.1));
    EXPECT_FALSE(SmallerOrEqual(1.2, 1.0, 0.1));
    EXPECT_FALSE(BiggerOrEqual(1.0, 1.2, 0.1));
}

TEST(ScalarMathTests, ComplexOrderByMagnitudeThenPhase) {
    // Pairs a > b. At equal magnitudes -1 is the largest phase, -i the
    // smallest; then quadrant 1: larger Re, larger phase; quadrant 3: smaller
    // Re, larger phase.
    const TCplx one(1, 0), i(0, 1), m1(-1, 0), mi(0, -1);
    for (auto [a, b] : {std::pair{TCplx(2, 0), TCplx(1, 1)}, {TCplx(-1, 0), TCplx(0.5, -0.5)}, {m1, i}, {i, one},
                        {one, mi}, {m1, mi}, {TCplx(-0.6, -0.8), TCplx(-0.8, -0.6)},
                        {TCplx(0.6, 0.8), TCplx(0.8, 0.6)}})
        EXPECT_TRUE(Bigger(a, b) && Smaller(b, a)) << a.Re << "," << a.Im << " vs " << b.Re << "," << b.Im;
    EXPECT_FALSE(Bigger(one, one));
    EXPECT_TRUE(SmallerOrEqual(one, one));
    EXPECT_TRUE(BiggerOrEqual(one, one));
    // The phase alone.
    EXPECT_TRUE(Bigger2(TCplx(0.1, 0.1), TCplx(10, 0)));
    EXPECT_TRUE(Smaller2(TCplx(10, -1), TCplx(0.1, 0)));
    EXPECT_FALSE(Bigger2(one, TCplx(5, 0)));
    EXPECT_FALSE(Smaller2(one, TCplx(5, 0)));
    EXPECT_TRUE(Bigger2(TCplx(1, 2), TCplx(10, 3)));
    EXPECT_TRUE(Bigger2(TCplx(-10, 1), TCplx(-1, 1)));  // quadrant 4, nearer to pi
    // NaN is unordered: every test false.
    const TCplx n(NAN_, 0);
    EXPECT_FALSE(Smaller(n, one));
    EXPECT_FALSE(SmallerOrEqual(n, one));
    EXPECT_FALSE(BiggerOrEqual(one, n));
    EXPECT_FALSE(Bigger2(n, one));
}

TEST(ScalarMathTests, ComplexOperatorsInThreeForms) {
    const TCplx m1(-1, 0);
    EXPECT_TRUE(m1 > 1.0);
    EXPECT_TRUE(1.0 < m1);
    EXPECT_TRUE(TCplx(0.5, 0.5) < TCplx(1, 0));
    EXPECT_TRUE(TCplx(1, 0) <= 1.0);
    EXPECT_TRUE(1.0 >= TCplx(1, 0));
    EXPECT_FALSE(TCplx(1, 0) > 1.0);
    EXPECT_TRUE(TCplx(3, 4) >= TCplx(-4, 3) || TCplx(3, 4) <= TCplx(-4, 3));
    EXPECT_TRUE(TSCplx(-2.0f, 0.0f) > 2.0f);
    EXPECT_TRUE(TSCplx(0.0f, 1.0f) <= TSCplx(0.0f, 1.0f));
    EXPECT_FALSE(TSCplx(NAN_SINGLE, 0.0f) >= 0.0f);
}

TEST(ScalarMathTests, RangeHelpers) {
    for (auto [lo, x, hi, want] : {std::tuple{5.0, 1.0, 3.0, 3.0}, {5.0, 9.0, 3.0, 3.0}, {1.0, 5.0, 3.0, 3.0},
                                   {1.0, 0.0, 3.0, 1.0}, {1.0, 2.0, 3.0, 2.0}})
        EXPECT_EQ(EnsureRange(lo, x, hi), want) << lo << " " << x << " " << hi;
    EXPECT_TRUE(std::isnan(EnsureRange(1.0, NAN_, 3.0)));
    EXPECT_EQ(EnsureRange(int32_t(5), int32_t(1), int32_t(3)), 3);
    EXPECT_TRUE(CheckRange(1.0, 1.0, 3.0));
    EXPECT_TRUE(CheckRange(1.0, 3.0, 3.0));
    EXPECT_FALSE(CheckRange(3.0, 2.0, 1.0));
    EXPECT_FALSE(CheckRange(1.0, NAN_, 3.0));
    EXPECT_FALSE(CheckRange(int32_t(0), int32_t(-1), int32_t(4)));
    double v = 7;
    LimitRange(0.0, v, 2.5);
    EXPECT_EQ(v, 2.5);
    int32_t k = -4;
    LimitRange(int32_t(0), k, int32_t(10));
    EXPECT_EQ(k, 0);
    float fv = -1;
    LimitRangef(0.0f, fv, 1.0f);
    EXPECT_EQ(fv, 0.0f);
}

// ---------------------------------------------------------------------------
// Integer helpers.
// ---------------------------------------------------------------------------
TEST(ScalarMathInteger, GcdLcmAndPowersOfTwo) {
    EXPECT_EQ(Gcd(12, -18), 6);
    EXPECT_EQ(Gcd(0, 0), 0);
    EXPECT_EQ(Gcd(0, -7), 7);
    EXPECT_EQ(Gcd(int64_t(1) << 40, int64_t(3) << 20), int64_t(1) << 20);
    EXPECT_EQ(Lcm(4, 6), 12);
    EXPECT_EQ(Lcm(-4, 6), 12);
    EXPECT_EQ(Lcm(0, 5), 0);
    // {n, LargestExp2, SmallestExp2, LargestLog2}; 0 where not asked
    const int32_t cases[][4] = {{0, 2, 0, 0},        {1, 2, 1, 1},       {3, 4, 2, 0},
                                {1023, 0, 512, 0},   {1024, 1024, 1024, 10}, {1025, 2048, 0, 11},
                                {std::numeric_limits<int32_t>::max(), 0, 1 << 30, 0}};
    for (const auto& c : cases) {
        if (c[1]) EXPECT_EQ(LargestExp2(c[0]), c[1]) << c[0];
        if (c[2]) EXPECT_EQ(SmallestExp2(c[0]), c[2]) << c[0];
        if (c[3]) EXPECT_EQ(LargestLog2(c[0]), c[3]) << c[0];
    }
}
