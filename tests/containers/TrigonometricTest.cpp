// Trigonometric and hyperbolic members against long double references and
// against their compositions written out, bit for bit.
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <limits>

#include "ContainerTestUtil.h"
#include "rovane/primitives/ippspl.h"

using namespace rovane;
using namespace rovane::test;

namespace {

using LD = long double;
using CLD = std::complex<long double>;
using Member = TRovane& (TRovane::*)(const TRovane&);

// Error of got against the exact value in units in the last place of the
// precision.
double Ulps(double got, LD exact, bool isDouble) {
    return isDouble ? test_util::UlpError<double>(got, exact) : test_util::UlpError<float>(float(got), exact);
}

TCplx At(const TVec& v, int32_t i) { return {v[2 * i], v[2 * i + 1]}; }

void FillCplx(TVec& v, const std::vector<TCplx>& z, bool isDouble = true) {
    v.Size(static_cast<int32_t>(z.size()), true, isDouble);
    for (size_t i = 0; i < z.size(); ++i) {
        v[2 * i] = z[i].Re;
        v[2 * i + 1] = z[i].Im;
    }
}

using test_util::BitSame;
bool Same(double a, double b) { return BitSame(a, b); }
#define EXPECT_SAME(got, want) \
    EXPECT_TRUE(Same((got).Re, (want).Re) && Same((got).Im, (want).Im)) << (got).Re << "," << (got).Im

struct RealCase {
    const char* name;
    Member op;
    std::function<LD(LD)> ref;
    std::vector<double> x;
    double ulps;  // allowed error; the composed members carry a second rounding
};

Member M(TRovane& (TRovane::*m)(const TRovane&)) { return m; }

}  // namespace

TEST(Trigonometric, RealMembersAgainstLongDouble) {
    const std::vector<double> any = {-7.5, -2.25, -0.75, -1e-5, 0.3, 1.25, 3.0, 40.0};
    const std::vector<double> unit = {-0.95, -0.5, -1e-4, 0.25, 0.7, 0.999};
    const std::vector<double> outside = {-9.0, -2.5, -1.5, 1.25, 3.0, 100.0};
    const std::vector<RealCase> cases = {
        {"Sin", M(&TRovane::Sin), [](LD x) { return sinl(x); }, any, 1},
        {"Cos", M(&TRovane::Cos), [](LD x) { return cosl(x); }, any, 1},
        {"Tan", M(&TRovane::Tan), [](LD x) { return tanl(x); }, any, 1},
        {"Cot", M(&TRovane::Cot), [](LD x) { return 1 / tanl(x); }, any, 2},
        {"Sec", M(&TRovane::Sec), [](LD x) { return 1 / cosl(x); }, any, 2},
        {"Csc", M(&TRovane::Csc), [](LD x) { return 1 / sinl(x); }, any, 2},
        {"ArcSin", M(&TRovane::ArcSin), [](LD x) { return asinl(x); }, unit, 1},
        {"ArcCos", M(&TRovane::ArcCos), [](LD x) { return acosl(x); }, unit, 1},
        {"ArcTan", M(&TRovane::ArcTan), [](LD x) { return atanl(x); }, any, 1},
        {"ArcCot", M(&TRovane::ArcCot), [](LD x) { return atanl(1 / x); }, any, 2},
        {"ArcSec", M(&TRovane::ArcSec), [](LD x) { return acosl(1 / x); }, outside, 3},
        {"ArcCsc", M(&TRovane::ArcCsc), [](LD x) { return asinl(1 / x); }, outside, 3},
        {"Sinh", M(&TRovane::Sinh), [](LD x) { return sinhl(x); }, any, 1},
        {"Cosh", M(&TRovane::Cosh), [](LD x) { return coshl(x); }, any, 1},
        {"Tanh", M(&TRovane::Tanh), [](LD x) { return tanhl(x); }, any, 1},
        {"Coth", M(&TRovane::Coth), [](LD x) { return 1 / tanhl(x); }, any, 2},
        {"Sech", M(&TRovane::Sech), [](LD x) { return 1 / coshl(x); }, any, 2},
        {"Csch", M(&TRovane::Csch), [](LD x) { return 1 / sinhl(x); }, any, 2},
        {"ArcSinh", M(&TRovane::ArcSinh), [](LD x) { return asinhl(x); }, any, 1},
        {"ArcCosh", M(&TRovane::ArcCosh), [](LD x) { return acoshl(x); }, {1.0, 1.5, 3.0, 1e6}, 1},
        {"ArcTanh", M(&TRovane::ArcTanh), [](LD x) { return atanhl(x); }, unit, 1},
        {"ArcCoth", M(&TRovane::ArcCoth), [](LD x) { return atanhl(1 / x); }, outside, 3},
        {"ArcSech", M(&TRovane::ArcSech), [](LD x) { return acoshl(1 / x); }, {0.1, 0.3, 0.6}, 3},
        {"ArcCsch", M(&TRovane::ArcCsch), [](LD x) { return asinhl(1 / x); }, any, 2},
        {"DegToRad", M(&TRovane::DegToRad), [](LD x) { return x * (LD)PI180; }, any, 1},
        {"RadToDeg", M(&TRovane::RadToDeg), [](LD x) { return x * (LD)INVPI180; }, any, 1},
    };
    for (bool isDouble : {true, false}) {
        for (const RealCase& c : cases) {
            TVec x, y;
            x.Size(static_cast<int32_t>(c.x.size()), false, isDouble);
            for (size_t i = 0; i < c.x.size(); ++i) x[i] = c.x[i];
            (y.*c.op)(x);
            ASSERT_EQ(y.Length(), x.Length());
            ASSERT_FALSE(y.Complex());
            ASSERT_EQ(y.IsDouble(), isDouble);
            for (int32_t i = 0; i < x.Length(); ++i)
                EXPECT_LE(Ulps(y[i], c.ref((LD)x[i]), isDouble), c.ulps)
                    << c.name << (isDouble ? " double" : " single") << " at " << x[i] << ": " << y[i];
        }
    }
}

