#include <gtest/gtest.h>
#include <rovane/Rovane.h>
using namespace rovane;
TEST(Smoke, Starts) { EXPECT_EQ(std::bit_cast<uint64_t>(NAN_), 0x7FF8000000000000ull); }
