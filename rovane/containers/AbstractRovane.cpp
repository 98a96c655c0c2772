// TRovane: element views, complexity and precision, copy and fill.
#include "rovane/containers/AbstractRovane.h"

#include <cmath>
#include <cstring>

#include "rovane/containers/OperationFrame.h"
#include "rovane/scalars/RovaneUtils.h"

namespace rovane {

namespace detail {
template <class I>
I RoundSaturate(double v, TRounding rounding);  // containers/IntCopies.cpp
}

using namespace frame;

constinit std::atomic<bool> VecConditionCheckDefault{true};
constinit std::atomic<bool> MtxConditionCheckDefault{true};
constinit std::atomic<bool> AssignCopiesValues{true};

namespace {

// Element conversion between any two float element types. Complex to real
// keeps the real part; real to complex gives a zero imaginary part. A change
// of width runs through the conversion primitive (complex data as pairs of
// reals); a change of kind is a plain loop the compiler vectorises, since it
// only moves parts.
template <class S, class D>
void ConvertElements(const S* src, D* dst, int32_t n) {
    if constexpr (std::is_same_v<S, D>) {
        std::memmove(dst, src, sizeof(S) * static_cast<size_t>(n));
    } else if constexpr (IsComplex<S> == IsComplex<D>) {
        constexpr int32_t k = IsComplex<S> ? 2 : 1;
        prim::Convert(reinterpret_cast<const RealOf<S>*>(src), 0, reinterpret_cast<RealOf<D>*>(dst), 0, k * n);
    } else if constexpr (IsComplex<D>) {
        using F = RealOf<D>;
        for (int32_t i = 0; i < n; ++i) dst[i] = D(static_cast<F>(src[i]), F(0));
    } else {
        for (int32_t i = 0; i < n; ++i) dst[i] = static_cast<D>(src[i].Re);
    }
}

// Copies len elements of `src` from srcIndex to `dst` at index, each in its
// own storage class.
void CopyElements(const TRovane& src, int32_t srcIndex, TRovane& dst, int32_t index, int32_t len) {
    ByPrecision(src.fFloatPrecision, [&](auto s) {
        using S = decltype(s);
        ByPrecision(dst.fFloatPrecision, [&](auto d) {
            using D = decltype(d);
            ConvertElements(Base<S>(src) + Offset<S>(src) + srcIndex, Base<D>(dst) + Offset<D>(dst) + index, len);
        });
    });
}

int32_t BytesPerElement(TMtxFloatPrecision p) {
    static constexpr int32_t bytes[] = {4, 8, 8, 16};
    return bytes[p];
}

TMtxFloatPrecision PrecisionOf(bool complex, bool isDouble) {
    return static_cast<TMtxFloatPrecision>((complex ? 2 : 0) + (isDouble ? 1 : 0));
}

}  // namespace

TRovane::TRovane() = default;

// ---------------------------------------------------------------------------
// Views and memory.
// ---------------------------------------------------------------------------
void TRovane::HookPointers() {
    ipoint = ValuesPointer && !fIsSubRange && aPoint
                 ? reinterpret_cast<int32_t*>(static_cast<char*>(ValuesPointer) - 8)
                 : nullptr;
    if (ValuesPointer && !aPoint && fCacheIndex >= 0 && !fIsSubRange && fActualSizeInBytes > 0)
        ipoint = reinterpret_cast<int32_t*>(static_cast<char*>(ValuesPointer) - 8);
    if (!ValuesPointer && !fIsSubRange) {
        SData = nullptr;
        CData = nullptr;
        SSData = nullptr;
        SCData = nullptr;
    }
    if (fIsDouble) {
        Values = Values1D = static_cast<double*>(ValuesPointer);
        CValues = CValues1D = static_cast<TCplx*>(ValuesPointer);
        SValues = SValues1D = nullptr;
        SCValues = SCValues1D = nullptr;
    } else {
        SValues = SValues1D = static_cast<float*>(ValuesPointer);
        SCValues = SCValues1D = static_cast<TSCplx*>(ValuesPointer);
        Values = Values1D = nullptr;
        CValues = CValues1D = nullptr;
    }
}

std::string TRovane::GetRealValues() const {
    const int64_t reals = fComplex ? 2 * int64_t(fLength) : fLength;
    std::string out;
    for (int64_t i = 0; i < reals && i < RealValuesLimit; ++i) {
        if (i) out += '\n';
        out += fIsDouble ? SampleToStr(Values1D[i]) : SampleToStrf(SValues1D[i]);
    }
    if (reals > RealValuesLimit) out += "\n...";
    return out;
}

std::string TRovane::GetComplexValues() const {
    std::string out;
    for (int32_t i = 0; i < fLength && i < RealValuesLimit; ++i) {
        if (i) out += '\n';
        if (fIsDouble)
            out += CplxToStr(fComplex ? CValues1D[i] : TCplx(Values1D[i], 0));
        else
            out += CplxToStr(fComplex ? SCValues1D[i] : TSCplx(SValues1D[i], 0));
    }
    if (fLength > RealValuesLimit) out += "\n...";
    return out;
}

std::string TRovane::DestroyProblem() const {
    if (fIsSubRange && fSubRangeLevel > 0)
        return FormatText("TRovane.Destroy: IsSubRange = True, SubRangeLevel = %d", {fSubRangeLevel});
    return TRovaneSample::DestroyProblem();
}

void TRovane::AllocMemory() {
    AllocOwnedBlock();
    SetBaseViews(ValuesPointer);
    FDataOffset = 0;
    FCDataOffset = 0;
}

void TRovane::AllocCacheMemory() {
    ValuesPointer = fIsDouble ? DoubleCachePointer() : SingleCachePointer();
    SetBaseViews(ValuesPointer);
    AllocSize = 0;
    FDataOffset = 0;
    FCDataOffset = 0;
    fActualSizeInBytes = CacheLengthInBytes();
}

int32_t TRovane::ElemSize() const { return BytesPerElement(fFloatPrecision); }

void TRovane::SetCapacityInElements(int32_t count) {
    SetCapacityInBytes(int64_t(count) * BytesPerElement(fFloatPrecision));
}

int32_t TRovane::GetCapacityInElements() {
    return static_cast<int32_t>(fCapacityInBytes / BytesPerElement(fFloatPrecision));
}

void TRovane::setIsDouble(bool value) {
    if (value != fIsDouble) Size(*this, PrecisionOf(fComplex, value));
}

void TRovane::SubRangeLoadState() {
    fActualSizeInBytes = SActualSize;
    fLength = SLength;
    fComplex = SComplex;
    fFloatPrecision = SFloatPrecision;
    fIsDouble = SIsDouble;
    FDataOffset = SOffset;
    FCDataOffset = COffset;
    ValuesPointer = SValuesPointer;
    const size_t offsetBytes = fComplex ? size_t(FCDataOffset) * BytesPerElement(fFloatPrecision)
                                        : size_t(FDataOffset) * BytesPerElement(fFloatPrecision);
    SetBaseViews(ValuesPointer ? static_cast<char*>(ValuesPointer) - offsetBytes : nullptr);
}

template <class T>
TArray<T> TRovane::ShareBlock(bool wantDouble) {
    if (fLength == 0 || !ValuesPointer) return TArray<T>();
    if (fIsSubRange || !ipoint) ERaise("TRovane.Values: a sub-range or adopted memory has no array header");
    if (wantDouble != fIsDouble) return TArray<T>();
    return TArray<T>::Share(static_cast<T*>(ValuesPointer));
}

TDoubleArray TRovane::ValuesArray() { return ShareBlock<double>(true); }
TCplxArray TRovane::CValuesArray() { return ShareBlock<TCplx>(true); }
TSingleArray TRovane::SValuesArray() { return ShareBlock<float>(false); }
TSCplxArray TRovane::SCValuesArray() { return ShareBlock<TSCplx>(false); }

void TRovane::Assign(const TRovaneBase& src) {
    const auto* s = dynamic_cast<const TRovane*>(&src);
    if (!s) ERaise("TRovane.Assign: Src Type is not the same as Dst Type!");
    TRovaneBase::Assign(src);
    fPrecision = s->fPrecision;
    fRounding = s->fRounding;
    FDirty = s->FDirty;
    fZeroTolerance = s->fZeroTolerance;
    Alfa = s->Alfa;
    Beta = s->Beta;
}

// ---------------------------------------------------------------------------
// Complexity and precision.
// ---------------------------------------------------------------------------
void TRovane::SetComplex(bool value) {
    if (value == fComplex) return;
    fComplex = value;
    static constexpr TMtxFloatPrecision flipped[] = {rvSingleComplex, rvDoubleComplex, rvSingle, rvDouble};
    fFloatPrecision = flipped[fFloatPrecision];
    DoSetComplex();
}

void TRovane::SetFloatPrecision(TMtxFloatPrecision value) {
    if (value != fFloatPrecision) Size(*this, value);
}

TRovane& TRovane::ExtendToComplex(bool zeros) {
    if (fComplex) return *this;
    CachedVec t;
    t->Copy(*this);
    Size(*this, true);
    ExtendToComplex(*t, zeros, 0, 0, fLength);
    return *this;
}

TRovane& TRovane::ExtendToComplex(const TRovane& src, bool zeros) {
    if (&src == this) EInvalidArgumentRaise("Self = Src");
    if (src.fComplex) return Copy(src);
    Size(src, true);
    return ExtendToComplex(src, zeros, 0, 0, fLength);
}

TRovane& TRovane::ExtendToComplex(const TRovane& src, bool zeros, int32_t srcIndex, int32_t index, int32_t len) {
    if (&src == this) EInvalidArgumentRaise("Self = Src");
    // The ranges are checked as by ValidateParams; the widths may differ,
    // since the values are converted on the way.
    if (len == -1) len = range::RestFrom(fLength, index);
    if (fConditionCheck) {
        if (range::OutOfRange(srcIndex, len, src.fLength))
            ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", srcIndex, len,
                                src.fLength);
        if (range::OutOfRange(index, len, fLength))
            ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    }
    if (!fComplex) ExtendToComplex(true);
    if (len <= 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = ComplexOf<F>;
        C* dst = Base<C>(*this) + Offset<C>(*this) + index;
        ByPrecision(src.fFloatPrecision, [&](auto s) {
            using S = decltype(s);
            const S* p = Base<S>(src) + Offset<S>(src) + srcIndex;
            for (int32_t i = 0; i < len; ++i) {
                // A complex source is copied whole; a real one gives the real
                // parts, and zero or the same value as imaginary parts.
                if constexpr (IsComplex<S>) {
                    const F re = static_cast<F>(p[i].Re), im = static_cast<F>(p[i].Im);
                    dst[i] = C(re, im);
                } else {
                    const F re = static_cast<F>(p[i]);
                    dst[i] = C(re, zeros ? F(0) : re);
                }
            }
        });
    });
    return *this;
}

