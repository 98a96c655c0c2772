// The arithmetic families on dense containers. Each family is a table of its
// primitives, stamped for double and single from the naming grammar, and one
// generic implementation of the family's forms over that table: a new family
// is a table line and its method entries.
#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

// Primitives of one elementwise family for the real field type F.
//   VecI    real x into d in place        VecIc   complex x into d in place
//   Vec     real x, y into d              Vecc    complex x, y into d
//   Veccd   complex x, real y into complex d
//   Value   real x with a real value      Valuec  complex x, complex value
//   Valuecd complex x, real value         Valuedc real x, complex value, complex d
//   ValueIc complex value into complex d in place
template <class Tag, class F>
struct FamilyOps;

#define ROVANE_FAMILY_OPS(TAG, OP)                                                                      \
    struct TAG {};                                                                                     \
    template <>                                                                                        \
    struct FamilyOps<TAG, double> {                                                                    \
        static constexpr auto VecI = ipps##OP##_64f_I_Idx;                                             \
        static constexpr auto VecIc = ipps##OP##_64fc_I_Idx;                                           \
        static constexpr auto Vec = ipps##OP##_64f_Idx;                                                \
        static constexpr auto Vecc = ipps##OP##_64fc_Idx;                                              \
        static constexpr auto Veccd = OP##Veccd_Idx;                                                   \
        static constexpr auto Value = OP##Value_Idx;                                                   \
        static constexpr auto Valuec = OP##Valuec_Idx;                                                 \
        static constexpr auto Valuecd = OP##Valuecd_Idx;                                               \
        static constexpr auto Valuedc = OP##Valuedc_Idx;                                               \
        static constexpr auto ValueIc = ipps##OP##C_64fc_I_Idx;                                        \
    };                                                                                                 \
    template <>                                                                                        \
    struct FamilyOps<TAG, float> {                                                                     \
        static constexpr auto VecI = sipps##OP##_32f_I_Idx;                                            \
        static constexpr auto VecIc = sipps##OP##_32fc_I_Idx;                                          \
        static constexpr auto Vec = sipps##OP##_32f_Idx;                                               \
        static constexpr auto Vecc = sipps##OP##_32fc_Idx;                                             \
        static constexpr auto Veccd = s##OP##Veccd_Idx;                                                \
        static constexpr auto Value = s##OP##Value_Idx;                                                \
        static constexpr auto Valuec = s##OP##Valuec_Idx;                                              \
        static constexpr auto Valuecd = s##OP##Valuecd_Idx;                                            \
        static constexpr auto Valuedc = s##OP##Valuedc_Idx;                                            \
        static constexpr auto ValueIc = sipps##OP##C_32fc_I_Idx;                                       \
    };

ROVANE_FAMILY_OPS(AddTag, Add)
#undef ROVANE_FAMILY_OPS

// The forms of a commutative two-operand family (x op y == y op x), written
// once over its primitive table. `name` is the family name in messages.
template <class Tag>
struct CommutativeFamily {
    template <class F>
    using Ops = FamilyOps<Tag, F>;

