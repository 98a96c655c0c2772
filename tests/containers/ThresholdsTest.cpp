// Thresholds, Replace, Normalize and the random fills in both precisions; the
// random streams against a plain re-implementation of the generator.
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

#include "ContainerTestUtil.h"
#include "rovane/primitives/RandomPrims.h"

using namespace rovane;
using namespace rovane::test;

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

std::vector<double> Stored(std::vector<double> v, bool isDouble) {
    if (!isDouble)
        for (double& x : v) x = static_cast<float>(x);
    return v;
}

class ThreshPrecision : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Both, ThreshPrecision, ::testing::Bool());

}  // namespace

TEST_P(ThreshPrecision, RealLevelRules) {
    const bool dbl = GetParam();
    TVec b;
    const std::vector<double> src{-2, 0.5, 3, 1, kNaN}, abs{0, 0.25, -0.25, 0.75, -0.75, 0.5, -0.5};
    // A NaN takes the level; ThreshAbsLT sends zero to -Value, the bounds themselves stay.
    ExpectRows({{src, false, ON_X(x.ThreshBottom(1)), {1, 1, 3, 1, 1}},
                {src, false, ON_X(x.ThreshTop(1)), {-2, 0.5, 1, 1, 1}},
                {abs, false, ON_X(b.ThreshAbsLT(x, 0.5)), {-0.5, 0.5, -0.5, 0.75, -0.75, 0.5, -0.5}},
                {abs, false, ON_X(b.ThreshAbsGT(x, 0.5)), {0, 0.25, -0.25, 0.5, -0.5, 0.5, -0.5}},
                {{kNaN, -kInf, kInf}, false, ON_X(x.ThreshAbsGT(2)), {2, -2, 2}}},
               dbl);
}

TEST_P(ThreshPrecision, ComplexLevelsKeepThePhase) {
    const bool dbl = GetParam();
    const double tol = dbl ? 1e-15 : 1e-6;
    TVec a, b;
    Fill(a, {3, 4, 0, 0, 30, 40, -1e-3, 2e-3}, true, dbl);  // |z| = 5, 0, 50, ~2e-3
    const std::vector<double> in = Reals(a);
    auto expectMoved = [&](int k, double level) {
        const double re = Reals(b)[2 * k], im = Reals(b)[2 * k + 1];
        EXPECT_NEAR(std::hypot(re, im), level, level * tol) << k;
        EXPECT_NEAR(std::atan2(im, re), std::atan2(in[2 * k + 1], in[2 * k]), 2 * tol) << k;
    };
    b.ThreshBottom(a, 10);
    ASSERT_TRUE(b.Complex());
    const std::vector<double> out = Reals(b);
    EXPECT_EQ(std::vector<double>(out.begin() + 2, out.begin() + 6), (std::vector<double>{10, 0, 30, 40}));
    for (int k : {0, 3}) expectMoved(k, 10);
    b.ThreshTop(a, 1);  // zero stays zero, below the level untouched
    EXPECT_EQ(Reals(b)[2], 0);
    EXPECT_EQ(Reals(b)[3], 0);
    EXPECT_EQ(Reals(b)[6], in[6]);
    for (int k : {0, 2}) expectMoved(k, 1);
}

TEST(Thresholds, RangesAndSubRanges) {
    TVec a, b, view;
    ExpectRows({{{-5, -4, -3, -2, -1}, false, ON_X(x.ThreshBottom(0, 1, 2)), {-5, 0, 0, -2, -1}},
                {{-5, 0, 0, -2, -1}, false, ON_X(x.ThreshTop(-3, 3, -1)), {-5, 0, 0, -3, -3}},  // -1: to the end
                // x[0..1] into b[2..3], then x[2..3] into b[0..1]
                {{0.1, 0.2, 7, 8}, false, ON_X((Fill(b, {9, 9, 9, 9}), b.ThreshAbsLT(x, 1, 0, 2, 2))), {9, 9, 1, 1}},
                {{0.1, 0.2, 7, 8}, false, ON_X(b.ThreshAbsGT(x, 1, 2, 0, 2)), {1, 1, 1, 1}}});

    // a view over the middle of a complex vector, in complex units
    Fill(a, {1, 0, 0.1, 0, 0, 0.2, 1, 0}, true);
    view.SetSubRange(a, 1, 2);
    view.ThreshBottom(0.5);
    view.SetFullRange();
    const std::vector<double> r = Reals(a);
    EXPECT_EQ(r[0], 1);
    EXPECT_NEAR(r[2], 0.5, 1e-15);
    EXPECT_NEAR(r[5], 0.5, 1e-15);
    EXPECT_EQ(r[6], 1);

    // ThreshTop from a complex range into a complex range
    TVec c;
    Fill(c, {0, 0, 0, 0}, true);
    Fill(a, {3, 4, 0.3, 0.4}, true);
    c.ThreshTop(a, 1, 0, 1, 1);
    EXPECT_EQ(Reals(c)[0], 0);
    EXPECT_NEAR(Reals(c)[2], 0.6, 1e-15);
    EXPECT_NEAR(Reals(c)[3], 0.8, 1e-15);
}

