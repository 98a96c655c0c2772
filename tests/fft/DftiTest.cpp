// The dfti_* interface: placement, precision, real storage formats for even
// and odd lengths, two dimensions, batches with distances, scaling and the
// statuses of misuse.
#include <gtest/gtest.h>

#include <limits>

#include "FftTestUtil.h"
#include "rovane/primitives/DFTIDescriptors.h"

using namespace rovane;
using namespace rovane::ffttest;

namespace {

struct TDesc {
    TDftiHandle h = nullptr;
    TDesc(int32_t precision, int32_t domain, std::vector<int32_t> lengths) {
        EXPECT_EQ(dfti_create_descriptor_highd(h, precision, domain, int32_t(lengths.size()), lengths.data()),
                  DFTI_NO_ERROR);
    }
    ~TDesc() { dfti_free_descriptor_external(h); }
    void Set(int32_t p, int32_t v) { EXPECT_EQ(dfti_set_value_intval(h, p, v), DFTI_NO_ERROR); }
    void Commit() { ASSERT_EQ(dfti_commit_descriptor_external(h), DFTI_NO_ERROR); }
};

template <class T>
constexpr double Tol(int64_t n) {
    return 2 * std::numeric_limits<T>::epsilon() * Log2N(n);
}

}  // namespace

TEST(Dfti, ComplexInPlaceAndOutOfPlaceBothPrecisions) {
    for (int n : {1, 7, 64, 100, 4099}) {
        const auto x = RandomComplex<double>(size_t(n), 3u);
        const auto ref = DirectDft(x, false);
        {
            TDesc d(DFTI_DOUBLE, DFTI_COMPLEX, {n});
            d.Commit();
            std::vector<TCplx> a(size_t(n) + 3);
            for (int j = 0; j < n; ++j) a[size_t(j) + 3] = TCplx(x[size_t(j)].real(), x[size_t(j)].imag());
            ASSERT_EQ(dfti_compute_forward_z_Idx(d.h, a.data(), 3), DFTI_NO_ERROR);
            std::vector<std::complex<double>> got(static_cast<size_t>(n));
            for (int j = 0; j < n; ++j) got[size_t(j)] = {a[size_t(j) + 3].Re, a[size_t(j) + 3].Im};
            EXPECT_LE(RelRms(ref, got.data(), size_t(n)), Tol<double>(n)) << n;
        }
        {
            TDesc d(DFTI_SINGLE, DFTI_COMPLEX, {n});
            d.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
            EXPECT_EQ(dfti_set_value_sglval(d.h, DFTI_BACKWARD_SCALE, 1.0f / float(n)), DFTI_NO_ERROR);
            d.Commit();
            std::vector<TSCplx> a(static_cast<size_t>(n)), b(size_t(n) + 1), c(static_cast<size_t>(n));
            for (int j = 0; j < n; ++j) {
                a[size_t(j)].Re = float(x[size_t(j)].real());
                a[size_t(j)].Im = float(x[size_t(j)].imag());
            }
            ASSERT_EQ(dfti_compute_forward_c_out_Idx(d.h, a.data(), 0, b.data(), 1), DFTI_NO_ERROR);
            std::vector<std::complex<float>> got(static_cast<size_t>(n));
            for (int j = 0; j < n; ++j) got[size_t(j)] = {b[size_t(j) + 1].Re, b[size_t(j) + 1].Im};
            EXPECT_LE(RelRms(ref, got.data(), size_t(n)), 4 * Tol<float>(n)) << n;
            ASSERT_EQ(dfti_compute_backward_c_out_Idx(d.h, b.data(), 1, c.data(), 0), DFTI_NO_ERROR);
            for (int j = 0; j < n; ++j) {
                EXPECT_NEAR(c[size_t(j)].Re, a[size_t(j)].Re, 1e-5) << n;
                EXPECT_NEAR(c[size_t(j)].Im, a[size_t(j)].Im, 1e-5) << n;
            }
        }
    }
}

