// Index, search and selection on the float containers: relation texts and
// their NaN and infinity rules, gather and scatter in every addressing mode
// under every kernel table, the sort tie order, reordering, sampling and
// texts.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace rovane;

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

template <class E, class F>
void ExpectMessage(F&& f, const std::string& text) {
    try {
        f();
        ADD_FAILURE() << "no exception, expected: " << text;
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()), text);
    }
}

std::vector<int32_t> Ints(const TRovaneInt& v) {
    std::vector<int32_t> out;
    for (int32_t i = 0; i < v.Length(); ++i) out.push_back(v[i]);
    return out;
}
std::vector<double> Reals(const TRovane& v) {
    std::vector<double> out;
    const int32_t n = v.Complex() ? 2 * v.Length() : v.Length();
    for (int32_t i = 0; i < n; ++i) out.push_back(v[i]);
    return out;
}
void ExpectSame(const std::vector<double>& got, const std::vector<double>& want) {
    ASSERT_EQ(got.size(), want.size());
    for (size_t i = 0; i < got.size(); ++i) {
        if (std::isnan(want[i]))
            EXPECT_TRUE(std::isnan(got[i])) << i;
        else
            EXPECT_EQ(got[i], want[i]) << i;
    }
}

// Complex data from (re, im) pairs.
void SetC(TVec& v, std::vector<double> pairs) { v.SetIt(true, pairs); }

const TPrimitiveIsa kIsas[] = {piReference, piBaseline, piAvx2, piAvx512};

// The relation rule written out for one pair, as the interface states it.
bool RealRule(int code, double a, double b) {
    const bool unordered = std::isnan(a) || std::isnan(b);
    switch (code) {
        case 0: return unordered || a < b;
        case 1: return unordered || a <= b;
        case 2: return unordered || a > b;
        case 3: return unordered || a >= b;
        default: {
            const bool eq = std::isnan(b) ? std::isnan(a) : std::isinf(b) ? std::isinf(a) : a == b;
            return code == 4 ? eq : !eq;
        }
    }
}

}  // namespace

TEST(Relations, TextsAndTheirCodes) {
    const std::vector<std::pair<const char*, int>> texts = {{"<", 0}, {"<=", 1}, {"=<", 1}, {">", 2}, {">=", 3},
                                                            {"=>", 3}, {"=", 4}, {"==", 4}, {"<>", 5}};
    for (auto [t, c] : texts) EXPECT_EQ(RelationCode(t), c) << t;
    TVec a;
    a.SetIt({1, 2});
    TVecInt m;
    for (const char* bad : {"!=", "", "<<", " <"})
        ExpectMessage<ERovaneInvalidArgument>([&] { FindMask(m, a, bad, 1.0); },
                                              std::string("Parameter: ") + bad + " not recognized!");
}

