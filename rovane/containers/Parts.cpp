// Rounding, sign, remainder and complex-part members of the dense containers.
//
// Most members fall into a few families, each written once over a kernel
// choice: real results from real or complex data (Abs, Mag, RealPart,
// ImagPart, PowerSpectrum, PhaseSpectrum), complex results (Conj, MulI, Flip,
// FlipConj), and members that treat complex data as a run of independent
// reals (Sign and the rounding members), which pass twice the index and the
// length to the real primitive.
#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/PartsPrims.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

// ---------------------------------------------------------------------------
// Real runs: complex data seen as interleaved reals.
// ---------------------------------------------------------------------------
template <class F>
F* RunAt(const TRovaneSample& o, int32_t index) {
    return Base<F>(o) + o.FDataOffset + (o.fComplex ? 2 * index : index);
}

// Reals in a run of len elements of `o`; when the two operands disagree in
// complexity (checks off), the shorter run, so that nothing is overrun.
int32_t RunLen(const TRovaneBase& a, const TRovaneBase& b, int32_t len) {
    return a.fComplex && b.fComplex ? 2 * len : len;
}

// Self's shape in the two-operand forms: the first operand when it is a
// matrix, else the second.
const TRovane& ShapeOf(const TRovane& first, const TRovane& second) {
    return first.fRovaneType == rvTMtx ? first : second;
}

// ---------------------------------------------------------------------------
// Members on real runs: Sign and the rounding family.
// ---------------------------------------------------------------------------
enum class RunOp { Negate, Round, Trunc, Ceil, Floor, Frac };

template <RunOp Op>
void RunCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F* x = RunAt<F>(src, srcIndex);
        F* d = RunAt<F>(dst, dstIndex);
        const int32_t n = RunLen(src, dst, len);
        if constexpr (Op == RunOp::Negate) {
            if (x == d)
                prim::MulC_I(F(-1), d, 0, n);
            else
                prim::ScaleByValue(x, 0, F(-1), d, 0, n);
        } else if constexpr (Op == RunOp::Round) {
            prim::Round(x, 0, d, 0, n);
        } else if constexpr (Op == RunOp::Trunc) {
            prim::Trunc(x, 0, d, 0, n);
        } else if constexpr (Op == RunOp::Ceil) {
            prim::Ceil(x, 0, d, 0, n);
        } else if constexpr (Op == RunOp::Floor) {
            prim::Floor(x, 0, d, 0, n);
        } else {
            // The whole parts go to a temporary and are dropped.
            Scratch<F, 1> whole(n);
            prim::Modf(x, 0, whole[0], 0, d, 0, n);
        }
    });
}

// Round and Trunc share one core, chosen by the rounding.
void RoundingCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex,
                  TRounding rounding) {
    if (rounding == rnRound)
        RunCore<RunOp::Round>(src, dst, len, dstIndex, srcIndex);
    else
        RunCore<RunOp::Trunc>(src, dst, len, dstIndex, srcIndex);
}
void RoundCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    RoundingCore(src, dst, len, dstIndex, srcIndex, rnRound);
}
void TruncCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    RoundingCore(src, dst, len, dstIndex, srcIndex, rnTrunc);
}

// Converts the whole of `self` to integers, parts of complex data in turn.
void ToIntegers(const TRovane& self, TIntegerArray& dst, TRounding rounding) {
    const int32_t n = RunLen(self, self, self.fLength);
    dst.SetLength(n);
    if (n == 0) return;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        prim::Convert_Sfs(RunAt<F>(self, 0), 0, dst.data(), 0, n, rounding, 0);
    });
}

// ---------------------------------------------------------------------------
// Remainder: x - trunc(x / y) * y, each step one primitive over the run.
// ---------------------------------------------------------------------------
template <class F>
void RemRuns(const F* x, const F* y, F* d, int32_t n) {
    Scratch<F, 1> s(n);
    F* q = s[0];
    prim::Div(y, 0, x, 0, q, 0, n);  // q = x / y
    prim::TruncInt64(q, 0, q, 0, n);
    prim::Mul_I(y, 0, q, 0, n);
    prim::Sub(q, 0, x, 0, d, 0, n);  // d = x - q
}

