// Kernels for the x86-64 baseline (SSE2), the fallback on every processor:
// vector traits and the SLEEF routines of this width. Included first by
// every <Family>Baseline.cpp.
#pragma once
#include <immintrin.h>
#include <sleef.h>

#define ROVANE_KERNEL_NS baseline

namespace rovane::kern::baseline {
namespace {
template <class F>
struct VT;
template <>
struct VT<double> {
    using V = __m128d;
    static constexpr long W = 2;
    static V load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, V v) { _mm_storeu_pd(p, v); }
    static auto sincos(V v) { return Sleef_sincosd2_u10sse2(v); }
    static V set1(double a) { return _mm_set1_pd(a); }
    static V abs(V v) { return _mm_andnot_pd(_mm_set1_pd(-0.0), v); }
    // Bit j set where lane j lies above hi (or below lo); a NaN sets no bit.
    static unsigned above(V v, V hi) { return unsigned(_mm_movemask_pd(_mm_cmpgt_pd(v, hi))); }
    static unsigned outside(V v, V lo, V hi) {
        return unsigned(_mm_movemask_pd(_mm_or_pd(_mm_cmpgt_pd(v, hi), _mm_cmplt_pd(v, lo))));
    }
};
template <>
struct VT<float> {
    using V = __m128;
    static constexpr long W = 4;
    static V load(const float* p) { return _mm_loadu_ps(p); }
    static void store(float* p, V v) { _mm_storeu_ps(p, v); }
    static auto sincos(V v) { return Sleef_sincosf4_u10sse2(v); }
    static V set1(float a) { return _mm_set1_ps(a); }
    static V abs(V v) { return _mm_andnot_ps(_mm_set1_ps(-0.0f), v); }
    static unsigned above(V v, V hi) { return unsigned(_mm_movemask_ps(_mm_cmpgt_ps(v, hi))); }
    static unsigned outside(V v, V lo, V hi) {
        return unsigned(_mm_movemask_ps(_mm_or_ps(_mm_cmpgt_ps(v, hi), _mm_cmplt_ps(v, lo))));
    }
};
}  // namespace
}  // namespace rovane::kern::baseline

// The SLEEF routines of 1.0 ULP at this width, for double and single vectors.
#define ROVANE_VEC_MATH1(NAME)                                                      \
    static __m128d v(__m128d x) { return Sleef_##NAME##d2_u10sse2(x); }                  \
    static __m128 v(__m128 x) { return Sleef_##NAME##f4_u10sse2(x); }
#define ROVANE_VEC_MATH2(NAME)                                                      \
    static __m128d v(__m128d x, __m128d y) { return Sleef_##NAME##d2_u10sse2(x, y); }         \
    static __m128 v(__m128 x, __m128 y) { return Sleef_##NAME##f4_u10sse2(x, y); }
