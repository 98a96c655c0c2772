// The arithmetic families beyond Add, against the formulas written plainly,
// in both precisions, for every mix of real and complex operands and ranges.
#include <cmath>
#include <complex>
#include <functional>
#include <vector>

#include "ContainerTestUtil.h"

using namespace rovane;
using namespace rovane::test;

namespace {

using Cx = std::complex<long double>;

// n elements without zeros (so that they can divide), varied signs, halves.
void Make(TVec& v, int n, bool complex, bool isDouble, int seed) {
    std::vector<double> xs;
    for (int i = 0; i < n * (complex ? 2 : 1); ++i) {
        const int k = (i * 7 + seed * 3) % 11 - 5;
        xs.push_back((k == 0 ? 3 : k) * 0.5 + (i % 3) * 0.125);
    }
    v.Size(0, complex, isDouble);
    v.SetIt(complex, xs);
}

Cx At(const TVec& v, int i) { return v.Complex() ? Cx(v[2 * i], v[2 * i + 1]) : Cx(v[i], 0); }

std::vector<Cx> All(const TVec& v) {
    std::vector<Cx> out;
    for (int i = 0; i < v.Length(); ++i) out.push_back(At(v, i));
    return out;
}

// Expects v to hold `want` with the given complexity, to a few units in the
// last place of its precision.
void ExpectValues(const TVec& v, const std::vector<Cx>& want, bool complex, const char* what) {
    SCOPED_TRACE(what);
    ASSERT_EQ(v.Complex(), complex);
    ASSERT_EQ(v.Length(), static_cast<int>(want.size()));
    const long double tol = v.IsDouble() ? 0x1p-50L : 0x1p-21L;
    for (int i = 0; i < v.Length(); ++i)
        EXPECT_LE(std::abs(At(v, i) - want[i]), tol * (1 + std::abs(want[i]))) << "element " << i;
}

// two-operand members -------------------------------------------------
struct BinOp {
    const char* name;
    void (*inPlace)(TVec&, const TVec&);
    void (*two)(TVec&, const TVec&, const TVec&);
    void (*range)(TVec&, const TVec&, int, int, int);
    void (*range2)(TVec&, const TVec&, const TVec&, int, int, int, int);
    Cx (*ref)(Cx, Cx);
};

#define ROVANE_BIN_OP(OP, EXPR)                                                                             \
    BinOp {                                                                                                 \
        #OP, [](TVec& s, const TVec& b) { s.OP(b); }, [](TVec& s, const TVec& a, const TVec& b) { s.OP(a, b); }, \
            [](TVec& s, const TVec& b, int bi, int i, int n) { s.OP(b, bi, i, n); },                        \
            [](TVec& s, const TVec& a, const TVec& b, int ai, int bi, int i, int n) { s.OP(a, b, ai, bi, i, n); }, \
            [](Cx a, Cx b) { return EXPR; }                                                                 \
    }

const BinOp kBinOps[] = {
    ROVANE_BIN_OP(Sub, a - b),
    ROVANE_BIN_OP(Mul, a * b),
    ROVANE_BIN_OP(Divide, a / b),
    // DivideVec has no two-range form; Divide's stands in.
    BinOp{"DivideVec", [](TVec& s, const TVec& b) { s.DivideVec(b); },
          [](TVec& s, const TVec& a, const TVec& b) { s.DivideVec(a, b); },
          [](TVec& s, const TVec& b, int bi, int i, int n) { s.DivideVec(b, bi, i, n); },
          [](TVec& s, const TVec& a, const TVec& b, int ai, int bi, int i, int n) { s.Divide(a, b, ai, bi, i, n); },
          [](Cx a, Cx b) { return a / b; }},
    ROVANE_BIN_OP(ConjMul, a * std::conj(b)),
    // The thresholded forms with a threshold below every element: a / b.
    BinOp{"Divide(threshold)", [](TVec& s, const TVec& b) { s.Divide(b, 0.25); },
          [](TVec& s, const TVec& a, const TVec& b) { s.Divide(a, b, 0.25); },
          [](TVec& s, const TVec& b, int bi, int i, int n) { s.Divide(b, 0.25, bi, i, n); },
          [](TVec& s, const TVec& a, const TVec& b, int ai, int bi, int i, int n) {
              s.Divide(a, b, 0.25, ai, bi, i, n);
          },
          [](Cx a, Cx b) { return a / b; }},
};

class Families : public ::testing::TestWithParam<bool> {};

TEST_P(Families, TwoOperandMembersForEveryMixOfKinds) {
    const bool dbl = GetParam();
    for (const BinOp& op : kBinOps) {
        for (bool ac : {false, true}) {
            for (bool bc : {false, true}) {
                SCOPED_TRACE(std::string(op.name) + (ac ? " complex" : " real") + (bc ? " / complex" : " / real"));
                TVec a, b, s;
                Make(a, 6, ac, dbl, 1);
                Make(b, 6, bc, dbl, 2);
                std::vector<Cx> want;
                for (int i = 0; i < 6; ++i) want.push_back(op.ref(At(a, i), At(b, i)));

                op.two(s, a, b);
                ExpectValues(s, want, ac || bc, "Op(Vec1, Vec2)");
                EXPECT_EQ(s.IsDouble(), dbl);

                s.Copy(a);
                op.inPlace(s, b);
                ExpectValues(s, want, ac || bc, "Op(Vec)");

                // s[2..4] op= b[1..3]; the rest keeps its values.
                s.Copy(a);
                op.range(s, b, 1, 2, 3);
                std::vector<Cx> part = All(a);
                for (int k = 0; k < 3; ++k) part[2 + k] = op.ref(At(a, 2 + k), At(b, 1 + k));
                ExpectValues(s, part, ac || bc, "Op(Vec, VecIndex, Index, Len)");

                // d[3..5] = a[1..3] op b[2..4] into a real or complex d.
                for (bool dc : {false, true}) {
                    TVec d;
                    d.Size(7, dc, dbl);
                    d.SetVal(9.0);
                    op.range2(d, a, b, 1, 2, 3, 3);
                    std::vector<Cx> w(7, Cx(9, 0));
                    for (int k = 0; k < 3; ++k) w[3 + k] = op.ref(At(a, 1 + k), At(b, 2 + k));
                    ExpectValues(d, w, dc || ac || bc, "Op(Vec1, Vec2, Vec1Index, Vec2Index, Index, Len)");
                }
            }
        }
    }
}

// scalar members ----------------------------------------------------------
struct ValOp {
    const char* name;
    void (*inR)(TVec&, double);
    void (*inC)(TVec&, TCplx);
    void (*rangeR)(TVec&, double, int, int);
    void (*rangeC)(TVec&, TCplx, int, int);
    void (*fromR)(TVec&, const TVec&, double);  // null where the member has no form from a vector
    void (*fromC)(TVec&, const TVec&, TCplx);
    void (*fromRangeR)(TVec&, const TVec&, double, int, int, int);
    void (*fromRangeC)(TVec&, const TVec&, TCplx, int, int, int);
    Cx (*ref)(Cx x, Cx v);
};

#define ROVANE_VAL_IN(OP)                                                                                     \
    #OP, [](TVec& s, double v) { s.OP(v); }, [](TVec& s, TCplx v) { s.OP(v); },                              \
        [](TVec& s, double v, int i, int n) { s.OP(v, i, n); }, [](TVec& s, TCplx v, int i, int n) { s.OP(v, i, n); }
// VEC_VALUE(vec, value) spells the member's argument order.
#define ROVANE_VAL_FROM(OP, A, B)                                                                             \
    [](TVec& s, const TVec& vec, double value) { s.OP(A, B); },                                               \
        [](TVec& s, const TVec& vec, TCplx value) { s.OP(A, B); },                                            \
        [](TVec& s, const TVec& vec, double value, int vi, int i, int n) { s.OP(A, B, vi, i, n); },           \
        [](TVec& s, const TVec& vec, TCplx value, int vi, int i, int n) { s.OP(A, B, vi, i, n); }

const ValOp kValOps[] = {
    {ROVANE_VAL_IN(Add), ROVANE_VAL_FROM(Add, vec, value), [](Cx x, Cx v) { return x + v; }},
    {ROVANE_VAL_IN(Offset), nullptr, nullptr, nullptr, nullptr, [](Cx x, Cx v) { return x + v; }},
    {ROVANE_VAL_IN(Sub), ROVANE_VAL_FROM(Sub, vec, value), [](Cx x, Cx v) { return x - v; }},
    {ROVANE_VAL_IN(Mul), ROVANE_VAL_FROM(Mul, vec, value), [](Cx x, Cx v) { return x * v; }},
    {ROVANE_VAL_IN(Scale), nullptr, nullptr, nullptr, nullptr, [](Cx x, Cx v) { return x * v; }},
    {ROVANE_VAL_IN(SubFrom), ROVANE_VAL_FROM(SubFrom, value, vec), [](Cx x, Cx v) { return v - x; }},
    {ROVANE_VAL_IN(DivideBy), ROVANE_VAL_FROM(DivideBy, value, vec), [](Cx x, Cx v) { return v / x; }},
};

TEST_P(Families, ScalarMembersForEveryMixOfKinds) {
    const bool dbl = GetParam();
    const double rv = 1.5;
    const TCplx cv(0.5, -2);
    for (const ValOp& op : kValOps) {
        for (bool xc : {false, true}) {
            SCOPED_TRACE(std::string(op.name) + (xc ? " on complex" : " on real"));
            TVec x, s;
            Make(x, 5, xc, dbl, 3);
            auto want = [&](Cx v, int from, int count, const TVec& src, int srcFrom, const std::vector<Cx>& base) {
                std::vector<Cx> w = base;
                for (int k = 0; k < count; ++k) w[from + k] = op.ref(At(src, srcFrom + k), v);
                return w;
            };
            const std::vector<Cx> xs = All(x);
            const Cx r(rv, 0), c(cv.Re, cv.Im);

            s.Copy(x);
            op.inR(s, rv);
            ExpectValues(s, want(r, 0, 5, x, 0, xs), xc, "Op(double)");
            s.Copy(x);
            op.inC(s, cv);
            ExpectValues(s, want(c, 0, 5, x, 0, xs), true, "Op(TCplx)");
            s.Copy(x);
            op.rangeR(s, rv, 1, 3);
            ExpectValues(s, want(r, 1, 3, x, 1, xs), xc, "Op(double, Index, Len)");
            s.Copy(x);
            op.rangeC(s, cv, 2, -1);  // -1: to the end
            ExpectValues(s, want(c, 2, 3, x, 2, xs), true, "Op(TCplx, Index, -1)");
            if (!op.fromR) continue;

            TVec t;
            op.fromR(t, x, rv);
            ExpectValues(t, want(r, 0, 5, x, 0, xs), xc, "Op(Vec, double)");
            op.fromC(t, x, cv);
            ExpectValues(t, want(c, 0, 5, x, 0, xs), true, "Op(Vec, TCplx)");
            for (bool dc : {false, true}) {
                TVec d;
                d.Size(6, dc, dbl);
                d.SetVal(7.0);
                const std::vector<Cx> sevens(6, Cx(7, 0));
                op.fromRangeR(d, x, rv, 1, 2, 3);
                ExpectValues(d, want(r, 2, 3, x, 1, sevens), dc || xc, "Op(Vec, double, VecIndex, Index, Len)");
                d.Size(6, dc, dbl);
                d.SetVal(7.0);
                op.fromRangeC(d, x, cv, 0, 3, 2);
                ExpectValues(d, want(c, 3, 2, x, 0, sevens), true, "Op(Vec, TCplx, VecIndex, Index, Len)");
            }
        }
    }
}

// A real scalar is narrowed once on the single path, and the element
// arithmetic is the plain single one; Sub of a value is the addition of its
// negation, to the bit.
TEST(ArithmeticFamilies, SinglePathNarrowsTheScalarOnce) {
    TVec a, s;
    a.Size(0, false, false);
    a.SetIt({1.0 / 3, -2.7, 1e-3, 12345.678});
    const float v = static_cast<float>(0.1);
    s.Copy(a);
    s.Scale(0.1);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(static_cast<float>(s[i]), static_cast<float>(a[i]) * v);
    s.DivideBy(0.1, a);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(static_cast<float>(s[i]), v / static_cast<float>(a[i]));
    s.SubFrom(0.1, a);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(static_cast<float>(s[i]), v - static_cast<float>(a[i]));

    TVec b, c;
    Make(b, 4, true, true, 5);
    c.Copy(b);
    b.Sub(TCplx(0.1, 0.3));
    c.Add(TCplx(-0.1, -0.3));
    EXPECT_EQ(Reals(b), Reals(c));
}

INSTANTIATE_TEST_SUITE_P(DoubleAndSingle, Families, ::testing::Bool());

// thresholded division --------------------------------------------------
TEST(ArithmeticFamilies, ThresholdKeepsSignAndPhaseBelowTheLevel) {
    TVec num, s;
    const std::vector<double> den{1, 1, 2, -2, 0, 4};
    ExpectRows({// 0 -> 1/L, |x| < L -> sign(x)/L
                {{0, 0.25, -0.25, 4}, false, ON_X((Fill(s, {3, 3, 3, 3}), s.Divide(x, 0.5))), {6, 6, -6, 0.75}},
                // complex: below the level z counts as z * L / |z|
                {{0, 0, 0, 0.5, 3, 4}, true, ON_X((Fill(num, {2, 2, 2}), s.Divide(num, x, 2.0))),
                 {1, 0, 0, -1, 0.24, -0.32}},
                // a real Self over a complex Vec is a / z, part by part; a range
                // leaves the rest with zero imaginary parts
                {den, true, ON_X((Fill(s, {4, 8, 16}), s.Divide(x, 0.0))), {2, -2, 2, 2, 0, -4}},
                {den, true, ON_X((Fill(s, {5, 4, 8}), s.Divide(x, 0.0, 0, 1, 2))), {5, 0, 2, -2, 2, 2}},
                // a negative threshold is refused by the primitive: Self stays as it was
                {den, true, ON_X((Fill(s, {1, 2, 3}), s.Divide(x, -1.0))), {1, 2, 3}}});
}

// AddScaled -------------------------------------------------------------
TEST(ArithmeticFamilies, AddScaledAcrossKinds) {
    for (bool dbl : {true, false}) {
        TVec y, x, s, s2;
        Make(y, 4, false, dbl, 1);
        Make(x, 4, true, dbl, 2);
        auto expect = [&](const TVec& self, const TVec& vec, Cx factor, const char* what) {
            std::vector<Cx> w;
            for (int i = 0; i < 4; ++i) w.push_back(At(self, i) + At(vec, i) * factor);
            return ExpectValues(s, w, true, what);
        };
        // real Self, complex Vec: Self widens, both parts take the product
        s.Copy(y);
        s.AddScaled(x, 2.0);
        expect(y, x, 2.0L, "real Self, complex Vec");
        // complex Self, real Vec: the real parts only
        s.Copy(x);
        s.AddScaled(y, -0.5);
        expect(x, y, -0.5L, "complex Self, real Vec");
        // a complex factor on reals makes Self complex; the two-real form is the same
        s.Copy(y);
        s.AddScaled(x, TCplx(1, 1));
        expect(y, x, Cx(1, 1), "complex factor");
        s2.Copy(y);
        s2.AddScaled(x, 1.0, 1.0);
        EXPECT_EQ(Reals(s), Reals(s2));
        TVec z;
        Make(z, 4, false, dbl, 5);  // a real Vec is widened for the complex product
        s.Copy(y);
        s.AddScaled(z, TCplx(0.5, -1));
        expect(y, z, Cx(0.5, -1), "complex factor, real Self and Vec");
    }
}

TEST(ArithmeticFamilies, AddScaledRangesAndTheForwardToAdd) {
    TVec y, x, s, t;
    Make(y, 5, false, true, 1);
    Make(x, 5, false, true, 4);
    s.Copy(y);
    s.AddScaled(x, 3.0, 1, 2, 3);
    std::vector<Cx> w = All(y);
    for (int k = 0; k < 3; ++k) w[2 + k] += 3.0L * At(x, 1 + k);
    ExpectValues(s, w, false, "range, real factor");
    s.Copy(y);
    s.AddScaled(x, TCplx(0, 2), 0, 1, 2);
    w = All(y);
    for (int k = 0; k < 2; ++k) w[1 + k] += Cx(0, 2) * At(x, k);
    ExpectValues(s, w, true, "range, complex factor");

    // a factor of one is Add: the same bits, also where a complex product
    // would turn an infinity into NaN
    for (bool yc : {false, true}) {
        for (bool xc : {false, true}) {
            Make(y, 5, yc, true, 6);
            Make(x, 5, xc, true, 7);
            x[1] = INF;
            s.Copy(y);
            t.Copy(y);
            s.AddScaled(x, 1.0);
            t.Add(x);
            EXPECT_EQ(Reals(s), Reals(t));
            if (!yc) continue;
            s.Copy(y);
            s.AddScaled(x, C_ONE);
            EXPECT_EQ(Reals(s), Reals(t));
            s.Copy(y);
            t.Copy(y);
            s.AddScaled(x, 1.0, 1, 0, 3);
            t.Add(x, 1, 0, 3);
            EXPECT_EQ(Reals(s), Reals(t));
        }
    }
}

// AddProduct ------------------------------------------------------------
TEST(ArithmeticFamilies, AddProductAccumulates) {
    for (bool dbl : {true, false}) {
        for (bool cplx : {false, true}) {
            TVec s, a, b;
            Make(s, 5, cplx, dbl, 1);
            Make(a, 5, cplx, dbl, 2);
            Make(b, 5, cplx, dbl, 3);
            const std::vector<Cx> s0 = All(s);
            s.AddProduct(a, b);
            std::vector<Cx> w = s0;
            for (int i = 0; i < 5; ++i) w[i] += At(a, i) * At(b, i);
            ExpectValues(s, w, cplx, "AddProduct(Vec1, Vec2)");
            s.AddProduct(a, b, 0, 2, 1, 3);
            for (int k = 0; k < 3; ++k) w[1 + k] += At(a, k) * At(b, 2 + k);
            ExpectValues(s, w, cplx, "AddProduct ranges");
        }
    }
}

TEST(ArithmeticFamilies, AddProductChecksInItsOrder) {
    TVec s, a, b, a4, sgl, c;
    Fill(s, {1, 2, 3});
    Fill(a, {1, 2, 3});
    Fill(b, {1, 2, 3});
    Fill(a4, {1, 2, 3, 4});
    Fill(sgl, {1, 2, 3}, false, false);
    Fill(c, {1, 2, 3, 4, 5, 6}, true);
    // where a case breaks two rules, the first in the order is reported
    ExpectMessage<ERovaneInvalidArgument>([&] { s.AddProduct(s, a4); }, "TVec.AddProduct: Vec1.Length <> Vec2.Length");
    ExpectMessage<ERovaneInvalidArgument>([&] { a4.AddProduct(a, sgl); }, "TVec.AddProduct: IsDouble <> Vec2.IsDouble");
    ExpectMessage<ERovaneInvalidArgument>([&] { a4.AddProduct(a, c); }, "TVec.AddProduct: Vec1.Length <> Length");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.AddProduct(a, c); }, "TVec.AddProduct: Vec1.Complex <> Vec2.Complex");
    TVec c2;
    Fill(c2, {1, 2, 3, 4, 5, 6}, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { s.AddProduct(c, c2); }, "TVec.AddProduct: Vec1.Complex <> fComplex");
    ExpectMessage<ERovaneInvalidArgument>([&] { s.AddProduct(s, s); }, "TVec.AddProduct: Vec1 = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { s.AddProduct(a, s); }, "TVec.AddProduct: Vec2 = Self");
    EXPECT_EQ(Reals(s), (std::vector<double>{1, 2, 3}));
}

