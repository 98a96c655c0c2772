// Internal: the one place where the primitive entries reach the kernel table.
#pragma once

#include <atomic>

#include "rovane/primitives/kernels/KernelTable.h"

namespace rovane::kern {

// Table in use; set once at load to the widest supported instruction set.
const TKernelTables& ActiveTables();

template <class F>
inline const TKernelSet<F>& Kernels() {
    return ActiveTables().Of<F>();
}

}  // namespace rovane::kern
