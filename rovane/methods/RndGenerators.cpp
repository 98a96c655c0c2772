// TRngStream and TRandomGenerator: handles of basic generators, their
// distribution fills into containers, stream splitting and saved state.
#include "rovane/methods/RndGenerators.h"

#include <cmath>
#include <fstream>
#include <istream>
#include <ostream>
#include <vector>

#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/Rovane.h"
#include "rovane/containers/RovaneInt.h"
#include "rovane/methods/RngEngine.h"
#include "rovane/scalars/Scalars.h"

namespace rovane {

using namespace rng;

int32_t RngCode(TBasicRandomGenerator generator) { return (int32_t(generator) + 1) * 0x100000; }

namespace {

// Saved state of one stream: a tag, the layout version, the generator code,
// then the generator's own fields, all little-endian.
constexpr uint32_t kStateTag = 0x4E525652u;  // "RVRN"
constexpr uint32_t kStateVersion = 1;
constexpr int32_t kMaxStateBytes = 1 << 20;

void StatusCheck(int code) {
    switch (code) {
        case kOk: return;
        case kErrNullPtr: ERaise("Stream is a NULL pointer.");
        case kErrBadStream: ERaise("Stream is not a valid random stream.");
        case kErrMultinomialProb: ERaise("Bad multinomial distribution probability array");
        case kErrQrngPeriod: ERaise("Period of the generator has been exceeded.");
        case -1120:
            ERaise("Callback function for an abstract BRNG returns 0 as the number of updated entries in a buffer.");
        case -1121:
            ERaise("Callback function for an abstract BRNG returns an invalid number of updated entries in a buffer, "
                   "that is, < 0 or > nmax.");
        case kErrNondetermRetries:
            ERaise("Number of retries to generate a random number by using non-deterministic random number generator "
                   "exceeds threshold.");
        case kErrArs5Unsupported:
            ERaise(" ARS-5 random number generator is not supported on the CPU running the application.");
        default: ERaiseFmt("Random generator returned unknown error: %d", code);
    }
}

void CheckNewStream(int code) {
    switch (code) {
        case kOk: return;
        case kErrInvalidBrng: ERaise("BRNG index is invalid.");
        case kErrMemFailure: ERaise("System cannot allocate memory for stream.");
        case kErrArs5Unsupported: ERaise("ARS-5 random number generator is not supported on the CPU running the application.");
        case kErrNondetermUnsupported: ERaise("Non-deterministic random number generator is not supported.");
        default: StatusCheck(code);
    }
}

void WriteI32(std::ostream& s, int32_t v) {
    char b[4];
    for (int i = 0; i < 4; ++i) b[i] = char(uint32_t(v) >> (8 * i));
    s.write(b, 4);
}
bool ReadI32(std::istream& s, int32_t& v) {
    unsigned char b[4];
    if (!s.read(reinterpret_cast<char*>(b), 4)) return false;
    v = int32_t(uint32_t(b[0]) | uint32_t(b[1]) << 8 | uint32_t(b[2]) << 16 | uint32_t(b[3]) << 24);
    return true;
}

[[noreturn]] void FormatUnknown() { ERaise("Descriptive random stream format is unknown."); }

// The real run of a float container: both parts of complex data.
template <class F>
void FloatFill(Engine& e, TRovane& dst, F fill) {
    USrc src(e);
    const int64_t n = int64_t(dst.Length()) * (dst.Complex() ? 2 : 1);
    int st = kOk;
    if (dst.IsDouble()) {
        st = fill(src, frame::RealAt<double>(dst).ptr(), n);
    } else {
        float* d = frame::RealAt<float>(dst).ptr();
        double buf[2048];
        for (int64_t i = 0; i < n && st == kOk; i += 2048) {
            const int64_t m = std::min<int64_t>(2048, n - i);
            st = fill(src, buf, m);
            for (int64_t k = 0; k < m; ++k) d[i + k] = float(buf[k]);
        }
    }
    StatusCheck(st);
}

int32_t* IntTarget(TRovaneInt& dst) {
    if (dst.IntPrecision() != prInt32) dst.Size(dst.Length(), prInt32);
    return dst.IValues;
}

// Single parameters pass through single precision, as the single routines
// take them.
double P(const TRovane& dst, double v) { return dst.IsDouble() ? v : double(ToSingle(v)); }

// A single value rounded up onto the open end b of [a, b) steps back.
void ClampSingle(TRovane& dst, double b) {
    if (dst.IsDouble()) return;
    const float fb = float(b);
    float* d = frame::RealAt<float>(dst).ptr();
    const int64_t n = int64_t(dst.Length()) * (dst.Complex() ? 2 : 1);
    const float below = std::nextafter(fb, -HUGE_VALF);
    for (int64_t i = 0; i < n; ++i)
        if (d[i] >= fb) d[i] = below;
}

}  // namespace

// ---- TRngStream --------------------------------------------------------------
TRngStream::TRngStream() = default;
TRngStream::~TRngStream() { delete fRngStream; }

Engine& TRngStream::Handle() const {
    if (!fRngStream) StatusCheck(kErrNullPtr);
    return *fRngStream;
}

int32_t TRngStream::Code() const { return fRngStream ? fRngStream->Code() : 0; }

void TRngStream::NewStream(int32_t code, uint32_t seed) { NewStream(code, std::span<const uint32_t>(&seed, 1)); }

void TRngStream::NewStream(int32_t code, std::span<const uint32_t> seeds) {
    std::unique_ptr<Engine> e;
    CheckNewStream(NewEngine(code, seeds.data(), int(std::min<size_t>(seeds.size(), 64)), e));
    delete fRngStream;
    fRngStream = e.release();
}

void TRngStream::Delete() {
    if (!fRngStream) ERaise("Stream parameter is a NULL pointer.");
    delete fRngStream;
    fRngStream = nullptr;
}

void TRngStream::Copy(const TRngStream& src) {
    if (!src.fRngStream) ERaise("Srcstream parameter is a NULL pointer.");
    if (&src == this) return;
    std::unique_ptr<Engine> e = src.fRngStream->Clone();
    delete fRngStream;
    fRngStream = e.release();
}

void TRngStream::CopyState(const TRngStream& src) {
    if (!src.fRngStream || !fRngStream) ERaise("Either srcstream or deststream is a NULL pointer.");
    if (src.fRngStream->Code() != fRngStream->Code())
        ERaise("BRNG associated with srcstream is not compatible with BRNG associated with deststream.");
    if (&src == this) return;
    std::unique_ptr<Engine> e = src.fRngStream->Clone();
    delete fRngStream;
    fRngStream = e.release();
}

void TRngStream::Leapfrog(int32_t k, int32_t nstreams) {
    int st = kErrNullPtr;
    if (fRngStream) st = (k < 0 || nstreams < 1 || k >= nstreams) ? kErrBadArgs : fRngStream->Leapfrog(uint64_t(k), uint64_t(nstreams));
    switch (st) {
        case kOk: return;
        case kErrLeapfrogUnsupported: ERaise("BRNG does not support Leapfrog method.");
        case kErrNullPtr: ERaise("Stream is a NULL pointer.");
        case kErrBadStream: ERaise("Stream is not a valid random stream.");
        default: ERaiseFmt("vslLeapFrogStream returned an unknown error: %d", st);
    }
}

void TRngStream::SkipAhead(int64_t nskip) {
    int st = kErrNullPtr;
    if (fRngStream) {
        // Skip-ahead changes nothing on failure: try it on a copy.
        std::unique_ptr<Engine> e = fRngStream->Clone();
        st = e->Skip(uint64_t(nskip));
        if (st == kOk) {
            delete fRngStream;
            fRngStream = e.release();
        }
    }
    switch (st) {
        case kOk: return;
        case kErrQrngPeriod: ERaise("Period of the quasi-random number generator is exceeded.");
        case kErrBadStream: ERaise("Stream is not a valid random stream.");
        case kErrSkipUnsupported: ERaise("BRNG does not support the Skip-Ahead method.");
        case kErrNullPtr: ERaise("Stream is a NULL pointer.");
        default: ERaiseFmt("vslSkipAheadStream returned an unknown error: %d", st);
    }
}

void TRngStream::SaveToStream(std::ostream& stream) const {
    if (!fRngStream) ERaise("Either memptr or stream is a NULL pointer.");
    std::vector<uint8_t> bytes;
    StateWriter w{bytes};
    w.U32(kStateTag);
    w.U32(kStateVersion);
    w.U32(uint32_t(fRngStream->Code()));
    fRngStream->Save(w);
    WriteI32(stream, int32_t(bytes.size()));
    stream.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

void TRngStream::LoadFromStream(std::istream& stream) {
    int32_t size = 0;
    if (!ReadI32(stream, size) || size < 12 || size > kMaxStateBytes) FormatUnknown();
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    if (!stream.read(reinterpret_cast<char*>(bytes.data()), size)) FormatUnknown();
    StateReader r{bytes.data(), bytes.size()};
    const uint32_t tag = r.U32(), version = r.U32();
    const int32_t code = int32_t(r.U32());
    if (tag != kStateTag || version != kStateVersion) FormatUnknown();
    // The quasi-random generators rebuild their tables from the dimension,
    // which leads their saved fields.
    uint32_t seed = 1;
    if (code == kSOBOL || code == kNIEDERR) {
        StateReader peek = r;
        seed = peek.U32();
    }
    std::unique_ptr<Engine> e;
    const int st = NewEngine(code, &seed, 1, e);
    if (st == kErrInvalidBrng) FormatUnknown();
    CheckNewStream(st);
    if (!e->Load(r) || r.n != 0) FormatUnknown();
    delete fRngStream;
    fRngStream = e.release();
}

// ---- fills -------------------------------------------------------------------
void TRngStream::RandomUniform(TRovane& dst, double a, double b) {
    const double pa = P(dst, a), pb = P(dst, b);
    FloatFill(Handle(), dst, [&](USrc& s, double* r, int64_t n) { return FillUniform(s, r, n, pa, pb); });
    ClampSingle(dst, pb);
}
void TRngStream::RandomGaussian(TRovane& dst, double mean, double sigma, TGaussRandMethod method) {
    const double m = P(dst, mean), sg = P(dst, sigma);
    FloatFill(Handle(), dst, [&](USrc& s, double* r, int64_t n) { return FillGaussian(s, r, n, m, sg, method); });
}
void TRngStream::RandomUniform(double* dst, int64_t n, double a, double b) {
    USrc s(Handle());
    StatusCheck(n < 0 || (n > 0 && !dst) ? kErrBadArgs : FillUniform(s, dst, n, a, b));
}
void TRngStream::RandomGaussian(double* dst, int64_t n, double mean, double sigma, TGaussRandMethod method) {
    USrc s(Handle());
    StatusCheck(n < 0 || (n > 0 && !dst) ? kErrBadArgs : FillGaussian(s, dst, n, mean, sigma, method));
}

void TRngStream::RandomGaussianMV(TMtx& dst, const TVec& mean, const TMtx& sigma, TGaussRandMethod method) {
    Engine& e = Handle();
    const int32_t d = dst.Cols();
    if (dst.ConditionCheck()) {
        if (dst.FloatPrecision() != mean.FloatPrecision()) ERaise("Dst.FloatPrecision <> Mean.FloatPrecision");
        if (dst.FloatPrecision() != sigma.FloatPrecision()) ERaise("Dst.FloatPrecision <> Sigma.FloatPrecision");
        if (mean.Length() != d) ERaise("Mean.Length <> d, d = Dst.Cols");
        if (sigma.Cols() != d || sigma.Rows() != d) ERaise("(Sigma.Cols <> d) or (Sigma.Rows <> d), d = Dst.Cols");
    }
    if (dst.Complex() || mean.Complex() || sigma.Complex() || mean.Length() != d || sigma.Cols() != d ||
        sigma.Rows() != d)
        StatusCheck(kErrBadArgs);
    if (d == 0 || dst.Rows() == 0) return;
    // Cholesky factor Sigma = T T' (lower T), in double.
    const size_t dd = size_t(d);
    std::vector<double> t(dd * dd, 0.0), mu(dd);
    for (size_t i = 0; i < dd; ++i) mu[i] = mean[int32_t(i)];
    for (size_t i = 0; i < dd; ++i)
        for (size_t j = 0; j <= i; ++j) {
            double s = sigma[int32_t(i * dd + j)];
            for (size_t k = 0; k < j; ++k) s -= t[i * dd + k] * t[j * dd + k];
            if (i == j) {
                if (!(s > 0)) ERaise("RandomGaussianMV: Sigma is not positive definite");
                t[i * dd + i] = std::sqrt(s);
            } else {
                t[i * dd + j] = s / t[j * dd + j];
            }
        }
    USrc src(e);
    const int64_t rows = dst.Rows();
    if (dst.IsDouble()) {
        StatusCheck(FillGaussianMV(src, frame::RealAt<double>(dst).ptr(), rows, d, mu.data(), t.data(), method));
    } else {
        std::vector<double> row(dd);
        float* o = frame::RealAt<float>(dst).ptr();
        for (int64_t i = 0; i < rows; ++i) {
            StatusCheck(FillGaussianMV(src, row.data(), 1, d, mu.data(), t.data(), method));
            for (size_t k = 0; k < dd; ++k) o[i * d + int64_t(k)] = float(row[k]);
        }
    }
}

#define ROVANE_FLOAT_FILL(NAME, FN, ARGS, PASS)                                                  \
    void TRngStream::NAME ARGS {                                                                 \
        FloatFill(Handle(), dst, [&](USrc& s, double* r, int64_t n) { return FN(s, r, n, PASS); }); \
    }
#define ROVANE_COMMA ,
ROVANE_FLOAT_FILL(RandomExponential, FillExponential, (TRovane & dst, double displacement, double beta),
                  P(dst, displacement) ROVANE_COMMA P(dst, beta))
ROVANE_FLOAT_FILL(RandomLaplace, FillLaplace, (TRovane & dst, double a, double b), P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomWeibull, FillWeibull, (TRovane & dst, double alpha, double a, double b),
                  P(dst, alpha) ROVANE_COMMA P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomCauchy, FillCauchy, (TRovane & dst, double a, double b), P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomRayleigh, FillRayleigh, (TRovane & dst, double a, double b), P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomLogNormal, FillLogNormal, (TRovane & dst, double a, double sigma, double b, double beta),
                  P(dst, a) ROVANE_COMMA P(dst, sigma) ROVANE_COMMA P(dst, b) ROVANE_COMMA P(dst, beta))
ROVANE_FLOAT_FILL(RandomGumbel, FillGumbel, (TRovane & dst, double a, double b), P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomGamma, FillGamma, (TRovane & dst, double alpha, double a, double b),
                  P(dst, alpha) ROVANE_COMMA P(dst, a) ROVANE_COMMA P(dst, b))
ROVANE_FLOAT_FILL(RandomBeta, FillBeta, (TRovane & dst, double p, double q, double a, double beta),
                  P(dst, p) ROVANE_COMMA P(dst, q) ROVANE_COMMA P(dst, a) ROVANE_COMMA P(dst, beta))
#undef ROVANE_FLOAT_FILL

#define ROVANE_INT_FILL(NAME, FN, ARGS, PASS)      \
    void TRngStream::NAME ARGS {                   \
        USrc s(Handle());                          \
        int32_t* r = IntTarget(dst);               \
        StatusCheck(FN(s, r, dst.Length(), PASS)); \
    }
ROVANE_INT_FILL(RandomUniformI, FillUniformI, (TRovaneInt & dst, int32_t a, int32_t b), a ROVANE_COMMA b)
ROVANE_INT_FILL(RandomBernoulli, FillBernoulli, (TRovaneInt & dst, double p), p)
ROVANE_INT_FILL(RandomGeometric, FillGeometric, (TRovaneInt & dst, double p), p)
ROVANE_INT_FILL(RandomBinomial, FillBinomial, (TRovaneInt & dst, int32_t ntrial, double p), ntrial ROVANE_COMMA p)
ROVANE_INT_FILL(RandomHypergeometric, FillHypergeometric, (TRovaneInt & dst, int32_t l, int32_t sample, int32_t m),
                l ROVANE_COMMA sample ROVANE_COMMA m)
ROVANE_INT_FILL(RandomPoisson, FillPoisson, (TRovaneInt & dst, double lambda, TPoissonRandMethod method),
                lambda ROVANE_COMMA int(method))
ROVANE_INT_FILL(RandomNegbinomial, FillNegbinomial, (TRovaneInt & dst, double a, double p), a ROVANE_COMMA p)
#undef ROVANE_INT_FILL
#undef ROVANE_COMMA

void TRngStream::RandomUniformBitsI(TRovaneInt& dst) {
    Engine& e = Handle();
    int32_t* r = IntTarget(dst);
    StatusCheck(e.Bits(reinterpret_cast<uint32_t*>(r), dst.Length()));
}

void TRngStream::RandomUniformBits32(std::span<uint32_t> dst) {
    USrc s(Handle());
    StatusCheck(FillBits32(s, dst.data(), int64_t(dst.size())));
}

void TRngStream::RandomUniformBits64(std::span<uint64_t> dst) {
    USrc s(Handle());
    uint32_t buf[1024];
    for (size_t i = 0; i < dst.size(); i += 512) {
        const size_t m = std::min<size_t>(512, dst.size() - i);
        StatusCheck(FillBits32(s, buf, int64_t(2 * m)));
        for (size_t k = 0; k < m; ++k) dst[i + k] = uint64_t(buf[2 * k]) | uint64_t(buf[2 * k + 1]) << 32;
    }
}

void TRngStream::RandomPoisson(TRovaneInt& dst, std::span<const double> lambdas) {
    USrc s(Handle());
    if (lambdas.size() < size_t(dst.Length())) StatusCheck(kErrBadArgs);
    int32_t* r = IntTarget(dst);
    StatusCheck(FillPoissonV(s, r, dst.Length(), lambdas.data()));
}

void TRngStream::RandomMultinomial(TRovaneInt& dst, int32_t ntrial, int32_t k, std::span<const double> p) {
    USrc s(Handle());
    if (k < 1 || p.size() < size_t(k)) StatusCheck(kErrBadArgs);
    int32_t* r = IntTarget(dst);
    StatusCheck(FillMultinomial(s, r, dst.Length() / k, ntrial, k, p.data()));
}

// ---- TRandomGenerator ----------------------------------------------------------
TRandomGenerator::~TRandomGenerator() = default;

void TRandomGenerator::SetStreamCount(int32_t value) {
    if (value < 0) EInvalidArgumentRaise("StreamCount < 0");
    StreamList.clear();
    FStreamCount = 0;
    StreamList.reserve(size_t(value));
    for (int32_t i = 0; i < value; ++i) StreamList.push_back(std::make_unique<TRngStream>());
    FStreamCount = value;
    Init(FBasicRngType, FSeed);
}

void TRandomGenerator::Init(TBasicRandomGenerator generator, int32_t seed) {
    // New handles are made aside and swapped in only when every stream has
    // one, so that a refused split leaves the generator as it was.
    const int32_t code = RngCode(generator);
    std::vector<TRngStream> fresh(static_cast<size_t>(FStreamCount));
    for (int32_t i = 0; i < FStreamCount; ++i) {
        TRngStream& s = fresh[size_t(i)];
        s.NewStream(code, uint32_t(seed));
        if (FStreamIndependence == rsiLeapfrog)
            s.Leapfrog(i, FStreamCount);
        else if (FStreamIndependence == rsiBlockSplitting)
            s.SkipAhead(int64_t(FBlockStep) * i);
    }
    for (int32_t i = 0; i < FStreamCount; ++i) std::swap(StreamList[size_t(i)]->fRngStream, fresh[size_t(i)].fRngStream);
    FBasicRngType = generator;
    FSeed = seed;
}

TRngStream& TRandomGenerator::Stream(int32_t i) {
    if (i < 0 || i >= FStreamCount) ERangeErrorRaise("Stream index out of bounds!");
    return *StreamList[size_t(i)];
}

void TRandomGenerator::SaveToStream(std::ostream& stream) const {
    WriteI32(stream, FStreamCount);
    WriteI32(stream, int32_t(FStreamIndependence));
    WriteI32(stream, FSeed);
    WriteI32(stream, int32_t(FBasicRngType));
    WriteI32(stream, FBlockStep);
    for (const auto& s : StreamList) s->SaveToStream(stream);
}

void TRandomGenerator::LoadFromStream(std::istream& stream) {
    int32_t v[5];
    for (int32_t& x : v)
        if (!ReadI32(stream, x)) FormatUnknown();
    if (v[0] < 0 || v[0] > (1 << 20) || v[1] < 0 || v[1] > 2 || v[3] < 0 || v[3] > 15) FormatUnknown();
    std::vector<std::unique_ptr<TRngStream>> list;
    for (int32_t i = 0; i < v[0]; ++i) {
        list.push_back(std::make_unique<TRngStream>());
        list.back()->LoadFromStream(stream);
    }
    StreamList = std::move(list);
    FStreamCount = v[0];
    FStreamIndependence = TRngStreamIndependence(v[1]);
    FSeed = v[2];
    FBasicRngType = TBasicRandomGenerator(v[3]);
    FBlockStep = v[4];
}

void TRandomGenerator::SaveToFile(const std::string& fileName) const {
    std::ofstream f(fileName, std::ios::binary | std::ios::trunc);
    if (!f) ERaiseFmt("Cannot create file %s", fileName);
    SaveToStream(f);
    f.close();
    if (!f) ERaiseFmt("Cannot write file %s", fileName);
}

void TRandomGenerator::LoadFromFile(const std::string& fileName) {
    std::ifstream f(fileName, std::ios::binary);
    if (!f) ERaiseFmt("Cannot open file %s", fileName);
    LoadFromStream(f);
}

}  // namespace rovane