// The scalar form multiplies by the reciprocal, formed once, so that its
// last bits may differ from the vector form's.
template <class F>
void RemRunsByValue(const F* x, F y, F* d, int32_t n) {
    Scratch<F, 1> s(n);
    F* q = s[0];
    prim::ScaleByValue(x, 0, F(1) / y, q, 0, n);
    prim::TruncInt64(q, 0, q, 0, n);
    prim::MulC_I(y, q, 0, n);
    prim::Sub(q, 0, x, 0, d, 0, n);
}

void RemByValue(const TRovane& src, TRovane& dst, double value, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        RemRunsByValue<F>(RealAt<F>(src, srcIndex).ptr(), Narrow<F>(value), RealAt<F>(dst, dstIndex).ptr(), len);
    });
}

void FixAngleCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        RemRunsByValue<F>(RealAt<F>(src, srcIndex).ptr(), Narrow<F>(TWOPI),
                          RealAt<F>(dst, dstIndex).ptr(), len);
    });
}

constexpr FormRules FixAngleRules{.result = ResultKind::RealOnly, .selfIsX = "TRovane.FixAngle: Src = Self ",
                                  .selfComplex = "TRovane.FixAngle: Self is Complex",
                                  .srcSelfComplex = "TRovane.FixAngle: Self is Complex",
                                  .srcComplex = "TRovane.FixAngle: Src is Complex", .kindChecksAlways = false};

// ---------------------------------------------------------------------------
// Real results from real or complex data.
// ---------------------------------------------------------------------------
enum class RealOp { Magnitude, Real, Imag, Power, Phase };

template <RealOp Op>
void RealResultCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    if (dst.fComplex) {
        // Reached only with checks off: the real result goes to the real
        // parts of the range, zero to the imaginary parts.
        CachedVec t;
        t->Size(len, false, dst.fIsDouble);
        RealResultCore<Op>(src, *t, len, 0, srcIndex);
        dst.ExtendToComplex(*t, true, 0, dstIndex, len);
        return;
    }
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        F* d = RealAt<F>(dst, dstIndex).ptr();
        if (src.fComplex) {
            const ComplexOf<F>* x = CplxAt<F>(src, srcIndex).ptr();
            if constexpr (Op == RealOp::Magnitude)
                prim::Magnitude(x, 0, d, 0, len);
            else if constexpr (Op == RealOp::Real)
                prim::Real(x, 0, d, 0, len);
            else if constexpr (Op == RealOp::Imag)
                prim::Imag(x, 0, d, 0, len);
            else if constexpr (Op == RealOp::Power)
                prim::PowerSpectr(x, 0, d, 0, len);
            else
                prim::Phase(x, 0, d, 0, len);
            return;
        }
        const F* x = RealAt<F>(src, srcIndex).ptr();
        if constexpr (Op == RealOp::Magnitude) {
            if (x == d)
                prim::Abs_I(d, 0, len);
            else
                prim::Abs(x, 0, d, 0, len);
        } else if constexpr (Op == RealOp::Real) {
            if (x != d) prim::Move(x, 0, d, 0, len);
        } else {
            // A real source of a complex-only function: widened with zero
            // imaginary parts first.
            CachedVec w;
            w->Size(len, true, dst.fIsDouble);
            w->ExtendToComplex(src, true, srcIndex, 0, len);
            RealResultCore<Op>(*w, dst, len, dstIndex, 0);
        }
    });
}

// Rules of the real-result members.
constexpr FormRules AbsRules{.result = ResultKind::Real, .selfIsX = "TRovane.Abs: Self = X",
                             .complexRange = "Abs (Mag) function is not allowed on complex subrange",
                             .wholeComplexRange = true};
