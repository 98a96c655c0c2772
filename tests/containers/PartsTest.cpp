// Rounding, sign, remainder and complex-part members against plain
// computations in the storage precision.
#include <cmath>
#include <limits>

#include "ContainerTestUtil.h"
#include "rovane/primitives/PartsPrims.h"

using namespace rovane;
using namespace rovane::test;

namespace {

class Parts : public ::testing::TestWithParam<bool> {};

// A value as the storage precision holds it.
double Held(double v, bool dbl) { return dbl ? v : double(float(v)); }

// Plain remainders in the field type F: the quotient by division, or by
// multiplication with the reciprocal; truncated through a 64-bit integer.
template <class F>
F PlainRem(F x, F y, bool byReciprocal) {
    const F q = byReciprocal ? x * (F(1) / y) : x / y;
    // The processor's conversion: what int64 can't hold becomes -2^63.
    const bool fits = std::fabs(q) < F(9223372036854775808.0);
    const F n = fits ? F(static_cast<int64_t>(q)) : F(std::numeric_limits<int64_t>::min());
    const F p = n * y;
    return x - p;
}

double Rem1(double x, double y, bool dbl, bool byReciprocal) {
    return dbl ? PlainRem<double>(x, y, byReciprocal) : double(PlainRem<float>(float(x), float(y), byReciprocal));
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(BothPrecisions, Parts, ::testing::Bool());

TEST_P(Parts, AbsAndMagGiveRealResults) {
    const bool dbl = GetParam();
    TVec a, b;
    Fill(a, {3, -4, -1.5, 2.25}, true, dbl);
    b.Abs(a);
    ASSERT_FALSE(b.Complex());
    for (int i = 0; i < 2; ++i) {
        const double re = a[2 * i], im = a[2 * i + 1];
        const float fr = float(re), fi = float(im);
        const double m = dbl ? std::sqrt(re * re + im * im) : double(std::sqrt(fr * fr + fi * fi));
        EXPECT_EQ(b[i], m);
    }
    // In place on complex data: one temporary, Self becomes real.
    TVec c;
    c.Mag(a);
    a.Abs();
    EXPECT_FALSE(a.Complex());
    EXPECT_EQ(Reals(a), Reals(b));
    EXPECT_EQ(Reals(c), Reals(b));
    Fill(a, {-1, 2, -3}, false, dbl);
    a.Abs(0, 2);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, -3}));

    // An empty complex vector only loses its complexity.
    a.Size(0, true, dbl);
    a.Abs();
    EXPECT_FALSE(a.Complex());
    EXPECT_EQ(a.Length(), 0);

    // A range over the whole of a complex Self makes it real; a part is refused.
    Fill(a, {3, 4, 6, 8}, true, dbl);
    Fill(b, {0, 0, 0, 0}, true, dbl);
    const char* subrange = "Abs (Mag) function is not allowed on complex subrange";
    ExpectMessage<ERovaneInvalidArgument>([&] { b.Abs(a, 0, 0, 1); }, subrange);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Mag(0, 2); }, subrange);
    EXPECT_TRUE(a.Complex());  // refused calls leave Self as it was
    // With checks off, a real result in a complex range goes to the real
    // parts, zero to the imaginary parts; the rest stays.
    a.SetConditionCheck(false);
    a.Abs(1, 1);
    EXPECT_EQ(Reals(a), (std::vector<double>{3, 4, 10, 0}));
    a.SetConditionCheck(true);
    a[2] = 6;
    a[3] = 8;
    b.Abs(a, 0, 0, 2);
    EXPECT_FALSE(b.Complex());
    EXPECT_EQ(Reals(b), (std::vector<double>{5, 10}));
    // A sub-range of complex data as the source.
    TVec big, view;
    Fill(big, {9, 9, -6, 8, 9, 9}, true, dbl);
    view.SetSubRange(big, 1, 1);
    b.Abs(view);
    EXPECT_EQ(Reals(b), (std::vector<double>{10}));
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Abs(a); }, "TRovane.Abs: Self = X");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Mag(a); }, "TRovane.Mag: Self = X");
}

