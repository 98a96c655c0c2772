// Reductions of the float containers: sums and products, extremes with their
// indexes, norms, dot products, running sums, comparison, and the matrix
// folds. Every value-returning form goes through the frame of
// ReduceFrame.h (range, kind, empty result, typed run); the members are rows
// of containers/tables/reductions.tbl.
#include "rovane/containers/Reductions.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

#include "rovane/containers/ReduceFrame.h"
#include "rovane/containers/RovaneInt.h"

namespace rovane {

using frame::Kind;
using frame::kComplexRefused;
using frame::kRealRefused;
using frame::OnRun;
using frame::Reduce;
using frame::RunOf;

namespace {

template <class T>
using FieldOf = frame::RealOf<T>;
template <class T>
inline constexpr bool IsDoubleField = std::is_same_v<FieldOf<T>, double>;

// ---- sums ------------------------------------------------------------------

constexpr int32_t kSumBlock = 2000;

// Sum() of a run: below 2000 elements one primitive call; otherwise the
// sums of blocks of 2000 (the last block runs to the end) go to a cached
// temporary of the same precision, which is summed the same way.
template <class F>
double BlockedSum(const F* p, int32_t n) {
    F s = 0;
    if (n < kSumBlock) {
        prim::Sum(p, 0, n, &s);
        return double(s);
    }
    const int32_t blocks = n / kSumBlock + (n % kSumBlock ? 1 : 0);
    frame::CachedVec t;
    t->Size(blocks, false, std::is_same_v<F, double>);
    F* q = frame::Base<F>(*t) + frame::Offset<F>(*t);
    prim::SumBlocks(p, 0, n, kSumBlock, q, 0);
    return BlockedSum<F>(q, blocks);
}

template <class F>
double RunSum(const F* p, int32_t n) {
    F s = 0;
    prim::Sum(p, 0, n, &s);
    return double(s);
}
template <class C>
TCplx RunSumc(const C* p, int32_t n) {
    C s{};
    prim::Sum(p, 0, n, &s);
    return TCplx(double(s.Re), double(s.Im));
}
// The sum of any data as a complex value (real data: imaginary part 0).
TCplx AnySum(const TRovane& self, int32_t index, int32_t len) {
    return Reduce<Kind::Any>(self, index, len, "", C_ZERO, [](auto p, int32_t n) -> TCplx {
        using T = std::remove_cv_t<std::remove_pointer_t<decltype(p)>>;
        if constexpr (frame::IsComplex<T>)
            return RunSumc(p, n);
        else
            return TCplx(RunSum(p, n), 0.0);
    });
}

template <class T>
TCplx RunProduct(const T* p, int32_t n) {
    if constexpr (frame::IsComplex<T>) {
        TCplx r;
        prim::Product_c(p, 0, n, &r);
        return r;
    } else {
        double r;
        prim::Product_d(p, 0, n, &r);
        return TCplx(r, 0.0);
    }
}
TCplx AnyProduct(const TRovane& self, int32_t index, int32_t len) {
    return Reduce<Kind::Any>(self, index, len, "", TCplx(1.0, 0.0),
                             [](auto p, int32_t n) { return RunProduct(p, n); });
}

// ---- extremes ----------------------------------------------------------------

// Quadrant code of a complex value: ascends with the angle from -pi to pi.
template <class F>
int Quadrant(F re, F im) {
    if (re < 0) return im < 0 ? 1 : 4;
    return im < 0 ? 2 : 3;
}
// Maxc / Minc over a run: the squared magnitudes in the data's precision,
// a larger (smaller) one takes over, a NaN is passed over, and on equal
// magnitudes the phase decides through the quadrant code and the real part.
template <bool IsMax, class C>
int32_t ComplexExtreme(const C* p, int32_t n) {
    using F = decltype(p->Re);
    int32_t best = 0;
    F bestMag = p[0].Re * p[0].Re + p[0].Im * p[0].Im;
    for (int32_t i = 1; i < n; ++i) {
        const F re = p[i].Re, im = p[i].Im;
        const F mag = re * re + im * im;
        if (IsMax ? mag > bestMag : mag < bestMag) {
            best = i;
            bestMag = mag;
            continue;
        }
        if (!(mag == bestMag)) continue;  // smaller (larger) or NaN
        const int qc = Quadrant(re, im), qb = Quadrant(p[best].Re, p[best].Im);
        bool take;
        if (qc != qb)
            take = IsMax ? qc > qb : qc < qb;
        else if (qc <= 2)
            take = IsMax ? re > p[best].Re : re < p[best].Re;
        else
            take = IsMax ? re < p[best].Re : re > p[best].Re;
        if (take) {
            best = i;
            bestMag = mag;
        }
    }
    return best;
}
template <bool IsMax>
int32_t ComplexExtremeForm(const TDenseRovane& self, TCplx& value, int32_t index, int32_t len) {
    const int32_t at = Reduce<Kind::Complex>(self, index, len, kRealRefused, int32_t(-1), [](auto p, int32_t n) {
        return ComplexExtreme<IsMax>(p, n);
    });
    if (at < 0) {
        value = CNAN;
        return -1;
    }
    value = self.fIsDouble ? RunOf<TCplx>(self, index)[at]
                           : TCplx(double(RunOf<TSCplx>(self, index)[at].Re), double(RunOf<TSCplx>(self, index)[at].Im));
    return at + index;
}

// Max or Min of real data with its index counted from the start of Self.
template <bool IsMax>
double RealExtreme(const TDenseRovane& self, int32_t index, int32_t len, int32_t* at) {
    int32_t where = -1;
    const double v = Reduce<Kind::Real>(self, index, len, kComplexRefused, NAN_, [&](auto p, int32_t n) {
        std::remove_cv_t<std::remove_pointer_t<decltype(p)>> value;
        int32_t i = 0;
        if constexpr (IsMax)
            frame::CheckStatus(prim::MaxIndx(p, 0, n, &value, &i), "MaxIndx");
        else
            frame::CheckStatus(prim::MinIndx(p, 0, n, &value, &i), "MinIndx");
        where = i + index;
        return double(value);
    });
    if (at) *at = where;
    return v;
}

void MaxMinForm(const TDenseRovane& self, double& aMax, int32_t* aMaxIdx, double& aMin, int32_t* aMinIdx,
                int32_t index, int32_t len) {
    int32_t imx = -1, imn = -1;
    double mn = NAN_;
    aMax = Reduce<Kind::Real>(self, index, len, "Complex = true", NAN_, [&](auto p, int32_t n) {
        std::remove_cv_t<std::remove_pointer_t<decltype(p)>> lo, hi;
        int32_t a = 0, b = 0;
        frame::CheckStatus(prim::MinMaxIndx(p, 0, n, &lo, &a, &hi, &b), "MinMaxIndx");
        imn = a + index;
        imx = b + index;
        mn = double(lo);
        return double(hi);
    });
    aMin = mn;
    if (aMaxIdx) *aMaxIdx = imx;
    if (aMinIdx) *aMinIdx = imn;
}

// ---- norms -------------------------------------------------------------------

enum class NormKind { C, L1, L2 };

template <NormKind N, class T>
double RunNorm(const T* p, int32_t n) {
    double r = 0;
    if constexpr (N == NormKind::C)
        prim::Norm_Inf(p, 0, n, &r);
    else if constexpr (N == NormKind::L1)
        prim::Norm_L1(p, 0, n, &r);
    else
        prim::Norm_L2(p, 0, n, &r);
    return r;
}
template <NormKind N, class T>
double RunNormDiff(const T* p, const T* q, int32_t n) {
    double r = 0;
    if constexpr (N == NormKind::C)
        prim::NormDiff_Inf(p, 0, q, 0, n, &r);
    else if constexpr (N == NormKind::L1)
        prim::NormDiff_L1(p, 0, q, 0, n, &r);
    else
        prim::NormDiff_L2(p, 0, q, 0, n, &r);
    return r;
}
template <NormKind N>
double NormForm(const TRovane& self, int32_t index, int32_t len) {
    return Reduce<Kind::Any>(self, index, len, "", 0.0, [](auto p, int32_t n) { return RunNorm<N>(p, n); });
}
// The norm of Self - Vec over a run, divided by the norm of Self's run when
// relativeError is set (a zero norm gives what the division gives).
template <NormKind N>
double NormDiffForm(const TRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len,
                    bool relativeError) {
    if (self.fConditionCheck) {
        if (&vec == &self) EInvalidArgumentRaise("Self = Rovane");
        if (self.fComplex != vec.fComplex) EInvalidArgumentRaise("Self.Complex <> Rovane.Complex");
        if (self.fIsDouble != vec.fIsDouble) EInvalidArgumentRaise("Self.IsDouble <> Rovane.IsDouble");
    }
    self.ValidateParams2(vec, vecIndex, index, len);
    if (len == 0) return 0.0;
    const double d = OnRun<Kind::Any>(self, index, len, [&](auto p, int32_t n) {
        using T = std::remove_cv_t<std::remove_pointer_t<decltype(p)>>;
        return RunNormDiff<N>(p, RunOf<T>(vec, vecIndex), n);
    });
    if (!relativeError) return d;
    return d / OnRun<Kind::Any>(self, index, len, [](auto p, int32_t n) { return RunNorm<N>(p, n); });
}

// ---- dot products ------------------------------------------------------------

double DotForm(const TDenseRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    if (len == 0) return 0.0;
    return OnRun<Kind::Real>(self, index, len, [&](auto p, int32_t n) {
        using F = std::remove_cv_t<std::remove_pointer_t<decltype(p)>>;
        double r = 0;
        prim::DotProd(p, 0, RunOf<F>(vec, vecIndex), 0, n, &r);
        return r;
    });
}

TCplx DotcForm(const TDenseRovane& self, const TRovane& vec, bool conjVec, int32_t vecIndex, int32_t index,
               int32_t len) {
    if (self.fConditionCheck) {
        if (!(self.fComplex || vec.fComplex)) EInvalidArgumentRaise("not (fComplex or Vec.Complex)");
        if (conjVec && self.fComplex != vec.fComplex) EInvalidArgumentRaise("ConjVec and (fComplex <> Vec.Complex)");
    }
    if (len == 0) return C_ZERO;
    return frame::ByWidth(self.fIsDouble, [&](auto f) -> TCplx {
        using F = decltype(f);
        using C = frame::ComplexOf<F>;
        TCplx r = C_ZERO;
        if (self.fComplex && vec.fComplex) {
            const C* a = RunOf<C>(self, index);
            const C* b = RunOf<C>(vec, vecIndex);
            if (conjVec) {
                // conj(Vec) * Self through BLAS dotc, Vec first.
                if constexpr (std::is_same_v<F, double>) {
                    blas::Blas().zdotc_sub(len, b, 1, a, 1, &r);
                } else {
                    TSCplx s;
                    blas::Blas().cdotc_sub(len, b, 1, a, 1, &s);
                    r = TCplx(double(s.Re), double(s.Im));
                }
            } else {
                prim::DotProd(a, 0, b, 0, len, &r);
            }
        } else if (self.fComplex) {
            prim::DotProd(RunOf<F>(vec, vecIndex), 0, RunOf<C>(self, index), 0, len, &r);
        } else {
            prim::DotProd(RunOf<F>(self, index), 0, RunOf<C>(vec, vecIndex), 0, len, &r);
        }
        return r;
    });
}

// ---- comparison ----------------------------------------------------------------

// The default tolerance of IsEqual: ten times the machine epsilon of the
// data's precision (for double the double 0x3CE4000000000000).
double DefaultTolerance(const TRovane& self) {
    return self.fIsDouble ? std::bit_cast<double>(0x3CE4000000000000ull) : 10.0 * double(EPS_SINGLE);
}

bool Finite(double v) { return v - v == 0; }

// One pair under the rules of IsEqual.
struct PairRule {
    double tolerance;
    TCompare compare;
    double zeroTolerance;
    bool operator()(double a, double b) const {
        if (!Finite(a) || !Finite(b)) {
            const bool na = a != a, nb = b != b;
            if (na || nb) return na && nb;
            return !Finite(a) && !Finite(b);  // both infinite, any signs
        }
        if (compare == cmpAbsolute) {
            if (tolerance == 0) return a == b;
            return std::abs(a - b) <= tolerance;
        }
        double A = std::abs(a), B = std::abs(b);
        if (A < zeroTolerance) A = 0;
        if (B < zeroTolerance) B = 0;
        double s = A > B ? A : B;
        if (s == 0) s = 1;
        return std::abs(a - b) <= tolerance * s;
    }
};

// Compares `count` reals of two runs (complex runs as reals of twice the
// length) pair by pair; the first pair that fails decides.
template <class F>
bool RealsEqual(const F* a, const F* b, int64_t count, const PairRule& rule) {
    for (int64_t i = 0; i < count; ++i)
        if (!rule(double(a[i]), double(b[i]))) return false;
    return true;
}
template <class F>
bool RealsEqualValue(const F* a, int64_t count, int step, double re, double im, const PairRule& rule) {
    for (int64_t i = 0; i < count; i += step) {
        if (!rule(double(a[i]), re)) return false;
        if (step == 2 && !rule(double(a[i + 1]), im)) return false;
    }
    return true;
}

bool IsEqualCore(const TRovane& self, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len,
                 double tolerance, TCompare compare) {
    self.ValidateParams2(vec, vecIndex, index, len);
    if (self.fComplex != vec.fComplex) return false;
    if (len == 0) return true;
    if (self.fIsDouble != vec.fIsDouble) return false;  // only reached with ConditionCheck off
    const PairRule rule{std::abs(tolerance), compare, self.fZeroTolerance};
    const int64_t count = int64_t(len) * (self.fComplex ? 2 : 1);
    return frame::ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        const int scale = self.fComplex ? 2 : 1;
        return RealsEqual(frame::Base<F>(self) + int64_t(self.FDataOffset) + int64_t(index) * scale,
                          frame::Base<F>(vec) + int64_t(vec.FDataOffset) + int64_t(vecIndex) * scale, count, rule);
    });
}

