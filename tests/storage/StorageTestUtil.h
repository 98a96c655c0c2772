// Helpers shared by the storage tests.
#pragma once

#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include "NumericTestUtil.h"

#include <functional>
#include <string>
#include <vector>

namespace storage_test {

using test_util::Raises;

// Collects the texts sent to the report channel while it lives.
class ReportCollector {
public:
    ReportCollector() {
        fOld = rovane::SetReportHandler([this](const std::string& t) { texts.push_back(t); });
    }
    ~ReportCollector() { rovane::SetReportHandler(std::move(fOld)); }
    std::vector<std::string> texts;

private:
    rovane::TReportHandler fOld;
};

// The values of a real or complex double vector, for whole-content checks.
inline std::vector<double> Reals(const rovane::TVec& v) { return {v.Values, v.Values + v.Length()}; }
inline std::vector<rovane::TCplx> Cplxs(const rovane::TVec& v) { return {v.CValues, v.CValues + v.Length()}; }

// Fills a real double vector with 0, 1, 2, ...
inline void Ramp(rovane::TVec& v, int32_t n, double start = 0) {
    v.Size(n);
    for (int32_t i = 0; i < n; ++i) v.Values[i] = start + i;
}

// Fills a complex double vector with (i, -i).
inline void CRamp(rovane::TVec& v, int32_t n) {
    v.Size(n, true);
    for (int32_t i = 0; i < n; ++i) v.CValues[i] = rovane::TCplx(i, -i);
}

}  // namespace storage_test
