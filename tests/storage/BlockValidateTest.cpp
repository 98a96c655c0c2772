// Block processing and the argument validators with their exact texts.
#include <vector>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

namespace {
struct BlockTrace {
    std::vector<int32_t> lengths;
    std::vector<double> firsts;
};

BlockTrace Walk(TVec& v, int32_t size) {
    BlockTrace t;
    v.BlockInit(size);
    while (!v.BlockEnd()) {
        t.lengths.push_back(v.Length());
        t.firsts.push_back(v.Values[0]);
        v.BlockNext();
    }
    return t;
}

// The in-out length argument of the validators; Len(n) sets it for one call.
int32_t len = 0;
int32_t& Len(int32_t n) { return len = n; }
}  // namespace

TEST(Block, WalksInBlocksWithAShortLastBlock) {
    TVec a;
    Ramp(a, 2500);
    const BlockTrace t = Walk(a, 1000);
    EXPECT_EQ(t.lengths, (std::vector<int32_t>{1000, 1000, 500}));
    EXPECT_EQ(t.firsts, (std::vector<double>{0, 1000, 2000}));
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_EQ(a.Length(), 2500);
    EXPECT_EQ(a.SubRangeLevel(), -1);
    EXPECT_EQ(a.BlockSubRangeLevel(), -1);
    // A second loop starts again at the first block.
    const BlockTrace again = Walk(a, 0);  // RovaneBlockSize
    EXPECT_EQ(again.lengths, (std::vector<int32_t>{1000, 1000, 500}));
}

TEST(Block, LoopInsideARangeWalksThatRange) {
    TVec a;
    Ramp(a, 3000);
    a.SetSubRange(100, 2500);
    const BlockTrace t = Walk(a, 1000);
    EXPECT_EQ(t.lengths, (std::vector<int32_t>{1000, 1000, 500}));
    EXPECT_EQ(t.firsts, (std::vector<double>{100, 1100, 2100}));
    EXPECT_TRUE(a.IsSubRange());
    EXPECT_EQ(a.SubRangeLevel(), 0);
    EXPECT_EQ(a.Length(), 2500);
    EXPECT_EQ(a.Values[0], 100.0);
    a.SetFullRange();
    EXPECT_EQ(a.Length(), 3000);
}

TEST(Block, EmptyObjectOpensNothingAndNextFails) {
    TVec a;
    a.BlockInit(1000);
    EXPECT_TRUE(a.BlockEnd());
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_RAISES(ERovaneException, a.BlockNext(), "TRovaneBase.BlockNext: BlockLevel < 0");
}

TEST(Block, SrcFormWritesIntoTheSource) {
    TVec src, v;
    Ramp(src, 2500);
    v.BlockInit(src, 1000);
    std::vector<int32_t> lengths;
    while (!v.BlockEnd()) {
        lengths.push_back(v.Length());
        for (int32_t i = 0; i < v.Length(); ++i) v.Values[i] *= -1;
        v.BlockNext();
    }
    EXPECT_EQ(lengths, (std::vector<int32_t>{1000, 1000, 500}));
    EXPECT_FALSE(v.IsSubRange());
    EXPECT_EQ(v.Length(), 0);
    for (int32_t i = 0; i < 2500; i += 499) EXPECT_EQ(src.Values[i], -double(i));
    EXPECT_EQ(src.Values[2499], -2499.0);
}

TEST(Block, FinishLeavesEarlyAndMismatchedLevelIsReported) {
    TVec a;
    Ramp(a, 2500);
    a.BlockInit(1000);
    a.BlockNext();
    EXPECT_EQ(a.Values[0], 1000.0);
    a.BlockFinish();
    EXPECT_TRUE(a.BlockEnd());
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_EQ(a.Length(), 2500);
    a.BlockInit(1000);
    EXPECT_EQ(a.Values[0], 0.0);
    a.SetSubRangeLevel(10, 5);
    EXPECT_RAISES(ERovaneException, a.BlockNext(), "TRovaneBase.BlockNext: fSubRangeLevel <> fBlockSubRangeLevel");
    a.SetFullRangeLevel();
    a.BlockFinish();
    EXPECT_FALSE(a.IsSubRange());
}

TEST(Validate, SelfRangeAndMinusOne) {
    TVec a;
    Ramp(a, 10);
    a.ValidateParams(4, Len(-1));
    EXPECT_EQ(len, 6);
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(4, Len(7)),
                  "Self params out of range: Index: 4, Len: 7, Length: 10");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(-1, Len(1)),
                  "Self params out of range: Index: -1, Len: 1, Length: 10");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(0, Len(-2)),
                  "Self params out of range: Index: 0, Len: -2, Length: 10");
}

TEST(Validate, OneOperandFormChecksInOrder) {
    TVec a, x, s;
    Ramp(a, 10);
    Ramp(x, 8);
    s.Size(10, false, false);
    // X = Self is tested before any range.
    EXPECT_RAISES(ERovaneInvalidArgument, a.ValidateParams(a, 0, 0, Len(20)), "Invalid params: X is equal to Self");
    // The X range before the Self range.
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x, 3, 5, Len(8)),
                  "X params out of range: XIndex: 3, Len: 8 , X.Length: 8");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x, -1, 0, Len(1)),
                  "X params out of range: XIndex: -1, Len: 1 , X.Length: 8");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x, 0, 6, Len(5)),
                  "Self params out of range: Index: 6, Len: 5, Length: 10");
    // Precision last: a good range with single X.
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(s, 0, 0, Len(5)),
                  "X params not matching floating point precision: fIsDouble <> X.fIsDouble");
    // -1 runs to the end of Self.
    a.ValidateParams(x, 0, 4, Len(-1));
    EXPECT_EQ(len, 6);
}

