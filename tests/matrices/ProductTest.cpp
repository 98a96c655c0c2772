// Mul in every matrix type, operation and precision against a triple loop,
// on whole matrices and on views; the vector products; Kron; the texts.
#include "MatrixTestUtil.h"

#include <cmath>

#include "../containers/ContainerTestUtil.h"

using namespace mtxtest;
using rovane::test::ExpectMessage;

namespace {

const TMtxFloatPrecision kPrecisions[] = {rvSingle, rvDouble, rvSingleComplex, rvDoubleComplex};
const TMtxOperation kOps[] = {opNone, opTran, opHerm};

// One structured operand: its type and the settings its path reads.
struct Kind {
    TMtxType type;
    TTriangleForm form;
    bool unit;
    const char* name;
};
const Kind kKinds[] = {
    {mtGeneral, tfUpper, false, "general"},         {mtSymmetric, tfUpper, false, "symmetric upper"},
    {mtSymmPosDef, tfLower, false, "symmetric lower"}, {mtHermitian, tfUpper, false, "hermitian upper"},
    {mtHermPosDef, tfLower, false, "hermitian lower"}, {mtTriangle, tfUpper, false, "triangle upper"},
    {mtTriangle, tfLower, false, "triangle lower"},  {mtTriangle, tfUpper, true, "triangle upper unit"},
    {mtTriangle, tfLower, true, "triangle lower unit"}, {mtBandGeneral, tfUpper, false, "band general"},
};

bool Structured(TMtxType t) { return t != mtGeneral && t != mtBandGeneral; }

// Runs one product case: A (kind ka, op1) times B (kind kb, op2), m x k by
// k x n after the operations, with the given Alfa and Beta; views when
// asked. Returns the failure count.
int RunCase(TMtxFloatPrecision p, int m, int n, int k, const Kind& ka, const Kind& kb, TMtxOperation op1,
            TMtxOperation op2, TCplx alfa, TCplx beta, bool views, Dyadic& g) {
    const std::string what = std::string(PrecName(p)) + " " + ka.name + " op" + std::to_string(op1) + " x " +
                             kb.name + " op" + std::to_string(op2) + " m" + std::to_string(m) + " n" +
                             std::to_string(n) + " k" + std::to_string(k) + (views ? " views" : "") +
                             (beta.Re != 0 ? " beta" : "");
    const int ar = op1 == opNone ? m : k, ac = op1 == opNone ? k : m;
    const int br = op2 == opNone ? k : n, bc = op2 == opNone ? n : k;
    TMtx bigA, bigB, bigC, a, b, c;
    TMtx* pa = &a;
    TMtx* pb = &b;
    TMtx* pc = &c;
    if (views) {
        // Row blocks of larger matrices, one row in, so that the range does
        // not start at the block's first element.
        Random(bigA, ar + 2, ac, p, g);
        Random(bigB, br + 3, bc, p, g);
        Random(bigC, m + 1, n, p, g);
        a.SetSubRange(bigA, ac, ar, ac);
        b.SetSubRange(bigB, 2 * bc, br, bc);
        c.SetSubRange(bigC, n, m, n);
    } else {
        Random(a, ar, ac, p, g);
        Random(b, br, bc, p, g);
        Random(c, m, n, p, g);
    }
    pa->SetTriangleForm(ka.form);
    pa->SetTriangleUnit(ka.unit);
    pb->SetTriangleForm(kb.form);
    pb->SetTriangleUnit(kb.unit);
    // The triangle a structured path must not read holds large values.
    auto spoil = [&](TMtx& x, const Kind& kd) {
        if (!Structured(kd.type)) return;
        for (int i = 0; i < x.Rows(); ++i)
            for (int j = 0; j < x.Cols(); ++j) {
                const bool stored = kd.form == tfUpper ? j >= i : j <= i;
                if (!stored) Set(x, i, j, Z(1000 + i, -500 - j));
            }
        if (IsCplx(p) && (kd.type == mtHermitian || kd.type == mtHermPosDef))
            for (int i = 0; i < x.Rows(); ++i) Set(x, i, i, Z(Get(x, i, i).real(), 777));
    };
    // Symmetric types on complex data and Hermitian ones on real data take
    // the general path and read everything: leave those whole.
    auto takesStructured = [&](const Kind& kd) {
        if (kd.type == mtTriangle) return true;
        if (IsCplx(p)) return kd.type == mtHermitian || kd.type == mtHermPosDef;
        return kd.type == mtSymmetric || kd.type == mtSymmPosDef;
    };
    if (takesStructured(ka)) spoil(*pa, ka);
    if (takesStructured(kb)) spoil(*pb, kb);
    const Ref old = Of(*pc);
    const bool cplx = IsCplx(p);
    Ref ea = Effective(*pa, ka.type, cplx), eb = Effective(*pb, kb.type, cplx);
    Ref want = Product(Apply(ea, cplx ? op1 : (op1 == opHerm ? opTran : op1)),
                       Apply(eb, cplx ? op2 : (op2 == opHerm ? opTran : op2)));
    const Z za(alfa.Re, alfa.Im), zb(beta.Re, beta.Im);
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < n; ++j) want.at(i, j) = za * want.at(i, j) + (beta.Re != 0 ? zb * old.at(i, j) : Z(0));
    pc->Alfa = alfa;
    pc->Beta = beta;
    pc->Mul(*pa, *pb, ka.type, kb.type, op1, op2);
    return ExpectEqualRef(*pc, want, what);
}

}  // namespace

