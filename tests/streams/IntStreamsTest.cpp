// Stream, file and text forms of the integer containers: round trips in
// every width, format and byte order, the header they write, conversion on
// the way, refusal of damaged or foreign streams, and the records.
#include "StreamsTestUtil.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace rovane::test {
namespace {

// Observable state of an integer container.
struct IntState {
    int32_t Length, Rows, Cols, Tag;
    TIntPrecision Width;
    bool CondCheck;
    std::string Caption;
    std::vector<int32_t> Values;
    explicit IntState(const TRovaneInt& o)
        : Length(o.Length()), Rows(o.fRovaneType == rvTMtxInt ? static_cast<const TMtxInt&>(o).Rows() : 1),
          Cols(o.fRovaneType == rvTMtxInt ? static_cast<const TMtxInt&>(o).Cols() : o.Length()), Tag(o.Tag()),
          Width(o.IntPrecision()), CondCheck(o.ConditionCheck()), Caption(o.Caption()) {
        for (int32_t i = 0; i < o.Length(); ++i) Values.push_back(o[i]);
    }
    bool operator==(const IntState&) const = default;
};

// Values that reach both ends of the width.
std::vector<int32_t> Extremes(TIntPrecision p) {
    if (p == prInt32) return {INT32_MIN, -1, 0, 1, 123456789, INT32_MAX};
    if (p == prInt16) return {-32768, -1, 0, 1, 1234, 32767};
    return {0, 1, 127, 128, 200, 255};
}

void Fill(TRovaneInt& o, const std::vector<int32_t>& v) {
    for (size_t i = 0; i < v.size(); ++i) o[static_cast<int32_t>(i)] = v[i];
}

TEST(IntStreams, RoundTripEveryWidthFormatAndOrder) {
    // Formats that hold every value of the width exactly.
    const std::vector<std::pair<TIntPrecision, std::vector<TPrecision>>> exact = {
        {prInt32, {prInteger, prDouble}},
        {prInt16, {prSmallInt, prInteger, prInt24, prSingle, prDouble}},
        {prInt8, {prByte, prWord, prSmallInt, prInteger, prDouble}}};
    for (const auto& [width, formats] : exact)
        for (TPrecision format : formats)
            for (TEndianness order : {boLittleEndian, boBigEndian})
                for (bool matrix : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "width " << width << " format " << PrecisionToStr(format)
                                                    << " big " << (order == boBigEndian) << " matrix " << matrix);
                    TVecInt v;
                    TMtxInt m;
                    TRovaneInt& src = matrix ? static_cast<TRovaneInt&>(m) : v;
                    if (matrix) m.Size(2, 3, width);
                    else v.Size(6, width);
                    Fill(src, Extremes(width));
                    src.SetTag(-42);
                    src.SetCaption("ints");
                    src.SetConditionCheck(false);
                    std::stringstream s;
                    src.WriteHeader(s, format, rnRound, order);
                    src.WriteValues(s, format, rnRound, order);
                    EXPECT_EQ(s.str().size(), (matrix ? 26u : 11u) * 4 + 5 + 6u * SizeOfPrecision(format, false));

                    TVecInt dv;
                    TMtxInt dm;
                    TRovaneInt& dst = matrix ? static_cast<TRovaneInt&>(dm) : dv;
                    if (matrix) dm.Size(0, 0, width);
                    else dv.Size(0, width);
                    EXPECT_EQ(dst.ReadHeader(s, order), format);
                    EXPECT_EQ(FileVersion, 606);
                    EXPECT_EQ(dst.ReadValues(s, format, order), 6);
                    EXPECT_EQ(FileVersion, -1);
                    EXPECT_TRUE(IntState(dst) == IntState(src));
                }
}

