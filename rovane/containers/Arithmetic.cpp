// The arithmetic families on dense containers. Each family is a table line
// naming its primitives, stamped for double and single, and the forms of all
// families are written once over those tables: a new family is a table line
// and its member entries.

#include <type_traits>

#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/BlasHelper.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

struct AddTag {};
struct SubTag {};
struct MulTag {};
struct DivTag {};
struct SubFromTag {};
struct DivideByTag {};

// A table entry: the facade primitive prim::NAME as a callable, the precision
// (and real or complex) left to the arguments. NONE marks a role a family lacks.
#define ROVANE_PRIM(NAME) [](auto&&... a) { return prim::NAME(std::forward<decltype(a)>(a)...); }
#define ROVANE_NONE nullptr

template <class P>
constexpr bool Present(P) {
    return !std::is_null_pointer_v<P>;
}

// ---------------------------------------------------------------------------
// Two-operand families. Roles, for the field type F:
//   Real, Cplx    catalogue order (x, y, d): d = y op x
//   RealI, CplxI  catalogue in place (x, d): d = d op x
//   Veccc         complex d = x op y, where the catalogue has no complex entry
//   Veccd         complex x, real y:  d = x op y
//   Vecdc         real x, complex y:  d = x op y; NONE for a commutative family
// ---------------------------------------------------------------------------
template <class Tag, class F>
struct VecOps;

#define ROVANE_VEC_FAMILY(TAG, REAL, REALI, CPLX, CPLXI, VECCC, VECCD, VECDC) \
    template <class F>                                                      \
    struct VecOps<TAG, F> {                                                 \
        static constexpr auto Real = REAL;                                  \
        static constexpr auto RealI = REALI;                                \
        static constexpr auto Cplx = CPLX;                                  \
        static constexpr auto CplxI = CPLXI;                                \
        static constexpr auto Veccc = VECCC;                                \
        static constexpr auto Veccd = VECCD;                                \
        static constexpr auto Vecdc = VECDC;                                \
    };

// clang-format off
//                family  real                     real in place              complex                  complex in place           complex x op y   complex x, real y     real x, complex y
ROVANE_VEC_FAMILY(AddTag, ROVANE_PRIM(Add), ROVANE_PRIM(Add_I), ROVANE_PRIM(Add), ROVANE_PRIM(Add_I), ROVANE_NONE,      ROVANE_PRIM(AddVeccd), ROVANE_NONE)
ROVANE_VEC_FAMILY(SubTag, ROVANE_PRIM(Sub), ROVANE_PRIM(Sub_I), ROVANE_PRIM(Sub), ROVANE_PRIM(Sub_I), ROVANE_NONE,      ROVANE_PRIM(SubVeccd), ROVANE_PRIM(SubVecdc))
ROVANE_VEC_FAMILY(MulTag, ROVANE_PRIM(Mul), ROVANE_PRIM(Mul_I), ROVANE_PRIM(Mul), ROVANE_PRIM(Mul_I), ROVANE_NONE,      ROVANE_PRIM(MulVeccd), ROVANE_NONE)
ROVANE_VEC_FAMILY(DivTag, ROVANE_PRIM(Div), ROVANE_NONE,        ROVANE_NONE,      ROVANE_NONE,        ROVANE_PRIM(DivVeccc), ROVANE_PRIM(DivVeccd), ROVANE_PRIM(DivVecdc))
// clang-format on
#undef ROVANE_VEC_FAMILY

// ---------------------------------------------------------------------------
// Families with a scalar operand, d = f(x, value) as the family defines f:
//   Value   real x, real value        Valuec   complex x, complex value
//   Valuecd complex x, real value     Valuedc  real x, complex value, complex d
//   ValueIc complex value into complex d in place; NONE: Valuec with x = d
// ---------------------------------------------------------------------------
template <class Tag, class F>
struct ValueOps;

