// The pure power-of-two FFT, double and single.
#include "rovane/primitives/lapack_dfti_core.h"

#include <cmath>
#include <complex>
#include <cstring>
#include <utility>

#include "rovane/primitives/fft/FftFormats.h"

namespace rovane {

namespace {

// 2 pi with a 64-bit mantissa.
constexpr long double kTwoPi = 6.283185307179586476925286766559005768L;
constexpr long double kPi = 3.141592653589793238462643383279502884L;

template <class T>
struct TCplxOf;
template <>
struct TCplxOf<double> {
    using type = TCplx;
};
template <>
struct TCplxOf<float> {
    using type = TSCplx;
};

bool IsPow2(int64_t n) { return n > 0 && (n & (n - 1)) == 0; }

void CheckWork(int64_t have, int64_t need) {
    if (have < need) ERaise("Work buffer is too small");
}

void CheckRange(const char* name, int64_t arrayLength, int64_t index, int64_t len) {
    if (index < 0 || index + len > arrayLength)
        ERangeErrorRaiseFmt("%s: Index + DataLen > ArrayLength (%d + %d > %d)", name, index, len, arrayLength);
}

// Radix-2 decimation in time on n interleaved reals with the exponent's
// sign given; w by the recurrence w += w (wpr + i wpi) in extended precision.
template <class T>
void Core(T* d, int64_t n, int sign) {
    int64_t j = 0;
    for (int64_t i = 0; i < n; i += 2) {
        if (j > i) {
            std::swap(d[j], d[i]);
            std::swap(d[j + 1], d[i + 1]);
        }
        int64_t m = n >> 1;
        while (m >= 2 && j >= m) {
            j -= m;
            m >>= 1;
        }
        j += m;
    }
    for (int64_t mmax = 2; n > mmax; mmax <<= 1) {
        const int64_t istep = mmax << 1;
        const long double theta = kTwoPi / static_cast<long double>(mmax * sign);
        const long double wt = sinl(0.5L * theta);
        const long double wpr = -2.0L * wt * wt, wpi = sinl(theta);
        long double wr = 1, wi = 0;
        for (int64_t m = 0; m < mmax; m += 2) {
            for (int64_t i = m; i < n; i += istep) {
                const int64_t k = i + mmax;
                const long double tr = wr * d[k] - wi * d[k + 1];
                const long double ti = wr * d[k + 1] + wi * d[k];
                d[k] = static_cast<T>(d[i] - tr);
                d[k + 1] = static_cast<T>(d[i + 1] - ti);
                d[i] = static_cast<T>(d[i] + tr);
                d[i + 1] = static_cast<T>(d[i + 1] + ti);
            }
            const long double w0 = wr;
            wr = wr * wpr - wi * wpi + wr;
            wi = wi * wpr + w0 * wpi + wi;
        }
    }
}

template <class T>
void ComplexImpl(T* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen) {
    if (DataLen == 0) return;
    if (DataLen < 2 || !IsPow2(DataLen)) ERaise("FFTComplex: DataLen must be a power of two!");
    if (Direction != 1 && Direction != -1) ERaiseFmt("FFTComplex: Direction = %d (expected 1 or -1)", Direction);
    CheckRange("FFTComplex", ArrayLength, Index, DataLen);
    T* d = Data + Index;
    const int64_t n = DataLen / 2;
    auto swapEnds = [&] {
        for (int64_t k = 1; k < n - k; ++k) {
            std::swap(d[2 * k], d[2 * (n - k)]);
            std::swap(d[2 * k + 1], d[2 * (n - k) + 1]);
        }
    };
    if (Direction == 1) {
        Core(d, DataLen, 1);
        swapEnds();
    } else {
        swapEnds();
        Core(d, DataLen, -1);
        const long double s = 2.0L / DataLen;
        for (int64_t i = 0; i < DataLen; ++i) d[i] = static_cast<T>(d[i] * s);
    }
}

// Separation of the even and odd parts of a real signal packed as complex
// (the four1/realft scheme): sign +1 after the core, -1 before it.
template <class T>
void Split(T* d, int64_t N, int isign) {
    const long double c1 = 0.5L, c2 = isign == 1 ? -0.5L : 0.5L;
    const long double theta = (isign == 1 ? kPi : -kPi) / static_cast<long double>(N / 2);
    const long double wt = sinl(0.5L * theta);
    const long double wpr = -2.0L * wt * wt, wpi = sinl(theta);
    long double wr = 1.0L + wpr, wi = wpi;
    for (int64_t k = 1; k < N / 4; ++k) {
        const int64_t i1 = 2 * k, i2 = i1 + 1, i3 = N - 2 * k, i4 = i3 + 1;
        const long double h1r = c1 * (static_cast<long double>(d[i1]) + d[i3]);
        const long double h1i = c1 * (static_cast<long double>(d[i2]) - d[i4]);
        const long double h2r = -c2 * (static_cast<long double>(d[i2]) + d[i4]);
        const long double h2i = c2 * (static_cast<long double>(d[i1]) - d[i3]);
        d[i1] = static_cast<T>(h1r + wr * h2r - wi * h2i);
        d[i2] = static_cast<T>(h1i + wr * h2i + wi * h2r);
        d[i3] = static_cast<T>(h1r - wr * h2r + wi * h2i);
        d[i4] = static_cast<T>(-h1i + wr * h2i + wi * h2r);
        const long double w0 = wr;
        wr = wr * wpr - wi * wpi + wr;
        wi = wi * wpr + w0 * wpi + wi;
    }
}

template <class T>
void RealImpl(T* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen) {
    const int64_t N = int64_t(DataLen) - 2;
    if (N < 2 || !IsPow2(N)) ERaise("FFTReal: DataLen-2 must be a power of two!");
    if (Direction != 1 && Direction != -1) ERaiseFmt("FFTReal: Direction = %d (expected 1 or -1)", Direction);
    CheckRange("FFTReal", ArrayLength, Index, DataLen);
    T* d = Data + Index;
    const int64_t M = N / 2;
    if (Direction == 1) {
        Core(d, N, 1);
        Split(d, N, 1);
        const T r0 = d[0], i0 = d[1];
        d[0] = r0 + i0;
        d[1] = 0;
        d[N] = r0 - i0;
        d[N + 1] = 0;
        for (int64_t k = 1; k < M; ++k) d[2 * k + 1] = -d[2 * k + 1];
    } else {
        for (int64_t k = 1; k < M; ++k) d[2 * k + 1] = -d[2 * k + 1];
        const T r0 = d[0], rM = d[N];
        Split(d, N, -1);
        d[0] = static_cast<T>((static_cast<long double>(r0) + rM) * 0.5L);
        d[1] = static_cast<T>((static_cast<long double>(r0) - rM) * 0.5L);
        Core(d, N, -1);
        d[N] = 0;
        d[N + 1] = 0;
        const long double s = 2.0L / N;
        for (int64_t i = 0; i < N; ++i) d[i] = static_cast<T>(d[i] * s);
    }
}

template <class T>
using Cx = std::complex<T>;

template <class T>
Cx<T>* AsCx(T* p) {
    return reinterpret_cast<Cx<T>*>(p);
}

template <class T>
void RealToFormat(TFFTStorageFormat f, const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,
                  int32_t WorkLength) {
    CheckWork(WorkLength, int64_t(N) + 2);
    std::memcpy(Work, Src + SrcIndex, size_t(N) * sizeof(T));
    RealImpl<T>(Work, WorkLength, 0, 1, N + 2);
    if (f == fsfCCS) std::memcpy(Dst + DstIndex, Work, size_t(N + 2) * sizeof(T));
    else fft::PackSpectrum<T>(f, AsCx(Work), N, Dst + DstIndex);
}

template <class T>
void FormatToReal(TFFTStorageFormat f, const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,
                  int32_t WorkLength) {
    CheckWork(WorkLength, int64_t(N) + 2);
    fft::UnpackSpectrum<T>(f, Src + SrcIndex, N, AsCx(Work));
    RealImpl<T>(Work, WorkLength, 0, -1, N + 2);
    std::memcpy(Dst + DstIndex, Work, size_t(N) * sizeof(T));
}

template <class T, class TC>
void ComplexCopy(const TC* Src, int32_t SrcIndex, TC* Dst, int32_t DstIndex, int32_t N, T* Work, int32_t WorkLength,
                 int32_t Direction) {
    CheckWork(WorkLength, 2 * int64_t(N));
    std::memcpy(static_cast<void*>(Work), Src + SrcIndex, size_t(N) * sizeof(TC));
    ComplexImpl<T>(Work, WorkLength, 0, Direction, 2 * N);
    std::memcpy(static_cast<void*>(Dst + DstIndex), Work, size_t(N) * sizeof(TC));
}

// ----- two dimensions ------------------------------------------------------
int64_t RealWork2D(int32_t Rows, int32_t Cols) { return int64_t(Rows) * (int64_t(Cols) + 2) + 2 * int64_t(Rows) + 2; }
int64_t CplxWork2D(int32_t Rows, int32_t Cols) { return 2 * int64_t(Rows) * Cols + 2 * int64_t(Rows); }

void CheckShape(int32_t Rows, int32_t Cols) {
    if (Rows < 1 || Cols < 1) ERaiseFmt("FFT2D: Rows = %d, Cols = %d (expected >= 1)", Rows, Cols);
}

template <class T, class TC>
void Cplx2D1(const TC* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work, int32_t WorkLength, int dir) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, CplxWork2D(Rows, Cols));
    std::memcpy(static_cast<void*>(Work), Src + SrcIndex, size_t(Rows) * size_t(Cols) * sizeof(TC));
    for (int32_t r = 0; r < Rows; ++r) ComplexImpl<T>(Work, WorkLength, 2 * r * Cols, dir, 2 * Cols);
}