bool IsEqualValue(const TRovane& self, double re, double im, bool complexValue, double tolerance,
                  TCompare compare) {
    // A complex value with a nonzero imaginary part is never equal to real data.
    if (!self.fComplex && complexValue && im != 0) return false;
    if (self.fLength == 0) return true;
    const PairRule rule{std::abs(tolerance), compare, self.fZeroTolerance};
    const int step = self.fComplex ? 2 : 1;
    return frame::ByWidth(self.fIsDouble, [&](auto f) {
        using F = decltype(f);
        return RealsEqualValue(frame::Base<F>(self) + self.FDataOffset, int64_t(self.fLength) * step, step, re, im,
                               rule);
    });
}

// ---- running sums ----------------------------------------------------------------

// Running sum of a run of `src` into `dst` (may be the same run), with a
// stride: 1 along the run, Cols down the columns of a matrix.
void RunningSum(const TRovane& src, int32_t srcIndex, TRovane& dst, int32_t dstIndex, int32_t len, int32_t stride) {
    if (len <= 0) return;
    const frame::Unaliased in(src, srcIndex, dst, dstIndex, len);
    const TRovane& s = in.Src();
    const int32_t si = in.Index();
    frame::ByWidth(dst.fIsDouble, [&](auto f) {
        using F = decltype(f);
        using C = frame::ComplexOf<F>;
        if (dst.fComplex) {
            C* d = frame::Base<C>(dst) + frame::Offset<C>(dst);
            const C* x = frame::Base<C>(s) + frame::Offset<C>(s);
            if (stride == 1)
                prim::CumSumc(x, si, d, dstIndex, len);
            else
                prim::CumSumDeltac(x, si, d, dstIndex, len, stride);
        } else {
            F* d = frame::Base<F>(dst) + frame::Offset<F>(dst);
            const F* x = frame::Base<F>(s) + frame::Offset<F>(s);
            if (stride == 1)
                prim::CumSumd(x, si, d, dstIndex, len);
            else
                prim::CumSumDelta(x, si, d, dstIndex, len, stride);
        }
    });
}

}  // namespace

