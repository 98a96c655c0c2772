// Trigonometric and hyperbolic functions on dense containers, with their
// inverses, reciprocals, SinCos, SinhCosh, ArcTan2, angle conversion and Expj.
//
// Real data go to one accuracy-graded primitive; the reciprocal members stay
// composed (Cot is Tan then Inv, ArcCot is Inv then ArcTan, ...), since the
// rounding of their results follows from that order. Complex data are built
// from real primitives on split parts. Every composition below is written once
// on the field type F over bare runs of whole ranges: each step is one
// primitive call on the whole run, temporaries come from the object cache.
#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

// ---------------------------------------------------------------------------
// One primitive call on whole runs, by field type. Pointers are at the range
// start (index 0); a destination may be the same run as a source.
// ---------------------------------------------------------------------------
namespace run {

template <class F>
using C = ComplexOf<F>;

template <class F>
void Split(const C<F>* z, F* re, F* im, int32_t n) {
    Pick<F>(ippsCplxToReal_64fc_Idx, sippsCplxToReal_32fc_Idx)(z, 0, re, 0, im, 0, n);
}
template <class F>
void Join(const F* re, const F* im, C<F>* d, int32_t n) {
    Pick<F>(ippsRealToCplx_64f_Idx, sippsRealToCplx_32f_Idx)(re, 0, im, 0, d, 0, n);
}
template <class F>
void SinCos(const F* x, F* s, F* c, int32_t n) {
    Pick<F>(ippsSinCos_64f_A53_Idx, sippsSinCos_32f_A24_Idx)(x, 0, s, 0, c, 0, n);
}
template <class F>
void Exp(const F* x, F* d, int32_t n) {
    Pick<F>(ippsExp_64f_A53_Idx, sippsExp_32f_A24_Idx)(x, 0, d, 0, n);
}
template <class F>
void Ln(const F* x, F* d, int32_t n) {
    Pick<F>(ippsLn_64f_A53_Idx, sippsLn_32f_A24_Idx)(x, 0, d, 0, n);
}
template <class F>
void Sqrt(const F* x, F* d, int32_t n) {
    Pick<F>(ippsSqrt_64f_A53_Idx, sippsSqrt_32f_A24_Idx)(x, 0, d, 0, n);
}
template <class F>
void Sqr(F* d, int32_t n) {
    Pick<F>(ippsSqr_64f_I_Idx, sippsSqr_32f_I_Idx)(d, 0, n);
}
template <class F>
void Asin(const F* x, F* d, int32_t n) {
    Pick<F>(ippsAsin_64f_A53_Idx, sippsAsin_32f_A24_Idx)(x, 0, d, 0, n);
}
// Real reciprocal 1 / x.
template <class F>
void Inv(const F* x, F* d, int32_t n) {
    Pick<F>(ippsInv_64f_A53_Idx, sippsInv_32f_A24_Idx)(x, 0, d, 0, n);
}
// Complex reciprocal conj(z) / |z|^2: the inverse threshold with level 0.
template <class F>
void InvC(const C<F>* z, C<F>* d, int32_t n) {
    Pick<F>(ippsThreshold_LTInv_64fc_Idx, sippsThreshold_LTInv_32fc_Idx)(z, 0, d, 0, n, F(0));
}
// atan2(y, x), the ordinate first.
template <class F>
void Atan2(const F* y, const F* x, F* d, int32_t n) {
    Pick<F>(ippsAtan2_64f_A53_Idx, sippsAtan2_32f_A24_Idx)(y, 0, x, 0, d, 0, n);
}
// d = a + b, a - b, a * b, a / b.
template <class F>
void Add(const F* a, const F* b, F* d, int32_t n) {
    Pick<F>(ippsAdd_64f_Idx, sippsAdd_32f_Idx)(a, 0, b, 0, d, 0, n);
}
template <class F>
void Sub(const F* a, const F* b, F* d, int32_t n) {
    Pick<F>(ippsSub_64f_Idx, sippsSub_32f_Idx)(b, 0, a, 0, d, 0, n);  // second minus first
}
template <class F>
void Mul(const F* a, const F* b, F* d, int32_t n) {
    Pick<F>(ippsMul_64f_Idx, sippsMul_32f_Idx)(a, 0, b, 0, d, 0, n);
}
template <class F>
void Div(const F* a, const F* b, F* d, int32_t n) {
    Pick<F>(ippsDiv_64f_A53_Idx, sippsDiv_32f_A24_Idx)(b, 0, a, 0, d, 0, n);  // second over first
}
// d = x * c, x + c, c - x with a real constant.
template <class F>
void Scale(const F* x, F c, F* d, int32_t n) {
    Pick<F>(ScaleByValue_Idx, sScaleByValue_Idx)(x, 0, c, d, 0, n);
}
template <class F>
void AddC(const F* x, F c, F* d, int32_t n) {
    Pick<F>(AddValue_Idx, sAddValue_Idx)(x, 0, c, d, 0, n);
}
template <class F>
void SubFromC(const F* x, F c, F* d, int32_t n) {
    Pick<F>(SubFromValue_Idx, sSubFromValue_Idx)(x, 0, c, d, 0, n);
}
template <class F>
void Copy(const F* x, F* d, int32_t n) {
    Pick<F>(ippsCopy_64f_Idx, ippsCopy_32f_Idx)(x, 0, d, 0, n);
}

}  // namespace run

