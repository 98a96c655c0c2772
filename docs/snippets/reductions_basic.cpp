// Reductions and statistics: sums, extremes with their index, norms, mean
// and deviation, and the defined results of empty input.
#include <rovane/Rovane.h>

#include <cmath>

using namespace rovane;

int main() {
    TVec x;
    x.SetIt({4, 1, 9, 9, 2});
    double s = x.Sum();              // 25
    double v;
    int32_t at;
    x.Max(v, at);                    // 9 at index 2: the first occurrence wins
    double part = x.Sum(1, 3);       // 1 + 9 + 9 = 19, a range of x
    x.Max(v, at, 3, 2);              // 9 at index 3: counted from the start of x
    if (s != 25 || part != 19 || v != 9 || at != 3) return 1;

    double mean, sd;
    x.MeanAndStdDev(mean, sd);       // one pass: 5 and the sample deviation
    if (mean != 5 || std::fabs(sd - x.StdDev()) > 1e-12) return 2;
    if (x.Median() != 4 || x.NormL1() != 25 || x.Range() != 8) return 3;

    TVec huge;
    huge.SetIt({3e300, 4e300});
    if (std::fabs(huge.NormL2() / 5e300 - 1) > 1e-15) return 4;  // no overflow

    TVec empty;
    if (empty.Sum() != 0 || !std::isnan(empty.Max()) || empty.Product() != 1) return 5;
    empty.Max(v, at);                // NAN and index -1
    if (at != -1) return 6;
    return 0;
}
