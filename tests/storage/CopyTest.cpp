// Copy family, fills, first and last elements, and array transfers.
#include <vector>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

TEST(Copy, WholeObjectTakesLengthAndPrecision) {
    TVec a, b;
    a.Size(3, true, false);
    a.SCValues[0] = TSCplx(1, 2);
    a.SCValues[2] = TSCplx(5, 6);
    b.Copy(a);
    EXPECT_EQ(b.FloatPrecision(), rvSingleComplex);
    EXPECT_EQ(b.Length(), 3);
    EXPECT_EQ(b.SCValues[2], TSCplx(5, 6));
    EXPECT_RAISES(ERovaneInvalidArgument, b.Copy(b), "TRovane.Copy: Vec = Self");
    TVec e;
    b.Copy(e);
    EXPECT_EQ(b.Length(), 0);
}

TEST(Copy, RangesBetweenRealAndComplex) {
    TVec r, c;
    Ramp(r, 6);
    CRamp(c, 4);
    // Complex source into a real Self: Self is extended first, its values
    // going to the real parts.
    r.Copy(c, 1, 2, 2);
    EXPECT_TRUE(r.Complex());
    EXPECT_EQ(r.Length(), 6);
    EXPECT_EQ(Cplxs(r), (std::vector<TCplx>{{0, 0}, {1, 0}, {1, -1}, {2, -2}, {4, 0}, {5, 0}}));

    // Real source into a complex Self: zero imaginary parts.
    TVec s;
    Ramp(s, 3, 10);
    c.Copy(s, 0, 1, 3);
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{0, 0}, {10, 0}, {11, 0}, {12, 0}}));

    TVec f;
    f.Size(4, false, false);
    EXPECT_RAISES(ERovaneRangeError, c.Copy(f, 0, 0, 2),
                  "X params not matching floating point precision: fIsDouble <> X.fIsDouble");
    EXPECT_RAISES(ERovaneRangeError, c.Copy(s, 1, 0, 3), "X params out of range: XIndex: 1, Len: 3 , X.Length: 3");
}

TEST(Copy, PrecisionConversions) {
    TVec d, s, z;
    Ramp(d, 4, 0.5);
    d.Values[1] = 1.0 / 3.0;
    s.Copy(d, rvSingle);
    EXPECT_FALSE(s.IsDouble());
    EXPECT_EQ(s.SValues[1], static_cast<float>(1.0 / 3.0));
    EXPECT_EQ(s.SValues[3], 3.5f);
    d.CopyTo(z, rvSingleComplex);
    EXPECT_EQ(z.FloatPrecision(), rvSingleComplex);
    EXPECT_EQ(z.SCValues[3], TSCplx(3.5f, 0));
    TVec back;
    s.CopyTo(back, rvDouble);
    EXPECT_EQ(back.Values[1], double(static_cast<float>(1.0 / 3.0)));
    s.CopyTo(back);
    EXPECT_EQ(back.FloatPrecision(), rvSingle);
    // In place with a new precision goes through a temporary.
    d.CopyTo(d, rvSingle);
    EXPECT_EQ(d.FloatPrecision(), rvSingle);
    EXPECT_EQ(d.SValues[3], 3.5f);
}

TEST(Copy, RangedCopyToConvertsWidthButNotBothKinds) {
    TVec d, s;
    Ramp(d, 5);
    s.Size(5, false, false);
    s.SetZero();
    d.CopyTo(s, 1, 2, 3);  // d[2..4] into s[1..3]
    EXPECT_EQ(std::vector<float>(s.SValues, s.SValues + 5), (std::vector<float>{0, 2, 3, 4, 0}));
    s.CopyTo(d, 0, 1, 2);
    EXPECT_EQ(Reals(d), (std::vector<double>{2, 3, 2, 3, 4}));

    TVec sc;
    sc.Size(5, true, false);
    EXPECT_RAISES(ERovaneInvalidArgument, d.CopyTo(sc, 0, 0, 2),
                  "CopyTo: (IsDouble <> Dst.IsDouble) and (Complex <> Dst.Complex)");
    // Complex into real of the same width extends the destination.
    TVec c, r;
    CRamp(c, 3);
    Ramp(r, 3);
    c.CopyTo(r, 2, 1, 1);
    EXPECT_EQ(Cplxs(r), (std::vector<TCplx>{{0, 0}, {1, 0}, {1, -1}}));
    EXPECT_RAISES(ERovaneRangeError, c.CopyTo(r, 2, 0, 2), "Self params out of range: Index: 2, Len: 2, Length: 3");
}

TEST(Copy, FillsAndEndElements) {
    TVec v;
    Ramp(v, 5);
    v.SetVal(2.5, 1, 2);
    EXPECT_EQ(Reals(v), (std::vector<double>{0, 2.5, 2.5, 3, 4}));
    v.SetZero(3, -1);
    EXPECT_EQ(Reals(v), (std::vector<double>{0, 2.5, 2.5, 0, 0}));
    EXPECT_EQ(v.First(), 0.0);
    v.Values[4] = 8;
    EXPECT_EQ(v.Last(), 8.0);
    EXPECT_RAISES(ERovaneRangeError, v.SetVal(1.0, 4, 2), "Self params out of range: Index: 4, Len: 2, Length: 5");

    // A complex value on a real range extends Self with zero imaginary parts.
    v.SetVal(TCplx(1, 2), 1, 1);
    EXPECT_EQ(Cplxs(v), (std::vector<TCplx>{{0, 0}, {1, 2}, {2.5, 0}, {0, 0}, {8, 0}}));
    EXPECT_EQ(v.Firstc(), TCplx(0, 0));
    EXPECT_EQ(v.Lastc(), TCplx(8, 0));
    v.SetVal(3.0);  // a real value on complex data: zero imaginary parts
    EXPECT_EQ(v.CValues[4], TCplx(3, 0));

    TVec w;
    Ramp(w, 3);
    w.SetVal(TCplx(-1, 1));
    EXPECT_EQ(Cplxs(w), std::vector<TCplx>(3, TCplx(-1, 1)));

    TVec s;
    s.Size(3, true, false);
    s.SetVal(TCplx(0.1, 0.2));
    EXPECT_EQ(s.SCValues[1], TSCplx(0.1f, 0.2f));
    EXPECT_EQ(s.Firstc(), TCplx(double(0.1f), double(0.2f)));
}

