// The reduction routines of twins/Reduce.def: length and pointer checks,
// then one kernel of the active table (kernels/KernelsReduce.inc). Product
// and the running sums are plain ordered loops: their rounding is defined by
// the order of the steps.
#include "rovane/primitives/ippspl_reduce.h"

#include "rovane/primitives/kernels/Entry.h"

namespace rovane {

using kern::CheckArgs;
using kern::idx;
using kern::Kernels;

namespace {

template <class F, class T>
const F* Real(const T* p, int32_t i) {
    return reinterpret_cast<const F*>(p + i);
}

// Checks for routines that need at least `least` elements.
inline IppStatus CheckLeast(int32_t len, int32_t least, const void* a, const void* b = &kern::kPresent,
                            const void* c = &kern::kPresent, const void* d = &kern::kPresent) {
    if (len < least) return ippStsSizeErr;
    if (!a || !b || !c || !d) return ippStsNullPtrErr;
    return 1;
}

template <class F>
IppStatus SumR(const F* x, int32_t xi, int32_t len, F* r) {
    if (len < 0) return ippStsSizeErr;
    if (!x || !r) return ippStsNullPtrErr;
    *r = len == 0 ? F(0) : F(Kernels<F>().Sum(x + xi, len));
    return ippStsNoErr;
}
template <class F, class C>
IppStatus SumC(const C* x, int32_t xi, int32_t len, C* r) {
    if (len < 0) return ippStsSizeErr;
    if (!x || !r) return ippStsNullPtrErr;
    double s[2] = {0, 0};
    if (len > 0) Kernels<F>().Sumc(Real<F>(x, xi), nullptr, len, s);
    *r = C(F(s[0]), F(s[1]));
    return ippStsNoErr;
}
template <class F>
IppStatus MeanR(const F* x, int32_t xi, int32_t len, F* r) {
    const IppStatus st = CheckLeast(len, 1, x, r);
    if (st != 1) return st;
    *r = F(Kernels<F>().Sum(x + xi, len) / len);
    return ippStsNoErr;
}
template <class F, class C>
IppStatus MeanC(const C* x, int32_t xi, int32_t len, C* r) {
    const IppStatus st = CheckLeast(len, 1, x, r);
    if (st != 1) return st;
    double s[2];
    Kernels<F>().Sumc(Real<F>(x, xi), nullptr, len, s);
    *r = C(F(s[0] / len), F(s[1] / len));
    return ippStsNoErr;
}
template <class F>
IppStatus StdDevR(const F* x, int32_t xi, int32_t len, F* r) {
    const IppStatus st = CheckLeast(len, 2, x, r);
    if (st != 1) return st;
    double mean, m2;
    Kernels<F>().MeanM2(x + xi, len, &mean, &m2);
    *r = F(__builtin_sqrt(m2 / (len - 1)));
    return ippStsNoErr;
}
template <class F>
IppStatus MeanStdDevR(const F* x, int32_t xi, int32_t len, F* mean, F* stdDev) {
    const IppStatus st = CheckLeast(len, 1, x, mean, stdDev);
    if (st != 1) return st;
    double m, m2;
    Kernels<F>().MeanM2(x + xi, len, &m, &m2);
    *mean = F(m);
    // One element has no deviation to estimate: 0 / 0 gives NaN.
    *stdDev = F(__builtin_sqrt(m2 / (len - 1)));
    return ippStsNoErr;
}
template <class F, bool IsMax>
IppStatus ArgR(const F* x, int32_t xi, int32_t len, F* value, int32_t* index) {
    const IppStatus st = CheckLeast(len, 1, x, value);
    if (st != 1) return st;
    const auto& k = Kernels<F>();
    const idx at = (IsMax ? k.MaxIndx : k.MinIndx)(x + xi, len, value);
    if (index) *index = int32_t(at);
    return ippStsNoErr;
}
template <class F>
IppStatus MinMaxR(const F* x, int32_t xi, int32_t len, F* mn, int32_t* imn, F* mx, int32_t* imx) {
    const IppStatus st = CheckLeast(len, 1, x, mn, mx);
    if (st != 1) return st;
    idx a, b;
    Kernels<F>().MinMaxIndx(x + xi, len, mn, &a, mx, &b);
    if (imn) *imn = int32_t(a);
    if (imx) *imx = int32_t(b);
    return ippStsNoErr;
}
// A norm of x (y null) or of x - y.
template <class F, class T>
IppStatus NormOf(kern::RNorm<F> kernel, const T* x, int32_t xi, const T* y, int32_t yi, int32_t len, double* r) {
    if (len < 0) return ippStsSizeErr;
    if (!x || !r) return ippStsNullPtrErr;
    *r = len == 0 ? 0.0 : kernel(Real<F>(x, xi), y ? Real<F>(y, yi) : nullptr, len);
    return ippStsNoErr;
}
template <class F>
IppStatus DotR(const F* x, int32_t xi, const F* y, int32_t yi, int32_t len, double* r) {
    if (len < 0) return ippStsSizeErr;
    if (!x || !y || !r) return ippStsNullPtrErr;
    *r = len == 0 ? 0.0 : Kernels<F>().Dot(x + xi, y + yi, len);
    return ippStsNoErr;
}
template <class F, class TX, class TY>
IppStatus DotPair(kern::RPair<F> kernel, const TX* x, int32_t xi, const TY* y, int32_t yi, int32_t len, TCplx* r) {
    if (len < 0) return ippStsSizeErr;
    if (!x || !y || !r) return ippStsNullPtrErr;
    double s[2] = {0, 0};
    if (len > 0) kernel(Real<F>(x, xi), Real<F>(y, yi), len, s);
    *r = TCplx(s[0], s[1]);
    return ippStsNoErr;
}

template <class F>
void BlockSums(const F* x, int32_t xi, int32_t len, int32_t blockLen, F* d, int32_t di) {
    if (len <= 0 || blockLen <= 0) return;
    const auto sum = Kernels<F>().Sum;  // looked up once for all blocks
    const F* p = x + xi;
    F* o = d + di;
    for (int32_t start = 0, k = 0; start < len; start += blockLen, ++k) {
        const int32_t n = len - start < blockLen ? len - start : blockLen;
        o[k] = F(sum(p + start, n));
    }
}

template <class T>
void ProductReal(const T* x, int32_t xi, int32_t len, double* r) {
    double p = 1;
    for (int32_t i = 0; i < len; ++i) p *= double(x[xi + i]);
    *r = p;
}
template <class C>
void ProductCplx(const C* x, int32_t xi, int32_t len, TCplx* r) {
    TCplx p(1, 0);
    for (int32_t i = 0; i < len; ++i) p = p * TCplx(double(x[xi + i].Re), double(x[xi + i].Im));
    *r = p;
}
template <class T>
void RunningSum(const T* x, int32_t xi, T* d, int32_t di, int32_t len, int32_t stride) {
    // Element by element in order, so d may be x at the same position.
    const T* s = x + xi;
    T* o = d + di;
    for (int32_t i = 0; i < len; ++i) o[i] = i < stride ? s[i] : s[i] + o[i - stride];
}
template <class C>
void RunningSumC(const C* x, int32_t xi, C* d, int32_t di, int32_t len, int32_t stride) {
    const C* s = x + xi;
    C* o = d + di;
    for (int32_t i = 0; i < len; ++i) {
        if (i < stride) {
            o[i] = s[i];
        } else {
            const C prev = o[i - stride], cur = s[i];
            o[i] = C(cur.Re + prev.Re, cur.Im + prev.Im);
        }
    }
}

}  // namespace

IppStatus ippsSum_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) { return SumR(x, xi, len, r); }
IppStatus sippsSum_32f_Idx(const float* x, int32_t xi, int32_t len, float* r) { return SumR(x, xi, len, r); }
IppStatus ippsSum_64fc_Idx(const TCplx* x, int32_t xi, int32_t len, TCplx* r) { return SumC<double>(x, xi, len, r); }
IppStatus sippsSum_32fc_Idx(const TSCplx* x, int32_t xi, int32_t len, TSCplx* r) {
    return SumC<float>(x, xi, len, r);
}
IppStatus ippsMean_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) { return MeanR(x, xi, len, r); }
IppStatus sippsMean_32f_Idx(const float* x, int32_t xi, int32_t len, float* r) { return MeanR(x, xi, len, r); }
IppStatus ippsMean_64fc_Idx(const TCplx* x, int32_t xi, int32_t len, TCplx* r) {
    return MeanC<double>(x, xi, len, r);
}
IppStatus sippsMean_32fc_Idx(const TSCplx* x, int32_t xi, int32_t len, TSCplx* r) {
    return MeanC<float>(x, xi, len, r);
}
IppStatus ippsStdDev_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) { return StdDevR(x, xi, len, r); }
IppStatus sippsStdDev_32f_Idx(const float* x, int32_t xi, int32_t len, float* r) { return StdDevR(x, xi, len, r); }
IppStatus ippsMeanStdDev_64f_Idx(const double* x, int32_t xi, int32_t len, double* mean, double* sd) {
    return MeanStdDevR(x, xi, len, mean, sd);
}
IppStatus sippsMeanStdDev_32f_Idx(const float* x, int32_t xi, int32_t len, float* mean, float* sd) {
    return MeanStdDevR(x, xi, len, mean, sd);
}
IppStatus ippsMax_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) {
    return ArgR<double, true>(x, xi, len, r, nullptr);
}
IppStatus sippsMax_32f_Idx(const float* x, int32_t xi, int32_t len, float* r) {
    return ArgR<float, true>(x, xi, len, r, nullptr);
}
IppStatus ippsMin_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) {
    return ArgR<double, false>(x, xi, len, r, nullptr);
}
IppStatus sippsMin_32f_Idx(const float* x, int32_t xi, int32_t len, float* r) {
    return ArgR<float, false>(x, xi, len, r, nullptr);
}
IppStatus ippsMaxIndx_64f_Idx(const double* x, int32_t xi, int32_t len, double* v, int32_t* index) {
    return index ? ArgR<double, true>(x, xi, len, v, index) : ippStsNullPtrErr;
}
IppStatus sippsMaxIndx_32f_Idx(const float* x, int32_t xi, int32_t len, float* v, int32_t* index) {
    return index ? ArgR<float, true>(x, xi, len, v, index) : ippStsNullPtrErr;
}
IppStatus ippsMinIndx_64f_Idx(const double* x, int32_t xi, int32_t len, double* v, int32_t* index) {
    return index ? ArgR<double, false>(x, xi, len, v, index) : ippStsNullPtrErr;
}
IppStatus sippsMinIndx_32f_Idx(const float* x, int32_t xi, int32_t len, float* v, int32_t* index) {
    return index ? ArgR<float, false>(x, xi, len, v, index) : ippStsNullPtrErr;
}
IppStatus ippsMinMax_64f_Idx(const double* x, int32_t xi, int32_t len, double* mn, double* mx) {
    return MinMaxR(x, xi, len, mn, nullptr, mx, nullptr);
}
IppStatus sippsMinMax_32f_Idx(const float* x, int32_t xi, int32_t len, float* mn, float* mx) {
    return MinMaxR(x, xi, len, mn, nullptr, mx, nullptr);
}
IppStatus ippsMinMaxIndx_64f_Idx(const double* x, int32_t xi, int32_t len, double* mn, int32_t* imn, double* mx,
                                 int32_t* imx) {
    return imn && imx ? MinMaxR(x, xi, len, mn, imn, mx, imx) : ippStsNullPtrErr;
}
IppStatus sippsMinMaxIndx_32f_Idx(const float* x, int32_t xi, int32_t len, float* mn, int32_t* imn, float* mx,
                                  int32_t* imx) {
    return imn && imx ? MinMaxR(x, xi, len, mn, imn, mx, imx) : ippStsNullPtrErr;
}

