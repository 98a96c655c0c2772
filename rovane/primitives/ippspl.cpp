// Catalogue entries: each is a thin wrapper that checks its arguments and
// calls one kernel of the active table (kernels/KernelTable.h). The definition
// macros below stamp a double routine and its single twin from one line.
#include "rovane/primitives/ippspl.h"

#include <cmath>
#include <complex>
#include <cstring>
#include <limits>

#include "rovane/primitives/kernels/Entry.h"

namespace rovane {

using kern::At;
using kern::CheckArgs;
using kern::Each;
using kern::Run1;
using kern::Run12;
using kern::Run2;
using kern::TArgs;
using kern::TKernelSet;
using kern::Val;

namespace {

// ---------------------------------------------------------------------------
// Scalar routines in long double for the few functions without a vector
// routine of 1 ULP: each result is rounded once.
// ---------------------------------------------------------------------------
long double ErfInvL(long double x) {
    if (!(x > -1 && x < 1)) {
        if (x == 1) return std::numeric_limits<long double>::infinity();
        if (x == -1) return -std::numeric_limits<long double>::infinity();
        return std::numeric_limits<long double>::quiet_NaN();
    }
    if (x == 0) return x;
    const long double ax = fabsl(x);
    // Starting value of relative error about 2e-3 (closed form of Winitzki),
    // then Newton steps on erf near zero and on erfc towards one, where the
    // residual 1 - |x| is exact.
    constexpr long double a = 0.147L;
    const long double l = logl((1 - ax) * (1 + ax));
    const long double t = 2 / (3.14159265358979323846264338327950288L * a) + l / 2;
    long double y = sqrtl(sqrtl(t * t - l / a) - t);
    const long double k = 1.12837916709551257389615890312154517L;  // 2 / sqrt(pi)
    const long double rest = 1 - ax;
    for (int it = 0; it < 8; ++it) {
        const long double r = ax <= 0.5L ? erfl(y) - ax : rest - erfcl(y);
        const long double dy = r / (k * expl(-y * y));
        y -= dy;
        if (fabsl(dy) <= fabsl(y) * 1e-21L) break;
    }
    return x < 0 ? -y : y;
}

template <class C>
C SqrtC(C z) {
    using F = decltype(z.Re);
    const long double re = z.Re, im = z.Im;
    if (re == 0 && im == 0) return C(F(0), z.Im);
    const long double t = sqrtl((hypotl(re, im) + fabsl(re)) / 2);
    if (re >= 0) return C(static_cast<F>(t), static_cast<F>(im / (2 * t)));
    return C(static_cast<F>(fabsl(im) / (2 * t)), static_cast<F>(copysignl(t, im)));
}

template <class C>
C PowC(C b, C e) {
    using F = decltype(b.Re);
    const std::complex<long double> r =
        std::pow(std::complex<long double>(b.Re, b.Im), std::complex<long double>(e.Re, e.Im));
    return C(static_cast<F>(r.real()), static_cast<F>(r.imag()));
}

template <class F>
F RoundTo(long double v) { return static_cast<F>(v); }

template <class F>
IppStatus ConvertToInt(const F* x, int32_t xi, int32_t* d, int32_t di, int32_t len, TRounding mode, int32_t scale) {
    const long double factor = ldexpl(1.0L, -scale);
    return Each(x, xi, d, di, len, [&](F v) -> int32_t {
        long double t = static_cast<long double>(v) * factor;
        t = mode == rnTrunc ? truncl(t) : nearbyintl(t);
        if (t != t) return 0;
        if (t >= 2147483647.0L) return std::numeric_limits<int32_t>::max();
        if (t <= -2147483648.0L) return std::numeric_limits<int32_t>::min();
        return static_cast<int32_t>(t);
    });
}

}  // namespace

// ---------------------------------------------------------------------------
// Definition macros. F is the float type of the kernel, T the element types.
// ---------------------------------------------------------------------------
#define ROVANE_D_BIN(N, F, TX, TY, TD, K, SCALE)                                                              \
    IppStatus N(const TX* x, int32_t xIndex, const TY* y, int32_t yIndex, TD* d, int32_t dIndex, int32_t len) { \
        return Run2<F>(&TKernelSet<F>::K, x, xIndex, y, yIndex, d, dIndex, len, {}, SCALE);                  \
    }
// Second source first: d = y op x.
#define ROVANE_D_BIN_YX(N, F, T, K, SCALE)                                                                  \
    IppStatus N(const T* x, int32_t xIndex, const T* y, int32_t yIndex, T* d, int32_t dIndex, int32_t len) { \
        return Run2<F>(&TKernelSet<F>::K, y, yIndex, x, xIndex, d, dIndex, len, {}, SCALE);                \
    }
// In place: d = d op x.
#define ROVANE_D_BIN_I(N, F, T, K, SCALE)                                           \
    IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len) {    \
        return Run2<F>(&TKernelSet<F>::K, d, dIndex, x, xIndex, d, dIndex, len, {}, SCALE); \
    }