template <class F>
using C = ComplexOf<F>;

// A complex scratch run of len elements from the object cache.
template <class F>
class CplxScratch {
public:
    explicit CplxScratch(int32_t len) {
        fVec->Size(len, true, std::is_same_v<F, double>);
        fPtr = CplxAt<F>(*fVec).ptr();
    }
    C<F>* get() const { return fPtr; }

private:
    CachedVec fVec;
    C<F>* fPtr;
};

// ---------------------------------------------------------------------------
// Real compositions.
// ---------------------------------------------------------------------------

// sinh and cosh from one exponential: E = exp(x), R = 1 / E, sinh = (E - R) / 2,
// cosh = (E + R) / 2, the halving a pass of its own. Overflows where exp does.
template <class F>
void SinhCoshRun(const F* x, F* sh, F* ch, int32_t n) {
    Scratch<F, 1> s(n);
    F* r = s[0];
    run::Exp(x, sh, n);
    run::Inv(sh, r, n);
    run::Add(sh, r, ch, n);
    run::Sub(sh, r, sh, n);
    run::Scale(sh, F(0.5), sh, n);
    run::Scale(ch, F(0.5), ch, n);
}

// ---------------------------------------------------------------------------
// Complex compositions, z = x + iy.
// ---------------------------------------------------------------------------

// The common start of Sin, Cos, Tan and their hyperbolic twins: split z, double
// both parts if asked, then SinCos of the circular part (sine in place, cosine
// into c) and SinhCosh of the hyperbolic part (sinh in place, cosh into ch).
// The circular part is x for the trigonometric members, y for the hyperbolic.
template <class F>
struct CircularHyperbolic {
    Scratch<F, 4> s;
    F* x;
    F* y;
    F* c;
    F* ch;
    CircularHyperbolic(const C<F>* z, int32_t n, bool circularIsX, bool doubled)
        : s(n), x(s[0]), y(s[1]), c(s[2]), ch(s[3]) {
        run::Split(z, x, y, n);
        if (doubled) {
            run::Scale(x, F(2), x, n);
            run::Scale(y, F(2), y, n);
        }
        F* circ = circularIsX ? x : y;
        F* hyp = circularIsX ? y : x;
        run::SinCos(circ, circ, c, n);
        SinhCoshRun(hyp, hyp, ch, n);
    }
};

// sin z = sin x cosh y + i cos x sinh y
template <class F>
void CplxSin(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, true, false);
    run::Mul(p.x, p.ch, p.x, n);
    run::Mul(p.c, p.y, p.c, n);
    run::Join(p.x, p.c, d, n);
}

// cos z = cos x cosh y + i sin x (-sinh y)
template <class F>
void CplxCos(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, true, false);
    run::Scale(p.y, F(-1), p.y, n);
    run::Mul(p.c, p.ch, p.c, n);
    run::Mul(p.x, p.y, p.x, n);
    run::Join(p.c, p.x, d, n);
}