// Norms: real kernels over reals, complex kernels over pairs; the complex
// Euclidean norm is the real one over both parts.
#define ROVANE_NORM(NAME, SNAME, KERNEL, KERNELC, L2)                                                              \
    IppStatus ipps##NAME##_64f_Idx(const double* x, int32_t xi, int32_t len, double* r) {                       \
        return NormOf<double>(Kernels<double>().KERNEL, x, xi, (const double*)nullptr, 0, len, r);                \
    }                                                                                                            \
    IppStatus sipps##NAME##_32f64f_Idx(const float* x, int32_t xi, int32_t len, double* r) {                    \
        return NormOf<float>(Kernels<float>().KERNEL, x, xi, (const float*)nullptr, 0, len, r);                   \
    }                                                                                                            \
    IppStatus ipps##NAME##_64fc64f_Idx(const TCplx* x, int32_t xi, int32_t len, double* r) {                    \
        return L2 ? NormOf<double>(Kernels<double>().KERNEL, Real<double>(x, xi), 0, (const double*)nullptr, 0,   \
                                   len * 2, r)                                                                   \
                  : NormOf<double>(Kernels<double>().KERNELC, x, xi, (const TCplx*)nullptr, 0, len, r);           \
    }                                                                                                            \
    IppStatus sipps##NAME##_32fc64f_Idx(const TSCplx* x, int32_t xi, int32_t len, double* r) {                  \
        return L2 ? NormOf<float>(Kernels<float>().KERNEL, Real<float>(x, xi), 0, (const float*)nullptr, 0,       \
                                  len * 2, r)                                                                    \
                  : NormOf<float>(Kernels<float>().KERNELC, x, xi, (const TSCplx*)nullptr, 0, len, r);            \
    }                                                                                                            \
    IppStatus ipps##SNAME##_64f_Idx(const double* x, int32_t xi, const double* y, int32_t yi, int32_t len,      \
                                    double* r) {                                                                 \
        if (!y && len > 0) return ippStsNullPtrErr;                                                              \
        return NormOf<double>(Kernels<double>().KERNEL, x, xi, y, yi, len, r);                                    \
    }                                                                                                            \
    IppStatus sipps##SNAME##_32f64f_Idx(const float* x, int32_t xi, const float* y, int32_t yi, int32_t len,    \
                                        double* r) {                                                             \
        if (!y && len > 0) return ippStsNullPtrErr;                                                              \
        return NormOf<float>(Kernels<float>().KERNEL, x, xi, y, yi, len, r);                                      \
    }                                                                                                            \
    IppStatus ipps##SNAME##_64fc64f_Idx(const TCplx* x, int32_t xi, const TCplx* y, int32_t yi, int32_t len,    \
                                        double* r) {                                                             \
        if (!y && len > 0) return ippStsNullPtrErr;                                                              \
        return L2 ? NormOf<double>(Kernels<double>().KERNEL, Real<double>(x, xi), 0, Real<double>(y, yi), 0,      \
                                   len * 2, r)                                                                   \
                  : NormOf<double>(Kernels<double>().KERNELC, x, xi, y, yi, len, r);                              \
    }                                                                                                            \
    IppStatus sipps##SNAME##_32fc64f_Idx(const TSCplx* x, int32_t xi, const TSCplx* y, int32_t yi, int32_t len, \
                                         double* r) {                                                            \
        if (!y && len > 0) return ippStsNullPtrErr;                                                              \
        return L2 ? NormOf<float>(Kernels<float>().KERNEL, Real<float>(x, xi), 0, Real<float>(y, yi), 0,         \
                                  len * 2, r)                                                                    \
                  : NormOf<float>(Kernels<float>().KERNELC, x, xi, y, yi, len, r);                                \
    }