#define ROVANE_D_UN(N, F, TX, TD, K)                                              \
    IppStatus N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len) { \
        return Run1<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, len);             \
    }
#define ROVANE_D_UN_I(N, F, T, K) \
    IppStatus N(T* d, int32_t dIndex, int32_t len) { return Run1<F>(&TKernelSet<F>::K, d, dIndex, d, dIndex, len); }
#define ROVANE_D_SPLIT(N, F, TX, TD, K)                                                                          \
    IppStatus N(const TX* x, int32_t xIndex, TD* d1, int32_t d1Index, TD* d2, int32_t d2Index, int32_t len) {   \
        return Run12<F>(&TKernelSet<F>::K, x, xIndex, d1, d1Index, d2, d2Index, len);                           \
    }

// Stamp a double/single pair.
#define ROVANE_PAIR(M, N64, N32, ...) M(N64, double __VA_OPT__(, ) __VA_ARGS__) M(N32, float __VA_OPT__(, ) __VA_ARGS__)
#define ROVANE_PAIR_C(M, N64, N32, ...) \
    M(N64, double, TCplx __VA_OPT__(, ) __VA_ARGS__) M(N32, float, TSCplx __VA_OPT__(, ) __VA_ARGS__)

// Real element pair macros need the element type equal to F.
#define ROVANE_R_BIN(N, F, K) ROVANE_D_BIN(N, F, F, F, F, K, 1)
#define ROVANE_R_BIN_YX(N, F, K) ROVANE_D_BIN_YX(N, F, F, K, 1)
#define ROVANE_R_BIN_I(N, F, K) ROVANE_D_BIN_I(N, F, F, K, 1)
#define ROVANE_R_UN(N, F, K) ROVANE_D_UN(N, F, F, F, K)
#define ROVANE_R_UN_I(N, F, K) ROVANE_D_UN_I(N, F, F, K)
#define ROVANE_R_SPLIT(N, F, K) ROVANE_D_SPLIT(N, F, F, F, K)
#define ROVANE_C_BIN(N, F, C, K, SCALE) ROVANE_D_BIN(N, F, C, C, C, K, SCALE)
#define ROVANE_C_BIN_YX(N, F, C, K, SCALE) ROVANE_D_BIN_YX(N, F, C, K, SCALE)
#define ROVANE_C_BIN_I(N, F, C, K, SCALE) ROVANE_D_BIN_I(N, F, C, K, SCALE)
#define ROVANE_C_UN(N, F, C, K) ROVANE_D_UN(N, F, C, C, K)
#define ROVANE_C_UN_I(N, F, C, K) ROVANE_D_UN_I(N, F, C, K)
#define ROVANE_C_TO_R(N, F, C, K) ROVANE_D_UN(N, F, C, F, K)
#define ROVANE_C_SPLIT(N, F, C, K) ROVANE_D_SPLIT(N, F, C, F, K)
#define ROVANE_R_JOIN(N, F, C, K) ROVANE_D_BIN(N, F, F, F, C, K, 1)

