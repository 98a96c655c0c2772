#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace rovane;

namespace {

std::string ParseError(std::string_view s, double (*parse)(std::string_view)) {
    try {
        parse(s);
    } catch (const std::invalid_argument& e) {
        return e.what();
    }
    return "no error";
}

}  // namespace

// ---------------------------------------------------------------------------
// Text to number
// ---------------------------------------------------------------------------
TEST(StrToVal, SpecialWordsAndStrictConversion) {
    EXPECT_EQ(std::bit_cast<uint64_t>(StrToVal("NAN")), std::bit_cast<uint64_t>(NAN_));
    EXPECT_TRUE(std::isnan(StrToVal("-NAN")));
    EXPECT_EQ(StrToVal("INF"), INF);
    EXPECT_EQ(StrToVal("-INF"), -INF);
    EXPECT_EQ(StrToVal(" INF"), INF);  // 'I' may be the second character
    EXPECT_EQ(StrToVal(" 2.5\t"), 2.5);
    EXPECT_EQ(StrToVal("+.5"), 0.5);
    EXPECT_EQ(StrToVal("5."), 5.0);
    EXPECT_EQ(StrToVal("-1.25E-3"), -1.25e-3);
    EXPECT_EQ(StrToDouble("1e400"), INF);
    EXPECT_EQ(StrToSample("-1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(StrToSample("-1e-400")));
    // The words are upper case only; "1A2" has an 'A' without the word.
    for (const char* bad : {" -INF", "nan", "NaN", "inf", "  INF", "1A2", "", " ", "1.2.3", "1e", "1e+", ".", "-",
                            "0x10", "1,5", "1 2", "1d5", "++1", "infinity"})
        EXPECT_EQ(ParseError(bad, StrToVal), "'" + std::string(bad) + "' is not a valid floating point value") << bad;
}

TEST(StrToVal, SingleIsRoundedOnceFromText) {
    // Just above the midpoint between 1 and the next float: rounding through
    // double would land on the midpoint and tie to 1.0f.
    EXPECT_EQ(StrToSingle("1.000000059604644775390625000001"), std::nextafter(1.0f, 2.0f));
    EXPECT_EQ(StrToSingle("0.1"), 0.1f);
    EXPECT_EQ(std::bit_cast<uint32_t>(StrToSingle("NAN")), std::bit_cast<uint32_t>(NAN_SINGLE));
    EXPECT_EQ(StrToSingle("-INF"), -INF_SINGLE);
    EXPECT_EQ(StrToSingle("1e39"), INF_SINGLE);
}

TEST(StrToCplx, SignsExponentsAndUnitImaginary) {
    const struct {
        const char* text;
        double re, im;
    } cases[] = {{"1e-3+2i", 0.001, 2},  {"i", 0, 1},         {"-i", 0, -1},           {"3-i", 3, -1},
                 {"1E+2-1e-2i", 100, -0.01}, {"2e-3i", 0, 0.002}, {" -2 - 3.5i ", -2, -3.5}, {"7.25", 7.25, 0},
                 {"-INF + INFi", -INF, INF}};
    for (const auto& c : cases) {
        const TCplx z = StrToCplx(c.text);
        EXPECT_TRUE(z.Re == c.re && z.Im == c.im) << c.text;
    }
    const TCplx n = StrToCplx("NAN - NANi");
    EXPECT_TRUE(std::isnan(n.Re) && std::isnan(n.Im));
    const TCplx fromText = std::string("4-2i");  // implicit conversion of the record
    EXPECT_TRUE(fromText.Re == 4 && fromText.Im == -2);
    const TSCplx s = StrToCplxSingle("0.1-0.2i");
    EXPECT_TRUE(s.Re == 0.1f && s.Im == -0.2f);
    for (const char* bad : {"1+2ix", "1+xi", "1++2i", "abc", "1+2j"}) {
        try {
            StrToCplx(bad);
            ADD_FAILURE() << bad;
        } catch (const std::invalid_argument& e) {
            EXPECT_EQ(std::string(e.what()), "'" + std::string(bad) + "' is not a valid complex value");
        }
    }
}

TEST(StrToInteger, StrictDecimal) {
    EXPECT_EQ(StrToInteger(" -42 "), -42);
    EXPECT_EQ(StrToInteger("+7"), 7);
    EXPECT_EQ(StrToInteger("2147483647"), 2147483647);
    for (const char* bad : {"2147483648", "1.0", "", "0x1", "1e3"}) EXPECT_THROW(StrToInteger(bad), std::invalid_argument) << bad;
}

// ---------------------------------------------------------------------------
// General form
// ---------------------------------------------------------------------------
TEST(SampleToStr, GeneralForm) {
    const struct {
        double x;
        int digits, exp;  // 0 digits: the default form
        const char* want;
    } cases[] = {{1.0 / 3.0, 0, 0, "0.333333333333333"},  {-2.5, 0, 0, "-2.5"},
                 {100.0, 0, 0, "100"},                     {123456789012345.0, 0, 0, "123456789012345"},
                 {1234567890123456.0, 0, 0, "1.23456789012346E15"}, {1e20, 0, 0, "1E20"},
                 {1e-5, 0, 0, "0.00001"},                  {1.5e-6, 0, 0, "1.5E-6"},
                 {-0.0, 0, 0, "0"},                        {NAN_, 0, 0, "NAN"},
                 {-INF, 0, 0, "-INF"},                     {1.5e-6, 15, 3, "1.5E-006"},
                 {1234.5, 3, 0, "1.23E3"},
                 {999.96, 4, 0, "1000"}};  // rounding decides the notation
    for (const auto& c : cases)
        EXPECT_EQ(c.digits ? SampleToStr(c.x, c.digits, c.exp) : SampleToStr(c.x), c.want) << c.want;
    EXPECT_EQ(SampleToStrf(0.1f), "0.1");
    EXPECT_EQ(SampleToStrf(1.0f / 3.0f), "0.3333333");
    EXPECT_EQ(IntPrecisionToStr(prInt32), "integer, 4 bytes");
    EXPECT_EQ(IntPrecisionToStr(prInt16), "integer, 2 bytes");
    EXPECT_EQ(IntPrecisionToStr(prInt8), "unsigned integer, 1 byte");
}

TEST(SampleToStr, RoundTripsAtFullPrecision) {
    std::mt19937_64 rng(7);
    for (int k = 0; k < 20000; ++k) {
        double x = std::bit_cast<double>(rng());
        if (std::isnan(x)) continue;
        ASSERT_EQ(std::bit_cast<uint64_t>(StrToVal(SampleToStr(x, 17, 0))), std::bit_cast<uint64_t>(x == 0 ? 0.0 : x))
            << SampleToStr(x, 17, 0);
        float f = std::bit_cast<float>(static_cast<uint32_t>(rng()));
        if (std::isnan(f)) continue;
        ASSERT_EQ(StrToSingle(SampleToStrf(f, 9, 0)), f) << SampleToStrf(f, 9, 0);
    }
}

// ---------------------------------------------------------------------------
// Format texts
// ---------------------------------------------------------------------------
TEST(FormatSample, PlaceholdersExponentsAndSections) {
    EXPECT_EQ(FormatSample(3.14159, "0.00"), "3.14");  // both argument orders
    const struct {
        std::string fmt;
        double x;
        const char* want;
    } cases[] = {
        {"0.00", 3.14159, "3.14"}, {"#,##0.00", 1234567.891, "1,234,567.89"}, {"#,##0", 999.0, "999"},
        {"000", 7.0, "007"}, {"0", 12345.0, "12345"},  // overflow digits go in front
        {"#.##", 0.5, ".5"}, {"0.###", 2.5, "2.5"}, {"0.", 2.0, "2"},
        {"0.0", 1.25, "1.2"},  // ties to even on the exact value
        {"0.0", 1.35, "1.4"},  // 1.35 is slightly above in binary
        {"0.0", -1.75, "-1.8"}, {"00-00", 1234.0, "12-34"},  // a literal keeps its place
        {"'Total: '0.0\" kg\"", 3.14, "Total: 3.1 kg"}, {"", 0.1, "0.1"}, {"0.00", NAN_, "NAN"},
        {"0.00", -INF, "-INF"},
        // Exponents; more digits than a double holds show the exact binary value.
        {"0.00E+00", 12345.0, "1.23E+04"}, {"0.00E+00", 0.0, "0.00E+00"}, {"0.0e-0", 0.00012, "1.2e-4"},
        {"0.0E-0", 1200.0, "1.2E3"}, {"00.0E+0", 12345.0, "12.3E+3"}, {"0.##E+000", -99960.0, "-1E+005"},
        {"0." + std::string(25, '0') + "E+00", 0.1, "1.0000000000000000555111512E-01"},
        {"0." + std::string(20, '0'), 0.1, "0.10000000000000000555"},
        // Sections: positive;negative;zero, chosen on the rounded value.
        {"0.00;(0.00)", -5.0, "(5.00)"}, {"0.00;(0.00)", 5.0, "5.00"}, {"0.00;-0.00;'zero'", 0.001, "zero"},
        {"0.00;-0.00;'zero'", -0.001, "zero"}, {"0.00;-0.00", -0.001, "0.00"},  // rounds to zero: no sign
        {"0.00", -0.001, "0.00"}, {"0.0;;'none'", -2.0, "-2.0"},  // empty section: the first, signed
        {"'a;b' 0", 1.0, "a;b 1"},                                 // a quoted ';' does not split
        {"+0.00i;-0.00i", 2.5, "+2.50i"}, {"+0.00i;-0.00i", -2.5, "-2.50i"}, {"+0.00i;-0.00i", NAN_, "+NANi"},
        {"+0.00i;-0.00i", -INF, "-INFi"}};
    for (const auto& c : cases) EXPECT_EQ(FormatSample(c.fmt, c.x), c.want) << c.fmt << " " << c.x;
}

TEST(CplxToStr, Rules) {
    const struct {
        TCplx z;
        const char* want;
    } cases[] = {{{1, 2}, "1 + 2i"},         {{1, -2.5}, "1 - 2.5i"},    {{0, -2}, "-2i"},
                 {{3, 0}, "3"},              {{3, -0.0}, "3"},           {{1.5, 1}, "1.5 + i"},
                 {{1.5, -1}, "1.5 - i"},     {{0, 1}, "1i"},             {{NAN_, NAN_}, "NAN + NANi"},
                 {{1, -INF}, "1 - INFi"}};
    for (const auto& c : cases) EXPECT_EQ(CplxToStr(c.z), c.want) << c.want;
    EXPECT_EQ(CplxToStr(TCplx(1.0 / 3, 2), 3, 0), "0.333 + 2i");
    EXPECT_EQ(CplxToStr(TSCplx(0.1f, -0.2f)), "0.1 - 0.2i");
}

TEST(CplxToStr, RoundTripsThroughStrToCplx) {
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> u(-1e6, 1e6);
    std::vector<TCplx> cases = {TCplx(0, 1), TCplx(0, -1), TCplx(2, 1), TCplx(2, -1), TCplx(-1e-300, 5e300),
                                TCplx(0, 0), TCplx(-INF, INF)};
    for (int k = 0; k < 2000; ++k) cases.push_back(TCplx(u(rng) * (k % 3), u(rng) * std::pow(10.0, k % 41 - 20)));
    for (const TCplx& z : cases) {
        const TCplx back = StrToCplx(CplxToStr(z, 17, 0));
        ASSERT_TRUE(back.Re == z.Re && back.Im == z.Im) << CplxToStr(z, 17, 0);
    }
}

TEST(FormatCplx, PartsAndFallback) {
    const char* re = "0.0";
    const char* im = "+0.0i;-0.0i";
    // A NaN part is not zero.
    for (auto [z, want] : {std::pair{TCplx(1.5, -2), "1.5-2.0i"}, {TCplx(1.5, 2), "1.5+2.0i"}, {TCplx(0, -2), "-2.0i"},
                           {TCplx(1.5, 0), "1.5"}, {TCplx(0, NAN_), "+NANi"}, {TCplx(NAN_, 0), "NAN"}})
        EXPECT_EQ(FormatCplx(z, re, im), want);
    for (const TCplx& z : {TCplx(1, 2), TCplx(1, -1), TCplx(0, 3), TCplx(4, 0)}) {
        EXPECT_EQ(FormatCplx(z, re, ""), CplxToStr(z));
        EXPECT_EQ(FormatCplx(z, "", im), CplxToStr(z));
    }
    EXPECT_EQ(StrToCplx(FormatCplx(TCplx(-3.25, -0.5), "0.00", "+0.00i;-0.00i")).Im, -0.5);
    EXPECT_EQ(FormatCplx(TSCplx(1.5f, -2.0f), re, im), "1.5-2.0i");
}

// ---------------------------------------------------------------------------
// Extract
// ---------------------------------------------------------------------------
TEST(Extract, WalksALine) {
    const std::string line = ",,1, 2+3i,,-i";
    int32_t pos = 0;
    TCplx z;
    ASSERT_TRUE(ExtractCplx(line, pos, ",", z));
    EXPECT_TRUE(z.Re == 1 && z.Im == 0);
    EXPECT_EQ(pos, 4);
    ASSERT_TRUE(ExtractCplx(line, pos, ",", z));
    EXPECT_TRUE(z.Re == 2 && z.Im == 3);
    ASSERT_TRUE(ExtractCplx(line, pos, ",", z));
    EXPECT_TRUE(z.Re == 0 && z.Im == -1);
    EXPECT_EQ(pos, static_cast<int32_t>(line.size()));
    EXPECT_FALSE(ExtractCplx(line, pos, ",", z));
    EXPECT_TRUE(std::isnan(z.Re) && std::isnan(z.Im));

    pos = 0;
    TSCplx s;
    EXPECT_TRUE(ExtractCplxSingle("0.5-0.25i  ", pos, "  ", s));
    EXPECT_TRUE(s.Re == 0.5f && s.Im == -0.25f);
    EXPECT_FALSE(ExtractCplxSingle("0.5-0.25i  ", pos, "  ", s));  // only delimiters left
    EXPECT_TRUE(std::isnan(s.Re) && std::isnan(s.Im));

    pos = 0;
    double x = 0;
    const std::string vals = "1.5::2::";
    EXPECT_TRUE(ExtractSample(vals, pos, "::", x) && x == 1.5);
    EXPECT_TRUE(ExtractSample(vals, pos, "::", x) && x == 2);
    EXPECT_FALSE(ExtractSample(vals, pos, "::", x));
    EXPECT_TRUE(std::isnan(x));

    pos = 0;
    int32_t n = -1;
    EXPECT_TRUE(ExtractInteger("10\t20\tx", pos, "\t", n) && n == 10);
    EXPECT_TRUE(ExtractInteger("10\t20\tx", pos, "\t", n) && n == 20);
    EXPECT_THROW(ExtractInteger("10\t20\tx", pos, "\t", n), std::invalid_argument);
    pos = 100;
    EXPECT_FALSE(ExtractInteger("10", pos, "\t", n));
    EXPECT_EQ(n, 0);
}

// ---------------------------------------------------------------------------
// Sorts
// ---------------------------------------------------------------------------
namespace {

template <class T>
std::vector<T> RandomData(size_t n, uint64_t seed, int distinct) {
    std::mt19937_64 rng(seed);
    std::uniform_int_distribution<int> d(-distinct, distinct);
    std::vector<T> v(n);
    for (auto& x : v) x = static_cast<T>(d(rng)) / 8;
    return v;
}

// Multiset equality with NaNs counted apart.
template <class T>
bool SamePermutation(std::vector<T> a, std::vector<T> b) {
    auto nanCount = [](const std::vector<T>& v) { return std::count_if(v.begin(), v.end(), [](T x) { return std::isnan(x); }); };
    if (nanCount(a) != nanCount(b)) return false;
    std::erase_if(a, [](T x) { return std::isnan(x); });
    std::erase_if(b, [](T x) { return std::isnan(x); });
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a == b;
}

}  // namespace

template <class T>
class PlainSort : public ::testing::Test {};
using FloatTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(PlainSort, FloatTypes);

TYPED_TEST(PlainSort, MatchesStdSortOnSubRanges) {
    using T = TypeParam;
    for (int distinct : {3, 1000, 100000}) {
        for (size_t n : {1u, 2u, 3u, 17u, 1000u, 20000u}) {
            const std::vector<T> orig = RandomData<T>(n, n * 31 + distinct, distinct);
            const int32_t lo = n > 4 ? 2 : 0, hi = static_cast<int32_t>(n) - (n > 4 ? 3 : 1);
            std::vector<T> a = orig, d = orig, want = orig;
            QuickSortAsc(a.data(), lo, hi);
            QuickSortDesc(d.data(), lo, hi);
            std::sort(want.begin() + lo, want.begin() + hi + 1);
            EXPECT_EQ(a, want);
            std::reverse(want.begin() + lo, want.begin() + hi + 1);
            EXPECT_EQ(d, want);
        }
    }
}

TYPED_TEST(PlainSort, OrderedAndConstantInputs) {
    using T = TypeParam;
    const int32_t n = 100000;
    std::vector<T> up(n), down(n), flat(n, T(1));
    for (int32_t i = 0; i < n; ++i) up[i] = T(i), down[i] = T(n - i);
    for (auto* v : {&up, &down, &flat}) {
        std::vector<T> want = *v;
        std::sort(want.begin(), want.end());
        QuickSortAsc(v->data(), 0, n - 1);
        EXPECT_EQ(*v, want);
    }
}

TYPED_TEST(PlainSort, NaNsStayInBoundsAndAreKept) {
    using T = TypeParam;
    std::mt19937_64 rng(5);
    for (int rep = 0; rep < 200; ++rep) {
        std::vector<T> v = RandomData<T>(1 + rng() % 300, rng(), 50);
        for (auto& x : v)
            if (rng() % 4 == 0) x = std::numeric_limits<T>::quiet_NaN();
        std::vector<T> a = v, d = v;
        QuickSortAsc(a.data(), 0, static_cast<int32_t>(a.size()) - 1);
        QuickSortDesc(d.data(), 0, static_cast<int32_t>(d.size()) - 1);
        ASSERT_TRUE(SamePermutation(a, v));
        ASSERT_TRUE(SamePermutation(d, v));
    }
}

TEST(QuickSort, EmptyAndSingleRangesChangeNothing) {
    std::vector<double> v = {3, 1, 2};
    QuickSortAsc(v.data(), 1, 1);
    QuickSortAsc(v.data(), 2, 1);
    std::vector<double> k = {9, 8, 7};
    CQuickSortAsc(v.data(), k.data(), 0, 0);
    EXPECT_EQ(v, (std::vector<double>{3, 1, 2}));
    EXPECT_EQ(k, (std::vector<double>{9, 8, 7}));
}

TEST(QuickSort, KeysCarryTheirData) {
    for (size_t n : {2u, 50u, 5000u}) {
        std::vector<double> keys = RandomData<double>(n, n, 20);
        keys[n / 2] = NAN_;  // NaN pivot or NaN among keys: pairs must survive
        std::vector<TCplx> data(n);
        std::vector<int32_t> idx(n);
        std::vector<float> fkeys(n);
        std::vector<TSCplx> sdata(n);
        for (size_t i = 0; i < n; ++i) {
            data[i] = TCplx(keys[i], double(i));
            idx[i] = int32_t(i);
            fkeys[i] = float(keys[i]);
            sdata[i] = TSCplx(fkeys[i], float(i));
        }
        const std::vector<double> origKeys = keys;
        std::vector<double> k2 = keys;
        CQuickSortAsc(data.data(), keys.data(), 0, int32_t(n) - 1);
        CQuickSortDesc(idx.data(), k2.data(), 0, int32_t(n) - 1);
        CQuickSortAsc(sdata.data(), fkeys.data(), 0, int32_t(n) - 1);
        for (size_t i = 0; i < n; ++i) {
            const size_t from = size_t(data[i].Im);
            ASSERT_EQ(std::bit_cast<uint64_t>(keys[i]), std::bit_cast<uint64_t>(origKeys[from]));
            ASSERT_EQ(std::bit_cast<uint64_t>(k2[i]), std::bit_cast<uint64_t>(origKeys[size_t(idx[i])]));
            ASSERT_EQ(std::bit_cast<uint32_t>(fkeys[i]), std::bit_cast<uint32_t>(float(origKeys[size_t(sdata[i].Im)])));
        }
        EXPECT_TRUE(SamePermutation(keys, origKeys));
    }
    // Without NaN the keys end in std::sort's order.
    std::vector<double> keys = RandomData<double>(3000, 3, 40), want = keys;
    std::vector<double> vals = keys;
    CQuickSortDesc(vals.data(), keys.data(), 0, 2999);
    std::sort(want.begin(), want.end(), std::greater<>());
    EXPECT_EQ(keys, want);
    EXPECT_EQ(vals, want);
}

TEST(QuickSort, ComplexWithoutKeysUsesSquaredMagnitude) {
    std::mt19937_64 rng(9);
    std::uniform_int_distribution<int> d(-6, 6);
    std::vector<TCplx> z(4000);
    std::vector<double> keys(z.size());
    for (size_t i = 0; i < z.size(); ++i) {
        z[i] = TCplx(d(rng) * 0.1, d(rng) * 0.3);
        keys[i] = z[i].Re * z[i].Re + z[i].Im * z[i].Im;
    }
    std::vector<TCplx> own = z, keyed = z;
    QuickSortAsc(own.data(), 0, int32_t(z.size()) - 1);
    CQuickSortAsc(keyed.data(), keys.data(), 0, int32_t(z.size()) - 1);
    for (size_t i = 0; i < z.size(); ++i) {
        // Same keys, same algorithm: the same order, ties included.
        ASSERT_TRUE(own[i].Re == keyed[i].Re && own[i].Im == keyed[i].Im) << i;
        if (i) ASSERT_LE(keys[i - 1], keys[i]);
    }
    std::vector<TSCplx> s = {TSCplx(3, 4), TSCplx(0, 1), TSCplx(-2, 0), TSCplx(1, 1)};
    QuickSortDesc(s.data(), 0, 3);
    EXPECT_TRUE(s[0].Re == 3 && s[1].Re == -2 && s[2].Re == 1 && s[3].Im == 1);
}

TEST(QuickSort, StridedFormsTouchOnlyTheirElements) {
    std::vector<double> v = RandomData<double>(301, 1, 1000);
    const std::vector<double> orig = v;
    QuickSortAsc(v.data(), 1, 3, 0, 99);  // elements 1, 4, ..., 298
    std::vector<double> want;
    for (int k = 0; k < 100; ++k) want.push_back(orig[1 + 3 * k]);
    std::sort(want.begin(), want.end());
    for (int i = 0; i < 301; ++i) {
        if (i % 3 == 1 && i < 300)
            ASSERT_EQ(v[i], want[i / 3]);
        else
            ASSERT_EQ(v[i], orig[i]);
    }
    // Column 2 of a 4-column matrix as keys, complex values every second slot.
    std::vector<float> m = RandomData<float>(4 * 60, 2, 30);
    std::vector<TSCplx> c(120);
    for (int r = 0; r < 60; ++r) c[2 * r] = TSCplx(m[4 * r + 2], float(r));
    const std::vector<float> morig = m;
    CQuickSortDesc(c.data(), 0, 2, m.data(), 2, 4, 0, 59);
    for (int r = 0; r < 60; ++r) {
        ASSERT_EQ(c[2 * r].Re, m[4 * r + 2]);
        ASSERT_EQ(m[4 * r + 2], morig[4 * int(c[2 * r].Im) + 2]);
        if (r) ASSERT_GE(m[4 * (r - 1) + 2], m[4 * r + 2]);
        ASSERT_EQ(m[4 * r], morig[4 * r]);
    }
}

TEST(QuickSort, MatrixRowsMoveWhole) {
    const int32_t rows = 500, cols = 3;
    std::vector<double> m(rows * cols);
    std::mt19937_64 rng(4);
    for (int32_t r = 0; r < rows; ++r) {
        m[r * cols] = double(r);  // row identity
        m[r * cols + 1] = double(rng() % 50);
        m[r * cols + 2] = -m[r * cols + 1] * 2;
    }
    const std::vector<double> orig = m;
    QuickSortAscMtx(m.data(), cols, 1, 10, rows - 1);
    for (int32_t r = 0; r < rows; ++r) {
        const int32_t from = int32_t(m[r * cols]);
        ASSERT_TRUE(std::equal(m.begin() + r * cols, m.begin() + r * cols + cols, orig.begin() + from * cols));
        if (r < 10) ASSERT_EQ(from, r);
        if (r > 10) ASSERT_LE(m[(r - 1) * cols + 1], m[r * cols + 1]);
    }
    // Complex rows by a key per row, and by the magnitude of a column.
    std::vector<TCplx> z(rows * 2);
    std::vector<double> keys(rows);
    for (int32_t r = 0; r < rows; ++r) {
        z[2 * r] = TCplx(double(r), 0);
        z[2 * r + 1] = TCplx(double(rng() % 7), double(rng() % 7));
        keys[r] = z[2 * r + 1].Re * z[2 * r + 1].Re + z[2 * r + 1].Im * z[2 * r + 1].Im;
    }
    std::vector<TCplx> z2 = z;
    CQuickSortDescMtx(z.data(), 2, keys.data(), 0, rows - 1);
    QuickSortDescMtx(z2.data(), 2, 1, 0, rows - 1);
    for (int32_t r = 0; r < rows; ++r) {
        ASSERT_TRUE(z[2 * r].Re == z2[2 * r].Re) << r;  // same keys, same order
        const TCplx w = z[2 * r + 1];
        ASSERT_EQ(keys[r], w.Re * w.Re + w.Im * w.Im);
        if (r) ASSERT_GE(keys[r - 1], keys[r]);
    }
}
