// Core scalar layer: constant bit patterns, the start sequence, equality
// classes, factorials, counted arrays, format texts and machine services.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cmath>
#include <iterator>
#include <thread>
#include <vector>

using namespace rovane;

namespace {
uint64_t Bits(double v) { return std::bit_cast<uint64_t>(v); }
uint32_t Bits(float v) { return std::bit_cast<uint32_t>(v); }
}  // namespace

TEST(Constants, MachineConstantsHaveTheirExactBitPatterns) {
    const std::vector<uint64_t> d = {Bits(MACHEP), Bits(MINNUM), Bits(MAXLOG),
                                     Bits(MINLOG), Bits(MAXGAM), Bits(DOUBLE_SQRT_EPS)};
    EXPECT_EQ(d, (std::vector<uint64_t>{0x3CB0000000000000, 0x0010000000000001, 0x40862E42FEFA39EF,
                                        0xC086232BDD7ABCD2, 0x406573FAE561F62E, 0x3E5000000000B3DB}));
    EXPECT_EQ((std::vector{Bits(MACHEP_SINGLE), Bits(EPS_SINGLE), Bits(SQRTEPS_SINGLE), Bits(MAXNUM_SINGLE),
                           Bits(MINNUM_SINGLE)}),
              (std::vector<uint32_t>{0x34000001, 0x34000001, 0x39B504F4, 0x7F7FFFFD, 0x00800005}));
    EXPECT_EQ(MAXFAC, 170.0);
    EXPECT_EQ(MAXLGM, 2.556348e+305);
}

TEST(Constants, MathConstantsAreCorrectlyRoundedAndTwinsAreNarrowed) {
    const long double pi = 3.141592653589793238462643383279502884L;
    EXPECT_EQ(PI, static_cast<double>(pi));
    EXPECT_EQ(TWOPI, static_cast<double>(2 * pi));
    EXPECT_EQ(PIDIV2, static_cast<double>(pi / 2));
    EXPECT_EQ(LN2, static_cast<double>(std::log(2.0L)));
    EXPECT_EQ(LN10, static_cast<double>(std::log(10.0L)));
    EXPECT_EQ(SQRT2, static_cast<double>(std::sqrt(2.0L)));
    EXPECT_EQ(INVSQRT2PI, static_cast<double>(1 / std::sqrt(2 * pi)));
    EXPECT_EQ(LNSQRT2PI, LN2PIDIV2);
    EXPECT_EQ(PI_SINGLE, static_cast<float>(PI));
    EXPECT_EQ(EULERGAMMA_SINGLE, static_cast<float>(EULERGAMMA));
    EXPECT_EQ(C_PI_DIV_2.Re, PIDIV2);
    EXPECT_EQ(C_I_SINGLE.Im, 1.0f);
}

TEST(StartSequence, NormalisesSpecialValuesAndComputesSettings) {
    EXPECT_GE(ScalarsInitCount(), 1);
    EXPECT_EQ((std::vector{Bits(NAN_), Bits(CNAN.Re), Bits(CNAN.Im)}), std::vector<uint64_t>(3, 0x7FF8000000000000));
    EXPECT_EQ((std::vector{Bits(NAN_SINGLE), Bits(CNAN_SINGLE.Re), Bits(CNAN_SINGLE.Im)}),
              std::vector<uint32_t>(3, 0xFFC00000));
    EXPECT_TRUE(std::isinf(INF) && INF > 0);
    EXPECT_TRUE(std::isinf(CINF.Re) && std::isinf(CINF.Im));
    EXPECT_EQ(GradStepSize, 0.0014511662979853012);
    EXPECT_EQ(GradStepSizeSingle, 0.02563548f);
    ASSERT_EQ(RovanePrimeArray.Length(), 1000);
    EXPECT_EQ(RovanePrimeArray[0], 2);
    EXPECT_EQ(RovanePrimeArray[999], 7919);
    EXPECT_EQ(RovaneBlockSize, 1000);
    EXPECT_EQ(RovaneMemoryAlignment, 128);
}

