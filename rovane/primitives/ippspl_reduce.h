// Catalogue: statistics and reductions, with the library's own product and
// running-sum routines.
// Rows, with their descriptions: rovane/primitives/twins/Reduce.def; calling rules:
// rovane/primitives/ippspl.h.
#pragma once

#include "rovane/primitives/ReduceShapes.h"
#include "rovane/primitives/ippspl_core.h"

namespace rovane {

#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_OWN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(void, D, S, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Reduce.def"
#undef ROVANE_TWIN
#undef ROVANE_OWN

}  // namespace rovane
