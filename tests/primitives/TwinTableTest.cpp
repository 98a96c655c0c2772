// The contract sweep of the primitives, generated from their tables: for
// every unary and binary row, in both precisions, a negative length is a
// size error, a zero length writes nothing, indexes equal advanced pointers,
// every kernel table agrees with the reference table, and the single routine
// on the single-rounded data agrees with the double routine to single
// accuracy. A row that pairs the wrong routines, a kernel that reads past its
// run or drifts on one instruction set fails here.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

#include "rovane/primitives/PartsPrims.h"
#include "rovane/primitives/RandomPrims.h"
#include "rovane/primitives/fastlib.h"
#include "rovane/primitives/ippspl.h"
#include "rovane/primitives/ippspl_core.h"
#include "NumericTestUtil.h"

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

// Element-wise within a few units in the last place (NaN matching NaN): two
// kernel tables may round a transcendental function differently.
template <class T>
bool Close(const T& a, const T& b) {
    if constexpr (kComplex<T>)
        return Close(a.Re, b.Re) && Close(a.Im, b.Im);
    else
        return test_util::UlpDistance(a, b) <= 4;
}

template <class T>
bool Same(const T& a, const T& b) {
    if constexpr (kComplex<T>)
        return test_util::BitSame(a.Re, b.Re) && test_util::BitSame(a.Im, b.Im);
    else
        return test_util::BitSame(a, b);
}

// The tables this processor runs, the reference first.
std::vector<TPrimitiveIsa> Tables() {
    std::vector<TPrimitiveIsa> r;
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512})
        if (isa <= BestPrimitiveIsa()) r.push_back(isa);
    return r;
}

// Restores the table the process started with, also when a check fails.
struct TableGuard {
    ~TableGuard() { SetPrimitiveIsa(DefaultPrimitiveIsa()); }
};

// The contract of one routine f(inputs..., d, dIndex, len) on element type
// TD: run(f, xOffset, dst, dOffset, len) calls it with the inputs at index
// xOffset.
template <class TD, class Run>
void CheckContract(const std::string& name, Run run) {
    const TableGuard guard;
    std::vector<TD> d(kN + 8, TD(7)), e(kN + 8, TD(7));
    // The library's own routines (no status) must treat a negative length
    // as empty.
    constexpr bool hasStatus = !std::is_void_v<decltype(run(0, d.data(), 0, 0))>;
    if constexpr (hasStatus) {
        EXPECT_EQ(run(0, d.data(), 0, -1), ippStsSizeErr) << name;
        EXPECT_EQ(run(0, d.data(), 0, 0), ippStsNoErr) << name;
    } else {
        run(0, d.data(), 0, -1);
        run(0, d.data(), 0, 0);
    }
    for (const TD& v : d) ASSERT_TRUE(Same(v, TD(7))) << name << ": an empty run wrote";
    // Index 3 into the inputs and 5 into the destination: the elements
    // around the run stay, the run equals the call on advanced pointers.
    run(3, d.data(), 5, kN - 3);
    run(3, e.data() + 5, 0, kN - 3);
    for (int i = 0; i < kN + 8; ++i) ASSERT_TRUE(Same(d[i], e[i])) << name << " offsets, at " << i;
    for (int i : {0, 4, kN + 2, kN + 7}) ASSERT_TRUE(Same(d[i], TD(7))) << name << " wrote outside, at " << i;
    std::vector<TD> ref(kN);
    SetPrimitiveIsa(piReference);
    run(0, ref.data(), 0, kN);
    for (TPrimitiveIsa isa : Tables()) {
        SetPrimitiveIsa(isa);
        std::vector<TD> got(kN);
        run(0, got.data(), 0, kN);
        for (int i = 0; i < kN; ++i)
            ASSERT_TRUE(Close(got[i], ref[i])) << name << " on " << PrimitiveIsaName(isa) << ", at " << i;
    }
}

template <class TX, class TD, class F>
void ContractUnary(const char* name, F f) {
    const auto x = Data<TX>(kN, 1);
    CheckContract<TD>(name, [&](int xi, TD* d, int di, int n) { return f(x.data(), xi, d, di, n); });
}

template <class TX, class TY, class TD, class F>
void ContractBinary(const char* name, F f) {
    const auto x = Data<TX>(kN, 1);
    const auto y = Data<TY>(kN, 2);
    CheckContract<TD>(name, [&](int xi, TD* d, int di, int n) { return f(x.data(), xi, y.data(), xi, d, di, n); });
}

template <class TX, class TD, class FD, class FS>
void CheckUnary(const char* name, FD fd, FS fs) {
    ContractUnary<TX, TD>(name, fd);
    ContractUnary<AsSingle<TX>, AsSingle<TD>>(name, fs);
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
    ContractBinary<TX, TY, TD>(name, fd);
    ContractBinary<AsSingle<TX>, AsSingle<TY>, AsSingle<TD>>(name, fs);
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

TEST(TwinTable, EveryRoutineKeepsItsContractAndAgreesWithItsTwin) {
#include "rovane/primitives/twins/Arithmetic.def"
#include "rovane/primitives/twins/VectorMath.def"
#include "rovane/primitives/twins/Parts.def"
#include "rovane/primitives/twins/Motion.def"
#include "rovane/primitives/twins/Own.def"
#include "rovane/primitives/twins/PartsExtra.def"
#include "rovane/primitives/twins/Thresholds.def"
}

}  // namespace
