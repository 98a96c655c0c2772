// Matrix products: Mul in its matrix types and operations over BLAS (with
// the library's own kernels for small sizes), the vector products, Kron,
// the elementwise matrix names, and the column and row folds.
//
// Storage is row-major and BLAS is column-major. A row-major matrix A with
// row stride ld is, read column-major with the same ld, the matrix A^T. So
// C = op1(A) op2(B) is computed as C^T = op2(B)^T op1(A)^T: B goes first,
// the operation letters stay with their operands, and m and n change places.
// A stored triangle changes sides (the upper triangle of A is the lower one
// of A^T), so UPLO is the other letter, and a symmetric, Hermitian or
// triangular left operand becomes a right one (SIDE = R) and vice versa.
#include <bit>
#include <cblas.h>

#include "rovane/containers/MatrixCommon.h"
#include "rovane/primitives/BlasHelper.h"
#include "rovane/storage/ReportChannel.h"
#include "rovane/primitives/MatrixPrims.h"
#include "rovane/primitives/kernels/Dispatch.h"

namespace rovane {
namespace mtx {

CachedMtx::~CachedMtx() noexcept {
    try {
        FreeIt(fMtx);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("FreeIt of a temporary failed");
    }
}

bool SharesMemory(const TRovane& a, const TRovane& b) {
    // Views of one block share its base; objects of different blocks never
    // overlap (the rule of the operation frame's Unaliased as well).
    const void* ba = a.fIsDouble ? static_cast<const void*>(a.SData) : static_cast<const void*>(a.SSData);
    const void* bb = b.fIsDouble ? static_cast<const void*>(b.SData) : static_cast<const void*>(b.SSData);
    if (ba != bb || !ba || a.fLength == 0 || b.fLength == 0) return false;
    const char* pa = a.fIsDouble ? reinterpret_cast<const char*>(a.Values) : reinterpret_cast<const char*>(a.SValues);
    const char* pb = b.fIsDouble ? reinterpret_cast<const char*>(b.Values) : reinterpret_cast<const char*>(b.SValues);
    if (!pa || !pb) return false;
    const int64_t ea = (a.fIsDouble ? 8 : 4) * (a.fComplex ? 2 : 1), eb = (b.fIsDouble ? 8 : 4) * (b.fComplex ? 2 : 1);
    int64_t spanA = int64_t(a.fLength) * ea, spanB = int64_t(b.fLength) * eb;
    if (a.fRovaneType == rvTMtx) {
        const auto& m = static_cast<const TMtx&>(a);
        if (m.fRows > 0) spanA = (int64_t(m.fRows - 1) * m.fLeadingCols + m.fCols) * ea;
    }
    if (b.fRovaneType == rvTMtx) {
        const auto& m = static_cast<const TMtx&>(b);
        if (m.fRows > 0) spanB = (int64_t(m.fRows - 1) * m.fLeadingCols + m.fCols) * eb;
    }
    return pa < pb + spanB && pb < pa + spanA;
}

void WidenToComplex(const TMtx& m, TMtx& dst) {
    dst.Size(m.fRows, m.fCols, PrecOf(true, m.fIsDouble));
    dst.FTriangleForm = m.FTriangleForm;
    dst.FTriangleUnit = m.FTriangleUnit;
    if (m.fIsDouble)
        CopyBlock(At<double>(m), Ld(m), At<TCplx>(dst), Ld(dst), m.fRows, m.fCols);
    else
        CopyBlock(At<float>(m), Ld(m), At<TSCplx>(dst), Ld(dst), m.fRows, m.fCols);
}

}  // namespace mtx

using namespace mtx;
using frame::CachedVec;

namespace {

// Products up to this size in every dimension run on the library's kernels:
// below it the BLAS call's own overhead is most of the time.
constexpr int32_t kSmallProduct = 8;

CBLAS_TRANSPOSE Letter(TMtxOperation op) {
    return op == opNone ? CblasNoTrans : (op == opTran ? CblasTrans : CblasConjTrans);
}
// The stored triangle of a row-major matrix, as the column-major routine sees it.
CBLAS_UPLO FlippedUplo(TTriangleForm f) { return f == tfUpper ? CblasLower : CblasUpper; }

// One operand of a product after its checks: data, stride, operation and
// the structure the path may rely on.
template <class T>
struct Operand {
    const T* p;
    int32_t ld;
    TMtxOperation op;
    TMtxType type;
    TTriangleForm form;
    bool unit;
};

// The scalar pair as BLAS takes it: a value for real routines, an address
// for complex ones.
template <class T>
struct Scalars {
    T alpha, beta;
};

template <class T>
void Gemm(int32_t m, int32_t n, int32_t k, const Operand<T>& a, const Operand<T>& b, const Scalars<T>& s, T* c,
          int32_t ldc) {
    using F = RealOf<T>;
    if (m <= kSmallProduct && n <= kSmallProduct && k <= kSmallProduct) {
        // A(i, p) at a[i * ars + p * acs], B(p, j) at b[p * brs + j * bcs].
        const kern::idx ars = a.op == opNone ? a.ld : 1, acs = a.op == opNone ? 1 : a.ld;
        const kern::idx brs = b.op == opNone ? b.ld : 1, bcs = b.op == opNone ? 1 : b.ld;
        const auto& kt = kern::Kernels<F>();
        if constexpr (IsComplex<T>) {
            const kern::TArgs<F> args{s.alpha.Re, s.alpha.Im, s.beta.Re, s.beta.Im};
            kt.GemmSmallc(m, n, k, &a.p->Re, ars, acs, a.op == opHerm, &b.p->Re, brs, bcs, b.op == opHerm, &c->Re,
                          ldc, args);
        } else {
            const kern::TArgs<F> args{s.alpha, 0, s.beta, 0};
            kt.GemmSmall(m, n, k, a.p, ars, acs, b.p, brs, bcs, c, ldc, args);
        }
        return;
    }
    const auto& bl = blas::Blas();
    const auto ta = Letter(a.op), tb = Letter(b.op);
    if constexpr (std::is_same_v<T, double>)
        bl.dgemm(CblasColMajor, tb, ta, n, m, k, s.alpha, b.p, b.ld, a.p, a.ld, s.beta, c, ldc);
    else if constexpr (std::is_same_v<T, float>)
        bl.sgemm(CblasColMajor, tb, ta, n, m, k, s.alpha, b.p, b.ld, a.p, a.ld, s.beta, c, ldc);
    else if constexpr (std::is_same_v<T, TCplx>)
        bl.zgemm(CblasColMajor, tb, ta, n, m, k, &s.alpha, b.p, b.ld, a.p, a.ld, &s.beta, c, ldc);
    else
        bl.cgemm(CblasColMajor, tb, ta, n, m, k, &s.alpha, b.p, b.ld, a.p, a.ld, &s.beta, c, ldc);
}

// C = alpha * S * B or alpha * B * S + beta * C with S symmetric (real) or
// Hermitian (complex), given by its stored triangle; symLeft: S is the left
// operand. Both operands without operation.
template <class T>
void Symm(bool symLeft, int32_t m, int32_t n, const Operand<T>& sym, const Operand<T>& other, const Scalars<T>& s,
          T* c, int32_t ldc) {
    const auto& bl = blas::Blas();
    // Left in row-major is right in the column-major call; M, N are C^T's.
    const CBLAS_SIDE side = symLeft ? CblasRight : CblasLeft;
    const CBLAS_UPLO uplo = FlippedUplo(sym.form);
    if constexpr (std::is_same_v<T, double>)
        bl.dsymm(CblasColMajor, side, uplo, n, m, s.alpha, sym.p, sym.ld, other.p, other.ld, s.beta, c, ldc);
    else if constexpr (std::is_same_v<T, float>)
        bl.ssymm(CblasColMajor, side, uplo, n, m, s.alpha, sym.p, sym.ld, other.p, other.ld, s.beta, c, ldc);
    else if constexpr (std::is_same_v<T, TCplx>)
        bl.zhemm(CblasColMajor, side, uplo, n, m, &s.alpha, sym.p, sym.ld, other.p, other.ld, &s.beta, c, ldc);
    else
        bl.chemm(CblasColMajor, side, uplo, n, m, &s.alpha, sym.p, sym.ld, other.p, other.ld, &s.beta, c, ldc);
}

// C := alpha * op(Tri) * C (triLeft) or alpha * C * op(Tri), in place, C m x n.
template <class T>
void Trmm(bool triLeft, int32_t m, int32_t n, const Operand<T>& tri, T alpha, T* c, int32_t ldc) {
    const auto& bl = blas::Blas();
    const CBLAS_SIDE side = triLeft ? CblasRight : CblasLeft;
    const CBLAS_UPLO uplo = FlippedUplo(tri.form);
    const CBLAS_TRANSPOSE ta = Letter(tri.op);
    const CBLAS_DIAG diag = tri.unit ? CblasUnit : CblasNonUnit;
    if constexpr (std::is_same_v<T, double>)
        bl.dtrmm(CblasColMajor, side, uplo, ta, diag, n, m, alpha, tri.p, tri.ld, c, ldc);
    else if constexpr (std::is_same_v<T, float>)
        bl.strmm(CblasColMajor, side, uplo, ta, diag, n, m, alpha, tri.p, tri.ld, c, ldc);
    else if constexpr (std::is_same_v<T, TCplx>)
        bl.ztrmm(CblasColMajor, side, uplo, ta, diag, n, m, &alpha, tri.p, tri.ld, c, ldc);
    else
        bl.ctrmm(CblasColMajor, side, uplo, ta, diag, n, m, &alpha, tri.p, tri.ld, c, ldc);
}

// The matrix types detected when AutoMtxType is on: symmetric (Hermitian
// for complex data), else triangular (the form is returned), else general.
template <class T>
TMtxType Detect(const TMtx& m, TTriangleForm& form) {
    if (m.fRows != m.fCols || m.fRows == 0) return mtGeneral;
    const T* p = At<T>(m);
    const int32_t n = m.fRows, ld = m.fLeadingCols;
    bool sym = true, upperZero = true, lowerZero = true;
    for (int32_t i = 0; i < n; ++i)
        for (int32_t j = i + 1; j < n; ++j) {
            const T& u = p[int64_t(i) * ld + j];
            const T& l = p[int64_t(j) * ld + i];
            if (sym && !(u == Conjugate(l))) sym = false;
            if (upperZero && !(u == T{} || u == FromReal<T>(0))) upperZero = false;
            if (lowerZero && !(l == T{} || l == FromReal<T>(0))) lowerZero = false;
        }
    if constexpr (IsComplex<T>) {
        for (int32_t i = 0; sym && i < n; ++i)
            if (p[int64_t(i) * ld + i].Im != 0) sym = false;
        if (sym) return mtHermitian;
    } else if (sym) {
        return mtSymmetric;
    }
    if (lowerZero) {
        form = tfUpper;
        return mtTriangle;
    }
    if (upperZero) {
        form = tfLower;
        return mtTriangle;
    }
    return mtGeneral;
}

bool SymType(TMtxType t, bool complex) {
    return complex ? (t == mtHermitian || t == mtHermPosDef) : (t == mtSymmetric || t == mtSymmPosDef);
}

// Whether op(S) is S itself for a symmetric (real) or Hermitian (complex) S.
bool OpKeepsSym(TMtxOperation op, bool complex) { return op == opNone || op == (complex ? opHerm : opTran); }

// The core after the checks: Self is sized m x n with the product's
// precision, a and b have it too.
template <class T>
void MultiplyInto(TMtx& self, const TMtx& ma, const TMtx& mb, Operand<T> a, Operand<T> b, int32_t m, int32_t n,
             int32_t k) {
    constexpr bool cplx = IsComplex<T>;
    const Scalars<T> s{FromCplx<T>(self.Alfa), FromCplx<T>(self.Beta)};
    const bool beta0 = self.Beta.Re == 0 && self.Beta.Im == 0;
    T* c = At<T>(self);
    const int32_t ldc = Ld(self);
    LazyMtx t1, t2;
    // op(X) of an operand into a temporary, as a plain operand.
    auto materialize = [](const TMtx& src, Operand<T>& o, TMtx& tmp) {
        if (o.op == opTran)
            tmp.Transp(src);
        else if (o.op == opHerm)
            tmp.Adjung(src);
        o = Operand<T>{At<T>(tmp), Ld(tmp), opNone, o.type, o.form, o.unit};
    };
    // Symmetric or Hermitian operand: read from its stored triangle.
    const bool symA = SymType(a.type, cplx), symB = SymType(b.type, cplx);
    if (symA || symB) {
        const bool left = symA;
        Operand<T>& sym = left ? a : b;
        Operand<T>& other = left ? b : a;
        const TMtx& msym = left ? ma : mb;
        const TMtx& mother = left ? mb : ma;
        if (!OpKeepsSym(sym.op, cplx)) {
            // A Hermitian matrix transposed is its conjugate, Hermitian in
            // the same triangle.
            t1->Copy(msym);
            t1->Conj();
            sym.p = At<T>(*t1);
            sym.ld = Ld(*t1);
        }
        sym.op = opNone;
        if (other.op != opNone) materialize(mother, other, *t2);
        Symm<T>(left, m, n, sym, other, s, c, ldc);
        return;
    }
    // Triangular operand: op(other) is copied to Self (or to a temporary
    // when Beta must see Self's old content), multiplied there in place.
    if (a.type == mtTriangle || b.type == mtTriangle) {
        const bool left = a.type == mtTriangle;
        const Operand<T>& tri = left ? a : b;
        const Operand<T>& other = left ? b : a;
        const TMtx& mother = left ? mb : ma;
        TMtx& dst = beta0 ? self : *t1;
        if (!beta0) dst.Size(m, n, self.fFloatPrecision);
        T* d = At<T>(dst);
        const int32_t ldd = Ld(dst);
        if (other.op == opNone)
            CopyBlock(other.p, other.ld, d, ldd, m, n);
        else if (other.op == opTran) {
            if constexpr (cplx)
                TransposeMatrixc(At<T>(mother), 0, d, 0, mother.fRows, mother.fCols, Ld(mother), ldd);
            else
                TransposeMatrix(At<T>(mother), 0, d, 0, mother.fRows, mother.fCols, Ld(mother), ldd);
        } else {
            if constexpr (cplx) AdjungateMatrixc(At<T>(mother), 0, d, 0, mother.fRows, mother.fCols, Ld(mother), ldd);
        }
        Trmm<T>(left, m, n, tri, s.alpha, d, ldd);
        if (!beta0) {
            // Self := Beta * Self + product.
            for (int32_t i = 0; i < m; ++i)
                for (int32_t j = 0; j < n; ++j) {
                    T& ci = c[int64_t(i) * ldc + j];
                    ci = s.beta * ci + d[int64_t(i) * ldd + j];
                }
        }
        return;
    }
    Gemm<T>(m, n, k, a, b, s, c, ldc);
}

const char* InnerText(TMtxOperation op1, TMtxOperation op2) {
    if (op1 == opNone) return op2 == opNone ? "Mtx1.Cols <> Mtx2.Rows" : "Mtx1.Cols <> Mtx2.Cols";
    return op2 == opNone ? "Mtx1.Rows <> Mtx2.Rows" : "Mtx1.Rows <> Mtx2.Cols";
}

}  // namespace

namespace {

// The plain product C = Alfa A B of the direct path beyond the small sizes:
// C^T = B^T A^T in the column-major call.
void PlainBlasProduct(TMtx& c, const TMtx& a, const TMtx& b, int32_t m, int32_t n, int32_t k) {
    const auto& bl = blas::Blas();
    if (c.fIsDouble)
        bl.dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, m, k, c.Alfa.Re, b.Values, b.fLeadingCols, a.Values,
                 a.fLeadingCols, 0.0, c.Values, c.fLeadingCols);
    else
        bl.sgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, m, k, float(c.Alfa.Re), b.SValues, b.fLeadingCols,
                 a.SValues, a.fLeadingCols, 0.0f, c.SValues, c.fLeadingCols);
}