// ==== sums and products ==========================================================

double TRovane::Sum() const {
    frame::RefuseKind(*this, Kind::Real, kComplexRefused);
    if (fLength == 0) return 0.0;
    return OnRun<Kind::Real>(*this, 0, fLength, [](auto p, int32_t n) { return BlockedSum(p, n); });
}
double TRovane::Sum(int32_t index, int32_t len) const {
    return Reduce<Kind::Real>(*this, index, len, kComplexRefused, 0.0, [](auto p, int32_t n) { return RunSum(p, n); });
}
void TRovane::Sum(double& aSum, int32_t index, int32_t len) const { aSum = Sum(index, len); }
void TRovane::Sum(TCplx& aCplx) const { Sum(aCplx, 0, -1); }
void TRovane::Sum(TCplx& aCplx, int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    if (fConditionCheck && !fComplex) EInvalidArgumentRaise("TRovane.Sum: Self is not complex");
    // Without the check, real data give their sum as a complex value.
    aCplx = AnySum(*this, index, n);
}
TCplx TRovane::Sumc() const { return AnySum(*this, 0, -1); }
TCplx TRovane::Sumc(int32_t index, int32_t len) const { return AnySum(*this, index, len); }

double TRovane::Product() const { return Product(0, -1); }
double TRovane::Product(int32_t index, int32_t len) const {
    return Reduce<Kind::Real>(*this, index, len, kComplexRefused, 1.0,
                              [](auto p, int32_t n) { return RunProduct(p, n).Re; });
}
void TRovane::Product(double& aValue) const { aValue = Product(0, -1); }
void TRovane::Product(double& aValue, int32_t index, int32_t len) const { aValue = Product(index, len); }
void TRovane::Product(TCplx& aCplx) const { aCplx = AnyProduct(*this, 0, -1); }
void TRovane::Product(TCplx& aCplx, int32_t index, int32_t len) const { aCplx = AnyProduct(*this, index, len); }
TCplx TRovane::Productc() const { return AnyProduct(*this, 0, -1); }
TCplx TRovane::Productc(int32_t index, int32_t len) const { return AnyProduct(*this, index, len); }

