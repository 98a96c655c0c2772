// Internal: the tables of element-wise kernels behind the primitive entries.
//
// Kernels come in families (arithmetic, vector math, parts and conversions,
// thresholds), each a list below and a source Kernels<Family>.inc written
// once as templates over the element type. Each family is compiled once per
// instruction set as a translation unit of its own (<Family><Isa>.cpp:
// baseline x86-64, AVX2 + FMA, AVX-512, and the long double reference) and
// fills its part of that instruction set's TKernelTables; KernelTables.cpp
// assembles the tables, ippspl_core.cpp picks one at start, and the named
// primitives call through it. Nothing here is exported.
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

// The kernel lists: X(signature, name, shape). Names follow the primitive
// grammar: the catalogue stem (Add, Threshold_LT), the library's own names
// (AddValuecd, Sgndc), and a trailing c for the complex form of a catalogue
// stem (Mulc, Threshold_LTc). The shape tells the family source which loop
// drives the element operation Op<name>:
//   R_R, RR_R, R_RR       real loops, one element at a time
//   V_R, VV_R, V_RR, V_R_POWX
//                         real loops over the vector math functions
//   C_C, C_R, R_C, CC_C, CR_C, RC_C, CR_R, C_RR, RR_C
//                         split-block loops: complex operands are split into
//                         real and imaginary blocks, the operation runs on the
//                         blocks, and the result is interleaved again
//   IL_CC_C, IL_CR_C, IL_C_RR, IL_RR_C
//                         the same operations on the interleaved stream with
//                         lane permutations (complex products, split, join),
//                         where the split blocks would copy more than they
//                         compute; the reference table runs the split-block form.
#define ROVANE_KERNELS_ARITH(X)                                                                                \
    X(K2, Add, RR_R) X(K2, Sub, RR_R) X(K2, Mul, RR_R) X(K2, Div, RR_R) X(K2, AddProduct, RR_R)                \
    X(K2, Rem, RR_R)                                                                                          \
    X(K1, AddValue, R_R) X(K1, ScaleByValue, R_R) X(K1, SubFromValue, R_R) X(K1, DivC, R_R)                   \
    X(K1, DivideValue, R_R) X(K1, RemVal, R_R) X(K1, Normalize, R_R) X(K1, Sqr, R_R) X(K1, Inv, R_R)          \
    X(K2, Mulc, IL_CC_C) X(K2, ConjMulcc, IL_CC_C) X(K2, DivVeccc, CC_C) X(K2, AddProductc, CC_C)             \
    X(K1, AddValuec, C_C) X(K1, ScaleByValuec, C_C) X(K1, SubFromValuec, C_C) X(K1, DivideValuec, C_C)        \
    X(K1, Normalizec, C_C) X(K1, Sqrc, C_C) X(K1, Invc, C_C)                                                  \
    X(K1, AddValuecd, C_C) X(K1, SubFromValuecd, C_C) X(K1, DivideValuecd, C_C)                               \
    X(K1, AddValuedc, R_C) X(K1, ScaleByValuedc, R_C) X(K1, SubFromValuedc, R_C) X(K1, DivideValuedc, R_C)    \
    X(K2, AddVeccd, CR_C) X(K2, SubVeccd, CR_C) X(K2, MulVeccd, IL_CR_C) X(K2, DivVeccd, CR_C)                \
    X(K2, SubVecdc, RC_C) X(K2, DivVecdc, RC_C)
#define ROVANE_KERNELS_VMATH(X)                                                                                \
    X(K1, Sqrt, R_R)                                                                                          \
    X(K1, Sin, V_R) X(K1, Cos, V_R) X(K1, Tan, V_R) X(K1, Asin, V_R) X(K1, Acos, V_R)                         \
    X(K1, Atan, V_R) X(K1, Sinh, V_R) X(K1, Cosh, V_R) X(K1, Tanh, V_R) X(K1, Asinh, V_R)                     \
    X(K1, Acosh, V_R) X(K1, Atanh, V_R) X(K1, Exp, V_R) X(K1, Ln, V_R) X(K1, Log10, V_R)                      \
    X(K1, Cbrt, V_R) X(K1, Erf, V_R) X(K1, Powx, V_R_POWX)                                                    \
    X(K2, Atan2, VV_R) X(K2, Pow, VV_R) X(K12, SinCos, V_RR)                                                  \
    X(K1, Phase, C_R) X(K12, CartToPolar, C_RR) X(K2, PolarToCart, RR_C)
