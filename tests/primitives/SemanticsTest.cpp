// Status codes, services and the edge rules of sign, remainder, threshold and
// rounding primitives.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <cmath>
#include <limits>

#include "PrimTestUtil.h"

using namespace rovane;

TEST(PrimitiveStatus, LengthAndPointerChecks) {
    double x[4] = {1, 2, 3, 4}, d[4] = {9, 9, 9, 9};
    EXPECT_EQ(ippsAdd_64f_Idx(x, 0, x, 0, d, 0, -1), ippStsSizeErr);
    EXPECT_EQ(ippsAdd_64f_Idx(nullptr, 0, x, 0, d, 0, 2), ippStsNullPtrErr);
    EXPECT_EQ(sippsSin_32f_A24_Idx(nullptr, 0, nullptr, 0, -3), ippStsSizeErr);  // length is checked first
    EXPECT_EQ(ippsSin_64f_A53_Idx(x, 0, d, 0, 0), ippStsNoErr);
    EXPECT_EQ(ippsSqrt_64fc_Idx(nullptr, 0, nullptr, 0, 0), ippStsNoErr);
    EXPECT_EQ(d[0], 9);
    TCplx c[2] = {{1, 1}, {2, 2}};
    EXPECT_EQ(ippsThreshold_LT_64fc_I_Idx(c, 0, 2, -1.0), ippStsThreshNegLevelErr);
    EXPECT_EQ(c[0].Re, 1);
    EXPECT_EQ(ippsThreshold_LTValGTVal_64f_I_Idx(d, 0, 4, 2.0, 0.0, 1.0, 0.0), ippStsThresholdErr);
    EXPECT_STREQ(ippGetStatusString(-6), "Wrong Value of data size");
    EXPECT_STREQ(ippGetStatusString(-8), "Null pointer error");
    EXPECT_STREQ(ippGetStatusString(0), "");
    EXPECT_EQ(ippGetStatusStr(-8), "Null pointer error");
}

TEST(PrimitiveStatus, Services) {
    EXPECT_GE(ippGetNumCoresOnDie(), 1);
    EXPECT_TRUE(ippGetCpuFeatures() & ippCPUID_SSE2);
    EXPECT_EQ((ippGetCpuFeatures() & ippCPUID_AVX2) != 0, BestPrimitiveIsa() >= piAvx2);
    int32_t n = 0;
    EXPECT_EQ(ippSetNumThreads(0), ippStsSizeErr);
    EXPECT_EQ(ippSetNumThreads(4), 1);
    EXPECT_EQ(ippGetNumThreads(n), 1);
    EXPECT_EQ(n, 1);
    EXPECT_EQ(PrimitiveIsa(), DefaultPrimitiveIsa());
    EXPECT_TRUE(SetPrimitiveIsa(piReference));
    EXPECT_EQ(PrimitiveIsa(), piReference);
    EXPECT_TRUE(SetPrimitiveIsa(DefaultPrimitiveIsa()));
}

// The table at start follows ROVANE_ISA (the suite runs once per table this
// processor offers, each run with its own value); without it, the widest.
TEST(PrimitiveStatus, StartTableFollowsTheEnvironment) {
    const char* wanted = std::getenv("ROVANE_ISA");
    if (!wanted) {
        EXPECT_EQ(DefaultPrimitiveIsa(), BestPrimitiveIsa());
        return;
    }
    TPrimitiveIsa named = BestPrimitiveIsa();
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512})
        if (std::string(wanted) == PrimitiveIsaName(isa) && isa <= BestPrimitiveIsa()) named = isa;
    EXPECT_EQ(DefaultPrimitiveIsa(), named) << "ROVANE_ISA=" << wanted;
}

// An unknown or unsupported name falls back to the widest table and says so
// once on stderr: checked in a child process with its own environment.
TEST(PrimitiveStatus, UnknownTableNameFallsBackToTheWidest) {
    for (const char* value : {"sse9", "avx512 "}) {
        const std::string cmd = std::string("ROVANE_ISA='") + value + "' '" + ::testing::internal::GetArgvs()[0] +
                                "' --gtest_filter=PrimitiveStatus.StartTableFollowsTheEnvironment 2>&1";
        FILE* f = popen(cmd.c_str(), "r");
        ASSERT_NE(f, nullptr);
        std::string out;
        char buf[256];
        while (fgets(buf, sizeof buf, f)) out += buf;
        EXPECT_EQ(pclose(f), 0) << out;
        EXPECT_NE(out.find(std::string("Rovane: ROVANE_ISA=") + value + " is not"), std::string::npos) << out;
        EXPECT_NE(out.find(std::string("using ") + PrimitiveIsaName(BestPrimitiveIsa())), std::string::npos)
            << out;
    }
}

TEST(PrimitiveRules, SignAndSignMultiply) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double x[5] = {-2, 0, 3, nan, -0.0};
    double d[5];
    Sgndd_Idx(x, 0, d, 0, 5);
    EXPECT_EQ(d[0], -1); EXPECT_EQ(d[1], 0); EXPECT_EQ(d[2], 1); EXPECT_EQ(d[3], 1); EXPECT_EQ(d[4], 0);
    const TCplx z[4] = {{0, -3}, {0, 0}, {2, -3}, {-0.0, 5}};
    double s[4];
    Sgncd_Idx(z, 0, s, 0, 4);
    EXPECT_EQ(s[0], -1); EXPECT_EQ(s[1], 0); EXPECT_EQ(s[2], 1); EXPECT_EQ(s[3], 1);
    // The sign of a NaN source is +1: the destination stays as it is.
    double m[5] = {5, 5, 5, 5, 5};
    SgnMul_Idx(x, 0, m, 0, 5);
    EXPECT_EQ(m[0], -5); EXPECT_EQ(m[1], 0); EXPECT_EQ(m[2], 5); EXPECT_EQ(m[3], 5); EXPECT_EQ(m[4], 0);
    TCplx w[4] = {{1, 2}, {1, 2}, {1, 2}, {1, 2}};
    SgnMulc_Idx(z, 0, w, 0, 4);
    EXPECT_EQ(w[0].Re, -1); EXPECT_EQ(w[0].Im, -2); EXPECT_EQ(w[1].Re, 0); EXPECT_EQ(w[1].Im, 0);
    EXPECT_EQ(w[2].Im, 2);
}

