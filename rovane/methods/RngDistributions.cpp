// Distributions drawn from the uniform elements of a basic generator.
//
// Continuous distributions invert their distribution function on an open
// uniform draw v in (0, 1) (the draw plus half the generator's spacing), except
// the normal (Box-Muller or inverse function, by the method argument) and the
// gamma family (Marsaglia and Tsang). Discrete distributions are exact: an
// inversion that starts at the mode and walks outwards, the transformed
// rejection of Hoermann (PTRS) for Poisson means of 10 and above, and Knuth's
// halving of binomial trials through beta draws for large trial counts.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "rovane/methods/RngEngine.h"
#include "rovane/primitives/ippspl.h"

namespace rovane::rng {

void USrc::Refill() {
    if (fStatus == kOk) fStatus = fE.Uniform(fBuf, 256);
    if (fStatus != kOk) std::fill(fBuf, fBuf + 256, 0.5);  // keeps loops finite; the fill reports the status
    fPos = 0;
    fLen = 256;
}

void USrc::Take(double* r, int64_t n) {
    while (n > 0 && fPos < fLen) {
        *r++ = fBuf[fPos++];
        --n;
    }
    if (n > 0 && fStatus == kOk) fStatus = fE.Uniform(r, n);
}

namespace {

constexpr int kBlock = 1024;
constexpr double kTwoPi = 2 * std::numbers::pi;

// Largest double below b, for results that rounding lifted onto the open end.
inline double Below(double x, double b) { return x < b ? x : std::nextafter(b, -std::numeric_limits<double>::infinity()); }

// One pass of Box-Muller over m pairs of uniforms in u (u[2i], u[2i+1]):
// rad[i] = sqrt(-2 ln(1 - u[2i])), sn/cs the sine and cosine of 2 pi u[2i+1].
void BoxMullerPass(const double* u, int m, double* rad, double* sn, double* cs) {
    for (int i = 0; i < m; ++i) {
        rad[i] = 1.0 - u[2 * i];
        cs[i] = kTwoPi * u[2 * i + 1];
    }
    ippsLn_64f_A53_Idx(rad, 0, rad, 0, m);
    for (int i = 0; i < m; ++i) rad[i] = -2.0 * rad[i];
    ippsSqrt_64f_A53_Idx(rad, 0, rad, 0, m);
    ippsSinCos_64f_A53_Idx(cs, 0, sn, 0, cs, 0, m);
}

// Rational function num(r) / den(r) of degree 7 with den's constant term 1,
// coefficients from the highest power down.
inline double Rational7(const double (&n)[8], const double (&d)[7], double r) {
    double a = n[0], b = d[0];
    for (int i = 1; i < 8; ++i) a = a * r + n[i];
    for (int i = 1; i < 7; ++i) b = b * r + d[i];
    return a / (b * r + 1.0);
}

// Coefficients of Wichura's algorithm AS 241 (PPND16): the centre, the near
// tail (r <= 5) and the far tail.
constexpr double kQA[8] = {2.5090809287301226727e+3, 3.3430575583588128105e+4, 6.7265770927008700853e+4,
                           4.5921953931549871457e+4, 1.3731693765509461125e+4, 1.9715909503065514427e+3,
                           1.3314166789178437745e+2, 3.3871328727963666080e+0};
constexpr double kQB[7] = {5.2264952788528545610e+3, 2.8729085735721942674e+4, 3.9307895800092710610e+4,
                           2.1213794301586595867e+4, 5.3941960214247511077e+3, 6.8718700749205790830e+2,
                           4.2313330701600911252e+1};
constexpr double kQC[8] = {7.74545014278341407640e-4, 2.27238449892691845833e-2, 2.41780725177450611770e-1,
                           1.27045825245236838258e+0, 3.64784832476320460504e+0, 5.76949722146069140550e+0,
                           4.63033784615654529590e+0, 1.42343711074968357734e+0};
constexpr double kQD[7] = {1.05075007164441684324e-9, 5.47593808499534494600e-4, 1.51986665636164571966e-2,
                           1.48103976427480074590e-1, 6.89767334985100004550e-1, 1.67638483018380384940e+0,
                           2.05319162663775882187e+0};
constexpr double kQE[8] = {2.01033439929228813265e-7, 2.71155556874348757815e-5, 1.24266094738807843860e-3,
                           2.65321895265761230930e-2, 2.96560571828504891230e-1, 1.78482653991729133580e+0,
                           5.46378491116411436990e+0, 6.65790464350110377720e+0};
constexpr double kQF[7] = {2.04426310338993978564e-15, 1.42151175831644588870e-7, 1.84631831751005468180e-5,
                           7.86869131145613259100e-4, 1.48753612908506148525e-2, 1.36929880922735805310e-1,
                           5.99832206555887937690e-1};

// Standard normal quantiles of p[0..m) (each in (0, 1), m <= kBlock) into
// x, by AS 241 (relative error about 1e-16). The centre, |p - 0.5| <= 0.425
// (85% of uniform draws), is one rational function in 0.180625 - q^2,
// computed for every element in a branch-free pass the compiler vectorises.
// The tails are gathered and take their r = sqrt(-ln(min(p, 1 - p))) from
// the vector logarithm and root in one call each, then overwrite.
void NormalQuantiles(const double* p, double* x, int m) {
    for (int k = 0; k < m; ++k) {
        const double q = p[k] - 0.5;
        x[k] = q * Rational7(kQA, kQB, 0.180625 - q * q);
    }
    int at[kBlock];
    double r[kBlock];
    int nt = 0;
    for (int k = 0; k < m; ++k) {
        const double q = p[k] - 0.5;
        if (std::fabs(q) <= 0.425) continue;
        at[nt] = k;
        r[nt++] = q < 0 ? p[k] : 1 - p[k];
    }
    if (nt == 0) return;
    ippsLn_64f_A53_Idx(r, 0, r, 0, nt);
    for (int j = 0; j < nt; ++j) r[j] = -r[j];
    ippsSqrt_64f_A53_Idx(r, 0, r, 0, nt);
    for (int j = 0; j < nt; ++j) {
        const double v = r[j] <= 5 ? Rational7(kQC, kQD, r[j] - 1.6) : Rational7(kQE, kQF, r[j] - 5);
        const int k = at[j];
        x[k] = p[k] < 0.5 ? -v : v;
    }
}

// Standard normal numbers one at a time (Box-Muller, the second of each
// pair kept for the next call), for the rejection methods.
struct GaussSrc {
    USrc& s;
    bool have = false;
    double spare = 0;
    double Next() {
        if (have) {
            have = false;
            return spare;
        }
        const double r = std::sqrt(-2.0 * std::log(1.0 - s.Next())), t = kTwoPi * s.Next();
        spare = r * std::cos(t);
        have = true;
        return r * std::sin(t);
    }
};

// log of a gamma(alpha) draw, alpha > 0 (Marsaglia and Tsang 2000; below 1
// through gamma(alpha + 1) * u^(1/alpha), kept in logarithms so that small
// shapes do not underflow).
double LogGammaDraw(USrc& s, GaussSrc& g, double alpha) {
    double boost = 0;
    if (alpha < 1) {
        boost = std::log(s.NextOpen()) / alpha;
        alpha += 1;
    }
    const double d = alpha - 1.0 / 3.0, c = 1.0 / std::sqrt(9.0 * d);
    for (;;) {
        const double z = g.Next();
        double v = 1.0 + c * z;
        if (v <= 0) continue;
        v = v * v * v;
        const double u = s.NextOpen();
        if (u < 1.0 - 0.0331 * z * z * z * z || std::log(u) < 0.5 * z * z + d * (1.0 - v + std::log(v)))
            return std::log(d * v) + boost;
        if (s.status() != kOk) return 0;
    }
}
double GammaDraw(USrc& s, GaussSrc& g, double alpha) { return std::exp(LogGammaDraw(s, g, alpha)); }

// Exact inversion from the mode outwards: subtracts the probabilities of
// mode, mode + 1, mode - 1, mode + 2, ... from u until it falls below zero.
// up(k) = p(k + 1) / p(k), down(k) = p(k - 1) / p(k).
template <class Up, class Down>
int64_t ModeSearch(double u, int64_t mode, double pmode, int64_t lo, int64_t hi, Up up, Down down) {
    u -= pmode;
    if (u < 0) return mode;
    int64_t kh = mode + 1, kl = mode - 1;
    double ph = mode < hi ? pmode * up(mode) : 0, pl = mode > lo ? pmode * down(mode) : 0;
    for (;;) {
        const bool hiOk = kh <= hi && ph > 0, loOk = kl >= lo && pl > 0;
        if (!hiOk && !loOk) return mode;  // only rounding residue is left
        if (hiOk) {
            u -= ph;
            if (u < 0) return kh;
            ph *= up(kh);
            ++kh;
        }
        if (loOk) {
            u -= pl;
            if (u < 0) return kl;
            pl *= down(kl);
            --kl;
        }
    }
}

double LogFact(double k) { return std::lgamma(k + 1.0); }

int64_t PoissonSmall(USrc& s, double lam) {
    const int64_t mode = int64_t(std::floor(lam));
    const double pm = std::exp(-lam + double(mode) * std::log(lam) - LogFact(double(mode)));
    return ModeSearch(
        s.Next(), mode, pm, 0, std::numeric_limits<int32_t>::max(), [lam](int64_t k) { return lam / double(k + 1); },
        [lam](int64_t k) { return double(k) / lam; });
}

// PTRS (Hoermann 1993), lambda >= 10.
int64_t PoissonPtrs(USrc& s, double lam) {
    const double slam = std::sqrt(lam), loglam = std::log(lam);
    const double b = 0.931 + 2.53 * slam, a = -0.059 + 0.02483 * b;
    const double invalpha = 1.1239 + 1.1328 / (b - 3.4), vr = 0.9277 - 3.6224 / (b - 2);
    for (;;) {
        const double U = s.Next() - 0.5, V = s.NextOpen();
        const double us = 0.5 - std::fabs(U);
        const double k = std::floor((2 * a / us + b) * U + lam + 0.43);
        if (us >= 0.07 && V <= vr) return int64_t(k);
        if (k < 0 || (us < 0.013 && V > us)) continue;
        if (std::log(V) + std::log(invalpha) - std::log(a / (us * us) + b) <= -lam + k * loglam - LogFact(k))
            return int64_t(k);
        if (s.status() != kOk) return 0;
    }
}

int64_t PoissonDraw(USrc& s, double lam) { return lam >= 10 ? PoissonPtrs(s, lam) : PoissonSmall(s, lam); }

int32_t Sat32(int64_t k) { return int32_t(std::min<int64_t>(k, std::numeric_limits<int32_t>::max())); }

// Binomial: Knuth's halving through beta draws while the count is large,
// then the mode search.
int64_t BinomialDraw(USrc& s, GaussSrc& g, int64_t n, double p) {
    int64_t k = 0;
    while (n > 2000 && p > 0 && p < 1) {
        const int64_t a = 1 + n / 2, b = n + 1 - a;
        const double lx = LogGammaDraw(s, g, double(a)), ly = LogGammaDraw(s, g, double(b));
        const double x = 1.0 / (1.0 + std::exp(ly - lx));
        if (x >= p) {
            n = a - 1;
            p /= x;
        } else {
            k += a;
            n = b - 1;
            p = (p - x) / (1 - x);
        }
    }
    if (n == 0 || p <= 0) return k;
    if (p >= 1) return k + n;
    const double q = 1 - p, pq = p / q, qp = q / p;
    const int64_t mode = std::min<int64_t>(n, int64_t(std::floor(double(n + 1) * p)));
    const double pm = std::exp(LogFact(double(n)) - LogFact(double(mode)) - LogFact(double(n - mode)) +
                               double(mode) * std::log(p) + double(n - mode) * std::log1p(-p));
    return k + ModeSearch(
                   s.Next(), mode, pm, 0, n, [=](int64_t j) { return double(n - j) / double(j + 1) * pq; },
                   [=](int64_t j) { return double(j) / double(n - j + 1) * qp; });
}

template <class F>
int ForEach(USrc& s, int32_t* r, int64_t n, F draw) {
    for (int64_t i = 0; i < n; ++i) r[i] = draw();
    return s.status();
}

// In-place transform of uniforms: r[i] = f(open uniform).
template <class F>
int MapOpen(USrc& s, double* r, int64_t n, F f) {
    s.Take(r, n);
    for (int64_t i = 0; i < n; ++i) r[i] = f(s.Open(r[i]));
    return s.status();
}

}  // namespace

int FillUniform(USrc& s, double* r, int64_t n, double a, double b) {
    if (!(a < b) || !std::isfinite(b - a)) return kErrBadArgs;
    // Chunk by chunk, so that the transform finds the draws in cache.
    const double w = b - a, top = Below(b, b);
    const bool unit = a == 0 && b == 1;
    for (int64_t i = 0; i < n; i += 4 * kBlock) {
        const int64_t m = std::min<int64_t>(4 * kBlock, n - i);
        double* c = r + i;
        s.Take(c, m);
        if (unit) continue;
        for (int64_t k = 0; k < m; ++k) {
            const double x = a + w * c[k];
            c[k] = x < b ? x : top;
        }
    }
    return s.status();
}

int FillGaussian(USrc& s, double* r, int64_t n, double mean, double sigma, int method) {
    if (!(sigma > 0) || !std::isfinite(mean) || !std::isfinite(sigma) || method < 0 || method > 2) return kErrBadArgs;
    double u[2 * kBlock], rad[kBlock], sn[kBlock], cs[kBlock];
    if (method == 2) {  // inverse distribution function
        for (int64_t i = 0; i < n; i += kBlock) {
            const int m = int(std::min<int64_t>(kBlock, n - i));
            s.Take(u, m);
            for (int k = 0; k < m; ++k) u[k] = s.Open(u[k]);
            NormalQuantiles(u, rad, m);
            for (int k = 0; k < m; ++k) r[i + k] = mean + sigma * rad[k];
        }
        return s.status();
    }
    const bool two = method == 1;
    const int64_t perBlock = two ? 2 * kBlock : kBlock;
    for (int64_t i = 0; i < n; i += perBlock) {
        const int64_t left = std::min<int64_t>(perBlock, n - i);
        const int m = int(two ? (left + 1) / 2 : left);  // pairs of uniforms
        s.Take(u, 2 * m);
        BoxMullerPass(u, m, rad, sn, cs);
        double* o = r + i;
        if (two) {
            const int full = int(left / 2);
            for (int k = 0; k < full; ++k) {
                o[2 * k] = mean + sigma * (rad[k] * sn[k]);
                o[2 * k + 1] = mean + sigma * (rad[k] * cs[k]);
            }
            if (left & 1) o[left - 1] = mean + sigma * (rad[full] * sn[full]);
        } else {
            for (int k = 0; k < m; ++k) o[k] = mean + sigma * (rad[k] * sn[k]);
        }
    }
    return s.status();
}

int FillExponential(USrc& s, double* r, int64_t n, double disp, double beta) {
    if (!(beta > 0) || !std::isfinite(disp) || !std::isfinite(beta)) return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) { return disp - beta * std::log(v); });
}