constexpr FormRules MagRules{.result = ResultKind::Real, .selfIsX = "TRovane.Mag: Self = X",
                             .complexRange = "Abs (Mag) function is not allowed on complex subrange",
                             .wholeComplexRange = true};
constexpr FormRules RealPartRules{.result = ResultKind::Real, .selfIsX = "Self = Vec", .selfIsXAlways = true,
                                  .complexRange = "Self.Complex = True"};
constexpr FormRules ImagPartRules{.result = ResultKind::Real, .selfIsX = "Self = Vec", .selfIsXAlways = true,
                                  .needsComplex = "Vec.Complex = False",
                                  .rangeNeedsComplex = "TRovane.RealPart: Vec must be complex",
                                  .complexRange = "Self.Complex = True"};
constexpr FormRules SpectrumRules{.result = ResultKind::Real, .selfIsX = "Self = Vec", .selfIsXAlways = true,
                                  .needsComplex = "Vec.Complex = False", .complexRange = "Complex = True"};

// ---------------------------------------------------------------------------
// Complex results: Conj, MulI, Flip, FlipConj.
// ---------------------------------------------------------------------------
enum class CplxOp { Conj, MulI, Flip, FlipConj };

// Destination complex, except for Conj, which copies real data to real data.
template <CplxOp Op>
void CplxResultCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = ComplexOf<F>;
        if (src.fComplex) {
            const C* x = CplxAt<F>(src, srcIndex).ptr();
            C* d = CplxAt<F>(dst, dstIndex).ptr();
            if constexpr (Op == CplxOp::Conj) {
                if (x == d)
                    prim::Conj_I(d, 0, len);
                else
                    prim::Conj(x, 0, d, 0, len);
            } else if constexpr (Op == CplxOp::MulI) {
                prim::MulI(x, 0, d, 0, len);
            } else if constexpr (Op == CplxOp::Flip) {
                prim::Flip(x, 0, d, 0, len);
            } else {
                prim::FlipConj(x, 0, d, 0, len);
            }
            return;
        }
        const F* x = RealAt<F>(src, srcIndex).ptr();
        if (!dst.fComplex) {
            // Conj of real data is the data.
            F* d = RealAt<F>(dst, dstIndex).ptr();
            if (x != d) prim::Move(x, 0, d, 0, len);
            return;
        }
        // A real source a: up-sampled by 2 into the complex range, to (a, 0)
        // with phase 0 (Conj) or to (0, a) with phase 1; FlipConj negates the
        // imaginary parts after.
        int32_t phase = Op == CplxOp::Conj ? 0 : 1;
        int32_t written = 0;
        prim::SampleUp(x, 0, len, RunAt<F>(dst, dstIndex), 0, written, 2, phase);
        if constexpr (Op == CplxOp::FlipConj)
            prim::Conj_I(CplxAt<F>(dst, dstIndex).ptr(), 0, len);
    });
}

// Conj keeps the kind of its data: in place, real data stays as it is; a
// range form from complex data widens a real Self.
constexpr FormRules ConjRules{.selfIsX = "TVec.Conj: Self = Vec", .selfIsXAlways = true, .widensRange = true};

// Rules of the complex-result members; a null complexDiffers widens Self.
constexpr FormRules MulIRules{.result = ResultKind::Complex, .selfIsX = "MulI: X = Self"};
constexpr FormRules FlipRules{.result = ResultKind::Complex, .selfIsX = "TRovane.Flip: X = Self",
                              .complexDiffers = "TRovane.Flip: X.Complex <> Self.Complex"};
constexpr FormRules FlipConjRules{.result = ResultKind::Complex, .selfIsX = "X = Self",
                                  .complexDiffers = "TRovane.FlipConj: X.Complex <> Self.Complex"};

