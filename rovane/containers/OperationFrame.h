// The operation frame shared by the container methods: typed access to base
// views and offsets, the dispatch by precision, and cached temporaries that
// go back to the cache also when an exception passes.
// Internal to the library: included by container .cpp files only.
#pragma once

#include <optional>
#include <type_traits>

#include "rovane/containers/Rovane.h"
#include "rovane/primitives/Prim.h"
#include "rovane/storage/ObjectCache.h"

namespace rovane::frame {

template <class T>
inline constexpr bool IsComplex = std::is_same_v<T, TCplx> || std::is_same_v<T, TSCplx>;

// Real field type of an element type, and the complex type of a real one.
template <class T>
using RealOf = std::conditional_t<std::is_same_v<T, TCplx> || std::is_same_v<T, double>, double, float>;
template <class F>
using ComplexOf = std::conditional_t<std::is_same_v<F, double>, TCplx, TSCplx>;

// Base view of the block for element type T (null for the other precision).
template <class T>
T* Base(const TRovaneSample& o) {
    if constexpr (std::is_same_v<T, double>) return o.SData;
    else if constexpr (std::is_same_v<T, float>) return o.SSData;
    else if constexpr (std::is_same_v<T, TCplx>) return o.CData;
    else return o.SCData;
}

// Element index of the range start for element type T.
template <class T>
int32_t Offset(const TRovaneSample& o) {
    return IsComplex<T> ? o.FCDataOffset : o.FDataOffset;
}

// Calls fn(T{}) with T the element type of the precision (the four-way key).
template <class Fn>
decltype(auto) ByPrecision(TMtxFloatPrecision p, Fn&& fn) {
    switch (p) {
        case rvSingle: return fn(float{});
        case rvDouble: return fn(double{});
        case rvSingleComplex: return fn(TSCplx{});
        default: return fn(TCplx{});
    }
}

// Calls fn(F{}) with F the real field type (float or double).
template <class Fn>
decltype(auto) ByWidth(bool isDouble, Fn&& fn) {
    return isDouble ? fn(double{}) : fn(float{});
}

// Scalar narrowing for the single path.
template <class F>
F Narrow(double v) { return static_cast<F>(v); }
template <class F>
ComplexOf<F> Narrow(const TCplx& v) {
    return ComplexOf<F>(static_cast<F>(v.Re), static_cast<F>(v.Im));
}

// Real and complex base + element index of an operand for field type F.
template <class F>
struct RealAt {
    F* p;
    int32_t i;
    explicit RealAt(const TRovaneSample& o, int32_t at = 0) : p(Base<F>(o)), i(Offset<F>(o) + at) {}
    F* ptr() const { return p + i; }
};
template <class F>
struct CplxAt {
    ComplexOf<F>* p;
    int32_t i;
    explicit CplxAt(const TRovaneSample& o, int32_t at = 0)
        : p(Base<ComplexOf<F>>(o)), i(Offset<ComplexOf<F>>(o) + at) {}
    ComplexOf<F>* ptr() const { return p + i; }
};

// A TVec from the calling thread's cache, given back on scope exit.
class CachedVec {
public:
    CachedVec() { CreateIt(fVec); }
    // Giving back never throws out of a destructor: a refusal is reported.
    ~CachedVec() noexcept;
    CachedVec(const CachedVec&) = delete;
    CachedVec& operator=(const CachedVec&) = delete;
    TVec& operator*() const { return *fVec; }
    TVec* operator->() const { return fVec; }

private:
    TVec* fVec = nullptr;
};

// A source run that is safe to read while a destination run is written.
// Two views of one block may overlap without being the same object; an
// elementwise kernel is safe only when source and destination start at the
// same address with the same element size (the plain in-place case). Any
// other overlap is read from a cached copy of the source run instead, so the
// result is as if the source had been read whole before the first write.
class Unaliased {
public:
    Unaliased(const TRovane& x, int32_t xIndex, const TRovane& dst, int32_t dstIndex, int32_t len)
        : fX(x), fXIndex(xIndex) {
        if (RunsOverlap(x, xIndex, dst, dstIndex, len)) Detach(len);
    }
    ~Unaliased() {
        if (fCopy) Release();
    }
    Unaliased(const Unaliased&) = delete;
    Unaliased& operator=(const Unaliased&) = delete;
    // The object to read and the index of the run in it.
    const TRovane& Src() const { return fCopy ? static_cast<const TRovane&>(*fCopy) : fX; }
    int32_t Index() const { return fCopy ? 0 : fXIndex; }
    bool Copied() const { return fCopy != nullptr; }