// Beta = 0 and a real Alfa, +0 and -0 alike: the three values without
// their sign bits are all zero.
inline bool PlainScalars(const TMtx& c) {
    const auto bits = [](double x) { return std::bit_cast<uint64_t>(x) << 1; };
    return (bits(c.Beta.Re) | bits(c.Beta.Im) | bits(c.Alfa.Im)) == 0;
}

// The element block of a container of the precision in use.
inline const void* Block(const TRovane& r) {
    return r.fIsDouble ? static_cast<const void*>(r.SData) : static_cast<const void*>(r.SSData);
}

// The small kernels for a product whose checks have passed.
inline void SmallKernel(TMtx& c, const TMtx& a, const TMtx& b, int32_t m, int32_t n, int32_t k) {
    if (m == n && n == k) {
        // Square: one indirect call into the unrolled kernel of that size.
        if (c.fIsDouble)
            kern::Kernels<double>().GemmSquare(m, a.Values, a.fLeadingCols, b.Values, b.fLeadingCols, c.Values,
                                               c.fLeadingCols, c.Alfa.Re, 0.0);
        else
            kern::Kernels<float>().GemmSquare(m, a.SValues, a.fLeadingCols, b.SValues, b.fLeadingCols, c.SValues,
                                              c.fLeadingCols, float(c.Alfa.Re), 0.0f);
    } else if (c.fIsDouble)
        kern::Kernels<double>().GemmSmall(m, n, k, a.Values, a.fLeadingCols, 1, b.Values, b.fLeadingCols, 1,
                                          c.Values, c.fLeadingCols, kern::TArgs<double>{c.Alfa.Re, 0, 0, 0});
    else
        kern::Kernels<float>().GemmSmall(m, n, k, a.SValues, a.fLeadingCols, 1, b.SValues, b.fLeadingCols, 1,
                                         c.SValues, c.fLeadingCols, kern::TArgs<float>{float(c.Alfa.Re), 0, 0, 0});
}

