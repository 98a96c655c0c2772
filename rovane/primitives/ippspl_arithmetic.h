// Catalogue: arithmetic (Add, Sub, Mul, Div, AddProduct, the scalar forms,
// Sqr, Normalize).
// Rows, with their descriptions: rovane/primitives/twins/Arithmetic.def; calling rules:
// rovane/primitives/ippspl.h.
#pragma once

#include "rovane/primitives/PrimShapes.h"
#include "rovane/primitives/ippspl_core.h"

namespace rovane {

#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_SOLO(N, F, SHAPE, ...) ROVANE_DECLARE_SOLO(IppStatus, F, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Arithmetic.def"
#undef ROVANE_TWIN
#undef ROVANE_SOLO

}  // namespace rovane