// tan z = (sin 2x + i sinh 2y) * D, D = 1 / (cos 2x + cosh 2y)
template <class F>
void CplxTan(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, true, true);
    run::Add(p.c, p.ch, p.ch, n);
    run::Inv(p.ch, p.ch, n);
    run::Mul(p.x, p.ch, p.x, n);
    run::Mul(p.y, p.ch, p.y, n);
    run::Join(p.x, p.y, d, n);
}

// sinh z = sinh x cos y + i cosh x sin y
template <class F>
void CplxSinh(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, false, false);
    run::Mul(p.x, p.c, p.x, n);
    run::Mul(p.ch, p.y, p.y, n);
    run::Join(p.x, p.y, d, n);
}

// cosh z = cosh x cos y + i sinh x sin y
template <class F>
void CplxCosh(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, false, false);
    run::Mul(p.ch, p.c, p.c, n);
    run::Mul(p.x, p.y, p.y, n);
    run::Join(p.c, p.y, d, n);
}

// tanh z = (sinh 2x + i sin 2y) * D, D = 1 / (cosh 2x + cos 2y)
template <class F>
void CplxTanh(const C<F>* z, C<F>* d, int32_t n) {
    CircularHyperbolic<F> p(z, n, false, true);
    run::Add(p.ch, p.c, p.ch, n);
    run::Inv(p.ch, p.ch, n);
    run::Mul(p.x, p.ch, p.x, n);
    run::Mul(p.y, p.ch, p.y, n);
    run::Join(p.x, p.y, d, n);
}

// asin z from the half sums of the distances to 1 and -1:
// A = |z + 1| / 2, B = |z - 1| / 2, re = asin(A - B),
// im = +-ln(alpha + sqrt(alpha^2 - 1)) with alpha = A + B, the sign that of y,
// and where y = 0 that of -x (0 where both are 0).
template <class F>
void CplxArcSin(const C<F>* z, C<F>* d, int32_t n) {
    CplxScratch<F> f(n);
    Scratch<F, 4> s(n);
    F* t = s[0];
    F* p = s[1];
    F* a = s[2];
    F* b = s[3];
    // (y, -x): only the source of the sign of the imaginary part.
    Pick<F>(FlipConj_Idx, sFlipConj_Idx)(z, 0, f.get(), 0, n);
    Pick<F>(ippsReal_64fc_Idx, sippsReal_32fc_Idx)(z, 0, t, 0, n);
    run::Scale(t, F(2), t, n);                                               // T = 2x
    Pick<F>(ippsPowerSpectr_64fc_Idx, sippsPowerSpectr_32fc_Idx)(z, 0, p, 0, n);
    run::AddC(p, F(1), p, n);                                                // P = x*x + y*y + 1
    run::Add(p, t, a, n);                                                    // A = P + T
    run::Sub(p, t, b, n);                                                    // B = P - T
    run::Sqrt(a, a, n);
    run::Sqrt(b, b, n);
    run::Scale(a, F(0.5), a, n);
    run::Scale(b, F(0.5), b, n);
    run::Add(a, b, p, n);                                                    // alpha
    run::Sub(a, b, a, n);                                                    // beta
    run::Asin(a, a, n);                                                      // real part
    run::Copy(p, t, n);
    run::Sqr(p, n);
    run::AddC(p, F(-1), p, n);
    run::Sqrt(p, p, n);
    run::Add(p, t, p, n);
    run::Ln(p, p, n);
    Pick<F>(SgnMulcd_Idx, sSgnMulcd_Idx)(f.get(), 0, p, 0, n);
    run::Join(a, p, d, n);
}

// atan z: re = atan2(2x, 1 - |z|^2) / 2, im = ln((A + 2y) / (A - 2y)) / 4,
// A = |z|^2 + 1.
template <class F>
void CplxArcTan(const C<F>* z, C<F>* d, int32_t n) {
    Scratch<F, 4> s(n);
    F* x = s[0];
    F* y = s[1];
    F* p = s[2];
    F* a = s[3];
    run::Split(z, x, y, n);
    Pick<F>(ippsPowerSpectr_64fc_Idx, sippsPowerSpectr_32fc_Idx)(z, 0, p, 0, n);
    run::AddC(p, F(1), a, n);       // A = P + 1
    run::SubFromC(p, F(1), p, n);   // B = 1 - P
    run::Scale(x, F(2), x, n);      // X2
    run::Scale(y, F(2), y, n);      // Y2
    run::Atan2(x, p, x, n);
    run::Scale(x, F(0.5), x, n);
    run::Add(a, y, p, n);           // A + Y2
    run::Sub(a, y, a, n);           // A - Y2
    run::Div(p, a, y, n);
    run::Ln(y, y, n);
    run::Scale(y, F(0.25), y, n);
    run::Join(x, y, d, n);
}

