// The integer family's reductions, searches, moves, fills, sorts,
// thresholds and matrix reshuffles.
#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "rovane/containers/IntegerFrame.h"
#include "rovane/containers/SelectionSort.h"
#include "rovane/storage/ObjectCache.h"

namespace rovane {

using namespace intframe;

namespace {

// A TVecInt from the calling thread's cache, given back on scope exit.
class CachedInt {
public:
    CachedInt() { CreateIt(fVec); }
    ~CachedInt() {
        try {
            FreeIt(fVec);
        } catch (...) {
        }
    }
    CachedInt(const CachedInt&) = delete;
    CachedInt& operator=(const CachedInt&) = delete;
    TVecInt& operator*() const { return *fVec; }
    TVecInt* operator->() const { return fVec; }

private:
    TVecInt* fVec = nullptr;
};

// Reads all elements of the range as 64-bit values.
template <class Fn>
void EachValue(const TRovaneInt& o, int32_t index, int32_t len, Fn&& fn) {
    ByWidth(o.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(o, index);
        for (int32_t i = 0; i < len; ++i) fn(i, int64_t(x[i]));
    });
}

}  // namespace

// ---- reductions ----------------------------------------------------------------
int64_t TRovaneInt::Sum() const { return Sum(0, fLength); }
int64_t TRovaneInt::Sum(int32_t index, int32_t len) const {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    int64_t s = 0;
    EachValue(*this, index, len, [&](int32_t, int64_t v) { s += v; });
    return s;
}

int32_t TRovaneInt::Max() const { return Max(0, fLength); }
int32_t TRovaneInt::Min() const { return Min(0, fLength); }
int32_t TRovaneInt::Max(int32_t index, int32_t len) const {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    if (len == 0) EInvalidArgumentRaise("TVecInt.Max: Length = 0");
    int64_t m = INT64_MIN;
    EachValue(*this, index, len, [&](int32_t, int64_t v) { m = v > m ? v : m; });
    return static_cast<int32_t>(m);
}
int32_t TRovaneInt::Min(int32_t index, int32_t len) const {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    if (len == 0) EInvalidArgumentRaise("TVecInt.Min: Length = 0");
    int64_t m = INT64_MAX;
    EachValue(*this, index, len, [&](int32_t, int64_t v) { m = v < m ? v : m; });
    return static_cast<int32_t>(m);
}
void TRovaneInt::MaxMin(int32_t& aMax, int32_t& aMin) const {
    int32_t i1, i2;
    MaxMinIdx(aMax, i1, aMin, i2);
}
void TRovaneInt::MaxMinIdx(int32_t& aMax, int32_t& aMaxIdx, int32_t& aMin, int32_t& aMinIdx) const {
    if (fLength == 0) EInvalidArgumentRaise("TVecInt.MaxMinIdx: Length = 0");
    int64_t mx = INT64_MIN, mn = INT64_MAX;
    aMaxIdx = aMinIdx = 0;
    // The first of equal extremes wins.
    EachValue(*this, 0, fLength, [&](int32_t i, int64_t v) {
        if (v > mx) mx = v, aMaxIdx = i;
        if (v < mn) mn = v, aMinIdx = i;
    });
    aMax = static_cast<int32_t>(mx);
    aMin = static_cast<int32_t>(mn);
}
int32_t TRovaneInt::Median() const {
    if (fLength == 0) EInvalidArgumentRaise("TVecInt.Median: Length = 0");
    std::vector<int32_t> v(static_cast<size_t>(fLength));
    for (int32_t i = 0; i < fLength; ++i) v[i] = GetElement(i);
    const size_t mid = (v.size() - 1) / 2;
    std::nth_element(v.begin(), v.begin() + mid, v.end());
    return v[mid];
}
int32_t TRovaneInt::CountInRange(int32_t low, int32_t high) const {
    int32_t c = 0;
    EachValue(*this, 0, fLength, [&](int32_t, int64_t v) { c += v >= low && v <= high; });
    return c;
}

TRovaneInt& TRovaneInt::Distinct(const TRovaneInt& src) {
    CachedInt tmp;
    tmp->Copy(src);
    tmp->SortAscend();
    Size(tmp->fLength, src.fIntPrecision);
    int32_t k = 0;
    for (int32_t i = 0; i < tmp->fLength; ++i) {
        const int32_t v = tmp->GetElement(i);
        if (i == 0 || v != GetElement(k - 1)) PutElement(k++, v);
    }
    Resize(k);
    return *this;
}

