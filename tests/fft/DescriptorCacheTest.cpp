// TDFTIDescriptorCache: hints, slots and flushing, sizes, reset, the fast
// cache, failures that leave it usable, and concurrent use from real threads.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>

#include "FftTestUtil.h"
#include "rovane/primitives/DFTIDescriptors.h"
#include "rovane/storage/ObjectCache.h"

using namespace rovane;
using namespace rovane::ffttest;

namespace {

template <class F>
std::string MessageOf(F&& f) {
    try {
        f();
    } catch (const ERovaneException& e) {
        return e.what();
    }
    return "<no exception>";
}

// Forward complex in-place transform of n points through the cache, checked
// against the direct DFT of the same data.
double TransformThroughCache(TDFTIDescriptorCache& cache, int n, int32_t& hint, unsigned seed) {
    const auto x = RandomComplex<double>(size_t(n), seed);
    std::vector<TCplx> a(x.size());
    for (size_t i = 0; i < x.size(); ++i) a[i] = TCplx(x[i].real(), x[i].imag());
    TDftiHandle h = cache.GetDesc(n, dftfInPlace | dftfScaleBackward, hint);
    const int32_t st = dfti_compute_forward_z_Idx(h, a.data(), 0);
    cache.ReleaseDscr(hint);
    if (st != DFTI_NO_ERROR) return 1e300;
    std::vector<std::complex<double>> got(x.size());
    for (size_t i = 0; i < x.size(); ++i) got[i] = {a[i].Re, a[i].Im};
    return RelRms(DirectDft(x, false), got.data(), got.size());
}

}  // namespace

TEST(DescriptorCache, HintOutsideTheCacheRaises) {
    TDFTIDescriptorCache cache;
    int32_t hint = 64;
    EXPECT_EQ(MessageOf([&] { cache.GetDesc(16, 6, hint); }), "DescIndex >= Length(Cache)");
    hint = -1;
    EXPECT_EQ(MessageOf([&] { cache.GetDesc(16, 6, hint); }), "DescIndex out of range = -1");
    EXPECT_EQ(hint, -1);
    EXPECT_EQ(cache.Counter(), 0);
}

TEST(DescriptorCache, RepeatHitsTheHintedSlotAndFlagsAreKeys) {
    TDFTIDescriptorCache cache;
    int32_t hint = 0;
    EXPECT_LE(TransformThroughCache(cache, 12, hint, 1), 1e-15);
    const int32_t first = hint;
    const TDftiHandle h1 = cache.Slot(first).descriptor;
    EXPECT_LE(TransformThroughCache(cache, 12, hint, 2), 1e-15);
    EXPECT_EQ(hint, first);
    EXPECT_EQ(cache.Slot(first).descriptor, h1);
    // Bit 32 means nothing to a 1-D transform and is cleared: same slot.
    int32_t h2 = 0;
    cache.GetDesc(12, 6 | dftfPaddedInput, h2);
    cache.ReleaseDscr(h2);
    EXPECT_EQ(h2, first);
    // Another flag set is another shape.
    int32_t h3 = 0;
    cache.GetDesc(12, 6 | dftfSingle, h3);
    cache.ReleaseDscr(h3);
    EXPECT_NE(h3, first);
    EXPECT_EQ(cache.Counter(), 0);
}

TEST(DescriptorCache, FullCacheFlushesEveryIdleSlot) {
    TDFTIDescriptorCache cache;
    int32_t hint = 0;
    for (int n = 1; n <= 64; ++n) {
        cache.GetDesc(n, 6, hint);
        cache.ReleaseDscr(hint);
    }
    for (int i = 0; i < 64; ++i) ASSERT_NE(cache.Slot(i).descriptor, nullptr);
    cache.GetDesc(1000, 6, hint);
    cache.ReleaseDscr(hint);
    int held = 0;
    for (int i = 0; i < 64; ++i) held += cache.Slot(i).descriptor != nullptr;
    EXPECT_EQ(held, 1);
    EXPECT_EQ(cache.Slot(hint).firstSize, 1000);
    EXPECT_EQ(cache.Counter(), 0);  // it counts running transforms only
    // A busy slot survives a flush.
    cache.SetMaxCacheSize(8);
    hint = 0;
    int32_t busy = 0;
    cache.GetDesc(5, 6, busy);
    for (int n = 10; n < 17; ++n) {
        cache.GetDesc(n, 6, hint);
        cache.ReleaseDscr(hint);
    }
    cache.GetDesc(99, 6, hint);
    cache.ReleaseDscr(hint);
    EXPECT_NE(cache.Slot(busy).descriptor, nullptr);
    EXPECT_EQ(cache.Slot(busy).firstSize, 5);
    cache.ReleaseDscr(busy);
}