// Every matrix type on either side, every pair of operations, every
// precision; a size under the small-product limit and one above it.
TEST(MatrixMul, EveryTypeOperationAndPrecisionAgainstLoop) {
    Dyadic g(7);
    int failures = 0;
    struct Dims {
        int m, n, k;
    };
    for (TMtxFloatPrecision p : kPrecisions)
        for (const Dims d : {Dims{3, 5, 4}, Dims{13, 11, 17}})
            for (const Kind& kind : kKinds)
                for (int side = 0; side < 2; ++side) {
                    if (side == 1 && kind.type == mtGeneral) continue;
                    const Kind& ka = side == 0 ? kind : kKinds[0];
                    const Kind& kb = side == 0 ? kKinds[0] : kind;
                    // A structured operand is square.
                    int m = d.m, n = d.n;
                    if (Structured(ka.type)) m = d.k;
                    if (Structured(kb.type)) n = d.k;
                    for (TMtxOperation op1 : kOps)
                        for (TMtxOperation op2 : kOps)
                            for (int beta = 0; beta < 2; ++beta) {
                                failures += RunCase(p, m, n, d.k, ka, kb, op1, op2, TCplx(0.5, 0),
                                                    beta ? TCplx(-0.25, 0) : TCplx(0, 0), false, g);
                                if (failures > 3) return;
                            }
                }
}

// The same on views: operands and Self are row blocks of larger matrices.
TEST(MatrixMul, ViewsAgainstLoop) {
    Dyadic g(11);
    int failures = 0;
    for (TMtxFloatPrecision p : kPrecisions)
        for (int size : {4, 12})
            for (const Kind& kind : kKinds) {
                const int m = size, n = size + 1, k = size;
                const Kind& ka = kind;
                for (TMtxOperation op1 : kOps)
                    for (TMtxOperation op2 : kOps) {
                        failures += RunCase(p, m, Structured(ka.type) ? m : n, k, ka, kKinds[0], op1, op2,
                                            TCplx(1, 0), TCplx(0.5, 0), true, g);
                        if (failures > 3) return;
                    }
            }
}

// Complex Alfa and Beta on complex data.
TEST(MatrixMul, ComplexScalars) {
    Dyadic g(5);
    for (TMtxFloatPrecision p : {rvSingleComplex, rvDoubleComplex})
        for (int size : {3, 10})
            for (const Kind& kind : {kKinds[0], kKinds[3], kKinds[5]})
                EXPECT_EQ(RunCase(p, size, size, size, kind, kKinds[0], opNone, opHerm, TCplx(0.5, -0.25),
                                  TCplx(0.25, 0.5), false, g),
                          0);
}

