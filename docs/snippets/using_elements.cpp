// Element access: x[i] on a non-const vector is a proxy object.
#include <rovane/Rovane.h>

#include <cstdio>

using namespace rovane;

int main() {
    TVec x;
    x.SetIt({1.5, 2.5, 3.5});

    x[0] = 10;                            // writes through the proxy
    double first = x[0];                  // reads: converts to double
    std::printf("%g\n", double(x[1]));    // printf needs the conversion spelled out
    auto p = x[2];                        // p is a proxy, not a copy ...
    p = 7;                                // ... so this writes x[2]

    const TVec& cx = x;                   // a const vector gives plain doubles
    const double last = cx[2];

    TVec z;
    z.SetCplx({1, 2, 3, 4});              // complex data: x[i] walks the interleaved parts
    const TVec& cz = z;
    const bool parts = cz[0] == 1 && cz[1] == 2 && cz[2] == 3 && cz[3] == 4 && z.Lastc() == TCplx(3, 4);

    return first == 10 && last == 7 && parts ? 0 : 1;
}
