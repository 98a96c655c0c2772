// Quasi-random generators: the Sobol sequence and the Niederreiter sequence in
// base 2, both digital sequences in Gray-code order.
//
// The seed gives the dimension d; a seed outside 1..max gives dimension 1.
// The stream of elements runs through the points one coordinate after the
// other: element e is coordinate e mod d of point e / d + 1. The origin
// (point 0) is left out, so that the first element is 0.5. A leapfrog over d
// streams therefore gives stream k the coordinate k of every point, and
// skip-ahead jumps to any point directly.
//
// Sobol: direction numbers of Joe and Kuo (2008, the set "new-joe-kuo-6"),
// dimensions 1 to 21, 32 bits. Niederreiter: generator matrices from the
// irreducible polynomials over GF(2) in increasing order, by the method of
// Bratley, Fox and Niederreiter (1992), dimensions 1 to 318, 31 bits.
#include "rovane/methods/RngEngine.h"

#include <algorithm>
#include <array>
#include <vector>

namespace rovane::rng {

namespace {

struct SobolRow {
    int s, a;
    int m[7];
};
// Dimensions 2 to 21: degree s of the primitive polynomial, its inner
// coefficients a, and the initial direction numbers m_1 .. m_s.
constexpr SobolRow kSobol[kSobolMaxDim - 1] = {
    {1, 0, {1}},
    {2, 1, {1, 3}},
    {3, 1, {1, 3, 1}},
    {3, 2, {1, 1, 1}},
    {4, 1, {1, 1, 3, 3}},
    {4, 4, {1, 3, 5, 13}},
    {5, 2, {1, 1, 5, 5, 17}},
    {5, 4, {1, 1, 5, 5, 5}},
    {5, 7, {1, 1, 7, 11, 19}},
    {5, 11, {1, 1, 5, 1, 1}},
    {5, 13, {1, 1, 1, 3, 11}},
    {5, 14, {1, 3, 5, 5, 31}},
    {6, 1, {1, 3, 3, 9, 7, 49}},
    {6, 13, {1, 1, 1, 15, 21, 21}},
    {6, 16, {1, 3, 1, 13, 27, 49}},
    {6, 19, {1, 1, 1, 15, 7, 5}},
    {6, 22, {1, 3, 1, 15, 13, 25}},
    {6, 25, {1, 1, 5, 5, 19, 61}},
    {7, 1, {1, 3, 7, 11, 23, 15, 103}},
    {7, 4, {1, 3, 7, 13, 13, 15, 69}},
};

class Quasi final : public Engine {
public:
    // dirs[c][j]: the number xored into coordinate c when bit j of the Gray
    // code of the point index is set.
    Quasi(int32_t code, int dim, int bits, std::vector<std::array<uint32_t, 32>> dirs)
        : Engine(code), fDim(dim), fBits(bits), fDirs(std::move(dirs)), fX(size_t(dim), 0) {}
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<Quasi>(*this); }

    uint64_t Limit() const { return uint64_t(1) << fBits; }
    uint32_t Direct(uint64_t p, int c) const {
        const uint64_t g = p ^ (p >> 1);
        uint32_t x = 0;
        for (int j = 0; j < fBits; ++j)
            if (g >> j & 1) x ^= fDirs[size_t(c)][size_t(j)];
        return x;
    }
    // Raw coordinate of element fNext, then advance.
    bool Next(uint32_t& v) {
        if (fNext >> 64) return false;  // far beyond every period
        const uint64_t e = uint64_t(fNext), p = e / unsigned(fDim) + 1;
        if (p >= Limit()) return false;
        const int c = int(e % unsigned(fDim));
        if (fStride == 1) {
            if (p != fPoint) {
                if (p == fPoint + 1) {
                    const int j = __builtin_ctzll(p);
                    for (int k = 0; k < fDim; ++k) fX[size_t(k)] ^= fDirs[size_t(k)][size_t(j)];
                } else {
                    for (int k = 0; k < fDim; ++k) fX[size_t(k)] = Direct(p, k);
                }
                fPoint = p;
            }
            v = fX[size_t(c)];
        } else {
            v = Direct(p, c);
        }
        fNext += fStride;
        return true;
    }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i)
            if (!Next(r[i])) return kErrQrngPeriod;
        return kOk;
    }
    int Uniform(double* r, int64_t n) override {
        const double scale = fBits == 32 ? 0x1p-32 : 0x1p-31;
        uint32_t v;
        for (int64_t i = 0; i < n; ++i) {
            if (!Next(v)) return kErrQrngPeriod;
            r[i] = double(v) * scale;
        }
        return kOk;
    }
    double HalfStep() const override { return fBits == 32 ? 0x1p-33 : 0x1p-32; }
    int Skip(uint64_t n) override {
        const u128 e = fNext + u128(n) * fStride;
        if (e / unsigned(fDim) + 1 >= Limit()) return kErrQrngPeriod;
        fNext = e;
        return kOk;
    }
    int Leapfrog(uint64_t k, uint64_t ns) override {
        fNext += u128(k) * fStride;
        fStride *= ns;
        return kOk;
    }
    void Save(StateWriter& w) const override {
        w.U32(uint32_t(fDim));
        w.U64(uint64_t(fNext));
        w.U64(uint64_t(fNext >> 64));
        w.U64(uint64_t(fStride));
        w.U64(uint64_t(fStride >> 64));
    }
    bool Load(StateReader& r) override {
        const int dim = int(r.U32());
        const uint64_t a = r.U64(), b = r.U64(), c = r.U64(), d = r.U64();
        if (!r.ok || dim != fDim) return false;
        fNext = u128(b) << 64 | a;
        fStride = u128(d) << 64 | c;
        fPoint = 0;
        std::fill(fX.begin(), fX.end(), 0u);
        return fStride != 0;
    }

