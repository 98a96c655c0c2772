#!/usr/bin/python3
"""Writes tests/data/gamma_bessel_reference.csv: reference values of the gamma and
error function family and of the Bessel functions I0 and J0, computed with
mpmath at 60 digits and written with 30 significant digits.

Run with the system interpreter (Debian's python3-mpmath):
    /usr/bin/python3 tools/make_gamma_bessel_reference.py

Columns: func, x_re, x_im, a, ref_re, ref_im.
  Gamma, LnGamma, Erf, Erfc, ErfInv: x_re is the argument.
  IGamma, JGamma: x_re is the point x, a the shape (P(a, x) and Q(a, x));
  IGammaC, JGammaC: the same at the complex point x_re + i x_im.
  BesselI0, BesselJ0: x_re + i x_im is the argument, ref_re + i ref_im the value.
Arguments are written with 17 significant digits, so that they are the exact
doubles the library is called with; the references are computed from those
doubles, not from the decimal numbers in the lists below.
"""
import os
import random
import struct

import mpmath
from mpmath import mp, mpf, mpc

mp.dps = 60
random.seed(20240611)

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "..", "tests", "data", "gamma_bessel_reference.csv")

MAXGAM = struct.unpack("<d", struct.pack("<Q", 0x406573FAE561F62E))[0]
MAXLGM = 2.556348e305


def d(v):
    """Round to a double and back: the argument the library sees."""
    return float(v)


def fmt_arg(v):
    return repr(float(v))


def fmt_ref(v):
    return mpmath.nstr(v, 30, min_fixed=1, max_fixed=0) if v != 0 else "0"


rows = []


def add(func, x_re, ref, x_im=0.0, a=0.0):
    ref = mpc(ref)
    rows.append((func, fmt_arg(x_re), fmt_arg(x_im), fmt_arg(a), fmt_ref(ref.real), fmt_ref(ref.imag)))


# --- Gamma ------------------------------------------------------------------
gamma_args = [
    5e-324, 1e-300, 1e-20, 1e-8, 1e-3, 0.1, 0.5, 0.75, 0.9, 1.0, 1 + 2**-52, 1 + 1e-10, 1.25, 1.5,
    1.75, 2 - 1e-10, 2.0, 2 + 1e-10, 2.5, 3.0, 4.5, 7.0, 10.0, 12.5, 12.999999, 13.0, 13.000001, 20.0,
    23.0, 24.0, 32.0, 50.5, 99.99, 100.0, 123.456, 150.3, 170.0, 170.5, 171.0, 171.5, MAXGAM,
    -1e-300, -1e-10, -0.5, -0.999999, -1 - 1e-10, -1 + 1e-10, -1.5, -2.5, -3.75, -10.3, -20.5,
    -99.999, -100.5, -150.3, -170.5, -171.5, -175.25,
]
gamma_args += [random.uniform(0, 171.6) for _ in range(40)]
gamma_args += [random.uniform(0, 5) for _ in range(15)]
gamma_args += [-random.uniform(0, 170) for _ in range(20)]
for x in gamma_args:
    x = d(x)
    add("Gamma", x, mpmath.gamma(mpf(x)))

# --- LnGamma ------------------------------------------------------------------
lngamma_args = [
    5e-324, 1e-300, 1e-20, 1e-5, 0.1, 0.5, 0.5 - 1e-9, 0.75, 0.9, 1 - 1e-5, 1 - 2**-53, 1 + 2**-52,
    1 + 1e-8, 1.1, 1.25, 1.4999999, 1.5, 1.5000001, 1.75, 1.9, 2 - 1e-8, 2 + 2**-51, 2 + 1e-5, 2.25,
    2.4999999, 2.5, 2.5000001, 3.0, 4.0, 7.5, 10.0, 12.999999, 13.0, 20.0, 100.0, 171.7, 200.0, 1e3,
    1e5, 1234567.89, 1e10, 1e15, 1e30, 1e100, 1e200, 1e300, MAXLGM, -0.5, -1.5, -2.1, -3.5, -10.25,
    -100.5, -1000.5, -123456.75,
]
lngamma_args += [random.uniform(0, 3) for _ in range(20)]
lngamma_args += [10 ** random.uniform(0, 300) for _ in range(20)]
for x in lngamma_args:
    x = d(x)
    add("LnGamma", x, mpmath.log(abs(mpmath.gamma(mpf(x)))) if x < 1e6 else mpmath.loggamma(mpf(x)))

