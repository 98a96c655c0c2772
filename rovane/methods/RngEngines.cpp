// The pseudo-random basic generators, each from its published definition:
// MCG31m1, R250, MRG32k3a, MCG59, Wichmann-Hill (2006), MT19937, SFMT19937,
// Philox4x32-10, ARS-5 and the processor's non-deterministic source. The
// quasi-random ones live in RngQuasi.cpp.
#include "rovane/methods/RngEngine.h"
#include "rovane/methods/RngJump.h"
#include "rovane/storage/Platform.h"

#include <cpuid.h>
#include <emmintrin.h>
#include <immintrin.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace rovane::rng {

void StateWriter::F64(double v) {
    uint64_t u;
    std::memcpy(&u, &v, 8);
    U64(u);
}
double StateReader::F64() {
    uint64_t u = U64();
    double v;
    std::memcpy(&v, &u, 8);
    return v;
}

// Defined in RngQuasi.cpp.
int NewSobol(uint32_t seed, std::unique_ptr<Engine>& out);
int NewNiederr(uint32_t seed, std::unique_ptr<Engine>& out);

namespace {

constexpr int kChunk = 1024;

// u = x * 2^-32 for a run of 32-bit words: one conversion per lane.
__attribute__((target_clones("avx512f", "avx2", "default"))) void U32ToUnit(const uint32_t* x, double* r,
                                                                             int64_t n) {
    for (int64_t i = 0; i < n; ++i) r[i] = double(x[i]) * 0x1p-32;
}

// Raw 32-bit outputs, copied as they are.
inline void CopyWords(const uint32_t* s, uint32_t* d, int m) { std::memcpy(d, s, size_t(m) * 4); }

// Hands out n outputs of a generator that fills a block of `size` words at a
// time: the rest of the block at idx first, then fresh blocks from refill.
// `put` converts a run of words into the caller's elements.
template <class Refill, class T, class Put>
int DrainBlocks(int& idx, int size, const uint32_t* block, Refill refill, T* r, int64_t n, Put put) {
    while (n > 0) {
        if (idx >= size) refill();
        const int m = int(std::min<int64_t>(n, size - idx));
        put(block + idx, r, m);
        idx += m;
        r += m;
        n -= m;
    }
    return kOk;
}

// Uniform doubles of a generator whose raw output is 32 uniform bits.
template <class E>
int UniformFromBits(E& e, double* r, int64_t n) {
    uint32_t buf[kChunk];
    while (n > 0) {
        const int64_t m = std::min<int64_t>(n, kChunk);
        if (int s = e.E::Bits(buf, m); s != kOk) return s;
        U32ToUnit(buf, r, m);
        r += m;
        n -= m;
    }
    return kOk;
}

// Skip-ahead by walking the sequence, for generators whose jump would need a
// characteristic polynomial of thousands of degrees. About a nanosecond per
// element; counts beyond 2^36 are refused rather than run for minutes.
constexpr uint64_t kMaxWalk = uint64_t(1) << 36;
// MT19937 and SFMT19937 walk shorter distances and jump by polynomial beyond.
constexpr uint64_t kJumpFrom = uint64_t(1) << 22;
int WalkSkip(Engine& e, uint64_t n) {
    if (n > kMaxWalk) return kErrSkipUnsupported;
    uint32_t buf[kChunk];
    while (n > 0) {
        const int64_t m = int64_t(std::min<uint64_t>(n, kChunk));
        if (int s = e.Bits(buf, m); s != kOk) return s;
        n -= uint64_t(m);
    }
    return kOk;
}

// a^n mod m for m < 2^63.
uint64_t PowMod(uint64_t a, uint64_t n, uint64_t m) {
    unsigned __int128 r = 1 % m, b = a % m;
    while (n) {
        if (n & 1) r = r * b % m;
        b = b * b % m;
        n >>= 1;
    }
    return uint64_t(r);
}

// x * a mod (2^31 - 1) for x, a below 2^31, by folding the 62-bit product.
inline uint32_t MulMod31(uint32_t x, uint32_t a) {
    const uint64_t p = uint64_t(x) * a;
    uint64_t r = (p & 0x7FFFFFFFu) + (p >> 31);
    r = (r & 0x7FFFFFFFu) + (r >> 31);
    return uint32_t(r >= 0x7FFFFFFFu ? r - 0x7FFFFFFFu : r);
}

// n (a multiple of 8) MCG31 elements from eight interleaved lanes; x is left
// at the next eight elements. Returns n.
__attribute__((target_clones("avx512f", "avx2", "default"))) int64_t Mcg31Lanes(uint32_t* __restrict x, uint32_t a8,
                                                                                double* __restrict r, int64_t n) {
    uint32_t v[8];
    for (int j = 0; j < 8; ++j) v[j] = x[j];
    for (int64_t i = 0; i < n; i += 8)
        for (int j = 0; j < 8; ++j) {
            r[i + j] = double(v[j]) / 2147483647.0;
            v[j] = MulMod31(v[j], a8);
        }
    for (int j = 0; j < 8; ++j) x[j] = v[j];
    return n;
}

// ---------------------------------------------------------------------------
// MCG31m1: x_n = 1132489760 x_{n-1} mod (2^31 - 1), u_n = x_n / m. The state
// holds the next output and the multiplier of one step, a^stride after a
// leapfrog.
// ---------------------------------------------------------------------------
class MCG31 final : public Engine {
public:
    static constexpr uint64_t kM = 2147483647, kA = 1132489760;
    explicit MCG31(uint32_t seed) : Engine(kMCG31) {
        uint64_t x0 = seed % kM;
        if (x0 == 0) x0 = 1;
        fX = x0 * kA % kM;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<MCG31>(*this); }
    int Uniform(double* r, int64_t n) override {
        int64_t i = 0;
        if (n >= 64) {
            // Eight lanes, lane j at element i + j, all stepping by a^8.
            uint32_t x[8];
            uint64_t v = fX;
            for (int j = 0; j < 8; ++j, v = v * fMul % kM) x[j] = uint32_t(v);
            i = Mcg31Lanes(x, uint32_t(PowMod(fMul, 8, kM)), r, n & ~int64_t(7));
            fX = x[0];
        }
        uint64_t x = fX;
        const uint64_t a = fMul;
        for (; i < n; ++i) {
            r[i] = double(x) / double(kM);
            x = x * a % kM;
        }
        fX = x;
        return kOk;
    }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) {
            r[i] = uint32_t(fX);
            fX = fX * fMul % kM;
        }
        return kOk;
    }
    double HalfStep() const override { return 0.5 / double(kM); }
    int Skip(uint64_t n) override {
        fX = uint64_t((unsigned __int128)fX * PowMod(fMul, n, kM) % kM);
        return kOk;
    }
    int Leapfrog(uint64_t k, uint64_t ns) override {
        Skip(k);
        fMul = PowMod(fMul, ns, kM);
        return kOk;
    }
    void Save(StateWriter& w) const override {
        w.U64(fX);
        w.U64(fMul);
    }
    bool Load(StateReader& r) override {
        fX = r.U64();
        fMul = r.U64();
        return r.ok && fX > 0 && fX < kM && fMul > 0 && fMul < kM;
    }

