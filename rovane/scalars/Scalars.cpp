// Scalar foundation: constants and settings, the exception family, machine
// services, equality rules, the factorial table and the start sequence.
#include "rovane/scalars/Scalars.h"

#include <chrono>
#include <concepts>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <pthread.h>
#include <thread>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#define ROVANE_X86 1
#endif

namespace rovane {

// ---------------------------------------------------------------------------
// Special values and settings.
// ---------------------------------------------------------------------------
constinit double NAN_ = std::bit_cast<double>(0xFFF8000000000000ull);  // normalised at start
constinit double INF = std::bit_cast<double>(0x7FF0000000000000ull);
constinit float NAN_SINGLE = std::bit_cast<float>(0xFFC00000u);
constinit float INF_SINGLE = std::bit_cast<float>(0x7F800000u);
constinit TCplx CNAN{0, 0};
constinit TCplx CINF{0, 0};
constinit TSCplx CNAN_SINGLE{std::bit_cast<float>(0xFFC00000u), std::bit_cast<float>(0xFFC00000u)};
constinit TSCplx CINF_SINGLE{std::bit_cast<float>(0x7F800000u), std::bit_cast<float>(0x7F800000u)};

constinit std::atomic<int32_t> RovaneBlockSize{1000};
constinit int64_t RovaneMemoryAlignment = 128;
constinit uint16_t Rovane8087CW = 0x133F;
constinit uint16_t Fortran8087CW = 0x123F;
constinit uint16_t Saved8087 = 0x1332;
constinit uint16_t MtxSaved8087CW = 0;
constinit double GradStepSize = 0;
constinit float GradStepSizeSingle = 0;
// Destroyed after the library lifetime object, whose finalisation still
// touches them: an early init priority makes their destructors run last.
__attribute__((init_priority(101))) TIntegerArray RovanePrimeArray;
__attribute__((init_priority(101))) std::string MtxRegistryKey;
__attribute__((init_priority(101))) std::string RovaneWorkingDir;

// ---------------------------------------------------------------------------
// Counted blocks.
// ---------------------------------------------------------------------------
void* AlignedAlloc(size_t bytes, size_t alignment) {
    if (alignment < alignof(std::max_align_t)) alignment = alignof(std::max_align_t);
    void* p = nullptr;
    if (posix_memalign(&p, alignment, bytes ? bytes : 1) != 0) throw std::bad_alloc();
    return p;
}

void AlignedFree(void* block) { std::free(block); }

namespace detail {

void* AllocCounted(size_t elementBytes, int32_t length, size_t alignment) {
    // The header must fit in front of the data: round its size up to the
    // alignment and place the data on the next boundary.
    const size_t headerRoom = (sizeof(TArrayHeader) + alignment - 1) / alignment * alignment;
    char* block = static_cast<char*>(AlignedAlloc(headerRoom + elementBytes * static_cast<size_t>(length), alignment));
    char* data = block + headerRoom;
    auto* h = new (data - sizeof(TArrayHeader)) TArrayHeader{block, nullptr, {1}, length};
    (void)h;
    return data;
}

void ReleaseCounted(void* data) noexcept {
    TArrayHeader* h = HeaderOf(data);
    if (h->RefCount.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    if (h->Destroy) h->Destroy(data, h->Length);
    void* block = h->Block;
    h->~TArrayHeader();
    AlignedFree(block);
}

}  // namespace detail

// ---------------------------------------------------------------------------
// Format texts and the raise functions.
// ---------------------------------------------------------------------------
namespace {

std::string FloatText(long double v, char type, int prec) {
    char buf[512];
    switch (type) {
        case 'f':
            std::snprintf(buf, sizeof buf, "%.*Lf", prec < 0 ? 2 : prec, v);
            break;
        case 'e':
            std::snprintf(buf, sizeof buf, "%.*Le", prec < 0 ? 15 : (prec > 0 ? prec - 1 : 0), v);
            break;
        case 'n': {  // fixed with thousand separators
            std::snprintf(buf, sizeof buf, "%.*Lf", prec < 0 ? 2 : prec, v);
            std::string s(buf);
            size_t start = (s[0] == '-') ? 1 : 0;
            size_t dot = s.find('.');
            if (dot == std::string::npos) dot = s.size();
            for (ptrdiff_t at = static_cast<ptrdiff_t>(dot) - 3; at > static_cast<ptrdiff_t>(start); at -= 3)
                s.insert(static_cast<size_t>(at), ",");
            return s;
        }
        default:
            std::snprintf(buf, sizeof buf, "%.*Lg", prec < 0 ? 15 : prec, v);
            break;
    }
    return buf;
}

[[noreturn]] void FormatFailure(std::string_view fmt) {
    throw ERovaneException("Format '" + std::string(fmt) + "' invalid or incompatible with argument");
}

}  // namespace

std::string FormatText(std::string_view fmt, std::initializer_list<TFmtArg> args) {
    std::string out;
    out.reserve(fmt.size() + 16 * args.size());
    size_t next = 0;
    for (size_t i = 0; i < fmt.size(); ++i) {
        char c = fmt[i];
        if (c != '%') {
            out += c;
            continue;
        }
        if (++i >= fmt.size()) FormatFailure(fmt);
        if (fmt[i] == '%') {
            out += '%';
            continue;
        }
        // [index:][-][width][.prec]type
        size_t j = i;
        long num = -1;
        auto readNumber = [&](long& value) {
            value = -1;
            if (j < fmt.size() && fmt[j] == '*') {
                if (next >= args.size() || args.begin()[next].kind != TFmtArg::kInt) FormatFailure(fmt);
                value = static_cast<long>(args.begin()[next++].i);
                ++j;
                return;
            }
            while (j < fmt.size() && fmt[j] >= '0' && fmt[j] <= '9') {
                value = (value < 0 ? 0 : value * 10) + (fmt[j] - '0');
                ++j;
            }
        };
        readNumber(num);
        if (j < fmt.size() && fmt[j] == ':') {
            next = num < 0 ? 0 : static_cast<size_t>(num);
            ++j;
        } else {
            j = i;
        }
        bool left = false;
        if (j < fmt.size() && fmt[j] == '-') {
            left = true;
            ++j;
        }
        long width = -1, prec = -1;
        readNumber(width);
        if (j < fmt.size() && fmt[j] == '.') {
            ++j;
            readNumber(prec);
            if (prec < 0) prec = 0;
        }
        if (j >= fmt.size() || next >= args.size()) FormatFailure(fmt);
        const char type = static_cast<char>(std::tolower(static_cast<unsigned char>(fmt[j])));
        const TFmtArg& a = args.begin()[next++];
        std::string piece;
        char buf[64];
        switch (type) {
            case 'd':
            case 'u':
            case 'x': {
                if (a.kind != TFmtArg::kInt && a.kind != TFmtArg::kUInt) FormatFailure(fmt);
                if (type == 'x')
                    std::snprintf(buf, sizeof buf, fmt[j] == 'X' ? "%llX" : "%llx",
                                  a.kind == TFmtArg::kInt ? static_cast<unsigned long long>(a.i)
                                                          : static_cast<unsigned long long>(a.u));
                else if (a.kind == TFmtArg::kInt)
                    std::snprintf(buf, sizeof buf, "%lld", static_cast<long long>(a.i));
                else
                    std::snprintf(buf, sizeof buf, "%llu", static_cast<unsigned long long>(a.u));
                piece = buf;
                // A precision on an integer gives a minimum digit count.
                if (prec > 0) {
                    const bool neg = !piece.empty() && piece[0] == '-';
                    size_t digits = piece.size() - (neg ? 1 : 0);
                    if (digits < static_cast<size_t>(prec))
                        piece.insert(neg ? 1 : 0, static_cast<size_t>(prec) - digits, '0');
                }
                break;
            }
            case 'g':
            case 'f':
            case 'e':
            case 'n': {
                long double v = a.kind == TFmtArg::kFloat  ? a.f
                                : a.kind == TFmtArg::kInt  ? static_cast<long double>(a.i)
                                : a.kind == TFmtArg::kUInt ? static_cast<long double>(a.u)
                                                           : (FormatFailure(fmt), 0.0L);
                piece = FloatText(v, type, static_cast<int>(prec));
                break;
            }
            case 's':
                if (a.kind != TFmtArg::kText) FormatFailure(fmt);
                piece = std::string(a.s);
                if (prec >= 0 && piece.size() > static_cast<size_t>(prec)) piece.resize(static_cast<size_t>(prec));
                break;
            case 'p':
                if (a.kind != TFmtArg::kPointer) FormatFailure(fmt);
                std::snprintf(buf, sizeof buf, "%016llX", static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(a.p)));
                piece = buf;
                break;
            default:
                FormatFailure(fmt);
        }
        if (width > 0 && piece.size() < static_cast<size_t>(width)) {
            const size_t pad = static_cast<size_t>(width) - piece.size();
            if (left)
                piece.append(pad, ' ');
            else
                piece.insert(0, pad, ' ');
        }
        out += piece;
        i = j;
    }
    return out;
}

void ERaise(std::string_view msg) { throw ERovaneException(std::string(msg)); }
void ERangeErrorRaise(std::string_view msg) { throw ERovaneRangeError(std::string(msg)); }
void EInvalidArgumentRaise(std::string_view msg) { throw ERovaneInvalidArgument(std::string(msg)); }

// ---------------------------------------------------------------------------
// Machine services.
// ---------------------------------------------------------------------------
// The POSIX thread handle: unique among live threads and never zero.
uint64_t IntGetCurrentThreadId() { return static_cast<uint64_t>(pthread_self()); }
int32_t IntInterlockedExchange(std::atomic<int32_t>& target, int32_t value) { return target.exchange(value); }
int32_t IntInterlockedIncrement(std::atomic<int32_t>& target) { return target.fetch_add(1) + 1; }
int32_t IntInterlockedDecrement(std::atomic<int32_t>& target) { return target.fetch_sub(1) - 1; }

namespace {
int64_t TimerNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
int64_t globalTimerStart = 0;
}  // namespace

void StartTimer() { globalTimerStart = TimerNow(); }
void StartTimer(int64_t& start) { start = TimerNow(); }
double StopTimer() { return static_cast<double>(TimerNow() - globalTimerStart) * 1e-9; }
double StopTimer(int64_t start) { return static_cast<double>(TimerNow() - start) * 1e-9; }

uintptr_t AllignMem(uintptr_t address, int32_t /*elementSize*/) {
    const auto align = static_cast<uintptr_t>(RovaneMemoryAlignment);
    return (address / align + 1) * align;
}

void* AllignMemp(const void* pointer, int32_t elementSize) {
    return reinterpret_cast<void*>(AllignMem(reinterpret_cast<uintptr_t>(pointer), elementSize));
}

int32_t AllignMemOffset(uintptr_t address, int32_t elementSize) {
    return static_cast<int32_t>((AllignMem(address, elementSize) - address) / static_cast<uintptr_t>(elementSize));
}

void* GlobalAllocUnmanaged(size_t size) {
    if (size == 0) return nullptr;
    void* p = std::malloc(size);
    if (!p) throw std::bad_alloc();
    return p;
}

void GlobalFreeUnmanaged(void*& pointer) {
    std::free(pointer);
    pointer = nullptr;
}

uint32_t SetRoundToTrunc() {
#ifdef ROVANE_X86
    const uint32_t old = _mm_getcsr();
    _mm_setcsr((old & ~0x6000u) | 0x6000u);
    return old;
#else
    return 0;
#endif
}

void RestoreRound(uint32_t controlWord) {
#ifdef ROVANE_X86
    _mm_setcsr(controlWord);
#else
    (void)controlWord;
#endif
}

void ClearFPU() {
#ifdef ROVANE_X86
    _mm_setcsr(_mm_getcsr() & ~0x3Fu);
    asm volatile("fnclex");
#endif
}

namespace {
uint16_t ReadX87ControlWord() {
#ifdef ROVANE_X86
    uint16_t cw;
    asm volatile("fnstcw %0" : "=m"(cw));
    return cw;
#else
    return 0;
#endif
}
}  // namespace

void InstallRovaneFPState() {
#ifdef ROVANE_X86
    uint16_t cw = Rovane8087CW;
    asm volatile("fldcw %0" : : "m"(cw));
    _mm_setcsr(_mm_getcsr() | 0x1F80u);  // mask all SSE exceptions
#endif
}

double TruncDiv(double a, double b) { return std::trunc(a / b) * b; }
float TruncDivf(float a, float b) { return std::trunc(a / b) * b; }
int32_t TruncDiv(int32_t a, int32_t b) { return (a / b) * b; }
int64_t TruncDiv(int64_t a, int64_t b) { return (a / b) * b; }

// ---------------------------------------------------------------------------
// Equality with non-finite classes, and the tolerant order tests.
// ---------------------------------------------------------------------------
namespace {

template <std::floating_point F>
bool HasNaN(F v) { return std::isnan(v); }
template <ComplexRecord C>
bool HasNaN(const C& z) { return std::isnan(z.Re) || std::isnan(z.Im); }
template <std::floating_point F>
bool HasInf(F v) { return std::isinf(v); }
template <ComplexRecord C>
bool HasInf(const C& z) { return std::isinf(z.Re) || std::isinf(z.Im); }

template <std::floating_point F>
F Distance(F a, F b) { return std::fabs(a - b); }
template <ComplexRecord C>
auto Distance(const C& a, const C& b) {
    using F = ComplexField<C>;
    const long double re = static_cast<long double>(a.Re) - b.Re, im = static_cast<long double>(a.Im) - b.Im;
    return static_cast<F>(std::sqrt(re * re + im * im));
}
template <std::floating_point F>
bool SameValue(F a, F b) { return a == b; }
template <ComplexRecord C>
bool SameValue(const C& a, const C& b) { return a.Re == b.Re && a.Im == b.Im; }

// Steps 2 to 4 of the rule: non-finite values compare as classes.
template <class V>
bool EqualNonFinite(const V& a, const V& b) {
    if (HasNaN(a)) return HasNaN(b);
    if (HasInf(a)) return HasInf(b);
    return false;
}

template <class V>
bool EqualExact(const V& a, const V& b) {
    const bool finite = !HasNaN(a) && !HasInf(a) && !HasNaN(b) && !HasInf(b);
    return finite ? SameValue(a, b) : EqualNonFinite(a, b);
}

template <class V, class F>
bool EqualTol(const V& a, const V& b, F tolerance) {
    const bool finite = !HasNaN(a) && !HasInf(a) && !HasNaN(b) && !HasInf(b);
    return finite ? Distance(a, b) <= tolerance : EqualNonFinite(a, b);
}

}  // namespace

bool Equal(double a, double b) { return EqualExact(a, b); }
bool Equal(float a, float b) { return EqualExact(a, b); }
bool Equal(const TCplx& a, const TCplx& b) { return EqualExact(a, b); }
bool Equal(const TSCplx& a, const TSCplx& b) { return EqualExact(a, b); }
bool Equal(double a, double b, double tolerance) { return EqualTol(a, b, tolerance); }
bool Equal(float a, float b, float tolerance) { return EqualTol(a, b, tolerance); }
bool Equal(const TCplx& a, const TCplx& b, double tolerance) { return EqualTol(a, b, tolerance); }
bool Equal(const TSCplx& a, const TSCplx& b, float tolerance) { return EqualTol(a, b, tolerance); }
bool Bigger(double a, double b, double tolerance) { return !std::isnan(a) && !std::isnan(b) && a - tolerance > b; }
bool Bigger(float a, float b, float tolerance) { return !std::isnan(a) && !std::isnan(b) && a - tolerance > b; }
bool Smaller(double a, double b, double tolerance) { return !std::isnan(a) && !std::isnan(b) && a + tolerance < b; }
bool Smaller(float a, float b, float tolerance) { return !std::isnan(a) && !std::isnan(b) && a + tolerance < b; }

// ---------------------------------------------------------------------------
// Factorials.
// ---------------------------------------------------------------------------
namespace {
double factTable[31];

constexpr int32_t kPrimeCount = 1000;

void BuildFactTable() {
    long double f = 1.0L;
    factTable[0] = 1.0;
    for (int k = 1; k <= 30; ++k) {
        f *= k;
        factTable[k] = static_cast<double>(f);
    }
}

void BuildPrimeTable() {
    RovanePrimeArray = TIntegerArray(kPrimeCount);
    int32_t count = 0;
    for (int32_t n = 2; count < kPrimeCount; ++n) {
        bool prime = true;
        for (int32_t k = 0; k < count && RovanePrimeArray[k] * RovanePrimeArray[k] <= n; ++k)
            if (n % RovanePrimeArray[k] == 0) {
                prime = false;
                break;
            }
        if (prime) RovanePrimeArray[count++] = n;
    }
}
}  // namespace

double Fact(int32_t n) {
    if (n < 0) return -NAN_;
    if (n > MAXFAC) return INF;
    if (n <= 30) return factTable[n];
    return Gamma(static_cast<double>(n) + 1.0);
}

float Factf(int32_t n) {
    if (n < 0) return -std::fabs(NAN_SINGLE);
    if (n > MAXFAC_SINGLE) return INF_SINGLE;
    if (n <= 30) return static_cast<float>(factTable[n]);
    return static_cast<float>(Gamma(static_cast<double>(n) + 1.0));
}

// ---------------------------------------------------------------------------
// Start sequence.
// ---------------------------------------------------------------------------
namespace {
std::mutex initLock;
int32_t initCount = 0;
}  // namespace

void InitScalars() {
    std::lock_guard guard(initLock);
    if (initCount++ > 0) return;
    ClearFPU();
    MtxSaved8087CW = ReadX87ControlWord();
    InstallRovaneFPState();
    if (std::signbit(NAN_)) NAN_ = -NAN_;
    BuildFactTable();
    BuildPrimeTable();
    CNAN = TCplx(NAN_, NAN_);
    CINF = TCplx(INF, INF);
    const long double eps = std::ldexp(1.0L, -52);
    GradStepSize = static_cast<double>(std::exp(std::log(eps) / 7.0L) * 0.25L);
    GradStepSizeSingle = static_cast<float>(std::exp(std::log(static_cast<long double>(EPS_SINGLE)) / 7.0L) * 0.25L);
    MtxRegistryKey = "Software/Rovane";
    RovaneWorkingDir = "C:\\";
    ClearFPU();
}

void FinalizeScalars() {
    std::lock_guard guard(initLock);
    if (initCount == 0 || --initCount > 0) return;
    MtxRegistryKey.clear();
    MtxRegistryKey.shrink_to_fit();
    RovaneWorkingDir.clear();
    RovaneWorkingDir.shrink_to_fit();
    RovanePrimeArray = TIntegerArray();
}

int32_t ScalarsInitCount() {
    std::lock_guard guard(initLock);
    return initCount;
}

}  // namespace rovane
