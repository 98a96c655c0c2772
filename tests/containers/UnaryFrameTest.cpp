// The four forms of a unary member, shown on Sqrt: in place, ranges, out of
// place with sizing, range into an existing Self, and their failure texts.
#include <cmath>

#include "ContainerTestUtil.h"

using namespace rovane;
using namespace rovane::test;

TEST(UnaryFrame, FourFormsAcrossPrecisions) {
    for (bool isDouble : {true, false}) {
        TVec a, b;
        Fill(a, {4, 9, 16, 25}, false, isDouble);
        b.Sqrt(a);
        EXPECT_EQ(b.Length(), 4);
        EXPECT_EQ(b.IsDouble(), isDouble);
        EXPECT_EQ(Reals(b), (std::vector<double>{2, 3, 4, 5}));

        a.Sqrt(1, 2);
        EXPECT_EQ(Reals(a), (std::vector<double>{4, 3, 4, 25}));
        a.Sqrt(3, -1);  // -1 runs to the end
        EXPECT_EQ(Reals(a), (std::vector<double>{4, 3, 4, 5}));

        Fill(b, {0, 0, 0}, false, isDouble);
        b.Sqrt(a, 0, 1, 2);
        const double r3 = isDouble ? std::sqrt(3.0) : double(std::sqrt(3.0f));
        EXPECT_EQ(Reals(b), (std::vector<double>{0, 2, r3}));
        a.Sqrt();
        EXPECT_EQ(a[0], 2);
    }
}

TEST(UnaryFrame, ComplexTakesTheComplexPath) {
    TVec a, b;
    Fill(a, {-4, 0, 0, 2}, true);
    b.Sqrt(a);
    ASSERT_TRUE(b.Complex());
    EXPECT_EQ(Reals(b), (std::vector<double>{0, 2, 1, 1}));
}

TEST(UnaryFrame, FailureTexts) {
    TVec a, b;
    Fill(a, {1, 2, 3});
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Sqrt(a); }, "Sqrt: X = Self");
    Fill(b, {1, 2, 3, 4}, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { b.Sqrt(a, 0, 0, 2); }, "Sqrt: Self.Complex <> X.Complex");
    ExpectMessage<ERovaneRangeError>([&] { a.Sqrt(2, 2); }, "Self params out of range: Index: 2, Len: 2, Length: 3");
}

TEST(UnaryFrame, CompositionsAreTheSameAcrossChunkBoundaries) {
    // Long complex runs are composed chunk by chunk; every element must come
    // out as it does when computed on its own.
    TVec x, whole, single;
    const int32_t n = 5003;
    x.Size(n, true);
    for (int32_t i = 0; i < 2 * n; ++i) x[i] = std::sin(0.37 * i) * 3;
    single.Size(n, true);
    using Whole = TRovane& (TRovane::*)(const TRovane&);
    using Range = TRovane& (TRovane::*)(const TRovane&, int32_t, int32_t, int32_t);
    const std::pair<Whole, Range> ops[] = {{&TRovane::Exp, &TRovane::Exp},
                                           {&TRovane::Sin, &TRovane::Sin},
                                           {&TRovane::Ln, &TRovane::Ln}};
    for (const auto& [w, r] : ops) {
        (whole.*w)(x);
        for (int32_t i = 0; i < n; i += 97) {
            (single.*r)(x, i, i, 1);
            EXPECT_EQ(whole[2 * i], single[2 * i]) << i;
            EXPECT_EQ(whole[2 * i + 1], single[2 * i + 1]) << i;
        }
    }
}

TEST(UnaryFrame, BlockLoopsGiveTheWholeRunResult) {
    // Elementwise members on the blocks of a source, real and complex, agree
    // with one call on the whole run.
    for (bool complex : {false, true}) {
        TVec src, whole, view, y;
        src.Size(2500, complex);
        for (int32_t i = 0; i < (complex ? 5000 : 2500); ++i) src[i] = 0.001 * i - 1.2;
        whole.Sin(src);
        y.Size(src);
        y.SetVal(0.5);
        TVec expect;
        expect.Add(whole, y);
        view.BlockInit(src, 700);
        while (!view.BlockEnd()) {
            view.Sin();
            view.Add(0.5);
            view.BlockNext();
        }
        EXPECT_EQ(Reals(src), Reals(expect)) << complex;
    }
}