private:
    uint64_t fX = 1, fMul = kA;
};

// ---------------------------------------------------------------------------
// MCG59: x_n = 13^13 x_{n-1} mod 2^59, u_n = x_n / 2^59. Raw output: the top
// 32 of the 59 bits (the low bits of a power-of-two modulus are weak).
// ---------------------------------------------------------------------------
class MCG59 final : public Engine {
public:
    static constexpr uint64_t kMask = (uint64_t(1) << 59) - 1, kA = 302875106592253ull;
    explicit MCG59(uint32_t seed) : Engine(kMCG59) {
        uint64_t x0 = seed;
        if (x0 == 0) x0 = 1;
        fX = x0 * kA & kMask;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<MCG59>(*this); }
    int Uniform(double* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) {
            r[i] = double(fX) * 0x1p-59;
            fX = fX * fMul & kMask;
        }
        return kOk;
    }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) {
            r[i] = uint32_t(fX >> 27);
            fX = fX * fMul & kMask;
        }
        return kOk;
    }
    bool Full32() const override { return true; }
    double HalfStep() const override { return 0x1p-60; }
    static uint64_t Pow(uint64_t a, uint64_t n) {
        uint64_t r = 1;
        while (n) {
            if (n & 1) r = r * a & kMask;
            a = a * a & kMask;
            n >>= 1;
        }
        return r;
    }
    int Skip(uint64_t n) override {
        fX = fX * Pow(fMul, n) & kMask;
        return kOk;
    }
    int Leapfrog(uint64_t k, uint64_t ns) override {
        Skip(k);
        fMul = Pow(fMul, ns);
        return kOk;
    }
    void Save(StateWriter& w) const override {
        w.U64(fX);
        w.U64(fMul);
    }
    bool Load(StateReader& r) override {
        fX = r.U64();
        fMul = r.U64();
        return r.ok && fX != 0 && (fMul & 1) && fX <= kMask && fMul <= kMask;
    }

private:
    uint64_t fX = 1, fMul = kA;
};

// ---------------------------------------------------------------------------
// Wichmann-Hill (2006): four multiplicative congruential generators,
// u_n = (x/m1 + y/m2 + z/m3 + w/m4) mod 1.
// ---------------------------------------------------------------------------
class WH final : public Engine {
public:
    static constexpr uint64_t kA[4] = {11600, 47003, 23000, 33000};
    static constexpr uint64_t kM[4] = {2147483579, 2147483543, 2147483423, 2147483123};
    explicit WH(const uint32_t* s, int ns) : Engine(kWH) {
        for (int j = 0; j < 4; ++j) {
            uint64_t x = (j < ns ? s[j] : 1) % kM[j];
            if (x == 0) x = 1;
            fX[j] = x * kA[j] % kM[j];
            fMul[j] = kA[j];
        }
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<WH>(*this); }
    double Next() {
        double s = 0;
        for (int j = 0; j < 4; ++j) {
            s += double(fX[j]) / double(kM[j]);
            fX[j] = fX[j] * fMul[j] % kM[j];
        }
        return s - std::floor(s);
    }
    int Uniform(double* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) r[i] = Next();
        return kOk;
    }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) r[i] = uint32_t(Next() * 0x1p32);
        return kOk;
    }
    double HalfStep() const override { return 0x1p-54; }
    int Skip(uint64_t n) override {
        for (int j = 0; j < 4; ++j) fX[j] = fX[j] * PowMod(fMul[j], n, kM[j]) % kM[j];
        return kOk;
    }
    int Leapfrog(uint64_t k, uint64_t ns) override {
        Skip(k);
        for (int j = 0; j < 4; ++j) fMul[j] = PowMod(fMul[j], ns, kM[j]);
        return kOk;
    }
    void Save(StateWriter& w) const override {
        for (int j = 0; j < 4; ++j) {
            w.U64(fX[j]);
            w.U64(fMul[j]);
        }
    }
    bool Load(StateReader& r) override {
        bool good = true;
        for (int j = 0; j < 4; ++j) {
            fX[j] = r.U64();
            fMul[j] = r.U64();
            good = good && fX[j] > 0 && fX[j] < kM[j] && fMul[j] > 0 && fMul[j] < kM[j];
        }
        return r.ok && good;
    }

private:
    uint64_t fX[4], fMul[4];
};

// ---------------------------------------------------------------------------
// R250: generalised feedback shift register x_n = x_{n-103} xor x_{n-250},
// started from the congruential generator y_n = 69069 y_{n-1} mod 2^32, with
// the diagonal bits of 32 words set so that the words are independent
// (Kirkpatrick and Stoll).
// ---------------------------------------------------------------------------
class R250 final : public Engine {
public:
    explicit R250(uint32_t seed) : Engine(kR250) {
        uint32_t y = seed ? seed : 1;
        for (int k = 0; k < 250; ++k) {
            y = 69069u * y;
            fBuf[k] = y;
        }
        uint32_t mask = 0xFFFFFFFFu, msb = 0x80000000u;
        for (int k = 0; k < 32; ++k) {
            const int j = 7 * k + 3;
            fBuf[j] = (fBuf[j] & mask) | msb;
            mask >>= 1;
            msb >>= 1;
        }
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<R250>(*this); }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i) {
            const int q = fPos < 103 ? fPos + 147 : fPos - 103;
            const uint32_t x = fBuf[fPos] ^ fBuf[q];
            fBuf[fPos] = x;
            fPos = fPos == 249 ? 0 : fPos + 1;
            r[i] = x;
        }
        return kOk;
    }
    int Uniform(double* r, int64_t n) override { return UniformFromBits(*this, r, n); }
    bool Full32() const override { return true; }
    int Skip(uint64_t n) override { return WalkSkip(*this, n); }
    void Save(StateWriter& w) const override {
        w.U32(uint32_t(fPos));
        for (uint32_t v : fBuf) w.U32(v);
    }
    bool Load(StateReader& r) override {
        fPos = int(r.U32());
        for (uint32_t& v : fBuf) v = r.U32();
        return r.ok && fPos >= 0 && fPos < 250;
    }

private:
    std::array<uint32_t, 250> fBuf{};
    int fPos = 0;
};

