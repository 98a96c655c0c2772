// Scalar and complex math: elementary functions, complex arithmetic, rounding,
// sign, order tests, range helpers and integer helpers. Included at the end of
// Scalars.h, so all records and constants of that header are in scope.
//
// Naming: a 64-bit form has the plain name, a 32-bit form the suffix f; complex
// forms are overloads on TCplx and TSCplx, most of them also with a result
// reference as last argument. All computation runs in long double and is
// rounded once on return. None of these functions raises: a value outside the
// domain gives NaN or an infinity.
#pragma once

#include "rovane/scalars/Scalars.h"

namespace rovane {

// Declares double Name(double) and float Namef(float).
#define ROVANE_REAL_UNARY(Name)            \
    ROVANE_API double Name(double x);      \
    ROVANE_API float Name##f(float x);

// Declares the value and the result-reference forms on TCplx and TSCplx.
#define ROVANE_COMPLEX_UNARY(Name)                              \
    ROVANE_API TCplx Name(const TCplx& z);                      \
    ROVANE_API TSCplx Name(const TSCplx& z);                    \
    ROVANE_API void Name(const TCplx& z, TCplx& result);        \
    ROVANE_API void Name(const TSCplx& z, TSCplx& result);

#define ROVANE_REAL_AND_COMPLEX_UNARY(Name) ROVANE_REAL_UNARY(Name) ROVANE_COMPLEX_UNARY(Name)

// ---------------------------------------------------------------------------
// Narrowing used on every single-precision path: one rounding to 32 bits.
// ---------------------------------------------------------------------------
inline float ToSingle(double x) { return static_cast<float>(x); }
inline TSCplx ToSingle(const TCplx& z) { return TSCplx(static_cast<float>(z.Re), static_cast<float>(z.Im)); }

// ---------------------------------------------------------------------------
// Elementary functions.
// ---------------------------------------------------------------------------
ROVANE_REAL_AND_COMPLEX_UNARY(Sin)
ROVANE_REAL_AND_COMPLEX_UNARY(Cos)
ROVANE_REAL_AND_COMPLEX_UNARY(Tan)
ROVANE_REAL_AND_COMPLEX_UNARY(Sec)
ROVANE_REAL_AND_COMPLEX_UNARY(Csc)
ROVANE_REAL_AND_COMPLEX_UNARY(Cot)
ROVANE_REAL_AND_COMPLEX_UNARY(Sinh)
ROVANE_REAL_AND_COMPLEX_UNARY(Cosh)
ROVANE_REAL_AND_COMPLEX_UNARY(Tanh)
ROVANE_REAL_AND_COMPLEX_UNARY(Sech)
ROVANE_REAL_AND_COMPLEX_UNARY(Csch)
ROVANE_REAL_AND_COMPLEX_UNARY(Coth)
// Tanh formed from expm1: full relative accuracy near 0 and saturation to
// +-1 without overflow for large arguments.
ROVANE_REAL_UNARY(TanhX)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcSin)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCos)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcTan)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcSec)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCsc)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCot)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcSinh)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCosh)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcTanh)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcSech)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCsch)
ROVANE_REAL_AND_COMPLEX_UNARY(ArcCoth)
ROVANE_REAL_AND_COMPLEX_UNARY(Exp)
ROVANE_REAL_AND_COMPLEX_UNARY(Exp2)
ROVANE_REAL_AND_COMPLEX_UNARY(Exp10)
ROVANE_REAL_AND_COMPLEX_UNARY(Ln)
ROVANE_REAL_AND_COMPLEX_UNARY(Log2)
ROVANE_REAL_AND_COMPLEX_UNARY(Log10)
// ln(1 + x), accurate for small x.
ROVANE_REAL_UNARY(Ln1)
// log2(x), formed from x - 1 when x lies in (0.5, 1.5), where x - 1 is exact.
ROVANE_REAL_UNARY(Log2X)
// Square root; the complex form is CSqrt.
ROVANE_API double Sqrt(double x);
ROVANE_API float Sqrtf(float x);
ROVANE_COMPLEX_UNARY(Sqrt)
// exp(i z): (cos, sin) of a real angle, or the complex exponential of i z.
ROVANE_API TCplx Expj(double omega);
ROVANE_API TSCplx Expjf(float omega);
ROVANE_API void Expj(double omega, TCplx& result);
ROVANE_API void Expjf(float omega, TSCplx& result);
ROVANE_COMPLEX_UNARY(Expj)

