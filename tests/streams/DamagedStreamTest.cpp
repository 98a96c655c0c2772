// Damaged, short and foreign streams: each raises the library's exception
// with its text, and the object keeps its previous state, from a seekable
// stream and from one that cannot seek (the buffering path).
#include "StreamsTestUtil.h"

namespace rovane::test {
namespace {

std::string SavedVector(int n, TPrecision p = prDouble) {
    TVec v;
    v.Size(n);
    for (int i = 0; i < n; ++i) v[i] = i + 0.5;
    v.SetCaption("cap");
    v.SetPrecision(p);
    std::stringstream s;
    v.SaveToStream(s);
    return s.str();
}

std::string SavedMatrix(int rows, int cols) {
    TMtx m;
    m.Size(rows, cols);
    for (int i = 0; i < rows * cols; ++i) m[i] = i;
    std::stringstream s;
    m.SaveToStream(s);
    return s.str();
}

template <class C>
void Prepare(C& c);
template <>
void Prepare(TVec& v) {
    v.SetIt({7, 8, 9});
    v.SetTag(11);
    v.SetCaption("keep");
}
template <>
void Prepare(TMtx& m) {
    m.Size(1, 2);
    m[0] = 7;
    m[1] = 8;
    m.SetTag(11);
    m.SetCaption("keep");
}

// Loads `bytes` into a prepared object, from a seekable and from a
// non-seekable stream, and expects `text` and an unchanged object.
template <class C>
void ExpectRefused(const std::string& bytes, const std::string& text) {
    for (bool seekable : {true, false}) {
        SCOPED_TRACE(seekable ? "seekable" : "pipe");
        C obj;
        Prepare(obj);
        const State before(obj);
        PipeBuf pipe(bytes);
        std::stringstream file(bytes);
        std::istream pipeStream(&pipe);
        std::istream& in = seekable ? static_cast<std::istream&>(file) : pipeStream;
        ExpectMessage<ERovaneException>([&] { obj.LoadFromStream(in); }, text);
        EXPECT_TRUE(State(obj) == before);
        EXPECT_EQ(FileVersion, -1);
    }
}

TEST(DamagedStream, VectorTruncatedAnywhere) {
    const std::string full = SavedVector(4);  // 44 header + 4 caption + 32 values
    for (size_t cut = 0; cut < full.size(); ++cut) {
        SCOPED_TRACE(cut);
        const std::string part = full.substr(0, cut);
        if (cut < 48)
            ExpectRefused<TVec>(part, "Error reading stream!");
        else
            for (bool seekable : {true, false}) {
                TVec v;
                Prepare(v);
                const State before(v);
                PipeBuf pipe(part);
                std::stringstream file(part);
                std::istream pipeStream(&pipe);
                try {
                    v.LoadFromStream(seekable ? static_cast<std::istream&>(file) : pipeStream);
                    ADD_FAILURE() << "loaded a cut stream";
                } catch (const ERovaneException& e) {
                    const std::string want = "TVec.ReadHeader: stream too short: the header announces 32 "
                                             "bytes of values, " + std::to_string(cut - 48) + " are left";
                    EXPECT_EQ(std::string(e.what()), want);
                }
                EXPECT_TRUE(State(v) == before);
            }
    }
}

TEST(DamagedStream, MatrixTruncatedHeader) {
    const std::string full = SavedMatrix(2, 2);
    for (size_t cut : {0, 1, 50, 103, 104})  // in the floats, and before the caption byte
        ExpectRefused<TMtx>(full.substr(0, cut), "TMtx: Error reading stream!");
}

// Header fields set to values a writer never produces.
TEST(DamagedStream, VectorFieldTable) {
    struct Case {
        int index;
        float value;
        const char* text;
    };
    const Case cases[] = {
        {8, 64018.0f, "The specified (file) stream does not appear to have been produced by Rovane!"},
        {8, NAN_SINGLE, "The specified (file) stream does not appear to have been produced by Rovane!"},
        {5, NAN_SINGLE, "The specified (file) stream does not appear to have been produced by Rovane!"},
        {5, 3e9f, "The specified (file) stream does not appear to have been produced by Rovane!"},
        {5, 607.0f, "TVec.ReadHeader: stream format version 607 is not supported (1 to 606)"},
        {1, -5.0f, "TVec.ReadHeader: Length < 0 (-5)"},
        {1, 8388607.0f,
         "TVec.ReadHeader: stream too short: the header announces 67108856 bytes of values, 32 are left"},
        {9, 300.0f, "TVec.ReadHeader: Length > MaxInt (2516582404)"},
        {1, INF_SINGLE, "TVec.ReadHeader: header field 1 holds INF, not a valid value"},
        {4, 11.0f, "TVec.ReadHeader: header field 4 holds 11, outside 0..10"},
        {4, -1.0f, "TVec.ReadHeader: header field 4 holds -1, outside 0..10"},
        {0, NAN_SINGLE, "TVec.ReadHeader: header field 0 holds NAN, not a valid value"},
        {7, 1e20f, "TVec.ReadHeader: header field 7 holds 1E20, not a valid value"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::string bytes = SavedVector(4);
        SetHeaderFloat(bytes, c.index, c.value);
        ExpectRefused<TVec>(bytes, c.text);
    }
    // A negative or NaN high part is ignored, as old writers left anything there.
    for (float hi : {-3.0f, NAN_SINGLE}) {
        std::string bytes = SavedVector(4);
        SetHeaderFloat(bytes, 9, hi);
        std::stringstream s(bytes);
        TVec v;
        v.LoadFromStream(s);
        EXPECT_EQ(v.Length(), 4);
    }
}

TEST(DamagedStream, MatrixFieldTable) {
    struct Case {
        int index;
        float value;
        const char* text;
    };
    const Case cases[] = {
        {18, 1.0f, "The specified (file) stream does not appear to be have been produced by Rovane!"},
        {16, 700.0f, "TMtx.ReadHeader: stream format version 700 is not supported (1 to 606)"},
        {16, INF_SINGLE, "The specified (file) stream does not appear to be have been produced by Rovane!"},
        {1, -1.0f, "TMtx.ReadHeader: Rows < 0 or Cols < 0 (-1, 2)"},
        {19, 4096.0f, "TMtx.ReadHeader: Rows * Cols > MaxInt (34359738370 * 2)"},
        {6, 4.0f, "TMtx.ReadHeader: header field 6 holds 4, outside 0..3"},
        {8, 3.0f, "TMtx.ReadHeader: header field 8 holds 3, outside 0..2"},
        {11, 2.0f, "TMtx.ReadHeader: header field 11 holds 2, outside 0..1"},
        {13, -1.0f, "TMtx.ReadHeader: header field 13 holds -1, outside 0..2147483647"},
        {9, 12.0f, "TMtx.ReadHeader: header field 9 holds 12, outside 0..10"},
        {2, 9000.0f, "TMtx.ReadHeader: stream too short: the header announces 144000 bytes of values, 32 are left"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::string bytes = SavedMatrix(2, 2);
        SetHeaderFloat(bytes, c.index, c.value);
        ExpectRefused<TMtx>(bytes, c.text);
    }
}

// The headers differ: a vector stream handed to a matrix reader, or the
// reverse, is refused (by the signature or by a field or version that makes
// no sense at the other index) and changes nothing.
TEST(DamagedStream, ForeignObjectKind) {
    for (int n : {1, 4, 40}) {
        TMtx m;
        Prepare(m);
        const State before(m);
        std::stringstream s(SavedVector(n));
        EXPECT_THROW(m.LoadFromStream(s), ERovaneException);
        EXPECT_TRUE(State(m) == before);
    }
    ExpectRefused<TVec>(SavedMatrix(3, 3), "TVec.ReadHeader: stream format version 0 is not supported (1 to 606)");
}

// ReadHeader alone also refuses a header whose values the stream cannot hold,
// before it changes the object; ReadValues refuses a short stream before it
// writes a value.
TEST(DamagedStream, ExplicitHeaderAndValues) {
    const std::string full = SavedVector(4);
    std::stringstream s(full.substr(0, 60));
    TVec v;
    Prepare(v);
    const State before(v);
    ExpectMessage<ERovaneException>(
        [&] { v.ReadHeader(s); },
        "TVec.ReadHeader: stream too short: the header announces 32 bytes of values, 12 are left");
    EXPECT_TRUE(State(v) == before);
    std::stringstream t(full);
    EXPECT_EQ(v.ReadHeader(t), prDouble);
    std::stringstream shortValues(std::string(20, '\0'));
    ExpectMessage<ERovaneException>([&] { v.ReadValues(shortValues, prDouble); },
                                    "TVec.ReadValues: stream too short: 32 bytes of values needed, 20 are left");
    EXPECT_EQ(FileVersion, -1);
    ExpectMessage<ERovaneException>([&] { v.ReadValues(t, static_cast<TPrecision>(12)); },
                                    "TVec.ReadValues: unknown precision 12");
    // From a pipe a short value run fails as the stream fails.
    PipeBuf pipe(std::string(20, '\0'));
    std::istream p(&pipe);
    ExpectMessage<ERovaneException>([&] { v.ReadValues(p, prDouble); }, "Stream read error");
}

TEST(DamagedStream, WriterRefusals) {
    TVec v;
    v.SetIt({1});
    v.SetCaption(std::string(256, 'c'));
    std::stringstream s;
    ExpectMessage<ERovaneException>([&] { v.SaveToStream(s); }, "WriteShortString: Length(s) > 255");
    EXPECT_TRUE(s.str().empty());
    v.SetCaption("");
    ExpectMessage<ERovaneException>([&] { v.WriteHeader(s, static_cast<TPrecision>(11), rnTrunc, boLittleEndian); },
                                    "TVec.WriteHeader: unknown precision 11");
    ExpectMessage<ERovaneException>([&] { v.SaveToFile("/nonexistent-dir/x.bin"); },
                                    "TVec.SaveToFile: cannot open file \"/nonexistent-dir/x.bin\"");
}

// A sub-range cannot be resized: the refusal of sizing comes before any
// field changes, so the object is left as it was.
TEST(DamagedStream, SubRangeTargetIsRefusedIntact) {
    TVec src;
    src.SetIt({1, 2, 3, 4});
    TVec view;
    view.SetSubRange(src, 1, 2);
    view.SetTag(4);
    const State before(view);
    std::stringstream s(SavedVector(5));
    EXPECT_THROW(view.LoadFromStream(s), ERovaneException);
    EXPECT_TRUE(State(view) == before);
    view.SetFullRange();
}

}  // namespace
}  // namespace rovane::test
