// Selection: relation texts, index lists and masks, gather and scatter,
// sorting with an index vector, and the NaN rules.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>

using namespace rovane;

int main() {
    TVec a;
    a.SetIt({4, 1, NAN_, 3, 8});

    // Positions where a < 3.5: an unordered pair (the NaN) counts as a match.
    TVecInt ix;
    FindIndexes(ix, a, "<", 3.5);  // 1, 2, 3
    if (ix.Length() != 3 || ix[0] != 1 || ix[2] != 3) return 1;

    // "=" against NaN finds the NaNs; "<>" is its negation.
    TVecInt mask;
    FindMask(mask, a, "=", NAN_);  // 0, 0, 1, 0, 0
    if (mask[2] != 1 || mask.Sum() != 1) return 2;

    // The selected elements in order, and back into place.
    FindMask(mask, a, ">=", 4.0);  // 1, 0, 0, 0, 1
    TVec big;
    big.GatherByMask(a, &mask);  // 4, 8
    big.Scale(10.0);
    a.ScatterByMask(big, mask, true);  // 40, 1, NaN, 3, 80
    if (a[0] != 40 || a[4] != 80) return 3;

    // Every third element from the second, and a list of positions.
    TVec s;
    s.GatherByIncr(a, 3, 1);  // 1, 80
    TVecInt where;
    where.SetIt({4, 0});
    s.GatherByIndex(a, where);  // 80, 40
    if (s[0] != 80) return 4;

    // Sorting with the permutation; equal keys keep the library quick sort's order.
    TVec v;
    v.SetIt({3, 1, 2, 1});
    TVecInt perm;
    v.SortAscend(&perm);  // v: 1, 1, 2, 3
    std::printf("%d %d %d %d\n", int(perm[0]), int(perm[1]), int(perm[2]), int(perm[3]));
    if (v[0] != 1 || v[3] != 3) return 7;

    // Finite elements only: Self becomes a view of the count it returns.
    TVec clean;
    const int32_t n = clean.StripNanAndInf(a);  // 40, 1, 3, 80
    if (n != 4 || !clean.IsSubRange()) return 5;
    clean.SetFullRange();

    // A bad relation text names itself.
    try {
        FindMask(mask, a, "!=", 0.0);
        return 6;
    } catch (const ERovaneInvalidArgument& e) {
        std::printf("%s\n", e.what());  // Parameter: != not recognized!
    }
    return 0;
}
