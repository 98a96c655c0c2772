// The transposed temporary of the LAPACK gateway.
#include "rovane/primitives/LapackTemp.h"

#include "rovane/storage/ObjectCache.h"
#include "rovane/storage/ReportChannel.h"

namespace rovane::lapack {

TColumnMajor::TColumnMajor(const TMtx& src) : fRows(src.fRows), fCols(src.fCols) {
    CreateIt(fTmp);
    try {
        fTmp->Transp(src);
    } catch (...) {
        FreeIt(fTmp);
        throw;
    }
}

TColumnMajor::~TColumnMajor() noexcept {
    try {
        FreeIt(fTmp);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("FreeIt of a temporary failed");
    }
}

void TColumnMajor::CopyBack(TMtx& dst) const {
    // The temporary is Cols x Rows row-major; its transpose is the result.
    dst.Transp(*fTmp);
}

}  // namespace rovane::lapack