// ---------------------------------------------------------------------------
// MRG32k3a (L'Ecuyer 1999):
//   x_n = (1403580 x_{n-2} - 810728 x_{n-3}) mod m1,  m1 = 2^32 - 209
//   y_n = (527612 y_{n-1} - 1370589 y_{n-3}) mod m2,  m2 = 2^32 - 22853
//   z_n = (x_n - y_n) mod m1, u_n = z_n / m1.
// Every product stays below 2^53, so the recurrences run exactly in double
// arithmetic. Long fills run in lanes: lane j starts kLaneLen elements after
// lane j - 1 (a jump by a matrix power), and all lanes step together.
// ---------------------------------------------------------------------------
using Mat3 = std::array<std::array<uint64_t, 3>, 3>;
Mat3 MatMul(const Mat3& a, const Mat3& b, uint64_t m) {
    Mat3 c{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            unsigned __int128 s = 0;
            for (int k = 0; k < 3; ++k) s += (unsigned __int128)a[i][k] * b[k][j];
            c[i][j] = uint64_t(s % m);
        }
    return c;
}
Mat3 MatPow(Mat3 a, uint64_t n, uint64_t m) {
    Mat3 r{};
    for (int i = 0; i < 3; ++i) r[i][i] = 1;
    while (n) {
        if (n & 1) r = MatMul(r, a, m);
        a = MatMul(a, a, m);
        n >>= 1;
    }
    return r;
}
void MatVec(const Mat3& a, double s[3], uint64_t m) {
    uint64_t v[3];
    for (int i = 0; i < 3; ++i) {  // entries and state below 2^32: products fit 64 bits
        uint64_t t = 0;
        for (int k = 0; k < 3; ++k) t += a[i][k] * uint64_t(s[k]) % m;
        v[i] = t % m;
    }
    for (int i = 0; i < 3; ++i) s[i] = double(v[i]);
}

constexpr double kM1 = 4294967087.0, kM2 = 4294944443.0;
constexpr int kLanes = 16, kLaneLen = 512;
constexpr double kInvM1 = 1.0 / kM1, kInvM2 = 1.0 / kM2;

// p mod m for an integer p with |p| < 2^53 held in a double. The quotient is
// rounded to the nearest integer by the 1.5 * 2^52 shift (no library call, so
// the lanes vectorise); the remainder then lies within (-m, m) and one
// correction each way brings it into [0, m).
inline double Mod(double p, double m, double inv) {
    const double k = (p * inv + 0x1.8p52) - 0x1.8p52;
    double r = p - k * m;
    r += r < 0 ? m : 0.0;
    r -= r >= m ? m : 0.0;
    return r;
}

// Lanes of MRG32k3a: s1[k][j], s2[k][j] hold x_{n-3+k}, y_{n-3+k} of lane j.
// Writes step t of lane j to out[t * kLanes + j].
__attribute__((target_clones("avx512f", "avx2", "default"))) void MrgLanes(double (*s1)[kLanes],
                                                                            double (*s2)[kLanes], double* out) {
    for (int t = 0; t < kLaneLen; ++t) {
        for (int j = 0; j < kLanes; ++j) {
            const double p1 = Mod(1403580.0 * s1[1][j] - 810728.0 * s1[0][j], kM1, kInvM1);
            const double p2 = Mod(527612.0 * s2[2][j] - 1370589.0 * s2[0][j], kM2, kInvM2);
            s1[0][j] = s1[1][j];
            s1[1][j] = s1[2][j];
            s1[2][j] = p1;
            s2[0][j] = s2[1][j];
            s2[1][j] = s2[2][j];
            s2[2][j] = p2;
            double z = p1 - p2;
            z += z < 0 ? kM1 : 0.0;
            out[t * kLanes + j] = z;
        }
    }
}

class MRG32k3a final : public Engine {
public:
    static constexpr int kBlockLen = kLanes * kLaneLen;
    MRG32k3a(const uint32_t* s, int ns) : Engine(kMRG32K3A), fOut(new double[kBlockLen]) {
        const uint32_t def[6] = {ns > 0 ? s[0] : 1u, 1, 1, 1, 1, 1};
        const uint32_t* v = ns >= 6 ? s : def;
        for (int k = 0; k < 3; ++k) {
            fS1[k] = double(uint64_t(v[k]) % uint64_t(kM1));
            fS2[k] = double(uint64_t(v[3 + k]) % uint64_t(kM2));
        }
        if (fS1[0] == 0 && fS1[1] == 0 && fS1[2] == 0) fS1[0] = 1;
        if (fS2[0] == 0 && fS2[1] == 0 && fS2[2] == 0) fS2[0] = 1;
        Generate();
    }
    MRG32k3a(const MRG32k3a& o) : Engine(o), fIdx(o.fIdx), fOut(new double[kBlockLen]) {
        std::copy(o.fS1, o.fS1 + 3, fS1);
        std::copy(o.fS2, o.fS2 + 3, fS2);
        std::copy(o.fOut.get(), o.fOut.get() + kBlockLen, fOut.get());
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<MRG32k3a>(*this); }
    static Mat3 A1() { return Mat3{{{0, 1, 0}, {0, 0, 1}, {uint64_t(kM1) - 810728, 1403580, 0}}}; }
    static Mat3 A2() { return Mat3{{{0, 1, 0}, {0, 0, 1}, {uint64_t(kM2) - 1370589, 0, 527612}}}; }

    // z of the block that starts at state (fS1, fS2): lane j covers the
    // elements j * kLaneLen .. (j + 1) * kLaneLen - 1, started by a jump.
    void Generate() {
        static const Mat3 J1 = MatPow(A1(), kLaneLen, uint64_t(kM1));
        static const Mat3 J2 = MatPow(A2(), kLaneLen, uint64_t(kM2));
        double s1[3][kLanes], s2[3][kLanes];
        double a[3] = {fS1[0], fS1[1], fS1[2]}, b[3] = {fS2[0], fS2[1], fS2[2]};
        for (int j = 0; j < kLanes; ++j) {
            for (int k = 0; k < 3; ++k) {
                s1[k][j] = a[k];
                s2[k][j] = b[k];
            }
            if (j + 1 < kLanes) {
                MatVec(J1, a, uint64_t(kM1));
                MatVec(J2, b, uint64_t(kM2));
            }
        }
        MrgLanes(s1, s2, fTile.get());
        double* o = fOut.get();
        const double* tile = fTile.get();
        for (int j = 0; j < kLanes; ++j)
            for (int t = 0; t < kLaneLen; ++t) o[j * kLaneLen + t] = tile[t * kLanes + j];
        fIdx = 0;
    }
    // The next block: its start is the end of the last lane.
    void Advance() {
        static const Mat3 B1 = MatPow(A1(), kBlockLen, uint64_t(kM1));
        static const Mat3 B2 = MatPow(A2(), kBlockLen, uint64_t(kM2));
        MatVec(B1, fS1, uint64_t(kM1));
        MatVec(B2, fS2, uint64_t(kM2));
        Generate();
    }
    template <class F>
    void Run(int64_t n, F&& put) {
        int64_t at = 0;
        while (n > 0) {
            if (fIdx == kBlockLen) Advance();
            const int m = int(std::min<int64_t>(n, kBlockLen - fIdx));
            put(at, fOut.get() + fIdx, m);
            fIdx += m;
            at += m;
            n -= m;
        }
    }
    int Uniform(double* r, int64_t n) override {
        Run(n, [r](int64_t at, const double* z, int m) {
            for (int k = 0; k < m; ++k) r[at + k] = z[k] * (1.0 / kM1);
        });
        return kOk;
    }
    int Bits(uint32_t* r, int64_t n) override {
        Run(n, [r](int64_t at, const double* z, int m) {
            for (int k = 0; k < m; ++k) r[at + k] = uint32_t(z[k]);
        });
        return kOk;
    }
    double HalfStep() const override { return 0.5 / kM1; }
    int Skip(uint64_t n) override {
        const unsigned __int128 t = (unsigned __int128)fIdx + n;
        const uint64_t blocks = uint64_t(t / kBlockLen);
        if (blocks > 0) {
            MatVec(MatPow(MatPow(A1(), kBlockLen, uint64_t(kM1)), blocks, uint64_t(kM1)), fS1, uint64_t(kM1));
            MatVec(MatPow(MatPow(A2(), kBlockLen, uint64_t(kM2)), blocks, uint64_t(kM2)), fS2, uint64_t(kM2));
            Generate();
        }
        fIdx = int(t % kBlockLen);
        return kOk;
    }
    void Save(StateWriter& w) const override {
        for (int k = 0; k < 3; ++k) w.U64(uint64_t(fS1[k]));
        for (int k = 0; k < 3; ++k) w.U64(uint64_t(fS2[k]));
        w.U32(uint32_t(fIdx));
    }
    bool Load(StateReader& r) override {
        bool good = true;
        for (int k = 0; k < 3; ++k) {
            const uint64_t v = r.U64();
            good = good && v < uint64_t(kM1);
            fS1[k] = double(v);
        }
        for (int k = 0; k < 3; ++k) {
            const uint64_t v = r.U64();
            good = good && v < uint64_t(kM2);
            fS2[k] = double(v);
        }
        const uint32_t idx = r.U32();
        if (!r.ok || !good || idx > uint32_t(kBlockLen)) return false;
        Generate();
        fIdx = int(idx);
        return true;
    }

private:
    double fS1[3], fS2[3];  // state at the start of the block in fOut
    int fIdx = 0;           // next element of the block
    std::unique_ptr<double[]> fOut, fTile{new double[kBlockLen]};
};

