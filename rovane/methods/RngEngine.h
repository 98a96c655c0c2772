// Basic random generators behind TRngStream: the library's internal engine
// interface. Not part of the public interface; rovane/Rovane.h does not
// include it.
//
// Every engine yields a sequence of elements. One element is one output of
// the generator: one uniform double, or one raw integer. Skip-ahead and
// leapfrog count these elements, so a stream split by either method and
// filled through any distribution consumes the parent's elements in order.
//
// Status codes follow the statistics library's numbering, so that the stream
// class maps them to its texts in one place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rovane/scalars/Export.h"

namespace rovane::rng {

enum : int {
    kOk = 0,
    kErrBadArgs = -3,
    kErrMemFailure = -4,
    kErrNullPtr = -5,
    kErrInvalidBrng = -1000,
    kErrLeapfrogUnsupported = -1002,
    kErrSkipUnsupported = -1003,
    kErrIncompatible = -1005,
    kErrBadStream = -1006,
    kErrQrngPeriod = -1012,
    kErrNondetermUnsupported = -1130,
    kErrNondetermRetries = -1131,
    kErrArs5Unsupported = -1140,
    kErrBadMemFormat = -1200,
    kErrMultinomialProb = -1400,
};

// Generator codes: the position of the generator in TBasicRandomGenerator
// plus one, times 0x100000.
enum : int32_t {
    kMCG31 = 0x100000,
    kR250 = 0x200000,
    kMRG32K3A = 0x300000,
    kMCG59 = 0x400000,
    kWH = 0x500000,
    kSOBOL = 0x600000,
    kNIEDERR = 0x700000,
    kMT19937 = 0x800000,
    kMT2203 = 0x900000,
    kIABSTRACT = 0xA00000,
    kDABSTRACT = 0xB00000,
    kSABSTRACT = 0xC00000,
    kSFMT19937 = 0xD00000,
    kNONDETERM = 0xE00000,
    kARS5 = 0xF00000,
    kPHILOX4X32X10 = 0x1000000,
};

// Byte writer and reader of a saved state: little-endian fields.
struct StateWriter {
    std::vector<uint8_t>& out;
    void U32(uint32_t v) {
        for (int i = 0; i < 4; ++i) out.push_back(uint8_t(v >> (8 * i)));
    }
    void U64(uint64_t v) {
        U32(uint32_t(v));
        U32(uint32_t(v >> 32));
    }
    void F64(double v);
};
struct StateReader {
    const uint8_t* p;
    size_t n;
    bool ok = true;
    uint32_t U32() {
        if (n < 4) {
            ok = false;
            return 0;
        }
        uint32_t v = uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
        p += 4;
        n -= 4;
        return v;
    }
    uint64_t U64() {
        uint64_t lo = U32();
        return lo | uint64_t(U32()) << 32;
    }
    double F64();
};

class Engine {
public:
    explicit Engine(int32_t code) : fCode(code) {}
    virtual ~Engine() = default;
    int32_t Code() const { return fCode; }
    virtual std::unique_ptr<Engine> Clone() const = 0;

    // The next n elements as uniform doubles on [0, 1).
    virtual int Uniform(double* r, int64_t n) = 0;
    // The next n elements as the generator's raw integer output.
    virtual int Bits(uint32_t* r, int64_t n) = 0;
    // True when Bits gives 32 uniformly distributed bits per element.
    virtual bool Full32() const { return false; }
    // Half the spacing of the values Uniform can give: adding it to a draw
    // moves it into the open interval (0, 1) without bias.
    virtual double HalfStep() const { return 0x1p-33; }

