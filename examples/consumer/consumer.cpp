// Smallest program against the installed Rovane: exits 0 when the library
// loads, starts and computes.
#include <rovane/Rovane.h>

#include <cstdio>

int main() {
    using namespace rovane;
    const TCplx z = TCplx(3, 4) * TCplx(1, -2);
    if (!Equal(z, TCplx(11, -2)) || ScalarsInitCount() < 1) return 1;
    std::printf("consumer: (%g, %g)\n", z.Re, z.Im);
    return 0;
}
