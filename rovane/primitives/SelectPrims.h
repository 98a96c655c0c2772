// Primitives of the selection family: relation tests to masks and index
// lists, the pack and unpack (gather and scatter) family by stride, index
// list and mask, and the saturating integer sums. Arguments follow the _Idx
// shape (base and element index per array); each double routine has a
// single twin with a leading s. Relation codes: 0 <, 1 <=, 2 >, 3 >=, 4 =,
// 5 <>; an unordered pair matches the four order relations, = and <> test
// the right side for NaN (then equality means a NaN on the left) and for an
// infinity (then equality means an infinity of either sign on the left).
// Another code writes nothing to an index list (count 0) and zeros to a mask.
// A mask entry above zero selects. Nothing checks an index against bounds.
//
// The prim:: overloads at the end pick the double or single routine by the
// element type of the pointers (internal use: container .cpp files).
#pragma once

#include "rovane/primitives/ippspl_core.h"

namespace rovane {

#define ROVANE_SELECT_TWINS(S, F, C)                                                                                  \
    ROVANE_API void S##FindMaskd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, const F* b,              \
                                     int32_t bIndex, int32_t* dst, int32_t dstIndex);                              \
    ROVANE_API void S##FindMaskCd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, F b, int32_t* dst,      \
                                      int32_t dstIndex);                                                            \
    ROVANE_API void S##FindIndexesd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, const F* b,           \
                                        int32_t bIndex, int32_t* dst, int32_t dstIndex, int32_t& count);           \
    ROVANE_API void S##FindIndexesCd_Idx(int32_t op, const F* a, int32_t aIndex, int32_t len, F b, int32_t* dst,   \
                                         int32_t dstIndex, int32_t& count);                                        \
    /* The selected elements of src in order; returns their count. */                                             \
    ROVANE_API int32_t S##PackByMask_Idx(int32_t len, const F* src, int32_t sIndex, int32_t mIndex,                \
                                         const int32_t* mask, int32_t dIndex, F* dst);                             \
    ROVANE_API int32_t S##PackByMaskc_Idx(int32_t len, const C* src, int32_t sIndex, int32_t mIndex,               \
                                          const int32_t* mask, int32_t dIndex, C* dst);                            \
    /* The same into dst with room for cap elements: stores at most cap, returns how many the mask selects. */   \
    ROVANE_API int32_t S##PackByMaskTo_Idx(int32_t len, const F* src, int32_t sIndex, const int32_t* mask,         \
                                           int32_t mIndex, F* dst, int32_t dIndex, int32_t cap);                   \
    ROVANE_API int32_t S##PackByMaskToc_Idx(int32_t len, const C* src, int32_t sIndex, const int32_t* mask,        \
                                            int32_t mIndex, C* dst, int32_t dIndex, int32_t cap);                  \
    /* pack: y[j] = x[incx * j], x[ix[j]], or the selected x[i] in order. */                                      \
    ROVANE_API void S##vdpacki_Idx(int32_t n, const F* x, int32_t xIndex, int32_t incx, F* y, int32_t yIndex);    \
    ROVANE_API void S##vdpackv_Idx(int32_t n, const F* x, int32_t xIndex, const int32_t* ix, int32_t ixIndex,     \
                                   F* y, int32_t yIndex);                                                          \
    ROVANE_API void S##vdpackm_Idx(int32_t n, const F* x, int32_t xIndex, const int32_t* ma, int32_t maIndex,     \
                                   F* y, int32_t yIndex);                                                          \
    ROVANE_API void S##vdpackic_Idx(int32_t n, const C* x, int32_t xIndex, int32_t incx, C* y, int32_t yIndex);   \
    ROVANE_API void S##vdpackvc_Idx(int32_t n, const C* x, int32_t xIndex, const int32_t* ix, int32_t ixIndex,    \
                                    C* y, int32_t yIndex);                                                         \
    ROVANE_API void S##vdpackmc_Idx(int32_t n, const C* x, int32_t xIndex, const int32_t* ma, int32_t maIndex,    \
                                    C* y, int32_t yIndex);                                                         \
    /* unpack: y[incy * j] = x[j], y[iy[j]] = x[j], or each selected y[i] takes the next x. */                    \
    ROVANE_API void S##vdunpacki_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex, int32_t incy);  \
    ROVANE_API void S##vdunpackv_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex,                 \
                                     const int32_t* iy, int32_t iyIndex);                                          \
    ROVANE_API void S##vdunpackm_Idx(int32_t n, const F* x, int32_t xIndex, F* y, int32_t yIndex,                 \
                                     const int32_t* ma, int32_t maIndex);                                          \
    ROVANE_API void S##vdunpackic_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex, int32_t incy); \
    ROVANE_API void S##vdunpackvc_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex,                \
                                      const int32_t* iy, int32_t iyIndex);                                         \
    ROVANE_API void S##vdunpackmc_Idx(int32_t n, const C* x, int32_t xIndex, C* y, int32_t yIndex,                \
                                      const int32_t* ma, int32_t maIndex);