// Arithmetic. Complex addition and subtraction are the real kernels over
// twice the length.
ROVANE_PAIR(ROVANE_R_BIN, ippsAdd_64f_Idx, sippsAdd_32f_Idx, Add)
ROVANE_PAIR_C(ROVANE_C_BIN, ippsAdd_64fc_Idx, sippsAdd_32fc_Idx, Add, 2)
ROVANE_PAIR(ROVANE_R_BIN_I, ippsAdd_64f_I_Idx, sippsAdd_32f_I_Idx, Add)
ROVANE_PAIR_C(ROVANE_C_BIN_I, ippsAdd_64fc_I_Idx, sippsAdd_32fc_I_Idx, Add, 2)
ROVANE_PAIR(ROVANE_R_BIN_YX, ippsSub_64f_Idx, sippsSub_32f_Idx, Sub)
ROVANE_PAIR_C(ROVANE_C_BIN_YX, ippsSub_64fc_Idx, sippsSub_32fc_Idx, Sub, 2)
ROVANE_PAIR(ROVANE_R_BIN_I, ippsSub_64f_I_Idx, sippsSub_32f_I_Idx, Sub)
ROVANE_PAIR_C(ROVANE_C_BIN_I, ippsSub_64fc_I_Idx, sippsSub_32fc_I_Idx, Sub, 2)
ROVANE_PAIR(ROVANE_R_BIN, ippsMul_64f_Idx, sippsMul_32f_Idx, Mul)
ROVANE_PAIR_C(ROVANE_C_BIN, ippsMul_64fc_Idx, sippsMul_32fc_Idx, Mulc, 1)
ROVANE_PAIR(ROVANE_R_BIN_I, ippsMul_64f_I_Idx, sippsMul_32f_I_Idx, Mul)
ROVANE_PAIR_C(ROVANE_C_BIN_I, ippsMul_64fc_I_Idx, sippsMul_32fc_I_Idx, Mulc, 1)
ROVANE_PAIR(ROVANE_R_BIN_YX, ippsDiv_64f_A53_Idx, sippsDiv_32f_A24_Idx, Div)
ROVANE_PAIR(ROVANE_R_BIN, ippsAddProduct_64f_Idx, sippsAddProduct_32f_Idx, AddProduct)
ROVANE_PAIR_C(ROVANE_C_BIN, ippsAddProduct_64fc_Idx, sippsAddProduct_32fc_Idx, AddProductc, 1)

// Scalar operand.
#define ROVANE_D_CVAL_I(N, F, C, K, SIGN)                                                  \
    IppStatus N(C value, C* d, int32_t dIndex, int32_t len) {                              \
        return Run1<F>(&TKernelSet<F>::K, d, dIndex, d, dIndex, len, Val<F>(SIGN value.Re, SIGN value.Im)); \
    }
ROVANE_PAIR_C(ROVANE_D_CVAL_I, ippsAddC_64fc_I_Idx, sippsAddC_32fc_I_Idx, AddValuec, +)
ROVANE_PAIR_C(ROVANE_D_CVAL_I, ippsSubC_64fc_I_Idx, sippsSubC_32fc_I_Idx, AddValuec, -)  // x + (-c) is x - c exactly
ROVANE_PAIR_C(ROVANE_D_CVAL_I, ippsSubCRev_64fc_I_Idx, sippsSubCRev_32fc_I_Idx, SubFromValuec, +)
ROVANE_PAIR_C(ROVANE_D_CVAL_I, ippsMulC_64fc_I_Idx, sippsMulC_32fc_I_Idx, ScaleByValuec, +)
#define ROVANE_D_SUBC(N, F, C)                                                                         \
    IppStatus N(const C* x, int32_t xIndex, C value, C* d, int32_t dIndex, int32_t len) {              \
        return Run1<F>(&TKernelSet<F>::AddValuec, x, xIndex, d, dIndex, len, Val<F>(-value.Re, -value.Im)); \
    }
ROVANE_PAIR_C(ROVANE_D_SUBC, ippsSubC_64fc_Idx, sippsSubC_32fc_Idx)
#define ROVANE_D_RVAL_I(N, F, K)                                                                               \
    IppStatus N(F value, F* d, int32_t dIndex, int32_t len) {                                                 \
        return Run1<F>(&TKernelSet<F>::K, d, dIndex, d, dIndex, len, Val<F>(value));                          \
    }
ROVANE_PAIR(ROVANE_D_RVAL_I, ippsMulC_64f_I_Idx, sippsMulC_32f_I_Idx, ScaleByValue)
ROVANE_PAIR(ROVANE_D_RVAL_I, ippsDivC_64f_I_Idx, sippsDivC_32f_I_Idx, DivC)
#define ROVANE_D_CDIVC(N, F, C)                                                                       \
    IppStatus N(C value, C* d, int32_t dIndex, int32_t len) {                                         \
        const F k = F(1) / (value.Re * value.Re + value.Im * value.Im);                               \
        return Run1<F>(&TKernelSet<F>::ScaleByValuec, d, dIndex, d, dIndex, len, Val<F>(value.Re * k, -value.Im * k)); \
    }
ROVANE_PAIR_C(ROVANE_D_CDIVC, ippsDivC_64fc_I_Idx, sippsDivC_32fc_I_Idx)