template <class T, class TC>
void Cplx2D2(T* Work, int32_t WorkLength, TC* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols, int dir) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, CplxWork2D(Rows, Cols));
    const int64_t colAt = 2 * int64_t(Rows) * Cols;
    T* col = Work + colAt;
    TC* dst = Dst + DstIndex;
    for (int32_t c = 0; c < Cols; ++c) {
        for (int32_t r = 0; r < Rows; ++r) {
            col[2 * r] = Work[2 * (int64_t(r) * Cols + c)];
            col[2 * r + 1] = Work[2 * (int64_t(r) * Cols + c) + 1];
        }
        ComplexImpl<T>(Work, WorkLength, static_cast<int32_t>(colAt), dir, 2 * Rows);
        for (int32_t r = 0; r < Rows; ++r) dst[int64_t(r) * Cols + c] = TC(col[2 * r], col[2 * r + 1]);
    }
}

// Row stage of the real forward: rows of Cols + 2 reals, each in CCS.
template <class T>
void Real2DRows(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work, int32_t WorkLength) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2;
    for (int32_t r = 0; r < Rows; ++r) {
        std::memcpy(Work + r * rs, Src + SrcIndex + int64_t(r) * Cols, size_t(Cols) * sizeof(T));
        RealImpl<T>(Work, WorkLength, static_cast<int32_t>(r * rs), 1, Cols + 2);
    }
}

