// Processor and thread queries mapped to Linux, the x86 CPUID bits that the
// compiler exposes, and OpenBLAS.
#include "rovane/storage/Platform.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <string>
#include <thread>

#include "rovane/primitives/BlasHelper.h"

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif


namespace rovane {

namespace {
std::atomic<int32_t> primitiveThreads{1};
}

int32_t NumCoresOnDie() { return static_cast<int32_t>(std::max(1u, std::thread::hardware_concurrency())); }

namespace {
TCpuFeatures Probe() {
    TCpuFeatures f;
#if defined(__x86_64__) || defined(__i386__)
    __builtin_cpu_init();
    f.sse2 = __builtin_cpu_supports("sse2");
    f.sse3 = __builtin_cpu_supports("sse3");
    f.ssse3 = __builtin_cpu_supports("ssse3");
    f.sse41 = __builtin_cpu_supports("sse4.1");
    f.sse42 = __builtin_cpu_supports("sse4.2");
    f.avx = __builtin_cpu_supports("avx");
    f.avx2 = __builtin_cpu_supports("avx2");
    f.fma = __builtin_cpu_supports("fma");
    f.avx512f = __builtin_cpu_supports("avx512f");
    f.avx512dq = __builtin_cpu_supports("avx512dq");
    f.avx512bw = __builtin_cpu_supports("avx512bw");
    f.avx512vl = __builtin_cpu_supports("avx512vl");
#endif
    return f;
}
}  // namespace

const TCpuFeatures& CpuFeatures() {
    static const TCpuFeatures features = Probe();
    return features;
}

uint64_t CpuFeatureWord() {
    const TCpuFeatures& f = CpuFeatures();
    return uint64_t(f.sse2) << 0 | uint64_t(f.sse41) << 1 | uint64_t(f.avx) << 2 | uint64_t(f.avx2) << 3 |
           uint64_t(f.fma) << 4 | uint64_t(f.avx512f) << 5;
}

int32_t CpuFreqMhz() {
    std::ifstream info("/proc/cpuinfo");
    std::string line;
    while (std::getline(info, line))
        if (line.rfind("cpu MHz", 0) == 0) {
            const auto colon = line.find(':');
            if (colon != std::string::npos) return static_cast<int32_t>(std::stod(line.substr(colon + 1)));
        }
    return 0;
}

int64_t MaxCacheSizeBytes() {
    long best = 0;
#ifdef _SC_LEVEL3_CACHE_SIZE
    best = std::max({sysconf(_SC_LEVEL1_DCACHE_SIZE), sysconf(_SC_LEVEL2_CACHE_SIZE), sysconf(_SC_LEVEL3_CACHE_SIZE)});
#endif
    return best > 0 ? best : 0;
}

int32_t BlasThreadCount() { return blas::Blas().get_num_threads(); }
void SetBlasThreadCount(int32_t count) { blas::Blas().set_num_threads(std::max(1, count)); }
int32_t PrimitiveThreadCount() { return primitiveThreads.load(); }
void SetPrimitiveThreadCount(int32_t count) { primitiveThreads.store(std::max(1, count)); }

void SetDenormalsAreZeroForThread(bool on) {
#if defined(__x86_64__) || defined(__i386__)
    const unsigned bits = 0x8040u;  // FTZ | DAZ
    _mm_setcsr(on ? (_mm_getcsr() | bits) : (_mm_getcsr() & ~bits));
#else
    (void)on;
#endif
}

}  // namespace rovane
