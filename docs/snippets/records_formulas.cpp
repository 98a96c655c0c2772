// Formulas with the expression records: operators, free functions, chaining
// members, matrices, comparisons.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>

using namespace rovane;

int main() {
    bool ok = true;

    // A formula reads like the mathematics; no object is created by hand.
    Vector x = {0.0, 0.5, 1.0, 1.5};
    Vector z = {1.0, 1.0, 1.0, 1.0};
    Vector y = Sin(x) * 2.0 + z;
    ok = ok && y[1] == std::sin(0.5) * 2.0 + 1.0;

    // Free functions return a new record; members work on the record itself
    // and chain.
    Vector r = Sqrt(Abs(x - 1.0));
    Vector w;
    w.Copy(x).Sqr().Add(1.0);
    ok = ok && r[0] == 1.0 && w[2] == 2.0;

    // Complex values widen the result.
    Vector c = x * TCplx(0, 1);
    ok = ok && c.Complex() && c.CValues(2) == TCplx(0, 1);

    // Matrix * Matrix multiplies element by element.
    Matrix a({{1, 2}, {3, 4}});
    Matrix b({{10, 20}, {30, 40}});
    Matrix p = a * b;
    ok = ok && p.Values(1, 0) == 90.0;

    // A comparison holds when it holds for every element.
    ok = ok && (x >= 0.0) && !(x > 0.0) && (a < b) && (a == Matrix({{1, 2}, {3, 4}}));

    // A record goes wherever a container is expected.
    TVec plain;
    plain.Copy(y);
    ok = ok && plain.Length() == 4;

    std::printf("y = %g %g %g %g\n", y.Values(0), y.Values(1), y.Values(2), y.Values(3));
    return ok ? 0 : 1;
}
