// The FFT engine against a direct DFT in long double, for every length up to
// 128 on every instruction set the processor runs, and large lengths by round
// trip and spot bins.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <cstdio>
#include <limits>

#include "FftTestUtil.h"
#include "rovane/primitives/fft/FftEngine.h"

using namespace rovane;
using namespace rovane::ffttest;

namespace {

// Relative RMS error bound: c * eps * log2 N. Measured worst ratios are
// printed so the constant can be seen to hold with room.
constexpr double kBoundC = 1.0;

std::vector<TPrimitiveIsa> Isas() {
    std::vector<TPrimitiveIsa> v;
    const TPrimitiveIsa keep = FftIsa();
    for (TPrimitiveIsa i : {piReference, piBaseline, piAvx2, piAvx512})
        if (SetFftIsa(i)) v.push_back(i);
    SetFftIsa(keep);
    return v;
}

struct IsaGuard {
    TPrimitiveIsa keep = FftIsa();
    ~IsaGuard() { SetFftIsa(keep); }
};

template <class T>
double CheckAllLengths(int maxN) {
    const double eps = std::numeric_limits<T>::epsilon();
    double worst = 0;
    for (int n = 1; n <= maxN; ++n) {
        const auto x = RandomComplex<T>(size_t(n), 1000u + unsigned(n));
        std::vector<std::complex<T>> y(static_cast<size_t>(n));
        for (bool inv : {false, true}) {
            fft::ComplexDft<T>(x.data(), y.data(), n, inv);
            const double e = RelRms(DirectDft(x, inv), y.data(), size_t(n)) / (eps * Log2N(n));
            worst = std::max(worst, e);
            EXPECT_LE(e, kBoundC) << "complex n = " << n << (inv ? " inverse" : " forward");
        }
        // Real forward: the half spectrum of the real parts.
        const auto xr = RandomReal<T>(size_t(n), 2000u + unsigned(n));
        std::vector<std::complex<T>> xc(static_cast<size_t>(n)), bins(static_cast<size_t>(n / 2 + 1));
        for (int j = 0; j < n; ++j) xc[size_t(j)] = std::complex<T>(xr[size_t(j)], 0);
        fft::RealDftForward<T>(xr.data(), bins.data(), n);
        const auto ref = DirectDft(xc, false);
        const double er = RelRms(ref, bins.data(), bins.size()) / (eps * Log2N(n));
        worst = std::max(worst, er);
        EXPECT_LE(er, kBoundC) << "real forward n = " << n;
        // Real backward from an exact half spectrum: n times the signal.
        std::vector<std::complex<T>> half(bins.size());
        for (size_t k = 0; k < half.size(); ++k)
            half[k] = std::complex<T>(static_cast<T>(ref[k].real()), static_cast<T>(ref[k].imag()));
        std::vector<T> back(static_cast<size_t>(n));
        fft::RealDftBackward<T>(half.data(), back.data(), n);
        std::vector<LC> expect(static_cast<size_t>(n));
        std::vector<std::complex<T>> got(static_cast<size_t>(n));
        for (int j = 0; j < n; ++j) {
            expect[size_t(j)] = LC(static_cast<long double>(xr[size_t(j)]) * n, 0);
            got[size_t(j)] = std::complex<T>(back[size_t(j)], 0);
        }
        const double eb = RelRms(expect, got.data(), size_t(n)) / (eps * Log2N(n));
        worst = std::max(worst, eb);
        EXPECT_LE(eb, kBoundC) << "real backward n = " << n;
    }
    return worst;
}

}  // namespace

TEST(FftEngine, EveryLengthTo128MatchesDirectDftOnEveryIsa) {
    IsaGuard guard;
    for (TPrimitiveIsa isa : Isas()) {
        ASSERT_TRUE(SetFftIsa(isa));
        SCOPED_TRACE(PrimitiveIsaName(isa));
        const double wd = CheckAllLengths<double>(128);
        const double ws = CheckAllLengths<float>(128);
        std::printf("[%s] worst rms / (eps log2 N): double %.3f, single %.3f\n", PrimitiveIsaName(isa), wd, ws);
    }
}

TEST(FftEngine, InPlaceEqualsOutOfPlace) {
    // Lengths with one, two and three passes, and a chirp-z one.
    for (int n : {4, 8, 32, 60, 67, 1000}) {
        const auto x = RandomComplex<double>(size_t(n), 7u);
        std::vector<std::complex<double>> y(static_cast<size_t>(n)), z = x;
        fft::ComplexDft<double>(x.data(), y.data(), n, false);
        fft::ComplexDft<double>(z.data(), z.data(), n, false);
        for (int k = 0; k < n; ++k) ASSERT_EQ(y[size_t(k)], z[size_t(k)]) << "n = " << n << " k = " << k;
    }
}

