// Thresholds, replacement, normalisation and random fills on dense containers.
// Each family has one core that dispatches on the destination's precision and
// one generic implementation of its forms; the members are thin entries that
// name their rule and their texts.
#include <cmath>

#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/RandomPrims.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

// A primitive and its in-place form, the precision left to the arguments.
#define ROVANE_PAIR_I(NAME)                                                  \
    [](auto&&... a) { return prim::NAME(std::forward<decltype(a)>(a)...); }, \
        [](auto&&... a) { return prim::NAME##_I(std::forward<decltype(a)>(a)...); }

// Calls the in-place twin when source and destination are the same run.
template <class Fn, class FnI, class T, class... A>
void Apply(Fn fn, FnI fnI, const T* x, T* d, int32_t len, A... args) {
    if (x == d)
        fnI(d, 0, len, args...);
    else
        fn(x, 0, d, 0, len, args...);
}

// The real run of a range: on complex data both parts, as independent reals.
template <class F>
F* RealRun(const TRovane& o, int32_t index) {
    return RealAt<F>(o, o.fComplex ? 2 * index : index).ptr();
}
int32_t RealLength(const TRovane& o, int32_t len) { return o.fComplex ? 2 * len : len; }

// ---------------------------------------------------------------------------
// ThreshBottom, ThreshTop, ThreshAbsLT, ThreshAbsGT: an element against one
// level. The first two keep the phase of complex data; the Abs rules are real.
// ---------------------------------------------------------------------------
enum class LevelRule { Bottom, Top, AbsLT, AbsGT };

struct LevelMember {
    LevelRule rule;
    const char* refused;        // in place: complex data or level not accepted
    const char* srcRefused;     // from Vec: the same on Vec
    const char* srcSelf;        // from Vec: Vec is Self
    const char* rangeSrcSelf;   // from a range of Vec: Vec is Self
    const char* rangeComplex;   // from a range of Vec: complexity not accepted
    const char* rangeIsDouble;  // from a range of Vec: precisions differ (null: left to the range check)
    const char* rangeRefused;   // from a range of Vec: level not accepted
    bool PhaseKeeping() const { return rule == LevelRule::Bottom || rule == LevelRule::Top; }
    // A negative level has no meaning for magnitudes; the Abs rules take no
    // complex data at all.
    bool Refuses(bool complex, double value) const {
        return PhaseKeeping() ? complex && value < 0 : complex || value < 0;
    }
};

constexpr LevelMember kThreshBottom{LevelRule::Bottom,
                                    "TRovane.ThreshBottom: Complex and (Value < 0)",
                                    "TRovane.ThreshBottom: Src.Complex and (Value < 0)",
                                    "TRovane.ThreshBottom: Src = Self",
                                    "TRovane.ThreshBottom: Src = Self",
                                    "TRovane.ThreshBottom: Complex <> Vec.Complex",
                                    nullptr,
                                    "TRovane.ThreshBottom: Src.Complex and (Value < 0)"};
constexpr LevelMember kThreshTop{LevelRule::Top,
                                 "TRovane.ThreshTop: Complex and (Value < 0)",
                                 "TRovane.ThreshTop: Src.Complex and (Value < 0)",
                                 "TRovane.ThreshTop: Src = Self",
                                 "TRovane.ThreshTop: Src = Self",
                                 "TRovane.ThreshTop: Complex <> Vec.Complex",
                                 "TRovane.ThreshTop: IsDouble <> Vec.IsDouble",
                                 "TRovane.ThreshTop: Src.Complex and (Value < 0)"};
// The whole-vector form of ThreshAbsLT reports Self under the name ThreshAbsGT.
constexpr LevelMember kThreshAbsLT{LevelRule::AbsLT,
                                   "TRovane.ThreshAbsLT: Complex or (Value < 0)",
                                   "TRovane.ThreshAbsLT: Src.Complex or (Value < 0)",
                                   "TRovane.ThreshAbsGT: Src = Self",
                                   "TRovane.ThreshAbsLT: Src = Self",
                                   "TRovane.ThreshAbsLT: Complex or Vec.Complex",
                                   nullptr,
                                   "TRovane.ThreshAbsLT: (Value < 0)"};
constexpr LevelMember kThreshAbsGT{LevelRule::AbsGT,
                                   "TRovane.ThreshAbsGT: Complex or (Value < 0)",
                                   "TRovane.ThreshAbsGT: Src.Complex or (Value < 0)",
                                   "TRovane.ThreshAbsGT: Src = Self",
                                   "TRovane.ThreshAbsGT: Src = Self",
                                   "TRovane.ThreshAbsGT: Complex or Vec.Complex",
                                   nullptr,
                                   "TRovane.ThreshAbsGT: (Value < 0)"};

void LevelCore(LevelRule rule, double value, const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex,
               int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F level = Narrow<F>(value);
        if (dst.fComplex && (rule == LevelRule::Bottom || rule == LevelRule::Top)) {
            const auto* x = CplxAt<F>(src, srcIndex).ptr();
            auto* d = CplxAt<F>(dst, dstIndex).ptr();
            if (rule == LevelRule::Bottom)
                Apply(ROVANE_PAIR_I(Threshold_LT), x, d, len, level);
            else
                Apply(ROVANE_PAIR_I(Threshold_GT), x, d, len, level);
            return;
        }
        // Real data; complex data reach the Abs rules only with checks off
        // and are then treated part by part.
        const F* x = RealRun<F>(src, srcIndex);
        F* d = RealRun<F>(dst, dstIndex);
        const int32_t n = RealLength(dst, len);
        switch (rule) {
            case LevelRule::Bottom:
                Apply(ROVANE_PAIR_I(Threshold_LT), x, d, n, level);
                break;
            case LevelRule::Top:
                Apply(ROVANE_PAIR_I(Threshold_GT), x, d, n, level);
                break;
            case LevelRule::AbsLT:
                Apply(ROVANE_PAIR_I(Threshold_LTAbs), x, d, n, level);
                break;
            case LevelRule::AbsGT:
                Apply(ROVANE_PAIR_I(Threshold_GTAbs), x, d, n, level);
                break;
        }
    });
}