// Squares, roots, magnitudes, parts.
ROVANE_PAIR(ROVANE_R_UN, ippsSqr_64f_Idx, sippsSqr_32f_Idx, Sqr)
ROVANE_PAIR(ROVANE_R_UN_I, ippsSqr_64f_I_Idx, sippsSqr_32f_I_Idx, Sqr)
ROVANE_PAIR_C(ROVANE_C_UN, ippsSqr_64fc_Idx, sippsSqr_32fc_Idx, Sqrc)
ROVANE_PAIR_C(ROVANE_C_UN_I, ippsSqr_64fc_I_Idx, sippsSqr_32fc_I_Idx, Sqrc)
ROVANE_PAIR(ROVANE_R_UN, ippsAbs_64f_Idx, sippsAbs_32f_Idx, Abs)
ROVANE_PAIR(ROVANE_R_UN_I, ippsAbs_64f_I_Idx, sippsAbs_32f_I_Idx, Abs)
ROVANE_PAIR_C(ROVANE_C_TO_R, ippsMagnitude_64fc_Idx, sippsMagnitude_32fc_Idx, Magnitude)
ROVANE_PAIR_C(ROVANE_C_TO_R, ippsPowerSpectr_64fc_Idx, sippsPowerSpectr_32fc_Idx, PowerSpectr)
ROVANE_PAIR_C(ROVANE_C_TO_R, ippsPhase_64fc_Idx, sippsPhase_32fc_Idx, Phase)
ROVANE_PAIR_C(ROVANE_C_TO_R, ippsReal_64fc_Idx, sippsReal_32fc_Idx, Real)
ROVANE_PAIR_C(ROVANE_C_TO_R, ippsImag_64fc_Idx, sippsImag_32fc_Idx, Imag)
ROVANE_PAIR_C(ROVANE_C_UN, ippsConj_64fc_Idx, sippsConj_32fc_Idx, Conj)
ROVANE_PAIR_C(ROVANE_C_UN_I, ippsConj_64fc_I_Idx, sippsConj_32fc_I_Idx, Conj)
ROVANE_PAIR_C(ROVANE_C_SPLIT, ippsCartToPolar_64fc_Idx, sippsCartToPolar_32fc_Idx, CartToPolar)
ROVANE_PAIR_C(ROVANE_C_SPLIT, ippsCplxToReal_64fc_Idx, sippsCplxToReal_32fc_Idx, CplxToReal)
ROVANE_PAIR_C(ROVANE_R_JOIN, ippsPolarToCart_64fc_Idx, sippsPolarToCart_32fc_Idx, PolarToCart)
ROVANE_PAIR_C(ROVANE_R_JOIN, ippsRealToCplx_64f_Idx, sippsRealToCplx_32f_Idx, RealToCplx)

// Reversed and conjugated: a backward walk that only moves parts; the loop
// is memory-bound and needs no kernel of its own.
#define ROVANE_D_CONJFLIP(N, F, C)                                                             \
    IppStatus N(const C* x, int32_t xIndex, C* d, int32_t dIndex, int32_t len) {               \
        const IppStatus st = CheckArgs(len, x, d);                                             \
        if (st != 1) return st;                                                                \
        for (int32_t i = 0; i < len; ++i) {                                                    \
            const C v = x[xIndex + i];                                                         \
            d[dIndex + len - 1 - i] = C(v.Re, -v.Im);                                          \
        }                                                                                      \
        return ippStsNoErr;                                                                    \
    }
ROVANE_PAIR_C(ROVANE_D_CONJFLIP, ippsConjFlip_64fc_Idx, sippsConjFlip_32fc_Idx)

// Complex square root one element at a time: each element takes its own
// scaling against overflow and its own branch-cut sign (SqrtC), which a
// vector path would have to redo in every lane.
#define ROVANE_D_CSQRT(N, F, C) \
    IppStatus N(const C* x, int32_t xIndex, C* d, int32_t dIndex, int32_t len) { return Each(x, xIndex, d, dIndex, len, SqrtC<C>); }
#define ROVANE_D_CSQRT_I(N, F, C) \
    IppStatus N(C* d, int32_t dIndex, int32_t len) { return Each(d, dIndex, d, dIndex, len, SqrtC<C>); }
ROVANE_PAIR_C(ROVANE_D_CSQRT, ippsSqrt_64fc_Idx, sippsSqrt_32fc_Idx)
ROVANE_PAIR_C(ROVANE_D_CSQRT, ippsSqrt_64fc_A53_Idx, sippsSqrt_32fc_A24_Idx)
ROVANE_PAIR_C(ROVANE_D_CSQRT_I, ippsSqrt_64fc_I_Idx, sippsSqrt_32fc_I_Idx)

