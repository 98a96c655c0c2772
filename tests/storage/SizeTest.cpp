// Sizing: lengths, complexity and precision, capacity, the aligned block and
// its counted header, array handles, Resize, Reset, Adopt and Disown.
#include <cstdint>
#include <iterator>
#include <vector>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

namespace {
bool Aligned(const void* p) { return reinterpret_cast<uintptr_t>(p) % 128 == 0; }
const char* const kSizeRef = "TVec.Size: External references to internal array detected: RefCount  = 2";
}  // namespace

TEST(Size, FormsSetLengthComplexityAndPrecision) {
    TVec v, d;
    TVecInt iv;
    int fired = 0;
    v.SetOnSetSize([&](TRovaneBase*) { ++fired; });
    v.Size(10, true);
    v.Size(10, true);  // same length and precision: nothing happens
    EXPECT_EQ(fired, 1);
    d.Size(3, true);
    iv.Size(9);
    // Each call and the length and precision it leaves; a size keeps IsDouble
    // unless given, an integer source gives only its length.
    const struct {
        std::function<void()> f;
        int32_t len;
        TMtxFloatPrecision p;
    } steps[] = {{[&] { v.Size(10); }, 10, rvDouble},           {[&] { v.Size(4, true, false); }, 4, rvSingleComplex},
                 {[&] { v.Size(6); }, 6, rvSingle},             {[&] { v.Size(7, d); }, 7, rvDoubleComplex},
                 {[&] { v.Size(d); }, 3, rvDoubleComplex},      {[&] { v.Size(d, false); }, 3, rvDouble},
                 {[&] { v.Size(d, rvSingleComplex); }, 3, rvSingleComplex},
                 {[&] { v.Size(iv); }, 9, rvSingleComplex},     {[&] { v.Size(iv, false); }, 9, rvSingle}};
    for (size_t i = 0; i < std::size(steps); ++i) {
        steps[i].f();
        EXPECT_EQ(v.Length(), steps[i].len) << i;
        EXPECT_EQ(v.FloatPrecision(), steps[i].p) << i;
    }
    EXPECT_EQ(v.Values, nullptr);
    EXPECT_NE(v.SValues, nullptr);
    EXPECT_RAISES(ERovaneInvalidArgument, v.Size(-1), "TVec.Length can not be smaller than zero!");
    v.Clear();
    EXPECT_EQ(v.Length(), 0);
    EXPECT_FALSE(v.IsDouble());
    v.SetLength(5);
    EXPECT_EQ(v.Length(), 5);
    EXPECT_EQ(v.FloatPrecision(), rvSingle);
}

TEST(Size, ComplexSwitchReinterpretsTheSameMemory) {
    TVec v;
    Ramp(v, 5);
    void* const p = v.ValuesPointer;
    v.SetComplex(true);
    EXPECT_EQ(v.FloatPrecision(), rvDoubleComplex);
    EXPECT_EQ(Cplxs(v), (std::vector<TCplx>{{0, 1}, {2, 3}}));
    EXPECT_EQ(v.ipoint[1], 2);  // the header follows
    v.SetComplex(false);
    EXPECT_EQ(v.Length(), 4);
    EXPECT_EQ(v.ValuesPointer, p);

    TVec c;
    CRamp(c, 5);
    void* const q = c.ValuesPointer;
    c.SetComplex(false);
    EXPECT_EQ(c.Length(), 10);
    EXPECT_EQ(c.Values[9], -4.0);
    c.SetComplex(true);
    EXPECT_EQ(c.Length(), 5);
    EXPECT_EQ(c.ValuesPointer, q);
    EXPECT_EQ(c.CValues[4], TCplx(4, -4));

    TVec s;
    s.Size(6, false, false);
    s.SetComplex(true);
    EXPECT_EQ(s.FloatPrecision(), rvSingleComplex);
    EXPECT_EQ(s.Length(), 3);
}

