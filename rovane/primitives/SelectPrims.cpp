// Primitives of the selection family (see SelectPrims.h): each entry checks
// its length and calls the kernel of the active instruction-set table, or
// runs its plain loop where the work is a move with no arithmetic.
#include "rovane/primitives/SelectPrims.h"

#include <limits>
#include <type_traits>

#include "rovane/primitives/kernels/Dispatch.h"

namespace rovane {

namespace {

using kern::idx;

template <class F>
const kern::TSelectKernels<F>& Sel() {
    return kern::ActiveTables().sel.Of<F>();
}

template <class T>
void PackI(int32_t n, const T* x, int32_t inc, T* y) {
    for (int64_t j = 0; j < n; ++j) y[j] = x[j * inc];
}
template <class T>
void PackV(int32_t n, const T* x, const int32_t* ix, T* y) {
    for (int32_t j = 0; j < n; ++j) y[j] = x[ix[j]];
}
template <class T>
void UnpackI(int32_t n, const T* x, T* y, int32_t inc) {
    for (int64_t j = 0; j < n; ++j) y[j * inc] = x[j];
}
template <class T>
void UnpackV(int32_t n, const T* x, T* y, const int32_t* iy) {
    for (int32_t j = 0; j < n; ++j) y[iy[j]] = x[j];
}

int32_t Selected(const int32_t* m, int32_t n) {
    int32_t c = 0;
    for (int32_t i = 0; i < n; ++i) c += m[i] > 0;
    return c;
}

template <class F>
F* RealsOf(std::conditional_t<std::is_same_v<F, double>, TCplx, TSCplx>* p) {
    return reinterpret_cast<F*>(p);
}

}  // namespace

int64_t ScaleSaturate(__int128 v, int32_t sf, int64_t lo, int64_t hi) {
    if (sf > 0) {
        if (sf >= 100) return 0;  // |v| < 2^99: every value rounds to 0
        const __int128 one = 1;
        const __int128 q = v >= 0 ? v >> sf : -((-v) >> sf);  // truncated toward zero
        const __int128 r = v - q * (one << sf);               // same sign as v
        const __int128 half = one << (sf - 1);
        const __int128 ar = r < 0 ? -r : r;
        __int128 res = q;
        if (ar > half || (ar == half && (q & 1) != 0)) res += v < 0 ? -1 : 1;
        v = res;
    } else if (sf < 0) {
        if (v == 0) return 0;
        if (sf <= -64) return v > 0 ? hi : lo;
        const __int128 lim = __int128(1) << 64;
        if (v >= lim || v <= -lim) return v > 0 ? hi : lo;
        v *= __int128(1) << (-sf);  // |v| < 2^64 * 2^63 fits
    }
    return v > hi ? hi : v < lo ? lo : static_cast<int64_t>(v);
}

#define ROVANE_SELECT_DEFS(S, F, C)                                                                                   \
    void S##FindMaskd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, const F* b, int32_t bIndex,          \
                          int32_t* dst, int32_t dstIndex) {                                                         \
        if (len > 0) Sel<F>().FindMask(a + aIndex, b + bIndex, dst + dstIndex, len, op);                            \
    }                                                                                                               \
    void S##FindMaskCd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, F b, int32_t* dst,                  \
                           int32_t dstIndex) {                                                                      \
        if (len > 0) Sel<F>().FindMaskC(a + aIndex, b, dst + dstIndex, len, op);                                    \
    }                                                                                                               \
    void S##FindIndexesd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, const F* b, int32_t bIndex,       \
                             int32_t* dst, int32_t dstIndex, int32_t& count) {                                      \
        count = len > 0 ? static_cast<int32_t>(                                                                     \
                              Sel<F>().FindIndexes(a + aIndex, b + bIndex, dst + dstIndex, len, op, 0))             \
                        : 0;                                                                                        \
    }                                                                                                               \
    void S##FindIndexesCd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, F b, int32_t* dst,               \
                              int32_t dstIndex, int32_t& count) {                                                   \
        count = len > 0 ? static_cast<int32_t>(Sel<F>().FindIndexesC(a + aIndex, b, dst + dstIndex, len, op, 0))   \
                        : 0;                                                                                        \
    }                                                                                                               \
    int32_t S##PackByMask_Idx(int32_t len, const F* src, int32_t sIndex, int32_t mIndex, const int32_t* mask,      \
                              int32_t dIndex, F* dst) {                                                             \
        if (len <= 0) return 0;                                                                                     \
        const int32_t cap = Selected(mask + mIndex, len);                                                           \
        return static_cast<int32_t>(Sel<F>().PackByMask(src + sIndex, mask + mIndex, dst + dIndex, len, cap));      \
    }                                                                                                               \
    int32_t S##PackByMaskTo_Idx(int32_t len, const F* src, int32_t sIndex, const int32_t* mask, int32_t mIndex,    \
                                F* dst, int32_t dIndex, int32_t cap) {                                              \
        if (len <= 0) return 0;                                                                                     \
        return static_cast<int32_t>(                                                                                \
            Sel<F>().PackByMask(src + sIndex, mask + mIndex, dst + dIndex, len, cap < 0 ? 0 : cap));                \
    }                                                                                                               \
    int32_t S##PackByMaskToc_Idx(int32_t len, const C* src, int32_t sIndex, const int32_t* mask, int32_t mIndex,   \
                                 C* dst, int32_t dIndex, int32_t cap) {                                             \
        if (len <= 0) return 0;                                                                                     \
        return static_cast<int32_t>(Sel<F>().PackByMaskc(reinterpret_cast<const F*>(src + sIndex), mask + mIndex,  \
                                                         RealsOf<F>(dst + dIndex), len, cap < 0 ? 0 : cap));        \
    }                                                                                                               \
    int32_t S##PackByMaskc_Idx(int32_t len, const C* src, int32_t sIndex, int32_t mIndex, const int32_t* mask,     \
                               int32_t dIndex, C* dst) {                                                            \
        if (len <= 0) return 0;                                                                                     \
        const int32_t cap = Selected(mask + mIndex, len);                                                           \
        return static_cast<int32_t>(Sel<F>().PackByMaskc(reinterpret_cast<const F*>(src + sIndex), mask + mIndex,  \
                                                         RealsOf<F>(dst + dIndex), len, cap));                      \
    }                                                                                                               \
    void S##vdpacki_Idx(int32_t n, const F* x, int32_t xIndex, int32_t incx, F* y, int32_t yIndex) {               \
        if (n > 0) PackI(n, x + xIndex, incx, y + yIndex);                                                          \
    }                                                                                                               \
    void S##vdpackv_Idx(int32_t n, const F* x, int32_t xIndex, const int32_t* ix, int32_t ixIndex, F* y,           \
                        int32_t yIndex) {                                                                           \
        if (n > 0) PackV(n, x + xIndex, ix + ixIndex, y + yIndex);                                                  \
    }                                                                                                               \
    void S##vdpackm_Idx(int32_t n, const F* x, int32_t xIndex, const int32_t* ma, int32_t maIndex, F* y,           \
                        int32_t yIndex) {                                                                           \
        /* y has room for the selected elements only: their count bounds the stores. */                           \
        if (n > 0) Sel<F>().PackByMask(x + xIndex, ma + maIndex, y + yIndex, n, Selected(ma + maIndex, n));         \
    }                                                                                                               \
    void S##vdpackic_Idx(int32_t n, const C* x, int32_t xIndex, int32_t incx, C* y, int32_t yIndex) {              \
        if (n > 0) PackI(n, x + xIndex, incx, y + yIndex);                                                          \
    }                                                                                                               \
    void S##vdpackvc_Idx(int32_t n, const C* x, int32_t xIndex, const int32_t* ix, int32_t ixIndex, C* y,          \
                         int32_t yIndex) {                                                                          \
        if (n > 0) PackV(n, x + xIndex, ix + ixIndex, y + yIndex);                                                  \
    }                                                                                                               \
    void S##vdpackmc_Idx(int32_t n, const C* x, int32_t xIndex, const int32_t* ma, int32_t maIndex, C* y,          \
                         int32_t yIndex) {                                                                          \
        if (n > 0)                                                                                                  \
            Sel<F>().PackByMaskc(reinterpret_cast<const F*>(x + xIndex), ma + maIndex, RealsOf<F>(y + yIndex), n,   \
                                 Selected(ma + maIndex, n));                                                        \
    }                                                                                                               \
    void S##vdunpacki_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex, int32_t incy) {             \
        if (n > 0) UnpackI(n, x + xIndex, y + yIndex, incy);                                                        \
    }                                                                                                               \
    void S##vdunpackv_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex, const int32_t* iy,          \
                          int32_t iyIndex) {                                                                        \
        if (n > 0) UnpackV(n, x + xIndex, y + yIndex, iy + iyIndex);                                                \
    }                                                                                                               \
    void S##vdunpackm_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex, const int32_t* ma,          \
                          int32_t maIndex) {                                                                        \
        if (n > 0) Sel<F>().UnpackByMask(x + xIndex, ma + maIndex, y + yIndex, n, n);                               \
    }                                                                                                               \
    void S##vdunpackic_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex, int32_t incy) {            \
        if (n > 0) UnpackI(n, x + xIndex, y + yIndex, incy);                                                        \
    }                                                                                                               \
    void S##vdunpackvc_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex, const int32_t* iy,         \
                           int32_t iyIndex) {                                                                       \
        if (n > 0) UnpackV(n, x + xIndex, y + yIndex, iy + iyIndex);                                                \
    }                                                                                                               \
    void S##vdunpackmc_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex, const int32_t* ma,         \
                           int32_t maIndex) {                                                                       \
        if (n > 0)                                                                                                  \
            Sel<F>().UnpackByMaskc(reinterpret_cast<const F*>(x + xIndex), ma + maIndex, RealsOf<F>(y + yIndex), n, \
                                   n);                                                                              \
    }
