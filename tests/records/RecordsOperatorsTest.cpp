// Meaning of every operator form of the records, the comparisons with their
// "all elements" reading, the conversions with their texts, element access
// and the generated forwarders and free functions.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cmath>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

using namespace rovane;

namespace {

Vector Make(std::initializer_list<double> v, bool isDouble = true) {
    Vector r;
    r.Size(int32_t(v.size()), false, isDouble);
    int32_t i = 0;
    for (double x : v) r[i++] = x;
    return r;
}

template <class F>
std::string TextOf(F f) {
    try {
        f();
    } catch (const ERovaneException& e) {
        return e.what();
    }
    return "(no exception)";
}

const std::initializer_list<double> kL = {1.5, -2.0, 3.0, 0.25, -0.0};
const std::initializer_list<double> kR = {2.0, 4.0, -8.0, 0.5, 3.0};

}  // namespace

// Each form against the elementwise result of the same operation on doubles.
TEST(RecordOperators, EveryFormOfTheFourOperatorsIsElementwise) {
    // run(l, r, x, d): x is a container holding the values of the operand it
    // stands for (r on the right, l on the left).
    using Fn = std::function<Vector(const Vector&, const Vector&, const TVec&, double)>;
    enum Kind { Both, ValueRight, ValueLeft };
    struct Form {
        const char* name;
        Fn run;
        Kind kind;
        bool xIsLeft;
    };
    struct OpCase {
        char op;
        double (*f)(double, double);
        std::vector<Form> forms;
    };
#define ROVANE_FORMS(OP)                                                                                     \
    std::vector<Form> {                                                                                      \
        {"V op V", [](auto& l, auto& r, auto&, double) { return l OP r; }, Both, false},                       \
        {"V&& op V", [](auto& l, auto& r, auto&, double) { return (l * 1.0) OP r; }, Both, false},             \
        {"V op V&&", [](auto& l, auto& r, auto&, double) { return l OP(r * 1.0); }, Both, false},              \
        {"V&& op V&&", [](auto& l, auto& r, auto&, double) { return (l * 1.0) OP(r * 1.0); }, Both, false},    \
        {"V op X", [](auto& l, auto&, auto& x, double) { return l OP x; }, Both, false},                       \
        {"V&& op X", [](auto& l, auto&, auto& x, double) { return (l * 1.0) OP x; }, Both, false},             \
        {"X op V", [](auto&, auto& r, auto& x, double) { return x OP r; }, Both, true},                        \
        {"X op V&&", [](auto&, auto& r, auto& x, double) { return x OP(r * 1.0); }, Both, true},               \
        {"V op d", [](auto& l, auto&, auto&, double d) { return l OP d; }, ValueRight, false},                 \
        {"V&& op d", [](auto& l, auto&, auto&, double d) { return (l * 1.0) OP d; }, ValueRight, false},       \
        {"d op V", [](auto&, auto& r, auto&, double d) { return d OP r; }, ValueLeft, false},                  \
        {"d op V&&", [](auto&, auto& r, auto&, double d) { return d OP(r * 1.0); }, ValueLeft, false},         \
    }
    const OpCase ops[] = {
        {'+', [](double a, double b) { return a + b; }, ROVANE_FORMS(+)},
        {'-', [](double a, double b) { return a - b; }, ROVANE_FORMS(-)},
        {'*', [](double a, double b) { return a * b; }, ROVANE_FORMS(*)},
        {'/', [](double a, double b) { return a / b; }, ROVANE_FORMS(/)},
    };
#undef ROVANE_FORMS
    const Vector l = Make(kL), r = Make(kR);
    const std::vector<double> lv = kL, rv = kR;
    const double d = 2.5;
    for (const OpCase& oc : ops) {
        for (const Form& form : oc.forms) {
            TVec x;
            x.Copy(form.xIsLeft ? l.Data() : r.Data());
            Vector res = form.run(l, r, x, d);
            ASSERT_EQ(res.Length(), 5) << oc.op << " " << form.name;
            for (int32_t i = 0; i < 5; ++i) {
                const double a = form.kind == ValueLeft ? d : lv[i];
                const double b = form.kind == ValueRight ? d : rv[i];
                const double want = oc.f(a, b);
                EXPECT_EQ(res[i], want) << oc.op << " " << form.name << " " << i;
                EXPECT_EQ(std::signbit(res[i]), std::signbit(want)) << oc.op << " " << form.name << " " << i;
            }
        }
    }
    // The operands are untouched.
    for (int32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(l[i], lv[i]);
        EXPECT_EQ(r[i], rv[i]);
    }
}

