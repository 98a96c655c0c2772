// Sub-ranges: self and Src forms, the level stack, blocking, leaving, and
// the rules for writing and resizing through a view.
#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

TEST(SubRange, EmptyAndMinusOneRangesAndTheirChecks) {
    TVec a, b;
    Ramp(a, 10);
    void* const base = a.ValuesPointer;
    int fired = 0;
    a.SetOnSetSize([&](TRovaneBase*) { ++fired; });
    a.SetFullRange();  // on a plain object: nothing happens
    a.SetFullRangeLevel();
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(a.SubRangeLevel(), -1);
    // An empty range keeps the pointer in the self form and nulls it in the Src form.
    a.SetSubRange(0, 0);
    EXPECT_TRUE(a.IsSubRange());
    EXPECT_EQ(a.Length(), 0);
    EXPECT_EQ(a.ValuesPointer, base);
    a.SetFullRange();
    EXPECT_EQ(a.Length(), 10);
    EXPECT_EQ(a.ValuesPointer, base);
    b.SetSubRange(a, 0, 0);
    EXPECT_TRUE(b.IsSubRange());
    EXPECT_EQ(b.Length(), 0);
    EXPECT_EQ(b.ValuesPointer, nullptr);
    EXPECT_EQ(b.SData, nullptr);
    b.SetFullRange();

    a.SetSubRange(3, -1);
    EXPECT_EQ(a.Length(), 7);
    EXPECT_EQ(a.Values[0], 3.0);
    EXPECT_EQ(a.FDataOffset, 3);
    a.SetFullRange();
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRange(8, 3), "Self params out of range: Index: 8, Len: 3, Length: 10");
    EXPECT_FALSE(a.IsSubRange());
    // The self form checks even with argument checks off.
    a.SetConditionCheck(false);
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRange(-1, 2), "Self params out of range: Index: -1, Len: 2, Length: 10");
}

TEST(SubRange, ComplexRangeCountsComplexElements) {
    TVec c;
    CRamp(c, 10);
    void* const base = c.ValuesPointer;
    c.SetSubRange(2, 3);
    EXPECT_EQ(c.FCDataOffset, 2);
    EXPECT_EQ(c.FDataOffset, 4);
    EXPECT_EQ(c.Length(), 3);
    EXPECT_TRUE(c.Complex());
    EXPECT_EQ(c.CValues[0], TCplx(2, -2));
    EXPECT_EQ(c.CValues, static_cast<TCplx*>(base) + 2);
    c.SetFullRange();
    EXPECT_EQ(c.Length(), 10);
    EXPECT_TRUE(c.Complex());
    EXPECT_EQ(c.ValuesPointer, base);
    EXPECT_EQ(c.CData, static_cast<TCplx*>(base));
    EXPECT_EQ(c.FCDataOffset, 0);
    EXPECT_EQ(c.CValues[9], TCplx(9, -9));
}

TEST(SubRange, SingleRangeOffsetsTheSingleView) {
    TVec s;
    s.Size(8, false, false);
    for (int i = 0; i < 8; ++i) s.SValues[i] = float(i);
    s.SetSubRange(5, 2);
    EXPECT_EQ(s.SValues, s.SSData + 5);
    EXPECT_EQ(s.SValues[1], 6.0f);
    EXPECT_EQ(s.Values, nullptr);
    EXPECT_EQ(s[0], 5.0);
    s.SetFullRange();
    EXPECT_EQ(s.SValues[7], 7.0f);
}

TEST(SubRange, StackHoldsFiveLevelsAndPushesAreRelative) {
    TVec a;
    Ramp(a, 100);
    a.SetSubRangeLevel(10, 80);  // level 0: [10, 90)
    a.SetSubRangeLevel(5, 60);   // level 1: [15, 75)
    EXPECT_EQ(a.Values[0], 15.0);
    a.SetSubRangeLevel(5, 40);   // level 2: [20, 60)
    a.SetSubRangeLevel(1, 10);   // level 3: [21, 31)
    a.SetSubRangeLevel(2, 3);    // level 4: [23, 26)
    EXPECT_EQ(a.SubRangeLevel(), 4);
    EXPECT_EQ(a.Length(), 3);
    EXPECT_EQ(a.Values[0], 23.0);
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRangeLevel(0, 1), "Subrange stack depth reached MaxSubrangeLevel at 4");
    EXPECT_EQ(a.Values[0], 23.0);
    // A replacing range at a pushed level is relative to the level below.
    a.SetSubRange(4, 2);
    EXPECT_EQ(a.Values[0], 25.0);
    EXPECT_EQ(a.Length(), 2);
    // The absolute range is checked against the full length.
    a.SetFullRangeLevel();  // level 3: [21, 31)
    a.SetFullRangeLevel();  // level 2: [20, 60)
    EXPECT_EQ(a.Values[0], 20.0);
    EXPECT_EQ(a.Length(), 40);
    a.SetFullRangeLevel();
    a.SetFullRangeLevel();
    EXPECT_EQ(a.Values[0], 10.0);
    EXPECT_EQ(a.SubRangeLevel(), 0);
    a.SetFullRangeLevel();
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_EQ(a.SubRangeLevel(), -1);
    EXPECT_EQ(a.Length(), 100);
}