    // Whether the runs overlap other than in the plain in-place way. Inline,
    // since every out-of-place call asks it: runs of two different blocks
    // never overlap, so the usual answer costs one comparison of the bases.
    static bool RunsOverlap(const TRovane& x, int32_t xIndex, const TRovane& dst, int32_t dstIndex, int32_t len) {
        const char* base = Base(x);
        if (base != Base(dst) || !base || len <= 0) return false;
        const char* a = RunStart(x, xIndex);
        const char* b = RunStart(dst, dstIndex);
        const int64_t ea = ElemBytes(x), eb = ElemBytes(dst);
        if (a == b && ea == eb) return false;
        return a < b + int64_t(len) * eb && b < a + int64_t(len) * ea;
    }

private:
    static const char* Base(const TRovane& o) {
        return o.fIsDouble ? reinterpret_cast<const char*>(o.SData) : reinterpret_cast<const char*>(o.SSData);
    }
    static int64_t ElemBytes(const TRovane& o) { return (o.fIsDouble ? 8 : 4) * (o.fComplex ? 2 : 1); }
    static const char* RunStart(const TRovane& o, int32_t index) {
        return Base(o) + int64_t(o.FDataOffset) * (o.fIsDouble ? 8 : 4) + int64_t(index) * ElemBytes(o);
    }
    // The rare path: the run copied to a cached temporary, and given back.
    void Detach(int32_t len);
    void Release() noexcept;

