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

namespace {
struct ByteRun {
    const char* begin = nullptr;
    const char* end = nullptr;
    int64_t elemBytes = 0;
};

// The bytes that `len` elements of `o` from element `index` occupy.
ByteRun RunOf(const TRovane& o, int32_t index, int32_t len) {
    const int64_t field = o.fIsDouble ? 8 : 4;
    const int64_t elem = field * (o.fComplex ? 2 : 1);
    const char* base = o.fIsDouble ? reinterpret_cast<const char*>(o.SData) : reinterpret_cast<const char*>(o.SSData);
    if (!base || len <= 0) return {};
    const char* first = base + int64_t(o.FDataOffset) * field + int64_t(index) * elem;
    return {first, first + int64_t(len) * elem, elem};
}
}  // namespace

bool RunsOverlap(const TRovane& x, int32_t xIndex, const TRovane& dst, int32_t dstIndex, int32_t len) {
    const ByteRun a = RunOf(x, xIndex, len), b = RunOf(dst, dstIndex, len);
    if (!a.begin || !b.begin) return false;
    if (a.begin >= b.end || b.begin >= a.end) return false;
    return a.begin != b.begin || a.elemBytes != b.elemBytes;
}

Unaliased::Unaliased(const TRovane& x, int32_t xIndex, const TRovane& dst, int32_t dstIndex, int32_t len)
    : fX(x), fXIndex(xIndex) {
    if (!RunsOverlap(x, xIndex, dst, dstIndex, len)) return;
    CreateIt(fCopy);
    try {
        fCopy->Size(len, x.fFloatPrecision);
        const ByteRun r = RunOf(x, xIndex, len);
        std::memcpy(fCopy->ValuesPointer, r.begin, static_cast<size_t>(r.end - r.begin));
    } catch (...) {
        FreeIt(fCopy);
        throw;
    }
}

void CoreFrom(UnaryCore core, const TRovane& x, TRovane& dst, int32_t len, int32_t dstIndex, int32_t xIndex) {
    const Unaliased src(x, xIndex, dst, dstIndex, len);
    core(src.Src(), dst, len, dstIndex, src.Index());
}

Unaliased::~Unaliased() {
    if (!fCopy) return;
    try {
        FreeIt(fCopy);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("FreeIt of a temporary failed");
    }
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
