// Scalar foundation of Rovane: complex records, array types, enumerations,
// constants, global settings, the exception family and small machine services.
// The scalar functions live in ScalarMath.h and GammaBessel.h, which this
// header pulls in at its end, so including it gives the whole scalar layer.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "rovane/scalars/Export.h"

namespace rovane {

// ---------------------------------------------------------------------------
// Complex records. Plain two-field records, real part first; an array of them
// is the interleaved stream (re, im, re, im ...) of a complex container.
// ---------------------------------------------------------------------------

// Complex record over any field type, without operators. The named integer
// records below are aliases of it.
template <class F>
struct TComplexOf {
    F Re;
    F Im;
};

using TICplx = TComplexOf<int16_t>;
using TIntegerCplx = TComplexOf<int32_t>;
using TSmallIntCplx = TComplexOf<int32_t>;  // 32-bit fields, whatever the name says
using TBytec = TComplexOf<uint8_t>;
using TShortintc = TComplexOf<int8_t>;
using TWordc = TComplexOf<uint16_t>;
using TSmallintc = TComplexOf<int16_t>;
using TCardinalc = TComplexOf<uint32_t>;
using TIntegerc = TComplexOf<int32_t>;
using TInt64c = TComplexOf<int64_t>;

struct TSCplx;

// Arithmetic types from which a complex value converts explicitly.
template <class A>
concept ComplexSource = std::is_same_v<A, double> || std::is_same_v<A, float> ||
                        std::is_same_v<A, int32_t> || std::is_same_v<A, int64_t> ||
                        std::is_same_v<A, long double>;

// Text from which a complex value converts implicitly (never a literal 0).
template <class S>
concept ComplexText = std::is_convertible_v<const S&, std::string_view> && !std::is_arithmetic_v<S> &&
                      !std::is_same_v<std::decay_t<S>, std::nullptr_t>;

ROVANE_API struct TCplx StrToCplx(std::string_view s);
ROVANE_API struct TSCplx StrToCplxSingle(std::string_view s);

// Double complex scalar of the whole interface.
struct TCplx {
    double Re;
    double Im;

    TCplx() = default;
    constexpr TCplx(double re, double im) : Re(re), Im(im) {}
    template <ComplexSource A>
    constexpr explicit TCplx(A re) : Re(static_cast<double>(re)), Im(0) {}
    constexpr explicit TCplx(const TSCplx& z);
    template <ComplexText S>
    TCplx(const S& text) : TCplx(StrToCplx(std::string_view(text))) {}

    constexpr explicit operator double() const { return Re; }
    constexpr explicit operator int32_t() const { return static_cast<int32_t>(Re); }
    constexpr explicit operator int64_t() const { return static_cast<int64_t>(Re); }

    // True when Im is not exactly zero; a NaN in Im counts as complex.
    constexpr bool IsComplex() const { return !(Im == 0); }
};

// Single complex scalar.
struct TSCplx {
    float Re;
    float Im;

    TSCplx() = default;
    constexpr TSCplx(float re, float im) : Re(re), Im(im) {}
    template <ComplexSource A>
    constexpr explicit TSCplx(A re) : Re(static_cast<float>(re)), Im(0) {}
    constexpr explicit TSCplx(const TCplx& z) : Re(static_cast<float>(z.Re)), Im(static_cast<float>(z.Im)) {}
    template <ComplexText S>
    TSCplx(const S& text) : TSCplx(StrToCplxSingle(std::string_view(text))) {}

    constexpr explicit operator double() const { return Re; }
    constexpr explicit operator float() const { return Re; }
    constexpr explicit operator int32_t() const { return static_cast<int32_t>(Re); }
    constexpr explicit operator int64_t() const { return static_cast<int64_t>(Re); }
    constexpr explicit operator TCplx() const { return TCplx(Re, Im); }

