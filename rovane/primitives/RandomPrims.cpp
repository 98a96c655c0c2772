// Random fills from a caller-held seed: the generator is told in RandomPrims.h.
// Uniform and Gaussian fills are written once over the element type.
#include "rovane/primitives/RandomPrims.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <random>

namespace rovane {

namespace {

// SplitMix64 finaliser: every input bit reaches every output bit.
constexpr uint64_t Mix64(uint64_t z) {
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

// The 32-bit state and its draws.
class TSeedStream {
public:
    explicit TSeedStream(uint32_t seed) : fState(seed) {}
    uint32_t State() const { return fState; }

    // A uniform draw on [0, 1) with the full precision of F.
    template <class F>
    F Next() {
        fState = fState * 747796405u + 2891336453u;
        const uint64_t z = Mix64(static_cast<uint64_t>(fState) * 0x9E3779B97F4A7C15ull);
        if constexpr (std::is_same_v<F, double>)
            return static_cast<double>(z >> 11) * 0x1p-53;
        else
            return static_cast<float>(z >> 40) * 0x1p-24f;
    }

private:
    uint32_t fState;
};

// These fills are scalar loops outside the kernel tables on purpose: every
// draw moves the one 32-bit state forward, the value handed back to the
// caller is that state after the last draw, and the Gaussian fill throws
// away rejected pairs. Vector lanes would give a different sequence.
template <class F>
IppStatus RandUniform(F* d, int32_t dIndex, int32_t len, uint32_t& seed, F low, F high) {
    if (len < 0) return ippStsSizeErr;
    if (len == 0) return ippStsNoErr;
    if (d == nullptr) return ippStsNullPtrErr;
    TSeedStream s(seed);
    const F width = high - low;
    d += dIndex;
    for (int32_t i = 0; i < len; ++i) d[i] = s.template Next<F>() * width + low;
    seed = s.State();
    return ippStsNoErr;
}

template <class F>
IppStatus RandGauss(F* d, int32_t dIndex, int32_t len, uint32_t& seed, F mean, F stdDev) {
    if (len < 0) return ippStsSizeErr;
    if (len == 0) return ippStsNoErr;
    if (d == nullptr) return ippStsNullPtrErr;
    TSeedStream s(seed);
    d += dIndex;
    F spare = 0;
    bool haveSpare = false;
    for (int32_t i = 0; i < len; ++i) {
        if (haveSpare) {
            d[i] = mean + stdDev * spare;
            haveSpare = false;
            continue;
        }
        F u, v, r;
        do {
            u = F(2) * s.template Next<F>() - F(1);
            v = F(2) * s.template Next<F>() - F(1);
            r = u * u + v * v;
        } while (r >= F(1) || r == F(0));
        const F f = std::sqrt(F(-2) * std::log(r) / r);
        d[i] = mean + stdDev * (u * f);
        spare = v * f;
        haveSpare = true;
    }
    seed = s.State();
    return ippStsNoErr;
}

}  // namespace

IppStatus ippsRandUniform_Directd_Idx(double* d, int32_t dIndex, int32_t len, uint32_t& seed, double low,
                                      double high) {
    return RandUniform(d, dIndex, len, seed, low, high);
}
IppStatus sippsRandUniform_Directd_Idx(float* d, int32_t dIndex, int32_t len, uint32_t& seed, float low, float high) {
    return RandUniform(d, dIndex, len, seed, low, high);
}
IppStatus ippsRandGauss_Directd_Idx(double* d, int32_t dIndex, int32_t len, uint32_t& seed, double mean,
                                    double stdDev) {
    return RandGauss(d, dIndex, len, seed, mean, stdDev);
}
IppStatus sippsRandGauss_Directd_Idx(float* d, int32_t dIndex, int32_t len, uint32_t& seed, float mean,
                                     float stdDev) {
    return RandGauss(d, dIndex, len, seed, mean, stdDev);
}

uint32_t NewRandomSeed() {
    // A Weyl sequence over 64 bits through the same finaliser; the atomic
    // step makes concurrent callers take distinct positions.
    static std::atomic<uint64_t> position{[] {
        std::random_device entropy;
        const uint64_t clock = static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        return Mix64((static_cast<uint64_t>(entropy()) << 32 ^ entropy()) ^ clock);
    }()};
    constexpr uint64_t gamma = 0x9E3779B97F4A7C15ull;
    const uint64_t z = Mix64(position.fetch_add(gamma, std::memory_order_relaxed) + gamma);
    const double u = static_cast<double>(z >> 11) * 0x1p-53;
    return static_cast<uint32_t>(std::llround(u * 2147483647.0));
}

}  // namespace rovane
