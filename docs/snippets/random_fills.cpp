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
    s.RandomUniform(x, -1.0, 1.0);           // the stream goes on where it stopped
    if (x.Min() < -1.0 || x.Max() >= 1.0 || std::fabs(x.Mean()) > 0.01) return 1;

    // A second stream with the same seed and the same fills: the normal
    // numbers, and then the same uniform numbers as x.
    TRngStream t;
    t.NewStream(RngCode(rgSFMT19937), 42);
    TVec g, y;
    g.Size(1000000);
    y.Size(1000000);
    t.RandomGaussian(g, 0.0, 1.0);
    const double mean = g.Mean(), sd = g.StdDev();
    std::printf("normal: mean %.4f, deviation %.4f\n", mean, sd);
    if (std::fabs(mean) > 0.01 || std::fabs(sd - 1) > 0.01) return 2;
    t.RandomUniform(y, -1.0, 1.0);
    for (int32_t i = 0; i < y.Length(); ++i)
        if (x[i] != y[i]) return 3;
    return 0;
}