TEST(IntStreams, HeaderFieldsAndValueBytes) {
    TVecInt v;
    v.Size(3, prInt16);
    Fill(v, {1, -2, 0x1234});
    v.SetTag(9);
    std::stringstream s;
    v.SaveToStream(s);
    const std::string b = s.str();
    const std::vector<std::pair<int, float>> fields = {{0, 0.0f}, {1, 3.0f},  {3, 1.0f},     {4, float(prSmallInt)},
                                                       {5, 606.0f}, {6, 2.0f}, {7, 9.0f}, {8, 64019.0f}};
    for (auto [i, want] : fields) EXPECT_EQ(HeaderFloat(b, i), want) << "field " << i;
    ASSERT_EQ(b.size(), 44u + 1 + 6);
    EXPECT_EQ(b.substr(45), std::string("\x01\x00\xfe\xff\x34\x12", 6));

    // Big-endian: the header floats and each value most significant byte first.
    std::stringstream big;
    v.WriteHeader(big, prSmallInt, rnTrunc, boBigEndian);
    v.WriteValues(big, prSmallInt, rnTrunc, boBigEndian);
    EXPECT_EQ(HeaderFloat(big.str(), 8, true), 64019.0f);
    EXPECT_EQ(big.str().substr(45), std::string("\x00\x01\xff\xfe\x12\x34", 6));

    TMtxInt m;
    m.Size(2, 5, prInt8);
    std::stringstream ms;
    m.SaveToStream(ms);
    const std::vector<std::pair<int, float>> mfields = {{1, 2.0f}, {2, 5.0f}, {3, 0.0f},      {9, float(prByte)},
                                                        {15, 1.0f}, {16, 606.0f}, {18, 64019.0f}};
    for (auto [i, want] : mfields) EXPECT_EQ(HeaderFloat(ms.str(), i), want) << "field " << i;
}

TEST(IntStreams, ConversionRoundsAndSaturatesToTheWidth) {
    // 32-bit values through the 16-bit format saturate there.
    TVecInt v;
    v.SetIt({-70000, -5, 300, 70000});
    std::stringstream s;
    v.WriteHeader(s, prSmallInt, rnTrunc, boLittleEndian);
    v.WriteValues(s, prSmallInt, rnTrunc, boLittleEndian);
    TVecInt r;
    r.LoadFromStream(s);
    EXPECT_EQ(IntState(r).Values, (std::vector<int32_t>{-32768, -5, 300, 32767}));

    // A 32-bit stream loads into an 8-bit object, which keeps its width.
    std::stringstream s32;
    v.SaveToStream(s32);
    TVecByte b;
    b.LoadFromStream(s32);
    EXPECT_EQ(b.IntPrecision(), prInt8);
    EXPECT_EQ(IntState(b).Values, (std::vector<int32_t>{0, 0, 255, 255}));

    // A float vector loads rounded to nearest, ties to even; NaN gives 0.
    TVec f;
    f.SetIt({1.5, 2.5, -3.7, NAN_, 1e12});
    std::stringstream fs;
    f.SaveToStream(fs);
    TVecInt fi;
    fi.LoadFromStream(fs);
    EXPECT_EQ(IntState(fi).Values, (std::vector<int32_t>{2, 2, -4, 0, INT32_MAX}));

    // And an integer stream loads into a float vector.
    std::stringstream is;
    v.SaveToStream(is);
    TVec back;
    back.LoadFromStream(is);
    EXPECT_EQ(back.Length(), 4);
    EXPECT_EQ(back[3], 70000.0);
}

// Loads bytes into a prepared object, seekable and through a pipe, and
// expects the text and an unchanged object.
template <class C>
void ExpectIntRefused(const std::string& bytes, const std::string& text) {
    for (bool seekable : {true, false}) {
        SCOPED_TRACE(seekable ? "seekable" : "pipe");
        C obj;
        obj.SetIt({7, 8});
        obj.SetTag(11);
        obj.SetCaption("keep");
        const IntState before(obj);
        PipeBuf pipe(bytes);
        std::stringstream file(bytes);
        std::istream pipeStream(&pipe);
        std::istream& in = seekable ? static_cast<std::istream&>(file) : pipeStream;
        ExpectMessage<ERovaneException>([&] { obj.LoadFromStream(in); }, text);
        EXPECT_TRUE(IntState(obj) == before);
    }
}