TEST(Size, PrecisionSwitchAndItsLock) {
    TVec v;
    Ramp(v, 10);
    v.SetFloatPrecision(rvSingle);
    EXPECT_EQ(v.Length(), 10);
    EXPECT_EQ(v.SData, nullptr);
    EXPECT_NE(v.SSData, nullptr);
    v.SetIsDouble(true);
    EXPECT_EQ(v.FloatPrecision(), rvDouble);
    v.SetComplex(true);
    v.SetIsDouble(false);
    EXPECT_EQ(v.FloatPrecision(), rvSingleComplex);
    v.SetIsDouble(true);

    v.SetFloatPrecisionLock(true);
    const int32_t len = v.Length();
    EXPECT_RAISES(ERovaneInvalidArgument, v.Size(3, true, false),
                  "Self.FloatPrecisionLock = True. Cant change from Double to Single.");
    // A refused Size leaves the object as it was.
    EXPECT_EQ(v.FloatPrecision(), rvDoubleComplex);
    EXPECT_EQ(v.Length(), len);
    v.Size(3, false);  // same width: allowed
    EXPECT_EQ(v.FloatPrecision(), rvDouble);

    TVec s;
    s.Size(4, false, false);
    s.SetFloatPrecisionLock(true);
    EXPECT_RAISES(ERovaneInvalidArgument, s.SetIsDouble(true),
                  "Self.FloatPrecisionLock = True. Cant change from Single to Double.");
    EXPECT_EQ(s.FloatPrecision(), rvSingle);
}

TEST(Size, BlocksAreAlignedAndCarryACountedHeader) {
    TVec v;
    for (int32_t n : {1, 3, 16, 1000, 40000}) {
        for (TMtxFloatPrecision p : {rvSingle, rvDouble, rvSingleComplex, rvDoubleComplex}) {
            v.Size(n, p);
            EXPECT_TRUE(Aligned(v.ValuesPointer)) << n << " " << p;
            ASSERT_NE(v.ipoint, nullptr);
            EXPECT_EQ(static_cast<void*>(v.ipoint + 2), v.ValuesPointer);
            EXPECT_EQ(v.ipoint[0], 1);
            EXPECT_EQ(v.ipoint[1], n);
            static const int32_t bytes[] = {4, 8, 8, 16};
            EXPECT_EQ(v.fActualSizeInBytes, (int64_t(n) * bytes[p] + 15) / 16 * 16);
        }
    }
    // Up to the alignment above what the allocator gave, and room for the
    // header in front.
    const auto lead = static_cast<char*>(v.ValuesPointer) - static_cast<char*>(v.aPoint);
    EXPECT_GT(lead, 0);
    EXPECT_LE(lead, 128 + 24);
    EXPECT_EQ(v.AllocSize, v.fActualSizeInBytes + 28 + 128);

    // A view does not write the header of its parent.
    Ramp(v, 10);
    int32_t* const header = v.ipoint;
    v.SetSubRange(2, 4);
    EXPECT_EQ(v.ipoint, nullptr);
    v.SetComplex(true);
    EXPECT_EQ(header[1], 10);
    v.SetFullRange();
    EXPECT_EQ(v.ipoint, header);
    v.Size(0);
    EXPECT_EQ(v.ValuesPointer, nullptr);
    EXPECT_EQ(v.ipoint, nullptr);
    EXPECT_EQ(v.fActualSizeInBytes, 0);
}