// ---------------------------------------------------------------------------
// MT19937 (Matsumoto and Nishimura 1998), seeded by init_genrand. The state
// is twisted a block of 624 words at a time and the block tempered at once.
// ---------------------------------------------------------------------------
class MT19937 final : public Engine {
public:
    static constexpr int N = 624, M = 397;
    explicit MT19937(uint32_t seed) : Engine(kMT19937) {
        fMt[0] = seed;
        for (int i = 1; i < N; ++i) fMt[i] = 1812433253u * (fMt[i - 1] ^ (fMt[i - 1] >> 30)) + uint32_t(i);
        fIdx = N;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<MT19937>(*this); }
    static inline uint32_t Mix(uint32_t a, uint32_t b, uint32_t c) {
        const uint32_t y = (a & 0x80000000u) | (b & 0x7FFFFFFFu);
        return c ^ (y >> 1) ^ ((0u - (y & 1u)) & 0x9908B0DFu);
    }
    void Twist() {
        uint32_t* mt = fMt.data();
        for (int i = 0; i < N - M; ++i) mt[i] = Mix(mt[i], mt[i + 1], mt[i + M]);
        for (int i = N - M; i < N - 1; ++i) mt[i] = Mix(mt[i], mt[i + 1], mt[i + M - N]);
        mt[N - 1] = Mix(mt[N - 1], mt[0], mt[M - 1]);
        Temper();
    }
    void Temper() {
        for (int i = 0; i < N; ++i) {
            uint32_t y = fMt[size_t(i)];
            y ^= y >> 11;
            y ^= (y << 7) & 0x9D2C5680u;
            y ^= (y << 15) & 0xEFC60000u;
            y ^= y >> 18;
            fOut[size_t(i)] = y;
        }
        fIdx = 0;
    }
    int Bits(uint32_t* r, int64_t n) override {
        return DrainBlocks(fIdx, N, fOut.data(), [this] { Twist(); }, r, n, CopyWords);
    }
    int Uniform(double* r, int64_t n) override {
        return DrainBlocks(fIdx, N, fOut.data(), [this] { Twist(); }, r, n, U32ToUnit);
    }
    bool Full32() const override { return true; }
    // The 624 words from the next output on, and one step of the recurrence.
    struct Window {
        uint32_t w[N];
        int h = 0;
        void Clear() { std::fill(w, w + N, 0u); }
        void Step() {
            const int h1 = h + 1 == N ? 0 : h + 1, hm = h + M < N ? h + M : h + M - N;
            w[h] = Mix(w[h], w[h1], w[hm]);
            h = h1;
        }
        void Xor(const Window& o) {
            for (int k = 0, i = h, j = o.h; k < N; ++k) {
                w[i] ^= o.w[j];
                if (++i == N) i = 0;
                if (++j == N) j = 0;
            }
        }
        int Bit0() const { return int(w[h] & 1u); }
    };
    int Skip(uint64_t n) override {
        if (n > kJumpFrom) {
            static const jump::Poly poly = jump::StepPolynomial<Window>(
                [](Window& w) {
                    uint64_t x = 0x9E3779B97F4A7C15ull;
                    for (uint32_t& v : w.w) v = uint32_t((x = x * 6364136223846793005ull + 1442695040888963407ull) >> 32);
                },
                N * 32);
            Window win;
            std::copy(fMt.begin(), fMt.end(), win.w);
            for (int i = 0; i < fIdx; ++i) win.Step();
            const Window to = jump::Apply(jump::PowModT(n, poly), win);
            for (int k = 0; k < N; ++k) fMt[size_t(k)] = to.w[(to.h + k) % N];
            Temper();
            fIdx = 0;
            return kOk;
        }
        while (n > 0) {
            if (fIdx >= N) Twist();
            const uint64_t m = std::min<uint64_t>(n, uint64_t(N - fIdx));
            fIdx += int(m);
            n -= m;
        }
        return kOk;
    }
    void Save(StateWriter& w) const override {
        w.U32(uint32_t(fIdx));
        for (uint32_t v : fMt) w.U32(v);
        for (uint32_t v : fOut) w.U32(v);
    }
    bool Load(StateReader& r) override {
        fIdx = int(r.U32());
        for (uint32_t& v : fMt) v = r.U32();
        for (uint32_t& v : fOut) v = r.U32();
        return r.ok && fIdx >= 0 && fIdx <= N;
    }

private:
    std::array<uint32_t, N> fMt{}, fOut{};
    int fIdx = N;
};