// ---------------------------------------------------------------------------
// Copy family.
// ---------------------------------------------------------------------------
TRovane& TRovane::Copy(const TRovane& vec) {
    if (fConditionCheck && &vec == this) EInvalidArgumentRaise("TRovane.Copy: Vec = Self");
    Size(vec);
    if (fLength > 0) CopyElements(vec, 0, *this, 0, fLength);
    return *this;
}

TRovane& TRovane::Copy(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    ValidateParams(vec, vecIndex, index, len);
    if (vec.fComplex && !fComplex) ExtendToComplex(true);
    if (len > 0) CopyElements(vec, vecIndex, *this, index, len);
    return *this;
}

TRovane& TRovane::Copy(const TRovane& vec, TMtxFloatPrecision precision) {
    vec.CopyTo(*this, precision);
    return *this;
}

TRovane& TRovane::CopyTo(TRovane& dst) const { return CopyTo(dst, fFloatPrecision); }

TRovane& TRovane::CopyTo(TRovane& dst, TMtxFloatPrecision precision) const {
    if (&dst == this) {
        if (precision == fFloatPrecision) return dst;
        CachedVec t;
        t->Copy(*this);
        return t->CopyTo(dst, precision);
    }
    dst.Size(*this, precision);
    if (dst.fLength > 0) CopyElements(*this, 0, dst, 0, dst.fLength);
    return dst;
}

