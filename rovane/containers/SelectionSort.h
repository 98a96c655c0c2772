// Internal: the sort, rotation and binary-search cores shared by the float
// and integer containers. Included by container .cpp files only.
#pragma once

#include <cstdint>

#include "rovane/scalars/QuickSort.h"
#include <utility>

namespace rovane::select {

using detail::HoareSort;

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