#define ROVANE_VALUE_FAMILY(TAG, STEM, VALUEIC)                          \
    template <class F>                                                   \
    struct ValueOps<TAG, F> {                                            \
        static constexpr auto Value = ROVANE_PRIM(STEM);                 \
        static constexpr auto Valuec = ROVANE_PRIM(STEM##c);             \
        static constexpr auto Valuecd = ROVANE_PRIM(STEM##cd);           \
        static constexpr auto Valuedc = ROVANE_PRIM(STEM##dc);           \
        static constexpr auto ValueIc = VALUEIC;                         \
    };

//                  family      x op value     complex value in place
ROVANE_VALUE_FAMILY(AddTag, AddValue, ROVANE_PRIM(AddC_I))
ROVANE_VALUE_FAMILY(MulTag, ScaleByValue, ROVANE_PRIM(MulC_I))
ROVANE_VALUE_FAMILY(SubFromTag, SubFromValue, ROVANE_PRIM(SubCRev_I))
ROVANE_VALUE_FAMILY(DivideByTag, DivideValue, ROVANE_NONE)
#undef ROVANE_VALUE_FAMILY

#undef ROVANE_PRIM
#undef ROVANE_NONE

// ---------------------------------------------------------------------------
// One implementation of a two-operand family over its table.
// ---------------------------------------------------------------------------
template <class Tag>
struct VecFamily {
    template <class F>
    using Ops = VecOps<Tag, F>;
    template <class F>
    using C = ComplexOf<F>;

    // d = a op b, by the kinds of a and b.
    template <class F>
    static void Rr(const F* a, int32_t ai, const F* b, int32_t bi, F* d, int32_t di, int32_t n) {
        Ops<F>::Real(b, bi, a, ai, d, di, n);
    }
    template <class F>
    static void Cc(const C<F>* a, int32_t ai, const C<F>* b, int32_t bi, C<F>* d, int32_t di, int32_t n) {
        if constexpr (Present(Ops<F>::Cplx))
            Ops<F>::Cplx(b, bi, a, ai, d, di, n);
        else
            Ops<F>::Veccc(a, ai, b, bi, d, di, n);
    }
    template <class F>
    static void Cr(const C<F>* a, int32_t ai, const F* b, int32_t bi, C<F>* d, int32_t di, int32_t n) {
        Ops<F>::Veccd(a, ai, b, bi, d, di, n);
    }
    template <class F>
    static void Rc(const F* a, int32_t ai, const C<F>* b, int32_t bi, C<F>* d, int32_t di, int32_t n) {
        if constexpr (Present(Ops<F>::Vecdc))
            Ops<F>::Vecdc(a, ai, b, bi, d, di, n);
        else
            Ops<F>::Veccd(b, bi, a, ai, d, di, n);
    }
    // d = d op x, through the in-place entry where the catalogue has one.
    template <class F>
    static void RrI(const F* x, int32_t xi, F* d, int32_t di, int32_t n) {
        if constexpr (Present(Ops<F>::RealI))
            Ops<F>::RealI(x, xi, d, di, n);
        else
            Rr<F>(d, di, x, xi, d, di, n);
    }
    template <class F>
    static void CcI(const C<F>* x, int32_t xi, C<F>* d, int32_t di, int32_t n) {
        if constexpr (Present(Ops<F>::CplxI))
            Ops<F>::CplxI(x, xi, d, di, n);
        else
            Cc<F>(d, di, x, xi, d, di, n);
    }

    // d[index..] = d[index..] op vec[vecIndex..] over len elements. Self has
    // its final complexity unless it is real and vec complex, which happens
    // only for the whole object.
    static void InPlace(TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (self.fComplex && vec.fComplex) {
                const CplxAt<F> x(vec, vecIndex), d(self, index);
                CcI<F>(x.p, x.i, d.p, d.i, len);
            } else if (!self.fComplex && !vec.fComplex) {
                const RealAt<F> x(vec, vecIndex), d(self, index);
                RrI<F>(x.p, x.i, d.p, d.i, len);
            } else if (self.fComplex) {
                const CplxAt<F> d(self, index);
                const RealAt<F> y(vec, vecIndex);
                Cr<F>(d.p, d.i, y.p, y.i, d.p, d.i, len);
            } else {
                // Real Self, complex vec: keep Self's values in a temporary,
                // since Size does not preserve them.
                CachedVec t;
                t->Copy(self);
                self.Size(self, true);
                const RealAt<F> x(*t, index);
                const CplxAt<F> y(vec, vecIndex), d(self, index);
                Rc<F>(x.p, x.i, y.p, y.i, d.p, d.i, len);
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
                Cc<F>(a.p, a.i, b.p, b.i, d.p, d.i, len);
            } else if (x1.fComplex) {
                const CplxAt<F> a(x1, i1), d(self, index);
                const RealAt<F> b(x2, i2);
                Cr<F>(a.p, a.i, b.p, b.i, d.p, d.i, len);
            } else if (x2.fComplex) {
                const RealAt<F> a(x1, i1);
                const CplxAt<F> b(x2, i2), d(self, index);
                Rc<F>(a.p, a.i, b.p, b.i, d.p, d.i, len);
            } else {
                const RealAt<F> a(x1, i1), b(x2, i2), d(self, index);
                Rr<F>(a.p, a.i, b.p, b.i, d.p, d.i, len);
            }
        });
    }
};

using AddFamily = VecFamily<AddTag>;
using SubFamily = VecFamily<SubTag>;
using MulFamily = VecFamily<MulTag>;
using DivFamily = VecFamily<DivTag>;

// ---------------------------------------------------------------------------
// One implementation of a scalar family over its table.
// ---------------------------------------------------------------------------
template <class Tag>
struct ValueFamily {
    template <class F>
    using Ops = ValueOps<Tag, F>;

    // d[index..] = f(x[xIndex..], value), value real.
    static void WithValue(TRovane& self, const TRovane& x, double value, int32_t xIndex, int32_t index,
                          int32_t len) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if (x.fComplex) {
                const CplxAt<F> a(x, xIndex), d(self, index);
                Ops<F>::Valuecd(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            } else if (self.fComplex) {
                // A real run into a complex range: the real result, widened
                // with zero imaginary parts.
                Scratch<F, 1> t(len);
                const RealAt<F> a(x, xIndex);
                Ops<F>::Value(a.p, a.i, Narrow<F>(value), t[0], 0, len);
                self.ExtendToComplex(t.Vec(), true, 0, index, len);
            } else {
                const RealAt<F> a(x, xIndex), d(self, index);
                Ops<F>::Value(a.p, a.i, Narrow<F>(value), d.p, d.i, len);
            }
        });
    }

    // d[index..] = f(x[xIndex..], value), value complex; Self is complex.
    static void WithValue(TRovane& self, const TRovane& x, const TCplx& value, int32_t xIndex, int32_t index,
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

    // A complex value into the whole of a complex Self.
    static void ComplexInPlace(TRovane& self, const TCplx& value) {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            if constexpr (Present(Ops<F>::ValueIc)) {
                const CplxAt<F> d(self);
                Ops<F>::ValueIc(Narrow<F>(value), d.p, d.i, self.fLength);
            } else {
                WithValue(self, self, value, 0, 0, self.fLength);
            }
        });
    }

    // A complex value on a real Self: Self is copied to a temporary and
    // resized complex, and the mixed entry writes it.
    static void ComplexValueOnReal(TRovane& self, const TCplx& value) {
        CachedVec t;
        t->Copy(self);
        self.Size(self, true);
        WithValue(self, *t, value, 0, 0, self.fLength);
    }
};