TEST(DescriptorCache, AllSlotsBusyRaisesTheFullMessage) {
    TDFTIDescriptorCache cache;
    cache.SetMaxCacheSize(8);
    std::vector<int32_t> held(8, 0);
    for (int i = 0; i < 8; ++i) cache.GetDesc(16, 6, held[size_t(i)]);  // one shape, eight users
    int32_t hint = 0;
    EXPECT_EQ(MessageOf([&] { cache.GetDesc(16, 6, hint); }),
              "FFT Descriptor cache is full and all descriptors are currently in use. This can happen only if thread "
              "count is greater than descriptor cache size. Please adjust the FFT descriptor cache size!");
    for (int32_t i : held) cache.ReleaseDscr(i);
    EXPECT_LE(TransformThroughCache(cache, 16, hint, 3), 1e-15);
}

TEST(DescriptorCache, SizeLimits) {
    TDFTIDescriptorCache cache;
    struct Case {
        int32_t n;
        const char* message;
    };
    const Case cases[] = {
        {7, "TDFTIDescriptorCache.SetMaxCacheSize: Minimum cache size allowed = 8"},
        {0, "TDFTIDescriptorCache.SetMaxCacheSize: Invalid cache size: 0 (expected >= 0)"},
        {-3, "TDFTIDescriptorCache.SetMaxCacheSize: Invalid cache size: -3 (expected >= 0)"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MessageOf([&] { cache.SetMaxCacheSize(c.n); }), c.message);
        EXPECT_EQ(cache.MaxCacheSize(), 64);
    }
    cache.SetMaxCacheSize(8);
    EXPECT_EQ(cache.MaxCacheSize(), 8);
    EXPECT_EQ(cache.SlotCount(), 8);
}

TEST(DescriptorCache, ResetRefusesWhileATransformRuns) {
    TDFTIDescriptorCache cache;
    int32_t hint = 0;
    cache.GetDesc(32, 6, hint);
    EXPECT_EQ(MessageOf([&] { cache.Reset(); }), "FFT Descriptor cache cannot be reset while FFTs are being executed!");
    EXPECT_EQ(MessageOf([&] { cache.SetMaxCacheSize(16); }),
              "FFT Descriptor cache cannot be reset while FFTs are being executed!");
    EXPECT_EQ(cache.SlotCount(), 64);
    cache.ReleaseDscr(hint);
    cache.Reset();
    EXPECT_EQ(cache.Slot(hint).descriptor, nullptr);
}

TEST(DescriptorCache, FastCacheServesHitsOnly) {
    TDFTIDescriptorCache cache;
    cache.SetFastCache(true);
    int32_t hint = 0;
    EXPECT_EQ(MessageOf([&] { cache.GetDesc(8, 6, hint); }), "Running fast FFT cache: FFT Descritpor cache is full!");
    cache.SetFastCache(false);
    EXPECT_LE(TransformThroughCache(cache, 8, hint, 4), 1e-15);
    EXPECT_LE(TransformThroughCache(cache, 20, hint, 5), 1e-15);
    cache.SetFastCache(true);
    int32_t h8 = 0;
    EXPECT_LE(TransformThroughCache(cache, 8, h8, 6), 1e-15);  // a hit
    // A miss rebuilds the first slot holding a descriptor for the new shape,
    // so its transform is still right.
    int32_t h9 = 0;
    EXPECT_LE(TransformThroughCache(cache, 9, h9, 7), 1e-15);
    EXPECT_EQ(cache.Slot(h9).firstSize, 9);
    // Turning it off resets.
    cache.SetFastCache(false);
    EXPECT_EQ(cache.Slot(h9).descriptor, nullptr);
}

TEST(DescriptorCache, FailedBuildLeavesCacheUsableAndHintAlone) {
    TDFTIDescriptorCache cache;
    int32_t hint = 3;
    const std::string msg = MessageOf([&] { cache.GetDesc(0, 6, hint); });
    EXPECT_EQ(msg, "TDFTIDescriptorCache.FindOrCreateDscr: Can't create descriptor: " +
                       GetDftiErrorMessage(DFTI_INVALID_CONFIGURATION));
    EXPECT_EQ(hint, 3);
    EXPECT_EQ(cache.Counter(), 0);
    const std::string oom = MessageOf([&] { cache.GetDesc((1 << 28) + 3, 6, hint); });
    EXPECT_EQ(oom.rfind("Descriptor cache is too large for the FFT types computed and caused out of memory condition!", 0),
              0u)
        << oom;
    EXPECT_EQ(hint, 3);
    EXPECT_LE(TransformThroughCache(cache, 10, hint, 8), 1e-15);
}

