// Object cache: per-pool caches of ready containers, each owning a slot of
// one preallocated aligned block; the controller that owns the pools; and
// CreateIt/FreeIt, which take temporaries from the calling thread's pool.
#pragma once

#include "rovane/storage/RovaneBase.h"

namespace rovane {

class TVec;
class TMtx;
class TVecInt;
class TMtxInt;

struct TPoolItemRecord {
    TRovaneBase* Item = nullptr;
    bool Used = false;
};
using TCacheItem = TArray<TPoolItemRecord>;

enum TThreadingMode : int32_t { ttSerial, ttTurnAround, ttThroughput };

// Byte spin lock: set by compare-and-exchange from 0 to 1, released by a
// plain store of 0; spins without backing off.
struct TSpinLock {
    std::atomic<uint8_t> state{0};
    bool TryEnter() {
        uint8_t expected = 0;
        return state.compare_exchange_strong(expected, 1, std::memory_order_acquire);
    }
    void Enter() {
        while (!TryEnter()) {
            while (state.load(std::memory_order_relaxed) != 0) {
            }
        }
    }
    void Leave() { state.store(0, std::memory_order_release); }
    bool IsFree() const { return state.load(std::memory_order_relaxed) == 0; }
};

class ROVANE_API TAbstractRovaneCache {
public:
    TAbstractRovaneCache() = default;
    TAbstractRovaneCache(const TAbstractRovaneCache&) = delete;
    TAbstractRovaneCache& operator=(const TAbstractRovaneCache&) = delete;
    virtual ~TAbstractRovaneCache();

    TCacheItem Cache;
    TCacheItem Cache1;
    bool FCacheWasFull = false;
    int32_t Count = 0;
    int32_t fCacheUsedCount = 0;
    int32_t LowCount = 0;
    bool fConditionCheck = true;
    int32_t FCacheSize = 0;
    int32_t fCacheElements = 0;
    int32_t FMaxCount = 0;
    TSpinLock csLock;
    int32_t PoolIndex = 0;
    // Written under the controller's lock while the owner may read it.
    std::atomic<uint64_t> ThreadId{0};

    virtual void CacheMemFree() = 0;
    virtual TRovaneBase* NewItem() = 0;
    virtual void CacheMemAllocate(int32_t itemCount, int32_t elements) = 0;
    virtual int64_t GetCacheInBytes() const = 0;

    // Allocates the cache block and creates the objects of the entries, once
    // after each SetCacheSize; the first take calls it (under the lock that
    // guards the take).
    void Fill();
    bool Filled() const { return fFilled; }

    // Takes an entry (the caller holds the lock where one is needed). Never
    // fails: with every slot in use it returns a free object from the heap.
    TRovaneBase* CreateItx();
    TRovaneBase* LockedCreateItx();
    void FreeIty(TRovaneBase* item);
    void LockedFreeIty(TRovaneBase* item);
    void Recollect();
    void SetCacheSize(int32_t itemCount, int32_t elements);
    void SetConditionCheck(bool value);
    bool CacheUsed() const { return fCacheUsedCount > 0; }
    int32_t CacheUsedCount() const { return fCacheUsedCount; }
    bool CacheWasFull() const { return FCacheWasFull; }
    int32_t MaxCount() const { return FMaxCount; }
    int32_t CacheSize() const { return FCacheSize; }
    int32_t CacheElements() const { return fCacheElements; }
    // One line per entry that is out, "Cache item at index %d has Used = True".
    std::string DebugReport() const;

protected:
    // Destroys the items that are not out and forgets them; for the end of
    // a cache, where nothing may raise.
    void FreeUnusedItems();
    bool fFilled = false;
};

// Slot layout shared by the float and integer caches: one block, each slot
// aligned and preceded by a counted-array header. `unit` is the byte size of
// the counting unit (8 for float caches, 4 for integer caches).
class ROVANE_API TSlotCache : public TAbstractRovaneCache {
public:
    ~TSlotCache() override;
    void CacheMemFree() override;
    void CacheMemAllocate(int32_t itemCount, int32_t elements) override;
    int64_t GetCacheInBytes() const override { return int64_t(fCacheElements) * fUnit; }
    // The slot's first element; fills the cache when it is still empty.
    void* SlotPointer(int32_t memIndex) const;

protected:
    explicit TSlotCache(int32_t unit, int64_t alignDivisor, int32_t baseOffsetBytes)
        : fUnit(unit), fAlignDivisor(alignDivisor), fBaseOffsetBytes(baseOffsetBytes) {}
    int32_t fUnit;
    int64_t fAlignDivisor;
    int32_t fBaseOffsetBytes;
    void* fBlock = nullptr;
    TPointerArray fSlots;

public:
    // Offsets of each slot, all zero: kept for the views of the interface.
    TIntegerArray DoubleCacheOffset, CplxDoubleCacheOffset, SingleCacheOffset, CplxSingleCacheOffset;
};

class ROVANE_API TVecCache : public TSlotCache {
public:
    TVecCache() : TSlotCache(8, 4, 32) {}
    ~TVecCache() override;
    TRovaneBase* NewItem() override;
};

class ROVANE_API TMtxCache : public TSlotCache {
public:
    TMtxCache() : TSlotCache(8, 4, 32) {}
    ~TMtxCache() override;
    TRovaneBase* NewItem() override;
};

class ROVANE_API TVecIntCache : public TSlotCache {
public:
    TVecIntCache() : TSlotCache(4, 1, 32) {}
    ~TVecIntCache() override;
    TRovaneBase* NewItem() override;
};

class ROVANE_API TMtxIntCache : public TSlotCache {
public:
    TMtxIntCache() : TSlotCache(4, 1, 32) {}
    ~TMtxIntCache() override;
    TRovaneBase* NewItem() override;
};

class ROVANE_API TRovanePoolItem {
public:
    explicit TRovanePoolItem(int32_t poolIndex);
    ~TRovanePoolItem();
    // Read without a lock by GetPoolIndex while MarkThread writes it.
    std::atomic<uint64_t> fThreadID{0};
    int32_t fPoolIndex = 0;
    TVecCache Vec;
    TVecIntCache VecInt;
    TMtxCache Mtx;
    TMtxIntCache MtxInt;