// ---------------------------------------------------------------------------
// SFMT19937 (Saito and Matsumoto 2006): 156 words of 128 bits, parameters
// POS1 122, SL1 18, SL2 1 (bytes), SR1 11, SR2 1 (bytes), with
// init_gen_rand seeding and period certification.
// ---------------------------------------------------------------------------
class SFMT19937 final : public Engine {
public:
    static constexpr int N = 156, N32 = 624, POS1 = 122, SL1 = 18, SR1 = 11;
    static constexpr uint32_t kMsk[4] = {0xdfffffefu, 0xddfecb7fu, 0xbffaffffu, 0xbffffff6u};
    static constexpr uint32_t kParity[4] = {0x00000001u, 0x00000000u, 0x00000000u, 0x13c9e684u};
    explicit SFMT19937(uint32_t seed) : Engine(kSFMT19937) {
        uint32_t* p = fState.data();
        p[0] = seed;
        for (int i = 1; i < N32; ++i) p[i] = 1812433253u * (p[i - 1] ^ (p[i - 1] >> 30)) + uint32_t(i);
        Certify();
        fIdx = N32;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<SFMT19937>(*this); }
    void Certify() {
        uint32_t* p = fState.data();
        uint32_t inner = 0;
        for (int i = 0; i < 4; ++i) inner ^= p[i] & kParity[i];
        for (int i = 16; i > 0; i >>= 1) inner ^= inner >> i;
        if (inner & 1) return;
        for (int i = 0; i < 4; ++i) {
            uint32_t work = 1;
            for (int j = 0; j < 32; ++j, work <<= 1)
                if (work & kParity[i]) {
                    p[i] ^= work;
                    return;
                }
        }
    }
    void GenAll() {
        __m128i* s = reinterpret_cast<__m128i*>(fState.data());
        __m128i r1 = _mm_load_si128(s + N - 2), r2 = _mm_load_si128(s + N - 1);
        auto rec = [&](int i, int j) {
            const __m128i r = Rec(_mm_load_si128(s + i), _mm_load_si128(s + j), r1, r2);
            _mm_store_si128(s + i, r);
            r1 = r2;
            r2 = r;
        };
        int i = 0;
        for (; i < N - POS1; ++i) rec(i, i + POS1);
        for (; i < N; ++i) rec(i, i + POS1 - N);
        fIdx = 0;
    }
    int Bits(uint32_t* r, int64_t n) override {
        return DrainBlocks(fIdx, N32, fState.data(), [this] { GenAll(); }, r, n, CopyWords);
    }
    int Uniform(double* r, int64_t n) override {
        return DrainBlocks(fIdx, N32, fState.data(), [this] { GenAll(); }, r, n, U32ToUnit);
    }
    bool Full32() const override { return true; }
    static __m128i Rec(__m128i a, __m128i b, __m128i r1, __m128i r2) {
        const __m128i mask = _mm_set_epi32(int(kMsk[3]), int(kMsk[2]), int(kMsk[1]), int(kMsk[0]));
        __m128i r = _mm_xor_si128(a, _mm_slli_si128(a, 1));
        r = _mm_xor_si128(r, _mm_and_si128(_mm_srli_epi32(b, SR1), mask));
        r = _mm_xor_si128(r, _mm_srli_si128(r1, 1));
        return _mm_xor_si128(r, _mm_slli_epi32(r2, SL1));
    }
    // The 156 words of 128 bits from the next output on; one step makes one
    // word, four elements.
    struct Window {
        alignas(16) uint32_t w[N][4];
        int h = 0;
        void Clear() { std::fill(&w[0][0], &w[0][0] + 4 * N, 0u); }
        __m128i At(int k) const { return _mm_load_si128(reinterpret_cast<const __m128i*>(w[k])); }
        void Step() {
            auto at = [this](int k) { return At(h + k < N ? h + k : h + k - N); };
            const __m128i r = Rec(At(h), at(POS1), at(N - 2), at(N - 1));
            _mm_store_si128(reinterpret_cast<__m128i*>(w[h]), r);
            h = h + 1 == N ? 0 : h + 1;
        }
        void Xor(const Window& o) {
            for (int k = 0, i = h, j = o.h; k < N; ++k) {
                for (int q = 0; q < 4; ++q) w[i][q] ^= o.w[j][q];
                if (++i == N) i = 0;
                if (++j == N) j = 0;
            }
        }
        int Bit0() const { return int(w[h][0] & 1u); }
    };
    int Skip(uint64_t n) override {
        uint32_t drop[4];
        if (n > kJumpFrom) {
            if (fIdx >= N32) GenAll();
            const int lead = (4 - (fIdx & 3)) & 3;  // to a word boundary
            Bits(drop, lead);
            n -= uint64_t(lead);
            static const jump::Poly poly = jump::StepPolynomial<Window>(
                [](Window& w) {
                    uint64_t x = 0xD1B54A32D192ED03ull;
                    for (int k = 0; k < N; ++k)
                        for (uint32_t& v : w.w[k]) v = uint32_t((x = x * 6364136223846793005ull + 1442695040888963407ull) >> 32);
                },
                N32 * 32);
            Window win;
            std::memcpy(win.w, fState.data(), sizeof win.w);
            for (int i = 0; i < fIdx / 4; ++i) win.Step();
            const Window to = jump::Apply(jump::PowModT(n / 4, poly), win);
            for (int k = 0; k < N; ++k) std::memcpy(fState.data() + 4 * k, to.w[(to.h + k) % N], 16);
            fIdx = 0;
            n %= 4;
        }
        while (n > 0) {
            if (fIdx >= N32) GenAll();
            const uint64_t m = std::min<uint64_t>(n, uint64_t(N32 - fIdx));
            fIdx += int(m);
            n -= m;
        }
        return kOk;
    }
    void Save(StateWriter& w) const override {
        w.U32(uint32_t(fIdx));
        for (uint32_t v : fState) w.U32(v);
    }
    bool Load(StateReader& r) override {
        fIdx = int(r.U32());
        for (uint32_t& v : fState) v = r.U32();
        return r.ok && fIdx >= 0 && fIdx <= N32;
    }

private:
    alignas(16) std::array<uint32_t, N32> fState{};
    int fIdx = N32;
};

// ---------------------------------------------------------------------------
// Counter-based generators: element e is word (e mod 4) of the block function
// applied to the 128-bit counter e / 4. Any element can be computed directly,
// so skip-ahead moves the element index, and leapfrog gives the index a
// stride. The key comes from the seed, the counter starts at zero.
// ---------------------------------------------------------------------------
using u128 = unsigned __int128;

class CounterEngine : public Engine {
public:
    using Engine::Engine;
    // nb consecutive blocks from counter (lo, hi), 4 words each, into out.
    virtual void Blocks(uint64_t lo, uint64_t hi, int64_t nb, uint32_t* out) const = 0;
    uint32_t At(u128 e) const {
        const u128 c = e >> 2;
        uint32_t w[4];
        Blocks(uint64_t(c), uint64_t(c >> 64), 1, w);
        return w[unsigned(e) & 3];
    }
    int Bits(uint32_t* r, int64_t n) override {
        if (fStride != 1) {
            for (int64_t i = 0; i < n; ++i, fNext += fStride) r[i] = At(fNext);
            return kOk;
        }
        uint32_t w[4];
        if ((unsigned(fNext) & 3) && n > 0) {  // rest of a started block
            const u128 c = fNext >> 2;
            Blocks(uint64_t(c), uint64_t(c >> 64), 1, w);
            const int off = int(unsigned(fNext) & 3), m = int(std::min<int64_t>(n, 4 - off));
            std::memcpy(r, w + off, size_t(m) * 4);
            r += m;
            n -= m;
            fNext += unsigned(m);
        }
        const int64_t nb = n / 4;
        if (nb > 0) {
            const u128 c = fNext >> 2;
            Blocks(uint64_t(c), uint64_t(c >> 64), nb, r);
            r += 4 * nb;
            n -= 4 * nb;
            fNext += u128(nb) * 4;
        }
        if (n > 0) {
            const u128 c = fNext >> 2;
            Blocks(uint64_t(c), uint64_t(c >> 64), 1, w);
            std::memcpy(r, w, size_t(n) * 4);
            fNext += unsigned(n);
        }
        return kOk;
    }
    int Uniform(double* r, int64_t n) override {
        uint32_t buf[kChunk];
        while (n > 0) {
            const int64_t m = std::min<int64_t>(n, kChunk);
            Bits(buf, m);
            U32ToUnit(buf, r, m);
            r += m;
            n -= m;
        }
        return kOk;
    }
    bool Full32() const override { return true; }
    int Skip(uint64_t n) override {
        fNext += u128(n) * fStride;
        return kOk;
    }
    int Leapfrog(uint64_t k, uint64_t ns) override {
        fNext += u128(k) * fStride;
        fStride *= ns;
        return kOk;
    }
    void SaveCounter(StateWriter& w) const {
        w.U64(uint64_t(fNext));
        w.U64(uint64_t(fNext >> 64));
        w.U64(uint64_t(fStride));
        w.U64(uint64_t(fStride >> 64));
    }
    void LoadCounter(StateReader& r) {
        const uint64_t a = r.U64(), b = r.U64(), c = r.U64(), d = r.U64();
        fNext = u128(b) << 64 | a;
        fStride = u128(d) << 64 | c;
    }

protected:
    u128 fNext = 0;    // index of the next element
    u128 fStride = 1;  // distance between elements of this stream
};

