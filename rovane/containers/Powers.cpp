// Powers, roots, exponentials and logarithms on dense containers. Real data
// go to one accuracy-graded primitive or a fixed short chain of them; complex
// data either to a complex primitive or to a composition of real primitives
// on split parts. Each composition is written once over the field type and
// works on whole runs, with its temporaries from the thread's cache.
#include <bit>
#include <optional>

#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

template <class F>
using Cx = ComplexOf<F>;

// The primitives of this file for the field type F.
template <class F>
struct Prims;

#define ROVANE_POWER_PRIMS(F, I, R, A, S, COPY)                            \
    template <>                                                            \
    struct Prims<F> {                                                      \
        static constexpr auto Copy = COPY##_##R##_Idx;                     \
        static constexpr auto CCopy = COPY##_##R##c_Idx;                   \
        static constexpr auto Sqr = I##Sqr_##R##_Idx;                      \
        static constexpr auto SqrI = I##Sqr_##R##_I_Idx;                   \
        static constexpr auto MulI = I##Mul_##R##_I_Idx;                   \
        static constexpr auto MulCI = I##MulC_##R##_I_Idx;                 \
        static constexpr auto Sqrt = I##Sqrt_##R##_##A##_Idx;              \
        static constexpr auto Ln = I##Ln_##R##_##A##_Idx;                  \
        static constexpr auto Log10 = I##Log10_##R##_##A##_Idx;            \
        static constexpr auto Exp = I##Exp_##R##_##A##_Idx;                \
        static constexpr auto Cbrt = I##Cbrt_##R##_##A##_Idx;              \
        static constexpr auto Inv = I##Inv_##R##_##A##_Idx;                \
        static constexpr auto InvSqrt = I##InvSqrt_##R##_##A##_Idx;        \
        static constexpr auto InvCbrt = I##InvCbrt_##R##_##A##_Idx;        \
        static constexpr auto Erf = I##Erf_##R##_##A##_Idx;                \
        static constexpr auto Erfc = I##Erfc_##R##_##A##_Idx;              \
        static constexpr auto ErfInv = I##ErfInv_##R##_##A##_Idx;          \
        static constexpr auto Pow = I##Pow_##R##_##A##_Idx;                \
        static constexpr auto Powx = I##Powx_##R##_##A##_Idx;              \
        static constexpr auto SinCos = I##SinCos_##R##_##A##_Idx;          \
        static constexpr auto LTInv = I##Threshold_LTInv_##R##_Idx;        \
        static constexpr auto CSqr = I##Sqr_##R##c_Idx;                    \
        static constexpr auto CSqrI = I##Sqr_##R##c_I_Idx;                 \
        static constexpr auto CMulI = I##Mul_##R##c_I_Idx;                 \
        static constexpr auto CMulCI = I##MulC_##R##c_I_Idx;               \
        static constexpr auto CSqrt = I##Sqrt_##R##c_Idx;                  \
        static constexpr auto CPow = I##Pow_##R##c_##A##_Idx;              \
        static constexpr auto CPowx = I##Powx_##R##c_##A##_Idx;            \
        static constexpr auto CLTInv = I##Threshold_LTInv_##R##c_Idx;      \
        static constexpr auto CartToPolar = I##CartToPolar_##R##c_Idx;     \
        static constexpr auto PolarToCart = I##PolarToCart_##R##c_Idx;     \
        static constexpr auto CplxToReal = I##CplxToReal_##R##c_Idx;       \
        static constexpr auto RealToCplx = I##RealToCplx_##R##_Idx;        \
        static constexpr auto ScaleByValue = S##ScaleByValue_Idx;          \
        static constexpr auto ScaleByValuecd = S##ScaleByValuecd_Idx;      \
        static constexpr auto ScaleByValuedc = S##ScaleByValuedc_Idx;      \
        static constexpr auto ScaleByValuec = S##ScaleByValuec_Idx;        \
        static constexpr auto MulVeccd = S##MulVeccd_Idx;                  \
    };
