// Searches with relation texts, gather and scatter by stride, index list and
// mask, reordering, sampling, fills, concatenation and the lending of
// storage, on the float containers; and the search members of the integer
// containers whose source is a float container.
#include "rovane/containers/Selection.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "rovane/containers/IntegerFrame.h"
#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/SelectionSort.h"
#include "rovane/primitives/SelectPrims.h"
#include "rovane/scalars/ScalarMath.h"

namespace rovane {

using namespace frame;

namespace {

// Pointer to element i of the range of o, typed by T (a complex T counts
// complex elements).
template <class T>
T* Elem(const TRovane& o, int64_t i = 0) {
    return frame::Base<T>(o) + frame::Offset<T>(o) + i;
}

// Sizes a float container to n elements of the given precision.
void SizeTo(TRovane& self, int32_t n, TMtxFloatPrecision p) {
    if (self.fRovaneType == rvTVec) {
        static_cast<TVec&>(self).Size(n, p);
    } else {
        if (self.fFloatPrecision != p) self.SetFloatPrecision(p);
        if (self.fLength != n) self.SetLength(n);
    }
}

int32_t* IntBase(const TRovaneInt& o) { return o.IData + o.FDataOffset; }

// The right side of a test: a real value, a complex value or a container.
struct Rhs {
    enum Kind { Real, Cplx, Vec } kind;
    double r = 0;
    TCplx c{0, 0};
    const TRovane* v = nullptr;
};

template <class C>
bool CplxRel(int op, const C& a, const C& b) {
    switch (op) {
        case 0: return Smaller(a, b);
        case 1: return SmallerOrEqual(a, b);
        case 2: return Bigger(a, b);
        case 3: return BiggerOrEqual(a, b);
        case 4: return Equal(a, b);
        case 5: return !Equal(a, b);
        default: return false;
    }
}

void CheckRhs(const TRovane& a, const Rhs& b) {
    if (b.kind != Rhs::Vec) return;
    if (b.v->fLength != a.fLength) EInvalidArgumentRaise("ALeft.Length <> ARight.Length");
    if (b.v->fComplex != a.fComplex) EInvalidArgumentRaise("a.Complex <> b.Complex");
    if (b.v->fIsDouble != a.fIsDouble) EInvalidArgumentRaise("a.IsDouble <> b.IsDouble");
}

// Runs the complex tests element by element: test(i) gives `a[i] Op b[i]`.
template <class Fn>
void ComplexTests(const TRovane& a, int op, const Rhs& b, Fn&& out) {
    ByWidth(a.fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = ComplexOf<F>;
        const int32_t n = a.fLength;
        auto left = [&](int32_t i) { return a.fComplex ? Elem<C>(a)[i] : C(Elem<F>(a)[i], F(0)); };
        if (b.kind == Rhs::Vec) {
            const TRovane& v = *b.v;
            for (int32_t i = 0; i < n; ++i) {
                const C r = v.fComplex ? Elem<C>(v)[i] : C(Elem<F>(v)[i], F(0));
                out(i, CplxRel(op, left(i), r));
            }
        } else {
            const C r = b.kind == Rhs::Cplx ? C(F(b.c.Re), F(b.c.Im)) : C(F(b.r), F(0));
            for (int32_t i = 0; i < n; ++i) out(i, CplxRel(op, left(i), r));
        }
    });
}

bool RealPath(const TRovane& a, const Rhs& b) { return !a.fComplex && b.kind != Rhs::Cplx; }

// Mask entries 1 or 0 into m (room for a.Length).
void MaskInto(int32_t* m, const TRovane& a, int op, const Rhs& b) {
    const int32_t n = a.fLength;
    if (n == 0) return;
    if (RealPath(a, b)) {
        ByWidth(a.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (b.kind == Rhs::Vec)
                prim::FindMask(op, frame::Base<F>(a), frame::Offset<F>(a), n, frame::Base<F>(*b.v), frame::Offset<F>(*b.v), m, 0);
            else
                prim::FindMaskC(op, frame::Base<F>(a), frame::Offset<F>(a), n, static_cast<F>(b.r), m, 0);
        });
    } else {
        ComplexTests(a, op, b, [&](int32_t i, bool t) { m[i] = t; });
    }
}

// Positions of the matches into d (room for a.Length); returns the count.
int32_t IndexesInto(int32_t* d, const TRovane& a, int op, const Rhs& b) {
    const int32_t n = a.fLength;
    if (n == 0) return 0;
    int32_t count = 0;
    if (RealPath(a, b)) {
        ByWidth(a.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (b.kind == Rhs::Vec)
                prim::FindIndexes(op, frame::Base<F>(a), frame::Offset<F>(a), n, frame::Base<F>(*b.v), frame::Offset<F>(*b.v), d, 0, count);
            else
                prim::FindIndexesC(op, frame::Base<F>(a), frame::Offset<F>(a), n, static_cast<F>(b.r), d, 0, count);
        });
    } else {
        ComplexTests(a, op, b, [&](int32_t i, bool t) {
            d[count] = i;
            count += t;
        });
    }
    return count;
}

TRovaneInt& DoFindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, const Rhs& b) {
    const int code = RelationCode(op);
    CheckRhs(a, b);
    mask.Size(a.fLength, prInt32);
    if (mask.fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.IntPrecision <> prInt32");
    MaskInto(IntBase(mask), a, code, b);
    return mask;
}

// Sizes Indexes to a.Length, fills it and returns the count.
int32_t DoIndexes(TRovaneInt& indexes, const TRovane& a, std::string_view op, const Rhs& b) {
    const int code = RelationCode(op);
    CheckRhs(a, b);
    indexes.Size(a.fLength, prInt32);
    if (indexes.fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
    return IndexesInto(IntBase(indexes), a, code, b);
}

TVecInt& DoFindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, const Rhs& b) {
    const int32_t count = DoIndexes(indexes, a, op, b);
    indexes.Resize(count);
    return indexes;
}

int32_t DoFindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, const Rhs& b, TVec& maskVec,
                       TVec& notMaskVec) {
    if (&maskVec == &a || &notMaskVec == &a) EInvalidArgumentRaise("a = Self");
    if (b.kind == Rhs::Vec && (&maskVec == b.v || &notMaskVec == b.v)) EInvalidArgumentRaise("b = Self");
    if (&maskVec == &notMaskVec) EInvalidArgumentRaise("Self = MaskVec");
    DoFindMask(mask, a, op, b);
    const int32_t* m = IntBase(mask);
    int32_t count = 0;
    for (int32_t i = 0; i < a.fLength; ++i) count += m[i];
    maskVec.Size(count, a.fFloatPrecision);
    notMaskVec.Size(a.fLength - count, a.fFloatPrecision);
    ByPrecision(a.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = Elem<T>(a);
        T* d1 = Elem<T>(maskVec);
        T* d2 = Elem<T>(notMaskVec);
        for (int32_t i = 0; i < a.fLength; ++i) (m[i] ? *d1++ : *d2++) = x[i];
    });
    return count;
}