TEST(RecordOperators, ComplexValuesAndUnaryMinus) {
    const Vector l = Make({1, -2, 3});
    const TCplx c(2, -1);
    struct Case {
        const char* name;
        Vector v;
        std::function<TCplx(double)> want;
    };
    const Case cases[] = {
        {"V + c", l + c, [&](double a) { return TCplx(a, 0) + c; }},
        {"c - V", c - l, [&](double a) { return c - TCplx(a, 0); }},
        {"V * c", l * c, [&](double a) { return TCplx(a, 0) * c; }},
        {"c * V&&", c * (l * 1.0), [&](double a) { return c * TCplx(a, 0); }},
        {"V / c", l / c, [&](double a) { return TCplx(a, 0) / c; }},
        {"c / V", c / l, [&](double a) { return c / TCplx(a, 0); }},
        {"V&& / c", (l * 1.0) / c, [&](double a) { return TCplx(a, 0) / c; }},
    };
    for (const Case& k : cases) {
        ASSERT_TRUE(k.v.Complex()) << k.name;
        for (int32_t i = 0; i < 3; ++i) {
            const TCplx got = k.v.CValues(i), want = k.want(l[i]);
            EXPECT_NEAR(got.Re, want.Re, 1e-15 * std::abs(want.Re) + 1e-300) << k.name << i;
            EXPECT_NEAR(got.Im, want.Im, 1e-15 * std::abs(want.Im) + 1e-300) << k.name << i;
        }
    }
    Vector n = -l;
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(n[i], -l[i]);
}

TEST(RecordOperators, CompoundAssignmentWorksInPlace) {
    Vector a = Make({1, 2, 4});
    const TRovaneBase* obj = a.Object();
    const Vector b = Make({3, 5, 7});
    a += b;
    a -= 1.0;
    a *= b;
    a /= 2.0;
    a += TCplx(0, 1);
    EXPECT_EQ(a.Object(), obj);
    const double want[] = {(1 + 3 - 1) * 3 / 2.0, (2 + 5 - 1) * 5 / 2.0, (4 + 7 - 1) * 7 / 2.0};
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(a.CValues(i), TCplx(want[i], 1));
}

TEST(RecordOperators, MatrixTimesMatrixIsElementwiseAndNeedsEqualShapes) {
    Matrix a({{1, 2, 3}, {4, 5, 6}});
    Matrix b({{2, 0.5, -1}, {1, 3, 0.25}});
    Matrix p = a * b;
    EXPECT_EQ(p.Rows(), 2);
    EXPECT_EQ(p.Cols(), 3);
    for (int32_t i = 0; i < 6; ++i) EXPECT_EQ(p[i], a[i] * b[i]);
    EXPECT_EQ(p.Values(1, 2), 6 * 0.25);
    Matrix t({{1, 2}, {3, 4}, {5, 6}});  // same length, other shape
    EXPECT_EQ(TextOf([&] { Matrix q = a * t; }), "Matrix: Left.Rows <> Right.Rows or Left.Cols <> Right.Cols");
    EXPECT_EQ(TextOf([&] { a *= t; }), "Matrix: Left.Rows <> Right.Rows or Left.Cols <> Right.Cols");
    // With a vector of the same length, either order, elementwise too.
    Vector v = Make({1, 1, 2, 2, 3, 3});
    Matrix mv = a * v;
    Vector vm = v * a;
    EXPECT_EQ(mv.Rows(), 2);
    for (int32_t i = 0; i < 6; ++i) {
        EXPECT_EQ(mv[i], a[i] * v[i]);
        EXPECT_EQ(vm[i], v[i] * a[i]);
    }
    EXPECT_EQ(TextOf([] { Matrix bad({{1, 2}, {3}}); }), "Matrix: rows of unequal length");
    T2DDoubleArray rows{TDoubleArray{1, 2}, TDoubleArray{3, 4}};
    Matrix fromRows = rows;  // implicit from rows
    EXPECT_TRUE(fromRows == Matrix({{1, 2}, {3, 4}}));
    Matrix oneRow = TDoubleArray{5, 6, 7};  // implicit: one row
    EXPECT_EQ(oneRow.Rows(), 1);
    EXPECT_EQ(oneRow.Cols(), 3);
    Matrix s = (a + b) * 2.0 - a / b;
    for (int32_t i = 0; i < 6; ++i) EXPECT_EQ(s[i], (a[i] + b[i]) * 2.0 - a[i] / b[i]);
}

