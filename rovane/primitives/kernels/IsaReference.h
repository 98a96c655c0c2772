// Reference kernels: the same arithmetic as the baseline table, with the
// transcendental functions evaluated in long double one element at a time and
// rounded once. Slow and plain; used to check the vector math and selectable
// through SetPrimitiveIsa(piReference) or ROVANE_ISA=reference. Included
// first by every <Family>Reference.cpp.
#pragma once
#define ROVANE_KERNEL_NS reference
#define ROVANE_KERNEL_REFERENCE 1