# --- Erf and Erfc -------------------------------------------------------------
# The series/fraction switch of Erf sits at x^2 = 3/2.
switch = 1.5 ** 0.5
erf_args = [
    1e-300, 1e-100, 1e-10, 1e-3, 0.01, 0.1, 0.25, 0.5, 0.75, 1.0, 1.2, switch - 1e-12, switch,
    switch + 1e-12, 1.25, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 5.9, -1e-10, -0.3, -1.0, -switch, -2.0, -4.5,
]
erf_args += [random.uniform(-6, 6) for _ in range(30)]
for x in erf_args:
    x = d(x)
    add("Erf", x, mpmath.erf(mpf(x)))

erfc_args = [
    1e-300, 1e-10, 0.01, 0.1, 0.5, 1.0, switch - 1e-12, switch, switch + 1e-12, 1.5, 2.0, 3.0, 5.0,
    7.5, 10.0, 15.0, 20.0, 25.0, 26.0, 26.5, 27.0, -1e-10, -0.5, -1.0, -switch, -3.0, -6.0,
]
erfc_args += [random.uniform(-5, 26.5) for _ in range(30)]
for x in erfc_args:
    x = d(x)
    add("Erfc", x, mpmath.erfc(mpf(x)))

# --- IGamma and JGamma ------------------------------------------------------------
pairs = []
for a in [1e-10, 1e-3, 0.1, 0.5, 1.0, 2.5, 10.0, 12.9, 13.1, 50.0, 100.5, 1000.0, 12345.6, 1e5]:
    for x in [a * 1e-3, a * 0.1, a * 0.5, a * 0.9, a, a + 1 - 1e-9, a + 1, a + 1 + 1e-9, a * 1.1 + 1,
              a * 2 + 1, a * 5 + 10 if a < 1e4 else a * 1.05 + 10]:
        pairs.append((d(x), d(a)))
for _ in range(40):
    a = 10 ** random.uniform(-2, 3)
    x = a * random.uniform(0.05, 3)
    pairs.append((d(x), d(a)))
pairs += [(1e-300, 0.5), (1e-20, 2.0), (300.0, 2.0), (700.0, 0.5), (1e4, 3.0)]
def lower_series(a, x):
    """P(a, x) = x^a e^-x / Gamma(a + 1) 1F1(1; a + 1; x), all terms positive."""
    return mpmath.exp(a * mpmath.log(x) - x - mpmath.loggamma(a + 1)) * mpmath.hyp1f1(1, a + 1, x, maxterms=10**7)


def upper_quad(a, x):
    """Q(a, x) for x > a as x^(a-1) e^-x / Gamma(a) times the integral of
    (1 + u/x)^(a-1) e^-u over u > 0, a smooth decaying integrand."""
    scale = mpmath.exp((a - 1) * mpmath.log(x) - x - mpmath.loggamma(a))
    return scale * mpmath.quad(lambda u: mpmath.exp((a - 1) * mpmath.log1p(u / x) - u), [0, 1, 10, 100, mpmath.inf])


for x, a in pairs:
    # Each complement is taken from the other side at 60 digits, which is
    # safe where that side is not itself tiny.
    a_, x_ = mpf(a), mpf(x)
    if x > a:
        try:
            Q = mpmath.gammainc(a_, x_, mpmath.inf, regularized=True)
        except mpmath.libmp.NoConvergence:
            Q = upper_quad(a_, x_)
        P = 1 - Q
    else:
        P = lower_series(a_, x_)
        Q = 1 - P
    add("IGamma", x, P, a=a)
    add("JGamma", x, Q, a=a)

