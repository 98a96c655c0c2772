// Matrix products: storage order, Alfa and Beta, operations and matrix types.
#include <rovane/Rovane.h>

#include <cstdio>

using namespace rovane;

int main() {
    // Element (i, j) of a matrix lies at i * LeadingCols + j: row by row.
    TMtx a, b, c;
    a.Size(2, 3);
    for (int i = 0; i < 6; ++i) a.Values[i] = i + 1;  // rows (1 2 3) and (4 5 6)
    b.Eye(3, 2);
    c.Mul(a, b);  // 2 x 2: the first two columns of a
    if (c.Values[0] != 1 || c.Values[1] != 2 || c.Values[3] != 5) return 1;

    // Self := Alfa * op1(A) * op2(B) + Beta * Self.
    c.Alfa = TCplx(2, 0);
    c.Beta = TCplx(1, 0);
    c.Mul(a, a, opNone, opTran);  // c := 2 * a * a' + c
    if (c.Values[0] != 1 + 2 * 14) return 2;
    c.Alfa = TCplx(1, 0);
    c.Beta = TCplx(0, 0);  // back to the plain product

    // A symmetric matrix is read from the triangle that TriangleForm names.
    TMtx s, x, y;
    s.Size(2, 2);
    s.Values[0] = 2; s.Values[1] = 1;
    s.Values[2] = -99; s.Values[3] = 3;  // the lower triangle is not read
    s.SetTriangleForm(tfUpper);
    x.Eye(2, 2);
    y.Mul(s, x, mtSymmetric, mtGeneral);
    if (y.Values[2] != 1) return 3;

    // Matrix times vector, and the outer product.
    TVec v, w;
    v.SetIt({1, 1, 1});
    w.TensorProd(a, v, mtGeneral, opNone);  // a * v = (6, 15)
    if (w.Values[0] != 6 || w.Values[1] != 15) return 4;
    TMtx outer;
    outer.TensorProd(w, v);  // 2 x 3
    if (outer.Rows() != 2 || outer.Values[5] != 15) return 5;
    std::printf("products ok\n");
    return 0;
}