ROVANE_POWER_PRIMS(double, ipps, 64f, A53, , ippsCopy)
ROVANE_POWER_PRIMS(float, sipps, 32f, A24, s, ippsCopy)
#undef ROVANE_POWER_PRIMS

// Factors of the complex cube roots: the doubles nearest 1/3 and -1/3.
constexpr double kThird = std::bit_cast<double>(0x3FD5555555555555ull);
constexpr double kMinusThird = std::bit_cast<double>(0xBFD5555555555555ull);

// ---------------------------------------------------------------------------
// Compositions on whole runs. x and d may be the same run.
// ---------------------------------------------------------------------------

// Multiplies n reals in place by k.
template <class F>
void ScaleRun(F* d, int32_t n, F k) {
    Prims<F>::MulCI(k, d, 0, n);
}
// Multiplies n complex values in place by the real k: both parts, as one
// real run of twice the length.
template <class F>
void ScaleRun(Cx<F>* d, int32_t n, F k) {
    ScaleRun(reinterpret_cast<F*>(d), 2 * n, k);
}

// ln z: magnitude and phase, the real logarithm of the magnitude, joined.
template <class F>
void CplxLnRun(const Cx<F>* x, Cx<F>* d, int32_t n) {
    Scratch<F, 2> t(n);
    Prims<F>::CartToPolar(x, 0, t[0], 0, t[1], 0, n);
    Prims<F>::Ln(t[0], 0, t[0], 0, n);
    Prims<F>::RealToCplx(t[0], 0, t[1], 0, d, 0, n);
}

// exp(k z) for z = x + iy: sin and cos of k y, E = exp(k x), re = cos * E,
// im = sin * E. Without a factor (Exp) the parts are used as they are.
template <class F>
void CplxExpRun(const Cx<F>* x, Cx<F>* d, int32_t n, std::optional<F> k) {
    Scratch<F, 4> t(n);  // re, im, sin, cos
    Prims<F>::CplxToReal(x, 0, t[0], 0, t[1], 0, n);
    if (k) ScaleRun(t[1], n, *k);
    Prims<F>::SinCos(t[1], 0, t[2], 0, t[3], 0, n);
    if (k) ScaleRun(t[0], n, *k);
    Prims<F>::Exp(t[0], 0, t[0], 0, n);
    // Join (cos, sin), then scale both parts by E: each part is the single
    // product cos * E or sin * E, as when they are formed first.
    Prims<F>::RealToCplx(t[3], 0, t[2], 0, d, 0, n);
    Prims<F>::MulVeccd(d, 0, t[0], 0, d, 0, n);
}

// The compositions run chunk by chunk, so that their temporaries stay in
// cache slots and in the processor's cache.
template <class F>
void CplxLn(const Cx<F>* x, Cx<F>* d, int32_t n) {
    InChunks(n, [&](int32_t o, int32_t m) { CplxLnRun<F>(x + o, d + o, m); });
}
template <class F>
void CplxExp(const Cx<F>* x, Cx<F>* d, int32_t n, std::optional<F> k = std::nullopt) {
    InChunks(n, [&](int32_t o, int32_t m) { CplxExpRun<F>(x + o, d + o, m, k); });
}

// ln of a real or complex run, then a multiplication by k (Log2, Log10 of
// complex data, LogN).
template <class T>
void LnScaled(const T* x, T* d, int32_t n, RealOf<T> k) {
    using F = RealOf<T>;
    if constexpr (IsComplex<T>)
        CplxLn<F>(x, d, n);
    else
        Prims<F>::Ln(x, 0, d, 0, n);
    ScaleRun(d, n, k);
}

// z^p as exp(p ln z) (cube roots of complex data).
template <class F>
void CplxPowByLog(const Cx<F>* x, Cx<F>* d, int32_t n, F p) {
    CplxLn<F>(x, d, n);
    ScaleRun(d, n, p);
    CplxExp<F>(d, d, n);
}

