// Kernels compiled for AVX-512 F/DQ/VL/BW (flags set in
// primitives/Kernels.cmake for every <Family>Avx512.cpp): vector traits and
// the SLEEF routines of this width. Included first by every <Family>Avx512.cpp.
#pragma once
#include <immintrin.h>
#include <sleef.h>

#define ROVANE_KERNEL_NS avx512

namespace rovane::kern::avx512 {
namespace {
template <class F>
struct VT;
template <>
struct VT<double> {
    using V = __m512d;
    static constexpr long W = 8;
    static V load(const double* p) { return _mm512_loadu_pd(p); }
    static void store(double* p, V v) { _mm512_storeu_pd(p, v); }
    static auto sincos(V v) { return Sleef_sincosd8_u10avx512f(v); }
    static V set1(double a) { return _mm512_set1_pd(a); }
    static V abs(V v) { return _mm512_abs_pd(v); }
    // Bit j set where lane j lies above hi (or below lo); a NaN sets no bit.
    static unsigned above(V v, V hi) { return _mm512_cmp_pd_mask(v, hi, _CMP_GT_OQ); }
    static unsigned outside(V v, V lo, V hi) {
        return _mm512_cmp_pd_mask(v, hi, _CMP_GT_OQ) | _mm512_cmp_pd_mask(v, lo, _CMP_LT_OQ);
    }
};
template <>
struct VT<float> {
    using V = __m512;
    static constexpr long W = 16;
    static V load(const float* p) { return _mm512_loadu_ps(p); }
    static void store(float* p, V v) { _mm512_storeu_ps(p, v); }
    static auto sincos(V v) { return Sleef_sincosf16_u10avx512f(v); }
    static V set1(float a) { return _mm512_set1_ps(a); }
    static V abs(V v) { return _mm512_abs_ps(v); }
    static unsigned above(V v, V hi) { return _mm512_cmp_ps_mask(v, hi, _CMP_GT_OQ); }
    static unsigned outside(V v, V lo, V hi) {
        return _mm512_cmp_ps_mask(v, hi, _CMP_GT_OQ) | _mm512_cmp_ps_mask(v, lo, _CMP_LT_OQ);
    }
};
}  // namespace
}  // namespace rovane::kern::avx512

// The SLEEF routines of 1.0 ULP at this width, for double and single vectors.
#define ROVANE_VEC_MATH1(NAME)                                                      \
    static __m512d v(__m512d x) { return Sleef_##NAME##d8_u10avx512f(x); }                  \
    static __m512 v(__m512 x) { return Sleef_##NAME##f16_u10avx512f(x); }
#define ROVANE_VEC_MATH2(NAME)                                                      \
    static __m512d v(__m512d x, __m512d y) { return Sleef_##NAME##d8_u10avx512f(x, y); }         \
    static __m512 v(__m512 x, __m512 y) { return Sleef_##NAME##f16_u10avx512f(x, y); }