TEST_P(ThreshPrecision, ThresholdLTGTAndGT_LT) {
    const bool dbl = GetParam();
    TVec b;
    const std::vector<double> r{-1, 0, 1, 2}, z{0.3, 0.4, 3, 4, 0, -1}, g{-3, -1, 0, 1, 3};  // |z| = 0.5, 5, 1
    ExpectRows({{r, false, ON_X(b.ThresholdLT(x, 0.5, 7)), {7, 7, 1, 2}},
                {r, false, ON_X(b.ThresholdGT(x, 0.5, -7)), {-1, 0, -7, -7}},
                {r, false, ON_X(x.ThresholdGT(0.5, 0.1, 1, 2)), Stored({-1, 0, 0.1, 2}, dbl)},
                // complex data compare magnitudes; a real NewValue goes in as (v, 0)
                {z, true, ON_X(b.ThresholdLT(x, 0.9, 2)), Stored({2, 0, 3, 4, 0, -1}, dbl)},
                {z, true, ON_X(b.ThresholdGT(x, 1, TCplx(0.25, -0.5))), Stored({0.3, 0.4, 0.25, -0.5, 0, -1}, dbl)},
                // a level exactly at |z| = 1 is not beyond it, either way
                {z, true, ON_X(b.ThresholdLT(x, 1, TCplx(9, 9))), Stored({9, 9, 3, 4, 0, -1}, dbl)},
                // ranges with complex values; the last row writes into b as the row before left it
                {{9, 9, 3, 4, 0, -1}, true, ON_X(x.ThresholdLT(1.5, TCplx(1, 1), 1, 2)), {9, 9, 3, 4, 1, 1}},
                {z, true, ON_X((Fill(b, {9, 9, 9, 9, 1, 1}, true, dbl), b.ThresholdGT(x, 0.6, TCplx(1, 1), 0, 0, 2))),
                 Stored({0.3, 0.4, 1, 1, 1, 1}, dbl)},
                {z, true, ON_X(b.ThresholdLT(x, 2, 0.0, 1, 2, 1)), Stored({0.3, 0.4, 1, 1, 3, 4}, dbl)},
                {g, false, ON_X(b.ThresholdGT_LT(x, 2, 20, -2, -20)), {-20, -1, 0, 1, 20}},
                // equal levels are accepted: below goes down, above goes up, equal stays
                {g, false, ON_X(b.ThresholdGT_LT(x, 0, 5, 0, -5)), {-5, -5, 0, 5, 5}},
                {g, false, ON_X(x.ThresholdGT_LT(0.5, 1, 0.5, -1, 1, 3)), {-3, -1, -1, 1, 3}},
                {{-3, -1, -1, 1, 3}, false, ON_X((Fill(b, {0, 0}, false, dbl), b.ThresholdGT_LT(x, 2, 2, -2, -2, 3, 0, 2))),
                 {1, 2}}},
               dbl);
}