// A real operand with a complex one goes through a widened temporary; a
// complex Alfa makes a real product complex.
TEST(MatrixMul, MixedRealAndComplex) {
    Dyadic g(3);
    for (bool isDouble : {true, false})
        for (int size : {4, 9}) {
            TMtx a, b, c;
            Random(a, size, size + 1, isDouble ? rvDouble : rvSingle, g);
            Random(b, size + 1, size, isDouble ? rvDoubleComplex : rvSingleComplex, g);
            c.Mul(a, b);
            EXPECT_TRUE(c.Complex());
            ExpectEqualRef(c, Product(Of(a), Of(b)), "real x complex");
            c.Mul(b, a, opHerm, opTran);
            ExpectEqualRef(c, Product(Apply(Of(b), opHerm), Apply(Of(a), opTran)), "complex' x real'");
            TMtx r1, r2;
            Random(r1, size, size, isDouble ? rvDouble : rvSingle, g);
            Random(r2, size, size, isDouble ? rvDouble : rvSingle, g);
            c.Size(0, 0, isDouble ? rvDouble : rvSingle);
            c.Alfa = TCplx(0, 1);
            c.Mul(r1, r2);
            EXPECT_TRUE(c.Complex());
            Ref want = Product(Of(r1), Of(r2));
            for (auto& z : want.v) z *= Z(0, 1);
            ExpectEqualRef(c, want, "imaginary Alfa");
        }
}

TEST(MatrixMul, BetaAccumulatesAndAutoType) {
    TMtx a, b, c;
    SetM(a, 2, 2, false, {1, 2, 3, 4});
    SetM(b, 2, 2, false, {1, 0, 0, 1});
    SetM(c, 2, 2, false, {10, 20, 30, 40});
    c.Beta = TCplx(1, 0);
    c.Mul(a, b);
    EXPECT_EQ(c.Values[0], 11);
    EXPECT_EQ(c.Values[3], 44);
    // AutoMtxType: an upper triangle detected as such reads only that triangle,
    // which here is the whole data, so the result equals the general product.
    Dyadic g(9);
    for (int size : {3, 12}) {
        TMtx t, x, y, z;
        Random(t, size, size, rvDouble, g);
        for (int i = 0; i < size; ++i)
            for (int j = 0; j < i; ++j) Set(t, i, j, 0);
        Random(x, size, 5, rvDouble, g);
        t.SetAutoMtxType(true);
        y.Mul(t, x);
        ExpectEqualRef(y, Product(Of(t), Of(x)), "auto triangle");
        TMtx s;
        Random(s, size, size, rvDouble, g);
        for (int i = 0; i < size; ++i)
            for (int j = 0; j < i; ++j) Set(s, i, j, Get(s, j, i));
        s.SetAutoMtxType(true);
        z.Mul(s, x, mtGeneral, mtGeneral);
        ExpectEqualRef(z, Product(Of(s), Of(x)), "auto symmetric");
    }
}

TEST(MatrixMul, Texts) {
    TMtx a, b, c, sq;
    a.Size(2, 3);
    b.Size(4, 5);
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b); }, "Mtx1.Cols <> Mtx2.Rows");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, opNone, opTran); }, "Mtx1.Cols <> Mtx2.Cols");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, opTran, opNone); }, "Mtx1.Rows <> Mtx2.Rows");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, opTran, opTran); }, "Mtx1.Rows <> Mtx2.Cols");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Mul(a, a, opNone, opTran); }, "(Self = Mtx1) or (Self = Mtx2)");
    b.Size(3, 3);
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, mtSymmetric, mtGeneral); },
                                          "Mtx1.Symmetric and not Mtx1.Quadratic");
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(b, a, mtGeneral, mtSymmetric, opNone, opTran); },
                                          "Mtx2.Symmetric and not Mtx2.Quadratic");
    a.Size(2, 3, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, mtHermitian, mtGeneral); },
                                          "Mtx1.Hermitian and not Mtx1.Quadratic");
    // A refused product leaves Self as it was and usable.
    SetM(c, 1, 1, false, {5});
    b.Size(4, 4);
    ExpectMessage<ERovaneInvalidArgument>([&] { c.Mul(a, b, opNone, opTran); }, "Mtx1.Cols <> Mtx2.Cols");
    EXPECT_EQ(c.Rows(), 1);
    EXPECT_EQ(c.Values[0], 5);
}

