// Internal helpers of the matrix members (containers/Matrix*.cpp): typed
// views of a range, cached temporary matrices, and the precision keys.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/Rovane.h"
#include "rovane/storage/ReportChannel.h"

namespace rovane::mtx {

using frame::ComplexOf;
using frame::ByPrecision;
using frame::IsComplex;
using frame::RealOf;

inline TMtxFloatPrecision PrecOf(bool complex, bool isDouble) {
    return complex ? (isDouble ? rvDoubleComplex : rvSingleComplex) : (isDouble ? rvDouble : rvSingle);
}

// First element of the range of o, typed by the element type T.
template <class T>
T* At(const TRovane& o) {
    return frame::Base<T>(o) + frame::Offset<T>(o);
}

// Row stride for BLAS and the kernels: at least 1, also for an empty matrix.
inline int32_t Ld(const TMtx& m) { return std::max<int32_t>(1, m.fLeadingCols); }

// A real or complex value as element type T (the imaginary part dropped
// for a real T).
template <class T>
T FromCplx(const TCplx& v) {
    if constexpr (IsComplex<T>)
        return T(RealOf<T>(v.Re), RealOf<T>(v.Im));
    else
        return T(v.Re);
}
template <class T>
T FromReal(double v) {
    if constexpr (IsComplex<T>)
        return T(RealOf<T>(v), RealOf<T>(0));
    else
        return T(v);
}
template <class T>
T Conjugate(const T& v) {
    if constexpr (IsComplex<T>)
        return T(v.Re, -v.Im);
    else
        return v;
}

// A TMtx from the calling thread's cache, given back on scope exit (also
// when an exception passes).
class CachedMtx {
public:
    CachedMtx() { CreateIt(fMtx); }
    ~CachedMtx() noexcept;
    CachedMtx(const CachedMtx&) = delete;
    CachedMtx& operator=(const CachedMtx&) = delete;
    TMtx& operator*() const { return *fMtx; }
    TMtx* operator->() const { return fMtx; }

private:
    TMtx* fMtx = nullptr;
};

// A cached TMtx or TVec taken only when first used: the common paths of
// the products need none, and a take and give-back costs more than a small
// product.
template <class C>
class Lazy {
public:
    Lazy() = default;
    ~Lazy() noexcept {
        if (!fObj) return;
        try {
            FreeIt(fObj);
        } catch (const std::exception& e) {
            ReportText(e.what());
        } catch (...) {
            ReportText("FreeIt of a temporary failed");
        }
    }
    Lazy(const Lazy&) = delete;
    Lazy& operator=(const Lazy&) = delete;
    C& operator*() {
        if (!fObj) CreateIt(fObj);
        return *fObj;
    }
    C* operator->() { return &**this; }

private:
    C* fObj = nullptr;
};
using LazyMtx = Lazy<TMtx>;
using LazyVec = Lazy<TVec>;

// Whether the element runs of two objects share memory (then one of them is
// read through a copy).
bool SharesMemory(const TRovane& a, const TRovane& b);

// Copies src (rows x cols, row stride lds) into dst (row stride ldd),
// widening a real source to complex when T is complex and S real.
template <class S, class T>
void CopyBlock(const S* src, int32_t lds, T* dst, int32_t ldd, int32_t rows, int32_t cols) {
    for (int32_t i = 0; i < rows; ++i) {
        const S* s = src + int64_t(i) * lds;
        T* d = dst + int64_t(i) * ldd;
        if constexpr (std::is_same_v<S, T>)
            std::copy(s, s + cols, d);
        else
            for (int32_t j = 0; j < cols; ++j) d[j] = T(RealOf<T>(s[j]), RealOf<T>(0));
    }
}

// Self's copy of m as a complex matrix of the same shape and width.
void WidenToComplex(const TMtx& m, TMtx& dst);

}  // namespace rovane::mtx
