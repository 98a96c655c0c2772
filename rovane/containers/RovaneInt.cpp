// Integer container storage.
#include "rovane/containers/RovaneInt.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "rovane/storage/ObjectCache.h"
#include "rovane/storage/ReportChannel.h"

namespace rovane {

namespace {
int32_t WidthOf(TIntPrecision p) { return p == prInt32 ? 4 : p == prInt16 ? 2 : 1; }
}  // namespace

TRovaneInt::~TRovaneInt() = default;

// Destruction of an integer vector or matrix; never throws (see TVec).
void TRovaneInt::DestroyInt() noexcept {
    ReportDestroyProblem();
    try {
        SetFullRange();
        if (fIsSubRange) {
            fSubRangeLevel = 0;
            SetFullRangeLevel();
        }
        setActualSize(0);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("TRovaneInt.Destroy: cleanup failed");
    }
    fSubRangeLevel = -1;
}

void TRovaneInt::SetBaseView(void* base) {
    IData = fIntPrecision == prInt32 ? static_cast<int32_t*>(base) : nullptr;
    SIData = fIntPrecision == prInt16 ? static_cast<int16_t*>(base) : nullptr;
    BData = fIntPrecision == prInt8 ? static_cast<uint8_t*>(base) : nullptr;
}

TRovaneInt& TRovaneInt::Size(int32_t aLength, TIntPrecision precision) {
    if (aLength < 0) EInvalidArgumentRaise("TVecInt.Length can not be smaller than zero!");
    if (FIntPrecisionLock) precision = fIntPrecision;
    if (aLength == fLength && precision == fIntPrecision) return *this;
    if (fIsSubRange)
        ERaise(
            "TVecInt.IsSubRange = True! Destination would need to be resized, but is already subranged from another "
            "object.");
    if (fActualSizeInBytes > 0 && HeaderRefCount() > 1)
        EInvalidArgumentRaiseFmt("TVecInt.Size: External references to internal array detected: RefCount  = %d",
                                 HeaderRefCount());
    fLength = aLength;
    fIntPrecision = precision;
    const int64_t bytes = (int64_t(aLength) * WidthOf(precision) + 15) / 16 * 16;
    if (!(fCacheIndex >= 0 && fActualSizeInBytes == CacheLengthInBytes() && bytes <= CacheLengthInBytes()))
        setActualSize(bytes);
    // A change of width may keep the block (the same byte size): the base
    // views follow the new width either way.
    SetBaseView(ValuesPointer);
    HookPointers();
    WriteHeader(fLength);
    FireOnSetSize();
    return *this;
}

TRovaneInt& TRovaneInt::Size(const TRovaneInt& src) {
    if (fRovaneType != rvTMtxInt) return Size(src.fLength, src.fIntPrecision);
    auto& m = static_cast<TMtxInt&>(*this);
    if (src.fRovaneType == rvTMtxInt) {
        const auto& s = static_cast<const TMtxInt&>(src);
        return m.Size(s.FRows, s.FCols, s.fIntPrecision);
    }
    return m.Size(src.fLength, 1, src.fIntPrecision);
}

TRovaneInt& TRovaneInt::Resize(int32_t aLength, bool zeroIt) {
    if (aLength < 0) EInvalidArgumentRaise("TVecInt.Length can not be smaller than zero!");
    if (aLength == fLength) return *this;
    const int32_t w = WidthOf(fIntPrecision);
    if (aLength < fLength && !fIsSubRange) {
        // Shorter: the block stays, only the length changes.
        fLength = aLength;
        WriteHeader(fLength);
        FireOnSetSize();
        return *this;
    }
    const int32_t keep = aLength < fLength ? aLength : fLength;
    std::vector<char> saved(static_cast<const char*>(ValuesPointer),
                            static_cast<const char*>(ValuesPointer) + int64_t(keep) * w);
    Size(aLength, fIntPrecision);
    if (keep > 0) std::memcpy(ValuesPointer, saved.data(), saved.size());
    if (zeroIt && aLength > keep)
        std::memset(static_cast<char*>(ValuesPointer) + int64_t(keep) * w, 0, size_t(aLength - keep) * w);
    return *this;
}

void TRovaneInt::SubRangeSaveState() {
    SActualSize = fActualSizeInBytes;
    SLength = fLength;
    SOffset = FDataOffset;
    SIntPrecision = fIntPrecision;
    SValuesPointer = ValuesPointer;
    fSubRangeLevel = 0;
}

void TRovaneInt::SubRangeLoadState() {
    fActualSizeInBytes = SActualSize;
    fLength = SLength;
    FDataOffset = SOffset;
    fIntPrecision = SIntPrecision;
    ValuesPointer = SValuesPointer;
    SetBaseView(static_cast<char*>(ValuesPointer) - int64_t(FDataOffset) * WidthOf(fIntPrecision));
}

void TRovaneInt::SetSubRangeDirect(int32_t index, int32_t len) {
    FDataOffset = SOffset + index;
    char* base = IData ? reinterpret_cast<char*>(IData) : SIData ? reinterpret_cast<char*>(SIData)
                                                                 : reinterpret_cast<char*>(BData);
    if (base) ValuesPointer = base + int64_t(FDataOffset) * WidthOf(fIntPrecision);
    HookPointers();
    fActualSizeInBytes = int64_t(len) * ElemSize();
    fLength = len;
    fIsSubRange = true;
    FireOnSetSize();
}

void TRovaneInt::SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) {
    auto* s = dynamic_cast<TRovaneInt*>(&src);
    if (!s) ERaise("TVecInt.SetSubRange: Src is not of TVecInt or TMtxInt type!");
    fIntPrecision = s->fIntPrecision;
    FDataOffset = len < 1 ? 0 : index + s->FDataOffset;
    void* base = s->IData ? static_cast<void*>(s->IData)
                 : s->SIData ? static_cast<void*>(s->SIData)
                             : static_cast<void*>(s->BData);
    SetBaseView(len < 1 ? nullptr : base);
    ValuesPointer = len < 1 ? nullptr : static_cast<char*>(base) + int64_t(FDataOffset) * WidthOf(fIntPrecision);
    HookPointers();
    fActualSizeInBytes = len;
    fLength = len;
    fIsSubRange = true;
    FireOnSetSize();
}

