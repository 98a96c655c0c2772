// The text forms: a matrix to lines and text and back, formatted and aligned
// values of a complex vector, a line that does not parse, and the string
// list value that copies share.
#include <rovane/Rovane.h>

#include <cstdio>
#include <string>

using namespace rovane;

int main() {
    TMtx m;
    m.Size(2, 3);
    for (int i = 0; i < 6; ++i) m[i] = i * 0.5;

    TStringList lines;
    m.ValuesToStrings(lines, "\t");
    std::string text = m.ValuesToText(";");     // lines joined with "\r\n"
    TMtx n;
    n.TextToValues(text, ";");                   // sized from the text

    if (lines.Count() != 2 || lines[0] != "0\t0.5\t1" || lines[1] != "1.5\t2\t2.5") return 1;
    if (text != "0;0.5;1\r\n1.5;2;2.5") return 2;
    if (n.Rows() != 2 || n.Cols() != 3 || n[4] != 2.0 || n[5] != 2.5) return 3;

    TVec v;
    const double parts[] = {1.5, -2, -10, 0.25};
    v.SetIt(true, parts);                        // 1.5 - 2i, -10 + 0.25i
    v.ValuesToStrings(lines, 0, 0, -1, ftaRightAlign, "0.00", "+0.00i;-0.00i");
    // Padded to the longest value plus three blanks.
    if (lines[0] != "     1.50-2.00i" || lines[1] != "   -10.00+0.25i") return 4;

    // A line that does not parse: the text names its list index, and the
    // vector keeps what it held.
    TVec r;
    r.SetIt({1, 2});
    try {
        r.TextToValues("1\n2\nabc");
        return 5;
    } catch (const ERovaneException& e) {
        if (std::string(e.what()) !=
            "When reading line number 2, an error occured: 'abc' is not a valid floating point value.")
            return 6;
    }
    if (r.Length() != 2 || r[0] != 1 || r[1] != 2) return 7;

    StringList empty;
    if (empty.RefCount() != 0) return 8;  // a value without a list

    StringList a;           // no list yet
    a.Add("x");             // made here
    StringList b = a;       // b shares the list: b.Add changes a too
    StringList c;
    c.Assign(a.Data());     // a separate copy

    b.Add("y");
    c.Add("z");
    if (a.Count() != 2 || a[1] != "y" || c.Count() != 2 || c[1] != "z") return 9;
    std::printf("a: %s", a->Text().c_str());
    return 0;
}