ROVANE_API void SinCos(double x, double& sinx, double& cosx);
ROVANE_API void SinCosf(float x, float& sinx, float& cosx);
ROVANE_API void SinCos(const TCplx& z, TCplx& sinz, TCplx& cosz);
ROVANE_API void SinCos(const TSCplx& z, TSCplx& sinz, TSCplx& cosz);
ROVANE_API void SinhCosh(double x, double& sinhx, double& coshx);
ROVANE_API void SinhCoshf(float x, float& sinhx, float& coshx);
ROVANE_API void SinhCosh(const TCplx& z, TCplx& sinhz, TCplx& coshz);
ROVANE_API void SinhCosh(const TSCplx& z, TSCplx& sinhz, TSCplx& coshz);

// Angle of the point (x, y), in [-pi, pi].
ROVANE_API double ArcTan2(double y, double x);
ROVANE_API float ArcTan2f(float y, float x);

// Logarithm of x to the base n: ln(x) / ln(n). The base comes first.
ROVANE_API double LogN(double n, double x);
ROVANE_API float LogNf(float n, float x);
ROVANE_API TCplx LogN(double n, const TCplx& z);
ROVANE_API TSCplx LogN(float n, const TSCplx& z);
ROVANE_API void LogN(double n, const TCplx& z, TCplx& result);
ROVANE_API void LogN(float n, const TSCplx& z, TSCplx& result);

// base^exponent. Exponent 0 gives 1 whatever the base (NaN included); a zero
// base gives 0 for a positive and INF for a negative exponent; otherwise
// 2^(exponent * log2(base)) in long double. A negative base with an integer
// exponent gives the signed power, with any other exponent NaN.
ROVANE_API double Power(double base, double exponent);
ROVANE_API float Powerf(float base, float exponent);
// Complex forms: exponent 0 gives 1 + 0i, a zero base gives 0, otherwise
// exp(exponent * ln(base)) in polar form.
ROVANE_API TCplx Power(const TCplx& base, double exponent);
ROVANE_API TSCplx Power(const TSCplx& base, float exponent);
ROVANE_API TCplx Power(double base, const TCplx& exponent);
ROVANE_API TSCplx Power(float base, const TSCplx& exponent);
ROVANE_API TCplx Power(const TCplx& base, const TCplx& exponent);
ROVANE_API TSCplx Power(const TSCplx& base, const TSCplx& exponent);
ROVANE_API void Power(const TCplx& base, double exponent, TCplx& result);
ROVANE_API void Power(const TSCplx& base, float exponent, TSCplx& result);
ROVANE_API void Power(double base, const TCplx& exponent, TCplx& result);
ROVANE_API void Power(float base, const TSCplx& exponent, TSCplx& result);
ROVANE_API void Power(const TCplx& base, const TCplx& exponent, TCplx& result);
ROVANE_API void Power(const TSCplx& base, const TSCplx& exponent, TSCplx& result);

// base^n by square-and-multiply on |n|, the reciprocal taken at the end for a
// negative n; n = 0 gives 1.
ROVANE_API double IntPower(double base, int32_t n);
ROVANE_API float IntPowerf(float base, int32_t n);
ROVANE_API TCplx IntPower(const TCplx& base, int32_t n);
ROVANE_API TSCplx IntPower(const TSCplx& base, int32_t n);
ROVANE_API void IntPower(const TCplx& base, int32_t n, TCplx& result);
ROVANE_API void IntPower(const TSCplx& base, int32_t n, TSCplx& result);