// acos z = pi/2 - asin z, the constant with imaginary part 0.
template <class F>
void CplxArcCos(const C<F>* z, C<F>* d, int32_t n) {
    CplxArcSin<F>(z, d, n);
    Pick<F>(SubFromValuec_Idx, sSubFromValuec_Idx)(d, 0, C<F>(Narrow<F>(PIDIV2), F(0)), d, 0, n);
}

template <class F>
void MulIRun(const C<F>* z, C<F>* d, int32_t n) {
    Pick<F>(MulI_Idx, sMulI_Idx)(z, 0, d, 0, n);
}
template <class F>
void FlipConjRun(const C<F>* z, C<F>* d, int32_t n) {
    Pick<F>(FlipConj_Idx, sFlipConj_Idx)(z, 0, d, 0, n);
}

// acosh z = i acos z
template <class F>
void CplxArcCosh(const C<F>* z, C<F>* d, int32_t n) {
    CplxArcCos<F>(z, d, n);
    MulIRun<F>(d, d, n);
}

// asinh z = -i asin(i z), worked in the destination.
template <class F>
void CplxArcSinh(const C<F>* z, C<F>* d, int32_t n) {
    MulIRun<F>(z, d, n);
    CplxArcSin<F>(d, d, n);
    FlipConjRun<F>(d, d, n);
}

// atanh z = -i atan(i z), worked in the destination.
template <class F>
void CplxArcTanh(const C<F>* z, C<F>* d, int32_t n) {
    MulIRun<F>(z, d, n);
    CplxArcTan<F>(d, d, n);
    FlipConjRun<F>(d, d, n);
}

// ---------------------------------------------------------------------------
// Members as a pair of real and complex runs. Real: one primitive; complex:
// one composition.
// ---------------------------------------------------------------------------
template <auto D, auto S>
struct RealPrim {
    template <class F>
    static void Real(const F* x, F* d, int32_t n) {
        Pick<F>(D, S)(x, 0, d, 0, n);
    }
};

#define ROVANE_TRIG_OP(NAME, PRIM, CPLX)                                       \
    struct NAME : RealPrim<ipps##PRIM##_64f_A53_Idx, sipps##PRIM##_32f_A24_Idx> { \
        template <class F>                                                     \
        static void Cplx(const C<F>* z, C<F>* d, int32_t n) {                  \
            CPLX<F>(z, d, n);                                                  \
        }                                                                      \
    };
ROVANE_TRIG_OP(SinOp, Sin, CplxSin)
ROVANE_TRIG_OP(CosOp, Cos, CplxCos)
ROVANE_TRIG_OP(TanOp, Tan, CplxTan)
ROVANE_TRIG_OP(ArcSinOp, Asin, CplxArcSin)
ROVANE_TRIG_OP(ArcCosOp, Acos, CplxArcCos)
ROVANE_TRIG_OP(ArcTanOp, Atan, CplxArcTan)
ROVANE_TRIG_OP(SinhOp, Sinh, CplxSinh)
ROVANE_TRIG_OP(CoshOp, Cosh, CplxCosh)
ROVANE_TRIG_OP(TanhOp, Tanh, CplxTanh)
ROVANE_TRIG_OP(ArcSinhOp, Asinh, CplxArcSinh)
ROVANE_TRIG_OP(ArcCoshOp, Acosh, CplxArcCosh)
ROVANE_TRIG_OP(ArcTanhOp, Atanh, CplxArcTanh)
#undef ROVANE_TRIG_OP