ROVANE_SELECT_DEFS(, double, TCplx)
ROVANE_SELECT_DEFS(s, float, TSCplx)
#undef ROVANE_SELECT_DEFS

namespace {
template <class T, bool Sub, class K>
IppStatus SatSum(const T* x, const T* y, T* d, int32_t len, int32_t sf, K kernel) {
    if (len < 0) return ippStsSizeErr;
    if (len == 0) return ippStsNoErr;
    if (sf == 0) {
        kernel(x, y, d, len);
        return ippStsNoErr;
    }
    constexpr int64_t lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    for (int32_t i = 0; i < len; ++i)
        d[i] = static_cast<T>(ScaleSaturate(Sub ? __int128(y[i]) - x[i] : __int128(x[i]) + y[i], sf, lo, hi));
    return ippStsNoErr;
}
const kern::TIntKernels& Ints() { return kern::ActiveTables().sel.ints; }
}  // namespace

IppStatus ippsAdd_32s_Sfs_Idx(const int32_t* x, int32_t xi, const int32_t* y, int32_t yi, int32_t* d, int32_t di,
                              int32_t len, int32_t sf) {
    return SatSum<int32_t, false>(x + xi, y + yi, d + di, len, sf, Ints().AddSat32);
}
IppStatus ippsAdd_16s_Sfs_Idx(const int16_t* x, int32_t xi, const int16_t* y, int32_t yi, int16_t* d, int32_t di,
                              int32_t len, int32_t sf) {
    return SatSum<int16_t, false>(x + xi, y + yi, d + di, len, sf, Ints().AddSat16);
}
IppStatus ippsAdd_8u_Sfs_Idx(const uint8_t* x, int32_t xi, const uint8_t* y, int32_t yi, uint8_t* d, int32_t di,
                             int32_t len, int32_t sf) {
    return SatSum<uint8_t, false>(x + xi, y + yi, d + di, len, sf, Ints().AddSat8);
}
// Sub: second minus first; the kernels compute first minus second.
IppStatus ippsSub_32s_Sfs_Idx(const int32_t* x, int32_t xi, const int32_t* y, int32_t yi, int32_t* d, int32_t di,
                              int32_t len, int32_t sf) {
    return SatSum<int32_t, true>(x + xi, y + yi, d + di, len, sf,
                                 [](const int32_t* a, const int32_t* b, int32_t* o, idx n) { Ints().SubSat32(b, a, o, n); });
}
IppStatus ippsSub_16s_Sfs_Idx(const int16_t* x, int32_t xi, const int16_t* y, int32_t yi, int16_t* d, int32_t di,
                              int32_t len, int32_t sf) {
    return SatSum<int16_t, true>(x + xi, y + yi, d + di, len, sf,
                                 [](const int16_t* a, const int16_t* b, int16_t* o, idx n) { Ints().SubSat16(b, a, o, n); });
}
IppStatus ippsSub_8u_Sfs_Idx(const uint8_t* x, int32_t xi, const uint8_t* y, int32_t yi, uint8_t* d, int32_t di,
                             int32_t len, int32_t sf) {
    return SatSum<uint8_t, true>(x + xi, y + yi, d + di, len, sf,
                                 [](const uint8_t* a, const uint8_t* b, uint8_t* o, idx n) { Ints().SubSat8(b, a, o, n); });
}

}  // namespace rovane
