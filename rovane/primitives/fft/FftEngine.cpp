// Plans of the FFT engine: factorisation, twiddle tables in extended
// precision, the Stockham pass sequence, Bluestein and the real transforms.
#include "rovane/primitives/fft/FftEngine.h"

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <string_view>
#include <unordered_map>

namespace rovane::fft {

// ---------------------------------------------------------------------------
// Buffers and helpers.
// ---------------------------------------------------------------------------
template <class T>
void TAlignedBuf<T>::Release() {
    if (p_) ::operator delete(static_cast<void*>(p_), std::align_val_t(64));
    p_ = nullptr;
    n_ = 0;
}

template <class T>
void TAlignedBuf<T>::Resize(size_t n) {
    Release();
    if (n == 0) return;
    p_ = static_cast<T*>(::operator new(n * sizeof(T), std::align_val_t(64)));
    n_ = n;
}

template class TAlignedBuf<C<double>>;
template class TAlignedBuf<C<float>>;
template class TAlignedBuf<double>;
template class TAlignedBuf<float>;

namespace {

// Products written out: std::complex's operator* takes a slow library path
// for its infinity recovery.
template <class T>
inline C<T> Mul(C<T> a, C<T> b) {
    return C<T>(a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real());
}
template <class T>
inline C<T> Root(int64_t t, int64_t n) {
    long double re, im;
    UnitRoot(t, n, re, im);
    return C<T>(static_cast<T>(re), static_cast<T>(im));
}

// Smallest length >= n of the form 2^a 3^b 5^c with a >= 2: every pass of
// its transform is one of the specialised radices.
int64_t ConvolutionLength(int64_t n) {
    int64_t best = 4;
    while (best < n) best <<= 1;
    for (int64_t p5 = 1; p5 < best; p5 *= 5)
        for (int64_t p35 = p5; p35 < best; p35 *= 3) {
            int64_t m = p35 * 4;
            while (m < n) m <<= 1;
            if (m < best) best = m;
        }
    return best;
}

}  // namespace

void UnitRoot(int64_t t, int64_t n, long double& re, long double& im) {
    t %= n;
    if (t < 0) t += n;
    // angle 2 pi t / n = (pi / 2) (q + r / n) with quadrant q and 0 <= r < n.
    const __int128 t4 = static_cast<__int128>(t) * 4;
    const int q = static_cast<int>(t4 / n);
    const int64_t r = static_cast<int64_t>(t4 - static_cast<__int128>(q) * n);
    const bool flip = 2 * static_cast<__int128>(r) > n;
    const int64_t rr = flip ? n - r : r;
    const long double phi = 1.5707963267948966192313216916397514L * (static_cast<long double>(rr) / n);
    long double c = cosl(phi), s = sinl(phi);
    if (rr == 0) { c = 1; s = 0; }
    if (flip) std::swap(c, s);
    long double cc, ss;  // cos and sin of the whole angle
    switch (q) {
        case 0: cc = c; ss = s; break;
        case 1: cc = -s; ss = c; break;
        case 2: cc = -c; ss = -s; break;
        default: cc = s; ss = -c; break;
    }
    re = cc;
    im = -ss;
}

// ---------------------------------------------------------------------------
// Complex plans.
// ---------------------------------------------------------------------------
template <class T>
TComplexPlan<T>::TComplexPlan(int64_t n) : n_(n) {
    if (n <= 1) return;
    std::vector<int32_t> f;
    int64_t r = n;
    // Powers of two: radix 8 first, then 4, and one 2 only when needed.
    int e2 = 0;
    while (r % 2 == 0) { ++e2; r /= 2; }
    int k8 = e2 / 3, k4 = 0;
    bool two = false;
    if (e2 % 3 == 2) k4 = 1;
    else if (e2 % 3 == 1) {
        if (k8 > 0) { --k8; k4 = 2; }
        else two = true;
    }
    for (int i = 0; i < k8; ++i) f.push_back(8);
    for (int i = 0; i < k4; ++i) f.push_back(4);
    for (int32_t p = 3; p <= kMaxGenericRadix && r > 1; p += 2)
        while (r % p == 0) { f.push_back(p); r /= p; }
    if (two) f.push_back(2);  // last: its stride is the largest
    if (r != 1) {
        // A prime factor too large for a radix of its own: chirp-z.
        mB_ = ConvolutionLength(2 * n - 1);
        sub_ = GetComplexPlan<T>(mB_);
        work_ = size_t(mB_) + sub_->WorkSize();
        chirp_.Resize(size_t(n));
        for (int64_t k = 0; k < n; ++k) {
            const int64_t k2 = static_cast<int64_t>((static_cast<__int128>(k) * k) % (2 * n));
            chirp_[size_t(k)] = Root<T>(k2, 2 * n);
        }
        // Filter conj(chirp) wrapped around, transformed once in double.
        std::vector<C<double>> b(size_t(mB_), C<double>(0, 0)), bw(GetComplexPlan<double>(mB_)->WorkSize() + 1);
        for (int64_t k = 0; k < n; ++k) {
            long double re, im;
            UnitRoot(static_cast<int64_t>((static_cast<__int128>(k) * k) % (2 * n)), 2 * n, re, im);
            const C<double> v(static_cast<double>(re), static_cast<double>(-im));
            b[size_t(k)] = v;
            if (k > 0) b[size_t(mB_ - k)] = v;
        }
        GetComplexPlan<double>(mB_)->Execute(b.data(), b.data(), false, bw.data());
        filter_.Resize(size_t(mB_));
        const double scale = 1.0 / static_cast<double>(mB_);
        for (int64_t k = 0; k < mB_; ++k)
            filter_[size_t(k)] = C<T>(static_cast<T>(b[size_t(k)].real() * scale), static_cast<T>(b[size_t(k)].imag() * scale));
        return;
    }
    // Stockham passes: lengths n, n / p1, n / (p1 p2), ...; strides 1, p1, ...
    size_t twTotal = 0, radTotal = 0;
    int64_t len = n, stride = 1;
    for (int32_t p : f) {
        TStage st;
        st.p = p;
        st.m = static_cast<int32_t>(len / p);
        st.s = static_cast<int32_t>(stride);
        st.twOff = twTotal;
        st.radOff = radTotal;
        twTotal += size_t(p - 1) * size_t(st.m);
        if (p % 2 == 1) radTotal += 2 * size_t(p);
        stages_.push_back(st);
        len /= p;
        stride *= p;
    }
    tw_.Resize(twTotal);
    rad_.Resize(radTotal + 1);
    for (const TStage& st : stages_) {
        const int64_t nn = int64_t(st.p) * st.m;
        for (int32_t k = 1; k < st.p; ++k)
            for (int32_t j = 0; j < st.m; ++j)
                tw_[st.twOff + size_t(k - 1) * size_t(st.m) + size_t(j)] = Root<T>(int64_t(j) * k, nn);
        if (st.p % 2 == 1) {
            for (int32_t t = 0; t < st.p; ++t) {
                long double re, im;
                UnitRoot(t, st.p, re, im);
                rad_[st.radOff + 2 * size_t(t)] = static_cast<T>(re);
                rad_[st.radOff + 2 * size_t(t) + 1] = static_cast<T>(-im);
            }
        }
    }
    work_ = size_t(n);
}

template <class T>
void TComplexPlan<T>::Execute(const C<T>* in, C<T>* out, bool inverse, C<T>* work) const {
    if (n_ <= 0) return;
    if (n_ == 1) {
        out[0] = in[0];
        return;
    }
    if (sub_) {
        ExecuteBluestein(in, out, inverse, work);
        return;
    }
    const TPassFn<T> pass = ActiveFftKernels().Pass<T>();
    const size_t k = stages_.size();
    // The last pass writes out; the passes before alternate with work.
    const C<T>* src = in;
    if ((k - 1) % 2 == 0 && in == out) {
        std::memcpy(static_cast<void*>(work), in, size_t(n_) * sizeof(C<T>));
        src = work;
    }
    for (size_t i = 0; i < k; ++i) {
        C<T>* dst = (k - 1 - i) % 2 == 0 ? out : work;
        const TStage& st = stages_[i];
        pass(st, src, dst, tw_.data() + st.twOff, rad_.data() + st.radOff, inverse);
        src = dst;
    }
}

template <class T>
void TComplexPlan<T>::ExecuteBluestein(const C<T>* in, C<T>* out, bool inverse, C<T>* work) const {
    // The inverse is conj(forward(conj(x))).
    C<T>* a = work;
    C<T>* sw = work + mB_;
    const C<T>* ch = chirp_.data();
    for (int64_t k = 0; k < n_; ++k) {
        const C<T> x = inverse ? std::conj(in[k]) : in[k];
        a[k] = Mul(x, ch[k]);
    }
    std::memset(static_cast<void*>(a + n_), 0, size_t(mB_ - n_) * sizeof(C<T>));
    sub_->Execute(a, a, false, sw);
    const C<T>* fl = filter_.data();
    for (int64_t k = 0; k < mB_; ++k) a[k] = Mul(a[k], fl[k]);
    sub_->Execute(a, a, true, sw);
    for (int64_t k = 0; k < n_; ++k) {
        const C<T> y = Mul(a[k], ch[k]);
        out[k] = inverse ? std::conj(y) : y;
    }
}

template class TComplexPlan<double>;
template class TComplexPlan<float>;

// ---------------------------------------------------------------------------
// Real plans.
// ---------------------------------------------------------------------------
template <class T>
TRealPlan<T>::TRealPlan(int64_t n) : n_(n) {
    if (n <= 0) return;
    if (n % 2 == 0) {
        const int64_t h = n / 2;
        cplx_ = GetComplexPlan<T>(h);
        w_.Resize(size_t(h / 2 + 1));
        for (int64_t k = 0; k <= h / 2; ++k) w_[size_t(k)] = Root<T>(k, n);
        work_ = cplx_->WorkSize();
    } else {
        cplx_ = GetComplexPlan<T>(n);
        work_ = 2 * size_t(n) + cplx_->WorkSize();
    }
}

template <class T>
void TRealPlan<T>::Forward(const T* in, C<T>* out, C<T>* work) const {
    const int64_t n = n_;
    if (n <= 0) return;
    if (n % 2 == 1) {
        C<T>* buf = work;
        C<T>* res = work + n;
        for (int64_t j = 0; j < n; ++j) buf[j] = C<T>(in[j], 0);
        cplx_->Execute(buf, res, false, work + 2 * n);
        for (int64_t k = 0; k <= n / 2; ++k) out[k] = res[k];
        return;
    }
    const int64_t h = n / 2;
    cplx_->Execute(reinterpret_cast<const C<T>*>(in), out, false, work);
    const T zr = out[0].real(), zi = out[0].imag();
    out[0] = C<T>(zr + zi, 0);
    out[h] = C<T>(zr - zi, 0);
    ActiveFftKernels().Split<T>()(out, w_.data(), h);
}

template <class T>
void TRealPlan<T>::Backward(const C<T>* in, T* out, C<T>* work) const {
    const int64_t n = n_;
    if (n <= 0) return;
    if (n % 2 == 1) {
        C<T>* buf = work;
        buf[0] = C<T>(in[0].real(), 0);
        for (int64_t k = 1; k <= n / 2; ++k) {
            buf[k] = in[k];
            buf[n - k] = std::conj(in[k]);
        }
        cplx_->Execute(buf, buf, true, work + n);
        for (int64_t j = 0; j < n; ++j) out[j] = buf[j].real();
        return;
    }
    const int64_t h = n / 2;
    C<T>* z = reinterpret_cast<C<T>*>(out);
    const T x0 = in[0].real(), xh = in[h].real();
    z[0] = C<T>(x0 + xh, x0 - xh);
    ActiveFftKernels().Merge<T>()(in, z, w_.data(), h);
    cplx_->Execute(z, z, true, work);
}

template class TRealPlan<double>;
template class TRealPlan<float>;

// ---------------------------------------------------------------------------
// Plan cache.
// ---------------------------------------------------------------------------
namespace {

template <class P>
struct TPlanCache {
    std::mutex mu;
    std::unordered_map<int64_t, std::shared_ptr<const P>> map;
};

template <class P>
TPlanCache<P>& CacheOf() {
    static TPlanCache<P> cache;
    return cache;
}

// Plans stay alive in every descriptor that holds one; the map only bounds
// the number it keeps by itself.
constexpr size_t kMaxCachedPlans = 128;

template <class P>
std::shared_ptr<const P> GetPlan(int64_t n) {
    // Pass sizes are 32-bit, and a chirp-z plan convolves at up to 4 n.
    if (n < 0 || n > kMaxFftLength) throw std::bad_alloc();
    TPlanCache<P>& c = CacheOf<P>();
    {
        std::lock_guard<std::mutex> g(c.mu);
        auto it = c.map.find(n);
        if (it != c.map.end()) return it->second;
    }
    // Built outside the lock: a Bluestein plan asks for its sub-plan.
    auto plan = std::make_shared<const P>(n);
    std::lock_guard<std::mutex> g(c.mu);
    auto it = c.map.find(n);
    if (it != c.map.end()) return it->second;
    if (c.map.size() >= kMaxCachedPlans) c.map.clear();
    c.map.emplace(n, plan);
    return plan;
}

}  // namespace

template <class T>
std::shared_ptr<const TComplexPlan<T>> GetComplexPlan(int64_t n) {
    return GetPlan<TComplexPlan<T>>(n);
}
template <class T>
std::shared_ptr<const TRealPlan<T>> GetRealPlan(int64_t n) {
    return GetPlan<TRealPlan<T>>(n);
}
template std::shared_ptr<const TComplexPlan<double>> GetComplexPlan<double>(int64_t);
template std::shared_ptr<const TComplexPlan<float>> GetComplexPlan<float>(int64_t);
template std::shared_ptr<const TRealPlan<double>> GetRealPlan<double>(int64_t);
template std::shared_ptr<const TRealPlan<float>> GetRealPlan<float>(int64_t);

void ClearPlanCache() {
    auto clear = [](auto& c) {
        std::lock_guard<std::mutex> g(c.mu);
        c.map.clear();
    };
    clear(CacheOf<TComplexPlan<double>>());
    clear(CacheOf<TComplexPlan<float>>());
    clear(CacheOf<TRealPlan<double>>());
    clear(CacheOf<TRealPlan<float>>());
}

template <class T>
C<T>* ThreadScratch(size_t count) {
    thread_local TAlignedBuf<C<T>> buf;
    if (buf.size() < count) buf.Resize(count < 64 ? 64 : count);
    return buf.data();
}
template C<double>* ThreadScratch<double>(size_t);
template C<float>* ThreadScratch<float>(size_t);

template <class T>
void ComplexDft(const C<T>* in, C<T>* out, int64_t n, bool inverse) {
    auto plan = GetComplexPlan<T>(n);
    plan->Execute(in, out, inverse, ThreadScratch<T>(plan->WorkSize()));
}
template <class T>
void RealDftForward(const T* in, C<T>* out, int64_t n) {
    auto plan = GetRealPlan<T>(n);
    plan->Forward(in, out, ThreadScratch<T>(plan->WorkSize()));
}
template <class T>
void RealDftBackward(const C<T>* in, T* out, int64_t n) {
    auto plan = GetRealPlan<T>(n);
    plan->Backward(in, out, ThreadScratch<T>(plan->WorkSize()));
}
template void ComplexDft<double>(const C<double>*, C<double>*, int64_t, bool);
template void ComplexDft<float>(const C<float>*, C<float>*, int64_t, bool);
template void RealDftForward<double>(const double*, C<double>*, int64_t);
template void RealDftForward<float>(const float*, C<float>*, int64_t);
template void RealDftBackward<double>(const C<double>*, double*, int64_t);
template void RealDftBackward<float>(const C<float>*, float*, int64_t);

// ---------------------------------------------------------------------------
// Instruction set of the passes.
// ---------------------------------------------------------------------------
namespace {


const TFftKernelSet& SetOf(TPrimitiveIsa isa) {
    switch (isa) {
        case piReference: return FftKernelsReference();
        case piAvx2: return FftKernelsAvx2();
        case piAvx512: return FftKernelsAvx512();
        default: return FftKernelsBaseline();
    }
}

TPrimitiveIsa InitialIsa() {
    TPrimitiveIsa best = PrimitiveIsaSupported(piAvx512) ? piAvx512
                         : PrimitiveIsaSupported(piAvx2) ? piAvx2
                                                         : piBaseline;
    if (const char* env = std::getenv("ROVANE_ISA")) {
        const std::string_view v(env);
        const TPrimitiveIsa named = v == "reference" ? piReference
                                    : v == "baseline" ? piBaseline
                                    : v == "avx2"     ? piAvx2
                                    : v == "avx512"   ? piAvx512
                                                      : best;
        if (PrimitiveIsaSupported(named)) best = named;
    }
    return best;
}

struct TActiveFft {
    std::atomic<const TFftKernelSet*> set;
    std::atomic<TPrimitiveIsa> isa;
    TActiveFft() {
        const TPrimitiveIsa i = InitialIsa();
        set.store(&SetOf(i));
        isa.store(i);
    }
};

TActiveFft& ActiveFft() {
    static TActiveFft a;
    return a;
}

}  // namespace

const TFftKernelSet& ActiveFftKernels() { return *ActiveFft().set.load(std::memory_order_acquire); }

}  // namespace rovane::fft

namespace rovane {

TPrimitiveIsa FftIsa() { return fft::ActiveFft().isa.load(std::memory_order_relaxed); }

bool SetFftIsa(TPrimitiveIsa isa) {
    if (isa < piReference || isa > piAvx512 || !PrimitiveIsaSupported(isa)) return false;
    fft::ActiveFft().set.store(&fft::SetOf(isa), std::memory_order_release);
    fft::ActiveFft().isa.store(isa, std::memory_order_relaxed);
    return true;
}

}  // namespace rovane