TEST_P(ThreshPrecision, Replace) {
    const bool dbl = GetParam();
    TVec a;
    using Step = std::function<void()>;
    const std::initializer_list<double> real = {1, kNaN, kInf, -kInf, 2, 2.5, 3};
    const std::vector<std::pair<Step, std::vector<double>>> realCases = {
        {[&] { a.Replace(NAN_, 0.0); }, {1, 0, kInf, -kInf, 2, 2.5, 3}},
        {[&] { a.Replace(-INF, 9.0); }, {1, kNaN, 9, 9, 2, 2.5, 3}},          // either sign matches
        {[&] { a.Replace(2.0, -1.0, 0.5); }, {1, kNaN, kInf, -kInf, -1, -1, 3}},  // never a NaN or infinity
        {[&] { a.Replace(2.0, -1.0); }, {1, kNaN, kInf, -kInf, -1, 2.5, 3}},      // no tolerance: exact
        {[&] { a.Replace(kNaN, 5.0, 0, 2), a.Replace(3.0, 4.0, 5, 1, 0.6); }, {1, 5, kInf, -kInf, 2, 4, 3}},
    };
    for (const auto& [step, want] : realCases) {
        Fill(a, real, false, dbl);
        step();
        ExpectRun(Reals(a), want);
    }
    // (1, NaN), (Inf, 0), (2, 0), (2, 1e-9), (-Inf, 5), (2.2, 0)
    const std::initializer_list<double> cplx = {1, kNaN, kInf, 0, 2, 0, 2, 1e-9, -kInf, 5, 2.2, 0};
    std::vector<std::pair<Step, std::vector<double>>> cplxCases = {
        {[&] { a.Replace(NAN_, 7.0); }, {7, 0, kInf, 0, 2, 0, 2, 1e-9, -kInf, 5, 2.2, 0}},  // NaN in either part
        {[&] { a.Replace(INF, 7.0); }, {1, kNaN, 7, 0, 2, 0, 2, 1e-9, 7, 0, 2.2, 0}},
        // a real value also needs a zero imaginary part, even within tolerance
        {[&] { a.Replace(2.0, 7.0, 0.25); }, {1, kNaN, kInf, 0, 7, 0, 2, 1e-9, -kInf, 5, 7, 0}},
        // a complex value compares by distance
        {[&] { a.Replace(TCplx(2, 0), TCplx(-1, -1), 1e-6); }, {1, kNaN, kInf, 0, -1, -1, -1, -1, -kInf, 5, 2.2, 0}},
        {[&] { a.Replace(TCplx(kNaN, 0), TCplx(0, 1), 0, 1), a.Replace(TCplx(0, kInf), TCplx(0, 2), 1, 5); },
         {0, 1, 0, 2, 2, 0, 2, 1e-9, 0, 2, 2.2, 0}},
    };
    if (!dbl) {
        cplxCases.push_back({[&] { a.Replace(TSCplx(2.2f, 0), TSCplx(3, 3)), a.Replace(TSCplx(2, 0), TSCplx(4, 4), 4, 2, 1e-3f); },
                             {1, kNaN, kInf, 0, 2, 0, 2, 1e-9, -kInf, 5, 3, 3}});
        cplxCases.push_back({[&] { a.Replace(TSCplx(2, 0), TSCplx(4, 4), 1, 3, 1e-3f); },
                             {1, kNaN, kInf, 0, 4, 4, 4, 4, -kInf, 5, 2.2, 0}});
    }
    for (const auto& [step, want] : cplxCases) {
        Fill(a, cplx, true, dbl);
        step();
        ExpectRun(Reals(a), Stored(want, dbl));
    }
    // On single data the value is narrowed: 0.1 matches the stored 0.1f.
    Fill(a, {0.1, 0.2}, false, dbl);
    a.Replace(0.1, 7.0);
    EXPECT_EQ(a[0], 7);
    a.Replace(0.2f, 8.0f, 0.0f);
    EXPECT_EQ(a[1], dbl ? 0.2 : 8);  // 0.2f widened is not the double 0.2
}

TEST_P(ThreshPrecision, ReplaceNANTreatsPartsApart) {
    const bool dbl = GetParam();
    const std::vector<double> nans(4, kNaN);
    ExpectRows({{{kNaN, 1, 2, kNaN, kNaN, kNaN, kInf, 0}, true, ON_X(x.ReplaceNAN(0.5)), {0.5, 1, 2, 0.5, 0.5, 0.5, kInf, 0}},
                {nans, false, ON_X(x.ReplaceNAN(-1, 1, 2)), {kNaN, -1, -1, kNaN}},
                {nans, true, ON_X(x.ReplaceNAN(3, 1, 1)), {kNaN, kNaN, 3, 3}}},
               dbl);
}

