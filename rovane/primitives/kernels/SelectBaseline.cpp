// Selection kernels, baseline table.
#include "rovane/primitives/kernels/IsaBaseline.h"
#include "rovane/primitives/kernels/KernelsSelect.inc"