// ---------------------------------------------------------------------------
// The forms of a two-operand member, written once over a core: an object with
// InPlace(self, vec, vecIndex, index, len) and TwoOperands(self, x1, x2, i1,
// i2, index, len), as VecFamily has them.
// ---------------------------------------------------------------------------
struct VecTexts {
    const char* selfIsVec;
    bool selfAlways;  // Self = Vec is refused also with ConditionCheck off
    const char* length;
    const char* isDouble;
    const char* length2;
    const char* selfIsOperand;
    const char* isDouble2;
};

struct VecForms {
    template <class Core>
    static TDenseRovane& Whole(TDenseRovane& self, const TRovane& vec, const VecTexts& t, const Core& core) {
        if ((t.selfAlways || self.fConditionCheck) && &vec == &self) EInvalidArgumentRaise(t.selfIsVec);
        if (self.fConditionCheck) {
            if (vec.fLength != self.fLength) EInvalidArgumentRaise(t.length);
            if (vec.fIsDouble != self.fIsDouble) EInvalidArgumentRaise(t.isDouble);
        }
        if (self.fLength == 0) {
            // An empty Self takes the kind of Vec.
            if (vec.fComplex) self.SetComplex(true);
            return self;
        }
        const Unaliased src(vec, 0, self, 0, self.fLength);
        core.InPlace(self, src.Src(), src.Index(), 0, self.fLength);
        return self;
    }

    template <class Core>
    static TDenseRovane& Whole2(TDenseRovane& self, const TRovane& x1, const TRovane& x2, const VecTexts& t,
                                const Core& core) {
        if (self.fConditionCheck) {
            if (x1.fLength != x2.fLength) EInvalidArgumentRaise(t.length2);
            if (&x1 == &self || &x2 == &self) EInvalidArgumentRaise(t.selfIsOperand);
            if (x1.fIsDouble != x2.fIsDouble) EInvalidArgumentRaise(t.isDouble2);
        }
        // The operand that is a matrix gives the shape.
        const TRovane& shape = x1.fRovaneType == rvTMtx ? x1 : x2;
        self.Size(shape, x1.fComplex || x2.fComplex);
        if (self.fLength > 0) {
            const Unaliased a(x1, 0, self, 0, self.fLength), b(x2, 0, self, 0, self.fLength);
            core.TwoOperands(self, a.Src(), b.Src(), a.Index(), b.Index(), 0, self.fLength);
        }
        return self;
    }

