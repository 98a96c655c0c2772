// A short tour of what Rovane can do so far.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>

int main() {
    using namespace rovane;
    std::printf("Rovane demo\n\n");

    std::printf("Constants\n  PI = %s, LN2 = %s, MACHEP = %s, NAN_ is %s\n", SampleToStr(PI).c_str(),
                SampleToStr(LN2).c_str(), SampleToStr(MACHEP).c_str(), std::signbit(NAN_) ? "negative" : "positive");

    const TCplx a(3, 4), b(1, -2);
    std::printf("\nComplex arithmetic\n  (3+4i)*(1-2i) = %s\n  (3+4i)/(1-2i) = %s\n  CSqrt(-4) = %s\n",
                CplxToStr(a * b).c_str(), CplxToStr(a / b).c_str(), CplxToStr(CSqrt(TCplx(-4, 0))).c_str());
    std::printf("  Equal(NaN, NaN) = %d, Equal(Inf, -Inf) = %d\n", Equal(NAN_, NAN_), Equal(INF, -INF));

    std::printf("\nSpecial functions\n  Gamma(0.5) = %s (sqrt(pi) = %s)\n  Erf(1) = %s, ErfInv(Erf(0.5)) = %s\n",
                SampleToStr(Gamma(0.5)).c_str(), SampleToStr(SQRTPI).c_str(), SampleToStr(Erf(1.0)).c_str(),
                SampleToStr(ErfInv(Erf(0.5))).c_str());
    std::printf("  IGamma(2, 3) = %s, BesselJ0(2+i) = %s\n  30! = %s, 171! = %s\n", SampleToStr(IGamma(2.0, 3.0)).c_str(),
                CplxToStr(BesselJ0(TCplx(2, 1))).c_str(), SampleToStr(Fact(30)).c_str(), SampleToStr(Fact(171)).c_str());

    std::printf("\nNumber text\n  FormatSample(\"#,##0.00\", 1234567.891) = %s\n", FormatSample("#,##0.00", 1234567.891).c_str());
    std::printf("  FormatCplx(2-3i, \"0.0\", \"+0.0i;-0.0i\") = %s\n", FormatCplx(TCplx(2, -3), "0.0", "+0.0i;-0.0i").c_str());
    const TCplx parsed = StrToCplx("1e-3+2i");
    std::printf("  StrToCplx(\"1e-3+2i\") = (%g, %g), StrToVal(\"-INF\") = %s\n", parsed.Re, parsed.Im,
                SampleToStr(StrToVal("-INF")).c_str());

    std::printf("\nFormulas with records\n");
    const Vector x = {1, 2, 3, 4};
    Vector y;
    y.SetCplx({10, 1, 20, 2, 30, 3, 40, 4});
    const Vector z = x + y;  // a real and a complex operand give a complex result
    std::printf("  [1 2 3 4] + [10+1i ...] = %s, %s, ... (complex: %d)\n", CplxToStr(z.Firstc()).c_str(),
                CplxToStr(z.Lastc()).c_str(), z.Complex());
    const Vector t = {0.0, 0.5, 1.0};
    const Vector f = Sin(t) * 2.0 + 1.0;  // one object from the cache, the rest in place
    std::printf("  Sin([0 0.5 1])*2 + 1 = %g %g %g\n", f[0], f[1], f[2]);
    const Matrix m({{1, 2}, {3, 4}});
    const Matrix p = m * m;  // element by element; the matrix product is Mul
    std::printf("  [[1 2] [3 4]] * itself, elementwise = %g %g %g %g; all below 17: %d\n", p[0], p[1], p[2], p[3],
                p < 17.0);

    std::printf("\nContainers\n");
    TVec v;
    v.SetIt({1, 2, 3, 4});
    v.SetSubRange(1, 2);  // a view of elements 1 and 2, no copy
    v.Add(100.0);
    v.SetFullRange();
    const TVec& cv = v;
    std::printf("  after adding 100 to the sub-range [1, 2]: %g %g %g %g\n", cv[0], cv[1], cv[2], cv[3]);

    std::printf("\nElementwise math\n");
    Vector w;
    w.SetCplx({0, PI, 1, 2});
    const Vector e = Exp(w);  // composed on split parts: exp(x) (cos y + i sin y)
    std::printf("  Exp(0+pi i) = %s, Exp(1+2i) = %s\n", CplxToStr(e.Firstc()).c_str(), CplxToStr(e.Lastc()).c_str());
    std::printf("  ArcSin(1+2i) = %s\n", CplxToStr(ArcSin(w).Lastc()).c_str());
    const Vector r = Round(Vector{-2.5, -0.5, 0.5, 1.5, 2.5});  // halves to even
    std::printf("  Round(-2.5 -0.5 0.5 1.5 2.5) = %g %g %g %g %g\n", r[0], r[1], r[2], r[3], r[4]);
    Vector u(2);
    u.RandUniform(42u, 0, 1);
    std::printf("  RandUniform(seed 42): %.6f %.6f ... (the same on every machine)\n", u.Values(0), u.Values(1));
    return 0;
}