// Everything of Mul(A, B) but the 4 x 4 doubles: the direct path for a real
// product into a Self of the right shape, else the general core.
__attribute__((noinline)) TMtx& MulPlain(TMtx& c, const TMtx& a, const TMtx& b) {
    const int32_t m = a.fRows, k = a.fCols, n = b.fCols;
    if (m > 0 && n > 0 && k > 0 && k == b.fRows && c.fRows == m && c.fCols == n && !c.fComplex &&
        c.fFloatPrecision == a.fFloatPrecision && c.fFloatPrecision == b.fFloatPrecision && PlainScalars(c) &&
        !a.FAutoMtxType && !b.FAutoMtxType && &a != &c && &b != &c && !SharesMemory(a, c) && !SharesMemory(b, c)) {
        if (m > kSmallProduct || n > kSmallProduct || k > kSmallProduct)
            PlainBlasProduct(c, a, b, m, n, k);
        else
            SmallKernel(c, a, b, m, n, k);
        return c;
    }
    return c.Mul(a, b, mtGeneral, mtGeneral, opNone, opNone);
}

}  // namespace

TMtx& TMtx::Mul(const TMtx& mtx1, const TMtx& mtx2) {
    // The commonest small product, 4 x 4 doubles into a Self of that shape
    // with operands of other blocks, takes a path of a few loads and one
    // indirect call; every other case goes to MulPlain with the same tests.
    if (fRows == 4 && fCols == 4 && mtx1.fRows == 4 && mtx1.fCols == 4 && mtx2.fRows == 4 && mtx2.fCols == 4 &&
        fFloatPrecision == rvDouble && mtx1.fFloatPrecision == rvDouble && mtx2.fFloatPrecision == rvDouble &&
        PlainScalars(*this) && !mtx1.FAutoMtxType && !mtx2.FAutoMtxType && Block(mtx1) != Block(*this) &&
        Block(mtx2) != Block(*this)) {
        kern::Kernels<double>().Gemm4x4(mtx1.Values, mtx1.fLeadingCols, mtx2.Values, mtx2.fLeadingCols, Values,
                                        fLeadingCols, Alfa.Re);
        return *this;
    }
    return MulPlain(*this, mtx1, mtx2);
}