// ---------------------------------------------------------------------------
// The unary members: each Op names its real and (where it has one) its
// complex path; Core<Op> is the range core that dispatches on precision.
// ---------------------------------------------------------------------------
template <class Op>
void Core(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByRange(src, dst, dstIndex, srcIndex, [&](auto* x, auto* d) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(x)>>;
        using F = RealOf<T>;
        if constexpr (!IsComplex<T>)
            Op::template Real<F>(x, d, len);
        else if constexpr (requires { Op::template Cplx<F>(x, d, len); })
            Op::template Cplx<F>(x, d, len);
        // Real-only members: their forms refuse complex data before the core.
    });
}

#define ROVANE_REAL_STEP(NAME, CALL)                                \
    template <class F>                                              \
    static void NAME(const F* x, F* d, int32_t n) { CALL; }
#define ROVANE_CPLX_STEP(NAME, CALL)                                \
    template <class F>                                              \
    static void NAME(const Cx<F>* x, Cx<F>* d, int32_t n) { CALL; }

struct SqrtOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Sqrt(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, Prims<F>::CSqrt(x, 0, d, 0, n))
};
struct SqrOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Sqr(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, Prims<F>::CSqr(x, 0, d, 0, n))
};
struct CbrtOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Cbrt(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, CplxPowByLog<F>(x, d, n, F(kThird)))
};
struct InvCbrtOp {
    ROVANE_REAL_STEP(Real, Prims<F>::InvCbrt(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, CplxPowByLog<F>(x, d, n, F(kMinusThird)))
};
struct LnOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Ln(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, CplxLn<F>(x, d, n))
};
struct Log10Op {
    ROVANE_REAL_STEP(Real, Prims<F>::Log10(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, LnScaled(x, d, n, Narrow<F>(1 / LN10)))
};
struct Log2Op {
    ROVANE_REAL_STEP(Real, LnScaled(x, d, n, Narrow<F>(INVLN2)))
    ROVANE_CPLX_STEP(Cplx, LnScaled(x, d, n, Narrow<F>(INVLN2)))
};
struct ExpOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Exp(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, CplxExp<F>(x, d, n))
};
// 2^x and 10^x: the argument scaled by ln 2 or ln 10, then Exp.
template <const double& K>
struct ExpScaledOp {
    ROVANE_REAL_STEP(Real, (Prims<F>::ScaleByValue(x, 0, Narrow<F>(K), d, 0, n), Prims<F>::Exp(d, 0, d, 0, n)))
    ROVANE_CPLX_STEP(Cplx, CplxExp<F>(x, d, n, Narrow<F>(K)))
};
struct InvOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Inv(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, Prims<F>::CLTInv(x, 0, d, 0, n, F(0)))
};
struct InvSqrtOp {
    ROVANE_REAL_STEP(Real, Prims<F>::InvSqrt(x, 0, d, 0, n))
    ROVANE_CPLX_STEP(Cplx, (Prims<F>::CSqrt(x, 0, d, 0, n), Prims<F>::CLTInv(d, 0, d, 0, n, F(0))))
};
struct ErfOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Erf(x, 0, d, 0, n))
};
struct ErfcOp {
    ROVANE_REAL_STEP(Real, Prims<F>::Erfc(x, 0, d, 0, n))
};
struct ErfInvOp {
    ROVANE_REAL_STEP(Real, Prims<F>::ErfInv(x, 0, d, 0, n))
};
#undef ROVANE_REAL_STEP
#undef ROVANE_CPLX_STEP

// Thresholded reciprocal over a range; a negative level is refused by the
// primitive, which then leaves the destination as it was.
void InvThresholdCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex,
                      double threshold) {
    ByRange(src, dst, dstIndex, srcIndex, [&](auto* x, auto* d) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(x)>>;
        using F = RealOf<T>;
        if constexpr (IsComplex<T>)
            Prims<F>::CLTInv(x, 0, d, 0, len, Narrow<F>(threshold));
        else
            Prims<F>::LTInv(x, 0, d, 0, len, Narrow<F>(threshold));
    });
}

void LogNCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex, double n) {
    const double k = 1 / rovane::Ln(n);
    ByRange(src, dst, dstIndex, srcIndex, [&](auto* x, auto* d) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(x)>>;
        LnScaled(x, d, len, Narrow<RealOf<T>>(k));
    });
}

// Rules of the real-only members. ErfInv's forms with a source report under
// the name Erfc.
constexpr FormRules ErfRules{.result = ResultKind::RealOnly, .selfIsX = "TRovane.Erf: Self = Src",
                              .selfIsXAlways = true, .selfComplex = "TRovane.Erf: Self.Complex = True",
                              .srcSelfComplex = "TRovane.Erf: Self.Complex = True",
                              .srcComplex = "TRovane.Erf: Src.Complex = True"};
constexpr FormRules ErfcRules{.result = ResultKind::RealOnly, .selfIsX = "TRovane.Erfc: Self = Src",
                               .selfIsXAlways = true, .selfComplex = "TRovane.Erfc: Self.Complex = True",
                               .srcSelfComplex = "TRovane.Erfc: Self.Complex = True",
                               .srcComplex = "TRovane.Erfc: Src.Complex = True"};
constexpr FormRules ErfInvRules{.result = ResultKind::RealOnly, .selfIsX = "TRovane.Erfc: Self = Src",
                                 .selfIsXAlways = true, .selfComplex = "TRovane.ErfInv: Self.Complex = True",
                                 .srcSelfComplex = "TRovane.Erfc: Self.Complex = True",
                                 .srcComplex = "TRovane.Erfc: Src.Complex = True"};

// ---------------------------------------------------------------------------
// Powers.
// ---------------------------------------------------------------------------

// A base or exponent seen element by element as a complex value: a real or
// complex run, or one scalar for all elements. `complex` is the operand's
// kind (a real scalar or run reads with imaginary part 0).
template <class F>
struct Operand {
    const F* re = nullptr;
    const Cx<F>* cx = nullptr;
    Cx<F> value{F(0), F(0)};
    bool complex = false;

    static Operand Of(const TRovane& v) {
        Operand o;
        o.complex = v.fComplex;
        if (v.fComplex)
            o.cx = CplxAt<F>(v).ptr();
        else
            o.re = RealAt<F>(v).ptr();
        return o;
    }
    static Operand Scalar(F v) {
        Operand o;
        o.value = Cx<F>(v, F(0));
        return o;
    }
    static Operand Scalar(Cx<F> v) {
        Operand o;
        o.value = v;
        o.complex = true;
        return o;
    }
    Cx<F> operator[](int32_t i) const {
        if (cx) return cx[i];
        if (re) return Cx<F>(re[i], F(0));
        return value;
    }
};

// The rule for zero, applied to a complex result d of base b and exponent e
// after the bulk computation, element by element.
template <class F>
void ZeroRule(Cx<F>* d, int32_t n, const Operand<F>& b, const Operand<F>& e) {
    const Cx<F> cnan = prim::CNaN<F>();
    const Cx<F> inf(prim::Inf<F>(), F(0));
    const Cx<F> zero(F(0), F(0)), one(F(1), F(0));
    // A real base takes the real logarithm in bulk: its negative elements
    // need the complex power.
    const bool realBaseComplexExp = !b.complex && e.complex;
    for (int32_t i = 0; i < n; ++i) {
        const Cx<F> bi = b[i], ei = e[i];
        if (bi.Re == 0 && bi.Im == 0) {
            if (ei.Im != 0)
                d[i] = cnan;
            else if (ei.Re > 0)
                d[i] = zero;
            else if (ei.Re < 0)
                d[i] = inf;
            else if (ei.Re == 0)
                d[i] = one;
        } else if (ei.Re == 0 && ei.Im == 0) {
            d[i] = one;
        } else if (realBaseComplexExp && bi.Re < 0) {
            d[i] = rovane::Power(Cx<F>(bi.Re, F(0)), ei);
        }
    }
}

