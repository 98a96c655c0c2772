// Streams and the generator of streams: independence methods against the
// parent sequence, saved state, copies, and the failure texts.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "rovane/methods/RngEngine.h"

using namespace rovane;
using namespace std::string_literals;

namespace {

std::vector<double> Draw(TRngStream& s, int n) {
    std::vector<double> r(static_cast<size_t>(n));
    s.RandomUniform(r.data(), n, 0.0, 1.0);
    return r;
}

template <class F>
std::string Message(F f) {
    try {
        f();
    } catch (const ERovaneException& e) {
        return e.what();
    }
    return "(no exception)";
}

const TBasicRandomGenerator kSeeded[] = {rgMCG31, rgR250,      rgMRG32K3A,      rgMCG59, rgWH,  rgSOBOL,
                                         rgNIEDERR, rgMT19937, rgSFMT19937, rgPHILOX4X32X10, rgARS5};

}  // namespace

TEST(RandomGenerator, NewGeneratorHasNoStreamsAndDefaults) {
    TRandomGenerator g;
    EXPECT_EQ(g.StreamCount(), 0);
    EXPECT_EQ(g.BlockStep(), 1024);
    EXPECT_EQ(g.Seed(), 1);
    EXPECT_EQ(g.BasicRngType(), rgMCG31);
    EXPECT_EQ(Message([&] { g.Stream(0); }), "Stream index out of bounds!");
    g.SetStreamCount(2);
    EXPECT_EQ(Message([&] { g.Stream(2); }), "Stream index out of bounds!");
    EXPECT_EQ(Message([&] { g.Stream(-1); }), "Stream index out of bounds!");
    EXPECT_EQ(g.Stream(1).Code(), RngCode(rgMCG31));
}

TEST(RandomGenerator, StreamsWithoutIndependenceRepeatEachOther) {
    for (auto kind : kSeeded) {
        TRandomGenerator g;
        g.SetStreamCount(3);
        g.Init(kind, 17);
        const auto a = Draw(g.Stream(0), 700), c = Draw(g.Stream(2), 700);
        EXPECT_EQ(a, c) << kind;
    }
}

TEST(RandomGenerator, SaveDrawLoadDrawRepeats) {
    for (auto kind : kSeeded) {
        TRandomGenerator g;
        g.SetStreamIndependence(rsiBlockSplitting);
        g.SetStreamCount(2);
        g.Init(kind, 99);
        Draw(g.Stream(1), 333);  // mid-block positions are part of the state
        std::stringstream file;
        g.SaveToStream(file);
        const auto first0 = Draw(g.Stream(0), 1000), first1 = Draw(g.Stream(1), 1000);
        TRandomGenerator h;
        h.LoadFromStream(file);
        EXPECT_EQ(h.StreamCount(), 2);
        EXPECT_EQ(h.StreamIndependence(), rsiBlockSplitting);
        EXPECT_EQ(h.BasicRngType(), kind);
        EXPECT_EQ(h.Seed(), 99);
        EXPECT_EQ(Draw(h.Stream(0), 1000), first0) << kind;
        EXPECT_EQ(Draw(h.Stream(1), 1000), first1) << kind;
    }
}

TEST(RandomGenerator, LeapfrogStreamsInterleaveTheParent) {
    const int k = 3, n = 600;
    for (auto kind : {rgMCG31, rgMCG59, rgWH, rgSOBOL, rgNIEDERR, rgPHILOX4X32X10, rgARS5}) {
        TRngStream parent;
        parent.NewStream(RngCode(kind), 3);
        const auto all = Draw(parent, k * n);
        TRandomGenerator g;
        g.SetStreamIndependence(rsiLeapfrog);
        g.SetStreamCount(k);
        g.Init(kind, 3);
        for (int i = 0; i < k; ++i) {
            // drawn in two calls, so that a fill continues the stride
            auto got = Draw(g.Stream(i), n / 2 - 1);
            const auto rest = Draw(g.Stream(i), n / 2 + 1);
            got.insert(got.end(), rest.begin(), rest.end());
            for (int j = 0; j < n; ++j) ASSERT_EQ(got[size_t(j)], all[size_t(j * k + i)]) << kind << " stream " << i;
        }
    }
    for (auto kind : {rgR250, rgMRG32K3A, rgMT19937, rgSFMT19937}) {
        TRandomGenerator g;
        g.SetStreamCount(2);
        g.Init(kind, 5);
        g.SetStreamIndependence(rsiLeapfrog);
        const auto before = Draw(g.Stream(1), 5);
        EXPECT_EQ(Message([&] { g.Init(kind, 5); }), "BRNG does not support Leapfrog method.") << kind;
        g.SetStreamIndependence(rsiNone);
        g.Init(kind, 5);  // the refused split left the generator usable
        EXPECT_EQ(Draw(g.Stream(1), 5), before);
    }
}