IppStatus ippsNormalize_64f_Idx(const double* x, int32_t xIndex, double* d, int32_t dIndex, int32_t len, double sub,
                                double div) {
    return Run1<double>(&TKernelSet<double>::Normalize, x, xIndex, d, dIndex, len, Val(sub, div));
}
IppStatus sippsNormalize_32f_Idx(const float* x, int32_t xIndex, float* d, int32_t dIndex, int32_t len, float sub,
                                 float div) {
    return Run1<float>(&TKernelSet<float>::Normalize, x, xIndex, d, dIndex, len, Val(sub, div));
}
IppStatus ippsNormalize_64fc_Idx(const TCplx* x, int32_t xIndex, TCplx* d, int32_t dIndex, int32_t len, TCplx sub,
                                 double div) {
    return Run1<double>(&TKernelSet<double>::Normalizec, x, xIndex, d, dIndex, len, Val(sub.Re, sub.Im, 1 / div));
}
IppStatus sippsNormalize_32fc_Idx(const TSCplx* x, int32_t xIndex, TSCplx* d, int32_t dIndex, int32_t len, TSCplx sub,
                                  float div) {
    return Run1<float>(&TKernelSet<float>::Normalizec, x, xIndex, d, dIndex, len, Val(sub.Re, sub.Im, 1 / div));
}

// Transcendental functions.
#define ROVANE_D_POWX(N, F)                                                                          \
    IppStatus N(const F* x, int32_t xIndex, F value, F* d, int32_t dIndex, int32_t len) {            \
        return Run1<F>(&TKernelSet<F>::Powx, x, xIndex, d, dIndex, len, Val<F>(value));            \
    }
ROVANE_D_POWX(ippsPowx_64f_A53_Idx, double)
ROVANE_D_POWX(sippsPowx_32f_A24_Idx, float)

// Functions without a vector routine of 1 ULP: long double, one element at a time.
#define ROVANE_D_LD(N, F, EXPR)                                                                    \
    IppStatus N(const F* x, int32_t xIndex, F* d, int32_t dIndex, int32_t len) {                   \
        return Each(x, xIndex, d, dIndex, len, [](F v) { const long double t = v; return RoundTo<F>(EXPR); }); \
    }
ROVANE_PAIR(ROVANE_D_LD, ippsErfc_64f_A53_Idx, sippsErfc_32f_A24_Idx, erfcl(t))
ROVANE_PAIR(ROVANE_D_LD, ippsErfInv_64f_A53_Idx, sippsErfInv_32f_A24_Idx, ErfInvL(t))
ROVANE_PAIR(ROVANE_D_LD, ippsInvSqrt_64f_A53_Idx, sippsInvSqrt_32f_A24_Idx, 1 / sqrtl(t))
ROVANE_PAIR(ROVANE_D_LD, ippsInvCbrt_64f_A53_Idx, sippsInvCbrt_32f_A24_Idx, 1 / cbrtl(t))

// Complex powers one element at a time: the zero, infinity and branch rules
// of the scalar PowC decide most of each element; the containers send the
// bulk of real powers through the table (Powx) instead.
#define ROVANE_D_CPOW(N, F, C)                                                                             \
    IppStatus N(const C* x, int32_t xIndex, const C* y, int32_t yIndex, C* d, int32_t dIndex, int32_t len) { \
        const IppStatus st = CheckArgs(len, x, y, d);                                                      \
        if (st != 1) return st;                                                                            \
        for (int32_t i = 0; i < len; ++i) d[dIndex + i] = PowC(x[xIndex + i], y[yIndex + i]);             \
        return ippStsNoErr;                                                                                \
    }
#define ROVANE_D_CPOWX(N, F, C)                                                                  \
    IppStatus N(const C* x, int32_t xIndex, C value, C* d, int32_t dIndex, int32_t len) {         \
        return Each(x, xIndex, d, dIndex, len, [value](C v) { return PowC(v, value); });          \
    }
ROVANE_PAIR_C(ROVANE_D_CPOW, ippsPow_64fc_A53_Idx, sippsPow_32fc_A24_Idx)
ROVANE_PAIR_C(ROVANE_D_CPOWX, ippsPowx_64fc_A53_Idx, sippsPowx_32fc_A24_Idx)

// Rounding.
ROVANE_PAIR(ROVANE_R_UN, ippsCeil_64f_Idx, sippsCeil_32f_Idx, Ceil)
ROVANE_PAIR(ROVANE_R_UN, ippsFloor_64f_Idx, sippsFloor_32f_Idx, Floor)
ROVANE_PAIR(ROVANE_R_UN, ippsRound_64f_Idx, sippsRound_32f_Idx, Round)
ROVANE_PAIR(ROVANE_R_UN, ippsTrunc_64f_Idx, sippsTrunc_32f_Idx, Trunc)
ROVANE_PAIR(ROVANE_R_SPLIT, ippsModf_64f_Idx, sippsModf_32f_Idx, Modf)

