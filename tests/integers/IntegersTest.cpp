// Integer containers: widths on one storage block, the saturating scaled
// arithmetic against an independent model, bit sets and bit matrices, texts.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

using namespace rovane;

namespace {

template <class E, class F>
void ExpectMessage(F&& f, const std::string& text) {
    try {
        f();
        ADD_FAILURE() << "no exception, expected: " << text;
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()), text);
    }
}

std::vector<int32_t> Values(const TRovaneInt& v) {
    std::vector<int32_t> out;
    for (int32_t i = 0; i < v.Length(); ++i) out.push_back(v[i]);
    return out;
}

const TIntPrecision kWidths[] = {prInt32, prInt16, prInt8};

int64_t LoOf(TIntPrecision p) { return p == prInt32 ? INT32_MIN : p == prInt16 ? INT16_MIN : 0; }
int64_t HiOf(TIntPrecision p) { return p == prInt32 ? INT32_MAX : p == prInt16 ? INT16_MAX : 255; }

// The model of the scaled arithmetic: exact value v / 2^sf, rounded to
// nearest with ties to even (in long double, exact for these magnitudes),
// then clamped.
int64_t Model(long double v, int sf, TIntPrecision p) {
    const long double s = std::ldexp(v, -sf);
    long double r = std::nearbyint(s);  // default mode: ties to even
    if (r < LoOf(p)) r = LoOf(p);
    if (r > HiOf(p)) r = HiOf(p);
    return static_cast<int64_t>(r);
}

// Division by the definition: u / (w * 2^sf) rounded to nearest, ties to
// even, in exact integer arithmetic; by zero saturating to u's sign.
int64_t ModelDiv(int64_t u, int64_t w, int sf, TIntPrecision p) {
    if (w == 0) return u > 0 ? HiOf(p) : u < 0 ? LoOf(p) : 0;
    __int128 num = u, den = w;
    if (sf > 0) den <<= sf;
    if (sf < 0) num <<= -sf;
    if (den < 0) num = -num, den = -den;
    __int128 q = num / den, r = num % den;
    if (r < 0) r = -r;
    if (2 * r > den || (2 * r == den && (q % 2 != 0))) q += num < 0 ? -1 : 1;
    return q < LoOf(p) ? LoOf(p) : q > HiOf(p) ? HiOf(p) : int64_t(q);
}

std::vector<int32_t> RandomIn(TIntPrecision p, size_t n, unsigned seed) {
    std::mt19937 g(seed);
    std::uniform_int_distribution<int64_t> u(LoOf(p), HiOf(p));
    std::vector<int32_t> v(n);
    for (auto& x : v) x = static_cast<int32_t>(u(g));
    // Extremes, zeros and ones, where saturation and rounding bite.
    if (n > 6) {
        v[0] = static_cast<int32_t>(HiOf(p));
        v[1] = static_cast<int32_t>(LoOf(p));
        v[2] = 0;
        v[3] = 1;
    }
    return v;
}

}  // namespace

TEST(IntContainer, NewVectorIsEmptyInt32AndBytesAreUnsigned) {
    TVecInt v;
    EXPECT_EQ(v.IntPrecision(), prInt32);
    EXPECT_EQ(v.Length(), 0);
    v.Size(3, prInt8);
    v.SetIt({200, 7, 300});
    EXPECT_EQ(Values(v), (std::vector<int32_t>{200, 7, 255}));  // SetIt saturates at the width
    EXPECT_EQ(v.ElemSize(), 1);
    EXPECT_EQ(IntPrecisionToStr(prInt8), "unsigned integer, 1 byte");
}

TEST(IntContainer, WidthLockKeepsTheWidth) {
    TVecInt v;
    v.Size(4, prInt16);
    v.SetIntPrecisionLock(true);
    v.Size(8, prInt32);
    EXPECT_EQ(v.IntPrecision(), prInt16);
    EXPECT_EQ(v.Length(), 8);
}