TEST(StartSequence, RepeatedInitialisationOnlyCounts) {
    const int32_t before = ScalarsInitCount();
    InitScalars();
    EXPECT_EQ(ScalarsInitCount(), before + 1);
    EXPECT_EQ(Bits(NAN_), 0x7FF8000000000000ull);  // not flipped a second time
    FinalizeScalars();
    EXPECT_EQ(ScalarsInitCount(), before);
    EXPECT_EQ(RovanePrimeArray.Length(), 1000);  // the last finalisation has not run
}

TEST(StartSequence, FloatingPointExceptionsAreMasked) {
    volatile double zero = 0.0;
    EXPECT_TRUE(std::isinf(1.0 / zero));
    EXPECT_TRUE(std::isnan(zero / zero));
    volatile long double lz = 0.0L;
    EXPECT_TRUE(std::isnan(lz / lz));
}

TEST(Equality, NonFiniteValuesCompareAsClasses) {
    // {a, b, equal}: an infinity is not in the NaN class
    for (auto [a, b, eq] : {std::tuple{NAN_, NAN_, true}, {NAN_, -NAN_, true}, {INF, -INF, true}, {1.0, NAN_, false},
                            {NAN_, 1.0, false}, {INF, 1.0, false}, {INF, NAN_, false}, {0.0, -0.0, true}})
        EXPECT_EQ(Equal(a, b), eq) << a << " " << b;
    EXPECT_FALSE(Equal(INF, 1.0, 1e300));
    EXPECT_TRUE(Equal(NAN_SINGLE, NAN_SINGLE));
    // complex: a NaN or infinity in either part decides
    EXPECT_TRUE(Equal(TCplx(1, NAN_), TCplx(NAN_, 2)));
    EXPECT_TRUE(Equal(TCplx(INF, 0), TCplx(0, -INF)));
    EXPECT_FALSE(Equal(TCplx(INF, 0), TCplx(0, NAN_)));
    EXPECT_TRUE(TCplx(1, 2) == TCplx(1, 2));
    EXPECT_FALSE(TCplx(1, 2) == TCplx(1, 3));
    EXPECT_TRUE(TCplx(3, 0) == 3.0);
    EXPECT_TRUE(2.0f == TSCplx(2.0f, 0.0f));
    EXPECT_TRUE(TCplx(1, 2) != TCplx(2, 1));
}

TEST(Equality, ToleranceFormsAndOrderTests) {
    EXPECT_TRUE(Equal(1.0, 1.1, 0.11));
    EXPECT_FALSE(Equal(1.0, 1.2, 0.1));
    EXPECT_TRUE(Equal(TCplx(0, 0), TCplx(3, 4), 5.0));  // modulus of the difference
    EXPECT_FALSE(Equal(TCplx(0, 0), TCplx(3, 4), 4.9));
    EXPECT_TRUE(Equal(NAN_, NAN_, 0.0));
    // a pair closer than the tolerance is neither bigger nor smaller
    EXPECT_FALSE(Bigger(1.05, 1.0, 0.1) || Smaller(1.0, 1.05, 0.1));
    EXPECT_TRUE(Bigger(1.2, 1.0, 0.1) && Smaller(1.0, 1.2, 0.1));
    EXPECT_FALSE(Bigger(NAN_, 1.0, 0.0) || Smaller(1.0, NAN_, 0.0));
    EXPECT_FALSE(Smaller(NAN_SINGLE, 1.0f, 0.0f));
}

TEST(ComplexRecords, IsComplexAndConversions) {
    EXPECT_TRUE(TCplx(1, NAN_).IsComplex());
    EXPECT_FALSE(TCplx(1, 0.0).IsComplex());
    EXPECT_FALSE(TCplx(1, -0.0).IsComplex());
    EXPECT_EQ(static_cast<double>(TCplx(2.5, 7)), 2.5);
    EXPECT_EQ(static_cast<int32_t>(TCplx(-2.9, 7)), -2);
    EXPECT_EQ(TCplx(int64_t{5}).Im, 0.0);
    const TSCplx s(TCplx(1.0 / 3.0, 2));
    EXPECT_EQ(s.Re, 1.0f / 3.0f);
    EXPECT_EQ(TCplx(s).Re, static_cast<double>(1.0f / 3.0f));
}

