// Random number streams: TRngStream wraps one basic generator and fills
// containers from its distributions; TRandomGenerator holds a set of streams
// that are independent of each other, one per thread.
//
// Every basic generator yields a sequence of elements; one element is one
// output of the generator (one uniform number, or one raw integer). Fills
// consume elements in order, skip-ahead and leapfrog count them. The state of
// a stream can be saved and loaded, so that a run can go on where it stopped.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "rovane/scalars/Export.h"

namespace rovane {

class TRovane;
class TMtx;
class TVec;
class TRovaneInt;

// The basic generators; the code of a generator is its position plus one,
// times 0x100000.
enum TBasicRandomGenerator : int32_t {
    rgMCG31,
    rgR250,
    rgMRG32K3A,
    rgMCG59,
    rgWH,
    rgSOBOL,
    rgNIEDERR,
    rgMT19937,
    rgMT2203,
    rgIAbstract,
    rgDAbstract,
    rgSAbstract,
    rgSFMT19937,
    rgNONDETERM,
    rgARS5,
    rgPHILOX4X32X10
};
enum TRngStreamIndependence : int32_t { rsiNone, rsiLeapfrog, rsiBlockSplitting };
// grmBoxMuller: one normal number from each pair of uniforms; grmBoxMuller2:
// two from each pair; grmICDF: one from each uniform by the inverse
// distribution function.
enum TGaussRandMethod : int32_t { grmBoxMuller, grmBoxMuller2, grmICDF };
// prmPTPE: an exact method (rejection for large means, inversion for small);
// prmNormal: the normal approximation for means of 1 and above.
enum TPoissonRandMethod : int32_t { prmPTPE, prmNormal };

// The code of a generator: (position + 1) * 0x100000.
ROVANE_API int32_t RngCode(TBasicRandomGenerator generator);

namespace rng {
class Engine;
}

class ROVANE_API TRngStream {
public:
    // The stream's generator and state; null until NewStream.
    rng::Engine* fRngStream = nullptr;

    TRngStream();
    TRngStream(const TRngStream&) = delete;
    TRngStream& operator=(const TRngStream&) = delete;
    virtual ~TRngStream();

    // A new generator by its code (RngCode) and seed, replacing any handle.
    // For rgSOBOL and rgNIEDERR the seed is the dimension.
    void NewStream(int32_t code, uint32_t seed);
    // The same with several seeds: MRG32K3A takes its six state words,
    // WH its four, PHILOX4X32X10 its two key words and ARS5 its four.
    void NewStream(int32_t code, std::span<const uint32_t> seeds);
    void Delete();
    // A new handle with the generator and state of Src.
    void Copy(const TRngStream& src);
    // The state of Src into this stream, which must run the same generator.
    void CopyState(const TRngStream& src);
    // This stream becomes every nstreams-th element from element k.
    void Leapfrog(int32_t k, int32_t nstreams);
    // Jumps nskip elements ahead.
    void SkipAhead(int64_t nskip);
    bool Assigned() const { return fRngStream != nullptr; }
    int32_t Code() const;

    virtual void SaveToStream(std::ostream& stream) const;
    virtual void LoadFromStream(std::istream& stream);

    // ---- fills: the destination's size gives the count. Float fills write
    // both parts of complex data, in double or single by the destination.
    void RandomUniform(TRovane& dst, double a, double b);
    void RandomGaussian(TRovane& dst, double mean, double sigma, TGaussRandMethod method = grmBoxMuller2);
    // Rows of Dst are vectors of Dst.Cols values, normal with the mean vector
    // and covariance matrix Sigma (symmetric positive definite).
    void RandomGaussianMV(TMtx& dst, const TVec& mean, const TMtx& sigma, TGaussRandMethod method = grmBoxMuller2);
    void RandomExponential(TRovane& dst, double displacement, double beta);
    void RandomLaplace(TRovane& dst, double a, double b);
    void RandomWeibull(TRovane& dst, double alpha, double a, double b);
    void RandomCauchy(TRovane& dst, double a, double b);
    void RandomRayleigh(TRovane& dst, double a, double b);
    // b + beta * exp(a + sigma * z), z standard normal.
    void RandomLogNormal(TRovane& dst, double a, double sigma, double b, double beta);
    void RandomGumbel(TRovane& dst, double a, double b);
    // a + b * g, g of the gamma distribution of shape alpha.
    void RandomGamma(TRovane& dst, double alpha, double a, double b);
    // a + beta * x, x of the beta distribution with shapes p and q.
    void RandomBeta(TRovane& dst, double p, double q, double a, double beta);