// Philox4x32-10 (Salmon et al. 2011), as Random123 defines it.
constexpr uint32_t kPhM0 = 0xD2511F53u, kPhM1 = 0xCD9E8D57u, kPhW0 = 0x9E3779B9u, kPhW1 = 0xBB67AE85u;
constexpr int kPhLanes = 16;

// Blocks in lanes: the counters of 16 blocks side by side, ten rounds over
// all of them, then the words interleaved into the output.
__attribute__((target_clones("avx512f", "avx2", "default"))) void PhiloxLanes(uint64_t lo, uint64_t hi,
                                                                               int64_t nb, uint32_t k0,
                                                                               uint32_t k1, uint32_t* out) {
    int64_t g = 0;
    for (; g + kPhLanes <= nb; g += kPhLanes) {
        uint32_t c0[kPhLanes], c1[kPhLanes], c2[kPhLanes], c3[kPhLanes];
        for (int l = 0; l < kPhLanes; ++l) {
            const uint64_t c = lo + uint64_t(g + l);
            const uint64_t h = hi + (c < lo ? 1 : 0);
            c0[l] = uint32_t(c);
            c1[l] = uint32_t(c >> 32);
            c2[l] = uint32_t(h);
            c3[l] = uint32_t(h >> 32);
        }
        uint32_t a = k0, b = k1;
        for (int round = 0; round < 10; ++round) {
            for (int l = 0; l < kPhLanes; ++l) {
                const uint64_t p0 = uint64_t(kPhM0) * c0[l], p1 = uint64_t(kPhM1) * c2[l];
                const uint32_t n0 = uint32_t(p1 >> 32) ^ c1[l] ^ a, n2 = uint32_t(p0 >> 32) ^ c3[l] ^ b;
                c1[l] = uint32_t(p1);
                c3[l] = uint32_t(p0);
                c0[l] = n0;
                c2[l] = n2;
            }
            a += kPhW0;
            b += kPhW1;
        }
        uint32_t* o = out + 4 * g;
        for (int l = 0; l < kPhLanes; ++l) {
            o[4 * l] = c0[l];
            o[4 * l + 1] = c1[l];
            o[4 * l + 2] = c2[l];
            o[4 * l + 3] = c3[l];
        }
    }
    for (; g < nb; ++g) {
        const uint64_t c = lo + uint64_t(g), h = hi + (c < lo ? 1 : 0);
        const uint32_t ctr[4] = {uint32_t(c), uint32_t(c >> 32), uint32_t(h), uint32_t(h >> 32)};
        const uint32_t key[2] = {k0, k1};
        Philox4x32x10(ctr, key, out + 4 * g);
    }
}

