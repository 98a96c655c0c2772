// The integer family's arithmetic, bit logic, shifts, bit sets and packing.
// Every result goes through the one rule of the scaled integer arithmetic:
// the exact value times 2^-ScaleFactor, rounded to nearest with ties to even,
// saturated at the width. Sums and differences at scale 0 run on the
// saturating kernels; the other operations are plain loops on the width's
// type.
#include <cstring>
#include <vector>
#include <string>

#include "rovane/containers/IntegerFrame.h"
#include "rovane/primitives/SelectPrims.h"

namespace rovane {

namespace intframe {

void CheckSelfRange(const TRovaneInt& self, int32_t index, int32_t len) {
    if (range::OutOfRange(index, len, self.fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, self.fLength);
}
void CheckSrcRange(const TRovaneInt& src, int32_t srcIndex, int32_t len) {
    if (range::OutOfRange(srcIndex, len, src.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", srcIndex, len, src.fLength);
}
int32_t ResolveLen(const TRovaneInt& self, int32_t index, int32_t len) {
    return len == -1 ? range::RestFrom(self.fLength, index) : len;
}

}  // namespace intframe

using namespace intframe;

namespace {

enum : int { kAdd, kSub, kMul, kDiv, kAnd, kOr, kXor };


// a / b rounded to nearest (ties to even) after the scale; division by zero
// saturates towards the sign of a (0 / 0 gives 0).
template <class T>
T DivScaled(int64_t a, int64_t b, int32_t sf) {
    if (b == 0) return a > 0 ? T(Hi<T>) : a < 0 ? T(Lo<T>) : T(0);
    __int128 num = a, den = b;
    if (sf > 0) {
        if (sf > 62) return T(0);
        den *= __int128(1) << sf;
    } else if (sf < 0) {
        if (sf < -62) return a == 0 ? T(0) : ((a < 0) != (b < 0) ? T(Lo<T>) : T(Hi<T>));
        num *= __int128(1) << (-sf);
    }
    if (den < 0) {
        num = -num;
        den = -den;
    }
    __int128 q = num / den, r = num % den;
    const __int128 twice = 2 * (r < 0 ? -r : r);
    if (twice > den || (twice == den && (q & 1) != 0)) q += num < 0 ? -1 : 1;
    return static_cast<T>(q > Hi<T> ? Hi<T> : q < Lo<T> ? Lo<T> : static_cast<int64_t>(q));
}

template <int Op, class T>
inline T Do(int64_t a, int64_t b, int32_t sf) {
    if constexpr (Op == kAnd)
        return static_cast<T>(a & b);
    else if constexpr (Op == kOr)
        return static_cast<T>(a | b);
    else if constexpr (Op == kXor)
        return static_cast<T>(a ^ b);
    else if constexpr (Op == kDiv)
        return DivScaled<T>(a, b, sf);
    else {
        const __int128 v = Op == kAdd ? __int128(a) + b : Op == kSub ? __int128(a) - b : __int128(a) * b;
        if (sf == 0) return static_cast<T>(v > Hi<T> ? Hi<T> : v < Lo<T> ? Lo<T> : static_cast<int64_t>(v));
        return static_cast<T>(ScaleSaturate(v, sf, Lo<T>, Hi<T>));
    }
}

// d = x op y elementwise.
template <int Op, class T>
void RunVV(const T* x, const T* y, T* d, int32_t n, int32_t sf) {
    if constexpr (Op == kAdd) return void(prim::AddSfs(x, 0, y, 0, d, 0, n, sf));
    // The catalogue's subtraction is second minus first.
    if constexpr (Op == kSub) return void(prim::SubSfs(y, 0, x, 0, d, 0, n, sf));
    for (int32_t i = 0; i < n; ++i) d[i] = Do<Op, T>(x[i], y[i], sf);
}

// d = x op v, or v op x when reversed.
template <int Op, class T>
void RunVS(const T* x, int64_t v, T* d, int32_t n, int32_t sf, bool reversed) {
    if (reversed) {
        for (int32_t i = 0; i < n; ++i) d[i] = Do<Op, T>(v, x[i], sf);
    } else {
        for (int32_t i = 0; i < n; ++i) d[i] = Do<Op, T>(x[i], v, sf);
    }
}

// Self[index..] = x[xi..] op y[yi..], or y op x when reversed.
template <int Op>
void Binary(TRovaneInt& self, const TRovaneInt& x, int32_t xi, const TRovaneInt& y, int32_t yi, int32_t index,
            int32_t len, bool reversed) {
    if (len <= 0) return;
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        if (reversed)
            RunVV<Op, T>(At<T>(y, yi), At<T>(x, xi), At<T>(self, index), len, self.FScaleFactor);
        else
            RunVV<Op, T>(At<T>(x, xi), At<T>(y, yi), At<T>(self, index), len, self.FScaleFactor);
    });
}

template <int Op>
void Scalar(TRovaneInt& self, const TRovaneInt& x, int32_t xi, int64_t v, int32_t index, int32_t len, bool reversed) {
    if (len <= 0) return;
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        RunVS<Op, T>(At<T>(x, xi), v, At<T>(self, index), len, self.FScaleFactor, reversed);
    });
}

// ---- the forms -----------------------------------------------------------

// Self := Self op Src (reversed: Src op Self).
template <int Op>
TRovaneInt& FormSrc(TRovaneInt& self, const TRovaneInt& src, const char* name, bool reversed) {
    if (self.fConditionCheck && &src == &self) EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src = Self");
    // Width and length guard memory: checked whatever ConditionCheck says.
    if (src.fIntPrecision != self.fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision value does not match!");
    if (src.fLength != self.fLength) EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src.Length <> Length");
    Binary<Op>(self, self, 0, src, 0, 0, self.fLength, reversed);
    return self;
}

template <int Op>
TRovaneInt& FormSrcRange(TRovaneInt& self, const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len,
                         bool reversed) {
    len = ResolveLen(self, index, len);
    if (self.fConditionCheck && src.fIntPrecision != self.fIntPrecision)
        EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    // Ranges guard memory: checked whatever ConditionCheck says.
    CheckSrcRange(src, srcIndex, len);
    CheckSelfRange(self, index, len);
    Binary<Op>(self, self, index, src, srcIndex, index, len, reversed);
    return self;
}

template <int Op>
TRovaneInt& FormSrc2(TRovaneInt& self, const TRovaneInt& a, const TRovaneInt& b, const char* name) {
    // Widths and lengths guard memory and are checked always.
    if (a.fLength != b.fLength) EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src1.Length <> Src2.Length");
    if (self.fConditionCheck && (&a == &self || &b == &self))
        EInvalidArgumentRaise(std::string("TVecInt.") + name + ": (Self = Src1) or (Self = Src2)");
    if (a.fIntPrecision != b.fIntPrecision)
        EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src1.IntPrecision <> Src2.IntPrecision");
    if (&a != &self && &b != &self) self.Size(a);
    if (self.fIntPrecision != a.fIntPrecision || self.fLength != a.fLength)
        EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    Binary<Op>(self, a, 0, b, 0, 0, a.fLength, false);
    return self;
}

template <int Op>
TRovaneInt& FormSrc2Range(TRovaneInt& self, const TRovaneInt& a, const TRovaneInt& b, int32_t ai, int32_t bi,
                          int32_t index, int32_t len, const char* name) {
    len = ResolveLen(self, index, len);
    if (a.fIntPrecision != b.fIntPrecision || a.fIntPrecision != self.fIntPrecision)
        EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src1.IntPrecision <> Src2.IntPrecision");
    CheckSrcRange(a, ai, len);
    CheckSrcRange(b, bi, len);
    CheckSelfRange(self, index, len);
    Binary<Op>(self, a, ai, b, bi, index, len, false);
    return self;
}

template <int Op>
TRovaneInt& FormValue(TRovaneInt& self, int64_t v, bool reversed) {
    Scalar<Op>(self, self, 0, v, 0, self.fLength, reversed);
    return self;
}
template <int Op>
TRovaneInt& FormValueRange(TRovaneInt& self, int64_t v, int32_t index, int32_t len, bool reversed) {
    len = ResolveLen(self, index, len);
    CheckSelfRange(self, index, len);
    Scalar<Op>(self, self, index, v, index, len, reversed);
    return self;
}
template <int Op>
TRovaneInt& FormSrcValue(TRovaneInt& self, const TRovaneInt& src, int64_t v, bool reversed, const char* name) {
    if (self.fConditionCheck && &src == &self) EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src = Self");
    if (&src != &self) self.Size(src);
    if (self.fIntPrecision != src.fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision value does not match!");
    Scalar<Op>(self, src, 0, v, 0, src.fLength, reversed);
    return self;
}
template <int Op>
TRovaneInt& FormSrcValueRange(TRovaneInt& self, const TRovaneInt& src, int64_t v, int32_t srcIndex, int32_t index,
                              int32_t len, bool reversed) {
    len = ResolveLen(self, index, len);
    if (src.fIntPrecision != self.fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    CheckSrcRange(src, srcIndex, len);
    CheckSelfRange(self, index, len);
    Scalar<Op>(self, src, srcIndex, v, index, len, reversed);
    return self;
}

// ---- unary ---------------------------------------------------------------
enum : int { kAbs, kNot, kLogicalNot };

template <class T>
T Unary(int op, T x) {
    if (op == kAbs) {
        if constexpr (std::is_signed_v<T>) return x < 0 ? Saturate<T>(-int64_t(x)) : x;
        else return x;
    }
    if (op == kNot) return static_cast<T>(~x);
    return static_cast<T>(x == 0);
}

void RunUnary(int op, TRovaneInt& self, const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    if (len <= 0) return;
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(src, srcIndex);
        T* d = At<T>(self, index);
        for (int32_t i = 0; i < len; ++i) d[i] = Unary<T>(op, x[i]);
    });
}

TRovaneInt& UnaryFrom(TRovaneInt& self, int op, const TRovaneInt& src, const char* name) {
    if (self.fConditionCheck && &src == &self) EInvalidArgumentRaise(std::string("TVecInt.") + name + ": Src = Self");
    if (&src != &self) self.Size(src);
    RunUnary(op, self, src, 0, 0, src.fLength);
    return self;
}
TRovaneInt& UnaryRange(TRovaneInt& self, int op, const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    len = ResolveLen(self, index, len);
    if (src.fIntPrecision != self.fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    CheckSrcRange(src, srcIndex, len);
    CheckSelfRange(self, index, len);
    RunUnary(op, self, src, srcIndex, index, len);
    return self;
}

// ---- shifts --------------------------------------------------------------
// Left by a positive count, right by a negative one: arithmetic for the
// signed widths, logical for bytes. A count beyond the width shifts all out.
template <class T>
T ShiftOne(T x, int32_t bits) {
    constexpr int w = 8 * sizeof(T);
    using U = std::make_unsigned_t<T>;
    if (bits >= 0) return bits >= w ? T(0) : static_cast<T>(static_cast<U>(static_cast<U>(x) << bits));
    const int r = bits <= -w ? w - 1 : -bits;
    if constexpr (std::is_signed_v<T>) return static_cast<T>(x >> r);
    else return bits <= -w ? T(0) : static_cast<T>(x >> r);
}

void RunShift(TRovaneInt& self, const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len, int32_t bits) {
    if (len <= 0) return;
    ByWidth(self.fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(src, srcIndex);
        T* d = At<T>(self, index);
        for (int32_t i = 0; i < len; ++i) d[i] = ShiftOne<T>(x[i], bits);
    });
}

}  // namespace

// ---- member definitions -------------------------------------------------------
#define ROVANE_INT_BIN(NAME, OP)                                                                             \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src) { return FormSrc<OP>(*this, src, #NAME, false); }    \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {     \
        return FormSrcRange<OP>(*this, src, srcIndex, index, len, false);                                    \
    }                                                                                                        \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src1, const TRovaneInt& src2) {                           \
        return FormSrc2<OP>(*this, src1, src2, #NAME);                                                       \
    }                                                                                                        \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src1, const TRovaneInt& src2, int32_t src1Index,          \
                                 int32_t src2Index, int32_t index, int32_t len) {                            \
        return FormSrc2Range<OP>(*this, src1, src2, src1Index, src2Index, index, len, #NAME);                \
    }
ROVANE_INT_BIN(Add, kAdd)
ROVANE_INT_BIN(Subtract, kSub)
ROVANE_INT_BIN(Multiply, kMul)
ROVANE_INT_BIN(Divide, kDiv)
ROVANE_INT_BIN(BinaryAnd, kAnd)
ROVANE_INT_BIN(BinaryOr, kOr)
ROVANE_INT_BIN(BinaryXor, kXor)
#undef ROVANE_INT_BIN

TRovaneInt& TRovaneInt::SubtractFrom(const TRovaneInt& src) { return FormSrc<kSub>(*this, src, "SubtractFrom", true); }
TRovaneInt& TRovaneInt::SubtractFrom(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    return FormSrcRange<kSub>(*this, src, srcIndex, index, len, true);
}
TRovaneInt& TRovaneInt::DivideBy(const TRovaneInt& src) { return FormSrc<kDiv>(*this, src, "DivideBy", true); }
TRovaneInt& TRovaneInt::DivideBy(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {
    return FormSrcRange<kDiv>(*this, src, srcIndex, index, len, true);
}

#define ROVANE_INT_VALUE(NAME, OP, REV)                                                                      \
    TRovaneInt& TRovaneInt::NAME(int32_t value) { return FormValue<OP>(*this, value, REV); }                 \
    TRovaneInt& TRovaneInt::NAME(int32_t value, int32_t index, int32_t len) {                                \
        return FormValueRange<OP>(*this, value, index, len, REV);                                            \
    }                                                                                                        \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src, int32_t value) {                                     \
        return FormSrcValue<OP>(*this, src, value, REV, #NAME);                                              \
    }                                                                                                        \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src, int32_t value, int32_t srcIndex, int32_t index,      \
                                 int32_t len) {                                                              \
        return FormSrcValueRange<OP>(*this, src, value, srcIndex, index, len, REV);                          \
    }
ROVANE_INT_VALUE(AddValue, kAdd, false)
ROVANE_INT_VALUE(SubtractValue, kSub, false)
ROVANE_INT_VALUE(MultiplyValue, kMul, false)
ROVANE_INT_VALUE(DivideValue, kDiv, false)
ROVANE_INT_VALUE(SubtractFromValue, kSub, true)
ROVANE_INT_VALUE(DivideByValue, kDiv, true)
ROVANE_INT_VALUE(BinaryAndValue, kAnd, false)
ROVANE_INT_VALUE(BinaryOrValue, kOr, false)
ROVANE_INT_VALUE(BinaryXorValue, kXor, false)
#undef ROVANE_INT_VALUE

#define ROVANE_INT_UNARY(NAME, OP)                                                                           \
    TRovaneInt& TRovaneInt::NAME() {                                                                         \
        RunUnary(OP, *this, *this, 0, 0, fLength);                                                           \
        return *this;                                                                                        \
    }                                                                                                        \
    TRovaneInt& TRovaneInt::NAME(int32_t index, int32_t len) { return UnaryRange(*this, OP, *this, index, index, len); } \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src) { return UnaryFrom(*this, OP, src, #NAME); }         \
    TRovaneInt& TRovaneInt::NAME(const TRovaneInt& src, int32_t srcIndex, int32_t index, int32_t len) {     \
        return UnaryRange(*this, OP, src, srcIndex, index, len);                                             \
    }
ROVANE_INT_UNARY(Abs, kAbs)
ROVANE_INT_UNARY(BinaryNot, kNot)
ROVANE_INT_UNARY(LogicalNot, kLogicalNot)
#undef ROVANE_INT_UNARY

TRovaneInt& TRovaneInt::RemDiv(int32_t value, TRovaneInt& rem, TRovaneInt& quot) {
    if (&rem == &quot) EInvalidArgumentRaise("TRovaneInt.RemDiv: Rem = Quot");
    rem.Size(*this);
    quot.Size(*this);
    if (fLength == 0) return *this;
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* x = At<T>(*this);
        T* r = At<T>(rem);
        T* q = At<T>(quot);
        for (int32_t i = 0; i < fLength; ++i) {
            const int64_t a = x[i];
            // Division by zero: the quotient saturates, the remainder is the dividend.
            q[i] = value == 0 ? (a > 0 ? T(Hi<T>) : a < 0 ? T(Lo<T>) : T(0)) : Saturate<T>(a / value);
            r[i] = value == 0 ? x[i] : static_cast<T>(a % value);
        }
    });
    return *this;
}