TEST(RecordOperators, ComparisonsHoldForAllElements) {
    const Vector v = Make({1, 2, 3});
    const Vector w = Make({1, 2, 4});
    const Vector empty = Make({});
    const Vector withNan = Make({1, NAN_, 3});
    struct Case {
        const char* name;
        bool got, want;
    };
    const Case cases[] = {
        {"v < 4", v < 4.0, true},          {"v < 3", v < 3.0, false},       {"v <= 3", v <= 3.0, true},
        {"v > 0", v > 0.0, true},          {"v > 1", v > 1.0, false},       {"v >= 1", v >= 1.0, true},
        {"0 < v", 0.0 < v, true},          {"2 < v", 2.0 < v, false},       {"3 >= v", 3.0 >= v, true},
        {"v <= w", v <= w, true},          {"v < w", v < w, false},         {"w >= v", w >= v, true},
        {"v == v copy", v == Make({1, 2, 3}), true},                          {"v == w", v == w, false},
        {"v != w", v != w, true},          {"v == 2", v == 2.0, false},     {"ones == 1", Make({1, 1}) == 1.0, true},
        {"1 == ones", 1.0 == Make({1, 1}), true},                             {"v == longer", v == Make({1, 2, 3, 4}), false},
        {"v == TVec", v == w.Data(), false},                                  {"TVec == v", v.Data() == Vector(v), true},
        {"empty < 0", empty < 0.0, true},  {"empty > 0", empty > 0.0, true}, {"empty == 5", empty == 5.0, true},
        {"NaN counts in order", withNan < 4.0, true},                         {"NaN equals NaN, as Equal", withNan == withNan, true},
        {"complex order", Make({1, 2}) < TCplx(0, 3), true},                  {"complex order 2", TCplx(0, 1) < Make({1, 2}), false},
    };
    for (const Case& k : cases) EXPECT_EQ(k.got, k.want) << k.name;
    EXPECT_THROW((void)(v < Make({1, 2})), ERovaneInvalidArgument);

    Matrix a({{1, 2}, {3, 4}});
    EXPECT_TRUE(a < 5.0);
    EXPECT_TRUE(a == Matrix({{1, 2}, {3, 4}}));
    EXPECT_FALSE(a == Matrix({{1, 2, 3, 4}}));  // shapes differ
    EXPECT_TRUE(a == Make({1, 2, 3, 4}));
    EXPECT_TRUE(Make({0, 0, 0, 0}) < a);
}

TEST(RecordConversions, ArraysShareTheBlockOrRaiseTheirTexts) {
    Vector d = Make({1, 2, 3});
    TDoubleArray arr(d);
    ASSERT_EQ(arr.Length(), 3);
    arr[1] = 20;  // the same memory
    EXPECT_EQ(d[1], 20.0);
    arr = TDoubleArray();

    Vector s = Make({1.5, 2.5}, false);
    struct Case {
        std::function<void()> run;
        const char* text;
    };
    Vector z;
    z.Size(2, true, true);
    const Case cases[] = {
        {[&] { (void)TDoubleArray(s); }, "Vector to TDoubleArray: IsDouble = false!"},
        {[&] { (void)TSingleArray(d); }, "Vector to TSingleArray: IsDouble = true!"},
        {[&] { (void)TCplxArray(d); }, "Vector to TCplxArray: AValue.FloatPrecision <> rvDoubleComplex"},
        {[&] { (void)TSCplxArray(z); }, "Vector to TSCplxArray: AValue.FloatPrecision <> rvSingleComplex"},
        {[&] { (void)TCplxArray(Matrix({{1, 2}})); }, "AValue.FloatPrecision <> rvDoubleComplex"},
        {[&] { (void)TDoubleArray(Matrix(1, 2, false, false)); }, "not AValue.IsDouble"},
        {[&] { (void)TSCplxArray(Matrix({{1, 2}})); }, "AValue.FloatPrecision <> rvSingleComplex"},
        {[&] { (void)TSingleArray(Matrix({{1, 2}})); }, "AValue.IsDouble"},
    };
    for (const Case& k : cases) EXPECT_EQ(TextOf(k.run), k.text);
    // The failed conversion changed nothing.
    EXPECT_FALSE(s.IsDouble());
    EXPECT_EQ(s[1], 2.5);
    // A single value reads widened to 64 bits.
    EXPECT_EQ(s.Values(0), double(1.5f));
    Vector third = Make({1.0 / 3}, false);
    EXPECT_EQ(third[0], double(float(1.0 / 3)));
    TSingleArray sa(s);
    EXPECT_EQ(sa[0], 1.5f);
    TCplxArray ca(z);
    EXPECT_EQ(ca.Length(), 2);
}

