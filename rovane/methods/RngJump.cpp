// GF(2) polynomial arithmetic of the jump-ahead: Berlekamp-Massey and
// t^n modulo a polynomial of some twenty thousand degrees.
#include "rovane/methods/RngJump.h"

#include <algorithm>

namespace rovane::rng::jump {

namespace {

// Bits start .. start + 63 of a bit array (zero beyond its end).
inline uint64_t BitsAt(const std::vector<uint64_t>& a, size_t start) {
    const size_t wi = start >> 6, sh = start & 63;
    const uint64_t lo = wi < a.size() ? a[wi] : 0;
    if (sh == 0) return lo;
    const uint64_t hi = wi + 1 < a.size() ? a[wi + 1] : 0;
    return (lo >> sh) | (hi << (64 - sh));
}

// a ^= b << shift (bit arrays; a long enough).
void XorShifted(std::vector<uint64_t>& a, const std::vector<uint64_t>& b, size_t shift) {
    const size_t ws = shift >> 6, bs = shift & 63;
    for (size_t i = 0; i < b.size(); ++i) {
        if (i + ws < a.size()) a[i + ws] ^= b[i] << bs;
        if (bs && i + ws + 1 < a.size()) a[i + ws + 1] ^= b[i] >> (64 - bs);
    }
}

int Degree(const std::vector<uint64_t>& a) {
    for (size_t i = a.size(); i-- > 0;)
        if (a[i]) return int(i * 64 + 63 - size_t(__builtin_clzll(a[i])));
    return -1;
}

}  // namespace

Poly MinimalPolynomial(const std::vector<uint8_t>& bits) {
    const size_t n = bits.size(), words = n / 64 + 2;
    // The sequence reversed, so that the sum over C_i s[k - i] is a masked
    // parity of a window starting at bit n - 1 - k.
    std::vector<uint64_t> rev(words, 0);
    for (size_t k = 0; k < n; ++k)
        if (bits[k]) rev[(n - 1 - k) >> 6] |= uint64_t(1) << ((n - 1 - k) & 63);
    std::vector<uint64_t> C(words, 0), B(words, 0), T;
    C[0] = B[0] = 1;
    int L = 0;
    size_t m = 1;
    for (size_t k = 0; k < n; ++k) {
        // d = sum_{i=0..L} C_i s[k - i]
        uint64_t acc = 0;
        const size_t base = n - 1 - k;
        for (size_t w = 0; w * 64 <= size_t(L); ++w) acc ^= C[w] & BitsAt(rev, base + w * 64);
        if (!__builtin_parityll(acc)) {
            ++m;
        } else if (2 * size_t(L) <= k) {
            T = C;
            XorShifted(C, B, m);
            L = int(k + 1) - L;
            B = std::move(T);
            m = 1;
        } else {
            XorShifted(C, B, m);
            ++m;
        }
    }
    // The characteristic polynomial is the reciprocal of C at degree L.
    Poly p;
    p.w.assign(size_t(L) / 64 + 1, 0);
    for (int i = 0; i <= L; ++i)
        if ((C[size_t(i) >> 6] >> (i & 63)) & 1) p.w[size_t(L - i) >> 6] |= uint64_t(1) << ((L - i) & 63);
    p.deg = L;
    return p;
}

Poly PowModT(uint64_t n, const Poly& m) {
    const int D = m.deg;
    const size_t words = size_t(D) / 64 + 2, wide = 2 * words + 1;
    // m shifted by 0 .. 63 bits, for the reduction.
    std::vector<std::vector<uint64_t>> ms(64, std::vector<uint64_t>(words + 1, 0));
    for (int s = 0; s < 64; ++s) {
        std::vector<uint64_t> mw(m.w);
        mw.resize(words + 1, 0);
        XorShifted(ms[size_t(s)], mw, size_t(s));
    }
    auto reduce = [&](std::vector<uint64_t>& a) {
        for (int i = Degree(a); i >= D; --i) {
            if (!((a[size_t(i) >> 6] >> (i & 63)) & 1)) continue;
            const size_t off = size_t(i - D);
            const std::vector<uint64_t>& sm = ms[off & 63];
            const size_t wo = off >> 6;
            for (size_t k = 0; k < sm.size() && k + wo < a.size(); ++k) a[k + wo] ^= sm[k];
        }
    };
    std::vector<uint64_t> g(wide, 0), sq(wide, 0);
    g[0] = 1;
    for (int bit = 63; bit >= 0; --bit) {
        // g = g^2: spread the bits
        std::fill(sq.begin(), sq.end(), 0);
        for (size_t i = 0; i < words; ++i) {
            const uint64_t v = g[i];
            if (!v) continue;
            uint64_t lo = 0, hi = 0;
            for (int b = 0; b < 32; ++b) {
                lo |= ((v >> b) & 1) << (2 * b);
                hi |= ((v >> (b + 32)) & 1) << (2 * b);
            }
            sq[2 * i] = lo;
            sq[2 * i + 1] = hi;
        }
        reduce(sq);
        g.swap(sq);
        if ((n >> bit) & 1) {  // g = g * t
            uint64_t carry = 0;
            for (size_t i = 0; i < wide; ++i) {
                const uint64_t v = g[i];
                g[i] = (v << 1) | carry;
                carry = v >> 63;
            }
            reduce(g);
        }
    }
    Poly r;
    r.deg = Degree(g);
    g.resize(std::max<size_t>(1, size_t(std::max(r.deg, 0)) / 64 + 1));
    r.w = std::move(g);
    return r;
}

}  // namespace rovane::rng::jump