// ==== comparison ===================================================================

bool TRovane::IsEqual(const TRovane& vec) const {
    if (vec.fLength != fLength) return false;
    return IsEqualCore(*this, vec, 0, 0, fLength, DefaultTolerance(*this), cmpAbsolute);
}
bool TRovane::IsEqual(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) const {
    return IsEqualCore(*this, vec, vecIndex, index, len, DefaultTolerance(*this), cmpAbsolute);
}
bool TRovane::IsEqual(const TRovane& vec, double tolerance, TCompare compare) const {
    if (vec.fLength != fLength) return false;
    return IsEqualCore(*this, vec, 0, 0, fLength, tolerance, compare);
}
bool TRovane::IsEqual(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len, double tolerance,
                      TCompare compare) const {
    return IsEqualCore(*this, vec, vecIndex, index, len, tolerance, compare);
}
bool TRovane::IsEqual(double value) const {
    return IsEqualValue(*this, value, 0.0, false, DefaultTolerance(*this), cmpAbsolute);
}
bool TRovane::IsEqual(const TCplx& value) const {
    return IsEqualValue(*this, value.Re, value.Im, true, DefaultTolerance(*this), cmpAbsolute);
}
bool TRovane::IsEqual(double value, double tolerance, TCompare compare) const {
    return IsEqualValue(*this, value, 0.0, false, tolerance, compare);
}
bool TRovane::IsEqual(const TCplx& value, double tolerance, TCompare compare) const {
    return IsEqualValue(*this, value.Re, value.Im, true, tolerance, compare);
}

bool TVec::Equal(const TRovane& vec, double tolerance) const { return IsEqual(vec, tolerance, cmpAbsolute); }
bool TVec::Equal(const TRovane& vec, double tolerance, TCompare compare) const {
    return IsEqual(vec, tolerance, compare);
}
bool TMtx::Equal(const TMtx& mtx, double tolerance) const { return Equal(mtx, tolerance, cmpAbsolute); }
bool TMtx::Equal(const TMtx& mtx, double tolerance, TCompare compare) const {
    if (mtx.fRows != fRows || mtx.fCols != fCols || mtx.fComplex != fComplex) return false;
    return IsEqual(mtx, tolerance, compare);
}

// ==== extremes =====================================================================