// sqrt(a^2 + b^2) as p * sqrt((q/p)^2 + 1), p the larger magnitude; the
// complex form is CSqrt(CSqr(a) + CSqr(b)).
ROVANE_API double Pythag(double a, double b);
ROVANE_API float Pythagf(float a, float b);
ROVANE_API TCplx Pythag(const TCplx& a, const TCplx& b);
ROVANE_API TSCplx Pythag(const TSCplx& a, const TSCplx& b);

// ---------------------------------------------------------------------------
// Complex arithmetic.
// ---------------------------------------------------------------------------
ROVANE_API TCplx Cplx(double re, double im = 0.0);
ROVANE_API TCplx CplxDouble(double re, double im = 0.0);
ROVANE_API TCplx CplxDouble(const TSCplx& z);
ROVANE_API TSCplx CplxSingle(float re, float im = 0.0f);
ROVANE_API TSCplx CplxSingle(const TCplx& z);

// Sums, differences, products and quotients in the three operand forms.
#define ROVANE_COMPLEX_BINARY(Name)                                              \
    ROVANE_API TCplx Name(const TCplx& a, const TCplx& b);                       \
    ROVANE_API TSCplx Name(const TSCplx& a, const TSCplx& b);                    \
    ROVANE_API TCplx Name(const TCplx& a, double b);                             \
    ROVANE_API TSCplx Name(const TSCplx& a, float b);                            \
    ROVANE_API TCplx Name(double a, const TCplx& b);                             \
    ROVANE_API TSCplx Name(float a, const TSCplx& b);                            \
    ROVANE_API void Name(const TCplx& a, const TCplx& b, TCplx& result);         \
    ROVANE_API void Name(const TSCplx& a, const TSCplx& b, TSCplx& result);
ROVANE_COMPLEX_BINARY(CAdd)
ROVANE_COMPLEX_BINARY(CSub)
ROVANE_COMPLEX_BINARY(CMul)
// A real numerator divided by z: k = value / (Re^2 + Im^2), rounded to the
// field width, then (Re * k, -Im * k). A complex zero gives non-finite parts.
ROVANE_COMPLEX_BINARY(CDiv)
#undef ROVANE_COMPLEX_BINARY

// In-place forms, applied to the first argument from left to right:
// CAddI: a := a + b. CSubI: a := a - b. CMulI: a := a * b.
// CSubMulI: a := (a - b) * c. CInvMulI: a := CInv(a) * b.
ROVANE_API void CAddI(TCplx& a, const TCplx& b);
ROVANE_API void CAddI(TSCplx& a, const TSCplx& b);
ROVANE_API void CAddI(TCplx& a, double b);
ROVANE_API void CAddI(TSCplx& a, float b);
ROVANE_API void CSubI(TCplx& a, const TCplx& b);
ROVANE_API void CSubI(TSCplx& a, const TSCplx& b);
ROVANE_API void CSubI(TCplx& a, double b);
ROVANE_API void CSubI(TSCplx& a, float b);
ROVANE_API void CMulI(TCplx& a, const TCplx& b);
ROVANE_API void CMulI(TSCplx& a, const TSCplx& b);
ROVANE_API void CMulI(TCplx& a, double b);
ROVANE_API void CMulI(TSCplx& a, float b);
ROVANE_API void CSubMulI(TCplx& a, const TCplx& b, const TCplx& c);
ROVANE_API void CSubMulI(TSCplx& a, const TSCplx& b, const TSCplx& c);
ROVANE_API void CInvMulI(TCplx& a, const TCplx& b);
ROVANE_API void CInvMulI(TSCplx& a, const TSCplx& b);

// 1 / z: k = 1 / (Re^2 + Im^2), result (Re * k, -Im * k); a zero gives
// non-finite parts.
ROVANE_COMPLEX_UNARY(CInv)
ROVANE_COMPLEX_UNARY(CSqr)
// Principal square root, in the right half plane; the side of the cut along
// the negative real axis follows the sign of Im (also of a signed zero).
ROVANE_COMPLEX_UNARY(CSqrt)
ROVANE_COMPLEX_UNARY(Conj)
// (Im, Re).
ROVANE_COMPLEX_UNARY(Flip)
// (Im, -Re).
ROVANE_COMPLEX_UNARY(FlipConj)
// i * z = (-Im, Re).
ROVANE_COMPLEX_UNARY(MulI)
// (-Re, -Im).
ROVANE_COMPLEX_UNARY(Neg)
// Part by part: round to nearest (ties to even), truncate, fraction z - CTrunc(z).
ROVANE_COMPLEX_UNARY(CRound)
ROVANE_COMPLEX_UNARY(CTrunc)
ROVANE_COMPLEX_UNARY(CFrac)

