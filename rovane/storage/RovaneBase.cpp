// Storage object: memory, capacity, sub-range stack, block processing and
// validation shared by every container.
#include "rovane/storage/RovaneBase.h"

#include "rovane/storage/ObjectCache.h"
#include "rovane/storage/ReportChannel.h"

#include <cmath>
#include <cstdlib>
#include <exception>

namespace rovane {

constinit std::atomic<int32_t> MaxSubrangeLevel{4};

using namespace range;

TRovaneBase::TRovaneBase() = default;

TRovaneBase::~TRovaneBase() {
    fDebuggerMarker = 0;
    // A cached object destroyed directly: its memory goes away with the
    // object, so a fresh object takes its entry and the cache stays whole.
    if (FCacheOwned && Controller) {
        try {
            Controller->ReplaceCachedItem(this);
        } catch (const std::exception& e) {
            ReportText(e.what());
        } catch (...) {
            ReportText("TRovaneBase.Destroy: the cache entry could not be replaced");
        }
    }
}

std::string TRovaneBase::DestroyProblem() const {
    // Destruction first returns to the full range; levels pushed beyond the
    // first stay open, and those are the unmatched ones.
    if (fIsSubRange && fSubRangeLevel > 0)
        return "TRovaneBase.Destroy: fSubRangeLevel >= 0, Unmatched SetSubRangeLevel/SetFullRangeLevel calls!";
    if (FCacheOwned)
        return "TRovaneBase.Destroy: fCacheOwned = True, Attempt to release memory of object-cache owned object. Use "
               "FreeIt to release object back to object-cache!";
    return {};
}

void TRovaneBase::CheckDestroy() const {
    const std::string problem = DestroyProblem();
    if (!problem.empty()) ERaise(problem);
}

void TRovaneBase::Free() {
    CheckDestroy();
    delete this;
}

void TRovaneBase::ReportDestroyProblem() const noexcept {
    try {
        const std::string problem = DestroyProblem();
        if (!problem.empty()) ReportText(problem);
    } catch (...) {
        ReportText("TRovaneBase.Destroy: the destruction checks failed");
    }
}

bool TRovaneBase::BlockEnd() const { return BlockLevel < 1 ? true : FBlockEnd; }

void TRovaneBase::Assign(const TRovaneBase& src) {
    fConditionCheck = src.fConditionCheck;
    FCaption = src.FCaption;
    FTag = src.FTag;
}

void TRovaneBase::FreeCached() {
    if (!FCacheOwned)
        ERaise(
            "TRovaneBase.Destroy: fCacheOwned = false, Attempt to release memory of object not owned by "
            "object-cache!");
    fRefCount.fetch_sub(1);
    FCacheOwned = false;
    delete this;
}

void TRovaneBase::CreateCached(int32_t poolIndex, int64_t actualSize, int32_t memIndex, int32_t cacheIndex) {
    FCacheOwned = true;
    fPoolIndex = poolIndex;
    fMemIndex = memIndex;
    fSlotBytes = actualSize;
    fCacheIndex = cacheIndex;
    EnsureStack();
    fRefCount = 1;
    setActualSize(actualSize);
}

void TRovaneBase::EnsureStack() {
    if (fSubRangeStack.Length() != MaxSubrangeLevel + 1) fSubRangeStack.SetLength(MaxSubrangeLevel + 1);
}

// ---------------------------------------------------------------------------
// Memory.
// ---------------------------------------------------------------------------
void* TRovaneBase::AllocateMemory(int64_t size) {
    // Both routes end in the same heap here; the threshold is kept so that
    // large blocks can be sent elsewhere (huge pages, a NUMA node).
    if (size <= LargeBlockBytes) return std::malloc(static_cast<size_t>(size));
    return GlobalAllocUnmanaged(static_cast<size_t>(size));
}

void TRovaneBase::AllocOwnedBlock() {
    AllocSize = fActualSizeInBytes + 16 + 12 + RovaneMemoryAlignment;
    if (AllocSize > INT32_MAX) {
        AllocSize = 0;
        fActualSizeInBytes = 0;
        throw EOutOfMemory("Rovane: Cannot allocate more than 2GB for 32bit application!");
    }
    aPoint = AllocateMemory(AllocSize);
    if (!aPoint) {
        AllocSize = 0;
        fActualSizeInBytes = 0;
        throw EOutOfMemory("Rovane: Out of memory!");
    }
    // The first boundary that leaves room for the whole counted header.
    ValuesPointer = AllignMemp(static_cast<char*>(aPoint) + sizeof(TArrayHeader) - 1, 1);
    new (static_cast<char*>(ValuesPointer) - sizeof(TArrayHeader)) TArrayHeader{aPoint, nullptr, {1}, fLength};
}

void TRovaneBase::ReleaseMemory() {
    if (aPoint && ipoint) {
        // The owned block carries a counted header; an array handle still held
        // by the application keeps the block alive until it is released.
        detail::ReleaseCounted(reinterpret_cast<char*>(ipoint) + 8);
    } else if (aPoint) {
        std::free(aPoint);
    }
    aPoint = nullptr;
    AllocSize = 0;
}

void TRovaneBase::WriteHeader(int32_t length) {
    // Only the length: the count belongs to the handles that may be held.
    if (!ipoint || fIsSubRange || fActualSizeInBytes <= 0) return;
    detail::HeaderOf(ValuesPointer)->Length = length;
}

int32_t TRovaneBase::HeaderRefCount() const {
    if (!ipoint) return 0;
    return detail::HeaderOf(reinterpret_cast<const char*>(ipoint) + 8)->RefCount.load();
}

void TRovaneBase::setActualSize(int64_t bytes) {
    if (bytes == fActualSizeInBytes) return;
    if (bytes < 0) ERaise("SetActualSize: value < 0");
    if (fCapacityInBytes > 0) {
        if (fActualSizeInBytes == fCapacityInBytes && bytes <= fCapacityInBytes) return;
        if (fCapacityStep != 0) {
            const double grown = std::round(static_cast<double>(std::max(fCapacityInBytes, bytes)) * fCapacityStep);
            bytes = static_cast<int64_t>(grown);
            fCapacityInBytes = bytes;
        } else {
            bytes = std::max(fCapacityInBytes, bytes);
        }
    }
    fActualSizeInBytes = bytes;
    ValuesPointer = nullptr;
    ReleaseMemory();
    if (bytes == 0) {
        aPoint = nullptr;
        HookPointers();
        return;
    }
    if (fCacheIndex >= 0 && CacheLengthInBytes() >= bytes)
        AllocCacheMemory();
    else
        AllocMemory();
    HookPointers();
}

void TRovaneBase::SetCapacityInBytes(int64_t bytes) {
    if (bytes == fCapacityInBytes) return;
    if (bytes < 0) bytes = 0;
    fCapacityInBytes = (bytes + 15) / 16 * 16;
}

void TRovaneBase::SetCapacityInElements(int32_t) { ERaise("SetCapacityInElements: Abstract method!"); }
int32_t TRovaneBase::GetCapacityInElements() { ERaise("GetCapacityInElements: Abstract method!"); }

void TRovaneBase::setCapacityStep(double step) {
    if (step <= 0)
        fCapacityStep = 0;
    else if (step < 1)
        fCapacityStep = 1.0;
    else
        fCapacityStep = step;
}

void TRovaneBase::Reset() {
    FTag = 0;
    fCapacityInBytes = 0;
    fCapacityStep = 0;
}

void TRovaneBase::CondDisable() {
    fCondEnabled = fConditionCheck;
    fConditionCheck = false;
}

void TRovaneBase::CondEnable() { fConditionCheck = fCondEnabled; }

// ---------------------------------------------------------------------------
// Sub-ranges.
// ---------------------------------------------------------------------------
void TRovaneBase::SetSubRange(int32_t index, int32_t len) { SetSubRangeInternal(index, len, srNone); }
void TRovaneBase::SetSubRangeLevel(int32_t index, int32_t len) { SetSubRangeInternal(index, len, srPush); }

void TRovaneBase::SetSubRange(TRovaneBase& src, int32_t index, int32_t len) {
    src.ValidateParams(index, len);
    SetSubRangeInternal(src, index, len, srNone);
}

void TRovaneBase::SetSubRangeLevel(TRovaneBase& src, int32_t index, int32_t len) {
    src.ValidateParams(index, len);
    SetSubRangeInternal(src, index, len, srPush);
}

void TRovaneBase::SetSubRangeInternal(int32_t index, int32_t len, TSubRangeOp op) {
    if (!fAllowSubrange) ERaise("Subrange is blocked!");
    if (!fIsSubRange) {
        if (len == -1) len = RestFrom(fLength, index);
        if (OutOfRange(index, len, fLength))
            ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
        SubRangeSaveState();
        EnsureStack();
        fSubRangeStack[0] = TSubRangeItem{index, len, this};
        SetSubRangeDirect(index, len);
        return;
    }
    InternalSubRangeStackOp(index, len, op);
    TSubRangeItem& top = fSubRangeStack[fSubRangeLevel];
    if (top.Src == this) {
        if (SComplex && !fComplex) {
            if (index < 0 || len < 0 || (int64_t(index) + len) * 2 > SLength)
                ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, SavedLength: %d", index, len,
                                    SLength);
        } else if (!SComplex && fComplex) {
            if (index < 0 || len < 0 || (int64_t(index) + len) / 2 > SLength)
                ERangeErrorRaiseFmt("Self params out of range: 2*Index: %d, 2*Len: %d, SavedLength: %d", 2 * index,
                                    2 * len, SLength);
        }
        SetSubRangeDirect(index, len);
    } else {
        SetSubRangeDirect(*top.Src, index, len);
    }
}