TRovane& LevelInPlace(TRovane& self, const LevelMember& m, double value, int32_t index, int32_t len, bool whole) {
    // A negative level on complex data is refused whatever ConditionCheck says.
    if ((m.PhaseKeeping() || self.fConditionCheck) && m.Refuses(self.fComplex, value)) EInvalidArgumentRaise(m.refused);
    if (whole)
        len = self.fLength;
    else
        self.ValidateParams(index, len);
    if (len > 0) LevelCore(m.rule, value, self, self, len, index, index);
    return self;
}

TRovane& LevelFrom(TRovane& self, const TRovane& vec, const LevelMember& m, double value) {
    if (self.fConditionCheck) {
        if (&vec == &self) EInvalidArgumentRaise(m.srcSelf);
        if (m.Refuses(vec.fComplex, value)) EInvalidArgumentRaise(m.srcRefused);
    }
    self.Size(vec);
    if (self.fLength > 0) LevelCore(m.rule, value, vec, self, self.fLength, 0, 0);
    return self;
}

// The member's own checks come before the range check, so that each of its
// texts can be reached.
TRovane& LevelFromRange(TRovane& self, const TRovane& vec, const LevelMember& m, double value, int32_t vecIndex,
                        int32_t index, int32_t len) {
    if (self.fConditionCheck) {
        if (&vec == &self) EInvalidArgumentRaise(m.rangeSrcSelf);
        if (m.PhaseKeeping() ? vec.fComplex != self.fComplex : vec.fComplex || self.fComplex)
            EInvalidArgumentRaise(m.rangeComplex);
        if (m.rangeIsDouble && vec.fIsDouble != self.fIsDouble) EInvalidArgumentRaise(m.rangeIsDouble);
        if (m.Refuses(vec.fComplex, value)) EInvalidArgumentRaise(m.rangeRefused);
    }
    self.ValidateParams(vec, vecIndex, index, len);
    if (len > 0) LevelCore(m.rule, value, vec, self, len, index, vecIndex);
    return self;
}

