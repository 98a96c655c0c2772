// The LAPACK gateway: LAPACK and BLAS routines called by their standard names
// with every array given as a base and an element index (the _Idx form of
// the primitives), and the record of argument errors that LAPACK reports
// through XERBLA.
//
// The routines come from the BLAS library that primitives/BlasHelper.h
// opens (OpenBLAS carries LAPACK). Arguments are passed on unchecked; a
// LAPACK routine's Info comes back unchanged, negative for a bad argument.
// A BLAS routine has no Info: an argument error it reports raises
// ERovaneInvalidArgument after the call returns.
#pragma once

#include <cstdint>
#include <string>

#include "rovane/scalars/Export.h"
#include "rovane/scalars/Scalars.h"

// LAPACK's error handler, exported under its Fortran name so that it takes
// the place of the BLAS library's own, which prints and may stop the
// process. It records the routine and the argument position for the calling
// thread and returns, so that the routine returns with Info = -position.
extern "C" ROVANE_API void xerbla_(const char* srname, const int* info, std::size_t srnameLen);

namespace rovane::lapack {

// The last argument error reported on this thread: the routine's name as
// LAPACK spells it (upper case, blanks removed) and the one-based position
// of the argument. Info 0: none since the last ClearXerbla.
struct TXerblaRecord {
    std::string Routine;
    int32_t Info = 0;
};
ROVANE_API const TXerblaRecord& LastXerbla();
ROVANE_API void ClearXerbla();

// ---- BLAS level 3 through the gateway (column-major, as BLAS) -----------
ROVANE_API void dgemm(char transA, char transB, int32_t m, int32_t n, int32_t k, double alpha, const double* a,
                      int32_t aIndex, int32_t lda, const double* b, int32_t bIndex, int32_t ldb, double beta,
                      double* c, int32_t cIndex, int32_t ldc);
ROVANE_API void zgemm(char transA, char transB, int32_t m, int32_t n, int32_t k, const TCplx& alpha,
                      const TCplx* a, int32_t aIndex, int32_t lda, const TCplx* b, int32_t bIndex, int32_t ldb,
                      const TCplx& beta, TCplx* c, int32_t cIndex, int32_t ldc);

// ---- LU, Cholesky and inverse (column-major, as LAPACK) -----------------
ROVANE_API void dgetrf(int32_t m, int32_t n, double* a, int32_t aIndex, int32_t lda, int32_t* ipiv,
                       int32_t ipivIndex, int32_t& info);
ROVANE_API void sgetrf(int32_t m, int32_t n, float* a, int32_t aIndex, int32_t lda, int32_t* ipiv,
                       int32_t ipivIndex, int32_t& info);
ROVANE_API void zgetrf(int32_t m, int32_t n, TCplx* a, int32_t aIndex, int32_t lda, int32_t* ipiv,
                       int32_t ipivIndex, int32_t& info);
ROVANE_API void cgetrf(int32_t m, int32_t n, TSCplx* a, int32_t aIndex, int32_t lda, int32_t* ipiv,
                       int32_t ipivIndex, int32_t& info);
ROVANE_API void dgetrs(char trans, int32_t n, int32_t nrhs, const double* a, int32_t aIndex, int32_t lda,
                       const int32_t* ipiv, int32_t ipivIndex, double* b, int32_t bIndex, int32_t ldb,
                       int32_t& info);
ROVANE_API void sgetrs(char trans, int32_t n, int32_t nrhs, const float* a, int32_t aIndex, int32_t lda,
                       const int32_t* ipiv, int32_t ipivIndex, float* b, int32_t bIndex, int32_t ldb,
                       int32_t& info);
ROVANE_API void zgetrs(char trans, int32_t n, int32_t nrhs, const TCplx* a, int32_t aIndex, int32_t lda,
                       const int32_t* ipiv, int32_t ipivIndex, TCplx* b, int32_t bIndex, int32_t ldb,
                       int32_t& info);
ROVANE_API void cgetrs(char trans, int32_t n, int32_t nrhs, const TSCplx* a, int32_t aIndex, int32_t lda,
                       const int32_t* ipiv, int32_t ipivIndex, TSCplx* b, int32_t bIndex, int32_t ldb,
                       int32_t& info);
ROVANE_API void dpotrf(char uplo, int32_t n, double* a, int32_t aIndex, int32_t lda, int32_t& info);
ROVANE_API void spotrf(char uplo, int32_t n, float* a, int32_t aIndex, int32_t lda, int32_t& info);
ROVANE_API void zpotrf(char uplo, int32_t n, TCplx* a, int32_t aIndex, int32_t lda, int32_t& info);
ROVANE_API void cpotrf(char uplo, int32_t n, TSCplx* a, int32_t aIndex, int32_t lda, int32_t& info);
ROVANE_API void dgetri(int32_t n, double* a, int32_t aIndex, int32_t lda, const int32_t* ipiv, int32_t ipivIndex,
                       double* work, int32_t workIndex, int32_t lwork, int32_t& info);
ROVANE_API void zgetri(int32_t n, TCplx* a, int32_t aIndex, int32_t lda, const int32_t* ipiv, int32_t ipivIndex,
                       TCplx* work, int32_t workIndex, int32_t lwork, int32_t& info);

}  // namespace rovane::lapack