// The reciprocal of a function (Cot = 1 / tan): the function, then Inv.
template <class Op>
struct ThenInv {
    template <class F>
    static void Real(const F* x, F* d, int32_t n) {
        Op::Real(x, d, n);
        run::Inv(d, d, n);
    }
    template <class F>
    static void Cplx(const C<F>* z, C<F>* d, int32_t n) {
        InChunks(n, [&](int32_t o, int32_t m) { Op::template Cplx<F>(z + o, d + o, m); });
        run::InvC<F>(d, d, n);
    }
};

// A function of the reciprocal (ArcCot x = atan(1 / x)): Inv, then the function.
template <class Op>
struct InvThen {
    template <class F>
    static void Real(const F* x, F* d, int32_t n) {
        run::Inv(x, d, n);
        Op::Real(d, d, n);
    }
    template <class F>
    static void Cplx(const C<F>* z, C<F>* d, int32_t n) {
        run::InvC<F>(z, d, n);
        InChunks(n, [&](int32_t o, int32_t m) { Op::template Cplx<F>(d + o, d + o, m); });
    }
};

// Multiplication by a constant, both parts alike on complex data.
template <const double& K>
struct ScaleOp {
    template <class F>
    static void Real(const F* x, F* d, int32_t n) {
        run::Scale(x, Narrow<F>(K), d, n);
    }
    template <class F>
    static void Cplx(const C<F>* z, C<F>* d, int32_t n) {
        run::Scale(reinterpret_cast<const F*>(z), Narrow<F>(K), reinterpret_cast<F*>(d), 2 * n);
    }
};

// The range core of a member: the one place that dispatches on precision.
template <class Op>
void TrigCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByRange(src, dst, dstIndex, srcIndex, [&](auto* x, auto* d) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(x)>>;
        using F = RealOf<T>;
        if constexpr (IsComplex<T>)
            InChunks(len, [&](int32_t o, int32_t m) { Op::template Cplx<F>(x + o, d + o, m); });
        else
            Op::template Real<F>(x, d, len);
    });
}

// ---------------------------------------------------------------------------
// Self as a real source with two real destinations (SinCos, SinhCosh).
// ---------------------------------------------------------------------------
template <template <class> class Fn>
void PairCore(const TRovane& src, TRovane& d1, TRovane& d2, int32_t len, int32_t srcIndex, int32_t d1Index,
              int32_t d2Index) {
    ByWidth(src.fIsDouble, [&](auto f) {
        using F = decltype(f);
        Fn<F>::Run(RealAt<F>(src, srcIndex).ptr(), RealAt<F>(d1, d1Index).ptr(), RealAt<F>(d2, d2Index).ptr(), len);
    });
}
template <class F>
struct SinCosFn {
    static void Run(const F* x, F* s, F* c, int32_t n) { run::SinCos(x, s, c, n); }
};
template <class F>
struct SinhCoshFn {
    static void Run(const F* x, F* sh, F* ch, int32_t n) { SinhCoshRun(x, sh, ch, n); }
};

// The real run length of an object: a complex one passed with checks off is
// treated as independent reals.
int32_t RealLength(const TRovane& o) { return o.fComplex ? 2 * o.fLength : o.fLength; }

// Texts of a pair member, in the order they are checked.
struct PairTexts {
    const char* wholeComplex;
    const char* wholeFirstIsSelf;
    const char* wholeSecondIsSelf;
    const char* rangeComplex;
    const char* rangeFirstIsSelf;   // null: left to the range validation
    const char* rangeSecondIsSelf;  // null: left to the range validation
    const char* rangeFirstComplex;
    const char* rangeSecondComplex;
    const char* bothOutputsSame;  // refused always: the second result would overwrite the first
};

template <template <class> class Fn>
TRovane& PairWhole(TRovane& self, TRovane& d1, TRovane& d2, const PairTexts& t) {
    if (&d1 == &d2) EInvalidArgumentRaise(t.bothOutputsSame);
    if (self.fConditionCheck) {
        if (self.fComplex) EInvalidArgumentRaise(t.wholeComplex);
        if (&d1 == &self) EInvalidArgumentRaise(t.wholeFirstIsSelf);
        if (&d2 == &self) EInvalidArgumentRaise(t.wholeSecondIsSelf);
    }
    d1.Size(self);
    d2.Size(self);
    const int32_t n = RealLength(self);
    if (n > 0) PairCore<Fn>(self, d1, d2, n, 0, 0, 0);
    return self;
}