TRovaneInt& TRovaneInt::RemDiv(const TRovaneInt& value, TRovaneInt& rem, TRovaneInt& quot) {
    if (value.fIntPrecision != fIntPrecision) EInvalidArgumentRaise("TRovaneInt.RemDiv: Src.IntPrecision <> Value.IntPrecision");
    if (value.fLength != fLength) EInvalidArgumentRaise("TRovaneInt.RemDiv: Src.Length <> Value.Length");
    if (&rem == &quot) EInvalidArgumentRaise("TRovaneInt.RemDiv: Rem = Quot");
    if (&rem == &value || &quot == &value) EInvalidArgumentRaise("TRovaneInt.RemDiv: Value = Rem or Value = Quot");
    // Self may be Rem or Quot: keep a copy of the dividends.
    std::vector<int64_t> a(static_cast<size_t>(fLength));
    for (int32_t i = 0; i < fLength; ++i) a[i] = GetElement(i);
    rem.Size(*this);
    quot.Size(*this);
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        const T* y = At<T>(value);
        T* r = At<T>(rem);
        T* q = At<T>(quot);
        for (int32_t i = 0; i < int32_t(a.size()); ++i) {
            const int64_t b = y[i];
            q[i] = b == 0 ? (a[i] > 0 ? T(Hi<T>) : a[i] < 0 ? T(Lo<T>) : T(0)) : Saturate<T>(a[i] / b);
            r[i] = b == 0 ? static_cast<T>(a[i]) : static_cast<T>(a[i] % b);
        }
    });
    return *this;
}