// Add, Subtract, Multiply, Divide of every width and scale against the model,
// on odd lengths (vector bodies plus tails) and a sub-range.
TEST(IntArithmetic, MatchesTheScaledSaturatingModel) {
    for (TIntPrecision p : kWidths)
        for (int sf : {0, 1, 3, -2}) {
            const size_t n = 77;
            auto a = RandomIn(p, n, 11), b = RandomIn(p, n, 12);
            TVecInt x, y, d;
            x.Size(0, p);
            y.Size(0, p);
            x.SetIt(a);
            y.SetIt(b);
            d.SetScaleFactor(sf);
            d.Size(0, p);
            for (int op = 0; op < 4; ++op) {
                if (op == 0) d.Add(x, y);
                if (op == 1) d.Subtract(x, y);
                if (op == 2) d.Multiply(x, y);
                if (op == 3) d.Divide(x, y);
                ASSERT_EQ(d.Length(), int32_t(n));
                for (size_t i = 0; i < n; ++i) {
                    const long double u = a[i], w = b[i];
                    int64_t want;
                    if (op == 3) {
                        want = ModelDiv(a[i], b[i], sf, p);
                    } else {
                        want = Model(op == 0 ? u + w : op == 1 ? u - w : u * w, sf, p);
                    }
                    ASSERT_EQ(d[int32_t(i)], want) << "width " << p << " sf " << sf << " op " << op << " at " << i
                                                   << ": " << a[i] << ", " << b[i];
                }
            }
        }
}

TEST(IntArithmetic, SaturatedSumsUnderEveryKernelTable) {
    // The width's kernels at scale 0 against the model, under each table.
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512}) {
        if (!SetPrimitiveIsa(isa)) continue;
        for (TIntPrecision p : kWidths) {
            const size_t n = 203;
            auto a = RandomIn(p, n, 5), b = RandomIn(p, n, 6);
            TVecInt x, y;
            x.Size(0, p);
            y.Size(0, p);
            x.SetIt(a);
            y.SetIt(b);
            TVecInt s, t;
            s.Add(x, y);
            t.Copy(x);
            t.Subtract(y);
            for (size_t i = 0; i < n; ++i) {
                ASSERT_EQ(s[int32_t(i)], Model((long double)a[i] + b[i], 0, p)) << PrimitiveIsaName(isa);
                ASSERT_EQ(t[int32_t(i)], Model((long double)a[i] - b[i], 0, p)) << PrimitiveIsaName(isa);
            }
        }
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}

TEST(IntArithmetic, ValueFormsRangesAndReversedOperands) {
    TVecInt v;
    v.Size(0, prInt16);
    v.SetIt({10, 20, 30, 40});
    v.AddValue(5, 1, 2);
    EXPECT_EQ(Values(v), (std::vector<int32_t>{10, 25, 35, 40}));
    v.SubtractFromValue(100);  // 100 - x
    EXPECT_EQ(Values(v), (std::vector<int32_t>{90, 75, 65, 60}));
    v.DivideByValue(150);  // 150 / x, nearest, ties to even: 1.666 -> 2, 2 -> 2, 2.307 -> 2, 2.5 -> 2
    EXPECT_EQ(Values(v), (std::vector<int32_t>{2, 2, 2, 2}));
    TVecInt w;
    w.Size(0, prInt16);
    w.SetIt({7, -7, 5, 0});
    TVecInt q;
    q.DivideValue(w, 2);  // 3.5 -> 4, -3.5 -> -4, 2.5 -> 2, 0
    EXPECT_EQ(Values(q), (std::vector<int32_t>{4, -4, 2, 0}));
    q.Abs(w);
    EXPECT_EQ(Values(q), (std::vector<int32_t>{7, 7, 5, 0}));
    q.Size(1).SetVal(-32768).Abs();
    EXPECT_EQ(q[0], 32767);  // |-32768| saturates
    TVecInt r, m;
    w.RemDiv(3, r, m);
    EXPECT_EQ(Values(r), (std::vector<int32_t>{1, -1, 2, 0}));
    EXPECT_EQ(Values(m), (std::vector<int32_t>{2, -2, 1, 0}));
}