TEST_P(Parts, PartsAndSpectra) {
    const bool dbl = GetParam();
    TVec z, r, w;
    const std::vector<double> zs{1.5, -2, -3, 0.25, 0, -1};
    ExpectRows({{zs, true, ON_X(r.RealPart(x)), {1.5, -3, 0}},
                {zs, true, ON_X(r.ImagPart(x)), {-2, 0.25, -1}},
                {zs, true, ON_X(r.PowerSpectrum(x)), {6.25, 9.0625, 1}},
                {zs, true, ON_X(x.ImagPart()), {-2, 0.25, -1}}},  // in place: Self becomes real
               dbl);
    Fill(z, {1.5, -2, -3, 0.25, 0, -1}, true, dbl);
    r.PhaseSpectrum(z);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(r[i], std::atan2(z[2 * i + 1], z[2 * i]), dbl ? 1e-15 : 1e-6);
    Fill(w, {-2, 0.25, -1}, false, dbl);

    ExpectMessage<ERovaneInvalidArgument>([&] { z.RealPart(z); }, "Self = Vec");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.ImagPart(w); }, "Vec.Complex = False");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.PowerSpectrum(w); }, "Vec.Complex = False");
    TVec zc;
    zc.Copy(z);
    ExpectMessage<ERovaneInvalidArgument>([&] { zc.ImagPart(z, 0, 0, 1); }, "Self.Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.ImagPart(w, 0, 0, 1); }, "TRovane.RealPart: Vec must be complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { zc.PhaseSpectrum(z, 0, 0, 1); }, "Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { zc.PowerSpectrum(1, 1); }, "Complex = True");
    // "always": also with checks off.
    r.SetConditionCheck(false);
    ExpectMessage<ERovaneInvalidArgument>([&] { r.PhaseSpectrum(r); }, "Self = Vec");
}

TEST_P(Parts, ConjMulIFlipFlipConj) {
    const bool dbl = GetParam();
    TVec z, r, y;
    const std::vector<double> zs{1, 2, -3, 0.5};
    // A real source is up-sampled (real parts +0, not -0); Conj of real data
    // is a copy. In place on real data Self becomes complex, a range leaving
    // the rest with zero imaginary parts.
    ExpectRows({{zs, true, ON_X(r.Conj(x)), {1, -2, -3, -0.5}},
                {zs, true, ON_X(r.MulI(x)), {-2, 1, -0.5, -3}},
                {zs, true, ON_X(r.Flip(x)), {2, 1, 0.5, -3}},
                {zs, true, ON_X(r.FlipConj(x)), {2, -1, 0.5, 3}},
                {{4, -5}, false, ON_X(r.FlipConj(x)), {0, -4, 0, 5}},
                {{4, -5}, false, ON_X(r.Conj(x)), {4, -5}},
                {{1, 2, 3}, false, ON_X(x.Flip(1, 1)), {1, 0, 0, 2, 3, 0}},
                {{1, 2}, false, ON_X(x.MulI()), {0, 1, 0, 2}}},
               dbl);
    Fill(y, {4, -5}, false, dbl);
    r.MulI(y);
    EXPECT_EQ(Reals(r), (std::vector<double>{0, 4, 0, -5}));
    EXPECT_FALSE(std::signbit(r[0]) || std::signbit(r[2]));
    Fill(z, {1, 2, -3, 0.5}, true, dbl);
    y.Size(0, false, dbl);
    y.FlipConj();
    EXPECT_TRUE(y.Complex());

    Fill(y, {7}, false, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { z.MulI(z); }, "MulI: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { z.Flip(z); }, "TRovane.Flip: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { z.FlipConj(z); }, "X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { z.Flip(y, 0, 0, 1); }, "TRovane.Flip: X.Complex <> Self.Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { z.FlipConj(y, 0, 0, 1); },
                                          "TRovane.FlipConj: X.Complex <> Self.Complex");
    z.MulI(y, 0, 1, 1);  // MulI has no such refusal: the real source goes into the complex range
    EXPECT_EQ(Reals(z), (std::vector<double>{1, 2, 0, 7}));
    z.SetConditionCheck(false);
    ExpectMessage<ERovaneInvalidArgument>([&] { z.Conj(z); }, "TVec.Conj: Self = Vec");
}