TEST_P(ThreshPrecision, NormalizeRealForms) {
    const bool dbl = GetParam();
    TVec a, b;
    const std::vector<double> x = {1, 2.5, -7, 1e3};
    auto expect = [&](const TVec& v, std::vector<double> xs, double s, double d) {
        std::vector<double> want;
        for (double e : xs)
            want.push_back(dbl ? (e - s) / d : double((float(e) - float(s)) / float(d)));
        EXPECT_EQ(Reals(v), want);
    };
    Fill(a, {1, 2.5, -7, 1e3}, false, dbl);
    b.Normalize(a, 0.3, 3);
    expect(b, x, 0.3, 3);
    a.Normalize(0.3, 3);
    EXPECT_EQ(Reals(a), Reals(b));
    Fill(a, {1, 2.5, -7, 1e3}, false, dbl);
    a.Normalize(1, 0.7, 2, 2);
    EXPECT_EQ(a[0], 1);
    EXPECT_EQ(a[1], 2.5);
    EXPECT_EQ(a[2], dbl ? (-7 - 1) / 0.7 : double((-7.0f - 1.0f) / 0.7f));
    Fill(b, {0, 0, 0}, false, dbl);
    b.Normalize(a, -1, 2, 0, 1, 2);
    EXPECT_RUN(b, {0, 1, 1.75});
}

TEST_P(ThreshPrecision, NormalizeComplexForms) {
    const bool dbl = GetParam();
    const double tol = dbl ? 1e-15 : 1e-6;
    TVec a, b;
    Fill(a, {1, 2, -3, 0.5}, true, dbl);
    const TCplx s(0.5, -1), d(2, 1);

    // complex offset, real divisor: (z - s) / 4
    b.Normalize(a, s, 4);
    EXPECT_EQ(Reals(b), Stored({0.125, 0.75, -0.875, 0.375}, dbl));
    a.Normalize(s, 4.0);
    EXPECT_EQ(Reals(a), Reals(b));

    // complex divisor: subtract, then divide; element k of v against (re + i im - s) / d
    auto expectQuotient = [&](const TVec& v, int k, double re, double im) {
        const long double nr = re - s.Re, ni = im - s.Im, den = (long double)d.Re * d.Re + (long double)d.Im * d.Im;
        EXPECT_NEAR(Reals(v)[2 * k], (double)((nr * d.Re + ni * d.Im) / den), tol) << k;
        EXPECT_NEAR(Reals(v)[2 * k + 1], (double)((ni * d.Re - nr * d.Im) / den), tol) << k;
    };
    Fill(a, {1, 2, -3, 0.5}, true, dbl);
    b.Normalize(a, s, d);
    a.Normalize(s, d);
    EXPECT_EQ(Reals(a), Reals(b));
    expectQuotient(b, 0, 1, 2);
    expectQuotient(b, 1, -3, 0.5);

    // a real Vec is widened to (x, 0)
    Fill(a, {1, -3}, false, dbl);
    b.Normalize(a, s, 4);
    ASSERT_TRUE(b.Complex());
    EXPECT_EQ(Reals(b), Stored({0.125, 0.25, -0.875, 0.25}, dbl));
    b.Normalize(a, s, d);
    ASSERT_TRUE(b.Complex());
    expectQuotient(b, 0, 1, 0);
    expectQuotient(b, 1, -3, 0);

    // ranges: the first element stays
    Fill(a, {1, 2, -3, 0.5}, true, dbl);
    Fill(b, {9, 9, 9, 9}, true, dbl);
    b.Normalize(a, s, 4, 1, 1, 1);
    EXPECT_EQ(Reals(b), Stored({9, 9, -0.875, 0.375}, dbl));
    b.Normalize(a, s, d, 1, 0, 1);
    expectQuotient(b, 0, -3, 0.5);
    a.Normalize(s, 4.0, 1, 1);
    a.Normalize(s, d, 0, 1);
    EXPECT_EQ(Reals(a)[2], Reals(b)[2]);
    expectQuotient(a, 0, 1, 2);
}