// Transform of real column k (bins 0 and Cols/2) into CCS bins of the column
// in the column buffer (Rows / 2 + 1 complex).
template <class T>
T* RealColumnForward(T* Work, int32_t WorkLength, int32_t Rows, int32_t Cols, int32_t k) {
    const int64_t rs = int64_t(Cols) + 2, colAt = int64_t(Rows) * rs;
    T* col = Work + colAt;
    for (int32_t r = 0; r < Rows; ++r) col[r] = Work[r * rs + 2 * k];
    if (Rows == 1) col[1] = 0;
    else RealImpl<T>(Work, WorkLength, static_cast<int32_t>(colAt), 1, Rows + 2);
    return col;
}

template <class T>
void ComplexColumn(T* Work, int32_t WorkLength, int32_t Rows, int32_t Cols, int32_t k, int dir) {
    const int64_t rs = int64_t(Cols) + 2, colAt = int64_t(Rows) * rs;
    T* col = Work + colAt;
    for (int32_t r = 0; r < Rows; ++r) {
        col[2 * r] = Work[r * rs + 2 * k];
        col[2 * r + 1] = Work[r * rs + 2 * k + 1];
    }
    ComplexImpl<T>(Work, WorkLength, static_cast<int32_t>(colAt), dir, 2 * Rows);
    for (int32_t r = 0; r < Rows; ++r) {
        Work[r * rs + 2 * k] = col[2 * r];
        Work[r * rs + 2 * k + 1] = col[2 * r + 1];
    }
}

template <class T>
void RealCCS2(T* Work, int32_t WorkLength, int32_t Rows, int32_t Cols) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2;
    for (int32_t k = 0; k <= Cols / 2; ++k) {
        if (k == 0 || k == Cols / 2) {
            const T* col = RealColumnForward<T>(Work, WorkLength, Rows, Cols, k);
            for (int32_t r = 0; r < Rows; ++r) {
                const bool low = r <= Rows / 2;
                const int32_t q = low ? r : Rows - r;
                Work[r * rs + 2 * k] = col[2 * q];
                Work[r * rs + 2 * k + 1] = low ? col[2 * q + 1] : -col[2 * q + 1];
            }
        } else {
            ComplexColumn<T>(Work, WorkLength, Rows, Cols, k, 1);
        }
    }
}