// ---------------------------------------------------------------------------
// ThresholdLT, ThresholdGT: an element beyond a level takes a new value.
// ---------------------------------------------------------------------------
struct ValueMember {
    bool below;                       // LT (true) or GT
    const char* selfNotComplex;       // complex NewValue on real Self, in place
    const char* rangeSelfNotComplex;  // the same, from a range of Vec
    const char* vecNotComplex;        // complex NewValue from a real Vec
    const char* vecSelf;
    const char* vecComplex;           // from a range of Vec: complexity differs
};

constexpr ValueMember kThresholdLT{true,
                                   "TRovane.ThresholdLT: Self is not Complex",
                                   "TRovane.ThresholdLTV: Self is not Complex",
                                   "TRovane.ThresholdLT: Vec is not Complex",
                                   "TRovane.ThresholdLT: Vec = Self",
                                   "TRovane.ThresholdLT: Vec.Complex <> Complex"};
constexpr ValueMember kThresholdGT{false,
                                   "TRovane.ThresholdGT: Self is not Complex",
                                   "TRovane.ThresholdGTV: Self is not Complex",
                                   "TRovane.ThresholdGT: Vec is not Complex",
                                   "TRovane.ThresholdGT: Vec = Self",
                                   "TRovane.ThresholdGT: Vec.Complex <> Complex"};

// A real NewValue arrives as (NewValue, 0). Real data (with checks off also
// under a complex NewValue) take its real part.
void ValueCore(bool below, double level, const TCplx& newValue, const TRovane& src, TRovane& dst, int32_t len,
               int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F l = Narrow<F>(level);
        if (dst.fComplex) {
            const auto* x = CplxAt<F>(src, srcIndex).ptr();
            auto* d = CplxAt<F>(dst, dstIndex).ptr();
            const auto v = Narrow<F>(newValue);
            if (below)
                Apply(ROVANE_PAIR_I(Threshold_LTVal), x, d, len, l, v);
            else
                Apply(ROVANE_PAIR_I(Threshold_GTVal), x, d, len, l, v);
        } else {
            const F* x = RealAt<F>(src, srcIndex).ptr();
            F* d = RealAt<F>(dst, dstIndex).ptr();
            const F v = Narrow<F>(newValue.Re);
            if (below)
                Apply(ROVANE_PAIR_I(Threshold_LTVal), x, d, len, l, v);
            else
                Apply(ROVANE_PAIR_I(Threshold_GTVal), x, d, len, l, v);
        }
    });
}

TRovane& ValueInPlace(TRovane& self, const ValueMember& m, double level, const TCplx& newValue, bool complexValue,
                      int32_t index, int32_t len, bool whole) {
    if (self.fConditionCheck && complexValue && !self.fComplex) EInvalidArgumentRaise(m.selfNotComplex);
    if (whole)
        len = self.fLength;
    else
        self.ValidateParams(index, len);
    if (len > 0) ValueCore(m.below, level, newValue, self, self, len, index, index);
    return self;
}

TRovane& ValueFrom(TRovane& self, const TRovane& vec, const ValueMember& m, double level, const TCplx& newValue,
                   bool complexValue) {
    if (self.fConditionCheck) {
        if (&vec == &self) EInvalidArgumentRaise(m.vecSelf);
        if (complexValue && !vec.fComplex) EInvalidArgumentRaise(m.vecNotComplex);
    }
    self.Size(vec);
    if (self.fLength > 0) ValueCore(m.below, level, newValue, vec, self, self.fLength, 0, 0);
    return self;
}

TRovane& ValueFromRange(TRovane& self, const TRovane& vec, const ValueMember& m, double level, const TCplx& newValue,
                        bool complexValue, int32_t vecIndex, int32_t index, int32_t len) {
    if (self.fConditionCheck) {
        if (&vec == &self) EInvalidArgumentRaise(m.vecSelf);
        if (vec.fComplex != self.fComplex) EInvalidArgumentRaise(m.vecComplex);
        if (complexValue && !self.fComplex) EInvalidArgumentRaise(m.rangeSelfNotComplex);
    }
    self.ValidateParams(vec, vecIndex, index, len);
    if (len > 0) ValueCore(m.below, level, newValue, vec, self, len, index, vecIndex);
    return self;
}

