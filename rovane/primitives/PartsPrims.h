// Primitives behind the rounding, remainder and complex-part members that the
// catalogue (ippspl.h) and the library's own set (fastlib.h) do not hold.
// Arguments follow the _Idx shape; each double routine has a single twin
// with a leading s.
#pragma once

#include "rovane/primitives/ippspl_core.h"

namespace rovane {

// Up-sampling: factor - 1 zeros after each sample, sample i landing at
// d[dIndex + i * factor + phase]. dstLen receives len * factor; phase is
// left as given, the phase of a following call. A negative length gives
// ippStsSizeErr, a factor below 1 ippStsSampleFactorErr, a phase outside
// 0 .. factor - 1 ippStsSamplePhaseErr; nothing is written then. Source and
// destination must not overlap.
ROVANE_API IppStatus ippsSampleUp_64f_Idx(const double* x, int32_t xIndex, int32_t len, double* d, int32_t dIndex,
                                          int32_t& dstLen, int32_t factor, int32_t& phase);
ROVANE_API IppStatus sippsSampleUp_32f_Idx(const float* x, int32_t xIndex, int32_t len, float* d, int32_t dIndex,
                                           int32_t& dstLen, int32_t factor, int32_t& phase);

// d = x truncated toward zero through a signed 64-bit integer and back. A
// value the integer cannot hold (a NaN, an infinity, |x| >= 2^63) gives the
// integer's indefinite value -2^63, and a negative zero or a negative
// fraction above -1 gives +0, as the processor's conversion does. Source and
// destination may be the same run. Nothing is done for a length of zero or
// below.
ROVANE_API void TruncInt64_Idx(const double* x, int32_t xIndex, double* d, int32_t dIndex, int32_t len);
ROVANE_API void sTruncInt64_Idx(const float* x, int32_t xIndex, float* d, int32_t dIndex, int32_t len);

}  // namespace rovane