TEST(RecordConversions, FromArraysContainersAndIntegerRecords) {
    TDoubleArray a{1, 2, 3};
    Vector v = a;  // implicit
    EXPECT_EQ(v.Length(), 3);
    a[0] = 9;      // a copy, not a share
    EXPECT_EQ(v[0], 1.0);
    Vector c(TCplxArray{TCplx(1, 2)});
    EXPECT_EQ(c.FloatPrecision(), rvDoubleComplex);
    Vector f(TSingleArray{0.5f, 1.5f});
    EXPECT_EQ(f.FloatPrecision(), rvSingle);
    TVec t;
    t.Copy(v.Data());
    Vector fromT(t);
    fromT[0] = 7;
    EXPECT_EQ(t[0], 1.0);
    VectorInt iv = {4, -5, 6};
    Vector fromI(iv);
    EXPECT_EQ(fromI.FloatPrecision(), rvDouble);
    EXPECT_EQ(fromI[1], -5.0);
    // A record passes wherever a container is expected.
    auto length = [](const TRovane& x) { return x.Length(); };
    EXPECT_EQ(length(v), 3);
    TVec target;
    target.Copy(v);
    EXPECT_EQ(target[2], 3.0);
}

TEST(RecordConversions, IntegerRecordsShareTheirBlockOnlyAtTheirWidth) {
    VectorInt i32 = {1, 2, 3};
    TIntegerArray arr(i32);
    arr[0] = 10;
    EXPECT_EQ(i32[0], 10);
    arr = TIntegerArray();
    VectorInt i16(TSmallIntArray{1, -2});
    VectorInt i8(TByteArray{200, 3});
    EXPECT_EQ(i16.IntPrecision(), prInt16);
    EXPECT_EQ(i8[0], 200);
    const std::string pre = "Implicit conversion is not supported when IntPrecision is not a match: aValue.IntPrecision <> ";
    EXPECT_EQ(TextOf([&] { (void)TIntegerArray(i16); }), pre + "prInt32");
    EXPECT_EQ(TextOf([&] { (void)TSmallIntArray(i8); }), pre + "prInt16");
    EXPECT_EQ(TextOf([&] { (void)TByteArray(i32); }), pre + "prInt8");
    EXPECT_EQ(TextOf([&] { (void)TIntegerArray(MatrixInt(2, 2, prInt8)); }), pre + "prInt32");
    EXPECT_EQ(i16[1], -2);

    VectorInt shared = i32, copy;
    copy.Assign(i32);
    i32.SetElement(2, 30);
    EXPECT_EQ(shared[2], 30);
    EXPECT_EQ(copy[2], 3);
    EXPECT_TRUE(i32 == shared);
    EXPECT_FALSE(i32 == copy);
    EXPECT_TRUE(i32 > 0);
    EXPECT_TRUE(0 < i32);
    EXPECT_FALSE(i32 < 30);
    EXPECT_TRUE(i32 <= 30);
    EXPECT_TRUE(VectorInt{} < 0);
}