// ---------------------------------------------------------------------------
// Sign function, by the kinds of source and destination.
// ---------------------------------------------------------------------------
void SgnCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (src.fComplex && dst.fComplex)
            prim::Sgncc(CplxAt<F>(src, srcIndex).ptr(), 0, CplxAt<F>(dst, dstIndex).ptr(), 0, len);
        else if (src.fComplex)
            prim::Sgncd(CplxAt<F>(src, srcIndex).ptr(), 0, RealAt<F>(dst, dstIndex).ptr(), 0, len);
        else if (dst.fComplex)
            prim::Sgndc(RealAt<F>(src, srcIndex).ptr(), 0, CplxAt<F>(dst, dstIndex).ptr(), 0, len);
        else
            prim::Sgndd(RealAt<F>(src, srcIndex).ptr(), 0, RealAt<F>(dst, dstIndex).ptr(), 0, len);
    });
}

// Sgn(X) writes a real Self; the range forms take any kinds of source and
// destination (the four kernels cover them).
constexpr FormRules SgnRules{.selfIsX = "TRovane.Sgn: Self = Src", .realFromX = true};

// ---------------------------------------------------------------------------
// Split and join of parts.
// ---------------------------------------------------------------------------
// d1 and d2 take len elements of `cplx` from cplxIndex: magnitude and phase,
// or real and imaginary parts.
template <bool Polar>
void SplitCore(const TRovane& cplx, TRovane& d1, TRovane& d2, int32_t d1Index, int32_t d2Index, int32_t cplxIndex,
               int32_t len) {
    if (len <= 0) return;
    ByWidth(cplx.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const RealAt<F> a(d1, d1Index), b(d2, d2Index);
        const CplxAt<F> x(cplx, cplxIndex);
        if constexpr (Polar)
            prim::CartToPolar(x.p, x.i, a.p, a.i, b.p, b.i, len);
        else
            prim::CplxToReal(x.p, x.i, a.p, a.i, b.p, b.i, len);
    });
}

template <bool Polar>
void JoinCore(const TRovane& s1, const TRovane& s2, TRovane& cplx, int32_t s1Index, int32_t s2Index,
              int32_t cplxIndex, int32_t len) {
    if (len <= 0) return;
    ByWidth(cplx.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const RealAt<F> a(s1, s1Index), b(s2, s2Index);
        const CplxAt<F> d(cplx, cplxIndex);
        if constexpr (Polar)
            prim::PolarToCart(a.p, a.i, b.p, b.i, d.p, d.i, len);
        else
            prim::RealToCplx(a.p, a.i, b.p, b.i, d.p, d.i, len);
    });
}

// Checks of the two real operands of a join, in the order of the member.
struct JoinTexts {
    const char* self;
    const char* complex1;
    const char* complex2;
    const char* length;
    const char* precision;
};
constexpr JoinTexts PolarTexts{"(Self = AmpltVec) or (Self = PhaseVec)", "AmpltVec.Complex = True",
                               "PhaseVec.Complex = True", "AmpltVec.Length <> PhaseVec.Length",
                               "AmpltVec.FloatPrecision <> PhaseVec.FloatPrecision"};
constexpr JoinTexts CplxTexts{"(Self = ReVec) or (Self = ImVec)", "ReVec.Complex = True", "ImVec.Complex = True",
                              "ReVec.Length <> ImVec.Length", "ReVec.FloatPrecision <> ImVec.FloatPrecision"};

template <bool Polar>
void JoinWhole(TRovane& self, const TRovane& s1, const TRovane& s2, const JoinTexts& t) {
    if (self.fConditionCheck) {
        RaiseIf(&s1 == &self || &s2 == &self, t.self);
        RaiseIf(s1.fComplex, t.complex1);
        RaiseIf(s2.fComplex, t.complex2);
        RaiseIf(s1.fLength != s2.fLength, t.length);
        RaiseIf(s1.fFloatPrecision != s2.fFloatPrecision, t.precision);
    }
    self.Size(ShapeOf(s1, s2), true);
    JoinCore<Polar>(s1, s2, self, 0, 0, 0, self.fLength);
}

