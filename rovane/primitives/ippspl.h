// The primitive catalogue: flat, stateless routines on bare arrays, named by
// the ipps grammar. Each line declares a double routine and its single twin
// (prefix s, 64f read as 32f, 64fc as 32fc, _A53 as _A24).
//
// Argument order of the _Idx shape:
//   unary      source, index, destination, index, length
//   binary     source 1, index 1, source 2, index 2, destination, index, length
//   in place   [value or source pair,] array, index, length
//   scalar     source pair, value, destination pair, length (ippsAddC form)
// A length below zero returns ippStsSizeErr and writes nothing; a length of
// zero returns ippStsNoErr and touches nothing; a null array returns
// ippStsNullPtrErr. A destination may be the same array position as a source.
#pragma once

#include "rovane/primitives/ippspl_core.h"

// Declaration helpers, removed again at the end of this header.
#define ROVANE_P_UN(N, TX, TD) ROVANE_API IppStatus N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len);
#define ROVANE_P_UN_I(N, T) ROVANE_API IppStatus N(T* d, int32_t dIndex, int32_t len);
#define ROVANE_P_BIN(N, TX, TY, TD)                                                                      \
    ROVANE_API IppStatus N(const TX* x, int32_t xIndex, const TY* y, int32_t yIndex, TD* d, int32_t dIndex, \
                           int32_t len);
#define ROVANE_P_BIN_I(N, TX, TD) ROVANE_API IppStatus N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len);
#define ROVANE_P_VAL(N, TX, V, TD) \
    ROVANE_API IppStatus N(const TX* x, int32_t xIndex, V value, TD* d, int32_t dIndex, int32_t len);
#define ROVANE_P_VAL_I(N, V, T) ROVANE_API IppStatus N(V value, T* d, int32_t dIndex, int32_t len);
#define ROVANE_P_SPLIT(N, TX, TD)                                                                          \
    ROVANE_API IppStatus N(const TX* x, int32_t xIndex, TD* d1, int32_t d1Index, TD* d2, int32_t d2Index, \
                           int32_t len);
#define ROVANE_P_LEVEL(N, T, L) \
    ROVANE_API IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len, L level);
#define ROVANE_P_LEVEL_I(N, T, L) ROVANE_API IppStatus N(T* d, int32_t dIndex, int32_t len, L level);
#define ROVANE_P_LEVELVAL(N, T, L, V) \
    ROVANE_API IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len, L level, V value);
#define ROVANE_P_LEVELVAL_I(N, T, L, V) ROVANE_API IppStatus N(T* d, int32_t dIndex, int32_t len, L level, V value);

