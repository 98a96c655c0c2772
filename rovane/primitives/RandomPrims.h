// Random fills from a caller-held 32-bit seed, and the process-wide source of
// fresh seeds.
//
// The generator. A seed value is the whole state: a 32-bit linear congruential
// step of full period 2^32,
//     s := s * 747796405 + 2891336453   (mod 2^32),
// whose new state is spread to 64 bits and passed through the SplitMix64
// finaliser,
//     z := s * 0x9E3779B97F4A7C15       (mod 2^64)
//     z := (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9
//     z := (z ^ (z >> 27)) * 0x94D049BB133111EB
//     z :=  z ^ (z >> 31).
// A double uniform on [0, 1) is (z >> 11) * 2^-53, a single one
// (z >> 40) * 2^-24: the single stream is the double stream cut to 24 bits.
// Only integer arithmetic decides the stream, so it is the same on every
// machine and standard library. After a fill the caller's seed holds the state after
// the last step, so a second call continues the stream.
//
// Uniform: element = u * (high - low) + low, in the element's precision.
// Gauss: the polar form of Box and Muller. u and v are uniform on [-1, 1)
// (2 * draw - 1), s = u^2 + v^2, drawn again while s >= 1 or s == 0; then
// f = sqrt(-2 ln(s) / s) and the pair gives the two deviates u * f and v * f.
// The first goes to the element, the second is kept for the next element of
// the same fill; element = mean + stdDev * deviate.
//
// Complex data are filled through the real run of twice the length. Arguments
// follow the _Idx shape (destination, index, length); a length below zero
// returns ippStsSizeErr, a null destination with a positive length
// ippStsNullPtrErr, and neither touches its seed argument. The routines keep no state
// of their own: two threads may fill with their own seeds at once.
#pragma once

#include "rovane/primitives/ippspl_core.h"
#include "rovane/primitives/PrimShapes.h"

namespace rovane {

#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Random.def"
#undef ROVANE_TWIN

// A fresh seed in 0 .. 2147483647 from the process-wide generator: a uniform
// draw on [0, 1) times 2147483647, rounded. That generator is seeded once per
// process from the clock and the system's entropy source, and is safe to call
// from several threads.
ROVANE_API uint32_t NewRandomSeed();

}  // namespace rovane