template <template <class> class Fn>
TRovane& PairRange(TRovane& self, TRovane& d1, TRovane& d2, int32_t d1Index, int32_t d2Index, int32_t index,
                   int32_t len, const PairTexts& t) {
    if (&d1 == &d2) EInvalidArgumentRaise(t.bothOutputsSame);
    if (self.fConditionCheck) {
        if (self.fComplex) EInvalidArgumentRaise(t.rangeComplex);
        if (t.rangeFirstIsSelf && &d1 == &self) EInvalidArgumentRaise(t.rangeFirstIsSelf);
        if (t.rangeSecondIsSelf && &d2 == &self) EInvalidArgumentRaise(t.rangeSecondIsSelf);
        if (d1.fComplex) EInvalidArgumentRaise(t.rangeFirstComplex);
        if (d2.fComplex) EInvalidArgumentRaise(t.rangeSecondComplex);
    }
    self.ValidateParams(d1, d2, d1Index, d2Index, index, len);
    if (len > 0) PairCore<Fn>(self, d1, d2, len, index, d1Index, d2Index);
    return self;
}

const PairTexts kSinCosTexts{"TRovane.SinCos: Complex = True", "TRovane.SinCos: Sinx = Self",
                             "TRovane.SinCos: Cosx = Self",    "TVec.SinCos: Complex = True",
                             "TVec.SinCos: Sinx = Self",       "TVec.SinCos: Cosx = Self",
                             "TVec.SinCos: SinX.Complex",      "TVec.SinCos: CosX.Complex",
                             "TRovane.SinCos: SinX = CosX"};
const PairTexts kSinhCoshTexts{"TRovane.SinhCosh: Complex = True",
                               "TRovane.SinhCosh: SinhX = Self",
                               "TRovane.SinhCosh: CoshX = Self",
                               "TVec.SinhCosh: Complex = True",
                               nullptr,
                               nullptr,
                               "TVec.SinhCosh: SinhX.Complex = True",
                               "TVec.SinhCosh: CoshX.Complex = True",
                               "TRovane.SinhCosh: SinhX = CoshX"};

// ---------------------------------------------------------------------------
// ArcTan2 and Expj.
// ---------------------------------------------------------------------------
void ArcTan2Core(const TRovane& y, const TRovane& x, TRovane& dst, int32_t len, int32_t yIndex, int32_t xIndex,
                 int32_t index) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        run::Atan2<F>(RealAt<F>(y, yIndex).ptr(), RealAt<F>(x, xIndex).ptr(), RealAt<F>(dst, index).ptr(), len);
    });
}

// exp(i omega) of a real run into a complex run: cos as real, sin as
// imaginary part.
void ExpjCore(const TRovane& omega, TRovane& dst, int32_t len, int32_t dstIndex, int32_t omegaIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        Scratch<F, 2> s(len);
        run::SinCos<F>(RealAt<F>(omega, omegaIndex).ptr(), s[0], s[1], len);
        run::Join<F>(s[1], s[0], CplxAt<F>(dst, dstIndex).ptr(), len);
    });
}

}  // namespace

// ---- the unary members ------------------------------------------------------

// ---- SinCos and SinhCosh: Self is the source ----------------------------------
TRovane& TRovane::SinCos(TRovane& sinX, TRovane& cosX) { return PairWhole<SinCosFn>(*this, sinX, cosX, kSinCosTexts); }

TRovane& TRovane::SinCos(TRovane& sinX, TRovane& cosX, int32_t sinXIndex, int32_t cosXIndex, int32_t index,
                         int32_t len) {
    return PairRange<SinCosFn>(*this, sinX, cosX, sinXIndex, cosXIndex, index, len, kSinCosTexts);
}

TRovane& TRovane::SinhCosh(TRovane& sinhX, TRovane& coshX) {
    return PairWhole<SinhCoshFn>(*this, sinhX, coshX, kSinhCoshTexts);
}

TRovane& TRovane::SinhCosh(TRovane& sinhX, TRovane& coshX, int32_t sinhXIndex, int32_t coshXIndex, int32_t index,
                           int32_t len) {
    return PairRange<SinhCoshFn>(*this, sinhX, coshX, sinhXIndex, coshXIndex, index, len, kSinhCoshTexts);
}

