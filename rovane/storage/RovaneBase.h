// Storage object under every container: one aligned block with a counted-array
// header, its typed views, sub-ranges over the block of the object itself or
// of another object, block processing, capacity and argument validation.
#pragma once

#include <functional>
#include <new>

#include "rovane/scalars/Scalars.h"

namespace rovane {

class TRovaneBase;

enum TSubRangeOp : int32_t { srPush, srNone };
enum TRovaneType : int32_t { rvTVec, rvTMtx, rvTVecInt, rvTMtxInt, rvTSparseMtx };

// One level of the sub-range stack: the range and the object it views.
struct TSubRangeItem {
    int32_t Index = 0;
    int32_t Len = 0;
    TRovaneBase* Src = nullptr;
};
using TSubRangeStack = TArray<TSubRangeItem>;

using TNotifyEvent = std::function<void(TRovaneBase* sender)>;

// The runtime's out-of-memory failure (std::bad_alloc), carrying the
// library's text: "Rovane: Out of memory!" or the 32-bit size refusal.
class ROVANE_API EOutOfMemory : public std::bad_alloc {
public:
    explicit EOutOfMemory(const char* text) noexcept : fText(text) {}
    const char* what() const noexcept override { return fText; }

private:
    const char* fText;
};

// Range arithmetic of the validators, in 64 bits so that no index or length
// near the 32-bit limit can wrap around a check.
namespace range {
// A 64-bit value clamped into the 32-bit range.
inline int32_t Narrow32(int64_t v) {
    return v > INT32_MAX ? INT32_MAX : v < INT32_MIN ? INT32_MIN : static_cast<int32_t>(v);
}
// A Len of -1: the rest of an object of `length` from `index`.
inline int32_t RestFrom(int32_t length, int32_t index) { return Narrow32(int64_t(length) - index); }
// Whether [index, index + len) leaves [0, length).
inline bool OutOfRange(int64_t index, int64_t len, int64_t length) {
    return index < 0 || len < 0 || index + len > length;
}
}  // namespace range

// Deepest sub-range level; the stack has entries 0 to MaxSubrangeLevel.
ROVANE_API extern std::atomic<int32_t> MaxSubrangeLevel;

// Byte size above which AllocateMemory routes a block to GlobalAllocUnmanaged.
inline constexpr int64_t LargeBlockBytes = 262144;

// The root of every container. Its fields are public so that the operation
// frame and the primitives of other objects can read base views and offsets;
// they are changed only through the methods.
class ROVANE_API TRovaneBase {
public:
    TRovaneBase();
    TRovaneBase(const TRovaneBase&) = delete;
    TRovaneBase& operator=(const TRovaneBase&) = delete;
    // Destruction never throws. A misuse found on the way (open sub-range
    // levels, a cached object destroyed instead of given back with FreeIt) is
    // sent to the report channel, and the object and the cache are still
    // cleaned up. CheckDestroy and Free raise the same texts instead.
    virtual ~TRovaneBase();

    // The text of the misuse that destroying the object now would meet, or
    // an empty text when it may be destroyed.
    virtual std::string DestroyProblem() const;
    // Raises ERovaneException with that text, leaving the object as it is.
    void CheckDestroy() const;
    // CheckDestroy, then deletes the object; for objects made with new.
    void Free();
    // Sends DestroyProblem to the report channel; for destructors.
    void ReportDestroyProblem() const noexcept;

    // ---- storage state -------------------------------------------------
    bool fCondEnabled = false;
    TNotifyEvent FOnSetSize;
    bool FBlockEnd = true;
    std::atomic<int32_t> fRefCount{0};
    int32_t fMemIndex = -1;
    // Bytes of this object's cache slot, fixed while the object lives in a
    // cache (0 for a free object): read on every Size of a cached object.
    int64_t fSlotBytes = 0;
    TSubRangeStack fSubRangeStack;
    bool FCacheOwned = false;
    // Atomic: Recollect of a shared pool renumbers objects that other
    // threads hold and read.
    std::atomic<int32_t> fCacheIndex{-1};
    int32_t fSubRangeLevel = -1;
    bool fIsDouble = true;
    int32_t fPoolIndex = 0;
    uint64_t fThreadID = 0;
    int32_t* ipoint = nullptr;  // the two header words ahead of ValuesPointer
    void* aPoint = nullptr;     // what the allocator returned
    void* ValuesPointer = nullptr;
    int64_t AllocSize = 0;
    std::string FCaption;
    int32_t FTag = 0;
    bool SComplex = false;
    bool fComplex = false;
    int32_t fLength = 0;
    int32_t BlockSize = 0, BlockI = 0, BlockLevel = 0;
    TRovaneBase* BlockSrc = nullptr;
    bool fIsSubRange = false;
    int64_t fActualSizeInBytes = 0;
    bool fConditionCheck = true;
    int32_t subrange_refs_count = 0, usage_refs_count = 1;
    bool fAllowSubrange = true;
    int32_t FFTDescriptorIndex = -1;
    int64_t fCapacityInBytes = 0;
    double fCapacityStep = 0;
    int64_t SActualSize = 0;
    TMtxFloatPrecision SFloatPrecision = rvDouble;
    int32_t SLength = 0;
    int32_t SOffset = 0;
    bool SIsDouble = true;
    void* SValuesPointer = nullptr;
    TRovaneType fRovaneType = rvTVec;
    TMtxFloatPrecision fFloatPrecision = rvDouble;
    int32_t fBlockSubRangeLevel = -1;
    int32_t fDebuggerMarker = 999999111;
    uint64_t ThreadID = 0;