// Entries that are one call of the kernel of their facade name: written by
// their ROVANE_TWIN_KERNEL rows (twins/VectorMath.def).
#define ROVANE_DEFINE_UN(K, N, F, W, TX, TD) \
    IppStatus N ROVANE_SHAPE_UN(W, TX, TD) { return Run1<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, len); }
#define ROVANE_DEFINE_BIN(K, N, F, W, TX, TY, TD)                                                   \
    IppStatus N ROVANE_SHAPE_BIN(W, TX, TY, TD) {                                                   \
        return Run2<F>(&TKernelSet<F>::K, x, xIndex, y, yIndex, d, dIndex, len);                    \
    }
#define ROVANE_DEFINE_SPLIT(K, N, F, W, TX, TD)                                                     \
    IppStatus N ROVANE_SHAPE_SPLIT(W, TX, TD) {                                                     \
        return Run12<F>(&TKernelSet<F>::K, x, xIndex, d1, d1Index, d2, d2Index, len);               \
    }
#define ROVANE_TWIN(...)
#define ROVANE_SOLO(...)
#define ROVANE_TWIN_KERNEL(K, D, S, SHAPE, ...)                  \
    ROVANE_DEFINE_##SHAPE(K, D, double, AsDouble, __VA_ARGS__) \
    ROVANE_DEFINE_##SHAPE(K, S, float, AsSingle, __VA_ARGS__)
#include "rovane/primitives/twins/VectorMath.def"
#undef ROVANE_TWIN
#undef ROVANE_SOLO
#undef ROVANE_TWIN_KERNEL
#undef ROVANE_DEFINE_UN
#undef ROVANE_DEFINE_BIN
#undef ROVANE_DEFINE_SPLIT

// Thresholds. A level check that fails leaves the data as it is.
#define ROVANE_D_LEVEL(N, NI, F, T, K, KZERO, NEG_CHECK)                                       \
    IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len, F level) {      \
        if (NEG_CHECK && len > 0 && level < 0) return ippStsThreshNegLevelErr;                 \
        using KP = kern::K1<F> TKernelSet<F>::*; /* the two may sit in different families */   \
        return Run1<F>(level == 0 ? KP(&TKernelSet<F>::KZERO) : KP(&TKernelSet<F>::K), x, xIndex, d, dIndex,  \
                       len, Val<F>(level));                                                    \
    }                                                                                          \
    IppStatus NI(T* d, int32_t dIndex, int32_t len, F level) { return N(d, dIndex, d, dIndex, len, level); }
#define ROVANE_D_LEVELVAL(N, NI, F, T, K)                                                             \
    IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len, F level, T value) {    \
        if (sizeof(T) == 2 * sizeof(F) && len > 0 && level < 0) return ippStsThreshNegLevelErr;       \
        const F* v = reinterpret_cast<const F*>(&value);                                              \
        return Run1<F>(&TKernelSet<F>::K, x, xIndex, d, dIndex, len,                                  \
                       Val<F>(level, v[0], sizeof(T) == 2 * sizeof(F) ? v[sizeof(T) / sizeof(F) - 1] : F(0))); \
    }                                                                                                 \
    IppStatus NI(T* d, int32_t dIndex, int32_t len, F level, T value) {                               \
        return N(d, dIndex, d, dIndex, len, level, value);                                            \
    }