// Whether the test holds for every element.
bool AllHold(const TRovane& a, int op, const Rhs& b) {
    CheckRhs(a, b);
    if (b.kind == Rhs::Vec && b.v->fFloatPrecision != a.fFloatPrecision)
        EInvalidArgumentRaise("a.FloatPrecision <> b.FloatPrecision");
    if (a.fLength == 0) return true;
    TVecInt* m = nullptr;
    CreateIt(m);
    bool all = true;
    try {
        m->Size(a.fLength, prInt32);
        MaskInto(IntBase(*m), a, op, b);
        const int32_t* p = IntBase(*m);
        for (int32_t i = 0; i < a.fLength && all; ++i) all = p[i] != 0;
    } catch (...) {
        FreeIt(m);
        throw;
    }
    FreeIt(m);
    return all;
}

// A scalar left side: a Op b for every b is b Op' a with the mirrored code.
int Mirror(int op) {
    static const int mirrored[] = {2, 3, 0, 1, 4, 5};
    return mirrored[op];
}

}  // namespace

// ---- relation texts ----------------------------------------------------------------
int32_t RelationCode(std::string_view op) {
    if (op == "<") return 0;
    if (op == "<=" || op == "=<") return 1;
    if (op == ">") return 2;
    if (op == ">=" || op == "=>") return 3;
    if (op == "=" || op == "==") return 4;
    if (op == "<>") return 5;
    EInvalidArgumentRaise("Parameter: " + std::string(op) + " not recognized!");
}

// ---- free functions ------------------------------------------------------------------
TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, double b) {
    return DoFindMask(mask, a, op, {Rhs::Real, b});
}
TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, const TCplx& b) {
    return DoFindMask(mask, a, op, {Rhs::Cplx, 0, b});
}
TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, const TRovane& b) {
    return DoFindMask(mask, a, op, {Rhs::Vec, 0, {0, 0}, &b});
}
TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, double b) {
    return DoFindIndexes(indexes, a, op, {Rhs::Real, b});
}
TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, const TCplx& b) {
    return DoFindIndexes(indexes, a, op, {Rhs::Cplx, 0, b});
}
TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, const TRovane& b) {
    return DoFindIndexes(indexes, a, op, {Rhs::Vec, 0, {0, 0}, &b});
}
int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, double b) {
    return DoIndexes(indexes, a, op, {Rhs::Real, b});
}
int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, const TCplx& b) {
    return DoIndexes(indexes, a, op, {Rhs::Cplx, 0, b});
}
int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, const TRovane& b) {
    return DoIndexes(indexes, a, op, {Rhs::Vec, 0, {0, 0}, &b});
}
int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, double b, TVec& maskVec,
                     TVec& notMaskVec) {
    return DoFindAndSplit(mask, a, op, {Rhs::Real, b}, maskVec, notMaskVec);
}
int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, const TCplx& b, TVec& maskVec,
                     TVec& notMaskVec) {
    return DoFindAndSplit(mask, a, op, {Rhs::Cplx, 0, b}, maskVec, notMaskVec);
}
int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, const TRovane& b, TVec& maskVec,
                     TVec& notMaskVec) {
    return DoFindAndSplit(mask, a, op, {Rhs::Vec, 0, {0, 0}, &b}, maskVec, notMaskVec);
}
int32_t Find(const TRovane& a, double value) { return a.Find(value); }
int32_t Find(const TRovane& a, const TCplx& value) { return a.Find(value); }

#define ROVANE_VALUE_TEST(NAME, OP)                                                                           \
    bool NAME(const TRovane& a, double b) { return AllHold(a, OP, {Rhs::Real, b}); }                          \
    bool NAME(const TRovane& a, const TCplx& b) { return AllHold(a, OP, {Rhs::Cplx, 0, b}); }                 \
    bool NAME(const TRovane& a, const TRovane& b) { return AllHold(a, OP, {Rhs::Vec, 0, {0, 0}, &b}); }       \
    bool NAME(double a, const TRovane& b) { return AllHold(b, Mirror(OP), {Rhs::Real, a}); }                  \
    bool NAME(const TCplx& a, const TRovane& b) { return AllHold(b, Mirror(OP), {Rhs::Cplx, 0, a}); }
ROVANE_VALUE_TEST(LessThan, 0)
ROVANE_VALUE_TEST(LessThanOrEqual, 1)
ROVANE_VALUE_TEST(GreaterThan, 2)
ROVANE_VALUE_TEST(GreaterThanOrEqual, 3)
#undef ROVANE_VALUE_TEST

namespace {
template <class T>
void EnlistAs(const TRovane& a, T*& dst, bool wantDouble, bool wantComplex) {
    if (wantDouble && !a.fIsDouble) EInvalidArgumentRaise("Enlist: a.IsDouble = false");
    if (!wantDouble && a.fIsDouble) EInvalidArgumentRaise("Enlist: a.IsDouble = true");
    if (wantComplex && !a.fComplex) EInvalidArgumentRaise("Enlist: a.Complex = false");
    if (a.fLength < 1) {
        dst = nullptr;
        return;
    }
    if constexpr (IsComplex<T>)
        dst = Elem<T>(a);
    else
        dst = frame::Base<T>(a) + a.FDataOffset;
}
}  // namespace

