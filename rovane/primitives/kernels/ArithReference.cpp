// Arithmetic kernels, reference table.
#include "rovane/primitives/kernels/IsaReference.h"
#include "rovane/primitives/kernels/KernelsArith.inc"