// ---------------------------------------------------------------------------
// ThresholdGT_LT: both sides at once, real data.
// ---------------------------------------------------------------------------
struct GtLt {
    double gtLevel, gtValue, ltLevel, ltValue;
};

void GtLtChecks(const TRovane& self, const GtLt& t) {
    // Equal levels are accepted: only crossed levels are refused.
    if (self.fConditionCheck && t.gtLevel < t.ltLevel)
        EInvalidArgumentRaise("TRovane.ThresholdGT_LT: LTLevel > GTLevel");
}

void GtLtCore(const GtLt& t, const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        Apply(ROVANE_PAIR_I(Threshold_LTValGTVal), RealRun<F>(src, srcIndex),
              RealRun<F>(dst, dstIndex), RealLength(dst, len), Narrow<F>(t.ltLevel), Narrow<F>(t.ltValue),
              Narrow<F>(t.gtLevel), Narrow<F>(t.gtValue));
    });
}

TRovane& GtLtInPlace(TRovane& self, const GtLt& t, int32_t index, int32_t len, bool whole) {
    if (self.fConditionCheck && self.fComplex) EInvalidArgumentRaise("TRovane.ThresholdGT_LT: Self is Complex");
    GtLtChecks(self, t);
    if (whole)
        len = self.fLength;
    else
        self.ValidateParams(index, len);
    if (len > 0) GtLtCore(t, self, self, len, index, index);
    return self;
}

void GtLtVecChecks(const TRovane& self, const TRovane& vec) {
    if (!self.fConditionCheck) return;
    if (&vec == &self) EInvalidArgumentRaise("TRovane.ThresholdGT_LT: Vec = Self");
    if (vec.fComplex) EInvalidArgumentRaise("TRovane.ThresholdGT_LT: Vec is Complex");
}

// ---------------------------------------------------------------------------
// Replace. The nature of the value decides the test, in this order: a NaN
// matches NaNs, an infinity matches infinities of either sign (a complex
// element by either part), any other value matches within the tolerance.
// ---------------------------------------------------------------------------
template <class T>
bool HasNaN(const T& x) {
    if constexpr (IsComplex<T>)
        return std::isnan(x.Re) || std::isnan(x.Im);
    else
        return std::isnan(x);
}
template <class T>
bool HasInf(const T& x) {
    if constexpr (IsComplex<T>)
        return std::isinf(x.Re) || std::isinf(x.Im);
    else
        return std::isinf(x);
}

// realValue: a real value on complex data, which matches only elements with
// a zero imaginary part.
template <class T, class F>
void ReplaceRun(T* d, int32_t len, const T& value, const T& newValue, F tolerance, bool realValue) {
    auto where = [&](auto match) {
        for (int32_t i = 0; i < len; ++i)
            if (match(d[i])) d[i] = newValue;
    };
    if (HasNaN(value)) {
        if constexpr (IsComplex<T>)
            where([](const T& x) { return HasNaN(x); });
        else
            prim::ReplaceNAN_I(newValue, d, 0, len);
    } else if (HasInf(value)) {
        where([](const T& x) { return HasInf(x); });
    } else if constexpr (IsComplex<T>) {
        if (realValue)
            where([&](const T& x) { return x.Im == 0 && rovane::Equal(x, value, tolerance); });
        else
            where([&](const T& x) { return rovane::Equal(x, value, tolerance); });
    } else {
        where([&](const T& x) { return rovane::Equal(x, value, tolerance); });
    }
}

// The scalars come in double and are narrowed once for single data. A complex
// value on real data (only with checks off) matches nothing.
void ReplaceCore(TRovane& self, const TCplx& value, const TCplx& newValue, double tolerance, bool realValue,
                 int32_t index, int32_t len) {
    if (len <= 0 || (!realValue && !self.fComplex)) return;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (self.fComplex)
            ReplaceRun(CplxAt<F>(self, index).ptr(), len, Narrow<F>(value), Narrow<F>(newValue), Narrow<F>(tolerance),
                       realValue);
        else
            ReplaceRun(RealAt<F>(self, index).ptr(), len, Narrow<F>(value.Re), Narrow<F>(newValue.Re),
                       Narrow<F>(tolerance), false);
    });
}

