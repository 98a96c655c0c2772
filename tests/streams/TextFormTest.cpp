// Text forms of vectors and matrices, through the number text of the scalar
// layer. Values with at most 15 significant digits (7 for single) come back
// exactly from the general form; the tests use such values.
#include "StreamsTestUtil.h"

namespace rovane::test {
namespace {

std::vector<std::string> Lines(const TStringList& l) { return std::vector<std::string>(l.begin(), l.end()); }

TEST(VectorText, FormsAndRoundTrip) {
    for (bool isDouble : {true, false})
        for (bool complex : {false, true}) {
            SCOPED_TRACE(std::string(isDouble ? "double" : "single") + (complex ? " complex" : " real"));
            TVec v;
            v.Size(0, complex, isDouble);
            std::vector<double> vals = {0.1, -2.5, 1e-7, 12345.75, -0.0, 3, NAN_, -INF};
            v.SetIt(complex, vals);
            TStringList l;
            l.Add("stale 1");
            l.Add("stale 2");
            l.Add("stale 3");
            l.Add("stale 4");
            l.Add("stale 5");
            v.ValuesToStrings(l);  // the short form starts a fresh list
            EXPECT_EQ(l.Count(), v.Length());
            TVec w;
            w.Size(0, complex, isDouble);
            w.StringsToValues(l);
            const State a(v), b(w);
            ASSERT_EQ(a.Values.size(), b.Values.size());
            for (size_t i = 0; i < a.Values.size(); ++i)
                if (std::isnan(a.Values[i])) EXPECT_TRUE(std::isnan(b.Values[i])) << i;
                else EXPECT_EQ(a.Values[i], b.Values[i]) << i << ": " << l[static_cast<int32_t>(i / (complex ? 2 : 1))];
            TVec x;
            x.Size(0, complex, isDouble);
            x.TextToValues(v.ValuesToText());
            EXPECT_EQ(x.Length(), v.Length());
        }
}

TEST(VectorText, PlacementAlignmentAndHeaders) {
    TVec v;
    v.SetIt({1, -22.5, 333});
    TStringList l;
    l.Add("keep");
    l.Add("old");
    v.ValuesToStrings(l, 1, 1, 2, ftaRightAlign, "0.0", "", false);
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"keep", "   -22.5", "   333.0"}));
    v.ValuesToStrings(l, 0, 0, 2, ftaLeftAlign, "", "", true);
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"[0] 1       ", "[1] -22.5   ", "   333.0"}));
    TVec c;
    c.SetIt(true, std::vector<double>{1.5, -2, 0, 1, 3, 0});
    TStringList m;
    c.ValuesToStrings(m, 0, 0, -1, ftaNone, "0.0", "+0.0i;-0.0i", false);
    EXPECT_EQ(Lines(m), (std::vector<std::string>{"1.5-2.0i", "+1.0i", "3.0"}));
    EXPECT_EQ(c.ValuesToText(), "1.5 - 2i\r\n1i\r\n3");
}

TEST(VectorText, ReadingChecksAndFailures) {
    TVec v;
    v.SetIt({9, 9, 9, 9});
    TStringList l;
    l.SetText("1\n2.5\nabc\n4");
    v.StringsToValues(l, 0, 1, 2);
    EXPECT_EQ(State(v).Values, (std::vector<double>{9, 1, 2.5, 9}));
    ExpectMessage<ERovaneRangeError>([&] { v.StringsToValues(l, 0, 3, 2); }, "(Index + Len) > fLength");
    ExpectMessage<ERovaneRangeError>([&] { v.StringsToValues(l, 3, 0, 2); }, "ListIndex + Len > aList.Count");
    const State before(v);
    ExpectMessage<ERovaneException>(
        [&] { v.StringsToValues(l, 0, 0, 4); },
        "When reading line number 2, an error occured: 'abc' is not a valid floating point value.");
    EXPECT_TRUE(State(v) == before);  // parsed into a temporary first
    ExpectMessage<ERovaneException>([&] { v.TextToValues("1\nnan"); },
                                    "When reading line number 1, an error occured: 'nan' is not a valid floating "
                                    "point value.");
    EXPECT_TRUE(State(v) == before);
    EXPECT_THROW(v.ValuesToStrings(l, 0, 2, 5), ERovaneRangeError);
}

