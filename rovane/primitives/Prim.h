// The typed primitive facade: prim::Name(...) forwards to the double routine
// or to its single twin, chosen by overload resolution on the element types
// of the arguments (double/TCplx or float/TSCplx). Each forwarder is written
// by one row of the tables in rovane/primitives/twins/*.def, the same row that
// declares the exported routines; a debugger steps from the call through the
// row into the routine.
//
// Facade names: the catalogue stem with _I for the in-place form
// (prim::Add_I), element codes, accuracy suffix and _Idx dropped; the
// library's own names keep their letter pair (prim::AddValuecd). A pointer
// argument always fixes the precision, so a value argument converts as it
// did when the routine was named directly.
//
// Internal to the library: included by container .cpp files only.
#pragma once

#include "rovane/primitives/BlasHelper.h"

#include <type_traits>

#include "rovane/primitives/PartsPrims.h"
#include "rovane/primitives/PrimShapes.h"
#include "rovane/primitives/RandomPrims.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane::prim {

#define ROVANE_FORWARD(RET, N, F, W, SHAPE, ...) \
    inline RET N ROVANE_SHAPE_##SHAPE(W, __VA_ARGS__) { return F ROVANE_ARGS_##SHAPE; }
#define ROVANE_TWIN(N, D, S, SHAPE, ...)                           \
    ROVANE_FORWARD(IppStatus, N, D, AsDouble, SHAPE, __VA_ARGS__) \
    ROVANE_FORWARD(IppStatus, N, S, AsSingle, SHAPE, __VA_ARGS__)
#define ROVANE_TWIN_KERNEL ROVANE_TWIN
#define ROVANE_OWN(N, D, S, SHAPE, ...)                       \
    ROVANE_FORWARD(void, N, D, AsDouble, SHAPE, __VA_ARGS__) \
    ROVANE_FORWARD(void, N, S, AsSingle, SHAPE, __VA_ARGS__)
#define ROVANE_SOLO(N, F, SHAPE, ...) ROVANE_FORWARD(IppStatus, N, F, AsDouble, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Arithmetic.def"
#include "rovane/primitives/twins/VectorMath.def"
#include "rovane/primitives/twins/Parts.def"
#include "rovane/primitives/twins/Thresholds.def"
#include "rovane/primitives/twins/Motion.def"
#include "rovane/primitives/twins/Own.def"
#include "rovane/primitives/twins/PartsExtra.def"
#include "rovane/primitives/twins/Random.def"
#include "rovane/primitives/twins/Reduce.def"
#undef ROVANE_TWIN
#undef ROVANE_TWIN_KERNEL
#undef ROVANE_OWN
#undef ROVANE_SOLO
#undef ROVANE_FORWARD

// BLAS y = y + alpha * x, real and complex, by element type; through the
// BLAS table, which opens the BLAS library at its first use.
inline void Axpy(int n, double alpha, const double* x, int incx, double* y, int incy) {
    blas::Blas().daxpy(n, alpha, x, incx, y, incy);
}
inline void Axpy(int n, float alpha, const float* x, int incx, float* y, int incy) {
    blas::Blas().saxpy(n, alpha, x, incx, y, incy);
}
inline void Axpy(int n, const TCplx* alpha, const TCplx* x, int incx, TCplx* y, int incy) {
    blas::Blas().zaxpy(n, alpha, x, incx, y, incy);
}
inline void Axpy(int n, const TSCplx* alpha, const TSCplx* x, int incx, TSCplx* y, int incy) {
    blas::Blas().caxpy(n, alpha, x, incx, y, incy);
}

// The special values of field type F: INF or INF_SINGLE, CNAN or
// CNAN_SINGLE (read when called: they are settable globals).
template <class F>
F Inf() {
    if constexpr (std::is_same_v<F, double>)
        return INF;
    else
        return INF_SINGLE;
}
template <class F>
std::conditional_t<std::is_same_v<F, double>, TCplx, TSCplx> CNaN() {
    if constexpr (std::is_same_v<F, double>)
        return CNAN;
    else
        return CNAN_SINGLE;
}

}  // namespace rovane::prim