    template <class Core>
    static TDenseRovane& Range(TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len,
                               const Core& core) {
        self.ValidateParams(vec, vecIndex, index, len);
        if (vec.fComplex && !self.fComplex) self.ExtendToComplex(true);
        if (len > 0) {
            const Unaliased src(vec, vecIndex, self, index, len);
            core.InPlace(self, src.Src(), src.Index(), index, len);
        }
        return self;
    }

    template <class Core>
    static TDenseRovane& Range2(TDenseRovane& self, const TRovane& x1, const TRovane& x2, int32_t i1, int32_t i2,
                                int32_t index, int32_t len, const Core& core) {
        self.ValidateParams(x1, x2, i1, i2, index, len);
        if ((x1.fComplex || x2.fComplex) && !self.fComplex) self.ExtendToComplex(true);
        if (len <= 0) return self;
        if (!x1.fComplex && !x2.fComplex && self.fComplex) {
            // A real result into a complex range: through a temporary,
            // widened with zero imaginary parts.
            CachedVec t;
            t->Size(len, false, self.fIsDouble);
            core.TwoOperands(*t, x1, x2, i1, i2, 0, len);
            self.ExtendToComplex(*t, true, 0, index, len);
            return self;
        }
        const Unaliased a(x1, i1, self, index, len), b(x2, i2, self, index, len);
        core.TwoOperands(self, a.Src(), b.Src(), a.Index(), b.Index(), index, len);
        return self;
    }
};

// The forms of a scalar member over a ValueFamily. `vecIsSelf` is the text of
// the forms from a vector.
template <class Family>
struct ValueForms {
    template <class S>
    static S& InPlace(S& self, double value) {
        if (self.fLength > 0) Family::WithValue(self, self, value, 0, 0, self.fLength);
        return self;
    }
    template <class S>
    static S& InPlace(S& self, const TCplx& value) {
        if (self.fLength == 0)
            self.SetComplex(true);
        else if (!self.fComplex)
            Family::ComplexValueOnReal(self, value);
        else
            Family::ComplexInPlace(self, value);
        return self;
    }
    template <class S>
    static S& Range(S& self, double value, int32_t index, int32_t len) {
        self.ValidateParams(index, len);
        if (len > 0) Family::WithValue(self, self, value, index, index, len);
        return self;
    }
    template <class S>
    static S& Range(S& self, const TCplx& value, int32_t index, int32_t len) {
        self.ValidateParams(index, len);
        if (!self.fComplex) self.ExtendToComplex(true);
        if (len > 0) Family::WithValue(self, self, value, index, index, len);
        return self;
    }
    template <class S>
    static S& From(S& self, const TRovane& vec, double value, const char* vecIsSelf) {
        if (self.fConditionCheck && &vec == &self) EInvalidArgumentRaise(vecIsSelf);
        self.Size(vec);
        if (self.fLength > 0) {
            const Unaliased src(vec, 0, self, 0, self.fLength);
            Family::WithValue(self, src.Src(), value, src.Index(), 0, self.fLength);
        }
        return self;
    }
    template <class S>
    static S& From(S& self, const TRovane& vec, const TCplx& value, const char* vecIsSelf) {
        if (self.fConditionCheck && &vec == &self) EInvalidArgumentRaise(vecIsSelf);
        self.Size(vec, true);
        if (self.fLength > 0) {
            const Unaliased src(vec, 0, self, 0, self.fLength);
            Family::WithValue(self, src.Src(), value, src.Index(), 0, self.fLength);
        }
        return self;
    }
    template <class S>
    static S& From(S& self, const TRovane& vec, double value, int32_t vecIndex, int32_t index,
                              int32_t len, const char* vecIsSelf) {
        self.ValidateParams(vec, vecIndex, index, len);
        if (self.fConditionCheck && &vec == &self) EInvalidArgumentRaise(vecIsSelf);
        if (vec.fComplex && !self.fComplex) self.ExtendToComplex(true);
        if (len > 0) {
            const Unaliased src(vec, vecIndex, self, index, len);
            Family::WithValue(self, src.Src(), value, src.Index(), index, len);
        }
        return self;
    }
    template <class S>
    static S& From(S& self, const TRovane& vec, const TCplx& value, int32_t vecIndex,
                              int32_t index, int32_t len, const char* vecIsSelf) {
        self.ValidateParams(vec, vecIndex, index, len);
        if (self.fConditionCheck && &vec == &self) EInvalidArgumentRaise(vecIsSelf);
        if (!self.fComplex) self.ExtendToComplex(true);
        if (len > 0) {
            const Unaliased src(vec, vecIndex, self, index, len);
            Family::WithValue(self, src.Src(), value, src.Index(), index, len);
        }
        return self;
    }
};