    // ---- integer fills: 32-bit elements (Dst is made 32-bit).
    // Integers on [a, b).
    void RandomUniformI(TRovaneInt& dst, int32_t a, int32_t b);
    // The generator's own integer outputs.
    void RandomUniformBitsI(TRovaneInt& dst);
    void RandomUniformBits32(std::span<uint32_t> dst);
    void RandomUniformBits64(std::span<uint64_t> dst);
    void RandomBernoulli(TRovaneInt& dst, double p);
    // Failures before the first success.
    void RandomGeometric(TRovaneInt& dst, double p);
    void RandomBinomial(TRovaneInt& dst, int32_t ntrial, double p);
    // Marked items in a sample of s from a lot of l that holds m marked.
    void RandomHypergeometric(TRovaneInt& dst, int32_t l, int32_t s, int32_t m);
    void RandomPoisson(TRovaneInt& dst, double lambda, TPoissonRandMethod method = prmPTPE);
    // One mean per element.
    void RandomPoisson(TRovaneInt& dst, std::span<const double> lambdas);
    // Failures before the a-th success, a real.
    void RandomNegbinomial(TRovaneInt& dst, double a, double p);
    // Dst.Length / k vectors of k counts, each summing to ntrial.
    void RandomMultinomial(TRovaneInt& dst, int32_t ntrial, int32_t k, std::span<const double> p);

    // ---- array forms of the two main fills (no container).
    void RandomUniform(double* dst, int64_t n, double a, double b);
    void RandomGaussian(double* dst, int64_t n, double mean, double sigma, TGaussRandMethod method = grmBoxMuller2);

private:
    rng::Engine& Handle() const;
};

class ROVANE_API TRandomGenerator {
public:
    std::vector<std::unique_ptr<TRngStream>> StreamList;
    int32_t FStreamCount = 0;
    TRngStreamIndependence FStreamIndependence = rsiNone;
    int32_t FSeed = 1;
    TBasicRandomGenerator FBasicRngType = rgMCG31;
    int32_t FBlockStep = 1024;

    TRandomGenerator() = default;
    TRandomGenerator(const TRandomGenerator&) = delete;
    TRandomGenerator& operator=(const TRandomGenerator&) = delete;
    virtual ~TRandomGenerator();

    int32_t StreamCount() const { return FStreamCount; }
    void SetStreamCount(int32_t value);
    TRngStreamIndependence StreamIndependence() const { return FStreamIndependence; }
    // Takes effect at the next Init (or StreamCount).
    void SetStreamIndependence(TRngStreamIndependence value) { FStreamIndependence = value; }
    int32_t BlockStep() const { return FBlockStep; }
    void SetBlockStep(int32_t value) { FBlockStep = value; }
    int32_t Seed() const { return FSeed; }
    TBasicRandomGenerator BasicRngType() const { return FBasicRngType; }

    void Init(TBasicRandomGenerator generator, int32_t seed);
    TRngStream& Stream(int32_t i);

    virtual void SaveToStream(std::ostream& stream) const;
    virtual void LoadFromStream(std::istream& stream);
    virtual void SaveToFile(const std::string& fileName) const;
    virtual void LoadFromFile(const std::string& fileName);
};

}  // namespace rovane