    uint64_t ThreadID() const { return fThreadID; }
    void SetThreadID(uint64_t id);
    int32_t PoolIndex() const { return fPoolIndex; }
    void SetPoolIndex(int32_t index);
    bool CacheUsed() const { return Vec.CacheUsed() || VecInt.CacheUsed() || Mtx.CacheUsed() || MtxInt.CacheUsed(); }
};

class ROVANE_API TRovaneController {
public:
    TRovaneController();
    ~TRovaneController();
    TRovaneController(const TRovaneController&) = delete;
    TRovaneController& operator=(const TRovaneController&) = delete;

    int32_t fThreadDimension = 0;
    std::atomic<bool> FDenormalsAreZero{false};
    TThreadingMode FThreadingMode = ttThroughput;
    int32_t FThreadWaitBeforeSleep = 0;
    uint64_t MainThreadID = 0;
    bool fSuperConductive = true;
    TSpinLock csLock;
    TArray<TRovanePoolItem*> Pool;

    // ---- properties ----------------------------------------------------
    int32_t ThreadDimension() const { return fThreadDimension; }
    void SetThreadDimension(int32_t value);
    bool DenormalsAreZero() const { return FDenormalsAreZero; }
    void SetDenormalsAreZero(bool value);
    TThreadingMode ThreadingMode() const { return FThreadingMode; }
    void SetThreadingMode(TThreadingMode value);
    int32_t ThreadWaitBeforeSleep() const { return FThreadWaitBeforeSleep; }
    void SetThreadWaitBeforeSleep(int32_t value);
    // The descriptor cache of the FFT layer: its size and its fast-cache switch.
    int32_t FFTDescriptorCacheSize() const;
    void SetFFTDescriptorCacheSize(int32_t value);
    bool FastFFTCache() const;
    void SetFastFFTCache(bool value);
    bool SuperConductive() const { return fSuperConductive; }
    void SetSuperConductive(bool value);
    int32_t CpuType() const;
    int32_t CpuCores() const;
    int32_t CpuFrequencyInMhz() const;
    int64_t CpuCacheSizeInBytes() const;
    int32_t ThreadCount() const;
    void SetThreadCount(int32_t value);
    int32_t LapackThreadCount() const;
    void SetLapackThreadCount(int32_t value);
    int32_t IppThreadCount() const;
    void SetIppThreadCount(int32_t value);
    int32_t FftThreadCount() const;
    void SetFftThreadCount(int32_t value);
    int32_t VmlThreadCount() const { return 1; }
    void SetVmlThreadCount(int32_t) {}