void ReplaceComplexChecks(const TRovane& self, bool singleValue) {
    if (!self.fConditionCheck) return;
    if (!self.fComplex) EInvalidArgumentRaise("Not complex.");
    if (singleValue && self.fIsDouble) EInvalidArgumentRaise("Not in single precision.");
}

// ---------------------------------------------------------------------------
// Normalize: (x - SubOffset) / DivFactor. Real scalars need real data; a
// complex SubOffset needs complex data; a complex DivFactor is two passes,
// subtract, then divide.
// ---------------------------------------------------------------------------
enum class NormKind { Real, ComplexSub, ComplexBoth };

void NormCore(NormKind kind, const TCplx& sub, const TCplx& div, const TRovane& src, TRovane& dst, int32_t len,
              int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (!dst.fComplex) {
            // Real data; the complex kinds reach here only with checks off,
            // and then take the real parts of the scalars.
            prim::Normalize(RealAt<F>(src, srcIndex).ptr(), 0, RealAt<F>(dst, dstIndex).ptr(), 0, len,
                            Narrow<F>(sub.Re), Narrow<F>(div.Re));
            return;
        }
        const auto* x = CplxAt<F>(src, srcIndex).ptr();
        auto* d = CplxAt<F>(dst, dstIndex).ptr();
        if (kind != NormKind::ComplexBoth) {
            prim::Normalize(x, 0, d, 0, len, Narrow<F>(sub), Narrow<F>(div.Re));
            return;
        }
        if (x == d)
            prim::SubC_I(Narrow<F>(sub), d, 0, len);
        else
            prim::SubC(x, 0, Narrow<F>(sub), d, 0, len);
        prim::DivC_I(Narrow<F>(div), d, 0, len);
    });
}

// Real scalars on complex data and complex scalars on real data are refused
// whatever ConditionCheck says.
void NormKindCheck(NormKind kind, bool complex) {
    if (kind == NormKind::Real && complex) EInvalidArgumentRaise("Complex = True");
    if (kind != NormKind::Real && !complex) EInvalidArgumentRaise("not Complex");
}

TRovane& NormInPlace(TRovane& self, NormKind kind, const TCplx& sub, const TCplx& div, int32_t index, int32_t len,
                     bool whole) {
    NormKindCheck(kind, self.fComplex);
    if (whole)
        len = self.fLength;
    else
        self.ValidateParams(index, len);
    if (len > 0) NormCore(kind, sub, div, self, self, len, index, index);
    return self;
}

TRovane& NormFrom(TRovane& self, const TRovane& vec, NormKind kind, const TCplx& sub, const TCplx& div) {
    if (&vec == &self) EInvalidArgumentRaise("Self = Vec");
    if (kind == NormKind::Real) {
        NormKindCheck(kind, vec.fComplex);
        self.Size(vec);
        if (self.fLength > 0) NormCore(kind, sub, div, vec, self, self.fLength, 0, 0);
    } else if (!vec.fComplex) {
        // A real Vec is widened into Self first: (x, 0), then worked in place.
        self.ExtendToComplex(vec, true);
        if (self.fLength > 0) NormCore(kind, sub, div, self, self, self.fLength, 0, 0);
    } else {
        self.Size(vec);
        if (self.fLength > 0) NormCore(kind, sub, div, vec, self, self.fLength, 0, 0);
    }
    return self;
}

TRovane& NormFromRange(TRovane& self, const TRovane& vec, NormKind kind, const TCplx& sub, const TCplx& div,
                       int32_t vecIndex, int32_t index, int32_t len) {
    if (&vec == &self) EInvalidArgumentRaise("Self = Vec");
    if (self.fConditionCheck && vec.fComplex != self.fComplex) EInvalidArgumentRaise("Vec.Complex <> Complex");
    if (kind == NormKind::Real)
        NormKindCheck(kind, self.fComplex);
    else if (self.fConditionCheck && !self.fComplex)
        EInvalidArgumentRaise("Self.Complex = false");
    self.ValidateParams(vec, vecIndex, index, len);
    if (len > 0) NormCore(kind, sub, div, vec, self, len, index, vecIndex);
    return self;
}