double TDenseRovane::Max() const { return RealExtreme<true>(*this, 0, -1, nullptr); }
double TDenseRovane::Max(int32_t index, int32_t len) const { return RealExtreme<true>(*this, index, len, nullptr); }
void TDenseRovane::Max(double& aValue, int32_t index, int32_t len) const {
    aValue = RealExtreme<true>(*this, index, len, nullptr);
}
void TDenseRovane::Max(double& aValue, int32_t& aIndex) const { aValue = RealExtreme<true>(*this, 0, -1, &aIndex); }
void TDenseRovane::Max(double& aValue, int32_t& aIndex, int32_t index, int32_t len) const {
    aValue = RealExtreme<true>(*this, index, len, &aIndex);
}
int32_t TDenseRovane::Max(TCplx& aCplx, int32_t index, int32_t len) const { return Maxc(aCplx, index, len); }
double TDenseRovane::Min() const { return RealExtreme<false>(*this, 0, -1, nullptr); }
double TDenseRovane::Min(int32_t index, int32_t len) const { return RealExtreme<false>(*this, index, len, nullptr); }
void TDenseRovane::Min(double& aValue, int32_t index, int32_t len) const {
    aValue = RealExtreme<false>(*this, index, len, nullptr);
}
void TDenseRovane::Min(double& aValue, int32_t& aIndex) const { aValue = RealExtreme<false>(*this, 0, -1, &aIndex); }
void TDenseRovane::Min(double& aValue, int32_t& aIndex, int32_t index, int32_t len) const {
    aValue = RealExtreme<false>(*this, index, len, &aIndex);
}
int32_t TDenseRovane::Min(TCplx& aCplx, int32_t index, int32_t len) const { return Minc(aCplx, index, len); }

TCplx TDenseRovane::Maxc() const { return Maxc(0, -1); }
TCplx TDenseRovane::Maxc(int32_t index, int32_t len) const {
    TCplx v;
    ComplexExtremeForm<true>(*this, v, index, len);
    return v;
}
int32_t TDenseRovane::Maxc(TCplx& aCplx, int32_t index, int32_t len) const {
    return ComplexExtremeForm<true>(*this, aCplx, index, len);
}
TCplx TDenseRovane::Minc() const { return Minc(0, -1); }
TCplx TDenseRovane::Minc(int32_t index, int32_t len) const {
    TCplx v;
    ComplexExtremeForm<false>(*this, v, index, len);
    return v;
}
int32_t TDenseRovane::Minc(TCplx& aCplx, int32_t index, int32_t len) const {
    return ComplexExtremeForm<false>(*this, aCplx, index, len);
}

void TDenseRovane::MaxMin(double& aMax, double& aMin) const { MaxMinForm(*this, aMax, nullptr, aMin, nullptr, 0, -1); }
void TDenseRovane::MaxMin(double& aMax, double& aMin, int32_t index, int32_t len) const {
    MaxMinForm(*this, aMax, nullptr, aMin, nullptr, index, len);
}
void TDenseRovane::MaxMin(double& aMax, int32_t& aMaxIdx, double& aMin, int32_t& aMinIdx) const {
    MaxMinForm(*this, aMax, &aMaxIdx, aMin, &aMinIdx, 0, -1);
}
void TDenseRovane::MaxMin(double& aMax, int32_t& aMaxIdx, double& aMin, int32_t& aMinIdx, int32_t index,
                          int32_t len) const {
    MaxMinForm(*this, aMax, &aMaxIdx, aMin, &aMinIdx, index, len);
}

double TDenseRovane::Range() const { return Range(0, -1); }
double TDenseRovane::Range(int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    frame::RefuseKind(*this, Kind::Real, kComplexRefused);
    if (n == 0) return 0.0;
    double mx, mn;
    MaxMinForm(*this, mx, nullptr, mn, nullptr, index, n);
    return mx - mn;
}
void TDenseRovane::Range(double& aRange, int32_t index, int32_t len) const { aRange = Range(index, len); }

// ==== norms and dot products ===========================================================

double TDenseRovane::NormC() const { return NormForm<NormKind::C>(*this, 0, -1); }
double TDenseRovane::NormC(int32_t index, int32_t len) const { return NormForm<NormKind::C>(*this, index, len); }
double TDenseRovane::NormC(const TRovane& vec, bool relativeError) const {
    return NormDiffForm<NormKind::C>(*this, vec, 0, 0, fLength, relativeError);
}
double TDenseRovane::NormC(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len, bool relativeError) const {
    return NormDiffForm<NormKind::C>(*this, vec, vecIndex, index, len, relativeError);
}
double TDenseRovane::NormL1() const { return NormForm<NormKind::L1>(*this, 0, -1); }
double TDenseRovane::NormL1(int32_t index, int32_t len) const { return NormForm<NormKind::L1>(*this, index, len); }
double TDenseRovane::NormL1(const TRovane& vec, bool relativeError) const {
    return NormDiffForm<NormKind::L1>(*this, vec, 0, 0, fLength, relativeError);
}
double TDenseRovane::NormL1(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len,
                            bool relativeError) const {
    return NormDiffForm<NormKind::L1>(*this, vec, vecIndex, index, len, relativeError);
}
double TDenseRovane::NormL2() const { return NormForm<NormKind::L2>(*this, 0, -1); }
double TDenseRovane::NormL2(int32_t index, int32_t len) const { return NormForm<NormKind::L2>(*this, index, len); }
double TDenseRovane::NormL2(const TRovane& vec, bool relativeError) const {
    return NormDiffForm<NormKind::L2>(*this, vec, 0, 0, fLength, relativeError);
}
double TDenseRovane::NormL2(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len,
                            bool relativeError) const {
    return NormDiffForm<NormKind::L2>(*this, vec, vecIndex, index, len, relativeError);
}