TEST(DescriptorCache, ThreeThreadsOnOneShapeUseThreeSlots) {
    TDFTIDescriptorCache cache;
    constexpr int kThreads = 3;
    std::barrier sync(kThreads);
    std::vector<int32_t> slots(kThreads, 0);
    std::vector<double> errs(kThreads, 0);
    std::vector<std::thread> ts;
    for (int t = 0; t < kThreads; ++t)
        ts.emplace_back([&, t] {
            int32_t hint = 0;
            const auto x = RandomComplex<double>(64, unsigned(t));
            std::vector<TCplx> a(64);
            for (int i = 0; i < 64; ++i) a[size_t(i)] = TCplx(x[size_t(i)].real(), x[size_t(i)].imag());
            TDftiHandle h = cache.GetDesc(64, 6, hint);
            sync.arrive_and_wait();  // all three hold their slot now
            slots[size_t(t)] = hint;
            dfti_compute_forward_z_Idx(h, a.data(), 0);
            sync.arrive_and_wait();
            cache.ReleaseDscr(hint);
            std::vector<std::complex<double>> got(64);
            for (int i = 0; i < 64; ++i) got[size_t(i)] = {a[size_t(i)].Re, a[size_t(i)].Im};
            errs[size_t(t)] = RelRms(DirectDft(x, false), got.data(), 64);
        });
    for (auto& t : ts) t.join();
    EXPECT_NE(slots[0], slots[1]);
    EXPECT_NE(slots[0], slots[2]);
    EXPECT_NE(slots[1], slots[2]);
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_LE(errs[size_t(t)], 1e-15);
        const TCacheEntry e = cache.Slot(slots[size_t(t)]);
        EXPECT_EQ(e.firstSize, 64);
        EXPECT_EQ(e.useCount.load(), 0);
    }
    EXPECT_EQ(cache.Counter(), 0);
    int32_t hint = slots[1];
    EXPECT_LE(TransformThroughCache(cache, 64, hint, 9), 1e-15);
    EXPECT_EQ(hint, slots[1]);
}

TEST(DescriptorCache, ConcurrentMixedShapesStayCorrect) {
    // Four threads, a small cache, more shapes than slots: lookups, flushes and
    // transforms interleave; every transform must still be right.
    TDFTIDescriptorCache cache;
    cache.SetMaxCacheSize(8);
    std::atomic<int> bad{0}, done{0};
    std::vector<std::thread> ts;
    for (int t = 0; t < 4; ++t)
        ts.emplace_back([&, t] {
            int32_t hint = 0;
            for (int it = 0; it < 60; ++it) {
                const int n = 4 + (it * 7 + t * 3) % 13;  // 13 shapes
                if (TransformThroughCache(cache, n, hint, unsigned(it)) > 1e-14) bad.fetch_add(1);
                done.fetch_add(1);
            }
        });
    for (auto& t : ts) t.join();
    EXPECT_EQ(bad.load(), 0);
    EXPECT_EQ(done.load(), 240);
    EXPECT_EQ(cache.Counter(), 0);
}

TEST(DescriptorCache, RealRowTransformsInPlaceThroughFlags) {
    // Rows of a matrix, real, in place, scaled backward, batched (flags 15):
    // each row of Cols reals is held in Cols + 2 (even) or Cols + 1 (odd).
    TDFTIDescriptorCache cache;
    for (int cols : {6, 7}) {
        const int rows = 3, h = cols % 2 ? 1 : 2, stride = cols + h;
        const auto x = RandomReal<double>(size_t(rows * stride), 31u);
        std::vector<double> a = x;
        int32_t hint = 0;
        const uint32_t flags = dftfReal | dftfInPlace | dftfScaleBackward | dftfBatch;
        TDftiHandle d = cache.GetDesc(rows, cols, flags, hint);
        ASSERT_EQ(dfti_compute_forward_d_Idx(d, a.data(), 0), DFTI_NO_ERROR);
        cache.ReleaseDscr(hint);
        for (int r = 0; r < rows; ++r) {
            std::vector<std::complex<double>> xc(static_cast<size_t>(cols));
            for (int j = 0; j < cols; ++j) xc[size_t(j)] = {x[size_t(r * stride + j)], 0};
            const auto ref = DirectDft(xc, false);
            for (int k = 0; k <= cols / 2; ++k) {
                EXPECT_NEAR(a[size_t(r * stride + 2 * k)], double(ref[size_t(k)].real()), 1e-13);
                EXPECT_NEAR(a[size_t(r * stride + 2 * k + 1)], double(ref[size_t(k)].imag()), 1e-13);
            }
        }
        d = cache.GetDesc(rows, cols, flags, hint);
        ASSERT_EQ(dfti_compute_backward_d_Idx(d, a.data(), 0), DFTI_NO_ERROR);
        cache.ReleaseDscr(hint);
        for (int r = 0; r < rows; ++r)
            for (int j = 0; j < cols; ++j) EXPECT_NEAR(a[size_t(r * stride + j)], x[size_t(r * stride + j)], 1e-15);
    }
}

TEST(DescriptorCacheController, ControllerPropertiesForwardToTheCache) {
    const int32_t size = Controller->FFTDescriptorCacheSize();
    const bool fast = Controller->FastFFTCache();
    Controller->SetFFTDescriptorCacheSize(size + 3);
    EXPECT_EQ(DFTIDescriptorCache().MaxCacheSize(), size + 3);
    Controller->SetFastFFTCache(!fast);
    EXPECT_EQ(DFTIDescriptorCache().FastCache(), !fast);
    Controller->SetFastFFTCache(fast);
    Controller->SetFFTDescriptorCacheSize(size);
    EXPECT_EQ(Controller->FFTDescriptorCacheSize(), size);
}
