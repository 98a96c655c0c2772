// Powers, roots, exponentials and logarithms on dense containers. Real data
// go to one accuracy-graded primitive; complex data either to a complex
// primitive or to a composition of real primitives on split parts.
#include "rovane/containers/OperationFrame.h"
#include "rovane/primitives/ippspl.h"

namespace rovane {

using namespace frame;

namespace {

void SqrtCore(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex) {
    ByRange(src, dst, dstIndex, srcIndex, [&](auto* x, auto* d) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(x)>>;
        using F = RealOf<T>;
        if constexpr (IsComplex<T>)
            Pick<F>(ippsSqrt_64fc_Idx, sippsSqrt_32fc_Idx)(x, 0, d, 0, len);
        else
            Pick<F>(ippsSqrt_64f_A53_Idx, sippsSqrt_32f_A24_Idx)(x, 0, d, 0, len);
    });
}

}  // namespace

ROVANE_UNARY_DEFINE(TRovane, Sqrt, SqrtCore, "Sqrt: X = Self", "Sqrt: Self.Complex <> X.Complex")

}  // namespace rovane