double TDenseRovane::DotProd(const TRovane& vec) const {
    if (fConditionCheck) {
        if (vec.fLength != fLength) EInvalidArgumentRaise("DotProd: Vec.Length <> Self.Length");
        if (vec.fIsDouble != fIsDouble) EInvalidArgumentRaise("DotProd: Vec.IsDouble <> Self.IsDouble");
    }
    // Complex data would be read as reals: refused whatever ConditionCheck says.
    if (vec.fComplex || fComplex) EInvalidArgumentRaise("Vec.Complex or Self.Complex");
    return DotForm(*this, vec, 0, 0, fLength);
}
double TDenseRovane::DotProd(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) const {
    ValidateParams2(vec, vecIndex, index, len);
    if (vec.fComplex || fComplex) EInvalidArgumentRaise("Vec.Complex or Self.Complex");
    return DotForm(*this, vec, vecIndex, index, len);
}
TCplx TDenseRovane::DotProdc(const TRovane& vec) const { return DotProdc(vec, false); }
TCplx TDenseRovane::DotProdc(const TRovane& vec, bool conjVec) const {
    if (fConditionCheck && vec.fLength != fLength) EInvalidArgumentRaise("DotProdc: Vec.Length <> Self.Length");
    return DotProdc(vec, conjVec, 0, 0, fLength);
}
TCplx TDenseRovane::DotProdc(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) const {
    return DotProdc(vec, false, vecIndex, index, len);
}
TCplx TDenseRovane::DotProdc(const TRovane& vec, bool conjVec, int32_t vecIndex, int32_t index, int32_t len) const {
    ValidateParams2(vec, vecIndex, index, len);
    return DotcForm(*this, vec, conjVec, vecIndex, index, len);
}

// ==== running sums =====================================================================