void Enlist(const TRovane& a, double*& dst) { EnlistAs(a, dst, true, false); }
void Enlist(const TRovane& a, float*& dst) { EnlistAs(a, dst, false, false); }
void Enlist(const TRovane& a, TCplx*& dst) { EnlistAs(a, dst, true, true); }
void Enlist(const TRovane& a, TSCplx*& dst) { EnlistAs(a, dst, false, true); }

bool Prime(int32_t n) {
    for (int32_t d = 2; d <= n / 2; ++d)
        if (n % d == 0) return false;
    return true;
}

// ---- Find and NaN stripping ------------------------------------------------------------
int32_t TRovane::Find(double value) const {
    int32_t found = -1;
    if (fComplex) return Find(TCplx(value, 0));
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F* x = Elem<F>(*this);
        const F v = static_cast<F>(value);
        if (std::isnan(value)) {
            for (int32_t i = 0; i < fLength && found < 0; ++i)
                if (std::isnan(x[i])) found = i;
        } else if (std::isinf(value)) {
            for (int32_t i = 0; i < fLength && found < 0; ++i)
                if (std::isinf(x[i])) found = i;
        } else {
            for (int32_t i = 0; i < fLength && found < 0; ++i)
                if (x[i] == v) found = i;
        }
    });
    return found;
}

int32_t TRovane::Find(const TCplx& value) const {
    if (!fComplex) EInvalidArgumentRaise("not Complex");
    int32_t found = -1;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const ComplexOf<F>* x = Elem<ComplexOf<F>>(*this);
        const bool nan = std::isnan(value.Re) || std::isnan(value.Im);
        const bool inf = std::isinf(value.Re) || std::isinf(value.Im);
        const F re = static_cast<F>(value.Re), im = static_cast<F>(value.Im);
        for (int32_t i = 0; i < fLength && found < 0; ++i) {
            const bool hit = nan   ? std::isnan(x[i].Re) || std::isnan(x[i].Im)
                             : inf ? std::isinf(x[i].Re) || std::isinf(x[i].Im)
                                   : x[i].Re == re && x[i].Im == im;
            if (hit) found = i;
        }
    });
    return found;
}

