// Spread of the element-wise kernels over fresh processes. Each case is timed
// in several new processes of this program, each after a memory-heavy warm-up
// of two threads over large buffers (one of them on transparent huge pages),
// and the summary gives min / median / max per case and the ratio of max to
// min, so that a slow path that only some processes take shows up instead of
// hiding behind a median. After the warm-up each process also drops the
// library's read-only pages from its page tables, as reclaim can. A kernel
// that reaches a constant only through a masked load may then stay on the
// processor's slow path for that process (see the kernel rules in
// docs/DESIGN.md); the first plain accesses map whole neighbourhoods of pages
// again, so this makes the slow path likelier, not certain. The library's Exp runs beside SLEEF's exp called directly
// at the table's width in the same process.
//
//   bench_spread [processes] [table...]     default: 8 processes, every table
//                                           this processor runs
//   bench_spread --child TABLE              one measuring process (internal)
//
// The machine may be shared: the figures are minima of the thread's processor
// time over repeated calls inside each process, so waiting for a core does
// not count; a loaded machine still widens the spread (shared caches and
// memory bandwidth).
#include <immintrin.h>
#include <sleef.h>
#include <link.h>
#include <sys/mman.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "rovane/Rovane.h"

using namespace rovane;

namespace {

// Two threads stream over buffers of 256 MiB each for about `seconds`: copies,
// fills and reads, the second buffer on huge pages where the system allows.
void WarmUp(double seconds) {
    constexpr size_t kBytes = size_t(256) << 20;
    std::atomic<bool> stop{false};
    auto worker = [&](bool huge) {
        void* mem = nullptr;
        if (posix_memalign(&mem, size_t(2) << 20, 2 * kBytes) != 0) return;
        if (huge) madvise(mem, 2 * kBytes, MADV_HUGEPAGE);
        auto* a = static_cast<char*>(mem);
        char* b = a + kBytes;
        std::memset(a, 1, kBytes);
        volatile uint64_t sink = 0;
        while (!stop.load(std::memory_order_relaxed)) {
            std::memcpy(b, a, kBytes);
            std::memset(a, int(sink & 0x7F), kBytes);
            uint64_t s = 0;
            for (size_t i = 0; i < kBytes; i += 64) s += static_cast<unsigned char>(b[i]);
            sink = sink + s;
        }
        std::free(mem);
    };
    std::thread t1(worker, false), t2(worker, true);
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    stop = true;
    t1.join();
    t2.join();
}

// Drops the library's read-only pages (code and constants) from this
// process's page tables, as memory reclaim may do under pressure; the next
// ordinary access maps them again. Writable segments are left alone.
void DropLibraryPages() {
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void*) {
            if (!std::strstr(info->dlpi_name, "librovane")) return 0;
            for (int k = 0; k < info->dlpi_phnum; ++k) {
                const auto& ph = info->dlpi_phdr[k];
                if (ph.p_type != PT_LOAD || (ph.p_flags & PF_W)) continue;
                const uintptr_t lo = (info->dlpi_addr + ph.p_vaddr) & ~uintptr_t(4095);
                const uintptr_t hi = (info->dlpi_addr + ph.p_vaddr + ph.p_memsz + 4095) & ~uintptr_t(4095);
                madvise(reinterpret_cast<void*>(lo), hi - lo, MADV_DONTNEED);
            }
            return 0;
        },
        nullptr);
}

template <class F>
std::vector<F> Data(size_t n, double lo, double hi) {
    std::mt19937_64 g(7);
    std::uniform_real_distribution<double> u(lo, hi);
    std::vector<F> v(n);
    for (auto& x : v) x = static_cast<F>(u(g));
    return v;
}

// Processor time of this thread in ns: on a shared machine, time spent
// waiting for a core is not counted (a slow path in the processor is).
double ThreadNs() {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e9 + double(t.tv_nsec);
}