ROVANE_NORM(Norm_Inf, NormDiff_Inf, NormInf, NormInfc, false)
ROVANE_NORM(Norm_L1, NormDiff_L1, NormL1, NormL1c, false)
ROVANE_NORM(Norm_L2, NormDiff_L2, NormL2, NormL2, true)
#undef ROVANE_NORM

IppStatus ippsDotProd_64f_Idx(const double* x, int32_t xi, const double* y, int32_t yi, int32_t len, double* r) {
    return DotR(x, xi, y, yi, len, r);
}
IppStatus sippsDotProd_32f64f_Idx(const float* x, int32_t xi, const float* y, int32_t yi, int32_t len, double* r) {
    return DotR(x, xi, y, yi, len, r);
}
IppStatus ippsDotProd_64fc_Idx(const TCplx* x, int32_t xi, const TCplx* y, int32_t yi, int32_t len, TCplx* r) {
    return DotPair<double>(Kernels<double>().Dotc, x, xi, y, yi, len, r);
}
IppStatus sippsDotProd_32fc64fc_Idx(const TSCplx* x, int32_t xi, const TSCplx* y, int32_t yi, int32_t len,
                                    TCplx* r) {
    return DotPair<float>(Kernels<float>().Dotc, x, xi, y, yi, len, r);
}
IppStatus ippsDotProd_64f64fc_Idx(const double* x, int32_t xi, const TCplx* y, int32_t yi, int32_t len, TCplx* r) {
    return DotPair<double>(Kernels<double>().Dotrc, x, xi, y, yi, len, r);
}
IppStatus sippsDotProd_32f32fc64fc_Idx(const float* x, int32_t xi, const TSCplx* y, int32_t yi, int32_t len,
                                       TCplx* r) {
    return DotPair<float>(Kernels<float>().Dotrc, x, xi, y, yi, len, r);
}

