// Fuzz target of the text parsers: arbitrary text goes through the string
// list (Text, DelimitedText, CommaText, name=value pairs) and into the text
// readers of a vector and a matrix, with a delimiter taken from the input.
// Parsing must succeed or raise the library's exception with the target
// unchanged; text written from a loaded matrix must read back to the same
// shape.
#include <string>

#include "FuzzUtil.h"

using namespace rovane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    const uint8_t mode = data[0];
    static const char* const delimiters[] = {"\t", " ", ",", ";", "  ", ", "};
    const std::string delim = delimiters[data[1] % 6];
    const std::string text(reinterpret_cast<const char*>(data + 2), size - 2);
    const bool complex = (mode & 1) != 0, isDouble = (mode & 2) != 0;

    TStringList list;
    list.SetText(text);
    // Delimited text written by the list reads back to the same lines.
    TStringList again;
    again.SetStrictDelimiter((mode & 4) != 0);
    list.SetStrictDelimiter((mode & 4) != 0);
    again.SetDelimitedText(list.DelimitedText());
    if (!again.Equals(list)) fuzz::Fail("DelimitedText did not read back");
    again.SetCommaText(list.CommaText());
    if (list.Count() > 0) (void)list.Values(list.Names(0));

    TMtx m;
    m.Size(2, 2, complex, isDouble);
    m.SetVal(1.0);
    const fuzz::Snapshot before(m);
    try {
        m.StringsToValues(list, delim);
    } catch (const ERovaneException&) {
        if (!(fuzz::Snapshot(m) == before)) fuzz::Fail("a failed matrix parse changed the matrix");
    }
    if (m.Rows() > 0 && m.Cols() > 0) {
        TStringList out;
        m.ValuesToStrings(out, "\t");
        TMtx back;
        back.Size(0, 0, complex, isDouble);
        back.StringsToValues(out, "\t");
        if (back.Rows() != m.Rows() || back.Cols() != m.Cols()) fuzz::Fail("matrix text did not read back");
    }

    TVec v;
    v.Size(2, complex, isDouble);
    v.SetVal(1.0);
    const fuzz::Snapshot vbefore(v);
    try {
        v.TextToValues(text);
    } catch (const ERovaneException&) {
        if (!(fuzz::Snapshot(v) == vbefore)) fuzz::Fail("a failed vector parse changed the vector");
    }
    return 0;
}