// ---------------------------------------------------------------------------
// Random fills over the real run of Self (both parts of complex data). The
// field keeps the starting seed of the fill, so that the fill can be repeated.
// ---------------------------------------------------------------------------
TRovane& RandFill(TRovane& self, bool gauss, uint32_t seed, double a, double b) {
    (gauss ? self.GISeed : self.RISeed) = seed;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        F* d = RealAt<F>(self).ptr();
        const int32_t n = RealLength(self, self.fLength);
        if (gauss)
            prim::RandGauss_Direct(d, 0, n, seed, Narrow<F>(a), Narrow<F>(b));
        else
            prim::RandUniform_Direct(d, 0, n, seed, Narrow<F>(a), Narrow<F>(b));
    });
    return self;
}

uint32_t GivenSeed(uint32_t seed) {
    if (seed == 0) EInvalidArgumentRaise("Seed = 0");
    return seed;
}

#undef ROVANE_PAIR_I

}  // namespace

// ---- ThreshBottom, ThreshTop, ThreshAbsLT, ThreshAbsGT ---------------------
#define ROVANE_LEVEL_MEMBER(OP, M)                                                                           \
    TRovane& TRovane::OP(double value) { return LevelInPlace(*this, M, value, 0, 0, true); }                   \
    TRovane& TRovane::OP(double value, int32_t index, int32_t len) {                                          \
        return LevelInPlace(*this, M, value, index, len, false);                                              \
    }                                                                                                        \
    TRovane& TRovane::OP(const TRovane& vec, double value) { return LevelFrom(*this, vec, M, value); }        \
    TRovane& TRovane::OP(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len) {    \
        return LevelFromRange(*this, vec, M, value, vecIndex, index, len);                                    \
    }
ROVANE_LEVEL_MEMBER(ThreshBottom, kThreshBottom)
ROVANE_LEVEL_MEMBER(ThreshTop, kThreshTop)
ROVANE_LEVEL_MEMBER(ThreshAbsLT, kThreshAbsLT)
ROVANE_LEVEL_MEMBER(ThreshAbsGT, kThreshAbsGT)
#undef ROVANE_LEVEL_MEMBER

// ---- ThresholdLT, ThresholdGT -----------------------------------------------
#define ROVANE_VALUE_MEMBER(OP, M)                                                                             \
    TRovane& TRovane::OP(double level, double newValue) {                                                      \
        return ValueInPlace(*this, M, level, TCplx(newValue, 0), false, 0, 0, true);                           \
    }                                                                                                          \
    TRovane& TRovane::OP(double level, const TCplx& newValue) {                                                \
        return ValueInPlace(*this, M, level, newValue, true, 0, 0, true);                                      \
    }                                                                                                          \
    TRovane& TRovane::OP(double level, double newValue, int32_t index, int32_t len) {                          \
        return ValueInPlace(*this, M, level, TCplx(newValue, 0), false, index, len, false);                    \
    }                                                                                                          \
    TRovane& TRovane::OP(double level, const TCplx& newValue, int32_t index, int32_t len) {                    \
        return ValueInPlace(*this, M, level, newValue, true, index, len, false);                               \
    }                                                                                                          \
    TRovane& TRovane::OP(const TRovane& vec, double level, double newValue) {                                  \
        return ValueFrom(*this, vec, M, level, TCplx(newValue, 0), false);                                     \
    }                                                                                                          \
    TRovane& TRovane::OP(const TRovane& vec, double level, const TCplx& newValue) {                            \
        return ValueFrom(*this, vec, M, level, newValue, true);                                                \
    }                                                                                                          \
    TRovane& TRovane::OP(const TRovane& vec, double level, double newValue, int32_t vecIndex, int32_t index,   \
                         int32_t len) {                                                                        \
        return ValueFromRange(*this, vec, M, level, TCplx(newValue, 0), false, vecIndex, index, len);          \
    }                                                                                                          \
    TRovane& TRovane::OP(const TRovane& vec, double level, const TCplx& newValue, int32_t vecIndex,            \
                         int32_t index, int32_t len) {                                                         \
        return ValueFromRange(*this, vec, M, level, newValue, true, vecIndex, index, len);                     \
    }
