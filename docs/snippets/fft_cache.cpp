// The process-wide descriptor cache: a lookup by shape and flags, matched by
// a release; a repeated shape is served by the slot the hint names.
#include <rovane/Rovane.h>

#include <cmath>
#include <vector>

using namespace rovane;

int main() {
    const int n = 4096;
    std::vector<TCplx> data(n, TCplx(0, 0));
    data[1] = TCplx(1, 0);  // an impulse at index 1

    TDFTIDescriptorCache& cache = DFTIDescriptorCache();
    int32_t hint = 0;                                   // kept with the caller
    TDftiHandle d = cache.GetDesc(4096, dftfInPlace | dftfScaleBackward, hint);
    dfti_compute_forward_z_Idx(d, data.data(), 0);  // data: 4096 TCplx values
    cache.ReleaseDscr(hint);                            // always, also on failure

    // The spectrum of the impulse: exp(-2 pi i k / n).
    for (int k = 0; k < n; ++k)
        if (std::fabs(data[k].Re - std::cos(2 * M_PI * k / n)) > 1e-12 ||
            std::fabs(data[k].Im + std::sin(2 * M_PI * k / n)) > 1e-12)
            return 1;

    // The same shape again: the same slot and descriptor; the backward
    // transform carries 1/N and gives the impulse back.
    const int32_t first = hint;
    TDftiHandle again = cache.GetDesc(4096, dftfInPlace | dftfScaleBackward, hint);
    if (again != d || hint != first) return 2;
    if (cache.Slot(hint).useCount != 1) return 3;  // in use until released
    dfti_compute_backward_z_Idx(again, data.data(), 0);
    cache.ReleaseDscr(hint);
    if (cache.Slot(hint).useCount != 0) return 4;
    for (int k = 0; k < n; ++k)
        if (std::fabs(data[k].Re - (k == 1 ? 1.0 : 0.0)) > 1e-12 || std::fabs(data[k].Im) > 1e-12) return 5;
    return 0;
}