// texts of the other members ----------------------------------------
TEST(ArithmeticFamilies, FailureTextsAndTheirOrder) {
    TVec a, b, a4s, c, sgl;
    Fill(a, {1, 2, 3});
    Fill(b, {1, 2, 3});
    Fill(sgl, {1, 2, 3}, false, false);
    Fill(a4s, {1, 2, 3, 4}, false, false);  // wrong length and width at once
    const std::vector<std::pair<std::function<void()>, const char*>> cases = {
        {[&] { a.Sub(a); }, "TVec.Sub: Self = Vec"},
        {[&] { a.Sub(a4s); }, "TVec.Sub: Vec.Length <> Length"},
        {[&] { a.Sub(sgl); }, "TVec.Sub: Vec.IsDouble <> IsDouble"},
        {[&] { a.Sub(a, a4s); }, "TVec.Sub: Vec1.Length <> Vec2.Length"},
        {[&] { a.Sub(a, sgl); }, "TVec.Sub: (Self = Vec1) or (Self = Vec2)"},
        {[&] { c.Sub(b, sgl); }, "TVec.Sub: Vec1.IsDouble <> Vec2.IsDouble"},
        {[&] { a.Mul(a4s); }, "Length <> Vec.Length"},
        {[&] { a.Mul(sgl); }, "IsDouble <> Vec.IsDouble"},
        {[&] { a.Mul(b, a4s); }, "Vec1.Length <> Vec2.Length"},
        {[&] { a.Mul(a, sgl); }, "(Self = Vec1) or (Self = Vec2)"},
        {[&] { c.Mul(b, sgl); }, "Vec1.IsDouble <> Vec2.IsDouble"},
        {[&] { a.Mul(a, 2.0); }, "TDenseRovane.Mul: Vec = Self"},
        {[&] { a.Divide(a); }, "TDenseRovane.Divide: Self = Vec"},
        {[&] { a.Divide(a4s); }, "TDenseRovane.Divide: Length <> Vec.Length"},
        {[&] { a.Divide(sgl); }, "TDenseRovane.Divide: IsDouble <> Vec.IsDouble"},
        {[&] { a.Divide(b, a4s); }, "Num.Length <> Den.Length"},
        {[&] { a.DivideVec(b, a); }, "(Self = Num) or (Self = Den)"},
        {[&] { c.Divide(b, sgl); }, "Num.IsDouble <> Den.IsDouble"},
        {[&] { a.Divide(b, a4s, 0.1); }, "Vec1.Length <> Vec2.Length"},
        {[&] { a.Divide(a, 0.1); }, "Self = Vec"},
        {[&] { a.SubFrom(1.0, a); }, "TDenseRovane.SubFrom: Vec = Self"},
        {[&] { a.DivideBy(TCplx(1, 1), a); }, "TDenseRovane.DivideBy: Vec = Self"},
        {[&] { a.Sub(a, 1.0); }, "TDenseRovane.Add: Vec = Self"},  // Sub with a value is Add
        {[&] { a.AddScaled(a, 2.0); }, "TRovane.Add: Self = Vec"},
        {[&] { a.AddScaled(a4s, TCplx(0, 1)); }, "TRovane.Add: Vec.Length <> Length"},
        {[&] { a.AddScaled(sgl, 2.0); }, "TRovane.Add: Vec.IsDouble <> IsDouble"},
    };
    for (const auto& [call, text] : cases) ExpectMessage<ERovaneInvalidArgument>(call, text);
    ExpectMessage<ERovaneRangeError>([&] { a.Mul(b, 1, 0, 3); },
                                     "X params out of range: XIndex: 1, Len: 3 , X.Length: 3");
    ExpectMessage<ERovaneRangeError>([&] { a.SubFrom(1.0, 2, 2); },
                                     "Self params out of range: Index: 2, Len: 2, Length: 3");
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 3}));
    EXPECT_TRUE(c.Length() == 0 && !c.Complex());

    // Mul and ConjMul refuse Self = Vec also with the checks off; Sub does not
    a.SetConditionCheck(false);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Mul(a); }, "Self = Vec");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.ConjMul(a); }, "TVec.ConjMul: Self = Vec");
    a.Sub(a);
    EXPECT_EQ(Reals(a), (std::vector<double>{0, 0, 0}));
}