    constexpr bool IsComplex() const { return !(Im == 0); }
};

constexpr TCplx::TCplx(const TSCplx& z) : Re(z.Re), Im(z.Im) {}

// Double complex at primitive boundaries: the same record as TCplx.
using TDCplx = TCplx;

static_assert(sizeof(TCplx) == 16 && sizeof(TSCplx) == 8 && sizeof(TICplx) == 4 && sizeof(TBytec) == 2 &&
              sizeof(TInt64c) == 16);
static_assert(std::is_trivially_copyable_v<TCplx> && std::is_standard_layout_v<TCplx>);

// Complex operator set shared by TCplx (over double) and TSCplx (over float).
// Products and quotients are formed in extended precision and rounded once.
template <class C>
concept ComplexRecord = std::is_same_v<C, TCplx> || std::is_same_v<C, TSCplx>;

template <ComplexRecord C>
using ComplexField = decltype(C::Re);

template <ComplexRecord C>
constexpr C operator-(const C& a) { return C(-a.Re, -a.Im); }
template <ComplexRecord C>
constexpr C operator+(const C& a, const C& b) { return C(a.Re + b.Re, a.Im + b.Im); }
template <ComplexRecord C>
constexpr C operator+(const C& a, ComplexField<C> b) { return C(a.Re + b, a.Im); }
template <ComplexRecord C>
constexpr C operator+(ComplexField<C> a, const C& b) { return C(a + b.Re, b.Im); }
template <ComplexRecord C>
constexpr C operator-(const C& a, const C& b) { return C(a.Re - b.Re, a.Im - b.Im); }
template <ComplexRecord C>
constexpr C operator-(const C& a, ComplexField<C> b) { return C(a.Re - b, a.Im); }
template <ComplexRecord C>
constexpr C operator-(ComplexField<C> a, const C& b) { return C(a - b.Re, -b.Im); }
template <ComplexRecord C>
constexpr C operator*(const C& a, const C& b) {
    using L = long double;
    using F = ComplexField<C>;
    return C(static_cast<F>(L(a.Re) * b.Re - L(a.Im) * b.Im), static_cast<F>(L(a.Re) * b.Im + L(a.Im) * b.Re));
}
template <ComplexRecord C>
constexpr C operator*(const C& a, ComplexField<C> b) { return C(a.Re * b, a.Im * b); }
template <ComplexRecord C>
constexpr C operator*(ComplexField<C> a, const C& b) { return C(a * b.Re, a * b.Im); }
template <ComplexRecord C>
constexpr C operator/(const C& a, const C& b) {
    using L = long double;
    using F = ComplexField<C>;
    const L k = 1.0L / (L(b.Re) * b.Re + L(b.Im) * b.Im);
    return C(static_cast<F>((L(a.Re) * b.Re + L(a.Im) * b.Im) * k),
             static_cast<F>((L(a.Im) * b.Re - L(a.Re) * b.Im) * k));
}
template <ComplexRecord C>
constexpr C operator/(const C& a, ComplexField<C> b) { return C(a.Re / b, a.Im / b); }
template <ComplexRecord C>
constexpr C operator/(ComplexField<C> a, const C& b) {
    using L = long double;
    using F = ComplexField<C>;
    const F k = static_cast<F>(L(a) / (L(b.Re) * b.Re + L(b.Im) * b.Im));
    return C(b.Re * k, -b.Im * k);
}

// ---------------------------------------------------------------------------
// Pointer aliases.
// ---------------------------------------------------------------------------
using PCplx = TCplx*;
using PSCplx = TSCplx*;
using PDCplx = TDCplx*;
using PBytec = TBytec*;
using PWordc = TWordc*;
using PCardinalc = TCardinalc*;
using PShortintc = TShortintc*;
using PSmallintc = TSmallintc*;
using PIntegerc = TIntegerc*;
using PInt64c = TInt64c*;
using PInteger = int32_t*;
using PSmallInt = int16_t*;
using PWord = uint16_t*;
using PByte = uint8_t*;
using PLongInteger = int32_t*;
using PPointerInteger = intptr_t*;
using PSample = double*;  // a sample is a double in this library
using PPCardinal = uint32_t**;
using PPShortInt = int8_t**;
using PPSmallInt = int16_t**;
using PPInteger = int32_t**;
using PPInt64 = int64_t**;
using PPSingle = float**;
using PPDouble = double**;
using PPUChar = unsigned char**;

// ---------------------------------------------------------------------------
// Overlay arrays: huge bounds that are never allocated, only used to index a
// raw pointer. In C++ the pointer alias is a plain element pointer.
// ---------------------------------------------------------------------------
using TSArray = double[200000001];
using TDArray = double[200000001];
using TFArray = float[200000001];
using TCArray = TCplx[20000001];
using TDCArray = TDCplx[20000001];
using TSCArray = TSCplx[20000001];
using TIArray = int32_t[200000001];
using TRArray = uint32_t[200000001];
using TWArray = uint16_t[200000001];
using TSIArray = int16_t[200000001];
using TBArray = uint8_t[200000001];
using THArray = int8_t[200000001];
using TCharArray = char16_t[200000001];
using PSArray = double*;
using PDArray = double*;
using PFArray = float*;
using PCArray = TCplx*;
using PDCArray = TDCplx*;
using PSCArray = TSCplx*;
using PIArray = int32_t*;
using PRArray = uint32_t*;
using PWArray = uint16_t*;
using PSIArray = int16_t*;
using PBArray = uint8_t*;
using PHArray = int8_t*;
using PCharArray = char16_t*;

// ---------------------------------------------------------------------------
// Counted arrays. The handle points at the first element; two 32-bit words,
// the reference count and then the length, sit directly in front of it. A
// further word before them records the block to free, so that whichever holder
// drops the last reference can release memory that a container laid out.
// ---------------------------------------------------------------------------
struct TArrayHeader {
    void* Block;                  // start of the allocation, freed with AlignedFree
    void (*Destroy)(void*, int32_t);  // destroys the elements, or null for trivial ones
    std::atomic<int32_t> RefCount;
    int32_t Length;
};
static_assert(sizeof(TArrayHeader) == 24 && offsetof(TArrayHeader, RefCount) == 16);

ROVANE_API void* AlignedAlloc(size_t bytes, size_t alignment);
ROVANE_API void AlignedFree(void* block);

namespace detail {
// Lays out a counted block: header, then data aligned to `alignment` bytes.
// The reference count starts at 1.
ROVANE_API void* AllocCounted(size_t elementBytes, int32_t length, size_t alignment);
// Drops one reference and frees the block when it was the last one.
ROVANE_API void ReleaseCounted(void* data) noexcept;
inline TArrayHeader* HeaderOf(const void* data) {
    return reinterpret_cast<TArrayHeader*>(static_cast<char*>(const_cast<void*>(data)) - sizeof(TArrayHeader));
}
}  // namespace detail

template <class T>
class TArray {
public:
    using value_type = T;

