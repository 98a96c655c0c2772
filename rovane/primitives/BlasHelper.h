// The BLAS library, opened at the first call that needs it. Loading OpenBLAS
// with the library would start its worker threads and resolve its thousands
// of symbols in every process that links Rovane, also in one that never calls
// a BLAS routine; here that cost moves to the first BLAS call.
#pragma once

#include <cblas.h>

namespace rovane::blas {

// Entry points, with the types of the CBLAS declarations.
struct TBlasTable {
    decltype(&cblas_daxpy) daxpy;
    decltype(&cblas_saxpy) saxpy;
    decltype(&cblas_zaxpy) zaxpy;
    decltype(&cblas_caxpy) caxpy;
    // The level 2 and 3 products of the matrices and their single twins.
    decltype(&cblas_dgemm) dgemm;
    decltype(&cblas_sgemm) sgemm;
    decltype(&cblas_zgemm) zgemm;
    decltype(&cblas_cgemm) cgemm;
    decltype(&cblas_dsymm) dsymm;
    decltype(&cblas_ssymm) ssymm;
    decltype(&cblas_zhemm) zhemm;
    decltype(&cblas_chemm) chemm;
    decltype(&cblas_dtrmm) dtrmm;
    decltype(&cblas_strmm) strmm;
    decltype(&cblas_ztrmm) ztrmm;
    decltype(&cblas_ctrmm) ctrmm;
    decltype(&cblas_dgemv) dgemv;
    decltype(&cblas_sgemv) sgemv;
    decltype(&cblas_zgemv) zgemv;
    decltype(&cblas_cgemv) cgemv;
    decltype(&cblas_dsymv) dsymv;
    decltype(&cblas_ssymv) ssymv;
    decltype(&cblas_zhemv) zhemv;
    decltype(&cblas_chemv) chemv;
    decltype(&cblas_dtrmv) dtrmv;
    decltype(&cblas_strmv) strmv;
    decltype(&cblas_ztrmv) ztrmv;
    decltype(&cblas_ctrmv) ctrmv;
    decltype(&cblas_dger) dger;
    decltype(&cblas_sger) sger;
    decltype(&cblas_zgeru) zgeru;
    decltype(&cblas_cgeru) cgeru;
    decltype(&cblas_zgerc) zgerc;
    decltype(&cblas_cgerc) cgerc;
    decltype(&cblas_dasum) dasum;
    decltype(&cblas_sasum) sasum;
    int (*get_num_threads)();
    void (*set_num_threads)(int);
    // Reductions: conjugated dot products and sums of magnitudes.
    decltype(&cblas_zdotc_sub) zdotc_sub;
    decltype(&cblas_cdotc_sub) cdotc_sub;
};

// The table, loaded on first use (thread-safe). A library that cannot be
// opened, or lacks an entry, raises ERovaneException naming it.
const TBlasTable& Blas();

}  // namespace rovane::blas