// Self sharing memory with an operand (a view of it) reads the operand whole.
TEST(MatrixMul, SelfOverlappingAnOperand) {
    Dyadic g(21);
    TMtx big, a, view;
    Random(big, 6, 6, rvDouble, g);
    Random(a, 6, 6, rvDouble, g);
    const Ref want = Product(Of(a), Of(big));
    view.SetSubRange(big, 0, 6, 6);
    view.Mul(a, big);
    ExpectEqualRef(view, want, "Self a view of Mtx2");
    // 4 x 4 (the shortest path): rows 0-3 of an 8 x 4 block times rows 4-7
    // into rows 2-5, which overlap both operands, then into a block apart.
    TMtx blk, x, y, z, w;
    Random(blk, 8, 4, rvDouble, g);
    x.SetSubRange(blk, 0, 4, 4);
    y.SetSubRange(blk, 16, 4, 4);
    const Ref want4 = Product(Of(x), Of(y));
    w.Size(4, 4);
    w.Mul(x, y);
    ExpectEqualRef(w, want4, "4 x 4 into another block");
    z.SetSubRange(blk, 8, 4, 4);
    z.Mul(x, y);
    ExpectEqualRef(z, want4, "4 x 4 into a view over both operands");
}

// ---- vector products ---------------------------------------------------------
TEST(MatrixVectorProducts, EveryTypeOperationAndPrecision) {
    Dyadic g(13);
    int failures = 0;
    for (TMtxFloatPrecision p : kPrecisions)
        for (int n : {5, 14})
            for (const Kind& kind : kKinds) {
                const bool cplx = IsCplx(p);
                TMtx a;
                const int rows = n, cols = Structured(kind.type) ? n : n + 3;
                Random(a, rows, cols, p, g);
                a.SetTriangleForm(kind.form);
                a.SetTriangleUnit(kind.unit);
                if (kind.type == mtTriangle || (cplx ? kind.type == mtHermitian || kind.type == mtHermPosDef
                                                     : kind.type == mtSymmetric || kind.type == mtSymmPosDef))
                    for (int i = 0; i < rows; ++i)
                        for (int j = 0; j < cols; ++j)
                            if (!(kind.form == tfUpper ? j >= i : j <= i)) Set(a, i, j, Z(900, 33));
                const Ref ea = Effective(a, kind.type, cplx);
                for (TMtxOperation op : kOps)
                    for (int form = 0; form < 3; ++form) {
                        // form 0: y = x op(A); 1: y = op(A) x; 2: y += op(A) x.
                        if (form > 0 && op == opHerm && cplx) continue;
                        const TMtxOperation rop = (!cplx && op == opHerm) ? opTran : op;
                        const Ref w = Apply(ea, rop);
                        TVec x, y;
                        const int xlen = form == 0 ? w.r : w.c;
                        RandomV(x, xlen, p, g);
                        RandomV(y, form == 0 ? w.c : w.r, p, g);
                        std::vector<Z> old(y.Length());
                        for (int i = 0; i < y.Length(); ++i) old[i] = GetV(y, i);
                        y.Alfa = TCplx(0.5, 0);
                        if (form == 0)
                            y.TensorProd(x, a, kind.type, op);
                        else if (form == 1)
                            y.TensorProd(a, x, kind.type, op);
                        else
                            y.AddTensorProd(a, x, kind.type, op);
                        const int ylen = form == 0 ? w.c : w.r;
                        if (y.Length() != ylen) {
                            ADD_FAILURE() << "length " << y.Length() << " want " << ylen;
                            ++failures;
                            continue;
                        }
                        for (int i = 0; i < ylen; ++i) {
                            Z s = 0;
                            for (int q = 0; q < xlen; ++q) s += form == 0 ? GetV(x, q) * w.at(q, i) : w.at(i, q) * GetV(x, q);
                            s *= Z(0.5, 0);
                            if (form == 2) s += old[i];
                            if (GetV(y, i) != s) {
                                ADD_FAILURE() << PrecName(p) << " " << kind.name << " op" << op << " form" << form
                                              << " n" << n << " at " << i;
                                ++failures;
                                break;
                            }
                        }
                        if (failures > 3) return;
                    }
            }
}

