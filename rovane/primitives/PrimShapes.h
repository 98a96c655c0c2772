// Call shapes of the primitive tables (*.def beside this header). A table row
// names a shape and the element types of the double routine; the shape gives
// the parameter list, with the types passed through W (AsDouble for the
// double routine, AsSingle for its single twin), and the argument list that
// forwards those parameters unchanged.
//
// A row is one of
//   ROVANE_TWIN(Name, DoubleRoutine, SingleRoutine, SHAPE, types...)  status result
//   ROVANE_OWN(Name, DoubleRoutine, SingleRoutine, SHAPE, types...)   no result
//   ROVANE_SOLO(Name, Routine, SHAPE, types...)                       status, no twin
//   ROVANE_TWIN_KERNEL(Name, DoubleRoutine, SingleRoutine, SHAPE, types...)
//       a ROVANE_TWIN whose routines are one call of the kernel Name; the row
//       also defines them (ippspl.cpp)
// and the file that includes a table defines these first: the catalogue
// headers declare the routines, rovane/primitives/Prim.h writes the typed
// forwarders prim::Name.
#pragma once

// unary: source, index, destination, index, length (also binary in place)
#define ROVANE_SHAPE_UN(W, TX, TD) (const W<TX>* x, int32_t xIndex, W<TD>* d, int32_t dIndex, int32_t len)
#define ROVANE_ARGS_UN (x, xIndex, d, dIndex, len)
// in place: array, index, length
#define ROVANE_SHAPE_UN_I(W, T) (W<T>* d, int32_t dIndex, int32_t len)
#define ROVANE_ARGS_UN_I (d, dIndex, len)
// binary: source 1, index 1, source 2, index 2, destination, index, length
#define ROVANE_SHAPE_BIN(W, TX, TY, TD) \
    (const W<TX>* x, int32_t xIndex, const W<TY>* y, int32_t yIndex, W<TD>* d, int32_t dIndex, int32_t len)
#define ROVANE_ARGS_BIN (x, xIndex, y, yIndex, d, dIndex, len)
// scalar operand after the source pair
#define ROVANE_SHAPE_VAL(W, TX, V, TD) \
    (const W<TX>* x, int32_t xIndex, W<V> value, W<TD>* d, int32_t dIndex, int32_t len)
#define ROVANE_ARGS_VAL (x, xIndex, value, d, dIndex, len)
// scalar operand first, in place
#define ROVANE_SHAPE_VAL_I(W, V, T) (W<V> value, W<T>* d, int32_t dIndex, int32_t len)
#define ROVANE_ARGS_VAL_I (value, d, dIndex, len)
// one source, two destinations
#define ROVANE_SHAPE_SPLIT(W, TX, TD) \
    (const W<TX>* x, int32_t xIndex, W<TD>* d1, int32_t d1Index, W<TD>* d2, int32_t d2Index, int32_t len)
#define ROVANE_ARGS_SPLIT (x, xIndex, d1, d1Index, d2, d2Index, len)
// thresholds: a level, and a replacement value
#define ROVANE_SHAPE_LEVEL(W, T, L) (const W<T>* x, int32_t xIndex, W<T>* d, int32_t dIndex, int32_t len, W<L> level)
#define ROVANE_ARGS_LEVEL (x, xIndex, d, dIndex, len, level)
#define ROVANE_SHAPE_LEVEL_I(W, T, L) (W<T>* d, int32_t dIndex, int32_t len, W<L> level)
#define ROVANE_ARGS_LEVEL_I (d, dIndex, len, level)
#define ROVANE_SHAPE_LEVELVAL(W, T, L, V) \
    (const W<T>* x, int32_t xIndex, W<T>* d, int32_t dIndex, int32_t len, W<L> level, W<V> value)
#define ROVANE_ARGS_LEVELVAL (x, xIndex, d, dIndex, len, level, value)
#define ROVANE_SHAPE_LEVELVAL_I(W, T, L, V) (W<T>* d, int32_t dIndex, int32_t len, W<L> level, W<V> value)
#define ROVANE_ARGS_LEVELVAL_I (d, dIndex, len, level, value)
// two levels with their values
#define ROVANE_SHAPE_LEVEL2(W, T)                                                                            \
    (const W<T>* x, int32_t xIndex, W<T>* d, int32_t dIndex, int32_t len, W<T> lowLevel, W<T> lowValue, \
     W<T> highLevel, W<T> highValue)
#define ROVANE_ARGS_LEVEL2 (x, xIndex, d, dIndex, len, lowLevel, lowValue, highLevel, highValue)
#define ROVANE_SHAPE_LEVEL2_I(W, T) \
    (W<T>* d, int32_t dIndex, int32_t len, W<T> lowLevel, W<T> lowValue, W<T> highLevel, W<T> highValue)
#define ROVANE_ARGS_LEVEL2_I (d, dIndex, len, lowLevel, lowValue, highLevel, highValue)
// d = (x - sub) / div
#define ROVANE_SHAPE_NORMALIZE(W, T, L) \
    (const W<T>* x, int32_t xIndex, W<T>* d, int32_t dIndex, int32_t len, W<T> sub, W<L> div)
#define ROVANE_ARGS_NORMALIZE (x, xIndex, d, dIndex, len, sub, div)
// to integers, rounded and scaled
#define ROVANE_SHAPE_CONVERT_SFS(W, TX, TD) \
    (const W<TX>* x, int32_t xIndex, W<TD>* d, int32_t dIndex, int32_t len, TRounding mode, int32_t scaleFactor)
#define ROVANE_ARGS_CONVERT_SFS (x, xIndex, d, dIndex, len, mode, scaleFactor)
// up-sampling: length before the destination, lengths and phase by reference
#define ROVANE_SHAPE_SAMPLE_UP(W, T)                                                               \
    (const W<T>* x, int32_t xIndex, int32_t len, W<T>* d, int32_t dIndex, int32_t& dstLen, int32_t factor, \
     int32_t& phase)
#define ROVANE_ARGS_SAMPLE_UP (x, xIndex, len, d, dIndex, dstLen, factor, phase)
// random fills from a caller-held seed
#define ROVANE_SHAPE_RAND_UNIFORM(W, T) (W<T>* d, int32_t dIndex, int32_t len, uint32_t& seed, W<T> low, W<T> high)
#define ROVANE_ARGS_RAND_UNIFORM (d, dIndex, len, seed, low, high)
#define ROVANE_SHAPE_RAND_GAUSS(W, T) \
    (W<T>* d, int32_t dIndex, int32_t len, uint32_t& seed, W<T> mean, W<T> stdDev)
#define ROVANE_ARGS_RAND_GAUSS (d, dIndex, len, seed, mean, stdDev)

// Declarations of a row's routines (the catalogue headers).
#define ROVANE_DECLARE_TWIN(RET, D, S, SHAPE, ...)          \
    ROVANE_API RET D ROVANE_SHAPE_##SHAPE(AsDouble, __VA_ARGS__); \
    ROVANE_API RET S ROVANE_SHAPE_##SHAPE(AsSingle, __VA_ARGS__);
#define ROVANE_DECLARE_SOLO(RET, N, SHAPE, ...) ROVANE_API RET N ROVANE_SHAPE_##SHAPE(AsDouble, __VA_ARGS__);