TEST(Copy, ListsAndElementProperty) {
    TVec v;
    v.SetIt({1, 2, 3});
    EXPECT_FALSE(v.Complex());
    EXPECT_EQ(Reals(v), (std::vector<double>{1, 2, 3}));
    v.SetCplx({1, 2, 3, 4});
    EXPECT_TRUE(v.Complex());
    EXPECT_EQ(Cplxs(v), (std::vector<TCplx>{{1, 2}, {3, 4}}));

    TVec s;
    s.Size(4, false, false);
    s.SetIt({0.5, 1.5, 2.5});
    EXPECT_FALSE(s.IsDouble());
    EXPECT_EQ(s.Length(), 3);
    s[1] = 7.25;
    EXPECT_EQ(s.SValues[1], 7.25f);
    EXPECT_EQ(double(s[2]), 2.5);
    const TVec& cs = s;
    EXPECT_EQ(cs[0], 0.5);
    s[0] = s[1];
    EXPECT_EQ(s.SValues[0], 7.25f);
    const double more[] = {9, 8};
    s.SetDouble(more);
    EXPECT_EQ(s.SValues[1], 8.0f);
    EXPECT_EQ(s.SValues[2], 2.5f);
}

TEST(Copy, ArrayTransfers) {
    const std::vector<double> d = {10, 11, 12, 13, 14, 15};
    const std::vector<double> d3 = {1, 2, 3};
    TVec r;
    Ramp(r, 5);
    r.CopyFromArray(std::span<const double>(d), 1, 2, 2);
    EXPECT_EQ(Reals(r), (std::vector<double>{0, 1, 11, 12, 4}));
    EXPECT_RAISES(ERovaneRangeError, r.CopyFromArray(std::span<const double>(d3)),
                  "ValidateRealArrayIndexes: (SrcIndex + Len) > SrcLen, (0 + 5) > 3");
    const std::vector<TCplx> z = {{1, 2}, {3, 4}, {5, 6}};
    EXPECT_RAISES(ERovaneInvalidArgument, r.CopyFromArray(std::span<const TCplx>(z)),
                  "ValidateCplxArrayIndexes: Self must be Complex");

    // A real array fills complex data interleaved, twice the length.
    TVec c;
    c.Size(3, true);
    c.CopyFromArray(std::span<const double>(d));
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{10, 11}, {12, 13}, {14, 15}}));
    c.CopyFromArray(std::span<const TCplx>(z), 1, 1, 2);
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{10, 11}, {3, 4}, {5, 6}}));

    TVec s;
    s.Size(3, false, false);
    const std::vector<int32_t> i32 = {1, -2, 70000};
    const std::vector<int16_t> i16 = {-300};
    const std::vector<uint8_t> u8 = {255, 7};
    s.CopyFromArray(std::span<const int32_t>(i32));
    EXPECT_EQ(s.SValues[2], 70000.0f);
    s.CopyFromArray(std::span<const int16_t>(i16), 0, 1, 1);
    EXPECT_EQ(s.SValues[1], -300.0f);
    s.CopyFromArray(std::span<const uint8_t>(u8), 0, 1, 2);
    EXPECT_EQ(std::vector<float>(s.SValues, s.SValues + 3), (std::vector<float>{1, 255, 7}));

    TDoubleArray flat;
    c.SizeToArray(flat);
    EXPECT_EQ(flat.Length(), 6);
    c.CopyToArray(flat);
    EXPECT_EQ(std::vector<double>(flat.data(), flat.data() + 6), (std::vector<double>{10, 11, 3, 4, 5, 6}));
    TCplxArray pairs;
    c.SizeToArray(pairs);
    EXPECT_EQ(pairs.Length(), 3);
    c.CopyToArray(pairs, 1, 2, 1);
    EXPECT_EQ(pairs[1], TCplx(5, 6));
    TSCplxArray spairs(3);
    c.CopyToArray(spairs);
    EXPECT_EQ(spairs[1], TSCplx(3, 4));

    TVec q;
    q.SetIt({1.5, -2.5, 2.7, -0.4});
    TIntegerArray ints;
    q.SizeToArray(ints);
    const auto all = [](const auto& a) { return std::vector(a.data(), a.data() + a.Length()); };
    q.CopyToArray(ints, rnTrunc);
    EXPECT_EQ(all(ints), (std::vector<int32_t>{1, -2, 2, 0}));
    q.CopyToArray(ints, rnRound);
    EXPECT_EQ(all(ints), (std::vector<int32_t>{2, -2, 3, 0}));
    TSingleArray fl(6);
    q.CopyToArray(fl, 2, 1, 3);
    EXPECT_EQ(all(fl), (std::vector<float>{0, 0, -2.5f, 2.7f, -0.4f, 0}));
}
