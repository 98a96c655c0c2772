// The dfti_* interface over the library's own FFT engine.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

#include "rovane/primitives/DFTIDescriptors.h"
#include "rovane/primitives/fft/FftEngine.h"
#include "rovane/primitives/fft/FftFormats.h"

namespace rovane {

using fft::C;

struct TDftiDescriptor {
    int32_t precision = DFTI_DOUBLE;
    int32_t domain = DFTI_COMPLEX;
    int32_t rank = 1;
    int64_t len[2] = {1, 1};
    int32_t packed = DFTI_CCS_FORMAT;
    int64_t ntr = 1;
    int64_t inDist = 0, outDist = 0;
    int32_t placement = DFTI_INPLACE;
    int64_t inStr[3] = {0, 1, 0}, outStr[3] = {0, 1, 0};
    bool inStrSet = false, outStrSet = false;
    int32_t ordering = DFTI_ORDERED;
    double fwdScale = 1, bwdScale = 1;
    int32_t threads = 1;
    bool committed = false;

    // Committed state: strides and distances in effect, and the plans.
    // Index 0 forward, 1 backward: the input and output of that call.
    int64_t is[2][3] = {}, os[2][3] = {};
    int64_t idist[2] = {}, odist[2] = {};
    std::shared_ptr<const fft::TComplexPlan<double>> cd0, cd1;
    std::shared_ptr<const fft::TComplexPlan<float>> cs0, cs1;
    std::shared_ptr<const fft::TRealPlan<double>> rd0, rd1;
    std::shared_ptr<const fft::TRealPlan<float>> rs0, rs1;

