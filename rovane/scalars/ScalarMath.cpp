// Scalar and complex math. Every function is one long double kernel (real) or
// one template over the complex record; the double, single and complex entry
// points are thin wrappers that widen the arguments, call the kernel and round
// the result once.
#include <cmath>
#include <complex>
#include <limits>

#include "rovane/scalars/Scalars.h"

namespace rovane {

namespace {

using L = long double;
using CL = std::complex<long double>;

constexpr L kPi = 3.141592653589793238462643383279502884L;
constexpr L kTwoPi = 6.283185307179586476925286766559005768L;
constexpr L kLn2 = 0.693147180559945309417232121458176568L;
constexpr L kLn10 = 2.302585092994045684017991454684364208L;
constexpr L kPi180 = kPi / 180.0L;
constexpr L kInvPi180 = 180.0L / kPi;

template <ComplexRecord C>
CL Widen(const C& z) { return CL(z.Re, z.Im); }

template <ComplexRecord C>
C Narrow(const CL& w) {
    using F = ComplexField<C>;
    return C(static_cast<F>(w.real()), static_cast<F>(w.imag()));
}

// The complex record of the other precision's field type.
template <class F>
using ComplexOf = std::conditional_t<std::is_same_v<F, double>, TCplx, TSCplx>;

// ---------------------------------------------------------------------------
// Real kernels.
// ---------------------------------------------------------------------------
L KSin(L x) { return std::sin(x); }
L KCos(L x) { return std::cos(x); }
L KTan(L x) { return std::tan(x); }
L KSec(L x) { return 1.0L / std::cos(x); }
L KCsc(L x) { return 1.0L / std::sin(x); }
L KCot(L x) { return 1.0L / std::tan(x); }
L KSinh(L x) { return std::sinh(x); }
L KCosh(L x) { return std::cosh(x); }
L KTanh(L x) { return std::tanh(x); }
L KSech(L x) { return 1.0L / std::cosh(x); }
L KCsch(L x) { return 1.0L / std::sinh(x); }
L KCoth(L x) { return 1.0L / std::tanh(x); }
L KTanhX(L x) {
    // Beyond |x| = 23, tanh equals +-1 to well over 64 bits.
    if (std::fabs(x) > 23.0L) return std::copysign(1.0L, x);
    const L e = std::expm1(2.0L * x);
    return e / (e + 2.0L);
}
L KArcSin(L x) { return std::asin(x); }
L KArcCos(L x) { return std::acos(x); }
L KArcTan(L x) { return std::atan(x); }
L KArcSec(L x) { return std::acos(1.0L / x); }
L KArcCsc(L x) { return std::asin(1.0L / x); }
L KArcCot(L x) { return std::atan(1.0L / x); }
L KArcSinh(L x) { return std::asinh(x); }
L KArcCosh(L x) { return std::acosh(x); }
L KArcTanh(L x) { return std::atanh(x); }
L KArcSech(L x) { return std::acosh(1.0L / x); }
L KArcCsch(L x) { return std::asinh(1.0L / x); }
L KArcCoth(L x) { return std::atanh(1.0L / x); }
L KExp(L x) { return std::exp(x); }
L KExp2(L x) { return std::exp2(x); }
L KExp10(L x) { return std::pow(10.0L, x); }
L KLn(L x) { return std::log(x); }
L KLn1(L x) { return std::log1p(x); }
L KLog2(L x) { return std::log2(x); }
L KLog2X(L x) {
    // In (0.5, 1.5) the difference x - 1 is exact, and log1p keeps the full
    // relative accuracy of a result near zero.
    if (std::fabs(x - 1.0L) < 0.5L) return std::log1p(x - 1.0L) / kLn2;
    return std::log2(x);
}
L KLog10(L x) { return std::log10(x); }
L KSqrt(L x) { return std::sqrt(x); }
L KCeil(L x) { return std::ceil(x); }
L KFloor(L x) { return std::floor(x); }
L KSign(L x) { return -x; }
L KDegToRad(L x) { return x * kPi180; }
L KRadToDeg(L x) { return x * kInvPi180; }

// Round to nearest with ties to even, independent of the rounding mode.
L RoundHalfEven(L x) {
    L r = std::round(x);
    if (std::fabs(r - x) == 0.5L && std::fmod(r, 2.0L) != 0) r -= std::copysign(1.0L, x);
    return r;
}

L KFixAngle(L a) { return a - kTwoPi * RoundHalfEven(a / kTwoPi); }

L KRem(L a, L b) { return a - b * std::trunc(a / b); }

L KPower(L base, L exponent) {
    if (exponent == 0) return 1.0L;
    if (base == 0) {
        if (exponent > 0) return 0.0L;
        if (exponent < 0) return std::numeric_limits<L>::infinity();
        return exponent;  // NaN
    }
    L sign = 1.0L;
    if (base < 0 && std::trunc(exponent) == exponent) {
        // Integer exponent: the power of |base| with the sign of the parity.
        base = -base;
        if (std::fmod(exponent, 2.0L) != 0) sign = -1.0L;
    }
    const L t = exponent * std::log2(base);  // NaN for a negative base here
    if (std::isnan(t)) return t;
    if (t > 20000.0L) return sign * std::numeric_limits<L>::infinity();
    if (t < -20000.0L) return sign * 0.0L;
    // 2^t = 2^i * 2^f with i the integer and f the fractional part of t.
    const L i = std::trunc(t);
    return sign * std::ldexp(std::exp2(t - i), static_cast<int>(i));
}

template <class T>
T KIntPower(T base, int32_t n) {
    // Square-and-multiply on |n|.
    uint32_t m = n < 0 ? 0u - static_cast<uint32_t>(n) : static_cast<uint32_t>(n);
    T acc = T(1.0L);
    T p = base;
    while (m != 0) {
        if (m & 1u) acc *= p;
        m >>= 1;
        if (m != 0) p *= p;
    }
    return acc;
}

L KPythag(L a, L b) {
    a = std::fabs(a);
    b = std::fabs(b);
    const L p = a > b ? a : b;
    const L q = a > b ? b : a;
    if (q == 0 || std::isinf(p)) return p;
    const L r = q / p;
    return p * std::sqrt(r * r + 1.0L);
}

// ---------------------------------------------------------------------------
// Complex kernels.
// ---------------------------------------------------------------------------
// 1 / z as conj(z) / |z|^2 with the denominator unscaled.
CL KCInv(const CL& z) {
    const L k = 1.0L / (z.real() * z.real() + z.imag() * z.imag());
    return CL(z.real() * k, -z.imag() * k);
}

CL KCSqr(const CL& z) {
    return CL(z.real() * z.real() - z.imag() * z.imag(), 2.0L * z.real() * z.imag());
}

CL KCSqrt(const CL& z) {
    const L re = z.real(), im = z.imag();
    const L m = std::sqrt((std::fabs(re) + std::sqrt(re * re + im * im)) * 0.5L);
    if (m == 0) return CL(0.0L, 0.0L);
    const L t = im / (2.0L * m);
    if (re >= 0) return CL(m, t);
    return CL(std::fabs(t), std::copysign(m, im));
}

CL KCSin(const CL& z) { return std::sin(z); }
CL KCCos(const CL& z) { return std::cos(z); }
CL KCTan(const CL& z) { return std::tan(z); }
CL KCSec(const CL& z) { return KCInv(std::cos(z)); }
CL KCCsc(const CL& z) { return KCInv(std::sin(z)); }
CL KCCot(const CL& z) { return KCInv(std::tan(z)); }
CL KCSinh(const CL& z) { return std::sinh(z); }
CL KCCosh(const CL& z) { return std::cosh(z); }
CL KCTanh(const CL& z) { return std::tanh(z); }
CL KCSech(const CL& z) { return KCInv(std::cosh(z)); }
CL KCCsch(const CL& z) { return KCInv(std::sinh(z)); }
CL KCCoth(const CL& z) { return KCInv(std::tanh(z)); }
CL KCArcSin(const CL& z) { return std::asin(z); }
CL KCArcCos(const CL& z) { return std::acos(z); }
CL KCArcTan(const CL& z) { return std::atan(z); }
CL KCArcSec(const CL& z) { return std::acos(KCInv(z)); }
CL KCArcCsc(const CL& z) { return std::asin(KCInv(z)); }
CL KCArcCot(const CL& z) { return std::atan(KCInv(z)); }
CL KCArcSinh(const CL& z) { return std::asinh(z); }
CL KCArcCosh(const CL& z) { return std::acosh(z); }
CL KCArcTanh(const CL& z) { return std::atanh(z); }
CL KCArcSech(const CL& z) { return std::acosh(KCInv(z)); }
CL KCArcCsch(const CL& z) { return std::asinh(KCInv(z)); }
CL KCArcCoth(const CL& z) { return std::atanh(KCInv(z)); }
CL KCExp(const CL& z) { return std::exp(z); }
CL KCExp2(const CL& z) { return std::exp(z * kLn2); }
CL KCExp10(const CL& z) { return std::exp(z * kLn10); }
CL KCLn(const CL& z) { return std::log(z); }
CL KCLog2(const CL& z) { return std::log(z) / kLn2; }
CL KCLog10(const CL& z) { return std::log(z) / kLn10; }
CL KCExpj(const CL& z) { return std::exp(CL(-z.imag(), z.real())); }
CL KCConj(const CL& z) { return CL(z.real(), -z.imag()); }
CL KCFlip(const CL& z) { return CL(z.imag(), z.real()); }
CL KCFlipConj(const CL& z) { return CL(z.imag(), -z.real()); }
CL KCMulI(const CL& z) { return CL(-z.imag(), z.real()); }
CL KCNeg(const CL& z) { return CL(-z.real(), -z.imag()); }
CL KCRound(const CL& z) { return CL(RoundHalfEven(z.real()), RoundHalfEven(z.imag())); }
CL KCTrunc(const CL& z) { return CL(std::trunc(z.real()), std::trunc(z.imag())); }
CL KCFrac(const CL& z) { return z - KCTrunc(z); }

// Power with a complex operand: exponent 0 gives 1 + 0i, a zero base 0, and
// otherwise exp(exponent * ln(base)), ln(base) = ln|base| + i atan2(Im, Re).
CL KCPowerReal(const CL& base, L exponent) {
    if (exponent == 0) return CL(1.0L, 0.0L);
    if (base.real() == 0 && base.imag() == 0) return CL(0.0L, 0.0L);
    const L magnitude = std::exp(exponent * std::log(std::abs(base)));
    const L angle = std::atan2(base.imag(), base.real()) * exponent;
    return CL(magnitude * std::cos(angle), magnitude * std::sin(angle));
}

CL KCPower(const CL& base, const CL& exponent) {
    if (exponent.real() == 0 && exponent.imag() == 0) return CL(1.0L, 0.0L);
    if (base.real() == 0 && base.imag() == 0) return CL(0.0L, 0.0L);
    const CL lnBase(std::log(std::abs(base)), std::atan2(base.imag(), base.real()));
    const CL w = exponent * lnBase;
    const L magnitude = std::exp(w.real());
    return CL(magnitude * std::cos(w.imag()), magnitude * std::sin(w.imag()));
}

// Quadrant code of the phase: 1 .. 4 ascending with the angle from -pi to pi.
template <class F>
int Quadrant(F re, F im) {
    if (re >= 0) return im >= 0 ? 3 : 2;
    return im >= 0 ? 4 : 1;
}

// Phase order at equal magnitude, the rule of the containers' Maxc and Minc:
// -1, 0 or 1 by quadrant code, then by the real part.
template <ComplexRecord C>
int CompareEqualMagnitude(const C& a, const C& b) {
    const int qa = Quadrant(a.Re, a.Im), qb = Quadrant(b.Re, b.Im);
    if (qa != qb) return qa < qb ? -1 : 1;
    if (a.Re == b.Re) return 0;
    const bool aLargerRe = a.Re > b.Re;
    if (qa <= 2) return aLargerRe ? 1 : -1;
    return aLargerRe ? -1 : 1;
}

// Phase order at any magnitudes: by quadrant code, then within the quadrant
// by the sign of the cross product b x a, positive when a turns further.
template <ComplexRecord C>
int ComparePhase(const C& a, const C& b) {
    const int qa = Quadrant(a.Re, a.Im), qb = Quadrant(b.Re, b.Im);
    if (qa != qb) return qa < qb ? -1 : 1;
    const L cross = L(b.Re) * a.Im - L(b.Im) * a.Re;
    return cross > 0 ? 1 : (cross < 0 ? -1 : 0);
}

template <ComplexRecord C>
bool HasNaN(const C& z) { return std::isnan(z.Re) || std::isnan(z.Im); }

// Order of complex values: -2 when unordered, else -1, 0, 1.
template <ComplexRecord C>
int CompareComplex(const C& a, const C& b) {
    if (HasNaN(a) || HasNaN(b)) return -2;
    const L na = L(a.Re) * a.Re + L(a.Im) * a.Im;
    const L nb = L(b.Re) * b.Re + L(b.Im) * b.Im;
    if (na != nb) return na < nb ? -1 : 1;
    return CompareEqualMagnitude(a, b);
}

template <class F>
int32_t SgnOf(F x) {
    if (x < 0) return -1;
    if (x == 0) return 0;
    return 1;
}

template <ComplexRecord C>
int32_t SgnComplex(const C& z) { return z.Re == 0 ? SgnOf(z.Im) : SgnOf(z.Re); }

template <class F>
F MaxOf(F a, F b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<F>::quiet_NaN();
    return a > b ? a : b;
}
template <class F>
F MinOf(F a, F b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<F>::quiet_NaN();
    return a < b ? a : b;
}

template <class T>
bool InRange(T low, T value, T high) { return low <= value && value <= high; }

template <class T>
T Clamp(T low, T value, T high) {
    if (value < low) value = low;
    if (value > high) value = high;
    return value;
}

template <class I>
I GcdOf(I a, I b) {
    using U = std::make_unsigned_t<I>;
    U x = a < 0 ? U(0) - U(a) : U(a);
    U y = b < 0 ? U(0) - U(b) : U(b);
    while (y != 0) {
        const U r = x % y;
        x = y;
        y = r;
    }
    return static_cast<I>(x);
}

template <class I>
I LcmOf(I a, I b) {
    if (a == 0 || b == 0) return 0;
    const I g = GcdOf(a, b);
    const I r = (a / g) * b;
    return r < 0 ? -r : r;
}

}  // namespace

// ---------------------------------------------------------------------------
// Entry points.
// ---------------------------------------------------------------------------
#define ROVANE_REAL_UNARY_DEF(Name, Kernel)                                                   \
    double Name(double x) { return static_cast<double>(Kernel(static_cast<L>(x))); }          \
    float Name##f(float x) { return static_cast<float>(Kernel(static_cast<L>(x))); }

#define ROVANE_COMPLEX_UNARY_DEF(Name, Kernel)                                 \
    TCplx Name(const TCplx& z) { return Narrow<TCplx>(Kernel(Widen(z))); }     \
    TSCplx Name(const TSCplx& z) { return Narrow<TSCplx>(Kernel(Widen(z))); }  \
    void Name(const TCplx& z, TCplx& result) { result = Name(z); }             \
    void Name(const TSCplx& z, TSCplx& result) { result = Name(z); }

#define ROVANE_BOTH_UNARY_DEF(Name) \
    ROVANE_REAL_UNARY_DEF(Name, K##Name) ROVANE_COMPLEX_UNARY_DEF(Name, KC##Name)

ROVANE_BOTH_UNARY_DEF(Sin)
ROVANE_BOTH_UNARY_DEF(Cos)
ROVANE_BOTH_UNARY_DEF(Tan)
ROVANE_BOTH_UNARY_DEF(Sec)
ROVANE_BOTH_UNARY_DEF(Csc)
ROVANE_BOTH_UNARY_DEF(Cot)
ROVANE_BOTH_UNARY_DEF(Sinh)
ROVANE_BOTH_UNARY_DEF(Cosh)
ROVANE_BOTH_UNARY_DEF(Tanh)
ROVANE_BOTH_UNARY_DEF(Sech)
ROVANE_BOTH_UNARY_DEF(Csch)
ROVANE_BOTH_UNARY_DEF(Coth)
ROVANE_REAL_UNARY_DEF(TanhX, KTanhX)
ROVANE_BOTH_UNARY_DEF(ArcSin)
ROVANE_BOTH_UNARY_DEF(ArcCos)
ROVANE_BOTH_UNARY_DEF(ArcTan)
ROVANE_BOTH_UNARY_DEF(ArcSec)
ROVANE_BOTH_UNARY_DEF(ArcCsc)
ROVANE_BOTH_UNARY_DEF(ArcCot)
ROVANE_BOTH_UNARY_DEF(ArcSinh)
ROVANE_BOTH_UNARY_DEF(ArcCosh)
ROVANE_BOTH_UNARY_DEF(ArcTanh)
ROVANE_BOTH_UNARY_DEF(ArcSech)
ROVANE_BOTH_UNARY_DEF(ArcCsch)
ROVANE_BOTH_UNARY_DEF(ArcCoth)
ROVANE_BOTH_UNARY_DEF(Exp)
ROVANE_BOTH_UNARY_DEF(Exp2)
ROVANE_BOTH_UNARY_DEF(Exp10)
ROVANE_BOTH_UNARY_DEF(Ln)
ROVANE_BOTH_UNARY_DEF(Log2)
ROVANE_BOTH_UNARY_DEF(Log10)
ROVANE_REAL_UNARY_DEF(Ln1, KLn1)
ROVANE_REAL_UNARY_DEF(Log2X, KLog2X)
ROVANE_REAL_UNARY_DEF(Sqrt, KSqrt)
ROVANE_COMPLEX_UNARY_DEF(Sqrt, KCSqrt)
ROVANE_COMPLEX_UNARY_DEF(Expj, KCExpj)
ROVANE_COMPLEX_UNARY_DEF(CInv, KCInv)
ROVANE_COMPLEX_UNARY_DEF(CSqr, KCSqr)
ROVANE_COMPLEX_UNARY_DEF(CSqrt, KCSqrt)
ROVANE_COMPLEX_UNARY_DEF(Conj, KCConj)
ROVANE_COMPLEX_UNARY_DEF(Flip, KCFlip)
ROVANE_COMPLEX_UNARY_DEF(FlipConj, KCFlipConj)
ROVANE_COMPLEX_UNARY_DEF(MulI, KCMulI)
ROVANE_COMPLEX_UNARY_DEF(Neg, KCNeg)
ROVANE_COMPLEX_UNARY_DEF(Sign, KCNeg)
ROVANE_COMPLEX_UNARY_DEF(CRound, KCRound)
ROVANE_COMPLEX_UNARY_DEF(CTrunc, KCTrunc)
ROVANE_COMPLEX_UNARY_DEF(CFrac, KCFrac)
ROVANE_REAL_UNARY_DEF(Ceil, KCeil)
ROVANE_REAL_UNARY_DEF(Floor, KFloor)
ROVANE_REAL_UNARY_DEF(Sign, KSign)
ROVANE_REAL_UNARY_DEF(FixAngle, KFixAngle)
ROVANE_REAL_UNARY_DEF(DegToRad, KDegToRad)
ROVANE_REAL_UNARY_DEF(RadToDeg, KRadToDeg)

#undef ROVANE_BOTH_UNARY_DEF
#undef ROVANE_COMPLEX_UNARY_DEF
#undef ROVANE_REAL_UNARY_DEF

// Two-argument real functions and the in/out forms.
namespace {
template <class F>
ComplexOf<F> ExpjOf(F omega) {
    const L w = omega;
    return ComplexOf<F>(static_cast<F>(std::cos(w)), static_cast<F>(std::sin(w)));
}
template <class F>
void SinCosOf(F x, F& s, F& c) {
    s = static_cast<F>(std::sin(L(x)));
    c = static_cast<F>(std::cos(L(x)));
}
template <class F>
void SinhCoshOf(F x, F& sh, F& ch) {
    sh = static_cast<F>(std::sinh(L(x)));
    ch = static_cast<F>(std::cosh(L(x)));
}
template <ComplexRecord C>
void SinCosComplex(const C& z, C& s, C& c) {
    const CL w = Widen(z);
    s = Narrow<C>(std::sin(w));
    c = Narrow<C>(std::cos(w));
}
template <ComplexRecord C>
void SinhCoshComplex(const C& z, C& sh, C& ch) {
    const CL w = Widen(z);
    sh = Narrow<C>(std::sinh(w));
    ch = Narrow<C>(std::cosh(w));
}
template <ComplexRecord C>
C LogNComplex(L n, const C& z) { return Narrow<C>(std::log(Widen(z)) / std::log(n)); }
template <ComplexRecord C>
C IntPowerComplex(const C& base, int32_t n) {
    const CL acc = KIntPower(Widen(base), n);
    return Narrow<C>(n < 0 ? KCInv(acc) : acc);
}
template <class F>
F IntPowerReal(F base, int32_t n) {
    const L acc = KIntPower(L(base), n);
    return static_cast<F>(n < 0 ? 1.0L / acc : acc);
}
template <ComplexRecord C>
C PythagComplex(const C& a, const C& b) {
    return Narrow<C>(KCSqrt(KCSqr(Widen(a)) + KCSqr(Widen(b))));
}
template <ComplexRecord C>
C RootComplex(const C& z, int32_t n, int32_t k) {
    if (n == 0) return Narrow<C>(CL(std::numeric_limits<L>::quiet_NaN(), std::numeric_limits<L>::quiet_NaN()));
    const CL w = Widen(z);
    const L magnitude = std::pow(std::abs(w), 1.0L / n);
    const L angle = (std::arg(w) + kTwoPi * k) / n;
    return Narrow<C>(CL(magnitude * std::cos(angle), magnitude * std::sin(angle)));
}
template <ComplexRecord C>
C RemComplex(const C& a, const C& b) {
    const CL x = Widen(a), y = Widen(b);
    const CL q = x * KCInv(y);
    return Narrow<C>(x - y * KCTrunc(q));
}
template <ComplexRecord C>
void TruncAndFracComplex(const C& z, C& t, C& f) {
    const CL w = Widen(z);
    t = Narrow<C>(KCTrunc(w));
    f = Narrow<C>(KCFrac(w));
}
template <class F>
void TruncAndFracOf(F x, F& t, F& f) {
    t = std::trunc(x);
    f = x - t;  // exact
}
}  // namespace

TCplx Expj(double omega) { return ExpjOf(omega); }
TSCplx Expjf(float omega) { return ExpjOf(omega); }
void Expj(double omega, TCplx& result) { result = ExpjOf(omega); }
void Expjf(float omega, TSCplx& result) { result = ExpjOf(omega); }

void SinCos(double x, double& sinx, double& cosx) { SinCosOf(x, sinx, cosx); }
void SinCosf(float x, float& sinx, float& cosx) { SinCosOf(x, sinx, cosx); }
void SinCos(const TCplx& z, TCplx& sinz, TCplx& cosz) { SinCosComplex(z, sinz, cosz); }
void SinCos(const TSCplx& z, TSCplx& sinz, TSCplx& cosz) { SinCosComplex(z, sinz, cosz); }
void SinhCosh(double x, double& sinhx, double& coshx) { SinhCoshOf(x, sinhx, coshx); }
void SinhCoshf(float x, float& sinhx, float& coshx) { SinhCoshOf(x, sinhx, coshx); }
void SinhCosh(const TCplx& z, TCplx& sinhz, TCplx& coshz) { SinhCoshComplex(z, sinhz, coshz); }
void SinhCosh(const TSCplx& z, TSCplx& sinhz, TSCplx& coshz) { SinhCoshComplex(z, sinhz, coshz); }

double ArcTan2(double y, double x) { return static_cast<double>(std::atan2(L(y), L(x))); }
float ArcTan2f(float y, float x) { return static_cast<float>(std::atan2(L(y), L(x))); }

double LogN(double n, double x) { return static_cast<double>(std::log(L(x)) / std::log(L(n))); }
float LogNf(float n, float x) { return static_cast<float>(std::log(L(x)) / std::log(L(n))); }
TCplx LogN(double n, const TCplx& z) { return LogNComplex(n, z); }
TSCplx LogN(float n, const TSCplx& z) { return LogNComplex(n, z); }
void LogN(double n, const TCplx& z, TCplx& result) { result = LogNComplex(n, z); }
void LogN(float n, const TSCplx& z, TSCplx& result) { result = LogNComplex(n, z); }

double Power(double base, double exponent) { return static_cast<double>(KPower(base, exponent)); }
float Powerf(float base, float exponent) { return static_cast<float>(KPower(base, exponent)); }
TCplx Power(const TCplx& base, double exponent) { return Narrow<TCplx>(KCPowerReal(Widen(base), exponent)); }
TSCplx Power(const TSCplx& base, float exponent) { return Narrow<TSCplx>(KCPowerReal(Widen(base), exponent)); }
TCplx Power(double base, const TCplx& exponent) { return Narrow<TCplx>(KCPower(CL(base, 0), Widen(exponent))); }
TSCplx Power(float base, const TSCplx& exponent) { return Narrow<TSCplx>(KCPower(CL(base, 0), Widen(exponent))); }
TCplx Power(const TCplx& base, const TCplx& exponent) { return Narrow<TCplx>(KCPower(Widen(base), Widen(exponent))); }
TSCplx Power(const TSCplx& base, const TSCplx& exponent) {
    return Narrow<TSCplx>(KCPower(Widen(base), Widen(exponent)));
}
void Power(const TCplx& base, double exponent, TCplx& result) { result = Power(base, exponent); }
void Power(const TSCplx& base, float exponent, TSCplx& result) { result = Power(base, exponent); }
void Power(double base, const TCplx& exponent, TCplx& result) { result = Power(base, exponent); }
void Power(float base, const TSCplx& exponent, TSCplx& result) { result = Power(base, exponent); }
void Power(const TCplx& base, const TCplx& exponent, TCplx& result) { result = Power(base, exponent); }
void Power(const TSCplx& base, const TSCplx& exponent, TSCplx& result) { result = Power(base, exponent); }

double IntPower(double base, int32_t n) { return IntPowerReal(base, n); }
float IntPowerf(float base, int32_t n) { return IntPowerReal(base, n); }
TCplx IntPower(const TCplx& base, int32_t n) { return IntPowerComplex(base, n); }
TSCplx IntPower(const TSCplx& base, int32_t n) { return IntPowerComplex(base, n); }
void IntPower(const TCplx& base, int32_t n, TCplx& result) { result = IntPowerComplex(base, n); }
void IntPower(const TSCplx& base, int32_t n, TSCplx& result) { result = IntPowerComplex(base, n); }

double Pythag(double a, double b) { return static_cast<double>(KPythag(a, b)); }
float Pythagf(float a, float b) { return static_cast<float>(KPythag(a, b)); }
TCplx Pythag(const TCplx& a, const TCplx& b) { return PythagComplex(a, b); }
TSCplx Pythag(const TSCplx& a, const TSCplx& b) { return PythagComplex(a, b); }

// ---------------------------------------------------------------------------
// Complex arithmetic.
// ---------------------------------------------------------------------------
TCplx Cplx(double re, double im) { return TCplx(re, im); }
TCplx CplxDouble(double re, double im) { return TCplx(re, im); }
TCplx CplxDouble(const TSCplx& z) { return TCplx(z.Re, z.Im); }
TSCplx CplxSingle(float re, float im) { return TSCplx(re, im); }
TSCplx CplxSingle(const TCplx& z) { return ToSingle(z); }

// The record operators of Scalars.h carry the arithmetic (products and
// quotients in long double, the real-by-complex quotient with k rounded to the
// field width); these entries name them.
#define ROVANE_COMPLEX_BINARY_DEF(Name, Op)                                                       \
    TCplx Name(const TCplx& a, const TCplx& b) { return a Op b; }                                 \
    TSCplx Name(const TSCplx& a, const TSCplx& b) { return a Op b; }                              \
    TCplx Name(const TCplx& a, double b) { return a Op b; }                                       \
    TSCplx Name(const TSCplx& a, float b) { return a Op b; }                                      \
    TCplx Name(double a, const TCplx& b) { return a Op b; }                                       \
    TSCplx Name(float a, const TSCplx& b) { return a Op b; }                                      \
    void Name(const TCplx& a, const TCplx& b, TCplx& result) { result = a Op b; }                 \
    void Name(const TSCplx& a, const TSCplx& b, TSCplx& result) { result = a Op b; }
ROVANE_COMPLEX_BINARY_DEF(CAdd, +)
ROVANE_COMPLEX_BINARY_DEF(CSub, -)
ROVANE_COMPLEX_BINARY_DEF(CMul, *)
ROVANE_COMPLEX_BINARY_DEF(CDiv, /)
#undef ROVANE_COMPLEX_BINARY_DEF

void CAddI(TCplx& a, const TCplx& b) { a = a + b; }
void CAddI(TSCplx& a, const TSCplx& b) { a = a + b; }
void CAddI(TCplx& a, double b) { a = a + b; }
void CAddI(TSCplx& a, float b) { a = a + b; }
void CSubI(TCplx& a, const TCplx& b) { a = a - b; }
void CSubI(TSCplx& a, const TSCplx& b) { a = a - b; }
void CSubI(TCplx& a, double b) { a = a - b; }
void CSubI(TSCplx& a, float b) { a = a - b; }
void CMulI(TCplx& a, const TCplx& b) { a = a * b; }
void CMulI(TSCplx& a, const TSCplx& b) { a = a * b; }
void CMulI(TCplx& a, double b) { a = a * b; }
void CMulI(TSCplx& a, float b) { a = a * b; }

namespace {
template <ComplexRecord C>
void SubMulInPlace(C& a, const C& b, const C& c) {
    const CL d = Widen(a) - Widen(b);
    const CL w = Widen(c);
    a = Narrow<C>(CL(d.real() * w.real() - d.imag() * w.imag(), d.real() * w.imag() + d.imag() * w.real()));
}
template <ComplexRecord C>
void InvMulInPlace(C& a, const C& b) {
    const CL r = KCInv(Widen(a));
    const CL w = Widen(b);
    a = Narrow<C>(CL(r.real() * w.real() - r.imag() * w.imag(), r.real() * w.imag() + r.imag() * w.real()));
}
}  // namespace

void CSubMulI(TCplx& a, const TCplx& b, const TCplx& c) { SubMulInPlace(a, b, c); }
void CSubMulI(TSCplx& a, const TSCplx& b, const TSCplx& c) { SubMulInPlace(a, b, c); }
void CInvMulI(TCplx& a, const TCplx& b) { InvMulInPlace(a, b); }
void CInvMulI(TSCplx& a, const TSCplx& b) { InvMulInPlace(a, b); }

double CAbs(const TCplx& z) { return static_cast<double>(std::sqrt(L(z.Re) * z.Re + L(z.Im) * z.Im)); }
float CAbs(const TSCplx& z) { return static_cast<float>(std::sqrt(L(z.Re) * z.Re + L(z.Im) * z.Im)); }
double CAbs1(const TCplx& z) { return static_cast<double>(std::fabs(L(z.Re)) + std::fabs(L(z.Im))); }
float CAbs1(const TSCplx& z) { return static_cast<float>(std::fabs(L(z.Re)) + std::fabs(L(z.Im))); }
double Arg(const TCplx& z) { return static_cast<double>(std::atan2(L(z.Im), L(z.Re))); }
float Arg(const TSCplx& z) { return static_cast<float>(std::atan2(L(z.Im), L(z.Re))); }
double Norm(const TCplx& z) { return static_cast<double>(L(z.Re) * z.Re + L(z.Im) * z.Im); }
float Norm(const TSCplx& z) { return static_cast<float>(L(z.Re) * z.Re + L(z.Im) * z.Im); }

TCplx Root(const TCplx& z, int32_t n, int32_t k) { return RootComplex(z, n, k); }
TSCplx Root(const TSCplx& z, int32_t n, int32_t k) { return RootComplex(z, n, k); }

void CartToPolar(const TCplx& z, double& amplt, double& phase) {
    amplt = CAbs(z);
    phase = Arg(z);
}
void CartToPolar(const TSCplx& z, float& amplt, float& phase) {
    amplt = CAbs(z);
    phase = Arg(z);
}
TCplx PolarToCart(double amplt, double phase) {
    return TCplx(static_cast<double>(amplt * std::cos(L(phase))), static_cast<double>(amplt * std::sin(L(phase))));
}
TSCplx PolarToCartf(float amplt, float phase) {
    return TSCplx(static_cast<float>(amplt * std::cos(L(phase))), static_cast<float>(amplt * std::sin(L(phase))));
}
void PolarToCart(double amplt, double phase, TCplx& result) { result = PolarToCart(amplt, phase); }
void PolarToCart(float amplt, float phase, TSCplx& result) { result = PolarToCartf(amplt, phase); }

// ---------------------------------------------------------------------------
// Rounding and sign.
// ---------------------------------------------------------------------------
double Rem(double a, double b) { return static_cast<double>(KRem(a, b)); }
float Remf(float a, float b) { return static_cast<float>(KRem(a, b)); }
TCplx Rem(const TCplx& a, const TCplx& b) { return RemComplex(a, b); }
TSCplx Rem(const TSCplx& a, const TSCplx& b) { return RemComplex(a, b); }
void TruncAndFrac(double x, double& truncPart, double& fracPart) { TruncAndFracOf(x, truncPart, fracPart); }
void TruncAndFracf(float x, float& truncPart, float& fracPart) { TruncAndFracOf(x, truncPart, fracPart); }
void TruncAndFrac(const TCplx& z, TCplx& truncPart, TCplx& fracPart) { TruncAndFracComplex(z, truncPart, fracPart); }
void TruncAndFrac(const TSCplx& z, TSCplx& truncPart, TSCplx& fracPart) {
    TruncAndFracComplex(z, truncPart, fracPart);
}
int32_t Sgn(double x) { return SgnOf(x); }
int32_t Sgnf(float x) { return SgnOf(x); }
int32_t Sgn(const TCplx& z) { return SgnComplex(z); }
int32_t Sgn(const TSCplx& z) { return SgnComplex(z); }

double Max(double a, double b) { return MaxOf(a, b); }
float Maxf(float a, float b) { return MaxOf(a, b); }
int32_t Max(int32_t a, int32_t b) { return a > b ? a : b; }
int64_t Max(int64_t a, int64_t b) { return a > b ? a : b; }
double Min(double a, double b) { return MinOf(a, b); }
float Minf(float a, float b) { return MinOf(a, b); }
int32_t Min(int32_t a, int32_t b) { return a < b ? a : b; }
int64_t Min(int64_t a, int64_t b) { return a < b ? a : b; }

// ---------------------------------------------------------------------------
// Tests and ranges.
// ---------------------------------------------------------------------------
bool IsNaN(double x) { return std::isnan(x); }
bool IsNaNf(float x) { return std::isnan(x); }
bool IsNaN(const TCplx& z) { return HasNaN(z); }
bool IsNaN(const TSCplx& z) { return HasNaN(z); }
bool IsInf(double x) { return std::isinf(x); }
bool IsInff(float x) { return std::isinf(x); }
bool IsInf(const TCplx& z) { return std::isinf(z.Re) || std::isinf(z.Im); }
bool IsInf(const TSCplx& z) { return std::isinf(z.Re) || std::isinf(z.Im); }
bool IsInfNan(double x) { return !std::isfinite(x); }
bool IsInfNanf(float x) { return !std::isfinite(x); }
bool IsInfNan(const TCplx& z) { return !std::isfinite(z.Re) || !std::isfinite(z.Im); }
bool IsInfNan(const TSCplx& z) { return !std::isfinite(z.Re) || !std::isfinite(z.Im); }
bool IsNanInf(double x) { return IsInfNan(x); }
bool IsNanInff(float x) { return IsInfNanf(x); }
bool IsNanInf(const TCplx& z) { return IsInfNan(z); }
bool IsNanInf(const TSCplx& z) { return IsInfNan(z); }

bool Smaller2(double a, double b) { return a < b; }
bool Smaller2f(float a, float b) { return a < b; }
bool Bigger2(double a, double b) { return a > b; }
bool Bigger2f(float a, float b) { return a > b; }
bool SmallerOrEqual(double a, double b) { return a <= b; }
bool SmallerOrEqualf(float a, float b) { return a <= b; }
bool BiggerOrEqual(double a, double b) { return a >= b; }
bool BiggerOrEqualf(float a, float b) { return a >= b; }
bool SmallerOrEqual(double a, double b, double tolerance) { return a - tolerance <= b; }
bool SmallerOrEqualf(float a, float b, float tolerance) { return a - tolerance <= b; }
bool BiggerOrEqual(double a, double b, double tolerance) { return a + tolerance >= b; }
bool BiggerOrEqualf(float a, float b, float tolerance) { return a + tolerance >= b; }

bool Smaller(const TCplx& a, const TCplx& b) { return CompareComplex(a, b) == -1; }
bool Smaller(const TSCplx& a, const TSCplx& b) { return CompareComplex(a, b) == -1; }
bool Bigger(const TCplx& a, const TCplx& b) { return CompareComplex(a, b) == 1; }
bool Bigger(const TSCplx& a, const TSCplx& b) { return CompareComplex(a, b) == 1; }
bool SmallerOrEqual(const TCplx& a, const TCplx& b) {
    const int c = CompareComplex(a, b);
    return c == -1 || c == 0;
}
bool SmallerOrEqual(const TSCplx& a, const TSCplx& b) {
    const int c = CompareComplex(a, b);
    return c == -1 || c == 0;
}
bool BiggerOrEqual(const TCplx& a, const TCplx& b) { return CompareComplex(a, b) >= 0; }
bool BiggerOrEqual(const TSCplx& a, const TSCplx& b) { return CompareComplex(a, b) >= 0; }
bool Smaller2(const TCplx& a, const TCplx& b) { return !HasNaN(a) && !HasNaN(b) && ComparePhase(a, b) < 0; }
bool Smaller2(const TSCplx& a, const TSCplx& b) { return !HasNaN(a) && !HasNaN(b) && ComparePhase(a, b) < 0; }
bool Bigger2(const TCplx& a, const TCplx& b) { return !HasNaN(a) && !HasNaN(b) && ComparePhase(a, b) > 0; }
bool Bigger2(const TSCplx& a, const TSCplx& b) { return !HasNaN(a) && !HasNaN(b) && ComparePhase(a, b) > 0; }

bool CheckRange(double low, double value, double high) { return InRange(low, value, high); }
bool CheckRangef(float low, float value, float high) { return InRange(low, value, high); }
bool CheckRange(int32_t low, int32_t value, int32_t high) { return InRange(low, value, high); }
bool CheckRange(int64_t low, int64_t value, int64_t high) { return InRange(low, value, high); }
double EnsureRange(double low, double value, double high) { return Clamp(low, value, high); }
float EnsureRangef(float low, float value, float high) { return Clamp(low, value, high); }
int32_t EnsureRange(int32_t low, int32_t value, int32_t high) { return Clamp(low, value, high); }
int64_t EnsureRange(int64_t low, int64_t value, int64_t high) { return Clamp(low, value, high); }
void LimitRange(double low, double& value, double high) { value = Clamp(low, value, high); }
void LimitRangef(float low, float& value, float high) { value = Clamp(low, value, high); }
void LimitRange(int32_t low, int32_t& value, int32_t high) { value = Clamp(low, value, high); }
void LimitRange(int64_t low, int64_t& value, int64_t high) { value = Clamp(low, value, high); }

// ---------------------------------------------------------------------------
// Integer helpers.
// ---------------------------------------------------------------------------
int32_t Gcd(int32_t a, int32_t b) { return GcdOf(a, b); }
int64_t Gcd(int64_t a, int64_t b) { return GcdOf(a, b); }
int32_t Lcm(int32_t a, int32_t b) { return LcmOf(a, b); }
int64_t Lcm(int64_t a, int64_t b) { return LcmOf(a, b); }

int32_t LargestExp2(int32_t n) {
    int32_t p = 2;
    while (p < n && p < (1 << 30)) p <<= 1;
    return p;
}

int32_t SmallestExp2(int32_t n) {
    int32_t p = 1;
    while (p <= n / 2) p <<= 1;
    return p;
}

int32_t LargestLog2(int32_t n) { return std::countr_zero(static_cast<uint32_t>(LargestExp2(n))); }

}  // namespace rovane