TEST(Thresholds, FailureTexts) {
    TVec r, r2, c, c2, s;
    Fill(r, {1, 2});
    Fill(r2, {1, 2});
    Fill(c, {1, 2, 3, 4}, true);
    Fill(c2, {1, 2, 3, 4}, true);
    Fill(s, {1, 2}, false, false);
    const std::vector<std::pair<std::function<void()>, const char*>> cases = {
        {[&] { c.ThreshBottom(-1); }, "TRovane.ThreshBottom: Complex and (Value < 0)"},
        {[&] { c.ThreshBottom(-1, 0, 1); }, "TRovane.ThreshBottom: Complex and (Value < 0)"},
        {[&] { r.ThreshBottom(c, -1); }, "TRovane.ThreshBottom: Src.Complex and (Value < 0)"},
        {[&] { r.ThreshBottom(r, 1); }, "TRovane.ThreshBottom: Src = Self"},
        {[&] { r.ThreshBottom(r, 1, 0, 0, 1); }, "TRovane.ThreshBottom: Src = Self"},
        {[&] { r.ThreshBottom(c, 1, 0, 0, 1); }, "TRovane.ThreshBottom: Complex <> Vec.Complex"},
        {[&] { c2.ThreshBottom(c, -1, 0, 0, 1); }, "TRovane.ThreshBottom: Src.Complex and (Value < 0)"},
        {[&] { c.ThreshTop(-1); }, "TRovane.ThreshTop: Complex and (Value < 0)"},
        {[&] { r.ThreshTop(c, -1); }, "TRovane.ThreshTop: Src.Complex and (Value < 0)"},
        {[&] { r.ThreshTop(r, 1); }, "TRovane.ThreshTop: Src = Self"},
        {[&] { c.ThreshTop(r, 1, 0, 0, 1); }, "TRovane.ThreshTop: Complex <> Vec.Complex"},
        {[&] { r.ThreshTop(s, 1, 0, 0, 1); }, "TRovane.ThreshTop: IsDouble <> Vec.IsDouble"},
        {[&] { c2.ThreshTop(c, -1, 0, 0, 1); }, "TRovane.ThreshTop: Src.Complex and (Value < 0)"},
        {[&] { c.ThreshAbsLT(1); }, "TRovane.ThreshAbsLT: Complex or (Value < 0)"},
        {[&] { r.ThreshAbsLT(-1, 0, 1); }, "TRovane.ThreshAbsLT: Complex or (Value < 0)"},
        {[&] { r.ThreshAbsLT(c, 1); }, "TRovane.ThreshAbsLT: Src.Complex or (Value < 0)"},
        {[&] { r.ThreshAbsLT(r, 1); }, "TRovane.ThreshAbsGT: Src = Self"},
        {[&] { r.ThreshAbsLT(r, 1, 0, 0, 1); }, "TRovane.ThreshAbsLT: Src = Self"},
        {[&] { r.ThreshAbsLT(c, 1, 0, 0, 1); }, "TRovane.ThreshAbsLT: Complex or Vec.Complex"},
        {[&] { r.ThreshAbsLT(r2, -1, 0, 0, 1); }, "TRovane.ThreshAbsLT: (Value < 0)"},
        {[&] { r.ThreshAbsGT(-1); }, "TRovane.ThreshAbsGT: Complex or (Value < 0)"},
        {[&] { r.ThreshAbsGT(r2, -1); }, "TRovane.ThreshAbsGT: Src.Complex or (Value < 0)"},
        {[&] { r.ThreshAbsGT(r, 1); }, "TRovane.ThreshAbsGT: Src = Self"},
        {[&] { c.ThreshAbsGT(c2, 1, 0, 0, 1); }, "TRovane.ThreshAbsGT: Complex or Vec.Complex"},
        {[&] { r.ThreshAbsGT(r2, -1, 0, 0, 1); }, "TRovane.ThreshAbsGT: (Value < 0)"},
        {[&] { r.ThresholdLT(1, TCplx(1, 1)); }, "TRovane.ThresholdLT: Self is not Complex"},
        {[&] { r.ThresholdLT(1, TCplx(1, 1), 0, 1); }, "TRovane.ThresholdLT: Self is not Complex"},
        {[&] { r.ThresholdLT(r2, 1, TCplx(1, 1), 0, 0, 1); }, "TRovane.ThresholdLTV: Self is not Complex"},
        {[&] { r.ThresholdLT(r2, 1, TCplx(1, 1)); }, "TRovane.ThresholdLT: Vec is not Complex"},
        {[&] { r.ThresholdLT(r, 1, 2.0); }, "TRovane.ThresholdLT: Vec = Self"},
        {[&] { c.ThresholdLT(c, 1, TCplx(1, 1), 0, 0, 1); }, "TRovane.ThresholdLT: Vec = Self"},
        {[&] { r.ThresholdLT(c, 1, 2.0, 0, 0, 1); }, "TRovane.ThresholdLT: Vec.Complex <> Complex"},
        {[&] { r.ThresholdGT(1, TCplx(1, 1)); }, "TRovane.ThresholdGT: Self is not Complex"},
        {[&] { r.ThresholdGT(r2, 1, TCplx(1, 1), 0, 0, 1); }, "TRovane.ThresholdGTV: Self is not Complex"},
        {[&] { r.ThresholdGT(r2, 1, TCplx(1, 1)); }, "TRovane.ThresholdGT: Vec is not Complex"},
        {[&] { r.ThresholdGT(r, 1, 2.0); }, "TRovane.ThresholdGT: Vec = Self"},
        {[&] { c.ThresholdGT(r, 1, 2.0, 0, 0, 1); }, "TRovane.ThresholdGT: Vec.Complex <> Complex"},
        {[&] { c.ThresholdGT_LT(1, 1, 0, 0); }, "TRovane.ThresholdGT_LT: Self is Complex"},
        {[&] { r.ThresholdGT_LT(c, 1, 1, 0, 0); }, "TRovane.ThresholdGT_LT: Vec is Complex"},
        {[&] { r.ThresholdGT_LT(r, 1, 1, 0, 0); }, "TRovane.ThresholdGT_LT: Vec = Self"},
        {[&] { c.ThresholdGT_LT(r, 1, 1, 0, 0, 0, 0, 1); }, "TRovane.ThresholdGT_LT: Self is Complex"},
        {[&] { r.ThresholdGT_LT(0, 1, 1, 0); }, "TRovane.ThresholdGT_LT: LTLevel > GTLevel"},
        {[&] { r.ThresholdGT_LT(r2, 0, 1, 1, 0, 0, 0, 1); }, "TRovane.ThresholdGT_LT: LTLevel > GTLevel"},
        {[&] { r.Replace(TCplx(1, 0), TCplx(2, 0)); }, "Not complex."},
        {[&] { r.Replace(TCplx(1, 0), TCplx(2, 0), 0, 1); }, "Not complex."},
        {[&] { s.Replace(TSCplx(1, 0), TSCplx(2, 0)); }, "Not complex."},
        {[&] { c.Replace(TSCplx(1, 0), TSCplx(2, 0)); }, "Not in single precision."},
        {[&] { c.Replace(TSCplx(1, 0), TSCplx(2, 0), 0, 1); }, "Not in single precision."},
        {[&] { c.Normalize(1, 2); }, "Complex = True"},
        {[&] { c.Normalize(1, 2, 0, 1); }, "Complex = True"},
        {[&] { r.Normalize(c, 1, 2); }, "Complex = True"},
        {[&] { c.Normalize(c2, 1, 2, 0, 0, 1); }, "Complex = True"},
        {[&] { r.Normalize(TCplx(1, 0), 2); }, "not Complex"},
        {[&] { r.Normalize(TCplx(1, 0), TCplx(2, 0), 0, 1); }, "not Complex"},
        {[&] { r.Normalize(r, 1, 2); }, "Self = Vec"},
        {[&] { c.Normalize(c, TCplx(1, 0), TCplx(2, 0)); }, "Self = Vec"},
        {[&] { r.Normalize(r, 1, 2, 0, 0, 1); }, "Self = Vec"},
        {[&] { r.Normalize(c, 1, 2, 0, 0, 1); }, "Vec.Complex <> Complex"},
        {[&] { c.Normalize(r, TCplx(1, 0), 2, 0, 0, 1); }, "Vec.Complex <> Complex"},
        {[&] { r.Normalize(r2, TCplx(1, 0), 2, 0, 0, 1); }, "Self.Complex = false"},
        {[&] { r.Normalize(r2, TCplx(1, 0), TCplx(2, 0), 0, 0, 1); }, "Self.Complex = false"},
        {[&] { r.RandUniform(0u, 0, 1); }, "Seed = 0"},
        {[&] { r.RandGauss(0u, 0, 1); }, "Seed = 0"},
    };
    for (const auto& [call, text] : cases) ExpectMessage<ERovaneInvalidArgument>(call, text);
    // a refused call leaves Self as it was
    EXPECT_RUN(r, {1, 2});
    EXPECT_RUN(c, {1, 2, 3, 4});
    EXPECT_TRUE(c.Complex());
    ExpectMessage<ERovaneRangeError>([&] { r.ThreshBottom(0, 1, 5); },
                                     "Self params out of range: Index: 1, Len: 5, Length: 2");
    ExpectMessage<ERovaneRangeError>([&] { r.Replace(0.0, 1.0, 2, 1); },
                                     "Self params out of range: Index: 2, Len: 1, Length: 2");
}