    // ---- properties ----------------------------------------------------
    int32_t Length() const { return fLength; }
    void SetLength(int32_t value) { DoSetLength(value); }
    bool ConditionCheck() const { return fConditionCheck; }
    void SetConditionCheck(bool value) { fConditionCheck = value; }
    const std::string& Caption() const { return FCaption; }
    void SetCaption(std::string value) { FCaption = std::move(value); }
    int32_t Tag() const { return FTag; }
    void SetTag(int32_t value) { FTag = value; }
    TRovaneType RovaneType() const { return fRovaneType; }
    const TNotifyEvent& OnSetSize() const { return FOnSetSize; }
    void SetOnSetSize(TNotifyEvent handler) { FOnSetSize = std::move(handler); }
    bool IsSubRange() const { return fIsSubRange; }
    bool BlockEnd() const;
    int32_t CacheIndex() const { return fCacheIndex; }
    int32_t PoolIndex() const { return fPoolIndex; }
    bool IsDouble() const { return fIsDouble; }
    void SetIsDouble(bool value) { setIsDouble(value); }
    int64_t CapacityInBytes() const { return fCapacityInBytes; }
    int32_t CapacityInElements() { return GetCapacityInElements(); }
    int32_t Capacity() { return GetCapacityInElements(); }
    void SetCapacity(int32_t count) { SetCapacityInElements(count); }
    double CapacityStep() const { return fCapacityStep; }
    void SetCapacityStep(double step) { setCapacityStep(step); }
    int32_t SubRangeLevel() const { return fSubRangeLevel; }
    int32_t BlockSubRangeLevel() const { return fBlockSubRangeLevel; }

    // ---- virtual operations -------------------------------------------
    virtual void Assign(const TRovaneBase& src);
    virtual void FreeCached();
    virtual void CreateCached(int32_t poolIndex, int64_t actualSize, int32_t memIndex, int32_t cacheIndex);
    virtual void SubRangeSaveState() = 0;
    virtual void SubRangeLoadState() = 0;
    virtual void SetSubRangeDirect(int32_t index, int32_t len) = 0;
    virtual void SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) = 0;
    virtual void AllocMemory() {}
    virtual void AllocCacheMemory() {}
    virtual void HookPointers() {}
    virtual void ReleaseMemory();
    virtual int32_t CacheLength() const { return 0; }
    virtual int64_t CacheLengthInBytes() const { return 0; }
    virtual int32_t ElemSize() const { return 0; }
    virtual void setActualSize(int64_t bytes);
    virtual void SetCapacityInBytes(int64_t bytes);
    virtual void SetCapacityInElements(int32_t count);
    virtual int32_t GetCapacityInElements();
    virtual void setCapacityStep(double step);
    virtual void setIsDouble(bool value) { fIsDouble = value; }
    virtual void DoSetLength(int32_t) {}
    virtual void SetFullRange();
    virtual void SetFullRangeLevel();
    virtual void Reset();
    virtual void Clear() {}
    virtual void FreeToCache() {}

    // ---- sub-ranges ----------------------------------------------------
    void SetSubRange(int32_t index, int32_t len);
    void Select(int32_t index, int32_t len) { SetSubRange(index, len); }
    void SetSubRangeLevel(int32_t index, int32_t len);
    void SetSubRange(TRovaneBase& src, int32_t index, int32_t len);
    void SetSubRangeLevel(TRovaneBase& src, int32_t index, int32_t len);
    void SetSubIndex(int32_t first, int32_t last) { SetSubRange(first, last - first + 1); }
    void SetSubRange() { SetFullRange(); }
    void Select() { SetFullRange(); }
    void SelectAll() { SetFullRange(); }
    void DisableSubrange() { fAllowSubrange = false; }
    void EnableSubrange() { fAllowSubrange = true; }
    // Reversed on purpose: EnableSelect blocks the self form, DisableSelect
    // opens it again.
    void EnableSelect() { fAllowSubrange = false; }
    void DisableSelect() { fAllowSubrange = true; }
    void CondDisable();
    void CondEnable();

