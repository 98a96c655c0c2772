// Known answers of the basic generators from their published references,
// the counter-based block functions against the Random123 headers, and the
// structure of the quasi-random sequences.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "rovane/methods/RngEngine.h"

// The Random123 headers are the reference of the counter-based generators.
// Their ARS needs AES-NI enabled at compile time; the function that calls it
// runs only where the processor has it.
#define R123_USE_AES_NI 1
#include <Random123/philox.h>
#pragma GCC push_options
#pragma GCC target("aes,sse4.1")
#include <Random123/ars.h>
namespace {
void ReferenceArs5(const uint32_t ctr[4], const uint32_t key[4], uint32_t out[4]) {
    r123::ARS4x32_R<5> ref;
    const r123::ARS4x32_R<5>::ctr_type c = {{ctr[0], ctr[1], ctr[2], ctr[3]}};
    const r123::ARS4x32_R<5>::ukey_type uk = {{key[0], key[1], key[2], key[3]}};
    const auto o = ref(c, r123::ARS4x32_R<5>::key_type(uk));
    std::memcpy(out, o.v, 16);
}
}  // namespace
#pragma GCC pop_options

using namespace rovane;

namespace {

std::vector<uint32_t> Bits(int32_t code, uint32_t seed, int n) {
    TRngStream s;
    s.NewStream(code, seed);
    TVecInt v;
    v.Size(n);
    s.RandomUniformBitsI(v);
    return std::vector<uint32_t>(reinterpret_cast<uint32_t*>(v.IValues), reinterpret_cast<uint32_t*>(v.IValues) + n);
}

std::vector<double> Uniform(TRngStream& s, int n) {
    std::vector<double> r(static_cast<size_t>(n));
    s.RandomUniform(r.data(), n, 0.0, 1.0);
    return r;
}

}  // namespace

TEST(Generators, MT19937KnownAnswerAndStandardEngine) {
    // The 10000th output from the default seed 5489 is the published check value.
    EXPECT_EQ(Bits(RngCode(rgMT19937), 5489, 10000).back(), 4123659995u);
    std::mt19937 ref(20240611u);
    const auto ours = Bits(RngCode(rgMT19937), 20240611u, 3000);
    for (uint32_t v : ours) ASSERT_EQ(v, ref());
}

TEST(Generators, SFMT19937KnownAnswer) {
    // First outputs of init_gen_rand(1234) in the authors' reference output.
    const auto v = Bits(RngCode(rgSFMT19937), 1234, 5);
    EXPECT_EQ(v, (std::vector<uint32_t>{3440181298u, 1564997079u, 1510669302u, 2930277156u, 1452439940u}));
}

TEST(Generators, PhiloxKnownAnswersAndReferenceHeader) {
    struct Kat {
        uint32_t ctr[4], key[2], out[4];
    };
    const Kat kats[] = {
        {{0, 0, 0, 0}, {0, 0}, {0x6627e8d5u, 0xe169c58du, 0xbc57ac4cu, 0x9b00dbd8u}},
        {{~0u, ~0u, ~0u, ~0u}, {~0u, ~0u}, {0x408f276du, 0x41c83b0eu, 0xa20bc7c6u, 0x6d5451fdu}},
        {{0x243f6a88u, 0x85a308d3u, 0x13198a2eu, 0x03707344u},
         {0xa4093822u, 0x299f31d0u},
         {0xd16cfe09u, 0x94fdccebu, 0x5001e420u, 0x24126ea1u}},
    };
    for (const Kat& k : kats) {
        uint32_t out[4];
        rng::Philox4x32x10(k.ctr, k.key, out);
        EXPECT_EQ(std::vector<uint32_t>(out, out + 4), std::vector<uint32_t>(k.out, k.out + 4));
    }
    // The stream: key (seed, 0), counter 0, 1, ... as a 128-bit number; the
    // lane-parallel fill against the header block by block, across a carry
    // of the low counter word.
    r123::Philox4x32 ref;
    const auto v = Bits(RngCode(rgPHILOX4X32X10), 77, 4 * 70 + 3);
    for (uint32_t b = 0; b < 71; ++b) {
        const r123::Philox4x32::ctr_type c = {{b, 0, 0, 0}};
        const r123::Philox4x32::key_type key = {{77, 0}};
        const auto o = ref(c, key);
        for (int w = 0; w < 4 && 4 * b + w < v.size(); ++w) ASSERT_EQ(v[4 * b + w], o.v[w]) << b;
    }
}

