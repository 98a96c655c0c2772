// The container model: length, complexity, precision and capacity.
#include <rovane/Rovane.h>

#include <cstdio>

using namespace rovane;

int main() {
    TVec x;                      // empty: Length 0, real, double
    x.Size(1000);                // 1000 real doubles (values not set)
    x.SetZero();
    x.Size(500, true);           // 500 complex doubles, in the same block
    x.Size(500, rvSingle);       // 500 real floats
    const bool model = x.Length() == 500 && !x.Complex() && !x.IsDouble() && x.FloatPrecision() == rvSingle;

    TVec y;
    y.SetCapacityInElements(4096);   // reserve once ...
    y.Size(100);
    const double* block = y.Values;
    y.Size(4000);                    // ... and grow without a new block
    const bool kept = y.Values == block && y.Capacity() >= 4000;

    TMtx m;
    m.Size(3, 4, true);              // 3 x 4 complex, stored row by row
    const bool shape = m.Rows() == 3 && m.Cols() == 4 && m.Length() == 12;

    std::printf("model %d, capacity kept %d, matrix %d\n", model, kept, shape);
    return model && kept && shape ? 0 : 1;
}
