// Internal: the library's quick sort, written once for the scalar sorts
// (QuickSortAsc, CQuickSortAsc, ...) and the containers' sorts, so that every
// member that promises "the order of the library's quick sort" runs the one
// walk. Included by library .cpp files only.
#pragma once

#include <cstdint>

namespace rovane::detail {

// Hoare partition around the middle element of the inclusive range [lo, hi];
// the two cursors step toward one another while below (above) the pivot, the
// left part recurses, the right part loops. key(i) gives the key of element
// i, swap(i, j) exchanges two elements with everything that travels with
// them. The order of equal keys is what this walk gives.
template <bool Desc, class K, class KeyAt, class Swap>
void HoareSort(int32_t lo, int32_t hi, const KeyAt& key, const Swap& swap) {
    while (lo < hi) {
        int32_t i = lo, j = hi;
        const K p = key(static_cast<int32_t>((static_cast<int64_t>(lo) + hi) >> 1));
        do {
            if constexpr (Desc) {
                while (key(i) > p) ++i;
                while (key(j) < p) --j;
            } else {
                while (key(i) < p) ++i;
                while (key(j) > p) --j;
            }
            if (i <= j) {
                if (i != j) swap(i, j);
                ++i;
                --j;
            }
        } while (i <= j);
        if (lo < j) HoareSort<Desc, K>(lo, j, key, swap);
        lo = i;
    }
}

}  // namespace rovane::detail
