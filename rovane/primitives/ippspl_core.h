// Primitive layer: status codes, element records, enumerations and the
// library services. The named primitives themselves are declared in ippspl.h
// (the catalogue) and fastlib.h (the library's own primitives).
//
// Calling shape of every primitive with the _Idx suffix: each array is passed
// as its base pointer and a signed 32-bit element index at which the
// operation starts; the index and the length count elements of the array's
// own type, so a complex index counts complex pairs. A primitive never checks
// an index against the array bounds; the caller has sized every array.
#pragma once

#include <cstdint>
#include <string>

#include "rovane/scalars/Scalars.h"

namespace rovane {

// Element type of a double routine's argument, and of its single twin's:
// 64f reads as 32f, 64fc as 32fc; integers, levels of other types and
// enumerations stay. The catalogue tables declare both twins from the double
// types through these.
template <class T>
struct SingleTwinOf {
    using type = T;
};
template <>
struct SingleTwinOf<double> {
    using type = float;
};
template <>
struct SingleTwinOf<TCplx> {
    using type = TSCplx;
};
template <class T>
using AsDouble = T;
template <class T>
using AsSingle = typename SingleTwinOf<T>::type;

// Result of a catalogue primitive: 0 success, negative error, positive warning.
using IppStatus = int32_t;

inline constexpr IppStatus ippStsNoErr = 0;
inline constexpr IppStatus ippStsSizeErr = -6;           // a length below zero
inline constexpr IppStatus ippStsNullPtrErr = -8;        // a needed pointer is null
inline constexpr IppStatus ippStsThresholdErr = -18;     // low level above high level
inline constexpr IppStatus ippStsThreshNegLevelErr = -19;  // negative threshold level
inline constexpr IppStatus ippStsSamplePhaseErr = -30;   // phase outside 0 .. factor - 1
inline constexpr IppStatus ippStsSampleFactorErr = -31;  // factor below 1

// Element records of the layer.
using ipp32fc = TSCplx;
using ipp64fc = TCplx;
using ipp8sc = TComplexOf<int8_t>;
using ipp16sc = TComplexOf<int16_t>;
using ipp32sc = TComplexOf<int32_t>;
using ipp64sc = TComplexOf<int64_t>;
struct ippiRect { int32_t x, y, width, height; };
struct ippiPoint { int32_t x, y; };
struct ippiSize { int32_t width, height; };
struct ippTwoDouble { double a, b; };
struct ippTwoSingle { float a, b; };
struct ippTwoCplx { TCplx a, b; };
struct ippTwoSCplx { TSCplx a, b; };
struct IppLibraryVersion {
    int32_t major, minor, majorBuild, build;
    const char* Name;
    const char* Version;
    const char* BuildDate;
};

enum ippBool : int32_t { ippFalse, ippTrue };
enum IppHintAlgorithm : int32_t { ippAlgHintNone, ippAlgHintFast, ippAlgHintAccurate };
enum IppCmpOp : int32_t { ippCmpLess, ippCmpLessEq, ippCmpEq, ippCmpGreaterEq, ippCmpGreater };
enum IppWinType : int32_t { ippWinBartlett, ippWinBlackman, ippWinHamming, ippWinHann, ippWinRect };
enum IppsIIRFilterType : int32_t { ippButterworth, ippChebyshev1 };

// Data-type codes of the size queries.
inline constexpr int32_t ipp32f = 13;
inline constexpr int32_t ipp32fc_code = 14;
inline constexpr int32_t ipp64f = 19;
inline constexpr int32_t ipp64fc_code = 20;

// Feature bits returned by ippGetCpuFeatures.
inline constexpr uint64_t ippCPUID_SSE2 = 1u << 0;
inline constexpr uint64_t ippCPUID_SSE3 = 1u << 1;
inline constexpr uint64_t ippCPUID_SSSE3 = 1u << 2;
inline constexpr uint64_t ippCPUID_SSE41 = 1u << 3;
inline constexpr uint64_t ippCPUID_SSE42 = 1u << 4;
inline constexpr uint64_t ippCPUID_AVX = 1u << 5;
inline constexpr uint64_t ippCPUID_AVX2 = 1u << 6;
inline constexpr uint64_t ippCPUID_FMA = 1u << 7;
inline constexpr uint64_t ippCPUID_AVX512F = 1u << 8;
inline constexpr uint64_t ippCPUID_AVX512DQ = 1u << 9;
inline constexpr uint64_t ippCPUID_AVX512BW = 1u << 10;
inline constexpr uint64_t ippCPUID_AVX512VL = 1u << 11;

// Library services.
ROVANE_API const char* ippGetStatusString(IppStatus status);
ROVANE_API std::string ippGetStatusStr(IppStatus status);
ROVANE_API uint64_t ippGetCpuFeatures();
ROVANE_API IppStatus ippGetCpuFreqMhz(int32_t& mhz);
ROVANE_API IppStatus ippGetMaxCacheSizeB(int32_t& bytes);
ROVANE_API int32_t ippGetNumCoresOnDie();
ROVANE_API IppStatus ippGetNumThreads(int32_t& n);
ROVANE_API IppStatus ippSetNumThreads(int32_t n);
ROVANE_API IppStatus ippSetDenormAreZeros(int32_t flag);

// Instruction set of the element-wise kernels. The widest one the processor
// runs is chosen when the library loads, unless the environment variable
// ROVANE_ISA names another (reference, baseline, avx2, avx512) that the
// processor runs; an unknown or unsupported name is reported once on stderr
// and the widest table taken. piReference evaluates the transcendental
// functions in long double one element at a time.
enum TPrimitiveIsa : int32_t { piReference, piBaseline, piAvx2, piAvx512 };
// The table in use, the widest this processor runs, and the one chosen at
// start (the one to return to after a SetPrimitiveIsa).
ROVANE_API TPrimitiveIsa PrimitiveIsa();
ROVANE_API TPrimitiveIsa BestPrimitiveIsa();
ROVANE_API TPrimitiveIsa DefaultPrimitiveIsa();
// Whether this processor runs the instruction set of a table.
ROVANE_API bool PrimitiveIsaSupported(TPrimitiveIsa isa);
// Switches the kernels for every thread; false (and no change) when the
// processor lacks the instruction set. Call it while no other thread is in
// the primitive layer.
ROVANE_API bool SetPrimitiveIsa(TPrimitiveIsa isa);
ROVANE_API const char* PrimitiveIsaName(TPrimitiveIsa isa);

}  // namespace rovane