    TArray() = default;
    explicit TArray(int32_t length) { Allocate(length); }
    TArray(std::initializer_list<T> items) {
        Allocate(static_cast<int32_t>(items.size()));
        int32_t i = 0;
        for (const T& v : items) fData[i++] = v;
    }
    TArray(const TArray& o) noexcept : fData(o.fData) { AddRef(); }
    TArray(TArray&& o) noexcept : fData(std::exchange(o.fData, nullptr)) {}
    TArray& operator=(const TArray& o) noexcept {
        if (fData != o.fData) {
            Release();
            fData = o.fData;
            AddRef();
        }
        return *this;
    }
    TArray& operator=(TArray&& o) noexcept {
        if (this != &o) {
            Release();
            fData = std::exchange(o.fData, nullptr);
        }
        return *this;
    }
    ~TArray() { Release(); }

    // Takes a new reference on data laid out by AllocCounted (for example a
    // container's block) without copying it.
    static TArray Share(T* data) noexcept {
        TArray a;
        a.fData = data;
        a.AddRef();
        return a;
    }

    int32_t Length() const { return fData ? detail::HeaderOf(fData)->Length : 0; }
    size_t size() const { return static_cast<size_t>(Length()); }
    bool empty() const { return Length() == 0; }
    int32_t RefCount() const { return fData ? detail::HeaderOf(fData)->RefCount.load() : 0; }
    T* data() const { return fData; }
    T* begin() const { return fData; }
    T* end() const { return fData + Length(); }
    T& operator[](ptrdiff_t i) const { return fData[i]; }
    explicit operator bool() const { return fData != nullptr; }