    // d[index..] op= vec[vecIndex..] over len elements; Self already has the
    // right complexity unless it is real and vec complex.
    static void InPlace(TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (self.fComplex && vec.fComplex) {
                Ops<F>::VecIc(CplxAt<F>(vec, vecIndex).p, CplxAt<F>(vec, vecIndex).i, CplxAt<F>(self, index).p,
                              CplxAt<F>(self, index).i, len);
            } else if (!self.fComplex && !vec.fComplex) {
                Ops<F>::VecI(RealAt<F>(vec, vecIndex).p, RealAt<F>(vec, vecIndex).i, RealAt<F>(self, index).p,
                             RealAt<F>(self, index).i, len);
            } else if (self.fComplex) {
                const CplxAt<F> d(self, index);
                const RealAt<F> y(vec, vecIndex);
                Ops<F>::Veccd(d.p, d.i, y.p, y.i, d.p, d.i, len);
            } else {
                // Real Self, complex vec: keep Self's values in a temporary,
                // since Size does not preserve them.
                CachedVec t;
                t->Copy(self);
                self.Size(self, true);
                const CplxAt<F> x(vec, vecIndex), d(self, index);
                const RealAt<F> y(*t, 0);
                Ops<F>::Veccd(x.p, x.i, y.p, y.i + index, d.p, d.i, len);
            }
        });
    }

    // d[index..] = x1[i1..] op x2[i2..]; Self is complex if either operand is.
    static void TwoOperands(TDenseRovane& self, const TRovane& x1, const TRovane& x2, int32_t i1, int32_t i2,
                            int32_t index, int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (x1.fComplex && x2.fComplex) {
                const CplxAt<F> a(x1, i1), b(x2, i2), d(self, index);
                Ops<F>::Vecc(a.p, a.i, b.p, b.i, d.p, d.i, len);
            } else if (x1.fComplex || x2.fComplex) {
                const TRovane& c = x1.fComplex ? x1 : x2;
                const TRovane& r = x1.fComplex ? x2 : x1;
                const CplxAt<F> a(c, x1.fComplex ? i1 : i2), d(self, index);
                const RealAt<F> b(r, x1.fComplex ? i2 : i1);
                Ops<F>::Veccd(a.p, a.i, b.p, b.i, d.p, d.i, len);
            } else {
                const RealAt<F> a(x1, i1), b(x2, i2), d(self, index);
                Ops<F>::Vec(a.p, a.i, b.p, b.i, d.p, d.i, len);
            }
        });
    }

    // d[index..] = x[xIndex..] op value, value real.
    static void WithValue(TDenseRovane& self, const TRovane& x, double value, int32_t xIndex, int32_t index,
                          int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (x.fComplex) {
                const CplxAt<F> a(x, xIndex), d(self, index);
                Ops<F>::Valuecd(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            } else if (self.fComplex) {
                const RealAt<F> a(x, xIndex);
                const CplxAt<F> d(self, index);
                Ops<F>::Valuedc(a.p, a.i, ComplexOf<F>(Narrow<F>(value), F(0)), d.p, d.i, len);
            } else {
                const RealAt<F> a(x, xIndex), d(self, index);
                Ops<F>::Value(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            }
        });
    }

    // d[index..] = x[xIndex..] op value, value complex; Self is complex.
    static void WithValue(TDenseRovane& self, const TRovane& x, const TCplx& value, int32_t xIndex, int32_t index,
                          int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            const CplxAt<F> d(self, index);
            if (x.fComplex) {
                const CplxAt<F> a(x, xIndex);
                Ops<F>::Valuec(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            } else {
                const RealAt<F> a(x, xIndex);
                Ops<F>::Valuedc(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            }
        });
    }

    // A complex value into a real Self: widen through a temporary.
    static void ComplexValueOnReal(TDenseRovane& self, const TCplx& value, int32_t index, int32_t len) {
        CachedVec t;
        t->Copy(self);
        self.Size(self, true);
        WithValue(self, *t, value, index, index, len);
    }
};

using AddFamily = CommutativeFamily<AddTag>;

}  // namespace

