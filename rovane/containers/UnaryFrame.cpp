// The four public forms of the unary family, written once. Each member's
// forms are stamped by ROVANE_UNARY_DEFINE and end in the member's range core.
#include "rovane/containers/OperationFrame.h"

namespace rovane::frame {

TRovane& UnaryInPlace(TRovane& self, UnaryCore core) {
    if (self.fLength > 0) core(self, self, self.fLength, 0, 0);
    return self;
}

TRovane& UnaryInPlace(TRovane& self, int32_t index, int32_t len, UnaryCore core) {
    self.ValidateParams(index, len);
    if (len > 0) core(self, self, len, index, index);
    return self;
}

TRovane& UnaryFrom(TRovane& self, const TRovane& x, const UnaryTexts& texts, UnaryCore core) {
    if (self.fConditionCheck && &x == &self) EInvalidArgumentRaise(texts.selfIsX);
    self.Size(x);
    if (self.fLength > 0) core(x, self, self.fLength, 0, 0);
    return self;
}

TRovane& UnaryFrom(TRovane& self, const TRovane& x, int32_t xIndex, int32_t index, int32_t len,
                   const UnaryTexts& texts, UnaryCore core) {
    self.ValidateParams(x, xIndex, index, len);
    // The range form writes into existing memory of Self: it neither widens
    // nor narrows it, so the complexity of both must agree.
    if (self.fConditionCheck && x.fComplex != self.fComplex) EInvalidArgumentRaise(texts.complexDiffers);
    if (len > 0) core(x, self, len, index, xIndex);
    return self;
}

}  // namespace rovane::frame
