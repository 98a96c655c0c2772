// Matrix primitives on bare arrays: transposition and conjugate
// transposition, out of place and in place on a square block, in the
// (array, element index) form of the primitive layer. Strides are row
// strides in elements (complex: pairs); src and dst must not overlap.
#pragma once

#include <cstdint>

#include "rovane/scalars/Export.h"
#include "rovane/scalars/Scalars.h"

namespace rovane {

// dst(j, i) = src(i, j) for a Rows x Cols block of src.
ROVANE_API void TransposeMatrix(const double* src, int32_t index, double* dst, int32_t dstIndex, int32_t rows,
                                int32_t cols, int32_t srcStride, int32_t dstStride);
ROVANE_API void TransposeMatrix(const float* src, int32_t index, float* dst, int32_t dstIndex, int32_t rows,
                                int32_t cols, int32_t srcStride, int32_t dstStride);
ROVANE_API void TransposeMatrixc(const TCplx* src, int32_t index, TCplx* dst, int32_t dstIndex, int32_t rows,
                                 int32_t cols, int32_t srcStride, int32_t dstStride);
ROVANE_API void TransposeMatrixc(const TSCplx* src, int32_t index, TSCplx* dst, int32_t dstIndex, int32_t rows,
                                 int32_t cols, int32_t srcStride, int32_t dstStride);
// dst(j, i) = conj(src(i, j)).
ROVANE_API void AdjungateMatrixc(const TCplx* src, int32_t index, TCplx* dst, int32_t dstIndex, int32_t rows,
                                 int32_t cols, int32_t srcStride, int32_t dstStride);
ROVANE_API void AdjungateMatrixc(const TSCplx* src, int32_t index, TSCplx* dst, int32_t dstIndex, int32_t rows,
                                 int32_t cols, int32_t srcStride, int32_t dstStride);
// In place on the N x N block at Index with row stride Stride.
ROVANE_API void TransposeSquareMatrix(double* a, int32_t index, int32_t n, int32_t stride);
ROVANE_API void TransposeSquareMatrix(float* a, int32_t index, int32_t n, int32_t stride);
ROVANE_API void TransposeSquareMatrixc(TCplx* a, int32_t index, int32_t n, int32_t stride);
ROVANE_API void TransposeSquareMatrixc(TSCplx* a, int32_t index, int32_t n, int32_t stride);
ROVANE_API void AdjungateSquareMatrixc(TCplx* a, int32_t index, int32_t n, int32_t stride);
ROVANE_API void AdjungateSquareMatrixc(TSCplx* a, int32_t index, int32_t n, int32_t stride);

}  // namespace rovane
