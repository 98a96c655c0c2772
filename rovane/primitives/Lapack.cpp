// The LAPACK gateway: array base + element index to the Fortran calling
// convention, entries looked up in the BLAS library opened by BlasHelper.
#include "rovane/primitives/Lapack.h"

#include <dlfcn.h>

#include <cctype>

#include "rovane/primitives/BlasHelper.h"

namespace rovane::lapack {
namespace {

thread_local TXerblaRecord tXerbla;

using fint = int;  // the Fortran INTEGER of the BLAS library (LP64)

// The Fortran entries. Characters are passed with their hidden lengths.
struct TLapackTable {
    void (*dgemm)(const char*, const char*, const fint*, const fint*, const fint*, const double*, const double*,
                  const fint*, const double*, const fint*, const double*, double*, const fint*, std::size_t,
                  std::size_t);
    void (*zgemm)(const char*, const char*, const fint*, const fint*, const fint*, const void*, const void*,
                  const fint*, const void*, const fint*, const void*, void*, const fint*, std::size_t,
                  std::size_t);
    void (*dgetrf)(const fint*, const fint*, double*, const fint*, fint*, fint*);
    void (*sgetrf)(const fint*, const fint*, float*, const fint*, fint*, fint*);
    void (*zgetrf)(const fint*, const fint*, void*, const fint*, fint*, fint*);
    void (*cgetrf)(const fint*, const fint*, void*, const fint*, fint*, fint*);
    void (*dgetrs)(const char*, const fint*, const fint*, const double*, const fint*, const fint*, double*,
                   const fint*, fint*, std::size_t);
    void (*sgetrs)(const char*, const fint*, const fint*, const float*, const fint*, const fint*, float*,
                   const fint*, fint*, std::size_t);
    void (*zgetrs)(const char*, const fint*, const fint*, const void*, const fint*, const fint*, void*,
                   const fint*, fint*, std::size_t);
    void (*cgetrs)(const char*, const fint*, const fint*, const void*, const fint*, const fint*, void*,
                   const fint*, fint*, std::size_t);
    void (*dpotrf)(const char*, const fint*, double*, const fint*, fint*, std::size_t);
    void (*spotrf)(const char*, const fint*, float*, const fint*, fint*, std::size_t);
    void (*zpotrf)(const char*, const fint*, void*, const fint*, fint*, std::size_t);
    void (*cpotrf)(const char*, const fint*, void*, const fint*, fint*, std::size_t);
    void (*dgetri)(const fint*, double*, const fint*, const fint*, double*, const fint*, fint*);
    void (*zgetri)(const fint*, void*, const fint*, const fint*, void*, const fint*, fint*);
};

TLapackTable Load() {
    blas::Blas();  // opens the library (global scope), or raises
    auto find = [](auto& entry, const char* name) {
        void* p = dlsym(RTLD_DEFAULT, name);
        if (!p) ERaise(std::string("LAPACK: the BLAS library has no ") + name);
        entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(p);
    };
    TLapackTable t{};
    find(t.dgemm, "dgemm_");
    find(t.zgemm, "zgemm_");
    find(t.dgetrf, "dgetrf_");
    find(t.sgetrf, "sgetrf_");
    find(t.zgetrf, "zgetrf_");
    find(t.cgetrf, "cgetrf_");
    find(t.dgetrs, "dgetrs_");
    find(t.sgetrs, "sgetrs_");
    find(t.zgetrs, "zgetrs_");
    find(t.cgetrs, "cgetrs_");
    find(t.dpotrf, "dpotrf_");
    find(t.spotrf, "spotrf_");
    find(t.zpotrf, "zpotrf_");
    find(t.cpotrf, "cpotrf_");
    find(t.dgetri, "dgetri_");
    find(t.zgetri, "zgetri_");
    return t;
}

const TLapackTable& L() {
    static const TLapackTable table = Load();
    return table;
}

// A BLAS routine reports a bad argument only through XERBLA: raise after it
// returned, with the position LAPACK gave.
void RaiseIfXerbla(const char* name) {
    if (tXerbla.Info != 0) {
        const int32_t pos = tXerbla.Info;
        tXerbla = {};
        EInvalidArgumentRaiseFmt("%s: parameter %d had an illegal value", name, pos);
    }
}

}  // namespace

const TXerblaRecord& LastXerbla() { return tXerbla; }
void ClearXerbla() { tXerbla = {}; }

void dgemm(char transA, char transB, int32_t m, int32_t n, int32_t k, double alpha, const double* a, int32_t aIndex,
           int32_t lda, const double* b, int32_t bIndex, int32_t ldb, double beta, double* c, int32_t cIndex,
           int32_t ldc) {
    tXerbla = {};
    L().dgemm(&transA, &transB, &m, &n, &k, &alpha, a + aIndex, &lda, b + bIndex, &ldb, &beta, c + cIndex, &ldc, 1,
              1);
    RaiseIfXerbla("dgemm");
}

void zgemm(char transA, char transB, int32_t m, int32_t n, int32_t k, const TCplx& alpha, const TCplx* a,
           int32_t aIndex, int32_t lda, const TCplx* b, int32_t bIndex, int32_t ldb, const TCplx& beta, TCplx* c,
           int32_t cIndex, int32_t ldc) {
    tXerbla = {};
    L().zgemm(&transA, &transB, &m, &n, &k, &alpha, a + aIndex, &lda, b + bIndex, &ldb, &beta, c + cIndex, &ldc, 1,
              1);
    RaiseIfXerbla("zgemm");
}

void dgetrf(int32_t m, int32_t n, double* a, int32_t aIndex, int32_t lda, int32_t* ipiv, int32_t ipivIndex,
            int32_t& info) {
    L().dgetrf(&m, &n, a + aIndex, &lda, ipiv + ipivIndex, &info);
}
void sgetrf(int32_t m, int32_t n, float* a, int32_t aIndex, int32_t lda, int32_t* ipiv, int32_t ipivIndex,
            int32_t& info) {
    L().sgetrf(&m, &n, a + aIndex, &lda, ipiv + ipivIndex, &info);
}
void zgetrf(int32_t m, int32_t n, TCplx* a, int32_t aIndex, int32_t lda, int32_t* ipiv, int32_t ipivIndex,
            int32_t& info) {
    L().zgetrf(&m, &n, a + aIndex, &lda, ipiv + ipivIndex, &info);
}
void cgetrf(int32_t m, int32_t n, TSCplx* a, int32_t aIndex, int32_t lda, int32_t* ipiv, int32_t ipivIndex,
            int32_t& info) {
    L().cgetrf(&m, &n, a + aIndex, &lda, ipiv + ipivIndex, &info);
}
void dgetrs(char trans, int32_t n, int32_t nrhs, const double* a, int32_t aIndex, int32_t lda, const int32_t* ipiv,
            int32_t ipivIndex, double* b, int32_t bIndex, int32_t ldb, int32_t& info) {
    L().dgetrs(&trans, &n, &nrhs, a + aIndex, &lda, ipiv + ipivIndex, b + bIndex, &ldb, &info, 1);
}
void sgetrs(char trans, int32_t n, int32_t nrhs, const float* a, int32_t aIndex, int32_t lda, const int32_t* ipiv,
            int32_t ipivIndex, float* b, int32_t bIndex, int32_t ldb, int32_t& info) {
    L().sgetrs(&trans, &n, &nrhs, a + aIndex, &lda, ipiv + ipivIndex, b + bIndex, &ldb, &info, 1);
}
void zgetrs(char trans, int32_t n, int32_t nrhs, const TCplx* a, int32_t aIndex, int32_t lda, const int32_t* ipiv,
            int32_t ipivIndex, TCplx* b, int32_t bIndex, int32_t ldb, int32_t& info) {
    L().zgetrs(&trans, &n, &nrhs, a + aIndex, &lda, ipiv + ipivIndex, b + bIndex, &ldb, &info, 1);
}
void cgetrs(char trans, int32_t n, int32_t nrhs, const TSCplx* a, int32_t aIndex, int32_t lda, const int32_t* ipiv,
            int32_t ipivIndex, TSCplx* b, int32_t bIndex, int32_t ldb, int32_t& info) {
    L().cgetrs(&trans, &n, &nrhs, a + aIndex, &lda, ipiv + ipivIndex, b + bIndex, &ldb, &info, 1);
}
void dpotrf(char uplo, int32_t n, double* a, int32_t aIndex, int32_t lda, int32_t& info) {
    L().dpotrf(&uplo, &n, a + aIndex, &lda, &info, 1);
}
void spotrf(char uplo, int32_t n, float* a, int32_t aIndex, int32_t lda, int32_t& info) {
    L().spotrf(&uplo, &n, a + aIndex, &lda, &info, 1);
}
void zpotrf(char uplo, int32_t n, TCplx* a, int32_t aIndex, int32_t lda, int32_t& info) {
    L().zpotrf(&uplo, &n, a + aIndex, &lda, &info, 1);
}
void cpotrf(char uplo, int32_t n, TSCplx* a, int32_t aIndex, int32_t lda, int32_t& info) {
    L().cpotrf(&uplo, &n, a + aIndex, &lda, &info, 1);
}
void dgetri(int32_t n, double* a, int32_t aIndex, int32_t lda, const int32_t* ipiv, int32_t ipivIndex, double* work,
            int32_t workIndex, int32_t lwork, int32_t& info) {
    L().dgetri(&n, a + aIndex, &lda, ipiv + ipivIndex, work + workIndex, &lwork, &info);
}
void zgetri(int32_t n, TCplx* a, int32_t aIndex, int32_t lda, const int32_t* ipiv, int32_t ipivIndex, TCplx* work,
            int32_t workIndex, int32_t lwork, int32_t& info) {
    L().zgetri(&n, a + aIndex, &lda, ipiv + ipivIndex, work + workIndex, &lwork, &info);
}

}  // namespace rovane::lapack

extern "C" void xerbla_(const char* srname, const int* info, std::size_t srnameLen) {
    // Fortran passes a blank-padded name of srnameLen characters; some
    // callers pass a C string with a length of its own.
    std::string name;
    for (std::size_t i = 0; srname && i < srnameLen && srname[i]; ++i)
        if (srname[i] != ' ') name += char(std::toupper(static_cast<unsigned char>(srname[i])));
    rovane::lapack::tXerbla.Routine = name;
    rovane::lapack::tXerbla.Info = info ? *info : 0;
}
