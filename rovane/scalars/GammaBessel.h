// Gamma and error function family and the Bessel set.
//
// Every function is computed in extended precision (long double) and rounded
// once on return. A 64-bit form has the plain name, a 32-bit form the suffix
// f; complex forms are overloads on TCplx and TSCplx. None of them raises for
// an argument outside its domain, with the one exception of ErfInv for
// |y| > 1.
#pragma once

#include "rovane/scalars/Scalars.h"

namespace rovane {

// Gamma function. Poles: Gamma(+0) = +INF, Gamma(-0) = -INF, a negative
// integer gives NAN. Above MAXGAM (MAXGAM_SINGLE) the result is INF; negative
// arguments go through the reflection formula and underflow towards a signed
// zero.
ROVANE_API double Gamma(double x);
ROVANE_API float Gammaf(float x);

// ln|Gamma(x)|. Poles (0 and the negative integers) and +-INF give +INF,
// as does any x above MAXLGM (MAXLGM_SINGLE).
ROVANE_API double LnGamma(double x);
ROVANE_API float LnGammaf(float x);

// Sign of Gamma(x): 1 for x >= 0 or NaN; for x < 0, 1 when trunc(|x|) is odd,
// otherwise -1.
ROVANE_API double SgnGamma(double x);
ROVANE_API float SgnGammaf(float x);

// Regularised lower incomplete gamma P(a, x) (IGamma) and its complement
// Q(a, x) (JGamma). Note the argument order: the point x first, then the
// shape a. Both give 0 for a <= 0 or x < 0; JGamma(0, a) is 1. For x < a + 1
// the power series is summed, otherwise the continued fraction. The complex
// forms take a complex x (principal branch of ln x) and make the same choice
// on |x|; next to the negative real axis, where the fraction does not
// converge, the series is summed instead.
ROVANE_API double IGamma(double x, double a);
ROVANE_API float IGammaf(float x, float a);
ROVANE_API TCplx IGamma(const TCplx& x, double a);
ROVANE_API TSCplx IGamma(const TSCplx& x, float a);
ROVANE_API double JGamma(double x, double a);
ROVANE_API float JGammaf(float x, float a);
ROVANE_API TCplx JGamma(const TCplx& x, double a);
ROVANE_API TSCplx JGamma(const TSCplx& x, float a);

// The two evaluation routes on their own: GammaSer sums the series of P(a, x)
// (meant for x < a + 1), GammaFrac evaluates the continued fraction of
// Q(a, x) (meant for x >= a + 1). Neither checks its domain.
ROVANE_API double GammaSer(double x, double a);
ROVANE_API float GammaSerf(float x, float a);
ROVANE_API TCplx GammaSer(const TCplx& x, double a);
ROVANE_API TSCplx GammaSer(const TSCplx& x, float a);
ROVANE_API double GammaFrac(double x, double a);
ROVANE_API float GammaFracf(float x, float a);
ROVANE_API TCplx GammaFrac(const TCplx& x, double a);
ROVANE_API TSCplx GammaFrac(const TSCplx& x, float a);

// Error function and its complement, through the incomplete gamma function
// at (x^2, 1/2).
ROVANE_API double Erf(double x);
ROVANE_API float Erff(float x);
ROVANE_API double Erfc(double x);
ROVANE_API float Erfcf(float x);

// Inverse error function: a rational first guess refined by two Newton steps.
// |y| = 1 gives an infinity of the sign of y, NaN gives NaN, and |y| > 1
// raises ERovaneException("Abs(y) > 0").
ROVANE_API double ErfInv(double y);
ROVANE_API float ErfInvf(float y);

// Modified Bessel function I0 and Bessel function J0 of a complex argument.
ROVANE_API TCplx BesselI0(const TCplx& z);
ROVANE_API TSCplx BesselI0(const TSCplx& z);
ROVANE_API TCplx BesselJ0(const TCplx& z);
ROVANE_API TSCplx BesselJ0(const TSCplx& z);

}  // namespace rovane
