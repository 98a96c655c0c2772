// Integer expression records: lifetime, construction, conversions,
// comparisons.
#include <cstring>

#include "rovane/records/Records.h"
#include "rovane/storage/ObjectCache.h"

namespace rovane {

namespace {

template <class T>
T* NewIntObject(bool fromCache) {
    T* obj = nullptr;
    if (fromCache)
        CreateIt(obj);
    else
        obj = new T();
    TRecordHandle::AddRef(obj);
    return obj;
}

// The element pointer of the current range for a width.
void* ElementBase(const TRovaneInt& x) {
    switch (x.IntPrecision()) {
        case prInt32: return x.IValues;
        case prInt16: return x.SIValues;
        default: return x.BValues;
    }
}

int32_t ReadElement(const TRovaneInt& x, int32_t i) {
    switch (x.IntPrecision()) {
        case prInt32: return x.IValues[i];
        case prInt16: return x.SIValues[i];
        default: return x.BValues[i];
    }
}

void WriteElement(TRovaneInt& x, int32_t i, int32_t v) {
    switch (x.IntPrecision()) {
        case prInt32: x.IValues[i] = v; break;
        case prInt16: x.SIValues[i] = int16_t(v); break;
        default: x.BValues[i] = uint8_t(v); break;
    }
}

// Self becomes a copy of src: its settings, width, length and elements.
void CopyInt(TRovaneInt& dst, const TRovaneInt& src) {
    if (&dst == &src) return;
    dst.TRovaneBase::Assign(src);
    dst.Size(src.Length(), src.IntPrecision());
    if (src.Length() > 0)
        std::memcpy(ElementBase(dst), ElementBase(src), size_t(src.Length()) * size_t(src.ElemSize()));
}

template <class T>
void FromArray(TRovaneInt& dst, const T* values, int32_t n, TIntPrecision precision) {
    dst.Size(n, precision);
    if (n > 0) std::memcpy(ElementBase(dst), values, size_t(n) * sizeof(T));
}

// The object's block as a counted array of its width, without a copy.
template <class T>
TArray<T> ShareInt(TRovaneInt& x, TIntPrecision want, const char* text) {
    if (x.IntPrecision() != want) ERaise(text);
    if (x.Length() == 0 || !x.ValuesPointer) return TArray<T>();
    if (x.IsSubRange() || !x.ipoint) ERaise("TRovaneInt.Values: a sub-range or adopted memory has no array header");
    return TArray<T>::Share(static_cast<T*>(x.ValuesPointer));
}

constexpr const char* kInt32Text =
    "Implicit conversion is not supported when IntPrecision is not a match: aValue.IntPrecision <> prInt32";
constexpr const char* kInt16Text =
    "Implicit conversion is not supported when IntPrecision is not a match: aValue.IntPrecision <> prInt16";
constexpr const char* kInt8Text =
    "Implicit conversion is not supported when IntPrecision is not a match: aValue.IntPrecision <> prInt8";

enum class Rel { Lt, Le, Gt, Ge, Eq };

bool Holds(Rel rel, int32_t a, int32_t b) {
    switch (rel) {
        case Rel::Lt: return a < b;
        case Rel::Le: return a <= b;
        case Rel::Gt: return a > b;
        case Rel::Ge: return a >= b;
        default: return a == b;
    }
}
Rel Mirror(Rel rel) {
    switch (rel) {
        case Rel::Lt: return Rel::Gt;
        case Rel::Le: return Rel::Ge;
        case Rel::Gt: return Rel::Lt;
        case Rel::Ge: return Rel::Le;
        default: return rel;
    }
}
bool AllWithValue(Rel rel, const TRovaneInt& x, int32_t v) {
    for (int32_t i = 0; i < x.Length(); ++i)
        if (!Holds(rel, ReadElement(x, i), v)) return false;
    return true;
}
bool AllWith(Rel rel, const TRovaneInt& a, const TRovaneInt& b) {
    if (a.Length() != b.Length()) {
        if (rel == Rel::Eq) return false;
        EInvalidArgumentRaise("Compare: Length <> Vec.Length");
    }
    for (int32_t i = 0; i < a.Length(); ++i)
        if (!Holds(rel, ReadElement(a, i), ReadElement(b, i))) return false;
    return true;
}

}  // namespace

// ---------------------------------------------------------------------------
// VectorInt
// ---------------------------------------------------------------------------
void VectorInt::CreateFromCache(bool aFromCache) const {
    if (fObject) return;
    fObject = NewIntObject<TVecInt>(aFromCache);
}
VectorInt::VectorInt(int32_t aLength, TIntPrecision precision) {
    CreateFromCache(false);
    Data().Size(aLength, precision);
}
VectorInt::VectorInt(bool aFromCache) { CreateFromCache(aFromCache); }
VectorInt::VectorInt(const TIntegerArray& values) { FromArray(Data(), values.data(), values.Length(), prInt32); }
VectorInt::VectorInt(std::initializer_list<int32_t> values) {
    FromArray(Data(), values.begin(), int32_t(values.size()), prInt32);
}
VectorInt::VectorInt(const TSmallIntArray& values) { FromArray(Data(), values.data(), values.Length(), prInt16); }
VectorInt::VectorInt(const TByteArray& values) { FromArray(Data(), values.data(), values.Length(), prInt8); }
VectorInt::VectorInt(const TRovaneInt& src) { CopyInt(Data(), src); }

VectorInt& VectorInt::Assign(const TRovaneInt& src) {
    CopyInt(Data(), src);
    return *this;
}
VectorInt::operator TIntegerArray() const { return ShareInt<int32_t>(Data(), prInt32, kInt32Text); }
VectorInt::operator TSmallIntArray() const { return ShareInt<int16_t>(Data(), prInt16, kInt16Text); }
VectorInt::operator TByteArray() const { return ShareInt<uint8_t>(Data(), prInt8, kInt8Text); }
VectorInt& VectorInt::Size(int32_t aLength) { return Data().Size(aLength), *this; }
VectorInt& VectorInt::Size(int32_t aLength, TIntPrecision precision) { return Data().Size(aLength, precision), *this; }
VectorInt& VectorInt::Select(int32_t index, int32_t len) { return Data().SetSubRange(index, len), *this; }
VectorInt& VectorInt::SelectAll() { return Data().SetFullRange(), *this; }
int32_t VectorInt::operator[](int32_t i) const { return ReadElement(Data(), i); }
void VectorInt::SetElement(int32_t i, int32_t value) { WriteElement(Data(), i, value); }

// ---------------------------------------------------------------------------
// MatrixInt
// ---------------------------------------------------------------------------
void MatrixInt::CreateFromCache(bool aFromCache) const {
    if (fObject) return;
    fObject = NewIntObject<TMtxInt>(aFromCache);
}
MatrixInt::MatrixInt(int32_t aRows, int32_t aCols, TIntPrecision precision) {
    CreateFromCache(false);
    const int64_t n = int64_t(aRows) * aCols;
    if (aRows < 0 || aCols < 0 || n > INT32_MAX)
        ERangeErrorRaise("MatrixInt: Rows*Cols can not be larger than 2147483647!");
    Data().Size(aRows, aCols, precision);
}
MatrixInt::MatrixInt(bool aFromCache) { CreateFromCache(aFromCache); }
MatrixInt::MatrixInt(const TIntegerArray& values) { FromArray(Data(), values.data(), values.Length(), prInt32); }
MatrixInt::MatrixInt(const TRovaneInt& src) { CopyInt(Data(), src); }
MatrixInt& MatrixInt::Assign(const TRovaneInt& src) {
    CopyInt(Data(), src);
    return *this;
}
MatrixInt::operator TIntegerArray() const { return ShareInt<int32_t>(Data(), prInt32, kInt32Text); }
MatrixInt::operator TSmallIntArray() const { return ShareInt<int16_t>(Data(), prInt16, kInt16Text); }
MatrixInt::operator TByteArray() const { return ShareInt<uint8_t>(Data(), prInt8, kInt8Text); }
MatrixInt& MatrixInt::Size(int32_t aRows, int32_t aCols, TIntPrecision precision) {
    return Data().Size(aRows, aCols, precision), *this;
}
int32_t MatrixInt::operator[](int32_t i) const { return ReadElement(Data(), i); }
void MatrixInt::SetElement(int32_t i, int32_t value) { WriteElement(Data(), i, value); }

// ---------------------------------------------------------------------------
// Comparisons.
// ---------------------------------------------------------------------------
bool operator==(const VectorInt& l, const VectorInt& r) { return AllWith(Rel::Eq, l.Data(), r.Data()); }
bool operator==(const VectorInt& l, const TRovaneInt& r) { return AllWith(Rel::Eq, l.Data(), r); }
bool operator==(const VectorInt& l, int32_t r) { return AllWithValue(Rel::Eq, l.Data(), r); }
bool operator==(const MatrixInt& l, const MatrixInt& r) { return AllWith(Rel::Eq, l.Data(), r.Data()); }
bool operator==(const MatrixInt& l, const TRovaneInt& r) { return AllWith(Rel::Eq, l.Data(), r); }
bool operator==(const MatrixInt& l, int32_t r) { return AllWithValue(Rel::Eq, l.Data(), r); }

#define ROVANE_RECORD_INT_ORDER(OP, REL)                                                                        \
    bool operator OP(const VectorInt& l, const VectorInt& r) { return AllWith(REL, l.Data(), r.Data()); }       \
    bool operator OP(const VectorInt& l, int32_t r) { return AllWithValue(REL, l.Data(), r); }                  \
    bool operator OP(int32_t l, const VectorInt& r) { return AllWithValue(Mirror(REL), r.Data(), l); }          \
    bool operator OP(const MatrixInt& l, const MatrixInt& r) { return AllWith(REL, l.Data(), r.Data()); }       \
    bool operator OP(const MatrixInt& l, int32_t r) { return AllWithValue(REL, l.Data(), r); }                  \
    bool operator OP(int32_t l, const MatrixInt& r) { return AllWithValue(Mirror(REL), r.Data(), l); }
ROVANE_RECORD_INT_ORDER(<, Rel::Lt)
ROVANE_RECORD_INT_ORDER(<=, Rel::Le)
ROVANE_RECORD_INT_ORDER(>, Rel::Gt)
ROVANE_RECORD_INT_ORDER(>=, Rel::Ge)
#undef ROVANE_RECORD_INT_ORDER

// ---------------------------------------------------------------------------
// Functional forms of the integer vector: each on a copy of the source.
// ---------------------------------------------------------------------------
namespace {
template <class Op>
VectorInt OnCopy(const VectorInt& src, Op op) {
    VectorInt r;
    r.Data().Copy(src.Data());
    op(r.Data());
    return r;
}
}  // namespace
VectorInt Rotate(const VectorInt& src, int32_t offset) {
    return OnCopy(src, [=](TVecInt& v) { v.Rotate(offset); });
}
VectorInt Shift(const VectorInt& src, int32_t offset) {
    return OnCopy(src, [=](TVecInt& v) { v.Shift(offset); });
}
VectorInt SortAscend(const VectorInt& src) {
    return OnCopy(src, [](TVecInt& v) { v.SortAscend(); });
}
VectorInt SortDescend(const VectorInt& src) {
    return OnCopy(src, [](TVecInt& v) { v.SortDescend(); });
}
VectorInt Mag(const VectorInt& src) {
    return OnCopy(src, [](TVecInt& v) { v.Abs(); });
}
VectorInt Select(const VectorInt& src, int32_t index, int32_t len) {
    const TVecInt& s = src.Data();
    if (index < 0 || len < 0 || int64_t(index) + len > s.Length())
        ERangeErrorRaiseFmt("Select: Index = %d, Step = %d, Len = %d, Src.Length = %d", index, 1, len, s.Length());
    VectorInt r;
    r.Data().Size(len, s.IntPrecision());
    if (len > 0) r.Data().Copy(s, index, 0, len);
    return r;
}
double Mean(const VectorInt& src) {
    const int32_t n = src.Data().Length();
    return n == 0 ? 0.0 : double(src.Data().Sum()) / n;
}

#include "rovane/records/generated/VectorInt.members.inc"
#include "rovane/records/generated/MatrixInt.members.inc"
#include "rovane/records/generated/FreeInt.inc"

}  // namespace rovane
