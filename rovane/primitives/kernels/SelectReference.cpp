// Selection kernels, reference table.
#include "rovane/primitives/kernels/IsaReference.h"
#include "rovane/primitives/kernels/KernelsSelect.inc"