// AVX-512: the 16 blocks of a group in four registers of 16 words, the
// 32 x 32 -> 64-bit products of even and odd lanes merged back, and the
// result transposed into block order. Groups whose 16 counters would carry
// out of the low counter word go through the scalar function.
// g++ 12 flags the undefined upper halves inside the intrinsics' own headers.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
__attribute__((target("avx512f"))) void PhiloxAvx512(uint64_t lo, uint64_t hi, int64_t nb, uint32_t k0, uint32_t k1,
                                                     uint32_t* out) {
    const __m512i m0 = _mm512_set1_epi64(kPhM0), m1 = _mm512_set1_epi64(kPhM1);
    const __m512i idx = _mm512_set_epi32(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
    int64_t g = 0;
    for (; g + 16 <= nb; g += 16) {
        const uint64_t c = lo + uint64_t(g), h = hi + (c < lo ? 1 : 0);
        uint32_t* o = out + 4 * g;
        if (uint32_t(c) > 0xFFFFFFFFu - 15) {
            for (int l = 0; l < 16; ++l) {
                const uint64_t cl = c + uint64_t(l), hl = h + (cl < c ? 1 : 0);
                const uint32_t ctr[4] = {uint32_t(cl), uint32_t(cl >> 32), uint32_t(hl), uint32_t(hl >> 32)};
                const uint32_t key[2] = {k0, k1};
                Philox4x32x10(ctr, key, o + 4 * l);
            }
            continue;
        }
        __m512i c0 = _mm512_add_epi32(_mm512_set1_epi32(int(uint32_t(c))), idx);
        __m512i c1 = _mm512_set1_epi32(int(uint32_t(c >> 32)));
        __m512i c2 = _mm512_set1_epi32(int(uint32_t(h)));
        __m512i c3 = _mm512_set1_epi32(int(uint32_t(h >> 32)));
        uint32_t a = k0, b = k1;
        for (int r = 0; r < 10; ++r) {
            const __m512i ka = _mm512_set1_epi32(int(a)), kb = _mm512_set1_epi32(int(b));
            const __m512i pe0 = _mm512_mul_epu32(c0, m0), po0 = _mm512_mul_epu32(_mm512_srli_epi64(c0, 32), m0);
            const __m512i pe1 = _mm512_mul_epu32(c2, m1), po1 = _mm512_mul_epu32(_mm512_srli_epi64(c2, 32), m1);
            const __m512i hi0 = _mm512_mask_blend_epi32(0xAAAA, _mm512_srli_epi64(pe0, 32), po0);
            const __m512i lo0 = _mm512_mask_blend_epi32(0xAAAA, pe0, _mm512_slli_epi64(po0, 32));
            const __m512i hi1 = _mm512_mask_blend_epi32(0xAAAA, _mm512_srli_epi64(pe1, 32), po1);
            const __m512i lo1 = _mm512_mask_blend_epi32(0xAAAA, pe1, _mm512_slli_epi64(po1, 32));
            c0 = _mm512_ternarylogic_epi32(hi1, c1, ka, 0x96);
            c2 = _mm512_ternarylogic_epi32(hi0, c3, kb, 0x96);
            c1 = lo1;
            c3 = lo0;
            a += kPhW0;
            b += kPhW1;
        }
        const __m512i t0 = _mm512_unpacklo_epi32(c0, c1), t1 = _mm512_unpackhi_epi32(c0, c1);
        const __m512i t2 = _mm512_unpacklo_epi32(c2, c3), t3 = _mm512_unpackhi_epi32(c2, c3);
        const __m512i u0 = _mm512_unpacklo_epi64(t0, t2), u1 = _mm512_unpackhi_epi64(t0, t2);
        const __m512i u2 = _mm512_unpacklo_epi64(t1, t3), u3 = _mm512_unpackhi_epi64(t1, t3);
        const __m512i v0 = _mm512_shuffle_i64x2(u0, u1, 0x44), v1 = _mm512_shuffle_i64x2(u2, u3, 0x44);
        const __m512i v2 = _mm512_shuffle_i64x2(u0, u1, 0xEE), v3 = _mm512_shuffle_i64x2(u2, u3, 0xEE);
        _mm512_storeu_si512(o, _mm512_shuffle_i64x2(v0, v1, 0x88));
        _mm512_storeu_si512(o + 16, _mm512_shuffle_i64x2(v0, v1, 0xDD));
        _mm512_storeu_si512(o + 32, _mm512_shuffle_i64x2(v2, v3, 0x88));
        _mm512_storeu_si512(o + 48, _mm512_shuffle_i64x2(v2, v3, 0xDD));
    }
    if (g < nb) PhiloxLanes(lo + uint64_t(g), hi + (lo + uint64_t(g) < lo ? 1 : 0), nb - g, k0, k1, out + 4 * g);
}
#pragma GCC diagnostic pop

bool CpuHasAvx512() {
    return CpuFeatures().avx512f;
}

class Philox final : public CounterEngine {
public:
    explicit Philox(const uint32_t* s, int ns) : CounterEngine(kPHILOX4X32X10) {
        fKey[0] = ns > 0 ? s[0] : 0;
        fKey[1] = ns > 1 ? s[1] : 0;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<Philox>(*this); }
    void Blocks(uint64_t lo, uint64_t hi, int64_t nb, uint32_t* out) const override {
        if (CpuHasAvx512())
            PhiloxAvx512(lo, hi, nb, fKey[0], fKey[1], out);
        else
            PhiloxLanes(lo, hi, nb, fKey[0], fKey[1], out);
    }
    void Save(StateWriter& w) const override {
        w.U32(fKey[0]);
        w.U32(fKey[1]);
        SaveCounter(w);
    }
    bool Load(StateReader& r) override {
        fKey[0] = r.U32();
        fKey[1] = r.U32();
        LoadCounter(r);
        return r.ok && fStride != 0;
    }

private:
    uint32_t fKey[2];
};

// ---------------------------------------------------------------------------
// ARS-5 (Salmon et al. 2011): the counter xor the key, four AES rounds and a
// last round, the round key advanced by a Weyl constant in each 64-bit half.
// AES-NI where the processor has it, else a portable AES round that gives the
// same bits.
// ---------------------------------------------------------------------------
std::array<uint8_t, 256> MakeSbox() {
    std::array<uint8_t, 256> s{};
    auto mul = [](uint8_t a, uint8_t b) {
        uint8_t p = 0;
        for (int i = 0; i < 8; ++i) {
            if (b & 1) p ^= a;
            const bool hi = a & 0x80;
            a = uint8_t(a << 1);
            if (hi) a ^= 0x1B;
            b >>= 1;
        }
        return p;
    };
    for (int x = 0; x < 256; ++x) {
        uint8_t inv = 0;
        if (x) {  // x^254 is the inverse in GF(2^8)
            uint8_t r = 1, b = uint8_t(x);
            for (int e = 254; e; e >>= 1) {
                if (e & 1) r = mul(r, b);
                b = mul(b, b);
            }
            inv = r;
        }
        auto rotl = [](uint8_t v, int k) { return uint8_t((v << k) | (v >> (8 - k))); };
        s[size_t(x)] = uint8_t(inv ^ rotl(inv, 1) ^ rotl(inv, 2) ^ rotl(inv, 3) ^ rotl(inv, 4) ^ 0x63);
    }
    return s;
}
const std::array<uint8_t, 256>& Sbox() {
    static const std::array<uint8_t, 256> s = MakeSbox();
    return s;
}
inline uint8_t XTime(uint8_t a) { return uint8_t((a << 1) ^ ((a & 0x80) ? 0x1B : 0)); }

// One AES encryption round on 16 bytes (column-major state), as AESENC and
// AESENCLAST compute it.
void AesRound(uint8_t st[16], const uint8_t rk[16], bool last) {
    const auto& S = Sbox();
    uint8_t t[16];
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r) t[r + 4 * c] = S[st[r + 4 * ((c + r) & 3)]];
    if (!last)
        for (int c = 0; c < 4; ++c) {
            uint8_t* col = t + 4 * c;
            const uint8_t a0 = col[0], a1 = col[1], a2 = col[2], a3 = col[3], all = a0 ^ a1 ^ a2 ^ a3;
            col[0] = a0 ^ all ^ XTime(a0 ^ a1);
            col[1] = a1 ^ all ^ XTime(a1 ^ a2);
            col[2] = a2 ^ all ^ XTime(a2 ^ a3);
            col[3] = a3 ^ all ^ XTime(a3 ^ a0);
        }
    for (int i = 0; i < 16; ++i) st[i] = t[i] ^ rk[i];
}

constexpr uint64_t kWeylLo = 0x9E3779B97F4A7C15ull, kWeylHi = 0xBB67AE8584CAA73Bull;

__attribute__((target("aes,sse4.1"))) void ArsBlocksNi(uint64_t lo, uint64_t hi, int64_t nb, const uint32_t key[4],
                                                       uint32_t* out) {
    const __m128i weyl = _mm_set_epi64x(int64_t(kWeylHi), int64_t(kWeylLo));
    __m128i k[6];
    k[0] = _mm_set_epi32(int(key[3]), int(key[2]), int(key[1]), int(key[0]));
    for (int i = 1; i < 6; ++i) k[i] = _mm_add_epi64(k[i - 1], weyl);
    constexpr int W = 8;
    int64_t g = 0;
    for (; g + W <= nb; g += W) {
        __m128i v[W];
        for (int l = 0; l < W; ++l) {
            const uint64_t c = lo + uint64_t(g + l), h = hi + (c < lo ? 1 : 0);
            v[l] = _mm_xor_si128(_mm_set_epi64x(int64_t(h), int64_t(c)), k[0]);
        }
        for (int r = 1; r < 5; ++r)
            for (int l = 0; l < W; ++l) v[l] = _mm_aesenc_si128(v[l], k[r]);
        for (int l = 0; l < W; ++l)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4 * (g + l)), _mm_aesenclast_si128(v[l], k[5]));
    }
    for (; g < nb; ++g) {
        const uint64_t c = lo + uint64_t(g), h = hi + (c < lo ? 1 : 0);
        __m128i v = _mm_xor_si128(_mm_set_epi64x(int64_t(h), int64_t(c)), k[0]);
        for (int r = 1; r < 5; ++r) v = _mm_aesenc_si128(v, k[r]);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4 * g), _mm_aesenclast_si128(v, k[5]));
    }
}

