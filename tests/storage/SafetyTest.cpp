// The shared safety rules: ranges and sizes at the 32-bit limit, the
// allocation refusals, two-output members, and the conversions to and from
// integer containers.
#include <climits>
#include <cmath>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

TEST(Safety, RangesAtTheIntegerLimitAreRefusedNotWrapped) {
    TVec a, b;
    Ramp(a, 16);
    Ramp(b, 16);
    EXPECT_RAISES(ERovaneRangeError, a.SetSubRange(INT32_MAX - 2, 10),
                  "Self params out of range: Index: 2147483645, Len: 10, Length: 16");
    EXPECT_THROW(a.SetSubRange(b, 2, INT32_MAX), ERovaneRangeError);
    EXPECT_THROW(a.Copy(b, INT32_MAX - 2, 0, 10), ERovaneRangeError);
    EXPECT_THROW(a.Add(b, 0, INT32_MAX - 2, 10), ERovaneRangeError);
    EXPECT_THROW(a.Sin(b, INT32_MAX - 2, 0, 10), ERovaneRangeError);
    int32_t len = -1;
    EXPECT_THROW(a.ValidateParams(INT32_MIN, len), ERovaneRangeError);
    EXPECT_THROW(a.ValidateParams2(a, 0, 1, len = INT32_MAX), ERovaneRangeError);
    // A pushed level adds its offset without wrapping; the refused push has
    // raised the level already, as the stack rule says.
    a.SetSubRangeLevel(4, 8);
    EXPECT_THROW(a.SetSubRangeLevel(INT32_MAX - 1, 2), ERovaneRangeError);
    a.SetFullRangeLevel();
    a.SetFullRangeLevel();
    EXPECT_FALSE(a.IsSubRange());
    EXPECT_EQ(Reals(a)[15], 15.0);
}

TEST(Safety, ValidateParams2AllowsSelfWithItsOwnTexts) {
    TVec a, s;
    Ramp(a, 8);
    int32_t len = 4;
    EXPECT_NO_THROW(a.ValidateParams2(a, 2, 0, len));
    len = 4;
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams2(a, 6, 0, len), "X params out of range: XIndex: 6 Len: 4, Length: 8");
    s.Size(8, false, false);
    len = 2;
    EXPECT_RAISES(ERovaneRangeError, a.ValidateParams2(s, 0, 0, len),
                  "X param not matching floating point precision: fIsDouble <> X.fIsDouble");
}

TEST(Safety, SizesBeyondThirtyTwoBitsAreRefusedAndLeaveTheObjectUsable) {
    TMtx m;
    m.Size(3, 4);
    EXPECT_RAISES(ERovaneInvalidArgument, m.Size(65536, 65537), "TMtx.Size: Rows*Cols can not be larger than 2147483647!");
    EXPECT_EQ(m.Rows(), 3);
    EXPECT_EQ(m.Length(), 12);
    TVec v;
    try {
        v.Size(300000000);  // 2.4 GB of doubles
        ADD_FAILURE() << "no refusal";
    } catch (const std::bad_alloc& e) {
        EXPECT_STREQ(e.what(), "Rovane: Cannot allocate more than 2GB for 32bit application!");
    }
    v.Size(10);
    v.SetVal(1.5);
    EXPECT_EQ(Reals(v), std::vector<double>(10, 1.5));
}