private:
    using u128 = unsigned __int128;
    int fDim, fBits;
    std::vector<std::array<uint32_t, 32>> fDirs;
    std::vector<uint32_t> fX;  // coordinates of point fPoint
    uint64_t fPoint = 0;
    u128 fNext = 0, fStride = 1;
};

// ---- Niederreiter base 2 ----------------------------------------------------
constexpr int kNBits = 31, kMaxPolyDeg = 16, kMaxV = kNBits + kMaxPolyDeg;

bool Irreducible(uint32_t p) {
    const int deg = 31 - __builtin_clz(p);
    for (uint32_t q = 2; q < (1u << (deg / 2 + 1)); ++q) {
        // remainder of p by q over GF(2)
        uint32_t r = p;
        const int dq = 31 - __builtin_clz(q);
        for (int k = 31 - __builtin_clz(r); r && k >= dq; k = r ? 31 - __builtin_clz(r) : -1)
            r ^= q << (k - dq);
        if (r == 0) return false;
    }
    return true;
}

using Poly = std::vector<int>;  // coefficients, lowest first

Poly PolyMul(const Poly& a, const Poly& b) {
    Poly c(a.size() + b.size() - 1, 0);
    for (size_t i = 0; i < a.size(); ++i)
        for (size_t j = 0; j < b.size(); ++j) c[i + j] ^= a[i] & b[j];
    return c;
}

// The recurrence of Bratley, Fox and Niederreiter: multiplies b by px and
// fills v with the linear recurring sequence whose characteristic polynomial
// is the new b; the arbitrary free elements are taken as 1.
void CalcV(const Poly& px, Poly& b, int v[kMaxV + 1]) {
    const int bigm = int(b.size()) - 1;
    b = PolyMul(px, b);
    const int m = int(b.size()) - 1;
    for (int r = 0; r < bigm; ++r) v[r] = 0;
    v[bigm] = 1;
    for (int r = bigm + 1; r < m; ++r) v[r] = 1;
    for (int r = 0; r <= kMaxV - m; ++r) {
        int term = 0;
        for (int k = 0; k < m; ++k) term ^= b[size_t(k)] & v[r + k];
        v[r + m] = term;
    }
}

}  // namespace

int NewSobol(uint32_t seed, std::unique_ptr<Engine>& out) {
    const int dim = seed >= 1 && seed <= uint32_t(kSobolMaxDim) ? int(seed) : 1;
    std::vector<std::array<uint32_t, 32>> dirs(static_cast<size_t>(dim));
    for (int j = 0; j < 32; ++j) dirs[0][size_t(j)] = 1u << (31 - j);
    for (int c = 1; c < dim; ++c) {
        const SobolRow& row = kSobol[c - 1];
        uint32_t V[33];
        for (int i = 1; i <= row.s; ++i) V[i] = uint32_t(row.m[i - 1]) << (32 - i);
        for (int i = row.s + 1; i <= 32; ++i) {
            V[i] = V[i - row.s] ^ (V[i - row.s] >> row.s);
            for (int k = 1; k <= row.s - 1; ++k)
                if ((row.a >> (row.s - 1 - k)) & 1) V[i] ^= V[i - k];
        }
        for (int j = 0; j < 32; ++j) dirs[size_t(c)][size_t(j)] = V[j + 1];
    }
    out = std::make_unique<Quasi>(kSOBOL, dim, 32, std::move(dirs));
    return kOk;
}

int NewNiederr(uint32_t seed, std::unique_ptr<Engine>& out) {
    const int dim = seed >= 1 && seed <= uint32_t(kNiederrMaxDim) ? int(seed) : 1;
    std::vector<std::array<uint32_t, 32>> dirs(static_cast<size_t>(dim));
    uint32_t poly = 1;
    for (int c = 0; c < dim; ++c) {
        do ++poly;
        while (!Irreducible(poly));
        const int deg = 31 - __builtin_clz(poly);
        Poly px(size_t(deg + 1));
        for (int k = 0; k <= deg; ++k) px[size_t(k)] = int(poly >> k & 1);
        Poly b{1};
        int v[kMaxV + 1] = {};
        int ci[kNBits][kNBits];
        int u = 0;
        for (int j = 0; j < kNBits; ++j) {
            if (u == 0) CalcV(px, b, v);
            for (int r = 0; r < kNBits; ++r) ci[r][j] = v[r + u];
            if (++u == deg) u = 0;
        }
        for (int r = 0; r < kNBits; ++r) {
            uint32_t term = 0;
            for (int j = 0; j < kNBits; ++j) term = 2 * term + uint32_t(ci[r][j]);
            dirs[size_t(c)][size_t(r)] = term;
        }
        for (int r = kNBits; r < 32; ++r) dirs[size_t(c)][size_t(r)] = 0;
    }
    out = std::make_unique<Quasi>(kNIEDERR, dim, kNBits, std::move(dirs));
    return kOk;
}

}  // namespace rovane::rng