// A cached copy of the base when the result overwrites it: the zero rule
// reads the base after the bulk computation.
class BaseKeeper {
public:
    BaseKeeper(const TRovane& base, const TRovane& self) : fBase(&base) {
        if (&base == &self) {
            fCopy.emplace();
            (*fCopy)->Copy(base);
            fBase = &**fCopy;
        }
    }
    const TRovane& operator*() const { return *fBase; }

private:
    std::optional<CachedVec> fCopy;
    const TRovane* fBase;
};

// Self = base ^ value with a real value other than 0; Self is sized like base.
void PowerByReal(TRovane& self, const TRovane& base, double value) {
    const int32_t n = self.fLength;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const F v = Narrow<F>(value);
        if (!self.fComplex) {
            Prims<F>::Powx(RealAt<F>(base).ptr(), 0, v, RealAt<F>(self).ptr(), 0, n);
            return;
        }
        const BaseKeeper keep(base, self);
        const Cx<F>* b = CplxAt<F>(*keep).ptr();
        Cx<F>* d = CplxAt<F>(self).ptr();
        CplxPowByLog<F>(b, d, n, v);
        const Cx<F> atZero = value < 0 ? Cx<F>(prim::Inf<F>(), F(0)) : Cx<F>(F(0), F(0));
        for (int32_t i = 0; i < n; ++i)
            if (b[i].Re == 0 && b[i].Im == 0) d[i] = atZero;
    });
}

// Self = exp(value * ln(base)) with a complex value, base real or complex and
// distinct from Self; Self is complex and as long as base.
void PowerByComplex(TRovane& self, const TRovane& base, const TCplx& value) {
    const int32_t n = self.fLength;
    ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const Cx<F> v = Narrow<F>(value);
        Cx<F>* d = CplxAt<F>(self).ptr();
        if (base.fComplex) {
            CplxLn<F>(CplxAt<F>(base).ptr(), d, n);
            Prims<F>::CMulCI(v, d, 0, n);
        } else {
            Scratch<F, 1> ln(n);
            Prims<F>::Ln(RealAt<F>(base).ptr(), 0, ln[0], 0, n);
            Prims<F>::ScaleByValuedc(ln[0], 0, v, d, 0, n);
        }
        CplxExp<F>(d, d, n);
        ZeroRule<F>(d, n, Operand<F>::Of(base), Operand<F>::Scalar(v));
    });
}

// Square-and-multiply over whole runs: acc = p ^ m, p is overwritten by the
// running powers. The first odd step copies instead of multiplying by 1.
template <class T>
void BinaryPower(T* p, T* acc, int32_t n, uint32_t m) {
    using F = RealOf<T>;
    bool started = false;
    while (m != 0) {
        if (m & 1u) {
            if (!started) {
                if constexpr (IsComplex<T>)
                    Prims<F>::CCopy(p, 0, acc, 0, n);
                else
                    Prims<F>::Copy(p, 0, acc, 0, n);
                started = true;
            } else if constexpr (IsComplex<T>) {
                Prims<F>::CMulI(p, 0, acc, 0, n);
            } else {
                Prims<F>::MulI(p, 0, acc, 0, n);
            }
            --m;
        } else {
            if constexpr (IsComplex<T>)
                Prims<F>::CSqrI(p, 0, n);
            else
                Prims<F>::SqrI(p, 0, n);
            m /= 2;
        }
    }
}

uint32_t AbsOf(int32_t n) { return n < 0 ? 0u - static_cast<uint32_t>(n) : static_cast<uint32_t>(n); }

// d = b ^ k by multiplication of the values themselves (real, or complex);
// b and d may be the same run.
template <class T>
void IntPowerDirectRun(const T* b, T* d, int32_t n, int32_t k) {
    using F = RealOf<T>;
    Scratch<F, 1> t(IsComplex<T> ? 2 * n : n);
    T* p = reinterpret_cast<T*>(t[0]);
    if constexpr (IsComplex<T>)
        Prims<F>::CCopy(b, 0, p, 0, n);
    else
        Prims<F>::Copy(b, 0, p, 0, n);
    BinaryPower(p, d, n, AbsOf(k));
    if (k < 0) {
        if constexpr (IsComplex<T>)
            Prims<F>::CLTInv(d, 0, d, 0, n, F(0));
        else
            Prims<F>::Inv(d, 0, d, 0, n);
    }
}

