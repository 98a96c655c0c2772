// The kernel tables, one per instruction set, each assembled from the family
// fills compiled for it. Built with the library's ordinary flags: it only
// stores the addresses the fills give.
#include "rovane/primitives/kernels/KernelTable.h"

namespace rovane::kern {

#define ROVANE_KERNEL_TABLE(FN, NS)                 \
    const TKernelTables& FN() {                     \
        static const TKernelTables tables = [] {    \
            TKernelTables t;                        \
            t.name = #NS;                           \
            NS::FillArith(t);                       \
            NS::FillVmath(t);                       \
            NS::FillParts(t);                       \
            NS::FillThresh(t);                      \
            NS::FillMatrix(t);                      \
            NS::FillReduce(t);                      \
            NS::FillSelect(t);                      \
            return t;                               \
        }();                                        \
        return tables;                              \
    }
ROVANE_KERNEL_TABLE(KernelTablesReference, reference)
ROVANE_KERNEL_TABLE(KernelTablesBaseline, baseline)
ROVANE_KERNEL_TABLE(KernelTablesAvx2, avx2)
ROVANE_KERNEL_TABLE(KernelTablesAvx512, avx512)
#undef ROVANE_KERNEL_TABLE

}  // namespace rovane::kern