// ---------------------------------------------------------------------------
// Compositions on top of the families.
// ---------------------------------------------------------------------------

// Self * conj(Vec): the complex pair in one pass; a real Vec is its own
// conjugate; a complex Vec with a real Self is conjugated into a temporary
// and multiplied in.
struct ConjMulCore {
    static void Conjugate(const TRovane& src, int32_t srcIndex, int32_t len, TVec& t) {
        t.Size(len, true, src.fIsDouble);
        ByWidth(src.fIsDouble, [&](auto f) {
            using F = decltype(f);
            const CplxAt<F> x(src, srcIndex), d(t);
            prim::Conj(x.p, x.i, d.p, d.i, len);
        });
    }
    template <class F>
    static void ConjMulcc(const TRovane& x1, const TRovane& x2, TDenseRovane& self, int32_t i1, int32_t i2,
                          int32_t index, int32_t len) {
        const CplxAt<F> a(x1, i1), b(x2, i2), d(self, index);
        prim::ConjMulcc(a.p, a.i, b.p, b.i, d.p, d.i, len);
    }
    void InPlace(TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) const {
        if (!vec.fComplex) return MulFamily::InPlace(self, vec, vecIndex, index, len);
        if (self.fComplex)
            return ByWidth(self.fIsDouble, [&](auto f) {
                ConjMulcc<decltype(f)>(self, vec, self, index, vecIndex, index, len);
            });
        CachedVec c;
        Conjugate(vec, vecIndex, len, *c);
        MulFamily::InPlace(self, *c, 0, index, len);
    }
    void TwoOperands(TDenseRovane& self, const TRovane& x1, const TRovane& x2, int32_t i1, int32_t i2, int32_t index,
                     int32_t len) const {
        if (!x2.fComplex) return MulFamily::TwoOperands(self, x1, x2, i1, i2, index, len);
        if (x1.fComplex)
            return ByWidth(self.fIsDouble,
                           [&](auto f) { ConjMulcc<decltype(f)>(x1, x2, self, i1, i2, index, len); });
        CachedVec c;
        Conjugate(x2, i2, len, *c);
        MulFamily::TwoOperands(self, x1, *c, i1, 0, index, len);
    }
};

// The thresholded inverse of den[denIndex..] into t, complex when den is.
// False when the primitive refuses the threshold (a negative one).
template <class F>
bool ThresholdedInverse(const TRovane& den, double threshold, int32_t denIndex, int32_t len, TVec& t) {
    t.Size(len, den.fComplex, std::is_same_v<F, double>);
    IppStatus status;
    if (den.fComplex) {
        const CplxAt<F> x(den, denIndex), d(t);
        status = prim::Threshold_LTInv(x.p, x.i, d.p, d.i, len, Narrow<F>(threshold));
    } else {
        const RealAt<F> x(den, denIndex), d(t);
        status = prim::Threshold_LTInv(x.p, x.i, d.p, d.i, len, Narrow<F>(threshold));
    }
    return status == ippStsNoErr;
}

// (a, a) times the parts (re, im) of 1/z, element by element on the doubled
// real run: a / z without a complex product.
template <class F>
void MulPartByPart(const TVec& inv, TDenseRovane& self, int32_t index, int32_t len) {
    const RealAt<F> t(inv), d(self, 2 * index);
    prim::Mul_I(t.p, t.i, d.p, d.i, 2 * len);
}

// Division through the thresholded inverse of the denominator, which is then
// multiplied in.
struct ThresholdCore {
    double threshold;

