// The forms frame of every member that maps a source run to a result run,
// written once: the generated forms of each member (generated/*.defs.inc)
// call these with the member's rules and range core. Also the unaliasing of
// overlapping views.
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


namespace {

// A real result overwrites a complex Self: the result can't be written over
// its source in the order of the primitive, so the source goes to one
// temporary first and Self becomes real. A complex result over a real Self
// is the mirror case.
TRovane& ChangeKind(TRovane& self, bool complex, UnaryCore core) {
    if (self.fLength == 0) {
        self.Size(self, complex);
        return self;
    }
    CachedVec t;
    t->Copy(self);
    self.Size(self, complex);
    core(*t, self, self.fLength, 0, 0);
    return self;
}

// Source check of a real-result range form: a real source where the member
// needs complex data.
void RangeSourceCheck(const TRovane& self, const TRovane& x, const FormRules& r) {
    if (x.fComplex || !r.needsComplex) return;
    if (r.rangeNeedsComplex)
        RaiseIf(self.fConditionCheck, r.rangeNeedsComplex);
    else
        EInvalidArgumentRaise(r.needsComplex);
}

// The X = Self check of the forms with a source.
void SelfIsXCheck(const TRovane& self, const TRovane& x, const FormRules& r) {
    RaiseIf((r.selfIsXAlways || self.fConditionCheck) && &x == &self, r.selfIsX);
}

}  // namespace

TRovane& InPlace(TRovane& self, const FormRules& r, UnaryCore core) {
    switch (r.result) {
        case ResultKind::Real:
            if (self.fComplex) return ChangeKind(self, false, core);
            RaiseIf(r.needsComplex != nullptr, r.needsComplex);
            break;
        case ResultKind::Complex:
            if (!self.fComplex) return ChangeKind(self, true, core);
            break;
        case ResultKind::RealOnly:
            RaiseIf(self.fComplex, r.selfComplex);
            break;
        case ResultKind::Same:
            break;
    }
    if (self.fLength > 0) core(self, self, self.fLength, 0, 0);
    return self;
}

TRovane& InPlace(TRovane& self, int32_t index, int32_t len, const FormRules& r, UnaryCore core) {
    if (r.result == ResultKind::RealOnly) RaiseIf(self.fComplex, r.selfComplex);
    self.ValidateParams(index, len);
    if (r.result == ResultKind::Real) {
        if (self.fComplex)
            RaiseIf(self.fConditionCheck, r.complexRange);
        else
            RangeSourceCheck(self, self, r);
    } else if (r.result == ResultKind::Complex && !self.fComplex) {
        // Real data: the range is computed from a real copy, the rest of
        // Self keeps its values with zero imaginary parts.
        CachedVec t;
        t->Copy(self);
        self.ExtendToComplex(*t, true);
        if (len > 0) core(*t, self, len, index, index);
        return self;
    }
    if (len > 0) core(self, self, len, index, index);
    return self;
}

TRovane& From(TRovane& self, const TRovane& x, const FormRules& r, UnaryCore core) {
    SelfIsXCheck(self, x, r);
    switch (r.result) {
        case ResultKind::Same: r.realFromX ? self.Size(x, false) : self.Size(x); break;
        case ResultKind::Real:
            RaiseIf(!x.fComplex && r.needsComplex, r.needsComplex);
            self.Size(x, false);
            break;
        case ResultKind::Complex: self.Size(x, true); break;
        case ResultKind::RealOnly:
            RaiseIf((r.kindChecksAlways || self.fConditionCheck) && x.fComplex, r.srcComplex);
            self.Size(x, false);
            break;
    }
    if (self.fLength > 0) CoreFrom(core, x, self, self.fLength, 0, 0);
    return self;
}

TRovane& From(TRovane& self, const TRovane& x, int32_t xIndex, int32_t index, int32_t len, const FormRules& r,
              UnaryCore core) {
    if (r.result == ResultKind::RealOnly) {
        SelfIsXCheck(self, x, r);
        const bool check = r.kindChecksAlways || self.fConditionCheck;
        RaiseIf(check && x.fComplex, r.srcComplex);
        RaiseIf(check && self.fComplex, r.srcSelfComplex);
    }
    self.ValidateParams(x, xIndex, index, len);
    switch (r.result) {
        case ResultKind::Same:
            // The range form writes into existing memory of Self: it neither
            // widens nor narrows it, so the complexity of both must agree.
            RaiseIf(self.fConditionCheck && r.complexDiffers && x.fComplex != self.fComplex, r.complexDiffers);
            if (r.widensRange && x.fComplex && !self.fComplex) self.ExtendToComplex(true);
            break;
        case ResultKind::Real: {
            const bool makeReal = self.fComplex && r.wholeComplexRange && index == 0 && len == self.fLength;
            if (self.fComplex && !makeReal) RaiseIf(self.fConditionCheck, r.complexRange);
            RangeSourceCheck(self, x, r);
            if (makeReal) self.Size(self, false);
            break;
        }
        case ResultKind::Complex:
            RaiseIf(self.fConditionCheck && r.complexDiffers && x.fComplex != self.fComplex, r.complexDiffers);
            if (!self.fComplex) self.ExtendToComplex(true);
            break;
        case ResultKind::RealOnly: break;
    }
    if (len > 0) CoreFrom(core, x, self, len, index, xIndex);
    return self;
}

}  // namespace rovane::frame
