// The library's own primitives: operations without a catalogue name. A stem
// without letters is real; a trailing letter pair names the kinds of source
// and destination (d real, c complex): AddValuecd adds a real value to complex
// data, AddValuedc a complex value to real data. Single-precision twins carry
// a leading s. Arguments follow the _Idx shape of ippspl.h; these routines
// return no status and do nothing for a length of zero or below.
#pragma once

#include "rovane/primitives/ippspl_core.h"

#define ROVANE_F_VAL(N, TX, V, TD) \
    ROVANE_API void N(const TX* x, int32_t xIndex, V value, TD* d, int32_t dIndex, int32_t len);
#define ROVANE_F_BIN(N, TX, TY, TD) \
    ROVANE_API void N(const TX* x, int32_t xIndex, const TY* y, int32_t yIndex, TD* d, int32_t dIndex, int32_t len);
#define ROVANE_F_UN(N, TX, TD) ROVANE_API void N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len);

namespace rovane {

// d = x + c, c - x, x * c, c / x, with the scalar kinds by the letter pair.
ROVANE_F_VAL(AddValue_Idx, double, double, double) ROVANE_F_VAL(sAddValue_Idx, float, float, float)
ROVANE_F_VAL(AddValuec_Idx, TCplx, TCplx, TCplx) ROVANE_F_VAL(sAddValuec_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_F_VAL(AddValuecd_Idx, TCplx, double, TCplx) ROVANE_F_VAL(sAddValuecd_Idx, TSCplx, float, TSCplx)
ROVANE_F_VAL(AddValuedc_Idx, double, TCplx, TCplx) ROVANE_F_VAL(sAddValuedc_Idx, float, TSCplx, TSCplx)
ROVANE_F_VAL(SubFromValue_Idx, double, double, double) ROVANE_F_VAL(sSubFromValue_Idx, float, float, float)
ROVANE_F_VAL(SubFromValuec_Idx, TCplx, TCplx, TCplx) ROVANE_F_VAL(sSubFromValuec_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_F_VAL(SubFromValuecd_Idx, TCplx, double, TCplx) ROVANE_F_VAL(sSubFromValuecd_Idx, TSCplx, float, TSCplx)
ROVANE_F_VAL(SubFromValuedc_Idx, double, TCplx, TCplx) ROVANE_F_VAL(sSubFromValuedc_Idx, float, TSCplx, TSCplx)
ROVANE_F_VAL(ScaleByValue_Idx, double, double, double) ROVANE_F_VAL(sScaleByValue_Idx, float, float, float)
ROVANE_F_VAL(ScaleByValuec_Idx, TCplx, TCplx, TCplx) ROVANE_F_VAL(sScaleByValuec_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_F_VAL(ScaleByValuecd_Idx, TCplx, double, TCplx) ROVANE_F_VAL(sScaleByValuecd_Idx, TSCplx, float, TSCplx)
ROVANE_F_VAL(ScaleByValuedc_Idx, double, TCplx, TCplx) ROVANE_F_VAL(sScaleByValuedc_Idx, float, TSCplx, TSCplx)
// The complex forms compute 1 / (re * re + im * im) once per element.
ROVANE_F_VAL(DivideValue_Idx, double, double, double) ROVANE_F_VAL(sDivideValue_Idx, float, float, float)
ROVANE_F_VAL(DivideValuec_Idx, TCplx, TCplx, TCplx) ROVANE_F_VAL(sDivideValuec_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_F_VAL(DivideValuecd_Idx, TCplx, double, TCplx) ROVANE_F_VAL(sDivideValuecd_Idx, TSCplx, float, TSCplx)
ROVANE_F_VAL(DivideValuedc_Idx, double, TCplx, TCplx) ROVANE_F_VAL(sDivideValuedc_Idx, float, TSCplx, TSCplx)

// Mixed element-wise d = x op y: cd has complex x and real y, dc real x and complex y.
ROVANE_F_BIN(AddVeccd_Idx, TCplx, double, TCplx) ROVANE_F_BIN(sAddVeccd_Idx, TSCplx, float, TSCplx)
ROVANE_F_BIN(SubVeccd_Idx, TCplx, double, TCplx) ROVANE_F_BIN(sSubVeccd_Idx, TSCplx, float, TSCplx)
ROVANE_F_BIN(SubVecdc_Idx, double, TCplx, TCplx) ROVANE_F_BIN(sSubVecdc_Idx, float, TSCplx, TSCplx)
ROVANE_F_BIN(MulVeccd_Idx, TCplx, double, TCplx) ROVANE_F_BIN(sMulVeccd_Idx, TSCplx, float, TSCplx)
ROVANE_F_BIN(DivVeccd_Idx, TCplx, double, TCplx) ROVANE_F_BIN(sDivVeccd_Idx, TSCplx, float, TSCplx)
ROVANE_F_BIN(DivVecdc_Idx, double, TCplx, TCplx) ROVANE_F_BIN(sDivVecdc_Idx, float, TSCplx, TSCplx)
ROVANE_F_BIN(DivVeccc_Idx, TCplx, TCplx, TCplx) ROVANE_F_BIN(sDivVeccc_Idx, TSCplx, TSCplx, TSCplx)
// d = x * conj(y)
ROVANE_F_BIN(ConjMulcc_Idx, TCplx, TCplx, TCplx) ROVANE_F_BIN(sConjMulcc_Idx, TSCplx, TSCplx, TSCplx)

// Complex parts: i * x, (im, re), (im, -re).
ROVANE_F_UN(MulI_Idx, TCplx, TCplx) ROVANE_F_UN(sMulI_Idx, TSCplx, TSCplx)
ROVANE_F_UN(Flip_Idx, TCplx, TCplx) ROVANE_F_UN(sFlip_Idx, TSCplx, TSCplx)
ROVANE_F_UN(FlipConj_Idx, TCplx, TCplx) ROVANE_F_UN(sFlipConj_Idx, TSCplx, TSCplx)

// Remainder: d = x - n * y, n = x / y rounded to nearest (halves to even).
ROVANE_F_BIN(Rem_Idx, double, double, double) ROVANE_F_BIN(sRem_Idx, float, float, float)
// d = x - n * c, n = round(x * (1 / c)), the reciprocal taken once.
ROVANE_F_VAL(RemVal_Idx, double, double, double) ROVANE_F_VAL(sRemVal_Idx, float, float, float)

// Sign: -1 below zero, 0 at zero, +1 above zero and for NaN. Complex data is
// judged on the real part, on the imaginary part when the real part is zero;
// a complex result has a zero imaginary part.
ROVANE_F_UN(Sgndd_Idx, double, double) ROVANE_F_UN(sSgndd_Idx, float, float)
ROVANE_F_UN(Sgndc_Idx, double, TCplx) ROVANE_F_UN(sSgndc_Idx, float, TSCplx)
ROVANE_F_UN(Sgncd_Idx, TCplx, double) ROVANE_F_UN(sSgncd_Idx, TSCplx, float)
ROVANE_F_UN(Sgncc_Idx, TCplx, TCplx) ROVANE_F_UN(sSgncc_Idx, TSCplx, TSCplx)
// In place d = d * sign(x): a negative sign negates d, a zero sign stores
// zero, a positive sign (and a NaN x) leaves d. The pair names x then d.
ROVANE_F_UN(SgnMul_Idx, double, double) ROVANE_F_UN(sSgnMul_Idx, float, float)
ROVANE_F_UN(SgnMulc_Idx, TCplx, TCplx) ROVANE_F_UN(sSgnMulc_Idx, TSCplx, TSCplx)
ROVANE_F_UN(SgnMulcd_Idx, TCplx, double) ROVANE_F_UN(sSgnMulcd_Idx, TSCplx, float)
ROVANE_F_UN(SgnMuldc_Idx, double, TCplx) ROVANE_F_UN(sSgnMuldc_Idx, float, TSCplx)

}  // namespace rovane

#undef ROVANE_F_VAL
#undef ROVANE_F_BIN
#undef ROVANE_F_UN