ROVANE_SELECT_TWINS(, double, TCplx)
ROVANE_SELECT_TWINS(s, float, TSCplx)
#undef ROVANE_SELECT_TWINS

// d = x + y (Add), d = y - x (Sub: second source minus first) on integers, scaled by 2^-scaleFactor (rounded to
// nearest, ties to even) and saturated at the element's range.
ROVANE_API IppStatus ippsAdd_32s_Sfs_Idx(const int32_t* x, int32_t xIndex, const int32_t* y, int32_t yIndex,
                                         int32_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);
ROVANE_API IppStatus ippsAdd_16s_Sfs_Idx(const int16_t* x, int32_t xIndex, const int16_t* y, int32_t yIndex,
                                         int16_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);
ROVANE_API IppStatus ippsAdd_8u_Sfs_Idx(const uint8_t* x, int32_t xIndex, const uint8_t* y, int32_t yIndex,
                                        uint8_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);
ROVANE_API IppStatus ippsSub_32s_Sfs_Idx(const int32_t* x, int32_t xIndex, const int32_t* y, int32_t yIndex,
                                         int32_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);
ROVANE_API IppStatus ippsSub_16s_Sfs_Idx(const int16_t* x, int32_t xIndex, const int16_t* y, int32_t yIndex,
                                         int16_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);
ROVANE_API IppStatus ippsSub_8u_Sfs_Idx(const uint8_t* x, int32_t xIndex, const uint8_t* y, int32_t yIndex,
                                        uint8_t* d, int32_t dIndex, int32_t len, int32_t scaleFactor);

// The exact value v scaled by 2^-scaleFactor, rounded to nearest with ties
// to even, saturated to [lo, hi]. The one rule of the _Sfs arithmetic.
ROVANE_API int64_t ScaleSaturate(__int128 v, int32_t scaleFactor, int64_t lo, int64_t hi);