    // ---- block processing ---------------------------------------------
    void BlockInit(int32_t size);
    void BlockInit(TRovaneBase& src, int32_t size);
    void BlockInit() { BlockInit(RovaneBlockSize); }
    void BlockInit(TRovaneBase& src) { BlockInit(src, RovaneBlockSize); }
    void BlockNext();
    void BlockFinish();

    // ---- shared ownership by value records ---------------------------
    void AddRefSubrange() { ++subrange_refs_count; }
    void AddRefUsage() { ++usage_refs_count; }
    void ReleaseSubrange();
    void ReleaseUsage();

    // ---- memory and validation ----------------------------------------
    void* AllocateMemory(int64_t size);
    // Allocates the owned block for fActualSizeInBytes bytes with the counted
    // header in front (count 1, length fLength) and sets aPoint, AllocSize
    // and ValuesPointer. A block beyond 32 bits and a failed allocation raise
    // EOutOfMemory and leave no memory and a size of 0.
    void AllocOwnedBlock();
    void ValidateParams(int32_t index, int32_t& len) const;
    void ValidateCplxArrayIndexes(int32_t srcIndex, int32_t srcLen, int32_t index, int32_t& len) const;
    void ValidateRealArrayIndexes(int32_t srcIndex, int32_t srcLen, int32_t index, int32_t& len) const;
    // Turns ascending break positions into runs: Starts[i] and Lengths[i]
    // cover [Breaks[i], Breaks[i+1]), the last run ending at Length; Base is
    // added to every start.
    void MapIndexes(const TIntegerArray& breaks, TIntegerArray& starts, TIntegerArray& lengths, int32_t base) const;
    // Text that tells why a cached object is in a bad state, or empty.
    std::string DebugReport(int32_t index) const;

    // The reference count held in the block header, or 0 without one.
    int32_t HeaderRefCount() const;

protected:
    void SetSubRangeInternal(int32_t index, int32_t len, TSubRangeOp op);
    void SetSubRangeInternal(TRovaneBase& src, int32_t index, int32_t len, TSubRangeOp op);
    void InternalSubRangeStackOp(int32_t& index, int32_t& len, TSubRangeOp op);
    void SetFullRangeInternal(bool restoreLevel);
    void EnsureStack();
    void FireOnSetSize() {
        if (FOnSetSize) FOnSetSize(this);
    }
    // Writes the header of an owned block: count 1 and the given length.
    void WriteHeader(int32_t length);
};

// Adds the four typed views of the block for float data.
class ROVANE_API TRovaneSample : public TRovaneBase {
public:
    int32_t FDataOffset = 0;   // offset of the range in real elements
    int32_t FCDataOffset = 0;  // the same in complex elements
    bool fFloatPrecisionLock = false;
    double* SData = nullptr;
    TCplx* CData = nullptr;
    float* SSData = nullptr;
    TSCplx* SCData = nullptr;

    double* PValues1D(int32_t i) const { return SData + FDataOffset + i; }
    float* PSValues1D(int32_t i) const { return SSData + FDataOffset + i; }
    // Offset by the real offset with complex element size: right at offset 0
    // only; a caller inside a sub-range uses CDataIndex.
    TCplx* PCValues1D(int32_t i) const { return CData + FDataOffset + i; }
    TSCplx* PSCValues1D(int32_t i) const { return SCData + FDataOffset + i; }
    int32_t SDataIndex(int32_t i) const { return FDataOffset + i; }
    int32_t CDataIndex(int32_t i) const { return FCDataOffset + i; }

    double PrecisionEPS() const { return fIsDouble ? MACHEP : EPS_SINGLE; }
    double PrecisionSqrtEPS() const { return fIsDouble ? DOUBLE_SQRT_EPS : SQRTEPS_SINGLE; }
    double PrecisionMaxValue() const {
        return fIsDouble ? std::bit_cast<double>(0x7FEFFFFFFFFFFFFBull) : MAXNUM_SINGLE;
    }
    double PrecisionMinValue() const { return fIsDouble ? MINNUM : MINNUM_SINGLE; }
    bool FloatPrecisionLock() const { return fFloatPrecisionLock; }
    void SetFloatPrecisionLock(bool value) { fFloatPrecisionLock = value; }

    void RangeCheck(int32_t i) const;
    void RangeCheckComplex(int32_t i) const;
    void ValidateParams(int32_t index, int32_t& len) const { TRovaneBase::ValidateParams(index, len); }
    void ValidateParams(const TRovaneBase& x, int32_t xIndex, int32_t index, int32_t& len) const;
    void ValidateParams(const TRovaneBase& x1, const TRovaneBase& x2, int32_t xIndex1, int32_t xIndex2, int32_t index,
                        int32_t& len) const;
    // As the form with X, for operations that work in place: X may be Self.
    void ValidateParams2(const TRovaneBase& x, int32_t xIndex, int32_t index, int32_t& len) const;

protected:
    // Points the base view pair of the current precision at `base`, the
    // other pair at null.
    void SetBaseViews(void* base);
};

}  // namespace rovane
