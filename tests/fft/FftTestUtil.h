// Shared helpers of the FFT tests: a direct DFT in long double and error
// measures.
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <random>
#include <vector>
#include <complex>

namespace rovane::ffttest {

using LC = std::complex<long double>;

// exp(-+2 pi i t / n) with t reduced exactly, in long double.
inline LC Root(int64_t t, int64_t n, bool inverse) {
    t %= n;
    const long double a = 6.283185307179586476925286766559005768L * static_cast<long double>(t) / n;
    return LC(cosl(a), inverse ? sinl(a) : -sinl(a));
}

// Unscaled DFT of x, O(n^2), with a table of the n roots.
template <class T>
std::vector<LC> DirectDft(const std::vector<std::complex<T>>& x, bool inverse) {
    const int64_t n = static_cast<int64_t>(x.size());
    std::vector<LC> w(static_cast<size_t>(n)), y(static_cast<size_t>(n));
    for (int64_t t = 0; t < n; ++t) w[size_t(t)] = Root(t, n, inverse);
    for (int64_t k = 0; k < n; ++k) {
        LC s = 0;
        for (int64_t j = 0; j < n; ++j) s += LC(x[size_t(j)].real(), x[size_t(j)].imag()) * w[size_t((j * k) % n)];
        y[size_t(k)] = s;
    }
    return y;
}

// One bin of the forward DFT, O(n).
template <class T>
LC DirectBin(const std::vector<std::complex<T>>& x, int64_t k) {
    const int64_t n = static_cast<int64_t>(x.size());
    LC s = 0;
    for (int64_t j = 0; j < n; ++j) {
        const int64_t t = static_cast<int64_t>((static_cast<__int128>(j) * k) % n);
        s += LC(x[size_t(j)].real(), x[size_t(j)].imag()) * Root(t, n, false);
    }
    return s;
}

// Relative RMS error of y against the reference.
template <class C>
double RelRms(const std::vector<LC>& ref, const C* y, size_t count) {
    long double num = 0, den = 0;
    for (size_t k = 0; k < count; ++k) {
        const LC d = ref[k] - LC(y[k].real(), y[k].imag());
        num += std::norm(d);
        den += std::norm(ref[k]);
    }
    return den == 0 ? std::sqrt(static_cast<double>(num)) : std::sqrt(static_cast<double>(num / den));
}

template <class T>
std::vector<std::complex<T>> RandomComplex(size_t n, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<std::complex<T>> x(n);
    for (auto& v : x) {
        const T re = static_cast<T>(u(g));
        const T im = static_cast<T>(u(g));
        v = std::complex<T>(re, im);
    }
    return x;
}

template <class T>
std::vector<T> RandomReal(size_t n, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<T> x(n);
    for (auto& v : x) v = static_cast<T>(u(g));
    return x;
}

inline double Log2N(int64_t n) { return n < 2 ? 1.0 : std::log2(static_cast<double>(n)); }

}  // namespace rovane::ffttest

namespace rovane::ffttest {

// Unscaled 2-D DFT of rows x cols points stored row by row.
template <class T>
std::vector<LC> Direct2D(const std::vector<std::complex<T>>& x, int rows, int cols, bool inverse) {
    std::vector<LC> m(x.size());
    std::vector<std::complex<long double>> line;
    for (int r = 0; r < rows; ++r) {
        std::vector<std::complex<long double>> row(static_cast<size_t>(cols));
        for (int c = 0; c < cols; ++c) row[size_t(c)] = LC(x[size_t(r * cols + c)].real(), x[size_t(r * cols + c)].imag());
        const auto y = DirectDft(row, inverse);
        for (int c = 0; c < cols; ++c) m[size_t(r * cols + c)] = y[size_t(c)];
    }
    for (int c = 0; c < cols; ++c) {
        std::vector<std::complex<long double>> col(static_cast<size_t>(rows));
        for (int r = 0; r < rows; ++r) col[size_t(r)] = m[size_t(r * cols + c)];
        const auto y = DirectDft(col, inverse);
        for (int r = 0; r < rows; ++r) m[size_t(r * cols + c)] = y[size_t(r)];
    }
    return m;
}

// Where a half-spectrum format of n reals keeps each value: for position p,
// the bin and whether it is the imaginary part. Written from the layout
// tables: Pack R0 R1 I1 ... [R(n/2)], Perm R0 [R(n/2)] R1 I1 ...
struct TSlot {
    int bin;
    bool im;
};
inline std::vector<TSlot> FormatSlots(int format /*1 Pack, 2 Perm*/, int n) {
    std::vector<TSlot> s;
    s.push_back({0, false});
    const bool even = n % 2 == 0;
    if (format == 2 && even && n > 1) s.push_back({n / 2, false});
    for (int k = 1; k < (even ? n / 2 : n / 2 + 1); ++k) {
        s.push_back({k, false});
        s.push_back({k, true});
    }
    if (format == 1 && even && n > 1) s.push_back({n / 2, false});
    return s;
}

}  // namespace rovane::ffttest