// ---- shifts --------------------------------------------------------------
TRovaneInt& TRovaneInt::BitShift(int32_t bits) {
    RunShift(*this, *this, 0, 0, fLength, bits);
    return *this;
}
TRovaneInt& TRovaneInt::BitShift(int32_t bits, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    CheckSelfRange(*this, index, len);
    RunShift(*this, *this, index, index, len, bits);
    return *this;
}
TRovaneInt& TRovaneInt::BitShift(const TRovaneInt& src, int32_t bits) {
    if (fConditionCheck && &src == this) EInvalidArgumentRaise("TVecInt.BitShift: Src = Self");
    if (&src != this) Size(src);
    RunShift(*this, src, 0, 0, src.fLength, bits);
    return *this;
}
TRovaneInt& TRovaneInt::BitShift(const TRovaneInt& src, int32_t bits, int32_t srcIndex, int32_t index, int32_t len) {
    len = ResolveLen(*this, index, len);
    if (src.fIntPrecision != fIntPrecision) EInvalidArgumentRaise("TVecInt.IntPrecision values do not match!");
    CheckSrcRange(src, srcIndex, len);
    CheckSelfRange(*this, index, len);
    RunShift(*this, src, srcIndex, index, len, bits);
    return *this;
}
TRovaneInt& TRovaneInt::BitShiftLeft(int32_t bits) { return BitShift(bits < 0 ? 0 : bits); }
TRovaneInt& TRovaneInt::BitShiftLeft(int32_t bits, int32_t index, int32_t len) {
    return BitShift(bits < 0 ? 0 : bits, index, len);
}
TRovaneInt& TRovaneInt::BitShiftLeft(const TRovaneInt& src, int32_t bits) { return BitShift(src, bits < 0 ? 0 : bits); }
TRovaneInt& TRovaneInt::BitShiftRight(int32_t bits) { return BitShift(bits < 0 ? 0 : -bits); }
TRovaneInt& TRovaneInt::BitShiftRight(int32_t bits, int32_t index, int32_t len) {
    return BitShift(bits < 0 ? 0 : -bits, index, len);
}
TRovaneInt& TRovaneInt::BitShiftRight(const TRovaneInt& src, int32_t bits) {
    return BitShift(src, bits < 0 ? 0 : -bits);
}

