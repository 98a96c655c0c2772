// Views of whole rows, rearrangements, rows and columns, and generators.
#include <rovane/Rovane.h>

#include <cstdio>

using namespace rovane;

int main() {
    TMtx m;
    m.Size(4, 3);
    for (int i = 0; i < 12; ++i) m.Values[i] = i;

    // Rows 1 and 2 of m as a 2 x 3 matrix, without a copy.
    TMtx rows;
    rows.SetSubRange(m, 1 * m.Cols(), 2, m.Cols());
    rows.Scale(10.0);  // writes into m
    if (m.Values[3] != 30 || m.Values[9] != 9) return 1;
    rows.SetFullRange();

    TMtx t;
    t.Transp(m);  // 3 x 4
    TVec col;
    col.GetCol(m, 2);  // (2, 50, 80, 11)
    if (t.Rows() != 3 || col.Values[1] != 50) return 2;

    TMtx toe;
    TVec first;
    first.SetIt({1, 2, 3});
    toe.Toeplitz(first);  // symmetric: rows (1 2 3), (2 1 2), (3 2 1)
    if (toe.Values[3] != 2 || toe.Values[8] != 1) return 3;
    std::printf("views ok\n");
    return 0;
}