// d = b ^ k in polar form: the magnitude through square-and-multiply, the
// phase multiplied by k (not reduced), joined again.
template <class F>
void IntPowerPolarRun(const Cx<F>* b, Cx<F>* d, int32_t n, int32_t k) {
    Scratch<F, 3> t(n);  // magnitude (then running power), phase, accumulated magnitude
    Prims<F>::CartToPolar(b, 0, t[0], 0, t[1], 0, n);
    ScaleRun(t[1], n, static_cast<F>(k));
    BinaryPower(t[0], t[2], n, AbsOf(k));
    if (k < 0) Prims<F>::Inv(t[2], 0, t[2], 0, n);
    Prims<F>::PolarToCart(t[2], 0, t[1], 0, d, 0, n);
}

// Both routes chunk by chunk, like the other compositions.
template <class T>
void IntPowerDirect(const T* b, T* d, int32_t n, int32_t k) {
    InChunks(n, [&](int32_t o, int32_t m) { IntPowerDirectRun(b + o, d + o, m, k); });
}
template <class F>
void IntPowerPolar(const Cx<F>* b, Cx<F>* d, int32_t n, int32_t k) {
    InChunks(n, [&](int32_t o, int32_t m) { IntPowerPolarRun<F>(b + o, d + o, m, k); });
}

}  // namespace

// ---------------------------------------------------------------------------
// The unary members.
// ---------------------------------------------------------------------------


// ---------------------------------------------------------------------------
// Inv with a threshold.
// ---------------------------------------------------------------------------
TRovane& TRovane::Inv(double threshold) {
    if (fLength > 0) InvThresholdCore(*this, *this, fLength, 0, 0, threshold);
    return *this;
}

TRovane& TRovane::Inv(double threshold, int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (len > 0) InvThresholdCore(*this, *this, len, index, index, threshold);
    return *this;
}

TRovane& TRovane::Inv(const TRovane& x, double threshold) {
    if (fConditionCheck && &x == this) EInvalidArgumentRaise("Inv: X = Self");
    Size(x);
    if (fLength > 0) InvThresholdCore(x, *this, fLength, 0, 0, threshold);
    return *this;
}

TRovane& TRovane::Inv(const TRovane& x, double threshold, int32_t xIndex, int32_t index, int32_t len) {
    ValidateParams(x, xIndex, index, len);
    if (fConditionCheck && x.fComplex != fComplex) EInvalidArgumentRaise("Inv: Self.Complex <> X.Complex");
    if (len > 0) InvThresholdCore(x, *this, len, index, xIndex, threshold);
    return *this;
}

// ---------------------------------------------------------------------------
// LogN. N = 0 is refused whatever ConditionCheck says.
// ---------------------------------------------------------------------------
TRovane& TRovane::LogN(double n) {
    if (n == 0) EInvalidArgumentRaise("N = 0");
    if (fLength > 0) LogNCore(*this, *this, fLength, 0, 0, n);
    return *this;
}

TRovane& TRovane::LogN(double n, int32_t index, int32_t len) {
    if (n == 0) EInvalidArgumentRaise("TRovane.LogN: N = 0");
    ValidateParams(index, len);
    if (len > 0) LogNCore(*this, *this, len, index, index, n);
    return *this;
}

TRovane& TRovane::LogN(double n, const TRovane& x) {
    if (n == 0) EInvalidArgumentRaise("TVec.LogN: N = 0");
    if (fConditionCheck && &x == this) EInvalidArgumentRaise("TVec.LogN: X = Self");
    Size(x);
    if (fLength > 0) LogNCore(x, *this, fLength, 0, 0, n);
    return *this;
}