void TRovaneBase::InternalSubRangeStackOp(int32_t& index, int32_t& len, TSubRangeOp op) {
    auto checkAgainst = [&](const TSubRangeItem& below) {
        if (below.Src == this) {
            if (OutOfRange(index, len, SLength))
                ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, SLength);
        } else {
            fSubRangeStack[fSubRangeLevel].Src = below.Src;
            below.Src->ValidateParams(index, len);
        }
    };
    if (op == srPush) {
        if (fSubRangeLevel == MaxSubrangeLevel)
            ERangeErrorRaiseFmt("Subrange stack depth reached MaxSubrangeLevel at %d", MaxSubrangeLevel.load());
        index = Narrow32(int64_t(index) + fSubRangeStack[fSubRangeLevel].Index);
        ++fSubRangeLevel;
        fSubRangeStack[fSubRangeLevel].Src = this;
        checkAgainst(fSubRangeStack[fSubRangeLevel - 1]);
    } else if (fSubRangeLevel > 0) {
        index = Narrow32(int64_t(index) + fSubRangeStack[fSubRangeLevel - 1].Index);
        checkAgainst(fSubRangeStack[fSubRangeLevel - 1]);
    } else {
        // Replacing the first level: the range is relative to the full object.
        // A Len of -1 runs to its end, and the range is checked against it
        // unless the complexity changed, which the caller tests separately.
        const TSubRangeItem& first = fSubRangeStack[0];
        if (first.Src == this) {
            if (len == -1) len = RestFrom(SLength, index);
            if (SComplex == fComplex) checkAgainst(first);
        } else {
            first.Src->ValidateParams(index, len);
        }
    }
    fSubRangeStack[fSubRangeLevel].Index = index;
    fSubRangeStack[fSubRangeLevel].Len = len;
}