// sqrt(Re^2 + Im^2) without scaling, |Re| + |Im|, atan2(Im, Re), Re^2 + Im^2.
ROVANE_API double CAbs(const TCplx& z);
ROVANE_API float CAbs(const TSCplx& z);
ROVANE_API double CAbs1(const TCplx& z);
ROVANE_API float CAbs1(const TSCplx& z);
ROVANE_API double Arg(const TCplx& z);
ROVANE_API float Arg(const TSCplx& z);
ROVANE_API double Norm(const TCplx& z);
ROVANE_API float Norm(const TSCplx& z);
inline double Real(const TCplx& z) { return z.Re; }
inline float Real(const TSCplx& z) { return z.Re; }
inline double Imag(const TCplx& z) { return z.Im; }
inline float Imag(const TSCplx& z) { return z.Im; }

// The k-th of the n roots of z: |z|^(1/n) at angle (Arg(z) + 2 pi k) / n.
// k = 0 is the principal root; n = 0 gives CNAN.
ROVANE_API TCplx Root(const TCplx& z, int32_t n, int32_t k = 0);
ROVANE_API TSCplx Root(const TSCplx& z, int32_t n, int32_t k = 0);

ROVANE_API void CartToPolar(const TCplx& z, double& amplt, double& phase);
ROVANE_API void CartToPolar(const TSCplx& z, float& amplt, float& phase);
ROVANE_API TCplx PolarToCart(double amplt, double phase);
ROVANE_API TSCplx PolarToCartf(float amplt, float phase);
ROVANE_API void PolarToCart(double amplt, double phase, TCplx& result);
ROVANE_API void PolarToCart(float amplt, float phase, TSCplx& result);

// ---------------------------------------------------------------------------
// Rounding and sign.
// ---------------------------------------------------------------------------
// Ceil and Floor return a float value, so that NaN and large values pass.
ROVANE_REAL_UNARY(Ceil)
ROVANE_REAL_UNARY(Floor)
// a - b * trunc(a / b): the result has the sign of a. The complex form
// truncates the complex quotient part by part.
ROVANE_API double Rem(double a, double b);
ROVANE_API float Remf(float a, float b);
ROVANE_API TCplx Rem(const TCplx& a, const TCplx& b);
ROVANE_API TSCplx Rem(const TSCplx& a, const TSCplx& b);
ROVANE_API void TruncAndFrac(double x, double& truncPart, double& fracPart);
ROVANE_API void TruncAndFracf(float x, float& truncPart, float& fracPart);
ROVANE_API void TruncAndFrac(const TCplx& z, TCplx& truncPart, TCplx& fracPart);
ROVANE_API void TruncAndFrac(const TSCplx& z, TSCplx& truncPart, TSCplx& fracPart);
// 1 for x > 0 or NaN, 0 for x = 0, -1 for x < 0. The complex form decides on
// Re, and on Im when Re is zero.
ROVANE_API int32_t Sgn(double x);
ROVANE_API int32_t Sgnf(float x);
ROVANE_API int32_t Sgn(const TCplx& z);
ROVANE_API int32_t Sgn(const TSCplx& z);
// Sign negates: Sign(x) = -x, Sign(z) = (-Re, -Im). The sign function is Sgn.
ROVANE_REAL_UNARY(Sign)
ROVANE_COMPLEX_UNARY(Sign)
// a - 2 pi * round(a / (2 pi)), rounded to nearest: the result lies in [-pi, pi].
ROVANE_REAL_UNARY(FixAngle)
ROVANE_REAL_UNARY(DegToRad)
ROVANE_REAL_UNARY(RadToDeg)