template <bool Polar>
void JoinRange(TRovane& self, const TRovane& s1, const TRovane& s2, int32_t i1, int32_t i2, int32_t index,
               int32_t len, const JoinTexts& t) {
    self.ValidateParams(s1, s2, i1, i2, index, len);
    if (self.fConditionCheck) {
        RaiseIf(s1.fComplex, t.complex1);
        RaiseIf(s2.fComplex, t.complex2);
    }
    if (!self.fComplex) self.ExtendToComplex(true);
    JoinCore<Polar>(s1, s2, self, i1, i2, index, len);
}

// The range form of a split: Self is the complex source, d1 and d2 real.
template <bool Polar>
void SplitRange(TRovane& self, TRovane& d1, TRovane& d2, int32_t i1, int32_t i2, int32_t index, int32_t len,
                const JoinTexts& t) {
    self.ValidateParams(d1, d2, i1, i2, index, len);
    if (self.fConditionCheck) {
        RaiseIf(d1.fComplex, t.complex1);
        RaiseIf(d2.fComplex, t.complex2);
    }
    SplitCore<Polar>(self, d1, d2, i1, i2, index, len);
}

}  // namespace

// ---------------------------------------------------------------------------
// Real results.
// ---------------------------------------------------------------------------

// ---------------------------------------------------------------------------
// Complex results.
// ---------------------------------------------------------------------------

// ---------------------------------------------------------------------------
// Sign and the rounding family: complex data as independent reals.
// ---------------------------------------------------------------------------

TRovane& TRovane::Round(TIntegerArray& dst) {
    ToIntegers(*this, dst, rnRound);
    return *this;
}
TRovane& TRovane::Trunc(TIntegerArray& dst) {
    ToIntegers(*this, dst, rnTrunc);
    return *this;
}

TRovane& TRovane::TruncAndFrac(TRovane& truncDst, TRovane& fracDst) {
    RaiseIf(&truncDst == &fracDst, "TRovane.TruncAndFrac: TruncDst = FracDst");
    if (fConditionCheck) {
        RaiseIf(&truncDst == this, "TRovane.TruncAndFrac, TruncDst: X = Self");
        RaiseIf(&fracDst == this, "TRovane.TruncAndFrac, FracDst: X = Self");
    }
    truncDst.Size(*this);
    fracDst.Size(*this);
    return TruncAndFrac(truncDst, fracDst, 0, 0, 0, fLength);
}

TRovane& TRovane::TruncAndFrac(TRovane& truncDst, TRovane& fracDst, int32_t truncIndex, int32_t fracIndex,
                               int32_t index, int32_t len) {
    RaiseIf(&truncDst == &fracDst, "TRovane.TruncAndFrac: TruncDst = FracDst");
    ValidateParams(truncDst, fracDst, truncIndex, fracIndex, index, len);
    if (fConditionCheck) {
        RaiseIf(fComplex != truncDst.fComplex, "TRovane.TruncAndFrac, Self.Complex <> TruncDst.Complex");
        RaiseIf(fComplex != fracDst.fComplex, "TRovane.TruncAndFrac, Self.Complex <> FracDst.Complex");
    }
    if (len <= 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const int32_t n = fComplex && truncDst.fComplex && fracDst.fComplex ? 2 * len : len;
        prim::Modf(RunAt<F>(*this, index), 0, RunAt<F>(truncDst, truncIndex), 0, RunAt<F>(fracDst, fracIndex), 0, n);
    });
    return *this;
}

// ---------------------------------------------------------------------------
// Sgn and SgnMul.
// ---------------------------------------------------------------------------
// The container's SgnMul negates where a real source is NaN; the primitive
// leaves such elements, so a fix-up pass follows it for real sources.
template <class F, class T>
void NegateWhereNan(const F* src, T* d, int32_t n) {
    for (int32_t i = 0; i < n; ++i)
        if (src[i] != src[i]) d[i] = -d[i];
}