TEST_P(Parts, SignSgnAndSgnMul) {
    const bool dbl = GetParam();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    TVec s, d, src;
    const std::vector<double> zs{0, 0, 0, -2, nan, -1, -0.0, 3, -4, nan};
    // Sgn in place keeps complex data, imaginary parts 0. SgnMul across the
    // four kinds; a NaN in a real source negates.
    ExpectRows({{zs, true, ON_X(s.Sgn(x)), {0, -1, 1, 1, -1}},
                {zs, true, ON_X(x.Sgn()), {0, 0, -1, 0, 1, 0, 1, 0, -1, 0}},
                {{-2.5, 0, nan, 7}, false, ON_X(s.Sgn(x)), {-1, 0, 1, 1}},
                {{1, -2, 3, -4}, true, ON_X(x.Sign()), {-1, 2, -3, 4}},
                {{1, -2, 3, -4}, true, ON_X(s.Sign(x)), {-1, 2, -3, 4}},
                {{1, 2, 3, 4}, false, ON_X((Fill(src, {-1, 0, nan, 5}, false, dbl), x.SgnMul(src))), {-1, 0, -3, 4}},
                {{1, 2, 3, 4}, true, ON_X((Fill(src, {-1, nan}, false, dbl), x.SgnMul(src))), {-1, -2, -3, -4}},
                {{5, 6}, false, ON_X((Fill(src, {0, -1, 0, 0}, true, dbl), x.SgnMul(src))), {-5, 0}},
                {{1, 2, 3, 4}, true, ON_X(x.SgnMul(src)), {-1, -2, 0, 0}}},  // src of the row before
               dbl);
    Fill(d, {1, 2, 3, 4}, true, dbl);

    ExpectMessage<ERovaneInvalidArgument>([&] { s.Sgn(s); }, "TRovane.Sgn: Self = Src");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.SgnMul(d); }, "TRovane.SgnMul: Self = Src");
    Fill(src, {1}, false, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { d.SgnMul(src); }, "TRovane.SgnMul: Self.Length <> Src.Length");
    Fill(src, {1, 2}, false, !dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { d.SgnMul(src); }, "TRovane.SgnMul: Self.IsDouble <> Src.IsDouble");
    TVec real2;
    Fill(real2, {1, 2}, false, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { real2.Sign(d, 0, 0, 1); }, "Sign: Self.Complex <> X.Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { real2.Sign(real2); }, "Sign: X = Self");
}

TEST_P(Parts, RoundingFollowsThePrimitives) {
    const bool dbl = GetParam();
    const std::initializer_list<double> data{0.5, 1.5, 2.5, -0.5, -2.5, 3.49, -7.75, 1e7 + 0.5};
    TVec a, r;
    Fill(a, data, false, dbl);
    const int n = a.Length();
    // The container and the primitive agree, and halves go to even.
    std::vector<double> prim(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        if (dbl) {
            const double v = a[i];
            ippsRound_64f_Idx(&v, 0, &prim[size_t(i)], 0, 1);
        } else {
            const float v = float(a[i]);
            float o = 0;
            sippsRound_32f_Idx(&v, 0, &o, 0, 1);
            prim[size_t(i)] = o;
        }
    }
    r.Round(a);
    EXPECT_EQ(Reals(r), prim);
    for (int i = 0; i < n; ++i) EXPECT_EQ(r[i], std::nearbyint(a[i])) << i;
    EXPECT_EQ(r[2], 2);
    EXPECT_TRUE(std::signbit(r[3]));

    const auto expectEach = [&](double (*fn)(double)) {
        for (int i = 0; i < n; ++i) EXPECT_EQ(r[i], Held(fn(a[i]), dbl)) << i;
    };
    r.Trunc(a);
    expectEach([](double v) { return std::trunc(v); });
    r.Ceil(a);
    expectEach([](double v) { return std::ceil(v); });
    r.Floor(a);
    expectEach([](double v) { return std::floor(v); });
    r.Frac(a);
    expectEach([](double v) { return v - std::trunc(v); });

    // Complex data: both parts, as independent reals, also on a sub-range.
    TVec z;
    Fill(z, {9, 9, 1.5, -2.5, -0.25, 4.75, 9, 9}, true, dbl);
    z.SetSubRange(1, 2);
    z.Floor();
    z.SetFullRange();
    EXPECT_EQ(Reals(z), (std::vector<double>{9, 9, 1, -3, -1, 4, 9, 9}));

    TIntegerArray ints;
    Fill(z, {2.5, -2.5, 3.5, -3.7}, true, dbl);
    z.Round(ints);
    EXPECT_EQ(std::vector<int32_t>(ints.begin(), ints.end()), (std::vector<int32_t>{2, -2, 4, -4}));
    z.Trunc(ints);
    EXPECT_EQ(std::vector<int32_t>(ints.begin(), ints.end()), (std::vector<int32_t>{2, -2, 3, -3}));

    ExpectMessage<ERovaneInvalidArgument>([&] { a.Round(a); }, "TRovane.Round: Self = Src");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Trunc(z, 0, 0, 1); }, "TRovane.Trunc: Complex <> Src.Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Ceil(a); }, "TRovane.Ceil: Src = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Floor(z, 0, 0, 1); }, "TRovane.Floor: Src.Complex <> Self.Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Frac(z, 0, 0, 1); }, "TRovane.Frac: Complex <> Src.Complex");
}

