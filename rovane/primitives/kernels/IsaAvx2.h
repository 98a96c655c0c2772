// Kernels compiled for AVX2 with FMA (flags set in primitives/Kernels.cmake
// for every <Family>Avx2.cpp): vector traits and the SLEEF routines of this
// width. Included first by every <Family>Avx2.cpp.
#pragma once
#include <immintrin.h>
#include <sleef.h>

#define ROVANE_KERNEL_NS avx2

namespace rovane::kern::avx2 {
namespace {
template <class F>
struct VT;
template <>
struct VT<double> {
    using V = __m256d;
    static constexpr long W = 4;
    static V load(const double* p) { return _mm256_loadu_pd(p); }
    static void store(double* p, V v) { _mm256_storeu_pd(p, v); }
    static auto sincos(V v) { return Sleef_sincosd4_u10avx2(v); }
    static V set1(double a) { return _mm256_set1_pd(a); }
    static V abs(V v) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), v); }
    // Bit j set where lane j lies above hi (or below lo); a NaN sets no bit.
    static unsigned above(V v, V hi) { return unsigned(_mm256_movemask_pd(_mm256_cmp_pd(v, hi, _CMP_GT_OQ))); }
    static unsigned outside(V v, V lo, V hi) {
        return unsigned(
            _mm256_movemask_pd(_mm256_or_pd(_mm256_cmp_pd(v, hi, _CMP_GT_OQ), _mm256_cmp_pd(v, lo, _CMP_LT_OQ))));
    }
};
template <>
struct VT<float> {
    using V = __m256;
    static constexpr long W = 8;
    static V load(const float* p) { return _mm256_loadu_ps(p); }
    static void store(float* p, V v) { _mm256_storeu_ps(p, v); }
    static auto sincos(V v) { return Sleef_sincosf8_u10avx2(v); }
    static V set1(float a) { return _mm256_set1_ps(a); }
    static V abs(V v) { return _mm256_andnot_ps(_mm256_set1_ps(-0.0f), v); }
    static unsigned above(V v, V hi) { return unsigned(_mm256_movemask_ps(_mm256_cmp_ps(v, hi, _CMP_GT_OQ))); }
    static unsigned outside(V v, V lo, V hi) {
        return unsigned(
            _mm256_movemask_ps(_mm256_or_ps(_mm256_cmp_ps(v, hi, _CMP_GT_OQ), _mm256_cmp_ps(v, lo, _CMP_LT_OQ))));
    }
};
}  // namespace
}  // namespace rovane::kern::avx2

// The SLEEF routines of 1.0 ULP at this width, for double and single vectors.
#define ROVANE_VEC_MATH1(NAME)                                                      \
    static __m256d v(__m256d x) { return Sleef_##NAME##d4_u10avx2(x); }                  \
    static __m256 v(__m256 x) { return Sleef_##NAME##f8_u10avx2(x); }
#define ROVANE_VEC_MATH2(NAME)                                                      \
    static __m256d v(__m256d x, __m256d y) { return Sleef_##NAME##d4_u10avx2(x, y); }         \
    static __m256 v(__m256 x, __m256 y) { return Sleef_##NAME##f8_u10avx2(x, y); }