TEST(MatrixText, RoundTripWithDelimiters) {
    for (const char* delim : {"\t", " ", ";", ", "})
        for (bool complex : {false, true}) {
            SCOPED_TRACE(delim);
            TMtx m;
            m.Size(2, 3, complex);
            for (int i = 0; i < (complex ? 12 : 6); ++i) m[i] = (i - 4) * 0.25;
            const std::string text = m.ValuesToText(delim);
            TMtx n;
            n.Size(0, 0, complex);
            if (complex && std::string(delim) == " ") {
                // "re + imi" holds blanks: blank-delimited complex text is not one item per value.
                EXPECT_THROW(n.TextToValues(text, delim), ERovaneException);
                continue;
            }
            n.TextToValues(text, delim);
            EXPECT_EQ(n.Rows(), 2);
            EXPECT_EQ(n.Cols(), 3);
            EXPECT_EQ(State(n).Values, State(m).Values);
        }
}

TEST(MatrixText, PartsChecksAndFailures) {
    TMtx m;
    m.Size(3, 3);
    m.SetVal(0.0);
    TStringList l;
    l.SetText("x\n1  2\n3 4\n");
    m.StringsToValues(l, 1, 2, 1, 1, " ");  // runs of the delimiter count as one
    EXPECT_EQ(State(m).Values, (std::vector<double>{0, 0, 0, 0, 1, 2, 0, 3, 4}));
    EXPECT_EQ(ColumnCount(l, 1, " "), 2);
    ExpectMessage<ERovaneRangeError>([&] { ColumnCount(l, 3, " "); }, "Row > aList.Count-1");
    ExpectMessage<ERovaneRangeError>([&] { m.StringsToValues(l, 1, 2, 2, 0, " "); }, "(Row + ListLen - 1) > fRows");
    ExpectMessage<ERovaneRangeError>([&] { m.StringsToValues(l, 1, 2, 0, 2, " "); }, "(Col + ColumnCount) > fCols");
    ExpectMessage<ERovaneRangeError>([&] { m.StringsToValues(l, 1, 3, 0, 0, " "); },
                                     "(ListIndex + ListLen - 1) > aList.Count");
    const State before(m);
    TStringList wide;
    wide.SetText("1 2\n3 4 5\n");
    ExpectMessage<ERovaneRangeError>([&] { m.StringsToValues(wide, " "); }, "k > AMtx.Cols-1");
    ExpectMessage<ERovaneException>([&] { m.TextToValues("1\t2\n3\tx4", "\t"); },
                                    "When reading line number 1, an error occured: 'x4' is not a valid floating point "
                                    "value.");
    EXPECT_TRUE(State(m) == before);
    TStringList shortLine;
    shortLine.SetText("1 2\n3\n");
    m.StringsToValues(shortLine, " ");  // a short line leaves zeros
    EXPECT_EQ(State(m).Values, (std::vector<double>{1, 2, 3, 0}));
}

TEST(MatrixText, WritingPartsAndChecks) {
    TMtx m;
    m.Size(2, 3);
    for (int i = 0; i < 6; ++i) m[i] = i;
    TStringList l;
    m.ValuesToStrings(l, 0, 1, 2, 2, ";", ftaRightAlign, "0.0", "", true);
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"[0]    1.0;   2.0", "[1]    4.0;   5.0"}));
    ExpectMessage<ERovaneRangeError>([&] { m.ValuesToStrings(l, 2, 0, 0, 1); }, "TMtx.ValuesToStrings: 0 <= Row < FRows");
    ExpectMessage<ERovaneRangeError>([&] { m.ValuesToStrings(l, 0, 3, 1, 0); }, "TMtx.ValuesToStrings: 0 <= Col < FCols");
    ExpectMessage<ERovaneRangeError>([&] { m.ValuesToStrings(l, 1, 0, 2, 1); },
                                     "TMtx.ValuesToStrings: 0 <= Row + RowCount <= FRows");
    ExpectMessage<ERovaneRangeError>([&] { m.ValuesToStrings(l, 0, 1, 1, 3); },
                                     "TMtx.ValuesToStrings: 0 <= Col + ColCount <= FCols");
    EXPECT_EQ(m.ValuesToText(","), "0,1,2\r\n3,4,5");
    TMtx e;
    e.ValuesToStrings(l);
    EXPECT_EQ(l.Count(), 0);
}

}  // namespace
}  // namespace rovane::test