TEST(IntStreams, DamagedOrForeignStreamsLeaveTheObject) {
    TVecInt v;
    v.SetIt({1, 2, 3, 4});
    std::stringstream vs;
    v.SaveToStream(vs);
    const std::string vec = vs.str();
    TMtxInt m;
    m.Size(2, 2);
    std::stringstream ms;
    m.SaveToStream(ms);
    const std::string mtx = ms.str();
    TVec c;
    const double cv[] = {1, 2};
    c.SetIt(true, cv);
    std::stringstream cs;
    c.SaveToStream(cs);

    std::string badSig = vec;
    SetHeaderFloat(badSig, 8, 1.0f);
    std::string badMtxSig = mtx;
    SetHeaderFloat(badMtxSig, 18, 1.0f);

    ExpectIntRefused<TVecInt>(vec.substr(0, 20), "Error reading stream!");
    ExpectIntRefused<TVecInt>(badSig, "The specified (file) stream does not appear to have been produced by Rovane!");
    // A matrix header holds 0 where a vector keeps its version.
    ExpectIntRefused<TVecInt>(mtx, "TVecInt.ReadHeader: stream format version 0 is not supported (1 to 606)");
    ExpectIntRefused<TMtxInt>(vec, "TMtx: Error reading stream!");
    ExpectIntRefused<TVecInt>(vec.substr(0, vec.size() - 1),
                              "TVecInt.ReadHeader: stream too short: the header announces 16 bytes of values, 15 are "
                              "left");
    ExpectIntRefused<TVecInt>(cs.str(),
                              "TVecInt.ReadHeader: the stream holds complex values, an integer container can not "
                              "load them");
    ExpectIntRefused<TMtxInt>(mtx.substr(0, 50), "TMtx: Error reading stream!");
    ExpectIntRefused<TMtxInt>(badMtxSig,
                              "The specified (file) stream does not appear to be have been produced by Rovane!");

    // A sub-range cannot be resized by a load: refused before any change.
    TVecInt whole;
    whole.SetIt({5, 6, 7});
    whole.Select(0, 2);
    std::stringstream again(vec);
    EXPECT_THROW(whole.LoadFromStream(again), ERovaneException);
    whole.SelectAll();
    EXPECT_EQ(IntState(whole).Values, (std::vector<int32_t>{5, 6, 7}));
}

TEST(IntStreams, OldVersionsAndPipes) {
    // A vector stream of version 103: no signature, no caption, and two
    // values more than its length, which are read and dropped.
    float f[11] = {0, 2, 0, 1, float(prInteger), 103, 4, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(f), sizeof f);
    for (int32_t x : {10, 20, 99, 99, 77}) bytes.append(reinterpret_cast<const char*>(&x), 4);
    std::stringstream s(bytes);
    TVecInt v;
    v.SetTag(5);
    EXPECT_EQ(v.ReadHeader(s), prInteger);
    EXPECT_EQ(FileVersion, 103);
    EXPECT_EQ(v.ReadValues(s, prInteger), 4);
    EXPECT_EQ(IntState(v).Values, (std::vector<int32_t>{10, 20}));
    EXPECT_EQ(v.Tag(), 5);
    EXPECT_EQ(StreamReadInt32(s), 77);

    // A stream that cannot seek loads through the buffered path.
    TMtxInt m;
    m.Size(3, 2, prInt16);
    Fill(m, {1, -2, 3, -4, 5, -6});
    std::stringstream ms;
    m.SaveToStream(ms);
    PipeBuf pipe(ms.str());
    std::istream in(&pipe);
    TMtxSmallInt r;
    r.LoadFromStream(in);
    EXPECT_TRUE(IntState(r) == IntState(m));
}