void ArsBlocksPortable(uint64_t lo, uint64_t hi, int64_t nb, const uint32_t key[4], uint32_t* out) {
    uint64_t k[6][2];
    k[0][0] = uint64_t(key[0]) | uint64_t(key[1]) << 32;
    k[0][1] = uint64_t(key[2]) | uint64_t(key[3]) << 32;
    for (int i = 1; i < 6; ++i) {
        k[i][0] = k[i - 1][0] + kWeylLo;
        k[i][1] = k[i - 1][1] + kWeylHi;
    }
    uint8_t kb[6][16];
    for (int i = 0; i < 6; ++i)
        for (int b = 0; b < 16; ++b) kb[i][b] = uint8_t(k[i][b / 8] >> (8 * (b % 8)));
    for (int64_t g = 0; g < nb; ++g) {
        const uint64_t c = lo + uint64_t(g), h = hi + (c < lo ? 1 : 0);
        uint8_t st[16];
        for (int b = 0; b < 16; ++b) st[b] = uint8_t((b < 8 ? c : h) >> (8 * (b % 8))) ^ kb[0][b];
        for (int r = 1; r < 5; ++r) AesRound(st, kb[r], false);
        AesRound(st, kb[5], true);
        for (int w = 0; w < 4; ++w)
            out[4 * g + w] = uint32_t(st[4 * w]) | uint32_t(st[4 * w + 1]) << 8 | uint32_t(st[4 * w + 2]) << 16 |
                             uint32_t(st[4 * w + 3]) << 24;
    }
}

class Ars5 final : public CounterEngine {
public:
    explicit Ars5(const uint32_t* s, int ns) : CounterEngine(kARS5), fNi(CpuHasAes()) {
        for (int i = 0; i < 4; ++i) fKey[i] = i < ns ? s[i] : 0;
    }
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<Ars5>(*this); }
    void Blocks(uint64_t lo, uint64_t hi, int64_t nb, uint32_t* out) const override {
        if (fNi)
            ArsBlocksNi(lo, hi, nb, fKey, out);
        else
            ArsBlocksPortable(lo, hi, nb, fKey, out);
    }
    void Save(StateWriter& w) const override {
        for (uint32_t k : fKey) w.U32(k);
        SaveCounter(w);
    }
    bool Load(StateReader& r) override {
        for (uint32_t& k : fKey) k = r.U32();
        LoadCounter(r);
        return r.ok && fStride != 0;
    }

private:
    uint32_t fKey[4];
    bool fNi;
};

// ---------------------------------------------------------------------------
// The processor's non-deterministic source (RDRAND), ten tries per word.
// ---------------------------------------------------------------------------
bool CpuHasRdrand() {
    unsigned a, b, c, d;
    return __get_cpuid(1, &a, &b, &c, &d) && (c & (1u << 30));
}
__attribute__((target("rdrnd"))) bool Rdrand32(uint32_t& v) {
    unsigned int x;
    for (int t = 0; t < 10; ++t)
        if (_rdrand32_step(&x)) {
            v = x;
            return true;
        }
    return false;
}

class Nondeterm final : public Engine {
public:
    Nondeterm() : Engine(kNONDETERM) {}
    std::unique_ptr<Engine> Clone() const override { return std::make_unique<Nondeterm>(*this); }
    int Bits(uint32_t* r, int64_t n) override {
        for (int64_t i = 0; i < n; ++i)
            if (!Rdrand32(r[i])) return kErrNondetermRetries;
        return kOk;
    }
    int Uniform(double* r, int64_t n) override { return UniformFromBits(*this, r, n); }
    bool Full32() const override { return true; }
    void Save(StateWriter&) const override {}
    bool Load(StateReader&) override { return true; }
};

}  // namespace

void Philox4x32x10(const uint32_t ctr[4], const uint32_t key[2], uint32_t out[4]) {
    uint32_t c0 = ctr[0], c1 = ctr[1], c2 = ctr[2], c3 = ctr[3], a = key[0], b = key[1];
    for (int round = 0; round < 10; ++round) {
        const uint64_t p0 = uint64_t(kPhM0) * c0, p1 = uint64_t(kPhM1) * c2;
        const uint32_t n0 = uint32_t(p1 >> 32) ^ c1 ^ a, n2 = uint32_t(p0 >> 32) ^ c3 ^ b;
        c1 = uint32_t(p1);
        c3 = uint32_t(p0);
        c0 = n0;
        c2 = n2;
        a += kPhW0;
        b += kPhW1;
    }
    out[0] = c0;
    out[1] = c1;
    out[2] = c2;
    out[3] = c3;
}

void Ars5Portable(const uint32_t ctr[4], const uint32_t key[4], uint32_t out[4]) {
    ArsBlocksPortable(uint64_t(ctr[0]) | uint64_t(ctr[1]) << 32, uint64_t(ctr[2]) | uint64_t(ctr[3]) << 32, 1, key,
                      out);
}
bool Ars5Hardware(const uint32_t ctr[4], const uint32_t key[4], uint32_t out[4]) {
    if (!CpuHasAes()) return false;
    ArsBlocksNi(uint64_t(ctr[0]) | uint64_t(ctr[1]) << 32, uint64_t(ctr[2]) | uint64_t(ctr[3]) << 32, 1, key, out);
    return true;
}
bool CpuHasAes() {
    unsigned a, b, c, d;
    return __get_cpuid(1, &a, &b, &c, &d) && (c & (1u << 25)) && (c & (1u << 19));
}

int NewEngine(int32_t code, const uint32_t* seeds, int nseeds, std::unique_ptr<Engine>& out) {
    const uint32_t seed = nseeds > 0 ? seeds[0] : 1;
    switch (code) {
        case kMCG31: out = std::make_unique<MCG31>(seed); return kOk;
        case kR250: out = std::make_unique<R250>(seed); return kOk;
        case kMRG32K3A: out = std::make_unique<MRG32k3a>(seeds, nseeds); return kOk;
        case kMCG59: out = std::make_unique<MCG59>(seed); return kOk;
        case kWH: out = std::make_unique<WH>(seeds, nseeds); return kOk;
        case kSOBOL: return NewSobol(seed, out);
        case kNIEDERR: return NewNiederr(seed, out);
        case kMT19937: out = std::make_unique<MT19937>(seed); return kOk;
        case kSFMT19937: out = std::make_unique<SFMT19937>(seed); return kOk;
        case kNONDETERM:
            if (!CpuHasRdrand()) return kErrNondetermUnsupported;
            out = std::make_unique<Nondeterm>();
            return kOk;
        case kARS5: out = std::make_unique<Ars5>(seeds, nseeds); return kOk;
        case kPHILOX4X32X10: out = std::make_unique<Philox>(seeds, nseeds); return kOk;
        default: return kErrInvalidBrng;
    }
}

}  // namespace rovane::rng
