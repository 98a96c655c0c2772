// Twin agreement, generated from the primitive tables: for every unary and
// binary row, the single routine on the single-rounded data agrees with the
// double routine to single accuracy. A row that pairs the wrong routines, or
// a single routine that drifts from its double twin, fails here.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

#include "rovane/primitives/PartsPrims.h"
#include "rovane/primitives/RandomPrims.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"

namespace {

using namespace rovane;

template <class T>
constexpr bool kComplex = std::is_same_v<T, TCplx> || std::is_same_v<T, TSCplx>;

// Data in (0.1, 0.9) and, for complex elements, imaginary parts in (-0.9, -0.1):
// inside the domain of every real function of the tables but Acosh, which
// gives NaN on both sides.
template <class T>
std::vector<T> Data(int n, int salt) {
    std::vector<T> v(n);
    for (int i = 0; i < n; ++i) {
        const double a = 0.1 + 0.8 * std::fmod(0.6180339887 * (i + 1) * (salt + 1), 1.0);
        if constexpr (kComplex<T>)
            v[i] = T(a, -0.1 - 0.8 * std::fmod(0.7548776662 * (i + 3) * (salt + 2), 1.0));
        else
            v[i] = static_cast<T>(a);
    }
    return v;
}

template <class S, class D>
std::vector<S> Narrowed(const std::vector<D>& v) {
    std::vector<S> r(v.size());
    for (size_t i = 0; i < v.size(); ++i) {
        if constexpr (kComplex<D>)
            r[i] = S(static_cast<float>(v[i].Re), static_cast<float>(v[i].Im));
        else
            r[i] = static_cast<S>(v[i]);
    }
    return r;
}

bool Agree(double d, float s) {
    if (std::isnan(d) || std::isnan(s)) return std::isnan(d) && std::isnan(s);
    return std::fabs(d - s) <= 2e-5 * std::fmax(1.0, std::fabs(d));
}
bool Agree(const TCplx& d, const TSCplx& s) { return Agree(d.Re, s.Re) && Agree(d.Im, s.Im); }

constexpr int kN = 37;

template <class TX, class TD, class FD, class FS>
void CheckUnary(const char* name, FD fd, FS fs) {
    const auto x = Data<TX>(kN, 1);
    const auto xs = Narrowed<AsSingle<TX>>(x);
    std::vector<TD> d(kN);
    std::vector<AsSingle<TD>> s(kN);
    fd(x.data(), 0, d.data(), 0, kN);
    fs(xs.data(), 0, s.data(), 0, kN);
    for (int i = 0; i < kN; ++i) ASSERT_TRUE(Agree(d[i], s[i])) << name << " at " << i;
}

template <class TX, class TY, class TD, class FD, class FS>
void CheckBinary(const char* name, FD fd, FS fs) {
    const auto x = Data<TX>(kN, 1);
    const auto y = Data<TY>(kN, 2);
    const auto xs = Narrowed<AsSingle<TX>>(x);
    const auto ys = Narrowed<AsSingle<TY>>(y);
    std::vector<TD> d(kN);
    std::vector<AsSingle<TD>> s(kN);
    fd(x.data(), 0, y.data(), 0, d.data(), 0, kN);
    fs(xs.data(), 0, ys.data(), 0, s.data(), 0, kN);
    for (int i = 0; i < kN; ++i) ASSERT_TRUE(Agree(d[i], s[i])) << name << " at " << i;
}

// One check per row of the unary and binary shapes; the other shapes have
// their own tests.
#define ROVANE_CHECK_UN(N, D, S, TX, TD) CheckUnary<TX, TD>(#D, D, S);
#define ROVANE_CHECK_BIN(N, D, S, TX, TY, TD) CheckBinary<TX, TY, TD>(#D, D, S);
#define ROVANE_CHECK_OTHER(...)
#define ROVANE_CHECK_UN_I ROVANE_CHECK_OTHER
#define ROVANE_CHECK_VAL ROVANE_CHECK_OTHER
#define ROVANE_CHECK_VAL_I ROVANE_CHECK_OTHER
#define ROVANE_CHECK_SPLIT ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVEL ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVEL_I ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVELVAL ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVELVAL_I ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVEL2 ROVANE_CHECK_OTHER
#define ROVANE_CHECK_LEVEL2_I ROVANE_CHECK_OTHER
#define ROVANE_CHECK_NORMALIZE ROVANE_CHECK_OTHER
#define ROVANE_CHECK_CONVERT_SFS ROVANE_CHECK_OTHER
#define ROVANE_CHECK_SAMPLE_UP ROVANE_CHECK_OTHER
#define ROVANE_CHECK_RAND_UNIFORM ROVANE_CHECK_OTHER
#define ROVANE_CHECK_RAND_GAUSS ROVANE_CHECK_OTHER
#define ROVANE_TWIN(N, D, S, SHAPE, ...) ROVANE_CHECK_##SHAPE(N, D, S, __VA_ARGS__)
#define ROVANE_TWIN_KERNEL ROVANE_TWIN
#define ROVANE_OWN(N, D, S, SHAPE, ...) ROVANE_CHECK_##SHAPE(N, D, S, __VA_ARGS__)
#define ROVANE_SOLO(...)

TEST(TwinTable, SingleRoutinesAgreeWithTheirDoubleTwins) {
#include "rovane/primitives/twins/Arithmetic.def"
#include "rovane/primitives/twins/VectorMath.def"
#include "rovane/primitives/twins/Parts.def"
#include "rovane/primitives/twins/Motion.def"
#include "rovane/primitives/twins/Own.def"
#include "rovane/primitives/twins/PartsExtra.def"
}

}  // namespace
