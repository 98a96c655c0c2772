// The pure power-of-two FFT: lengths it accepts and refuses, agreement with
// the direct DFT, the storage formats, round trips, work buffer checks and
// the staged two-dimensional transforms (checked against the direct 2-D DFT
// and, for the real forms, by their inverses).
#include <gtest/gtest.h>

#include <limits>

#include "FftTestUtil.h"
#include "rovane/primitives/lapack_dfti_core.h"

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

}  // namespace

TEST(PureFft, ComplexLengthsAcceptedAndRefused) {
    std::vector<double> d(16, 1.0);
    EXPECT_EQ(MessageOf([&] { FFTComplex(d.data(), 16, 0, 1, 6); }), "FFTComplex: DataLen must be a power of two!");
    EXPECT_EQ(MessageOf([&] { FFTComplex(d.data(), 16, 0, 1, 12); }), "FFTComplex: DataLen must be a power of two!");
    EXPECT_EQ(d, std::vector<double>(16, 1.0));  // refused calls touch nothing
    EXPECT_EQ(MessageOf([&] { FFTReal(d.data(), 16, 0, 1, 8); }), "FFTReal: DataLen-2 must be a power of two!");
    EXPECT_EQ(MessageOf([&] { FFTReal(d.data(), 16, 0, 1, 7); }), "FFTReal: DataLen-2 must be a power of two!");
    EXPECT_THROW(FFTComplex(d.data(), 16, 10, 1, 8), ERovaneRangeError);  // past the array's end
    // DataLen 8: four complex points; FFTReal with DataLen 4: N = 2.
    std::vector<double> c = {1, 0, 2, 0, 3, 0, 4, 0};
    FFTComplex(c.data(), 8, 0, 1, 8);
    const std::vector<double> expect = {10, 0, -2, 2, -2, 0, -2, -2};
    for (int i = 0; i < 8; ++i) EXPECT_NEAR(c[size_t(i)], expect[size_t(i)], 1e-15);
    std::vector<double> r = {3, 1, 9, 9};
    FFTReal(r.data(), 4, 0, 1, 4);
    const std::vector<double> expectR = {4, 0, 2, 0};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(r[size_t(i)], expectR[size_t(i)], 1e-15);
}

TEST(PureFft, ComplexMatchesDirectAndRoundTrips) {
    for (int n = 1; n <= 4096; n *= 2) {
        const auto x = RandomComplex<double>(size_t(n), unsigned(n));
        std::vector<double> d(size_t(2 * n + 2), 42.0);
        for (int j = 0; j < n; ++j) {
            d[size_t(2 * j + 1)] = x[size_t(j)].real();
            d[size_t(2 * j + 2)] = x[size_t(j)].imag();
        }
        FFTComplex(d.data(), int32_t(d.size()), 1, 1, 2 * n);
        if (n <= 512) {
            std::vector<std::complex<double>> got(static_cast<size_t>(n));
            for (int j = 0; j < n; ++j) got[size_t(j)] = {d[size_t(2 * j + 1)], d[size_t(2 * j + 2)]};
            EXPECT_LE(RelRms(DirectDft(x, false), got.data(), got.size()),
                      2 * std::numeric_limits<double>::epsilon() * Log2N(n))
                << n;
        }
        FFTComplex(d.data(), int32_t(d.size()), 1, -1, 2 * n);
        EXPECT_EQ(d[0], 42.0);
        EXPECT_EQ(d.back(), 42.0);
        for (int j = 0; j < n; ++j) {
            EXPECT_NEAR(d[size_t(2 * j + 1)], x[size_t(j)].real(), 4e-16 * Log2N(n)) << n;
            EXPECT_NEAR(d[size_t(2 * j + 2)], x[size_t(j)].imag(), 4e-16 * Log2N(n)) << n;
        }
    }
}

TEST(PureFft, RealMatchesDirectAndRoundTrips) {
    for (int n = 2; n <= 1024; n *= 2) {
        const auto x = RandomReal<double>(size_t(n), unsigned(n) + 5);
        std::vector<double> d(static_cast<size_t>(n + 2));
        std::copy(x.begin(), x.end(), d.begin());
        FFTReal(d.data(), n + 2, 0, 1, n + 2);
        std::vector<std::complex<double>> xc(static_cast<size_t>(n)), got(static_cast<size_t>(n / 2 + 1));
        for (int j = 0; j < n; ++j) xc[size_t(j)] = {x[size_t(j)], 0};
        for (int k = 0; k <= n / 2; ++k) got[size_t(k)] = {d[size_t(2 * k)], d[size_t(2 * k + 1)]};
        EXPECT_EQ(d[1], 0.0);
        EXPECT_EQ(d[size_t(n + 1)], 0.0);
        EXPECT_LE(RelRms(DirectDft(xc, false), got.data(), got.size()),
                  2 * std::numeric_limits<double>::epsilon() * Log2N(n))
            << n;
        FFTReal(d.data(), n + 2, 0, -1, n + 2);
        for (int j = 0; j < n; ++j) EXPECT_NEAR(d[size_t(j)], x[size_t(j)], 4e-16 * Log2N(n)) << n;
        EXPECT_EQ(d[size_t(n)], 0.0);
    }
}