// ---- bit packing ---------------------------------------------------------
TRovaneInt& TRovaneInt::BitPack(const TRovaneInt& src) {
    if (&src == this) EInvalidArgumentRaise("TVecInt.BitPack: Src = Self");
    const int32_t n = src.fLength;
    Size(n / 32 + (n % 32 != 0 ? 1 : 0), prInt32);
    if (fIntPrecision != prInt32) EInvalidArgumentRaise("TVecInt.BitPack: IntPrecision <> prInt32");
    uint32_t* w = reinterpret_cast<uint32_t*>(At<int32_t>(*this));
    if (fLength > 0) std::memset(w, 0, size_t(fLength) * 4);
    for (int32_t i = 0; i < n; ++i)
        if (src.GetElement(i) != 0) w[i >> 5] |= 1u << (i & 31);
    FBitCount = n;
    return *this;
}

TRovaneInt& TRovaneInt::BitUnpack(const TRovaneInt& src) {
    if (&src == this) EInvalidArgumentRaise("TVecInt.BitUnpack: Src = Self");
    // The bit count of a packed source, else every bit of its elements.
    const int64_t words = src.fIntPrecision == prInt32 ? src.fLength : 0;
    int64_t n = src.FBitCount > 0 && src.FBitCount <= 32 * words ? src.FBitCount : int64_t(src.fLength) * 8 * src.ElemSize();
    if (n > INT32_MAX) ERangeErrorRaise("TVecInt.BitUnpack: BitCount > MaxInt");
    Size(static_cast<int32_t>(n));
    ByWidth(fIntPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this);
        const uint8_t* bytes = reinterpret_cast<const uint8_t*>(src.ValuesPointer);
        // Bit i is bit i mod 8 of byte i div 8 on this little-endian target,
        // which is bit i mod 32 of word i div 32.
        for (int64_t i = 0; i < n; ++i) d[i] = static_cast<T>((bytes[i >> 3] >> (i & 7)) & 1);
    });
    return *this;
}

