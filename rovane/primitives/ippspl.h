// The primitive catalogue: flat, stateless routines on bare arrays, named by
// the ipps grammar. Each row of the tables in rovane/primitives/twins/
// declares a double routine and its single twin (prefix s, 64f read as 32f,
// 64fc as 32fc, _A53 as _A24); the same row gives the typed forwarder that
// the library's containers call (rovane/primitives/Prim.h).
//
// Argument order of the _Idx shape:
//   unary      source, index, destination, index, length
//   binary     source 1, index 1, source 2, index 2, destination, index, length
//   in place   [value or source pair,] array, index, length
//   scalar     source pair, value, destination pair, length (ippsAddC form)
// A length below zero returns ippStsSizeErr and writes nothing; a length of
// zero returns ippStsNoErr and touches nothing; a null array returns
// ippStsNullPtrErr. A destination may be the same array position as a source.
#pragma once

#include "rovane/primitives/ippspl_core.h"

#include "rovane/primitives/PrimShapes.h"

namespace rovane {

#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(IppStatus, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_OWN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(void, D, S, SHAPE, __VA_ARGS__)
#define ROVANE_SOLO(N, F, SHAPE, ...) ROVANE_DECLARE_SOLO(IppStatus, F, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Arithmetic.def"
#include "rovane/primitives/twins/VectorMath.def"
#include "rovane/primitives/twins/Parts.def"
#include "rovane/primitives/twins/Thresholds.def"
#include "rovane/primitives/twins/Motion.def"
#undef ROVANE_TWIN
#undef ROVANE_OWN
#undef ROVANE_SOLO

}  // namespace rovane