int FillLaplace(USrc& s, double* r, int64_t n, double a, double b) {
    if (!(b > 0) || !std::isfinite(a) || !std::isfinite(b)) return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) {
        return v < 0.5 ? a + b * std::log(2.0 * v) : a - b * std::log(2.0 * (1.0 - v));
    });
}

int FillWeibull(USrc& s, double* r, int64_t n, double alpha, double a, double b) {
    if (!(alpha > 0) || !(b > 0) || !std::isfinite(a) || !std::isfinite(b) || !std::isfinite(alpha))
        return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) { return a + b * std::pow(-std::log(v), 1.0 / alpha); });
}

int FillCauchy(USrc& s, double* r, int64_t n, double a, double b) {
    if (!(b > 0) || !std::isfinite(a) || !std::isfinite(b)) return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) { return a + b * std::tan(std::numbers::pi * (v - 0.5)); });
}

int FillRayleigh(USrc& s, double* r, int64_t n, double a, double b) {
    if (!(b > 0) || !std::isfinite(a) || !std::isfinite(b)) return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) { return a + b * std::sqrt(-std::log(v)); });
}

int FillGumbel(USrc& s, double* r, int64_t n, double a, double b) {
    if (!(b > 0) || !std::isfinite(a) || !std::isfinite(b)) return kErrBadArgs;
    return MapOpen(s, r, n, [=](double v) { return a + b * std::log(-std::log(v)); });
}

