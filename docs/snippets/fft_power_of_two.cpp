// The pure power-of-two routine: a forward and an inverse call in place
// return the input; other lengths are refused.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

using namespace rovane;

int main() {
    // The unscaled spectrum of 1, 2, 3, 4: 10, -2 + 2i, -2, -2 - 2i.
    std::vector<double> f = {1, 0, 2, 0, 3, 0, 4, 0};
    FFTComplex(f.data(), 8, 0, 1, 8);
    const std::vector<double> spectrum = {10, 0, -2, 2, -2, 0, -2, -2};
    for (size_t i = 0; i < 8; ++i)
        if (std::fabs(f[i] - spectrum[i]) > 1e-14) return 1;

    std::vector<double> data = {1, 0, 2, 0, 3, 0, 4, 0};  // four complex points
    FFTComplex(data.data(), 8, 0, 1, 8);                   // forward
    FFTComplex(data.data(), 8, 0, -1, 8);                  // inverse: data again
    const std::vector<double> input = {1, 0, 2, 0, 3, 0, 4, 0};
    for (size_t i = 0; i < 8; ++i)
        if (std::fabs(data[i] - input[i]) > 1e-14) return 2;

    std::vector<double> six(12);
    try {
        FFTComplex(six.data(), 12, 0, 1, 12);  // six points: not a power of two
        return 3;
    } catch (const std::exception& e) {
        if (std::string(e.what()) != "FFTComplex: DataLen must be a power of two!") return 4;
        std::printf("refused: %s\n", e.what());
    }
    return 0;
}