void TRovaneBase::SetSubRangeInternal(TRovaneBase& src, int32_t index, int32_t len, TSubRangeOp op) {
    src.ValidateParams(index, len);
    const bool entering = !fIsSubRange;
    if (entering) {
        SubRangeSaveState();
        EnsureStack();
        fSubRangeStack[0] = TSubRangeItem{index, len, &src};
    } else if (op == srPush) {
        if (fSubRangeLevel == MaxSubrangeLevel)
            ERangeErrorRaiseFmt("Subrange stack depth reached MaxSubrangeLevel at %d", MaxSubrangeLevel.load());
        ++fSubRangeLevel;
        fSubRangeStack[fSubRangeLevel] = TSubRangeItem{index, len, &src};
    } else {
        fSubRangeStack[fSubRangeLevel] = TSubRangeItem{index, len, &src};
    }
    try {
        SetSubRangeDirect(src, index, len);
    } catch (...) {
        // A source of the wrong kind: an object that was not a view stays one
        // that is not, with no level open.
        if (entering && !fIsSubRange) {
            fSubRangeStack[0].Src = nullptr;
            fSubRangeLevel = -1;
        }
        throw;
    }
}

void TRovaneBase::SetFullRangeInternal(bool restoreLevel) {
    if (!fIsSubRange) return;
    if (fSubRangeLevel <= 0) {
        SubRangeLoadState();
        fSubRangeStack[0].Src = nullptr;
        // Cleared before the views are hooked, so that the own block gets
        // its header pointer back.
        fIsSubRange = false;
        HookPointers();
        fSubRangeLevel = -1;
        FireOnSetSize();
        fAllowSubrange = true;
        return;
    }
    --fSubRangeLevel;
    const TSubRangeItem item = fSubRangeStack[fSubRangeLevel];
    if (item.Src == this)
        SetSubRangeDirect(item.Index, item.Len);
    else
        SetSubRangeDirect(*item.Src, item.Index, item.Len);
    if (restoreLevel)
        fSubRangeStack[fSubRangeLevel + 1].Src = nullptr;
    else
        ++fSubRangeLevel;
}