TEST(MatrixVectorProducts, Texts) {
    TMtx a;
    TVec x, y;
    a.Size(3, 4, true);
    x.Size(4, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { y.TensorProd(a, x, mtGeneral, opHerm); },
                                          "TensorProd: opHerm not supported");
    ExpectMessage<ERovaneInvalidArgument>([&] { y.TensorProd(x, a, mtGeneral, opNone); }, "Length <> Mtx.Rows");
    ExpectMessage<ERovaneInvalidArgument>([&] { y.TensorProd(a, y, mtGeneral, opNone); }, "Vec = Self");
    x.Size(3, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { y.TensorProd(a, x, mtGeneral, opNone); }, "Length <> Mtx.Cols");
}

TEST(MatrixOuterProducts, TensorAndAddTensorProd) {
    Dyadic g(17);
    for (TMtxFloatPrecision p : kPrecisions)
        for (bool conj : {false, true}) {
            TVec u, v;
            RandomV(u, 7, p, g);
            RandomV(v, 5, p, g);
            TMtx m, old;
            m.TensorProd(u, v);
            Ref want(7, 5);
            for (int i = 0; i < 7; ++i)
                for (int j = 0; j < 5; ++j) want.at(i, j) = GetV(u, i) * GetV(v, j);
            ExpectEqualRef(m, want, "TensorProd");
            old.Copy(m);
            m.Alfa = TCplx(-0.5, 0);
            m.AddTensorProd(u, v, conj);
            for (int i = 0; i < 7; ++i)
                for (int j = 0; j < 5; ++j)
                    want.at(i, j) += Z(-0.5, 0) * GetV(u, i) * (conj ? std::conj(GetV(v, j)) : GetV(v, j));
            ExpectEqualRef(m, want, conj ? "AddTensorProd conj" : "AddTensorProd");
        }
    TMtx m;
    TVec u, v;
    m.Size(2, 2);
    u.Size(3);
    v.Size(2);
    ExpectMessage<ERovaneInvalidArgument>([&] { m.AddTensorProd(u, v); }, "Vec1.Length <> FRows");
    v.Size(2, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { m.TensorProd(u, v); }, "Vec1.Complex <> Vec2.Complex");
}

TEST(MatrixKron, BlocksAndTexts) {
    Dyadic g(19);
    for (TMtxFloatPrecision p1 : kPrecisions)
        for (TMtxFloatPrecision p2 : kPrecisions) {
            if ((p1 == rvDouble || p1 == rvDoubleComplex) != (p2 == rvDouble || p2 == rvDoubleComplex)) continue;
            TMtx a, b, k;
            Random(a, 2, 3, p1, g);
            Random(b, 3, 2, p2, g);
            k.Kron(a, b);
            Ref want(6, 6);
            for (int i = 0; i < 6; ++i)
                for (int j = 0; j < 6; ++j) want.at(i, j) = Get(a, i / 3, j / 2) * Get(b, i % 3, j % 2);
            ExpectEqualRef(k, want, "Kron");
            EXPECT_EQ(k.Complex(), IsCplx(p1) || IsCplx(p2));
        }
    TMtx a, b, k;
    a.Size(1, 1, false, true);
    b.Size(1, 1, false, false);
    ExpectMessage<ERovaneInvalidArgument>([&] { k.Kron(a, b); }, "SrcMtx1.IsDouble <> SrcMtx2.IsDouble");
    TVec u, v, w;
    u.SetIt({1, 2});
    v.SetIt({3, 4, 5});
    w.Kron(u, v);
    rovane::test::ExpectRun(rovane::test::Reals(w), {3, 4, 5, 6, 8, 10});
    ExpectMessage<ERovaneInvalidArgument>([&] { w.Kron(w, v); }, "(Self = Vec1) or (Self = Vec2)");
}

