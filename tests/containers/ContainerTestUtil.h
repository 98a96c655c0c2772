// Helpers shared by the container tests.
#pragma once

#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <cmath>
#include <string>
#include <vector>

namespace rovane::test {

// Builds a vector from reals (or (re, im) pairs when complex).
inline void Fill(TVec& v, std::initializer_list<double> values, bool complex = false, bool isDouble = true) {
    v.Size(0, complex, isDouble);
    v.SetIt(complex, values);
}

// The real run of a vector (re, im interleaved when complex), as doubles.
inline std::vector<double> Reals(const TVec& v) {
    std::vector<double> out;
    const int32_t n = v.Complex() ? 2 * v.Length() : v.Length();
    for (int32_t i = 0; i < n; ++i) out.push_back(v[i]);
    return out;
}

// Runs f and expects an exception of class E with exactly this text.
template <class E, class F>
void ExpectMessage(F&& f, const std::string& text) {
    try {
        f();
        ADD_FAILURE() << "no exception, expected: " << text;
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()), text);
    }
}

// Element-wise equality of two runs, NaN matching NaN.
inline void ExpectRun(const std::vector<double>& got, const std::vector<double>& want) {
    ASSERT_EQ(got.size(), want.size());
    for (size_t i = 0; i < got.size(); ++i) {
        if (std::isnan(want[i]))
            EXPECT_TRUE(std::isnan(got[i])) << "at " << i;
        else
            EXPECT_EQ(got[i], want[i]) << "at " << i;
    }
}

}  // namespace rovane::test

// Expects the run of vector v to be the listed values (NaN-aware); failures
// report the line of the use.
#define EXPECT_RUN(v, ...)                                                                 \
    do {                                                                                   \
        SCOPED_TRACE(#v);                                                                  \
        ::rovane::test::ExpectRun(::rovane::test::Reals(v), std::vector<double> __VA_ARGS__); \
    } while (0)