// sizing, sub-ranges, empty objects, temporaries ----------------------------
TEST(ArithmeticFamilies, TwoOperandFormsTakeTheShapeOfTheMatrix) {
    TVec v;
    TMtx m, r;
    Fill(v, {1, 2, 3, 4, 5, 6});
    m.Size(3, 2);
    m.SetVal(2.0);
    r.Size(1, 6);
    r.Mul(m, v);  // Vec1 is the matrix
    EXPECT_EQ(r.Rows(), 3);
    EXPECT_EQ(r.Cols(), 2);
    EXPECT_EQ(r[5], 12);
    r.Size(1, 6);
    r.Sub(v, m);  // Vec1 is not: Vec2 decides
    EXPECT_EQ(r.Rows(), 3);
    EXPECT_EQ(r[0], -1);
}

TEST(ArithmeticFamilies, WorksThroughSubRanges) {
    TVec a, b, view;
    Fill(a, {1, 2, 3, 4, 5, 6, 7, 8}, true);  // 1+2i, 3+4i, 5+6i, 7+8i
    Fill(b, {2, 4});
    view.SetSubRange(a, 1, 2);  // the middle two complex elements
    view.Divide(b);
    view.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 1.5, 2, 1.25, 1.5, 7, 8}));
    b.SetSubRange(1, 1);
    a.SetSubRange(3, 1);
    a.Mul(b);
    a.SetFullRange();
    b.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 1.5, 2, 1.25, 1.5, 28, 32}));
}