TEST(Trigonometric, ReciprocalMembersStayComposed) {
    // Cot is Inv of the rounded Tan, bit for bit, and ArcCot is ArcTan of the
    // rounded reciprocal; a pole of Tan's reciprocal gives infinities.
    TVec x, t, r;
    Fill(x, {0.0, -0.0, 0.5, 1.3, -2.9, 1e-300});
    t.Tan(x);
    r.Cot(x);
    for (int32_t i = 0; i < x.Length(); ++i) EXPECT_TRUE(Same(r[i], 1.0 / t[i])) << i;
    EXPECT_EQ(r[0], INFINITY);
    EXPECT_EQ(r[1], -INFINITY);

    TVec inv, a;
    inv.Size(x);
    for (int32_t i = 0; i < x.Length(); ++i) inv[i] = 1.0 / x[i];
    a.ArcTan(inv);
    r.ArcCot(x);
    for (int32_t i = 0; i < x.Length(); ++i) EXPECT_TRUE(Same(r[i], a[i])) << i;
    EXPECT_EQ(r[0], PIDIV2);
    EXPECT_EQ(r[1], -PIDIV2);
}

TEST(Trigonometric, SinCosAndSinhCosh) {
    for (bool isDouble : {true, false}) {
        TVec x, s, c;
        Fill(x, {-3.0, -0.6, 0.0, 0.6, 2.0, 12.0}, false, isDouble);
        x.SinCos(s, c);
        ASSERT_EQ(s.Length(), 6);
        ASSERT_EQ(c.IsDouble(), isDouble);
        for (int32_t i = 0; i < 6; ++i) {
            EXPECT_LE(Ulps(s[i], sinl((LD)x[i]), isDouble), 1) << i;
            EXPECT_LE(Ulps(c[i], cosl((LD)x[i]), isDouble), 1) << i;
        }
        // sinh and cosh follow E = exp(x), R = 1/E, (E -+ R) * 0.5 exactly, in the precision.
        auto halves = [](auto e) {
            const decltype(e) r = 1 / e, half = 0.5;
            return std::pair<double, double>((e - r) * half, (e + r) * half);
        };
        TVec sh, ch;
        x.SinhCosh(sh, ch);
        for (int32_t i = 0; i < 6; ++i) {
            double e = 0;
            float es = 0;
            isDouble ? ippsExp_64f_A53_Idx(&x.Values1D[i], 0, &e, 0, 1) : sippsExp_32f_A24_Idx(&x.SValues1D[i], 0, &es, 0, 1);
            const auto [wantSh, wantCh] = isDouble ? halves(e) : halves(es);
            EXPECT_TRUE(Same(sh[i], wantSh)) << i;
            EXPECT_TRUE(Same(ch[i], wantCh)) << i;
            if (x[i] != 0) EXPECT_NEAR(sh[i] / (double)sinhl((LD)x[i]), 1, isDouble ? 1e-15 : 1e-6);
            EXPECT_NEAR(ch[i] / (double)coshl((LD)x[i]), 1, isDouble ? 1e-15 : 1e-6);
        }
    }
    // The composed pair overflows where exp does; the Sinh member does not.
    TVec x, sh, ch, direct;
    Fill(x, {710.0, -710.0});
    x.SinhCosh(sh, ch);
    EXPECT_EQ(sh[0], INFINITY);
    EXPECT_EQ(ch[0], INFINITY);
    EXPECT_EQ(sh[1], -INFINITY);
    EXPECT_EQ(ch[1], INFINITY);
    direct.Sinh(x);
    EXPECT_TRUE(std::isfinite(direct[0]));
}

