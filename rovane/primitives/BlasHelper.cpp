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
    find(t.get_num_threads, "openblas_get_num_threads");
    find(t.set_num_threads, "openblas_set_num_threads");
    find(t.zdotc_sub, "cblas_zdotc_sub");
    find(t.cdotc_sub, "cblas_cdotc_sub");
    find(t.dasum, "cblas_dasum");
    find(t.sasum, "cblas_sasum");
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