ROVANE_D_LEVEL(ippsThreshold_LT_64f_Idx, ippsThreshold_LT_64f_I_Idx, double, double, Threshold_LT, Threshold_LT, false)
ROVANE_D_LEVEL(sippsThreshold_LT_32f_Idx, sippsThreshold_LT_32f_I_Idx, float, float, Threshold_LT, Threshold_LT, false)
ROVANE_D_LEVEL(ippsThreshold_LT_64fc_Idx, ippsThreshold_LT_64fc_I_Idx, double, TCplx, Threshold_LTc, Threshold_LTc, true)
ROVANE_D_LEVEL(sippsThreshold_LT_32fc_Idx, sippsThreshold_LT_32fc_I_Idx, float, TSCplx, Threshold_LTc, Threshold_LTc, true)
ROVANE_D_LEVEL(ippsThreshold_GT_64f_Idx, ippsThreshold_GT_64f_I_Idx, double, double, Threshold_GT, Threshold_GT, false)
ROVANE_D_LEVEL(sippsThreshold_GT_32f_Idx, sippsThreshold_GT_32f_I_Idx, float, float, Threshold_GT, Threshold_GT, false)
ROVANE_D_LEVEL(ippsThreshold_GT_64fc_Idx, ippsThreshold_GT_64fc_I_Idx, double, TCplx, Threshold_GTc, Threshold_GTc, true)
ROVANE_D_LEVEL(sippsThreshold_GT_32fc_Idx, sippsThreshold_GT_32fc_I_Idx, float, TSCplx, Threshold_GTc, Threshold_GTc, true)
ROVANE_D_LEVEL(ippsThreshold_LTAbs_64f_Idx, ippsThreshold_LTAbs_64f_I_Idx, double, double, Threshold_LTAbs, Threshold_LTAbs, false)
ROVANE_D_LEVEL(sippsThreshold_LTAbs_32f_Idx, sippsThreshold_LTAbs_32f_I_Idx, float, float, Threshold_LTAbs, Threshold_LTAbs, false)
ROVANE_D_LEVEL(ippsThreshold_GTAbs_64f_Idx, ippsThreshold_GTAbs_64f_I_Idx, double, double, Threshold_GTAbs, Threshold_GTAbs, false)
ROVANE_D_LEVEL(sippsThreshold_GTAbs_32f_Idx, sippsThreshold_GTAbs_32f_I_Idx, float, float, Threshold_GTAbs, Threshold_GTAbs, false)
// Level 0 is a plain reciprocal.
ROVANE_D_LEVEL(ippsThreshold_LTInv_64f_Idx, ippsThreshold_LTInv_64f_I_Idx, double, double, Threshold_LTInv, Inv, true)
ROVANE_D_LEVEL(sippsThreshold_LTInv_32f_Idx, sippsThreshold_LTInv_32f_I_Idx, float, float, Threshold_LTInv, Inv, true)
ROVANE_D_LEVEL(ippsThreshold_LTInv_64fc_Idx, ippsThreshold_LTInv_64fc_I_Idx, double, TCplx, Threshold_LTInvc, Invc, true)
ROVANE_D_LEVEL(sippsThreshold_LTInv_32fc_Idx, sippsThreshold_LTInv_32fc_I_Idx, float, TSCplx, Threshold_LTInvc, Invc, true)
ROVANE_D_LEVELVAL(ippsThreshold_LTVal_64f_Idx, ippsThreshold_LTVal_64f_I_Idx, double, double, Threshold_LTVal)
ROVANE_D_LEVELVAL(sippsThreshold_LTVal_32f_Idx, sippsThreshold_LTVal_32f_I_Idx, float, float, Threshold_LTVal)
ROVANE_D_LEVELVAL(ippsThreshold_LTVal_64fc_Idx, ippsThreshold_LTVal_64fc_I_Idx, double, TCplx, Threshold_LTValc)
ROVANE_D_LEVELVAL(sippsThreshold_LTVal_32fc_Idx, sippsThreshold_LTVal_32fc_I_Idx, float, TSCplx, Threshold_LTValc)
ROVANE_D_LEVELVAL(ippsThreshold_GTVal_64f_Idx, ippsThreshold_GTVal_64f_I_Idx, double, double, Threshold_GTVal)
ROVANE_D_LEVELVAL(sippsThreshold_GTVal_32f_Idx, sippsThreshold_GTVal_32f_I_Idx, float, float, Threshold_GTVal)
ROVANE_D_LEVELVAL(ippsThreshold_GTVal_64fc_Idx, ippsThreshold_GTVal_64fc_I_Idx, double, TCplx, Threshold_GTValc)
ROVANE_D_LEVELVAL(sippsThreshold_GTVal_32fc_Idx, sippsThreshold_GTVal_32fc_I_Idx, float, TSCplx, Threshold_GTValc)

#define ROVANE_D_LTVALGTVAL(N, NI, F)                                                                        \
    IppStatus N(const F* x, int32_t xIndex, F* d, int32_t dIndex, int32_t len, F lowLevel, F lowValue,         \
                F highLevel, F highValue) {                                                                  \
        if (len > 0 && lowLevel > highLevel) return ippStsThresholdErr;                                      \
        return Run1<F>(&TKernelSet<F>::Threshold_LTValGTVal, x, xIndex, d, dIndex, len,                          \
                       Val<F>(lowLevel, lowValue, highLevel, highValue));                                    \
    }                                                                                                        \
    IppStatus NI(F* d, int32_t dIndex, int32_t len, F lowLevel, F lowValue, F highLevel, F highValue) {      \
        return N(d, dIndex, d, dIndex, len, lowLevel, lowValue, highLevel, highValue);                       \
    }
