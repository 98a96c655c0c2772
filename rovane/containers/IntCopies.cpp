// Copies between the float containers and the integer containers: integers
// to floats exactly (to the real parts of complex data), floats to integers
// with the rounding asked for and saturation at the width's limits.
#include <cmath>
#include <limits>

#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/RovaneInt.h"

namespace rovane {

using namespace frame;

namespace detail {

// A float to an integer of type I: truncated or rounded to nearest (ties to
// even), saturated at the limits of I; a NaN gives 0.
template <class I>
I RoundSaturate(double v, TRounding rounding) {
    if (std::isnan(v)) return I(0);
    v = rounding == rnRound ? std::nearbyint(v) : std::trunc(v);
    constexpr double lo = double(std::numeric_limits<I>::min()), hi = double(std::numeric_limits<I>::max());
    if (v <= lo) return std::numeric_limits<I>::min();
    if (v >= hi) return std::numeric_limits<I>::max();
    return static_cast<I>(v);
}
template int32_t RoundSaturate<int32_t>(double, TRounding);
template int16_t RoundSaturate<int16_t>(double, TRounding);
template uint8_t RoundSaturate<uint8_t>(double, TRounding);

}  // namespace detail

namespace {

// Calls fn(p) with p the typed element pointer of the integer range start.
template <class Fn>
void ByIntWidth(const TRovaneInt& o, int32_t index, Fn&& fn) {
    switch (o.fIntPrecision) {
        case prInt32: return fn(o.IData + o.FDataOffset + index);
        case prInt16: return fn(o.SIData + o.FDataOffset + index);
        default: return fn(o.BData + o.FDataOffset + index);
    }
}

// Integers to the reals of a float range: every real element of a real
// Self, the real parts of a complex one (imaginary parts zero).
void IntToFloat(const TRovaneInt& src, int32_t srcIndex, TRovane& dst, int32_t index, int32_t len) {
    ByIntWidth(src, srcIndex, [&](auto* s) {
        ByWidth(dst.fIsDouble, [&](auto f) {
            using F = decltype(f);
            F* d = Base<F>(dst) + dst.FDataOffset + (dst.fComplex ? 2 * int64_t(index) : index);
            if (dst.fComplex) {
                for (int32_t i = 0; i < len; ++i) {
                    d[2 * i] = static_cast<F>(s[i]);
                    d[2 * i + 1] = F(0);
                }
            } else {
                for (int32_t i = 0; i < len; ++i) d[i] = static_cast<F>(s[i]);
            }
        });
    });
}

// `count` reals of a float range (both parts of complex data, interleaved)
// to integers.
void FloatToInt(const TRovane& src, int32_t index, int32_t count, TRovaneInt& dst, int32_t dstIndex,
                TRounding rounding) {
    ByIntWidth(dst, dstIndex, [&](auto* d) {
        using I = std::remove_pointer_t<decltype(d)>;
        ByWidth(src.fIsDouble, [&](auto f) {
            using F = decltype(f);
            const F* s = Base<F>(src) + src.FDataOffset + (src.fComplex ? 2 * int64_t(index) : index);
            for (int32_t i = 0; i < count; ++i) d[i] = detail::RoundSaturate<I>(double(s[i]), rounding);
        });
    });
}

}  // namespace

TRovane& TRovane::Copy(const TRovaneInt& src) { return Copy(src, fIsDouble ? rvDouble : rvSingle); }

TRovane& TRovane::Copy(const TRovaneInt& src, TMtxFloatPrecision precision) {
    Size(src, precision);
    if (fLength > 0) IntToFloat(src, 0, *this, 0, fLength);
    return *this;
}

TRovane& TRovane::Copy(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    if (len == -1) len = range::RestFrom(fLength, index);
    if (fConditionCheck) {
        if (range::OutOfRange(srcIndex, len, src.fLength))
            ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", srcIndex, len,
                                src.fLength);
        if (range::OutOfRange(index, len, fLength))
            ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    }
    if (len > 0) IntToFloat(src, srcIndex, *this, index, len);
    return *this;
}

TRovaneInt& TRovane::CopyTo(TRovaneInt& dst, TRounding rounding) const {
    const int32_t count = fComplex ? 2 * fLength : fLength;
    dst.Size(count, dst.fIntPrecision);
    if (count > 0) FloatToInt(*this, 0, count, dst, 0, rounding);
    return dst;
}

TRovaneInt& TRovane::CopyTo(TRovaneInt& dst, TRounding rounding, int32_t dstIndex, int32_t index, int32_t len) const {
    ValidateParams(index, len);
    // Complex data go interleaved: two integers an element.
    const int64_t count = fComplex ? 2 * int64_t(len) : len;
    if (fConditionCheck && range::OutOfRange(dstIndex, count, dst.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", dstIndex,
                            static_cast<int32_t>(std::min<int64_t>(count, INT32_MAX)), dst.fLength);
    if (count > 0) FloatToInt(*this, index, static_cast<int32_t>(count), dst, dstIndex, rounding);
    return dst;
}

}  // namespace rovane
