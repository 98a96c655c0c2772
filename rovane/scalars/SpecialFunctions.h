// Gamma and error function family and the Bessel set.
#pragma once

namespace rovane {
ROVANE_API double Gamma(double x);
}  // namespace rovane