    // Sets the element count, keeping the leading elements. A shared array is
    // copied first, so that other holders keep what they had.
    void SetLength(int32_t length) {
        if (length == Length() && RefCount() == 1) return;
        TArray fresh;
        if (length > 0) fresh.Allocate(length);
        const int32_t keep = length < Length() ? length : Length();
        for (int32_t i = 0; i < keep; ++i) fresh.fData[i] = fData[i];
        *this = std::move(fresh);
    }

private:
    void Allocate(int32_t length) {
        if (length <= 0) return;
        fData = static_cast<T*>(detail::AllocCounted(sizeof(T), length, alignof(T) < 16 ? 16 : alignof(T)));
        if constexpr (!std::is_trivially_default_constructible_v<T>) {
            for (int32_t i = 0; i < length; ++i) new (fData + i) T();
        } else {
            for (int32_t i = 0; i < length; ++i) fData[i] = T{};
        }
        if constexpr (!std::is_trivially_destructible_v<T>) {
            detail::HeaderOf(fData)->Destroy = [](void* p, int32_t n) {
                for (int32_t i = 0; i < n; ++i) static_cast<T*>(p)[i].~T();
            };
        }
    }
    void AddRef() noexcept {
        if (fData) detail::HeaderOf(fData)->RefCount.fetch_add(1, std::memory_order_relaxed);
    }
    void Release() noexcept {
        if (fData) detail::ReleaseCounted(fData);
        fData = nullptr;
    }

    T* fData = nullptr;
};

using TDoubleArray = TArray<double>;
using TSingleArray = TArray<float>;
using TIntegerArray = TArray<int32_t>;
using TCplxArray = TArray<TCplx>;
using TDCplxArray = TArray<TDCplx>;
using TSCplxArray = TArray<TSCplx>;
using TIntegerCplxArray = TArray<TIntegerCplx>;
using TSmallIntCplxArray = TArray<TSmallIntCplx>;
using TSmallInTCplxSampleArray = TArray<TICplx>;  // 16-bit elements
using TBooleanArray = TArray<bool>;
using TInt64Array = TArray<int64_t>;
using TUInt64Array = TArray<uint64_t>;
using TPointerIntegerArray = TArray<intptr_t>;
using TCardinalArray = TArray<uint32_t>;
using TWordArray = TArray<uint16_t>;
using TShortIntArray = TArray<int8_t>;
using TSmallIntArray = TArray<int16_t>;
using TByteArray = TArray<uint8_t>;
using TObjectArray = TArray<void*>;
using TCharsArray = TArray<char16_t>;
using TPointerArray = TArray<void*>;
using TStringArray = TArray<std::string>;
using T2DStringArray = TArray<TStringArray>;
using T2DIntegerArray = TArray<TIntegerArray>;
using T2DSmallIntArray = TArray<TSmallIntArray>;
using T2DByteArray = TArray<TByteArray>;
using T2DSingleArray = TArray<TSingleArray>;
using T2DDoubleArray = TArray<TDoubleArray>;
using T2DCplxDoubleArray = TArray<TCplxArray>;
using T2DCplxSingleArray = TArray<TSCplxArray>;
using T2DCplxArray = TArray<TCplxArray>;
using T2DSCplxArray = TArray<TSCplxArray>;
using PDoubleArray = TDoubleArray*;
using PSingleArray = TSingleArray*;
using PIntegerArray = TIntegerArray*;
using PIntArray = TIntegerArray*;
using PCplxArray = TCplxArray*;

// ---------------------------------------------------------------------------
// Enumerations, in their fixed order.
// ---------------------------------------------------------------------------
enum TMtxFloatPrecision : int32_t { rvSingle, rvDouble, rvSingleComplex, rvDoubleComplex };
enum TPrecision : int32_t {
    prDouble, prSingle, prInteger, prCardinal, prSmallInt, prWord, prShortInt, prByte, prMuLaw, prALaw, prInt24
};
enum TIntPrecision : int32_t { prInt32, prInt16, prInt8 };
enum TEndianness : int32_t { boLittleEndian, boBigEndian };
enum TRounding : int32_t { rnTrunc, rnRound };
enum TCompare : int32_t { cmpAbsolute, cmpRelative };
enum TFixedTextAlign : int32_t { ftaNone, ftaRightAlign, ftaLeftAlign };
enum TIndexType : int32_t { indIncrement, indVector, indMask };
enum TFFTStorageFormat : int32_t { fsfCCS, fsfPack, fsfPerm };

// Function types of the selection primitives.
using TSelectTwoFunction = int32_t (*)(const double a, const double b);
using TSelectThreeFunction = int32_t (*)(const double a, const double b, const double c);
using TSelectOneFunctionC = int32_t (*)(const TCplx& a);
using TSelectTwoFunctionC = int32_t (*)(const TCplx& a, const TCplx& b);
using TSelectTwoFunctionSingle = int32_t (*)(const float a, const float b);
using TSelectThreeFunctionSingle = int32_t (*)(const float a, const float b, const float c);
using TSelectOneFunctionSingleC = int32_t (*)(const TSCplx& a);
using TSelectTwoFunctionSingleC = int32_t (*)(const TSCplx& a, const TSCplx& b);

// ---------------------------------------------------------------------------
// Exceptions and the raise functions.
// ---------------------------------------------------------------------------
class ROVANE_API ERovaneException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
class ROVANE_API ERovaneRangeError : public ERovaneException {
public:
    using ERovaneException::ERovaneException;
};
class ROVANE_API ERovaneInvalidArgument : public ERovaneException {
public:
    using ERovaneException::ERovaneException;
};

// One argument of a format text: the C++ form of a variant array element.
struct TFmtArg {
    enum Kind { kInt, kUInt, kFloat, kText, kPointer } kind;
    int64_t i = 0;
    uint64_t u = 0;
    long double f = 0;
    std::string_view s;
    const void* p = nullptr;