void SumBlocks_Idx(const double* x, int32_t xi, int32_t len, int32_t blockLen, double* d, int32_t di) {
    BlockSums(x, xi, len, blockLen, d, di);
}
void sSumBlocks_Idx(const float* x, int32_t xi, int32_t len, int32_t blockLen, float* d, int32_t di) {
    BlockSums(x, xi, len, blockLen, d, di);
}
void Product_d_Idx(const double* x, int32_t xi, int32_t len, double* r) { ProductReal(x, xi, len, r); }
void sProduct_d_Idx(const float* x, int32_t xi, int32_t len, double* r) { ProductReal(x, xi, len, r); }
void Product_c_Idx(const TCplx* x, int32_t xi, int32_t len, TCplx* r) { ProductCplx(x, xi, len, r); }
void sProduct_c_Idx(const TSCplx* x, int32_t xi, int32_t len, TCplx* r) { ProductCplx(x, xi, len, r); }
void CumSumd_Idx(const double* x, int32_t xi, double* d, int32_t di, int32_t len) {
    RunningSum(x, xi, d, di, len, 1);
}
void sCumSumd_Idx(const float* x, int32_t xi, float* d, int32_t di, int32_t len) { RunningSum(x, xi, d, di, len, 1); }
void CumSumc_Idx(const TCplx* x, int32_t xi, TCplx* d, int32_t di, int32_t len) {
    RunningSumC(x, xi, d, di, len, 1);
}
void sCumSumc_Idx(const TSCplx* x, int32_t xi, TSCplx* d, int32_t di, int32_t len) {
    RunningSumC(x, xi, d, di, len, 1);
}
void CumSumDelta_Idx(const double* x, int32_t xi, double* d, int32_t di, int32_t len, int32_t stride) {
    RunningSum(x, xi, d, di, len, stride);
}
void sCumSumDelta_Idx(const float* x, int32_t xi, float* d, int32_t di, int32_t len, int32_t stride) {
    RunningSum(x, xi, d, di, len, stride);
}
void CumSumDeltac_Idx(const TCplx* x, int32_t xi, TCplx* d, int32_t di, int32_t len, int32_t stride) {
    RunningSumC(x, xi, d, di, len, stride);
}
void sCumSumDeltac_Idx(const TSCplx* x, int32_t xi, TSCplx* d, int32_t di, int32_t len, int32_t stride) {
    RunningSumC(x, xi, d, di, len, stride);
}

}  // namespace rovane