TEST_P(Parts, TruncAndFrac) {
    const bool dbl = GetParam();
    TVec a, t, f;
    Fill(a, {-7.25, 0, 3.5, -0.75}, true, dbl);
    a.TruncAndFrac(t, f);
    ASSERT_TRUE(t.Complex() && f.Complex());
    EXPECT_EQ(Reals(t), (std::vector<double>{-7, 0, 3, -0.0}));
    EXPECT_EQ(Reals(f), (std::vector<double>{-0.25, 0, 0.5, -0.75}));
    EXPECT_TRUE(std::signbit(t[3]));

    Fill(t, {0, 0, 0, 0, 0, 0}, true, dbl);
    Fill(f, {0, 0, 0, 0, 0, 0}, true, dbl);
    a.TruncAndFrac(t, f, 2, 1, 0, 1);
    EXPECT_EQ(Reals(t), (std::vector<double>{0, 0, 0, 0, -7, 0}));
    EXPECT_EQ(Reals(f), (std::vector<double>{0, 0, -0.25, 0, 0, 0}));

    ExpectMessage<ERovaneInvalidArgument>([&] { a.TruncAndFrac(a, f); }, "TRovane.TruncAndFrac, TruncDst: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.TruncAndFrac(t, a); }, "TRovane.TruncAndFrac, FracDst: X = Self");
    Fill(t, {0, 0}, false, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.TruncAndFrac(t, f, 0, 0, 0, 1); },
                                          "TRovane.TruncAndFrac, Self.Complex <> TruncDst.Complex");
    Fill(t, {0, 0}, true, dbl);
    Fill(f, {0, 0}, false, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.TruncAndFrac(t, f, 0, 0, 0, 1); },
                                          "TRovane.TruncAndFrac, Self.Complex <> FracDst.Complex");
}