TEST(PureFft, FormatsOfFourPointsAndWorkChecks) {
    const double x[4] = {1, 2, 3, 4};
    std::vector<double> w(6), out(6, -1);
    FFTRealPerm(x, 0, out.data(), 0, 4, w.data(), 6);
    EXPECT_EQ(std::vector<double>(out.begin(), out.begin() + 4), (std::vector<double>{10, -2, -2, 2}));
    FFTRealPack(x, 0, out.data(), 0, 4, w.data(), 6);
    EXPECT_EQ(std::vector<double>(out.begin(), out.begin() + 4), (std::vector<double>{10, -2, 2, -2}));
    std::vector<TCplx> cc(3);
    FFTRealCCS(x, 0, cc.data(), 0, 4, w.data(), 6);
    EXPECT_EQ(cc[1].Re, -2);
    EXPECT_EQ(cc[1].Im, 2);
    EXPECT_EQ(cc[2].Im, 0);
    EXPECT_EQ(MessageOf([&] { FFTRealPack(x, 0, out.data(), 0, 4, w.data(), 5); }), "Work buffer is too small");
    std::vector<TCplx> a(4), b(4);
    std::vector<double> wc(7);
    EXPECT_EQ(MessageOf([&] { FFTComplex2(a.data(), 0, b.data(), 0, 4, wc.data(), 7); }), "Work buffer is too small");
}

TEST(PureFft, FormatRoundTripsBothPrecisions) {
    const int n = 64;
    const auto x = RandomReal<double>(size_t(n), 17u);
    std::vector<double> w(static_cast<size_t>(n + 2)), spectrum(static_cast<size_t>(n + 2)), back(static_cast<size_t>(n));
    using Fwd = void (*)(const double*, int32_t, double*, int32_t, int32_t, double*, int32_t);
    const std::pair<Fwd, Fwd> pairs[] = {{&FFTRealPack, &IFFTToRealPack},
                                         {&FFTRealPerm, &IFFTToRealPerm},
                                         {static_cast<Fwd>(&FFTRealCCS), static_cast<Fwd>(&IFFTToRealCCS)}};
    for (auto [f, inv] : pairs) {
        f(x.data(), 0, spectrum.data(), 0, n, w.data(), n + 2);
        inv(spectrum.data(), 0, back.data(), 0, n, w.data(), n + 2);
        for (int j = 0; j < n; ++j) EXPECT_NEAR(back[size_t(j)], x[size_t(j)], 1e-15);
    }
    // Single: through the complex CCS form and the double-precision FFTComplex3.
    std::vector<float> xs(static_cast<size_t>(n)), ws(static_cast<size_t>(n + 2)), bs(static_cast<size_t>(n));
    for (int j = 0; j < n; ++j) xs[size_t(j)] = float(x[size_t(j)]);
    std::vector<TSCplx> cs(static_cast<size_t>(n / 2 + 1));
    FFTRealCCS(xs.data(), 0, cs.data(), 0, n, ws.data(), n + 2);
    IFFTToRealCCS(cs.data(), 0, bs.data(), 0, n, ws.data(), n + 2);
    for (int j = 0; j < n; ++j) EXPECT_NEAR(bs[size_t(j)], xs[size_t(j)], 2e-7);
    std::vector<TSCplx> zs(static_cast<size_t>(n)), ys(static_cast<size_t>(n)), ys2(static_cast<size_t>(n));
    for (int j = 0; j < n; ++j) zs[size_t(j)] = TSCplx(xs[size_t(j)], -xs[size_t(j)]);
    std::vector<double> wd(static_cast<size_t>(2 * n));
    std::vector<float> wf(static_cast<size_t>(2 * n));
    FFTComplex3(zs.data(), 0, ys.data(), 0, n, 1, wd.data(), 2 * n);
    FFTComplex2(zs.data(), 0, ys2.data(), 0, n, wf.data(), 2 * n);
    std::vector<std::complex<float>> zc(static_cast<size_t>(n)), g3(static_cast<size_t>(n)), g2(static_cast<size_t>(n));
    for (int j = 0; j < n; ++j) {
        zc[size_t(j)] = {zs[size_t(j)].Re, zs[size_t(j)].Im};
        g3[size_t(j)] = {ys[size_t(j)].Re, ys[size_t(j)].Im};
        g2[size_t(j)] = {ys2[size_t(j)].Re, ys2[size_t(j)].Im};
    }
    const auto ref = DirectDft(zc, false);
    // Computed in double and rounded once: within half an ulp or so.
    EXPECT_LE(RelRms(ref, g3.data(), size_t(n)), 0.6 * std::numeric_limits<float>::epsilon());
    EXPECT_LE(RelRms(ref, g2.data(), size_t(n)), 2 * std::numeric_limits<float>::epsilon() * Log2N(n));
}

