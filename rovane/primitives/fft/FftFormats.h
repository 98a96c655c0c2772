// Internal: the three layouts of a real signal's half spectrum.
//   CCS:  R0, 0, R1, I1, ..., R(N/2), 0          N + 2 reals (odd N: N + 1)
//   Pack: R0, R1, I1, ..., R(N/2)                N reals
//   Perm: R0, R(N/2), R1, I1, ..., R(N/2-1), I(N/2-1)   N reals
// For odd N there is no bin N/2: Pack and Perm are both R0, R1, I1, ...,
// R((N-1)/2), I((N-1)/2), and CCS ends with the pair of bin (N-1)/2.
#pragma once

#include <complex>
#include <cstdint>

#include "rovane/scalars/Scalars.h"

namespace rovane::fft {

// Reals a spectrum of n points takes in the format.
inline int64_t FormatLength(TFFTStorageFormat f, int64_t n) {
    return f == fsfCCS ? 2 * (n / 2 + 1) : n;
}

// bins: n / 2 + 1 complex values (CCS order) to the format, written at dst
// with the given stride between reals.
template <class T>
inline void PackSpectrum(TFFTStorageFormat f, const std::complex<T>* bins, int64_t n, T* dst, int64_t stride = 1) {
    const int64_t nb = n / 2 + 1;
    if (f == fsfCCS) {
        for (int64_t k = 0; k < nb; ++k) {
            dst[2 * k * stride] = bins[k].real();
            dst[(2 * k + 1) * stride] = bins[k].imag();
        }
        dst[stride] = 0;
        if (n % 2 == 0) dst[(2 * nb - 1) * stride] = 0;
        return;
    }
    dst[0] = bins[0].real();
    int64_t pos = 1;
    if (f == fsfPerm && n % 2 == 0 && n > 1) dst[stride * pos++] = bins[n / 2].real();
    const int64_t last = (n % 2 == 0) ? n / 2 - 1 : n / 2;  // last bin written as a pair
    for (int64_t k = 1; k <= last; ++k) {
        dst[stride * pos++] = bins[k].real();
        dst[stride * pos++] = bins[k].imag();
    }
    if (f == fsfPack && n % 2 == 0 && n > 1) dst[stride * pos] = bins[n / 2].real();
}

// The format back to n / 2 + 1 bins; the two parts a format does not store
// are zero.
template <class T>
inline void UnpackSpectrum(TFFTStorageFormat f, const T* src, int64_t n, std::complex<T>* bins, int64_t stride = 1) {
    const int64_t nb = n / 2 + 1;
    if (f == fsfCCS) {
        for (int64_t k = 0; k < nb; ++k) bins[k] = std::complex<T>(src[2 * k * stride], src[(2 * k + 1) * stride]);
        bins[0] = std::complex<T>(bins[0].real(), 0);
        if (n % 2 == 0) bins[nb - 1] = std::complex<T>(bins[nb - 1].real(), 0);
        return;
    }
    bins[0] = std::complex<T>(src[0], 0);
    if (n == 1) return;
    int64_t pos = 1;
    if (f == fsfPerm && n % 2 == 0) bins[n / 2] = std::complex<T>(src[stride * pos++], 0);
    const int64_t last = (n % 2 == 0) ? n / 2 - 1 : n / 2;
    for (int64_t k = 1; k <= last; ++k) {
        bins[k] = std::complex<T>(src[stride * pos], src[stride * (pos + 1)]);
        pos += 2;
    }
    if (f == fsfPack && n % 2 == 0) bins[n / 2] = std::complex<T>(src[stride * pos], 0);
}

// Position in a row of n reals in Pack or Perm of bin k's real part (im
// false) or imaginary part; -1 when the format does not store it.
inline int64_t PackPos(TFFTStorageFormat f, int64_t n, int64_t k, bool im) {
    if (k == 0) return im ? -1 : 0;
    if (n % 2 == 0 && k == n / 2) return im ? -1 : (f == fsfPack ? n - 1 : 1);
    const int64_t base = (f == fsfPerm && n % 2 == 0) ? 2 * k : 2 * k - 1;
    return base + (im ? 1 : 0);
}

}  // namespace rovane::fft
