// The frame of the value-returning members (reductions, statistics,
// comparison), written once: the range check, the refusal of the wrong kind
// of data, the defined result of an empty run, and the dispatch by
// precision to a body that sees a typed pointer to the run.
// Internal to the library: included by container .cpp files only.
#pragma once

#include "rovane/containers/OperationFrame.h"

namespace rovane::frame {

// The data a reduction accepts.
enum class Kind { Real, Complex, Any };

// Refusal texts shared by the family.
inline constexpr const char* kComplexRefused = "Complex = True";
inline constexpr const char* kRealRefused = "Complex = False";

// Checks Index and Len of Self (Len -1: to the end of Self) and returns the
// resolved length. Raises the shared range text.
int32_t ReduceLength(const TRovane& self, int32_t index, int32_t len);
// Raises `refused` (ERovaneInvalidArgument) when Self's data is not of the
// kind K. The kind check runs whatever ConditionCheck says: reading complex
// data as real, or real as complex, would give a wrong answer silently.
void RefuseKind(const TRovane& self, Kind kind, const char* refused);

// The typed pointer to element `at` of Self's current range.
template <class T>
const T* RunOf(const TRovane& self, int32_t at) {
    return Base<T>(self) + Offset<T>(self) + at;
}

// Calls body(p, n) with p the pointer to the run [index, index + n) in the
// element type of Self's precision (double or float for Kind::Real, TCplx or
// TSCplx for Kind::Complex, any of the four for Kind::Any).
template <Kind K, class Body>
decltype(auto) OnRun(const TRovane& self, int32_t index, int32_t n, Body&& body) {
    if constexpr (K == Kind::Real) {
        return ByWidth(self.fIsDouble, [&](auto f) { return body(RunOf<decltype(f)>(self, index), n); });
    } else if constexpr (K == Kind::Complex) {
        return ByWidth(self.fIsDouble,
                       [&](auto f) { return body(RunOf<ComplexOf<decltype(f)>>(self, index), n); });
    } else {
        return ByPrecision(self.fFloatPrecision, [&](auto t) { return body(RunOf<decltype(t)>(self, index), n); });
    }
}

// The frame of one value-returning form: range, kind, empty result, body.
//   Reduce<Kind::Real>(*this, index, len, kComplexRefused, NAN_, body)
// A whole form passes Index 0 and Len -1.
template <Kind K, class R, class Body>
R Reduce(const TRovane& self, int32_t index, int32_t len, const char* refused, R empty, Body&& body) {
    const int32_t n = ReduceLength(self, index, len);
    if (K != Kind::Any) RefuseKind(self, K, refused);
    if (n == 0) return empty;
    return static_cast<R>(OnRun<K>(self, index, n, body));
}

// The catalogue status of a primitive the frame called: a failure is a fault
// of the library (the frame has checked everything the primitive checks).
void CheckStatus(IppStatus status, const char* what);

}  // namespace rovane::frame
