// Element-wise arithmetic kernels against plain scalar formulas, under every
// kernel table, at odd lengths and unaligned indices. Arithmetic results must
// match the formula bit for bit: no contraction to fused multiply-add and no
// reassociation in any instruction set.
#include <cmath>
#include <cstring>

#include "PrimTestUtil.h"

using namespace rovane;
using primtest::IsaTest;
using primtest::kLengths;

namespace {

template <class F>
bool Same(F a, F b) { return std::memcmp(&a, &b, sizeof(F)) == 0 || (a != a && b != b); }

// Checks d[di + i] against want(i) for i < len and that the guard elements
// around the written range stay untouched.
template <class T, class Want>
void ExpectRange(const std::vector<T>& d, int32_t di, int32_t len, const T& guard, Want want, const char* what) {
    for (int32_t i = 0; i < static_cast<int32_t>(d.size()); ++i) {
        const bool inside = i >= di && i < di + len;
        const T expect = inside ? want(i - di) : guard;
        ASSERT_TRUE(std::memcmp(&d[i], &expect, sizeof(T)) == 0) << what << " at " << i << " of len " << len;
    }
}

template <class F, class C>
void RunComplexFamily() {
    for (int32_t len : kLengths) {
        const int32_t xi = 1, yi = 3, di = 2;
        const auto xr = primtest::Random<F>(2 * (len + xi), -4, 4, 11 + len);
        const auto yr = primtest::Random<F>(2 * (len + yi), -4, 4, 23 + len);
        std::vector<C> x(len + xi), y(len + yi);
        std::memcpy(x.data(), xr.data(), x.size() * sizeof(C));
        std::memcpy(y.data(), yr.data(), y.size() * sizeof(C));
        const C guard(F(-777), F(-777));
        std::vector<C> d(len + di + 2, guard);
        auto X = [&](int32_t i) { return x[xi + i]; };
        auto Y = [&](int32_t i) { return y[yi + i]; };
        if constexpr (sizeof(F) == 8) {
            ippsMul_64fc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * Y(i).Re - X(i).Im * Y(i).Im, X(i).Re * Y(i).Im + X(i).Im * Y(i).Re); }, "Mul_64fc");
            ippsSub_64fc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(Y(i).Re - X(i).Re, Y(i).Im - X(i).Im); }, "Sub_64fc");
            DivVeccc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) {
                const F k = F(1) / (Y(i).Re * Y(i).Re + Y(i).Im * Y(i).Im);
                return C((X(i).Re * Y(i).Re + X(i).Im * Y(i).Im) * k, (X(i).Im * Y(i).Re - X(i).Re * Y(i).Im) * k); }, "DivVeccc");
            const TCplx c(0.75, -1.25);
            ScaleByValuec_Idx(x.data(), xi, c, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * c.Re - X(i).Im * c.Im, X(i).Re * c.Im + X(i).Im * c.Re); }, "ScaleByValuec");
            AddValuecd_Idx(x.data(), xi, 2.5, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re + 2.5, X(i).Im); }, "AddValuecd");
            AddValuedc_Idx(xr.data(), 1, c, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(xr[1 + i] + c.Re, c.Im); }, "AddValuedc");
            DivideValuec_Idx(x.data(), xi, c, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) {
                const F n = F(1) / (X(i).Re * X(i).Re + X(i).Im * X(i).Im);
                return C((X(i).Re * c.Re + c.Im * X(i).Im) * n, (c.Im * X(i).Re - c.Re * X(i).Im) * n); }, "DivideValuec");
            AddVeccd_Idx(x.data(), xi, yr.data(), 4, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re + yr[4 + i], X(i).Im); }, "AddVeccd");
            MulVeccd_Idx(x.data(), xi, yr.data(), 4, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * yr[4 + i], X(i).Im * yr[4 + i]); }, "MulVeccd");
            SubVecdc_Idx(yr.data(), 4, x.data(), xi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(yr[4 + i] - X(i).Re, -X(i).Im); }, "SubVecdc");
            DivVecdc_Idx(yr.data(), 4, x.data(), xi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) {
                const F k = yr[4 + i] / (X(i).Re * X(i).Re + X(i).Im * X(i).Im);
                return C(X(i).Re * k, -X(i).Im * k); }, "DivVecdc");
            ConjMulcc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * Y(i).Re + X(i).Im * Y(i).Im, X(i).Im * Y(i).Re - X(i).Re * Y(i).Im); }, "ConjMulcc");
            // In place: the destination is also the first source.
            std::vector<C> z(x);
            ippsMul_64fc_I_Idx(y.data(), yi, z.data(), xi, len);
            for (int32_t i = 0; i < len; ++i)
                ASSERT_TRUE(Same(z[xi + i].Re, X(i).Re * Y(i).Re - X(i).Im * Y(i).Im)) << "Mul_64fc_I " << i;
            MulI_Idx(z.data(), 0, z.data(), 0, len + xi);
            ASSERT_TRUE(Same(z[xi].Re, -(X(0).Re * Y(0).Im + X(0).Im * Y(0).Re)));
        } else {
            sippsMul_32fc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * Y(i).Re - X(i).Im * Y(i).Im, X(i).Re * Y(i).Im + X(i).Im * Y(i).Re); }, "Mul_32fc");
            sippsAdd_32fc_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re + Y(i).Re, X(i).Im + Y(i).Im); }, "Add_32fc");
            const TSCplx c(0.75f, -1.25f);
            sAddValuec_Idx(x.data(), xi, c, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re + c.Re, X(i).Im + c.Im); }, "sAddValuec");
            sDivVeccd_Idx(x.data(), xi, yr.data(), 4, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re / yr[4 + i], X(i).Im / yr[4 + i]); }, "sDivVeccd");
            sScaleByValuecd_Idx(x.data(), xi, 3.0f, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return C(X(i).Re * 3.0f, X(i).Im * 3.0f); }, "sScaleByValuecd");
        }
    }
}

