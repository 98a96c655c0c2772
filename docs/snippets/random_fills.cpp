// One stream fills containers from its distributions; the size of the
// container gives the count, and each fill goes on where the last stopped.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>

using namespace rovane;

int main() {
    TRngStream s;
    s.NewStream(RngCode(rgSFMT19937), 42);   // generator code and seed
    TVec x;
    x.Size(1000000);
    s.RandomGaussian(x, 0.0, 1.0);           // the size of x gives the count
    const double mean = x.Mean(), sd = x.StdDev();
    s.RandomUniform(x, -1.0, 1.0);           // the stream goes on where it stopped

    std::printf("normal: mean %.4f, deviation %.4f\n", mean, sd);
    if (std::fabs(mean) > 0.01 || std::fabs(sd - 1) > 0.01) return 1;
    if (x.Min() < -1.0 || x.Max() >= 1.0 || std::fabs(x.Mean()) > 0.01) return 2;

    // A second stream with the same seed that skips the normal fill gives
    // the same uniform numbers.
    TRngStream t;
    t.NewStream(RngCode(rgSFMT19937), 42);
    TVec skipped, y;
    skipped.Size(1000000);
    y.Size(1000000);
    t.RandomGaussian(skipped, 0.0, 1.0);
    t.RandomUniform(y, -1.0, 1.0);
    for (int32_t i = 0; i < y.Length(); ++i)
        if (x[i] != y[i]) return 3;
    return 0;
}