TRovane& TRovane::CopyTo(TRovane& dst, int32_t dstIndex, int32_t index, int32_t len) const {
    // The checks of ValidateParams but the last: the width may differ here,
    // since this copy converts between single and double.
    if (len == -1) len = range::RestFrom(dst.fLength, dstIndex);
    if (dst.fConditionCheck) {
        if (&dst == this) EInvalidArgumentRaise("Invalid params: X is equal to Self");
        if (index < 0 || int64_t(index) + len > fLength)
            ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", index, len, fLength);
        if (range::OutOfRange(dstIndex, len, dst.fLength))
            ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", dstIndex, len,
                                dst.fLength);
    }
    if (fIsDouble != dst.fIsDouble && fComplex != dst.fComplex)
        EInvalidArgumentRaise("CopyTo: (IsDouble <> Dst.IsDouble) and (Complex <> Dst.Complex)");
    if (fComplex && !dst.fComplex) dst.ExtendToComplex(true);
    if (len > 0) CopyElements(*this, index, dst, dstIndex, len);
    return dst;
}

// ---------------------------------------------------------------------------
// Fill and element access.
// ---------------------------------------------------------------------------
TRovane& TRovane::SetVal(double value) { return SetVal(value, 0, fLength); }

TRovane& TRovane::SetVal(double value, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (len == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        using F = RealOf<T>;
        T* p = Base<T>(*this) + Offset<T>(*this) + index;
        T v;
        if constexpr (IsComplex<T>)
            v = T(static_cast<F>(value), F(0));
        else
            v = static_cast<F>(value);
        std::fill(p, p + len, v);
    });
    return *this;
}

