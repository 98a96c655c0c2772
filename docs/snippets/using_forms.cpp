// In-place, range and out-of-place forms; X = Self is refused.
#include <rovane/Rovane.h>

#include <cmath>

using namespace rovane;

int main() {
    TVec x, y;
    x.SetIt({0.0, 0.5, 1.0, 1.5});

    y.Sin(x);            // out of place: y is sized like x, y[i] = sin(x[i])
    x.Sin(1, 2);         // in place on the range [1, 3) of x
    x.Sin();             // in place on all of x

    bool refused = false;
    try {
        y.Sin(y);        // X = Self: refused, use y.Sin() instead
    } catch (const ERovaneInvalidArgument& e) {
        refused = std::string(e.what()) == "Sin: X = Self";
    }

    TVec z;
    z.Size(4);
    z.SetZero();
    z.Sin(y, 0, 2, 2);   // y[0..1] into z[2..3]; z keeps its size

    const TVec& cz = z;
    const bool ok = refused && cz[0] == 0 && cz[2] == std::sin(std::sin(0.0)) &&
                    cz[3] == std::sin(std::sin(0.5)) && y.Length() == 4;
    return ok ? 0 : 1;
}