// Every code against scalars and against a vector, real data of both
// precisions, under each kernel table; long enough for the vector bodies.
TEST(Relations, NaNAndInfinityRulesOnEveryTable) {
    const std::vector<double> pattern = {1, kNaN, -kInf, kInf, 3, 2, -0.0, 0.0, 2.5};
    std::vector<double> data;
    for (int r = 0; r < 9; ++r) data.insert(data.end(), pattern.begin(), pattern.end());
    std::vector<double> other(data.rbegin(), data.rend());
    for (TPrimitiveIsa isa : kIsas) {
        if (!SetPrimitiveIsa(isa)) continue;
        for (bool isDouble : {true, false}) {
            TVec a, b;
            a.Size(0, false, isDouble);
            a.SetIt(data);
            b.Size(0, false, isDouble);
            b.SetIt(other);
            TVecInt m, ix;
            for (int code = 0; code < 6; ++code) {
                const char* text[] = {"<", "<=", ">", ">=", "=", "<>"};
                for (double s : {2.0, kNaN, kInf, -kInf, 0.0}) {
                    FindMask(m, a, text[code], s);
                    FindIndexes(ix, a, text[code], s);
                    std::vector<int32_t> want;
                    for (size_t i = 0; i < data.size(); ++i)
                        if (RealRule(code, data[i], s)) want.push_back(int32_t(i));
                    ASSERT_EQ(Ints(ix), want) << PrimitiveIsaName(isa) << " " << text[code] << " " << s;
                    for (size_t i = 0; i < data.size(); ++i) ASSERT_EQ(m[int32_t(i)], RealRule(code, data[i], s));
                }
                FindMask(m, a, text[code], b);
                EXPECT_EQ(FindIndexesAndLength(ix, a, text[code], b), [&] {
                    int c = 0;
                    for (size_t i = 0; i < data.size(); ++i) c += RealRule(code, data[i], other[i]);
                    return c;
                }());
                EXPECT_EQ(ix.Length(), a.Length());  // stays at a.Length
                for (size_t i = 0; i < data.size(); ++i) ASSERT_EQ(m[int32_t(i)], RealRule(code, data[i], other[i]));
            }
        }
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}

TEST(Relations, ComplexDataUseTheComplexTests) {
    TVec a;
    SetC(a, {3, 4, 5, 0, kNaN, 0, 1, 1});
    TVecInt m;
    // (3,4) and (5,0) have equal magnitude; (3,4) has the larger phase.
    FindMask(m, a, ">", TCplx(5, 0));
    EXPECT_EQ(Ints(m), (std::vector<int32_t>{1, 0, 0, 0}));
    FindMask(m, a, "<", TCplx(5, 0));
    EXPECT_EQ(Ints(m), (std::vector<int32_t>{0, 0, 0, 1}));  // a NaN part makes every complex test false
    FindMask(m, a, "=", 5.0);
    EXPECT_EQ(Ints(m), (std::vector<int32_t>{0, 1, 0, 0}));
    TVec r;
    r.SetIt({1, 7});
    FindMask(m, r, "<", TCplx(0, 2));  // real data against a complex value: (1,0) < (0,2)
    EXPECT_EQ(Ints(m), (std::vector<int32_t>{1, 0}));
    ExpectMessage<ERovaneInvalidArgument>([&] { FindMask(m, a, "<", r); }, "ALeft.Length <> ARight.Length");
    TVec c2;
    c2.SetIt({1, 2, 3, 4});
    ExpectMessage<ERovaneInvalidArgument>([&] { FindMask(m, a, "<", c2); }, "a.Complex <> b.Complex");
}

TEST(Relations, SubRangesAndTheIntegerHelper) {
    TVec big;
    big.SetIt({9, 1, 5, 2, 8});
    TVec view;
    view.SetSubRange(big, 1, 3);  // (1, 5, 2)
    TVecInt ix;
    ix.FindIndexes(view, ">=", 2.0);
    EXPECT_EQ(Ints(ix), (std::vector<int32_t>{1, 2}));  // positions in the view
    TMtxInt notAList;
    ExpectMessage<ERovaneInvalidArgument>([&] { notAList.FindIndexes(view, ">", 1.0); },
                                          "Abstract FindIndexes method supported only for TVecInt");
    ExpectMessage<ERovaneInvalidArgument>([&] { notAList.FindIndexesAndLength(view, ">", 1.0); },
                                          "Abstract FindIndexesAndLength method supported only for TVecInt");
    TVec sel, rest;
    TVecInt mask;
    EXPECT_EQ(mask.FindAndSplit(big, ">", 4.0, sel, rest), 3);
    ExpectSame(Reals(sel), {9, 5, 8});
    ExpectSame(Reals(rest), {1, 2});
    TVec back;
    back.GatherSplit(sel, rest, mask);
    ExpectSame(Reals(back), Reals(big));
    TVec found;
    TVecInt where;
    found.FindAndGather(big, "<", 5.0, &where);
    ExpectSame(Reals(found), {1, 2});
    EXPECT_EQ(Ints(where), (std::vector<int32_t>{1, 3}));
    ExpectMessage<ERovaneInvalidArgument>([&] { big.FindAndGather(big, "<", 5.0); }, "a = Self");
}

TEST(Relations, ValueTestsOfWholeContainers) {
    TVec a, b, e;
    a.SetIt({1, 2, 3});
    b.SetIt({2, 3, 4});
    EXPECT_TRUE(LessThan(a, b));
    EXPECT_FALSE(GreaterThanOrEqual(a, 2.0));
    EXPECT_TRUE(GreaterThan(4.0, a));
    EXPECT_TRUE(LessThan(e, 0.0));  // empty: true
    TVec c;
    c.SetIt({1, 2});
    ExpectMessage<ERovaneInvalidArgument>([&] { (void)LessThan(a, c); }, "ALeft.Length <> ARight.Length");
    EXPECT_TRUE(Prime(1));
    EXPECT_TRUE(Prime(2));
    EXPECT_FALSE(Prime(4));
    TVec p;
    p.PrimeNumbers(5);
    ExpectSame(Reals(p), {2, 3, 5, 7, 11});
}

TEST(Find, ExactNaNAndInfinity) {
    TVec v;
    v.SetIt({1.0, 0.1 + 0.2, kNaN, -kInf});
    EXPECT_EQ(v.Find(0.3), -1);  // no tolerance
    EXPECT_EQ(v.Find(0.1 + 0.2), 1);
    EXPECT_EQ(v.Find(kNaN), 2);
    EXPECT_EQ(v.Find(kInf), 3);
    ExpectMessage<ERovaneInvalidArgument>([&] { (void)v.Find(TCplx(1, 0)); }, "not Complex");
    TVec c;
    SetC(c, {1, 2, 3, kInf});
    EXPECT_EQ(c.Find(TCplx(kInf, 0)), 1);  // an infinity in either part
    EXPECT_EQ(Find(c, TCplx(1, 2)), 0);
}

// Gather and scatter by mask, index list and stride in all four precisions,
// under every table, lengths around the vector widths.
TEST(GatherScatter, AllModesMatchAPlainLoop) {
    std::mt19937 g(7);
    for (TPrimitiveIsa isa : kIsas) {
        if (!SetPrimitiveIsa(isa)) continue;
        for (TMtxFloatPrecision p : {rvDouble, rvSingle, rvDoubleComplex, rvSingleComplex}) {
            for (int32_t n : {0, 1, 7, 16, 33, 70}) {
                TVec x;
                x.Size(n, p);
                const int32_t reals = x.Complex() ? 2 * n : n;
                for (int32_t i = 0; i < reals; ++i) x[i] = i + 0.5;
                TVecInt mask;
                mask.Size(n);
                for (int32_t i = 0; i < n; ++i) mask[i] = int32_t(g() % 3) - 1;  // -1, 0, 1: above zero selects
                std::vector<int32_t> sel;
                for (int32_t i = 0; i < n; ++i)
                    if (mask[i] > 0) sel.push_back(i);
                const int w = x.Complex() ? 2 : 1;
                TVec got;
                got.GatherByMask(x, &mask);
                ASSERT_EQ(got.Length(), int32_t(sel.size()));
                for (size_t k = 0; k < sel.size(); ++k)
                    for (int c = 0; c < w; ++c) ASSERT_EQ(got[int32_t(k) * w + c], x[sel[k] * w + c]);
                // Back by mask (smaller source) into zeros: the selected places.
                TVec y;
                y.Size(n, p);
                y.SetZero();
                y.ScatterByMask(got, mask, true);
                for (int32_t i = 0; i < n; ++i)
                    for (int c = 0; c < w; ++c) ASSERT_EQ(y[i * w + c], mask[i] > 0 ? x[i * w + c] : 0.0);
                // Stride 3 from offset 1, and by index list.
                TVec s;
                s.GatherByIncr(x, 3, 1);
                ASSERT_EQ(s.Length(), n > 1 ? (n - 1 + 2) / 3 : 0);
                for (int32_t k = 0; k < s.Length(); ++k) ASSERT_EQ(s[k * w], x[(1 + 3 * k) * w]);
                TVecInt ix;
                ix.SetIt(std::vector<int32_t>(sel.rbegin(), sel.rend()));
                s.GatherByIndex(x, ix);
                for (int32_t k = 0; k < ix.Length(); ++k) ASSERT_EQ(s[k * w], x[ix[k] * w]);
            }
        }
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}

TEST(GatherScatter, StridesCountsAndTexts) {
    TVec x, d;
    x.SetIt({0, 1, 2, 3, 4});
    d.GatherByIncr(x, 2, 5);
    EXPECT_EQ(d.Length(), 0);  // Offset >= Length
    d.Gather(x, nullptr, indIncrement, 2, 1);
    ExpectSame(Reals(d), {1, 3});
    ExpectMessage<ERovaneInvalidArgument>([&] { x.GatherByIncr(x); }, "TVec.GatherByIncr: X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.GatherByIncr(x, 0); }, "TVec.GatherByIncr: Increment <= 0");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.Gather(x, nullptr, indVector); }, "TVec.Gather: Indexes = nil");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.Gather(x, nullptr, TIndexType(7)); },
                                          "TVec.Gather: Unexpected IndexType value: 7");
    ExpectMessage<ERovaneInvalidArgument>([&] { d.GatherByMask(x, nullptr); }, "TVec.GatherMyMask: Mask = nil");
    TVecInt m;
    m.SetIt({1, 0, 1, 0, 1});
    d.GatherByMask(x, &m, 3);
    ExpectSame(Reals(d), {0, 2, 4});
    // A count that does not match the mask is refused, and nothing is written
    // beyond Self.
    ExpectMessage<ERovaneInvalidArgument>([&] { d.GatherByMask(x, &m, 2); },
                                          "TVec.GatherMyMask: MaskNonZeroCount = 2, the mask selects 3");
    TVecInt m16;
    m16.Size(5, prInt16);
    ExpectMessage<ERovaneInvalidArgument>([&] { d.GatherByMask(x, &m16); },
                                          "TVec.GatherMyMask: Mask.IntPrecision <> prInt32");
    TVec y;
    y.Size(6).SetZero();
    TVec src;
    src.SetIt({7, 8, 9});
    y.ScatterByIncr(src, 2, 1);
    ExpectSame(Reals(y), {0, 7, 0, 8, 0, 9});
    ExpectMessage<ERovaneInvalidArgument>([&] { y.ScatterByIncr(src, 3, 1); },
                                          "(n > 0) and (Length <= Offset + (n-1)*Increment)");
    TVecInt ix;
    ix.SetIt({5, 0, 2});
    y.ScatterByIndexes(src, ix);
    ExpectSame(Reals(y), {8, 7, 9, 8, 0, 7});
    ix.SetIt({6, 0, 2});
    ExpectMessage<ERovaneInvalidArgument>([&] { y.ScatterByIndexes(src, ix); },
                                          "TRovane.ScatterByIndexes: 0 <= Indexes[0] <= (Length-1)");
    ix.SetIt({0, 1, 6});
    ExpectMessage<ERovaneInvalidArgument>([&] { y.ScatterByIndexes(src, ix); },
                                          "TRovane.ScatterByIndexes:0 <= Indexes[Indexes.Length-1] <= (Length-1)");
    ix.SetIt({0, 9, 1});  // unordered: the middle entry is checked as well
    ExpectMessage<ERovaneInvalidArgument>([&] { y.ScatterByIndexes(src, ix); },
                                          "TRovane.ScatterByIndexes: 0 <= Indexes[1] <= (Length-1)");
    TVecInt mask;
    mask.SetIt({1, 0, 1});
    ExpectMessage<ERovaneInvalidArgument>([&] { y.ScatterByMask(src, mask); },
                                          "Mask.ScatterByMask: Self.Length <> Mask.Length");
    TVec z;
    z.SetIt({0, 0, 0});
    z.ScatterByMask(src, mask);  // position for position
    ExpectSame(Reals(z), {7, 0, 9});
    ExpectMessage<ERovaneInvalidArgument>([&] { z.Scatter(src, nullptr, indMask); },
                                          "TRovane.Scatter: Indexes is not assigned");
}

// The index forms and complex sorts keep the library quick sort's order of
// equal keys: the same permutation as the keyed quick sort of the scalar
// module.
TEST(Sort, TieOrderIsTheLibraryQuickSorts) {
    std::mt19937 g(3);
    const int32_t n = 3000;
    std::vector<double> data(n);
    for (auto& x : data) x = double(g() % 20);  // many ties
    for (bool desc : {false, true}) {
        TVec v;
        v.SetIt(data);
        TVecInt ix;
        if (desc)
            v.SortDescend(&ix);
        else
            v.SortAscend(&ix);
        std::vector<double> keys = data;
        std::vector<int32_t> perm(n);
        for (int32_t i = 0; i < n; ++i) perm[i] = i;
        if (desc)
            CQuickSortDesc(perm.data(), keys.data(), 0, n - 1);
        else
            CQuickSortAsc(perm.data(), keys.data(), 0, n - 1);
        ASSERT_EQ(Ints(ix), perm);
        ExpectSame(Reals(v), keys);
    }
    // Complex data by squared magnitude: (3,4), (5,0), (0,-5) tie.
    std::vector<TCplx> z;
    for (int32_t i = 0; i < 500; ++i) {
        const int k = int(g() % 4);
        z.push_back(k == 0 ? TCplx(3, 4) : k == 1 ? TCplx(5, 0) : k == 2 ? TCplx(0, -5) : TCplx(1, double(i % 3)));
    }
    TVec c;
    c.Size(int32_t(z.size()), true);
    for (size_t i = 0; i < z.size(); ++i) c.CValues[i] = z[i];
    TVecInt cix;
    c.SortAscend(&cix);
    std::vector<double> ck;
    for (auto& q : z) ck.push_back(q.Re * q.Re + q.Im * q.Im);
    std::vector<int32_t> perm(z.size());
    for (size_t i = 0; i < z.size(); ++i) perm[i] = int32_t(i);
    std::vector<double> ck2 = ck;
    CQuickSortAsc(perm.data(), ck2.data(), 0, int32_t(z.size()) - 1);
    ASSERT_EQ(Ints(cix), perm);
    CQuickSortAsc(z.data(), ck.data(), 0, int32_t(z.size()) - 1);
    for (size_t i = 0; i < z.size(); ++i) {
        ASSERT_EQ(c.CValues[i].Re, z[i].Re) << i;
        ASSERT_EQ(c.CValues[i].Im, z[i].Im) << i;
    }
}

TEST(Sort, WithoutIndexLongShortNaNAndRanges) {
    std::mt19937_64 g(9);
    std::uniform_real_distribution<double> u(-1e6, 1e6);
    for (int32_t n : {5, 511, 4000}) {
        for (bool isDouble : {true, false}) {
            std::vector<double> data(n);
            for (auto& x : data) x = isDouble ? u(g) : double(float(u(g)));
            data[0] = -0.0;
            data[n - 1] = kInf;
            TVec v;
            v.Size(0, false, isDouble);
            v.SetIt(data);
            v.SortDescend();
            std::vector<double> want = data;
            std::sort(want.begin(), want.end(), [](double a, double b) { return a > b; });
            ExpectSame(Reals(v), want);
            v.SortAscend();
            std::sort(want.begin(), want.end());
            ExpectSame(Reals(v), want);
        }
    }
    // With a NaN the quick sort of the primitive runs: the same order as the
    // scalar module's quick sort.
    std::vector<double> data(2000);
    for (auto& x : data) x = u(g);
    data[700] = kNaN;
    TVec v;
    v.SetIt(data);
    v.SortAscend();
    QuickSortAsc(data.data(), 0, int32_t(data.size()) - 1);
    ExpectSame(Reals(v), data);
    // A range: outside untouched, the index relative to the range.
    TVec r;
    r.SetIt({9, 3, 2, 1, 0});
    TVecInt ix;
    r.SortAscend(1, 3, &ix);
    ExpectSame(Reals(r), {9, 1, 2, 3, 0});
    EXPECT_EQ(Ints(ix), (std::vector<int32_t>{2, 1, 0}));
    ExpectMessage<ERovaneInvalidArgument>([&] { r.SortAscend(nullptr); }, "IndexVec = nil");
}

TEST(Reorder, RotateShiftReverseOnVectorsAndMatrices) {
    struct Row {
        int kind;  // 0 rotate, 1 shift
        int32_t offset;
        std::vector<double> want;
    };
    const std::vector<Row> rows = {{0, -1, {2, 3, 1}}, {0, 1, {3, 1, 2}}, {0, 3, {1, 2, 3}}, {0, -4, {2, 3, 1}},
                                   {1, 1, {1, 1, 2}},  {1, -1, {2, 3, 3}}, {1, 3, {1, 2, 3}}, {1, -3, {1, 2, 3}}};
    for (const auto& r : rows) {
        TVec v;
        v.SetIt({1, 2, 3});
        if (r.kind == 0)
            v.Rotate(r.offset);
        else
            v.Shift(r.offset);
        ExpectSame(Reals(v), r.want);
        TVec w, src;
        SetC(src, {1, 0, 2, 0, 3, 0});
        if (r.kind == 0)
            w.Rotate(src, r.offset);
        else
            w.Shift(src, r.offset);
        for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(w[2 * i], r.want[i]);
    }
    TVec v;
    v.SetIt({1, 2, 3, 4});
    v.Reverse(1, 3);
    ExpectSame(Reals(v), {1, 4, 3, 2});
    ExpectMessage<ERovaneInvalidArgument>([&] { v.Reverse(v); }, "Self = Vec");
    ExpectMessage<ERovaneInvalidArgument>([&] { v.Rotate(v, 1); }, "Rotate: Self = Src");
    ExpectMessage<ERovaneInvalidArgument>([&] { v.Shift(v, 1); }, "Rotate: Self = Src");
    TMtx m;
    m.Size(2, 2);
    m.SetIt({1, 2, 3, 4});
    TMtx& r = m.Reverse().Rotate(1);  // chaining stays on the matrix
    EXPECT_EQ(&r, &m);
    EXPECT_EQ(m[0], 1.0);
    EXPECT_EQ(m[1], 4.0);
}

TEST(Sampling, UpAndDown) {
    TVec s, d;
    s.SetIt({1, 2});
    d.UpSample(s, 3, 1);
    ExpectSame(Reals(d), {0, 1, 0, 0, 2, 0});
    TVec e;
    e.DownSample(d, 3, 1);
    ExpectSame(Reals(e), {1, 2});
    TVec f;
    f.SetIt({0, 1, 2, 3, 4, 5, 6});
    e.DownSample(f, 3, 2);
    ExpectSame(Reals(e), {2, 5});
    ExpectMessage<ERovaneInvalidArgument>([&] { e.UpSample(s, 0); }, "Factor < 1");
    ExpectMessage<ERovaneInvalidArgument>([&] { e.UpSample(s, 2, 2); }, "Phase >= Factor");
    ExpectMessage<ERovaneInvalidArgument>([&] { e.UpSample(e, 2); }, "Self = Src");
    TVec g;
    g.Size(4).SetVal(9);
    ExpectMessage<ERovaneInvalidArgument>([&] { g.DownSample(f, 2, 0, 0, 3); }, "(Len mod Factor) <> 0");
    g.DownSample(f, 2, 1, 1, 4);  // f[1], f[3] into g[1..2]
    ExpectSame(Reals(g), {9, 1, 3, 9});
}

TEST(Search, BinarySearchAndItsMissRule) {
    TVec v;
    v.SetIt({1, 3, 5, 7, 9});
    int32_t at = -1;
    EXPECT_TRUE(v.BinarySearch(7.0, at));
    EXPECT_EQ(at, 3);
    EXPECT_FALSE(v.BinarySearch(6.0, at));
    EXPECT_EQ(at, 3);  // the last probe: mid 2 (5 < 6), then mid 3 (7 > 6)
    EXPECT_FALSE(v.BinarySearch(4.0, at, 2, 0));
    EXPECT_EQ(at, 2);  // empty range
    TVec c;
    SetC(c, {1, 0, 0, 2, 3, 0});
    EXPECT_TRUE(c.BinarySearch(TCplx(0, 2), at));
    EXPECT_EQ(at, 1);
    EXPECT_TRUE(c.BinarySearch(3.0, at));
    EXPECT_EQ(at, 2);
}

TEST(Strip, NaNAndInfinityLeaveASubRange) {
    TVec src, d;
    src.SetIt({1, kNaN, 3});
    EXPECT_EQ(d.StripNanAndInf(src), 2);
    ExpectSame(Reals(d), {1, 3});
    EXPECT_TRUE(d.IsSubRange());
    d.SetFullRange();
    EXPECT_EQ(d.Length(), 3);
    TVec c;
    SetC(c, {1, 2, 3, kInf, 5, 6});
    EXPECT_EQ(d.StripNanAndInf(c), 2);
    ExpectSame(Reals(d), {1, 2, 5, 6});
    ExpectMessage<ERovaneInvalidArgument>([&] { d.StripNanAndInf(d); }, "TRovane.Trunc: Self = Src");
}

TEST(Fills, RampConcatSplitAndEnlist) {
    TVec v;
    v.Size(3, true);
    v.Ramp(TCplx(0, 0), TCplx(-1.5, 0));
    ExpectSame(Reals(v), {0, 0, -1.5, 0, -3, 0});
    EXPECT_FALSE(std::signbit(v[5]));  // a plain zero, no -0
    TVec r;
    r.Size(3);
    ExpectMessage<ERovaneInvalidArgument>([&] { r.Ramp(TCplx(0, 0), TCplx(1, 1)); }, "TVec.Ramp: Self is not Complex");
    TVec a, b, c;
    a.SetIt({1, 2});
    b.SetIt({3});
    c.Concat({&a, &b, &a});
    ExpectSame(Reals(c), {1, 2, 3, 1, 2});
    TVec p1, p2;
    c.Split(p1, 2, p2);
    ExpectSame(Reals(p2), {3, 1, 2});
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Split(p1, 6, p2); }, "Offset > fLength");
    double* pd = nullptr;
    Enlist(c, pd);
    EXPECT_EQ(pd, c.Values);
    pd[0] = 42;  // the container's storage itself
    EXPECT_EQ(c[0], 42.0);
    DismissIt(pd);
    EXPECT_EQ(pd, nullptr);
    TVec empty;
    EnlistIt(empty, pd);
    EXPECT_EQ(pd, nullptr);
    TVec single;
    single.Size(2, false, false);
    ExpectMessage<ERovaneInvalidArgument>([&] { Enlist(single, pd); }, "Enlist: a.IsDouble = false");
    float* pf = nullptr;
    Enlist(single, pf, c, pd);
    EXPECT_EQ(pf, single.SValues);
    EXPECT_EQ(pd, c.Values);
}