TRovane& TRovane::LogN(double n, const TRovane& x, int32_t xIndex, int32_t index, int32_t len) {
    if (n == 0) EInvalidArgumentRaise("TRovane.LogN: N = 0");
    if (fConditionCheck && &x == this) EInvalidArgumentRaise("TRovane.LogN: Self = X");
    ValidateParams(x, xIndex, index, len);
    if (fConditionCheck && x.fComplex != fComplex) EInvalidArgumentRaise("TRovane.LogN: X.Complex <> Self.Complex");
    if (len > 0) LogNCore(x, *this, len, index, xIndex, n);
    return *this;
}

// ---------------------------------------------------------------------------
// Power, PowerVec, IntPower. Their texts are raised whatever ConditionCheck
// says.
// ---------------------------------------------------------------------------
TRovane& TRovane::Power(double value) {
    if (fLength == 0) return *this;
    if (value == 0) return SetVal(1.0);
    PowerByReal(*this, *this, value);
    return *this;
}

TRovane& TRovane::Power(const TRovane& base, double value) {
    if (&base == this) EInvalidArgumentRaise("Self = Base");
    Size(base);
    if (fLength == 0) return *this;
    if (value == 0) return SetVal(1.0);
    PowerByReal(*this, base, value);
    return *this;
}

TRovane& TRovane::Power(const TCplx& value) {
    if (fLength == 0) {
        SetComplex(true);
        return *this;
    }
    if (value.Re == 0 && value.Im == 0) return SetVal(C_ONE);
    if (value.Im == 0) {
        // A real exponent: the real power on a copy, widened into Self.
        CachedVec t;
        t->Copy(*this);
        t->Power(value.Re);
        return ExtendToComplex(*t, true);
    }
    if (!fComplex) {
        CachedVec base;
        base->Copy(*this);
        Size(*this, true);
        PowerByComplex(*this, *base, value);
        return *this;
    }
    const int32_t n = fLength;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const BaseKeeper keep(*this, *this);
        const Cx<F> v = Narrow<F>(value);
        Cx<F>* d = CplxAt<F>(*this).ptr();
        Prims<F>::CPowx(d, 0, v, d, 0, n);
        ZeroRule<F>(d, n, Operand<F>::Of(*keep), Operand<F>::Scalar(v));
    });
    return *this;
}

TRovane& TRovane::Power(const TRovane& base, const TCplx& value) {
    if (&base == this) EInvalidArgumentRaise("Self = Base");
    Size(base, true);
    if (fLength == 0) return *this;
    if (value.Re == 0 && value.Im == 0) return SetVal(C_ONE);
    PowerByComplex(*this, base, value);
    return *this;
}

TRovane& TRovane::Power(double value, const TRovane& exponent) {
    if (&exponent == this) EInvalidArgumentRaise("Self = Exponent");
    Size(exponent);
    const int32_t n = fLength;
    if (n == 0) return *this;
    if (!exponent.fComplex) {
        SetVal(value);
        ByWidth(fIsDouble, [&](auto f) {
            using F = decltype(f);
            F* d = RealAt<F>(*this).ptr();
            Prims<F>::Pow(d, 0, RealAt<F>(exponent).ptr(), 0, d, 0, n);
        });
        return *this;
    }
    // exp(e * ln(value)); a negative value is settled by the zero rule's
    // recomputation, a zero value by the rule itself.
    const double lnValue = rovane::Ln(value);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        Cx<F>* d = CplxAt<F>(*this).ptr();
        Prims<F>::ScaleByValuecd(CplxAt<F>(exponent).ptr(), 0, Narrow<F>(lnValue), d, 0, n);
        CplxExp<F>(d, d, n);
        ZeroRule<F>(d, n, Operand<F>::Scalar(Narrow<F>(value)), Operand<F>::Of(exponent));
    });
    return *this;
}