TRovaneInt& TRovaneInt::GroupCount(const TRovaneInt& src, int32_t maxValue) {
    if (&src == this) EInvalidArgumentRaise("TVecInt.GroupCount: Src = Self");
    if (maxValue < 0) maxValue = src.fLength > 0 ? src.Max() : -1;
    if (maxValue == INT32_MAX) ERangeErrorRaise("TVecInt.GroupCount: MaxValue + 1 > MaxInt");
    Size(maxValue + 1, prInt32);
    SetZero();
    return GroupCountIteration(src, 0, src.fLength);
}

TRovaneInt& TRovaneInt::GroupCountIteration(const TRovaneInt& src, int32_t index, int32_t len) {
    len = ResolveLen(src, index, len);
    CheckSrcRange(src, index, len);
    if (fIntPrecision != prInt32) EInvalidArgumentRaise("TVecInt.GroupCount: IntPrecision <> prInt32");
    int32_t* d = At<int32_t>(*this);
    // A value outside 0 .. Length - 1 has no bin and is not counted.
    EachValue(src, index, len, [&](int32_t, int64_t v) {
        if (v >= 0 && v < fLength) ++d[v];
    });
    return *this;
}

// ---- search --------------------------------------------------------------------
int32_t TRovaneInt::Find(int32_t value) const {
    int32_t found = -1;
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(*this);
        for (int32_t i = 0; i < fLength; ++i)
            if (int64_t(x[i]) == value) {
                found = i;
                return;
            }
    });
    return found;
}

bool TRovaneInt::BinarySearch(int32_t value) const {
    int32_t i;
    return BinarySearch(value, i, 0, fLength);
}
bool TRovaneInt::BinarySearch(int32_t value, int32_t& xIndex) const { return BinarySearch(value, xIndex, 0, fLength); }
bool TRovaneInt::BinarySearch(int32_t value, int32_t& xIndex, int32_t index, int32_t len) const {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    return ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(*this);
        return select::BinarySearchRun(
            index, len, xIndex, [&](int32_t m) { return int64_t(x[m]) > value; },
            [&](int32_t m) { return int64_t(x[m]) < value; });
    });
}

bool TRovaneInt::IsEqual(const TRovaneInt& vec) const {
    if (vec.fLength != fLength || vec.fIntPrecision != fIntPrecision) return false;
    return fLength == 0 || std::memcmp(ValuesPointer, vec.ValuesPointer, size_t(fLength) * ElemSize()) == 0;
}

// ---- moves and fills --------------------------------------------------------------
TRovaneInt& TRovaneInt::Copy(const TRovaneInt& src) {
    if (&src == this) return *this;
    Size(src);
    if (fIntPrecision != src.fIntPrecision) return Convert(src, fIntPrecision);
    if (fLength > 0) std::memmove(ValuesPointer, src.ValuesPointer, size_t(fLength) * ElemSize());
    FBitCount = src.FBitCount;
    return *this;
}

TRovaneInt& TRovaneInt::Copy(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    if (src.fIntPrecision != fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    CheckSrcRange(src, srcIndex, len);
    CheckSelfRange(*this, index, len);
    if (len > 0)
        std::memmove(static_cast<char*>(ValuesPointer) + int64_t(index) * ElemSize(),
                     static_cast<const char*>(src.ValuesPointer) + int64_t(srcIndex) * ElemSize(),
                     size_t(len) * ElemSize());
    return *this;
}

TRovaneInt& TRovaneInt::Convert(const TRovaneInt& src, TIntPrecision precision) {
    // Through 64-bit values, so that Src may be Self.
    std::vector<int64_t> v(static_cast<size_t>(src.fLength));
    EachValue(src, 0, src.fLength, [&](int32_t i, int64_t x) { v[i] = x; });
    Size(src.fLength, precision);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this);
        for (size_t i = 0; i < v.size(); ++i) d[i] = Saturate<T>(v[i]);
    });
    return *this;
}

