// Searches with a relation written as text, value tests of whole containers,
// the lending of a container's storage to a plain pointer, and the prime
// test. The members of the same family (gather, scatter, sort, reorder)
// are declared in the classes from containers/tables/selection.tbl.
//
// Relation texts: "<", "<=" or "=<", ">", ">=" or "=>", "=" or "==", "<>";
// any other raises ERovaneInvalidArgument "Parameter: <text> not
// recognized!". Real data: an unordered pair (a NaN on either side) matches
// the four order relations; "=" against a NaN finds the NaNs, against an
// infinity the infinities of either sign; "<>" is the negation of "=".
// Complex data, and real data against a complex right side, use the scalar
// complex tests Smaller, SmallerOrEqual, Bigger, BiggerOrEqual, Equal.
#pragma once

#include <string_view>

#include "rovane/containers/Rovane.h"
#include "rovane/containers/RovaneInt.h"

namespace rovane {

// The relation code 0 to 5 of a text, or raises.
ROVANE_API int32_t RelationCode(std::string_view op);

// Mask sized like a (32-bit): 1 where `a Op b` holds, else 0. A container b
// must have a's length, complexity and precision.
ROVANE_API TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, double b);
ROVANE_API TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, const TCplx& b);
ROVANE_API TRovaneInt& FindMask(TRovaneInt& mask, const TRovane& a, std::string_view op, const TRovane& b);
// Positions in a where the test holds, ascending; Indexes is cut to their count.
ROVANE_API TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, double b);
ROVANE_API TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, const TCplx& b);
ROVANE_API TVecInt& FindIndexes(TVecInt& indexes, const TRovane& a, std::string_view op, const TRovane& b);
// The same, but Indexes stays at a.Length; returns the count of valid entries.
ROVANE_API int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, double b);
ROVANE_API int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, const TCplx& b);
ROVANE_API int32_t FindIndexesAndLength(TVecInt& indexes, const TRovane& a, std::string_view op, const TRovane& b);
// Fills the mask, the matching elements of a into MaskVec and the others
// into NotMaskVec, in order; returns the count of matches.
ROVANE_API int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, double b, TVec& maskVec,
                                TVec& notMaskVec);
ROVANE_API int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, const TCplx& b,
                                TVec& maskVec, TVec& notMaskVec);
ROVANE_API int32_t FindAndSplit(TRovaneInt& mask, const TRovane& a, std::string_view op, const TRovane& b,
                                TVec& maskVec, TVec& notMaskVec);
// a.Find(Value).
ROVANE_API int32_t Find(const TRovane& a, double value);
ROVANE_API int32_t Find(const TRovane& a, const TCplx& value);

// True when the test holds for every element (an empty container: true),
// against a scalar or element by element against another container.
ROVANE_API bool GreaterThan(const TRovane& a, double b);
ROVANE_API bool GreaterThan(const TRovane& a, const TCplx& b);
ROVANE_API bool GreaterThan(const TRovane& a, const TRovane& b);
ROVANE_API bool GreaterThan(double a, const TRovane& b);
ROVANE_API bool GreaterThan(const TCplx& a, const TRovane& b);
ROVANE_API bool GreaterThanOrEqual(const TRovane& a, double b);
ROVANE_API bool GreaterThanOrEqual(const TRovane& a, const TCplx& b);
ROVANE_API bool GreaterThanOrEqual(const TRovane& a, const TRovane& b);
ROVANE_API bool GreaterThanOrEqual(double a, const TRovane& b);
ROVANE_API bool GreaterThanOrEqual(const TCplx& a, const TRovane& b);
ROVANE_API bool LessThan(const TRovane& a, double b);
ROVANE_API bool LessThan(const TRovane& a, const TCplx& b);
ROVANE_API bool LessThan(const TRovane& a, const TRovane& b);
ROVANE_API bool LessThan(double a, const TRovane& b);
ROVANE_API bool LessThan(const TCplx& a, const TRovane& b);
ROVANE_API bool LessThanOrEqual(const TRovane& a, double b);
ROVANE_API bool LessThanOrEqual(const TRovane& a, const TCplx& b);
ROVANE_API bool LessThanOrEqual(const TRovane& a, const TRovane& b);
ROVANE_API bool LessThanOrEqual(double a, const TRovane& b);
ROVANE_API bool LessThanOrEqual(const TCplx& a, const TRovane& b);

// Lends a's storage: Dst points at a's first element (no copy, no count),
// null when a is empty. Valid until a resizes or is freed. The array type
// must match a's precision ("Enlist: a.IsDouble = false" for double arrays
// on single data, "Enlist: a.IsDouble = true" the other way); complex arrays
// need complex data ("Enlist: a.Complex = false"), real arrays on complex
// data see the interleaved parts. EnlistIt clears Dst first; DismissIt
// clears it again without touching the data.
ROVANE_API void Enlist(const TRovane& a, double*& dst);
ROVANE_API void Enlist(const TRovane& a, float*& dst);
ROVANE_API void Enlist(const TRovane& a, TCplx*& dst);
ROVANE_API void Enlist(const TRovane& a, TSCplx*& dst);
template <class T, class... Rest>
void Enlist(const TRovane& a, T*& dst, const TRovane& b, Rest&... rest) {
    Enlist(a, dst);
    Enlist(b, rest...);
}
template <class T, class... Rest>
void EnlistIt(const TRovane& a, T*& dst, Rest&... rest) {
    dst = nullptr;
    Enlist(a, dst);
    if constexpr (sizeof...(rest) > 0) EnlistIt(rest...);
}
template <class T, class... Rest>
void DismissIt(T*& dst, Rest&... rest) {
    dst = nullptr;
    if constexpr (sizeof...(rest) > 0) DismissIt(rest...);
}

// True when no number from 2 to n div 2 divides n (0, 1, 2 and 3 give true).
ROVANE_API bool Prime(int32_t n);

}  // namespace rovane