int FillLogNormal(USrc& s, double* r, int64_t n, double a, double sigma, double b, double beta) {
    if (!(sigma > 0) || !(beta > 0) || !std::isfinite(a) || !std::isfinite(b) || !std::isfinite(beta))
        return kErrBadArgs;
    const int st = FillGaussian(s, r, n, a, sigma, 1);
    for (int64_t i = 0; i < n; ++i) r[i] = b + beta * std::exp(r[i]);
    return st;
}

int FillGamma(USrc& s, double* r, int64_t n, double alpha, double a, double b) {
    if (!(alpha > 0) || !(b > 0) || !std::isfinite(alpha) || !std::isfinite(a) || !std::isfinite(b))
        return kErrBadArgs;
    GaussSrc g{s};
    for (int64_t i = 0; i < n; ++i) r[i] = a + b * GammaDraw(s, g, alpha);
    return s.status();
}

int FillBeta(USrc& s, double* r, int64_t n, double p, double q, double a, double beta) {
    if (!(p > 0) || !(q > 0) || !(beta > 0) || !std::isfinite(p) || !std::isfinite(q) || !std::isfinite(a) ||
        !std::isfinite(beta))
        return kErrBadArgs;
    GaussSrc g{s};
    for (int64_t i = 0; i < n; ++i) {
        const double lx = LogGammaDraw(s, g, p), ly = LogGammaDraw(s, g, q);
        r[i] = a + beta * (1.0 / (1.0 + std::exp(ly - lx)));
    }
    return s.status();
}