namespace {

template <class T>
void LargeComplex(int64_t n, unsigned seed, double& rtWorst, double& binWorst) {
    const double eps = std::numeric_limits<T>::epsilon();
    const auto x = RandomComplex<T>(size_t(n), seed);
    std::vector<std::complex<T>> y(static_cast<size_t>(n)), z(static_cast<size_t>(n));
    fft::ComplexDft<T>(x.data(), y.data(), n, false);
    // Spot bins against the direct sum.
    for (int64_t k : {int64_t(0), int64_t(1), n / 3, n - 1}) {
        const LC ref = DirectBin(x, k);
        const double e = std::abs(ref - LC(y[size_t(k)].real(), y[size_t(k)].imag())) /
                         (std::sqrt(static_cast<double>(n)) * eps * Log2N(n));
        binWorst = std::max(binWorst, e);
        EXPECT_LE(e, 4 * kBoundC) << "n = " << n << " bin " << k;
    }
    fft::ComplexDft<T>(y.data(), z.data(), n, true);
    std::vector<LC> ref(static_cast<size_t>(n));
    for (int64_t j = 0; j < n; ++j) ref[size_t(j)] = LC(x[size_t(j)].real(), x[size_t(j)].imag()) * (long double)n;
    const double e = RelRms(ref, z.data(), size_t(n)) / (eps * Log2N(n));
    rtWorst = std::max(rtWorst, e);
    EXPECT_LE(e, 2 * kBoundC) << "round trip n = " << n;
}

template <class T>
void LargeReal(int64_t n, unsigned seed, double& rtWorst) {
    const double eps = std::numeric_limits<T>::epsilon();
    const auto x = RandomReal<T>(size_t(n), seed);
    std::vector<std::complex<T>> bins(static_cast<size_t>(n / 2 + 1));
    std::vector<T> back(static_cast<size_t>(n));
    fft::RealDftForward<T>(x.data(), bins.data(), n);
    fft::RealDftBackward<T>(bins.data(), back.data(), n);
    long double num = 0, den = 0;
    for (int64_t j = 0; j < n; ++j) {
        const long double d = static_cast<long double>(back[size_t(j)]) / n - x[size_t(j)];
        num += d * d;
        den += static_cast<long double>(x[size_t(j)]) * x[size_t(j)];
    }
    const double e = std::sqrt(static_cast<double>(num / den)) / (eps * Log2N(n));
    rtWorst = std::max(rtWorst, e);
    EXPECT_LE(e, 2 * kBoundC) << "real round trip n = " << n;
}

}  // namespace

TEST(FftEngine, LargeLengthsRoundTripAndSpotBins) {
    double rtD = 0, binD = 0, rtS = 0, binS = 0;
    for (int64_t n : {int64_t(1) << 12, int64_t(1) << 16, int64_t(1) << 20, int64_t(30030), int64_t(4099),
                      int64_t(65537)})
        LargeComplex<double>(n, unsigned(n), rtD, binD);
    for (int64_t n : {int64_t(1) << 16, int64_t(30030), int64_t(4099), int64_t(65537)})
        LargeComplex<float>(n, unsigned(n) + 1, rtS, binS);
    for (int64_t n : {int64_t(1) << 16, int64_t(65537), int64_t(30030)}) {
        LargeReal<double>(n, 5u, rtD);
        LargeReal<float>(n, 6u, rtS);
    }
    std::printf("large lengths, worst round trip rms / (eps log2 N): double %.3f, single %.3f\n", rtD, rtS);
    std::printf("large lengths, worst spot bin |err| / (sqrt N eps log2 N): double %.3f, single %.3f\n", binD, binS);
}

TEST(FftEngine, InstructionSetFollowsTheEnvironment) {
    // CI runs the suite once per table with ROVANE_ISA set; the FFT passes
    // must follow it when the processor runs that set.
    const char* env = std::getenv("ROVANE_ISA");
    if (!env) GTEST_SKIP() << "ROVANE_ISA not set";
    IsaGuard guard;
    for (TPrimitiveIsa i : Isas())
        if (std::string(env) == PrimitiveIsaName(i)) EXPECT_STREQ(PrimitiveIsaName(guard.keep), env);
}