template <class T>
inline void Swap(T& a, T& b) {
    T t = a;
    a = b;
    b = t;
}

// The larger or smaller of two values; a NaN in either gives NaN.
ROVANE_API double Max(double a, double b);
ROVANE_API float Maxf(float a, float b);
ROVANE_API int32_t Max(int32_t a, int32_t b);
ROVANE_API int64_t Max(int64_t a, int64_t b);
ROVANE_API double Min(double a, double b);
ROVANE_API float Minf(float a, float b);
ROVANE_API int32_t Min(int32_t a, int32_t b);
ROVANE_API int64_t Min(int64_t a, int64_t b);

// ---------------------------------------------------------------------------
// Tests and ranges.
// ---------------------------------------------------------------------------
ROVANE_API bool IsNaN(double x);
ROVANE_API bool IsNaNf(float x);
ROVANE_API bool IsNaN(const TCplx& z);
ROVANE_API bool IsNaN(const TSCplx& z);
ROVANE_API bool IsInf(double x);
ROVANE_API bool IsInff(float x);
ROVANE_API bool IsInf(const TCplx& z);
ROVANE_API bool IsInf(const TSCplx& z);
// NaN or infinity (in any part); IsNanInf is the same test.
ROVANE_API bool IsInfNan(double x);
ROVANE_API bool IsInfNanf(float x);
ROVANE_API bool IsInfNan(const TCplx& z);
ROVANE_API bool IsInfNan(const TSCplx& z);
ROVANE_API bool IsNanInf(double x);
ROVANE_API bool IsNanInff(float x);
ROVANE_API bool IsNanInf(const TCplx& z);
ROVANE_API bool IsNanInf(const TSCplx& z);

// Plain order tests without tolerance: false when either operand is NaN.
ROVANE_API bool Smaller2(double a, double b);
ROVANE_API bool Smaller2f(float a, float b);
ROVANE_API bool Bigger2(double a, double b);
ROVANE_API bool Bigger2f(float a, float b);
ROVANE_API bool SmallerOrEqual(double a, double b);
ROVANE_API bool SmallerOrEqualf(float a, float b);
ROVANE_API bool BiggerOrEqual(double a, double b);
ROVANE_API bool BiggerOrEqualf(float a, float b);
// With tolerance: a - tolerance <= b and a + tolerance >= b, so that a pair
// closer than the tolerance is both smaller-or-equal and bigger-or-equal.
ROVANE_API bool SmallerOrEqual(double a, double b, double tolerance);
ROVANE_API bool SmallerOrEqualf(float a, float b, float tolerance);
ROVANE_API bool BiggerOrEqual(double a, double b, double tolerance);
ROVANE_API bool BiggerOrEqualf(float a, float b, float tolerance);

// Order of complex values: by squared magnitude Re^2 + Im^2 first; at equal
// magnitude by phase, compared without computing it through the quadrant
// code (1: Re < 0, Im < 0; 2: Re >= 0, Im < 0; 3: Re >= 0, Im >= 0;
// 4: Re < 0, Im >= 0), codes ascending with the angle from -pi to pi, and
// within a code by the real part (q 1, 2: larger Re is the larger phase;
// q 3, 4: smaller Re is the larger phase). This is the order of the
// containers' Maxc and Minc. Smaller2 and Bigger2 compare the phase alone.
// Any NaN part makes every test false.
ROVANE_API bool Smaller(const TCplx& a, const TCplx& b);
ROVANE_API bool Smaller(const TSCplx& a, const TSCplx& b);
ROVANE_API bool Bigger(const TCplx& a, const TCplx& b);
ROVANE_API bool Bigger(const TSCplx& a, const TSCplx& b);
ROVANE_API bool SmallerOrEqual(const TCplx& a, const TCplx& b);
ROVANE_API bool SmallerOrEqual(const TSCplx& a, const TSCplx& b);
ROVANE_API bool BiggerOrEqual(const TCplx& a, const TCplx& b);
ROVANE_API bool BiggerOrEqual(const TSCplx& a, const TSCplx& b);
ROVANE_API bool Smaller2(const TCplx& a, const TCplx& b);
ROVANE_API bool Smaller2(const TSCplx& a, const TSCplx& b);
ROVANE_API bool Bigger2(const TCplx& a, const TCplx& b);
ROVANE_API bool Bigger2(const TSCplx& a, const TSCplx& b);