int FillUniformI(USrc& s, int32_t* r, int64_t n, int32_t a, int32_t b) {
    if (!(a < b)) return kErrBadArgs;
    const double w = double(int64_t(b) - a);
    double u[kBlock];
    for (int64_t i = 0; i < n; i += kBlock) {
        const int m = int(std::min<int64_t>(kBlock, n - i));
        s.Take(u, m);
        for (int k = 0; k < m; ++k) r[i + k] = int32_t(std::min<int64_t>(b - 1, a + int64_t(w * u[k])));
    }
    return s.status();
}

int FillBits32(USrc& s, uint32_t* r, int64_t n) {
    if (s.engine().Full32()) return s.engine().Bits(r, n);
    double u[kBlock];
    for (int64_t i = 0; i < n; i += kBlock) {
        const int m = int(std::min<int64_t>(kBlock, n - i));
        s.Take(u, m);
        for (int k = 0; k < m; ++k) r[i + k] = uint32_t(u[k] * 0x1p32);
    }
    return s.status();
}

int FillBernoulli(USrc& s, int32_t* r, int64_t n, double p) {
    if (!(p >= 0 && p <= 1)) return kErrBadArgs;
    return ForEach(s, r, n, [&] { return s.Next() < p ? 1 : 0; });
}

int FillGeometric(USrc& s, int32_t* r, int64_t n, double p) {
    if (!(p > 0 && p <= 1)) return kErrBadArgs;
    if (p == 1) return ForEach(s, r, n, [&] { return 0; });
    const double lq = std::log1p(-p);
    return ForEach(s, r, n, [&] {
        const double k = std::floor(std::log(s.NextOpen()) / lq);
        return k < 2147483647.0 ? int32_t(k) : std::numeric_limits<int32_t>::max();
    });
}