TEST(RecordMembers, ForwardersChainOnTheRecordAndFreeFunctionsMakeNewRecords) {
    Vector x = Make({0.5, 1.0, 2.0});
    Vector y;
    // Chaining members return the record.
    Vector& same = y.Copy(x).Sqr().Add(1.0).Sqrt();
    EXPECT_EQ(&same, &y);
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(y[i], std::sqrt(x[i] * x[i] + 1.0));
    // Free functions: a new record, the argument untouched.
    Vector s = Sin(x);
    Vector p = Power(x, 2.0);
    Vector sum = Add(x, y);
    for (int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(s[i], std::sin(x[i]));
        EXPECT_NEAR(p[i], x[i] * x[i], 1e-15);
        EXPECT_EQ(sum[i], x[i] + y[i]);
    }
    EXPECT_EQ(x[0], 0.5);
    // On a temporary no one shares, in place.
    Vector t = x + 0.0;
    const TRovaneBase* obj = t.Object();
    Vector u = Exp(std::move(t));
    EXPECT_EQ(u.Object(), obj);
    Matrix m({{0.25, 0.5}});
    Matrix ms = Cos(m);
    EXPECT_EQ(ms.Rows(), 1);
    EXPECT_EQ(ms[1], std::cos(0.5));
    // Properties and sub-ranges.
    x.Select(1, 2);
    EXPECT_EQ(x.Length(), 2);
    EXPECT_EQ(x.First(), 1.0);
    x.SelectAll();
    EXPECT_EQ(x.Length(), 3);
    x.SetCaption("x");
    Vector x2 = x;
    EXPECT_EQ(x2.Caption(), "x");
}

TEST(RecordMembers, SelectGathersIntoANewRecordAndChecksItsRange) {
    Vector v;
    v.SetCplx({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});  // five complex values k + (k+1)i, k even
    Vector every2 = Select(v, 1, 2, 2);
    ASSERT_EQ(every2.Length(), 2);
    EXPECT_EQ(every2.CValues(0), TCplx(2, 3));
    EXPECT_EQ(every2.CValues(1), TCplx(6, 7));
    Vector f = Make({1, 2, 3, 4, 5}, false);
    Vector mid = Select(f, 1, 3);
    EXPECT_EQ(mid.FloatPrecision(), rvSingle);
    EXPECT_EQ(mid.Values(2), 4.0);
    EXPECT_EQ(Select(f, 0, 4, 2).Values(1), 5.0);
    EXPECT_EQ(Select(f, 5, 0).Length(), 0);
    EXPECT_EQ(Select(f, 1, 3, 2).Values(1), 5.0);
    EXPECT_EQ(TextOf([&] { Select(f, 2, 3, 2); }), "Select: Index = 2, Step = 3, Len = 2, Src.Length = 5");
    EXPECT_EQ(TextOf([&] { Select(f, 2000000000, 2000000000, 3); }),
              "Select: Index = 2000000000, Step = 2000000000, Len = 3, Src.Length = 5");
    EXPECT_THROW(Select(f, -1, 1), ERovaneRangeError);
}

// The record-only switches of the self form of SetSubRange: EnableSelect and
// DisableSubrange block it, DisableSelect and EnableSubrange open it again.
TEST(RecordMembers, SelectSwitchesBlockAndOpenTheSelfForm) {
    Vector v;
    v.SetIt({1, 2, 3, 4});
    Matrix m(2, 2);
    VectorInt vi(4);
    MatrixInt mi(2, 2);
    for (auto block : {0, 1}) {
        if (block) {
            v.EnableSelect();
            m.EnableSelect();
            vi.EnableSelect();
            mi.EnableSelect();
        } else {
            v.DisableSubrange();
            m.DisableSubrange();
            vi.DisableSubrange();
            mi.DisableSubrange();
        }
        EXPECT_EQ(TextOf([&] { v.Select(1, 2); }), "Subrange is blocked!");
        EXPECT_EQ(TextOf([&] { m.Data().SetSubRange(0, 2); }), "Subrange is blocked!");
        EXPECT_EQ(TextOf([&] { vi.Select(0, 2); }), "Subrange is blocked!");
        EXPECT_EQ(TextOf([&] { mi.Data().SetSubRange(0, 2); }), "Subrange is blocked!");
        if (block) {
            v.DisableSelect();
            m.DisableSelect();
            vi.DisableSelect();
            mi.DisableSelect();
        } else {
            v.EnableSubrange();
            m.EnableSubrange();
            vi.EnableSubrange();
            mi.EnableSubrange();
        }
        v.Select(1, 2);
        EXPECT_EQ(v.Length(), 2);
        EXPECT_EQ(v.Values(0), 2.0);
        v.SelectAll();
        EXPECT_EQ(v.Length(), 4);
        vi.Select(0, 2);
        EXPECT_EQ(vi.Length(), 2);
        vi.SelectAll();
    }
}