ROVANE_VALUE_MEMBER(ThresholdLT, kThresholdLT)
ROVANE_VALUE_MEMBER(ThresholdGT, kThresholdGT)
#undef ROVANE_VALUE_MEMBER

// ---- ThresholdGT_LT ----------------------------------------------------------
TRovane& TRovane::ThresholdGT_LT(double gtLevel, double gtValue, double ltLevel, double ltValue) {
    return GtLtInPlace(*this, {gtLevel, gtValue, ltLevel, ltValue}, 0, 0, true);
}

TRovane& TRovane::ThresholdGT_LT(double gtLevel, double gtValue, double ltLevel, double ltValue, int32_t index,
                                 int32_t len) {
    return GtLtInPlace(*this, {gtLevel, gtValue, ltLevel, ltValue}, index, len, false);
}

TRovane& TRovane::ThresholdGT_LT(const TRovane& vec, double gtLevel, double gtValue, double ltLevel,
                                 double ltValue) {
    const GtLt t{gtLevel, gtValue, ltLevel, ltValue};
    GtLtVecChecks(*this, vec);
    GtLtChecks(*this, t);
    Size(vec);
    if (fLength > 0) GtLtCore(t, vec, *this, fLength, 0, 0);
    return *this;
}

TRovane& TRovane::ThresholdGT_LT(const TRovane& vec, double gtLevel, double gtValue, double ltLevel,
                                 double ltValue, int32_t vecIndex, int32_t index, int32_t len) {
    const GtLt t{gtLevel, gtValue, ltLevel, ltValue};
    GtLtVecChecks(*this, vec);
    if (fConditionCheck && fComplex) EInvalidArgumentRaise("TRovane.ThresholdGT_LT: Self is Complex");
    GtLtChecks(*this, t);
    ValidateParams(vec, vecIndex, index, len);
    if (len > 0) GtLtCore(t, vec, *this, len, index, vecIndex);
    return *this;
}

// ---- Replace, ReplaceNAN ---------------------------------------------------------
TRovane& TRovane::Replace(double value, double newValue, double tolerance) {
    ReplaceCore(*this, TCplx(value, 0), TCplx(newValue, 0), tolerance, true, 0, fLength);
    return *this;
}

TRovane& TRovane::Replace(double value, double newValue, int32_t index, int32_t len, double tolerance) {
    ValidateParams(index, len);
    ReplaceCore(*this, TCplx(value, 0), TCplx(newValue, 0), tolerance, true, index, len);
    return *this;
}

// Single values widen exactly and go the double way.
TRovane& TRovane::Replace(float value, float newValue, float tolerance) {
    return Replace(double(value), double(newValue), double(tolerance));
}

TRovane& TRovane::Replace(float value, float newValue, int32_t index, int32_t len, float tolerance) {
    return Replace(double(value), double(newValue), index, len, double(tolerance));
}

TRovane& TRovane::Replace(const TCplx& value, const TCplx& newValue, double tolerance) {
    ReplaceComplexChecks(*this, false);
    ReplaceCore(*this, value, newValue, tolerance, false, 0, fLength);
    return *this;
}

TRovane& TRovane::Replace(const TCplx& value, const TCplx& newValue, int32_t index, int32_t len, double tolerance) {
    ReplaceComplexChecks(*this, false);
    ValidateParams(index, len);
    ReplaceCore(*this, value, newValue, tolerance, false, index, len);
    return *this;
}

TRovane& TRovane::Replace(const TSCplx& value, const TSCplx& newValue, float tolerance) {
    ReplaceComplexChecks(*this, true);
    ReplaceCore(*this, TCplx(value), TCplx(newValue), tolerance, false, 0, fLength);
    return *this;
}

