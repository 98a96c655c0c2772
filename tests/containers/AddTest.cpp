// The Add family on TVec: every member across precisions and complexities,
// the mixed real/complex rules, ranges, sub-ranges and the failure texts.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include "ContainerTestUtil.h"

#include <string>
#include <vector>

using namespace rovane;
using namespace rovane::test;

namespace {

class AddPrecision : public ::testing::TestWithParam<bool> {};

}  // namespace

TEST_P(AddPrecision, RealAndComplexInPlaceAndOutOfPlace) {
    const bool dbl = GetParam();
    TVec a, b, c;
    Fill(a, {1, 2, 3}, false, dbl);
    Fill(b, {10, 20, 30}, false, dbl);
    a.Add(b);
    EXPECT_EQ(Reals(a), (std::vector<double>{11, 22, 33}));

    Fill(a, {1, 2, 3, 4}, true, dbl);  // 1+2i, 3+4i
    Fill(b, {10, 20, 30, 40}, true, dbl);
    c.Add(a, b);
    EXPECT_TRUE(c.Complex());
    EXPECT_EQ(c.IsDouble(), dbl);
    EXPECT_EQ(Reals(c), (std::vector<double>{11, 22, 33, 44}));

    // complex Self, real operand: only the real parts change
    Fill(b, {100, 200}, false, dbl);
    a.Add(b);
    EXPECT_EQ(Reals(a), (std::vector<double>{101, 2, 203, 4}));

    // mixed operands out of place: the complex one decides the result kind
    Fill(a, {1, 2, 3, 4}, true, dbl);
    c.Add(b, a);
    EXPECT_TRUE(c.Complex());
    EXPECT_EQ(Reals(c), (std::vector<double>{101, 2, 203, 4}));
}

TEST_P(AddPrecision, RealSelfWithComplexOperandBecomesComplex) {
    const bool dbl = GetParam();
    TVec a, b;
    Fill(a, {1, 2}, false, dbl);
    Fill(b, {10, 1, 20, 2}, true, dbl);
    a.Add(b);
    ASSERT_TRUE(a.Complex());
    EXPECT_EQ(a.Length(), 2);
    EXPECT_EQ(Reals(a), (std::vector<double>{11, 1, 22, 2}));
}

TEST_P(AddPrecision, ScalarForms) {
    const bool dbl = GetParam();
    TVec a, b;
    Fill(a, {1, 2, 3, 4}, true, dbl);
    a.Add(1.0);  // adds to the real parts only
    EXPECT_EQ(Reals(a), (std::vector<double>{2, 2, 4, 4}));
    a.Add(TCplx(1, -1));
    EXPECT_EQ(Reals(a), (std::vector<double>{3, 1, 5, 3}));

    Fill(a, {1, 2}, false, dbl);
    a.Add(TCplx(0.5, 3));  // a real Self becomes complex
    ASSERT_TRUE(a.Complex());
    EXPECT_EQ(Reals(a), (std::vector<double>{1.5, 3, 2.5, 3}));

    Fill(a, {1, 2, 3}, false, dbl);
    b.Add(a, 2.0);
    EXPECT_EQ(Reals(b), (std::vector<double>{3, 4, 5}));
    b.Add(a, TCplx(1, 1));
    ASSERT_TRUE(b.Complex());
    EXPECT_EQ(Reals(b), (std::vector<double>{2, 1, 3, 1, 4, 1}));
    a.Add(0.25, 1, 2);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2.25, 3.25}));
    a.Add(TCplx(0, 1), 2, 1);  // the range form widens Self with zero imaginary parts
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 0, 2.25, 0, 3.25, 1}));
}

INSTANTIATE_TEST_SUITE_P(DoubleAndSingle, AddPrecision, ::testing::Bool());