TEST(SubRange, LevelsAgainstTheFullVector) {
    TVec a;
    Ramp(a, 20);
    // A pushed range beyond its parent fails against the full length.
    a.SetSubRangeLevel(10, 5);
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRangeLevel(5, 6),
                  "Self params out of range: Index: 15, Len: 6, Length: 20");
    // The failed push has raised the level already; leaving it restores.
    a.SetFullRangeLevel();
    a.SetFullRangeLevel();
    a.SetFullRange();
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_EQ(a.Length(), 20);

    // SetFullRange at a pushed level shows the parent and keeps the depth.
    a.SetSubRangeLevel(4, 10);
    a.SetSubRangeLevel(2, 3);
    a.SetFullRange();
    EXPECT_EQ(a.SubRangeLevel(), 1);
    EXPECT_EQ(a.Length(), 10);
    EXPECT_EQ(a.Values[0], 4.0);
    a.SetFullRangeLevel();
    a.SetFullRangeLevel();
    EXPECT_FALSE(a.IsSubRange());

    // Repeated ranges at level 0 are relative to the full vector.
    a.SetSubRange(10, 5);
    a.SetSubRange(2, 3);
    EXPECT_EQ(a.Values[0], 2.0);
    EXPECT_EQ(a.SubRangeLevel(), 0);
    a.SetSubIndex(4, 7);
    EXPECT_EQ(a.Length(), 4);
    EXPECT_EQ(a.Values[0], 4.0);
    a.Select(18, -1);
    EXPECT_EQ(a.Length(), 2);
    a.SelectAll();
    EXPECT_EQ(a.Length(), 20);
    EXPECT_FALSE(a.IsSubRange());
}

TEST(SubRange, DisableSubrangeBlocksOnlyTheSelfForm) {
    TVec a, b;
    Ramp(a, 10);
    Ramp(b, 10, 100);
    a.DisableSubrange();
    EXPECT_RAISES(ERovaneException, a.SetSubRange(1, 2), "Subrange is blocked!");
    EXPECT_RAISES(ERovaneException, a.SetSubRangeLevel(1, 2), "Subrange is blocked!");
    a.SetSubRange(b, 3, 2);
    EXPECT_EQ(a.Values[0], 103.0);
    // Leaving opens the gate again.
    a.SetFullRange();
    a.SetSubRange(1, 2);
    EXPECT_EQ(a.Values[0], 1.0);
    a.SetFullRange();

    // The Select pair is reversed on purpose.
    a.EnableSelect();
    EXPECT_RAISES(ERovaneException, a.SetSubRange(1, 2), "Subrange is blocked!");
    a.DisableSelect();
    a.SetSubRange(1, 2);
    a.SetFullRange();
    a.EnableSubrange();
}

TEST(SubRange, WritesThroughAViewLandInTheParent) {
    TVec a, v;
    Ramp(a, 10);
    v.SetSubRange(a, 4, 3);
    v.SetVal(-1.0);
    v[2] = 42.0;
    v.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{0, 1, 2, 3, -1, -1, 42, 7, 8, 9}));

    // The view takes the precision of its source.
    TVec c;
    CRamp(c, 6);
    v.SetSubRange(c, 1, 2);
    EXPECT_TRUE(v.Complex());
    EXPECT_EQ(v.FCDataOffset, 1);
    EXPECT_EQ(v.FDataOffset, 2);
    v.SetVal(TCplx(7, 8));
    v.SetFullRange();
    EXPECT_FALSE(v.Complex());
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{0, 0}, {7, 8}, {7, 8}, {3, -3}, {4, -4}, {5, -5}}));
}

TEST(SubRange, SrcFormOfAViewAddsTheSourceOffsetAndValidates) {
    TVec a, mid, v;
    Ramp(a, 20);
    mid.SetSubRange(a, 5, 10);
    v.SetSubRange(mid, 2, -1);
    EXPECT_EQ(v.Length(), 8);
    EXPECT_EQ(v.Values[0], 7.0);
    EXPECT_EQ(v.FDataOffset, 7);
    EXPECT_RAISES(ERovaneRangeError, v.SetSubRange(mid, 5, 6),
                  "Self params out of range: Index: 5, Len: 6, Length: 10");
    v.SetFullRange();
    mid.SetFullRange();

    TVecInt iv;
    EXPECT_RAISES(ERovaneException, v.SetSubRange(iv, 0, 0),
                  "TVec.SetSubRange: Src is not of TVec or TMtx or TSparseMtx type!");
}

TEST(SubRange, AViewCannotBeResizedButTakesACopyOfEqualLength) {
    TVec a, b;
    Ramp(a, 10);
    Ramp(b, 3, 50);
    a.SetSubRange(2, 3);
    const std::string text =
        "TVec.IsSubRange = True! Destination would need to be resized, but is already subranged from another "
        "object. Both FloatPrecision and Length of source and destination would need to match.";
    EXPECT_RAISES(ERovaneException, a.Size(4), text);
    EXPECT_RAISES(ERovaneException, a.Size(3, true), text);
    a.Copy(b);
    TVec c;
    Ramp(c, 4);
    EXPECT_RAISES(ERovaneException, a.Copy(c), text);
    EXPECT_EQ(a.Length(), 3);
    a.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{0, 1, 50, 51, 52, 5, 6, 7, 8, 9}));
}

