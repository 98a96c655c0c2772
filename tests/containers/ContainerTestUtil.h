// Helpers shared by the container tests.
#pragma once

#include <gtest/gtest.h>

#include "NumericTestUtil.h"
#include <rovane/Rovane.h>

#include <cmath>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace rovane::test {

// Builds a vector from reals (or (re, im) pairs when complex).
inline void Fill(TVec& v, std::initializer_list<double> values, bool complex = false, bool isDouble = true) {
    v.Size(0, complex, isDouble);
    v.SetIt(complex, values);
}

// The real run of a vector (re, im interleaved when complex), as doubles.
inline std::vector<double> Reals(const TRovane& v) {
    std::vector<double> out;
    const int32_t n = v.Complex() ? 2 * v.Length() : v.Length();
    for (int32_t i = 0; i < n; ++i) out.push_back(v[i]);
    return out;
}

using test_util::ExpectMessage;

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

// One row of an operation table: the source x as a list (re, im pairs when
// complex), the member under test run on it, handing back the object to read,
// and the run expected there (its length also tells real from complex).
struct OpRow {
    std::vector<double> in;
    bool complex;
    std::function<TRovane&(TVec&)> op;
    std::vector<double> want;
};

// Runs each row on a fresh source of the given precision, expecting the result
// in that precision; failures name the row.
inline void ExpectRows(const std::vector<OpRow>& rows, bool isDouble = true) {
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        TVec x;
        x.Size(0, rows[i].complex, isDouble);
        x.SetIt(rows[i].complex, std::span<const double>(rows[i].in));
        const TRovane& got = rows[i].op(x);
        EXPECT_EQ(got.IsDouble(), isDouble);
        ExpectRun(Reals(got), rows[i].want);
    }
}

}  // namespace rovane::test

// The operation of a table row: EXPR over the source x, the object it returns read.
#define ON_X(EXPR) [&](TVec & x) -> TRovane& { return EXPR; }

// Expects the run of vector v to be the listed values (NaN-aware); failures
// report the line of the use.
#define EXPECT_RUN(v, ...)                                                                 \
    do {                                                                                   \
        SCOPED_TRACE(#v);                                                                  \
        ::rovane::test::ExpectRun(::rovane::test::Reals(v), std::vector<double> __VA_ARGS__); \
    } while (0)
