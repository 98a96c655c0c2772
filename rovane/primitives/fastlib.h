// The library's own primitives: operations without a catalogue name. A stem
// without letters is real; a trailing letter pair names the kinds of source
// and destination (d real, c complex): AddValuecd adds a real value to complex
// data, AddValuedc a complex value to real data. Single-precision twins carry
// a leading s. Arguments follow the _Idx shape of ippspl.h; these routines
// return no status and do nothing for a length of zero or below. The rows
// with their descriptions are in rovane/primitives/twins/Own.def.
#pragma once

#include "rovane/primitives/ippspl_core.h"
#include "rovane/primitives/PrimShapes.h"

namespace rovane {

#define ROVANE_OWN(N, D, S, SHAPE, ...) ROVANE_DECLARE_TWIN(void, D, S, SHAPE, __VA_ARGS__)
#include "rovane/primitives/twins/Own.def"
#undef ROVANE_OWN

}  // namespace rovane