    bool Real() const { return domain == DFTI_REAL; }
    TFFTStorageFormat Format() const {
        return packed == DFTI_PACK_FORMAT ? fsfPack : packed == DFTI_PERM_FORMAT ? fsfPerm : fsfCCS;
    }
    template <class T>
    const fft::TComplexPlan<T>* CPlan(int i) const {
        if constexpr (sizeof(T) == 8) return (i == 0 ? cd0 : cd1).get();
        else return (i == 0 ? cs0 : cs1).get();
    }
    template <class T>
    const fft::TRealPlan<T>* RPlan(int i) const {
        if constexpr (sizeof(T) == 8) return (i == 0 ? rd0 : rd1).get();
        else return (i == 0 ? rs0 : rs1).get();
    }
};

namespace {

constexpr int64_t kMaxLength = 0x7fffffff;

}  // namespace

int32_t dfti_create_descriptor_highd(TDftiHandle& handle, int32_t precision, int32_t domain, int32_t dimension,
                                     const int32_t* lengths) {
    handle = nullptr;
    if (precision != DFTI_SINGLE && precision != DFTI_DOUBLE) return DFTI_INVALID_CONFIGURATION;
    if (domain != DFTI_COMPLEX && domain != DFTI_REAL) return DFTI_INVALID_CONFIGURATION;
    if (dimension < 1 || dimension > 2) return DFTI_UNIMPLEMENTED;
    if (!lengths) return DFTI_INVALID_CONFIGURATION;
    for (int i = 0; i < dimension; ++i)
        if (lengths[i] < 1) return DFTI_INVALID_CONFIGURATION;
    TDftiDescriptor* d = new (std::nothrow) TDftiDescriptor;
    if (!d) return DFTI_MEMORY_ERROR;
    d->precision = precision;
    d->domain = domain;
    d->rank = dimension;
    d->len[0] = lengths[0];
    d->len[1] = dimension == 2 ? lengths[1] : 1;
    handle = d;
    return DFTI_NO_ERROR;
}

int32_t dfti_free_descriptor_external(TDftiHandle& handle) {
    delete handle;
    handle = nullptr;
    return DFTI_NO_ERROR;
}

int32_t dfti_set_value_intval(TDftiHandle& handle, int32_t param, int32_t value) {
    TDftiDescriptor* d = handle;
    if (!d) return DFTI_BAD_DESCRIPTOR;
    switch (param) {
        case DFTI_NUMBER_OF_TRANSFORMS:
            if (value < 1) return DFTI_INVALID_CONFIGURATION;
            d->ntr = value;
            break;
        case DFTI_PLACEMENT:
            if (value != DFTI_INPLACE && value != DFTI_NOT_INPLACE) return DFTI_INVALID_CONFIGURATION;
            d->placement = value;
            break;
        case DFTI_INPUT_DISTANCE:
            if (value < 0) return DFTI_INVALID_CONFIGURATION;
            d->inDist = value;
            break;
        case DFTI_OUTPUT_DISTANCE:
            if (value < 0) return DFTI_INVALID_CONFIGURATION;
            d->outDist = value;
            break;
        case DFTI_ORDERING:
            if (value != DFTI_ORDERED && value != DFTI_BACKWARD_SCRAMBLED) return DFTI_INVALID_CONFIGURATION;
            d->ordering = value;
            break;
        case DFTI_PACKED_FORMAT:
            if (value != DFTI_CCS_FORMAT && value != DFTI_PACK_FORMAT && value != DFTI_PERM_FORMAT)
                return DFTI_INVALID_CONFIGURATION;
            if (!d->Real() && value != DFTI_CCS_FORMAT) return DFTI_INCONSISTENT_CONFIGURATION;
            d->packed = value;
            break;
        default: return DFTI_INVALID_CONFIGURATION;
    }
    d->committed = false;
    return DFTI_NO_ERROR;
}

int32_t dfti_set_value_intvec(TDftiHandle& handle, int32_t param, const int32_t* values) {
    TDftiDescriptor* d = handle;
    if (!d) return DFTI_BAD_DESCRIPTOR;
    if (!values) return DFTI_INVALID_CONFIGURATION;
    int64_t* dst;
    if (param == DFTI_INPUT_STRIDES) {
        dst = d->inStr;
        d->inStrSet = true;
    } else if (param == DFTI_OUTPUT_STRIDES) {
        dst = d->outStr;
        d->outStrSet = true;
    } else {
        return DFTI_INVALID_CONFIGURATION;
    }
    for (int i = 0; i <= d->rank; ++i) {
        if (i > 0 && values[i] < 1) return DFTI_INVALID_CONFIGURATION;
        if (i == 0 && values[i] < 0) return DFTI_INVALID_CONFIGURATION;
        dst[i] = values[i];
    }
    d->committed = false;
    return DFTI_NO_ERROR;
}

int32_t dfti_set_value_dblval(TDftiHandle& handle, int32_t param, double value) {
    TDftiDescriptor* d = handle;
    if (!d) return DFTI_BAD_DESCRIPTOR;
    if (!std::isfinite(value)) return DFTI_INVALID_CONFIGURATION;
    if (param == DFTI_FORWARD_SCALE) d->fwdScale = value;
    else if (param == DFTI_BACKWARD_SCALE) d->bwdScale = value;
    else return DFTI_INVALID_CONFIGURATION;
    d->committed = false;
    return DFTI_NO_ERROR;
}

int32_t dfti_set_value_sglval(TDftiHandle& handle, int32_t param, float value) {
    return dfti_set_value_dblval(handle, param, static_cast<double>(value));
}

int32_t dfti_commit_descriptor_external(TDftiHandle& handle) {
    TDftiDescriptor* d = handle;
    if (!d) return DFTI_BAD_DESCRIPTOR;
    const bool real = d->Real();
    const int64_t n0 = d->len[0], n1 = d->len[1];
    const TFFTStorageFormat f = d->Format();
    const bool inPlace = d->placement == DFTI_INPLACE;
    // Row length (reals in the real domain, complex elements else) of the
    // signal and of the spectrum; in place both take the longer one.
    const int64_t rowSig = real ? (inPlace ? fft::FormatLength(f, n0) : n0) : n0;
    const int64_t rowFreq = real ? fft::FormatLength(f, n0) : n0;
    for (int dir = 0; dir < 2; ++dir) {
        const int64_t rowIn = dir == 0 ? rowSig : rowFreq, rowOut = dir == 0 ? rowFreq : rowSig;
        int64_t* is = d->is[dir];
        int64_t* os = d->os[dir];
        if (d->inStrSet) for (int i = 0; i < 3; ++i) is[i] = d->inStr[i];
        else { is[0] = 0; is[1] = 1; is[2] = rowIn; }
        if (d->outStrSet) for (int i = 0; i < 3; ++i) os[i] = d->outStr[i];
        else if (inPlace) for (int i = 0; i < 3; ++i) os[i] = is[i];
        else { os[0] = 0; os[1] = 1; os[2] = rowOut; }
        // Default distance: one whole input or output, padded rows included.
        const int64_t spanIn = d->rank == 1 ? rowIn : is[2] * n1;
        const int64_t spanOut = d->rank == 1 ? rowOut : os[2] * n1;
        d->idist[dir] = d->inDist > 0 ? d->inDist : spanIn;
        d->odist[dir] = d->outDist > 0 ? d->outDist : (inPlace ? d->idist[dir] : spanOut);
    }
    if (inPlace && d->outDist > 0 && d->inDist > 0 && d->outDist != d->inDist) return DFTI_INCONSISTENT_CONFIGURATION;
    if (real && d->rank == 2 && f != fsfCCS && (d->inStrSet || d->outStrSet)) return DFTI_UNIMPLEMENTED;
    if (n0 * n1 > kMaxLength) return DFTI_INCONSISTENT_CONFIGURATION;
    try {
        const bool sgl = d->precision == DFTI_SINGLE;
        d->cd0.reset(); d->cd1.reset(); d->cs0.reset(); d->cs1.reset();
        d->rd0.reset(); d->rd1.reset(); d->rs0.reset(); d->rs1.reset();
        if (sgl) {
            if (real) d->rs0 = fft::GetRealPlan<float>(n0);
            else d->cs0 = fft::GetComplexPlan<float>(n0);
            if (d->rank == 2) {
                d->cs1 = fft::GetComplexPlan<float>(n1);
                if (real) d->rs1 = fft::GetRealPlan<float>(n1);
            }
        } else {
            if (real) d->rd0 = fft::GetRealPlan<double>(n0);
            else d->cd0 = fft::GetComplexPlan<double>(n0);
            if (d->rank == 2) {
                d->cd1 = fft::GetComplexPlan<double>(n1);
                if (real) d->rd1 = fft::GetRealPlan<double>(n1);
            }
        }
    } catch (const std::bad_alloc&) {
        return DFTI_MEMORY_ERROR;
    }
    d->committed = true;
    return DFTI_NO_ERROR;
}

namespace {

template <class T>
struct TScratch {
    // Carves the thread's scratch: the engine's work first, then the rest.
    C<T>* base;
    size_t used = 0;
    explicit TScratch(size_t total) : base(fft::ThreadScratch<T>(total)) {}
    C<T>* Take(size_t n) {
        C<T>* p = base + used;
        used += n;
        return p;
    }
};

template <class T>
inline T ScaleOf(const TDftiDescriptor* d, bool forward) {
    return static_cast<T>(forward ? d->fwdScale : d->bwdScale);
}

// ----- complex --------------------------------------------------------------
template <class T>
void ComplexOne(const TDftiDescriptor* d, bool fwd, const C<T>* in, C<T>* out) {
    const int64_t n0 = d->len[0], n1 = d->len[1];
    const T scale = ScaleOf<T>(d, fwd);
    const fft::TComplexPlan<T>* p0 = d->CPlan<T>(0);
    const int64_t* is = d->is[fwd ? 0 : 1];
    const int64_t* os = d->os[fwd ? 0 : 1];
    if (d->rank == 1) {
        const int64_t si = is[1], so = os[1];
        const C<T>* src = in + is[0];
        C<T>* dst = out + os[0];
        if (si == 1 && so == 1) {
            p0->Execute(src, dst, !fwd, fft::ThreadScratch<T>(p0->WorkSize()));
        } else {
            TScratch<T> sc(p0->WorkSize() + size_t(n0));
            C<T>* w = sc.Take(p0->WorkSize());
            C<T>* b = sc.Take(size_t(n0));
            for (int64_t j = 0; j < n0; ++j) b[j] = src[j * si];
            p0->Execute(b, b, !fwd, w);
            for (int64_t j = 0; j < n0; ++j) dst[j * so] = b[j];
        }
        if (scale != T(1))
            for (int64_t j = 0; j < n0; ++j) dst[j * so] *= scale;
        return;
    }
    const fft::TComplexPlan<T>* p1 = d->CPlan<T>(1);
    const size_t wk = std::max(p0->WorkSize(), p1->WorkSize());
    TScratch<T> sc(wk + size_t(n0 * n1) + size_t(n1));
    C<T>* w = sc.Take(wk);
    C<T>* m = sc.Take(size_t(n0 * n1));
    C<T>* col = sc.Take(size_t(n1));
    for (int64_t r = 0; r < n1; ++r)
        for (int64_t c = 0; c < n0; ++c) m[r * n0 + c] = in[is[0] + r * is[2] + c * is[1]];
    for (int64_t r = 0; r < n1; ++r) p0->Execute(m + r * n0, m + r * n0, !fwd, w);
    for (int64_t c = 0; c < n0; ++c) {
        for (int64_t r = 0; r < n1; ++r) col[r] = m[r * n0 + c];
        p1->Execute(col, col, !fwd, w);
        for (int64_t r = 0; r < n1; ++r) m[r * n0 + c] = col[r];
    }
    for (int64_t r = 0; r < n1; ++r)
        for (int64_t c = 0; c < n0; ++c) out[os[0] + r * os[2] + c * os[1]] = m[r * n0 + c] * scale;
}

// ----- real -----------------------------------------------------------------
using fft::PackPos;

template <class T>
void RealOne(const TDftiDescriptor* d, bool fwd, const T* in, T* out) {
    const int64_t n0 = d->len[0], n1 = d->len[1];
    const int64_t nb = n0 / 2 + 1;
    const TFFTStorageFormat f = d->Format();
    const T scale = ScaleOf<T>(d, fwd);
    const fft::TRealPlan<T>* r0 = d->RPlan<T>(0);
    // Strides in reals of this call's input (ss) and output (ds).
    const int64_t* ss = d->is[fwd ? 0 : 1];
    const int64_t* ds = d->os[fwd ? 0 : 1];
    if (d->rank == 1) {
        TScratch<T> sc(r0->WorkSize() + size_t(nb) + size_t(n0 + 1) / 2 + 1);
        C<T>* w = sc.Take(r0->WorkSize());
        C<T>* bins = sc.Take(size_t(nb));
        T* sig = reinterpret_cast<T*>(sc.Take(size_t(n0 + 1) / 2 + 1));
        const bool unitIn = ss[1] == 1, unitOut = ds[1] == 1;
        if (fwd && f == fsfCCS && unitIn && unitOut && scale == T(1)) {
            // The engine writes CCS bins straight into the output (in place
            // too: it reads the signal before it writes the spectrum).
            T* dst = out + ds[0];
            r0->Forward(in + ss[0], reinterpret_cast<C<T>*>(dst), w);
            dst[1] = 0;
            if (n0 % 2 == 0) dst[n0 + 1] = 0;
            return;
        }
        if (!fwd && f == fsfCCS && unitIn && unitOut && in + ss[0] != out + ds[0]) {
            // Bins read in place from the input; the imaginary parts of the
            // real bins are ignored by the engine.
            T* dst = out + ds[0];
            r0->Backward(reinterpret_cast<const C<T>*>(in + ss[0]), dst, w);
            if (scale != T(1))
                for (int64_t j = 0; j < n0; ++j) dst[j] *= scale;
            return;
        }
        if (fwd) {
            const T* src = in + ss[0];
            for (int64_t j = 0; j < n0; ++j) sig[j] = src[j * ss[1]];
            r0->Forward(sig, bins, w);
            if (scale != T(1))
                for (int64_t k = 0; k < nb; ++k) bins[k] *= scale;
            fft::PackSpectrum<T>(f, bins, n0, out + ds[0], ds[1]);
        } else {
            fft::UnpackSpectrum<T>(f, in + ss[0], n0, bins, ss[1]);
            r0->Backward(bins, sig, w);
            T* dst = out + ds[0];
            for (int64_t j = 0; j < n0; ++j) dst[j * ds[1]] = sig[j] * scale;
        }
        return;
    }
    const fft::TComplexPlan<T>* c1 = d->CPlan<T>(1);
    const fft::TRealPlan<T>* r1 = d->RPlan<T>(1);
    const size_t wk = std::max({r0->WorkSize(), c1->WorkSize(), r1->WorkSize()});
    const int64_t nmax = std::max(n0, n1);
    TScratch<T> sc(wk + size_t(nb * n1) + size_t(n1 / 2 + 1) + size_t(n1) + size_t(nmax + 1) / 2 + 1);
    C<T>* w = sc.Take(wk);
    C<T>* m = sc.Take(size_t(nb * n1));  // n1 rows of nb bins
    C<T>* cb = sc.Take(size_t(n1 / 2 + 1));
    C<T>* col = sc.Take(size_t(n1));
    T* sig = reinterpret_cast<T*>(sc.Take(size_t(nmax + 1) / 2 + 1));
    auto isRealCol = [&](int64_t k) { return k == 0 || (n0 % 2 == 0 && k == n0 / 2); };
    if (fwd) {
        for (int64_t r = 0; r < n1; ++r) {
            const T* src = in + ss[0] + r * ss[2];
            for (int64_t j = 0; j < n0; ++j) sig[j] = src[j * ss[1]];
            r0->Forward(sig, m + r * nb, w);
        }
        for (int64_t k = 0; k < nb; ++k) {
            if (f != fsfCCS && isRealCol(k)) {
                for (int64_t r = 0; r < n1; ++r) sig[r] = m[r * nb + k].real();
                r1->Forward(sig, cb, w);
                for (int64_t q = 0; q <= n1 / 2; ++q) cb[q] *= scale;
                // Packed along the column at the bin's row position.
                T* dst = out + ds[0] + PackPos(f, n0, k, false) * ds[1];
                fft::PackSpectrum<T>(f, cb, n1, dst, ds[2]);
                continue;
            }
            for (int64_t r = 0; r < n1; ++r) col[r] = m[r * nb + k];
            c1->Execute(col, col, false, w);
            if (f == fsfCCS) {
                for (int64_t r = 0; r < n1; ++r) {
                    T* dst = out + ds[0] + r * ds[2] + 2 * k * ds[1];
                    dst[0] = col[r].real() * scale;
                    dst[ds[1]] = col[r].imag() * scale;
                }
            } else {
                const int64_t pr = PackPos(f, n0, k, false), pi = PackPos(f, n0, k, true);
                for (int64_t r = 0; r < n1; ++r) {
                    T* dst = out + ds[0] + r * ds[2];
                    dst[pr * ds[1]] = col[r].real() * scale;
                    dst[pi * ds[1]] = col[r].imag() * scale;
                }
            }
        }
        return;
    }
    for (int64_t k = 0; k < nb; ++k) {
        if (f != fsfCCS && isRealCol(k)) {
            const T* src = in + ss[0] + PackPos(f, n0, k, false) * ss[1];
            fft::UnpackSpectrum<T>(f, src, n1, cb, ss[2]);
            r1->Backward(cb, sig, w);
            for (int64_t r = 0; r < n1; ++r) m[r * nb + k] = C<T>(sig[r], 0);
            continue;
        }
        if (f == fsfCCS) {
            for (int64_t r = 0; r < n1; ++r) {
                const T* src = in + ss[0] + r * ss[2] + 2 * k * ss[1];
                col[r] = C<T>(src[0], src[ss[1]]);
            }
        } else {
            const int64_t pr = PackPos(f, n0, k, false), pi = PackPos(f, n0, k, true);
            for (int64_t r = 0; r < n1; ++r) {
                const T* src = in + ss[0] + r * ss[2];
                col[r] = C<T>(src[pr * ss[1]], src[pi * ss[1]]);
            }
        }
        c1->Execute(col, col, true, w);
        for (int64_t r = 0; r < n1; ++r) m[r * nb + k] = col[r];
    }
    for (int64_t r = 0; r < n1; ++r) {
        r0->Backward(m + r * nb, sig, w);
        T* dst = out + ds[0] + r * ds[2];
        for (int64_t j = 0; j < n0; ++j) dst[j * ds[1]] = sig[j] * scale;
    }
}

// One entry for all sixteen compute calls. Element pointers are of the
// domain's element type; in-place calls pass in == out.
template <class T, bool Cplx>
int32_t Compute(TDftiHandle h, bool fwd, bool inPlace, const void* x, int32_t xIndex, void* y, int32_t yIndex) {
    const TDftiDescriptor* d = h;
    if (!d || !d->committed) return DFTI_BAD_DESCRIPTOR;
    if ((d->precision == DFTI_SINGLE) != (sizeof(T) == sizeof(float))) return DFTI_INCONSISTENT_CONFIGURATION;
    if (d->Real() == Cplx) return DFTI_INCONSISTENT_CONFIGURATION;
    if ((d->placement == DFTI_INPLACE) != inPlace) return DFTI_INCONSISTENT_CONFIGURATION;
    if (!x || (!inPlace && !y)) return DFTI_INVALID_CONFIGURATION;
    if (xIndex < 0 || yIndex < 0) return DFTI_INVALID_CONFIGURATION;
    const int64_t dIn = d->idist[fwd ? 0 : 1], dOut = d->odist[fwd ? 0 : 1];
    try {
        if constexpr (Cplx) {
            const C<T>* in = static_cast<const C<T>*>(x) + xIndex;
            C<T>* out = inPlace ? const_cast<C<T>*>(in) : static_cast<C<T>*>(y) + yIndex;
            for (int64_t t = 0; t < d->ntr; ++t) ComplexOne<T>(d, fwd, in + t * dIn, out + t * dOut);
        } else {
            const T* in = static_cast<const T*>(x) + xIndex;
            T* out = inPlace ? const_cast<T*>(in) : static_cast<T*>(y) + yIndex;
            for (int64_t t = 0; t < d->ntr; ++t) RealOne<T>(d, fwd, in + t * dIn, out + t * dOut);
        }
    } catch (const std::bad_alloc&) {
        return DFTI_MEMORY_ERROR;
    }
    return DFTI_NO_ERROR;
}

}  // namespace

#define ROVANE_DFTI_COMPUTE(L, T, E, CPLX)                                                                   \
    int32_t dfti_compute_forward_##L##_Idx(TDftiHandle handle, E* x, int32_t xIndex) {                      \
        return Compute<T, CPLX>(handle, true, true, x, xIndex, nullptr, 0);                                 \
    }                                                                                                        \
    int32_t dfti_compute_backward_##L##_Idx(TDftiHandle handle, E* x, int32_t xIndex) {                     \
        return Compute<T, CPLX>(handle, false, true, x, xIndex, nullptr, 0);                                \
    }                                                                                                        \
    int32_t dfti_compute_forward_##L##_out_Idx(TDftiHandle handle, const E* x, int32_t xIndex, E* y,        \
                                               int32_t yIndex) {                                            \
        return Compute<T, CPLX>(handle, true, false, x, xIndex, y, yIndex);                                 \
    }                                                                                                        \
    int32_t dfti_compute_backward_##L##_out_Idx(TDftiHandle handle, const E* x, int32_t xIndex, E* y,       \
                                                int32_t yIndex) {                                           \
        return Compute<T, CPLX>(handle, false, false, x, xIndex, y, yIndex);                                \
    }

