// The LAPACK gateway: the (array, index) mapping, and argument errors that
// come back as a negative Info instead of stopping the process.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <vector>

using namespace rovane;

// dgetrf with M = -1: LAPACK reports argument 1 through XERBLA. The
// library's xerbla_ records it and returns, so the caller gets Info = -1
// and the process goes on.
TEST(LapackGateway, XerblaRecordsAndInfoComesBack) {
    lapack::ClearXerbla();
    std::vector<double> a(4, 1.0);
    std::vector<int32_t> ipiv(2);
    int32_t info = 0;
    lapack::dgetrf(-1, 2, a.data(), 0, 2, ipiv.data(), 0, info);
    EXPECT_EQ(info, -1);
    EXPECT_EQ(lapack::LastXerbla().Routine, "DGETRF");
    EXPECT_EQ(lapack::LastXerbla().Info, 1);
    // Lda below M is argument 4.
    lapack::zgetrf(3, 3, reinterpret_cast<TCplx*>(a.data()), 0, 1, ipiv.data(), 0, info);
    EXPECT_EQ(info, -4);
    EXPECT_EQ(lapack::LastXerbla().Routine, "ZGETRF");
    // A BLAS routine has no Info: the gateway raises after the call.
    try {
        lapack::dgemm('N', 'N', 2, 2, 2, 1.0, a.data(), 0, 1, a.data(), 0, 2, 0.0, a.data(), 0, 2);
        ADD_FAILURE() << "no exception";
    } catch (const ERovaneInvalidArgument& e) {
        EXPECT_EQ(std::string(e.what()), "dgemm: parameter 8 had an illegal value");
    }
}

// The element index maps to the array position, column-major as LAPACK:
// solve A x = b for A stored at index 3 of a larger array.
TEST(LapackGateway, IndexMappingAndSolve) {
    // A = [[4, 1], [2, 3]] column-major at index 3, lda 2.
    std::vector<double> a = {9, 9, 9, 4, 2, 1, 3};
    std::vector<int32_t> ipiv(5, 0);
    std::vector<double> b = {7, 5, 5};  // b at index 1: A x = (5, 5) -> x = (1, 1)
    int32_t info = -7;
    lapack::dgetrf(2, 2, a.data(), 3, 2, ipiv.data(), 2, info);
    ASSERT_EQ(info, 0);
    EXPECT_EQ(a[0], 9);
    lapack::dgetrs('N', 2, 1, a.data(), 3, 2, ipiv.data(), 2, b.data(), 1, 2, info);
    ASSERT_EQ(info, 0);
    EXPECT_NEAR(b[1], 1.0, 1e-15);
    EXPECT_NEAR(b[2], 1.0, 1e-15);
    EXPECT_EQ(b[0], 7);
    // A singular factor is reported by a positive Info, unchanged.
    std::vector<float> s = {1, 2, 2, 4};
    lapack::sgetrf(2, 2, s.data(), 0, 2, ipiv.data(), 0, info);
    EXPECT_EQ(info, 2);
    std::vector<double> p = {4, 2, 2, 3};
    lapack::dpotrf('L', 2, p.data(), 0, 2, info);
    EXPECT_EQ(info, 0);
    EXPECT_DOUBLE_EQ(p[0], 2.0);
}

// A row-major TMtx through the transposed temporary: LU of A, then A^-1
// from dgetri, copied back row-major; A * A^-1 is the identity.
#include "rovane/primitives/LapackTemp.h"

TEST(LapackGateway, TransposedTemporary) {
    TMtx a, inv, prod, eye;
    a.Size(3, 3);
    const double v[9] = {4, 1, 2, 0, 3, 1, 1, 0, 5};  // not symmetric: a wrong orientation shows
    for (int i = 0; i < 9; ++i) a.Values[i] = v[i];
    {
        lapack::TColumnMajor cm(a);
        EXPECT_EQ(cm.D()[1], 0);  // column-major: (1, 0) follows (0, 0)
        std::vector<int32_t> ipiv(3);
        std::vector<double> work(64);
        int32_t info = -1;
        lapack::dgetrf(3, 3, cm.D(), 0, cm.Ld(), ipiv.data(), 0, info);
        ASSERT_EQ(info, 0);
        lapack::dgetri(3, cm.D(), 0, cm.Ld(), ipiv.data(), 0, work.data(), 0, 64, info);
        ASSERT_EQ(info, 0);
        cm.CopyBack(inv);
    }
    prod.Mul(a, inv);
    eye.Eye(3, 3);
    for (int i = 0; i < 9; ++i) EXPECT_NEAR(prod.Values[i], eye.Values[i], 1e-15);
}