TRovane& TRovane::Power(const TCplx& value, const TRovane& exponent) {
    if (&exponent == this) EInvalidArgumentRaise("Self = Exponent");
    Size(exponent, true);
    const int32_t n = fLength;
    if (n == 0) return *this;
    const TCplx lnValue = rovane::Ln(value);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        const Cx<F> k = Narrow<F>(lnValue);
        Cx<F>* d = CplxAt<F>(*this).ptr();
        if (exponent.fComplex)
            Prims<F>::ScaleByValuec(CplxAt<F>(exponent).ptr(), 0, k, d, 0, n);
        else
            Prims<F>::ScaleByValuedc(RealAt<F>(exponent).ptr(), 0, k, d, 0, n);
        CplxExp<F>(d, d, n);
        ZeroRule<F>(d, n, Operand<F>::Scalar(Narrow<F>(value)), Operand<F>::Of(exponent));
    });
    return *this;
}

TRovane& TRovane::Power(const TRovane& base, const TRovane& exponent) { return PowerVec(base, exponent); }

TRovane& TRovane::PowerVec(const TRovane& base, const TRovane& exponent) {
    if (&base == this) EInvalidArgumentRaise("Self = Base");
    if (&exponent == this) EInvalidArgumentRaise("Self = Exponent");
    if (base.fLength != exponent.fLength) EInvalidArgumentRaise("Base.Length <> Exponent.Length");
    if (fConditionCheck && base.fIsDouble != exponent.fIsDouble)
        ERangeErrorRaise("X params not matching floating point precision: fIsDouble <> X.fIsDouble");
    const bool complex = base.fComplex || exponent.fComplex;
    Size(base, complex);
    const int32_t n = fLength;
    if (n == 0) return *this;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (!complex) {
            Prims<F>::Pow(RealAt<F>(base).ptr(), 0, RealAt<F>(exponent).ptr(), 0, RealAt<F>(*this).ptr(), 0, n);
            return;
        }
        Cx<F>* d = CplxAt<F>(*this).ptr();
        if (base.fComplex && exponent.fComplex) {
            Prims<F>::CPow(CplxAt<F>(base).ptr(), 0, CplxAt<F>(exponent).ptr(), 0, d, 0, n);
        } else {
            // exp(e * ln b) with the logarithm of the base's own kind.
            if (base.fComplex) {
                CplxLn<F>(CplxAt<F>(base).ptr(), d, n);
                Prims<F>::MulVeccd(d, 0, RealAt<F>(exponent).ptr(), 0, d, 0, n);
            } else {
                Scratch<F, 1> ln(n);
                Prims<F>::Ln(RealAt<F>(base).ptr(), 0, ln[0], 0, n);
                Prims<F>::MulVeccd(CplxAt<F>(exponent).ptr(), 0, ln[0], 0, d, 0, n);
            }
            CplxExp<F>(d, d, n);
        }
        ZeroRule<F>(d, n, Operand<F>::Of(base), Operand<F>::Of(exponent));
    });
    return *this;
}

TRovane& TRovane::IntPower(int32_t n) {
    if (fLength == 0) return *this;
    if (n == 0) return SetVal(1.0);
    const int32_t len = fLength;
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (!fComplex) {
            F* d = RealAt<F>(*this).ptr();
            IntPowerDirect(d, d, len, n);
        } else {
            Cx<F>* d = CplxAt<F>(*this).ptr();
            if (AbsOf(n) < 5)
                IntPowerDirect(d, d, len, n);
            else
                IntPowerPolar<F>(d, d, len, n);
        }
    });
    return *this;
}

TRovane& TRovane::IntPower(const TRovane& base, int32_t n) {
    if (&base == this) EInvalidArgumentRaise("Self = Base");
    Size(base);
    const int32_t len = fLength;
    if (len == 0) return *this;
    if (n == 0) return SetVal(1.0);
    ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        if (base.fComplex)
            IntPowerPolar<F>(CplxAt<F>(base).ptr(), CplxAt<F>(*this).ptr(), len, n);
        else
            IntPowerDirect(static_cast<const F*>(RealAt<F>(base).ptr()), RealAt<F>(*this).ptr(), len, n);
    });
    return *this;
}

// The forms of this family's rows of containers/members.tbl that name their core.
#include "rovane/containers/generated/Powers.defs.inc"

}  // namespace rovane