std::vector<double> Elements(const Vector& r) {
    std::vector<double> out;
    for (int32_t i = 0; i < r.Length(); ++i) out.push_back(r.Values(i));
    return out;
}

// Streams and text forms reach the object through the record, and the free
// functions that make a new record from a matrix or from text lines.
TEST(RecordMembers, StreamsTextAndTheFreeFoldsMakeNewRecords) {
    Vector v;
    v.SetIt({1.5, -2, 3});
    std::stringstream ss;
    v.SaveToStream(ss);
    Vector w;
    w.LoadFromStream(ss);
    EXPECT_TRUE(w == v);
    TStringList lines;
    v.ValuesToStrings(lines);
    Vector back = StringsToValues(lines);
    EXPECT_TRUE(back == v);
    Matrix m(2, 3);
    m.SetIt({1, 2, 3, 4, 5, 6});
    const Vector cols = SumCols(m), rows = SumRows(m), meanCols = MeanCols(m), meanRows = MeanRows(m);
    EXPECT_EQ(Elements(cols), (std::vector<double>{5, 7, 9}));
    EXPECT_EQ(Elements(rows), (std::vector<double>{6, 15}));
    EXPECT_EQ(Elements(meanCols), (std::vector<double>{2.5, 3.5, 4.5}));
    EXPECT_EQ(Elements(meanRows), (std::vector<double>{2, 5}));
    TStringList text;
    m.ValuesToStrings(text, ";");
    const Matrix again = StringsToValues(text, ";");
    EXPECT_EQ(again.Rows(), 2);
    EXPECT_EQ(again.Cols(), 3);
    EXPECT_TRUE(again == m);
}

// An integer matrix record has the shape and width it was made with, also
// after Size.
TEST(RecordMembers, IntegerMatrixRecordKeepsShapeAndWidth) {
    MatrixInt m(2, 3, prInt8);
    EXPECT_EQ(m.Rows(), 2);
    EXPECT_EQ(m.Cols(), 3);
    EXPECT_EQ(m.IntPrecision(), prInt8);
    m.Size(4, 1, prInt16);
    EXPECT_EQ(m.Rows(), 4);
    EXPECT_EQ(m.Cols(), 1);
    EXPECT_EQ(m.Length(), 4);
    EXPECT_EQ(m.IntPrecision(), prInt16);
}

// The functional forms that give a sorted, rotated or shifted copy leave
// their source as it was.
TEST(RecordMembers, FunctionalFormsWorkOnACopy) {
    Vector v = {3, 1, 2};
    const Vector up = SortAscend(v), down = SortDescend(v);
    EXPECT_EQ(Elements(up), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Elements(down), (std::vector<double>{3, 2, 1}));
    EXPECT_EQ(Elements(v), (std::vector<double>{3, 1, 2}));
    Matrix m(2, 2);
    m.SetIt({4, 1, 3, 2});
    const Matrix sorted = SortAscend(m);
    EXPECT_EQ(sorted.Rows(), 2);
    EXPECT_EQ(sorted.Values(0, 1), 2.0);
    VectorInt i = {1, 2, 3, -4};
    const VectorInt rot = Rotate(i, 1), sh = Shift(i, 1), asc = SortAscend(i), mag = Mag(i), sel = Select(i, 1, 2);
    EXPECT_EQ(rot[0], -4);
    EXPECT_EQ(sh[0], 1);
    EXPECT_EQ(sh[1], 1);
    EXPECT_EQ(asc[0], -4);
    EXPECT_EQ(mag[3], 4);
    EXPECT_EQ(sel.Length(), 2);
    EXPECT_EQ(sel[0], 2);
    EXPECT_EQ(i[3], -4);
    EXPECT_DOUBLE_EQ(Mean(i), 0.5);
    EXPECT_EQ(TextOf([&] { Select(i, 3, 2); }), "Select: Index = 3, Step = 1, Len = 2, Src.Length = 4");
}