TEST(PureFft, TwoDimensionalComplexInTwoStages) {
    const int rows = 4, cols = 8;
    const auto x = RandomComplex<double>(size_t(rows * cols), 23u);
    std::vector<TCplx> src(x.size()), dst(x.size()), back(x.size());
    for (size_t i = 0; i < x.size(); ++i) src[i] = TCplx(x[i].real(), x[i].imag());
    const int32_t wl = 2 * rows * cols + 2 * rows;
    std::vector<double> w(static_cast<size_t>(wl));
    EXPECT_EQ(MessageOf([&] { FFT2D1(src.data(), 0, rows, cols, w.data(), wl - 1); }), "Work buffer is too small");
    FFT2D1(src.data(), 0, rows, cols, w.data(), wl);
    FFT2D2(w.data(), wl, dst.data(), 0, rows, cols);
    std::vector<std::complex<double>> got(x.size());
    for (size_t i = 0; i < x.size(); ++i) got[i] = {dst[i].Re, dst[i].Im};
    EXPECT_LE(RelRms(Direct2D(x, rows, cols, false), got.data(), got.size()), 1e-15);
    IFFT2D1(dst.data(), 0, rows, cols, w.data(), wl);
    IFFT2D2(w.data(), wl, back.data(), 0, rows, cols);
    for (size_t i = 0; i < x.size(); ++i) {
        EXPECT_NEAR(back[i].Re, x[i].real(), 1e-15);
        EXPECT_NEAR(back[i].Im, x[i].imag(), 1e-15);
    }
}

TEST(PureFft, TwoDimensionalRealInEachFormat) {
    // The forward is the 2-D DFT of the real matrix (rows, then columns);
    // checked against the direct one, and each inverse returns the input.
    for (auto [rows, cols] : {std::pair{4, 8}, std::pair{8, 4}, std::pair{2, 2}, std::pair{1, 16}}) {
        SCOPED_TRACE(testing::Message() << rows << " x " << cols);
        const auto x = RandomReal<double>(size_t(rows * cols), 29u);
        std::vector<std::complex<double>> xc(x.size());
        for (size_t i = 0; i < x.size(); ++i) xc[i] = {x[i], 0};
        const auto F = Direct2D(xc, rows, cols, false);
        const int32_t wl = rows * (cols + 2) + 2 * rows + 2;
        std::vector<double> w(static_cast<size_t>(wl)), back(x.size());
        // CCS: rows x (cols / 2 + 1) complex bins.
        const int nb = cols / 2 + 1;
        std::vector<TCplx> ccs(static_cast<size_t>(rows * nb));
        FFT2DFromRealCCS1(x.data(), 0, rows, cols, w.data(), wl);
        FFT2DFromRealCCS2(w.data(), wl, rows, cols);
        FFT2DFromRealCCS3(w.data(), wl, ccs.data(), 0, rows, cols);
        for (int r = 0; r < rows; ++r)
            for (int k = 0; k < nb; ++k) {
                EXPECT_NEAR(ccs[size_t(r * nb + k)].Re, double(F[size_t(r * cols + k)].real()), 1e-14);
                EXPECT_NEAR(ccs[size_t(r * nb + k)].Im, double(F[size_t(r * cols + k)].imag()), 1e-14);
            }
        IFFT2DToRealCCS1(ccs.data(), 0, rows, cols, w.data(), wl);
        IFFT2DToRealCCS2(w.data(), wl, back.data(), 0, rows, cols);
        for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(back[i], x[i], 1e-15);
        // Pack and Perm: the format along the rows, and along the columns for
        // the two real columns.
        for (int f : {1, 2}) {
            std::vector<double> p(x.size());
            if (f == 1) {
                FFT2DFromRealPack1(x.data(), 0, rows, cols, w.data(), wl);
                FFT2DFromRealPack2(w.data(), wl, p.data(), 0, rows, cols);
            } else {
                FFT2DFromRealPerm1(x.data(), 0, rows, cols, w.data(), wl);
                FFT2DFromRealPerm2(w.data(), wl, p.data(), 0, rows, cols);
            }
            const auto rs = FormatSlots(f, cols), cs = FormatSlots(f, rows);
            for (int r = 0; r < rows; ++r)
                for (int q = 0; q < cols; ++q) {
                    const TSlot s = rs[size_t(q)];
                    const bool realCol = s.bin == 0 || s.bin == cols / 2;
                    const LC v = realCol ? F[size_t(cs[size_t(r)].bin * cols + s.bin)] : F[size_t(r * cols + s.bin)];
                    const bool im = realCol ? cs[size_t(r)].im : s.im;
                    EXPECT_NEAR(p[size_t(r * cols + q)], double(im ? v.imag() : v.real()), 1e-14)
                        << "format " << f << " row " << r << " pos " << q;
                }
            if (f == 1) {
                IFFT2DToRealPack1(p.data(), 0, rows, cols, w.data(), wl);
                IFFT2DToRealPack2(w.data(), wl, back.data(), 0, rows, cols);
            } else {
                IFFT2DToRealPerm1(p.data(), 0, rows, cols, w.data(), wl);
                IFFT2DToRealPerm2(w.data(), wl, back.data(), 0, rows, cols);
            }
            for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(back[i], x[i], 1e-15) << "format " << f;
        }
    }
}