TEST(IntStreams, FilesAppendAndMatrixMarket) {
    const std::string name = testing::TempDir() + "rovane_intstreams.bin";
    TVecInt a;
    a.SetIt({1, 2, 3});
    TMtxInt b;
    b.Size(2, 2, prInt16);
    Fill(b, {-1, 2, -3, 4});
    a.SaveToFile(name);
    b.SaveToFile(name, true);
    std::ifstream f(name, std::ios::binary);
    TVecInt ra;
    TMtxInt rb;
    ra.LoadFromStream(f);
    rb.Size(0, 0, prInt16);
    rb.LoadFromStream(f);
    EXPECT_TRUE(IntState(ra) == IntState(a));
    EXPECT_TRUE(IntState(rb) == IntState(b));
    TVecInt first;
    first.LoadFromFile(name);
    EXPECT_TRUE(IntState(first) == IntState(a));

    b.SaveToMatrixMarketFile(name);
    std::ifstream t(name, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(t)), std::istreambuf_iterator<char>());
    EXPECT_EQ(text,
              "%%MatrixMarket matrix array integer general\n%Created with Rovane version 6.06\n2 2\n-1\n-3\n2\n4\n");
    std::remove(name.c_str());
}

TEST(IntStreams, TextForms) {
    TVecInt v;
    v.SetIt({5, -12, 300});
    EXPECT_EQ(v.ValuesToText(), "5\r\n-12\r\n300");
    TStringList l;
    l.Add("first");
    v.ValuesToStrings(l, 1, 1, 2, ftaRightAlign, {}, true);
    ASSERT_EQ(l.Count(), 3);
    EXPECT_EQ(l[0], "first");
    EXPECT_EQ(l[1], "[1]    -12");
    EXPECT_EQ(l[2], "[2]    300");

    TVecInt r;
    r.TextToValues("5\r\n-12\r\n300");
    EXPECT_TRUE(IntState(r).Values == IntState(v).Values);

    // A value outside the width, or text that is no integer, leaves Self.
    TVecInt bytes;
    bytes.Size(0, prInt8);
    bytes.TextToValues("1\n255");
    const IntState before(bytes);
    ExpectMessage<ERovaneException>([&] { bytes.TextToValues("1\n256"); },
                                    "When reading line number 1, an error occured: '256' lies outside 0..255, the "
                                    "range of the width.");
    ExpectMessage<ERovaneException>([&] { bytes.TextToValues("1.5"); },
                                    "When reading line number 0, an error occured: '1.5' is not a valid integer "
                                    "value.");
    EXPECT_TRUE(IntState(bytes) == before);

    TMtxInt m;
    m.TextToValues("1\t2\t3\n4\t5\t6");
    EXPECT_EQ(m.Rows(), 2);
    EXPECT_EQ(m.Cols(), 3);
    EXPECT_EQ(m.ValuesToText(";"), "1;2;3\r\n4;5;6");
    TStringList part;
    part.SetText("-7 -8");
    m.StringsToValues(part, 0, 1, 1, 1, " ");
    EXPECT_EQ(m.ValuesToText(","), "1,2,3\r\n4,-7,-8");
    ExpectMessage<ERovaneRangeError>([&] { m.StringsToValues(part, 0, 1, 1, 2, " "); }, "(Col + ColumnCount) > fCols");
}

TEST(IntStreams, RecordsForwardTheForms) {
    VectorInt v = {3, 1, 4};
    std::stringstream s;
    v.SaveToStream(s);
    MatrixInt m;
    m.TextToValues("1 2\n3 4", " ");
    std::stringstream ms;
    m.SaveToStream(ms);
    VectorInt rv;
    rv.LoadFromStream(s);
    MatrixInt rm;
    rm.LoadFromStream(ms);
    EXPECT_EQ(rv.ValuesToText(), "3\r\n1\r\n4");
    EXPECT_EQ(ValuesToText(rm, " "), "1 2\r\n3 4");
}

}  // namespace
}  // namespace rovane::test