// ---- ArcTan2 --------------------------------------------------------------------
TRovane& TRovane::ArcTan2(const TRovane& y, const TRovane& x) {
    if (fConditionCheck) {
        if (x.fComplex || y.fComplex) EInvalidArgumentRaise("TRovane.ArcTan2: X.Complex or Y.Complex");
        if (x.fFloatPrecision != y.fFloatPrecision)
            EInvalidArgumentRaise("TRovane.ArcTan2: X.FloatPrecision <> Y.FloatPrecision");
        if (x.fLength != y.fLength) EInvalidArgumentRaise("TRovane.ArcTan2: X.Length <> Y.Length");
        if (&y == this) EInvalidArgumentRaise("TRovane.ArcTan2: Y = Self");
        if (&x == this) EInvalidArgumentRaise("TRovane.ArcTan2: X = Self");
    }
    Size(y);
    const int32_t n = RealLength(*this);
    if (n > 0) ArcTan2Core(y, x, *this, n, 0, 0, 0);
    return *this;
}

TRovane& TRovane::ArcTan2(const TRovane& y, const TRovane& x, int32_t yIndex, int32_t xIndex, int32_t index,
                          int32_t len) {
    if (fConditionCheck) {
        if (x.fComplex || y.fComplex || fComplex)
            EInvalidArgumentRaise("TVec.ArcTan2: X.Complex or Y.Complex or Self.Complex");
        if (&y == this) EInvalidArgumentRaise("TVec.ArcTan2: Y = Self");
        if (&x == this) EInvalidArgumentRaise("TVec.ArcTan2: X = Self");
    }
    ValidateParams(y, x, yIndex, xIndex, index, len);
    if (len > 0) ArcTan2Core(y, x, *this, len, yIndex, xIndex, index);
    return *this;
}

// ---- Expj -----------------------------------------------------------------------
// In place: the real values are the angles; Self becomes complex, also when
// empty.
TRovane& TRovane::Expj() {
    if (fConditionCheck && fComplex) EInvalidArgumentRaise("Complex = True");
    if (fComplex) return *this;
    CachedVec omega;
    omega->Copy(*this);
    Size(*this, true);
    if (fLength > 0) ExpjCore(*omega, *this, fLength, 0, 0);
    return *this;
}

// In place on a range: Self becomes complex as a whole, its values going to
// the real parts, and the range takes exp(i omega) of its own values.
TRovane& TRovane::Expj(int32_t index, int32_t len) {
    if (fConditionCheck && fComplex) EInvalidArgumentRaise("Complex = True");
    ValidateParams(index, len);
    if (fComplex) return *this;
    CachedVec omega;
    omega->Size(len, false, fIsDouble);
    if (len > 0) omega->Copy(*this, index, 0, len);
    ExtendToComplex(true);
    if (len > 0) ExpjCore(*omega, *this, len, index, 0);
    return *this;
}

TRovane& TRovane::Expj(const TRovane& omega) {
    if (fConditionCheck) {
        if (omega.fComplex) EInvalidArgumentRaise("TRovane.Expj: Omega.Complex = True");
        if (&omega == this) EInvalidArgumentRaise("TRovane.Expj: Omega = Self");
    }
    Size(omega, true);
    if (fLength > 0) ExpjCore(omega, *this, fLength, 0, 0);
    return *this;
}

TRovane& TRovane::Expj(const TRovane& omega, int32_t omegaIndex, int32_t index, int32_t len) {
    if (fConditionCheck) {
        if (omega.fComplex) EInvalidArgumentRaise("TRovane.Expj: Omega.Complex = True");
        if (&omega == this) EInvalidArgumentRaise("TRovane.Expj: Omega = Self");
        if (!fComplex) EInvalidArgumentRaise("TRovane.Expj: Complex = False");
    }
    ValidateParams(omega, omegaIndex, index, len);
    if (len > 0) ExpjCore(omega, *this, len, index, omegaIndex);
    return *this;
}

// The forms of this family's rows of containers/members.tbl that name their core.
#include "rovane/containers/generated/Trigonometric.defs.inc"

}  // namespace rovane