TEST(Trigonometric, PairRangeForms) {
    TVec x, s, c, sh, ch;
    Fill(x, {0.1, 0.2, 0.3, 0.4, 0.5});
    Fill(s, {9, 9, 9, 9});
    Fill(c, {8, 8, 8});
    x.SinCos(s, c, 1, 0, 2, 3);  // x[2..4] into s[1..3] and c[0..2]
    EXPECT_EQ(s[0], 9);
    for (int32_t k = 0; k < 3; ++k) {
        double sv, cv;
        ippsSinCos_64f_A53_Idx(x.Values1D, 2 + k, &sv, 0, &cv, 0, 1);
        EXPECT_EQ(s[1 + k], sv);
        EXPECT_EQ(c[k], cv);
    }
    Fill(sh, {0, 0});
    Fill(ch, {0, 0});
    x.SinhCosh(sh, ch, 0, 1, 4, 1);
    EXPECT_EQ(sh[1], 0);
    EXPECT_EQ(ch[0], 0);
    EXPECT_NEAR(sh[0], std::sinh(0.5), 1e-15);
    EXPECT_NEAR(ch[1], std::cosh(0.5), 1e-15);
    ExpectMessage<ERovaneRangeError>([&] { x.SinCos(s, c, 2, 0, 0, 3); },
                                     "X1 params out of range: xIndex1: 2, Len: 3, x1Length = 4");
}