TEST(Thresholds, ConditionCheckOffAndEmptyContainers) {
    TVec r, c;
    Fill(r, {1, 2});
    Fill(c, {3, 4, 0, 0}, true);
    r.SetConditionCheck(false);
    c.SetConditionCheck(false);
    // refused whatever ConditionCheck says
    ExpectMessage<ERovaneInvalidArgument>([&] { c.ThreshTop(-1); }, "TRovane.ThreshTop: Complex and (Value < 0)");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Normalize(1, 2); }, "Complex = True");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Normalize(TCplx(1, 0), 2); }, "not Complex");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Normalize(r, 1, 2); }, "Self = Vec");
    ExpectMessage<ERovaneInvalidArgument>([&] { r.RandUniform(0u, 0, 1); }, "Seed = 0");
    // checked only under ConditionCheck: the data is then treated by parts
    c.ThreshAbsLT(0.5);
    EXPECT_RUN(c, {3, 4, -0.5, -0.5});
    r.ThresholdGT_LT(0, 10, 5, -10);  // crossed levels: the primitive refuses, data unchanged
    EXPECT_RUN(r, {1, 2});
    r.Replace(TCplx(1, 0), TCplx(5, 0));  // a complex value on real data matches nothing
    EXPECT_RUN(r, {1, 2});

    // empty containers
    TVec e;
    e.ThreshBottom(1).ThreshAbsLT(1).ThresholdGT_LT(1, 1, 0, 0).Replace(1.0, 2.0);
    e.ReplaceNAN(0).Normalize(1, 2);
    e.RandUniform().RandGauss(3u, 0, 1);
    EXPECT_EQ(e.Length(), 0);
    EXPECT_EQ(e.GISeed, 3u);
    Fill(c, {1, 2}, true);
    e.Normalize(c, TCplx(0, 0), 1);  // sized like c
    EXPECT_EQ(e.Length(), 1);
}

