// The primitive catalogue: flat, stateless routines on bare arrays, named by
// the ipps grammar, one header per family (below). Each row of the tables in
// rovane/primitives/twins/ declares a double routine and its single twin
// (prefix s, 64f read as 32f, 64fc as 32fc, _A53 as _A24); the same row gives
// the typed forwarder that the library's containers call (Prim.h).
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

// The catalogue by family.
#include "rovane/primitives/ippspl_arithmetic.h"
#include "rovane/primitives/ippspl_motion.h"
#include "rovane/primitives/ippspl_parts.h"
#include "rovane/primitives/ippspl_reduce.h"
#include "rovane/primitives/ippspl_thresholds.h"
#include "rovane/primitives/ippspl_vmath.h"