TEST_P(Parts, RemVectorAndScalarForms) {
    const bool dbl = GetParam();
    const std::vector<double> xs{0.3, 7.5, -7.5, 1e10, 0.7, 5.0, -0.0, 4.0};
    const std::vector<double> ys{0.1, 2.0, 2.0, 3.0, 0.1, 3.0, 3.0, 0.0};
    TVec x, y, r, s;
    x.Size(int32_t(xs.size()), false, dbl);
    y.Size(int32_t(ys.size()), false, dbl);
    for (size_t i = 0; i < xs.size(); ++i) {
        x[int32_t(i)] = xs[i];
        y[int32_t(i)] = ys[i];
    }
    r.Rem(x, y);
    bool formsDiffer = false;
    for (int32_t i = 0; i < x.Length(); ++i) {
        EXPECT_EQ(r[i], Rem1(x[i], y[i], dbl, false)) << i;
        TVec one, sc;
        one.Size(1, false, dbl);
        one[0] = x[i];
        sc.Rem(one, y[i]);
        EXPECT_EQ(sc[0], Rem1(x[i], y[i], dbl, true)) << i;
        formsDiffer = formsDiffer || sc[0] != r[i];
    }
    EXPECT_TRUE(formsDiffer);  // the reciprocal shows in the last bits for some pair
    // Truncation through an integer: -0 gives +0 as quotient, and x by 0 is x.
    EXPECT_TRUE(std::signbit(r[6]));
    EXPECT_EQ(r[7], 4.0);
    EXPECT_EQ(r[1], 1.5);
    EXPECT_EQ(r[2], -1.5);

    s.Size(3, false, dbl);
    s.SetZero();
    s.Rem(x, y, 1, 1, 1, 2);
    EXPECT_EQ(Reals(s), (std::vector<double>{0, 1.5, -1.5}));
    s.Rem(x, 2.0, 1, 0, 1);
    EXPECT_EQ(s[0], 1.5);

    TVec c;
    Fill(c, {1, 2}, true, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { x.Rem(x, y); }, "TRovane.Rem: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Rem(c, y); }, "TRovane.Rem: X is Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { y.Rem(x, y); }, "TRovane.Rem: Y = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Rem(x, c); }, "TRovane.Rem: Y is Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Rem(x, s); }, "TRovane.Rem: X.Length <> Y.Length");
    TVec yo;
    yo.Size(x.Length(), false, !dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Rem(x, yo); }, "TRovane.Rem: X.IsDouble <> Y.IsDouble");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Rem(x, y, 0, 0, 0, 1); }, "TRovane.Rem: Self is Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Rem(c, 2.0); }, "TRovane.Rem: X is Complex");
}

TEST_P(Parts, FixAngle) {
    const bool dbl = GetParam();
    TVec a, r;
    Fill(a, {-7, 7, 1, -20}, false, dbl);
    r.FixAngle(a);
    for (int i = 0; i < 4; ++i) {
        const double v =
            dbl ? PlainRem<double>(a[i], TWOPI, true) : double(PlainRem<float>(float(a[i]), TWOPI_SINGLE, true));
        EXPECT_EQ(r[i], v);
    }
    EXPECT_NEAR(r[0], -0.7168146928204138, dbl ? 1e-15 : 1e-6);
    EXPECT_NEAR(r[1], 0.7168146928204138, dbl ? 1e-15 : 1e-6);
    a.FixAngle(3, 1);
    EXPECT_EQ(a[3], r[3]);
    EXPECT_EQ(a[0], -7);

    TVec z;
    Fill(z, {1, 2}, true, dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { r.FixAngle(r); }, "TRovane.FixAngle: Src = Self ");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.FixAngle(z); }, "TRovane.FixAngle: Src is Complex");
    z.SetConditionCheck(false);
    ExpectMessage<ERovaneInvalidArgument>([&] { z.FixAngle(); }, "TRovane.FixAngle: Self is Complex");
}