namespace {

// The generator written out plainly, from its documented definition.
struct PlainGenerator {
    uint32_t s;
    uint64_t Next64() {
        s = s * 747796405u + 2891336453u;
        uint64_t z = uint64_t(s) * 0x9E3779B97F4A7C15ull;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double Uniform() { return std::ldexp(double(Next64() >> 11), -53); }
    float UniformSingle() { return std::ldexp(float(Next64() >> 40), -24); }
    // Polar Box-Muller: returns a pair.
    std::pair<double, double> GaussPair() {
        double u, v, r;
        do {
            u = 2 * Uniform() - 1;
            v = 2 * Uniform() - 1;
            r = u * u + v * v;
        } while (r >= 1 || r == 0);
        const double f = std::sqrt(-2 * std::log(r) / r);
        return {u * f, v * f};
    }
};

struct Moments {
    double mean = 0, var = 0, lo = INFINITY, hi = -INFINITY;
};
Moments MomentsOf(const TVec& v) {
    const std::vector<double> x = Reals(v);
    Moments m;
    long double s = 0, s2 = 0;
    for (double e : x) {
        s += e;
        m.lo = std::min(m.lo, e);
        m.hi = std::max(m.hi, e);
    }
    m.mean = double(s / x.size());
    for (double e : x) s2 += (e - m.mean) * (e - m.mean);
    m.var = double(s2 / (x.size() - 1));
    return m;
}

}  // namespace

TEST(Random, StreamsMatchThePlainGenerator) {
    TVec v;
    v.Size(7);
    v.RandUniform(12345u, -2, 3);
    EXPECT_EQ(v.RISeed, 12345u);
    PlainGenerator g{12345u};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(v[i], g.Uniform() * 5 + -2) << i;

    // the primitive hands back the state after the fill: a second call continues
    std::vector<double> d(5);
    uint32_t seed = 777;
    ASSERT_EQ(ippsRandUniform_Directd_Idx(d.data(), 1, 4, seed, 0, 1), ippStsNoErr);
    PlainGenerator h{777u};
    for (int i = 1; i < 5; ++i) EXPECT_EQ(d[i], h.Uniform());
    EXPECT_EQ(d[0], 0);
    EXPECT_EQ(seed, h.s);
    EXPECT_EQ(ippsRandUniform_Directd_Idx(d.data(), 0, -1, seed, 0, 1), ippStsSizeErr);
    EXPECT_EQ(seed, h.s);

    // Gauss: pairs, the second deviate goes to the next element
    v.Size(5);
    v.RandGauss(99u, 10, 2);
    EXPECT_EQ(v.GISeed, 99u);
    PlainGenerator k{99u};
    std::vector<double> want;
    while (want.size() < 5) {
        const auto [a, b] = k.GaussPair();
        want.push_back(10 + 2 * a);
        want.push_back(10 + 2 * b);
    }
    for (int i = 0; i < 5; ++i) EXPECT_EQ(v[i], want[i]) << i;

    // single data: the double stream cut to 24 bits
    TVec s;
    s.Size(6, false, false);
    s.RandUniform(4242u, 0, 1);
    PlainGenerator m{4242u};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(float(s[i]), m.UniformSingle()) << i;
}

TEST(Random, SeedsRepeatAndFreshSeedsDiffer) {
    TVec a, b;
    a.Size(50, true);  // complex: 100 values
    b.Size(50, true);
    a.RandGauss();
    EXPECT_LE(a.GISeed, 2147483647u);
    b.RandGauss(a.GISeed, 0, 1);
    EXPECT_EQ(Reals(a), Reals(b));
    a.RandUniform(5, 6);
    b.RandUniform(a.RISeed, 5, 6);
    EXPECT_EQ(Reals(a), Reals(b));
    // two fresh fills are (with overwhelming odds) different streams
    b.RandUniform(5, 6);
    EXPECT_NE(Reals(a), Reals(b));
    for (int i = 0; i < 20; ++i) EXPECT_LE(NewRandomSeed(), 2147483647u);
    // an odd length uses the first deviate of the last pair only
    TVec odd, even;
    odd.Size(3);
    even.Size(4);
    odd.RandGauss(31u, 0, 1);
    even.RandGauss(31u, 0, 1);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(odd[i], even[i]);
}

TEST(Random, Statistics) {
    const double n = 1e5;
    for (bool dbl : {true, false}) {
        TVec v, g;
        v.Size(100000, false, dbl);
        v.RandUniform(2024u, -1, 3);
        Moments m = MomentsOf(v);
        const double var = 16.0 / 12;
        EXPECT_GE(m.lo, -1);
        EXPECT_LT(m.hi, 3);
        EXPECT_NEAR(m.mean, 1, 5 * std::sqrt(var / n));
        // the variance of the sample variance of a uniform is (mu4 - var^2) / n, mu4 = (b-a)^4 / 80
        EXPECT_NEAR(m.var, var, 5 * std::sqrt((256.0 / 80 - var * var) / n));
        v.RandUniform(7u, 0, 1);  // [0, 1) exactly: never 1
        EXPECT_LT(MomentsOf(v).hi, 1);
        EXPECT_GE(MomentsOf(v).lo, 0);

        g.Size(50000, true, dbl);  // 100000 Gauss values through both parts
        g.RandGauss(1u, -4, 0.5);
        m = MomentsOf(g);
        EXPECT_NEAR(m.mean, -4, 5 * std::sqrt(0.25 / n));
        EXPECT_NEAR(m.var, 0.25, 5 * std::sqrt(2 * 0.25 * 0.25 / n));
        int beyond = 0;  // the tails: about 0.27 % beyond 3 deviations
        for (double x : Reals(g)) beyond += std::fabs(x + 4) > 1.5;
        EXPECT_NEAR(beyond, 270, 5 * std::sqrt(270.0));
    }
}
