#include <cmath>
#include "rovane/scalars/Scalars.h"
namespace rovane {
double Gamma(double x) { return static_cast<double>(std::tgamma(static_cast<long double>(x))); }
}  // namespace rovane
