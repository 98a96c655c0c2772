// Helpers shared by the container tests.
#pragma once

#include <gtest/gtest.h>
#include <rovane/Rovane.h>

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

}  // namespace rovane::test
