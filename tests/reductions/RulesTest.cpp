// The defined results and rules of the reductions: empty input, blocked
// summation, tie-breaks, statistics quirks, comparison rules, running sums,
// matrix folds and the error texts.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cmath>
#include <algorithm>
#include <functional>
#include <string>

namespace rovane {
namespace {

template <class E, class F>
void ExpectText(F&& f, const std::string& text) {
    try {
        f();
        ADD_FAILURE() << "no exception, expected: " << text;
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()), text);
    }
}
bool Same(double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; }

class Precisions : public ::testing::TestWithParam<bool> {};

TEST_P(Precisions, EmptyInputTable) {
    TVec e, c;
    e.Size(0, false, GetParam());
    c.Size(0, true, GetParam());
    struct Row {
        const char* name;
        std::function<double()> got;
        double want;
    } rows[] = {
        {"Sum", [&] { return e.Sum(); }, 0},
        {"Sum range", [&] { return e.Sum(0, 0); }, 0},
        {"Product", [&] { return e.Product(); }, 1},
        {"Mean", [&] { return e.Mean(); }, 0},
        {"Max", [&] { return e.Max(); }, NAN_},
        {"Min", [&] { return e.Min(); }, NAN_},
        {"Median", [&] { return e.Median(); }, NAN_},
        {"RMS", [&] { return e.RMS(); }, NAN_},
        {"StdDev", [&] { return e.StdDev(); }, NAN_},
        {"NormC", [&] { return e.NormC(); }, 0},
        {"NormL1", [&] { return c.NormL1(); }, 0},
        {"NormL2", [&] { return c.NormL2(); }, 0},
        {"DotProd", [&] { return e.DotProd(e); }, 0},
        {"Range", [&] { return e.Range(); }, 0},
        {"Skewness", [&] { return e.Skewness(0, 1); }, NAN_},
        {"Kurtosis", [&] { return e.Kurtosis(0, 1); }, NAN_},
    };
    for (const Row& r : rows) EXPECT_TRUE(Same(r.got(), r.want)) << r.name;
    EXPECT_EQ(c.Productc(), TCplx(1, 0));
    EXPECT_EQ(c.Meanc(), C_ZERO);
    TCplx z;
    EXPECT_EQ(c.Maxc(z, 0, 0), -1);
    EXPECT_TRUE(std::isnan(z.Re));
    EXPECT_EQ(c.Minc(z, 0, 0), -1);
    double v, w;
    int32_t i = 5, j = 5;
    e.Max(v, i);
    EXPECT_EQ(i, -1);
    e.MaxMin(v, i, w, j);
    EXPECT_TRUE(std::isnan(v) && std::isnan(w));
    EXPECT_EQ(i, -1);
    EXPECT_EQ(j, -1);
    e.MeanAndStdDev(v, w);
    EXPECT_TRUE(std::isnan(v) && std::isnan(w));
    TMtx m;
    m.Size(0, 0, false, GetParam());
    EXPECT_TRUE(std::isnan(m.Norm1()));
    EXPECT_TRUE(std::isnan(m.NormInf()));
    EXPECT_EQ(m.Trace(), C_ZERO);
}

// Sum() adds blocks of 2000, then the block sums (narrowed to single on the
// single path); the range form adds the run in one call.
TEST_P(Precisions, SumBlocksOf2000) {
    for (int32_t n : {1999, 2000, 2001, 4000, 4001, 4000001}) {
        TVec x;
        x.Size(n, false, GetParam());
        for (int32_t i = 0; i < n; ++i) x[i] = 1.0 / (1 + i % 97) + (i % 3 ? 1e3 : -1e-3);
        double want;
        if (n < 2000) {
            want = x.Sum(0, n);
        } else {
            TVec parts;
            parts.Size((n + 1999) / 2000, false, GetParam());
            for (int32_t s = 0, k = 0; s < n; s += 2000, ++k) parts[k] = x.Sum(s, std::min(2000, n - s));
            want = parts.Sum();
        }
        EXPECT_EQ(x.Sum(), want) << n;
    }
}