TRovaneInt& TRovaneInt::SetVal(int32_t value) { return SetVal(value, 0, fLength); }
TRovaneInt& TRovaneInt::SetVal(int32_t value, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        std::fill_n(At<T>(*this, index), len, static_cast<T>(value));
    });
    return *this;
}
TRovaneInt& TRovaneInt::SetZero() { return SetVal(0); }
TRovaneInt& TRovaneInt::SetZero(int32_t index, int32_t len) { return SetVal(0, index, len); }

TRovaneInt& TRovaneInt::SetIt(std::initializer_list<int32_t> values) {
    return SetIt(std::span<const int32_t>(values.begin(), values.size()));
}
TRovaneInt& TRovaneInt::SetIt(std::span<const int32_t> values) {
    if (values.size() > size_t(INT32_MAX)) ERangeErrorRaise("TVecInt.SetIt: too many values");
    Size(static_cast<int32_t>(values.size()));
    return SetIt(0, values);
}
TRovaneInt& TRovaneInt::SetIt(int32_t index, std::span<const int32_t> values) {
    CheckSelfRange(*this, index, static_cast<int32_t>(std::min<size_t>(values.size(), INT32_MAX)));
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this, index);
        for (size_t i = 0; i < values.size(); ++i) d[i] = Saturate<T>(values[i]);
    });
    return *this;
}

TRovaneInt& TRovaneInt::Ramp() { return Ramp(0, 1); }
TRovaneInt& TRovaneInt::Ramp(int32_t offset, int32_t step) { return Ramp(offset, step, 0, fLength); }
TRovaneInt& TRovaneInt::Ramp(int32_t offset, int32_t step, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this, index);
        for (int32_t i = 0; i < len; ++i)
            d[i] = static_cast<T>(static_cast<uint32_t>(offset) + static_cast<uint32_t>(i) * static_cast<uint32_t>(step));
    });
    return *this;
}

TRovaneInt& TRovaneInt::RandomRamp() {
    Ramp();
    std::vector<int32_t> v(static_cast<size_t>(fLength));
    for (int32_t i = 0; i < fLength; ++i) v[i] = GetElement(i);
    std::shuffle(v.begin(), v.end(), std::mt19937(std::random_device{}()));
    for (int32_t i = 0; i < fLength; ++i) PutElement(i, v[i]);
    return *this;
}

TRovaneInt& TRovaneInt::Reverse() { return Reverse(0, fLength); }
TRovaneInt& TRovaneInt::Reverse(int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        std::reverse(At<T>(*this, index), At<T>(*this, index) + len);
    });
    return *this;
}
TRovaneInt& TRovaneInt::Reverse(const TRovaneInt& src) {
    if (&src == this) EInvalidArgumentRaise("Self = Vec");
    Copy(src);
    return Reverse();
}

TRovaneInt& TRovaneInt::Rotate(int32_t offset) { return Rotate(offset, 0, fLength); }
TRovaneInt& TRovaneInt::Rotate(int32_t offset, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    const int32_t r = select::RotateCount(offset, len);
    if (r == 0) return *this;
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* p = At<T>(*this, index);
        std::rotate(p, p + (len - r), p + len);
    });
    return *this;
}

TRovaneInt& TRovaneInt::Shift(int32_t offset) { return Shift(offset, 0, fLength); }
TRovaneInt& TRovaneInt::Shift(int32_t offset, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    if (offset == 0 || int64_t(offset) >= len || -int64_t(offset) >= len) return *this;
    char* p = static_cast<char*>(ValuesPointer) + int64_t(index) * ElemSize();
    const int64_t e = ElemSize();
    if (offset > 0)
        std::memmove(p + offset * e, p, size_t(len - offset) * e);
    else
        std::memmove(p, p - offset * e, size_t(len + offset) * e);
    return *this;
}

namespace {
template <bool Desc>
TRovaneInt& SortInt(TRovaneInt& self, int32_t index, int32_t len, TVecInt* indexVec, bool withIndex) {
    len = ResolveLen(self, index, len);
    CheckSelfRange(self, index, len);
    if (withIndex && !indexVec) EInvalidArgumentRaise("IndexVec = nil");
    if (withIndex) {
        if (static_cast<TRovaneInt*>(indexVec) == &self) EInvalidArgumentRaise("IndexVec = Self");
        indexVec->Size(len, prInt32);
        if (indexVec->fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
        indexVec->Ramp();
    }
    if (len < 2) return self;
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* p = At<T>(self, index);
        if (withIndex)
            select::QuickSortKeyed<Desc>(p, At<int32_t>(*indexVec), len);
        else if constexpr (Desc)
            std::sort(p, p + len, [](T a, T b) { return a > b; });
        else
            std::sort(p, p + len);
    });
    return self;
}
}  // namespace

