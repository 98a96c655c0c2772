// The operation frame shared by the container methods: typed access to base
// views and offsets, the dispatch by precision, and cached temporaries that
// go back to the cache also when an exception passes.
// Internal to the library: included by container .cpp files only.
#pragma once

#include <type_traits>

#include "rovane/containers/Rovane.h"
#include "rovane/storage/ObjectCache.h"

namespace rovane::frame {

template <class T>
inline constexpr bool IsComplex = std::is_same_v<T, TCplx> || std::is_same_v<T, TSCplx>;

// Real field type of an element type, and the complex type of a real one.
template <class T>
using RealOf = std::conditional_t<std::is_same_v<T, TCplx> || std::is_same_v<T, double>, double, float>;
template <class F>
using ComplexOf = std::conditional_t<std::is_same_v<F, double>, TCplx, TSCplx>;

// Base view of the block for element type T (null for the other precision).
template <class T>
T* Base(const TRovaneSample& o) {
    if constexpr (std::is_same_v<T, double>) return o.SData;
    else if constexpr (std::is_same_v<T, float>) return o.SSData;
    else if constexpr (std::is_same_v<T, TCplx>) return o.CData;
    else return o.SCData;
}

// Element index of the range start for element type T.
template <class T>
int32_t Offset(const TRovaneSample& o) {
    return IsComplex<T> ? o.FCDataOffset : o.FDataOffset;
}

// Calls fn(T{}) with T the element type of the precision (the four-way key).
template <class Fn>
decltype(auto) ByPrecision(TMtxFloatPrecision p, Fn&& fn) {
    switch (p) {
        case rvSingle: return fn(float{});
        case rvDouble: return fn(double{});
        case rvSingleComplex: return fn(TSCplx{});
        default: return fn(TCplx{});
    }
}

// Calls fn(F{}) with F the real field type (float or double).
template <class Fn>
decltype(auto) ByWidth(bool isDouble, Fn&& fn) {
    return isDouble ? fn(double{}) : fn(float{});
}

// Scalar narrowing for the single path.
template <class F>
F Narrow(double v) { return static_cast<F>(v); }
template <class F>
ComplexOf<F> Narrow(const TCplx& v) {
    return ComplexOf<F>(static_cast<F>(v.Re), static_cast<F>(v.Im));
}

// A TVec from the calling thread's cache, given back on scope exit.
class CachedVec {
public:
    CachedVec() { CreateIt(fVec); }
    ~CachedVec() { FreeIt(fVec); }
    CachedVec(const CachedVec&) = delete;
    CachedVec& operator=(const CachedVec&) = delete;
    TVec& operator*() const { return *fVec; }
    TVec* operator->() const { return fVec; }

private:
    TVec* fVec = nullptr;
};

}  // namespace rovane::frame
