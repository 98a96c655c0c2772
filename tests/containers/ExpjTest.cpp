// Expj against its definition: SinCos of the angles, then RealToCplx(cos,
// sin), bit for bit, in both precisions, in every form, across the lengths at
// which the computation changes its chunk.
#include <cmath>
#include <cstring>
#include <limits>

#include "ContainerTestUtil.h"

namespace {

using namespace rovane;

// Angles: a wide ramp with the special values sprinkled in.
void Angles(TVec& v, int32_t n, bool isDouble) {
    v.Size(n, false, isDouble);
    const double special[] = {0.0, -0.0, 1e-300, 1e300, -1e10, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), 3.141592653589793, 1e5 + 0.5};
    for (int32_t i = 0; i < n; ++i) {
        const double x = i % 97 == 5 ? special[(i / 97) % 9] : 0.37 * i - 1000.0;
        if (isDouble)
            v.Values1D[i] = x;
        else
            v.SValues1D[i] = static_cast<float>(x);
    }
}

// The complex run of `got` equals RealToCplx(cos, sin) of `omega` from
// omegaIndex, placed at `index` of got, byte for byte.
void ExpectDefinition(const TVec& got, TVec& omega, int32_t omegaIndex, int32_t index, int32_t len) {
    TVec s, c, want;
    s.Size(len, false, omega.IsDouble());
    c.Size(len, false, omega.IsDouble());
    if (len > 0) omega.SinCos(s, c, 0, 0, omegaIndex, len);
    want.RealToCplx(c, s);
    ASSERT_TRUE(got.Complex());
    ASSERT_EQ(got.IsDouble(), omega.IsDouble());
    const size_t bytes = size_t(len) * (omega.IsDouble() ? sizeof(TCplx) : sizeof(TSCplx));
    const char* g = got.IsDouble() ? reinterpret_cast<const char*>(got.CValues1D + index)
                                   : reinterpret_cast<const char*>(got.SCValues1D + index);
    const char* w = want.IsDouble() ? reinterpret_cast<const char*>(want.CValues1D)
                                    : reinterpret_cast<const char*>(want.SCValues1D);
    EXPECT_TRUE(len == 0 || std::memcmp(g, w, bytes) == 0);
}

TEST(Expj, BitForBitSinCosThenRealToCplx) {
    for (bool isDouble : {true, false})
        for (int32_t n : {0, 1, 7, 2047, 2048, 2049, 4096 + 3, 10000}) {
            SCOPED_TRACE(testing::Message() << (isDouble ? "double" : "single") << " n=" << n);
            TVec omega, z;
            Angles(omega, n, isDouble);
            z.Expj(omega);
            EXPECT_EQ(z.Length(), n);
            ExpectDefinition(z, omega, 0, 0, n);

            TVec inPlace;
            inPlace.Copy(omega);
            inPlace.Expj();
            ExpectDefinition(inPlace, omega, 0, 0, n);

            if (n < 4) continue;
            // Range forms: the elements outside the range keep their values.
            const int32_t len = n - 3;
            TVec r;
            r.Size(n, true, isDouble);
            r.SetVal(TCplx(5, -5));
            r.Expj(omega, 2, 1, len);
            ExpectDefinition(r, omega, 2, 1, len);
            EXPECT_EQ(r.Firstc(), TCplx(5, -5));
            EXPECT_EQ(r.Lastc(), TCplx(5, -5));

            TVec part;
            part.Copy(omega);
            part.Expj(1, len);
            ExpectDefinition(part, omega, 1, 1, len);
        }
}

}  // namespace