    TFmtArg(int v) : kind(kInt), i(v) {}
    TFmtArg(long v) : kind(kInt), i(v) {}
    TFmtArg(long long v) : kind(kInt), i(v) {}
    TFmtArg(unsigned v) : kind(kUInt), u(v) {}
    TFmtArg(unsigned long v) : kind(kUInt), u(v) {}
    TFmtArg(unsigned long long v) : kind(kUInt), u(v) {}
    TFmtArg(double v) : kind(kFloat), f(v) {}
    TFmtArg(float v) : kind(kFloat), f(v) {}
    TFmtArg(long double v) : kind(kFloat), f(v) {}
    TFmtArg(const char* v) : kind(kText), s(v) {}
    TFmtArg(const std::string& v) : kind(kText), s(v) {}
    TFmtArg(std::string_view v) : kind(kText), s(v) {}
    TFmtArg(const void* v) : kind(kPointer), p(v) {}
};

// Formats `fmt` with printf-style specifiers: %[index:][-][width][.prec]type
// with type d, u, x, s, g, f, e, n, p and %% for a percent sign. A float
// printed with %g has 15 significant digits unless a precision is given.
// An argument of the wrong kind or a missing one raises ERovaneException.
ROVANE_API std::string FormatText(std::string_view fmt, std::initializer_list<TFmtArg> args);

[[noreturn]] ROVANE_API void ERaise(std::string_view msg);
[[noreturn]] ROVANE_API void ERangeErrorRaise(std::string_view msg);
[[noreturn]] ROVANE_API void EInvalidArgumentRaise(std::string_view msg);

template <class... A>
[[noreturn]] void ERaiseFmt(std::string_view fmt, const A&... args) {
    ERaise(FormatText(fmt, {TFmtArg(args)...}));
}
template <class... A>
[[noreturn]] void ERangeErrorRaiseFmt(std::string_view fmt, const A&... args) {
    ERangeErrorRaise(FormatText(fmt, {TFmtArg(args)...}));
}
template <class... A>
[[noreturn]] void EInvalidArgumentRaiseFmt(std::string_view fmt, const A&... args) {
    EInvalidArgumentRaise(FormatText(fmt, {TFmtArg(args)...}));
}

// ---------------------------------------------------------------------------
// Constants. Each double constant has a single twin with the suffix _SINGLE.
// ---------------------------------------------------------------------------
#define ROVANE_CONSTANT(NAME, VALUE)        \
    inline constexpr double NAME = VALUE;   \
    inline constexpr float NAME##_SINGLE = static_cast<float>(VALUE);

ROVANE_CONSTANT(PI, 3.141592653589793)
ROVANE_CONSTANT(LN2, 0.6931471805599453)
ROVANE_CONSTANT(LN10, 2.302585092994046)
ROVANE_CONSTANT(LNPI, 1.1447298858494002)
ROVANE_CONSTANT(INVLN2, 1.4426950408889634)
ROVANE_CONSTANT(INVLN10, 0.4342944819032518)
ROVANE_CONSTANT(TWOPI, 6.283185307179586)
ROVANE_CONSTANT(INVTWOPI, 0.15915494309189535)
ROVANE_CONSTANT(PIDIV2, 1.5707963267948966)
ROVANE_CONSTANT(SQRTPI, 1.772453850905516)
ROVANE_CONSTANT(SQRT2PI, 2.5066282746310007)
ROVANE_CONSTANT(INVSQRT2PI, 0.3989422804014327)
ROVANE_CONSTANT(LNSQRT2PI, 0.9189385332046728)
ROVANE_CONSTANT(LN2PIDIV2, 0.9189385332046728)
ROVANE_CONSTANT(SQRT2, 1.4142135623730951)
ROVANE_CONSTANT(SQRT2DIV2, 0.7071067811865476)
ROVANE_CONSTANT(GOLD, 1.618033988749895)
ROVANE_CONSTANT(CGOLD, 0.38196601125010515)
ROVANE_CONSTANT(PI180, 0.017453292519943295)
ROVANE_CONSTANT(INVPI180, 57.29577951308232)
ROVANE_CONSTANT(EULERGAMMA, 0.5772156649015329)
#undef ROVANE_CONSTANT

inline constexpr double S_ONE = 1.0;
inline constexpr double S_ZERO = 0.0;
inline constexpr float S_ONE_SINGLE = 1.0f;
inline constexpr float S_ZERO_SINGLE = 0.0f;

inline constexpr double MACHEP = std::bit_cast<double>(0x3CB0000000000000ull);
inline constexpr double MINNUM = std::bit_cast<double>(0x0010000000000001ull);
inline constexpr double MAXLOG = std::bit_cast<double>(0x40862E42FEFA39EFull);
inline constexpr double MINLOG = std::bit_cast<double>(0xC086232BDD7ABCD2ull);
inline constexpr double MAXFAC = 170.0;
inline constexpr double MAXGAM = std::bit_cast<double>(0x406573FAE561F62Eull);
inline constexpr double MAXLGM = 2.556348e+305;
inline constexpr float MACHEP_SINGLE = std::bit_cast<float>(0x34000001u);
inline constexpr float EPS_SINGLE = MACHEP_SINGLE;
inline constexpr float SQRTEPS_SINGLE = std::bit_cast<float>(0x39B504F4u);
inline constexpr float MAXNUM_SINGLE = std::bit_cast<float>(0x7F7FFFFDu);
inline constexpr float MINNUM_SINGLE = std::bit_cast<float>(0x00800005u);
inline constexpr float MAXLOG_SINGLE = 88.72283172607422f;
inline constexpr float MINLOG_SINGLE = -87.3365478515625f;
inline constexpr float MAXFAC_SINGLE = 33.0f;
inline constexpr float MAXGAM_SINGLE = 34.64799880981445f;
inline constexpr float MAXLGM_SINGLE = 1.0382999646439868e+36f;

// The containers' double epsilon (2^-52) and its square root, as literals.
inline constexpr double DOUBLE_EPS = MACHEP;
inline constexpr double DOUBLE_SQRT_EPS = std::bit_cast<double>(0x3E5000000000B3DBull);

inline constexpr TCplx C_ZERO{0.0, 0.0};
inline constexpr TCplx C_ONE{1.0, 0.0};
inline constexpr TCplx C_I{0.0, 1.0};
inline constexpr TCplx C_PI{PI, 0.0};
inline constexpr TCplx C_PI_DIV_2{PIDIV2, 0.0};
inline constexpr TSCplx C_ZERO_SINGLE{0.0f, 0.0f};
inline constexpr TSCplx C_ONE_SINGLE{1.0f, 0.0f};
inline constexpr TSCplx C_I_SINGLE{0.0f, 1.0f};
inline constexpr TSCplx C_PI_SINGLE{PI_SINGLE, 0.0f};
inline constexpr TSCplx C_PI_DIV_2_SINGLE{PIDIV2_SINGLE, 0.0f};

// Special values. NAN is a macro of <cmath>, so the double not-a-number is
// spelled NAN_ here; every other name keeps its plain spelling. NAN_ starts
// with its sign bit set and the start sequence clears it (bits
// 0x7FF8000000000000 afterwards); the single twins keep the sign bit.
ROVANE_API extern double NAN_;
ROVANE_API extern double INF;
ROVANE_API extern float NAN_SINGLE;
ROVANE_API extern float INF_SINGLE;
ROVANE_API extern TCplx CNAN;
ROVANE_API extern TCplx CINF;
ROVANE_API extern TSCplx CNAN_SINGLE;
ROVANE_API extern TSCplx CINF_SINGLE;

// ---------------------------------------------------------------------------
// Global settings: plain variables, changed only while no other thread works
// with the library.
// ---------------------------------------------------------------------------
ROVANE_API extern std::atomic<int32_t> RovaneBlockSize;
ROVANE_API extern int64_t RovaneMemoryAlignment;
ROVANE_API extern uint16_t Rovane8087CW;
ROVANE_API extern uint16_t Fortran8087CW;
ROVANE_API extern uint16_t Saved8087;
ROVANE_API extern uint16_t MtxSaved8087CW;
ROVANE_API extern double GradStepSize;
ROVANE_API extern float GradStepSizeSingle;
ROVANE_API extern TIntegerArray RovanePrimeArray;
ROVANE_API extern std::string MtxRegistryKey;
ROVANE_API extern std::string RovaneWorkingDir;
inline constexpr std::nullptr_t NilPtr = nullptr;

// ---------------------------------------------------------------------------
// Machine services.
// ---------------------------------------------------------------------------
template <class W>
constexpr W SetInclude(W set, W bits) { return set | bits; }
template <class W>
constexpr W SetExclude(W set, W bits) { return set & ~bits; }
template <class W>
constexpr bool SetContains(W set, W bits) { return (set & bits) != 0; }

template <class T>
void aSetLength(TArray<T>& a, int32_t length) { a.SetLength(length); }
template <class T>
int32_t aGetLength(const TArray<T>& a) { return a.Length(); }
inline void aSetLength(std::string& s, int32_t length) { s.resize(static_cast<size_t>(length < 0 ? 0 : length)); }
inline int32_t aGetLength(const std::string& s) { return static_cast<int32_t>(s.size()); }
template <class T>
int32_t aGetLength(const T*, int32_t length) { return length; }

ROVANE_API uint64_t IntGetCurrentThreadId();
ROVANE_API int32_t IntInterlockedExchange(std::atomic<int32_t>& target, int32_t value);
ROVANE_API int32_t IntInterlockedIncrement(std::atomic<int32_t>& target);
ROVANE_API int32_t IntInterlockedDecrement(std::atomic<int32_t>& target);

ROVANE_API void StartTimer();
ROVANE_API void StartTimer(int64_t& start);
ROVANE_API double StopTimer();
ROVANE_API double StopTimer(int64_t start);

// First multiple of RovaneMemoryAlignment strictly above the address.
ROVANE_API uintptr_t AllignMem(uintptr_t address, int32_t elementSize);
ROVANE_API void* AllignMemp(const void* pointer, int32_t elementSize);
// Elements of elementSize bytes from the address to that boundary.
ROVANE_API int32_t AllignMemOffset(uintptr_t address, int32_t elementSize);

ROVANE_API void* GlobalAllocUnmanaged(size_t size);
ROVANE_API void GlobalFreeUnmanaged(void*& pointer);

inline double PointerToDouble(const void* p) { return *static_cast<const double*>(p); }
inline double PointerToIndexDouble(const void* p, ptrdiff_t index) { return static_cast<const double*>(p)[index]; }
inline TDCplx PointerToDCplx(const void* p) { return *static_cast<const TDCplx*>(p); }
inline TDCplx PointerToIndexDCplx(const void* p, ptrdiff_t index) { return static_cast<const TDCplx*>(p)[index]; }
inline void WriteDouble(void* p, double v) { *static_cast<double*>(p) = v; }
inline void WriteDCplx(void* p, const TDCplx& v) { *static_cast<TDCplx*>(p) = v; }

// Rounding bracket around bulk float-to-integer conversion. The control word
// returned and restored is the SSE control/status register (MXCSR), which
// governs double and single arithmetic on this platform.
ROVANE_API uint32_t SetRoundToTrunc();
ROVANE_API void RestoreRound(uint32_t controlWord);
ROVANE_API void ClearFPU();
// Installs the library's floating-point state on the calling thread: all
// exceptions masked, extended precision for long double arithmetic.
ROVANE_API void InstallRovaneFPState();

// Trunc(a / b) * b: the largest multiple of b not beyond a, toward zero.
ROVANE_API double TruncDiv(double a, double b);
ROVANE_API float TruncDivf(float a, float b);
ROVANE_API int32_t TruncDiv(int32_t a, int32_t b);
ROVANE_API int64_t TruncDiv(int64_t a, int64_t b);

template <class T>
void FreeAndNil(T*& object) {
    T* p = object;
    object = nullptr;
    delete p;
}

// ---------------------------------------------------------------------------
// Exact equality with non-finite values as classes (NaN equals NaN, +Inf
// equals -Inf), equality within a tolerance, and the tolerant order tests.
// ---------------------------------------------------------------------------
ROVANE_API bool Equal(double a, double b);
ROVANE_API bool Equal(float a, float b);
ROVANE_API bool Equal(const TCplx& a, const TCplx& b);
ROVANE_API bool Equal(const TSCplx& a, const TSCplx& b);
ROVANE_API bool Equal(double a, double b, double tolerance);
ROVANE_API bool Equal(float a, float b, float tolerance);
ROVANE_API bool Equal(const TCplx& a, const TCplx& b, double tolerance);
ROVANE_API bool Equal(const TSCplx& a, const TSCplx& b, float tolerance);
ROVANE_API bool Bigger(double a, double b, double tolerance);
ROVANE_API bool Bigger(float a, float b, float tolerance);
ROVANE_API bool Smaller(double a, double b, double tolerance);
ROVANE_API bool Smaller(float a, float b, float tolerance);

template <ComplexRecord C>
bool operator==(const C& a, const C& b) { return Equal(a, b); }
template <ComplexRecord C>
bool operator==(const C& a, ComplexField<C> b) { return Equal(a, C(b, 0)); }
template <ComplexRecord C>
bool operator==(ComplexField<C> a, const C& b) { return Equal(C(a, 0), b); }

// n! for 32-bit n: -NAN_ below zero, INF above MAXFAC, a table up to 30.
ROVANE_API double Fact(int32_t n);
ROVANE_API float Factf(int32_t n);

// ---------------------------------------------------------------------------
// Start and stop. InitScalars runs once when the library loads; further calls
// only count, and the matching number of FinalizeScalars calls undoes it.
// ---------------------------------------------------------------------------
ROVANE_API void InitScalars();
ROVANE_API void FinalizeScalars();
ROVANE_API int32_t ScalarsInitCount();

}  // namespace rovane

#include "rovane/scalars/ScalarMath.h"
#include "rovane/scalars/GammaBessel.h"