namespace prim {
#define ROVANE_SELECT_FACADE(S, F, C)                                                                                 \
    inline void FindMask(int32_t op, const F* a, int32_t ai, int32_t n, const F* b, int32_t bi, int32_t* d,         \
                         int32_t di) {                                                                              \
        S##FindMaskd_Idx(op, a, ai, n, b, bi, d, di);                                                               \
    }                                                                                                               \
    inline void FindMaskC(int32_t op, const F* a, int32_t ai, int32_t n, F b, int32_t* d, int32_t di) {             \
        S##FindMaskCd_Idx(op, a, ai, n, b, d, di);                                                                  \
    }                                                                                                               \
    inline void FindIndexes(int32_t op, const F* a, int32_t ai, int32_t n, const F* b, int32_t bi, int32_t* d,      \
                            int32_t di, int32_t& count) {                                                           \
        S##FindIndexesd_Idx(op, a, ai, n, b, bi, d, di, count);                                                     \
    }                                                                                                               \
    inline void FindIndexesC(int32_t op, const F* a, int32_t ai, int32_t n, F b, int32_t* d, int32_t di,            \
                             int32_t& count) {                                                                      \
        S##FindIndexesCd_Idx(op, a, ai, n, b, d, di, count);                                                        \
    }                                                                                                               \
    inline int32_t PackTo(int32_t n, const F* x, int32_t xi, const int32_t* m, int32_t mi, F* y, int32_t yi,         \
                          int32_t cap) {                                                                            \
        return S##PackByMaskTo_Idx(n, x, xi, m, mi, y, yi, cap);                                                    \
    }                                                                                                               \
    inline int32_t PackTo(int32_t n, const C* x, int32_t xi, const int32_t* m, int32_t mi, C* y, int32_t yi,         \
                          int32_t cap) {                                                                            \
        return S##PackByMaskToc_Idx(n, x, xi, m, mi, y, yi, cap);                                                   \
    }                                                                                                               \
    inline void Packi(int32_t n, const F* x, int32_t xi, int32_t inc, F* y, int32_t yi) {                            \
        S##vdpacki_Idx(n, x, xi, inc, y, yi);                                                                       \
    }                                                                                                               \
    inline void Packi(int32_t n, const C* x, int32_t xi, int32_t inc, C* y, int32_t yi) {                            \
        S##vdpackic_Idx(n, x, xi, inc, y, yi);                                                                      \
    }                                                                                                               \
    inline void Packv(int32_t n, const F* x, int32_t xi, const int32_t* ix, int32_t ixi, F* y, int32_t yi) {        \
        S##vdpackv_Idx(n, x, xi, ix, ixi, y, yi);                                                                   \
    }                                                                                                               \
    inline void Packv(int32_t n, const C* x, int32_t xi, const int32_t* ix, int32_t ixi, C* y, int32_t yi) {        \
        S##vdpackvc_Idx(n, x, xi, ix, ixi, y, yi);                                                                  \
    }                                                                                                               \
    inline void Packm(int32_t n, const F* x, int32_t xi, const int32_t* m, int32_t mi, F* y, int32_t yi) {          \
        S##vdpackm_Idx(n, x, xi, m, mi, y, yi);                                                                     \
    }                                                                                                               \
    inline void Packm(int32_t n, const C* x, int32_t xi, const int32_t* m, int32_t mi, C* y, int32_t yi) {          \
        S##vdpackmc_Idx(n, x, xi, m, mi, y, yi);                                                                    \
    }                                                                                                               \
    inline void Unpacki(int32_t n, const F* x, int32_t xi, F* y, int32_t yi, int32_t inc) {                          \
        S##vdunpacki_Idx(n, x, xi, y, yi, inc);                                                                     \
    }                                                                                                               \
    inline void Unpacki(int32_t n, const C* x, int32_t xi, C* y, int32_t yi, int32_t inc) {                          \
        S##vdunpackic_Idx(n, x, xi, y, yi, inc);                                                                    \
    }                                                                                                               \
    inline void Unpackv(int32_t n, const F* x, int32_t xi, F* y, int32_t yi, const int32_t* iy, int32_t iyi) {      \
        S##vdunpackv_Idx(n, x, xi, y, yi, iy, iyi);                                                                 \
    }                                                                                                               \
    inline void Unpackv(int32_t n, const C* x, int32_t xi, C* y, int32_t yi, const int32_t* iy, int32_t iyi) {      \
        S##vdunpackvc_Idx(n, x, xi, y, yi, iy, iyi);                                                                \
    }                                                                                                               \
    inline void Unpackm(int32_t n, const F* x, int32_t xi, F* y, int32_t yi, const int32_t* m, int32_t mi) {        \
        S##vdunpackm_Idx(n, x, xi, y, yi, m, mi);                                                                   \
    }                                                                                                               \
    inline void Unpackm(int32_t n, const C* x, int32_t xi, C* y, int32_t yi, const int32_t* m, int32_t mi) {        \
        S##vdunpackmc_Idx(n, x, xi, y, yi, m, mi);                                                                  \
    }
ROVANE_SELECT_FACADE(, double, TCplx)
ROVANE_SELECT_FACADE(s, float, TSCplx)
#undef ROVANE_SELECT_FACADE

inline IppStatus AddSfs(const int32_t* x, int32_t xi, const int32_t* y, int32_t yi, int32_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsAdd_32s_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
inline IppStatus AddSfs(const int16_t* x, int32_t xi, const int16_t* y, int32_t yi, int16_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsAdd_16s_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
inline IppStatus AddSfs(const uint8_t* x, int32_t xi, const uint8_t* y, int32_t yi, uint8_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsAdd_8u_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
inline IppStatus SubSfs(const int32_t* x, int32_t xi, const int32_t* y, int32_t yi, int32_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsSub_32s_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
inline IppStatus SubSfs(const int16_t* x, int32_t xi, const int16_t* y, int32_t yi, int16_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsSub_16s_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
inline IppStatus SubSfs(const uint8_t* x, int32_t xi, const uint8_t* y, int32_t yi, uint8_t* d, int32_t di,
                        int32_t n, int32_t sf) {
    return ippsSub_8u_Sfs_Idx(x, xi, y, yi, d, di, n, sf);
}
}  // namespace prim

}  // namespace rovane