    const TRovane& fX;
    int32_t fXIndex;
    TVec* fCopy = nullptr;
};

// N real scratch runs of `len` elements of field F, given back on scope exit
// (also when an exception passes). When the runs fit one slot of the cache
// together, they are slices of one cached TVec, each starting on a 64-byte
// boundary, so a composition pays one checkout of the cache, not N; longer
// runs take a TVec each (and each its own slot or block).
template <class F, int N>
class Scratch {
public:
    explicit Scratch(int32_t len) {
        constexpr int64_t lanes = 64 / sizeof(F);
        const int64_t stride = (int64_t(len) + lanes - 1) / lanes * lanes;
        constexpr bool isDouble = std::is_same_v<F, double>;
        fVec[0].emplace();
        TVec& first = **fVec[0];
        // The slot holds CacheLength elements of the double width.
        const int64_t slot = isDouble ? first.CacheLength() : 2 * int64_t(first.CacheLength());
        const bool shared = N > 1 && stride * N <= slot;
        first.Size(shared ? int32_t(stride * N) : len, false, isDouble);
        for (int k = 1; k < (shared ? 1 : N); ++k) {
            fVec[k].emplace();
            (*fVec[k])->Size(len, false, isDouble);
        }
        for (int k = 0; k < N; ++k) {
            TVec& v = **fVec[shared ? 0 : k];
            fPtr[k] = Base<F>(v) + Offset<F>(v) + (shared ? stride * k : 0);
        }
    }
    F* operator[](int k) const { return fPtr[k]; }
    // The TVec of a single run (N = 1), for members that need an object.
    TVec& Vec() const {
        static_assert(N == 1);
        return **fVec[0];
    }

private:
    std::optional<CachedVec> fVec[N];
    F* fPtr[N];
};

// Elements per chunk of a composition on split parts: its real temporaries
// then fit a cache slot and stay in the processor's cache between the steps.
inline constexpr int32_t kCompositionChunk = 2048;

// Runs fn(offset, count) over [0, len) chunk by chunk. Each step of a
// composition is still one primitive call over a whole run (the chunk), and
// elementwise results do not depend on the chunking.
template <class Fn>
void InChunks(int32_t len, Fn&& fn) {
    for (int32_t offset = 0; offset < len; offset += kCompositionChunk)
        fn(offset, len - offset < kCompositionChunk ? len - offset : kCompositionChunk);
}

// Raises EInvalidArgument with text when condition holds.
inline void RaiseIf(bool condition, const char* text) {
    if (condition) EInvalidArgumentRaise(text);
}

// The unary family's range core: writes len elements of dst from src.
using UnaryCore = void (*)(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex);

// Runs a range core from x into dst, reading x through Unaliased.
void CoreFrom(UnaryCore core, const TRovane& x, TRovane& dst, int32_t len, int32_t dstIndex, int32_t xIndex);


// How a member's result relates to its source.
enum class ResultKind : uint8_t {
    Same,      // the kind of the source: the in-place forms keep Self's kind
    Real,      // real from real or complex; in place, complex Self becomes real
    Complex,   // complex from real or complex; in place, real Self becomes complex
    RealOnly,  // real data only, refused whatever ConditionCheck says
};

// The rules of one member: its result kind and the texts of the checks that
// apply to that kind (null: the check does not run). Written with designated
// initializers, so each member names only what differs from the defaults.
struct FormRules {
    ResultKind result = ResultKind::Same;
    const char* selfIsX = nullptr;         // Op(X) with X = Self
    bool selfIsXAlways = false;            // raised also with ConditionCheck off
    const char* complexDiffers = nullptr;  // range form, unequal complexity (Complex: null widens Self)
    bool widensRange = false;              // Same: a complex source widens a real Self in a range form
    bool realFromX = false;                // Same: the whole form with a source writes a real Self
    const char* needsComplex = nullptr;    // Real: a real source, refused always
    const char* rangeNeedsComplex = nullptr;  // Real: the same in a range form, under ConditionCheck
    const char* complexRange = nullptr;    // Real: a complex destination range
    bool wholeComplexRange = false;        // Real: a range over all of a complex Self makes it real
    const char* selfComplex = nullptr;     // RealOnly: a complex Self in place
    const char* srcSelfComplex = nullptr;  // RealOnly: a complex Self in the range form with a source
    const char* srcComplex = nullptr;      // RealOnly: a complex source
    bool kindChecksAlways = true;          // RealOnly: the source checks run also with ConditionCheck off
};

// The four public forms of every member on the forms frame, written once;
// each ends in the member's range core.
TRovane& InPlace(TRovane& self, const FormRules& r, UnaryCore core);
TRovane& InPlace(TRovane& self, int32_t index, int32_t len, const FormRules& r, UnaryCore core);
TRovane& From(TRovane& self, const TRovane& x, const FormRules& r, UnaryCore core);
TRovane& From(TRovane& self, const TRovane& x, int32_t xIndex, int32_t index, int32_t len, const FormRules& r,
              UnaryCore core);

// Dispatches a range core to fn.template operator()<F, Cplx>(src pointer,
// dst pointer): F the field type, Cplx whether the destination is complex.
// Pointers are already advanced to the range starts.
template <class Fn>
void ByRange(const TRovane& src, TRovane& dst, int32_t dstIndex, int32_t srcIndex, Fn&& fn) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (dst.fComplex)
            fn(static_cast<const ComplexOf<F>*>(CplxAt<F>(src, srcIndex).ptr()), CplxAt<F>(dst, dstIndex).ptr());
        else
            fn(static_cast<const F*>(RealAt<F>(src, srcIndex).ptr()), RealAt<F>(dst, dstIndex).ptr());
    });
}

}  // namespace rovane::frame
