// Rounding: compositions round step by step; AddScaled goes through BLAS axpy.
#include <rovane/Rovane.h>

#include <cmath>

using namespace rovane;

int main() {
    TVec x, y, a, b;
    x.SetIt({0.1, 1.0 / 3.0, 1e16, -2.5});
    y.SetIt({0.7, 2.0 / 3.0, 1.0, 0.3});
    const double f = 0.3;

    a.Copy(y);
    a.AddScaled(x, f);     // a = y + f * x through BLAS axpy: may round as fma(f, x, y)

    b.Mul(x, f);           // b = f * x, rounded
    b.Add(y);              // b = b + y, rounded again

    bool close = true;
    for (int32_t i = 0; i < x.Length(); ++i) {
        const double once = std::fma(f, x.Values[i], y.Values[i]);
        const double twice = f * x.Values[i] + y.Values[i];   // the library's flags keep these two roundings
        close = close && (a.Values[i] == once || a.Values[i] == twice) && b.Values[i] == twice;
    }

    TVec c;
    c.Copy(y);
    c.AddScaled(x, 1.0);   // a factor of exactly 1 is Add: rounds as Add, bit for bit
    TVec d;
    d.Add(y, x);
    bool same = true;
    for (int32_t i = 0; i < x.Length(); ++i) same = same && c.Values[i] == d.Values[i];
    return close && same ? 0 : 1;
}