TRovaneInt& TRovaneInt::SortAscend() { return SortInt<false>(*this, 0, fLength, nullptr, false); }
TRovaneInt& TRovaneInt::SortAscend(int32_t index, int32_t len) { return SortInt<false>(*this, index, len, nullptr, false); }
TRovaneInt& TRovaneInt::SortAscend(TVecInt* indexVec) { return SortInt<false>(*this, 0, fLength, indexVec, true); }
TRovaneInt& TRovaneInt::SortDescend() { return SortInt<true>(*this, 0, fLength, nullptr, false); }
TRovaneInt& TRovaneInt::SortDescend(int32_t index, int32_t len) { return SortInt<true>(*this, index, len, nullptr, false); }
TRovaneInt& TRovaneInt::SortDescend(TVecInt* indexVec) { return SortInt<true>(*this, 0, fLength, indexVec, true); }

TRovaneInt& TRovaneInt::CumSum(const TRovaneInt& src) {
    if (&src != this) Size(src);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(src);
        T* d = At<T>(*this);
        int64_t s = 0;
        for (int32_t i = 0; i < src.fLength; ++i) {
            s = std::clamp<int64_t>(s + x[i], Lo<T>, Hi<T>);
            d[i] = static_cast<T>(s);
        }
    });
    return *this;
}

TRovaneInt& TRovaneInt::Difference(const TRovaneInt& src, int32_t lag) {
    if (&src == this) EInvalidArgumentRaise("TVecInt.Difference: Src = Self");
    if (lag < 1) EInvalidArgumentRaise("TVecInt.Difference: Lag < 1");
    const int32_t n = src.fLength > lag ? src.fLength - lag : 0;
    Size(n, src.fIntPrecision);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(src);
        T* d = At<T>(*this);
        for (int32_t i = 0; i < n; ++i) d[i] = Saturate<T>(int64_t(x[i + lag]) - x[i]);
    });
    return *this;
}

TRovaneInt& TRovaneInt::GatherByIncr(const TRovaneInt& x, int32_t increment, int32_t offset) {
    if (&x == this) EInvalidArgumentRaise("TVecInt.GatherByIncr: X = Self");
    if (increment <= 0) EInvalidArgumentRaise("TVecInt.GatherByIncr: Increment <= 0");
    if (offset < 0) EInvalidArgumentRaise("TVecInt.GatherByIncr: Offset < 0");
    const int64_t n = offset < x.fLength ? (int64_t(x.fLength) - offset + increment - 1) / increment : 0;
    Size(static_cast<int32_t>(n), x.fIntPrecision);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(x, offset);
        T* d = At<T>(*this);
        for (int64_t k = 0; k < n; ++k) d[k] = s[k * increment];
    });
    return *this;
}

TRovaneInt& TRovaneInt::GatherByIndex(const TRovaneInt& x, const TVecInt& indexes) {
    if (&x == this) EInvalidArgumentRaise("TVecInt.GatherByIndex: X = Self");
    if (indexes.fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
    const int32_t* ix = At<int32_t>(indexes);
    for (int32_t k = 0; k < indexes.fLength; ++k)
        if (ix[k] < 0 || ix[k] >= x.fLength)
            ERangeErrorRaiseFmt("TVecInt.GatherByIndex: Indexes[%d] = %d out of range", k, ix[k]);
    Size(indexes.fLength, x.fIntPrecision);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(x);
        T* d = At<T>(*this);
        for (int32_t k = 0; k < indexes.fLength; ++k) d[k] = s[ix[k]];
    });
    return *this;
}