int FillBinomial(USrc& s, int32_t* r, int64_t n, int32_t ntrial, double p) {
    if (ntrial < 0 || !(p >= 0 && p <= 1)) return kErrBadArgs;
    GaussSrc g{s};
    const bool flip = p > 0.5;  // draw the rarer outcome
    const double pp = flip ? 1 - p : p;
    return ForEach(s, r, n, [&] {
        const int64_t k = BinomialDraw(s, g, ntrial, pp);
        return int32_t(flip ? ntrial - k : k);
    });
}

int FillHypergeometric(USrc& s, int32_t* r, int64_t n, int32_t l, int32_t ss, int32_t m) {
    if (l < 0 || ss < 0 || m < 0 || ss > l || m > l) return kErrBadArgs;
    const int64_t L = l, S = ss, M = m;
    const int64_t lo = std::max<int64_t>(0, S + M - L), hi = std::min(S, M);
    const int64_t mode = std::clamp<int64_t>(int64_t(std::floor(double(S + 1) * double(M + 1) / double(L + 2))), lo, hi);
    auto lc = [](double a, double b) { return LogFact(a) - LogFact(b) - LogFact(a - b); };
    const double pm = std::exp(lc(double(M), double(mode)) + lc(double(L - M), double(S - mode)) - lc(double(L), double(S)));
    auto up = [=](int64_t k) { return double(M - k) * double(S - k) / (double(k + 1) * double(L - M - S + k + 1)); };
    auto down = [=](int64_t k) { return double(k) * double(L - M - S + k) / (double(M - k + 1) * double(S - k + 1)); };
    return ForEach(s, r, n, [&] { return int32_t(ModeSearch(s.Next(), mode, pm, lo, hi, up, down)); });
}