TEST(Validate, TwoOperandFormChecksInOrder) {
    TVec a, x1, x2, s;
    Ramp(a, 10);
    Ramp(x1, 6);
    Ramp(x2, 4);
    s.Size(10, false, false);
    EXPECT_RAISES(ERovaneInvalidArgument, a.ValidateParams(x1, a, 0, 0, 0, Len(3)),
                  "Invalid params: X1 or X2 is equal to Self");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x1, x2, 2, 0, 0, Len(5)),
                  "X1 params out of range: xIndex1: 2, Len: 5, x1Length = 6");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x1, x2, 0, 2, 0, Len(3)),
                  "X1 params out of range: xIndex2: 2, Len: 3, x2Length = 4");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x1, x2, 0, 0, 8, Len(3)),
                  "Self params out of range: Index: 8, Len: 3, Length: 10");
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams(x1, s, 0, 0, 0, Len(3)),
                  "X params not matching floating point precision: (fIsDouble <> X1.fIsDouble) or "
                  "(fIsDouble <> X2.fIsDouble)");
}

TEST(Validate, ArrayIndexValidators) {
    TVec r, c;
    Ramp(r, 10);
    CRamp(c, 10);
    EXPECT_RAISES(ERovaneInvalidArgument, r.ValidateCplxArrayIndexes(0, 10, 0, Len(4)),
                  "ValidateCplxArrayIndexes: Self must be Complex");
    EXPECT_RAISES(ERovaneRangeError, c.ValidateCplxArrayIndexes(3, 6, 0, Len(4)),
                  "ValidateCplxArrayIndexes: SrcIndex + Len > SrcLen, (3 + 4) > 6");
    EXPECT_RAISES(ERovaneRangeError, c.ValidateCplxArrayIndexes(-1, 6, 0, Len(4)),
                  "ValidateCplxArrayIndexes: SrcIndex < 0, -1 < 0");
    EXPECT_RAISES(ERovaneRangeError, c.ValidateCplxArrayIndexes(0, 60, 8, Len(4)),
                  "Self params out of range: Index: 8, Len: 4, Length: 10");
    c.ValidateCplxArrayIndexes(0, 60, 8, Len(-1));
    EXPECT_EQ(len, 2);

    // Real arrays: the length doubles for complex Self and goes back doubled.
    r.ValidateRealArrayIndexes(0, 4, 0, Len(4));
    EXPECT_EQ(len, 4);
    c.ValidateRealArrayIndexes(0, 8, 0, Len(4));
    EXPECT_EQ(len, 8);
    EXPECT_RAISES(ERovaneRangeError, c.ValidateRealArrayIndexes(1, 8, 0, Len(4)),
                  "ValidateRealArrayIndexes: (SrcIndex + Len) > SrcLen, (1 + 8) > 8");
    EXPECT_RAISES(ERovaneRangeError, r.ValidateRealArrayIndexes(-3, 8, 0, Len(2)),
                  "ValidateRealArrayIndexes: SrcIndex < 0, -3 < 0");
}

TEST(Validate, RangeChecksOfElementAccess) {
    TVec r, c;
    Ramp(r, 5);
    CRamp(c, 5);
    r.RangeCheck(4);
    EXPECT_RAISES(ERovaneRangeError, r.RangeCheck(-1), "Indx < 0, -1 < 0");
    EXPECT_RAISES(ERovaneRangeError, r.RangeCheck(5), "Index >= Flength, Index = 5, fLength = 5");
    c.RangeCheck(9);
    EXPECT_RAISES(ERovaneRangeError, c.RangeCheck(10), "Index >= Flength*2, Index = 10, fLength*2 = 10");
    c.RangeCheckComplex(4);
    EXPECT_RAISES(ERovaneRangeError, c.RangeCheckComplex(5), "Index >= Flength*2, Index = 5, fLength = 5");
    r.RangeCheckComplex(1);
    EXPECT_RAISES(ERovaneRangeError, r.RangeCheckComplex(2), "Index >= Flength, Index = 2, (fLength div 2) = 2");
    EXPECT_RAISES(ERovaneRangeError, c.RangeCheckComplex(-4), "Indx < 0, -4 < 0");
}

TEST(Validate, WithChecksOffOnlyMinusOneIsResolved) {
    TVec a, x, s;
    Ramp(a, 10);
    Ramp(x, 3);
    s.Size(10, false, false);
    a.SetConditionCheck(false);
    a.ValidateParams(4, Len(50));
    a.ValidateParams(a, 7, 8, len);
    a.ValidateParams(s, 0, 0, len);
    a.ValidateParams(x, a, 9, 9, 9, len);
    EXPECT_EQ(len, 50);
    a.ValidateParams(3, Len(-1));
    EXPECT_EQ(len, 7);
    a.ValidateParams(x, 0, 2, Len(-1));
    EXPECT_EQ(len, 8);
    a.ValidateParams(x, x, 0, 0, 9, Len(-1));
    EXPECT_EQ(len, 1);
    a.ValidateCplxArrayIndexes(-5, 0, 0, Len(99));
    a.ValidateRealArrayIndexes(-5, 0, 6, Len(-1));
    EXPECT_EQ(len, 4);
    a.SetConditionCheck(true);
    a.CondDisable();
    EXPECT_FALSE(a.ConditionCheck());
    a.CondEnable();
    EXPECT_TRUE(a.ConditionCheck());
}
