// Views: a window onto the object's own memory or onto another object's.
#include <rovane/Rovane.h>

using namespace rovane;

int main() {
    TVec x;
    x.SetIt({0, 1, 2, 3, 4, 5});

    x.SetSubRange(2, 3);     // x now looks at elements 2, 3, 4 of itself
    x.Add(10.0);             // every operation sees only the window
    const int32_t windowLength = x.Length();
    x.SetFullRange();        // back to all six elements

    TVec v;
    v.SetSubRange(x, 0, 2);  // v looks at x's elements 0 and 1: no copy
    v.Mul(-1.0);             // writes into x
    v.SetFullRange();        // close the view before x is resized or freed

    const TVec& cx = x;
    const bool ok = windowLength == 3 && x.Length() == 6 && cx[0] == 0 && cx[1] == -1 && cx[2] == 12 &&
                    cx[4] == 14 && cx[5] == 5;
    return ok ? 0 : 1;
}