// ---------------------------------------------------------------------------
// The twelve members of Add.
// ---------------------------------------------------------------------------
TDenseRovane& TDenseRovane::Add(const TRovane& vec) {
    if (fConditionCheck) {
        if (&vec == this) EInvalidArgumentRaise("TRovane.Add: Self = Vec");
        if (vec.fLength != fLength) EInvalidArgumentRaise("TRovane.Add: Vec.Length <> Length");
        if (vec.fIsDouble != fIsDouble) EInvalidArgumentRaise("TRovane.Add: Vec.IsDouble <> IsDouble");
    }
    if (fLength == 0) {
        if (vec.fComplex) SetComplex(true);
        return *this;
    }
    AddFamily::InPlace(*this, vec, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec1, const TRovane& vec2) {
    if (fConditionCheck) {
        if (vec1.fLength != vec2.fLength) EInvalidArgumentRaise("TRovane.Add: Vec1.Length <> Vec2.Length");
        if (&vec1 == this || &vec2 == this) EInvalidArgumentRaise("TRovane.Add: (Self = Vec1) or (Self = Vec2)");
        if (vec1.fIsDouble != vec2.fIsDouble) EInvalidArgumentRaise("TRovane.Add: Vec1.IsDouble <> Vec2.IsDouble");
    }
    const TRovane& shape = vec1.fRovaneType == rvTMtx ? vec1 : vec2;
    Size(shape, vec1.fComplex || vec2.fComplex);
    if (fLength == 0) return *this;
    AddFamily::TwoOperands(*this, vec1, vec2, 0, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    ValidateParams(vec, vecIndex, index, len);
    if (vec.fComplex && !fComplex) ExtendToComplex(true);
    if (len == 0) return *this;
    AddFamily::InPlace(*this, vec, vecIndex, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index, int32_t vec2Index,
                                int32_t index, int32_t len) {
    ValidateParams(vec1, vec2, vec1Index, vec2Index, index, len);
    if ((vec1.fComplex || vec2.fComplex) && !fComplex) ExtendToComplex(true);
    if (len == 0) return *this;
    if (!vec1.fComplex && !vec2.fComplex && fComplex) {
        // Real sum into a temporary, widened into the range with zero
        // imaginary parts.
        CachedVec t;
        t->Size(len, false, fIsDouble);
        AddFamily::TwoOperands(static_cast<TDenseRovane&>(*t), vec1, vec2, vec1Index, vec2Index, 0, len);
        ExtendToComplex(*t, true, 0, index, len);
        return *this;
    }
    AddFamily::TwoOperands(*this, vec1, vec2, vec1Index, vec2Index, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::Add(double value) {
    if (fLength > 0) AddFamily::WithValue(*this, *this, value, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TCplx& value) {
    if (fLength == 0) {
        SetComplex(true);
        return *this;
    }
    if (!fComplex) {
        AddFamily::ComplexValueOnReal(*this, value, 0, fLength);
        return *this;
    }
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const CplxAt<F> d(*this);
        FamilyOps<AddTag, F>::ValueIc(Narrow<F>(value), d.p, d.i, fLength);
    });
    return *this;
}

TDenseRovane& TDenseRovane::Add(double value, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (len > 0) AddFamily::WithValue(*this, *this, value, index, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TCplx& value, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (!fComplex) ExtendToComplex(true);
    if (len > 0) AddFamily::WithValue(*this, *this, value, index, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec, double value) {
    if (fConditionCheck && &vec == this) EInvalidArgumentRaise("TDenseRovane.Add: Vec = Self");
    Size(vec);
    if (fLength > 0) AddFamily::WithValue(*this, vec, value, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec, const TCplx& value) {
    if (fConditionCheck && &vec == this) EInvalidArgumentRaise("TDenseRovane.Add: Vec = Self");
    Size(vec, true);
    if (fLength > 0) AddFamily::WithValue(*this, vec, value, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len) {
    ValidateParams(vec, vecIndex, index, len);
    if (fConditionCheck && &vec == this) EInvalidArgumentRaise("TDenseRovane.Add: Vec = Self");
    if (vec.fComplex && !fComplex) ExtendToComplex(true);
    if (len > 0) AddFamily::WithValue(*this, vec, value, vecIndex, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::Add(const TRovane& vec, const TCplx& value, int32_t vecIndex, int32_t index,
                                int32_t len) {
    ValidateParams(vec, vecIndex, index, len);
    if (fConditionCheck && &vec == this) EInvalidArgumentRaise("TDenseRovane.Add: Vec = Self");
    if (!fComplex) ExtendToComplex(true);
    if (len > 0) AddFamily::WithValue(*this, vec, value, vecIndex, index, len);
    return *this;
}

}  // namespace rovane