TEST(ComplexRecords, ArithmeticInAllThreeForms) {
    const TCplx a(3, 4), b(1, -2);
    // {got, want}; real divided by complex: k = 25 / 25 = 1, result (Re k, -Im k)
    const std::pair<TCplx, TCplx> cases[] = {{a * b, {11, -2}},  {a / b, {-1, 2}},    {a + 1.0, {4, 4}},
                                             {1.0 - a, {-2, -4}}, {2.0 * a, {6, 8}},   {a / 2.0, {1.5, 2}},
                                             {-a, {-3, -4}},      {25.0 / a, {3, -4}}};
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_TRUE(cases[i].first == cases[i].second) << "case " << i;
    // division by a complex zero gives non-finite parts, not a failure
    const TCplx q = a / TCplx(0, 0);
    EXPECT_FALSE(std::isfinite(q.Re));
    const TSCplx fs = TSCplx(1.5f, 2.0f) * TSCplx(2.0f, 0.5f);
    EXPECT_EQ(fs.Re, 2.0f);
    EXPECT_EQ(fs.Im, 4.75f);
}

TEST(Factorial, TableGammaAndLimits) {
    EXPECT_TRUE(std::isnan(Fact(-1)));
    EXPECT_TRUE(std::signbit(Fact(-1)));  // the negated NAN_
    EXPECT_EQ(Fact(20), 2432902008176640000.0);
    EXPECT_EQ(Fact(30), 265252859812191058636308480000000.0);
    EXPECT_NEAR(Fact(31) / 8.22283865417792281772556288e33, 1.0, 1e-15);
    EXPECT_EQ(Factf(34), INF_SINGLE);
    EXPECT_TRUE(std::isfinite(Factf(33)));
}

TEST(MachineServices, AlignmentTruncDivAndBitSets) {
    // On the boundary already: the next one.
    for (auto [p, k] : {std::pair{0x1000u, 8}, {0x1001u, 8}, {0x107Fu, 1}}) EXPECT_EQ(AllignMem(p, k), 0x1080u) << p;
    EXPECT_EQ(AllignMemOffset(0x1040, 8), 8);
    EXPECT_EQ(TruncDiv(7.0, 3.0), 6.0);
    EXPECT_EQ(TruncDiv(-7.0, 3.0), -6.0);
    EXPECT_EQ(TruncDiv(int32_t{-7}, int32_t{3}), -6);
    EXPECT_EQ(TruncDivf(7.5f, 2.0f), 6.0f);
    EXPECT_EQ(SetInclude(0b0101u, 0b0010u), 0b0111u);
    EXPECT_EQ(SetExclude(0b0111u, 0b0010u), 0b0101u);
    EXPECT_TRUE(SetContains(0b0101ull, 0b0100ull));
    EXPECT_FALSE(SetContains(0b0101u, 0b1010u));
    void* p = GlobalAllocUnmanaged(0);
    EXPECT_EQ(p, nullptr);
    p = GlobalAllocUnmanaged(64);
    ASSERT_NE(p, nullptr);
    GlobalFreeUnmanaged(p);
    EXPECT_EQ(p, nullptr);
    GlobalFreeUnmanaged(p);  // null is ignored
}

TEST(MachineServices, RoundToTruncBracket) {
    const uint32_t saved = SetRoundToTrunc();
    volatile double x = 2.7;
    EXPECT_EQ(std::nearbyint(x), 2.0);
    RestoreRound(saved);
    EXPECT_EQ(std::nearbyint(x), 3.0);
}