TMtx& TMtx::Mul(const TMtx& mtx1, const TMtx& mtx2, TMtxOperation op1, TMtxOperation op2) {
    return Mul(mtx1, mtx2, mtGeneral, mtGeneral, op1, op2);
}

TMtx& TMtx::Mul(const TMtx& mtx1, const TMtx& mtx2, TMtxType mtxType1, TMtxType mtxType2, TMtxOperation op1,
                TMtxOperation op2) {
    // The checks guard memory, so they run whatever ConditionCheck says.
    if (&mtx1 == this || &mtx2 == this) EInvalidArgumentRaise("(Self = Mtx1) or (Self = Mtx2)");
    const int32_t m = op1 == opNone ? mtx1.fRows : mtx1.fCols;
    const int32_t k = op1 == opNone ? mtx1.fCols : mtx1.fRows;
    const int32_t k2 = op2 == opNone ? mtx2.fRows : mtx2.fCols;
    const int32_t n = op2 == opNone ? mtx2.fCols : mtx2.fRows;
    if (k != k2) EInvalidArgumentRaise(InnerText(op1, op2));
    if (mtx1.fIsDouble != mtx2.fIsDouble) EInvalidArgumentRaise("TMtx.Mul: Mtx1.IsDouble <> Mtx2.IsDouble");
    const bool cplx = mtx1.fComplex || mtx2.fComplex || Alfa.Im != 0 || Beta.Im != 0;
    // Small general products of one precision: straight to the kernel, none
    // of the paths below applies and their set-up would cost more than the
    // product itself.
    if (m <= kSmallProduct && n <= kSmallProduct && k <= kSmallProduct && m > 0 && n > 0 && k > 0 &&
        !mtx1.FAutoMtxType && !mtx2.FAutoMtxType && mtx1.fFloatPrecision == mtx2.fFloatPrecision &&
        mtx1.fComplex == cplx && !SymType(mtxType1, cplx) && !SymType(mtxType2, cplx) && mtxType1 != mtTriangle &&
        mtxType2 != mtTriangle && Beta.Re == 0 && Beta.Im == 0 && !SharesMemory(mtx1, *this) &&
        !SharesMemory(mtx2, *this)) {
        Size(m, n, mtx1.fFloatPrecision);
        ByPrecision(mtx1.fFloatPrecision, [&](auto t) {
            using T = decltype(t);
            const Operand<T> oa{At<T>(mtx1), Ld(mtx1), op1, mtGeneral, tfUpper, false};
            const Operand<T> ob{At<T>(mtx2), Ld(mtx2), op2, mtGeneral, tfUpper, false};
            Gemm<T>(m, n, k, oa, ob, Scalars<T>{FromCplx<T>(Alfa), FromReal<T>(0)}, At<T>(*this), Ld(*this));
        });
        return *this;
    }
    const bool isDouble = mtx1.fIsDouble;
    TTriangleForm form1 = mtx1.FTriangleForm, form2 = mtx2.FTriangleForm;
    bool unit1 = mtx1.FTriangleUnit, unit2 = mtx2.FTriangleUnit;
    if (mtx1.FAutoMtxType) {
        unit1 = false;
        mtxType1 = ByPrecision(mtx1.fFloatPrecision, [&](auto t) { return Detect<decltype(t)>(mtx1, form1); });
    }
    if (mtx2.FAutoMtxType) {
        unit2 = false;
        mtxType2 = ByPrecision(mtx2.fFloatPrecision, [&](auto t) { return Detect<decltype(t)>(mtx2, form2); });
    }
    auto structured = [&](TMtxType t) { return SymType(t, cplx) || t == mtTriangle; };
    if (structured(mtxType1) && !mtx1.fQuadratic) {
        if (mtxType1 == mtTriangle) EInvalidArgumentRaise("TMtx.Mul: Mtx1.Triangle and not Mtx1.Quadratic");
        EInvalidArgumentRaise(cplx ? "Mtx1.Hermitian and not Mtx1.Quadratic" : "Mtx1.Symmetric and not Mtx1.Quadratic");
    }
    if (structured(mtxType2) && !mtx2.fQuadratic) {
        if (mtxType2 == mtTriangle) EInvalidArgumentRaise("TMtx.Mul: Mtx2.Triangle and not Mtx2.Quadratic");
        EInvalidArgumentRaise(cplx ? "Mtx2.Hermitian and not Mtx2.Quadratic" : "Mtx2.Symmetric and not Mtx2.Quadratic");
    }
    const TMtxFloatPrecision prec = PrecOf(cplx, isDouble);
    const bool beta0 = Beta.Re == 0 && Beta.Im == 0;
    if (!beta0) {
        // Beta reads Self's old content, so Self must already be the result.
        if (fRows != m || fCols != n || fIsDouble != isDouble)
            EInvalidArgumentRaiseFmt("TMtx.Mul: Beta <> 0 and Self is not sized %d x %d", m, n);
        if (cplx && !fComplex) ExtendToComplex(true);
    }
    // An operand that shares memory with Self is read from a copy.
    LazyMtx c1, c2, w1, w2;
    const TMtx* a = &mtx1;
    const TMtx* b = &mtx2;
    if (SharesMemory(*a, *this)) {
        c1->Copy(*a);
        c1->FTriangleForm = a->FTriangleForm;
        a = &*c1;
    }
    if (SharesMemory(*b, *this)) {
        c2->Copy(*b);
        b = &*c2;
    }
    if (beta0) Size(m, n, prec);
    if (m == 0 || n == 0) return *this;
    if (k == 0) {
        if (beta0) SetZero(); else Scale(Beta);
        return *this;
    }
    // Real operands of a complex product are widened.
    if (cplx && !a->fComplex) {
        WidenToComplex(*a, *w1);
        a = &*w1;
    }
    if (cplx && !b->fComplex) {
        WidenToComplex(*b, *w2);
        b = &*w2;
    }
    ByPrecision(prec, [&](auto t) {
        using T = decltype(t);
        Operand<T> oa{At<T>(*a), Ld(*a), op1, mtxType1, form1, unit1};
        Operand<T> ob{At<T>(*b), Ld(*b), op2, mtxType2, form2, unit2};
        if constexpr (!IsComplex<T>) {
            // opHerm of real data is opTran.
            if (oa.op == opHerm) oa.op = opTran;
            if (ob.op == opHerm) ob.op = opTran;
        }
        MultiplyInto<T>(*this, *a, *b, oa, ob, m, n, k);
    });
    return *this;
}