int FillPoisson(USrc& s, int32_t* r, int64_t n, double lambda, int method) {
    if (!(lambda > 0) || !std::isfinite(lambda) || lambda > 1e9 || method < 0 || method > 1) return kErrBadArgs;
    if (method == 1 && lambda >= 1) {
        GaussSrc g{s};
        const double sl = std::sqrt(lambda);
        return ForEach(s, r, n, [&] {
            const double x = std::floor(lambda + sl * g.Next() + 0.5);
            return x > 0 ? int32_t(x) : 0;
        });
    }
    return ForEach(s, r, n, [&] { return Sat32(PoissonDraw(s, lambda)); });
}

int FillPoissonV(USrc& s, int32_t* r, int64_t n, const double* lambdas) {
    for (int64_t i = 0; i < n; ++i)
        if (!(lambdas[i] > 0) || !(lambdas[i] <= 1e9)) return kErrBadArgs;
    for (int64_t i = 0; i < n; ++i) r[i] = Sat32(PoissonDraw(s, lambdas[i]));
    return s.status();
}

int FillNegbinomial(USrc& s, int32_t* r, int64_t n, double a, double p) {
    if (!(a > 0) || !std::isfinite(a) || !(p > 0 && p < 1)) return kErrBadArgs;
    GaussSrc g{s};
    const double scale = (1 - p) / p;
    return ForEach(s, r, n, [&] {
        const double lam = GammaDraw(s, g, a) * scale;
        if (!(lam > 0)) return 0;
        if (lam > 1e9) return std::numeric_limits<int32_t>::max();
        return Sat32(PoissonDraw(s, lam));
    });
}

int FillMultinomial(USrc& s, int32_t* r, int64_t nvec, int32_t ntrial, int32_t k, const double* p) {
    if (ntrial < 0 || k < 1) return kErrBadArgs;
    double sum = 0;
    for (int j = 0; j < k; ++j) {
        if (!(p[j] >= 0 && p[j] <= 1)) return kErrMultinomialProb;
        sum += p[j];
    }
    if (!(std::fabs(sum - 1.0) <= 1e-7)) return kErrMultinomialProb;
    GaussSrc g{s};
    for (int64_t v = 0; v < nvec; ++v) {
        int32_t* o = r + v * k;
        int64_t left = ntrial;
        double rest = sum;
        for (int j = 0; j < k - 1; ++j) {
            const double pj = rest > 0 ? std::clamp(p[j] / rest, 0.0, 1.0) : 0.0;
            const int64_t x = left > 0 ? (pj > 0.5 ? left - BinomialDraw(s, g, left, 1 - pj) : BinomialDraw(s, g, left, pj)) : 0;
            o[j] = int32_t(x);
            left -= x;
            rest -= p[j];
        }
        o[k - 1] = int32_t(left);
    }
    return s.status();
}

int FillGaussianMV(USrc& s, double* r, int64_t rows, int d, const double* mean, const double* t, int method) {
    std::vector<double> z(static_cast<size_t>(d));
    for (int64_t i = 0; i < rows; ++i) {
        if (int st = FillGaussian(s, z.data(), d, 0.0, 1.0, method); st != kOk) return st;
        double* o = r + i * d;
        for (int a = 0; a < d; ++a) {
            double acc = mean[a];
            for (int b = 0; b <= a; ++b) acc += t[a * d + b] * z[size_t(b)];
            o[a] = acc;
        }
    }
    return s.status();
}

}  // namespace rovane::rng