#define ROVANE_KERNELS_PARTS(X)                                                                                \
    X(K1, Abs, R_R) X(K1, Sgndd, R_R) X(K1, Ceil, R_R) X(K1, Floor, R_R) X(K1, Round, R_R) X(K1, Trunc, R_R)  \
    X(K12, Modf, R_RR) X(K2, SgnMul, RR_R)                                                                    \
    X(K1, Conj, C_C) X(K1, MulI, C_C) X(K1, Flip, C_C) X(K1, FlipConj, C_C) X(K1, Sgncc, C_C)                 \
    X(K1, Sgndc, R_C) X(K1, Sgncd, C_R) X(K2, SgnMulc, CC_C) X(K2, SgnMuldc, RC_C) X(K2, SgnMulcd, CR_R)      \
    X(K1, Magnitude, C_R) X(K1, PowerSpectr, C_R) X(K1, Real, C_R) X(K1, Imag, C_R)                           \
    X(K12, CplxToReal, IL_C_RR) X(K2, RealToCplx, IL_RR_C)
#define ROVANE_KERNELS_THRESH(X)                                                                               \
    X(K1, Threshold_LT, R_R) X(K1, Threshold_GT, R_R) X(K1, Threshold_LTAbs, R_R) X(K1, Threshold_GTAbs, R_R) \
    X(K1, Threshold_LTVal, R_R) X(K1, Threshold_GTVal, R_R) X(K1, Threshold_LTValGTVal, R_R)                  \
    X(K1, Threshold_LTInv, R_R) X(K1, ReplaceNAN, R_R)                                                        \
    X(K1, Threshold_LTc, C_C) X(K1, Threshold_GTc, C_C) X(K1, Threshold_LTValc, C_C)                          \
    X(K1, Threshold_GTValc, C_C) X(K1, Threshold_LTInvc, C_C)

// Matrix kernels (KernelsMatrix.inc): small products with element strides
// for both operands (a transposed operand is a swap of its strides), alpha
// and beta in TArgs (real: a, c; complex: (a, b), (c, d)), and the blocked
// transpositions; complex kernels take interleaved pairs and count pairs.
template <class F>
using KGemm = void (*)(idx m, idx n, idx k, const F* a, idx ars, idx acs, const F* b, idx brs, idx bcs, F* c,
                       idx ldc, const TArgs<F>& s);
template <class F>
using KGemmc = void (*)(idx m, idx n, idx k, const F* a, idx ars, idx acs, bool conjA, const F* b, idx brs,
                        idx bcs, bool conjB, F* c, idx ldc, const TArgs<F>& s);
// C = alpha A B + beta C for n x n plain operands with unit column strides.
template <class F>
using KGemmSq = void (*)(idx n, const F* a, idx lda, const F* b, idx ldb, F* c, idx ldc, F alpha, F beta);
// C = alpha A B for 4 x 4 plain operands (beta = 0: C is not read).
template <class F>
using KGemm4 = void (*)(const F* a, idx lda, const F* b, idx ldb, F* c, idx ldc, F alpha);
template <class F>
using KTransp = void (*)(const F* src, idx rows, idx cols, idx lds, F* dst, idx ldd);
template <class F>
using KTranspSq = void (*)(F* a, idx n, idx ld);
#define ROVANE_KERNELS_MATRIX(X)                                                                               \
    X(KGemm, GemmSmall, M) X(KGemmc, GemmSmallc, M) X(KGemmSq, GemmSquare, M) X(KGemm4, Gemm4x4, M) X(KTransp, Transpose, M) X(KTransp, Transposec, M)         \
    X(KTransp, Adjungc, M) X(KTranspSq, TransposeSquare, M) X(KTranspSq, TransposeSquarec, M)                 \
    X(KTranspSq, AdjungSquarec, M)