TEST(Dfti, FourPointFormatsFollowTheLayoutTable) {
    // x = 1 2 3 4: X0 = 10, X1 = -2 + 2i, X2 = -2.
    struct Case {
        int32_t format;
        std::vector<double> expect;
    };
    const Case cases[] = {{DFTI_CCS_FORMAT, {10, 0, -2, 2, -2, 0}},
                          {DFTI_PACK_FORMAT, {10, -2, 2, -2}},
                          {DFTI_PERM_FORMAT, {10, -2, -2, 2}}};
    for (const Case& c : cases) {
        TDesc d(DFTI_DOUBLE, DFTI_REAL, {4});
        if (c.format != DFTI_CCS_FORMAT) d.Set(DFTI_PACKED_FORMAT, c.format);
        d.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
        d.Commit();
        const double x[4] = {1, 2, 3, 4};
        std::vector<double> y(c.expect.size(), 99), back(4);
        ASSERT_EQ(dfti_compute_forward_d_out_Idx(d.h, x, 0, y.data(), 0), DFTI_NO_ERROR);
        for (size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(y[i], c.expect[i], 1e-15) << c.format << " at " << i;
        ASSERT_EQ(dfti_compute_backward_d_out_Idx(d.h, y.data(), 0, back.data(), 0), DFTI_NO_ERROR);
        for (int j = 0; j < 4; ++j) EXPECT_NEAR(back[size_t(j)], 4 * x[j], 1e-14);
    }
}

TEST(Dfti, RealFormatsEvenAndOddLengths) {
    for (int n : {1, 2, 3, 5, 8, 9, 30, 67, 128}) {
        const auto x = RandomReal<double>(size_t(n), 11u);
        std::vector<std::complex<double>> xc(static_cast<size_t>(n));
        for (int j = 0; j < n; ++j) xc[size_t(j)] = {x[size_t(j)], 0};
        const auto ref = DirectDft(xc, false);
        for (int32_t fmt : {DFTI_CCS_FORMAT, DFTI_PACK_FORMAT, DFTI_PERM_FORMAT}) {
            SCOPED_TRACE(testing::Message() << "n = " << n << " format " << fmt);
            TDesc d(DFTI_DOUBLE, DFTI_REAL, {n});
            d.Set(DFTI_PACKED_FORMAT, fmt);
            EXPECT_EQ(dfti_set_value_dblval(d.h, DFTI_BACKWARD_SCALE, 1.0 / n), DFTI_NO_ERROR);
            d.Commit();
            // In place: the array holds the longer of signal and spectrum.
            const int len = fmt == DFTI_CCS_FORMAT ? 2 * (n / 2 + 1) : n;
            std::vector<double> a(size_t(len), 0);
            std::copy(x.begin(), x.end(), a.begin());
            ASSERT_EQ(dfti_compute_forward_d_Idx(d.h, a.data(), 0), DFTI_NO_ERROR);
            if (fmt == DFTI_CCS_FORMAT) {
                for (int k = 0; k <= n / 2; ++k) {
                    EXPECT_NEAR(a[size_t(2 * k)], double(ref[size_t(k)].real()), 1e-13);
                    EXPECT_NEAR(a[size_t(2 * k + 1)], double(ref[size_t(k)].imag()), 1e-13);
                }
            } else {
                const auto slots = FormatSlots(fmt == DFTI_PACK_FORMAT ? 1 : 2, n);
                ASSERT_EQ(int(slots.size()), n);
                for (int p = 0; p < n; ++p) {
                    const LC v = ref[size_t(slots[size_t(p)].bin)];
                    EXPECT_NEAR(a[size_t(p)], double(slots[size_t(p)].im ? v.imag() : v.real()), 1e-13) << p;
                }
            }
            ASSERT_EQ(dfti_compute_backward_d_Idx(d.h, a.data(), 0), DFTI_NO_ERROR);
            for (int j = 0; j < n; ++j) EXPECT_NEAR(a[size_t(j)], x[size_t(j)], 1e-14);
        }
    }
}

TEST(Dfti, SingleRealRoundsEachPart) {
    // Float output read through both parts: a fault in rounding pairs shows.
    const int n = 48;
    const auto x = RandomReal<float>(size_t(n), 5u);
    TDesc d(DFTI_SINGLE, DFTI_REAL, {n});
    d.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    d.Commit();
    std::vector<float> y(static_cast<size_t>(n + 2));
    ASSERT_EQ(dfti_compute_forward_s_out_Idx(d.h, x.data(), 0, y.data(), 0), DFTI_NO_ERROR);
    std::vector<std::complex<float>> xc(static_cast<size_t>(n)), got(static_cast<size_t>(n / 2 + 1));
    for (int j = 0; j < n; ++j) xc[size_t(j)] = {x[size_t(j)], 0};
    for (int k = 0; k <= n / 2; ++k) got[size_t(k)] = {y[size_t(2 * k)], y[size_t(2 * k + 1)]};
    EXPECT_LE(RelRms(DirectDft(xc, false), got.data(), got.size()), Tol<float>(n));
}

TEST(Dfti, TwoDimensionalComplexMatchesDirect) {
    const int rows = 6, cols = 10;
    const auto x = RandomComplex<double>(size_t(rows * cols), 9u);
    const auto ref = Direct2D(x, rows, cols, false);
    TDesc d(DFTI_DOUBLE, DFTI_COMPLEX, {cols, rows});
    d.Commit();
    std::vector<TCplx> a(x.size());
    for (size_t i = 0; i < x.size(); ++i) a[i] = TCplx(x[i].real(), x[i].imag());
    ASSERT_EQ(dfti_compute_forward_z_Idx(d.h, a.data(), 0), DFTI_NO_ERROR);
    std::vector<std::complex<double>> got(x.size());
    for (size_t i = 0; i < x.size(); ++i) got[i] = {a[i].Re, a[i].Im};
    EXPECT_LE(RelRms(ref, got.data(), got.size()), Tol<double>(rows * cols));
}

TEST(Dfti, TwoDimensionalRealInEachFormat) {
    for (auto [rows, cols] : {std::pair{4, 8}, std::pair{5, 6}, std::pair{6, 7}, std::pair{1, 4}}) {
        const auto x = RandomReal<double>(size_t(rows * cols), 13u);
        std::vector<std::complex<double>> xc(x.size());
        for (size_t i = 0; i < x.size(); ++i) xc[i] = {x[i], 0};
        const auto F = Direct2D(xc, rows, cols, false);
        for (int32_t fmt : {DFTI_CCS_FORMAT, DFTI_PACK_FORMAT, DFTI_PERM_FORMAT}) {
            SCOPED_TRACE(testing::Message() << rows << " x " << cols << " format " << fmt);
            TDesc d(DFTI_DOUBLE, DFTI_REAL, {cols, rows});
            d.Set(DFTI_PACKED_FORMAT, fmt);
            d.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
            EXPECT_EQ(dfti_set_value_dblval(d.h, DFTI_BACKWARD_SCALE, 1.0 / (rows * cols)), DFTI_NO_ERROR);
            d.Commit();
            const int rowLen = fmt == DFTI_CCS_FORMAT ? 2 * (cols / 2 + 1) : cols;
            std::vector<double> y(size_t(rows * rowLen), 0), back(x.size());
            ASSERT_EQ(dfti_compute_forward_d_out_Idx(d.h, x.data(), 0, y.data(), 0), DFTI_NO_ERROR);
            if (fmt == DFTI_CCS_FORMAT) {
                for (int r = 0; r < rows; ++r)
                    for (int k = 0; k <= cols / 2; ++k) {
                        const LC v = F[size_t(r * cols + k)];
                        EXPECT_NEAR(y[size_t(r * rowLen + 2 * k)], double(v.real()), 1e-13);
                        EXPECT_NEAR(y[size_t(r * rowLen + 2 * k + 1)], double(v.imag()), 1e-13);
                    }
            } else {
                // Rows in the format; the two real columns in the format along
                // the column.
                const int f = fmt == DFTI_PACK_FORMAT ? 1 : 2;
                const auto rowSlots = FormatSlots(f, cols), colSlots = FormatSlots(f, rows);
                for (int r = 0; r < rows; ++r)
                    for (int p = 0; p < cols; ++p) {
                        const TSlot s = rowSlots[size_t(p)];
                        const bool realCol = s.bin == 0 || (cols % 2 == 0 && s.bin == cols / 2);
                        LC v;
                        bool im = s.im;
                        if (realCol) {
                            v = F[size_t(colSlots[size_t(r)].bin * cols + s.bin)];
                            im = colSlots[size_t(r)].im;
                        } else {
                            v = F[size_t(r * cols + s.bin)];
                        }
                        EXPECT_NEAR(y[size_t(r * cols + p)], double(im ? v.imag() : v.real()), 1e-13)
                            << "row " << r << " pos " << p;
                    }
            }
            ASSERT_EQ(dfti_compute_backward_d_out_Idx(d.h, y.data(), 0, back.data(), 0), DFTI_NO_ERROR);
            for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(back[i], x[i], 1e-14);
        }
    }
}

TEST(Dfti, BatchWithDistancesLeavesTheGapsAlone) {
    // Three real rows of 6 in rows of 10 reals, spectra in rows of 8.
    const int n = 6, rows = 3, inDist = 10, outDist = 8;
    TDesc d(DFTI_DOUBLE, DFTI_REAL, {n});
    d.Set(DFTI_NUMBER_OF_TRANSFORMS, rows);
    d.Set(DFTI_INPUT_DISTANCE, inDist);
    d.Set(DFTI_OUTPUT_DISTANCE, outDist);
    d.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    d.Commit();
    const auto x = RandomReal<double>(size_t(rows * inDist), 21u);
    std::vector<double> y(size_t(rows * outDist), -7);
    ASSERT_EQ(dfti_compute_forward_d_out_Idx(d.h, x.data(), 0, y.data(), 0), DFTI_NO_ERROR);
    for (int r = 0; r < rows; ++r) {
        std::vector<std::complex<double>> xc(static_cast<size_t>(n));
        for (int j = 0; j < n; ++j) xc[size_t(j)] = {x[size_t(r * inDist + j)], 0};
        const auto ref = DirectDft(xc, false);
        for (int k = 0; k <= n / 2; ++k) {
            EXPECT_NEAR(y[size_t(r * outDist + 2 * k)], double(ref[size_t(k)].real()), 1e-13);
            EXPECT_NEAR(y[size_t(r * outDist + 2 * k + 1)], double(ref[size_t(k)].imag()), 1e-13);
        }
        // n + 2 = 8 reals per spectrum: nothing beyond.
    }
    // Distances belong to the call's input and output: backward reads the
    // spectra 8 apart and writes the signals 10 apart.
    TDesc b(DFTI_DOUBLE, DFTI_REAL, {n});
    b.Set(DFTI_NUMBER_OF_TRANSFORMS, rows);
    b.Set(DFTI_INPUT_DISTANCE, outDist);
    b.Set(DFTI_OUTPUT_DISTANCE, inDist);
    b.Set(DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    b.Commit();
    std::vector<double> xb(static_cast<size_t>(rows * inDist), -5);
    ASSERT_EQ(dfti_compute_backward_d_out_Idx(b.h, y.data(), 0, xb.data(), 0), DFTI_NO_ERROR);
    for (int r = 0; r < rows; ++r) {
        for (int j = 0; j < n; ++j) EXPECT_NEAR(xb[size_t(r * inDist + j)], n * x[size_t(r * inDist + j)], 1e-13);
        for (int j = n; j < inDist; ++j) EXPECT_EQ(xb[size_t(r * inDist + j)], -5) << "gap touched";
    }
}

TEST(Dfti, MisuseGivesStatusesNotCrashes) {
    TDftiHandle h = nullptr;
    const int32_t zero = 0, eight = 8;
    EXPECT_EQ(dfti_create_descriptor_highd(h, DFTI_DOUBLE, DFTI_COMPLEX, 1, &zero), DFTI_INVALID_CONFIGURATION);
    EXPECT_EQ(h, nullptr);
    EXPECT_EQ(dfti_create_descriptor_highd(h, 99, DFTI_COMPLEX, 1, &eight), DFTI_INVALID_CONFIGURATION);
    ASSERT_EQ(dfti_create_descriptor_highd(h, DFTI_DOUBLE, DFTI_COMPLEX, 1, &eight), DFTI_NO_ERROR);
    std::vector<TCplx> a(8, TCplx(1, 0));
    EXPECT_EQ(dfti_compute_forward_z_Idx(h, a.data(), 0), DFTI_BAD_DESCRIPTOR);  // not committed
    ASSERT_EQ(dfti_commit_descriptor_external(h), DFTI_NO_ERROR);
    std::vector<TSCplx> s(8);
    EXPECT_EQ(dfti_compute_forward_c_Idx(h, s.data(), 0), DFTI_INCONSISTENT_CONFIGURATION);  // precision
    EXPECT_EQ(dfti_compute_forward_z_out_Idx(h, a.data(), 0, a.data(), 0), DFTI_INCONSISTENT_CONFIGURATION);
    EXPECT_EQ(dfti_set_value_intval(h, DFTI_PACKED_FORMAT, DFTI_PACK_FORMAT), DFTI_INCONSISTENT_CONFIGURATION);
    EXPECT_EQ(dfti_set_value_intval(h, 12345, 1), DFTI_INVALID_CONFIGURATION);
    // A setting uncommits: the next compute asks for a commit.
    EXPECT_EQ(dfti_set_value_intval(h, DFTI_NUMBER_OF_TRANSFORMS, 1), DFTI_NO_ERROR);
    EXPECT_EQ(dfti_compute_forward_z_Idx(h, a.data(), 0), DFTI_BAD_DESCRIPTOR);
    EXPECT_EQ(dfti_free_descriptor_external(h), DFTI_NO_ERROR);
    EXPECT_EQ(h, nullptr);
    EXPECT_EQ(dfti_compute_forward_z_Idx(nullptr, a.data(), 0), DFTI_BAD_DESCRIPTOR);
    for (int32_t st : {0, 1, 2, 3, 5, 6, 77}) EXPECT_STRNE(DftiErrorMessage(st), "");
    // Beyond the longest planned length the commit reports out of memory.
    const int32_t huge = (1 << 28) + 3;
    ASSERT_EQ(dfti_create_descriptor_highd(h, DFTI_DOUBLE, DFTI_COMPLEX, 1, &huge), DFTI_NO_ERROR);
    EXPECT_EQ(dfti_commit_descriptor_external(h), DFTI_MEMORY_ERROR);
    dfti_free_descriptor_external(h);
}
