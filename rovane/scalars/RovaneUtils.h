// Number text in both directions and the quick sorts beneath the sort
// operations of the containers.
//
// Decimal and thousands separators
//   GetDecimalSeparator and GetThousandSeparator read the C library's current
//   numeric locale (localeconv). A program that never calls setlocale runs in
//   the "C" locale: '.' and, since "C" defines no thousands separator, ','.
//   When the locale names no thousands separator the library uses ',', or '.'
//   if ',' is already the decimal separator. Both the writers and the readers
//   below use the decimal separator; the readers never accept a thousands
//   separator.
//
// General form (SampleToStr, SampleToStrf, CplxToStr)
//   The value is rounded to Precision significant digits (clamped to 1..17 for
//   double, 1..9 for single) and trailing zeros are dropped. Fixed notation is
//   used when the rounded decimal exponent e satisfies -5 <= e < Precision,
//   otherwise scientific notation "d.dddE-x": the letter E, a minus sign only
//   for negative exponents and at least Digits exponent digits (0..4).
//   Non-finite values give "NAN", "INF" and "-INF", texts that StrToVal reads
//   back. A negative zero prints as "0". The defaults are 15 digits for
//   double and 7 for single.
//
// Format texts (FormatSample, FormatCplx)
//   A format text has up to three sections separated by ';':
//     one section     used for every value; a negative value gets a leading '-'
//     two sections    the first for positive values and zero, the second for
//                     negative values, which then get no automatic '-' (write
//                     it into the section where it is wanted)
//     three sections  positive; negative; zero
//   An empty section falls back to the first one, with the automatic '-'.
//   The section is chosen after rounding: a value that rounds to zero under
//   its section takes the zero section, or else the first section, unsigned.
//   Inside a section:
//     0        digit placeholder, always written (leading/trailing zeros)
//     #        digit placeholder, written only when significant
//     .        decimal point (the first one); written as the decimal separator
//              and only when fraction digits follow
//     ,        anywhere in the number: group the integer digits by three with
//              the thousands separator
//     E+ E- e+ e-   scientific notation; the 0s right after it give the least
//              number of exponent digits. E+ always writes the exponent's sign,
//              E- only a minus. The integer placeholders give the number of
//              mantissa digits before the point.
//     '...' "..."   literal text (a ';' inside quotes does not split)
//     any other character is literal and keeps its place among the digits.
//   Integer digits beyond the placeholders go in front of the first one. The
//   count of forced integer digits runs from the leftmost '0' before the point
//   to the point; fraction digits are forced up to the rightmost '0'. Rounding
//   is to nearest on the exact binary value, ties to even (1.25 in "0.0" is
//   "1.2"), as printf does.
//   Non-finite values write "NAN" or "INF" in place of the number, keeping the
//   section's literal text: NaN and +Inf use the first section, -Inf the
//   negative one. So "+0.00i;-0.00i" gives "+2.50i", "-2.50i" and "+NANi".
//
// Text to number (StrToVal, StrToSingle, StrToCplx, Extract...)
//   Special words come first: text of more than two characters whose second or
//   third character is 'A' and which holds "NAN" is NaN; text whose first or
//   second character is 'I' and which holds "INF" is infinity, negated when
//   the text holds '-'. Only the upper-case words count.
//   Everything else must be a whole decimal number, blanks allowed around it:
//     [+|-] digits [sep digits] [(e|E) [+|-] digits]   (digits on at least
//   one side of the separator). The value is correctly rounded to the target
//   precision; magnitudes beyond the range give infinity, tiny ones round to a
//   subnormal or zero. Malformed text raises std::invalid_argument (not a
//   library exception: the container readers add the line number) with the
//   message "'<text>' is not a valid floating point value", "'<text>' is not a
//   valid integer value" or "'<text>' is not a valid complex value".
//   Complex text: the first 'i' marks the imaginary part; the sign in front of
//   it (a sign right after e or E belongs to an exponent) starts it; what
//   stands before that sign is the real part. No sign means no real part; an
//   empty imaginary text is 1. Only blanks may follow the 'i'.
//
// Extract functions
//   Position is a 0-based index into s. Whole occurrences of Delimiter are
//   skipped; the item runs up to the next Delimiter and Position moves behind
//   it, or, when none follows, the rest of s is the item and Position becomes
//   s.size(). At or past the end the result is false and the value is CNAN,
//   CNAN_SINGLE, NAN_ or 0 for integers. A negative Position counts as 0.
//
// Quick sorts
//   Recursive Hoare partition on the inclusive range Lo..Hi with the middle
//   element as pivot; the left part is sorted by recursion, the right part by
//   the loop. Not stable. Lo >= Hi leaves the data untouched. A NaN compares
//   as neither below nor above anything: the sort stays in bounds and keeps
//   every element, but the order around a NaN is unspecified. Complex values
//   without keys are ordered by their squared magnitude Re*Re + Im*Im, formed
//   in their own precision. In the keyed (CQuickSort) forms the keys decide
//   and every swap of two keys swaps the data alike.
//   Strided forms: element k of an array lives at Array[Index + k * Stride].
//   Matrix forms work on rows of a row-major matrix with Cols columns and move
//   whole rows: QuickSort*Mtx orders rows Lo..Hi by their element in column
//   Col; CQuickSort*Mtx orders them by Keys[row], moving the keys with them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rovane/scalars/Scalars.h"