TEST(IntArithmetic, Texts) {
    TVecInt a, b, c;
    a.Size(3, prInt16);
    b.Size(3, prInt32);
    c.Size(4, prInt16);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(b); }, "TVecInt.IntPrecision value does not match!");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(a); }, "TVecInt.Add: Src = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Divide(a, c); }, "TVecInt.Divide: Src1.Length <> Src2.Length");
    TVecInt a2;
    a2.Size(3, prInt16);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Multiply(a, a2); }, "TVecInt.Multiply: (Self = Src1) or (Self = Src2)");
    b.Size(3, prInt32);
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Subtract(a, b); }, "TVecInt.Subtract: Src1.IntPrecision <> Src2.IntPrecision");
    ExpectMessage<ERovaneRangeError>([&] { a.Add(a2, 2, 0, 2); }, "X params out of range: XIndex: 2, Len: 2 , X.Length: 3");
    TVecInt t;
    t.Size(0, prInt32);
    t.SetIt({1, 5});
    ExpectMessage<ERovaneInvalidArgument>([&] { t.ThresholdGT_LT(t, 4, 0, 3, 0); },
                                          "TRovaneInt.ThresholdGT_LT: LTLevel > GTLevel");
    ExpectMessage<ERovaneInvalidArgument>([&] { t.ThreshAbsGT(-1); }, "TVecInt.ThreshAbsGT: (Value < 0)");
    // A refused call leaves the object usable.
    a.SetVal(1);
    a2.SetVal(2);
    a.Add(a2);
    EXPECT_EQ(a[0], 3);
}

TEST(IntBits, LogicShiftsAndWidths) {
    TVecInt v;
    v.Size(0, prInt8);
    v.SetIt({0x80, 0x0F, 1});
    v.BitShift(-3);  // bytes: logical
    EXPECT_EQ(Values(v), (std::vector<int32_t>{0x10, 1, 0}));
    TVecInt s;
    s.Size(0, prInt16);
    s.SetIt({-16, 16});
    s.BitShift(-3);  // signed: arithmetic
    EXPECT_EQ(Values(s), (std::vector<int32_t>{-2, 2}));
    s.BitShiftLeft(14);
    EXPECT_EQ(Values(s), (std::vector<int32_t>{-32768, -32768}));  // bits shifted out of 16
    TVecInt a, b, c;
    a.SetIt({0b1100, 0b1010});
    b.SetIt({0b1010, 0b0110});
    c.BinaryAnd(a, b);
    EXPECT_EQ(Values(c), (std::vector<int32_t>{0b1000, 0b0010}));
    c.BinaryXor(a, b);
    EXPECT_EQ(Values(c), (std::vector<int32_t>{0b0110, 0b1100}));
    c.BinaryNot(a);
    EXPECT_EQ(c[0], ~0b1100);
    c.LogicalNot(TVecInt().SetIt({0, 3}));
    EXPECT_EQ(Values(c), (std::vector<int32_t>{1, 0}));
}

