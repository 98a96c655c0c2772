// Jump-ahead of F2-linear generators (MT19937, SFMT19937) by the method of
// Haramoto et al.: with S the one-step map of the generator's state window and
// m the minimal polynomial of S, the state n steps ahead is g(S) w where
// g = t^n mod m. m is found once per generator by Berlekamp-Massey on one
// output bit of a random window; g(S) w runs by Horner's rule.
// Internal to the random streams.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace rovane::rng::jump {

// Polynomial over GF(2): bit i of word i / 64 is the coefficient of t^i.
struct Poly {
    std::vector<uint64_t> w;
    int deg = -1;
    bool Coef(int i) const { return (w[size_t(i) >> 6] >> (i & 63)) & 1; }
};

// Minimal polynomial of a bit sequence (Berlekamp-Massey), as the polynomial
// P with sum_i P_i s[k + i] = 0 for all k.
Poly MinimalPolynomial(const std::vector<uint8_t>& bits);

// t^n mod m.
Poly PowModT(uint64_t n, const Poly& m);

// g(S) w by Horner's rule: W needs Clear(), Step() and Xor(const W&).
template <class W>
W Apply(const Poly& g, const W& w) {
    W acc = w;
    acc.Clear();
    for (int i = g.deg; i >= 0; --i) {
        acc.Step();
        if (g.Coef(i)) acc.Xor(w);
    }
    return acc;
}

// The minimal polynomial of the step map of W, times t (so that it also
// annihilates the bits the map discards), from a window filled by fill(w).
template <class W, class Fill>
Poly StepPolynomial(Fill fill, int dimension) {
    W w;
    fill(w);
    std::vector<uint8_t> bits(static_cast<size_t>(2 * dimension + 256));
    for (auto& b : bits) {
        b = uint8_t(w.Bit0());
        w.Step();
    }
    Poly p = MinimalPolynomial(bits);
    // times t: shift left by one
    Poly q;
    q.w.assign(p.w.size() + 1, 0);
    for (size_t i = 0; i < p.w.size(); ++i) {
        q.w[i] |= p.w[i] << 1;
        q.w[i + 1] |= p.w[i] >> 63;
    }
    q.deg = p.deg + 1;
    return q;
}

}  // namespace rovane::rng::jump