int32_t TRovane::StripNanAndInf(const TRovane& src) { return StripNanAndInf(src, 0, 0, src.fLength); }
int32_t TRovane::StripNanAndInf(const TRovane& src, int32_t srcIndex, int32_t len) {
    if (len == -1) len = range::RestFrom(src.fLength, srcIndex);
    if (range::OutOfRange(srcIndex, len, src.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", srcIndex, len, src.fLength);
    if (&src == this) EInvalidArgumentRaise("TRovane.Trunc: Self = Src");
    if (fIsSubRange) SetFullRange();
    SizeTo(*this, len, src.fFloatPrecision);
    return StripNanAndInf(src, srcIndex, 0, len);
}
int32_t TRovane::StripNanAndInf(const TRovane& src, int32_t srcIndex, int32_t index, int32_t len) {
    if (&src == this) EInvalidArgumentRaise("TRovane.Trunc: Self = Src");
    if (len == -1) len = range::RestFrom(src.fLength, srcIndex);
    if (range::OutOfRange(srcIndex, len, src.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", srcIndex, len, src.fLength);
    if (index == 0 && !fIsSubRange && (fLength != len || fFloatPrecision != src.fFloatPrecision))
        SizeTo(*this, len, src.fFloatPrecision);
    if (range::OutOfRange(index, len, fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    if (fFloatPrecision != src.fFloatPrecision) EInvalidArgumentRaise("IsDouble <> Src.IsDouble");
    int32_t k = 0;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = Elem<T>(src, srcIndex);
        T* d = Elem<T>(*this, index);
        for (int32_t i = 0; i < len; ++i) {
            bool finite;
            if constexpr (IsComplex<T>)
                finite = std::isfinite(x[i].Re) && std::isfinite(x[i].Im);
            else
                finite = std::isfinite(x[i]);
            d[k] = x[i];
            k += finite;
        }
    });
    SetSubRange(index, k);
    return k;
}

// ---- gather ------------------------------------------------------------------------
TVec& TVec::Gather(const TRovane& x, const TVecInt* indexes, TIndexType indexType, int32_t increment, int32_t offset) {
    switch (indexType) {
        case indIncrement: return GatherByIncr(x, increment, offset);
        case indVector:
            if (!indexes) EInvalidArgumentRaise("TVec.Gather: Indexes = nil");
            if (indexes->fRovaneType != rvTVecInt) EInvalidArgumentRaise("TVec.Gather: Indexes.RovaneType <> rvTVecInt");
            return GatherByIndex(x, *indexes);
        case indMask:
            if (!indexes) EInvalidArgumentRaise("TVec.Gather: Indexes = nil");
            if (indexes->fRovaneType != rvTVecInt) EInvalidArgumentRaise("TVec.Gather: Indexes.RovaneType <> rvTVecInt");
            return GatherByMask(x, indexes, -1);
    }
    EInvalidArgumentRaiseFmt("TVec.Gather: Unexpected IndexType value: %d", int32_t(indexType));
}

TVec& TVec::GatherByIncr(const TRovane& x, int32_t increment, int32_t offset) {
    // Bad strides would read outside X: checked whatever ConditionCheck says.
    if (&x == this) EInvalidArgumentRaise("TVec.GatherByIncr: X = Self");
    if (increment <= 0) EInvalidArgumentRaise("TVec.GatherByIncr: Increment <= 0");
    if (offset < 0) EInvalidArgumentRaise("TVec.GatherByIncr: Offset < 0");
    const int64_t n = offset < x.fLength ? (int64_t(x.fLength) - offset + increment - 1) / increment : 0;
    Size(static_cast<int32_t>(n), x.fFloatPrecision);
    if (n == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        prim::Packi(static_cast<int32_t>(n), frame::Base<T>(x), frame::Offset<T>(x) + offset, increment, frame::Base<T>(*this),
                    frame::Offset<T>(*this));
    });
    return *this;
}

TVec& TVec::GatherByIndex(const TRovane& x, const TVecInt& indexes) {
    if (&x == this) EInvalidArgumentRaise("TVec.GatherByIndex: X = Self");
    if (indexes.fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
    const int32_t* ix = IntBase(indexes);
    // Every index is read: one outside X would read foreign memory.
    for (int32_t k = 0; k < indexes.fLength; ++k)
        if (ix[k] < 0 || ix[k] >= x.fLength)
            ERangeErrorRaiseFmt("TVec.GatherByIndex: 0 <= Indexes[%d] <= (X.Length-1)", k);
    Size(indexes.fLength, x.fFloatPrecision);
    if (fLength == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        prim::Packv(fLength, frame::Base<T>(x), frame::Offset<T>(x), ix, 0, frame::Base<T>(*this), frame::Offset<T>(*this));
    });
    return *this;
}

TVec& TVec::GatherByMask(const TRovane& x, const TRovaneInt* mask, int32_t maskNonZeroCount) {
    if (!mask) EInvalidArgumentRaise("TVec.GatherMyMask: Mask = nil");
    if (mask->fIntPrecision != prInt32) EInvalidArgumentRaise("TVec.GatherMyMask: Mask.IntPrecision <> prInt32");
    if (&x == this) EInvalidArgumentRaise("TVec.GatherMyMask: X = Self");
    if (x.fLength < mask->fLength) EInvalidArgumentRaise("X.Length < Mask.Length");
    if (x.fLength < maskNonZeroCount) EInvalidArgumentRaise("X.Length < MaskNonZeroCount");
    const int32_t* m = IntBase(*mask);
    const int32_t n = mask->fLength;
    if (maskNonZeroCount < 0) {
        maskNonZeroCount = 0;
        for (int32_t i = 0; i < n; ++i) maskNonZeroCount += m[i] > 0;
    }
    Size(maskNonZeroCount, x.fFloatPrecision);
    int32_t seen = 0;
    // The primitive stores at most Length elements whatever the mask holds.
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        seen = prim::PackTo(n, frame::Base<T>(x), frame::Offset<T>(x), m, 0, frame::Base<T>(*this), frame::Offset<T>(*this), fLength);
    });
    if (seen != fLength) EInvalidArgumentRaiseFmt("TVec.GatherMyMask: MaskNonZeroCount = %d, the mask selects %d", fLength, seen);
    return *this;
}

TVec& TVec::GatherSplit(const TRovane& maskVec, const TRovane& notMaskVec, const TRovaneInt& mask) {
    if (&maskVec == this) EInvalidArgumentRaise("Self = MaskVec");
    if (&notMaskVec == this) EInvalidArgumentRaise("Self = NotMaskVec");
    if (maskVec.fFloatPrecision != notMaskVec.fFloatPrecision)
        EInvalidArgumentRaise("MaskVec.FloatPrecision <> NotMaskVec.FloatPrecision");
    if (int64_t(mask.fLength) != int64_t(maskVec.fLength) + notMaskVec.fLength)
        EInvalidArgumentRaise("Mask.Length <> (MaskVec.Length + NotMaskVec.Length)");
    if (mask.fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.IntPrecision <> prInt32");
    const int32_t* m = IntBase(mask);
    int32_t count = 0;
    for (int32_t i = 0; i < mask.fLength; ++i) count += m[i] > 0;
    if (count != maskVec.fLength) EInvalidArgumentRaise("Mask.Length <> (MaskVec.Length + NotMaskVec.Length)");
    Size(mask.fLength, maskVec.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* a = Elem<T>(maskVec);
        const T* b = Elem<T>(notMaskVec);
        T* d = Elem<T>(*this);
        for (int32_t i = 0; i < mask.fLength; ++i) d[i] = m[i] > 0 ? *a++ : *b++;
    });
    return *this;
}

namespace {
void FindAndGatherCore(TVec& self, const TRovane& a, std::string_view op, const Rhs& b, TVecInt* indexes) {
    if (&a == &self) EInvalidArgumentRaise("a = Self");
    if (b.kind == Rhs::Vec && b.v == &self) EInvalidArgumentRaise("b = Self");
    TVecInt* tmp = nullptr;
    if (!indexes) CreateIt(tmp);
    TVecInt& ix = indexes ? *indexes : *tmp;
    try {
        DoFindIndexes(ix, a, op, b);
        self.GatherByIndex(a, ix);
    } catch (...) {
        if (tmp) FreeIt(tmp);
        throw;
    }
    if (tmp) FreeIt(tmp);
}
}  // namespace

TVec& TVec::FindAndGather(const TRovane& a, std::string_view op, double b, TVecInt* indexes) {
    FindAndGatherCore(*this, a, op, {Rhs::Real, b}, indexes);
    return *this;
}
TVec& TVec::FindAndGather(const TRovane& a, std::string_view op, const TCplx& b, TVecInt* indexes) {
    FindAndGatherCore(*this, a, op, {Rhs::Cplx, 0, b}, indexes);
    return *this;
}
TVec& TVec::FindAndGather(const TRovane& a, std::string_view op, const TRovane& b, TVecInt* indexes) {
    FindAndGatherCore(*this, a, op, {Rhs::Vec, 0, {0, 0}, &b}, indexes);
    return *this;
}

// ---- scatter ---------------------------------------------------------------------------
TRovane& TRovane::Scatter(const TRovane& src, const TVecInt* indexes, TIndexType indexType, int32_t increment,
                          int32_t offset) {
    switch (indexType) {
        case indIncrement: return ScatterByIncr(src, increment, offset);
        case indVector:
            if (!indexes) EInvalidArgumentRaise("TRovane.Scatter: Indexes is not assigned");
            return ScatterByIndexes(src, *indexes);
        case indMask:
            if (!indexes) EInvalidArgumentRaise("TRovane.Scatter: Indexes is not assigned");
            return ScatterByMask(src, *indexes, false);
    }
    EInvalidArgumentRaiseFmt("TVec.Scatter: Unexpected IndexType value: %d", int32_t(indexType));
}

TRovane& TRovane::ScatterByIncr(const TRovane& src, int32_t increment, int32_t offset) {
    if (&src == this) EInvalidArgumentRaise("TRovane.ScatterByIncr: X = Self");
    if (src.fIsDouble != fIsDouble) EInvalidArgumentRaise("TRovane.ScatterByIncr: Src.IsDouble <> IsDouble");
    if (src.fComplex != fComplex) EInvalidArgumentRaise("TRovane.ScatterByIncr: Src.Complex <> Complex");
    if (increment < 0) EInvalidArgumentRaise("TRovane.ScatterByIncr: Increment < 0");
    if (offset < 0) EInvalidArgumentRaise("TRovane.ScatterByIncr: Offset < 0");
    const int32_t n = src.fLength;
    if (n > 0 && int64_t(fLength) <= int64_t(offset) + int64_t(n - 1) * increment)
        EInvalidArgumentRaise("(n > 0) and (Length <= Offset + (n-1)*Increment)");
    if (n == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        prim::Unpacki(n, frame::Base<T>(src), frame::Offset<T>(src), frame::Base<T>(*this), frame::Offset<T>(*this) + offset, increment);
    });
    return *this;
}