TEST(Trigonometric, ComplexCircularAndHyperbolicFollowTheirFormulas) {
    // Each result is rebuilt here from SinCos and SinhCosh of the parts with
    // plain products: the composition order fixes every bit.
    const std::vector<TCplx> zs = {{1, 2}, {-0.5, 0.25}, {3, -1.5}, {0, 0}, {-2, -0.75}, {0.125, 4}};
    TVec z, x, y, x2, y2;
    FillCplx(z, zs);
    for (TVec* v : {&x, &y, &x2, &y2}) v->Size(6);
    for (int32_t i = 0; i < 6; ++i) {
        x[i] = zs[i].Re;
        y[i] = zs[i].Im;
        x2[i] = 2 * zs[i].Re;
        y2[i] = 2 * zs[i].Im;
    }
    TVec sx, cx, shy, chy, sy, cy, shx, chx, s2x, c2x, sh2y, ch2y, s2y, c2y, sh2x, ch2x;
    x.SinCos(sx, cx);
    y.SinhCosh(shy, chy);
    y.SinCos(sy, cy);
    x.SinhCosh(shx, chx);
    x2.SinCos(s2x, c2x);
    y2.SinhCosh(sh2y, ch2y);
    y2.SinCos(s2y, c2y);
    x2.SinhCosh(sh2x, ch2x);

    using Want = std::function<TCplx(int)>;
    const std::vector<std::pair<Member, Want>> members = {
        {M(&TRovane::Sin), [&](int i) { return TCplx(sx[i] * chy[i], cx[i] * shy[i]); }},
        {M(&TRovane::Cos), [&](int i) { return TCplx(cx[i] * chy[i], sx[i] * -shy[i]); }},
        {M(&TRovane::Tan),
         [&](int i) {
             const double d = 1.0 / (c2x[i] + ch2y[i]);
             return TCplx(s2x[i] * d, sh2y[i] * d);
         }},
        {M(&TRovane::Sinh), [&](int i) { return TCplx(shx[i] * cy[i], chx[i] * sy[i]); }},
        {M(&TRovane::Cosh), [&](int i) { return TCplx(chx[i] * cy[i], shx[i] * sy[i]); }},
        {M(&TRovane::Tanh),
         [&](int i) {
             const double d = 1.0 / (ch2x[i] + c2y[i]);
             return TCplx(sh2x[i] * d, s2y[i] * d);
         }},
    };
    for (const auto& [op, want] : members) {
        TVec r;
        (r.*op)(z);
        ASSERT_TRUE(r.Complex());
        for (int i = 0; i < 6; ++i) EXPECT_SAME(At(r, i), want(i)) << " at " << i;
    }
    // A known value: sin(1 + 2i) = 3.16577851321617 + 1.95960104142161i.
    TVec r;
    r.Sin(z);
    EXPECT_NEAR(At(r, 0).Re, 3.165778513216168, 1e-14);
    EXPECT_NEAR(At(r, 0).Im, 1.959601041421606, 1e-14);
}

TEST(Trigonometric, ComplexMembersAgainstLongDouble) {
    // Points off the branch cuts where every composition is well conditioned.
    const std::vector<TCplx> zs = {{1, 2}, {-0.5, 0.25}, {0.3, -1.5}, {-2, -0.75}, {0.8, 0.6}, {1.5, -0.4}};
    using Ref = std::function<CLD(CLD)>;
    const CLD i1(0, 1);
    const std::vector<std::tuple<const char*, Member, Ref>> cases = {
        {"Sin", M(&TRovane::Sin), [](CLD z) { return std::sin(z); }},
        {"Cos", M(&TRovane::Cos), [](CLD z) { return std::cos(z); }},
        {"Tan", M(&TRovane::Tan), [](CLD z) { return std::tan(z); }},
        {"Cot", M(&TRovane::Cot), [](CLD z) { return 1.0L / std::tan(z); }},
        {"Sec", M(&TRovane::Sec), [](CLD z) { return 1.0L / std::cos(z); }},
        {"Csc", M(&TRovane::Csc), [](CLD z) { return 1.0L / std::sin(z); }},
        {"ArcSin", M(&TRovane::ArcSin), [](CLD z) { return std::asin(z); }},
        {"ArcCos", M(&TRovane::ArcCos), [](CLD z) { return std::acos(z); }},
        {"ArcTan", M(&TRovane::ArcTan), [](CLD z) { return std::atan(z); }},
        {"ArcCot", M(&TRovane::ArcCot), [](CLD z) { return std::atan(1.0L / z); }},
        {"ArcSec", M(&TRovane::ArcSec), [](CLD z) { return std::acos(1.0L / z); }},
        {"ArcCsc", M(&TRovane::ArcCsc), [](CLD z) { return std::asin(1.0L / z); }},
        {"Sinh", M(&TRovane::Sinh), [](CLD z) { return std::sinh(z); }},
        {"Cosh", M(&TRovane::Cosh), [](CLD z) { return std::cosh(z); }},
        {"Tanh", M(&TRovane::Tanh), [](CLD z) { return std::tanh(z); }},
        {"Coth", M(&TRovane::Coth), [](CLD z) { return 1.0L / std::tanh(z); }},
        {"Sech", M(&TRovane::Sech), [](CLD z) { return 1.0L / std::cosh(z); }},
        {"Csch", M(&TRovane::Csch), [](CLD z) { return 1.0L / std::sinh(z); }},
        {"ArcSinh", M(&TRovane::ArcSinh), [](CLD z) { return std::asinh(z); }},
        {"ArcCosh", M(&TRovane::ArcCosh), [=](CLD z) { return i1 * std::acos(z); }},
        {"ArcTanh", M(&TRovane::ArcTanh), [](CLD z) { return std::atanh(z); }},
        {"ArcCoth", M(&TRovane::ArcCoth), [](CLD z) { return std::atanh(1.0L / z); }},
        {"ArcSech", M(&TRovane::ArcSech), [=](CLD z) { return i1 * std::acos(1.0L / z); }},
        {"ArcCsch", M(&TRovane::ArcCsch), [](CLD z) { return std::asinh(1.0L / z); }},
    };
    for (bool isDouble : {true, false}) {
        TVec z;
        FillCplx(z, zs, isDouble);
        for (const auto& [name, op, ref] : cases) {
            TVec r;
            (r.*op)(z);
            ASSERT_TRUE(r.Complex()) << name;
            ASSERT_EQ(r.IsDouble(), isDouble) << name;
            for (int32_t i = 0; i < z.Length(); ++i) {
                const CLD want = ref(CLD(At(z, i).Re, At(z, i).Im));
                const double tol = (isDouble ? 4e-14 : 2e-5) * std::max(1.0, (double)std::abs(want));
                EXPECT_NEAR(At(r, i).Re, (double)want.real(), tol) << name << " at " << i;
                EXPECT_NEAR(At(r, i).Im, (double)want.imag(), tol) << name << " at " << i;
            }
        }
    }
}