// ---- bit sets ----------------------------------------------------------------
void TVecInt::SetBitCount(int64_t n) {
    if (n < 0) EInvalidArgumentRaise("TVecInt.BitCount < 0");
    const int64_t words = n / 32 + (n % 32 != 0 ? 1 : 0);
    if (words > INT32_MAX) ERangeErrorRaise("TVecInt.BitCount: too many bits");
    Size(static_cast<int32_t>(words), prInt32);
    FBitCount = n;
}

bool TVecInt::Bits(int64_t i) const {
    if (fConditionCheck && (i < 0 || i >= int64_t(fLength) * 32 || fIntPrecision != prInt32))
        ERangeErrorRaiseFmt("TVecInt.Bits: Index out of range: %d", static_cast<int32_t>(range::Narrow32(i)));
    return (static_cast<uint32_t>(IValues[i >> 5]) >> (i & 31)) & 1u;
}

void TVecInt::SetBits(int64_t i, bool value) {
    if (fConditionCheck && (i < 0 || i >= int64_t(fLength) * 32 || fIntPrecision != prInt32))
        ERangeErrorRaiseFmt("TVecInt.Bits: Index out of range: %d", static_cast<int32_t>(range::Narrow32(i)));
    uint32_t& w = reinterpret_cast<uint32_t&>(IValues[i >> 5]);
    if (value)
        w |= 1u << (i & 31);
    else
        w &= ~(1u << (i & 31));
}