// ---- elementwise names ------------------------------------------------------
TMtx& TMtx::MulElem(const TMtx& mtx) {
    TDenseRovane::Mul(mtx);
    return *this;
}
TMtx& TMtx::MulElem(const TMtx& mtx1, const TMtx& mtx2) {
    TDenseRovane::Mul(mtx1, mtx2);
    return *this;
}
TMtx& TMtx::InvElem() {
    TRovane::Inv();
    return *this;
}
TMtx& TMtx::InvElem(const TMtx& mtx) {
    TRovane::Inv(mtx);
    return *this;
}
TMtx& TMtx::SqrElem() {
    TRovane::Sqr();
    return *this;
}
TMtx& TMtx::SqrElem(const TMtx& mtx) {
    TRovane::Sqr(mtx);
    return *this;
}
TMtx& TMtx::SqrtElem() {
    TRovane::Sqrt();
    return *this;
}
TMtx& TMtx::SqrtElem(const TMtx& mtx) {
    TRovane::Sqrt(mtx);
    return *this;
}

// ---- Kronecker and tensor products -----------------------------------------
namespace {

// dst (r1*r2 x c1*c2, row stride ldd): block (i, j) = a(i, j) * b.
template <class T, class SA, class SB>
void KronCore(const SA* a, int32_t r1, int32_t c1, int32_t lda, const SB* b, int32_t r2, int32_t c2, int32_t ldb,
              T* d, int32_t ldd) {
    auto wide = [](const auto& v) -> T {
        constexpr bool sameKind = frame::IsComplex<std::decay_t<decltype(v)>> == frame::IsComplex<T>;
        if constexpr (sameKind)
            return T(v);
        else
            return T(RealOf<T>(v), RealOf<T>(0));
    };
    for (int32_t i = 0; i < r1; ++i)
        for (int32_t j = 0; j < c1; ++j) {
            const T x = wide(a[int64_t(i) * lda + j]);
            for (int32_t p = 0; p < r2; ++p) {
                T* row = d + (int64_t(i) * r2 + p) * ldd + int64_t(j) * c2;
                const SB* brow = b + int64_t(p) * ldb;
                for (int32_t q = 0; q < c2; ++q) row[q] = x * wide(brow[q]);
            }
        }
}

// Runs fn(SA*, SB*, T*) with the typed views of two sources and the result.
template <class Fn>
void ByPair(const TRovane& a, const TRovane& b, TRovane& dst, Fn&& fn) {
    ByPrecision(a.fFloatPrecision, [&](auto ta) {
        ByPrecision(b.fFloatPrecision, [&](auto tb) {
            ByPrecision(dst.fFloatPrecision, [&](auto td) {
                using SA = decltype(ta);
                using SB = decltype(tb);
                using T = decltype(td);
                constexpr bool sameWidth =
                    std::is_same_v<RealOf<SA>, RealOf<T>> && std::is_same_v<RealOf<SB>, RealOf<T>>;
                constexpr bool cplxT = frame::IsComplex<T>;
                constexpr bool realSources = !frame::IsComplex<SA> && !frame::IsComplex<SB>;
                if constexpr (sameWidth && (cplxT || realSources)) fn(At<SA>(a), At<SB>(b), At<T>(dst));
            });
        });
    });
}

}  // namespace