void TRovaneBase::SetFullRange() {
    SetFullRangeInternal(false);
    BlockSrc = nullptr;
}

void TRovaneBase::SetFullRangeLevel() {
    SetFullRangeInternal(true);
    BlockSrc = nullptr;
}

// ---------------------------------------------------------------------------
// Block processing.
// ---------------------------------------------------------------------------
void TRovaneBase::BlockInit(int32_t size) {
    BlockSize = size < 1 ? RovaneBlockSize.load() : size;
    if (BlockLevel != 0) return;
    BlockSrc = nullptr;
    const int32_t start = BlockI * BlockSize;
    if (start < fLength) {
        SetSubRangeLevel(start, std::min(BlockSize, std::max(fLength - start, 0)));
        FBlockEnd = false;
        fBlockSubRangeLevel = fSubRangeLevel;
        ++BlockLevel;
    }
}

void TRovaneBase::BlockInit(TRovaneBase& src, int32_t size) {
    BlockSize = size < 1 ? RovaneBlockSize.load() : size;
    if (BlockLevel != 0) return;
    BlockSrc = &src;
    const int32_t start = BlockI * BlockSize;
    if (start < src.fLength) {
        SetSubRangeLevel(src, start, std::min(BlockSize, std::max(src.fLength - start, 0)));
        FBlockEnd = false;
        fBlockSubRangeLevel = fSubRangeLevel;
        ++BlockLevel;
    }
}

void TRovaneBase::BlockNext() {
    FBlockEnd = true;
    if (BlockLevel != 1) {
        --BlockLevel;
        if (BlockLevel < 0) ERaise("TRovaneBase.BlockNext: BlockLevel < 0");
        return;
    }
    if (fSubRangeLevel != fBlockSubRangeLevel) ERaise("TRovaneBase.BlockNext: fSubRangeLevel <> fBlockSubRangeLevel");
    ++BlockI;
    const int32_t start = BlockI * BlockSize;
    int32_t total;
    if (BlockSrc)
        total = BlockSrc->fLength;
    else if (fSubRangeLevel > 0)
        total = fSubRangeStack[fSubRangeLevel - 1].Len;
    else
        total = SLength;
    if (start >= total) {
        BlockSrc = nullptr;
        BlockI = 0;
        BlockLevel = 0;
        fBlockSubRangeLevel = -1;
        FBlockEnd = true;
        SetFullRangeLevel();
        return;
    }
    const int32_t len = std::min(total - start, BlockSize);
    if (BlockSrc) {
        TRovaneBase* src = BlockSrc;
        SetSubRange(*src, start, len);
        BlockSrc = src;
    } else {
        // The stack op adds the offset of the level below, so the block moves
        // within the range that the loop walks.
        SetSubRange(start, len);
    }
    FBlockEnd = false;
}

