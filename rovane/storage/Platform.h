// Processor and thread queries of this platform, behind the controller's
// properties and the primitive layer's library services.
#pragma once

#include <cstdint>

#include "rovane/scalars/Export.h"

namespace rovane {

// Cores of the processor available to this process (at least 1).
ROVANE_API int32_t NumCoresOnDie();
// The instruction-set extensions of the processor, probed once.
struct TCpuFeatures {
    bool sse2 = false, sse3 = false, ssse3 = false, sse41 = false, sse42 = false, avx = false, avx2 = false,
         fma = false, avx512f = false, avx512dq = false, avx512bw = false, avx512vl = false;
};
ROVANE_API const TCpuFeatures& CpuFeatures();
// Feature bits: bit 0 SSE2, 1 SSE4.1, 2 AVX, 3 AVX2, 4 FMA, 5 AVX-512F.
ROVANE_API uint64_t CpuFeatureWord();
// Nominal clock in MHz from the operating system, or 0 when unknown.
ROVANE_API int32_t CpuFreqMhz();
// Largest data cache in bytes, or 0 when unknown.
ROVANE_API int64_t MaxCacheSizeBytes();
// Threads of the BLAS/LAPACK library (OpenBLAS).
ROVANE_API int32_t BlasThreadCount();
ROVANE_API void SetBlasThreadCount(int32_t count);
// Threads that the library's own primitives may use.
ROVANE_API int32_t PrimitiveThreadCount();
ROVANE_API void SetPrimitiveThreadCount(int32_t count);
// Denormals-are-zero and flush-to-zero for the calling thread.
ROVANE_API void SetDenormalsAreZeroForThread(bool on);

}  // namespace rovane