// ---- the matrix ---------------------------------------------------------------
TMtxInt& TMtxInt::Size(int32_t aRows, int32_t aCols, TIntPrecision precision) {
    if (aRows < 0 || aCols < 0) EInvalidArgumentRaise("TMtxInt.Size: Rows < 0 or Cols < 0");
    const int64_t n = int64_t(aRows) * aCols;
    if (n > INT32_MAX) EInvalidArgumentRaise("TMtxInt.Size: Rows*Cols can not be larger than 2147483647!");
    TRovaneInt::Size(static_cast<int32_t>(n), precision);
    FRows = aRows;
    FCols = aCols;
    FLeadingCols = aCols;
    return *this;
}

void TMtxInt::DoSetLength(int32_t value) { Size(value, 1); }

void TMtxInt::Reset() {
    TRovaneInt::Reset();
    FRows = FCols = FLeadingCols = 0;
    fColsBitCount = 0;
}

void TMtxInt::SetColsBitCount(int32_t n) {
    if (n == fColsBitCount) return;
    if (n < 0) EInvalidArgumentRaise("TMtxInt.ColsBitCount < 0");
    const int32_t w = 8 * ElemSize();
    // The rest test is on the eighth part for every width.
    Size(FRows, n / w + (n % 8 != 0 ? 1 : 0));
    fColsBitCount = n;
}

