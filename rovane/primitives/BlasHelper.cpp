// Opens the BLAS library on first use and looks up its entry points.
#include "rovane/primitives/BlasHelper.h"

#include <dlfcn.h>

#include <string>

#include "rovane/scalars/Scalars.h"

#ifndef ROVANE_BLAS_LIBRARY
#define ROVANE_BLAS_LIBRARY "libopenblas.so.0"
#endif

namespace rovane::blas {
namespace {

TBlasTable Load() {
    // Global, as a library linked with the program would be: a BLAS that
    // the program itself brought in is the one found first, as at link time.
    if (!dlopen(ROVANE_BLAS_LIBRARY, RTLD_NOW | RTLD_GLOBAL)) {
        const char* why = dlerror();
        ERaise(std::string("BLAS: cannot load " ROVANE_BLAS_LIBRARY ": ") + (why ? why : "unknown reason"));
    }
    auto find = [](auto& entry, const char* name) {
        void* p = dlsym(RTLD_DEFAULT, name);
        if (!p) ERaise(std::string("BLAS: " ROVANE_BLAS_LIBRARY " has no ") + name);
        entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(p);
    };
    TBlasTable t{};
    find(t.daxpy, "cblas_daxpy");
    find(t.saxpy, "cblas_saxpy");
    find(t.zaxpy, "cblas_zaxpy");
    find(t.caxpy, "cblas_caxpy");
    find(t.dgemm, "cblas_dgemm");
    find(t.sgemm, "cblas_sgemm");
    find(t.zgemm, "cblas_zgemm");
    find(t.cgemm, "cblas_cgemm");
    find(t.dsymm, "cblas_dsymm");
    find(t.ssymm, "cblas_ssymm");
    find(t.zhemm, "cblas_zhemm");
    find(t.chemm, "cblas_chemm");
    find(t.dtrmm, "cblas_dtrmm");
    find(t.strmm, "cblas_strmm");
    find(t.ztrmm, "cblas_ztrmm");
    find(t.ctrmm, "cblas_ctrmm");
    find(t.dgemv, "cblas_dgemv");
    find(t.sgemv, "cblas_sgemv");
    find(t.zgemv, "cblas_zgemv");
    find(t.cgemv, "cblas_cgemv");
    find(t.dsymv, "cblas_dsymv");
    find(t.ssymv, "cblas_ssymv");
    find(t.zhemv, "cblas_zhemv");
    find(t.chemv, "cblas_chemv");
    find(t.dtrmv, "cblas_dtrmv");
    find(t.strmv, "cblas_strmv");
    find(t.ztrmv, "cblas_ztrmv");
    find(t.ctrmv, "cblas_ctrmv");
    find(t.dger, "cblas_dger");
    find(t.sger, "cblas_sger");
    find(t.zgeru, "cblas_zgeru");
    find(t.cgeru, "cblas_cgeru");
    find(t.zgerc, "cblas_zgerc");
    find(t.cgerc, "cblas_cgerc");
    find(t.dasum, "cblas_dasum");
    find(t.sasum, "cblas_sasum");
    find(t.get_num_threads, "openblas_get_num_threads");
    find(t.set_num_threads, "openblas_set_num_threads");
    find(t.zdotc_sub, "cblas_zdotc_sub");
    find(t.cdotc_sub, "cblas_cdotc_sub");
    return t;
}

}  // namespace

const TBlasTable& Blas() {
    // A failed load raises out of the initialiser and is tried again on the
    // next call.
    static const TBlasTable table = Load();
    return table;
}

}  // namespace rovane::blas
