// Internal: the library's own FFT engine. Mixed-radix Stockham passes
// (radices 2, 3, 4, 5, 7, 8 and a generic odd radix) for lengths whose prime
// factors are small, Bluestein's chirp-z convolution for the others, and the
// half-length complex trick for real signals of even length. Plans are made
// once per length and precision and shared by every caller.
//
// All transforms here are unscaled: forward uses exp(-2 pi i jk / n), backward
// exp(+2 pi i jk / n); the caller applies 1/n where it wants it.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "rovane/primitives/ippspl_core.h"

namespace rovane::fft {

template <class T>
using C = std::complex<T>;

// Heap block aligned for the widest vector the kernels use.
template <class T>
class TAlignedBuf {
public:
    TAlignedBuf() = default;
    explicit TAlignedBuf(size_t n) { Resize(n); }
    TAlignedBuf(const TAlignedBuf&) = delete;
    TAlignedBuf& operator=(const TAlignedBuf&) = delete;
    ~TAlignedBuf() { Release(); }
    void Resize(size_t n);
    T* data() const { return p_; }
    size_t size() const { return n_; }
    T& operator[](size_t i) const { return p_[i]; }

private:
    void Release();
    T* p_ = nullptr;
    size_t n_ = 0;
};

// One Stockham pass: n = p * m points at stride s; the twiddles of the pass are
// tw[(k - 1) * m + j] = exp(-2 pi i jk / n), k = 1 .. p - 1, j = 0 .. m - 1.
struct TStage {
    int32_t p = 0, m = 0, s = 0;
    size_t twOff = 0;   // offset of the pass's twiddles in the plan's table
    size_t radOff = 0;  // offset of cos/sin of 2 pi t / p (odd radices)
};

// Per instruction set: one pass over the whole array, x to y.
template <class T>
using TPassFn = void (*)(const TStage& st, const C<T>* x, C<T>* y, const C<T>* tw, const T* rad, bool inverse);

// Real transforms of even length 2h: forward post-pass on the h-point
// spectrum (bins 1 .. h/2 and their mirrors, in place) and backward pre-pass
// from the half spectrum to the h-point input; w[k] = exp(-2 pi i k / 2h).
template <class T>
using TSplitFn = void (*)(C<T>* out, const C<T>* w, int64_t h);
template <class T>
using TMergeFn = void (*)(const C<T>* in, C<T>* z, const C<T>* w, int64_t h);

struct TFftKernelSet {
    TPassFn<double> passD;
    TPassFn<float> passS;
    TSplitFn<double> splitD;
    TSplitFn<float> splitS;
    TMergeFn<double> mergeD;
    TMergeFn<float> mergeS;
    template <class T>
    TPassFn<T> Pass() const {
        if constexpr (sizeof(T) == sizeof(double)) return passD;
        else return passS;
    }
    template <class T>
    TSplitFn<T> Split() const {
        if constexpr (sizeof(T) == sizeof(double)) return splitD;
        else return splitS;
    }
    template <class T>
    TMergeFn<T> Merge() const {
        if constexpr (sizeof(T) == sizeof(double)) return mergeD;
        else return mergeS;
    }
};

const TFftKernelSet& FftKernelsReference();
const TFftKernelSet& FftKernelsBaseline();
const TFftKernelSet& FftKernelsAvx2();
const TFftKernelSet& FftKernelsAvx512();
const TFftKernelSet& ActiveFftKernels();

// Largest odd prime done as a radix of its own; a length with a larger prime
// factor goes through Bluestein.
inline constexpr int32_t kMaxGenericRadix = 61;
// Longest transform the engine plans (2^28 points); longer ones report
// out of memory.
inline constexpr int64_t kMaxFftLength = int64_t(1) << 28;

template <class T>
class TComplexPlan {
public:
    explicit TComplexPlan(int64_t n);
    int64_t Length() const { return n_; }
    // Complex elements of scratch that Execute needs.
    size_t WorkSize() const { return work_; }
    bool Bluestein() const { return sub_ != nullptr; }
    // in and out may be the same array; work holds WorkSize() elements and
    // must not overlap either.
    void Execute(const C<T>* in, C<T>* out, bool inverse, C<T>* work) const;

private:
    void ExecuteBluestein(const C<T>* in, C<T>* out, bool inverse, C<T>* work) const;
    int64_t n_;
    size_t work_ = 0;
    std::vector<TStage> stages_;
    TAlignedBuf<C<T>> tw_;
    TAlignedBuf<T> rad_;
    // Bluestein: convolution length, sub-plan, chirp and the transformed filter.
    int64_t mB_ = 0;
    std::shared_ptr<const TComplexPlan<T>> sub_;
    TAlignedBuf<C<T>> chirp_, filter_;
};

template <class T>
class TRealPlan {
public:
    explicit TRealPlan(int64_t n);
    int64_t Length() const { return n_; }
    size_t WorkSize() const { return work_; }
    // in: n reals; out: n / 2 + 1 complex bins (CCS). out may not alias in.
    void Forward(const T* in, C<T>* out, C<T>* work) const;
    // in: n / 2 + 1 bins (imaginary parts of bin 0 and, for even n, bin n/2
    // are ignored); out: n reals, unscaled. in may not alias out.
    void Backward(const C<T>* in, T* out, C<T>* work) const;

private:
    int64_t n_;
    size_t work_ = 0;
    std::shared_ptr<const TComplexPlan<T>> cplx_;  // n / 2 for even n, n for odd
    TAlignedBuf<C<T>> w_;                           // exp(-2 pi i k / n), k = 0 .. n/4
};

// Shared plans: a repeated length costs one lookup.
template <class T>
std::shared_ptr<const TComplexPlan<T>> GetComplexPlan(int64_t n);
template <class T>
std::shared_ptr<const TRealPlan<T>> GetRealPlan(int64_t n);
void ClearPlanCache();

// Scratch of the calling thread, at least count complex elements; valid until
// the next call on the same thread.
template <class T>
C<T>* ThreadScratch(size_t count);

// exp(-2 pi i t / n) in extended precision, reduced by octant symmetry.
ROVANE_API void UnitRoot(int64_t t, int64_t n, long double& re, long double& im);

// Convenience: unscaled complex transform and real transforms through the
// shared plans and the thread's scratch.
template <class T>
ROVANE_API void ComplexDft(const C<T>* in, C<T>* out, int64_t n, bool inverse);
template <class T>
ROVANE_API void RealDftForward(const T* in, C<T>* out, int64_t n);
template <class T>
ROVANE_API void RealDftBackward(const C<T>* in, T* out, int64_t n);

}  // namespace rovane::fft

namespace rovane {
// Instruction set of the FFT butterflies; chosen at load from the processor,
// or from the environment variable ROVANE_ISA (reference, baseline, avx2,
// avx512) when it names one the processor runs.
ROVANE_API TPrimitiveIsa FftIsa();
// false (and no change) when the processor lacks the instruction set. Call it
// while no other thread computes a transform.
ROVANE_API bool SetFftIsa(TPrimitiveIsa isa);
}  // namespace rovane
