// Library services of the primitive layer and the choice of kernel table.
#include "rovane/primitives/ippspl_core.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <utility>

#include "rovane/primitives/kernels/Dispatch.h"
#include "rovane/storage/Platform.h"

namespace rovane {

const char* ippGetStatusString(IppStatus status) {
    switch (status) {
        case ippStsNoErr: return "";
        case ippStsSizeErr: return "Wrong Value of data size";
        case ippStsNullPtrErr: return "Null pointer error";
        case ippStsThresholdErr: return "Invalid threshold: low level above high level";
        case ippStsThreshNegLevelErr: return "Negative threshold level";
        case ippStsSamplePhaseErr: return "Sample phase out of range";
        case ippStsSampleFactorErr: return "Sample factor below one";
        default: return status < 0 ? "Unknown error" : "Unknown warning";
    }
}

std::string ippGetStatusStr(IppStatus status) { return ippGetStatusString(status); }

// The services answer from the platform queries, the one probe of the
// processor and the operating system.
uint64_t ippGetCpuFeatures() {
    const TCpuFeatures& c = CpuFeatures();
    uint64_t f = 0;
    const std::pair<bool, uint64_t> bits[] = {
        {c.sse2, ippCPUID_SSE2},     {c.sse3, ippCPUID_SSE3},         {c.ssse3, ippCPUID_SSSE3},
        {c.sse41, ippCPUID_SSE41},   {c.sse42, ippCPUID_SSE42},       {c.avx, ippCPUID_AVX},
        {c.avx2, ippCPUID_AVX2},     {c.fma, ippCPUID_FMA},           {c.avx512f, ippCPUID_AVX512F},
        {c.avx512dq, ippCPUID_AVX512DQ}, {c.avx512bw, ippCPUID_AVX512BW}, {c.avx512vl, ippCPUID_AVX512VL}};
    for (const auto& [has, bit] : bits)
        if (has) f |= bit;
    return f;
}

// The clock when the operating system tells it, else a nominal 1000 MHz.
IppStatus ippGetCpuFreqMhz(int32_t& mhz) {
    const int32_t f = CpuFreqMhz();
    mhz = f > 0 ? f : 1000;
    return ippStsNoErr;
}

IppStatus ippGetMaxCacheSizeB(int32_t& bytes) {
    const int64_t b = MaxCacheSizeBytes();
    bytes = b > INT32_MAX ? INT32_MAX : static_cast<int32_t>(b);
    return ippStsNoErr;
}

int32_t ippGetNumCoresOnDie() { return NumCoresOnDie(); }

// The layer runs on the calling thread only: the count is always one.
IppStatus ippGetNumThreads(int32_t& n) {
    n = 1;
    return 1;
}

IppStatus ippSetNumThreads(int32_t n) { return n < 1 ? ippStsSizeErr : 1; }

IppStatus ippSetDenormAreZeros(int32_t flag) {
    SetDenormalsAreZeroForThread(flag != 0);
    return ippStsNoErr;
}

bool PrimitiveIsaSupported(TPrimitiveIsa isa) {
    const TCpuFeatures& c = CpuFeatures();
    switch (isa) {
        case piReference:
        case piBaseline: return true;
        case piAvx2: return c.avx2 && c.fma;
        case piAvx512: return c.avx512f && c.avx512dq && c.avx512vl && c.avx512bw && c.avx2 && c.fma;
    }
    return false;
}

// ---------------------------------------------------------------------------
// Kernel table choice.
// ---------------------------------------------------------------------------
namespace {


const kern::TKernelTables& TablesOf(TPrimitiveIsa isa) {
    switch (isa) {
        case piReference: return kern::KernelTablesReference();
        case piAvx2: return kern::KernelTablesAvx2();
        case piAvx512: return kern::KernelTablesAvx512();
        default: return kern::KernelTablesBaseline();
    }
}

// The table at start: ROVANE_ISA when it names a table this processor runs,
// else the widest one; an unknown or unsupported name is reported once on
// stderr (this runs once per process, before any primitive call).
TPrimitiveIsa StartIsa() {
    const TPrimitiveIsa best = BestPrimitiveIsa();
    const char* wanted = std::getenv("ROVANE_ISA");
    if (!wanted || !*wanted) return best;
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512}) {
        if (std::strcmp(wanted, PrimitiveIsaName(isa)) != 0) continue;
        if (PrimitiveIsaSupported(isa)) return isa;
        std::fprintf(stderr, "Rovane: ROVANE_ISA=%s is not supported by this processor; using %s.\n", wanted,
                     PrimitiveIsaName(best));
        return best;
    }
    std::fprintf(stderr, "Rovane: ROVANE_ISA=%s is not one of reference, baseline, avx2, avx512; using %s.\n",
                 wanted, PrimitiveIsaName(best));
    return best;
}

struct TActive {
    const TPrimitiveIsa start = StartIsa();
    std::atomic<const kern::TKernelTables*> tables{&TablesOf(start)};
    std::atomic<TPrimitiveIsa> isa{start};
};

TActive& Active() {
    static TActive active;
    return active;
}

}  // namespace

TPrimitiveIsa BestPrimitiveIsa() {
    if (PrimitiveIsaSupported(piAvx512)) return piAvx512;
    if (PrimitiveIsaSupported(piAvx2)) return piAvx2;
    return piBaseline;
}

TPrimitiveIsa PrimitiveIsa() { return Active().isa.load(std::memory_order_relaxed); }

TPrimitiveIsa DefaultPrimitiveIsa() { return Active().start; }

bool SetPrimitiveIsa(TPrimitiveIsa isa) {
    if (isa < piReference || isa > piAvx512 || !PrimitiveIsaSupported(isa)) return false;
    Active().tables.store(&TablesOf(isa), std::memory_order_release);
    Active().isa.store(isa, std::memory_order_relaxed);
    return true;
}

const char* PrimitiveIsaName(TPrimitiveIsa isa) {
    switch (isa) {
        case piReference: return "reference";
        case piBaseline: return "baseline";
        case piAvx2: return "avx2";
        case piAvx512: return "avx512";
    }
    return "";
}

namespace kern {
const TKernelTables& ActiveTables() { return *Active().tables.load(std::memory_order_acquire); }
}  // namespace kern

}  // namespace rovane
