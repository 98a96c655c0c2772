// Internal: the sort, rotation and binary-search cores shared by the float
// and integer containers. Included by container .cpp files only.
#pragma once

#include <cstdint>
#include <utility>

namespace rovane::select {

// The library's quick sort: Hoare partition around the middle element of the
// inclusive range, the cursors stepping while below (above) the pivot, the
// left part by recursion and the right part by the loop. The order of equal
// keys is what this walk gives; every member that promises "the order of the
// library's quick sort" runs this one routine (the same walk as
// QuickSortAsc/CQuickSortAsc of the scalar module).
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

// Keys sorted in place, the values travelling with them.
template <bool Desc, class K, class V>
void QuickSortKeyed(K* keys, V* values, int32_t n) {
    HoareSort<Desc, K>(
        0, n - 1, [keys](int32_t i) { return keys[i]; },
        [keys, values](int32_t i, int32_t j) {
            std::swap(keys[i], keys[j]);
            std::swap(values[i], values[j]);
        });
}

// Places to rotate by towards the end: |Offset| mod n, from the end for a
// negative Offset; 0 for an empty range.
inline int32_t RotateCount(int32_t offset, int32_t n) {
    if (n <= 0) return 0;
    int64_t r = (offset < 0 ? -int64_t(offset) : int64_t(offset)) % n;
    if (offset < 0 && r != 0) r = n - r;
    return static_cast<int32_t>(r);
}

// Binary search on [index, index + len): above(m) and below(m) compare
// element m with the value. A hit sets xIndex = m and gives true; a miss
// gives false with xIndex at the last probe (index for an empty range).
template <class Above, class Below>
bool BinarySearchRun(int32_t index, int32_t len, int32_t& xIndex, const Above& above, const Below& below) {
    int64_t lo = index, hi = int64_t(index) + len - 1;
    xIndex = index;
    while (lo <= hi) {
        const int64_t mid = (lo + hi) >> 1;
        xIndex = static_cast<int32_t>(mid);
        if (above(static_cast<int32_t>(mid)))
            hi = mid - 1;
        else if (below(static_cast<int32_t>(mid)))
            lo = mid + 1;
        else
            return true;
    }
    return false;
}

}  // namespace rovane::select