TEST(IntBits, BitSetsPackingAndBitMatrices) {
    TVecInt v;
    v.SetBitCount(33);
    EXPECT_EQ(v.Length(), 2);
    v.SetZero();
    v.SetBits(32, true);
    EXPECT_EQ(v[1], 1);  // bit 32 is bit 0 of the second word
    EXPECT_TRUE(v.Bits(32));
    EXPECT_FALSE(v.Bits(31));
    ExpectMessage<ERovaneRangeError>([&] { (void)v.Bits(64); }, "TVecInt.Bits: Index out of range: 64");

    TVecInt mask, packed, back;
    mask.Size(0, prInt16);
    mask.SetIt({1, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1});
    packed.BitPack(mask);
    EXPECT_EQ(packed.BitCount(), 34);
    EXPECT_EQ(packed.Length(), 2);
    EXPECT_EQ(packed[0], 0b1001);
    back.Size(0, prInt8);
    back.BitUnpack(packed);
    ASSERT_EQ(back.Length(), 34);
    for (int32_t i = 0; i < 34; ++i) EXPECT_EQ(back[i], mask[i] != 0) << i;

    // Columns of a bit matrix: n div w, plus one when n is not a multiple of 8.
    TMtxInt m;
    m.Size(3, 1, prInt32);
    m.SetColsBitCount(33);
    EXPECT_EQ(m.Cols(), 2);
    m.SetColsBitCount(40);
    EXPECT_EQ(m.Cols(), 1);
    EXPECT_EQ(m.Rows(), 3);
    m.SetColsBitCount(33);
    m.SetZero();
    m.SetBits(2, 32, true);
    EXPECT_TRUE(m.GetBits(2, 32));
    EXPECT_EQ(m.GetElement(2, 1), 1);
}

TEST(IntReductions, DistinctGroupCountAndExtremes) {
    TVecInt src, d;
    src.SetIt({3, 1, 3, 2});
    d.Distinct(src);
    EXPECT_EQ(Values(d), (std::vector<int32_t>{1, 2, 3}));
    src.SetIt({0, 2, 2});
    d.GroupCount(src, -1);
    EXPECT_EQ(Values(d), (std::vector<int32_t>{1, 0, 2}));
    d.GroupCountIteration(src, 1, 2);
    EXPECT_EQ(Values(d), (std::vector<int32_t>{1, 0, 4}));
    TVecInt e;
    e.Size(0, prInt8);
    e.SetIt({7, 250, 3, 250});
    int32_t mx, mxi, mn, mni;
    e.MaxMinIdx(mx, mxi, mn, mni);
    EXPECT_EQ(mx, 250);
    EXPECT_EQ(mxi, 1);
    EXPECT_EQ(mn, 3);
    EXPECT_EQ(e.Sum(), 510);
    EXPECT_EQ(e.Median(), 7);
    EXPECT_EQ(e.Find(250), 1);
    EXPECT_EQ(e.CountInRange(5, 255), 3);
}

TEST(IntMoves, RotateShiftSortAndSearch) {
    TVecInt v;
    v.SetIt({1, 2, 3});
    v.Rotate(-1);
    EXPECT_EQ(Values(v), (std::vector<int32_t>{2, 3, 1}));
    v.SetIt({1, 2, 3});
    v.Shift(1);
    EXPECT_EQ(Values(v), (std::vector<int32_t>{1, 1, 2}));
    v.SetIt({5, 1, 4, 1, 5, 9, 2, 6});
    TVecInt ix;
    v.SortAscend(&ix);
    EXPECT_EQ(Values(v), (std::vector<int32_t>{1, 1, 2, 4, 5, 5, 6, 9}));
    for (int32_t i = 0; i < ix.Length(); ++i) EXPECT_EQ(std::vector<int32_t>({5, 1, 4, 1, 5, 9, 2, 6})[ix[i]], v[i]);
    int32_t at = -1;
    EXPECT_TRUE(v.BinarySearch(6, at));
    EXPECT_EQ(at, 6);
    EXPECT_FALSE(v.BinarySearch(3, at, 2, 0));
    EXPECT_EQ(at, 2);  // an empty range gives Index
    ExpectMessage<ERovaneInvalidArgument>([&] { v.SortDescend(nullptr); }, "IndexVec = nil");
    TVecInt c;
    c.Size(0, prInt8).SetIt({1, 2});
    TVecInt w;
    w.Convert(TVecInt().SetIt({-5, 300, 7}), prInt8);
    EXPECT_EQ(Values(w), (std::vector<int32_t>{0, 255, 7}));
}