ROVANE_D_LTVALGTVAL(ippsThreshold_LTValGTVal_64f_Idx, ippsThreshold_LTValGTVal_64f_I_Idx, double)
ROVANE_D_LTVALGTVAL(sippsThreshold_LTValGTVal_32f_Idx, sippsThreshold_LTValGTVal_32f_I_Idx, float)
ROVANE_PAIR(ROVANE_D_RVAL_I, ippsReplaceNAN_64f_I_Idx, sippsReplaceNAN_32f_I_Idx, ReplaceNAN)

// Motion, fill and conversion.
#define ROVANE_D_COPY(N, T)                                                                  \
    IppStatus N(const T* x, int32_t xIndex, T* d, int32_t dIndex, int32_t len) {             \
        const IppStatus st = CheckArgs(len, x, d);                                           \
        if (st != 1) return st;                                                              \
        std::memmove(d + dIndex, x + xIndex, sizeof(T) * static_cast<size_t>(len));          \
        return ippStsNoErr;                                                                  \
    }
ROVANE_D_COPY(ippsCopy_32f_Idx, float)
ROVANE_D_COPY(ippsCopy_32fc_Idx, TSCplx)
ROVANE_D_COPY(ippsCopy_64f_Idx, double)
ROVANE_D_COPY(ippsCopy_64fc_Idx, TCplx)
ROVANE_D_COPY(ippsMove_32f_Idx, float)
ROVANE_D_COPY(ippsMove_32fc_Idx, TSCplx)
ROVANE_D_COPY(ippsMove_64f_Idx, double)
ROVANE_D_COPY(ippsMove_64fc_Idx, TCplx)
#define ROVANE_D_SET(N, T)                                                         \
    IppStatus N(T value, T* d, int32_t dIndex, int32_t len) {                      \
        const IppStatus st = CheckArgs(len, d);                                    \
        if (st != 1) return st;                                                    \
        T* p = d + dIndex;                                                         \
        for (int32_t i = 0; i < len; ++i) p[i] = value;                            \
        return ippStsNoErr;                                                        \
    }
ROVANE_D_SET(ippsSet_64f_Idx, double)
ROVANE_D_SET(sippsSet_32f_Idx, float)
ROVANE_D_SET(ippsSet_64fc_Idx, TCplx)
ROVANE_D_SET(sippsSet_32fc_Idx, TSCplx)
IppStatus ippsZero_64f_Idx(double* d, int32_t dIndex, int32_t len) { return ippsSet_64f_Idx(0.0, d, dIndex, len); }
IppStatus sippsZero_32f_Idx(float* d, int32_t dIndex, int32_t len) { return sippsSet_32f_Idx(0.0f, d, dIndex, len); }
IppStatus ippsZero_64fc_Idx(TCplx* d, int32_t dIndex, int32_t len) { return ippsSet_64fc_Idx(C_ZERO, d, dIndex, len); }
IppStatus sippsZero_32fc_Idx(TSCplx* d, int32_t dIndex, int32_t len) {
    return sippsSet_32fc_Idx(C_ZERO_SINGLE, d, dIndex, len);
}
#define ROVANE_D_CONVERT(N, TX, TD)                                                                  \
    IppStatus N(const TX* x, int32_t xIndex, TD* d, int32_t dIndex, int32_t len) {                   \
        return Each(x, xIndex, d, dIndex, len, [](TX v) { return static_cast<TD>(v); });             \
    }
ROVANE_D_CONVERT(ippsConvert_32f64f_Idx, float, double)
ROVANE_D_CONVERT(ippsConvert_64f32f_Idx, double, float)
ROVANE_D_CONVERT(ippsConvert_32s64f_Idx, int32_t, double)
ROVANE_D_CONVERT(ippsConvert_32s32f_Idx, int32_t, float)
IppStatus ippsConvert_64f32s_Sfs_Idx(const double* x, int32_t xIndex, int32_t* d, int32_t dIndex, int32_t len,
                                     TRounding mode, int32_t scaleFactor) {
    return ConvertToInt(x, xIndex, d, dIndex, len, mode, scaleFactor);
}
IppStatus ippsConvert_32f32s_Sfs_Idx(const float* x, int32_t xIndex, int32_t* d, int32_t dIndex, int32_t len,
                                     TRounding mode, int32_t scaleFactor) {
    return ConvertToInt(x, xIndex, d, dIndex, len, mode, scaleFactor);
}

}  // namespace rovane