TEST_P(Precisions, ExtremesTieBreaksAndRanges) {
    TVec x;
    x.Size(0, false, GetParam());
    x.SetIt({1, 3, 3, 2});
    double v;
    int32_t i;
    x.Max(v, i);
    EXPECT_EQ(v, 3);
    EXPECT_EQ(i, 1);
    x.Max(v, i, 2, 2);
    EXPECT_EQ(i, 2);  // counted from the start of the vector
    x.SetIt({2, 1, 1});
    x.Min(v, i);
    EXPECT_EQ(i, 1);
    // The catalogue's MinMaxIndx rule: a NaN takes the minimum and the next
    // element replaces it.
    x.SetIt({1, NAN_, 3});
    double lo;
    int32_t ilo;
    x.MaxMin(v, i, lo, ilo);
    EXPECT_EQ(lo, 3);
    EXPECT_EQ(ilo, 2);
    EXPECT_EQ(v, 1);
    EXPECT_EQ(i, 0);
    x.SetIt({4, -2, 7, 7});
    EXPECT_EQ(x.Range(), 9);
    EXPECT_EQ(x.Range(0, 2), 6);
}

TEST_P(Precisions, ComplexQuadrantRule) {
    TVec z;
    z.Size(0, true, GetParam());
    z.SetCplx({1, 0, 0, 1, -1, 0, 0, -1});  // 1, i, -1, -i
    TCplx v;
    EXPECT_EQ(z.Maxc(v, 0, 4), 2);
    EXPECT_EQ(v, TCplx(-1, 0));
    EXPECT_EQ(z.Minc(v, 0, 4), 3);
    EXPECT_EQ(v, TCplx(0, -1));
    EXPECT_EQ(z.Max(v, 1, 2), 2);  // range forms count from the start of the vector
    // Same quadrant: Maxc takes the larger phase, Minc the smaller; fully
    // equal elements keep the earlier one; a NaN is passed over.
    z.SetCplx({3, 4, 4, 3, 3, 4, NAN_, 0, 0, 1});
    EXPECT_EQ(z.Maxc(v, 0, 5), 0);
    EXPECT_EQ(z.Minc(v, 0, 5), 4);
    EXPECT_EQ(z.Minc(v, 0, 4), 1);
    z.SetCplx({-3, -4, -4, -3});  // quadrant 1: the larger real part has the larger phase
    EXPECT_EQ(z.Maxc(v, 0, 2), 0);
    EXPECT_EQ(z.Minc(v, 0, 2), 1);
    EXPECT_EQ(z.Maxc(), TCplx(-3, -4));
}

TEST_P(Precisions, StatisticsRules) {
    TVec x;
    x.Size(0, false, GetParam());
    x.SetIt({5});
    EXPECT_TRUE(std::isnan(x.StdDev()));
    double m, s;
    x.MeanAndStdDev(m, s);
    EXPECT_EQ(m, 5);
    EXPECT_TRUE(std::isnan(s));
    x.SetIt({2, 4, 4, 4, 5, 5, 7, 9});
    EXPECT_NEAR(x.StdDev(), std::sqrt(32.0 / 7), 1e-6);
    EXPECT_EQ(x.StdDev(1000.0), x.StdDev());  // the mean given is not used
    EXPECT_EQ(x.Median(), 4.5);
    EXPECT_EQ(x.Median(1, 3), 4);
    EXPECT_NEAR(x.RMS(), std::sqrt(232.0 / 8), 1e-6);
    // Bias-corrected skewness and excess kurtosis from their formulas.
    const double mean = 5, sd = std::sqrt(32.0 / 7);
    double s3 = 0, s4 = 0;
    for (double v : {2, 4, 4, 4, 5, 5, 7, 9}) {
        s3 += std::pow((v - mean) / sd, 3);
        s4 += std::pow((v - mean) / sd, 4);
    }
    EXPECT_NEAR(x.Skewness(mean, sd), s3 * 8 / (7 * 6), 1e-5);
    EXPECT_NEAR(x.Kurtosis(mean, sd), (s4 * 8 * 9 / 7 - 3 * 49) / (6 * 5), 1e-5);
    EXPECT_EQ(x.Skewness(mean, 0), INF);
    EXPECT_EQ(x.Kurtosis(mean, 0), INF);
    EXPECT_TRUE(std::isnan(x.Skewness(mean, sd, 0, 2)));
    EXPECT_TRUE(std::isnan(x.Kurtosis(mean, sd, 0, 3)));
    x.SetIt({3, NAN_, 1, 2});
    EXPECT_EQ(x.Median(0, 1), 3);
    EXPECT_EQ(x.Median(2, 2), 1.5);
    x.SetIt({1, 2, 3, 4});
    EXPECT_EQ(x.Product(), 24);
    EXPECT_EQ(x.SumOfSquares(), 30);
    TCplx p;
    x.Product(p);
    EXPECT_EQ(p, TCplx(24, 0));
    TVec z;
    z.Size(0, true, GetParam());
    z.SetCplx({1, 1, 1, -1, 3, 1});
    EXPECT_EQ(z.Productc(), TCplx(6, 2));
    EXPECT_EQ(z.Sumc(), TCplx(5, 1));
    EXPECT_EQ(z.SumOfSquares(), 14);
    TCplx sd2;
    z.StdDev(C_ZERO, sd2);
    EXPECT_NEAR(sd2.Re, std::sqrt(4.0 / 3), 1e-6);  // of 1, 1, 3
    EXPECT_NEAR(sd2.Im, std::sqrt(4.0 / 3), 1e-6);  // of 1, -1, 1
}