template <ComplexRecord C>
bool operator<(const C& a, const C& b) { return Smaller(a, b); }
template <ComplexRecord C>
bool operator<(const C& a, ComplexField<C> b) { return Smaller(a, C(b, 0)); }
template <ComplexRecord C>
bool operator<(ComplexField<C> a, const C& b) { return Smaller(C(a, 0), b); }
template <ComplexRecord C>
bool operator<=(const C& a, const C& b) { return SmallerOrEqual(a, b); }
template <ComplexRecord C>
bool operator<=(const C& a, ComplexField<C> b) { return SmallerOrEqual(a, C(b, 0)); }
template <ComplexRecord C>
bool operator<=(ComplexField<C> a, const C& b) { return SmallerOrEqual(C(a, 0), b); }
template <ComplexRecord C>
bool operator>(const C& a, const C& b) { return Bigger(a, b); }
template <ComplexRecord C>
bool operator>(const C& a, ComplexField<C> b) { return Bigger(a, C(b, 0)); }
template <ComplexRecord C>
bool operator>(ComplexField<C> a, const C& b) { return Bigger(C(a, 0), b); }
template <ComplexRecord C>
bool operator>=(const C& a, const C& b) { return BiggerOrEqual(a, b); }
template <ComplexRecord C>
bool operator>=(const C& a, ComplexField<C> b) { return BiggerOrEqual(a, C(b, 0)); }
template <ComplexRecord C>
bool operator>=(ComplexField<C> a, const C& b) { return BiggerOrEqual(C(a, 0), b); }

// Low <= Value <= High, tested in that order; false for crossed bounds or an
// unordered value.
ROVANE_API bool CheckRange(double low, double value, double high);
ROVANE_API bool CheckRangef(float low, float value, float high);
ROVANE_API bool CheckRange(int32_t low, int32_t value, int32_t high);
ROVANE_API bool CheckRange(int64_t low, int64_t value, int64_t high);
// Clamps Value into [Low, High]; with High < Low the result is High. A NaN
// value passes unchanged.
ROVANE_API double EnsureRange(double low, double value, double high);
ROVANE_API float EnsureRangef(float low, float value, float high);
ROVANE_API int32_t EnsureRange(int32_t low, int32_t value, int32_t high);
ROVANE_API int64_t EnsureRange(int64_t low, int64_t value, int64_t high);
ROVANE_API void LimitRange(double low, double& value, double high);
ROVANE_API void LimitRangef(float low, float& value, float high);
ROVANE_API void LimitRange(int32_t low, int32_t& value, int32_t high);
ROVANE_API void LimitRange(int64_t low, int64_t& value, int64_t high);

// ---------------------------------------------------------------------------
// Integer helpers.
// ---------------------------------------------------------------------------
// Greatest common divisor of |a| and |b| (Gcd(0, 0) = 0) and least common
// multiple (0 when either is 0), both non-negative.
ROVANE_API int32_t Gcd(int32_t a, int32_t b);
ROVANE_API int64_t Gcd(int64_t a, int64_t b);
ROVANE_API int32_t Lcm(int32_t a, int32_t b);
ROVANE_API int64_t Lcm(int64_t a, int64_t b);
// Smallest power of two at or above n, at least 2.
ROVANE_API int32_t LargestExp2(int32_t n);
// Largest power of two at or below n, at least 1.
ROVANE_API int32_t SmallestExp2(int32_t n);
// Base-2 exponent of LargestExp2(n): ceil(log2 n), at least 1.
ROVANE_API int32_t LargestLog2(int32_t n);

#undef ROVANE_REAL_AND_COMPLEX_UNARY
#undef ROVANE_COMPLEX_UNARY
#undef ROVANE_REAL_UNARY

}  // namespace rovane