template <class T>
void RealPacked2(TFFTStorageFormat f, T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows,
                 int32_t Cols) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2;
    T* dst = Dst + DstIndex;
    for (int32_t k = 0; k <= Cols / 2; ++k) {
        if (k == 0 || k == Cols / 2) {
            T* col = RealColumnForward<T>(Work, WorkLength, Rows, Cols, k);
            fft::PackSpectrum<T>(f, AsCx(col), Rows, dst + fft::PackPos(f, Cols, k, false), Cols);
        } else {
            ComplexColumn<T>(Work, WorkLength, Rows, Cols, k, 1);
            const int64_t pr = fft::PackPos(f, Cols, k, false), pi = fft::PackPos(f, Cols, k, true);
            for (int32_t r = 0; r < Rows; ++r) {
                dst[int64_t(r) * Cols + pr] = Work[r * rs + 2 * k];
                dst[int64_t(r) * Cols + pi] = Work[r * rs + 2 * k + 1];
            }
        }
    }
}

// Inverse of a real column's CCS bins held in the column buffer; the values
// go to column k of the rows as (value, 0).
template <class T>
void RealColumnBackward(T* Work, int32_t WorkLength, int32_t Rows, int32_t Cols, int32_t k) {
    const int64_t rs = int64_t(Cols) + 2, colAt = int64_t(Rows) * rs;
    T* col = Work + colAt;
    if (Rows > 1) RealImpl<T>(Work, WorkLength, static_cast<int32_t>(colAt), -1, Rows + 2);
    for (int32_t r = 0; r < Rows; ++r) {
        Work[r * rs + 2 * k] = col[r];
        Work[r * rs + 2 * k + 1] = 0;
    }
}

template <class T, class TC>
void RealCCSInv1(const TC* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work, int32_t WorkLength) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2, nb = Cols / 2 + 1, colAt = int64_t(Rows) * rs;
    for (int32_t r = 0; r < Rows; ++r)
        std::memcpy(static_cast<void*>(Work + r * rs), Src + SrcIndex + r * nb, size_t(nb) * sizeof(TC));
    for (int32_t k = 0; k < nb; ++k) {
        if (k == 0 || k == Cols / 2) {
            T* col = Work + colAt;
            for (int32_t q = 0; q <= Rows / 2; ++q) {
                col[2 * q] = Work[q * rs + 2 * k];
                col[2 * q + 1] = Work[q * rs + 2 * k + 1];
            }
            RealColumnBackward<T>(Work, WorkLength, Rows, Cols, k);
        } else {
            ComplexColumn<T>(Work, WorkLength, Rows, Cols, k, -1);
        }
    }
}

template <class T>
void RealPackedInv1(TFFTStorageFormat f, const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,
                    int32_t WorkLength) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2, colAt = int64_t(Rows) * rs;
    const T* src = Src + SrcIndex;
    for (int32_t k = 0; k <= Cols / 2; ++k) {
        if (k == 0 || k == Cols / 2) {
            fft::UnpackSpectrum<T>(f, src + fft::PackPos(f, Cols, k, false), Rows, AsCx(Work + colAt), Cols);
            RealColumnBackward<T>(Work, WorkLength, Rows, Cols, k);
        } else {
            const int64_t pr = fft::PackPos(f, Cols, k, false), pi = fft::PackPos(f, Cols, k, true);
            for (int32_t r = 0; r < Rows; ++r) {
                Work[r * rs + 2 * k] = src[int64_t(r) * Cols + pr];
                Work[r * rs + 2 * k + 1] = src[int64_t(r) * Cols + pi];
            }
            ComplexColumn<T>(Work, WorkLength, Rows, Cols, k, -1);
        }
    }
}

template <class T>
void RealRowsInv(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {
    CheckShape(Rows, Cols);
    CheckWork(WorkLength, RealWork2D(Rows, Cols));
    const int64_t rs = int64_t(Cols) + 2;
    for (int32_t r = 0; r < Rows; ++r) {
        RealImpl<T>(Work, WorkLength, static_cast<int32_t>(r * rs), -1, Cols + 2);
        std::memcpy(Dst + DstIndex + int64_t(r) * Cols, Work + r * rs, size_t(Cols) * sizeof(T));
    }
}

}  // namespace

