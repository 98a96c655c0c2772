// Up-sampling and truncation through a 64-bit integer, written once over the
// float type and stamped for double and single.
#include "rovane/primitives/PartsPrims.h"

#include <cstddef>
#include <cstdint>

namespace rovane {

namespace {

template <class F>
IppStatus SampleUp(const F* x, int32_t xIndex, int32_t len, F* d, int32_t dIndex, int32_t& dstLen, int32_t factor,
                   int32_t phase) {
    if (len < 0) return ippStsSizeErr;
    if (factor < 1) return ippStsSampleFactorErr;
    if (phase < 0 || phase >= factor) return ippStsSamplePhaseErr;
    dstLen = len * factor;
    if (len == 0) return ippStsNoErr;
    if (!x || !d) return ippStsNullPtrErr;
    const F* s = x + xIndex;
    F* o = d + dIndex;
    for (int32_t i = 0; i < len; ++i) {
        F* block = o + static_cast<ptrdiff_t>(i) * factor;
        for (int32_t k = 0; k < factor; ++k) block[k] = F(0);
        block[phase] = s[i];
    }
    return ippStsNoErr;
}

template <class F>
void TruncInt64(const F* x, int32_t xIndex, F* d, int32_t dIndex, int32_t len) {
    // 2^63 is exact in both widths; the negated test also catches NaN.
    constexpr F limit = F(9223372036854775808.0);
    const F* s = x + xIndex;
    F* o = d + dIndex;
    for (int32_t i = 0; i < len; ++i) {
        const F v = s[i];
        const int64_t n = (v < limit && v > -limit) ? static_cast<int64_t>(v) : INT64_MIN;
        o[i] = static_cast<F>(n);
    }
}

}  // namespace

IppStatus ippsSampleUp_64f_Idx(const double* x, int32_t xIndex, int32_t len, double* d, int32_t dIndex,
                               int32_t& dstLen, int32_t factor, int32_t& phase) {
    return SampleUp(x, xIndex, len, d, dIndex, dstLen, factor, phase);
}
IppStatus sippsSampleUp_32f_Idx(const float* x, int32_t xIndex, int32_t len, float* d, int32_t dIndex,
                                int32_t& dstLen, int32_t factor, int32_t& phase) {
    return SampleUp(x, xIndex, len, d, dIndex, dstLen, factor, phase);
}

void TruncInt64_Idx(const double* x, int32_t xIndex, double* d, int32_t dIndex, int32_t len) {
    TruncInt64(x, xIndex, d, dIndex, len);
}
void sTruncInt64_Idx(const float* x, int32_t xIndex, float* d, int32_t dIndex, int32_t len) {
    TruncInt64(x, xIndex, d, dIndex, len);
}

}  // namespace rovane