// Best time per element of fn over repeated samples, in ns. A sample of a
// short run times a batch of calls: reading the thread's clock costs about
// half a microsecond.
template <class Fn>
double NsPerElement(size_t n, Fn fn) {
    const int reps = n >= 100000 ? 8 : 40;
    const int batch = n >= 100000 ? 1 : int(100000 / n);
    double best = 1e300;
    for (int r = 0; r < reps; ++r) {
        const double t0 = ThreadNs();
        for (int b = 0; b < batch; ++b) fn();
        best = std::min(best, (ThreadNs() - t0) / batch);
    }
    return best / double(n);
}

// SLEEF's exp at the widest width this processor runs. sleef.h declares the
// wide routines only when the whole program is built for them.
extern "C" {
#ifndef __AVX512F__
__m512d Sleef_expd8_u10avx512f(__m512d);
__m512 Sleef_expf16_u10avx512f(__m512);
#endif
#ifndef __AVX2__
__m256d Sleef_expd4_u10avx2(__m256d);
__m256 Sleef_expf8_u10avx2(__m256);
#endif
}
__attribute__((target("avx512f"))) void SleefExp512(const double* x, double* d, size_t n) {
    size_t i = 0;
    for (; i + 8 <= n; i += 8) _mm512_storeu_pd(d + i, Sleef_expd8_u10avx512f(_mm512_loadu_pd(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}
__attribute__((target("avx512f"))) void SleefExpf512(const float* x, float* d, size_t n) {
    size_t i = 0;
    for (; i + 16 <= n; i += 16) _mm512_storeu_ps(d + i, Sleef_expf16_u10avx512f(_mm512_loadu_ps(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}
__attribute__((target("avx2,fma"))) void SleefExp256(const double* x, double* d, size_t n) {
    size_t i = 0;
    for (; i + 4 <= n; i += 4) _mm256_storeu_pd(d + i, Sleef_expd4_u10avx2(_mm256_loadu_pd(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}
__attribute__((target("avx2,fma"))) void SleefExpf256(const float* x, float* d, size_t n) {
    size_t i = 0;
    for (; i + 8 <= n; i += 8) _mm256_storeu_ps(d + i, Sleef_expf8_u10avx2(_mm256_loadu_ps(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}
void SleefExp128(const double* x, double* d, size_t n) {
    size_t i = 0;
    for (; i + 2 <= n; i += 2) _mm_storeu_pd(d + i, Sleef_expd2_u10sse2(_mm_loadu_pd(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}
void SleefExpf128(const float* x, float* d, size_t n) {
    size_t i = 0;
    for (; i + 4 <= n; i += 4) _mm_storeu_ps(d + i, Sleef_expf4_u10sse2(_mm_loadu_ps(x + i)));
    for (; i < n; ++i) d[i] = x[i];
}

// One process: warm up, then print "case ns" lines.
int Child(const std::string& table) {
    TPrimitiveIsa isa = piReference;
    for (TPrimitiveIsa t : {piReference, piBaseline, piAvx2, piAvx512})
        if (table == PrimitiveIsaName(t)) isa = t;
    if (!SetPrimitiveIsa(isa)) return 2;
    WarmUp(0.4);
    DropLibraryPages();
    const bool reference = isa == piReference;
    for (size_t n : {size_t(1000), size_t(1000000)}) {
        if (reference && n > 1000) continue;  // one element at a time in long double: small runs only
        const auto xd = Data<double>(n, -50, 50);
        const auto xs = Data<float>(n, -50, 50);
        const auto xp = Data<double>(n, 0.001, 100);
        const auto xps = Data<float>(n, 0.001f, 100);
        std::vector<double> dd(n);
        std::vector<float> ds(n);
        const int32_t len = static_cast<int32_t>(n);
        const std::string at = " n=" + std::to_string(n);
        auto report = [&](const char* name, double ns) { std::printf("%s%s %.4f\n", name, at.c_str(), ns); };
        report("Exp_64f", NsPerElement(n, [&] { ippsExp_64f_A53_Idx(xd.data(), 0, dd.data(), 0, len); }));
        report("Exp_32f", NsPerElement(n, [&] { sippsExp_32f_A24_Idx(xs.data(), 0, ds.data(), 0, len); }));
        if (!reference) {
            auto sleef64 = isa == piAvx512 ? SleefExp512 : isa == piAvx2 ? SleefExp256 : SleefExp128;
            auto sleef32 = isa == piAvx512 ? SleefExpf512 : isa == piAvx2 ? SleefExpf256 : SleefExpf128;
            report("SleefExp_64f", NsPerElement(n, [&] { sleef64(xd.data(), dd.data(), n); }));
            report("SleefExp_32f", NsPerElement(n, [&] { sleef32(xs.data(), ds.data(), n); }));
        }
        report("Sinh_64f", NsPerElement(n, [&] { ippsSinh_64f_A53_Idx(xd.data(), 0, dd.data(), 0, len); }));
        report("Cosh_32f", NsPerElement(n, [&] { sippsCosh_32f_A24_Idx(xs.data(), 0, ds.data(), 0, len); }));
        report("Asinh_32f", NsPerElement(n, [&] { sippsAsinh_32f_A24_Idx(xs.data(), 0, ds.data(), 0, len); }));
        report("Acosh_64f", NsPerElement(n, [&] { ippsAcosh_64f_A53_Idx(xp.data(), 0, dd.data(), 0, len); }));
        report("Sin_64f", NsPerElement(n, [&] { ippsSin_64f_A53_Idx(xd.data(), 0, dd.data(), 0, len); }));
        report("Ln_64f", NsPerElement(n, [&] { ippsLn_64f_A53_Idx(xp.data(), 0, dd.data(), 0, len); }));
        report("Ln_32f", NsPerElement(n, [&] { sippsLn_32f_A24_Idx(xps.data(), 0, ds.data(), 0, len); }));
        report("Sqrt_64f", NsPerElement(n, [&] { ippsSqrt_64f_A53_Idx(xp.data(), 0, dd.data(), 0, len); }));
        report("Add_64f", NsPerElement(n, [&] { ippsAdd_64f_Idx(xd.data(), 0, xp.data(), 0, dd.data(), 0, len); }));
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--child") == 0) return Child(argv[2]);
    int procs = 8;
    std::vector<std::string> tables;
    for (int a = 1; a < argc; ++a) {
        if (std::isdigit(static_cast<unsigned char>(argv[a][0])))
            procs = std::max(1, std::atoi(argv[a]));
        else
            tables.push_back(argv[a]);
    }
    if (tables.empty())
        for (TPrimitiveIsa t : {piAvx512, piAvx2, piBaseline, piReference})
            if (t <= BestPrimitiveIsa()) tables.push_back(PrimitiveIsaName(t));
    std::printf("%d fresh processes per table, each after a two-thread memory warm-up; ns of processor\n"
                "time per element, best of repeated calls within a process. A shared, loaded machine\n"
                "widens the spread.\n",
                procs);
    for (const auto& table : tables) {
        std::map<std::string, std::vector<double>> samples;
        std::vector<std::string> order;
        for (int p = 0; p < procs; ++p) {
            const std::string cmd = "'/proc/" + std::to_string(getpid()) + "/exe' --child " + table;
            FILE* f = popen(cmd.c_str(), "r");
            if (!f) return 1;
            char name[128], at[64];
            double ns;
            while (std::fscanf(f, "%127s %63s %lf", name, at, &ns) == 3) {
                const std::string key = std::string(name) + " " + at;
                if (!samples.count(key)) order.push_back(key);
                samples[key].push_back(ns);
            }
            if (pclose(f) != 0) {
                std::printf("table %s: a measuring process failed\n", table.c_str());
                break;
            }
        }
        std::printf("\ntable %s\n%-24s %9s %9s %9s %8s\n", table.c_str(), "case", "min", "median", "max",
                    "max/min");
        for (const auto& key : order) {
            auto v = samples[key];
            std::sort(v.begin(), v.end());
            std::printf("%-24s %9.3f %9.3f %9.3f %8.2f\n", key.c_str(), v.front(), v[v.size() / 2], v.back(),
                        v.back() / v.front());
        }
    }
    return 0;
}
