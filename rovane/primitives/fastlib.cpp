// The library's own primitives as thin wrappers over the kernel table; one
// line stamps the double routine and its single twin.
#include "rovane/primitives/fastlib.h"

#include "rovane/primitives/kernels/Entry.h"

namespace rovane {

using kern::Run1;
using kern::Run2;
using kern::TArgs;
using kern::TKernelSet;

namespace {
// Scalar operand as kernel arguments: a real value, or a complex one as (re, im).
template <class F>
TArgs<F> ArgsOf(F v) { return TArgs<F>{v, 0, 0, 0}; }
template <class F>
TArgs<F> ArgsOf(TComplexOf<F> v) { return TArgs<F>{v.Re, v.Im, 0, 0}; }
inline TArgs<double> ArgsOf(TCplx v) { return TArgs<double>{v.Re, v.Im, 0, 0}; }
inline TArgs<float> ArgsOf(TSCplx v) { return TArgs<float>{v.Re, v.Im, 0, 0}; }
}  // namespace

#define ROVANE_FD_VAL(N, F, TX, V, TD, K, SCALE)                                               \
    void N(const TX* x, int32_t xIndex, V value, TD* d, int32_t dIndex, int32_t len) {         \
        Run1<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, len, ArgsOf(value), SCALE);           \
    }
#define ROVANE_FD_BIN(N, F, TX, TY, TD, K)                                                               \
    void N(const TX* x, int32_t xIndex, const TY* y, int32_t yIndex, TD* d, int32_t dIndex, int32_t len) { \
        Run2<F>(&TKernelSet<F>::K, x, xIndex, y, yIndex, d, dIndex, len);                               \
    }
#define ROVANE_FD_UN(N, F, TX, TD, K) \
    void N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len) { Run1<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, len); }
// In place on d with x as the sign source: the kernel reads (x, d) and writes d.
#define ROVANE_FD_INPLACE(N, F, TX, TD, K)                                      \
    void N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len) {    \
        Run2<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, d, dIndex, len);       \
    }

// Twin stamps: real (r), complex-complex (c), complex-real (cd), real-complex (dc).
#define ROVANE_FD_VAL4(STEM, KR, KC, KCD, KDC, SCALE_CD)                                        \
    ROVANE_FD_VAL(STEM##_Idx, double, double, double, double, KR, 1)                           \
    ROVANE_FD_VAL(s##STEM##_Idx, float, float, float, float, KR, 1)                            \
    ROVANE_FD_VAL(STEM##c_Idx, double, TCplx, TCplx, TCplx, KC, 1)                             \
    ROVANE_FD_VAL(s##STEM##c_Idx, float, TSCplx, TSCplx, TSCplx, KC, 1)                        \
    ROVANE_FD_VAL(STEM##cd_Idx, double, TCplx, double, TCplx, KCD, SCALE_CD)                   \
    ROVANE_FD_VAL(s##STEM##cd_Idx, float, TSCplx, float, TSCplx, KCD, SCALE_CD)                \
    ROVANE_FD_VAL(STEM##dc_Idx, double, double, TCplx, TCplx, KDC, 1)                          \
    ROVANE_FD_VAL(s##STEM##dc_Idx, float, float, TSCplx, TSCplx, KDC, 1)
ROVANE_FD_VAL4(AddValue, AddValue, AddValuec, AddValuecd, AddValuedc, 1)
ROVANE_FD_VAL4(SubFromValue, SubFromValue, SubFromValuec, SubFromValuecd, SubFromValuedc, 1)
// A real scale of complex data is the real kernel over both parts.
ROVANE_FD_VAL4(ScaleByValue, ScaleByValue, ScaleByValuec, ScaleByValue, ScaleByValuedc, 2)
ROVANE_FD_VAL4(DivideValue, DivideValue, DivideValuec, DivideValuecd, DivideValuedc, 1)

#define ROVANE_FD_BIN2(STEM, TX64, TY64, TD64, TX32, TY32, TD32, K) \
    ROVANE_FD_BIN(STEM##_Idx, double, TX64, TY64, TD64, K) ROVANE_FD_BIN(s##STEM##_Idx, float, TX32, TY32, TD32, K)
#define ROVANE_FD_CD(STEM, K) ROVANE_FD_BIN2(STEM, TCplx, double, TCplx, TSCplx, float, TSCplx, K)
#define ROVANE_FD_DC(STEM, K) ROVANE_FD_BIN2(STEM, double, TCplx, TCplx, float, TSCplx, TSCplx, K)
#define ROVANE_FD_CC(STEM, K) ROVANE_FD_BIN2(STEM, TCplx, TCplx, TCplx, TSCplx, TSCplx, TSCplx, K)
ROVANE_FD_CD(AddVeccd, AddVeccd)
ROVANE_FD_CD(SubVeccd, SubVeccd)
ROVANE_FD_CD(MulVeccd, MulVeccd)
ROVANE_FD_CD(DivVeccd, DivVeccd)
ROVANE_FD_DC(SubVecdc, SubVecdc)
ROVANE_FD_DC(DivVecdc, DivVecdc)
ROVANE_FD_CC(DivVeccc, DivVeccc)
ROVANE_FD_CC(ConjMulcc, ConjMulcc)
ROVANE_FD_BIN2(Rem, double, double, double, float, float, float, Rem)

void RemVal_Idx(const double* x, int32_t xIndex, double value, double* d, int32_t dIndex, int32_t len) {
    Run1<double>(&TKernelSet<double>::RemVal, x, xIndex, d, dIndex, len, TArgs<double>{value, 1 / value, 0, 0});
}
void sRemVal_Idx(const float* x, int32_t xIndex, float value, float* d, int32_t dIndex, int32_t len) {
    Run1<float>(&TKernelSet<float>::RemVal, x, xIndex, d, dIndex, len, TArgs<float>{value, 1 / value, 0, 0});
}

#define ROVANE_FD_UN2(STEM, TX64, TD64, TX32, TD32, K) \
    ROVANE_FD_UN(STEM##_Idx, double, TX64, TD64, K) ROVANE_FD_UN(s##STEM##_Idx, float, TX32, TD32, K)
ROVANE_FD_UN2(MulI, TCplx, TCplx, TSCplx, TSCplx, MulI)
ROVANE_FD_UN2(Flip, TCplx, TCplx, TSCplx, TSCplx, Flip)
ROVANE_FD_UN2(FlipConj, TCplx, TCplx, TSCplx, TSCplx, FlipConj)
ROVANE_FD_UN2(Sgndd, double, double, float, float, Sgndd)
ROVANE_FD_UN2(Sgndc, double, TCplx, float, TSCplx, Sgndc)
ROVANE_FD_UN2(Sgncd, TCplx, double, TSCplx, float, Sgncd)
ROVANE_FD_UN2(Sgncc, TCplx, TCplx, TSCplx, TSCplx, Sgncc)

#define ROVANE_FD_INPLACE2(STEM, TX64, TD64, TX32, TD32, K) \
    ROVANE_FD_INPLACE(STEM##_Idx, double, TX64, TD64, K) ROVANE_FD_INPLACE(s##STEM##_Idx, float, TX32, TD32, K)
ROVANE_FD_INPLACE2(SgnMul, double, double, float, float, SgnMul)
ROVANE_FD_INPLACE2(SgnMulc, TCplx, TCplx, TSCplx, TSCplx, SgnMulc)
ROVANE_FD_INPLACE2(SgnMulcd, TCplx, double, TSCplx, float, SgnMulcd)
ROVANE_FD_INPLACE2(SgnMuldc, double, TCplx, float, TSCplx, SgnMuldc)

}  // namespace rovane
