// Internal: argument checks and the call into the kernel table, shared by the
// catalogue (ippspl.cpp) and the library's own primitives (fastlib.cpp).
#pragma once

#include <cstdint>

#include "rovane/primitives/ippspl_core.h"
#include "rovane/primitives/kernels/Dispatch.h"

namespace rovane::kern {

// Element `i` of an array of T, seen as the float stream F.
template <class F, class T>
inline const F* At(const T* p, int32_t i) { return reinterpret_cast<const F*>(p + i); }
template <class F, class T>
inline F* At(T* p, int32_t i) { return reinterpret_cast<F*>(p + i); }

// Length first, then pointers: a negative length is refused before anything
// else, a zero length succeeds without looking at the arrays.
inline constexpr char kPresent = 0;  // stands for an absent optional pointer
inline IppStatus CheckArgs(int32_t len, const void* a, const void* b = &kPresent, const void* c = &kPresent) {
    if (len < 0) return ippStsSizeErr;
    if (len == 0) return ippStsNoErr;
    if (!a || !b || !c) return ippStsNullPtrErr;
    return 1;  // proceed
}

// `scale` widens a real kernel over complex data (2 reals per element).
template <class F, class TX, class TD>
inline IppStatus Run1(K1<F> TKernelSet<F>::*k, const TX* x, int32_t xi, TD* d, int32_t di, int32_t len,
                      const TArgs<F>& s = {}, int scale = 1) {
    const IppStatus st = CheckArgs(len, x, d);
    if (st != 1) return st;
    (Kernels<F>().*k)(At<F>(x, xi), At<F>(d, di), idx(len) * scale, s);
    return ippStsNoErr;
}
template <class F, class TX, class TY, class TD>
inline IppStatus Run2(K2<F> TKernelSet<F>::*k, const TX* x, int32_t xi, const TY* y, int32_t yi, TD* d, int32_t di,
                      int32_t len, const TArgs<F>& s = {}, int scale = 1) {
    const IppStatus st = CheckArgs(len, x, y, d);
    if (st != 1) return st;
    (Kernels<F>().*k)(At<F>(x, xi), At<F>(y, yi), At<F>(d, di), idx(len) * scale, s);
    return ippStsNoErr;
}
template <class F, class TX, class TD>
inline IppStatus Run12(K12<F> TKernelSet<F>::*k, const TX* x, int32_t xi, TD* d1, int32_t d1i, TD* d2, int32_t d2i,
                       int32_t len, const TArgs<F>& s = {}) {
    const IppStatus st = CheckArgs(len, x, d1, d2);
    if (st != 1) return st;
    (Kernels<F>().*k)(At<F>(x, xi), At<F>(d1, d1i), At<F>(d2, d2i), idx(len), s);
    return ippStsNoErr;
}
// Scalar loop outside the tables (long double helpers, conversions).
template <class TX, class TD, class Fn>
inline IppStatus Each(const TX* x, int32_t xi, TD* d, int32_t di, int32_t len, Fn fn) {
    const IppStatus st = CheckArgs(len, x, d);
    if (st != 1) return st;
    const TX* xs = x + xi;
    TD* ds = d + di;
    for (int32_t i = 0; i < len; ++i) ds[i] = fn(xs[i]);
    return ippStsNoErr;
}

template <class F>
inline TArgs<F> Val(F a, F b = 0, F c = 0, F d = 0) { return TArgs<F>{a, b, c, d}; }

}  // namespace rovane::kern