TRovane& TRovane::ScatterByIndexes(const TRovane& src, const TVecInt& indexes) {
    if (&src == this) EInvalidArgumentRaise("TRovane.ScatterByIndexes: X = Self");
    if (src.fIsDouble != fIsDouble) EInvalidArgumentRaise("TRovane.ScatterByIndexes: Src.IsDouble <> IsDouble");
    if (src.fComplex != fComplex) EInvalidArgumentRaise("TRovane.ScatterByIndexes: Src.Complex <> Complex");
    if (indexes.fLength > src.fLength) EInvalidArgumentRaise("TRovane.ScatterByIndexes: Indexes.Length > Src.Length");
    if (indexes.fIntPrecision != prInt32) EInvalidArgumentRaise("TRovane.ScatterByIndexes: Indexes.IntPrecision <> prInt32");
    const int32_t n = indexes.fLength;
    if (n == 0) return *this;
    const int32_t* ix = IntBase(indexes);
    if (ix[0] < 0 || ix[0] >= fLength) EInvalidArgumentRaise("TRovane.ScatterByIndexes: 0 <= Indexes[0] <= (Length-1)");
    if (ix[n - 1] < 0 || ix[n - 1] >= fLength)
        EInvalidArgumentRaise("TRovane.ScatterByIndexes:0 <= Indexes[Indexes.Length-1] <= (Length-1)");
    // The entries between are checked too: an unordered list must not write
    // outside Self.
    for (int32_t k = 1; k < n - 1; ++k)
        if (ix[k] < 0 || ix[k] >= fLength)
            EInvalidArgumentRaiseFmt("TRovane.ScatterByIndexes: 0 <= Indexes[%d] <= (Length-1)", k);
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        prim::Unpackv(n, frame::Base<T>(src), frame::Offset<T>(src), frame::Base<T>(*this), frame::Offset<T>(*this), ix, 0);
    });
    return *this;
}

TRovane& TRovane::ScatterByMask(const TRovane& src, const TRovaneInt& mask, bool allowSmallerSource) {
    if (&src == this) EInvalidArgumentRaise("TRovane.ScatterByMask: X = Self");
    if (fLength != mask.fLength) EInvalidArgumentRaise("Mask.ScatterByMask: Self.Length <> Mask.Length");
    if (fComplex != src.fComplex) EInvalidArgumentRaise("Mask.ScatterByMask: Self.Complex <> Src.Complex");
    if (fIsDouble != src.fIsDouble) EInvalidArgumentRaise("Mask.ScatterByMask: Self.IsDouble <> Src.IsDouble");
    if (mask.fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.ScatterByMask: Mask.IntPrecision <> prInt32");
    const int32_t* m = IntBase(mask);
    if (!allowSmallerSource) {
        if (src.fLength != mask.fLength) EInvalidArgumentRaise("Mask.ScatterByMask: Src.Length <> Mask.Length");
        // Position for position: the selected elements keep their places.
        ByPrecision(fFloatPrecision, [&](auto t) {
            using T = decltype(t);
            const T* x = Elem<T>(src);
            T* d = Elem<T>(*this);
            for (int32_t i = 0; i < fLength; ++i)
                if (m[i] > 0) d[i] = x[i];
        });
        return *this;
    }
    int32_t count = 0;
    for (int32_t i = 0; i < mask.fLength; ++i) count += m[i] > 0;
    if (count > src.fLength) EInvalidArgumentRaise("Mask.ScatterByMask: Src.Length < number of selected elements");
    if (fLength == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        prim::Unpackm(fLength, frame::Base<T>(src), frame::Offset<T>(src), frame::Base<T>(*this), frame::Offset<T>(*this), m, 0);
    });
    return *this;
}

