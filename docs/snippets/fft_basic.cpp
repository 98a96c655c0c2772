// Fourier transforms: a descriptor of any length, the shared descriptor
// cache, a real signal in the Pack format and the pure power-of-two FFT.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>
#include <vector>

using namespace rovane;

int main() {
    // A complex transform of 1000 points (not a power of two), out of place,
    // with the backward transform scaled by 1/N.
    const int n = 1000;
    TDftiHandle h = nullptr;
    if (dfti_create_descriptor_highd(h, DFTI_DOUBLE, DFTI_COMPLEX, 1, &n) != DFTI_NO_ERROR) return 1;
    dfti_set_value_intval(h, DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    dfti_set_value_dblval(h, DFTI_BACKWARD_SCALE, 1.0 / n);
    if (dfti_commit_descriptor_external(h) != DFTI_NO_ERROR) return 1;

    std::vector<TCplx> x(n), spectrum(n), back(n);
    for (int j = 0; j < n; ++j) x[j] = TCplx(std::cos(2 * M_PI * 5 * j / n), 0);  // a cosine of 5 cycles
    dfti_compute_forward_z_out_Idx(h, x.data(), 0, spectrum.data(), 0);
    // All energy sits in bins 5 and n - 5, each n / 2.
    if (std::fabs(spectrum[5].Re - n / 2.0) > 1e-9 || std::fabs(spectrum[n - 5].Re - n / 2.0) > 1e-9) return 2;
    dfti_compute_backward_z_out_Idx(h, spectrum.data(), 0, back.data(), 0);
    for (int j = 0; j < n; ++j)
        if (std::fabs(back[j].Re - x[j].Re) > 1e-12) return 3;
    dfti_free_descriptor_external(h);

    // Through the process-wide cache: the second lookup of the same shape is
    // a hit on the slot that the hint names.
    TDFTIDescriptorCache& cache = DFTIDescriptorCache();
    int32_t hint = 0;
    std::vector<double> signal;
    for (int round = 0; round < 2; ++round) {
        signal = {1, 2, 3, 4, 0, 0};  // 4 reals and room for CCS (N + 2)
        TDftiHandle d = cache.GetDesc(4, dftfReal | dftfInPlace, hint);
        dfti_compute_forward_d_Idx(d, signal.data(), 0);
        cache.ReleaseDscr(hint);  // every GetDesc is matched by a release
    }
    // CCS: R0, 0, R1, I1, R2, 0 = 10, 0, -2, 2, -2, 0
    if (signal[0] != 10 || signal[2] != -2 || signal[3] != 2 || signal[4] != -2) return 4;

    // The pure routine: in place on interleaved reals, forward then inverse.
    std::vector<double> data = {1, 0, 2, 0, 3, 0, 4, 0};  // four complex points
    FFTComplex(data.data(), 8, 0, 1, 8);
    FFTComplex(data.data(), 8, 0, -1, 8);
    if (std::fabs(data[4] - 3) > 1e-15) return 5;

    std::printf("fft_basic: ok\n");
    return 0;
}