TEST(Size, CapacityHoldsOneBlockThroughSmallerSizes) {
    TVec v;
    v.SetCapacity(100);
    EXPECT_EQ(v.CapacityInBytes(), 800);
    EXPECT_EQ(v.ValuesPointer, nullptr);  // nothing allocated yet
    v.Size(10);
    EXPECT_EQ(v.fActualSizeInBytes, 800);
    void* const p = v.ValuesPointer;
    for (int32_t n : {50, 100, 1, 99}) {
        v.Size(n);
        EXPECT_EQ(v.ValuesPointer, p) << n;
        EXPECT_EQ(v.ipoint[1], n);
    }
    v.Size(50, true);  // 800 bytes of complex still fit
    EXPECT_EQ(v.ValuesPointer, p);
    v.Size(101);  // beyond: a block of the request, the capacity stays
    EXPECT_EQ(v.fActualSizeInBytes, 816);
    EXPECT_EQ(v.CapacityInBytes(), 800);
    v.Size(10);  // back to the capacity
    EXPECT_EQ(v.fActualSizeInBytes, 800);
    // A change of width keeps the reserve.
    v.Size(10, false, false);
    EXPECT_EQ(v.CapacityInBytes(), 800);
    EXPECT_EQ(v.fActualSizeInBytes, 800);
    EXPECT_TRUE(Aligned(v.SSData));

    TVec g;
    g.SetCapacityStep(1.5);
    g.SetCapacity(100);
    g.Size(10);
    EXPECT_EQ(g.CapacityInBytes(), 1200);
    EXPECT_EQ(g.fActualSizeInBytes, 1200);
    void* const q = g.ValuesPointer;
    g.Size(150);
    EXPECT_EQ(g.ValuesPointer, q);
    g.Size(151);
    EXPECT_EQ(g.CapacityInBytes(), 1824);
    EXPECT_EQ(g.fActualSizeInBytes, 1824);
    EXPECT_EQ(g.Capacity(), 228);
}

TEST(Size, CapacityStepAndElementCounts) {
    TVec v;
    for (auto [set, got] : {std::pair{0.5, 1.0}, {-2.0, 0.0}, {2.5, 2.5}}) {
        v.SetCapacityStep(set);
        EXPECT_EQ(v.CapacityStep(), got) << set;
    }
    v.SetCapacityStep(0);
    // Three elements of each kind, rounded up to 16 bytes.
    const struct {
        bool complex, isDouble;
        int64_t bytes;
        int32_t elements;
    } kinds[] = {{false, true, 32, 4}, {false, false, 16, 4}, {true, false, 32, 4}, {true, true, 48, 3}};
    for (const auto& k : kinds) {
        v.SetCapacity(0);
        v.Size(0, k.complex, k.isDouble);
        v.SetCapacity(3);
        EXPECT_EQ(v.CapacityInBytes(), k.bytes) << k.complex << k.isDouble;
        EXPECT_EQ(v.CapacityInElements(), k.elements) << k.complex << k.isDouble;
    }
    v.SetCapacityInBytes(-8);
    EXPECT_EQ(v.CapacityInBytes(), 0);
}

TEST(Size, HeldHandleBlocksSizeUntilReleased) {
    TVec v;
    Ramp(v, 10);
    {
        TDoubleArray h = v.ValuesArray();
        EXPECT_EQ(h.data(), v.Values);
        EXPECT_EQ(h.Length(), 10);
        EXPECT_EQ(h.RefCount(), 2);
        h[3] = 33;
        EXPECT_EQ(v.Values[3], 33.0);
        EXPECT_RAISES(ERovaneInvalidArgument, v.Size(20), kSizeRef);
        EXPECT_EQ(v.Length(), 10);
        // Complexity changes keep the count of the held handle.
        v.SetComplex(true);
        EXPECT_EQ(v.ipoint[0], 2);
        EXPECT_RAISES(ERovaneInvalidArgument, v.Size(20, true), kSizeRef);
        v.SetComplex(false);
        EXPECT_RAISES(ERovaneInvalidArgument, v.Size(20), kSizeRef);
        EXPECT_RAISES(ERovaneInvalidArgument, v.Reset(),
                      "TVec.Reset: External references to internal array detected: RefCount  = 2");
    }
    v.Size(20);
    for (int32_t i = 0; i < 20; ++i) v.Values[i] = i;  // the whole new length is writable
    EXPECT_EQ(v.ipoint[0], 1);

    TVec c;
    CRamp(c, 4);
    {
        TCplxArray h = c.CValuesArray();
        EXPECT_EQ(h.Length(), 4);
        EXPECT_EQ(h[3], TCplx(3, -3));
        EXPECT_RAISES(ERovaneInvalidArgument, c.Size(2, true), kSizeRef);
        EXPECT_EQ(c.SValuesArray().data(), nullptr);  // not single
    }
    c.Size(2, true);

    TVec s;
    s.Size(3, false, false);
    TSingleArray hs = s.SValuesArray();
    EXPECT_EQ(hs.data(), s.SValues);
    EXPECT_RAISES(ERovaneInvalidArgument, s.Size(4), kSizeRef);
}

