// Gamma and error function family and the Bessel set.
//
// Each algorithm is written once, over long double (and std::complex<long
// double> for the complex forms); the named double, single and complex entries
// at the end of the file only choose the limits of their precision and round
// the result once.
#include "rovane/scalars/GammaBessel.h"

#include <cfloat>
#include <cmath>
#include <complex>
#include <cstdint>
#include <type_traits>

namespace rovane {
namespace {

using L = long double;
using CL = std::complex<long double>;

// The widest type available for the Bessel power series, where the terms are
// far larger than the sum for arguments of moderate size. On x86-64 that is
// the 113-bit __float128 (only + - * / are used, which the compiler's runtime
// provides); elsewhere long double.
#if defined(__SIZEOF_FLOAT128__) && LDBL_MANT_DIG < 113 && !defined(__clang__)
using Wide = __float128;
constexpr Wide kWideEps = Wide(0x1p-63L) * Wide(0x1p-49L);  // 2^-112
#else
using Wide = long double;
constexpr Wide kWideEps = LDBL_EPSILON;
#endif

constexpr L kPi = 3.14159265358979323846264338327950288L;
constexpr L kLnSqrt2Pi = 0.918938533204672741780329736405617639L;  // ln(sqrt(2 pi))
constexpr L kTwoDivSqrtPi = 1.12837916709551257389615890312154517L;
constexpr L kSqrt2 = 1.41421356237309504880168872420969808L;

// Limits and the series tolerance of each precision. The tolerance ends the
// incomplete gamma series and continued fraction: for double it is the long
// double epsilon 2^-63, so that the sum is exact to the working precision;
// for single it is 2^-52, well below the rounding of the result.
template <class F>
struct Prec;
template <>
struct Prec<double> {
    static constexpr L MaxGam = MAXGAM;
    static constexpr L MaxLgm = MAXLGM;
    static constexpr L Eps = LDBL_EPSILON;
    static double NaN() { return NAN_; }
    static double Inf() { return INF; }
};
template <>
struct Prec<float> {
    static constexpr L MaxGam = MAXGAM_SINGLE;
    static constexpr L MaxLgm = MAXLGM_SINGLE;
    static constexpr L Eps = MACHEP;
    static float NaN() { return NAN_SINGLE; }
    static float Inf() { return INF_SINGLE; }
};

// ---------------------------------------------------------------------------
// Gamma and LnGamma.
// ---------------------------------------------------------------------------

// From here on Stirling's series is used; at 13 ten terms of it leave an
// error below 1e-22.
constexpr L kStirlingMin = 13;

// B(2k) / (2k (2k - 1)), k = 1..10.
constexpr L kStirling[] = {
    0.0833333333333333333333333333L,  -0.00277777777777777777777777778L, 0.000793650793650793650793650794L,
    -0.000595238095238095238095238095L, 0.000841750841750841750841750842L, -0.00191752691752691752691752692L,
    0.00641025641025641025641025641L,  -0.0295506535947712418300653595L,  0.179644372368830573164938490016L,
    -1.39243221690590111642743221691L,
};

// lnGamma(y) - ((y - 1/2) ln y - y + ln sqrt(2 pi)) for y >= kStirlingMin.
L StirlingTail(L y) {
    const L r = 1 / y;
    const L r2 = r * r;
    L s = 0;
    for (int k = 9; k >= 0; --k) s = s * r2 + kStirling[k];
    return s * r;
}

// (zeta(k) - 1) / k, k = 2..41: the Taylor coefficients of
// lnGamma(2 + z) = (1 - EulerGamma) z + sum (-1)^k (zeta(k) - 1) / k z^k,
// used for |z| <= 1/2, where 40 terms reach 1e-26.
constexpr L kOneMinusEuler = 0.422784335098467139393487909917597568L;
constexpr L kZetaTaylor[] = {
    0.3224670334241132182362076L,      0.06735230105319809513324605L,     0.02058080842778454787900092L,
    0.007385551028673985266273097L,    0.002890510330741523285752988L,    0.001192753911703260977113936L,
    0.0005096695247430424223356548L,   0.0002231547584535793797614188L,   0.00009945751278180853371459589L,
    0.0000449262367381331417002075L,   0.0000205072127756706915531665L,   0.000009439488275268395903987425L,
    0.000004374866789907487804181793L, 0.000002039215753801366236781901L, 0.000000955141213040741983285718L,
    0.000000449246919876456604329429L, 0.0000002120718480555466586923136L, 0.0000001004322482396809960872083L,
    4.769810169363980565760193e-8L,    2.271109460894316491031998e-8L,    1.083865921489695409107492e-8L,
    5.183475041970046655121249e-9L,    2.483674543802478317185009e-9L,    1.192140140586091207442548e-9L,
    5.731367241678862013330195e-10L,   2.75952288512423314517815e-10L,    1.330476437424448948149716e-10L,
    6.422964563838100022082448e-11L,   3.104424774732227276239216e-11L,   1.502138408075414217093301e-11L,
    7.27597448023907966250455e-12L,    3.527742476575915083615072e-12L,   1.711991790559617908601084e-12L,
    8.315385841420284819798358e-13L,   4.042200525289440065536009e-13L,   1.966475631096616490411046e-13L,
    9.573630387838555763782201e-14L,   4.664076026428374224576493e-14L,
};

// lnGamma(2 + z) for |z| <= 1/2, without the cancellation that the Stirling
// route suffers next to the zeros of lnGamma at 1 and 2.
L LnGammaTwoPlus(L z) {
    constexpr int n = sizeof(kZetaTaylor) / sizeof(kZetaTaylor[0]);
    L s = 0;
    for (int k = n - 1; k >= 0; --k) s = kZetaTaylor[k] - z * s;  // sum of c_k (-z)^k
    return z * (kOneMinusEuler + z * s);
}

// Gamma(y) by Stirling's series for y >= kStirlingMin. Up to y = 40 the
// exponent (y - 1/2) ln y - y stays below 110 and one exp of it loses less
// than 1e-17; beyond, the rounding of a large exponent would cost up to a
// third of a double ulp, so y^(y - 1/2) is taken by pow, in two halves so
// that it stays finite in long double as far as Gamma itself does.
L StirlingGamma(L y) {
    if (y < 40) return std::exp((y - 0.5L) * std::log(y) - y + kLnSqrt2Pi + StirlingTail(y));
    const L p = std::pow(y, (y - 0.5L) / 2);
    return (p * std::exp(-y)) * p * std::exp(kLnSqrt2Pi + StirlingTail(y));
}

// Gamma(x) for x > 0. Below kStirlingMin the recurrence brings the argument
// to 2 + z with |z| <= 1/2, where Gamma is the exponential of the Taylor
// series: the result then keeps a relative error of a few units of long
// double also for a tiny x (which the incomplete gamma function needs when
// its shape is close to 0).
L GammaPos(L x) {
    if (x >= kStirlingMin) return StirlingGamma(x);
    if (x < 0.5L) return std::exp(LnGammaTwoPlus(x)) / (x * (1 + x));
    if (x < 1.5L) return std::exp(LnGammaTwoPlus(x - 1)) / x;
    L prod = 1;
    L y = x;
    while (y > 2.5L) {
        y -= 1;
        prod *= y;
    }
    return prod * std::exp(LnGammaTwoPlus(y - 2));
}

// sin(pi x) with the argument reduced exactly, so that it is accurate next to
// the integers (the poles of Gamma).
L SinPi(L x) {
    L r = x - 2 * std::nearbyint(x / 2);  // [-1, 1], exact
    if (r > 0.5L)
        r = 1 - r;
    else if (r < -0.5L)
        r = -1 - r;
    return std::sin(kPi * r);
}

// Gamma(x) for a finite x that is not a pole.
L GammaL(L x) {
    if (x > 0) return GammaPos(x);
    // Reflection: Gamma(x) = pi / (sin(pi x) Gamma(1 - x)). Beyond -1800
    // Gamma(1 - x) leaves the long double range and the result is a signed 0.
    const L s = SinPi(x);
    if (x < -1800) return std::copysign(L(0), s);
    return kPi / (s * GammaPos(1 - x));
}

// ln Gamma(x) for x > 0.
L LnGammaPos(L x) {
    if (x >= kStirlingMin) return (x - 0.5L) * std::log(x) - x + kLnSqrt2Pi + StirlingTail(x);
    if (x >= 0.5L && x <= 2.5L) {
        if (x < 1.5L) {
            const L z = x - 1;
            return LnGammaTwoPlus(z) - std::log1p(z);
        }
        return LnGammaTwoPlus(x - 2);
    }
    return std::log(GammaPos(x));
}

// ln|Gamma(x)| for a finite x; the poles give +INF.
L LnGammaL(L x) {
    if (x > 0) return LnGammaPos(x);
    if (x == std::floor(x)) return HUGE_VALL;
    return std::log(kPi / std::fabs(SinPi(x))) - LnGammaPos(1 - x);
}

template <class F>
F GammaT(F xf) {
    if (std::isnan(xf)) return Prec<F>::NaN();
    if (xf == 0) return std::signbit(xf) ? -Prec<F>::Inf() : Prec<F>::Inf();
    const L x = xf;
    if (x > Prec<F>::MaxGam) return Prec<F>::Inf();
    if (std::isinf(x) || (x < 0 && x == std::floor(x))) return Prec<F>::NaN();
    return static_cast<F>(GammaL(x));
}

template <class F>
F LnGammaT(F xf) {
    if (std::isnan(xf)) return Prec<F>::NaN();
    const L x = xf;
    if (std::isinf(x) || x > Prec<F>::MaxLgm) return Prec<F>::Inf();
    return static_cast<F>(LnGammaL(x));
}

template <class F>
F SgnGammaT(F x) {
    if (!(x < 0)) return 1;
    return std::fmod(std::trunc(-static_cast<L>(x)), L(2)) == 1 ? 1 : -1;
}

// ---------------------------------------------------------------------------
// Incomplete gamma. T is long double or std::complex<long double> for x;
// the shape a is always real.
// ---------------------------------------------------------------------------

inline bool IsNaNArg(L x) { return std::isnan(x); }
inline bool IsNaNArg(const CL& x) { return std::isnan(x.real()) || std::isnan(x.imag()); }

// Iteration cap of the series and the continued fraction. Both need on the
// order of sqrt(a) steps when x is close to a; the cap covers a up to about
// 1e11.
inline long IterCap(L a) { return 1000 + static_cast<long>(std::fmin(L(1e7), 30 * std::sqrt(std::fabs(a)))); }

// exp(-x + a ln x - lnGamma(a)), the common factor of series and fraction.
// For a real x and a >= kStirlingMin the exponent is regrouped with Stirling's
// form of lnGamma(a) as a (ln(x / a) - (x - a) / a) + ln(a) / 2 - ln sqrt(2 pi)
// - tail(a), which has the same value without the cancellation between
// a ln x and lnGamma(a) when both are large.
L GammaPrefactor(L x, L a) {
    if (a >= kStirlingMin) {
        // ln(x / a) from the exact difference x - a near 1, from the quotient
        // elsewhere (log1p would magnify the rounding of d next to d = -1).
        const L d = (x - a) / a;
        const L lnt = std::fabs(d) < 0.5L ? std::log1p(d) : std::log(x / a);
        return std::exp(a * (lnt - d) + 0.5L * std::log(a) - kLnSqrt2Pi - StirlingTail(a));
    }
    // Below it Gamma(a) is a moderate number and is divided out as a factor:
    // for a small shape P is close to 1, and an exponent holding lnGamma(a)
    // of size ln(1/a) would carry that size's rounding into 1 - P.
    return std::exp(a * std::log(x) - x) / GammaPos(a);
}
CL GammaPrefactor(const CL& x, L a) {
    if (a >= kStirlingMin) return std::exp(a * std::log(x) - x - LnGammaPos(a));
    return std::exp(a * std::log(x) - x) / GammaPos(a);
}

// P(a, x) by the series sum x^n / (a (a + 1) ... (a + n)).
template <class T>
T GammaSerL(const T& x, L a, L eps) {
    T term = T(1 / a);
    T sum = term;
    L an = a;
    const long cap = IterCap(a);
    for (long n = 0; n < cap; ++n) {
        an += 1;
        term *= x / an;
        sum += term;
        if (std::abs(term) <= std::abs(sum) * eps) break;
    }
    return sum * GammaPrefactor(x, a);
}

// Q(a, x) by the continued fraction
// 1 / (x + 1 - a - 1 (1 - a) / (x + 3 - a - 2 (2 - a) / (x + 5 - a - ...))),
// evaluated forwards by the modified Lentz method.
template <class T>
T GammaFracL(const T& x, L a, L eps, bool* converged = nullptr) {
    constexpr L tiny = 1e-4000L;
    if constexpr (std::is_same_v<T, L>) {
        if (std::isinf(x)) return 0;
    }
    T b = x + L(1) - a;
    T c = T(1 / tiny);
    T d = T(1) / b;
    T h = d;
    const long cap = IterCap(a);
    for (long i = 1; i < cap; ++i) {
        const L an = -L(i) * (L(i) - a);
        b += L(2);
        d = an * d + b;
        if (std::abs(d) < tiny) d = T(tiny);
        c = b + an / c;
        if (std::abs(c) < tiny) c = T(tiny);
        d = T(1) / d;
        const T del = d * c;
        h *= del;
        if (std::abs(del - L(1)) <= eps) {
            if (converged) *converged = true;
            break;
        }
    }
    return GammaPrefactor(x, a) * h;
}

inline L Magnitude(L x) { return x; }
inline L Magnitude(const CL& x) { return std::abs(x); }
inline bool IsZero(L x) { return x == 0; }
inline bool IsZero(const CL& x) { return x == CL(0); }
inline bool BelowZero(L x) { return x < 0; }
inline bool BelowZero(const CL&) { return false; }

// Shared frame of IGamma (lower = true) and JGamma (lower = false).
template <class T>
T IncompleteGamma(const T& x, L a, L eps, bool lower) {
    if (IsNaNArg(x) || std::isnan(a)) return T(NAN);
    if (a <= 0 || BelowZero(x)) return T(0);
    if (IsZero(x)) return T(lower ? 0 : 1);
    if constexpr (std::is_same_v<T, L>) {
        if (std::isinf(a)) return lower ? 0 : 1;
        if (std::isinf(x)) return lower ? 1 : 0;
    }
    if (Magnitude(x) < a + 1) {
        const T p = GammaSerL(x, a, eps);
        return lower ? p : L(1) - p;
    }
    bool converged = false;
    const T q = GammaFracL(x, a, eps, &converged);
    if (!converged && !std::is_same_v<T, L>) {
        // Next to the negative real axis the fraction converges too slowly
        // (on the axis, not at all); the series converges for every x and
        // takes over.
        const T p = GammaSerL(x, a, eps);
        return lower ? p : L(1) - p;
    }
    return lower ? L(1) - q : q;
}

// Entry points over a precision F (float or double) and a complex record C.
template <class F>
F IGammaT(F x, F a) {
    if (std::isnan(x) || std::isnan(a)) return Prec<F>::NaN();
    return static_cast<F>(IncompleteGamma<L>(x, a, Prec<F>::Eps, true));
}
template <class F>
F JGammaT(F x, F a) {
    if (std::isnan(x) || std::isnan(a)) return Prec<F>::NaN();
    return static_cast<F>(IncompleteGamma<L>(x, a, Prec<F>::Eps, false));
}
template <class F>
F GammaSerT(F x, F a) {
    if (std::isnan(x) || std::isnan(a)) return Prec<F>::NaN();
    return static_cast<F>(GammaSerL<L>(x, a, Prec<F>::Eps));
}
template <class F>
F GammaFracT(F x, F a) {
    if (std::isnan(x) || std::isnan(a)) return Prec<F>::NaN();
    return static_cast<F>(GammaFracL<L>(x, a, Prec<F>::Eps));
}

template <ComplexRecord C>
C ToRecord(const CL& z) {
    using F = ComplexField<C>;
    return C(static_cast<F>(z.real()), static_cast<F>(z.imag()));
}
template <ComplexRecord C>
CL FromRecord(const C& z) { return CL(z.Re, z.Im); }

template <ComplexRecord C>
C CNaN() {
    using F = ComplexField<C>;
    return C(Prec<F>::NaN(), Prec<F>::NaN());
}

template <ComplexRecord C>
C IncompleteGammaC(const C& x, ComplexField<C> a, bool lower) {
    using F = ComplexField<C>;
    const CL xl = FromRecord(x);
    if (IsNaNArg(xl) || std::isnan(a)) return CNaN<C>();
    return ToRecord<C>(IncompleteGamma<CL>(xl, a, Prec<F>::Eps, lower));
}
template <ComplexRecord C>
C GammaSerC(const C& x, ComplexField<C> a) {
    using F = ComplexField<C>;
    const CL xl = FromRecord(x);
    if (IsNaNArg(xl) || std::isnan(a)) return CNaN<C>();
    return ToRecord<C>(GammaSerL<CL>(xl, a, Prec<F>::Eps));
}
template <ComplexRecord C>
C GammaFracC(const C& x, ComplexField<C> a) {
    using F = ComplexField<C>;
    const CL xl = FromRecord(x);
    if (IsNaNArg(xl) || std::isnan(a)) return CNaN<C>();
    return ToRecord<C>(GammaFracL<CL>(xl, a, Prec<F>::Eps));
}

// ---------------------------------------------------------------------------
// Erf, Erfc, ErfInv. The square x^2 is formed in long double: rounding it to
// double would cost Erfc(x) a relative error of x^2 ulp.
// ---------------------------------------------------------------------------

L ErfL(L x) {
    const L r = IncompleteGamma<L>(x * x, 0.5L, LDBL_EPSILON, true);
    return x < 0 ? -r : r;
}
L ErfcL(L x) {
    const L r = IncompleteGamma<L>(x * x, 0.5L, LDBL_EPSILON, false);
    return x < 0 ? 2 - r : r;
}

template <class F>
F ErfT(F x) {
    if (std::isnan(x)) return Prec<F>::NaN();
    return static_cast<F>(ErfL(x));
}
template <class F>
F ErfcT(F x) {
    if (std::isnan(x)) return Prec<F>::NaN();
    return static_cast<F>(ErfcL(x));
}

// Erf(x) - y. In the tails (|y| > 0.7 and x on the same side) it is formed as
// (1 - |y|) - Erfc(|x|) with the sign of y: 1 - |y| is exact and Erfc keeps
// its relative accuracy there, whereas Erf(x) itself is 1 - Erfc(x) and would
// lose the small difference that the Newton step divides by exp(-x^2).
L ErfResidual(L x, L y) {
    if (std::fabs(y) > 0.7L && (x > 0) == (y > 0) && x != 0) {
        const L r = (1 - std::fabs(y)) - ErfcL(std::fabs(x));
        return y > 0 ? r : -r;
    }
    return ErfL(x) - y;
}

template <class F>
F ErfInvT(F yf) {
    if (std::isnan(yf)) return Prec<F>::NaN();
    const L y = yf;
    const L ay = std::fabs(y);
    if (ay > 1) ERaise("Abs(y) > 0");
    if (ay == 1) return y > 0 ? Prec<F>::Inf() : -Prec<F>::Inf();
    constexpr L a0 = 0.886226899L, a1 = -1.645349621L, a2 = 0.914624893L, a3 = -0.140543331L;
    constexpr L b0 = -2.118377725L, b1 = 1.442710462L, b2 = -0.329097515L, b3 = 0.012229801L;
    constexpr L c0 = -1.970840454L, c1 = -1.624906493L, c2 = 3.429567803L, c3 = 1.641345311L;
    constexpr L d0 = 3.5438892L, d1 = 1.6370678L;
    constexpr L y0 = 0.7L;
    L x;
    if (ay <= y0) {
        const L z = y * y;
        x = y * (((a3 * z + a2) * z + a1) * z + a0) / ((((b3 * z + b2) * z + b1) * z + b0) * z + 1);
    } else {
        const L z = std::sqrt(-std::log((1 - ay) / 2));
        x = (((c3 * z + c2) * z + c1) * z + c0) / ((d1 * z + d0) * z + 1);
        if (y < 0) x = -x;
    }
    for (int step = 0; step < 2; ++step) x -= ErfResidual(x, y) / (kTwoDivSqrtPi * std::exp(-x * x));
    return static_cast<F>(x);
}

// ---------------------------------------------------------------------------
// Bessel I0 and J0. Up to |z| = kBesselAsym the power series
// sum w^k / (k!)^2 with w = z^2 / 4 (I0) or -z^2 / 4 (J0) is summed. Its
// terms grow to about I0(|z|) ~ e^|z| while J0(z) is of size e^|Im z| (I0(z)
// of size e^|Re z|), so about |z| - |Im z| (|z| - |Re z|) nepers of accuracy
// cancel. Up to kBesselNarrow nepers long double suffices; beyond, the series
// runs in the wide type. Past kBesselAsym Hankel's asymptotic expansion of J0
// is used, I0 being J0(i z); its smallest term there is about e^(-2 |z|).
// ---------------------------------------------------------------------------

constexpr L kBesselNarrow = 6;
constexpr L kBesselAsym = 20;

template <class R>
CL BesselSeries(L wr0, L wi0) {
    const R wr = wr0, wi = wi0;
    R tr = 1, ti = 0, sr = 1, si = 0;
    const R mag = std::sqrt(static_cast<L>(wr0 * wr0 + wi0 * wi0));
    const R eps = std::is_same_v<R, L> ? R(LDBL_EPSILON) : R(kWideEps);
    for (int k = 1; k < 400; ++k) {
        const R nr = tr * wr - ti * wi;
        const R ni = tr * wi + ti * wr;
        const R kk = R(k) * R(k);
        tr = nr / kk;
        ti = ni / kk;
        sr += tr;
        si += ti;
        const R at = (tr < 0 ? -tr : tr) + (ti < 0 ? -ti : ti);
        const R as = (sr < 0 ? -sr : sr) + (si < 0 ? -si : si);
        if (kk > mag && at <= as * eps) break;
    }
    return CL(static_cast<L>(sr), static_cast<L>(si));
}

// J0(z) for |z| > kBesselAsym and Re z >= 0:
// sqrt(2 / (pi z)) (P cos(z - pi/4) - Q sin(z - pi/4)), with
// cos(z - pi/4) = (cos z + sin z) / sqrt 2 and sin(z - pi/4) = (sin z - cos z)
// / sqrt 2 so that z enters the trigonometric functions unrounded.
CL BesselJ0Asymptotic(const CL& z) {
    const CL rz = L(1) / z;
    CL p = 1, q = 0;
    CL t = 1;  // a_k / z^k with a_k = (-1)^k (1^2 3^2 ... (2k-1)^2) / (k! 8^k)
    L last = HUGE_VALL;
    for (int k = 1; k < 200; ++k) {
        const L odd = 2 * k - 1;
        const CL next = t * rz * (-(odd * odd) / (8 * L(k)));
        const L size = std::abs(next);
        if (size >= last) break;  // the expansion starts to diverge
        last = size;
        t = next;
        // P takes (-1)^(k/2) t for even k, Q takes (-1)^((k-1)/2) t for odd k.
        const bool negative = ((k / 2) % 2) == 1;
        if (k % 2 == 0)
            p += negative ? -t : t;
        else
            q += negative ? -t : t;
        if (size < LDBL_EPSILON * 1e-2L) break;
    }
    const CL c = std::cos(z), s = std::sin(z);
    const CL value = (p * (c + s) - q * (s - c)) / kSqrt2;
    return std::sqrt(L(2) / (kPi * z)) * value;
}

// Sums the series of J0 (sign = -1) or I0 (sign = +1); `kept` is the part of
// |z| that survives in the result (|Im z| for J0, |Re z| for I0).
CL BesselSeriesAt(const CL& z, L sign, L kept) {
    const CL w = sign * z * z / L(4);
    return std::abs(z) - kept <= kBesselNarrow ? BesselSeries<L>(w.real(), w.imag())
                                               : BesselSeries<Wide>(w.real(), w.imag());
}

CL BesselJ0L(CL z) {
    if (z.real() < 0 || (z.real() == 0 && z.imag() < 0)) z = -z;  // J0 is even
    if (std::abs(z) > kBesselAsym) return BesselJ0Asymptotic(z);
    return BesselSeriesAt(z, -1, std::fabs(z.imag()));
}

CL BesselI0L(CL z) {
    if (std::abs(z) > kBesselAsym) return BesselJ0L(CL(-z.imag(), z.real()));  // I0(z) = J0(i z)
    return BesselSeriesAt(z, 1, std::fabs(z.real()));
}

// Both functions are real on the real and on the imaginary axis; the
// asymptotic route would leave a rounding residue in the imaginary part there.
template <ComplexRecord C>
C BesselT(const C& z, CL (*kernel)(CL)) {
    const CL zl = FromRecord(z);
    if (IsNaNArg(zl)) return CNaN<C>();
    CL v = kernel(zl);
    if (z.Re == 0 || z.Im == 0) v = CL(v.real(), 0);
    return ToRecord<C>(v);
}

}  // namespace

// ---------------------------------------------------------------------------
// Named entries.
// ---------------------------------------------------------------------------
double Gamma(double x) { return GammaT(x); }
float Gammaf(float x) { return GammaT(x); }
double LnGamma(double x) { return LnGammaT(x); }
float LnGammaf(float x) { return LnGammaT(x); }
double SgnGamma(double x) { return SgnGammaT(x); }
float SgnGammaf(float x) { return SgnGammaT(x); }

double IGamma(double x, double a) { return IGammaT(x, a); }
float IGammaf(float x, float a) { return IGammaT(x, a); }
TCplx IGamma(const TCplx& x, double a) { return IncompleteGammaC(x, a, true); }
TSCplx IGamma(const TSCplx& x, float a) { return IncompleteGammaC(x, a, true); }
double JGamma(double x, double a) { return JGammaT(x, a); }
float JGammaf(float x, float a) { return JGammaT(x, a); }
TCplx JGamma(const TCplx& x, double a) { return IncompleteGammaC(x, a, false); }
TSCplx JGamma(const TSCplx& x, float a) { return IncompleteGammaC(x, a, false); }

double GammaSer(double x, double a) { return GammaSerT(x, a); }
float GammaSerf(float x, float a) { return GammaSerT(x, a); }
TCplx GammaSer(const TCplx& x, double a) { return GammaSerC(x, a); }
TSCplx GammaSer(const TSCplx& x, float a) { return GammaSerC(x, a); }
double GammaFrac(double x, double a) { return GammaFracT(x, a); }
float GammaFracf(float x, float a) { return GammaFracT(x, a); }
TCplx GammaFrac(const TCplx& x, double a) { return GammaFracC(x, a); }
TSCplx GammaFrac(const TSCplx& x, float a) { return GammaFracC(x, a); }

double Erf(double x) { return ErfT(x); }
float Erff(float x) { return ErfT(x); }
double Erfc(double x) { return ErfcT(x); }
float Erfcf(float x) { return ErfcT(x); }
double ErfInv(double y) { return ErfInvT(y); }
float ErfInvf(float y) { return ErfInvT(y); }

TCplx BesselI0(const TCplx& z) { return BesselT(z, BesselI0L); }
TSCplx BesselI0(const TSCplx& z) { return BesselT(z, BesselI0L); }
TCplx BesselJ0(const TCplx& z) { return BesselT(z, BesselJ0L); }
TSCplx BesselJ0(const TSCplx& z) { return BesselT(z, BesselJ0L); }

}  // namespace rovane
