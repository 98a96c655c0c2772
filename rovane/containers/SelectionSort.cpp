// Sorts of the float vectors and the binary search of the float containers.
//
// Real data without an index vector: when the range holds no NaN, equal
// values are interchangeable and a stable radix sort on the order-preserving
// bit patterns gives the one sorted result (about 6 passes of 11 bits over
// 1e6 doubles, several times faster than a comparison sort); with a NaN, or
// for short ranges, the library's quick sort runs, as its primitive defines.
// With an index vector, and for complex data (ordered by squared magnitude),
// the order of equal keys is observable, and the library's quick sort
// decides it: every such form runs select::HoareSort.
#include <cmath>
#include <cstring>
#include <vector>

#include "rovane/containers/IntegerFrame.h"
#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/SelectionSort.h"
#include "rovane/scalars/ScalarMath.h"

namespace rovane {

using namespace frame;

namespace {

template <class F>
using UOf = std::conditional_t<sizeof(F) == 8, uint64_t, uint32_t>;

// Below this length the quick sort is as fast as the radix passes.
constexpr int32_t kRadixMin = 512;
constexpr int kDigit = 11;
constexpr uint32_t kBins = 1u << kDigit;

// Scratch of the radix sort, kept per thread between calls so that a long
// sort does not fault in fresh pages each time; beyond 64 MiB it is let go.
template <class U>
U* RadixScratch(size_t n, std::vector<U>& keep) {
    if (keep.size() < n) keep.resize(n);
    return keep.data();
}
template <class U>
void ReleaseScratch(std::vector<U>& keep) {
    if (keep.size() * sizeof(U) > (size_t(64) << 20)) std::vector<U>().swap(keep);
}

// Sorts the floats of p ascending (descending) by their bit patterns mapped
// to unsigned keys whose order is that of the values (-0 before +0).
template <bool Desc, class F>
void RadixSort(F* p, int32_t n) {
    using U = UOf<F>;
    constexpr int bits = 8 * sizeof(U);
    constexpr int passes = (bits + kDigit - 1) / kDigit;
    constexpr U sign = U(1) << (bits - 1);
    static thread_local std::vector<U> keep;
    U* a = reinterpret_cast<U*>(p);
    U* b = RadixScratch<U>(size_t(n), keep);
    std::vector<uint32_t> counts(size_t(passes) * kBins, 0);
    for (int32_t i = 0; i < n; ++i) {
        U u = a[i];
        u = (u & sign) ? ~u : (u | sign);
        if constexpr (Desc) u = ~u;
        a[i] = u;
        for (int d = 0; d < passes; ++d) ++counts[size_t(d) * kBins + ((u >> (d * kDigit)) & (kBins - 1))];
    }
    U* src = a;
    U* dst = b;
    for (int d = 0; d < passes; ++d) {
        uint32_t* c = counts.data() + size_t(d) * kBins;
        // A digit that all keys share moves nothing.
        if (c[(src[0] >> (d * kDigit)) & (kBins - 1)] == uint32_t(n)) continue;
        uint32_t sum = 0;
        for (uint32_t k = 0; k < kBins; ++k) {
            const uint32_t t = c[k];
            c[k] = sum;
            sum += t;
        }
        for (int32_t i = 0; i < n; ++i) {
            const U u = src[i];
            dst[c[(u >> (d * kDigit)) & (kBins - 1)]++] = u;
        }
        std::swap(src, dst);
    }
    if (src != a) std::memcpy(a, src, size_t(n) * sizeof(U));
    for (int32_t i = 0; i < n; ++i) {
        U u = a[i];
        if constexpr (Desc) u = ~u;
        a[i] = (u & sign) ? (u & ~sign) : ~u;
    }
    ReleaseScratch(keep);
}

template <bool Desc, class F>
void SortReal(F* p, int32_t n) {
    bool nan = false;
    for (int32_t i = 0; i < n; ++i) nan |= p[i] != p[i];
    if (!nan && n >= kRadixMin) return RadixSort<Desc>(p, n);
    select::HoareSort<Desc, F>(
        0, n - 1, [p](int32_t i) { return p[i]; }, [p](int32_t i, int32_t j) { std::swap(p[i], p[j]); });
}

// The keyed quick sort with the keys and indexes side by side in one run:
// the same comparisons and swaps as on two separate arrays (so the same
// permutation), with one cache line touched per swap instead of two.
template <bool Desc, class F>
void SortWithIndex(F* p, int32_t* ix, int32_t n) {
    struct Pair {
        F key;
        int32_t index;
    };
    static thread_local std::vector<Pair> keep;
    if (keep.size() < size_t(n)) keep.resize(size_t(n));
    Pair* q = keep.data();
    for (int32_t i = 0; i < n; ++i) q[i] = {p[i], ix[i]};
    select::HoareSort<Desc, F>(
        0, n - 1, [q](int32_t i) { return q[i].key; }, [q](int32_t i, int32_t j) { std::swap(q[i], q[j]); });
    for (int32_t i = 0; i < n; ++i) {
        p[i] = q[i].key;
        ix[i] = q[i].index;
    }
    if (keep.size() * sizeof(Pair) > (size_t(64) << 20)) std::vector<Pair>().swap(keep);
}

template <bool Desc>
TVec& SortCore(TVec& self, int32_t index, int32_t len, TVecInt* indexVec, bool withIndex) {
    if (withIndex && !indexVec) EInvalidArgumentRaise("IndexVec = nil");
    self.ValidateParams(index, len);
    int32_t* ix = nullptr;
    if (withIndex) {
        indexVec->Size(len, prInt32);
        if (indexVec->fIntPrecision != prInt32) EInvalidArgumentRaise("Indexes.IntPrecision <> prInt32");
        indexVec->Ramp();
        ix = indexVec->IData + indexVec->FDataOffset;
    }
    if (len < 2) return self;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (!self.fComplex) {
            F* p = frame::Base<F>(self) + frame::Offset<F>(self) + index;
            if (ix)
                SortWithIndex<Desc>(p, ix, len);
            else
                SortReal<Desc>(p, len);
            return;
        }
        using C = ComplexOf<F>;
        C* z = frame::Base<C>(self) + frame::Offset<C>(self) + index;
        // Keys: squared magnitudes in the data's precision, in a cached run.
        Scratch<F, 1> keys(len);
        F* k = keys[0];
        for (int32_t i = 0; i < len; ++i) k[i] = z[i].Re * z[i].Re + z[i].Im * z[i].Im;
        select::HoareSort<Desc, F>(
            0, len - 1, [k](int32_t i) { return k[i]; },
            [k, z, ix](int32_t i, int32_t j) {
                std::swap(k[i], k[j]);
                std::swap(z[i], z[j]);
                if (ix) std::swap(ix[i], ix[j]);
            });
    });
    return self;
}

}  // namespace