// ----- entries ---------------------------------------------------------------
#define ROVANE_PURE_FFT(T, TC)                                                                                       \
    void FFTComplex(T* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen) {               \
        ComplexImpl<T>(Data, ArrayLength, Index, Direction, DataLen);                                                \
    }                                                                                                                \
    void FFTReal(T* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen) {                  \
        RealImpl<T>(Data, ArrayLength, Index, Direction, DataLen);                                                   \
    }                                                                                                                \
    void FFTRealCCS(const T* Src, int32_t SrcIndex, TC* Dst, int32_t DstIndex, int32_t N, T* Work,                   \
                    int32_t WorkLength) {                                                                            \
        RealToFormat<T>(fsfCCS, Src, SrcIndex, reinterpret_cast<T*>(Dst + DstIndex), 0, N, Work, WorkLength);        \
    }                                                                                                                \
    void FFTRealCCS(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                    \
                    int32_t WorkLength) {                                                                            \
        RealToFormat<T>(fsfCCS, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                  \
    }                                                                                                                \
    void FFTRealPack(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                   \
                     int32_t WorkLength) {                                                                           \
        RealToFormat<T>(fsfPack, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                 \
    }                                                                                                                \
    void FFTRealPerm(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                   \
                     int32_t WorkLength) {                                                                           \
        RealToFormat<T>(fsfPerm, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                 \
    }                                                                                                                \
    void IFFTToRealCCS(const TC* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                \
                       int32_t WorkLength) {                                                                         \
        FormatToReal<T>(fsfCCS, reinterpret_cast<const T*>(Src + SrcIndex), 0, Dst, DstIndex, N, Work, WorkLength); \
    }                                                                                                                \
    void IFFTToRealCCS(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                 \
                       int32_t WorkLength) {                                                                         \
        FormatToReal<T>(fsfCCS, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                  \
    }                                                                                                                \
    void IFFTToRealPack(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                \
                        int32_t WorkLength) {                                                                        \
        FormatToReal<T>(fsfPack, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                 \
    }                                                                                                                \
    void IFFTToRealPerm(const T* Src, int32_t SrcIndex, T* Dst, int32_t DstIndex, int32_t N, T* Work,                \
                        int32_t WorkLength) {                                                                        \
        FormatToReal<T>(fsfPerm, Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength);                                 \
    }                                                                                                                \
    void FFTComplex2(const TC* Src, int32_t SrcIndex, TC* Dst, int32_t DstIndex, int32_t N, T* Work,                 \
                     int32_t WorkLength) {                                                                           \
        ComplexCopy<T, TC>(Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength, 1);                                    \
    }                                                                                                                \
    void IFFTComplex(const TC* Src, int32_t SrcIndex, TC* Dst, int32_t DstIndex, int32_t N, T* Work,                 \
                     int32_t WorkLength) {                                                                           \
        ComplexCopy<T, TC>(Src, SrcIndex, Dst, DstIndex, N, Work, WorkLength, -1);                                   \
    }                                                                                                                \
    void FFT2D1(const TC* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work, int32_t WorkLength) {          \
        Cplx2D1<T, TC>(Src, SrcIndex, Rows, Cols, Work, WorkLength, 1);                                              \
    }                                                                                                                \
    void FFT2D2(T* Work, int32_t WorkLength, TC* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {                \
        Cplx2D2<T, TC>(Work, WorkLength, Dst, DstIndex, Rows, Cols, 1);                                              \
    }                                                                                                                \
    void IFFT2D1(const TC* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work, int32_t WorkLength) {         \
        Cplx2D1<T, TC>(Src, SrcIndex, Rows, Cols, Work, WorkLength, -1);                                             \
    }                                                                                                                \
    void IFFT2D2(T* Work, int32_t WorkLength, TC* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {               \
        Cplx2D2<T, TC>(Work, WorkLength, Dst, DstIndex, Rows, Cols, -1);                                             \
    }                                                                                                                \
    void FFT2DFromRealCCS1(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                      \
                           int32_t WorkLength) {                                                                     \
        Real2DRows<T>(Src, SrcIndex, Rows, Cols, Work, WorkLength);                                                  \
    }                                                                                                                \
    void FFT2DFromRealCCS2(T* Work, int32_t WorkLength, int32_t Rows, int32_t Cols) {                                \
        RealCCS2<T>(Work, WorkLength, Rows, Cols);                                                                   \
    }                                                                                                                \
    void FFT2DFromRealCCS3(const T* Work, int32_t WorkLength, TC* Dst, int32_t DstIndex, int32_t Rows,               \
                           int32_t Cols) {                                                                           \
        CheckShape(Rows, Cols);                                                                                      \
        CheckWork(WorkLength, RealWork2D(Rows, Cols));                                                               \
        const int64_t rs = int64_t(Cols) + 2, nb = Cols / 2 + 1;                                                     \
        for (int32_t r = 0; r < Rows; ++r)                                                                           \
            for (int64_t k = 0; k < nb; ++k)                                                                         \
                Dst[DstIndex + r * nb + k] = TC(Work[r * rs + 2 * k], Work[r * rs + 2 * k + 1]);                     \
    }                                                                                                                \
    void FFT2DFromRealPack1(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                     \
                            int32_t WorkLength) {                                                                    \
        Real2DRows<T>(Src, SrcIndex, Rows, Cols, Work, WorkLength);                                                  \
    }                                                                                                                \
    void FFT2DFromRealPack2(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {     \
        RealPacked2<T>(fsfPack, Work, WorkLength, Dst, DstIndex, Rows, Cols);                                        \
    }                                                                                                                \
    void FFT2DFromRealPerm1(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                     \
                            int32_t WorkLength) {                                                                    \
        Real2DRows<T>(Src, SrcIndex, Rows, Cols, Work, WorkLength);                                                  \
    }                                                                                                                \
    void FFT2DFromRealPerm2(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {     \
        RealPacked2<T>(fsfPerm, Work, WorkLength, Dst, DstIndex, Rows, Cols);                                        \
    }                                                                                                                \
    void IFFT2DToRealCCS1(const TC* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                      \
                          int32_t WorkLength) {                                                                      \
        RealCCSInv1<T, TC>(Src, SrcIndex, Rows, Cols, Work, WorkLength);                                             \
    }                                                                                                                \
    void IFFT2DToRealCCS2(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {       \
        RealRowsInv<T>(Work, WorkLength, Dst, DstIndex, Rows, Cols);                                                 \
    }                                                                                                                \
    void IFFT2DToRealPack1(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                      \
                           int32_t WorkLength) {                                                                     \
        RealPackedInv1<T>(fsfPack, Src, SrcIndex, Rows, Cols, Work, WorkLength);                                     \
    }                                                                                                                \
    void IFFT2DToRealPack2(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {      \
        RealRowsInv<T>(Work, WorkLength, Dst, DstIndex, Rows, Cols);                                                 \
    }                                                                                                                \
    void IFFT2DToRealPerm1(const T* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, T* Work,                      \
                           int32_t WorkLength) {                                                                     \
        RealPackedInv1<T>(fsfPerm, Src, SrcIndex, Rows, Cols, Work, WorkLength);                                     \
    }                                                                                                                \
    void IFFT2DToRealPerm2(T* Work, int32_t WorkLength, T* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols) {      \
        RealRowsInv<T>(Work, WorkLength, Dst, DstIndex, Rows, Cols);                                                 \
    }

ROVANE_PURE_FFT(double, TCplx)
ROVANE_PURE_FFT(float, TSCplx)
#undef ROVANE_PURE_FFT

void FFTComplex3(const TSCplx* Src, int32_t SrcIndex, TSCplx* Dst, int32_t DstIndex, int32_t N, int32_t Direction,
                 double* Work, int32_t WorkLength) {
    CheckWork(WorkLength, 2 * int64_t(N));
    for (int32_t k = 0; k < N; ++k) {
        Work[2 * k] = Src[SrcIndex + k].Re;
        Work[2 * k + 1] = Src[SrcIndex + k].Im;
    }
    ComplexImpl<double>(Work, WorkLength, 0, Direction, 2 * N);
    for (int32_t k = 0; k < N; ++k) {
        // Each part rounded on its own (a pair built in one expression can be
        // mis-vectorised by the compiler).
        const float re = static_cast<float>(Work[2 * k]);
        const float im = static_cast<float>(Work[2 * k + 1]);
        Dst[DstIndex + k].Re = re;
        Dst[DstIndex + k].Im = im;
    }
}

void FreeFFTSetup() {}

}  // namespace rovane
