// Catalogue: vector math, the accuracy-graded transcendental forms
// (_A53 double, _A24 single) and the square roots.
// Rows, with their descriptions: rovane/primitives/twins/VectorMath.def; calling rules:
// rovane/primitives/ippspl.h.
#pragma once

#include "rovane/primitives/PrimShapes.h"
#include "rovane/primitives/ippspl_core.h"

namespace rovane {

#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_TWIN_KERNEL(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_SOLO(N, F, SHAPE, ...) ROVANE_DECLARE_SOLO(IppStatus, F, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/VectorMath.def"
#undef ROVANE_TWIN
#undef ROVANE_TWIN_KERNEL
#undef ROVANE_SOLO

}  // namespace rovane