TMtx& TMtx::Kron(const TMtx& srcMtx1, const TMtx& srcMtx2) {
    if (srcMtx1.fIsDouble != srcMtx2.fIsDouble) EInvalidArgumentRaise("SrcMtx1.IsDouble <> SrcMtx2.IsDouble");
    if (&srcMtx1 == this || &srcMtx2 == this) EInvalidArgumentRaise("(Self = Mtx1) or (Self = Mtx2)");
    const int64_t rows = int64_t(srcMtx1.fRows) * srcMtx2.fRows, cols = int64_t(srcMtx1.fCols) * srcMtx2.fCols;
    if (rows > INT32_MAX || cols > INT32_MAX || rows * cols > INT32_MAX)
        EInvalidArgumentRaise("TMtx.Size: Rows*Cols can not be larger than 2147483647!");
    Size(int32_t(rows), int32_t(cols), PrecOf(srcMtx1.fComplex || srcMtx2.fComplex, srcMtx1.fIsDouble));
    if (fLength == 0) return *this;
    ByPair(srcMtx1, srcMtx2, *this, [&](auto* a, auto* b, auto* d) {
        KronCore(a, srcMtx1.fRows, srcMtx1.fCols, Ld(srcMtx1), b, srcMtx2.fRows, srcMtx2.fCols, Ld(srcMtx2), d,
                 Ld(*this));
    });
    return *this;
}

TMtx& TMtx::Kron(const TVec& vec1, const TVec& vec2) {
    if (vec1.fIsDouble != vec2.fIsDouble) EInvalidArgumentRaise("Vec1.IsDouble <> Vec2.IsDouble");
    const int64_t len = int64_t(vec1.fLength) * vec2.fLength;
    if (len > INT32_MAX) EInvalidArgumentRaise("TMtx.Size: Rows*Cols can not be larger than 2147483647!");
    Size(len > 0 ? 1 : 0, int32_t(len), PrecOf(vec1.fComplex || vec2.fComplex, vec1.fIsDouble));
    if (len == 0) return *this;
    ByPair(vec1, vec2, *this, [&](auto* a, auto* b, auto* d) {
        KronCore(a, 1, vec1.fLength, vec1.fLength, b, 1, vec2.fLength, vec2.fLength, d, int32_t(len));
    });
    return *this;
}

TVec& TVec::Kron(const TVec& vec1, const TVec& vec2) {
    if (&vec1 == this || &vec2 == this) EInvalidArgumentRaise("(Self = Vec1) or (Self = Vec2)");
    if (vec1.fIsDouble != vec2.fIsDouble) EInvalidArgumentRaise("Vec1.IsDouble <> Vec2.IsDouble");
    const int64_t len = int64_t(vec1.fLength) * vec2.fLength;
    if (len > INT32_MAX) EInvalidArgumentRaise("TVec.Kron: Vec1.Length*Vec2.Length > 2147483647");
    Size(int32_t(len), PrecOf(vec1.fComplex || vec2.fComplex, vec1.fIsDouble));
    if (len == 0) return *this;
    ByPair(vec1, vec2, *this, [&](auto* a, auto* b, auto* d) {
        KronCore(a, 1, vec1.fLength, vec1.fLength, b, 1, vec2.fLength, vec2.fLength, d, int32_t(len));
    });
    return *this;
}

namespace {

// Self (r x c) += alpha * x * y^T (y conjugated when conj), BLAS ger with y
// first: the column-major view of Self is Self^T = y x^T.
template <class T>
void Ger(TMtx& self, const T* x, const T* y, bool conj, T alpha) {
    const auto& bl = blas::Blas();
    const int32_t r = self.fRows, c = self.fCols, ld = Ld(self);
    T* a = At<T>(self);
    if constexpr (std::is_same_v<T, double>)
        bl.dger(CblasColMajor, c, r, alpha, y, 1, x, 1, a, ld);
    else if constexpr (std::is_same_v<T, float>)
        bl.sger(CblasColMajor, c, r, alpha, y, 1, x, 1, a, ld);
    else {
        // gerc would conjugate its second vector (x here); conj(y) goes
        // through a copy instead.
        CachedVec yc;
        const T* yy = y;
        if (conj) {
            yc->Size(c, PrecOf(true, std::is_same_v<T, TCplx>));
            T* p = At<T>(*yc);
            for (int32_t j = 0; j < c; ++j) p[j] = Conjugate(y[j]);
            yy = p;
        }
        if constexpr (std::is_same_v<T, TCplx>)
            bl.zgeru(CblasColMajor, c, r, &alpha, yy, 1, x, 1, a, ld);
        else
            bl.cgeru(CblasColMajor, c, r, &alpha, yy, 1, x, 1, a, ld);
    }
}

}  // namespace

TMtx& TMtx::AddTensorProd(const TVec& vec1, const TVec& vec2, bool conjVec2) {
    if (vec1.fIsDouble != vec2.fIsDouble) EInvalidArgumentRaise("TMtx.TensorProd: Vec1.IsDouble <> Vec2.IsDouble");
    if (vec1.fComplex != vec2.fComplex) EInvalidArgumentRaise("Vec1.Complex <> Vec2.Complex");
    if (vec1.fLength != fRows) EInvalidArgumentRaise("Vec1.Length <> FRows");
    if (vec2.fLength != fCols) EInvalidArgumentRaise("Vec1.Length <> FCols");
    if (vec1.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("Vec1.FloatPrecision <> Vec2.FloatPrecision");
    if (fLength == 0) return *this;
    frame::CachedVec x1, x2;
    const TVec* a = &vec1;
    const TVec* b = &vec2;
    if (SharesMemory(*a, *this)) {
        x1->Copy(*a);
        a = &*x1;
    }
    if (SharesMemory(*b, *this)) {
        x2->Copy(*b);
        b = &*x2;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        Ger<T>(*this, At<T>(*a), At<T>(*b), conjVec2, FromCplx<T>(Alfa));
    });
    return *this;
}

TMtx& TMtx::TensorProd(const TVec& vec1, const TVec& vec2) {
    if (vec1.fIsDouble != vec2.fIsDouble) EInvalidArgumentRaise("TMtx.TensorProd: Vec1.IsDouble <> Vec2.IsDouble");
    if (vec1.fComplex != vec2.fComplex) EInvalidArgumentRaise("Vec1.Complex <> Vec2.Complex");
    if (SharesMemory(vec1, *this) || SharesMemory(vec2, *this)) {
        CachedMtx t;
        t->Alfa = Alfa;
        t->TensorProd(vec1, vec2);
        Copy(*t);
        return *this;
    }
    Size(vec1.fLength, vec2.fLength, vec1.fFloatPrecision);
    SetZero();
    return AddTensorProd(vec1, vec2, false);
}