namespace rovane {

// ---------------------------------------------------------------------------
// Arithmetic. ippsSub is second source minus first, ippsDiv second over first;
// the _I forms read the destination as the second source.
// ---------------------------------------------------------------------------
ROVANE_P_BIN(ippsAdd_64f_Idx, double, double, double) ROVANE_P_BIN(sippsAdd_32f_Idx, float, float, float)
ROVANE_P_BIN(ippsAdd_64fc_Idx, TCplx, TCplx, TCplx) ROVANE_P_BIN(sippsAdd_32fc_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_P_BIN_I(ippsAdd_64f_I_Idx, double, double) ROVANE_P_BIN_I(sippsAdd_32f_I_Idx, float, float)
ROVANE_P_BIN_I(ippsAdd_64fc_I_Idx, TCplx, TCplx) ROVANE_P_BIN_I(sippsAdd_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_BIN(ippsSub_64f_Idx, double, double, double) ROVANE_P_BIN(sippsSub_32f_Idx, float, float, float)
ROVANE_P_BIN(ippsSub_64fc_Idx, TCplx, TCplx, TCplx) ROVANE_P_BIN(sippsSub_32fc_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_P_BIN_I(ippsSub_64f_I_Idx, double, double) ROVANE_P_BIN_I(sippsSub_32f_I_Idx, float, float)
ROVANE_P_BIN_I(ippsSub_64fc_I_Idx, TCplx, TCplx) ROVANE_P_BIN_I(sippsSub_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_BIN(ippsMul_64f_Idx, double, double, double) ROVANE_P_BIN(sippsMul_32f_Idx, float, float, float)
ROVANE_P_BIN(ippsMul_64fc_Idx, TCplx, TCplx, TCplx) ROVANE_P_BIN(sippsMul_32fc_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_P_BIN_I(ippsMul_64f_I_Idx, double, double) ROVANE_P_BIN_I(sippsMul_32f_I_Idx, float, float)
ROVANE_P_BIN_I(ippsMul_64fc_I_Idx, TCplx, TCplx) ROVANE_P_BIN_I(sippsMul_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_BIN(ippsDiv_64f_A53_Idx, double, double, double) ROVANE_P_BIN(sippsDiv_32f_A24_Idx, float, float, float)
// d = d + x * y
ROVANE_P_BIN(ippsAddProduct_64f_Idx, double, double, double)
ROVANE_P_BIN(sippsAddProduct_32f_Idx, float, float, float)
ROVANE_P_BIN(ippsAddProduct_64fc_Idx, TCplx, TCplx, TCplx)
ROVANE_P_BIN(sippsAddProduct_32fc_Idx, TSCplx, TSCplx, TSCplx)

// Scalar operand: d = x + c, x - c, c - x, x * c, x / c.
ROVANE_P_VAL_I(ippsAddC_64fc_I_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsAddC_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_VAL(ippsSubC_64fc_Idx, TCplx, TCplx, TCplx) ROVANE_P_VAL(sippsSubC_32fc_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_P_VAL_I(ippsSubC_64fc_I_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsSubC_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_VAL_I(ippsSubCRev_64fc_I_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsSubCRev_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_VAL_I(ippsMulC_64f_I_Idx, double, double) ROVANE_P_VAL_I(sippsMulC_32f_I_Idx, float, float)
ROVANE_P_VAL_I(ippsMulC_64fc_I_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsMulC_32fc_I_Idx, TSCplx, TSCplx)
ROVANE_P_VAL_I(ippsDivC_64f_I_Idx, double, double) ROVANE_P_VAL_I(sippsDivC_32f_I_Idx, float, float)
// The complex form multiplies by the reciprocal of c, formed once.
ROVANE_P_VAL_I(ippsDivC_64fc_I_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsDivC_32fc_I_Idx, TSCplx, TSCplx)

// Squares, roots, magnitudes and parts.
ROVANE_P_UN(ippsSqr_64f_Idx, double, double) ROVANE_P_UN(sippsSqr_32f_Idx, float, float)
ROVANE_P_UN_I(ippsSqr_64f_I_Idx, double) ROVANE_P_UN_I(sippsSqr_32f_I_Idx, float)
ROVANE_P_UN(ippsSqr_64fc_Idx, TCplx, TCplx) ROVANE_P_UN(sippsSqr_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN_I(ippsSqr_64fc_I_Idx, TCplx) ROVANE_P_UN_I(sippsSqr_32fc_I_Idx, TSCplx)
ROVANE_P_UN(ippsSqrt_64f_A53_Idx, double, double) ROVANE_P_UN(sippsSqrt_32f_A24_Idx, float, float)
// Principal square root of complex data, computed in long double.
ROVANE_P_UN(ippsSqrt_64fc_Idx, TCplx, TCplx) ROVANE_P_UN(sippsSqrt_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN_I(ippsSqrt_64fc_I_Idx, TCplx) ROVANE_P_UN_I(sippsSqrt_32fc_I_Idx, TSCplx)
ROVANE_P_UN(ippsSqrt_64fc_A53_Idx, TCplx, TCplx) ROVANE_P_UN(sippsSqrt_32fc_A24_Idx, TSCplx, TSCplx)
ROVANE_P_UN(ippsAbs_64f_Idx, double, double) ROVANE_P_UN(sippsAbs_32f_Idx, float, float)
ROVANE_P_UN_I(ippsAbs_64f_I_Idx, double) ROVANE_P_UN_I(sippsAbs_32f_I_Idx, float)
ROVANE_P_UN(ippsMagnitude_64fc_Idx, TCplx, double) ROVANE_P_UN(sippsMagnitude_32fc_Idx, TSCplx, float)
ROVANE_P_UN(ippsPowerSpectr_64fc_Idx, TCplx, double) ROVANE_P_UN(sippsPowerSpectr_32fc_Idx, TSCplx, float)
ROVANE_P_UN(ippsPhase_64fc_Idx, TCplx, double) ROVANE_P_UN(sippsPhase_32fc_Idx, TSCplx, float)
ROVANE_P_UN(ippsReal_64fc_Idx, TCplx, double) ROVANE_P_UN(sippsReal_32fc_Idx, TSCplx, float)
ROVANE_P_UN(ippsImag_64fc_Idx, TCplx, double) ROVANE_P_UN(sippsImag_32fc_Idx, TSCplx, float)
ROVANE_P_UN(ippsConj_64fc_Idx, TCplx, TCplx) ROVANE_P_UN(sippsConj_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN_I(ippsConj_64fc_I_Idx, TCplx) ROVANE_P_UN_I(sippsConj_32fc_I_Idx, TSCplx)
// d[n-1-i] = conj(x[i]); source and destination must not overlap.
ROVANE_P_UN(ippsConjFlip_64fc_Idx, TCplx, TCplx) ROVANE_P_UN(sippsConjFlip_32fc_Idx, TSCplx, TSCplx)
// Complex to magnitude (d1) and phase (d2); split into real (d1) and imaginary (d2).
ROVANE_P_SPLIT(ippsCartToPolar_64fc_Idx, TCplx, double) ROVANE_P_SPLIT(sippsCartToPolar_32fc_Idx, TSCplx, float)
ROVANE_P_SPLIT(ippsCplxToReal_64fc_Idx, TCplx, double) ROVANE_P_SPLIT(sippsCplxToReal_32fc_Idx, TSCplx, float)
// Magnitude (x) and phase (y) to complex; real (x) and imaginary (y) parts to complex.
ROVANE_P_BIN(ippsPolarToCart_64fc_Idx, double, double, TCplx) ROVANE_P_BIN(sippsPolarToCart_32fc_Idx, float, float, TSCplx)
ROVANE_P_BIN(ippsRealToCplx_64f_Idx, double, double, TCplx) ROVANE_P_BIN(sippsRealToCplx_32f_Idx, float, float, TSCplx)
// d = (x - sub) / div; the complex form multiplies by 1 / div.
ROVANE_API IppStatus ippsNormalize_64f_Idx(const double* x, int32_t xIndex, double* d, int32_t dIndex, int32_t len,
                                           double sub, double div);
ROVANE_API IppStatus sippsNormalize_32f_Idx(const float* x, int32_t xIndex, float* d, int32_t dIndex, int32_t len,
                                            float sub, float div);
ROVANE_API IppStatus ippsNormalize_64fc_Idx(const TCplx* x, int32_t xIndex, TCplx* d, int32_t dIndex, int32_t len,
                                            TCplx sub, double div);
ROVANE_API IppStatus sippsNormalize_32fc_Idx(const TSCplx* x, int32_t xIndex, TSCplx* d, int32_t dIndex, int32_t len,
                                             TSCplx sub, float div);

// ---------------------------------------------------------------------------
// Transcendental functions: at most one unit in the last place (_A53 double,
// _A24 single).
// ---------------------------------------------------------------------------
ROVANE_P_UN(ippsSin_64f_A53_Idx, double, double) ROVANE_P_UN(sippsSin_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsCos_64f_A53_Idx, double, double) ROVANE_P_UN(sippsCos_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsTan_64f_A53_Idx, double, double) ROVANE_P_UN(sippsTan_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAsin_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAsin_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAcos_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAcos_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAtan_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAtan_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsSinh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsSinh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsCosh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsCosh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsTanh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsTanh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAsinh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAsinh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAcosh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAcosh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsAtanh_64f_A53_Idx, double, double) ROVANE_P_UN(sippsAtanh_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsExp_64f_A53_Idx, double, double) ROVANE_P_UN(sippsExp_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsLn_64f_A53_Idx, double, double) ROVANE_P_UN(sippsLn_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsLog10_64f_A53_Idx, double, double) ROVANE_P_UN(sippsLog10_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsCbrt_64f_A53_Idx, double, double) ROVANE_P_UN(sippsCbrt_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsInvCbrt_64f_A53_Idx, double, double) ROVANE_P_UN(sippsInvCbrt_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsInvSqrt_64f_A53_Idx, double, double) ROVANE_P_UN(sippsInvSqrt_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsInv_64f_A53_Idx, double, double) ROVANE_P_UN(sippsInv_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsErf_64f_A53_Idx, double, double) ROVANE_P_UN(sippsErf_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsErfc_64f_A53_Idx, double, double) ROVANE_P_UN(sippsErfc_32f_A24_Idx, float, float)
ROVANE_P_UN(ippsErfInv_64f_A53_Idx, double, double) ROVANE_P_UN(sippsErfInv_32f_A24_Idx, float, float)
// atan2(x, y): the first source is the ordinate.
ROVANE_P_BIN(ippsAtan2_64f_A53_Idx, double, double, double) ROVANE_P_BIN(sippsAtan2_32f_A24_Idx, float, float, float)
// d = x ^ y; Powx with one exponent for all elements.
ROVANE_P_BIN(ippsPow_64f_A53_Idx, double, double, double) ROVANE_P_BIN(sippsPow_32f_A24_Idx, float, float, float)
ROVANE_P_BIN(ippsPow_64fc_A53_Idx, TCplx, TCplx, TCplx) ROVANE_P_BIN(sippsPow_32fc_A24_Idx, TSCplx, TSCplx, TSCplx)
ROVANE_P_VAL(ippsPowx_64f_A53_Idx, double, double, double) ROVANE_P_VAL(sippsPowx_32f_A24_Idx, float, float, float)
ROVANE_P_VAL(ippsPowx_64fc_A53_Idx, TCplx, TCplx, TCplx) ROVANE_P_VAL(sippsPowx_32fc_A24_Idx, TSCplx, TSCplx, TSCplx)
// Sine into d1, cosine into d2.
ROVANE_P_SPLIT(ippsSinCos_64f_A53_Idx, double, double) ROVANE_P_SPLIT(sippsSinCos_32f_A24_Idx, float, float)

// Rounding. ippsRound rounds halves to even; ippsModf gives the whole part
// (d1) and the fraction (d2), both with the sign of the source.
ROVANE_P_UN(ippsCeil_64f_Idx, double, double) ROVANE_P_UN(sippsCeil_32f_Idx, float, float)
ROVANE_P_UN(ippsFloor_64f_Idx, double, double) ROVANE_P_UN(sippsFloor_32f_Idx, float, float)
ROVANE_P_UN(ippsRound_64f_Idx, double, double) ROVANE_P_UN(sippsRound_32f_Idx, float, float)
ROVANE_P_UN(ippsTrunc_64f_Idx, double, double) ROVANE_P_UN(sippsTrunc_32f_Idx, float, float)
ROVANE_P_SPLIT(ippsModf_64f_Idx, double, double) ROVANE_P_SPLIT(sippsModf_32f_Idx, float, float)

// ---------------------------------------------------------------------------
// Thresholds. Complex forms compare squared magnitudes; a negative level of a
// complex or inverse form returns ippStsThreshNegLevelErr.
// ---------------------------------------------------------------------------
ROVANE_P_LEVEL(ippsThreshold_LT_64f_Idx, double, double) ROVANE_P_LEVEL(sippsThreshold_LT_32f_Idx, float, float)
ROVANE_P_LEVEL_I(ippsThreshold_LT_64f_I_Idx, double, double) ROVANE_P_LEVEL_I(sippsThreshold_LT_32f_I_Idx, float, float)
ROVANE_P_LEVEL(ippsThreshold_LT_64fc_Idx, TCplx, double) ROVANE_P_LEVEL(sippsThreshold_LT_32fc_Idx, TSCplx, float)
ROVANE_P_LEVEL_I(ippsThreshold_LT_64fc_I_Idx, TCplx, double) ROVANE_P_LEVEL_I(sippsThreshold_LT_32fc_I_Idx, TSCplx, float)
ROVANE_P_LEVEL(ippsThreshold_GT_64f_Idx, double, double) ROVANE_P_LEVEL(sippsThreshold_GT_32f_Idx, float, float)
ROVANE_P_LEVEL_I(ippsThreshold_GT_64f_I_Idx, double, double) ROVANE_P_LEVEL_I(sippsThreshold_GT_32f_I_Idx, float, float)
ROVANE_P_LEVEL(ippsThreshold_GT_64fc_Idx, TCplx, double) ROVANE_P_LEVEL(sippsThreshold_GT_32fc_Idx, TSCplx, float)
ROVANE_P_LEVEL_I(ippsThreshold_GT_64fc_I_Idx, TCplx, double) ROVANE_P_LEVEL_I(sippsThreshold_GT_32fc_I_Idx, TSCplx, float)
ROVANE_P_LEVEL(ippsThreshold_LTAbs_64f_Idx, double, double) ROVANE_P_LEVEL(sippsThreshold_LTAbs_32f_Idx, float, float)
ROVANE_P_LEVEL_I(ippsThreshold_LTAbs_64f_I_Idx, double, double) ROVANE_P_LEVEL_I(sippsThreshold_LTAbs_32f_I_Idx, float, float)
ROVANE_P_LEVEL(ippsThreshold_GTAbs_64f_Idx, double, double) ROVANE_P_LEVEL(sippsThreshold_GTAbs_32f_Idx, float, float)
ROVANE_P_LEVEL_I(ippsThreshold_GTAbs_64f_I_Idx, double, double) ROVANE_P_LEVEL_I(sippsThreshold_GTAbs_32f_I_Idx, float, float)
ROVANE_P_LEVELVAL(ippsThreshold_LTVal_64f_Idx, double, double, double) ROVANE_P_LEVELVAL(sippsThreshold_LTVal_32f_Idx, float, float, float)
ROVANE_P_LEVELVAL_I(ippsThreshold_LTVal_64f_I_Idx, double, double, double) ROVANE_P_LEVELVAL_I(sippsThreshold_LTVal_32f_I_Idx, float, float, float)
ROVANE_P_LEVELVAL(ippsThreshold_LTVal_64fc_Idx, TCplx, double, TCplx) ROVANE_P_LEVELVAL(sippsThreshold_LTVal_32fc_Idx, TSCplx, float, TSCplx)
ROVANE_P_LEVELVAL_I(ippsThreshold_LTVal_64fc_I_Idx, TCplx, double, TCplx) ROVANE_P_LEVELVAL_I(sippsThreshold_LTVal_32fc_I_Idx, TSCplx, float, TSCplx)
ROVANE_P_LEVELVAL(ippsThreshold_GTVal_64f_Idx, double, double, double) ROVANE_P_LEVELVAL(sippsThreshold_GTVal_32f_Idx, float, float, float)
ROVANE_P_LEVELVAL_I(ippsThreshold_GTVal_64f_I_Idx, double, double, double) ROVANE_P_LEVELVAL_I(sippsThreshold_GTVal_32f_I_Idx, float, float, float)
ROVANE_P_LEVELVAL(ippsThreshold_GTVal_64fc_Idx, TCplx, double, TCplx) ROVANE_P_LEVELVAL(sippsThreshold_GTVal_32fc_Idx, TSCplx, float, TSCplx)
ROVANE_P_LEVELVAL_I(ippsThreshold_GTVal_64fc_I_Idx, TCplx, double, TCplx) ROVANE_P_LEVELVAL_I(sippsThreshold_GTVal_32fc_I_Idx, TSCplx, float, TSCplx)
ROVANE_P_LEVEL(ippsThreshold_LTInv_64f_Idx, double, double) ROVANE_P_LEVEL(sippsThreshold_LTInv_32f_Idx, float, float)
ROVANE_P_LEVEL_I(ippsThreshold_LTInv_64f_I_Idx, double, double) ROVANE_P_LEVEL_I(sippsThreshold_LTInv_32f_I_Idx, float, float)
ROVANE_P_LEVEL(ippsThreshold_LTInv_64fc_Idx, TCplx, double) ROVANE_P_LEVEL(sippsThreshold_LTInv_32fc_Idx, TSCplx, float)
ROVANE_P_LEVEL_I(ippsThreshold_LTInv_64fc_I_Idx, TCplx, double) ROVANE_P_LEVEL_I(sippsThreshold_LTInv_32fc_I_Idx, TSCplx, float)
// x < lowLevel gives lowValue, x > highLevel gives highValue.
ROVANE_API IppStatus ippsThreshold_LTValGTVal_64f_Idx(const double* x, int32_t xIndex, double* d, int32_t dIndex,
                                                      int32_t len, double lowLevel, double lowValue,
                                                      double highLevel, double highValue);
ROVANE_API IppStatus sippsThreshold_LTValGTVal_32f_Idx(const float* x, int32_t xIndex, float* d, int32_t dIndex,
                                                       int32_t len, float lowLevel, float lowValue, float highLevel,
                                                       float highValue);
ROVANE_API IppStatus ippsThreshold_LTValGTVal_64f_I_Idx(double* d, int32_t dIndex, int32_t len, double lowLevel,
                                                        double lowValue, double highLevel, double highValue);
ROVANE_API IppStatus sippsThreshold_LTValGTVal_32f_I_Idx(float* d, int32_t dIndex, int32_t len, float lowLevel,
                                                         float lowValue, float highLevel, float highValue);
// Every NaN becomes value; on complex data pass twice the index and length.
ROVANE_P_VAL_I(ippsReplaceNAN_64f_I_Idx, double, double) ROVANE_P_VAL_I(sippsReplaceNAN_32f_I_Idx, float, float)

// ---------------------------------------------------------------------------
// Motion, fill and conversion.
// ---------------------------------------------------------------------------
ROVANE_P_UN(ippsCopy_32f_Idx, float, float) ROVANE_P_UN(ippsCopy_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN(ippsCopy_64f_Idx, double, double) ROVANE_P_UN(ippsCopy_64fc_Idx, TCplx, TCplx)
ROVANE_P_UN(ippsMove_32f_Idx, float, float) ROVANE_P_UN(ippsMove_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN(ippsMove_64f_Idx, double, double) ROVANE_P_UN(ippsMove_64fc_Idx, TCplx, TCplx)
ROVANE_P_VAL_I(ippsSet_64f_Idx, double, double) ROVANE_P_VAL_I(sippsSet_32f_Idx, float, float)
ROVANE_P_VAL_I(ippsSet_64fc_Idx, TCplx, TCplx) ROVANE_P_VAL_I(sippsSet_32fc_Idx, TSCplx, TSCplx)
ROVANE_P_UN_I(ippsZero_64f_Idx, double) ROVANE_P_UN_I(sippsZero_32f_Idx, float)
ROVANE_P_UN_I(ippsZero_64fc_Idx, TCplx) ROVANE_P_UN_I(sippsZero_32fc_Idx, TSCplx)
ROVANE_P_UN(ippsConvert_32f64f_Idx, float, double) ROVANE_P_UN(ippsConvert_64f32f_Idx, double, float)
ROVANE_P_UN(ippsConvert_32s64f_Idx, int32_t, double) ROVANE_P_UN(ippsConvert_32s32f_Idx, int32_t, float)
// To 32-bit integers: scaled by 2^-scaleFactor, rounded by mode, saturated.
ROVANE_API IppStatus ippsConvert_64f32s_Sfs_Idx(const double* x, int32_t xIndex, int32_t* d, int32_t dIndex,
                                                int32_t len, TRounding mode, int32_t scaleFactor);
ROVANE_API IppStatus ippsConvert_32f32s_Sfs_Idx(const float* x, int32_t xIndex, int32_t* d, int32_t dIndex,
                                                int32_t len, TRounding mode, int32_t scaleFactor);

}  // namespace rovane

#undef ROVANE_P_UN
#undef ROVANE_P_UN_I
#undef ROVANE_P_BIN
#undef ROVANE_P_BIN_I
#undef ROVANE_P_VAL
#undef ROVANE_P_VAL_I
#undef ROVANE_P_SPLIT
#undef ROVANE_P_LEVEL
#undef ROVANE_P_LEVEL_I
#undef ROVANE_P_LEVELVAL
#undef ROVANE_P_LEVELVAL_I
