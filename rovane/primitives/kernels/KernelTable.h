// Internal: the table of element-wise kernels behind the primitive entries.
//
// Every kernel is written once, as a template over the float type, in
// Kernels.inc. That file is compiled several times, once per instruction set
// (baseline x86-64, AVX2 + FMA, AVX-512), and once more with the plain
// extended-precision math as the reference. Each compilation fills one
// TKernelTables; PrimitiveCore.cpp picks the widest the processor runs, once,
// and the named primitives call through it. Nothing here is exported.
#pragma once

#include <cstddef>

namespace rovane::kern {

using idx = std::ptrdiff_t;

// Scalar operands of a kernel: a real value in `a`, a complex one in (a, b),
// the further levels and values of the threshold forms in c and d.
template <class F>
struct TArgs {
    F a = 0, b = 0, c = 0, d = 0;
};

// Kernel shapes. Lengths count elements of the kernel's own kind: complex
// kernels count complex pairs. Pointers are to the first element; complex
// data is the interleaved (re, im) stream. A destination may be the same
// array position as a source; other overlaps are not allowed.
template <class F>
using K1 = void (*)(const F* x, F* d, idx n, const TArgs<F>& s);
template <class F>
using K2 = void (*)(const F* x, const F* y, F* d, idx n, const TArgs<F>& s);
template <class F>
using K12 = void (*)(const F* x, F* d1, F* d2, idx n, const TArgs<F>& s);

// The kernel list: X(signature, name, shape). The shape tells Kernels.inc
// which loop drives the element operation Op<name>:
//   R_R, RR_R, R_RR       real loops, one element at a time
//   V_R, VV_R, V_RR       real loops over the vector math functions
//   C_C, C_R, R_C, CC_C, CR_C, RC_C, CR_R, C_RR, RR_C
//                         split-block loops: complex operands are split into
//                         real and imaginary blocks, the operation runs on the
//                         blocks, and the result is interleaved again.
#define ROVANE_KERNELS(X)                                                                         \
    /* real arithmetic */                                                                         \
    X(K2, Add, RR_R) X(K2, Sub, RR_R) X(K2, Mul, RR_R) X(K2, Div, RR_R) X(K2, AddProduct, RR_R)   \
    X(K2, Rem, RR_R) X(K2, SgnMul, RR_R)                                                          \
    X(K1, AddS, R_R) X(K1, MulS, R_R) X(K1, SubRevS, R_R) X(K1, DivS, R_R) X(K1, DivRevS, R_R)    \
    X(K1, RemValS, R_R) X(K1, Normalize, R_R)                                                     \
    X(K1, Sqr, R_R) X(K1, Sqrt, R_R) X(K1, Abs, R_R) X(K1, Inv, R_R) X(K1, Sgn, R_R)              \
    X(K1, Ceil, R_R) X(K1, Floor, R_R) X(K1, Round, R_R) X(K1, Trunc, R_R)                        \
    X(K12, Modf, R_RR)                                                                            \
    /* real thresholds */                                                                         \
    X(K1, ThreshLT, R_R) X(K1, ThreshGT, R_R) X(K1, ThreshLTAbs, R_R) X(K1, ThreshGTAbs, R_R)     \
    X(K1, ThreshLTVal, R_R) X(K1, ThreshGTVal, R_R) X(K1, ThreshLTValGTVal, R_R)                  \
    X(K1, ThreshLTInv, R_R) X(K1, ReplaceNan, R_R)                                                \
    /* vector math */                                                                             \
    X(K1, Sin, V_R) X(K1, Cos, V_R) X(K1, Tan, V_R) X(K1, Asin, V_R) X(K1, Acos, V_R)             \
    X(K1, Atan, V_R) X(K1, Sinh, V_R) X(K1, Cosh, V_R) X(K1, Tanh, V_R) X(K1, Asinh, V_R)         \
    X(K1, Acosh, V_R) X(K1, Atanh, V_R) X(K1, Exp, V_R) X(K1, Ln, V_R) X(K1, Log10, V_R)          \
    X(K1, Cbrt, V_R) X(K1, Erf, V_R) X(K1, PowxS, V_R)                                            \
    X(K2, Atan2, VV_R) X(K2, Pow, VV_R) X(K12, SinCos, V_RR)                                      \
    /* complex on complex */                                                                      \
    X(K2, CMul, CC_C) X(K2, CDiv, CC_C) X(K2, CConjMul, CC_C) X(K2, CAddProduct, CC_C)            \
    X(K2, CSgnMul, CC_C)                                                                          \
    X(K1, CAddS, C_C) X(K1, CMulS, C_C) X(K1, CSubRevS, C_C) X(K1, CDivRevS, C_C)                 \
    X(K1, CNormalize, C_C) X(K1, CSqr, C_C) X(K1, CConj, C_C) X(K1, CMulI, C_C)                   \
    X(K1, CFlip, C_C) X(K1, CFlipConj, C_C) X(K1, CSgn, C_C) X(K1, CInv, C_C)                     \
    X(K1, CThreshLT, C_C) X(K1, CThreshGT, C_C) X(K1, CThreshLTVal, C_C)                          \
    X(K1, CThreshGTVal, C_C) X(K1, CThreshLTInv, C_C)                                             \
    /* complex with a real scalar, real with a complex scalar */                                  \
    X(K1, CAddRealS, C_C) X(K1, CSubFromRealS, C_C) X(K1, CDivRealByS, C_C)                       \
    X(K1, RAddCplxS, R_C) X(K1, RMulCplxS, R_C) X(K1, RSubFromCplxS, R_C) X(K1, RDivCplxByS, R_C) \
    X(K1, RSgnC, R_C)                                                                             \
    /* complex to real */                                                                         \
    X(K1, Magnitude, C_R) X(K1, PowerSpectr, C_R) X(K1, Phase, C_R) X(K1, RealPart, C_R)          \
    X(K1, ImagPart, C_R) X(K1, CSgnR, C_R)                                                        \
    X(K12, CplxToReal, C_RR) X(K12, CartToPolar, C_RR)                                            \
    X(K2, RealToCplx, RR_C) X(K2, PolarToCart, RR_C)                                              \
    /* mixed real and complex vectors */                                                          \
    X(K2, AddCR, CR_C) X(K2, SubCR, CR_C) X(K2, MulCR, CR_C) X(K2, DivCR, CR_C)                   \
    X(K2, SubRC, RC_C) X(K2, DivRC, RC_C) X(K2, SgnMulRC, RC_C) X(K2, SgnMulCR, CR_R)

template <class F>
struct TKernelSet {
#define ROVANE_KERNEL_MEMBER(SIG, NAME, SHAPE) SIG<F> NAME = nullptr;
    ROVANE_KERNELS(ROVANE_KERNEL_MEMBER)
#undef ROVANE_KERNEL_MEMBER
};

struct TKernelTables {
    TKernelSet<double> d;
    TKernelSet<float> s;
    const char* name;
};

// One table per compilation of Kernels.inc.
const TKernelTables& KernelTablesReference();
const TKernelTables& KernelTablesBaseline();
const TKernelTables& KernelTablesAvx2();
const TKernelTables& KernelTablesAvx512();

}  // namespace rovane::kern