TEST(RandomGenerator, BlockSplitStreamsStartAtTheirBlocks) {
    const int k = 3, step = 700;
    for (auto kind : kSeeded) {
        TRngStream parent;
        parent.NewStream(RngCode(kind), 8);
        const auto all = Draw(parent, k * step + 50);
        TRandomGenerator g;
        g.SetStreamIndependence(rsiBlockSplitting);
        g.SetBlockStep(step);
        g.SetStreamCount(k);
        g.Init(kind, 8);
        for (int i = 0; i < k; ++i) {
            const auto got = Draw(g.Stream(i), 50);
            for (int j = 0; j < 50; ++j) ASSERT_EQ(got[size_t(j)], all[size_t(i * step + j)]) << kind << " stream " << i;
        }
    }
}

TEST(RngStream, SkipAheadEqualsDrawingAndRefusals) {
    for (auto kind : kSeeded) {
        for (int64_t skip : {1, 3, 5, 640, 5000}) {
            TRngStream a, b;
            a.NewStream(RngCode(kind), 21);
            b.NewStream(RngCode(kind), 21);
            const auto all = Draw(a, int(skip) + 5);
            b.SkipAhead(skip);
            EXPECT_EQ(Draw(b, 5), std::vector<double>(all.begin() + skip, all.end())) << kind << " " << skip;
        }
    }
    TRngStream r250;
    r250.NewStream(RngCode(rgR250), 1);
    EXPECT_EQ(Message([&] { r250.SkipAhead(int64_t(1) << 40); }), "BRNG does not support the Skip-Ahead method.");
    TRngStream sob;
    sob.NewStream(RngCode(rgSOBOL), 2);
    EXPECT_EQ(Message([&] { sob.SkipAhead(int64_t(2) << 32); }),
              "Period of the quasi-random number generator is exceeded.");
    sob.SkipAhead(2 * ((int64_t(1) << 32) - 2));  // the last point of the period is next
    EXPECT_EQ(Draw(sob, 2).size(), 2u);
    EXPECT_EQ(Message([&] { Draw(sob, 1); }), "Period of the generator has been exceeded.");
    // Counter-based generators: eight jumps of 2^63 - 1 reach element
    // 2^66 - 8, the block 2^64 - 2; the fill then carries into the counter's
    // upper words.
    TRngStream ph;
    ph.NewStream(RngCode(rgPHILOX4X32X10), 4);
    for (int i = 0; i < 8; ++i) ph.SkipAhead(INT64_MAX);
    TVecInt bits;
    bits.Size(12);
    ph.RandomUniformBitsI(bits);
    const uint32_t ctrs[3][4] = {{0xFFFFFFFEu, 0xFFFFFFFFu, 0, 0}, {0xFFFFFFFFu, 0xFFFFFFFFu, 0, 0}, {0, 0, 1, 0}};
    const uint32_t key[2] = {4, 0};
    for (int b = 0; b < 3; ++b) {
        uint32_t o[4];
        rng::Philox4x32x10(ctrs[b], key, o);
        for (int w = 0; w < 4; ++w) EXPECT_EQ(uint32_t(bits.IValues[4 * b + w]), o[w]) << b;
    }
}

