#include <gtest/gtest.h>
#include "rovane/Rovane.h"
using namespace rovane;
TEST(Primitives, Smoke) {
    double a[3] = {1, 2, 3}, b[3] = {4, 5, 6}, d[3];
    EXPECT_EQ(ippsAdd_64f_Idx(a, 0, b, 0, d, 0, 3), 0);
    EXPECT_EQ(d[2], 9);
}