// ---- matrix times vector ----------------------------------------------------
namespace {

// y := alpha * op(A) x + beta * y (vecLeft false) or y^T := alpha * x^T
// op(A) + beta * y^T (vecLeft true), A r x c row-major.
template <class T>
void MatVec(const TMtx& ma, TMtxType type, TMtxOperation op, bool vecLeft, const T* x, T* y, T alpha, T beta) {
    constexpr bool cplx = IsComplex<T>;
    using F = RealOf<T>;
    const int32_t r = ma.fRows, c = ma.fCols, ld = Ld(ma);
    const T* a = At<T>(ma);
    if (!cplx && op == opHerm) op = opTran;
    // The column-major view of A is A^T. vecLeft with op = None needs A^T x,
    // which is that view as it is.
    TMtxOperation eff;  // the letter on the column-major view
    if (vecLeft)
        eff = op;  // x^T op(A) = (op(A)^T x)^T, and op(A)^T = op'(A^T)
    else
        eff = op == opNone ? opTran : opNone;  // op = opHerm is refused by the caller
    const int32_t ylen = (eff == opNone) ? c : r;  // the view is c x r
    const int32_t xlen = (eff == opNone) ? r : c;
    const auto& bl = blas::Blas();
    if (SymType(type, cplx) && r == c) {
        const CBLAS_UPLO uplo = FlippedUplo(ma.FTriangleForm);
        // The routine works on the view, S^T: S itself for a real symmetric
        // S, conj(S) for a Hermitian one. Where the wanted matrix is S
        // (op(S) x with op None, x^T op(S) with op T), S w is formed as
        // conj(conj(S) conj(w)).
        bool conjTrick = false;
        if constexpr (cplx) conjTrick = vecLeft ? op == opTran : op == opNone;
        if (!conjTrick) {
            if constexpr (std::is_same_v<T, double>)
                bl.dsymv(CblasColMajor, uplo, r, alpha, a, ld, x, 1, beta, y, 1);
            else if constexpr (std::is_same_v<T, float>)
                bl.ssymv(CblasColMajor, uplo, r, alpha, a, ld, x, 1, beta, y, 1);
            else if constexpr (std::is_same_v<T, TCplx>)
                bl.zhemv(CblasColMajor, uplo, r, &alpha, a, ld, x, 1, &beta, y, 1);
            else
                bl.chemv(CblasColMajor, uplo, r, &alpha, a, ld, x, 1, &beta, y, 1);
            return;
        }
        if constexpr (cplx) {
            // S w = conj(conj(S) conj(w)).
            CachedVec xc;
            xc->Size(r, PrecOf(true, std::is_same_v<F, double>));
            T* xp = At<T>(*xc);
            for (int32_t i = 0; i < r; ++i) xp[i] = Conjugate(x[i]);
            for (int32_t i = 0; i < r; ++i) y[i] = Conjugate(y[i]);
            const T ca = Conjugate(alpha), cb = Conjugate(beta);
            if constexpr (std::is_same_v<T, TCplx>)
                bl.zhemv(CblasColMajor, uplo, r, &ca, a, ld, xp, 1, &cb, y, 1);
            else
                bl.chemv(CblasColMajor, uplo, r, &ca, a, ld, xp, 1, &cb, y, 1);
            for (int32_t i = 0; i < r; ++i) y[i] = Conjugate(y[i]);
        }
        return;
    }
    if (type == mtTriangle && r == c) {
        // In place on a copy of x, then y := alpha * t + beta * y.
        CachedVec tv;
        tv->Size(r, PrecOf(cplx, std::is_same_v<F, double>));
        T* t = At<T>(*tv);
        std::copy(x, x + r, t);
        const CBLAS_UPLO uplo = FlippedUplo(ma.FTriangleForm);
        const CBLAS_DIAG diag = ma.FTriangleUnit ? CblasUnit : CblasNonUnit;
        const CBLAS_TRANSPOSE tr = Letter(eff);
        if constexpr (std::is_same_v<T, double>)
            bl.dtrmv(CblasColMajor, uplo, tr, diag, r, a, ld, t, 1);
        else if constexpr (std::is_same_v<T, float>)
            bl.strmv(CblasColMajor, uplo, tr, diag, r, a, ld, t, 1);
        else if constexpr (std::is_same_v<T, TCplx>)
            bl.ztrmv(CblasColMajor, uplo, tr, diag, r, a, ld, t, 1);
        else
            bl.ctrmv(CblasColMajor, uplo, tr, diag, r, a, ld, t, 1);
        const bool beta0 = beta == FromReal<T>(0);
        for (int32_t i = 0; i < r; ++i) y[i] = beta0 ? alpha * t[i] : alpha * t[i] + beta * y[i];
        return;
    }
    if (r <= kSmallProduct && c <= kSmallProduct) {
        // y (ylen x 1) = W x with W(i, p) on the view: eff None: W = A^T,
        // W(i, p) = a[p * ld + i]; eff T/H: W = A, W(i, p) = a[i * ld + p].
        const kern::idx ars = eff == opNone ? 1 : ld, acs = eff == opNone ? ld : 1;
        const auto& kt = kern::Kernels<F>();
        if constexpr (cplx) {
            const kern::TArgs<F> args{alpha.Re, alpha.Im, beta.Re, beta.Im};
            kt.GemmSmallc(ylen, 1, xlen, &a->Re, ars, acs, eff == opHerm, &x->Re, 1, 1, false, &y->Re, 1, args);
        } else {
            const kern::TArgs<F> args{alpha, 0, beta, 0};
            kt.GemmSmall(ylen, 1, xlen, a, ars, acs, x, 1, 1, y, 1, args);
        }
        return;
    }
    const CBLAS_TRANSPOSE tr = Letter(eff);
    if constexpr (std::is_same_v<T, double>)
        bl.dgemv(CblasColMajor, tr, c, r, alpha, a, ld, x, 1, beta, y, 1);
    else if constexpr (std::is_same_v<T, float>)
        bl.sgemv(CblasColMajor, tr, c, r, alpha, a, ld, x, 1, beta, y, 1);
    else if constexpr (std::is_same_v<T, TCplx>)
        bl.zgemv(CblasColMajor, tr, c, r, &alpha, a, ld, x, 1, &beta, y, 1);
    else
        bl.cgemv(CblasColMajor, tr, c, r, &alpha, a, ld, x, 1, &beta, y, 1);
}

// The shared body of the vector products.
void VecProduct(TVec& self, const TMtx& mtx, const TVec& vec, TMtxType type, TMtxOperation op, bool vecLeft,
                bool accumulate) {
    if (&vec == &self) EInvalidArgumentRaise("Vec = Self");
    if (!vecLeft && op == opHerm && mtx.fComplex) EInvalidArgumentRaise("TensorProd: opHerm not supported");
    if (vec.fIsDouble != mtx.fIsDouble) EInvalidArgumentRaise("Vec.FloatPrecision <> Mtx.FloatPrecision");
    // Length of the vector operand against the dimension it meets.
    const bool meetsRows = vecLeft ? op == opNone : op != opNone;
    if (meetsRows && vec.fLength != mtx.fRows) EInvalidArgumentRaise("Length <> Mtx.Rows");
    if (!meetsRows && vec.fLength != mtx.fCols) EInvalidArgumentRaise("Length <> Mtx.Cols");
    if ((type == mtTriangle || SymType(type, mtx.fComplex || vec.fComplex)) && !mtx.fQuadratic)
        EInvalidArgumentRaise(mtx.fComplex ? "Mtx1.Hermitian and not Mtx1.Quadratic"
                                           : "Mtx1.Symmetric and not Mtx1.Quadratic");
    const int32_t len = meetsRows ? mtx.fCols : mtx.fRows;
    const bool cplx = mtx.fComplex || vec.fComplex || self.Alfa.Im != 0 || (accumulate && self.fComplex);
    const TMtxFloatPrecision prec = PrecOf(cplx, mtx.fIsDouble);
    if (accumulate) {
        if (self.fLength != len || self.fIsDouble != mtx.fIsDouble)
            EInvalidArgumentRaise(meetsRows ? "Length <> Mtx.Cols" : "Length <> Mtx.Rows");
        if (cplx && !self.fComplex) self.ExtendToComplex(true);
    } else {
        self.Size(len, prec);
    }
    if (len == 0) return;
    LazyMtx wm, cm;
    LazyVec wv;
    const TMtx* a = &mtx;
    const TVec* x = &vec;
    if (SharesMemory(*a, self)) {
        cm->Copy(*a);
        cm->FTriangleForm = a->FTriangleForm;
        cm->FTriangleUnit = a->FTriangleUnit;
        a = &*cm;
    }
    if (cplx && !a->fComplex) {
        WidenToComplex(*a, *wm);
        a = &*wm;
    }
    if ((cplx && !x->fComplex) || SharesMemory(*x, self)) {
        wv->Size(x->fLength, prec);
        if (x->fComplex || !cplx)
            wv->Copy(*x);
        else
            wv->ExtendToComplex(*x, true);
        x = &*wv;
    }
    if (x->fLength == 0) {
        if (!accumulate) self.SetZero();
        return;
    }
    ByPrecision(prec, [&](auto t) {
        using T = decltype(t);
        MatVec<T>(*a, type, op, vecLeft, At<T>(*x), At<T>(self), FromCplx<T>(self.Alfa),
                  accumulate ? FromReal<T>(1) : FromReal<T>(0));
    });
}

}  // namespace