TEST(Size, HandleOutlivesItsVector) {
    TDoubleArray small, large;
    {
        TVec v, w;
        Ramp(v, 10);
        Ramp(w, 50000);  // above the large-block threshold
        small = v.ValuesArray();
        large = w.ValuesArray();
    }
    EXPECT_EQ(small.RefCount(), 1);
    EXPECT_EQ(small[9], 9.0);
    EXPECT_EQ(large[49999], 49999.0);
    small[0] = 1;  // still owned memory
    TDoubleArray copy = large;
    EXPECT_EQ(copy.RefCount(), 2);
}

TEST(Size, ResizeKeepsContentsOnEveryPath) {
    // Reallocation path: a free object without capacity.
    TVec v;
    Ramp(v, 10);
    void* p = v.ValuesPointer;
    int fired = 0;
    v.SetOnSetSize([&](TRovaneBase*) { ++fired; });
    v.Resize(20, true);
    EXPECT_NE(v.ValuesPointer, p);
    EXPECT_GE(fired, 1);
    std::vector<double> want(20, 0.0);
    for (int32_t i = 0; i < 10; ++i) want[i] = i;
    EXPECT_EQ(Reals(v), want);
    v.Resize(4);
    EXPECT_EQ(Reals(v), (std::vector<double>{0, 1, 2, 3}));

    // Capacity path: the block stays and the tail is zeroed.
    TVec c;
    c.SetCapacity(64);
    Ramp(c, 10);
    p = c.ValuesPointer;
    for (int32_t i = 10; i < 30; ++i) c.Values[i] = 999;
    c.Resize(30, true);
    EXPECT_EQ(c.ValuesPointer, p);
    EXPECT_EQ(c.ipoint[1], 30);
    want.assign(30, 0.0);
    for (int32_t i = 0; i < 10; ++i) want[i] = i;
    EXPECT_EQ(Reals(c), want);
    c.Resize(5);
    EXPECT_EQ(c.ValuesPointer, p);
    EXPECT_EQ(c.Values[4], 4.0);

    // Complex data keep their pairs, also resized from another source.
    TVec z, r;
    CRamp(z, 3);
    z.Resize(5, true);
    EXPECT_EQ(Cplxs(z), (std::vector<TCplx>{{0, 0}, {1, -1}, {2, -2}, {0, 0}, {0, 0}}));
    r.Resize(z, 7, true);
    EXPECT_EQ(r.Length(), 7);
    EXPECT_EQ(r.CValues[1], TCplx(1, -1));
    EXPECT_EQ(r.CValues[6], TCplx(0, 0));
}

TEST(Size, ResetMessagesAndCleanState) {
    TVec v;
    Ramp(v, 10);
    v.SetSubRangeLevel(1, 8);
    v.SetSubRangeLevel(1, 2);
    EXPECT_RAISES(ERovaneException, v.Reset(),
                  "TVec.Reset: fSubRangeLevel >= 0; Unmatched SetSubRangeLevel/SetFullRangeLevel calls! "
                  "fSubRangeLevel = 1");
    v.SetFullRangeLevel();
    v.SetFullRangeLevel();
    v.BlockInit(3);
    EXPECT_RAISES(ERovaneException, v.Reset(), "TVec.Reset: BlockLevel > 0, Unfinished block processing section!");
    v.BlockFinish();

    v.Size(5, true, false);
    v.SetTag(7);
    v.SetCapacity(40);
    v.SetCapacityStep(2);
    v.SetFloatPrecisionLock(true);
    v.SetConditionCheck(false);
    v.Alfa = TCplx(3, 0);
    v.Reset();
    EXPECT_EQ(v.Length(), 0);
    EXPECT_EQ(v.FloatPrecision(), rvDouble);
    EXPECT_EQ(v.Tag(), 0);
    EXPECT_EQ(v.CapacityInBytes(), 0);
    EXPECT_EQ(v.CapacityStep(), 0.0);
    EXPECT_FALSE(v.FloatPrecisionLock());
    EXPECT_TRUE(v.ConditionCheck());
    EXPECT_EQ(v.Alfa, TCplx(1, 0));
    v.Size(3);
    EXPECT_NE(v.Values, nullptr);
}