TEST(Trigonometric, ComplexInverseMembersAreBuiltOnArcSinAndArcTan) {
    // ArcCos = pi/2 - ArcSin, ArcCosh = i ArcCos, ArcSinh = -i ArcSin(i z),
    // ArcTanh = -i ArcTan(i z), Cot = Inv(Tan), ArcCot = ArcTan(Inv(z)): bit for bit.
    const std::vector<TCplx> zs = {{1, 2}, {-3, 0.5}, {0.25, -0.75}, {2, 0}, {0, -4}, {-0.5, 0}};
    TVec z, iz, inv;
    FillCplx(z, zs);
    std::vector<TCplx> izs, invs;
    for (const TCplx& v : zs) {
        izs.push_back({-v.Im, v.Re});
        const double k = 1.0 / (v.Re * v.Re + v.Im * v.Im);
        invs.push_back({v.Re * k, -v.Im * k});
    }
    FillCplx(iz, izs);
    FillCplx(inv, invs);
    TVec asin, acos, acosh, asinh, asinIz, atanh, atanIz, tan, cot, acot, atanInv;
    asin.ArcSin(z);
    acos.ArcCos(z);
    acosh.ArcCosh(z);
    asinh.ArcSinh(z);
    asinIz.ArcSin(iz);
    atanh.ArcTanh(z);
    atanIz.ArcTan(iz);
    tan.Tan(z);
    cot.Cot(z);
    acot.ArcCot(z);
    atanInv.ArcTan(inv);
    for (int32_t i = 0; i < z.Length(); ++i) {
        const TCplx t = At(tan, i);
        const double k = 1.0 / (t.Re * t.Re + t.Im * t.Im);
        EXPECT_SAME(At(acos, i), TCplx(PIDIV2 - At(asin, i).Re, 0.0 - At(asin, i).Im)) << i;
        EXPECT_SAME(At(acosh, i), TCplx(-At(acos, i).Im, At(acos, i).Re)) << i;
        EXPECT_SAME(At(asinh, i), TCplx(At(asinIz, i).Im, -At(asinIz, i).Re)) << i;
        EXPECT_SAME(At(atanh, i), TCplx(At(atanIz, i).Im, -At(atanIz, i).Re)) << i;
        EXPECT_SAME(At(cot, i), TCplx(t.Re * k, -t.Im * k)) << i;
        EXPECT_SAME(At(acot, i), At(atanInv, i)) << i;
    }
}

