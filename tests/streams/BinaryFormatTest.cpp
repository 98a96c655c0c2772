// Sample formats, header layout and round trips of the binary stream form.
//
// Round-trip tolerances: prDouble is exact; prSingle is exact for values a
// single holds (the test values are such); the integer formats are exact for
// integers inside their range; prMuLaw and prALaw give back a G.711 level,
// within half a quantisation step (checked as |x|/16 + 16 on the 16-bit scale).
#include <cstdio>
#include <fstream>
#include <limits>

#include "StreamsTestUtil.h"

namespace rovane::test {
namespace {

struct FormatCase {
    TPrecision p;
    const char* text;
    int32_t bytes;
    double lo, hi;  // the integer range a format holds exactly
};
const FormatCase kFormats[] = {
    {prDouble, "float, 8 bytes", 8, -1e300, 1e300},
    {prSingle, "float, 4 bytes", 4, -0x1p100, 0x1p100},
    {prInteger, "integer, 4 bytes", 4, -2147483648.0, 2147483647.0},
    {prCardinal, "unsigned integer, 4 bytes", 4, 0, 4294967295.0},
    {prSmallInt, "integer, 2 bytes", 2, -32768, 32767},
    {prWord, "unsigned integer, 2 bytes", 2, 0, 65535},
    {prShortInt, "integer, 1 byte", 1, -128, 127},
    {prByte, "unsigned integer, 1 byte", 1, 0, 255},
    {prMuLaw, "MuLaw integer, 1 byte", 1, -32768, 32767},
    {prALaw, "ALaw integer, 1 byte", 1, -32768, 32767},
    {prInt24, "integer, 3 bytes", 3, -8388608, 8388607},
};

TEST(PrecisionTable, TextAndSize) {
    for (const FormatCase& c : kFormats) {
        EXPECT_EQ(PrecisionToStr(c.p), c.text);
        EXPECT_EQ(SizeOfPrecision(c.p, false), c.bytes);
        EXPECT_EQ(SizeOfPrecision(c.p, true), 2 * c.bytes);
    }
    EXPECT_EQ(PrecisionToStr(static_cast<TPrecision>(11)), "Unknown");
    EXPECT_EQ(SizeOfPrecision(static_cast<TPrecision>(11), true), 0);
    EXPECT_EQ(SizeOfPrecision(static_cast<TPrecision>(-1), false), 0);
}

// Integer test values of a format: both ends of its range, zero and a spread
// between, so that every byte of the stored sample is exercised.
std::vector<double> ValuesFor(const FormatCase& c) {
    std::vector<double> v = {c.lo, c.hi, 0.0};
    const double lo = std::max(c.lo, -3e6), hi = std::min(c.hi, 3e6);
    for (int i = 0; i < 37; ++i) v.push_back(std::floor(lo + (hi - lo) * i / 36.0));
    if (c.p == prDouble) v.push_back(0.1);  // a fraction only double holds exactly
    return v;
}

bool Within(const FormatCase& c, double got, double want) {
    if (c.p == prMuLaw || c.p == prALaw) return std::fabs(got - want) <= std::fabs(want) / 16 + 16;
    return got == want;
}

// Every format, both object precisions, both complexities, both byte orders,
// through WriteHeader/WriteValues and ReadHeader/ReadValues.
TEST(BinaryRoundTrip, EveryFormatPrecisionComplexityAndOrder) {
    for (const FormatCase& c : kFormats)
        for (bool isDouble : {true, false})
            for (bool complex : {false, true})
                for (TEndianness e : {boLittleEndian, boBigEndian}) {
                    SCOPED_TRACE(std::string(c.text) + (isDouble ? " double" : " single") +
                                 (complex ? " complex" : " real") + (e ? " BE" : " LE"));
                    std::vector<double> vals = ValuesFor(c);
                    if (!isDouble)  // a single object holds what a single holds
                        for (double& x : vals) x = static_cast<float>(x);
                    if (complex && vals.size() % 2) vals.pop_back();
                    TVec v;
                    v.Size(0, complex, isDouble);
                    v.SetIt(complex, vals);
                    std::stringstream s;
                    v.WriteHeader(s, c.p, rnRound, e);
                    v.WriteValues(s, c.p, rnRound, e);
                    const int64_t expectBytes = 44 + 1 + int64_t(v.Length()) * SizeOfPrecision(c.p, complex);
                    EXPECT_EQ(static_cast<int64_t>(s.str().size()), expectBytes);
                    TVec w;
                    w.Size(0, false, isDouble);
                    ASSERT_EQ(w.ReadHeader(s, e), c.p);
                    EXPECT_EQ(FileVersion, 606);
                    EXPECT_EQ(w.ReadValues(s, c.p, e), v.Length());
                    EXPECT_EQ(FileVersion, -1);
                    ASSERT_EQ(w.Length(), v.Length());
                    ASSERT_EQ(w.Complex(), complex);
                    for (size_t i = 0; i < vals.size(); ++i)
                        EXPECT_TRUE(Within(c, w[static_cast<int32_t>(i)], vals[i]))
                            << "at " << i << ": " << w[static_cast<int32_t>(i)] << " vs " << vals[i];
                }
}

// SaveToStream/LoadFromStream use Precision and Rounding, little-endian; a
// matrix keeps its shape and settings.
TEST(BinaryRoundTrip, MatrixSaveLoadKeepsShapeAndSettings) {
    for (const FormatCase& c : kFormats) {
        SCOPED_TRACE(c.text);
        TMtx m;
        m.Size(3, 4, true, true);
        const double lo = std::max(c.lo, -1e6), hi = std::min(c.hi, 1e6);
        for (int i = 0; i < 24; ++i) m[i] = std::floor(lo + (hi - lo) * i / 23.0);
        m.SetPrecision(c.p);
        m.SetTag(42);
        m.SetCaption("matrix");
        m.SetBalance(btScale);
        m.SetConditionNumber(cnNormInf);
        m.SetTriangleForm(tfLower);
        m.SetTriangleUnit(true);
        m.SetRefineSolution(true);
        m.SetAutoMtxType(true);
        m.SetSuperDiag(2);
        m.SetSubDiag(1);
        std::stringstream s;
        m.SaveToStream(s);
        TMtx n;
        n.LoadFromStream(s);
        EXPECT_EQ(n.Rows(), 3);
        EXPECT_EQ(n.Cols(), 4);
        EXPECT_TRUE(n.Complex());
        EXPECT_EQ(n.Tag(), 42);
        EXPECT_EQ(n.Caption(), "matrix");
        EXPECT_EQ(n.Balance(), btScale);
        EXPECT_EQ(n.ConditionNumber(), cnNormInf);
        EXPECT_EQ(n.TriangleForm(), tfLower);
        EXPECT_TRUE(n.TriangleUnit());
        EXPECT_TRUE(n.RefineSolution());
        EXPECT_TRUE(n.AutoMtxType());
        EXPECT_EQ(n.SuperDiag(), 2);
        EXPECT_EQ(n.SubDiag(), 1);
        for (int i = 0; i < 24; ++i) EXPECT_TRUE(Within(c, n[i], m[i])) << i;
    }
}

TEST(SampleConversion, SmallIntRoundsTruncatesAndSaturates) {
    struct Case {
        double x;
        int16_t round, trunc;
    };
    const Case cases[] = {{2.5, 2, 2},          {3.5, 4, 3},          {-2.5, -2, -2},     {-2.7, -3, -2},
                          {40000.0, 32767, 32767}, {-40000.0, -32768, -32768}, {32767.4, 32767, 32767},
                          {NAN_, 0, 0},         {INF, 32767, 32767}, {-INF, -32768, -32768}};
    for (const Case& c : cases)
        for (TRounding r : {rnRound, rnTrunc}) {
            TVec v;
            v.SetIt({c.x});
            std::stringstream s;
            v.WriteValues(s, prSmallInt, r, boLittleEndian);
            const std::string b = s.str();
            ASSERT_EQ(b.size(), 2u);
            int16_t got;
            std::memcpy(&got, b.data(), 2);
            EXPECT_EQ(got, r == rnRound ? c.round : c.trunc) << c.x << " rounding " << r;
        }
}

TEST(SampleConversion, CardinalClampsBelowZeroAndAbove32Bits) {
    const double in[] = {-1.0, 5e9, 4294967295.0, 3000000000.6, NAN_, 7.5};
    const uint32_t round[] = {0, 4294967295u, 4294967295u, 3000000001u, 0, 8};
    const uint32_t trunc[] = {0, 4294967295u, 4294967295u, 3000000000u, 0, 7};
    for (TRounding r : {rnRound, rnTrunc}) {
        TVec v;
        v.SetIt({in[0], in[1], in[2], in[3], in[4], in[5]});
        std::stringstream s;
        v.WriteValues(s, prCardinal, r, boLittleEndian);
        const std::string b = s.str();
        for (int i = 0; i < 6; ++i) {
            uint32_t u;
            std::memcpy(&u, b.data() + 4 * i, 4);
            EXPECT_EQ(u, r == rnRound ? round[i] : trunc[i]) << in[i];
        }
    }
}

// The 16-bit and 8-bit formats narrow a double to single first: 16777217
// becomes 16777216 in single and then saturates like any value above range,
// while prInteger converts from the double itself.
TEST(SampleConversion, SmallFormatsPassThroughSingle) {
    // Just below 3.5 in double, exactly 3.5 in single: the 16-bit format
    // rounds the single (ties to even: 4), the 32-bit one the double (3).
    TVec v;
    v.SetIt({std::nextafter(3.5, 0.0)});
    std::stringstream a, b;
    v.WriteValues(a, prSmallInt, rnRound, boLittleEndian);
    v.WriteValues(b, prInteger, rnRound, boLittleEndian);
    int16_t x;
    int32_t y;
    std::memcpy(&x, a.str().data(), 2);
    std::memcpy(&y, b.str().data(), 4);
    EXPECT_EQ(x, 4);
    EXPECT_EQ(y, 3);
}

TEST(SampleConversion, Int24BigEndianStoresMostSignificantByteFirst) {
    TVec v;
    v.SetIt({0x123456, -2.0, 9e6, -9e6});
    std::stringstream be, le;
    v.WriteValues(be, prInt24, rnTrunc, boBigEndian);
    v.WriteValues(le, prInt24, rnTrunc, boLittleEndian);
    const std::string b = be.str(), l = le.str();
    ASSERT_EQ(b.size(), 12u);
    const uint8_t want_be[12] = {0x12, 0x34, 0x56, 0xFF, 0xFF, 0xFE, 0x7F, 0xFF, 0xFF, 0x80, 0x00, 0x00};
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(static_cast<uint8_t>(b[i]), want_be[i]) << i;
        EXPECT_EQ(static_cast<uint8_t>(l[i]), want_be[3 * (i / 3) + 2 - i % 3]) << i;
    }
    uint8_t three[3] = {0x00, 0x00, 0x80};
    EXPECT_EQ(Bit24ToFloat(three), -8388608.0);
    FloatTo24Bit(-1.5, three, rnRound);
    EXPECT_EQ(Bit24ToFloat(three), -2.0);
}

// Every G.711 code decodes to a level that encodes back to the same code (the
// mu-law code 0x7F is the second zero and encodes as 0xFF).
TEST(SampleConversion, G711CodesRoundTrip) {
    for (int c = 0; c < 256; ++c) {
        const uint8_t code = static_cast<uint8_t>(c);
        if (code != 0x7F) EXPECT_EQ(LinToMuLaw(MuLawToLin(code)), code) << c;
        EXPECT_EQ(LinToALaw(ALawToLin(code)), code) << c;
    }
    EXPECT_EQ(MuLawToLin(0xFF), 0);
    EXPECT_EQ(MuLawToLin(0x80), 32124);
    EXPECT_EQ(ALawToLin(0xD5), 8);
    EXPECT_EQ(ALawToLin(0xAA), 32256);
    // Monotone: a larger sample never gets a smaller level.
    int16_t prevMu = -32768, prevA = -32768;
    for (int32_t x = -32768; x <= 32767; x += 7) {
        const int16_t mu = MuLawToLin(LinToMuLaw(static_cast<int16_t>(x)));
        const int16_t a = ALawToLin(LinToALaw(static_cast<int16_t>(x)));
        EXPECT_GE(mu, prevMu);
        EXPECT_GE(a, prevA);
        prevMu = mu;
        prevA = a;
    }
}

TEST(HeaderLayout, VectorFieldsAndCaption) {
    TVec v;
    v.Size(5, true, false);
    v.SetTag(9);
    v.SetCaption("abc");
    v.SetConditionCheck(false);
    std::stringstream s;
    v.WriteHeader(s, prSmallInt, rnTrunc, boBigEndian);
    const std::string b = s.str();
    ASSERT_EQ(b.size(), 44u + 4u);
    const float want[11] = {1, 5, 0, 0, 4, 606, 4, 9, 64019, 0, 0};
    for (int i = 0; i < 11; ++i) EXPECT_EQ(HeaderFloat(b, i, true), want[i]) << i;
    EXPECT_EQ(b.substr(44), std::string("\x03" "abc"));
}

TEST(HeaderLayout, MatrixFieldsIncludingHighParts) {
    TMtx m;
    m.Size(1, 8388609, false, false);  // Cols div 2^23 = 1, Cols mod 2^23 = 1
    m.SetTag(-3);
    std::stringstream s;
    m.WriteHeader(s);
    const std::string b = s.str();
    ASSERT_EQ(b.size(), 104u + 1u);
    EXPECT_EQ(HeaderFloat(b, 1), 1);
    EXPECT_EQ(HeaderFloat(b, 2), 1);
    EXPECT_EQ(HeaderFloat(b, 9), prSingle);
    EXPECT_EQ(HeaderFloat(b, 15), 4);
    EXPECT_EQ(HeaderFloat(b, 16), 606);
    EXPECT_EQ(HeaderFloat(b, 17), -3);
    EXPECT_EQ(HeaderFloat(b, 18), 64019);
    EXPECT_EQ(HeaderFloat(b, 19), 0);
    EXPECT_EQ(HeaderFloat(b, 20), 1);
    EXPECT_EQ(HeaderFloat(b, 6), btFull);
    EXPECT_EQ(HeaderFloat(b, 11), tfUpper);
}

// A matrix of 2^23 columns keeps its size; a vector of 2^23 elements comes
// back with length 0, since its header keeps the low 23 bits alone.
TEST(HeaderLayout, SizesAtTwoToThe23) {
    TMtx m;
    m.Size(1, 8388608, false, false);
    m.SetPrecision(prByte);
    std::stringstream s;
    m.SaveToStream(s);
    TMtx n;
    n.LoadFromStream(s);
    EXPECT_EQ(n.Rows(), 1);
    EXPECT_EQ(n.Cols(), 8388608);

    TVec v;
    v.Size(8388608, false, false);
    v.SetPrecision(prByte);
    std::stringstream t;
    v.SaveToStream(t);
    TVec w;
    w.SetIt({1, 2});
    w.LoadFromStream(t);
    EXPECT_EQ(w.Length(), 0);
}

TEST(Loading, EmptyVectorWritesHeaderOnly) {
    TVec v;
    std::stringstream s;
    v.SaveToStream(s);
    EXPECT_EQ(s.str().size(), 45u);
    TVec w;
    w.SetIt({1, 2, 3});
    w.LoadFromStream(s);
    EXPECT_EQ(w.Length(), 0);
    EXPECT_EQ(w.ReadValues(s, prDouble), 0);
}

TEST(Loading, SingleObjectStaysSingleOnDoubleStream) {
    TVec v;
    v.SetIt({0.1, 1e-40, 3.0});
    std::stringstream s;
    v.SaveToStream(s);
    TVec w;
    w.Size(0, false, false);
    w.LoadFromStream(s);
    EXPECT_FALSE(w.IsDouble());
    EXPECT_EQ(w[0], static_cast<double>(0.1f));
    EXPECT_EQ(w[1], static_cast<double>(1e-40f));
    EXPECT_EQ(w[2], 3.0);
}

TEST(Loading, ObjectsAppendedToOneFileLoadInTurn) {
    const std::string file = ::testing::TempDir() + "rovane_streams_append.bin";
    std::remove(file.c_str());
    TVec a, b;
    a.SetIt({1, 2, 3});
    a.SetCaption("first");
    b.SetIt(true, std::vector<double>{4, 5});
    b.SetPrecision(prSingle);
    a.SaveToFile(file, true);
    b.SaveToFile(file, true);
    std::ifstream f(file, std::ios::binary);
    TVec x, y;
    x.LoadFromStream(f);
    y.LoadFromStream(f);
    EXPECT_EQ(State(x), State(a));
    EXPECT_EQ(State(y).Values, State(b).Values);
    EXPECT_TRUE(y.Complex());
    TVec z;
    z.LoadFromFile(file);  // reads the first object
    EXPECT_EQ(State(z), State(a));
    a.SaveToFile(file);  // without Append the file starts over
    EXPECT_EQ(std::ifstream(file, std::ios::binary | std::ios::ate).tellg(), 44 + 1 + 5 + 24);
    std::remove(file.c_str());
    ExpectMessage<ERovaneException>([&] { z.LoadFromFile(file); },
                                    "TVec.LoadFromFile: cannot open file \"" + file + "\"");
}

// A stream of version 103 holds neither signature nor caption and Length + 2
// values (Length + 1 complex ones); the extra ones are consumed, so that an
// object that follows reads correctly.
TEST(Loading, OldVersionReadsExtraValues) {
    for (bool complex : {false, true}) {
        std::stringstream s;
        const float h[11] = {complex ? 1.0f : 0.0f, 2, 0, 1, prSmallInt, 103, 8, 0, 0, -7, 0};
        WriteBinaryToStream(s, 11, h, boLittleEndian);
        const int16_t vals[6] = {10, 20, 30, 40, 50, 60};
        s.write(reinterpret_cast<const char*>(vals), complex ? 12 : 8);
        TVec next;
        next.SetIt({99});
        next.SaveToStream(s);
        TVec v;
        v.SetTag(5);
        EXPECT_EQ(v.ReadHeader(s), prSmallInt);
        EXPECT_EQ(FileVersion, 103);
        EXPECT_EQ(v.ReadValues(s, prSmallInt), 4 - (complex ? 1 : 0));
        EXPECT_EQ(v.Length(), 2);
        EXPECT_EQ(v.Tag(), 5);  // no tag in that version
        EXPECT_EQ(v[0], 10);
        EXPECT_EQ(v[1], 20);
        TVec w;
        w.LoadFromStream(s);
        EXPECT_EQ(w[0], 99);
    }
}

TEST(Loading, SubRangeSavesItsRange) {
    TVec v;
    v.SetIt({1, 2, 3, 4, 5});
    v.SetSubRange(1, 3);
    std::stringstream s;
    v.SaveToStream(s);
    v.SetFullRange();
    TVec w;
    w.LoadFromStream(s);
    EXPECT_EQ(State(w).Values, (std::vector<double>{2, 3, 4}));
}

TEST(Persistence, DataValuesPropertyUsesTheStreamForm) {
    struct Filer : TFiler {
        std::string name;
        std::function<void(std::istream&)> read;
        std::function<void(std::ostream&)> write;
        void DefineBinaryProperty(std::string_view n, const std::function<void(std::istream&)>& r,
                                  const std::function<void(std::ostream&)>& w, bool) override {
            name = n;
            read = r;
            write = w;
        }
    };
    TMtx m, n;
    m.Size(2, 3);
    m.SetDouble(std::vector<double>{1, 2, 3, 4, 5, 6});
    Filer fm, fn;
    m.DefineProperties(fm);
    n.DefineProperties(fn);
    EXPECT_EQ(fm.name, "DataValues");
    std::stringstream s;
    fm.write(s);
    fn.read(s);
    EXPECT_EQ(n.Rows(), 2);
    EXPECT_EQ(State(n), State(m));
}

TEST(ValueArrays, PointerAndByteArrayFormsMatchTheStream) {
    const double src[5] = {-3.7, 0.5, 1000.2, 1e9, -1e9};
    for (const FormatCase& c : kFormats) {
        std::stringstream s;
        WriteBinaryValues(s, src, 0, 5, c.p, rnRound, boBigEndian);
        std::vector<uint8_t> p(5 * 8);
        EXPECT_EQ(WriteBinaryValues(p.data(), src, 0, 5, c.p, rnRound, boBigEndian), 5 * c.bytes);
        EXPECT_EQ(std::string(p.begin(), p.begin() + 5 * c.bytes), s.str()) << c.text;
        TByteArray arr;
        int64_t pos = 2;
        WriteBinaryValues(arr, pos, src, 1, 4, c.p, rnRound, boBigEndian);
        EXPECT_EQ(pos, 2 + 4 * c.bytes);
        EXPECT_EQ(std::string(arr.begin() + 2, arr.end()), s.str().substr(c.bytes)) << c.text;
        double back1[5], back2[5];
        ReadBinaryValues(s, back1, 0, 5, c.p, boBigEndian);
        ReadBinaryValues(p.data(), back2, 0, 5, c.p, boBigEndian);
        for (int i = 0; i < 5; ++i) EXPECT_EQ(back1[i], back2[i]);
    }
    std::stringstream s;
    WriteBinaryValues(s, src, 0, 5, static_cast<TPrecision>(11), rnRound, boLittleEndian);
    EXPECT_TRUE(s.str().empty());
}

TEST(ValueArrays, RawCopiesSwapEachElement) {
    const TCplx z[2] = {{1.0, -2.0}, {3.5, 4.25}};
    std::stringstream s;
    WriteToStreamc(s, z, 0, 2, boBigEndian);
    const std::string b = s.str();
    ASSERT_EQ(b.size(), 32u);
    EXPECT_EQ(static_cast<uint8_t>(b[0]), 0x3F);  // 1.0 = 3FF0...0, most significant byte first
    TCplx back[2];
    ReadFromStreamc(s, back, 0, 2, boBigEndian);
    EXPECT_EQ(back[1].Im, 4.25);
    EXPECT_EQ(back[0].Im, -2.0);
    std::stringstream t;
    const float f[2] = {1.0f, -0.5f};
    WriteBinaryToStream(t, 2, f, boBigEndian);
    EXPECT_EQ(f[0], 1.0f);  // the caller's array is left as it was
    TSingleArray g;
    EXPECT_TRUE(ReadBinaryFromStream(t, 2, g, boBigEndian));
    EXPECT_EQ(g[1], -0.5f);
    EXPECT_FALSE(ReadBinaryFromStream(t, 1, g, boBigEndian));
}

TEST(Fields, PlainFieldsRoundTripAndShortReads) {
    std::stringstream s;
    StreamWriteInt8(s, -5);
    StreamWriteUInt16(s, 65000);
    StreamWriteInt32(s, -123456);
    StreamWriteUInt64(s, 0xFEDCBA9876543210ull);
    StreamWriteDouble(s, -0.125);
    StreamWriteString(s, "text\xC3\xA9");
    EXPECT_EQ(s.str().substr(1, 2), std::string("\xE8\xFD"));  // least significant byte first
    EXPECT_EQ(StreamReadInt8(s), -5);
    EXPECT_EQ(StreamReadUInt16(s), 65000);
    EXPECT_EQ(StreamReadInt32(s), -123456);
    EXPECT_EQ(StreamReadUInt64(s), 0xFEDCBA9876543210ull);
    EXPECT_EQ(StreamReadDouble(s), -0.125);
    EXPECT_EQ(StreamReadString(s), "text\xC3\xA9");
    int32_t got = -1;
    EXPECT_EQ(StreamReadInt64(s, got), 0);
    EXPECT_EQ(got, 0);
    std::stringstream t("\x01\x02");
    EXPECT_EQ(StreamReadInt32(t, got), 0);
    EXPECT_EQ(got, 2);
    std::stringstream u("\x01");
    ExpectMessage<ERovaneException>([&] { StreamReadInt16(u); }, "Stream read error");
    std::stringstream w;
    StreamWriteInt32(w, 1000);
    w.write("ab", 2);
    ExpectMessage<ERovaneException>([&] { StreamReadString(w); }, "StreamReadString: invalid length 1000");
}

}  // namespace
}  // namespace rovane::test