// Reductions fold a run to a few numbers. Single data accumulate in double;
// the lengths count elements of the kernel's own kind (complex pairs for the
// complex kernels). Shapes:
//   RSum(x, n)                 a double result (sum, sum of squares)
//   RNorm(x, y, n)             a norm of x, or of x - y when y is not null
//   RPair(x, y, n, out)        a complex result in out[0], out[1] (sums, dots)
//   RArg(x, n, value)          an extreme and its index (first occurrence)
//   RMinMax(x, n, ...)         both extremes with their indexes
//   RMoments(x, n, mean, m2)   mean and sum of squared deviations
template <class F>
using RSum = double (*)(const F* x, idx n);
template <class F>
using RNorm = double (*)(const F* x, const F* y, idx n);
template <class F>
using RPair = void (*)(const F* x, const F* y, idx n, double* out);
template <class F>
using RArg = idx (*)(const F* x, idx n, F* value);
template <class F>
using RMinMax = void (*)(const F* x, idx n, F* mn, idx* imn, F* mx, idx* imx);
template <class F>
using RMoments = void (*)(const F* x, idx n, double* mean, double* m2);
#define ROVANE_KERNELS_REDUCE(X)                                                                               \
    X(RSum, Sum, R) X(RSum, SumSq, R) X(RPair, Sumc, C)                                                         \
    X(RNorm, Dot, RR) X(RPair, Dotc, CC) X(RPair, DotcConj, CC) X(RPair, Dotrc, RC)                           \
    X(RNorm, NormInf, R) X(RNorm, NormL1, R) X(RNorm, NormL2, R) X(RNorm, NormInfc, C) X(RNorm, NormL1c, C)   \
    X(RArg, MaxIndx, R) X(RArg, MinIndx, R) X(RMinMax, MinMaxIndx, R) X(RMoments, MeanM2, R)

#define ROVANE_KERNEL_MEMBER(SIG, NAME, SHAPE) SIG<F> NAME = nullptr;
// One set per family and element type.
template <class F>
struct TArithKernels {
    ROVANE_KERNELS_ARITH(ROVANE_KERNEL_MEMBER)
};
template <class F>
struct TVmathKernels {
    ROVANE_KERNELS_VMATH(ROVANE_KERNEL_MEMBER)
};
template <class F>
struct TPartsKernels {
    ROVANE_KERNELS_PARTS(ROVANE_KERNEL_MEMBER)
};
template <class F>
struct TThreshKernels {
    ROVANE_KERNELS_THRESH(ROVANE_KERNEL_MEMBER)
};
template <class F>
struct TMatrixKernels {
    ROVANE_KERNELS_MATRIX(ROVANE_KERNEL_MEMBER)
};
template <class F>
struct TReduceKernels {
    ROVANE_KERNELS_REDUCE(ROVANE_KERNEL_MEMBER)
};
#undef ROVANE_KERNEL_MEMBER