TEST(RngStream, HandlesCopiesAndTheirTexts) {
    TRngStream s, t;
    EXPECT_EQ(Message([&] { Draw(s, 1); }), "Stream is a NULL pointer.");
    EXPECT_EQ(Message([&] { s.Delete(); }), "Stream parameter is a NULL pointer.");
    EXPECT_EQ(Message([&] { t.Copy(s); }), "Srcstream parameter is a NULL pointer.");
    EXPECT_EQ(Message([&] { t.CopyState(s); }), "Either srcstream or deststream is a NULL pointer.");
    std::stringstream out;
    EXPECT_EQ(Message([&] { s.SaveToStream(out); }), "Either memptr or stream is a NULL pointer.");
    EXPECT_EQ(Message([&] { s.NewStream(RngCode(rgMT2203), 1); }), "BRNG index is invalid.");
    EXPECT_EQ(Message([&] { s.NewStream(RngCode(rgIAbstract), 1); }), "BRNG index is invalid.");
    EXPECT_EQ(Message([&] { s.NewStream(12345, 1); }), "BRNG index is invalid.");
    EXPECT_EQ(Message([&] { s.Leapfrog(0, 2); }), "Stream is a NULL pointer.");

    s.NewStream(RngCode(rgSFMT19937), 3);
    Draw(s, 10);
    t.Copy(s);
    EXPECT_EQ(Draw(s, 100), Draw(t, 100));
    TRngStream u;
    u.NewStream(RngCode(rgMT19937), 3);
    EXPECT_EQ(Message([&] { u.CopyState(s); }),
              "BRNG associated with srcstream is not compatible with BRNG associated with deststream.");
    u.NewStream(RngCode(rgSFMT19937), 555);
    u.CopyState(s);
    EXPECT_EQ(Draw(s, 50), Draw(u, 50));
    EXPECT_EQ(Message([&] { u.Leapfrog(2, 2); }), "vslLeapFrogStream returned an unknown error: -3");
    s.Delete();
    EXPECT_FALSE(s.Assigned());
}

TEST(RngStream, DamagedStateIsRefused) {
    TRngStream s;
    s.NewStream(RngCode(rgPHILOX4X32X10), 1);
    std::stringstream good;
    s.SaveToStream(good);
    const std::string bytes = good.str();
    const std::string unknown = "Descriptive random stream format is unknown.";
    for (const std::string& bad : {bytes.substr(0, 3), bytes.substr(0, bytes.size() - 1),
                                   std::string(bytes).replace(5, 1, "\x7f"), std::string(bytes).replace(13, 1, "\x33")}) {
        std::stringstream in(bad);
        TRngStream t;
        EXPECT_EQ(Message([&] { t.LoadFromStream(in); }), unknown);
    }
    TRandomGenerator g;
    std::stringstream shortFile("\x01\0\0\0"s);
    EXPECT_EQ(Message([&] { g.LoadFromStream(shortFile); }), unknown);
    EXPECT_EQ(g.StreamCount(), 0);
}

TEST(RandomGenerator, FilesHoldTheState) {
    const std::string name = testing::TempDir() + "rovane_rng_state.bin";
    TRandomGenerator g;
    g.SetStreamCount(2);
    g.Init(rgMRG32K3A, 4);
    Draw(g.Stream(0), 11);
    g.SaveToFile(name);
    TRandomGenerator h;
    h.LoadFromFile(name);
    EXPECT_EQ(Draw(h.Stream(0), 20), Draw(g.Stream(0), 20));
    std::remove(name.c_str());
    EXPECT_NE(Message([&] { h.LoadFromFile(name); }), "(no exception)");
}

TEST(RngStream, MersenneTwistersJumpByPolynomial) {
    // Beyond 2^22 elements MT19937 and SFMT19937 jump by a polynomial in the
    // step map instead of walking: the jump lands where walking does, from a
    // position inside a block, and two jumps add up.
    for (auto kind : {rgMT19937, rgSFMT19937}) {
        const int64_t far = (int64_t(1) << 22) + 4321;
        TRngStream walk, jump;
        walk.NewStream(RngCode(kind), 6);
        jump.NewStream(RngCode(kind), 6);
        std::vector<uint32_t> head(7), all(size_t(far) + 5);
        walk.RandomUniformBits32(head);
        jump.RandomUniformBits32(head);
        walk.RandomUniformBits32(all);
        jump.SkipAhead(far);
        std::vector<uint32_t> got(5);
        jump.RandomUniformBits32(got);
        EXPECT_EQ(got, std::vector<uint32_t>(all.end() - 5, all.end())) << kind;

        TRngStream a, b;
        a.NewStream(RngCode(kind), 9);
        b.NewStream(RngCode(kind), 9);
        a.SkipAhead(int64_t(1) << 40);
        a.SkipAhead((int64_t(1) << 40) + 3);
        b.SkipAhead((int64_t(1) << 41) + 3);
        EXPECT_EQ(Draw(a, 700), Draw(b, 700)) << kind;
    }
}
