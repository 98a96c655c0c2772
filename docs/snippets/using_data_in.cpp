// Getting numbers in and out.
#include <rovane/Rovane.h>

#include <vector>

using namespace rovane;

int main() {
    const std::vector<double> samples = {0.5, 1.5, -2.0, 4.0};

    TVec a;
    a.SetIt(samples);                     // sized from the vector
    TVec b;
    b.SetIt({1, 2, 3});                   // or from a list
    TVec c;
    c.SetCplx({1, 2, 3, 4});              // (1+2i), (3+4i)

    TVec d;
    d.CopyFromArray(std::span<const double>(samples));      // an empty vector takes the array's size
    TVec e;
    e.Size(2);
    e.CopyFromArray(std::span<const double>(samples), 2);   // a sized one copies its Length: -2, 4

    std::vector<double> out(d.Length());
    for (int32_t i = 0; i < d.Length(); ++i) out[i] = d.Values[i];   // raw view of a double vector

    const bool ok = a.Length() == 4 && b.Length() == 3 && c.Length() == 2 && c.Lastc() == TCplx(3, 4) &&
                    out == samples && e.First() == -2.0 && e.Last() == 4.0;
    return ok ? 0 : 1;
}