// ---- reorder ------------------------------------------------------------------------
namespace {
// Validates the range form with a source: Self = Vec, equal kinds, ranges.
void CheckMove(const TRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t& len,
               const char* selfText) {
    if (&vec == &self) EInvalidArgumentRaise(selfText);
    if (len == -1) len = range::RestFrom(self.fLength, index);
    if (vec.fComplex != self.fComplex) EInvalidArgumentRaise("Complex <> Src.Complex");
    if (vec.fIsDouble != self.fIsDouble) EInvalidArgumentRaise("IsDouble <> Src.IsDouble");
    if (range::OutOfRange(vecIndex, len, vec.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", vecIndex, len, vec.fLength);
    if (range::OutOfRange(index, len, self.fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, self.fLength);
}

// Copies len elements of vec (from vecIndex) to self (at index), then runs
// fn(T* run) on the run in Self.
template <class Fn>
void InSelf(TRovane& self, const TRovane* vec, int32_t vecIndex, int32_t index, int32_t len, Fn&& fn) {
    if (len <= 0) return;
    ByPrecision(self.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = Elem<T>(self, index);
        if (vec) std::memmove(d, Elem<T>(*vec, vecIndex), size_t(len) * sizeof(T));
        fn(d);
    });
}
}  // namespace

TDenseRovane& TDenseRovane::Reverse() { return Reverse(0, fLength); }
TDenseRovane& TDenseRovane::Reverse(int32_t index, int32_t len) {
    ValidateParams(index, len);
    InSelf(*this, nullptr, 0, index, len, [&](auto* d) { std::reverse(d, d + len); });
    return *this;
}
TDenseRovane& TDenseRovane::Reverse(const TRovane& vec) {
    if (&vec == this) EInvalidArgumentRaise("Self = Vec");
    Size(vec);
    return Reverse(vec, 0, 0, vec.fLength);
}
TDenseRovane& TDenseRovane::Reverse(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    CheckMove(*this, vec, vecIndex, index, len, "Self = Vec");
    InSelf(*this, &vec, vecIndex, index, len, [&](auto* d) { std::reverse(d, d + len); });
    return *this;
}

TDenseRovane& TDenseRovane::Rotate(int32_t offset) { return Rotate(offset, 0, fLength); }
TDenseRovane& TDenseRovane::Rotate(int32_t offset, int32_t index, int32_t len) {
    ValidateParams(index, len);
    const int32_t r = select::RotateCount(offset, len);
    if (r == 0) return *this;
    InSelf(*this, nullptr, 0, index, len, [&](auto* d) { std::rotate(d, d + (len - r), d + len); });
    return *this;
}
TDenseRovane& TDenseRovane::Rotate(const TRovane& vec, int32_t offset) {
    if (&vec == this) EInvalidArgumentRaise("Rotate: Self = Src");
    Size(vec);
    return Rotate(vec, offset, 0, 0, vec.fLength);
}
TDenseRovane& TDenseRovane::Rotate(const TRovane& vec, int32_t offset, int32_t vecIndex, int32_t index, int32_t len) {
    CheckMove(*this, vec, vecIndex, index, len, "Rotate: Self = Src");
    const int32_t r = select::RotateCount(offset, len);
    InSelf(*this, &vec, vecIndex, index, len, [&](auto* d) { std::rotate(d, d + (len - r), d + len); });
    return *this;
}

namespace {
template <class T>
void ShiftRun(T* d, int32_t len, int32_t offset) {
    if (offset == 0 || int64_t(offset) >= len || -int64_t(offset) >= len) return;
    if (offset > 0)
        std::memmove(d + offset, d, size_t(len - offset) * sizeof(T));
    else
        std::memmove(d, d - offset, size_t(len + offset) * sizeof(T));
}
}  // namespace

TDenseRovane& TDenseRovane::Shift(int32_t offset) { return Shift(offset, 0, fLength); }
TDenseRovane& TDenseRovane::Shift(int32_t offset, int32_t index, int32_t len) {
    ValidateParams(index, len);
    InSelf(*this, nullptr, 0, index, len, [&](auto* d) { ShiftRun(d, len, offset); });
    return *this;
}
TDenseRovane& TDenseRovane::Shift(const TRovane& vec, int32_t offset) {
    if (&vec == this) EInvalidArgumentRaise("Rotate: Self = Src");
    Size(vec);
    return Shift(vec, offset, 0, 0, vec.fLength);
}
TDenseRovane& TDenseRovane::Shift(const TRovane& vec, int32_t offset, int32_t vecIndex, int32_t index, int32_t len) {
    CheckMove(*this, vec, vecIndex, index, len, "Rotate: Self = Src");
    InSelf(*this, &vec, vecIndex, index, len, [&](auto* d) { ShiftRun(d, len, offset); });
    return *this;
}

// ---- sampling ---------------------------------------------------------------------------
namespace {
void CheckSampling(const TRovane& self, const TRovane& src, int32_t factor, int32_t phase) {
    if (&src == &self) EInvalidArgumentRaise("Self = Src");
    if (factor < 1) EInvalidArgumentRaise("Factor < 1");
    if (phase < 0) EInvalidArgumentRaise("Phase < 0");
    if (phase >= factor) EInvalidArgumentRaise("Phase >= Factor");
}
void CheckSamplingRange(const TRovane& self, const TRovane& src, int32_t factor, int32_t srcIndex, int32_t index,
                        int32_t len, int64_t selfCount) {
    if (self.fComplex != src.fComplex) EInvalidArgumentRaise("Complex <> Src.Complex");
    if (self.fIsDouble != src.fIsDouble) EInvalidArgumentRaise("IsDouble <> Src.IsDouble");
    if (len < 0 || srcIndex < 0 || index < 0)
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, self.fLength);
    if (len % factor != 0) EInvalidArgumentRaise("(Len mod Factor) <> 0");
    if (int64_t(srcIndex) + (selfCount == len ? len / factor : len) > src.fLength)
        EInvalidArgumentRaise("(SrcIndex + Len) > Src.Length");
    if (int64_t(index) + selfCount > self.fLength) EInvalidArgumentRaise("(Index + ALength) > Length");
}
// dst[k * factor + phase] = src[k] for k < n, zeros elsewhere in the n * factor run.
void UpRun(TRovane& self, const TRovane& src, int32_t srcIndex, int32_t index, int32_t n, int32_t factor, int32_t phase) {
    ByPrecision(self.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = Elem<T>(src, srcIndex);
        T* d = Elem<T>(self, index);
        std::memset(static_cast<void*>(d), 0, size_t(n) * factor * sizeof(T));
        for (int64_t k = 0; k < n; ++k) d[k * factor + phase] = x[k];
    });
}
void DownRun(TRovane& self, const TRovane& src, int32_t srcIndex, int32_t index, int32_t n, int32_t factor,
             int32_t phase) {
    ByPrecision(self.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        if (n > 0) prim::Packi(n, frame::Base<T>(src), frame::Offset<T>(src) + srcIndex + phase, factor, frame::Base<T>(self), frame::Offset<T>(self) + index);
    });
}
}  // namespace

