// The transposed temporary through which a row-major matrix reaches LAPACK:
// a matrix from the calling thread's cache holding Src^T, which read
// column-major is Src itself. Given back to the cache on scope exit, also
// when an exception passes. Used by the solvers; exported for their tests.
#pragma once

#include "rovane/containers/Rovane.h"

namespace rovane::lapack {

class ROVANE_API TColumnMajor {
public:
    // Src in column-major order: Rows x Cols, leading dimension Rows.
    explicit TColumnMajor(const TMtx& src);
    ~TColumnMajor() noexcept;
    TColumnMajor(const TColumnMajor&) = delete;
    TColumnMajor& operator=(const TColumnMajor&) = delete;

    // The column-major array and its leading dimension (at least 1), for
    // the element type of Src's precision (null for the others).
    double* D() const { return fTmp->Values; }
    float* S() const { return fTmp->SValues; }
    TCplx* Z() const { return fTmp->CValues; }
    TSCplx* C() const { return fTmp->SCValues; }
    int32_t Ld() const { return fRows > 0 ? fRows : 1; }
    int32_t Rows() const { return fRows; }
    int32_t Cols() const { return fCols; }

    // The (changed) column-major content back into Dst, row-major, sized
    // Rows x Cols with Src's precision.
    void CopyBack(TMtx& dst) const;

private:
    TMtx* fTmp = nullptr;
    int32_t fRows, fCols;
};

}  // namespace rovane::lapack
