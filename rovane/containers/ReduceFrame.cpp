// The frame of the value-returning members (see ReduceFrame.h).
#include "rovane/containers/ReduceFrame.h"

namespace rovane::frame {

int32_t ReduceLength(const TRovane& self, int32_t index, int32_t len) {
    self.ValidateParams(index, len);
    return len;
}

void RefuseKind(const TRovane& self, Kind kind, const char* refused) {
    if ((kind == Kind::Real && self.fComplex) || (kind == Kind::Complex && !self.fComplex))
        EInvalidArgumentRaise(refused);
}

void CheckStatus(IppStatus status, const char* what) {
    if (status < 0) ERaiseFmt("%s returned %d", what, status);
}

}  // namespace rovane::frame