TEST_P(Precisions, IsEqualRules) {
    TVec a, b;
    a.Size(0, false, GetParam());
    b.Size(0, false, GetParam());
    struct Row {
        double x, y, tol;
        TCompare cmp;
        bool want;
    } rows[] = {
        {NAN_, NAN_, 0, cmpAbsolute, true},       {NAN_, 1, 1e9, cmpAbsolute, false},
        {INF, -INF, 0, cmpAbsolute, true},        {INF, NAN_, 0, cmpAbsolute, false},
        {1, 1.5, 0, cmpAbsolute, false},          {1, 1.5, 0.5, cmpAbsolute, true},
        {1, 1.5, -0.5, cmpAbsolute, true},        {1, 1.5, 0.4, cmpAbsolute, false},
        {100, 101, 0.01, cmpRelative, true},      {100, 102, 0.01, cmpRelative, false},
        {1e-17, -1e-17, 2e-17, cmpRelative, true}, {1e-17, -1e-17, 1e-17, cmpRelative, false},
    };
    for (const Row& r : rows) {
        a.SetIt({0, r.x});
        b.SetIt({0, r.y});
        EXPECT_EQ(a.IsEqual(b, r.tol, r.cmp), r.want) << r.x << " " << r.y << " " << r.tol;
        EXPECT_EQ(a.IsEqual(b, 1, 1, 1, r.tol, r.cmp), r.want);
    }
    // Defaults: ten epsilons of the precision, absolute.
    const double eps = GetParam() ? 0x1p-52 : 0x1p-23;
    a.SetIt({1, 2});
    b.SetIt({1, 2 + 8 * eps});
    EXPECT_TRUE(a.IsEqual(b));
    b.SetIt({1, 2 + 16 * eps});
    EXPECT_FALSE(a.IsEqual(b));
    EXPECT_TRUE(a.IsEqual(b, 0, 0, 1));
    b.SetIt({1, 2, 3});
    EXPECT_FALSE(a.IsEqual(b));  // lengths differ
    TVec c;
    c.Size(0, true, GetParam());
    c.SetCplx({1, 0, 2, 0});
    EXPECT_FALSE(a.IsEqual(c));  // complexity differs: false, no exception
    EXPECT_FALSE(a.IsEqual(c, 0, 0, 0));  // before the empty range
    b.SetIt({5, 6, 7});
    EXPECT_TRUE(a.IsEqual(b, 1, 1, 0));  // an empty range is equal
    a.SetIt({2, 2});
    EXPECT_TRUE(a.IsEqual(2.0));
    EXPECT_TRUE(a.IsEqual(TCplx(2, 0)));
    EXPECT_FALSE(a.IsEqual(TCplx(2, 1)));
    c.SetCplx({2, 1, 2, 1});
    EXPECT_TRUE(c.IsEqual(TCplx(2, 1)));
    EXPECT_FALSE(c.IsEqual(TCplx(2, 1.5), 0.4, cmpAbsolute));
    TMtx m1, m2;
    m1.Size(2, 3, false, GetParam());
    m2.Size(3, 2, false, GetParam());
    m1.SetZero();
    m2.SetZero();
    EXPECT_FALSE(m1.Equal(m2, 0));
    m2.Size(2, 3);
    m2.SetZero();
    EXPECT_TRUE(m1.Equal(m2, 0));
    EXPECT_TRUE(Equal(m1, m2, 0, cmpRelative));
}

