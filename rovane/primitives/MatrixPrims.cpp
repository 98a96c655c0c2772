// Matrix primitives: the entries over the matrix kernels of the active table.
#include "rovane/primitives/MatrixPrims.h"

#include "rovane/primitives/kernels/Dispatch.h"

namespace rovane {

void TransposeMatrix(const double* src, int32_t index, double* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                     int32_t srcStride, int32_t dstStride) {
    kern::Kernels<double>().Transpose(src + index, rows, cols, srcStride, dst + dstIndex, dstStride);
}
void TransposeMatrix(const float* src, int32_t index, float* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                     int32_t srcStride, int32_t dstStride) {
    kern::Kernels<float>().Transpose(src + index, rows, cols, srcStride, dst + dstIndex, dstStride);
}
void TransposeMatrixc(const TCplx* src, int32_t index, TCplx* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                      int32_t srcStride, int32_t dstStride) {
    kern::Kernels<double>().Transposec(&(src + index)->Re, rows, cols, srcStride, &(dst + dstIndex)->Re, dstStride);
}
void TransposeMatrixc(const TSCplx* src, int32_t index, TSCplx* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                      int32_t srcStride, int32_t dstStride) {
    kern::Kernels<float>().Transposec(&(src + index)->Re, rows, cols, srcStride, &(dst + dstIndex)->Re, dstStride);
}
void AdjungateMatrixc(const TCplx* src, int32_t index, TCplx* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                      int32_t srcStride, int32_t dstStride) {
    kern::Kernels<double>().Adjungc(&(src + index)->Re, rows, cols, srcStride, &(dst + dstIndex)->Re, dstStride);
}
void AdjungateMatrixc(const TSCplx* src, int32_t index, TSCplx* dst, int32_t dstIndex, int32_t rows, int32_t cols,
                      int32_t srcStride, int32_t dstStride) {
    kern::Kernels<float>().Adjungc(&(src + index)->Re, rows, cols, srcStride, &(dst + dstIndex)->Re, dstStride);
}
void TransposeSquareMatrix(double* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<double>().TransposeSquare(a + index, n, stride);
}
void TransposeSquareMatrix(float* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<float>().TransposeSquare(a + index, n, stride);
}
void TransposeSquareMatrixc(TCplx* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<double>().TransposeSquarec(&(a + index)->Re, n, stride);
}
void TransposeSquareMatrixc(TSCplx* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<float>().TransposeSquarec(&(a + index)->Re, n, stride);
}
void AdjungateSquareMatrixc(TCplx* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<double>().AdjungSquarec(&(a + index)->Re, n, stride);
}
void AdjungateSquareMatrixc(TSCplx* a, int32_t index, int32_t n, int32_t stride) {
    kern::Kernels<float>().AdjungSquarec(&(a + index)->Re, n, stride);
}

}  // namespace rovane
