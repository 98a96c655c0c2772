// Random streams: one stream per thread from a block-split generator, a
// saved state that a later run continues, and a leapfrog check.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <thread>
#include <vector>

using namespace rovane;

int main() {
    // Four streams of Philox4x32-10, each starting one million elements after
    // its neighbour: independent for any run that draws fewer per stream.
    TRandomGenerator gen;
    gen.SetStreamIndependence(rsiBlockSplitting);
    gen.SetBlockStep(1000000);
    gen.SetStreamCount(4);
    gen.Init(rgPHILOX4X32X10, 2024);

    // One thread per stream; each fills its own vector.
    std::vector<TVec> parts(4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            parts[size_t(i)].Size(100000);
            gen.Stream(i).RandomGaussian(parts[size_t(i)], 0.0, 1.0, grmBoxMuller2);
        });
    for (auto& t : threads) t.join();
    double sum = 0, sq = 0;
    for (const TVec& v : parts)
        for (int32_t k = 0; k < v.Length(); ++k) {
            sum += v[k];
            sq += v[k] * v[k];
        }
    const double n = 400000, mean = sum / n, sd = std::sqrt(sq / n - mean * mean);
    std::printf("mean %.4f  standard deviation %.4f\n", mean, sd);
    if (std::fabs(mean) > 0.01 || std::fabs(sd - 1) > 0.01) return 1;

    // Save the state, draw, load it back, draw again: the same numbers.
    std::stringstream saved;
    gen.SaveToStream(saved);
    TVec a, b;
    a.Size(10);
    b.Size(10);
    gen.Stream(0).RandomUniform(a, 0.0, 1.0);
    TRandomGenerator again;
    again.LoadFromStream(saved);
    again.Stream(0).RandomUniform(b, 0.0, 1.0);
    for (int32_t k = 0; k < 10; ++k)
        if (a[k] != b[k]) return 2;

    // Integer fills: Poisson counts into a 32-bit integer vector.
    TVecInt counts;
    counts.Size(1000);
    again.Stream(1).RandomPoisson(counts, 3.5, prmPTPE);

    // A leapfrog over 3 streams: stream 1 takes elements 1, 4, 7, ... of the
    // sequence of a single stream with the same seed.
    TRngStream whole;
    whole.NewStream(RngCode(rgMCG59), 7);
    std::vector<double> all(30);
    whole.RandomUniform(all.data(), 30, 0.0, 1.0);
    TRngStream part;
    part.NewStream(RngCode(rgMCG59), 7);
    part.Leapfrog(1, 3);
    std::vector<double> mine(10);
    part.RandomUniform(mine.data(), 10, 0.0, 1.0);
    for (int k = 0; k < 10; ++k)
        if (mine[size_t(k)] != all[size_t(3 * k + 1)]) return 3;

    // A generator that cannot leapfrog says so.
    try {
        TRngStream mt;
        mt.NewStream(RngCode(rgMT19937), 1);
        mt.Leapfrog(0, 2);
        return 4;
    } catch (const ERovaneException& e) {
        std::printf("%s\n", e.what());  // BRNG does not support Leapfrog method.
    }
    return 0;
}