// The elementwise names and the folds.
TEST(MatrixElementwise, MulElemAndFolds) {
    TMtx a, b, c;
    SetM(a, 2, 3, false, {1, 2, 3, 4, 5, 6});
    SetM(b, 2, 3, false, {2, 2, 2, 0.5, 0.5, 0.5});
    c.MulElem(a, b);
    EXPECT_EQ(c.Rows(), 2);
    rovane::test::ExpectRun(rovane::test::Reals(c), {2, 4, 6, 2, 2.5, 3});
    c.SqrElem();
    rovane::test::ExpectRun(rovane::test::Reals(c), {4, 16, 36, 4, 6.25, 9});
    TVec s;
    a.SumCols(s);
    rovane::test::ExpectRun(rovane::test::Reals(s), {5, 7, 9});
    a.SumRows(s);
    rovane::test::ExpectRun(rovane::test::Reals(s), {6, 15});
    a.MeanCols(s);
    rovane::test::ExpectRun(rovane::test::Reals(s), {2.5, 3.5, 4.5});
    a.MeanRows(s);
    rovane::test::ExpectRun(rovane::test::Reals(s), {2, 5});
    TMtx z;
    SetM(z, 2, 1, true, {1, 2, 3, 4});
    z.SumCols(s);
    rovane::test::ExpectRun(rovane::test::Reals(s), {4, 6});
}

// The small-product kernels of every instruction set the processor runs:
// every size up to the limit, square and not, transposed operands, Beta.
TEST(MatrixMul, SmallProductsOnEveryTable) {
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512}) {
        if (!SetPrimitiveIsa(isa)) continue;
        Dyadic g(41);
        int failures = 0;
        for (TMtxFloatPrecision p : kPrecisions)
            for (int m = 1; m <= 8 && failures == 0; ++m)
                for (int n = 1; n <= 9 && failures == 0; n += 2) {
                    failures += RunCase(p, m, n, m, kKinds[0], kKinds[0], opNone, opNone, TCplx(1, 0), TCplx(0, 0),
                                        false, g);
                    failures += RunCase(p, m, m, m, kKinds[0], kKinds[0], opNone, opNone, TCplx(0.5, 0),
                                        TCplx(0.25, 0), false, g);
                    failures += RunCase(p, m, n, 3, kKinds[0], kKinds[0], opTran, opHerm, TCplx(2, 0), TCplx(0, 0),
                                        false, g);
                }
        // The two-argument form into a Self already of the result's shape
        // (its direct path), Alfa applied.
        for (TMtxFloatPrecision p : {rvSingle, rvDouble})
            for (int m : {1, 2, 3, 4, 5, 6, 7, 8, 12, 20}) {
                // Up to 8 the kernel, beyond it BLAS called directly.
                const int k = m <= 8 ? 9 - m : m + 3;
                TMtx a, b, c;
                Random(a, m, k, p, g);
                Random(b, k, m, p, g);
                Random(c, m, m, p, g);
                c.Alfa = TCplx(-2, 0);
                c.Mul(a, b);
                Ref want = Product(Of(a), Of(b));
                for (auto& z : want.v) z *= -2;
                failures += ExpectEqualRef(c, want, "Mul(a, b) direct");
            }
        // Square operands take the unrolled kernel of their side directly;
        // a NaN in Self must not reach the result (Beta = 0 reads nothing).
        for (TMtxFloatPrecision p : {rvSingle, rvDouble})
            for (int m = 1; m <= 9; ++m)
                for (double alfa : {1.0, -0.5}) {
                    TMtx a, b, c;
                    Random(a, m, m, p, g);
                    Random(b, m, m, p, g);
                    c.Size(m, m, p);
                    c.SetVal(std::nan(""));
                    c.Alfa = TCplx(alfa, 0);
                    c.Mul(a, b);
                    Ref want = Product(Of(a), Of(b));
                    for (auto& z : want.v) z *= alfa;
                    failures += ExpectEqualRef(c, want, "Mul(a, b) square " + std::to_string(m));
                }
        EXPECT_EQ(failures, 0) << PrimitiveIsaName(isa);
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}