TEST_P(Precisions, RunningSums) {
    TVec x;
    x.Size(0, false, GetParam());
    x.SetIt({1, 2, 3, 4});
    x.CumSum();
    EXPECT_EQ(x[3], 10);
    EXPECT_EQ(x[1], 3);
    x.SetIt({1, 2, 3, 4});
    x.CumSum(2, 2);
    EXPECT_EQ(x[1], 2);
    EXPECT_EQ(x[3], 7);
    TVec y;
    y.CumSum(x);
    EXPECT_EQ(y[3], 13);
    TMtx m;
    m.Size(3, 2, false, GetParam());
    m.SetIt({1, 2, 3, 4, 5, 6});
    m.Size(3, 2);
    m.CumSum();  // down the columns
    EXPECT_EQ(m[4], 9);
    EXPECT_EQ(m[5], 12);
    m.SetIt({1, 2, 3, 4, 5, 6});
    m.Size(3, 2);
    m.TDenseRovane::CumSum();  // along the flat range
    EXPECT_EQ(m[5], 21);
    TVec z;
    z.Size(0, true, GetParam());
    z.SetCplx({1, 1, 2, -1, 3, 0});
    z.CumSum();
    EXPECT_EQ(z[4], 6);
    EXPECT_EQ(z[5], 0);
    ExpectText<ERovaneInvalidArgument>([&] { m.CumSum(m); }, "Mtx = Self");
}

TEST_P(Precisions, MatrixFolds) {
    TMtx m;
    m.Size(2, 3, false, GetParam());
    m.SetIt({1, -2, 3, -4, 5, -6});
    m.Size(2, 3);
    TVec d;
    m.SumCols(d);
    EXPECT_EQ(d.Length(), 3);
    EXPECT_EQ(d[0], -3);
    EXPECT_EQ(d[2], -3);
    m.SumRows(d);
    EXPECT_EQ(d[0], 2);
    EXPECT_EQ(d[1], -5);
    m.MeanCols(d);
    EXPECT_EQ(d[1], 1.5);
    m.MeanRows(d);
    EXPECT_NEAR(d[1], -5.0 / 3, 1e-6);
    EXPECT_EQ(m.Trace(), TCplx(6, 0));
    EXPECT_EQ(m.Norm1(), 9);
    EXPECT_EQ(m.NormInf(), 15);
    EXPECT_NEAR(m.NormFro(), std::sqrt(91.0), 1e-5);
    EXPECT_EQ(NormInf(m), 15);
    EXPECT_EQ(Norm1(m), 9);
}

TEST_P(Precisions, DifferencesIntegrationGrouping) {
    TVec x, d;
    x.Size(0, false, GetParam());
    x.SetIt({1, 4, 9, 16});
    d.Difference(x);
    ASSERT_EQ(d.Length(), 3);
    EXPECT_EQ(d[2], 7);
    d.Difference(x, 2);
    ASSERT_EQ(d.Length(), 2);
    EXPECT_EQ(d[0], 8);
    x.Difference(3);
    ASSERT_EQ(x.Length(), 1);
    EXPECT_EQ(x[0], 15);
    x.Difference(1);
    EXPECT_EQ(x.Length(), 0);  // Lag >= Length empties the vector
    x.SetIt({1, 4, 9, 16});
    d.Size(4);
    d.SetZero();
    d.Difference(x, 1, 2, 2, 1);  // d[2..3] = x[2..3] - x[1..2]
    EXPECT_EQ(d[2], 5);
    EXPECT_EQ(d[3], 7);
    ExpectText<ERovaneInvalidArgument>([&] { d.Difference(x, 0, 0, 1, -1); }, "Lag < 0");
    ExpectText<ERovaneRangeError>([&] { d.Difference(x, 2, 0, 2, 1); },
                                  "X params out of range: XIndex: 2 Len: 3, Length: 4");

    // Two orders: initial values (1, 10), data (1, 1, 1).
    TVec init, v;
    init.SetIt({1, 10});
    v.Size(0, false, GetParam());
    v.SetIt({1, 1, 1});
    d.Integrate(v, init);
    ASSERT_EQ(d.Length(), 3);
    // First order from index 1: 10 11 12 13; second from 0: 1 11 22 34 47.
    EXPECT_EQ(d[0], 22);
    EXPECT_EQ(d[2], 47);
    v.Integrate(init);
    EXPECT_EQ(v[1], 34);
    ExpectText<ERovaneInvalidArgument>([&] { d.Integrate(init, TVec()); },
                                       "TVec.Integrate: (Init.Complex) or (Init.Length = 0)");

    TVecInt bins;
    bins.Size(4);
    const int32_t b[] = {2, 0, 2, 1};
    for (int i = 0; i < 4; ++i) bins.IValues[i] = b[i];
    x.SetIt({1, 2, 3, 4});
    TVec g;
    g.GroupSum(bins, x, -1);
    ASSERT_EQ(g.Length(), 3);
    EXPECT_EQ(g[2], 4);
    EXPECT_EQ(g[0], 2);
    g.GroupSumIteration(bins, x, 2);
    EXPECT_EQ(g[2], 8);
    ExpectText<ERovaneInvalidArgument>([&] { g.GroupSumIteration(bins, x, 3); },
                                       "TVec.GroupSumIteration: Bins.Length <> Data.Length");
    g.GroupSum(bins, x, 5);
    EXPECT_EQ(g.Length(), 6);
    bins.IValues[0] = 7;
    EXPECT_THROW(g.GroupSum(bins, x, 3), ERovaneRangeError);

    TVec z;
    z.Size(0, true, GetParam());
    z.SetCplx({3, 4, 1, -1});
    g.Norm(z);
    EXPECT_EQ(g[0], 25);  // squared magnitudes
    EXPECT_EQ(g[1], 2);
}

