// Shared helpers of the primitive tests: the instruction sets to run under
// and random data.
#pragma once

#include <gtest/gtest.h>

#include "NumericTestUtil.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "rovane/Rovane.h"

namespace primtest {

inline std::vector<rovane::TPrimitiveIsa> AllIsas() {
    return {rovane::piReference, rovane::piBaseline, rovane::piAvx2, rovane::piAvx512};
}

// Runs a test body under one kernel table and restores the one the process
// started with after.
class IsaTest : public ::testing::TestWithParam<rovane::TPrimitiveIsa> {
protected:
    void SetUp() override {
        if (!rovane::SetPrimitiveIsa(GetParam())) GTEST_SKIP() << "processor lacks " << rovane::PrimitiveIsaName(GetParam());
    }
    void TearDown() override { rovane::SetPrimitiveIsa(rovane::DefaultPrimitiveIsa()); }
};

inline std::string IsaName(const ::testing::TestParamInfo<rovane::TPrimitiveIsa>& info) {
    return rovane::PrimitiveIsaName(info.param);
}

template <class F>
std::vector<F> Random(size_t n, F lo, F hi, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(lo, hi);
    std::vector<F> v(n);
    for (auto& x : v) x = static_cast<F>(u(g));
    return v;
}

// Lengths that cover an empty vector tail, short tails of every vector width
// and more than one split block.
inline const std::vector<int32_t> kLengths = {1, 3, 7, 8, 15, 17, 33, 127, 129, 300};

}  // namespace primtest