TEST(Size, AdoptAndDisownForeignMemory) {
    alignas(16) double buf[6] = {1, 2, 3, 4, 5, 6};
    TVec v;
    Ramp(v, 3);
    v.Adopt(buf, 3, rvDoubleComplex);
    EXPECT_EQ(v.ValuesPointer, static_cast<void*>(buf));
    EXPECT_EQ(v.Length(), 3);
    EXPECT_TRUE(v.Complex());
    EXPECT_EQ(v.fActualSizeInBytes, 0);
    EXPECT_EQ(v.ipoint, nullptr);
    EXPECT_EQ(v.CValues[1], TCplx(3, 4));
    v.CValues[2] = TCplx(9, 10);
    EXPECT_EQ(buf[4], 9.0);

    v.SetSubRange(1, 1);
    EXPECT_RAISES(ERovaneException, v.Adopt(buf, 6, false, true), "TVec.Adopt: IsSubRange = True, SubRangeLevel = 0");
    void* p = nullptr;
    int32_t n = 0;
    TMtxFloatPrecision fp = rvSingle;
    EXPECT_RAISES(ERovaneException, v.Disown(p, n, fp), "TVec.Disown: IsSubRange = True, SubRangeLevel = 0");
    v.SetFullRange();
    v.Disown(p, n, fp);
    EXPECT_EQ(p, static_cast<void*>(buf));
    EXPECT_EQ(n, 3);
    EXPECT_EQ(fp, rvDoubleComplex);
    EXPECT_EQ(v.Length(), 0);
    EXPECT_EQ(v.ValuesPointer, nullptr);
    EXPECT_FALSE(v.Complex());

    // An adopted block is never freed by the object, also not at its end.
    float fbuf[4] = {1, 2, 3, 4};
    {
        TVec w;
        w.Adopt(fbuf, 4, false, false);
        EXPECT_EQ(w[3], 4.0);
        bool isComplex = true, isDouble = true;
        w.Disown(p, n, isComplex, isDouble);
        EXPECT_FALSE(isComplex);
        EXPECT_FALSE(isDouble);
        w.Adopt(fbuf, 4, rvSingle);
    }

    // Disown cuts a view loose from a source that has gone away.
    TVec* src = new TVec;
    Ramp(*src, 5);
    TVec view;
    view.SetSubRange(*src, 1, 2);
    delete src;
    view.Disown();
    EXPECT_FALSE(view.IsSubRange());
    view.Size(4);
    view.Values[3] = 1;
}

TEST(Size, AssignCopiesSettingsAndValues) {
    TVec a, b;
    CRamp(a, 4);
    a.SetCaption("x");
    a.SetTag(5);
    a.SetConditionCheck(false);
    a.SetDirty(true);
    a.SetZeroTolerance(1e-3);
    a.SetPrecision(prSingle);
    a.SetRounding(rnRound);
    a.Alfa = TCplx(2, 0);
    b.Assign(a);
    EXPECT_EQ(b.Caption(), "x");
    EXPECT_EQ(b.Tag(), 5);
    EXPECT_FALSE(b.ConditionCheck());
    EXPECT_TRUE(b.Dirty());
    EXPECT_EQ(b.ZeroTolerance(), 1e-3);
    EXPECT_EQ(b.Precision(), prSingle);
    EXPECT_EQ(b.Rounding(), rnRound);
    EXPECT_EQ(b.Alfa, TCplx(2, 0));
    EXPECT_EQ(Cplxs(b), Cplxs(a));
    EXPECT_RAISES(ERovaneException, b.Assign(b), "TVec.Assign: Src = Self");
    TVecInt iv;
    EXPECT_RAISES(ERovaneException, b.Assign(iv), "TRovane.Assign: Src Type is not the same as Dst Type!");
}
