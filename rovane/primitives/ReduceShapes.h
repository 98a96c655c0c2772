// Call shapes of the reduction rows (twins/Reduce.def); see PrimShapes.h.
#pragma once

#include "rovane/primitives/PrimShapes.h"

// source pair, length, result (in the element type of the twin)
#define ROVANE_SHAPE_RED(W, T, R) (const W<T>* x, int32_t xIndex, int32_t len, W<R>* result)
#define ROVANE_ARGS_RED (x, xIndex, len, result)
// the same with a result type kept for both twins (double, TCplx)
#define ROVANE_SHAPE_RED64(W, T, R) (const W<T>* x, int32_t xIndex, int32_t len, R* result)
#define ROVANE_ARGS_RED64 (x, xIndex, len, result)
// two results: minimum and maximum, or mean and standard deviation
#define ROVANE_SHAPE_RED2(W, T) (const W<T>* x, int32_t xIndex, int32_t len, W<T>* result1, W<T>* result2)
#define ROVANE_ARGS_RED2 (x, xIndex, len, result1, result2)
// an extreme and its index
#define ROVANE_SHAPE_REDIDX(W, T) (const W<T>* x, int32_t xIndex, int32_t len, W<T>* value, int32_t* index)
#define ROVANE_ARGS_REDIDX (x, xIndex, len, value, index)
// minimum with its index, maximum with its index
#define ROVANE_SHAPE_REDIDX2(W, T) \
    (const W<T>* x, int32_t xIndex, int32_t len, W<T>* min, int32_t* minIndex, W<T>* max, int32_t* maxIndex)
#define ROVANE_ARGS_REDIDX2 (x, xIndex, len, min, minIndex, max, maxIndex)
// two sources, length, result of a kept type
#define ROVANE_SHAPE_BRED64(W, TX, TY, R) \
    (const W<TX>* x, int32_t xIndex, const W<TY>* y, int32_t yIndex, int32_t len, R* result)
#define ROVANE_ARGS_BRED64 (x, xIndex, y, yIndex, len, result)
// running sums with a stride
#define ROVANE_SHAPE_DELTA(W, T) (const W<T>* x, int32_t xIndex, W<T>* d, int32_t dIndex, int32_t len, int32_t stride)
#define ROVANE_ARGS_DELTA (x, xIndex, d, dIndex, len, stride)
// sums of consecutive blocks of a run into an array
#define ROVANE_SHAPE_BLOCKS(W, T) \
    (const W<T>* x, int32_t xIndex, int32_t len, int32_t blockLen, W<T>* d, int32_t dIndex)
#define ROVANE_ARGS_BLOCKS (x, xIndex, len, blockLen, d, dIndex)