void TRovaneInt::AllocMemory() {
    AllocOwnedBlock();
    ipoint = reinterpret_cast<int32_t*>(static_cast<char*>(ValuesPointer) - 8);
    FDataOffset = 0;
    SetBaseView(ValuesPointer);
}

void TRovaneInt::AllocCacheMemory() {
    auto& cache = fRovaneType == rvTVecInt ? static_cast<TSlotCache&>(Controller->Pool[fPoolIndex]->VecInt)
                                           : static_cast<TSlotCache&>(Controller->Pool[fPoolIndex]->MtxInt);
    ValuesPointer = cache.SlotPointer(fMemIndex);
    AllocSize = 0;
    FDataOffset = 0;
    fActualSizeInBytes = CacheLengthInBytes();
    SetBaseView(ValuesPointer);
}

void TRovaneInt::HookPointers() {
    if (!ValuesPointer) SetBaseView(nullptr);
    ipoint = ValuesPointer && !fIsSubRange && fActualSizeInBytes > 0
                 ? reinterpret_cast<int32_t*>(static_cast<char*>(ValuesPointer) - 8)
                 : nullptr;
    IValues = fIntPrecision == prInt32 ? static_cast<int32_t*>(ValuesPointer) : nullptr;
    SIValues = fIntPrecision == prInt16 ? static_cast<int16_t*>(ValuesPointer) : nullptr;
    BValues = fIntPrecision == prInt8 ? static_cast<uint8_t*>(ValuesPointer) : nullptr;
}

int32_t TRovaneInt::ElemSize() const { return WidthOf(fIntPrecision); }

int32_t TRovaneInt::CacheLength() const {
    if (!Controller || fCacheIndex < 0) return 0;
    const auto& pool = *Controller->Pool[fPoolIndex];
    return fRovaneType == rvTVecInt ? pool.VecInt.CacheElements() : pool.MtxInt.CacheElements();
}

int64_t TRovaneInt::CacheLengthInBytes() const { return int64_t(CacheLength()) * 4; }

void TRovaneInt::SetCapacityInElements(int32_t count) { SetCapacityInBytes(int64_t(count) * ElemSize()); }
int32_t TRovaneInt::GetCapacityInElements() { return static_cast<int32_t>(fCapacityInBytes / ElemSize()); }

void TRovaneInt::Reset() {
    SetFullRange();
    TRovaneBase::Reset();
    fLength = 0;
    if (!FIntPrecisionLock) fIntPrecision = prInt32;
    if (fCacheIndex >= 0 && fActualSizeInBytes > CacheLengthInBytes()) setActualSize(CacheLengthInBytes());
    HookPointers();
    WriteHeader(0);
    FireOnSetSize();
}

void TRovaneInt::FreeToCache() {
    if (fRovaneType == rvTVecInt) {
        auto* self = static_cast<TVecInt*>(this);
        FreeIt(self);
    } else {
        auto* self = static_cast<TMtxInt*>(this);
        FreeIt(self);
    }
}

TVecInt::TVecInt() { fRovaneType = rvTVecInt; }
TVecInt::~TVecInt() { DestroyInt(); }

TMtxInt::TMtxInt() { fRovaneType = rvTMtxInt; }
TMtxInt::~TMtxInt() { DestroyInt(); }

// The fixed-width classes: width and lock at construction, typed view.
TVecSmallInt::TVecSmallInt() {
    fIntPrecision = prInt16;
    FIntPrecisionLock = true;
}
void TVecSmallInt::HookPointers() {
    TRovaneInt::HookPointers();
    Values = SIValues;
}
TVecByte::TVecByte() {
    fIntPrecision = prInt8;
    FIntPrecisionLock = true;
}
void TVecByte::HookPointers() {
    TRovaneInt::HookPointers();
    Values = BValues;
}
TMtxSmallInt::TMtxSmallInt() {
    fIntPrecision = prInt16;
    FIntPrecisionLock = true;
}
void TMtxSmallInt::HookPointers() {
    TRovaneInt::HookPointers();
    Values = SIValues;
}
TMtxByte::TMtxByte() {
    fIntPrecision = prInt8;
    FIntPrecisionLock = true;
}
void TMtxByte::HookPointers() {
    TRovaneInt::HookPointers();
    Values = BValues;
}

TVecIntList::~TVecIntList() { Clear(); }
TVecInt& TVecIntList::Add() {
    fItems.push_back(nullptr);
    fItems.back() = new TVecInt();
    return *fItems.back();
}
TVecInt& TVecIntList::operator[](int32_t i) const {
    if (i < 0 || i >= Count()) ERangeErrorRaiseFmt("TVecIntList: Index out of range: %d", i);
    return *fItems[size_t(i)];
}
void TVecIntList::Delete(int32_t i) {
    TVecInt* v = &(*this)[i];
    fItems.erase(fItems.begin() + i);
    delete v;
}
void TVecIntList::Clear() {
    for (TVecInt* v : fItems) delete v;
    fItems.clear();
}

}  // namespace rovane
