// Selection kernels, avx2 table.
#include "rovane/primitives/kernels/IsaAvx2.h"
#include "rovane/primitives/kernels/KernelsSelect.inc"