TDenseRovane& TDenseRovane::CumSum() {
    if (fLength >= 2) RunningSum(*this, 0, *this, 0, fLength, 1);
    return *this;
}
TDenseRovane& TDenseRovane::CumSum(int32_t index, int32_t len) {
    ValidateParams(index, len);
    if (len >= 2) RunningSum(*this, index, *this, index, len, 1);
    return *this;
}
TDenseRovane& TDenseRovane::CumSum(const TRovane& vec) {
    if (&vec == this) return CumSum();
    Size(vec);
    RunningSum(vec, 0, *this, 0, fLength, 1);
    return *this;
}
TDenseRovane& TDenseRovane::CumSum(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    ValidateParams2(vec, vecIndex, index, len);
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    RunningSum(vec, vecIndex, *this, index, len, 1);
    return *this;
}
TVec& TVec::CumSum() {
    TDenseRovane::CumSum();
    return *this;
}
TVec& TVec::CumSum(int32_t index, int32_t len) {
    TDenseRovane::CumSum(index, len);
    return *this;
}
TVec& TVec::CumSum(const TRovane& vec) {
    TDenseRovane::CumSum(vec);
    return *this;
}
TVec& TVec::CumSum(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len) {
    TDenseRovane::CumSum(vec, vecIndex, index, len);
    return *this;
}
TMtx& TMtx::CumSum() {
    RunningSum(*this, 0, *this, 0, fLength, fCols);
    return *this;
}
TMtx& TMtx::CumSum(int32_t index, int32_t len) {
    ValidateParams(index, len);
    RunningSum(*this, index, *this, index, len, fCols);
    return *this;
}
TMtx& TMtx::CumSum(const TMtx& mtx) {
    if (&mtx == this) EInvalidArgumentRaise("Mtx = Self");
    Size(mtx);
    RunningSum(mtx, 0, *this, 0, fLength, fCols);
    return *this;
}
TMtx& TMtx::CumSum(const TMtx& mtx, int32_t mtxIndex, int32_t index, int32_t len) {
    ValidateParams2(mtx, mtxIndex, index, len);
    if (mtx.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    RunningSum(mtx, mtxIndex, *this, index, len, fCols);
    return *this;
}

// ==== matrix folds =====================================================================

TCplx TMtx::Trace() const {
    const int32_t n = fRows < fCols ? fRows : fCols;
    TCplx s = C_ZERO;
    for (int32_t i = 0; i < n; ++i) {
        const int32_t at = i * fCols + i;
        if (fComplex)
            s = TCplx(s.Re + (fIsDouble ? RunOf<TCplx>(*this, at)->Re : double(RunOf<TSCplx>(*this, at)->Re)),
                      s.Im + (fIsDouble ? RunOf<TCplx>(*this, at)->Im : double(RunOf<TSCplx>(*this, at)->Im)));
        else
            s.Re += GetElement(at);
    }
    return s;
}
double TMtx::Norm1() const {
    if (fLength == 0) return NAN_;
    // Column sums of magnitudes, row by row (the rows are contiguous).
    std::vector<double> cols(size_t(fCols), 0.0);
    for (int32_t r = 0; r < fRows; ++r)
        for (int32_t c = 0; c < fCols; ++c) {
            const int32_t at = r * fCols + c;
            double m;
            if (fComplex) {
                const TCplx z = fIsDouble ? *RunOf<TCplx>(*this, at)
                                          : TCplx(double(RunOf<TSCplx>(*this, at)->Re),
                                                  double(RunOf<TSCplx>(*this, at)->Im));
                m = std::hypot(z.Re, z.Im);
            } else {
                m = std::abs(GetElement(at));
            }
            cols[size_t(c)] += m;
        }
    double best = cols[0];
    for (double v : cols)
        if (v > best || v != v) best = v;
    return best;
}
double TMtx::NormInf() const {
    if (fLength == 0) return NAN_;
    double best = 0;
    for (int32_t r = 0; r < fRows; ++r) {
        double s;
        if (fComplex)
            s = NormL1(r * fCols, fCols);
        else if (fIsDouble)
            s = blas::Blas().dasum(fCols, RunOf<double>(*this, r * fCols), 1);
        else
            s = blas::Blas().sasum(fCols, RunOf<float>(*this, r * fCols), 1);
        if (r == 0 || s > best || s != s) best = s;
    }
    return best;
}
double TMtx::NormFro() const { return NormL2(); }

// ==== differences, integration and grouping ===========================================

namespace {
// d[di + i] = x[xi + i + lag] - x[xi + i], read through a copy when the runs overlap.
void LagDifference(const TRovane& x, int32_t xIndex, TRovane& dst, int32_t dstIndex, int32_t len, int32_t lag) {
    if (len <= 0) return;
    const frame::Unaliased in(x, xIndex, dst, dstIndex, len + lag);
    const TRovane& s = in.Src();
    const int32_t si = in.Index();
    frame::ByPrecision(dst.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        // Sub computes the second source minus the first.
        prim::Sub(RunOf<T>(s, 0), si, RunOf<T>(s, 0), si + lag, frame::Base<T>(dst) + frame::Offset<T>(dst),
                  dstIndex, len);
    });
}
int32_t BinAt(const TVecInt& bins, int32_t i) {
    switch (bins.fIntPrecision) {
        case prInt32: return bins.IValues[i];
        case prInt16: return bins.SIValues[i];
        default: return bins.BValues[i];
    }
}
// Self[Bins[i]] += Data[i] over real data; a bin outside Self is refused
// before anything is added.
void AddByBins(TVec& self, const TVecInt& bins, const TVec& data, const char* who) {
    for (int32_t i = 0; i < bins.fLength; ++i) {
        const int32_t b = BinAt(bins, i);
        if (b < 0 || b >= self.fLength) ERangeErrorRaiseFmt("%s: Bins[%d] = %d is outside 0..%d", who, i, b, self.fLength - 1);
    }
    for (int32_t i = 0; i < bins.fLength; ++i) {
        const int32_t b = BinAt(bins, i);
        self.PutElement(b, self.GetElement(b) + data.GetElement(i));
    }
}
}  // namespace