void TMtxInt::BitSize(int32_t rows, int32_t colsBitCount) {
    const int32_t w = 8 * ElemSize();
    if (colsBitCount < 0) EInvalidArgumentRaise("TMtxInt.ColsBitCount < 0");
    Size(rows, colsBitCount / w + (colsBitCount % 8 != 0 ? 1 : 0));
    fColsBitCount = colsBitCount;
}

bool TMtxInt::GetBits(int32_t row, int32_t col) const {
    const int32_t w = 8 * ElemSize();
    if (fConditionCheck && (row < 0 || row >= FRows || col < 0 || int64_t(col) >= int64_t(FCols) * w))
        ERangeErrorRaiseFmt("TMtxInt.Bits: Index out of range: %d, %d", row, col);
    const uint32_t e = static_cast<uint32_t>(GetElement(row, col / w)) & (w == 32 ? 0xFFFFFFFFu : (1u << w) - 1);
    return (e >> (col % w)) & 1u;
}

void TMtxInt::SetBits(int32_t row, int32_t col, bool value) {
    const int32_t w = 8 * ElemSize();
    if (fConditionCheck && (row < 0 || row >= FRows || col < 0 || int64_t(col) >= int64_t(FCols) * w))
        ERangeErrorRaiseFmt("TMtxInt.Bits: Index out of range: %d, %d", row, col);
    uint32_t e = static_cast<uint32_t>(GetElement(row, col / w));
    if (value)
        e |= 1u << (col % w);
    else
        e &= ~(1u << (col % w));
    PutElement(row, col / w, static_cast<int32_t>(e));
}

}  // namespace rovane