TEST(Trigonometric, ArcSinSignOnTheRealAxis) {
    // On y = 0 the imaginary part takes the sign of -x; at 0 it is 0.
    for (bool isDouble : {true, false}) {
        TVec z, r;
        FillCplx(z, {{2, 0}, {-2, 0}, {0, 0}, {3, 0}, {-3, 0}, {0, 0.5}, {0, -0.5}}, isDouble);
        r.ArcSin(z);
        const double tol = isDouble ? 1e-15 : 1e-6;
        const double a2 = std::log(2 + std::sqrt(3.0)), a3 = std::log(3 + std::sqrt(8.0));
        EXPECT_NEAR(At(r, 0).Re, PIDIV2, tol);
        EXPECT_NEAR(At(r, 0).Im, -a2, tol);
        EXPECT_NEAR(At(r, 1).Re, -PIDIV2, tol);
        EXPECT_NEAR(At(r, 1).Im, a2, tol);
        EXPECT_EQ(At(r, 2).Re, 0);
        EXPECT_EQ(At(r, 2).Im, 0);
        EXPECT_NEAR(At(r, 3).Im, -a3, 4 * tol);
        EXPECT_NEAR(At(r, 4).Im, a3, 4 * tol);
        EXPECT_GT(At(r, 5).Im, 0);
        EXPECT_LT(At(r, 6).Im, 0);
        EXPECT_NEAR(At(r, 5).Im, std::asinh(0.5), tol);
    }
}

TEST(Trigonometric, ComplexCotAtZeroAndPoleOfTan) {
    // No exception: the values are what the complex Inv makes of Tan's result
    // (conj(t) / |t|^2 without scaling, so NaN parts at 0 and at infinity).
    TVec z, t, r;
    FillCplx(z, {{0, 0}, {PIDIV2, 0}});
    t.Tan(z);
    EXPECT_NO_THROW(r.Cot(z));
    for (int32_t i = 0; i < 2; ++i) {
        const TCplx v = At(t, i);
        const double k = 1.0 / (v.Re * v.Re + v.Im * v.Im);
        EXPECT_SAME(At(r, i), TCplx(v.Re * k, -v.Im * k)) << i;
    }
}

TEST(Trigonometric, RangesAndSubRanges) {
    const std::vector<TCplx> zs = {{0.1, 0.2}, {1, 2}, {-0.5, 1.5}, {2, -1}, {0.3, 0.3}};
    TVec z, whole, r;
    FillCplx(z, zs);
    whole.ArcSin(z);
    FillCplx(r, {{7, 7}, {7, 7}, {7, 7}, {7, 7}});
    r.ArcSin(z, 1, 2, 2);  // z[1..2] into r[2..3]
    EXPECT_EQ(At(r, 1).Re, 7);
    for (int32_t k = 0; k < 2; ++k) EXPECT_SAME(At(r, 2 + k), At(whole, 1 + k));
    // In place through a sub-range view.
    TVec b, view;
    FillCplx(b, zs);
    view.SetSubRange(b, 1, 3);
    view.Tan();
    TVec tan;
    tan.Tan(z);
    EXPECT_EQ(At(b, 0).Re, 0.1);
    EXPECT_EQ(At(b, 4).Im, 0.3);
    for (int32_t k = 1; k < 4; ++k) EXPECT_SAME(At(b, k), At(tan, k));
    // A real sub-range, single precision.
    TVec c;
    Fill(c, {0.5, 1.0, 1.5, 2.0}, false, false);
    c.SetSubRange(1, 2);
    c.Cosh();
    c.SetFullRange();
    EXPECT_EQ(c[0], 0.5);
    EXPECT_EQ(c[3], 2.0);
    EXPECT_LE(Ulps(c[1], coshl(1.0L), false), 1);
    EXPECT_LE(Ulps(c[2], coshl(1.5L), false), 1);
}

