// A short tour of what Rovane can do so far.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>

int main() {
    using namespace rovane;
    std::printf("Rovane demo\n\n");

    std::printf("Constants: PI = %.17g, LN2 = %.17g, MACHEP = %g, NAN_ is %s\n", PI, LN2, MACHEP,
                std::signbit(NAN_) ? "negative" : "positive");

    const TCplx a(3, 4), b(1, -2);
    const TCplx p = a * b, q = a / b;
    std::printf("Complex: (3+4i)*(1-2i) = (%g, %g), (3+4i)/(1-2i) = (%g, %g)\n", p.Re, p.Im, q.Re, q.Im);
    std::printf("Equality classes: Equal(NaN, NaN) = %d, Equal(Inf, -Inf) = %d\n", Equal(NAN_, NAN_),
                Equal(INF, -INF));
    std::printf("Factorials: 10! = %g, 30! = %.17g, 171! = %g\n", Fact(10), Fact(30), Fact(171));
    return 0;
}
