// Helpers shared by the stream tests.
#pragma once

#include <gtest/gtest.h>

#include "NumericTestUtil.h"
#include <rovane/Rovane.h>

#include <cmath>
#include <cstring>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace rovane::test {

using test_util::ExpectMessage;

// Observable state of a container: shape, flags, tag, caption and values.
struct State {
    int32_t Length = 0;
    bool Complex = false, IsDouble = true, CondCheck = true;
    int32_t Tag = 0;
    std::string Caption;
    std::vector<double> Values;
    explicit State(const TRovane& o)
        : Length(o.Length()), Complex(o.Complex()), IsDouble(o.IsDouble()), CondCheck(o.ConditionCheck()),
          Tag(o.Tag()), Caption(o.Caption()) {
        const int32_t n = o.Complex() ? 2 * o.Length() : o.Length();
        for (int32_t i = 0; i < n; ++i) Values.push_back(o[i]);
    }
    bool operator==(const State& s) const {
        return Length == s.Length && Complex == s.Complex && IsDouble == s.IsDouble && CondCheck == s.CondCheck &&
               Tag == s.Tag && Caption == s.Caption && Values == s.Values;
    }
};

// The floats of a header at the start of a byte string.
inline float HeaderFloat(const std::string& bytes, int index, bool bigEndian = false) {
    uint32_t u;
    std::memcpy(&u, bytes.data() + 4 * index, 4);
    if (bigEndian) u = __builtin_bswap32(u);
    float f;
    std::memcpy(&f, &u, 4);
    return f;
}
inline void SetHeaderFloat(std::string& bytes, int index, float v) { std::memcpy(bytes.data() + 4 * index, &v, 4); }

// A read-only stream over bytes that refuses every seek, as a pipe does.
class PipeBuf : public std::streambuf {
public:
    explicit PipeBuf(std::string bytes) : fBytes(std::move(bytes)) { setg(fBytes.data(), fBytes.data(), fBytes.data() + fBytes.size()); }

private:
    std::string fBytes;
};

}  // namespace rovane::test