void TRovaneBase::BlockFinish() {
    BlockI = 0;
    BlockLevel = 0;
    fBlockSubRangeLevel = -1;
    FBlockEnd = true;
    SetFullRangeLevel();
}

// ---------------------------------------------------------------------------
// Value-record sharing.
// ---------------------------------------------------------------------------
void TRovaneBase::ReleaseSubrange() {
    if (--subrange_refs_count + usage_refs_count == 0) {
        usage_refs_count = 1;
        subrange_refs_count = 0;
        FreeToCache();
    }
}

void TRovaneBase::ReleaseUsage() {
    if (--usage_refs_count + subrange_refs_count == 0) {
        usage_refs_count = 1;
        subrange_refs_count = 0;
        FreeToCache();
    }
}

// ---------------------------------------------------------------------------
// Validation.
// ---------------------------------------------------------------------------
void TRovaneBase::ValidateParams(int32_t index, int32_t& len) const {
    if (len == -1) len = RestFrom(fLength, index);
    if (fConditionCheck && OutOfRange(index, len, fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
}

void TRovaneBase::ValidateCplxArrayIndexes(int32_t srcIndex, int32_t srcLen, int32_t index, int32_t& len) const {
    ValidateParams(index, len);
    if (!fConditionCheck) return;
    if (!fComplex) EInvalidArgumentRaise("ValidateCplxArrayIndexes: Self must be Complex");
    if (int64_t(len) + srcIndex > srcLen)
        ERangeErrorRaiseFmt("ValidateCplxArrayIndexes: SrcIndex + Len > SrcLen, (%d + %d) > %d", srcIndex, len, srcLen);
    if (srcIndex < 0) ERangeErrorRaiseFmt("ValidateCplxArrayIndexes: SrcIndex < 0, %d < 0", srcIndex);
}

void TRovaneBase::ValidateRealArrayIndexes(int32_t srcIndex, int32_t srcLen, int32_t index, int32_t& len) const {
    ValidateParams(index, len);
    if (fComplex) len = Narrow32(int64_t(len) * 2);
    if (!fConditionCheck) return;
    if (int64_t(srcIndex) + len > srcLen)
        ERangeErrorRaiseFmt("ValidateRealArrayIndexes: (SrcIndex + Len) > SrcLen, (%d + %d) > %d", srcIndex, len,
                            srcLen);
    if (srcIndex < 0) ERangeErrorRaiseFmt("ValidateRealArrayIndexes: SrcIndex < 0, %d < 0", srcIndex);
}

void TRovaneBase::MapIndexes(const TIntegerArray& breaks, TIntegerArray& starts, TIntegerArray& lengths,
                             int32_t base) const {
    const int32_t n = breaks.Length();
    starts = TIntegerArray(n);
    lengths = TIntegerArray(n);
    for (int32_t i = 0; i < n; ++i) {
        const int32_t end = i + 1 < n ? breaks[i + 1] : fLength;
        starts[i] = breaks[i] + base;
        lengths[i] = end - breaks[i];
    }
}

std::string TRovaneBase::DebugReport(int32_t index) const {
    const int32_t count = fRefCount.load();
    if (count == 1) return {};
    return FormatText("Cache item at index %d has a FRefCount = %d", {index, count});
}

// ---------------------------------------------------------------------------
// TRovaneSample.
// ---------------------------------------------------------------------------
void TRovaneSample::SetBaseViews(void* base) {
    if (fIsDouble) {
        SData = static_cast<double*>(base);
        CData = static_cast<TCplx*>(base);
        SSData = nullptr;
        SCData = nullptr;
    } else {
        SSData = static_cast<float*>(base);
        SCData = static_cast<TSCplx*>(base);
        SData = nullptr;
        CData = nullptr;
    }
}

void TRovaneSample::RangeCheck(int32_t i) const {
    if (i < 0) ERangeErrorRaiseFmt("Indx < 0, %d < 0", i);
    if (fComplex) {
        if (i >= 2 * fLength)
            ERangeErrorRaiseFmt("Index >= Flength*2, Index = %d, fLength*2 = %d", i, 2 * fLength);
    } else if (i >= fLength) {
        ERangeErrorRaiseFmt("Index >= Flength, Index = %d, fLength = %d", i, fLength);
    }
}

void TRovaneSample::RangeCheckComplex(int32_t i) const {
    if (i < 0) ERangeErrorRaiseFmt("Indx < 0, %d < 0", i);
    if (fComplex) {
        if (i >= fLength) ERangeErrorRaiseFmt("Index >= Flength*2, Index = %d, fLength = %d", i, fLength);
    } else if (i >= fLength / 2) {
        ERangeErrorRaiseFmt("Index >= Flength, Index = %d, (fLength div 2) = %d", i, fLength / 2);
    }
}

void TRovaneSample::ValidateParams(const TRovaneBase& x, int32_t xIndex, int32_t index, int32_t& len) const {
    if (len == -1) len = RestFrom(fLength, index);
    if (!fConditionCheck) return;
    if (&x == this) EInvalidArgumentRaise("Invalid params: X is equal to Self");
    if (OutOfRange(xIndex, len, x.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d, Len: %d , X.Length: %d", xIndex, len, x.fLength);
    if (OutOfRange(index, len, fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    if (fIsDouble != x.fIsDouble)
        ERangeErrorRaise("X params not matching floating point precision: fIsDouble <> X.fIsDouble");
}

void TRovaneSample::ValidateParams2(const TRovaneBase& x, int32_t xIndex, int32_t index, int32_t& len) const {
    if (len == -1) len = RestFrom(fLength, index);
    if (!fConditionCheck) return;
    if (OutOfRange(xIndex, len, x.fLength))
        ERangeErrorRaiseFmt("X params out of range: XIndex: %d Len: %d, Length: %d", xIndex, len, x.fLength);
    if (OutOfRange(index, len, fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    if (fIsDouble != x.fIsDouble)
        ERangeErrorRaise("X param not matching floating point precision: fIsDouble <> X.fIsDouble");
}

void TRovaneSample::ValidateParams(const TRovaneBase& x1, const TRovaneBase& x2, int32_t xIndex1, int32_t xIndex2,
                                   int32_t index, int32_t& len) const {
    if (len == -1) len = RestFrom(fLength, index);
    if (!fConditionCheck) return;
    if (&x1 == this || &x2 == this) EInvalidArgumentRaise("Invalid params: X1 or X2 is equal to Self");
    if (OutOfRange(xIndex1, len, x1.fLength))
        ERangeErrorRaiseFmt("X1 params out of range: xIndex1: %d, Len: %d, x1Length = %d", xIndex1, len, x1.fLength);
    if (OutOfRange(xIndex2, len, x2.fLength))
        ERangeErrorRaiseFmt("X1 params out of range: xIndex2: %d, Len: %d, x2Length = %d", xIndex2, len, x2.fLength);
    if (OutOfRange(index, len, fLength))
        ERangeErrorRaiseFmt("Self params out of range: Index: %d, Len: %d, Length: %d", index, len, fLength);
    if (fIsDouble != x1.fIsDouble || fIsDouble != x2.fIsDouble)
        ERangeErrorRaise(
            "X params not matching floating point precision: (fIsDouble <> X1.fIsDouble) or (fIsDouble <> "
            "X2.fIsDouble)");
}

}  // namespace rovane