    // Self[index..] / vec[vecIndex..]. A real Self with a complex vec is
    // extended with its values in both parts, (a, a); on a range only the
    // range takes that form and the rest gets zero imaginary parts.
    void InPlace(TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) const {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            CachedVec inv;
            if (!ThresholdedInverse<F>(vec, threshold, vecIndex, len, *inv)) return;
            if (!vec.fComplex || self.fComplex) return MulFamily::InPlace(self, *inv, 0, index, len);
            if (index == 0 && len == self.fLength) {
                self.ExtendToComplex(false);
            } else {
                CachedVec num;
                num->Size(len, false, self.fIsDouble);
                const RealAt<F> x(self, index), d(*num);
                prim::Copy(x.p, x.i, d.p, d.i, len);
                self.ExtendToComplex(true);
                self.ExtendToComplex(*num, false, 0, index, len);
            }
            MulPartByPart<F>(*inv, self, index, len);
        });
    }

    // Self[index..] = num[i1..] / den[i2..].
    void TwoOperands(TDenseRovane& self, const TRovane& num, const TRovane& den, int32_t i1, int32_t i2,
                     int32_t index, int32_t len) const {
        ByWidth(self.fIsDouble, [&](auto f) {
            using F = decltype(f);
            CachedVec inv;
            if (!ThresholdedInverse<F>(den, threshold, i2, len, *inv)) return;
            if (!den.fComplex || num.fComplex) return MulFamily::TwoOperands(self, num, *inv, i1, 0, index, len);
            self.ExtendToComplex(num, false, i1, index, len);
            MulPartByPart<F>(*inv, self, index, len);
        });
    }
};

// Self + Vec * factor with the BLAS axpy; Self is already complex if Vec is.
void AxpyReal(TDenseRovane& self, const TRovane& vec, double factor, int32_t vecIndex, int32_t index, int32_t len) {
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F a = Narrow<F>(factor);
        if (vec.fComplex)  // both complex: the doubled real run
            prim::Axpy(2 * len, a, RealAt<F>(vec, 2 * vecIndex).ptr(), 1, RealAt<F>(self, 2 * index).ptr(), 1);
        else if (self.fComplex)  // a real Vec scales into the real parts
            prim::Axpy(len, a, RealAt<F>(vec, vecIndex).ptr(), 1, RealAt<F>(self, 2 * index).ptr(), 2);
        else
            prim::Axpy(len, a, RealAt<F>(vec, vecIndex).ptr(), 1, RealAt<F>(self, index).ptr(), 1);
    });
}

// Self + Vec * factor, factor complex, with zaxpy; Self is complex. A real
// Vec is widened into a complex temporary first.
void AxpyComplex(TDenseRovane& self, const TRovane& vec, const TCplx& factor, int32_t vecIndex, int32_t index,
                 int32_t len) {
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const ComplexOf<F> a = Narrow<F>(factor);
        const CplxAt<F> d(self, index);
        if (vec.fComplex) {
            prim::Axpy(len, &a, CplxAt<F>(vec, vecIndex).ptr(), 1, d.ptr(), 1);
        } else {
            CachedVec t;
            t->Size(len, true, self.fIsDouble);
            t->ExtendToComplex(vec, true, vecIndex, 0, len);
            prim::Axpy(len, &a, CplxAt<F>(*t).ptr(), 1, d.ptr(), 1);
        }
    });
}

// Self[index..] += x1[i1..] * x2[i2..], all of Self's complexity.
void AddProductCore(TDenseRovane& self, const TRovane& x1, const TRovane& x2, int32_t i1, int32_t i2, int32_t index,
                    int32_t len) {
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (self.fComplex) {
            const CplxAt<F> a(x1, i1), b(x2, i2), d(self, index);
            prim::AddProduct(a.p, a.i, b.p, b.i, d.p, d.i, len);
        } else {
            const RealAt<F> a(x1, i1), b(x2, i2), d(self, index);
            prim::AddProduct(a.p, a.i, b.p, b.i, d.p, d.i, len);
        }
    });
}

bool IsOne(double v) { return v == S_ONE; }
bool IsOne(const TCplx& v) { return v.Re == C_ONE.Re && v.Im == C_ONE.Im; }

// ---------------------------------------------------------------------------
// Texts of the members.
// ---------------------------------------------------------------------------
constexpr VecTexts kAddTexts{"TRovane.Add: Self = Vec",
                             false,
                             "TRovane.Add: Vec.Length <> Length",
                             "TRovane.Add: Vec.IsDouble <> IsDouble",
                             "TRovane.Add: Vec1.Length <> Vec2.Length",
                             "TRovane.Add: (Self = Vec1) or (Self = Vec2)",
                             "TRovane.Add: Vec1.IsDouble <> Vec2.IsDouble"};
