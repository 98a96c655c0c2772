// Comparing containers: IsEqual with its absolute and relative rules,
// Equal on matrices, complex extremes, dot products and running sums.
#include <rovane/Rovane.h>

#include <cmath>

using namespace rovane;

int main() {
    TVec a, b;
    a.SetIt({1.0, 100.0, NAN_});
    b.SetIt({1.0, 100.5, NAN_});
    bool exact = a.IsEqual(b);                         // false: 0.5 apart
    bool absolute = a.IsEqual(b, 0.5, cmpAbsolute);    // true: |a - b| <= 0.5
    bool relative = a.IsEqual(b, 0.01, cmpRelative);   // true: 0.5 <= 0.01 * 100.5
    if (exact || !absolute || !relative) return 1;     // NaN matches NaN

    TMtx m1, m2;
    m1.Size(2, 2);
    m1.SetIt({1, 2, 3, 4});
    m1.Size(2, 2);
    m2.Size(2, 2);
    m2.SetIt({1, 2, 3, 4});
    m2.Size(2, 2);
    if (!m1.Equal(m2, 0)) return 2;
    m1.CumSum();                                       // down the columns: 1 2 / 4 6
    if (m1[2] != 4 || m1[3] != 6) return 3;

    TVec z;
    z.SetCplx({1, 0, 0, 1, -1, 0, 0, -1});             // 1, i, -1, -i: all of magnitude 1
    TCplx top;
    int32_t at = z.Maxc(top, 0, 4);                    // -1: the largest phase wins the tie
    if (at != 2 || top != TCplx(-1, 0)) return 4;

    TVec u, w;
    u.SetCplx({1, 1, 2, 0});
    w.SetCplx({0, 1, 1, 0});
    TCplx d = u.DotProdc(w);                           // sum of u * w: (1+i)i + 2 = 1 + i
    TCplx c = u.DotProdc(w, true);                     // sum of conj(w) * u: (1+i)(-i) + 2 = 3 - i
    if (d != TCplx(1, 1) || c != TCplx(3, -1)) return 5;
    return 0;
}