TEST(IntMoves, FloatRoundTripWithRounding) {
    TVec f;
    f.SetIt({2.5, -2.5, 1e10, std::nan("")});
    TVecInt i;
    i.Size(0, prInt16);
    f.CopyTo(i, rnRound);
    EXPECT_EQ(Values(i), (std::vector<int32_t>{2, -2, 32767, 0}));
    f.CopyTo(i, rnTrunc);
    EXPECT_EQ(Values(i), (std::vector<int32_t>{2, -2, 32767, 0}));
    TVec g;
    g.Copy(i);
    EXPECT_EQ(g[2], 32767.0);
}

TEST(IntMatrix, ShapeMovesAndChaining) {
    TMtxInt m;
    m.Size(2, 3, prInt16);
    m.Ramp();
    TMtxInt t;
    t.Transp(m);
    EXPECT_EQ(t.Rows(), 3);
    EXPECT_EQ(t.GetElement(2, 1), 5);
    t.FlipVer();
    EXPECT_EQ(t.GetElement(0, 1), 5);
    // Chaining members of the integer family return the matrix.
    TMtxInt& r = m.AddValue(1).MultiplyValue(2);
    EXPECT_EQ(&r, &m);
    EXPECT_EQ(m.GetElement(1, 2), 12);
    TMtxInt sum;
    sum.Add(m, m);  // the result takes the sources' shape
    EXPECT_EQ(sum.Rows(), 2);
    EXPECT_EQ(sum.Cols(), 3);
    EXPECT_EQ(sum.GetElement(1, 2), 24);
    TMtxInt k;
    k.Rotate90(m, 1);
    EXPECT_EQ(k.Rows(), 3);
    EXPECT_EQ(k.GetElement(0, 0), m.GetElement(0, 2));
}

TEST(IntContainer, FixedWidthClassesAndCachedObjects) {
    TVecSmallInt s;
    s.Size(3, prInt32);  // the width stays 16 bits
    EXPECT_EQ(s.IntPrecision(), prInt16);
    s.SetIt({70000, -2, 3});
    EXPECT_EQ(s.Values[0], 32767);
    TMtxByte m;
    m.Size(2, 2);
    m.SetVal(255).AddValue(1);  // saturates at 255
    EXPECT_EQ(m.Values[3], 255);
    // A cached integer vector keeps its slot across widths and goes back.
    TVecInt* v = nullptr;
    CreateIt(v);
    EXPECT_GE(v->CacheIndex(), 0);
    v->Size(100, prInt8);
    v->SetVal(7);
    v->Size(100, prInt32);
    v->Ramp();
    EXPECT_EQ((*v)[99], 99);
    FreeIt(v);
    EXPECT_EQ(v, nullptr);
}

TEST(IntContainer, SubRangesOfEveryWidth) {
    for (TIntPrecision p : kWidths) {
        TVecInt whole, view, src;
        whole.Size(6, p);
        whole.SetIt({1, 2, 3, 4, 5, 6});
        src.Size(0, p);
        src.SetIt({10, 20});
        view.SetSubRange(whole, 2, 2);  // (3, 4)
        view.Add(src);
        view.SortDescend();
        EXPECT_EQ(Values(whole), (std::vector<int32_t>{1, 2, 24, 13, 5, 6})) << p;
        view.SetFullRange();
        whole.SetSubRange(3, 3);  // the object's own range: (13, 5, 6)
        EXPECT_EQ(whole.Find(6), 2);
        EXPECT_EQ(whole.Sum(), 24);
        whole.SetFullRange();
        EXPECT_EQ(whole.Length(), 6);
    }
}

TEST(IntContainer, OwningList) {
    TVecIntList list;
    list.Add().SetIt({1, 2});
    list.Add().Size(3, prInt8);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list[0][1], 2);
    EXPECT_EQ(list[1].IntPrecision(), prInt8);
    list.Delete(0);
    EXPECT_EQ(list[0].Length(), 3);
    ExpectMessage<ERovaneRangeError>([&] { (void)list[1]; }, "TVecIntList: Index out of range: 1");
}