constexpr VecTexts kSubTexts{"TVec.Sub: Self = Vec",
                             false,
                             "TVec.Sub: Vec.Length <> Length",
                             "TVec.Sub: Vec.IsDouble <> IsDouble",
                             "TVec.Sub: Vec1.Length <> Vec2.Length",
                             "TVec.Sub: (Self = Vec1) or (Self = Vec2)",
                             "TVec.Sub: Vec1.IsDouble <> Vec2.IsDouble"};
// Mul refuses Self = Vec whatever ConditionCheck says.
constexpr VecTexts kMulTexts{"Self = Vec",           true, "Length <> Vec.Length", "IsDouble <> Vec.IsDouble",
                             "Vec1.Length <> Vec2.Length", "(Self = Vec1) or (Self = Vec2)",
                             "Vec1.IsDouble <> Vec2.IsDouble"};
constexpr VecTexts kConjMulTexts{"TVec.ConjMul: Self = Vec",   true, "Length <> Vec.Length", "IsDouble <> Vec.IsDouble",
                                 "Vec1.Length <> Vec2.Length", "(Self = Vec1) or (Self = Vec2)",
                                 "Vec1.IsDouble <> Vec2.IsDouble"};
constexpr VecTexts kDivideTexts{"TDenseRovane.Divide: Self = Vec",
                                false,
                                "TDenseRovane.Divide: Length <> Vec.Length",
                                "TDenseRovane.Divide: IsDouble <> Vec.IsDouble",
                                "Num.Length <> Den.Length",
                                "(Self = Num) or (Self = Den)",
                                "Num.IsDouble <> Den.IsDouble"};
// The threshold forms report like Mul, under ConditionCheck.
constexpr VecTexts kThresholdTexts{"Self = Vec",           false, "Length <> Vec.Length", "IsDouble <> Vec.IsDouble",
                                   "Vec1.Length <> Vec2.Length", "(Self = Vec1) or (Self = Vec2)",
                                   "Vec1.IsDouble <> Vec2.IsDouble"};

}  // namespace

// ---------------------------------------------------------------------------
// Member entries.
// ---------------------------------------------------------------------------

// Sub: the vector forms have their own entries, the scalar forms add the
// negated value.
TDenseRovane& TDenseRovane::Sub(double value) { return Add(-value); }
TDenseRovane& TDenseRovane::Sub(const TCplx& value) { return Add(-value); }
TDenseRovane& TDenseRovane::Sub(double value, int32_t index, int32_t len) { return Add(-value, index, len); }
TDenseRovane& TDenseRovane::Sub(const TCplx& value, int32_t index, int32_t len) { return Add(-value, index, len); }
TDenseRovane& TDenseRovane::Sub(const TRovane& vec, double value) { return Add(vec, -value); }
TDenseRovane& TDenseRovane::Sub(const TRovane& vec, const TCplx& value) { return Add(vec, -value); }
TDenseRovane& TDenseRovane::Sub(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len) {
    return Add(vec, -value, vecIndex, index, len);
}
TDenseRovane& TDenseRovane::Sub(const TRovane& vec, const TCplx& value, int32_t vecIndex, int32_t index,
                                int32_t len) {
    return Add(vec, -value, vecIndex, index, len);
}



// Divide thresholded; DivideVec forwards.

TDenseRovane& TDenseRovane::Divide(const TRovane& vec, double threshold) {
    return VecForms::Whole(*this, vec, kThresholdTexts, ThresholdCore{threshold});
}
TDenseRovane& TDenseRovane::Divide(const TRovane& num, const TRovane& den, double threshold) {
    return VecForms::Whole2(*this, num, den, kThresholdTexts, ThresholdCore{threshold});
}
TDenseRovane& TDenseRovane::Divide(const TRovane& vec, double threshold, int32_t vecIndex, int32_t index,
                                   int32_t len) {
    // The core widens a real Self itself, so that the range takes (a, a).
    ValidateParams(vec, vecIndex, index, len);
    if (len > 0)
        ThresholdCore{threshold}.InPlace(*this, vec, vecIndex, index, len);
    else if (vec.fComplex && !fComplex)
        ExtendToComplex(true);
    return *this;
}
TDenseRovane& TDenseRovane::Divide(const TRovane& num, const TRovane& den, double threshold, int32_t numIndex,
                                   int32_t denIndex, int32_t index, int32_t len) {
    return VecForms::Range2(*this, num, den, numIndex, denIndex, index, len, ThresholdCore{threshold});
}

