// Free forms of the reductions: each forwards to the member of the same name
// of its first argument (Mean(v) is v.Mean()).
#pragma once

#include "rovane/containers/Rovane.h"

namespace rovane {

ROVANE_API double Mean(const TDenseRovane& x);
ROVANE_API double Mean(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double Max(const TDenseRovane& x);
ROVANE_API double Max(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double Min(const TDenseRovane& x);
ROVANE_API double Min(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double RMS(const TRovane& x);
ROVANE_API double RMS(const TRovane& x, int32_t index, int32_t len);
ROVANE_API double StdDev(const TRovane& x);
ROVANE_API double StdDev(const TRovane& x, int32_t index, int32_t len);
ROVANE_API double Median(const TDenseRovane& x);
ROVANE_API double Median(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double NormC(const TDenseRovane& x);
ROVANE_API double NormC(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double NormL1(const TDenseRovane& x);
ROVANE_API double NormL1(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double NormL2(const TDenseRovane& x);
ROVANE_API double NormL2(const TDenseRovane& x, int32_t index, int32_t len);
ROVANE_API double Kurtosis(const TDenseRovane& x, double aMean, double aStdDev);
ROVANE_API double Skewness(const TDenseRovane& x, double aMean, double aStdDev);
ROVANE_API TCplx Trace(const TMtx& x);
ROVANE_API double Norm1(const TMtx& x);
ROVANE_API double NormInf(const TMtx& x);
ROVANE_API bool Equal(const TVec& x, const TRovane& vec, double tolerance);
ROVANE_API bool Equal(const TVec& x, const TRovane& vec, double tolerance, TCompare compare);
ROVANE_API bool Equal(const TMtx& x, const TMtx& mtx, double tolerance);
ROVANE_API bool Equal(const TMtx& x, const TMtx& mtx, double tolerance, TCompare compare);

}  // namespace rovane