TEST(ArithmeticFamilies, EmptyObjectsTakeTheComplexKind) {
    TVec e, c;
    Fill(c, {1, 2}, true);
    for (auto op : {+[](TVec& s) { s.Mul(TCplx(1, 1)); }, +[](TVec& s) { s.SubFrom(TCplx(1, 1)); },
                    +[](TVec& s) { s.DivideBy(TCplx(1, 1)); }, +[](TVec& s) { s.Sub(TCplx(1, 1)); }}) {
        e.Size(0);
        op(e);
        EXPECT_TRUE(e.Complex());
        EXPECT_EQ(e.Length(), 0);
    }
    e.Size(0);
    e.SetConditionCheck(false);
    e.ConjMul(c);
    EXPECT_TRUE(e.Complex());
    EXPECT_EQ(e.Length(), 0);
}

TEST(ArithmeticFamilies, TemporariesGoBackToTheCache) {
    TRovanePoolItem& pool = *Controller->Pool[Controller->GetPoolIndex()];
    const int32_t before = pool.Vec.CacheUsedCount();
    TVec a, c, s;
    Fill(a, {1, 2, 3});
    Fill(c, {1, 1, 2, 2, 3, 3}, true);
    s.Copy(a);
    s.ConjMul(c);  // conjugate and widening temporaries
    s.Copy(a);
    s.Divide(c, 0.5, 0, 1, 2);  // inverse, numerator and widening temporaries
    s.Copy(a);
    s.DivideBy(TCplx(1, 2));
    EXPECT_EQ(pool.Vec.CacheUsedCount(), before);
    {
        TDoubleArray held = a.ValuesArray();  // the next Size of a fails
        EXPECT_THROW(a.Mul(TCplx(1, 1)), ERovaneInvalidArgument);
        EXPECT_THROW(a.Sub(c), ERovaneInvalidArgument);
    }
    EXPECT_EQ(pool.Vec.CacheUsedCount(), before);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 3}));
}

}  // namespace
