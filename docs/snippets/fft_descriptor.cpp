// A descriptor of a length that is not a power of two: create, configure,
// commit, transform forward and back, free; and the status of a call that
// the descriptor does not allow.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

using namespace rovane;

int main() {
    const int n = 1000;
    std::vector<TCplx> x(n), spectrum(n), back(n);
    for (int j = 0; j < n; ++j) x[j] = TCplx(std::cos(2 * M_PI * 5 * j / n), 0);  // 5 cycles of a cosine

    TDftiHandle h = nullptr;
    dfti_create_descriptor_highd(h, DFTI_DOUBLE, DFTI_COMPLEX, 1, &n);
    dfti_set_value_intval(h, DFTI_PLACEMENT, DFTI_NOT_INPLACE);
    dfti_set_value_dblval(h, DFTI_BACKWARD_SCALE, 1.0 / n);
    dfti_commit_descriptor_external(h);
    dfti_compute_forward_z_out_Idx(h, x.data(), 0, spectrum.data(), 0);
    dfti_compute_backward_z_out_Idx(h, spectrum.data(), 0, back.data(), 0);  // back == x
    dfti_free_descriptor_external(h);

    // The cosine lies in bins 5 and n - 5, n / 2 each; nothing elsewhere.
    for (int k = 0; k < n; ++k) {
        const double expect = (k == 5 || k == n - 5) ? n / 2.0 : 0.0;
        if (std::fabs(spectrum[k].Re - expect) > 1e-9 || std::fabs(spectrum[k].Im) > 1e-9) return 1;
    }
    for (int j = 0; j < n; ++j)
        if (std::fabs(back[j].Re - x[j].Re) > 1e-12 || std::fabs(back[j].Im) > 1e-12) return 2;
    if (h != nullptr) return 3;  // freeing clears the handle

    // A call on a descriptor that is not committed, and a real call on a
    // complex descriptor, return a status other than 0 with a text.
    TDftiHandle u = nullptr;
    if (dfti_create_descriptor_highd(u, DFTI_DOUBLE, DFTI_COMPLEX, 1, &n) != DFTI_NO_ERROR) return 4;
    const int32_t notCommitted = dfti_compute_forward_z_Idx(u, x.data(), 0);
    dfti_commit_descriptor_external(u);
    std::vector<double> reals(2 * n);
    const int32_t wrongDomain = dfti_compute_forward_d_Idx(u, reals.data(), 0);
    dfti_free_descriptor_external(u);
    if (notCommitted == DFTI_NO_ERROR || wrongDomain == DFTI_NO_ERROR) return 5;
    if (std::strlen(DftiErrorMessage(notCommitted)) == 0 || std::strlen(DftiErrorMessage(wrongDomain)) == 0) return 6;
    std::printf("not committed: %s\nwrong domain: %s\n", DftiErrorMessage(notCommitted),
                DftiErrorMessage(wrongDomain));
    return 0;
}