TVec& TVec::SortAscend() { return SortCore<false>(*this, 0, fLength, nullptr, false); }
TVec& TVec::SortAscend(int32_t index, int32_t len) { return SortCore<false>(*this, index, len, nullptr, false); }
TVec& TVec::SortAscend(TVecInt* indexVec) { return SortCore<false>(*this, 0, fLength, indexVec, true); }
TVec& TVec::SortAscend(int32_t index, int32_t len, TVecInt* indexVec) {
    return SortCore<false>(*this, index, len, indexVec, true);
}
TVec& TVec::SortDescend() { return SortCore<true>(*this, 0, fLength, nullptr, false); }
TVec& TVec::SortDescend(int32_t index, int32_t len) { return SortCore<true>(*this, index, len, nullptr, false); }
TVec& TVec::SortDescend(TVecInt* indexVec) { return SortCore<true>(*this, 0, fLength, indexVec, true); }
TVec& TVec::SortDescend(int32_t index, int32_t len, TVecInt* indexVec) {
    return SortCore<true>(*this, index, len, indexVec, true);
}

// ---- binary search ------------------------------------------------------------------
bool TRovane::BinarySearch(double value) const {
    int32_t i;
    return BinarySearch(value, i, 0, fLength);
}
bool TRovane::BinarySearch(double value, int32_t index, int32_t len) const {
    int32_t i;
    return BinarySearch(value, i, index, len);
}
bool TRovane::BinarySearch(double value, int32_t& xIndex) const { return BinarySearch(value, xIndex, 0, fLength); }
bool TRovane::BinarySearch(double value, int32_t& xIndex, int32_t index, int32_t len) const {
    if (fComplex) return BinarySearch(TCplx(value, 0), xIndex, index, len);
    ValidateParams(index, len);
    return ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F* x = frame::Base<F>(*this) + frame::Offset<F>(*this);
        const F v = static_cast<F>(value);
        return select::BinarySearchRun(
            index, len, xIndex, [&](int32_t m) { return x[m] > v; }, [&](int32_t m) { return x[m] < v; });
    });
}
bool TRovane::BinarySearch(const TCplx& value) const {
    int32_t i;
    return BinarySearch(value, i, 0, fLength);
}
bool TRovane::BinarySearch(const TCplx& value, int32_t index, int32_t len) const {
    int32_t i;
    return BinarySearch(value, i, index, len);
}
bool TRovane::BinarySearch(const TCplx& value, int32_t& xIndex) const { return BinarySearch(value, xIndex, 0, fLength); }
bool TRovane::BinarySearch(const TCplx& value, int32_t& xIndex, int32_t index, int32_t len) const {
    ValidateParams(index, len);
    // Complex data in the complex order (magnitude, then phase); real data
    // as complex values with zero imaginary parts.
    return ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = ComplexOf<F>;
        const C v(static_cast<F>(value.Re), static_cast<F>(value.Im));
        auto at = [&](int32_t m) {
            return fComplex ? (frame::Base<C>(*this) + frame::Offset<C>(*this))[m] : C((frame::Base<F>(*this) + frame::Offset<F>(*this))[m], F(0));
        };
        return select::BinarySearchRun(
            index, len, xIndex, [&](int32_t m) { return Bigger(at(m), v); }, [&](int32_t m) { return Smaller(at(m), v); });
    });
}

}  // namespace rovane