TEST_P(Parts, SplitAndJoin) {
    const bool dbl = GetParam();
    TVec z, m, p, back, re, im;
    Fill(z, {3, 4, -1, 0, 0, -2}, true, dbl);
    z.CartToPolar(m, p);
    EXPECT_EQ(Reals(m), (std::vector<double>{5, 1, 2}));
    EXPECT_NEAR(p[1], PI, dbl ? 1e-15 : 1e-6);
    back.PolarToCart(m, p);
    ASSERT_TRUE(back.Complex());
    for (int i = 0; i < 6; ++i) EXPECT_NEAR(back[i], z[i], dbl ? 1e-14 : 1e-5);

    z.CplxToReal(re, im);
    EXPECT_EQ(Reals(re), (std::vector<double>{3, -1, 0}));
    EXPECT_EQ(Reals(im), (std::vector<double>{4, 0, -2}));
    back.RealToCplx(re, im);
    EXPECT_EQ(Reals(back), Reals(z));

    // A matrix operand gives Self its shape.
    TMtx mr, mz;
    mr.Size(1, 3, false, dbl);
    mr.Copy(re);
    mz.RealToCplx(mr, im);
    EXPECT_EQ(mz.Rows(), 1);
    EXPECT_EQ(mz.Cols(), 3);
    EXPECT_TRUE(mz.Complex());

    // Range forms; a real Self is widened first.
    TVec d;
    Fill(d, {1, 2, 3}, false, dbl);
    d.RealToCplx(re, im, 1, 2, 0, 1);
    EXPECT_EQ(Reals(d), (std::vector<double>{-1, -2, 2, 0, 3, 0}));
    Fill(re, {0, 0}, false, dbl);
    Fill(im, {0, 0}, false, dbl);
    z.CplxToReal(re, im, 1, 0, 2, 1);
    EXPECT_EQ(Reals(re), (std::vector<double>{0, 0}));
    EXPECT_EQ(Reals(im), (std::vector<double>{-2, 0}));

    ExpectMessage<ERovaneInvalidArgument>([&] { re.CartToPolar(m, p); }, "TVec.CartToPolar: Not complex!");
    ExpectMessage<ERovaneInvalidArgument>([&] { re.CplxToReal(m, p); }, "Complex = False");
    ExpectMessage<ERovaneInvalidArgument>([&] { z.CplxToReal(z, p); }, "(Self = ReVec) or (Self = ImVec)");
    ExpectMessage<ERovaneInvalidArgument>([&] { m.PolarToCart(m, p); }, "(Self = AmpltVec) or (Self = PhaseVec)");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.PolarToCart(z, p); }, "AmpltVec.Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.PolarToCart(m, z); }, "PhaseVec.Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.PolarToCart(m, re); }, "AmpltVec.Length <> PhaseVec.Length");
    TVec other;
    Fill(other, {1, 2, 3}, false, !dbl);
    ExpectMessage<ERovaneInvalidArgument>([&] { d.PolarToCart(m, other); },
                                          "AmpltVec.FloatPrecision <> PhaseVec.FloatPrecision");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.RealToCplx(z, im); }, "ReVec.Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.RealToCplx(re, z); }, "ImVec.Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.RealToCplx(re, m); }, "ReVec.Length <> ImVec.Length");
    ExpectMessage<ERovaneInvalidArgument>([&] { re.RealToCplx(re, im); }, "(Self = ReVec) or (Self = ImVec)");
}

// The two primitives behind MulI, Flip, FlipConj, Conj and Rem.
TEST(PartsPrimitives, SampleUpAndTruncInt64) {
    const double x[3] = {1, 2, 3};
    double d[7] = {9, 9, 9, 9, 9, 9, 9};
    int32_t n = -1, phase = 2;
    EXPECT_EQ(ippsSampleUp_64f_Idx(x, 1, 2, d, 1, n, 3, phase), ippStsNoErr);
    EXPECT_EQ(n, 6);
    EXPECT_EQ(std::vector<double>(d, d + 7), (std::vector<double>{9, 0, 0, 2, 0, 0, 3}));
    EXPECT_EQ(ippsSampleUp_64f_Idx(x, 0, 3, d, 0, n, 0, phase), ippStsSampleFactorErr);
    phase = 2;
    EXPECT_EQ(ippsSampleUp_64f_Idx(x, 0, 3, d, 0, n, 2, phase), ippStsSamplePhaseErr);
    EXPECT_EQ(ippsSampleUp_64f_Idx(x, 0, -1, d, 0, n, 2, phase), ippStsSizeErr);
    EXPECT_EQ(d[0], 9);  // refused calls write nothing

    const float big = 1e19f, nan = std::numeric_limits<float>::quiet_NaN();
    const float xs[5] = {-2.75f, -0.0f, big, nan, -big};
    float t[5];
    sTruncInt64_Idx(xs, 0, t, 0, 5);
    const float indefinite = float(std::numeric_limits<int64_t>::min());
    EXPECT_EQ(t[0], -2.0f);
    EXPECT_FALSE(std::signbit(t[1]));
    EXPECT_EQ(t[2], indefinite);
    EXPECT_EQ(t[3], indefinite);
    EXPECT_EQ(t[4], indefinite);
}