TEST(Add, RangeFormsWriteOnlyTheirRange) {
    TVec a, b, c;
    Fill(a, {1, 2, 3, 4, 5});
    Fill(b, {10, 20, 30, 40, 50});
    a.Add(b, 1, 2, 3);  // a[2..4] += b[1..3]
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 23, 34, 45}));

    Fill(c, {0, 0, 0, 0});
    c.Add(a, b, 0, 3, 1, 2);  // c[1..2] = a[0..1] + b[3..4]
    EXPECT_EQ(Reals(c), (std::vector<double>{0, 41, 52, 0}));

    // both operands real, Self complex: real sum widened into the range
    Fill(c, {9, 9, 9, 9, 9, 9}, true);
    c.Add(a, b, 0, 0, 1, 2);
    EXPECT_EQ(Reals(c), (std::vector<double>{9, 9, 11, 0, 22, 0}));

    // a complex operand extends a real Self even for a zero length
    Fill(c, {1, 2});
    Fill(b, {1, 1, 2, 2}, true);
    c.Add(a, b, 0, 0, 0, 0);
    EXPECT_TRUE(c.Complex());
}

TEST(Add, WorksThroughSubRanges) {
    TVec a, b, view;
    Fill(a, {1, 2, 3, 4, 5, 6});
    Fill(b, {100, 200});
    view.SetSubRange(a, 2, 2);
    view.Add(b);
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 103, 204, 5, 6}));
    view.SetFullRange();

    a.SetSubRange(4, 2);
    a.Add(b);
    a.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 103, 204, 105, 206}));

    // complex data narrowed in complex units
    Fill(a, {1, 1, 2, 2, 3, 3}, true);
    a.SetSubRange(1, 2);
    a.Add(TCplx(10, 10));
    a.SetFullRange();
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 1, 12, 12, 13, 13}));
}

TEST(Add, FailureTextsAndConditionCheck) {
    TVec a, b, c;
    Fill(a, {1, 2, 3});
    Fill(b, {1, 2});
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(a); }, "TRovane.Add: Self = Vec");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(b); }, "TRovane.Add: Vec.Length <> Length");
    c.Size(3, false, false);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(c); }, "TRovane.Add: Vec.IsDouble <> IsDouble");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Add(a, b); }, "TRovane.Add: Vec1.Length <> Vec2.Length");
    Fill(b, {1, 2, 3});
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(a, b); }, "TRovane.Add: (Self = Vec1) or (Self = Vec2)");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.Add(a, c); }, "TRovane.Add: Vec1.IsDouble <> Vec2.IsDouble");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Add(a, 1.0); }, "TDenseRovane.Add: Vec = Self");
    ExpectMessage<ERovaneRangeError>([&] { a.Add(b, 1, 0, 3); },
                                     "X params out of range: XIndex: 1, Len: 3 , X.Length: 3");
    ExpectMessage<ERovaneRangeError>([&] { a.Add(1.0, 2, 2); },
                                     "Self params out of range: Index: 2, Len: 2, Length: 3");
    EXPECT_EQ(Reals(a), (std::vector<double>{1, 2, 3}));  // failures leave Self as it was

    // with checks off, Add(Vec, value) on Self runs in place
    a.SetConditionCheck(false);
    a.Add(a, 1.0);
    EXPECT_EQ(Reals(a), (std::vector<double>{2, 3, 4}));
}

TEST(Add, EmptySelfTakesTheKindOfTheOperand) {
    TVec a, b;
    Fill(b, {1, 2, 3, 4, 5, 6}, true);
    a.SetConditionCheck(false);
    a.Add(b);
    EXPECT_EQ(a.Length(), 0);
    EXPECT_TRUE(a.Complex());
    TVec e;
    e.Add(TCplx(1, 1));
    EXPECT_TRUE(e.Complex());
    EXPECT_EQ(e.Length(), 0);
}

TEST(Add, TemporariesGoBackToTheCache) {
    TRovanePoolItem& pool = *Controller->Pool[Controller->GetPoolIndex()];
    const int32_t before = pool.Vec.CacheUsedCount();
    TVec a, b;
    Fill(a, {1, 2});
    Fill(b, {1, 1, 2, 2}, true);
    a.Add(b);  // takes a temporary for the real-to-complex case
    EXPECT_EQ(pool.Vec.CacheUsedCount(), before);
    // a failure inside an operation still returns the temporary
    TVec h;
    Fill(h, {1, 2, 3});
    {
        TDoubleArray held = h.ValuesArray();
        EXPECT_THROW(h.Add(TCplx(1, 1)), ERovaneInvalidArgument);
    }
    EXPECT_EQ(pool.Vec.CacheUsedCount(), before);
}