template <class F>
void RunRealFamily() {
    using R = F;
    for (int32_t len : kLengths) {
        const int32_t xi = 1, yi = 2, di = 3;
        const auto x = primtest::Random<R>(len + xi, -100, 100, 7 + len);
        const auto y = primtest::Random<R>(len + yi, 0.5, 9, 13 + len);
        const R guard = R(-12345);
        std::vector<R> d(len + di + 1, guard);
        auto X = [&](int32_t i) { return x[xi + i]; };
        auto Y = [&](int32_t i) { return y[yi + i]; };
        if constexpr (sizeof(F) == 8) {
            ippsAdd_64f_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return X(i) + Y(i); }, "Add_64f");
            ippsSub_64f_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return Y(i) - X(i); }, "Sub_64f");
            ippsDiv_64f_A53_Idx(y.data(), yi, x.data(), xi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return X(i) / Y(i); }, "Div_64f");
            SubFromValue_Idx(x.data(), xi, 0.1, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return 0.1 - X(i); }, "SubFromValue");
            Rem_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return X(i) - std::nearbyint(X(i) / Y(i)) * Y(i); }, "Rem");
            std::vector<R> acc(d);
            ippsAddProduct_64f_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return acc[di + i] + X(i) * Y(i); }, "AddProduct");
        } else {
            sippsMul_32f_Idx(x.data(), xi, y.data(), yi, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return X(i) * Y(i); }, "Mul_32f");
            sAddValue_Idx(x.data(), xi, 0.1f, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return X(i) + 0.1f; }, "sAddValue");
            sDivideValue_Idx(y.data(), yi, 3.0f, d.data(), di, len);
            ExpectRange(d, di, len, guard, [&](int32_t i) { return 3.0f / Y(i); }, "sDivideValue");
        }
    }
}

}  // namespace

TEST_P(IsaTest, RealArithmeticMatchesFormula) {
    RunRealFamily<double>();
    RunRealFamily<float>();
}

TEST_P(IsaTest, ComplexArithmeticMatchesFormula) {
    RunComplexFamily<double, TCplx>();
    RunComplexFamily<float, TSCplx>();
}

INSTANTIATE_TEST_SUITE_P(AllIsas, IsaTest, ::testing::ValuesIn(primtest::AllIsas()), primtest::IsaName);
