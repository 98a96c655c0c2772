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
    int (*get_num_threads)();
    void (*set_num_threads)(int);
    // Reductions: conjugated dot products and sums of magnitudes.
    decltype(&cblas_zdotc_sub) zdotc_sub;
    decltype(&cblas_cdotc_sub) cdotc_sub;
    decltype(&cblas_dasum) dasum;
    decltype(&cblas_sasum) sasum;
};

// The table, loaded on first use (thread-safe). A library that cannot be
// opened, or lacks an entry, raises ERovaneException naming it.
const TBlasTable& Blas();

}  // namespace rovane::blas