// Selection kernels (KernelsSelect.inc): relation tests, compress and expand
// by a mask, per float type. `op` is the relation code 0 to 5 (<, <=, >, >=,
// =, <>; unordered counts as true for 0 to 3, = and <> follow the NaN and
// infinity rules of the right side); another code writes nothing (masks:
// zeros) and counts 0. Masks are 32-bit integers, a value above zero selects.
// Complex forms (suffix c) move (re, im) pairs; lengths count elements.
template <class F>
struct TSelectKernels {
    void (*FindMaskC)(const F* a, F b, int* d, idx n, int op) = nullptr;
    void (*FindMask)(const F* a, const F* b, int* d, idx n, int op) = nullptr;
    // Write base + i for each match, ascending; return the count. d has room
    // for n entries.
    idx (*FindIndexesC)(const F* a, F b, int* d, idx n, int op, idx base) = nullptr;
    idx (*FindIndexes)(const F* a, const F* b, int* d, idx n, int op, idx base) = nullptr;
    // Compress: the selected x[i] in order to d, at most cap of them (d has
    // room for cap elements); returns the number of selected elements seen.
    idx (*PackByMask)(const F* x, const int* m, F* d, idx n, idx cap) = nullptr;
    idx (*PackByMaskc)(const F* x, const int* m, F* d, idx n, idx cap) = nullptr;
    // Expand: each selected d[i] takes the next x, at most avail of them;
    // unselected d[i] keep their values. Returns the number of x read.
    idx (*UnpackByMask)(const F* x, const int* m, F* d, idx n, idx avail) = nullptr;
    idx (*UnpackByMaskc)(const F* x, const int* m, F* d, idx n, idx avail) = nullptr;
};
// Integer kernels: d = x + y and d = x - y saturated at the element's range
// (the _Sfs arithmetic at scale factor 0).
struct TIntKernels {
    void (*AddSat32)(const int* x, const int* y, int* d, idx n) = nullptr;
    void (*SubSat32)(const int* x, const int* y, int* d, idx n) = nullptr;
    void (*AddSat16)(const short* x, const short* y, short* d, idx n) = nullptr;
    void (*SubSat16)(const short* x, const short* y, short* d, idx n) = nullptr;
    void (*AddSat8)(const unsigned char* x, const unsigned char* y, unsigned char* d, idx n) = nullptr;
    void (*SubSat8)(const unsigned char* x, const unsigned char* y, unsigned char* d, idx n) = nullptr;
};
struct TSelectTables {
    TSelectKernels<double> f64;
    TSelectKernels<float> f32;
    TIntKernels ints;
    template <class T>
    const auto& Of() const {
        if constexpr (__is_same(T, double))
            return f64;
        else
            return f32;
    }
};

// All kernels of one element type. A member pointer into a family set
// converts to one into this set, so entries name kernels as
// &TKernelSet<F>::Sin. A family for other element types (reductions, the
// integer kernels) adds its own set and a member to TKernelTables.
template <class F>
struct TKernelSet : TArithKernels<F>, TVmathKernels<F>, TPartsKernels<F>, TThreshKernels<F>, TMatrixKernels<F>, TReduceKernels<F> {};

// The kernels of one instruction set, by element type. Another element type
// (the integer kernels: TIntKernelSet<int32_t> i32, ...) is one more member
// and one more branch of Of; reductions are one more family set above.
struct TKernelTables {
    const char* name = "";
    TKernelSet<double> f64;
    TKernelSet<float> f32;
    TSelectTables sel;

    template <class T>
    const auto& Of() const {
        static_assert(__is_same(T, double) || __is_same(T, float), "no kernel set for this element type");
        if constexpr (__is_same(T, double))
            return f64;
        else
            return f32;
    }
};

// The family fills of each instruction set (one translation unit each), and
// the assembled tables (KernelTables.cpp).
#define ROVANE_KERNEL_FILLS(NS)                  \
    namespace NS {                               \
    void FillArith(TKernelTables& t);            \
    void FillVmath(TKernelTables& t);            \
    void FillParts(TKernelTables& t);            \
    void FillThresh(TKernelTables& t);           \
    void FillMatrix(TKernelTables& t);           \
    void FillReduce(TKernelTables& t);           \
    void FillSelect(TKernelTables& t);           \
    }
ROVANE_KERNEL_FILLS(reference)
ROVANE_KERNEL_FILLS(baseline)
ROVANE_KERNEL_FILLS(avx2)
ROVANE_KERNEL_FILLS(avx512)
#undef ROVANE_KERNEL_FILLS

const TKernelTables& KernelTablesReference();
const TKernelTables& KernelTablesBaseline();
const TKernelTables& KernelTablesAvx2();
const TKernelTables& KernelTablesAvx512();

}  // namespace rovane::kern
