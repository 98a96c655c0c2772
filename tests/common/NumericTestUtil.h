// The numeric checks every suite shares: one definition of a unit in the
// last place, one bitwise sameness, one check of a raised exception.
#pragma once

#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <typeinfo>

namespace test_util {

// Distance in units in the last place between two values of F, counted as
// the number of representable values between them (so across a power of two
// and across zero as well). Two NaNs are 0 apart; a NaN and a number are
// infinitely apart.
template <class F>
int64_t UlpDistance(F a, F b) {
    static_assert(std::is_floating_point_v<F> && (sizeof(F) == 4 || sizeof(F) == 8));
    if (std::isnan(a) && std::isnan(b)) return 0;
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<int64_t>::max();
    if (a == b) return 0;
    auto key = [](F v) -> int64_t {
        if constexpr (sizeof(F) == 8) {
            const auto i = std::bit_cast<int64_t>(v);
            return i < 0 ? std::numeric_limits<int64_t>::min() - i : i;
        } else {
            const auto i = static_cast<int64_t>(std::bit_cast<int32_t>(v));
            return i < 0 ? int64_t(std::numeric_limits<int32_t>::min()) - i : i;
        }
    };
    const int64_t d = key(a) - key(b);
    return d < 0 ? -d : d;
}

// Error of got against the exact value ref in units in the last place of F
// at ref (the spacing of F in ref's binade, the least subnormal below the
// normal range). A reference beyond the finite range must come back as the
// infinity of its sign; the largest finite value counts by its distance.
template <class F>
double UlpError(F got, long double ref) {
    using L = std::numeric_limits<F>;
    if (std::isnan(ref)) return std::isnan(got) ? 0 : INFINITY;
    const long double maxf = L::max();
    if (std::isinf(static_cast<F>(ref)) || fabsl(ref) > maxf) {
        if (std::isinf(got) && std::signbit(got) == std::signbit(ref)) return 0;
        const long double over = (fabsl(ref) - maxf) / ldexpl(1, L::max_exponent - L::digits);
        return std::isfinite(got) ? static_cast<double>(over) : INFINITY;
    }
    if (std::isnan(got) || std::isinf(got)) return INFINITY;
    int e;
    frexpl(ref, &e);
    const int minExp = L::min_exponent - L::digits;
    const int ulpExp = std::max(e - L::digits, minExp);
    return static_cast<double>(fabsl(static_cast<long double>(got) - ref) / ldexpl(1, ulpExp));
}

// Bitwise equality that lets any NaN equal any NaN (signed zeros differ).
template <class F>
bool BitSame(F a, F b) {
    if (std::isnan(a) && std::isnan(b)) return true;
    if constexpr (sizeof(F) == 8)
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
    else
        return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

// Runs f and expects an exception of exactly class E with exactly `text`.
template <class E>
::testing::AssertionResult Raises(const std::function<void()>& f, const std::string& text) {
    try {
        f();
    } catch (const rovane::ERovaneException& e) {
        if (typeid(e) != typeid(E))
            return ::testing::AssertionFailure() << "wrong class " << typeid(e).name() << ": " << e.what();
        if (text != e.what())
            return ::testing::AssertionFailure() << "text\n  got:  [" << e.what() << "]\n  want: [" << text << "]";
        return ::testing::AssertionSuccess();
    } catch (const std::exception& e) {
        return ::testing::AssertionFailure() << "foreign exception: " << e.what();
    }
    return ::testing::AssertionFailure() << "nothing raised, expected: " << text;
}

// Runs f and expects an exception of class E (or one derived from it) with
// exactly this text.
template <class E, class F>
void ExpectMessage(F&& f, const std::string& text) {
    try {
        f();
        ADD_FAILURE() << "no exception, expected: " << text;
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()), text);
    }
}

}  // namespace test_util

// Expects `stmt` to raise exactly class E with exactly the given text.
#define EXPECT_RAISES(E, stmt, ...) EXPECT_TRUE(test_util::Raises<E>([&] { stmt; }, __VA_ARGS__))