namespace rovane {

ROVANE_API char GetDecimalSeparator();
ROVANE_API char GetThousandSeparator();

// General form with 15 (single: 7) significant digits, or the given ones.
ROVANE_API std::string SampleToStr(double x);
ROVANE_API std::string SampleToStr(double x, int32_t Precision, int32_t Digits);
ROVANE_API std::string SampleToStrf(float x);
ROVANE_API std::string SampleToStrf(float x, int32_t Precision, int32_t Digits);

// A format text applied to x; an empty format gives SampleToStr(x).
ROVANE_API std::string FormatSample(std::string_view Format, double x);
ROVANE_API std::string FormatSample(double x, std::string_view Format);

// With either format empty: CplxToStr(z). Otherwise a zero Im gives Re in
// ReFormat, a zero Re gives Im in ImFormat, else the two texts joined with
// nothing between (ImFormat carries sign and "i"). NaN counts as non-zero.
ROVANE_API std::string FormatCplx(const TCplx& z, std::string_view ReFormat, std::string_view ImFormat);
ROVANE_API std::string FormatCplx(const TSCplx& z, std::string_view ReFormat, std::string_view ImFormat);

// "re" for zero Im; "imi" for zero Re (so (0,1) is "1i"); "re + i" and
// "re - i" for a unit Im; else "re + imi" / "re - imi" with |Im|.
ROVANE_API std::string CplxToStr(const TCplx& z, int32_t Precision = 15, int32_t Digits = 0);
ROVANE_API std::string CplxToStr(const TSCplx& z, int32_t Precision = 7, int32_t Digits = 0);

ROVANE_API double StrToVal(std::string_view s);
ROVANE_API double StrToDouble(std::string_view s);
ROVANE_API double StrToSample(std::string_view s);
ROVANE_API float StrToSingle(std::string_view s);
ROVANE_API int32_t StrToInteger(std::string_view s);
// StrToCplx and StrToCplxSingle are declared in Scalars.h (text conversion of
// TCplx and TSCplx) and defined with these functions.

// Next delimited item of s from Position on; false once the text is used up.
ROVANE_API bool ExtractCplx(std::string_view s, int32_t& Position, std::string_view Delimiter, TCplx& z);
ROVANE_API bool ExtractCplxSingle(std::string_view s, int32_t& Position, std::string_view Delimiter, TSCplx& z);
ROVANE_API bool ExtractSample(std::string_view s, int32_t& Position, std::string_view Delimiter, double& x);
ROVANE_API bool ExtractInteger(std::string_view s, int32_t& Position, std::string_view Delimiter, int32_t& x);

// "integer, 4 bytes", "integer, 2 bytes", "unsigned integer, 1 byte".
ROVANE_API std::string IntPrecisionToStr(TIntPrecision Precision);

// ---------------------------------------------------------------------------
// Quick sorts on the inclusive range Lo..Hi.
// ---------------------------------------------------------------------------
ROVANE_API void QuickSortAsc(double* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAsc(float* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAsc(TCplx* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAsc(TSCplx* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(double* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(float* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(TCplx* Values, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(TSCplx* Values, int32_t Lo, int32_t Hi);

// Strided, without keys.
ROVANE_API void QuickSortAsc(double* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAsc(float* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(double* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDesc(float* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi);

// Data sorted by a key array.
ROVANE_API void CQuickSortAsc(TCplx* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(TSCplx* Values, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(double* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(float* Values, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(int32_t* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(int32_t* Values, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(TCplx* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(TSCplx* Values, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(double* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(float* Values, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(int32_t* Values, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(int32_t* Values, float* Keys, int32_t Lo, int32_t Hi);

// Strided, with keys: (array, index, stride) for each of the two arrays.
ROVANE_API void CQuickSortAsc(TCplx* Values, int32_t ValuesIndex, int32_t ValuesStride, double* Keys,
                              int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(TSCplx* Values, int32_t ValuesIndex, int32_t ValuesStride, float* Keys,
                              int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(double* Values, int32_t ValuesIndex, int32_t ValuesStride, double* Keys,
                              int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAsc(float* Values, int32_t ValuesIndex, int32_t ValuesStride, float* Keys,
                              int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(TCplx* Values, int32_t ValuesIndex, int32_t ValuesStride, double* Keys,
                               int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(TSCplx* Values, int32_t ValuesIndex, int32_t ValuesStride, float* Keys,
                               int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(double* Values, int32_t ValuesIndex, int32_t ValuesStride, double* Keys,
                               int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDesc(float* Values, int32_t ValuesIndex, int32_t ValuesStride, float* Keys,
                               int32_t KeysIndex, int32_t KeysStride, int32_t Lo, int32_t Hi);

// Rows Lo..Hi of a row-major matrix ordered by their element in column Col.
ROVANE_API void QuickSortAscMtx(double* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAscMtx(float* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAscMtx(TCplx* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortAscMtx(TSCplx* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDescMtx(double* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDescMtx(float* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDescMtx(TCplx* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);
ROVANE_API void QuickSortDescMtx(TSCplx* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi);

// Rows Lo..Hi of a row-major matrix ordered by one key per row.
ROVANE_API void CQuickSortAscMtx(double* Values, int32_t Cols, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAscMtx(float* Values, int32_t Cols, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAscMtx(TCplx* Values, int32_t Cols, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortAscMtx(TSCplx* Values, int32_t Cols, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDescMtx(double* Values, int32_t Cols, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDescMtx(float* Values, int32_t Cols, float* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDescMtx(TCplx* Values, int32_t Cols, double* Keys, int32_t Lo, int32_t Hi);
ROVANE_API void CQuickSortDescMtx(TSCplx* Values, int32_t Cols, float* Keys, int32_t Lo, int32_t Hi);

}  // namespace rovane
