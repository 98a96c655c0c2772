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

    std::printf("\nContainers\n");
    TVec x, y, z;
    x.SetIt({1, 2, 3, 4});
    y.SetCplx({10, 1, 20, 2, 30, 3, 40, 4});
    z.Add(x, y);  // a real and a complex operand give a complex result
    std::printf("  [1 2 3 4] + [10+1i ...] = %s, %s, ... (complex: %d)\n", CplxToStr(z.Firstc()).c_str(),
                CplxToStr(z.Lastc()).c_str(), z.Complex());
    x.SetSubRange(1, 2);  // a view of elements 1 and 2, no copy
    x.Add(100.0);
    x.SetFullRange();
    const TVec& cx = x;
    std::printf("  after adding 100 to the sub-range [1, 2]: %g %g %g %g\n", cx[0], cx[1], cx[2], cx[3]);

    std::printf("\nElementwise math\n");
    TVec w, s;
    w.SetCplx({0, PI, 1, 2});
    s.Exp(w);  // composed on split parts: exp(x) (cos y + i sin y)
    std::printf("  Exp(0+pi i) = %s, Exp(1+2i) = %s\n", CplxToStr(s.Firstc()).c_str(), CplxToStr(s.Lastc()).c_str());
    s.ArcSin(w);
    std::printf("  ArcSin(1+2i) = %s\n", CplxToStr(s.Lastc()).c_str());
    TVec r;
    r.SetIt({-2.5, -0.5, 0.5, 1.5, 2.5});
    r.Round();  // halves to even
    const TVec& cr = r;
    std::printf("  Round(-2.5 -0.5 0.5 1.5 2.5) = %g %g %g %g %g\n", cr[0], cr[1], cr[2], cr[3], cr[4]);
    r.RandUniform(42u, 0, 1);
    std::printf("  RandUniform(seed 42): %.6f %.6f ... (the same on every machine)\n", cr[0], cr[1]);
    return 0;
}