# Complex x, principal branch of ln x; the |x| = a + 1 switch is crossed.
for a in [0.5, 2.0, 10.5, 40.0]:
    for _ in range(6):
        r = random.uniform(0.05, 2.5) * (a + 1)
        t = random.uniform(-2.6, 2.6)
        z = mpc(d(r * mpmath.cos(t)), d(r * mpmath.sin(t)))
        P = mpmath.gammainc(mpf(a), 0, z, regularized=True)
        add("IGammaC", z.real, P, x_im=z.imag, a=a)
        add("JGammaC", z.real, 1 - P, x_im=z.imag, a=a)

# Next to and on the negative real axis, beyond |x| = a + 1, where the
# continued fraction converges badly.
for a in [0.5, 2.5, 7.0]:
    for r in [a + 2, 8.0, 12.0]:
        for t in [3.0, -3.1, mpmath.pi]:
            z = mpc(d(r * mpmath.cos(t)), 0.0 if t == mpmath.pi else d(r * mpmath.sin(t)))
            P = mpmath.gammainc(mpf(a), 0, z, regularized=True)
            add("IGammaC", z.real, P, x_im=z.imag, a=a)
            add("JGammaC", z.real, 1 - P, x_im=z.imag, a=a)

# --- ErfInv --------------------------------------------------------------------------
erfinv_args = [
    0.0, 1e-300, 1e-100, 1e-10, 1e-3, 0.1, 0.3, 0.5, 0.69999, 0.7, 0.70001, 0.8, 0.9, 0.99, 0.999,
    0.999999, 1 - 1e-10, 1 - 1e-11, 1 - 1e-12, 1 - 1e-13, 1 - 1e-14, 1 - 1e-15, 1 - 2**-52, 1 - 2**-53, -1e-10, -0.3, -0.5, -0.7, -0.75, -0.95,
    -0.999999, -(1 - 2**-53),
]
erfinv_args += [random.uniform(-1, 1) for _ in range(30)]
for y in erfinv_args:
    y = d(y)
    add("ErfInv", y, mpmath.erfinv(mpf(y)))

# --- Bessel I0 and J0 ------------------------------------------------------------------
bessel_args = [(0.0, 0.0), (1e-10, 0.0), (0.5, 0.0), (1.0, 0.0), (2.404825557695773, 0.0), (5.0, 0.0),
               (6.0, 0.0), (6.0001, 0.0), (10.0, 0.0), (19.999, 0.0), (20.001, 0.0), (0.0, 19.999), (0.0, 20.001),
               (14.14, 14.15), (14.15, 14.14), (-5.0, 19.3), (24.999, 0.0), (25.001, 0.0),
               (30.0, 0.0), (40.0, 0.0), (100.0, 0.0), (700.0, 0.0), (-3.0, 0.0), (-30.0, 0.0),
               (0.0, 1.0), (0.0, 10.0), (0.0, 30.0), (0.0, -30.0), (1.0, 1.0), (-2.0, 3.0), (3.0, -4.0),
               (4.0, 4.5), (-17.0, 12.0), (20.0, 15.0), (25.0, 1.0), (0.5, -26.0), (-35.0, -10.0),
               (28.0, 28.0), (100.0, 3.0)]
for _ in range(30):
    r = 10 ** random.uniform(-2, 1.6)
    t = random.uniform(-mpmath.pi, mpmath.pi)
    bessel_args.append((d(r * mpmath.cos(t)), d(r * mpmath.sin(t))))
for zr, zi in bessel_args:
    z = mpc(zr, zi)
    add("BesselI0", zr, mpmath.besseli(0, z), x_im=zi)
    add("BesselJ0", zr, mpmath.besselj(0, z), x_im=zi)

with open(OUT, "w") as f:
    f.write("func,x_re,x_im,a,ref_re,ref_im\n")
    for r in rows:
        f.write(",".join(r) + "\n")
print(f"{len(rows)} rows written to {os.path.normpath(OUT)}")