    virtual int Skip(uint64_t n) {
        (void)n;
        return kErrSkipUnsupported;
    }
    virtual int Leapfrog(uint64_t k, uint64_t nstreams) {
        (void)k;
        (void)nstreams;
        return kErrLeapfrogUnsupported;
    }
    virtual void Save(StateWriter& w) const = 0;
    virtual bool Load(StateReader& r) = 0;

protected:
    int32_t fCode;
};

// A new engine for a code and its seeds, or a negative status.
int NewEngine(int32_t code, const uint32_t* seeds, int nseeds, std::unique_ptr<Engine>& out);

// The block functions of the counter-based generators, exposed for the tests
// of the portable AES round against the processor's instruction.
ROVANE_API void Philox4x32x10(const uint32_t ctr[4], const uint32_t key[2], uint32_t out[4]);
ROVANE_API void Ars5Portable(const uint32_t ctr[4], const uint32_t key[4], uint32_t out[4]);
ROVANE_API bool Ars5Hardware(const uint32_t ctr[4], const uint32_t key[4], uint32_t out[4]);  // false without AES-NI
ROVANE_API bool CpuHasAes();

// Largest dimension of the quasi-random generators.
constexpr int kSobolMaxDim = 21;
constexpr int kNiederrMaxDim = 318;

}  // namespace rovane::rng

namespace rovane::rng {

// ---- Distributions over an engine (RngDistributions.cpp). Each returns a
// status: kOk, kErrBadArgs for a parameter outside its domain, or the
// engine's own failure. Continuous fills write doubles; the stream class
// rounds them for single-precision destinations.
class USrc;
int FillUniform(USrc& s, double* r, int64_t n, double a, double b);
int FillGaussian(USrc& s, double* r, int64_t n, double mean, double sigma, int method);
int FillExponential(USrc& s, double* r, int64_t n, double disp, double beta);
int FillLaplace(USrc& s, double* r, int64_t n, double a, double b);
int FillWeibull(USrc& s, double* r, int64_t n, double alpha, double a, double b);
int FillCauchy(USrc& s, double* r, int64_t n, double a, double b);
int FillRayleigh(USrc& s, double* r, int64_t n, double a, double b);
int FillLogNormal(USrc& s, double* r, int64_t n, double a, double sigma, double b, double beta);
int FillGumbel(USrc& s, double* r, int64_t n, double a, double b);
int FillGamma(USrc& s, double* r, int64_t n, double alpha, double a, double b);
int FillBeta(USrc& s, double* r, int64_t n, double p, double q, double a, double beta);

int FillUniformI(USrc& s, int32_t* r, int64_t n, int32_t a, int32_t b);
int FillBits32(USrc& s, uint32_t* r, int64_t n);
int FillBernoulli(USrc& s, int32_t* r, int64_t n, double p);
int FillGeometric(USrc& s, int32_t* r, int64_t n, double p);
int FillBinomial(USrc& s, int32_t* r, int64_t n, int32_t ntrial, double p);
int FillHypergeometric(USrc& s, int32_t* r, int64_t n, int32_t l, int32_t ss, int32_t m);
int FillPoisson(USrc& s, int32_t* r, int64_t n, double lambda, int method);
int FillPoissonV(USrc& s, int32_t* r, int64_t n, const double* lambdas);
int FillNegbinomial(USrc& s, int32_t* r, int64_t n, double a, double p);
int FillMultinomial(USrc& s, int32_t* r, int64_t nvec, int32_t ntrial, int32_t k, const double* p);
// Rows of d values: mean + T z with T lower triangular (row-major d x d).
int FillGaussianMV(USrc& s, double* r, int64_t rows, int d, const double* mean, const double* t, int method);

// Uniform numbers from an engine, for distributions that take them one at a
// time. Read-ahead stays inside one fill: a fill makes its own source, so the
// next fill starts at the element after the last one this source read.
class USrc {
public:
    explicit USrc(Engine& e) : fE(e) {}
    Engine& engine() { return fE; }
    int status() const { return fStatus; }
    double Next() {
        if (fPos == fLen) Refill();
        return fBuf[fPos++];
    }
    // The next draw moved into the open interval (0, 1).
    double NextOpen() { return Open(Next()); }
    double Open(double u) const {
        const double v = u + fE.HalfStep();
        return v < 1.0 ? v : 0x1.fffffffffffffp-1;
    }
    // n draws in a row: the buffered ones first, then straight from the engine.
    void Take(double* r, int64_t n);

private:
    void Refill();
    Engine& fE;
    double fBuf[256];
    int fPos = 0, fLen = 0;
    int fStatus = kOk;
};

}  // namespace rovane::rng