TEST(MachineServices, InterlockedCountersAcrossThreads) {
    std::atomic<int32_t> counter{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 10000; ++i) IntInterlockedIncrement(counter);
        });
    for (auto& t : threads) t.join();
    EXPECT_EQ(counter.load(), 40000);
    EXPECT_EQ(IntInterlockedDecrement(counter), 39999);
    EXPECT_EQ(IntInterlockedExchange(counter, 5), 39999);
    EXPECT_NE(IntGetCurrentThreadId(), 0u);
}

TEST(CountedArrays, HeaderSharingAndRelease) {
    TDoubleArray a(5);
    ASSERT_EQ(a.Length(), 5);
    EXPECT_EQ(a.RefCount(), 1);
    EXPECT_EQ(a[4], 0.0);  // value-initialised
    // the two header words sit directly in front of the first element
    const auto* words = reinterpret_cast<const int32_t*>(a.data()) - 2;
    EXPECT_EQ(words[0], 1);
    EXPECT_EQ(words[1], 5);
    {
        TDoubleArray b = a;
        EXPECT_EQ(a.RefCount(), 2);
        EXPECT_EQ(words[0], 2);
        TDoubleArray c = TDoubleArray::Share(a.data());
        EXPECT_EQ(a.RefCount(), 3);
        c[1] = 7;
    }
    EXPECT_EQ(a.RefCount(), 1);
    EXPECT_EQ(a[1], 7.0);
    a.SetLength(8);
    EXPECT_EQ(a.Length(), 8);
    EXPECT_EQ(a[1], 7.0);
    EXPECT_EQ(a[7], 0.0);
    EXPECT_EQ(aGetLength(a), 8);
    aSetLength(a, 0);
    EXPECT_TRUE(a.empty());
}

TEST(CountedArrays, SetLengthOnASharedArrayLeavesTheOtherHolder) {
    TIntegerArray a{1, 2, 3};
    TIntegerArray b = a;
    b.SetLength(2);
    EXPECT_EQ(a.Length(), 3);
    EXPECT_EQ(b.Length(), 2);
    b[0] = 9;
    EXPECT_EQ(a[0], 1);
    T2DStringArray nested(2);
    nested[1] = TStringArray(3);
    nested[1][2] = "kept";
    T2DStringArray alias = nested;
    nested = T2DStringArray();
    EXPECT_EQ(alias[1][2], "kept");
}

TEST(FailureFunctions, ClassesAndFormattedMessages) {
    try {
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", 3, -1, 10);
        FAIL();
    } catch (const ERovaneRangeError& e) {
        EXPECT_STREQ(e.what(), "Self params out of range: Index: 3, Len: -1, Length: 10");
    }
    EXPECT_THROW(EInvalidArgumentRaise("x"), ERovaneInvalidArgument);
    EXPECT_THROW(ERaise("x"), ERovaneException);
    try {
        EInvalidArgumentRaise("Invalid params: X is equal to Self");
    } catch (const ERovaneException& e) {  // the family root catches everything
        EXPECT_STREQ(e.what(), "Invalid params: X is equal to Self");
    }
}

TEST(FailureFunctions, FormatTextGrammar) {
    EXPECT_EQ(FormatText("%s = %d%%", {"RefCount", 2}), "RefCount = 2%");
    EXPECT_EQ(FormatText("%5d|%-5d|", {42, 42}), "   42|42   |");
    EXPECT_EQ(FormatText("%.3d", {7}), "007");
    EXPECT_EQ(FormatText("%1:s %0:s", {"b", "a"}), "a b");
    EXPECT_EQ(FormatText("%g", {0.1}), "0.1");
    EXPECT_EQ(FormatText("%.2f", {2.345}), "2.35");
    EXPECT_EQ(FormatText("%x", {255}), "ff");
    EXPECT_EQ(FormatText("%n", {1234567.891}), "1,234,567.89");
    EXPECT_THROW(FormatText("%d", {"text"}), ERovaneException);
    EXPECT_THROW(FormatText("%d %d", {1}), ERovaneException);
}