TEST(SubRange, ComplexityChangedInsideARangeIsCheckedAgainstSavedLength) {
    TVec a;
    Ramp(a, 10);
    a.SetSubRange(2, 4);  // reals 2..5
    a.SetComplex(true);   // two complex elements over reals 2..5
    EXPECT_EQ(a.Length(), 2);
    // Saved real, now complex: the loose bound (Index + Len) div 2 <= SLength.
    // The self form is absolute to the saved full range: complex element 1
    // of the whole block is reals 2 and 3.
    a.SetSubRange(1, 2);
    EXPECT_EQ(a.FCDataOffset, 1);
    EXPECT_EQ(a.FDataOffset, 2);
    EXPECT_EQ(a.CValues[0], TCplx(2, 3));
    EXPECT_EQ(a.CValues[1], TCplx(4, 5));
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRange(15, 8),
                  "Self params out of range: 2*Index: 30, 2*Len: 16, SavedLength: 10");
    a.SetFullRange();
    EXPECT_FALSE(a.Complex());
    EXPECT_EQ(a.Length(), 10);

    TVec c;
    CRamp(c, 6);
    c.SetSubRange(1, 2);
    c.SetComplex(false);
    EXPECT_EQ(c.Length(), 4);
    EXPECT_RAISES(ERovaneRangeError, c.SetSubRange(2, 2), "Self params out of range: Index: 2, Len: 2, SavedLength: 6");
    c.SetSubRange(1, 2);
    EXPECT_EQ(c.FDataOffset, 1);
    EXPECT_EQ(c.Values[1], 1.0);  // real part of complex element 1
    c.SetFullRange();
    EXPECT_TRUE(c.Complex());
    EXPECT_EQ(c.Length(), 6);
}

TEST(SubRange, DestroyingAPushedViewReportsAndReleasesTheBlock) {
    const std::string text = "TRovane.Destroy: IsSubRange = True, SubRangeLevel = 1";
    {
        // The explicit check raises and leaves the view as it is.
        TVec a;
        Ramp(a, 10);
        a.SetSubRangeLevel(1, 8);
        a.SetSubRangeLevel(1, 2);
        EXPECT_RAISES(ERovaneException, a.CheckDestroy(), text);
        EXPECT_EQ(a.Length(), 2);
        EXPECT_EQ(a.SubRangeLevel(), 1);
        a.SetFullRangeLevel();
        a.SetFullRangeLevel();
        EXPECT_NO_THROW(a.CheckDestroy());
    }
    {
        // The destructor itself never throws: it reports the same text.
        ReportCollector reports;
        auto* a = new TVec;
        Ramp(*a, 10);
        a->SetSubRangeLevel(1, 8);
        a->SetSubRangeLevel(1, 2);
        EXPECT_RAISES(ERovaneException, a->Free(), text);
        delete a;
        ASSERT_EQ(reports.texts.size(), 1u);
        EXPECT_EQ(reports.texts[0], text);
    }
    static_assert(std::is_nothrow_destructible_v<TVec> && std::is_nothrow_destructible_v<TMtx> &&
                  std::is_nothrow_destructible_v<TVecInt>);
    // A view at level 0 leaves quietly.
    ReportCollector reports;
    TVec* b = new TVec;
    Ramp(*b, 4);
    b->SetSubRange(1, 2);
    b->Free();
    EXPECT_TRUE(reports.texts.empty());
}

TEST(SubRange, MatrixViewIsOneRow) {
    TMtx m;
    m.Size(3, 4);
    for (int i = 0; i < 12; ++i) m.Values[i] = i;
    m.SetSubRange(5, 3);
    EXPECT_EQ(m.Rows(), 1);
    EXPECT_EQ(m.Cols(), 3);
    EXPECT_EQ(m.Values[0], 5.0);
    m.SetFullRange();
    EXPECT_EQ(m.Rows(), 3);
    EXPECT_EQ(m.Cols(), 4);
    TMtx v;
    v.SetSubRange(m, 2, 2, 3);
    EXPECT_EQ(v.Rows(), 2);
    EXPECT_EQ(v.Cols(), 3);
    EXPECT_EQ(v.Length(), 6);
    EXPECT_EQ(v.Values[5], 7.0);
    v.SetFullRange();
    EXPECT_FALSE(v.IsSubRange());
    TVecInt iv;
    EXPECT_RAISES(ERovaneException, v.SetSubRange(iv, 0, 0, 0),
                  "TMtx.SetSubRange: Src is not of TVec or TMtx or TMtxSparse type!");
    EXPECT_EQ(v.SubRangeLevel(), -1);
    EXPECT_RAISES(ERovaneException, v.SetSubRange(iv, 0, 0), "TMtx.SetSubRange: Src is not of TVec or TMtx type!");
    EXPECT_EQ(v.SubRangeLevel(), -1);
}