TEST(Trigonometric, ArcTan2) {
    for (bool isDouble : {true, false}) {
        TVec y, x, r;
        Fill(y, {1, 1, -1, -1, 0, 0, 2}, false, isDouble);
        Fill(x, {1, -1, -1, 1, -1, 1, 0}, false, isDouble);
        r.ArcTan2(y, x);
        ASSERT_EQ(r.Length(), 7);
        ASSERT_EQ(r.IsDouble(), isDouble);
        for (int32_t i = 0; i < 7; ++i) EXPECT_LE(Ulps(r[i], atan2l((LD)y[i], (LD)x[i]), isDouble), 1) << i;
        TVec part;
        Fill(part, {5, 5, 5}, false, isDouble);
        part.ArcTan2(y, x, 1, 2, 0, 2);  // atan2(y[1..2], x[2..3])
        EXPECT_LE(Ulps(part[0], atan2l(1.0L, -1.0L), isDouble), 1);
        EXPECT_LE(Ulps(part[1], atan2l(-1.0L, 1.0L), isDouble), 1);
        EXPECT_EQ(part[2], 5);
    }
}

TEST(Trigonometric, Expj) {
    TVec w, e, a, b, d, empty;
    Fill(w, {0.0, 0.5, -2.0, 3.0});
    e.Expj(w);
    ASSERT_TRUE(e.Complex());
    for (int32_t i = 0; i < 4; ++i) {
        double s, c;
        ippsSinCos_64f_A53_Idx(w.Values1D, i, &s, 0, &c, 0, 1);
        EXPECT_TRUE(At(e, i).Re == c && At(e, i).Im == s) << i;
    }
    // In place Self becomes complex, also when empty; on a range all of Self
    // does, the rest keeping its values as real parts.
    a.Copy(w);
    a.Expj();
    EXPECT_EQ(Reals(a), Reals(e));
    empty.Expj();
    EXPECT_TRUE(empty.Complex());
    Fill(b, {0.0, 0.5, -2.0, 3.0}, false, false);
    b.Expj(1, 2);
    ASSERT_TRUE(b.Complex());
    EXPECT_EQ(Reals(b)[0], 0);
    EXPECT_EQ(Reals(b)[6], 3);
    EXPECT_EQ(Reals(b)[7], 0);
    EXPECT_NEAR(At(b, 1).Re, std::cos(0.5), 1e-7);
    EXPECT_NEAR(At(b, 2).Im, std::sin(-2.0), 1e-7);
    // From a range of Omega into a complex Self.
    FillCplx(d, {{9, 9}, {9, 9}, {9, 9}});
    d.Expj(w, 2, 1, 2);
    EXPECT_EQ(At(d, 0).Re, 9);
    EXPECT_TRUE(Same(At(d, 1).Re, At(e, 2).Re) && Same(At(d, 2).Im, At(e, 3).Im));
}

TEST(Trigonometric, DegToRadScalesBothParts) {
    TVec a, r;
    FillCplx(a, {{180, -90}, {45, 0}});
    r.DegToRad(a);
    EXPECT_EQ(At(r, 0).Re, 180 * PI180);
    EXPECT_EQ(At(r, 0).Im, -90 * PI180);
    r.RadToDeg();
    EXPECT_EQ(At(r, 1).Re, 45 * PI180 * INVPI180);
}