TRovane& TRovane::Replace(const TSCplx& value, const TSCplx& newValue, int32_t index, int32_t len, float tolerance) {
    ReplaceComplexChecks(*this, true);
    ValidateParams(index, len);
    ReplaceCore(*this, TCplx(value), TCplx(newValue), tolerance, false, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::ReplaceNAN(double value) { return ReplaceNAN(value, 0, fLength); }

TDenseRovane& TDenseRovane::ReplaceNAN(double value, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (len <= 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        prim::ReplaceNAN_I(Narrow<F>(value), RealRun<F>(*this, index), 0, RealLength(*this, len));
    });
    return *this;
}

// ---- Normalize ------------------------------------------------------------------
TRovane& TRovane::Normalize(double subOffset, double divFactor) {
    return NormInPlace(*this, NormKind::Real, TCplx(subOffset, 0), TCplx(divFactor, 0), 0, 0, true);
}
TRovane& TRovane::Normalize(double subOffset, double divFactor, int32_t index, int32_t len) {
    return NormInPlace(*this, NormKind::Real, TCplx(subOffset, 0), TCplx(divFactor, 0), index, len, false);
}
TRovane& TRovane::Normalize(const TRovane& vec, double subOffset, double divFactor) {
    return NormFrom(*this, vec, NormKind::Real, TCplx(subOffset, 0), TCplx(divFactor, 0));
}
TRovane& TRovane::Normalize(const TRovane& vec, double subOffset, double divFactor, int32_t vecIndex, int32_t index,
                            int32_t len) {
    return NormFromRange(*this, vec, NormKind::Real, TCplx(subOffset, 0), TCplx(divFactor, 0), vecIndex, index, len);
}
TRovane& TRovane::Normalize(const TCplx& subOffset, double divFactor) {
    return NormInPlace(*this, NormKind::ComplexSub, subOffset, TCplx(divFactor, 0), 0, 0, true);
}
TRovane& TRovane::Normalize(const TCplx& subOffset, double divFactor, int32_t index, int32_t len) {
    return NormInPlace(*this, NormKind::ComplexSub, subOffset, TCplx(divFactor, 0), index, len, false);
}
TRovane& TRovane::Normalize(const TRovane& vec, const TCplx& subOffset, double divFactor) {
    return NormFrom(*this, vec, NormKind::ComplexSub, subOffset, TCplx(divFactor, 0));
}
TRovane& TRovane::Normalize(const TRovane& vec, const TCplx& subOffset, double divFactor, int32_t vecIndex,
                            int32_t index, int32_t len) {
    return NormFromRange(*this, vec, NormKind::ComplexSub, subOffset, TCplx(divFactor, 0), vecIndex, index, len);
}
TRovane& TRovane::Normalize(const TCplx& subOffset, const TCplx& divFactor) {
    return NormInPlace(*this, NormKind::ComplexBoth, subOffset, divFactor, 0, 0, true);
}
TRovane& TRovane::Normalize(const TCplx& subOffset, const TCplx& divFactor, int32_t index, int32_t len) {
    return NormInPlace(*this, NormKind::ComplexBoth, subOffset, divFactor, index, len, false);
}
TRovane& TRovane::Normalize(const TRovane& vec, const TCplx& subOffset, const TCplx& divFactor) {
    return NormFrom(*this, vec, NormKind::ComplexBoth, subOffset, divFactor);
}
TRovane& TRovane::Normalize(const TRovane& vec, const TCplx& subOffset, const TCplx& divFactor, int32_t vecIndex,
                            int32_t index, int32_t len) {
    return NormFromRange(*this, vec, NormKind::ComplexBoth, subOffset, divFactor, vecIndex, index, len);
}

// ---- RandUniform, RandGauss --------------------------------------------------------
TRovane& TRovane::RandUniform() { return RandUniform(0.0, 1.0); }
TRovane& TRovane::RandUniform(double a, double b) { return RandFill(*this, false, NewRandomSeed(), a, b); }
TRovane& TRovane::RandUniform(uint32_t seed, double a, double b) {
    return RandFill(*this, false, GivenSeed(seed), a, b);
}
TRovane& TRovane::RandGauss() { return RandGauss(0.0, 1.0); }
TRovane& TRovane::RandGauss(double a, double b) { return RandFill(*this, true, NewRandomSeed(), a, b); }
TRovane& TRovane::RandGauss(uint32_t seed, double a, double b) { return RandFill(*this, true, GivenSeed(seed), a, b); }

}  // namespace rovane
