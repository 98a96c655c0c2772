// The forms frame of the unary family, written once: the generated forms of
// each member (containers/generated/*.defs.inc) call these with the member's
// texts and range core. Also the unaliasing of overlapping views.
#include "rovane/containers/OperationFrame.h"

#include <cstring>

#include "rovane/storage/ReportChannel.h"

namespace rovane::frame {

CachedVec::~CachedVec() noexcept {
    try {
        FreeIt(fVec);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("FreeIt of a temporary failed");
    }
}

void Unaliased::Detach(int32_t len) {
    CreateIt(fCopy);
    try {
        fCopy->Size(len, fX.fFloatPrecision);
        std::memcpy(fCopy->ValuesPointer, RunStart(fX, fXIndex), static_cast<size_t>(int64_t(len) * ElemBytes(fX)));
    } catch (...) {
        FreeIt(fCopy);
        throw;
    }
}

void Unaliased::Release() noexcept {
    try {
        FreeIt(fCopy);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("FreeIt of a temporary failed");
    }
}

void CoreFrom(UnaryCore core, const TRovane& x, TRovane& dst, int32_t len, int32_t dstIndex, int32_t xIndex) {
    const Unaliased src(x, xIndex, dst, dstIndex, len);
    core(src.Src(), dst, len, dstIndex, src.Index());
}


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
    if (self.fLength > 0) {
        const Unaliased src(x, 0, self, 0, self.fLength);
        core(src.Src(), self, self.fLength, 0, src.Index());
    }
    return self;
}

TRovane& UnaryFrom(TRovane& self, const TRovane& x, int32_t xIndex, int32_t index, int32_t len,
                   const UnaryTexts& texts, UnaryCore core) {
    self.ValidateParams(x, xIndex, index, len);
    // The range form writes into existing memory of Self: it neither widens
    // nor narrows it, so the complexity of both must agree.
    if (self.fConditionCheck && x.fComplex != self.fComplex) EInvalidArgumentRaise(texts.complexDiffers);
    if (len > 0) {
        const Unaliased src(x, xIndex, self, index, len);
        core(src.Src(), self, len, index, src.Index());
    }
    return self;
}

}  // namespace rovane::frame