TEST(Generators, ArsPortableRoundMatchesHardwareAndReference) {
    std::mt19937 g(5);
    for (int t = 0; t < 200; ++t) {
        uint32_t ctr[4], key[4], a[4], b[4];
        for (auto& x : ctr) x = g();
        for (auto& x : key) x = g();
        rng::Ars5Portable(ctr, key, a);
        if (!rng::CpuHasAes()) continue;
        ASSERT_TRUE(rng::Ars5Hardware(ctr, key, b));
        ASSERT_EQ(0, std::memcmp(a, b, sizeof a));
        ReferenceArs5(ctr, key, b);
        ASSERT_EQ(0, std::memcmp(a, b, sizeof a));
    }
    // Stream layout: key (seed, 0, 0, 0), counters 0, 1, 2, ...
    const auto v = Bits(RngCode(rgARS5), 9, 12);
    for (uint32_t blk = 0; blk < 3; ++blk) {
        const uint32_t ctr[4] = {blk, 0, 0, 0}, key[4] = {9, 0, 0, 0};
        uint32_t o[4];
        rng::Ars5Portable(ctr, key, o);
        for (int w = 0; w < 4; ++w) EXPECT_EQ(v[4 * blk + w], o[w]);
    }
}

TEST(Generators, MRG32k3aKnownValueLanesAndSkip) {
    // Seed 12345 in all six words: by the recurrences, x_1 = 592852 * 12345
    // mod m1 = 3023790853 and y_1 = -842977 * 12345 mod m2 = 2478282264, so
    // the first output is z_1 = 545508589.
    TRngStream s;
    const uint32_t seeds[6] = {12345, 12345, 12345, 12345, 12345, 12345};
    s.NewStream(RngCode(rgMRG32K3A), seeds);
    TVecInt z;
    z.Size(1);
    s.RandomUniformBitsI(z);
    EXPECT_EQ(z.IValues[0], 545508589);
    // A long fill runs in lanes; element by element it must give the same.
    TRngStream a, b;
    a.NewStream(RngCode(rgMRG32K3A), 42);
    b.Copy(a);
    const auto longFill = Uniform(a, 5000);
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(Uniform(b, 1)[0], longFill[size_t(i)]) << i;
    TRngStream c;
    c.NewStream(RngCode(rgMRG32K3A), 42);
    c.SkipAhead(4321);
    EXPECT_EQ(Uniform(c, 1)[0], longFill[4321]);
}

TEST(Generators, RecurrencesOfTheCongruentialAndShiftRegisterGenerators) {
    // MCG31m1: x_{n+1} = 1132489760 x_n mod (2^31 - 1), first from the seed.
    auto x = Bits(RngCode(rgMCG31), 7, 100);
    EXPECT_EQ(x[0], uint32_t(uint64_t(7) * 1132489760u % 2147483647u));
    for (size_t i = 1; i < x.size(); ++i) ASSERT_EQ(x[i], uint32_t(uint64_t(x[i - 1]) * 1132489760u % 2147483647u));
    // MCG59: u * 2^59 is the state, x_{n+1} = 13^13 x_n mod 2^59.
    TRngStream s;
    s.NewStream(RngCode(rgMCG59), 3);
    const auto u = Uniform(s, 50);
    uint64_t st = 3;
    for (double v : u) {
        st = st * 302875106592253ull & ((uint64_t(1) << 59) - 1);
        ASSERT_EQ(v, double(st) * 0x1p-59);
    }
    // R250: x_n = x_{n-103} xor x_{n-250}.
    x = Bits(RngCode(rgR250), 11, 2000);
    for (size_t n = 250; n < x.size(); ++n) ASSERT_EQ(x[n], x[n - 103] ^ x[n - 250]);
    // Wichmann-Hill: the first value from the four component states.
    s.NewStream(RngCode(rgWH), 5);
    double sum = 5.0 * 11600 / 2147483579.0 + 47003.0 / 2147483543.0 + 23000.0 / 2147483423.0 + 33000.0 / 2147483123.0;
    EXPECT_NEAR(Uniform(s, 1)[0], sum - std::floor(sum), 1e-15);
}