TRovane& TRovane::SetVal(const TCplx& value) {
    if (!fComplex) Size(*this, true);  // the data are overwritten anyway
    return SetVal(value, 0, fLength);
}

TRovane& TRovane::SetVal(const TCplx& value, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (!fComplex) ExtendToComplex(true);
    if (len == 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = ComplexOf<F>;
        C* p = Base<C>(*this) + Offset<C>(*this) + index;
        std::fill(p, p + len, Narrow<F>(value));
    });
    return *this;
}

TRovane& TRovane::SetZero() { return SetVal(0.0); }
TRovane& TRovane::SetZero(int32_t index, int32_t len) { return SetVal(0.0, index, len); }

TRovane& TRovane::SetIt(std::initializer_list<double> values) { return SetIt(false, values); }
TRovane& TRovane::SetCplx(std::initializer_list<double> values) { return SetIt(true, values); }
TRovane& TRovane::SetIt(std::span<const double> values) { return SetIt(false, values); }

TRovane& TRovane::SetIt(bool complex, std::span<const double> values) {
    const auto n = static_cast<int32_t>(values.size());
    if (complex && n % 2 != 0) EInvalidArgumentRaise("SetIt: odd number of values for complex data");
    Size(*this, complex ? PrecisionOf(true, fIsDouble) : PrecisionOf(false, fIsDouble));
    TRovane::SetLength(complex ? n / 2 : n);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        F* p = Base<F>(*this) + FDataOffset;
        for (int32_t i = 0; i < n; ++i) p[i] = static_cast<F>(values[static_cast<size_t>(i)]);
    });
    return *this;
}

namespace {
template <class A>
void OverwriteFrom(TRovane& self, std::span<const A> values) {
    const int32_t real = self.fComplex ? 2 * self.fLength : self.fLength;
    const auto n = static_cast<int32_t>(values.size());
    if (self.fConditionCheck && n > real)
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", 0, n, real);
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        F* p = Base<F>(self) + self.FDataOffset;
        for (int32_t i = 0; i < n; ++i) p[i] = static_cast<F>(values[static_cast<size_t>(i)]);
    });
}
}  // namespace

TRovane& TRovane::SetDouble(std::span<const double> values) {
    OverwriteFrom(*this, values);
    return *this;
}
TRovane& TRovane::SetSingle(std::span<const float> values) {
    OverwriteFrom(*this, values);
    return *this;
}
TRovane& TRovane::SetInteger(std::span<const int32_t> values) {
    OverwriteFrom(*this, values);
    return *this;
}

double TRovane::First() const { return GetElement(0); }
double TRovane::Last() const { return GetElement(fComplex ? 2 * fLength - 1 : fLength - 1); }

TCplx TRovane::Firstc() const {
    if (!fComplex) return TCplx(GetElement(0), 0);
    return fIsDouble ? CValues[0] : TCplx(SCValues[0]);
}

TCplx TRovane::Lastc() const {
    if (!fComplex) return TCplx(GetElement(fLength - 1), 0);
    return fIsDouble ? CValues[fLength - 1] : TCplx(SCValues[fLength - 1]);
}

