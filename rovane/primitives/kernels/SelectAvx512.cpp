// Selection kernels, avx512 table.
#include "rovane/primitives/kernels/IsaAvx512.h"
#include "rovane/primitives/kernels/KernelsSelect.inc"