TRovane& TRovane::SgnMul(const TRovane& src) {
    if (fConditionCheck) {
        RaiseIf(&src == this, "TRovane.SgnMul: Self = Src");
        RaiseIf(fLength != src.fLength, "TRovane.SgnMul: Self.Length <> Src.Length");
        RaiseIf(fIsDouble != src.fIsDouble, "TRovane.SgnMul: Self.IsDouble <> Src.IsDouble");
    }
    if (fLength == 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (src.fComplex && fComplex)
            prim::SgnMulc(CplxAt<F>(src).ptr(), 0, CplxAt<F>(*this).ptr(), 0, fLength);
        else if (src.fComplex)
            prim::SgnMulcd(CplxAt<F>(src).ptr(), 0, RealAt<F>(*this).ptr(), 0, fLength);
        else if (fComplex) {
            prim::SgnMuldc(RealAt<F>(src).ptr(), 0, CplxAt<F>(*this).ptr(), 0, fLength);
            NegateWhereNan(RealAt<F>(src).ptr(), CplxAt<F>(*this).ptr(), fLength);
        } else {
            prim::SgnMul(RealAt<F>(src).ptr(), 0, RealAt<F>(*this).ptr(), 0, fLength);
            NegateWhereNan(RealAt<F>(src).ptr(), RealAt<F>(*this).ptr(), fLength);
        }
    });
    return *this;
}

// ---------------------------------------------------------------------------
// Rem and FixAngle.
// ---------------------------------------------------------------------------
TRovane& TRovane::Rem(const TRovane& x, const TRovane& y) {
    if (fConditionCheck) {
        RaiseIf(&x == this, "TRovane.Rem: X = Self");
        RaiseIf(x.fComplex, "TRovane.Rem: X is Complex");
        RaiseIf(&y == this, "TRovane.Rem: Y = Self");
        RaiseIf(y.fComplex, "TRovane.Rem: Y is Complex");
        RaiseIf(x.fLength != y.fLength, "TRovane.Rem: X.Length <> Y.Length");
        RaiseIf(x.fIsDouble != y.fIsDouble, "TRovane.Rem: X.IsDouble <> Y.IsDouble");
    }
    Size(ShapeOf(x, y), false);
    return Rem(x, y, 0, 0, 0, fLength);
}

TRovane& TRovane::Rem(const TRovane& x, const TRovane& y, int32_t xIndex, int32_t yIndex, int32_t index,
                      int32_t len) {
    ValidateParams(x, y, xIndex, yIndex, index, len);
    if (fConditionCheck) {
        RaiseIf(x.fComplex, "TRovane.Rem: X is Complex");
        RaiseIf(y.fComplex, "TRovane.Rem: Y is Complex");
        RaiseIf(fComplex, "TRovane.Rem: Self is Complex");
    }
    if (len <= 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        RemRuns<F>(RealAt<F>(x, xIndex).ptr(), RealAt<F>(y, yIndex).ptr(), RealAt<F>(*this, index).ptr(), len);
    });
    return *this;
}

TRovane& TRovane::Rem(const TRovane& x, double value) {
    if (fConditionCheck) {
        RaiseIf(&x == this, "TRovane.Rem: X = Self");
        RaiseIf(x.fComplex, "TRovane.Rem: X is Complex");
    }
    Size(x, false);
    if (fLength > 0) RemByValue(x, *this, value, fLength, 0, 0);
    return *this;
}

TRovane& TRovane::Rem(const TRovane& x, double value, int32_t xIndex, int32_t index, int32_t len) {
    ValidateParams(x, xIndex, index, len);
    if (fConditionCheck) {
        RaiseIf(x.fComplex, "TRovane.Rem: X is Complex");
        RaiseIf(fComplex, "TRovane.Rem: Self is Complex");
    }
    if (len > 0) RemByValue(x, *this, value, len, index, xIndex);
    return *this;
}