TDenseRovane& TDenseRovane::UpSample(const TRovane& src, int32_t factor, int32_t phase) {
    CheckSampling(*this, src, factor, phase);
    const int64_t n = int64_t(src.fLength) * factor;
    if (n > INT32_MAX) ERangeErrorRaise("UpSample: Src.Length * Factor > MaxInt");
    SizeTo(*this, static_cast<int32_t>(n), src.fFloatPrecision);
    UpRun(*this, src, 0, 0, src.fLength, factor, phase);
    return *this;
}
// Len counts elements of Self: Len / Factor source elements spread over Len places.
TDenseRovane& TDenseRovane::UpSample(const TRovane& src, int32_t factor, int32_t srcIndex, int32_t index, int32_t len,
                                     int32_t phase) {
    CheckSampling(*this, src, factor, phase);
    if (len < 0 || srcIndex < 0 || index < 0)
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    if (fComplex != src.fComplex) EInvalidArgumentRaise("Complex <> Src.Complex");
    if (fIsDouble != src.fIsDouble) EInvalidArgumentRaise("IsDouble <> Src.IsDouble");
    if (len % factor != 0) EInvalidArgumentRaise("(Len mod Factor) <> 0");
    if (int64_t(srcIndex) + len / factor > src.fLength) EInvalidArgumentRaise("(SrcIndex + Len) > Src.Length");
    if (int64_t(index) + len > fLength) EInvalidArgumentRaise("(Index + ALength) > Length");
    UpRun(*this, src, srcIndex, index, len / factor, factor, phase);
    return *this;
}
TDenseRovane& TDenseRovane::DownSample(const TRovane& src, int32_t factor, int32_t phase) {
    CheckSampling(*this, src, factor, phase);
    const int64_t n = src.fLength > phase ? (int64_t(src.fLength) - phase + factor - 1) / factor : 0;
    SizeTo(*this, static_cast<int32_t>(n), src.fFloatPrecision);
    DownRun(*this, src, 0, 0, static_cast<int32_t>(n), factor, phase);
    return *this;
}
// Len counts source elements: Len / Factor elements of Self are written.
TDenseRovane& TDenseRovane::DownSample(const TRovane& src, int32_t factor, int32_t srcIndex, int32_t index, int32_t len,
                                       int32_t phase) {
    CheckSampling(*this, src, factor, phase);
    CheckSamplingRange(*this, src, factor, srcIndex, index, len, len / factor);
    DownRun(*this, src, srcIndex, index, len / factor, factor, phase);
    return *this;
}

// ---- fills, concatenation, splitting -------------------------------------------------------
TVec& TVec::Ramp() { return Ramp(0.0, 1.0); }
TVec& TVec::Ramp(double offset, double step) { return Ramp(offset, step, 0, fLength); }
TVec& TVec::Ramp(double offset, double step, int32_t index, int32_t len) {
    if (fComplex) return Ramp(TCplx(offset, 0), TCplx(step, 0), index, len);
    ValidateParams(index, len);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        F* d = Elem<F>(*this, index);
        for (int32_t i = 0; i < len; ++i) d[i] = static_cast<F>(offset + double(i) * step);
    });
    return *this;
}
TVec& TVec::Ramp(const TCplx& offset, const TCplx& step) { return Ramp(offset, step, 0, fLength); }
TVec& TVec::Ramp(const TCplx& offset, const TCplx& step, int32_t index, int32_t len) {
    if (!fComplex) EInvalidArgumentRaise("TVec.Ramp: Self is not Complex");
    ValidateParams(index, len);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        ComplexOf<F>* d = Elem<ComplexOf<F>>(*this, index);
        // A part with zero offset and zero step stays a plain zero (no -0).
        const bool reZero = offset.Re == 0 && step.Re == 0, imZero = offset.Im == 0 && step.Im == 0;
        for (int32_t i = 0; i < len; ++i) {
            d[i].Re = reZero ? F(0) : static_cast<F>(offset.Re + double(i) * step.Re);
            d[i].Im = imZero ? F(0) : static_cast<F>(offset.Im + double(i) * step.Im);
        }
    });
    return *this;
}