// ---------------------------------------------------------------------------
// Array transfers.
// ---------------------------------------------------------------------------
template <class T>
TRovane& TRovane::CopyFromArrayT(std::span<const T> src, int32_t srcIndex, int32_t index, int32_t len) {
    const auto srcLen = static_cast<int32_t>(src.size());
    if (fLength == 0 && index == 0 && len == -1 && !fIsSubRange && srcIndex >= 0 && srcIndex < srcLen) {
        // An empty Self takes the array's size instead of copying nothing.
        const int32_t n = srcLen - srcIndex;
        if constexpr (IsComplexElement<T>) {
            Size(*this, PrecisionOf(true, fIsDouble));
            TRovane::SetLength(n);
        } else {
            if (fComplex && n % 2 != 0)
                EInvalidArgumentRaiseFmt("CopyFromArray: odd number of values for complex data: %d", n);
            TRovane::SetLength(fComplex ? n / 2 : n);
        }
    }
    if constexpr (IsComplexElement<T>) {
        ValidateCplxArrayIndexes(srcIndex, srcLen, index, len);
    } else {
        ValidateRealArrayIndexes(srcIndex, srcLen, index, len);
    }
    if (len <= 0) return *this;
    if constexpr (IsComplexElement<T>) {
        ByWidth(fIsDouble, [&](auto f) {
            using C = ComplexOf<decltype(f)>;
            ConvertElements(src.data() + srcIndex, Base<C>(*this) + Offset<C>(*this) + index, len);
        });
    } else {
        // len counts reals here (doubled for complex data).
        ByWidth(fIsDouble, [&](auto f) {
            using F = decltype(f);
            F* dst = Base<F>(*this) + FDataOffset + (fComplex ? 2 * index : index);
            for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<F>(src[static_cast<size_t>(srcIndex + i)]);
        });
    }
    return *this;
}

TRovane& TRovane::CopyFromArray(std::span<const double> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const float> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const TCplx> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const TSCplx> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const int32_t> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const int16_t> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }
TRovane& TRovane::CopyFromArray(std::span<const uint8_t> s, int32_t si, int32_t i, int32_t n) { return CopyFromArrayT(s, si, i, n); }

template <class T>
void TRovane::CopyToArrayT(TArray<T>& dst, TRounding rounding, int32_t dstIndex, int32_t index, int32_t len) const {
    ValidateParams(index, len);
    const int32_t count = IsComplexElement<T> || !fComplex ? len : 2 * len;
    if (fConditionCheck && (dstIndex < 0 || int64_t(dstIndex) + count > dst.Length()))
        ERangeErrorRaiseFmt("CopyToArray: (DstIndex + Len) > Dst.Length, (%d + %d) > %d", dstIndex, count,
                            dst.Length());
    if (count <= 0) return;
    if constexpr (IsComplexElement<T>) {
        ByPrecision(fFloatPrecision, [&](auto s) {
            using S = decltype(s);
            ConvertElements(Base<S>(*this) + Offset<S>(*this) + index, dst.data() + dstIndex, count);
        });
    } else {
        ByWidth(fIsDouble, [&](auto f) {
            using F = decltype(f);
            const F* p = Base<F>(*this) + FDataOffset + (fComplex ? 2 * index : index);
            for (int32_t i = 0; i < count; ++i) {
                if constexpr (std::is_floating_point_v<T>) {
                    dst[dstIndex + i] = static_cast<T>(p[i]);
                } else {
                    dst[dstIndex + i] = detail::RoundSaturate<T>(double(p[i]), rounding);
                }
            }
        });
    }
}

void TRovane::CopyToArray(TDoubleArray& d, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, rnTrunc, di, i, n); }
void TRovane::CopyToArray(TSingleArray& d, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, rnTrunc, di, i, n); }
void TRovane::CopyToArray(TCplxArray& d, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, rnTrunc, di, i, n); }
void TRovane::CopyToArray(TSCplxArray& d, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, rnTrunc, di, i, n); }
void TRovane::CopyToArray(TIntegerArray& d, TRounding r, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, r, di, i, n); }
void TRovane::CopyToArray(TSmallIntArray& d, TRounding r, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, r, di, i, n); }
void TRovane::CopyToArray(TByteArray& d, TRounding r, int32_t di, int32_t i, int32_t n) const { CopyToArrayT(d, r, di, i, n); }

// ---------------------------------------------------------------------------
// TDenseRovane.
// ---------------------------------------------------------------------------
TDenseRovane::TDenseRovane() = default;

void TDenseRovane::Assign(const TRovaneBase& src) {
    TRovane::Assign(src);
    if (const auto* s = dynamic_cast<const TDenseRovane*>(&src)) {
        fFFTStorageFormat = s->fFFTStorageFormat;
        fFFTScrambledOrder = s->fFFTScrambledOrder;
        fFFTOddLength = s->fFFTOddLength;
    }
}

}  // namespace rovane