TVec& TVec::TensorProd(const TVec& vec, const TMtx& mtx, TMtxType mtxType, TMtxOperation operation) {
    VecProduct(*this, mtx, vec, mtxType, operation, true, false);
    return *this;
}
TVec& TVec::TensorProd(const TMtx& mtx, const TVec& vec, TMtxType mtxType, TMtxOperation operation) {
    VecProduct(*this, mtx, vec, mtxType, operation, false, false);
    return *this;
}
TVec& TVec::AddTensorProd(const TMtx& mtx, const TVec& vec, TMtxType mtxType, TMtxOperation operation) {
    VecProduct(*this, mtx, vec, mtxType, operation, false, true);
    return *this;
}

// ---- column and row folds ---------------------------------------------------
namespace {

template <class T>
void FoldCols(const TMtx& m, T* d) {
    const T* a = At<T>(m);
    std::fill(d, d + m.fCols, FromReal<T>(0));
    for (int32_t i = 0; i < m.fRows; ++i) {
        const T* row = a + int64_t(i) * m.fLeadingCols;
        for (int32_t j = 0; j < m.fCols; ++j) d[j] = d[j] + row[j];
    }
}
template <class T>
void FoldRows(const TMtx& m, T* d) {
    const T* a = At<T>(m);
    for (int32_t i = 0; i < m.fRows; ++i) {
        const T* row = a + int64_t(i) * m.fLeadingCols;
        T s = FromReal<T>(0);
        for (int32_t j = 0; j < m.fCols; ++j) s = s + row[j];
        d[i] = s;
    }
}

void Fold(const TMtx& m, TVec& dst, bool cols, bool mean) {
    if (SharesMemory(m, dst)) EInvalidArgumentRaise("Dst = Self");
    dst.Size(cols ? m.fCols : m.fRows, m.fFloatPrecision);
    if (dst.fLength == 0) return;
    ByPrecision(m.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        if (cols)
            FoldCols<T>(m, At<T>(dst));
        else
            FoldRows<T>(m, At<T>(dst));
    });
    if (mean) dst.Scale(1.0 / double(cols ? m.fRows : m.fCols));
}

}  // namespace

void TMtx::SumCols(TVec& dst) const { Fold(*this, dst, true, false); }
void TMtx::SumRows(TVec& dst) const { Fold(*this, dst, false, false); }
void TMtx::MeanCols(TVec& dst) const { Fold(*this, dst, true, true); }
void TMtx::MeanRows(TVec& dst) const { Fold(*this, dst, false, true); }

}  // namespace rovane