    // ---- cache sizes and defaults ---------------------------------------
    void SetVecCacheSize(int32_t itemCount, int32_t elements);
    void SetMtxCacheSize(int32_t itemCount, int32_t elements);
    void SetVecIntCacheSize(int32_t itemCount, int32_t elements);
    void SetMtxIntCacheSize(int32_t itemCount, int32_t elements);
    void SetVecConditionCheck(bool value);
    void SetMtxConditionCheck(bool value);
    void FreeMKLMemory() {}

    // ---- threads and pools ----------------------------------------------
    bool MarkThread();
    void UnMarkThread();
    void UnMarkThreads();
    int32_t UnusedThreadDimension();
    int32_t GetPoolIndex() const;
    void MarkMainThread();

    // ---- taking and giving back ------------------------------------------
    template <class T>
    void CreateItx(T*& obj);
    template <class T>
    void FreeItx(T*& obj);

    // Puts a new object into the cache entry of `item`, an object of the
    // cache that is being destroyed directly, and gives the entry back, so
    // that the cache stays whole when the destruction is refused.
    void ReplaceCachedItem(TRovaneBase* item);

private:
    void FreeItxBase(TRovaneBase* obj);
    template <class C>
    C& CacheOf(TRovanePoolItem& pool);
    template <class T>
    TRovaneBase* TakeFrom();
    template <class C>
    void SetCacheSizes(int32_t itemCount, int32_t elements);
    TAbstractRovaneCache& CacheFor(TRovanePoolItem& pool, TRovaneType type);
};

// The single controller, created by the container module's start.
ROVANE_API extern TRovaneController* Controller;

ROVANE_API void CreateIt(TVec*& a);
ROVANE_API void CreateIt(TVec*& a, TVec*& b);
ROVANE_API void CreateIt(TVec*& a, TVec*& b, TVec*& c);
ROVANE_API void CreateIt(TVec*& a, TVec*& b, TVec*& c, TVec*& d);
ROVANE_API void CreateIt(TMtx*& a);
ROVANE_API void CreateIt(TMtx*& a, TMtx*& b);
ROVANE_API void CreateIt(TMtx*& a, TMtx*& b, TMtx*& c);
ROVANE_API void CreateIt(TMtx*& a, TMtx*& b, TMtx*& c, TMtx*& d);
ROVANE_API void CreateIt(TVecInt*& a);
ROVANE_API void CreateIt(TVecInt*& a, TVecInt*& b);
ROVANE_API void CreateIt(TVecInt*& a, TVecInt*& b, TVecInt*& c);
ROVANE_API void CreateIt(TVecInt*& a, TVecInt*& b, TVecInt*& c, TVecInt*& d);
ROVANE_API void CreateIt(TMtxInt*& a);
ROVANE_API void CreateIt(TMtxInt*& a, TMtxInt*& b);
ROVANE_API void CreateIt(TMtxInt*& a, TMtxInt*& b, TMtxInt*& c);
ROVANE_API void CreateIt(TMtxInt*& a, TMtxInt*& b, TMtxInt*& c, TMtxInt*& d);
ROVANE_API void FreeIt(TVec*& a);
ROVANE_API void FreeIt(TVec*& a, TVec*& b);
ROVANE_API void FreeIt(TVec*& a, TVec*& b, TVec*& c);
ROVANE_API void FreeIt(TVec*& a, TVec*& b, TVec*& c, TVec*& d);
ROVANE_API void FreeIt(TMtx*& a);
ROVANE_API void FreeIt(TMtx*& a, TMtx*& b);
ROVANE_API void FreeIt(TMtx*& a, TMtx*& b, TMtx*& c);
ROVANE_API void FreeIt(TMtx*& a, TMtx*& b, TMtx*& c, TMtx*& d);
ROVANE_API void FreeIt(TVecInt*& a);
ROVANE_API void FreeIt(TVecInt*& a, TVecInt*& b);
ROVANE_API void FreeIt(TVecInt*& a, TVecInt*& b, TVecInt*& c);
ROVANE_API void FreeIt(TVecInt*& a, TVecInt*& b, TVecInt*& c, TVecInt*& d);
ROVANE_API void FreeIt(TMtxInt*& a);
ROVANE_API void FreeIt(TMtxInt*& a, TMtxInt*& b);
ROVANE_API void FreeIt(TMtxInt*& a, TMtxInt*& b, TMtxInt*& c);
ROVANE_API void FreeIt(TMtxInt*& a, TMtxInt*& b, TMtxInt*& c, TMtxInt*& d);

// Container module start and stop: controller, default cache sizes.
ROVANE_API void InitContainers();
ROVANE_API void FinalizeContainers();

}  // namespace rovane