TRovaneInt& TRovaneInt::GatherByMask(const TRovaneInt& x, const TRovaneInt& mask, int32_t maskNonZeroCount) {
    if (&x == this) EInvalidArgumentRaise("TVecInt.GatherMyMask: X = Self");
    if (mask.fIntPrecision != prInt32) EInvalidArgumentRaise("TVecInt.GatherMyMask: Mask.IntPrecision <> prInt32");
    if (x.fLength < mask.fLength) EInvalidArgumentRaise("X.Length < Mask.Length");
    const int32_t* m = At<int32_t>(mask);
    int32_t count = 0;
    for (int32_t i = 0; i < mask.fLength; ++i) count += m[i] > 0;
    if (maskNonZeroCount >= 0 && maskNonZeroCount != count)
        EInvalidArgumentRaise("TVecInt.GatherMyMask: MaskNonZeroCount does not match the mask");
    Size(count, x.fIntPrecision);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(x);
        T* d = At<T>(*this);
        int32_t k = 0;
        for (int32_t i = 0; i < mask.fLength; ++i)
            if (m[i] > 0) d[k++] = s[i];
    });
    return *this;
}

TRovaneInt& TRovaneInt::ScatterByMask(const TRovaneInt& src, const TRovaneInt& mask, bool allowSmallerSource) {
    if (&src == this) EInvalidArgumentRaise("TRovane.ScatterByMask: X = Self");
    if (fLength != mask.fLength) EInvalidArgumentRaise("Mask.ScatterByMask: Self.Length <> Mask.Length");
    if (src.fIntPrecision != fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    if (mask.fIntPrecision != prInt32) EInvalidArgumentRaise("Mask.IntPrecision <> prInt32");
    if (!allowSmallerSource && src.fLength != mask.fLength) EInvalidArgumentRaise("Src.Length <> Mask.Length");
    const int32_t* m = At<int32_t>(mask);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(src);
        T* d = At<T>(*this);
        int32_t k = 0;
        for (int32_t i = 0; i < fLength; ++i) {
            if (m[i] <= 0) continue;
            const int32_t from = allowSmallerSource ? k++ : i;
            if (from >= src.fLength) EInvalidArgumentRaise("Src.Length < number of selected elements");
            d[i] = s[from];
        }
    });
    return *this;
}

// ---- thresholds ------------------------------------------------------------------
namespace {
template <class Fn>
TRovaneInt& MapInPlace(TRovaneInt& self, Fn&& fn) {
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(self);
        for (int32_t i = 0; i < self.fLength; ++i) d[i] = Saturate<T>(fn(int64_t(d[i])));
    });
    return self;
}
}  // namespace

TRovaneInt& TRovaneInt::ThreshBottom(int32_t value) {
    return MapInPlace(*this, [=](int64_t x) { return x < value ? int64_t(value) : x; });
}
TRovaneInt& TRovaneInt::ThreshTop(int32_t value) {
    return MapInPlace(*this, [=](int64_t x) { return x > value ? int64_t(value) : x; });
}
TRovaneInt& TRovaneInt::ThreshAbsGT(int32_t value) {
    if (value < 0) EInvalidArgumentRaise("TVecInt.ThreshAbsGT: (Value < 0)");
    return MapInPlace(*this, [=](int64_t x) { return x > value ? int64_t(value) : x < -int64_t(value) ? -int64_t(value) : x; });
}
TRovaneInt& TRovaneInt::ThreshAbsLT(int32_t value) {
    if (value < 0) EInvalidArgumentRaise("TVecInt.ThreshAbsLT: (Value < 0)");
    return MapInPlace(*this, [=](int64_t x) {
        if (x >= 0 && x < value) return int64_t(value);
        if (x < 0 && x > -int64_t(value)) return -int64_t(value);
        return x;
    });
}
TRovaneInt& TRovaneInt::ThresholdGT_LT(const TRovaneInt& src, int32_t ltLevel, int32_t ltValue, int32_t gtLevel,
                                       int32_t gtValue) {
    if (ltLevel > gtLevel) EInvalidArgumentRaise("TRovaneInt.ThresholdGT_LT: LTLevel > GTLevel");
    if (&src != this) Copy(src);
    return MapInPlace(*this, [=](int64_t x) {
        return x < ltLevel ? int64_t(ltValue) : x > gtLevel ? int64_t(gtValue) : x;
    });
}