TDenseRovane& TDenseRovane::DivideVec(const TRovane& vec) { return Divide(vec); }
TDenseRovane& TDenseRovane::DivideVec(const TRovane& num, const TRovane& den) { return Divide(num, den); }
TDenseRovane& TDenseRovane::DivideVec(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    return Divide(vec, vecIndex, index, len);
}



// AddScaled: a factor of exactly one is Add, with its rounding; the checks
// and their texts are Add's.
TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, double factor) {
    if (IsOne(factor)) return Add(vec);
    if (fConditionCheck) {
        if (&vec == this) EInvalidArgumentRaise(kAddTexts.selfIsVec);
        if (vec.fLength != fLength) EInvalidArgumentRaise(kAddTexts.length);
        if (vec.fIsDouble != fIsDouble) EInvalidArgumentRaise(kAddTexts.isDouble);
    }
    if (vec.fComplex && !fComplex) ExtendToComplex(true);
    if (fLength > 0) AxpyReal(*this, vec, factor, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, const TCplx& factor) {
    if (IsOne(factor)) return Add(vec);
    if (fConditionCheck) {
        if (&vec == this) EInvalidArgumentRaise(kAddTexts.selfIsVec);
        if (vec.fLength != fLength) EInvalidArgumentRaise(kAddTexts.length);
        if (vec.fIsDouble != fIsDouble) EInvalidArgumentRaise(kAddTexts.isDouble);
    }
    if (!fComplex) ExtendToComplex(true);
    if (fLength > 0) AxpyComplex(*this, vec, factor, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, double factor1, double factor2) {
    return AddScaled(vec, TCplx(factor1, factor2));
}

TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, double factor, int32_t vecIndex, int32_t index,
                                      int32_t len) {
    if (IsOne(factor)) return Add(vec, vecIndex, index, len);
    ValidateParams(vec, vecIndex, index, len);
    if (vec.fComplex && !fComplex) ExtendToComplex(true);
    if (len > 0) AxpyReal(*this, vec, factor, vecIndex, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, const TCplx& factor, int32_t vecIndex, int32_t index,
                                      int32_t len) {
    if (IsOne(factor)) return Add(vec, vecIndex, index, len);
    ValidateParams(vec, vecIndex, index, len);
    if (!fComplex) ExtendToComplex(true);
    if (len > 0) AxpyComplex(*this, vec, factor, vecIndex, index, len);
    return *this;
}

TDenseRovane& TDenseRovane::AddScaled(const TRovane& vec, double factor1, double factor2, int32_t vecIndex,
                                      int32_t index, int32_t len) {
    return AddScaled(vec, TCplx(factor1, factor2), vecIndex, index, len);
}

// AddProduct: Self += Vec1 * Vec2, every operand of Self's complexity.
TDenseRovane& TDenseRovane::AddProduct(const TRovane& vec1, const TRovane& vec2) {
    if (fConditionCheck) {
        if (vec1.fLength != vec2.fLength) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Length <> Vec2.Length");
        // The text names Vec2; Vec1 is held to the same width.
        if (fIsDouble != vec2.fIsDouble || fIsDouble != vec1.fIsDouble)
            EInvalidArgumentRaise("TVec.AddProduct: IsDouble <> Vec2.IsDouble");
        if (vec1.fLength != fLength) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Length <> Length");
        if (vec1.fComplex != vec2.fComplex) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Complex <> Vec2.Complex");
        if (vec1.fComplex != fComplex) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Complex <> fComplex");
        if (&vec1 == this) EInvalidArgumentRaise("TVec.AddProduct: Vec1 = Self");
        if (&vec2 == this) EInvalidArgumentRaise("TVec.AddProduct: Vec2 = Self");
    }
    if (fLength > 0) AddProductCore(*this, vec1, vec2, 0, 0, 0, fLength);
    return *this;
}

TDenseRovane& TDenseRovane::AddProduct(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index,
                                       int32_t vec2Index, int32_t index, int32_t len) {
    ValidateParams(vec1, vec2, vec1Index, vec2Index, index, len);
    if (fConditionCheck) {
        if (vec1.fComplex != vec2.fComplex) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Complex <> Vec2.Complex");
        if (vec1.fComplex != fComplex) EInvalidArgumentRaise("TVec.AddProduct: Vec1.Complex <> fComplex");
    }
    if (len > 0) AddProductCore(*this, vec1, vec2, vec1Index, vec2Index, index, len);
    return *this;
}

// ---------------------------------------------------------------------------
// The forms of the rows of containers/members.tbl that name their core.
// ---------------------------------------------------------------------------
#include "rovane/containers/generated/Arithmetic.defs.inc"

}  // namespace rovane