TDenseRovane& TDenseRovane::Difference(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len, int32_t lag) {
    ValidateParams2(vec, vecIndex, index, len);
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    if (lag < 0) EInvalidArgumentRaise("Lag < 0");
    if (range::OutOfRange(vecIndex, int64_t(len) + lag, vec.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d Len: %d, Length: %d", vecIndex, len + lag, vec.fLength);
    LagDifference(vec, vecIndex, *this, index, len, lag);
    return *this;
}
TVec& TVec::Difference(int32_t lag) {
    if (lag < 0) EInvalidArgumentRaise("Lag < 0");
    const int32_t n = int64_t(fLength) - lag > 0 ? fLength - lag : 0;
    if (n > 0) {
        frame::CachedVec src;
        src->Copy(*this);
        Size(n);
        LagDifference(*src, 0, *this, 0, n, lag);
    } else {
        Size(0);
    }
    return *this;
}
TVec& TVec::Difference(const TRovane& vec, int32_t lag) {
    if (&vec == this) return Difference(lag);
    if (lag < 0) EInvalidArgumentRaise("Lag < 0");
    const int32_t n = int64_t(vec.fLength) - lag > 0 ? vec.fLength - lag : 0;
    Size(n, vec.fFloatPrecision);
    LagDifference(vec, 0, *this, 0, n, lag);
    return *this;
}
TVec& TVec::Difference(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len, int32_t lag) {
    TDenseRovane::Difference(vec, vecIndex, index, len, lag);
    return *this;
}

TVec& TVec::Integrate(const TVec& init) {
    frame::CachedVec src;
    src->Copy(*this);
    return Integrate(*src, init);
}
TVec& TVec::Integrate(const TVec& vec, const TVec& init) {
    if (vec.fComplex || vec.fLength < 2) EInvalidArgumentRaise("TVec.Integrate: (Vec.Complex) or (Vec.Length<2)");
    if (init.fComplex || init.fLength == 0) EInvalidArgumentRaise("TVec.Integrate: (Init.Complex) or (Init.Length = 0)");
    // Init then Vec in one temporary; for each order k the run from
    // Init.Length - k to the end is summed in place.
    const int32_t m = init.fLength, n = vec.fLength;
    frame::CachedVec t;
    t->Size(m + n, false, vec.fIsDouble);
    for (int32_t i = 0; i < m; ++i) t->PutElement(i, init.GetElement(i));
    for (int32_t i = 0; i < n; ++i) t->PutElement(m + i, vec.GetElement(i));
    for (int32_t k = 1; k <= m; ++k) RunningSum(*t, m - k, *t, m - k, n + k, 1);
    if (&vec != this) Size(n, false, vec.fIsDouble);
    for (int32_t i = 0; i < n; ++i) PutElement(i, t->GetElement(m + i));
    return *this;
}

TVec& TVec::GroupSum(const TVecInt& bins, const TVec& data, int32_t binCount) {
    if (bins.fLength != data.fLength) EInvalidArgumentRaise("TVec.GroupSum: Bins.Length <> Data.Length");
    if (data.fComplex) EInvalidArgumentRaise("TVec.GroupSum: Complex = True");
    int32_t count = binCount;
    if (count < 0) {
        count = -1;
        for (int32_t i = 0; i < bins.fLength; ++i) count = std::max(count, BinAt(bins, i));
    }
    if (count == INT32_MAX) ERangeErrorRaise("TVec.GroupSum: BinCount + 1 > MaxInt");
    Size(count + 1, false, data.fIsDouble);
    SetZero();
    AddByBins(*this, bins, data, "TVec.GroupSum");
    return *this;
}
TVec& TVec::GroupSumIteration(const TVecInt& bins, const TVec& data, int32_t binCount) {
    if (bins.fLength != data.fLength || int64_t(fLength) != int64_t(binCount) + 1)
        EInvalidArgumentRaise("TVec.GroupSumIteration: Bins.Length <> Data.Length");
    if (fFloatPrecision != data.fFloatPrecision)
        EInvalidArgumentRaise("TVec.GroupSumIteration: FloatPrecision <> Data.FloatPrecision");
    if (data.fComplex) EInvalidArgumentRaise("TVec.GroupSumIteration: Complex = True");
    AddByBins(*this, bins, data, "TVec.GroupSumIteration");
    return *this;
}

TVec& TVec::Norm(const TRovane& vec) {
    TRovane::PowerSpectrum(vec);
    return *this;
}

// ==== free functions =====================================================================

double Mean(const TDenseRovane& x) { return x.Mean(); }
double Mean(const TDenseRovane& x, int32_t index, int32_t len) { return x.Mean(index, len); }
double Max(const TDenseRovane& x) { return x.Max(); }
double Max(const TDenseRovane& x, int32_t index, int32_t len) { return x.Max(index, len); }
double Min(const TDenseRovane& x) { return x.Min(); }
double Min(const TDenseRovane& x, int32_t index, int32_t len) { return x.Min(index, len); }
double RMS(const TRovane& x) { return x.RMS(); }
double RMS(const TRovane& x, int32_t index, int32_t len) { return x.RMS(index, len); }
double StdDev(const TRovane& x) { return x.StdDev(); }
double StdDev(const TRovane& x, int32_t index, int32_t len) { return x.StdDev(index, len); }
double Median(const TDenseRovane& x) { return x.Median(); }
double Median(const TDenseRovane& x, int32_t index, int32_t len) { return x.Median(index, len); }
double NormC(const TDenseRovane& x) { return x.NormC(); }
double NormC(const TDenseRovane& x, int32_t index, int32_t len) { return x.NormC(index, len); }
double NormL1(const TDenseRovane& x) { return x.NormL1(); }
double NormL1(const TDenseRovane& x, int32_t index, int32_t len) { return x.NormL1(index, len); }
double NormL2(const TDenseRovane& x) { return x.NormL2(); }
double NormL2(const TDenseRovane& x, int32_t index, int32_t len) { return x.NormL2(index, len); }
double Kurtosis(const TDenseRovane& x, double aMean, double aStdDev) { return x.Kurtosis(aMean, aStdDev); }
double Skewness(const TDenseRovane& x, double aMean, double aStdDev) { return x.Skewness(aMean, aStdDev); }
TCplx Trace(const TMtx& x) { return x.Trace(); }
double Norm1(const TMtx& x) { return x.Norm1(); }
double NormInf(const TMtx& x) { return x.NormInf(); }
bool Equal(const TVec& x, const TRovane& vec, double tolerance) { return x.Equal(vec, tolerance); }
bool Equal(const TVec& x, const TRovane& vec, double tolerance, TCompare compare) {
    return x.Equal(vec, tolerance, compare);
}
bool Equal(const TMtx& x, const TMtx& mtx, double tolerance) { return x.Equal(mtx, tolerance); }
bool Equal(const TMtx& x, const TMtx& mtx, double tolerance, TCompare compare) {
    return x.Equal(mtx, tolerance, compare);
}

}  // namespace rovane