TEST(Generators, SobolFirstPointsAndStratification) {
    // The first points of the three-dimensional sequence (origin left out).
    TRngStream s;
    s.NewStream(RngCode(rgSOBOL), 3);
    const auto u = Uniform(s, 15);
    const double expect[15] = {0.5, 0.5, 0.5, 0.75, 0.25, 0.25, 0.25, 0.75, 0.75, 0.375, 0.375, 0.625, 0.875, 0.875, 0.125};
    for (int i = 0; i < 15; ++i) EXPECT_EQ(u[size_t(i)], expect[i]) << i;
    // An aligned block of 2^m points of a digital (t, s)-sequence puts 2^t
    // points into each interval of width 2^(t-m) of a coordinate: Sobol's
    // coordinates have t = 0; Niederreiter's coordinate c has t = deg - 1, deg
    // the degree of its irreducible polynomial. The first two coordinates of
    // both form a (0, m, 2)-net: one point in each elementary box of area 2^-m.
    auto niederDeg = [](int c) { return c < 2 ? 1 : c < 3 ? 2 : c < 5 ? 3 : c < 8 ? 4 : c < 14 ? 5 : c < 23 ? 6 : 7; };
    for (int32_t code : {RngCode(rgSOBOL), RngCode(rgNIEDERR)}) {
        const bool sobol = code == RngCode(rgSOBOL);
        const int dim = sobol ? rng::kSobolMaxDim : 40, m = 10, np = 1 << m;
        TRngStream q;
        q.NewStream(code, uint32_t(dim));
        q.SkipAhead(int64_t(np - 1) * dim);  // points 2^m .. 2^(m+1) - 1
        const auto pts = Uniform(q, np * dim);
        for (int c = 0; c < dim; ++c) {
            const int t = sobol ? 0 : niederDeg(c) - 1, cells = np >> t;
            std::vector<int> cnt(size_t(cells), 0);
            for (int p = 0; p < np; ++p) ++cnt[size_t(pts[size_t(p * dim + c)] * cells)];
            ASSERT_TRUE(std::all_of(cnt.begin(), cnt.end(), [t](int k) { return k == (1 << t); })) << code << " dim " << c;
        }
        for (int a = 0; a <= m; ++a) {
            std::vector<int> cnt(size_t(np), 0);
            for (int p = 0; p < np; ++p) {
                const int i = int(pts[size_t(p * dim)] * (1 << a)), j = int(pts[size_t(p * dim + 1)] * (1 << (m - a)));
                ++cnt[size_t(i * (1 << (m - a)) + j)];
            }
            ASSERT_TRUE(std::all_of(cnt.begin(), cnt.end(), [](int k) { return k == 1; })) << code << " a " << a;
        }
    }
    // Dimension limits: a seed beyond them gives dimension 1.
    TRngStream big;
    big.NewStream(RngCode(rgNIEDERR), rng::kNiederrMaxDim);
    EXPECT_EQ(Uniform(big, rng::kNiederrMaxDim).size(), size_t(rng::kNiederrMaxDim));
}

TEST(Generators, EveryKindDrawsOnTheUnitInterval) {
    for (auto g : {rgMCG31, rgR250, rgMRG32K3A, rgMCG59, rgWH, rgSOBOL, rgNIEDERR, rgMT19937, rgSFMT19937, rgARS5,
                   rgPHILOX4X32X10}) {
        TRngStream s;
        s.NewStream(RngCode(g), 1);
        const auto u = Uniform(s, 4096);
        double mean = 0;
        for (double v : u) {
            ASSERT_GE(v, 0.0);
            ASSERT_LT(v, 1.0);
            mean += v;
        }
        EXPECT_NEAR(mean / 4096, 0.5, 0.03) << g;  // 6.6 standard errors
    }
}