// ---- matrices ----------------------------------------------------------------------
TMtxInt& TMtxInt::Transp(const TMtxInt& src) {
    if (&src == this) EInvalidArgumentRaise("TMtxInt.Transp: Src = Self");
    Size(src.FCols, src.FRows, src.fIntPrecision);
    for (int32_t r = 0; r < src.FRows; ++r)
        for (int32_t c = 0; c < src.FCols; ++c) PutElement(c, r, src.GetElement(r, c));
    return *this;
}
TMtxInt& TMtxInt::Eye(int32_t rows, int32_t cols) {
    Size(rows, cols);
    SetZero();
    for (int32_t i = 0; i < std::min(rows, cols); ++i) PutElement(i, i, 1);
    return *this;
}
TMtxInt& TMtxInt::FlipHor() {
    for (int32_t r = 0; r < FRows; ++r) TRovaneInt::Reverse(r * FLeadingCols, FCols);
    return *this;
}
TMtxInt& TMtxInt::FlipVer() {
    for (int32_t r = 0; r < FRows / 2; ++r) RowExchange(r, FRows - 1 - r);
    return *this;
}
TMtxInt& TMtxInt::RowExchange(int32_t i, int32_t j) {
    if (i < 0 || j < 0 || i >= FRows || j >= FRows) ERangeErrorRaiseFmt("TMtxInt.RowExchange: row out of range: %d, %d", i, j);
    for (int32_t c = 0; c < FCols; ++c) {
        const int32_t a = GetElement(i, c);
        PutElement(i, c, GetElement(j, c));
        PutElement(j, c, a);
    }
    return *this;
}
TMtxInt& TMtxInt::ColExchange(int32_t i, int32_t j) {
    if (i < 0 || j < 0 || i >= FCols || j >= FCols) ERangeErrorRaiseFmt("TMtxInt.ColExchange: column out of range: %d, %d", i, j);
    for (int32_t r = 0; r < FRows; ++r) {
        const int32_t a = GetElement(r, i);
        PutElement(r, i, GetElement(r, j));
        PutElement(r, j, a);
    }
    return *this;
}
TMtxInt& TMtxInt::SetRow(const TRovaneInt& src, int32_t row) {
    if (row < 0 || row >= FRows) ERangeErrorRaiseFmt("TMtxInt.SetRow: Row out of range: %d", row);
    if (src.fLength != FCols) EInvalidArgumentRaise("TMtxInt.SetRow: Src.Length <> Cols");
    for (int32_t c = 0; c < FCols; ++c) PutElement(row, c, src.GetElement(c));
    return *this;
}
TMtxInt& TMtxInt::SetCol(const TRovaneInt& src, int32_t col) {
    if (col < 0 || col >= FCols) ERangeErrorRaiseFmt("TMtxInt.SetCol: Col out of range: %d", col);
    if (src.fLength != FRows) EInvalidArgumentRaise("TMtxInt.SetCol: Src.Length <> Rows");
    for (int32_t r = 0; r < FRows; ++r) PutElement(r, col, src.GetElement(r));
    return *this;
}
TMtxInt& TMtxInt::Rotate90(const TMtxInt& src, int32_t k) {
    if (&src == this) EInvalidArgumentRaise("TMtxInt.Rotate90: Src = Self");
    k = ((k % 4) + 4) % 4;
    const int32_t R = src.FRows, C = src.FCols;
    if (k % 2)
        Size(C, R, src.fIntPrecision);
    else
        Size(R, C, src.fIntPrecision);
    // Counter-clockwise quarter turns.
    for (int32_t r = 0; r < R; ++r)
        for (int32_t c = 0; c < C; ++c) {
            const int32_t v = src.GetElement(r, c);
            if (k == 0) PutElement(r, c, v);
            else if (k == 1) PutElement(C - 1 - c, r, v);
            else if (k == 2) PutElement(R - 1 - r, C - 1 - c, v);
            else PutElement(c, R - 1 - r, v);
        }
    return *this;
}

TVecInt& TVecInt::PrimeNumbers(int32_t n) {
    const int32_t have = RovanePrimeArray.Length();
    if (n < 0 || n > have) ERangeErrorRaiseFmt("TVecInt.PrimeNumbers: n out of range 0..%d: %d", have, n);
    Size(n, prInt32);
    for (int32_t i = 0; i < n; ++i) PutElement(i, RovanePrimeArray[i]);
    return *this;
}

}  // namespace rovane
