// The matrix as a storage object: its shape fields through Size, complexity
// switching, sizing from vectors, sub-ranges as matrices, cache slots and Reset.
#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

namespace {

void ExpectShape(const TMtx& m, int32_t rows, int32_t cols, bool complex) {
    EXPECT_EQ(m.Rows(), rows);
    EXPECT_EQ(m.Cols(), cols);
    EXPECT_EQ(m.LeadingCols(), cols);
    EXPECT_EQ(m.Length(), rows * cols);
    EXPECT_EQ(m.Complex(), complex);
    EXPECT_EQ(m.Quadratic(), rows == cols);
}

}  // namespace

TEST(Matrix, SizeFormsSetShapeAndPrecision) {
    TMtx m;
    ExpectShape(m, 0, 0, false);
    m.Size(3, 4);
    ExpectShape(m, 3, 4, false);
    EXPECT_TRUE(m.IsDouble());
    m.Size(2, 2, true);
    ExpectShape(m, 2, 2, true);
    m.Size(5, 1, false, false);
    ExpectShape(m, 5, 1, false);
    EXPECT_FALSE(m.IsDouble());
    m.Size(1, 6, rvDoubleComplex);
    ExpectShape(m, 1, 6, true);
    EXPECT_EQ(m.FloatPrecision(), rvDoubleComplex);

    TMtx other;
    other.Size(m);
    ExpectShape(other, 1, 6, true);
    other.Size(m, false);
    ExpectShape(other, 1, 6, false);
    other.Size(m, rvSingle);
    EXPECT_EQ(other.FloatPrecision(), rvSingle);

    EXPECT_RAISES(ERovaneInvalidArgument, m.Size(-1, 2), "TMtx.Rows and TMtx.Cols can not be smaller than zero!");
    ExpectShape(m, 1, 6, true);
}

TEST(Matrix, FromAVectorKeepsTheShapeOrRefuses) {
    TMtx m;
    m.Size(2, 3);
    TVec v;
    v.Size(6, true);
    m.Size(v);
    ExpectShape(m, 2, 3, true);
    v.Size(5);
    EXPECT_RAISES(ERovaneException, m.Size(v),
                  "TRovane.Size: Initializing matrix with vector having different length!");
    ExpectShape(m, 2, 3, true);
    m.SetLength(6);  // the present length is accepted, no other
    EXPECT_RAISES(ERovaneInvalidArgument, m.SetLength(7), "TMtx: Length can not be set. Use Size!");
    ExpectShape(m, 2, 3, true);
    // A vector sized from a matrix takes its total length.
    v.Size(m);
    EXPECT_EQ(v.Length(), 6);
    EXPECT_TRUE(v.Complex());
}

TEST(Matrix, ComplexSwitchHalvesAndDoublesColumnsInTheSameMemory) {
    TMtx m;
    m.Size(2, 4);
    for (int32_t i = 0; i < 8; ++i) m[i] = i + 1;
    const void* block = m.ValuesPointer;
    m.SetComplex(true);
    ExpectShape(m, 2, 2, true);
    EXPECT_EQ(m.Lastc(), TCplx(7, 8));
    m.SetComplex(false);
    ExpectShape(m, 2, 4, false);
    EXPECT_EQ(m.ValuesPointer, block);
    EXPECT_EQ(m[7], 8);
    {  // a refused Size leaves the shape alone
        TDoubleArray held = m.ValuesArray();
        EXPECT_THROW(m.Size(3, 3), ERovaneInvalidArgument);
        ExpectShape(m, 2, 4, false);
    }
}

TEST(Matrix, SubRangeOfRowsByColsAndBack) {
    TVec src;
    src.Size(12);
    for (int32_t i = 0; i < 12; ++i) src[i] = i;
    TMtx m;
    m.SetSubRange(src, 2, 3, 2);
    ExpectShape(m, 3, 2, false);
    EXPECT_EQ(m[0], 2);
    EXPECT_EQ(m[5], 7);
    EXPECT_RAISES(ERovaneException, m.Size(4, 4),
                  "TMtx.IsSubRange = True! Destination would need to be resized, but is already subranged from "
                  "another object. Both FloatPrecision and Length of source and destination would need to match.");
    m.SetFullRange();
    ExpectShape(m, 0, 0, false);

    TMtx own;
    own.Size(4, 4);
    own.SetSubRange(4, 4);  // one row of four
    ExpectShape(own, 1, 4, false);
    own.SetFullRange();
    ExpectShape(own, 4, 4, false);
}

TEST(Matrix, CachedMatrixMovesOffTheSlotAndBackAndResets) {
    TMtx* m = nullptr;
    CreateIt(m);
    void* slot = m->ValuesPointer;
    const int32_t slotElements = m->CacheLength();
    ASSERT_GT(slotElements, 16);
    m->Size(4, 4);
    EXPECT_EQ(m->ValuesPointer, slot);
    m->Size(slotElements + 1, 1);
    EXPECT_NE(m->ValuesPointer, slot);
    m->Size(2, 3, true, false);
    m->SetTag(7);
    m->Alfa = TCplx(2, 0);
    m->Reset();
    ExpectShape(*m, 0, 0, false);
    EXPECT_TRUE(m->IsDouble());
    EXPECT_EQ(m->ValuesPointer, slot);
    EXPECT_EQ(m->Alfa, TCplx(1, 0));
    EXPECT_EQ(m->Tag(), 0);
    FreeIt(m);
}

TEST(Matrix, AssignTakesShapeAndSettings) {
    TMtx a, b;
    a.Size(2, 3, true);
    a.SetVal(TCplx(1, 2));
    a.SetZeroTolerance(1e-3);
    b.Assign(a);
    ExpectShape(b, 2, 3, true);
    EXPECT_EQ(b.ZeroTolerance(), 1e-3);
    EXPECT_EQ(b.Lastc(), TCplx(1, 2));
    EXPECT_RAISES(ERovaneException, b.Assign(b), "TMtx.Assign: Src = Self");
}

TEST(Matrix, AssignCopiesTheSolverSettingsAndResetClearsThem) {
    TMtx a, b;
    a.Size(2, 2);
    a.FAutoMtxType = true;
    a.FBalance = btNone;
    a.FRefineSolution = true;
    a.FTriangleUnit = true;
    a.FSuperDiag = 3;
    a.FSubDiag = 1;
    b.Assign(a);
    EXPECT_TRUE(b.FAutoMtxType);
    EXPECT_EQ(b.FBalance, btNone);
    EXPECT_TRUE(b.FRefineSolution && b.FTriangleUnit);
    EXPECT_EQ(b.FSuperDiag, 3);
    EXPECT_EQ(b.FSubDiag, 1);
    b.Reset();
    TMtx fresh;
    EXPECT_EQ(b.FBalance, fresh.FBalance);
    EXPECT_EQ(b.FAutoMtxType, fresh.FAutoMtxType);
    EXPECT_EQ(b.FSuperDiag, 0);
    EXPECT_EQ(b.FTriangleForm, fresh.FTriangleForm);
}