TVec& TVec::Concat(std::initializer_list<const TVec*> src) {
    if (src.size() == 0) return Size(0);
    const TVec& first = **src.begin();
    int64_t total = 0;
    for (const TVec* v : src) {
        if (v->fFloatPrecision != first.fFloatPrecision) EInvalidArgumentRaise("src[i].FloatPrecision <> src[0].FloatPrecision");
        if (v == this) EInvalidArgumentRaise("Self = Src");
        total += v->fLength;
    }
    if (total > INT32_MAX) ERangeErrorRaise("(Index + Sum(Src[i].Length)) > Length");
    Size(static_cast<int32_t>(total), first.fFloatPrecision);
    return Concat(0, src);
}
TVec& TVec::Concat(int32_t index, std::initializer_list<const TVec*> src) {
    int64_t total = index;
    for (const TVec* v : src) {
        if (v->fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("src[i].FloatPrecision <> FloatPrecision");
        total += v->fLength;
    }
    if (index < 0 || total > fLength) EInvalidArgumentRaise("(Index + Sum(Src[i].Length)) > Length");
    int32_t at = index;
    for (const TVec* v : src) {
        if (v->fLength > 0)
            ByPrecision(fFloatPrecision, [&](auto t) {
                using T = decltype(t);
                std::memmove(Elem<T>(*this, at), Elem<T>(*v), size_t(v->fLength) * sizeof(T));
            });
        at += v->fLength;
    }
    return *this;
}

TVec& TVec::Split(TVec& vec1, int32_t offset, TVec& vec2) {
    if (offset > fLength || offset < 0) EInvalidArgumentRaise("Offset > fLength");
    if (&vec1 == this) EInvalidArgumentRaise("Self = Vec1");
    if (&vec2 == this) EInvalidArgumentRaise("Self = Vec2");
    vec1.Size(offset, fFloatPrecision);
    vec2.Size(fLength - offset, fFloatPrecision);
    vec1.Copy(*this, 0, 0, offset);
    vec2.Copy(*this, offset, 0, fLength - offset);
    return *this;
}
TVec& TVec::Split(std::initializer_list<TVec*> dst) {
    int32_t at = 0;
    for (size_t i = 0; i < dst.size(); ++i) {
        TVec* v = dst.begin()[i];
        if (v == this) EInvalidArgumentRaise("Self = Vec1");
        if (int64_t(at) + v->fLength > fLength) EInvalidArgumentRaiseFmt("Self.Length exceeded at Vec %d", int32_t(i));
        if (v->fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("Size mismatch at Vec " + std::to_string(i));
        at += v->fLength;
    }
    at = 0;
    for (TVec* v : dst) {
        v->Copy(*this, at, 0, v->fLength);
        at += v->fLength;
    }
    return *this;
}
TVec& TVec::Split(std::initializer_list<TVec*> dst, std::initializer_list<int32_t> dstSize) {
    if (dst.size() != dstSize.size()) EInvalidArgumentRaise("Dst.Length <> DstSize.Length");
    int64_t total = 0;
    for (size_t i = 0; i < dst.size(); ++i) {
        if (dstSize.begin()[i] < 0) EInvalidArgumentRaise("Size mismatch at Vec " + std::to_string(i));
        total += dstSize.begin()[i];
        if (total > fLength) EInvalidArgumentRaiseFmt("Self.Length exceeded at Vec %d", int32_t(i));
    }
    for (size_t i = 0; i < dst.size(); ++i) dst.begin()[i]->Size(dstSize.begin()[i], fFloatPrecision);
    return Split(dst);
}

TVec& TVec::PrimeNumbers(int32_t n) {
    const int32_t have = RovanePrimeArray.Length();
    if (n < 0 || n > have) ERangeErrorRaiseFmt("TVec.PrimeNumbers: n out of range 0..%d: %d", have, n);
    Size(n, false);
    for (int32_t i = 0; i < n; ++i) PutElement(i, RovanePrimeArray[i]);
    return *this;
}

// ---- the search members of the integer containers --------------------------------------
namespace {
TVecInt& AsIndexList(TRovaneInt& self, const char* text) {
    if (self.fRovaneType != rvTVecInt) EInvalidArgumentRaise(text);
    return static_cast<TVecInt&>(self);
}
}  // namespace

TRovaneInt& TRovaneInt::FindMask(const TRovane& a, std::string_view op, double b) {
    return rovane::FindMask(*this, a, op, b);
}
TRovaneInt& TRovaneInt::FindMask(const TRovane& a, std::string_view op, const TCplx& b) {
    return rovane::FindMask(*this, a, op, b);
}
TRovaneInt& TRovaneInt::FindMask(const TRovane& a, std::string_view op, const TRovane& b) {
    return rovane::FindMask(*this, a, op, b);
}
TRovaneInt& TRovaneInt::FindIndexes(const TRovane& a, std::string_view op, double b) {
    rovane::FindIndexes(AsIndexList(*this, "Abstract FindIndexes method supported only for TVecInt"), a, op, b);
    return *this;
}
TRovaneInt& TRovaneInt::FindIndexes(const TRovane& a, std::string_view op, const TCplx& b) {
    rovane::FindIndexes(AsIndexList(*this, "Abstract FindIndexes method supported only for TVecInt"), a, op, b);
    return *this;
}
TRovaneInt& TRovaneInt::FindIndexes(const TRovane& a, std::string_view op, const TRovane& b) {
    rovane::FindIndexes(AsIndexList(*this, "Abstract FindIndexes method supported only for TVecInt"), a, op, b);
    return *this;
}
int32_t TRovaneInt::FindIndexesAndLength(const TRovane& a, std::string_view op, double b) {
    return rovane::FindIndexesAndLength(
        AsIndexList(*this, "Abstract FindIndexesAndLength method supported only for TVecInt"), a, op, b);
}
int32_t TRovaneInt::FindIndexesAndLength(const TRovane& a, std::string_view op, const TCplx& b) {
    return rovane::FindIndexesAndLength(
        AsIndexList(*this, "Abstract FindIndexesAndLength method supported only for TVecInt"), a, op, b);
}
int32_t TRovaneInt::FindIndexesAndLength(const TRovane& a, std::string_view op, const TRovane& b) {
    return rovane::FindIndexesAndLength(
        AsIndexList(*this, "Abstract FindIndexesAndLength method supported only for TVecInt"), a, op, b);
}
int32_t TRovaneInt::FindAndSplit(const TRovane& a, std::string_view op, double b, TVec& maskVec, TVec& notMaskVec) {
    return rovane::FindAndSplit(*this, a, op, b, maskVec, notMaskVec);
}
int32_t TRovaneInt::FindAndSplit(const TRovane& a, std::string_view op, const TRovane& b, TVec& maskVec,
                                 TVec& notMaskVec) {
    return rovane::FindAndSplit(*this, a, op, b, maskVec, notMaskVec);
}

// Integer sources: exact comparisons (no NaN exists).
namespace {
bool IntRel(int op, int64_t a, int64_t b) {
    switch (op) {
        case 0: return a < b;
        case 1: return a <= b;
        case 2: return a > b;
        case 3: return a >= b;
        case 4: return a == b;
        default: return a != b;
    }
}
}  // namespace

TRovaneInt& TRovaneInt::FindMask(const TRovaneInt& a, std::string_view op, int32_t b) {
    const int code = RelationCode(op);
    if (&a == this) EInvalidArgumentRaise("a = Self");
    Size(a.fLength, prInt32);
    if (fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.IntPrecision <> prInt32");
    int32_t* m = IntBase(*this);
    for (int32_t i = 0; i < a.fLength; ++i) m[i] = IntRel(code, a.GetElement(i), b);
    return *this;
}
TRovaneInt& TRovaneInt::FindMask(const TRovaneInt& a, std::string_view op, const TRovaneInt& b) {
    const int code = RelationCode(op);
    if (&a == this) EInvalidArgumentRaise("a = Self");
    if (&b == this) EInvalidArgumentRaise("b = Self");
    if (a.fLength != b.fLength) EInvalidArgumentRaise("ALeft.Length <> ARight.Length");
    Size(a.fLength, prInt32);
    if (fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.IntPrecision <> prInt32");
    int32_t* m = IntBase(*this);
    for (int32_t i = 0; i < a.fLength; ++i) m[i] = IntRel(code, a.GetElement(i), b.GetElement(i));
    return *this;
}
TRovaneInt& TRovaneInt::FindIndexes(const TRovaneInt& a, std::string_view op, int32_t b) {
    if (fRovaneType != rvTVecInt) EInvalidArgumentRaise("Abstract method FindIndexes supported only for TVecInt!");
    const int code = RelationCode(op);
    if (&a == this) EInvalidArgumentRaise("a = Self");
    Size(a.fLength, prInt32);
    if (fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
    int32_t* d = IntBase(*this);
    int32_t k = 0;
    for (int32_t i = 0; i < a.fLength; ++i) {
        d[k] = i;
        k += IntRel(code, a.GetElement(i), b);
    }
    Resize(k);
    return *this;
}

}  // namespace rovane
