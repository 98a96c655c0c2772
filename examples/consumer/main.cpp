// Smallest program against the installed Rovane: exits 0 when the library
// loads, starts and computes (scalars, a container, a BLAS-backed member).
#include <rovane/Rovane.h>

#include <cstdio>

int main() {
    using namespace rovane;
    const TCplx z = TCplx(3, 4) * TCplx(1, -2);
    if (!Equal(z, TCplx(11, -2)) || ScalarsInitCount() < 1) return 1;
    TVec x, y;
    x.SetIt({1, 2, 3});
    y.SetIt({1, 1, 1});
    y.AddScaled(x, 2.0);  // y += 2 x
    const TVec& r = y;
    if (r[0] != 3 || r[1] != 5 || r[2] != 7) return 1;
    std::printf("consumer: (%g, %g), [%g %g %g]\n", z.Re, z.Im, r[0], r[1], r[2]);
    return 0;
}