TEST(PrimitiveRules, RemainderRoundsTheQuotient) {
    const double x[4] = {5, 7, -7, 4.5}, y[4] = {3, 2, 2, 3};
    double d[4];
    Rem_Idx(x, 0, y, 0, d, 0, 4);
    EXPECT_EQ(d[0], -1);   // 5/3 rounds to 2
    EXPECT_EQ(d[1], -1);   // 3.5 rounds to even 4
    EXPECT_EQ(d[2], 1);    // -3.5 rounds to -4
    EXPECT_EQ(d[3], -1.5);  // 1.5 rounds to even 2: 4.5 - 6
    RemVal_Idx(x, 0, 3.0, d, 0, 4);
    EXPECT_EQ(d[0], -1);
}

TEST(PrimitiveRules, Thresholds) {
    double x[5] = {0, 1, -1, 3, -3};
    double d[5];
    ippsThreshold_LTAbs_64f_Idx(x, 0, d, 0, 5, 2.0);
    EXPECT_EQ(d[0], -2); EXPECT_EQ(d[1], 2); EXPECT_EQ(d[2], -2); EXPECT_EQ(d[3], 3); EXPECT_EQ(d[4], -3);
    const double inv[4] = {0, 1, -1, 4};
    ippsThreshold_LTInv_64f_Idx(inv, 0, d, 0, 4, 2.0);
    EXPECT_EQ(d[0], 0.5); EXPECT_EQ(d[1], 0.5); EXPECT_EQ(d[2], -0.5); EXPECT_EQ(d[3], 0.25);
    ippsThreshold_LTInv_64f_Idx(inv, 0, d, 0, 1, 0.0);
    EXPECT_TRUE(std::isinf(d[0]));
    double n[2] = {std::numeric_limits<double>::quiet_NaN(), 7};
    ippsThreshold_LT_64f_I_Idx(n, 0, 2, 1.0);
    EXPECT_EQ(n[0], 1); EXPECT_EQ(n[1], 7);
    n[0] = std::numeric_limits<double>::quiet_NaN();
    ippsThreshold_GT_64f_I_Idx(n, 0, 2, 1.0);
    EXPECT_EQ(n[0], 1); EXPECT_EQ(n[1], 1);
    // Complex: a small element keeps its phase and takes the level as magnitude.
    TCplx z[2] = {{0.3, 0.4}, {0, 0}};
    ippsThreshold_LT_64fc_I_Idx(z, 0, 2, 1.0);
    EXPECT_DOUBLE_EQ(z[0].Re, 0.6); EXPECT_DOUBLE_EQ(z[0].Im, 0.8);
    EXPECT_EQ(z[1].Re, 1); EXPECT_EQ(z[1].Im, 0);
}

TEST(PrimitiveRules, RoundingAndParts) {
    const double x[5] = {2.5, -2.5, 3.5, -0.75, -4.0};
    double d[5], f[5];
    ippsRound_64f_Idx(x, 0, d, 0, 5);
    EXPECT_EQ(d[0], 2); EXPECT_EQ(d[1], -2); EXPECT_EQ(d[2], 4);
    ippsModf_64f_Idx(x, 0, d, 0, f, 0, 5);
    EXPECT_EQ(d[3], 0); EXPECT_TRUE(std::signbit(d[3])); EXPECT_EQ(f[3], -0.75);
    EXPECT_EQ(f[4], 0); EXPECT_TRUE(std::signbit(f[4]));
    const TCplx z[3] = {{1, 2}, {3, 4}, {5, 6}};
    TCplx r[3];
    ippsConjFlip_64fc_Idx(z, 0, r, 0, 3);
    EXPECT_EQ(r[0].Re, 5); EXPECT_EQ(r[0].Im, -6); EXPECT_EQ(r[2].Im, -2);
    double mag[3], ph[3];
    ippsCartToPolar_64fc_Idx(z, 0, mag, 0, ph, 0, 3);
    EXPECT_EQ(mag[1], 5);
    EXPECT_NEAR(ph[0], std::atan2(2.0, 1.0), 1e-16);
    TCplx back[3];
    ippsPolarToCart_64fc_Idx(mag, 0, ph, 0, back, 0, 3);
    EXPECT_NEAR(back[2].Re, 5, 1e-14); EXPECT_NEAR(back[2].Im, 6, 1e-14);
    TCplx q[2] = {{-4, 0}, {3, 4}};
    ippsSqrt_64fc_I_Idx(q, 0, 2);
    EXPECT_EQ(q[0].Re, 0); EXPECT_EQ(q[0].Im, 2); EXPECT_EQ(q[1].Re, 2); EXPECT_EQ(q[1].Im, 1);
    int32_t i32[3];
    const double big[3] = {3e9, -2.5, 2.5};
    ippsConvert_64f32s_Sfs_Idx(big, 0, i32, 0, 3, rnRound, 0);
    EXPECT_EQ(i32[0], 2147483647); EXPECT_EQ(i32[1], -2); EXPECT_EQ(i32[2], 2);
}
