// Primitives behind the rounding, remainder and complex-part members that the
// catalogue (ippspl.h) and the library's own set (fastlib.h) do not hold.
// Arguments follow the _Idx shape; each double routine has a single twin
// with a leading s.
#pragma once

#include "rovane/primitives/ippspl_core.h"
#include "rovane/primitives/PrimShapes.h"

namespace rovane {

// Up-sampling: factor - 1 zeros after each sample, sample i landing at
// d[dIndex + i * factor + phase]. dstLen receives len * factor; phase is
// left as given, the phase of a following call. A negative length gives
// ippStsSizeErr, a factor below 1 ippStsSampleFactorErr, a phase outside
// 0 .. factor - 1 ippStsSamplePhaseErr; nothing is written then. Source and
// destination must not overlap.
//
// TruncInt64: d = x truncated toward zero through a signed 64-bit integer and
// back. A value the integer cannot hold (a NaN, an infinity, |x| >= 2^63)
// gives the integer's indefinite value -2^63, and a negative zero or a
// negative fraction above -1 gives +0, as the processor's conversion does.
// Source and destination may be the same run. Nothing is done for a length
// of zero or below.
#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_OWN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(void, D, S, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/PartsExtra.def"
#undef ROVANE_TWIN
#undef ROVANE_OWN

}  // namespace rovane