TEST(Safety, TwoOutputsMustBeTwoObjects) {
    TVec x, a, c;
    x.SetIt({0.1, 0.2});
    EXPECT_RAISES(ERovaneInvalidArgument, x.SinCos(a, a), "TRovane.SinCos: SinX = CosX");
    EXPECT_RAISES(ERovaneInvalidArgument, x.SinhCosh(a, a), "TRovane.SinhCosh: SinhX = CoshX");
    EXPECT_RAISES(ERovaneInvalidArgument, x.TruncAndFrac(a, a), "TRovane.TruncAndFrac: TruncDst = FracDst");
    c.SetCplx({3, 4, 0, 1});
    EXPECT_RAISES(ERovaneInvalidArgument, c.CartToPolar(c, a),
                  "TVec.CartToPolar: (Self = AmpltVec) or (Self = PhaseVec)");
    EXPECT_RAISES(ERovaneInvalidArgument, c.CartToPolar(a, a), "TVec.CartToPolar: AmpltVec = PhaseVec");
    EXPECT_RAISES(ERovaneInvalidArgument, c.CplxToReal(a, a), "ReVec = ImVec");
    EXPECT_DOUBLE_EQ(c.CValues[0].Re, 3.0);  // Self untouched by the refusals
}

TEST(Safety, ExtendToComplexFromSelfAndFromRanges) {
    TVec a, c;
    Ramp(a, 4, 1);
    EXPECT_RAISES(ERovaneInvalidArgument, a.ExtendToComplex(a, true), "Self = Src");
    EXPECT_RAISES(ERovaneInvalidArgument, a.ExtendToComplex(a, true, 0, 0, 2), "Self = Src");
    c.Size(3, true);
    c.SetZero();
    EXPECT_THROW(c.ExtendToComplex(a, true, 3, 0, 2), ERovaneRangeError);
    EXPECT_THROW(c.ExtendToComplex(a, true, 0, 2, 2), ERovaneRangeError);
    // A complex source is copied whole, imaginary parts included.
    TVec z;
    z.SetCplx({1, -1, 2, -2});
    c.ExtendToComplex(z, true, 0, 1, 2);
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{TCplx(0, 0), TCplx(1, -1), TCplx(2, -2)}));
    c.ExtendToComplex(a, false, 1, 0, 1);
    EXPECT_EQ(Cplxs(c)[0], TCplx(2, 2));
}

TEST(Safety, IntegerContainersBothWays) {
    TVecInt i;
    i.Size(4, prInt16);
    const int16_t in[] = {-3, 0, 7, 32767};
    for (int k = 0; k < 4; ++k) i.SIValues[k] = in[k];
    TVec v;
    v.Size(1, false, false);  // single
    v.Copy(i);
    EXPECT_FALSE(v.IsDouble());
    EXPECT_EQ(v.Length(), 4);
    EXPECT_EQ(v[3], 32767.0);
    v.Copy(i, rvDoubleComplex);
    EXPECT_EQ(Cplxs(v)[2], TCplx(7, 0));
    v.Copy(i, 1, 2, 2);  // into element 2 and 3, real parts
    EXPECT_EQ(Cplxs(v)[3], TCplx(7, 0));
    EXPECT_THROW(v.Copy(i, 3, 0, 2), ERovaneRangeError);

    // Floats to integers: rounding as asked, saturation, NaN to 0, complex
    // data interleaved.
    TVec f;
    f.SetIt({2.5, -2.5, 1e12, -1e12, NAN_, 300.7});
    TVecInt d;
    d.Size(0, prInt32);
    f.CopyTo(d, rnRound);
    const std::vector<int32_t> rounded{2, -2, INT32_MAX, INT32_MIN, 0, 301};
    EXPECT_EQ(std::vector<int32_t>(d.IValues, d.IValues + 6), rounded);
    d.Size(0, prInt8);
    f.CopyTo(d, rnTrunc);
    EXPECT_EQ(std::vector<uint8_t>(d.BValues, d.BValues + 6), (std::vector<uint8_t>{2, 0, 255, 0, 0, 255}));
    TVec z;
    z.SetCplx({1.4, -1.6, 9, 9});
    d.Size(5, prInt16);
    z.CopyTo(d, rnRound, 1, 0, 1);
    EXPECT_EQ(d.SIValues[1], 1);
    EXPECT_EQ(d.SIValues[2], -2);
    EXPECT_THROW(z.CopyTo(d, rnRound, 4, 0, 1), ERovaneRangeError);
}