INSTANTIATE_TEST_SUITE_P(DoubleAndSingle, Precisions, ::testing::Bool());

TEST(ReductionTexts, WrongKindRangeAndOperands) {
    TVec r, c, s;
    r.SetIt({1, 2, 3});
    c.Size(3, true);
    c.SetZero();
    s.Size(3, false, false);
    s.SetZero();
    using IA = ERovaneInvalidArgument;
    struct Row {
        std::function<void()> call;
        const char* text;
    } rows[] = {
        {[&] { c.Sum(); }, "Complex = True"},
        {[&] { c.Product(); }, "Complex = True"},
        {[&] { c.Mean(); }, "Complex = True"},
        {[&] { c.Median(); }, "Complex = True"},
        {[&] { c.StdDev(); }, "Complex = True"},
        {[&] { c.Max(); }, "Complex = True"},
        {[&] { c.Range(); }, "Complex = True"},
        {[&] { double a, b; c.MeanAndStdDev(a, b); }, "Complex = True"},
        {[&] { double a, b; c.MaxMin(a, b); }, "Complex = true"},
        {[&] { r.Meanc(0, 1); }, "Complex = False"},
        {[&] { TCplx z; r.Maxc(z, 0, 1); }, "Complex = False"},
        {[&] { TCplx z; r.Sum(z, 0, 1); }, "TRovane.Sum: Self is not complex"},
        {[&] { c.Skewness(0, 1); }, "TRovane.Skewness: Complex vector is not allowed"},
        {[&] { c.Kurtosis(0, 1); }, "TRovane.Kurtosis: Complex vector is not allowed"},
        {[&] { r.NormL2(r, false); }, "Self = Rovane"},
        {[&] { r.NormL1(c, false); }, "Self.Complex <> Rovane.Complex"},
        {[&] { r.NormC(s, true); }, "Self.IsDouble <> Rovane.IsDouble"},
        {[&] { TVec t; t.SetIt({1}); r.DotProd(t); }, "DotProd: Vec.Length <> Self.Length"},
        {[&] { r.DotProd(s); }, "DotProd: Vec.IsDouble <> Self.IsDouble"},
        {[&] { r.DotProd(c); }, "Vec.Complex or Self.Complex"},
        {[&] { r.DotProdc(r); }, "not (fComplex or Vec.Complex)"},
        {[&] { r.DotProdc(c, true); }, "ConjVec and (fComplex <> Vec.Complex)"},
    };
    for (const Row& row : rows) ExpectText<IA>(row.call, row.text);
    ExpectText<ERovaneRangeError>([&] { r.Sum(1, 3); }, "Self params out of range: Index: 1, Len: 3, Length: 3");
    ExpectText<ERovaneRangeError>([&] { r.Max(-1, 2); }, "Self params out of range: Index: -1, Len: 2, Length: 3");
    ExpectText<ERovaneRangeError>([&] { r.DotProd(s, 0, 0, 2); },
                                  "X param not matching floating point precision: fIsDouble <> X.fIsDouble");
    ExpectText<ERovaneRangeError>([&] { c.DotProdc(s, 0, 0, 2); },
                                  "X param not matching floating point precision: fIsDouble <> X.fIsDouble");
    // Refusals leave the object usable; Len -1 runs to the end.
    EXPECT_EQ(r.Sum(1, -1), 5);
    EXPECT_EQ(Max(r, 0, 2), 2);
    EXPECT_EQ(Mean(r), 2);
}

}  // namespace
}  // namespace rovane
