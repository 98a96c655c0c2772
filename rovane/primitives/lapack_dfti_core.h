// The pure power-of-two FFT: a radix-2 transform in place on interleaved
// reals with no tables (twiddles by recurrence in extended precision), the
// real transform of a signal in the CCS layout, the copies into and out of
// the three storage formats through a caller's work buffer, and the
// two-dimensional transforms in stages (rows, then columns).
//
// The double routines take double and TCplx arrays, their single twins the
// same names on float and TSCplx arrays. Indexes count elements of the
// array's own type. A forward transform is unscaled; an inverse carries
// 1 / N, so that a round trip returns the input to rounding.
//
// Work buffers: a routine checks the buffer's length first and raises
// "Work buffer is too small" when it holds fewer reals than it needs:
// N + 2 for a real one-dimensional form, 2 N for a complex one, and for the
// two-dimensional forms Rows * (Cols + 2) + 2 * Rows + 2 (real) or
// 2 * Rows * Cols + 2 * Rows (complex).
#pragma once

#include <cstdint>

#include "rovane/scalars/Scalars.h"

namespace rovane {

// In place on DataLen interleaved reals (DataLen / 2 complex points) from
// Data[Index]; DataLen a power of two. Direction 1 forward, -1 inverse.
ROVANE_API void FFTComplex(double* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen);
ROVANE_API void FFTComplex(float* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen);
// In place on a real signal of N = DataLen - 2 reals, giving its CCS half
// spectrum in the DataLen reals (forward), or back (inverse). N / 2 must be
// a power of two.
ROVANE_API void FFTReal(double* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen);
ROVANE_API void FFTReal(float* Data, int32_t ArrayLength, int32_t Index, int32_t Direction, int32_t DataLen);

// N reals from Src to the half spectrum in the named format.
ROVANE_API void FFTRealCCS(const double* Src, int32_t SrcIndex, TCplx* Dst, int32_t DstIndex, int32_t N, double* Work,
                           int32_t WorkLength);
ROVANE_API void FFTRealCCS(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                           double* Work, int32_t WorkLength);
ROVANE_API void FFTRealPack(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                            double* Work, int32_t WorkLength);
ROVANE_API void FFTRealPerm(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                            double* Work, int32_t WorkLength);
ROVANE_API void FFTRealCCS(const float* Src, int32_t SrcIndex, TSCplx* Dst, int32_t DstIndex, int32_t N, float* Work,
                           int32_t WorkLength);
ROVANE_API void FFTRealCCS(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N, float* Work,
                           int32_t WorkLength);
ROVANE_API void FFTRealPack(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N, float* Work,
                            int32_t WorkLength);
ROVANE_API void FFTRealPerm(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N, float* Work,
                            int32_t WorkLength);

// The half spectrum of N points in the named format back to N reals.
ROVANE_API void IFFTToRealCCS(const TCplx* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                              double* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealCCS(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                              double* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealPack(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                               double* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealPerm(const double* Src, int32_t SrcIndex, double* Dst, int32_t DstIndex, int32_t N,
                               double* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealCCS(const TSCplx* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N,
                              float* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealCCS(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N,
                              float* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealPack(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N,
                               float* Work, int32_t WorkLength);
ROVANE_API void IFFTToRealPerm(const float* Src, int32_t SrcIndex, float* Dst, int32_t DstIndex, int32_t N,
                               float* Work, int32_t WorkLength);

// N complex points from Src to Dst through the work buffer (forward or
// inverse); Src and Dst may be the same array.
ROVANE_API void FFTComplex2(const TCplx* Src, int32_t SrcIndex, TCplx* Dst, int32_t DstIndex, int32_t N, double* Work,
                            int32_t WorkLength);
ROVANE_API void IFFTComplex(const TCplx* Src, int32_t SrcIndex, TCplx* Dst, int32_t DstIndex, int32_t N, double* Work,
                            int32_t WorkLength);
ROVANE_API void FFTComplex2(const TSCplx* Src, int32_t SrcIndex, TSCplx* Dst, int32_t DstIndex, int32_t N,
                            float* Work, int32_t WorkLength);
ROVANE_API void IFFTComplex(const TSCplx* Src, int32_t SrcIndex, TSCplx* Dst, int32_t DstIndex, int32_t N,
                            float* Work, int32_t WorkLength);
// Single data transformed in double precision: the work buffer holds 2 N
// doubles. Direction 1 forward, -1 inverse.
ROVANE_API void FFTComplex3(const TSCplx* Src, int32_t SrcIndex, TSCplx* Dst, int32_t DstIndex, int32_t N,
                            int32_t Direction, double* Work, int32_t WorkLength);

// Complex two-dimensional transform of Rows x Cols points (row by row in
// memory). Stage 1 copies Src to Work and transforms the rows; stage 2
// transforms the columns and writes Dst.
ROVANE_API void FFT2D1(const TCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work, int32_t WorkLength);
ROVANE_API void FFT2D2(double* Work, int32_t WorkLength, TCplx* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols);
ROVANE_API void IFFT2D1(const TCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                        int32_t WorkLength);
ROVANE_API void IFFT2D2(double* Work, int32_t WorkLength, TCplx* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols);
ROVANE_API void FFT2D1(const TSCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work, int32_t WorkLength);
ROVANE_API void FFT2D2(float* Work, int32_t WorkLength, TSCplx* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols);
ROVANE_API void IFFT2D1(const TSCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                        int32_t WorkLength);
ROVANE_API void IFFT2D2(float* Work, int32_t WorkLength, TSCplx* Dst, int32_t DstIndex, int32_t Rows, int32_t Cols);

// Real two-dimensional forward of Rows x Cols reals. Stage 1 transforms the
// rows into Work (rows of Cols + 2 reals, CCS). CCS: stage 2 transforms the
// columns in Work, stage 3 writes Rows x (Cols / 2 + 1) complex bins. Pack and
// Perm: stage 2 transforms the columns and writes Rows x Cols reals, the
// format applied along the rows and, for the two real columns, along the
// columns.
ROVANE_API void FFT2DFromRealCCS1(const double* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                  int32_t WorkLength);
ROVANE_API void FFT2DFromRealCCS2(double* Work, int32_t WorkLength, int32_t Rows, int32_t Cols);
ROVANE_API void FFT2DFromRealCCS3(const double* Work, int32_t WorkLength, TCplx* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);
ROVANE_API void FFT2DFromRealPack1(const double* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                   int32_t WorkLength);
ROVANE_API void FFT2DFromRealPack2(double* Work, int32_t WorkLength, double* Dst, int32_t DstIndex, int32_t Rows,
                                   int32_t Cols);
ROVANE_API void FFT2DFromRealPerm1(const double* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                   int32_t WorkLength);
ROVANE_API void FFT2DFromRealPerm2(double* Work, int32_t WorkLength, double* Dst, int32_t DstIndex, int32_t Rows,
                                   int32_t Cols);
ROVANE_API void FFT2DFromRealCCS1(const float* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                  int32_t WorkLength);
ROVANE_API void FFT2DFromRealCCS2(float* Work, int32_t WorkLength, int32_t Rows, int32_t Cols);
ROVANE_API void FFT2DFromRealCCS3(const float* Work, int32_t WorkLength, TSCplx* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);
ROVANE_API void FFT2DFromRealPack1(const float* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                   int32_t WorkLength);
ROVANE_API void FFT2DFromRealPack2(float* Work, int32_t WorkLength, float* Dst, int32_t DstIndex, int32_t Rows,
                                   int32_t Cols);
ROVANE_API void FFT2DFromRealPerm1(const float* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                   int32_t WorkLength);
ROVANE_API void FFT2DFromRealPerm2(float* Work, int32_t WorkLength, float* Dst, int32_t DstIndex, int32_t Rows,
                                   int32_t Cols);

// Real two-dimensional inverse: stage 1 reads the spectrum into Work and
// inverts the columns, stage 2 inverts the rows and writes Rows x Cols reals.
ROVANE_API void IFFT2DToRealCCS1(const TCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                 int32_t WorkLength);
ROVANE_API void IFFT2DToRealCCS2(double* Work, int32_t WorkLength, double* Dst, int32_t DstIndex, int32_t Rows,
                                 int32_t Cols);
ROVANE_API void IFFT2DToRealPack1(const double* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                  int32_t WorkLength);
ROVANE_API void IFFT2DToRealPack2(double* Work, int32_t WorkLength, double* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);
ROVANE_API void IFFT2DToRealPerm1(const double* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, double* Work,
                                  int32_t WorkLength);
ROVANE_API void IFFT2DToRealPerm2(double* Work, int32_t WorkLength, double* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);
ROVANE_API void IFFT2DToRealCCS1(const TSCplx* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                 int32_t WorkLength);
ROVANE_API void IFFT2DToRealCCS2(float* Work, int32_t WorkLength, float* Dst, int32_t DstIndex, int32_t Rows,
                                 int32_t Cols);
ROVANE_API void IFFT2DToRealPack1(const float* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                  int32_t WorkLength);
ROVANE_API void IFFT2DToRealPack2(float* Work, int32_t WorkLength, float* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);
ROVANE_API void IFFT2DToRealPerm1(const float* Src, int32_t SrcIndex, int32_t Rows, int32_t Cols, float* Work,
                                  int32_t WorkLength);
ROVANE_API void IFFT2DToRealPerm2(float* Work, int32_t WorkLength, float* Dst, int32_t DstIndex, int32_t Rows,
                                  int32_t Cols);

// The pure code keeps no tables: nothing to free.
ROVANE_API void FreeFFTSetup();

}  // namespace rovane