ROVANE_DFTI_COMPUTE(z, double, TCplx, true)
ROVANE_DFTI_COMPUTE(c, float, TSCplx, true)
ROVANE_DFTI_COMPUTE(d, double, double, false)
ROVANE_DFTI_COMPUTE(s, float, float, false)
#undef ROVANE_DFTI_COMPUTE

const char* DftiErrorMessage(int32_t status) {
    switch (status) {
        case DFTI_NO_ERROR: return "DFTI_NO_ERROR: no error";
        case DFTI_MEMORY_ERROR: return "DFTI_MEMORY_ERROR: not enough memory for the transform";
        case DFTI_INVALID_CONFIGURATION: return "DFTI_INVALID_CONFIGURATION: invalid configuration parameter or value";
        case DFTI_INCONSISTENT_CONFIGURATION:
            return "DFTI_INCONSISTENT_CONFIGURATION: the call does not match the descriptor's configuration";
        case DFTI_BAD_DESCRIPTOR: return "DFTI_BAD_DESCRIPTOR: null or uncommitted descriptor";
        case DFTI_UNIMPLEMENTED: return "DFTI_UNIMPLEMENTED: configuration not supported";
        default: return "DFTI_UNKNOWN_ERROR: unknown status";
    }
}

std::string GetDftiErrorMessage(int32_t status) { return DftiErrorMessage(status); }

namespace {
std::atomic<int32_t> gDftThreads{1};
}

int32_t dftMKL_Set_Num_Threads(int32_t n) {
    const int32_t old = gDftThreads.load();
    if (n > 0) gDftThreads.store(n);
    return old;
}

int32_t dftMKL_Domain_Set_Num_Threads(int32_t n, int32_t) {
    if (n < 1) return 0;
    gDftThreads.store(n);
    return 1;
}

int32_t dftMKL_Domain_Get_Max_Threads(int32_t) { return gDftThreads.load(); }

}  // namespace rovane
