// Statistics of the float containers: means, standard deviation, root mean
// square, skewness, kurtosis, median and the sum of squares. The forms go
// through the frame of ReduceFrame.h; rows in containers/tables/reductions.tbl.
#include <algorithm>
#include <cmath>

#include "rovane/containers/ReduceFrame.h"

namespace rovane {

using frame::Kind;
using frame::kComplexRefused;
using frame::kRealRefused;
using frame::OnRun;
using frame::Reduce;
using frame::RunOf;

namespace {

template <class P>
using ElemOf = std::remove_cv_t<std::remove_pointer_t<P>>;

double RealStdDev(const TRovane& self, int32_t index, int32_t len) {
    const int32_t n = frame::ReduceLength(self, index, len);
    frame::RefuseKind(self, Kind::Real, kComplexRefused);
    if (n < 2) return NAN_;
    return OnRun<Kind::Real>(self, index, n, [](auto p, int32_t m) {
        ElemOf<decltype(p)> s = 0;
        frame::CheckStatus(prim::StdDev(p, 0, m, &s), "StdDev");
        return double(s);
    });
}

TCplx CplxMean(const TDenseRovane& self, int32_t index, int32_t len) {
    return Reduce<Kind::Complex>(self, index, len, kRealRefused, C_ZERO, [](auto p, int32_t n) {
        ElemOf<decltype(p)> m{};
        frame::CheckStatus(prim::Mean(p, 0, n, &m), "Mean");
        return TCplx(double(m.Re), double(m.Im));
    });
}

// The run normalised as (x - mean) / stdDev into a cached temporary of the
// data's precision, each element raised to `power`, and the blocked Sum().
double NormalisedPowerSum(const TDenseRovane& self, int32_t index, int32_t n, double aMean, double aStdDev,
                          int power) {
    frame::CachedVec t;
    t->Size(n, false, self.fIsDouble);
    return OnRun<Kind::Real>(self, index, n, [&](auto p, int32_t m) {
        using F = ElemOf<decltype(p)>;
        F* d = frame::Base<F>(*t) + frame::Offset<F>(*t);
        prim::Normalize(p, 0, d, 0, m, F(aMean), aStdDev);
        for (int32_t i = 0; i < m; ++i) {
            const F v = d[i];
            d[i] = power == 3 ? v * v * v : (v * v) * (v * v);
        }
        return t->Sum();
    });
}

}  // namespace

// ==== dispersion ================================================================

double TRovane::StdDev() const { return RealStdDev(*this, 0, -1); }
double TRovane::StdDev(int32_t index, int32_t len) const { return RealStdDev(*this, index, len); }
// The mean given is not used: the deviation is taken around the data's own
// mean, as the forms without it do.
double TRovane::StdDev(double) const { return RealStdDev(*this, 0, -1); }
double TRovane::StdDev(double, int32_t index, int32_t len) const { return RealStdDev(*this, index, len); }
void TRovane::StdDev(const TCplx& aMean, TCplx& aStdDev) const { StdDev(aMean, aStdDev, 0, -1); }
void TRovane::StdDev(const TCplx&, TCplx& aStdDev, int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    if (!fComplex) {
        aStdDev = TCplx(RealStdDev(*this, index, n), 0.0);
        return;
    }
    if (n < 2) {
        aStdDev = CNAN;
        return;
    }
    // Real and imaginary parts split into two temporaries, each deviation
    // by the primitive.
    aStdDev = frame::ByWidth(fIsDouble, [&](auto f) {
        using F = decltype(f);
        frame::Scratch<F, 2> parts(n);
        prim::CplxToReal(RunOf<frame::ComplexOf<F>>(*this, index), 0, parts[0], 0, parts[1], 0, n);
        F re = 0, im = 0;
        frame::CheckStatus(prim::StdDev(parts[0], 0, n, &re), "StdDev");
        frame::CheckStatus(prim::StdDev(parts[1], 0, n, &im), "StdDev");
        return TCplx(double(re), double(im));
    });
}

void TRovane::MeanAndStdDev(double& aMean, double& aStdDev) const { MeanAndStdDev(aMean, aStdDev, 0, -1); }
void TRovane::MeanAndStdDev(double& aMean, double& aStdDev, int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    frame::RefuseKind(*this, Kind::Real, kComplexRefused);
    if (n == 0) {
        aMean = aStdDev = NAN_;
        return;
    }
    if (n == 1) {
        aMean = GetElement(index);
        aStdDev = NAN_;
        return;
    }
    double m = 0, s = 0;
    OnRun<Kind::Real>(*this, index, n, [&](auto p, int32_t k) {
        ElemOf<decltype(p)> mean = 0, sd = 0;
        frame::CheckStatus(prim::MeanStdDev(p, 0, k, &mean, &sd), "MeanStdDev");
        m = double(mean);
        s = double(sd);
        return 0;
    });
    aMean = m;
    aStdDev = s;
}

double TRovane::RMS() const { return RMS(0, -1); }
double TRovane::RMS(int32_t index, int32_t len) const {
    return Reduce<Kind::Any>(*this, index, len, "", NAN_, [](auto p, int32_t n) {
        double r = 0;
        prim::Norm_L2(p, 0, n, &r);
        return std::sqrt(r * r / n);
    });
}

// ==== means and moments =============================================================

double TDenseRovane::Mean() const { return Mean(0, -1); }
double TDenseRovane::Mean(int32_t index, int32_t len) const {
    return Reduce<Kind::Real>(*this, index, len, kComplexRefused, 0.0, [](auto p, int32_t n) {
        ElemOf<decltype(p)> m = 0;
        frame::CheckStatus(prim::Mean(p, 0, n, &m), "Mean");
        return double(m);
    });
}
void TDenseRovane::Mean(double& aMean, int32_t index, int32_t len) const { aMean = Mean(index, len); }
void TDenseRovane::Mean(TCplx& aCplx) const { aCplx = CplxMean(*this, 0, -1); }
void TDenseRovane::Mean(TCplx& aCplx, int32_t index, int32_t len) const { aCplx = CplxMean(*this, index, len); }
TCplx TDenseRovane::Meanc() const { return CplxMean(*this, 0, -1); }
TCplx TDenseRovane::Meanc(int32_t index, int32_t len) const { return CplxMean(*this, index, len); }
void TDenseRovane::Meanc(TCplx& aCplx) const { aCplx = CplxMean(*this, 0, -1); }
void TDenseRovane::Meanc(TCplx& aCplx, int32_t index, int32_t len) const { aCplx = CplxMean(*this, index, len); }

double TDenseRovane::Median() const { return Median(0, -1); }
double TDenseRovane::Median(int32_t index, int32_t len) const {
    return Reduce<Kind::Real>(*this, index, len, kComplexRefused, NAN_, [](auto p, int32_t n) {
        using F = ElemOf<decltype(p)>;
        // A cached copy, partly ordered: the elements up to position h are
        // the h + 1 smallest. NaN sorts last, as an ascending sort puts it.
        frame::CachedVec t;
        t->Size(n, false, std::is_same_v<F, double>);
        F* d = frame::Base<F>(*t) + frame::Offset<F>(*t);
        std::copy(p, p + n, d);
        const auto less = [](F a, F b) { return a < b || (b != b && a == a); };
        const int32_t h = n / 2;
        std::nth_element(d, d + h, d + n, less);
        if (n % 2) return double(d[h]);
        const F below = *std::max_element(d, d + h, less);
        return (double(below) + double(d[h])) * 0.5;
    });
}

double TDenseRovane::Skewness(double aMean, double aStdDev) const { return Skewness(aMean, aStdDev, 0, -1); }
double TDenseRovane::Skewness(double aMean, double aStdDev, int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    frame::RefuseKind(*this, Kind::Real, "TRovane.Skewness: Complex vector is not allowed");
    if (n < 3) return NAN_;
    if (rovane::Equal(aStdDev, 0.0)) return INF;
    const double s = NormalisedPowerSum(*this, index, n, aMean, aStdDev, 3);
    const double dn = n;
    return s * dn / ((dn - 1) * (dn - 2));
}
double TDenseRovane::Kurtosis(double aMean, double aStdDev) const { return Kurtosis(aMean, aStdDev, 0, -1); }
double TDenseRovane::Kurtosis(double aMean, double aStdDev, int32_t index, int32_t len) const {
    const int32_t n = frame::ReduceLength(*this, index, len);
    frame::RefuseKind(*this, Kind::Real, "TRovane.Kurtosis: Complex vector is not allowed");
    if (n < 4) return NAN_;
    if (rovane::Equal(aStdDev, 0.0)) return INF;
    const double s = NormalisedPowerSum(*this, index, n, aMean, aStdDev, 4);
    const double dn = n;
    return (s * dn * (dn + 1) / (dn - 1) - 3 * (dn - 1) * (dn - 1)) / ((dn - 2) * (dn - 3));
}

double TDenseRovane::SumOfSquares() const { return SumOfSquares(0, -1); }
double TDenseRovane::SumOfSquares(int32_t index, int32_t len) const {
    return Reduce<Kind::Any>(*this, index, len, "", 0.0, [](auto p, int32_t n) {
        using T = ElemOf<decltype(p)>;
        double r = 0;
        if constexpr (frame::IsComplex<T>) {
            prim::Norm_L2(p, 0, n, &r);
            return r * r;
        } else {
            prim::DotProd(p, 0, p, 0, n, &r);
            return r;
        }
    });
}

}  // namespace rovane
