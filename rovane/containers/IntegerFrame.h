// The operation frame of the integer family: typed access to the element
// run of an integer container by its width, and the checks shared by the
// two-operand forms. Internal to the library: included by container .cpp
// files only.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include "rovane/containers/RovaneInt.h"

namespace rovane::intframe {

// Pointer to element `at` of the range of o, typed by the width.
template <class T>
T* At(const TRovaneInt& o, int64_t at = 0) {
    if constexpr (std::is_same_v<T, int32_t>)
        return o.IData + o.FDataOffset + at;
    else if constexpr (std::is_same_v<T, int16_t>)
        return o.SIData + o.FDataOffset + at;
    else
        return o.BData + o.FDataOffset + at;
}

// Calls fn(T{}) with T the element type of the width.
template <class Fn>
decltype(auto) ByWidth(TIntPrecision p, Fn&& fn) {
    switch (p) {
        case prInt32: return fn(int32_t{});
        case prInt16: return fn(int16_t{});
        default: return fn(uint8_t{});
    }
}

template <class T>
inline constexpr int64_t Lo = std::numeric_limits<T>::min();
template <class T>
inline constexpr int64_t Hi = std::numeric_limits<T>::max();

template <class T>
T Saturate(int64_t v) {
    return static_cast<T>(v < Lo<T> ? Lo<T> : v > Hi<T> ? Hi<T> : v);
}

// Range texts shared with the float family.
void CheckSelfRange(const TRovaneInt& self, int32_t index, int32_t len);
void CheckSrcRange(const TRovaneInt& src, int32_t srcIndex, int32_t len);
// Resolves Len = -1 to the rest of Self from Index.
int32_t ResolveLen(const TRovaneInt& self, int32_t index, int32_t len);

}  // namespace rovane::intframe