TEST(Trigonometric, FailureTexts) {
    TVec r, c, s, k, s3, k3, y, x, xs, xf, o;
    Fill(r, {0.1, 0.2, 0.3});
    FillCplx(c, {{1, 1}, {2, 2}, {3, 3}});
    Fill(s3, {0, 0, 0});
    Fill(k3, {0, 0, 0});
    Fill(y, {1, 2, 3});
    Fill(x, {1, 2, 3});
    Fill(xs, {1, 2});
    Fill(xf, {1, 2, 3}, false, false);
    const std::vector<std::pair<std::function<void()>, const char*>> cases = {
        {[&] { r.Sin(r); }, "Sin: X = Self"},
        {[&] { c.ArcCsch(c); }, "ArcCsch: X = Self"},
        {[&] { r.Cot(c, 0, 0, 2); }, "Cot: Self.Complex <> X.Complex"},
        {[&] { c.ArcSinh(r, 0, 0, 2); }, "ArcSinh: Self.Complex <> X.Complex"},
        {[&] { c.SinCos(s, k); }, "TRovane.SinCos: Complex = True"},
        {[&] { r.SinCos(r, k); }, "TRovane.SinCos: Sinx = Self"},
        {[&] { r.SinCos(s, r); }, "TRovane.SinCos: Cosx = Self"},
        {[&] { c.SinCos(s3, k3, 0, 0, 0, 3); }, "TVec.SinCos: Complex = True"},
        {[&] { r.SinCos(r, k3, 0, 0, 0, 3); }, "TVec.SinCos: Sinx = Self"},
        {[&] { r.SinCos(s3, r, 0, 0, 0, 3); }, "TVec.SinCos: Cosx = Self"},
        {[&] { r.SinCos(c, k3, 0, 0, 0, 3); }, "TVec.SinCos: SinX.Complex"},
        {[&] { r.SinCos(s3, c, 0, 0, 0, 3); }, "TVec.SinCos: CosX.Complex"},
        {[&] { c.SinhCosh(s, k); }, "TRovane.SinhCosh: Complex = True"},
        {[&] { r.SinhCosh(r, k); }, "TRovane.SinhCosh: SinhX = Self"},
        {[&] { r.SinhCosh(s, r); }, "TRovane.SinhCosh: CoshX = Self"},
        {[&] { c.SinhCosh(s3, k3, 0, 0, 0, 3); }, "TVec.SinhCosh: Complex = True"},
        {[&] { r.SinhCosh(c, k3, 0, 0, 0, 3); }, "TVec.SinhCosh: SinhX.Complex = True"},
        {[&] { r.SinhCosh(s3, c, 0, 0, 0, 3); }, "TVec.SinhCosh: CoshX.Complex = True"},
        {[&] { o.ArcTan2(y, c); }, "TRovane.ArcTan2: X.Complex or Y.Complex"},
        {[&] { o.ArcTan2(y, xf); }, "TRovane.ArcTan2: X.FloatPrecision <> Y.FloatPrecision"},
        {[&] { o.ArcTan2(y, xs); }, "TRovane.ArcTan2: X.Length <> Y.Length"},
        {[&] { y.ArcTan2(y, x); }, "TRovane.ArcTan2: Y = Self"},
        {[&] { x.ArcTan2(y, x); }, "TRovane.ArcTan2: X = Self"},
        {[&] { c.ArcTan2(y, x, 0, 0, 0, 1); }, "TVec.ArcTan2: X.Complex or Y.Complex or Self.Complex"},
        {[&] { y.ArcTan2(y, x, 0, 0, 0, 1); }, "TVec.ArcTan2: Y = Self"},
        {[&] { x.ArcTan2(y, x, 0, 0, 0, 1); }, "TVec.ArcTan2: X = Self"},
        {[&] { o.Expj(c); }, "TRovane.Expj: Omega.Complex = True"},
        {[&] { r.Expj(r); }, "TRovane.Expj: Omega = Self"},
        {[&] { c.Expj(); }, "Complex = True"},
        {[&] { y.Expj(x, 0, 0, 2); }, "TRovane.Expj: Complex = False"},
    };
    for (const auto& [call, text] : cases) ExpectMessage<ERovaneInvalidArgument>(call, text);
    // A refused range leaves a real Self real.
    ExpectMessage<ERovaneRangeError>([&] { y.Expj(2, 2); }, "Self params out of range: Index: 2, Len: 2, Length: 3");
    EXPECT_FALSE(y.Complex());
    EXPECT_EQ(Reals(y), (std::vector<double>{1, 2, 3}));
}