// ---------------------------------------------------------------------------
// Split and join.
// ---------------------------------------------------------------------------
TRovane& TRovane::CartToPolar(TRovane& ampltVec, TRovane& phaseVec) {
    RaiseIf(!fComplex, "TVec.CartToPolar: Not complex!");
    RaiseIf(&ampltVec == this || &phaseVec == this, "TVec.CartToPolar: (Self = AmpltVec) or (Self = PhaseVec)");
    RaiseIf(&ampltVec == &phaseVec, "TVec.CartToPolar: AmpltVec = PhaseVec");
    ampltVec.Size(*this, false);
    phaseVec.Size(*this, false);
    SplitCore<true>(*this, ampltVec, phaseVec, 0, 0, 0, fLength);
    return *this;
}

TRovane& TRovane::CartToPolar(TRovane& ampltVec, TRovane& phaseVec, int32_t ampltIndex, int32_t phaseIndex,
                              int32_t index, int32_t len) {
    RaiseIf(!fComplex, "TVec.CartToPolar: Not complex!");
    RaiseIf(&ampltVec == this || &phaseVec == this, "TVec.CartToPolar: (Self = AmpltVec) or (Self = PhaseVec)");
    RaiseIf(&ampltVec == &phaseVec, "TVec.CartToPolar: AmpltVec = PhaseVec");
    SplitRange<true>(*this, ampltVec, phaseVec, ampltIndex, phaseIndex, index, len, PolarTexts);
    return *this;
}

TRovane& TRovane::PolarToCart(const TRovane& ampltVec, const TRovane& phaseVec) {
    JoinWhole<true>(*this, ampltVec, phaseVec, PolarTexts);
    return *this;
}

TRovane& TRovane::PolarToCart(const TRovane& ampltVec, const TRovane& phaseVec, int32_t ampltIndex,
                              int32_t phaseIndex, int32_t index, int32_t len) {
    JoinRange<true>(*this, ampltVec, phaseVec, ampltIndex, phaseIndex, index, len, PolarTexts);
    return *this;
}

TRovane& TRovane::CplxToReal(TRovane& reVec, TRovane& imVec) {
    RaiseIf(!fComplex, "Complex = False");
    RaiseIf(&reVec == this || &imVec == this, "(Self = ReVec) or (Self = ImVec)");
    RaiseIf(&reVec == &imVec, "ReVec = ImVec");
    reVec.Size(*this, false);
    imVec.Size(*this, false);
    SplitCore<false>(*this, reVec, imVec, 0, 0, 0, fLength);
    return *this;
}

TRovane& TRovane::CplxToReal(TRovane& reVec, TRovane& imVec, int32_t reIndex, int32_t imIndex, int32_t index,
                             int32_t len) {
    RaiseIf(!fComplex, "Complex = False");
    RaiseIf(&reVec == this || &imVec == this, "(Self = ReVec) or (Self = ImVec)");
    RaiseIf(&reVec == &imVec, "ReVec = ImVec");
    SplitRange<false>(*this, reVec, imVec, reIndex, imIndex, index, len, CplxTexts);
    return *this;
}

TRovane& TRovane::RealToCplx(const TRovane& reVec, const TRovane& imVec) {
    JoinWhole<false>(*this, reVec, imVec, CplxTexts);
    return *this;
}

TRovane& TRovane::RealToCplx(const TRovane& reVec, const TRovane& imVec, int32_t reIndex, int32_t imIndex,
                             int32_t index, int32_t len) {
    JoinRange<false>(*this, reVec, imVec, reIndex, imIndex, index, len, CplxTexts);
    return *this;
}

// The forms of this family's rows of containers/members.tbl that name their core.
#include "rovane/containers/generated/Parts.defs.inc"

}  // namespace rovane
