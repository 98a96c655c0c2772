// Object cache, pools and controller.
#include "rovane/storage/ObjectCache.h"

#include <cstdlib>
#include <thread>

#include "rovane/containers/Rovane.h"
#include "rovane/containers/RovaneInt.h"
#include "rovane/primitives/DFTIDescriptors.h"
#include "rovane/primitives/ippspl_core.h"
#include "rovane/storage/Platform.h"

namespace rovane {

constinit TRovaneController* Controller = nullptr;

// ---------------------------------------------------------------------------
// TAbstractRovaneCache.
// ---------------------------------------------------------------------------
TAbstractRovaneCache::~TAbstractRovaneCache() = default;

TRovaneBase* TAbstractRovaneCache::CreateItx() {
    if (!fFilled) Fill();
    TRovaneBase* result;
    if (FCacheSize > Count) {
        if (Count >= LowCount) {
            while (LowCount < Count && Cache[LowCount].Used) ++LowCount;
        }
        TPoolItemRecord& entry = Cache[LowCount];
        entry.Used = true;
        if (LowCount == Count) ++Count;
        ++fCacheUsedCount;
        result = entry.Item;
    } else if (FCacheSize <= fCacheUsedCount) {
        result = NewItem();
        result->fConditionCheck = fConditionCheck;
        result->fPoolIndex = PoolIndex;
        FCacheWasFull = true;
    } else {
        Recollect();
        TPoolItemRecord& entry = Cache[Count];
        entry.Item->ThreadID = ThreadId;
        entry.Used = true;
        ++Count;
        ++fCacheUsedCount;
        result = entry.Item;
    }
    if (fCacheUsedCount > FMaxCount) FMaxCount = fCacheUsedCount;
    return result;
}

TRovaneBase* TAbstractRovaneCache::LockedCreateItx() {
    csLock.Enter();
    TRovaneBase* item;
    try {
        item = CreateItx();
    } catch (...) {
        csLock.Leave();
        throw;
    }
    csLock.Leave();
    return item;
}

void TAbstractRovaneCache::FreeIty(TRovaneBase* item) {
    const int32_t index = item->fCacheIndex;
    Cache[index].Used = false;
    if (index == Count - 1) --Count;
    if (index < LowCount) LowCount = index;
    --fCacheUsedCount;
}

void TAbstractRovaneCache::LockedFreeIty(TRovaneBase* item) {
    csLock.Enter();
    FreeIty(item);
    csLock.Leave();
}

void TAbstractRovaneCache::Recollect() {
    Count = 0;
    fCacheUsedCount = 0;
    for (int32_t i = 0; i < FCacheSize; ++i) Cache1[i] = Cache[i];
    int32_t back = FCacheSize - 1;
    for (int32_t i = 0; i < FCacheSize; ++i) {
        const TPoolItemRecord entry = Cache1[i];
        const int32_t to = entry.Used ? Count : back;
        Cache[to] = entry;
        entry.Item->fCacheIndex = to;
        if (entry.Used) {
            ++Count;
            ++fCacheUsedCount;
        } else {
            --back;
        }
    }
    LowCount = Count;
}

void TAbstractRovaneCache::SetCacheSize(int32_t itemCount, int32_t elements) {
    for (int32_t i = 0; i < FCacheSize; ++i) {
        if (Cache[i].Used) ERaiseFmt("Cache[%d] = Used", i);
        // Null where an earlier call failed half way.
        if (Cache[i].Item) Cache[i].Item->FreeCached();
        Cache[i].Item = nullptr;
    }
    FCacheSize = 0;
    fFilled = false;
    CacheMemFree();
    FCacheSize = itemCount < 0 ? 0 : itemCount;
    fCacheElements = elements < 0 ? 0 : elements;
    // Entries start empty; the block and the objects come with the first
    // take (Fill), so that a pool no thread uses costs no memory and the
    // library's start touches none.
    Cache = TCacheItem(FCacheSize);
    Cache1 = TCacheItem(FCacheSize);
    Count = 0;
    LowCount = 0;
    fCacheUsedCount = 0;
    FMaxCount = 0;
}

void TAbstractRovaneCache::Fill() {
    if (fFilled) return;
    CacheMemAllocate(FCacheSize, fCacheElements);
    // Set before the objects are made: each one asks for its slot.
    fFilled = true;
    try {
        for (int32_t i = 0; i < FCacheSize; ++i) {
            Cache[i].Used = false;
            TRovaneBase* item = NewItem();
            item->fConditionCheck = fConditionCheck;
            item->ThreadID = ThreadId;
            item->CreateCached(PoolIndex, GetCacheInBytes(), i, i);
            Cache[i].Item = item;
        }
    } catch (...) {
        // Out of memory half way: back to the empty state, to be tried again.
        FreeUnusedItems();
        CacheMemFree();
        fFilled = false;
        throw;
    }
}

void* TSlotCache::SlotPointer(int32_t memIndex) const {
    // Objects of the cache exist only once it is filled; a caller that asks
    // for a slot before any take gets the cache filled first.
    if (!fFilled) const_cast<TSlotCache*>(this)->Fill();
    return fSlots[memIndex];
}

void TAbstractRovaneCache::SetConditionCheck(bool value) {
    fConditionCheck = value;
    for (int32_t i = 0; i < FCacheSize; ++i)
        if (Cache[i].Item) Cache[i].Item->fConditionCheck = value;
}

void TAbstractRovaneCache::FreeUnusedItems() {
    for (int32_t i = 0; i < FCacheSize; ++i) {
        if (Cache[i].Used || !Cache[i].Item) continue;
        Cache[i].Item->FreeCached();
        Cache[i].Item = nullptr;
    }
}

std::string TAbstractRovaneCache::DebugReport() const {
    std::string report;
    for (int32_t i = 0; i < FCacheSize; ++i)
        if (Cache[i].Used) report += FormatText("Cache item at index %d has Used = True\n", {i});
    return report;
}

// ---------------------------------------------------------------------------
// Slot memory.
// ---------------------------------------------------------------------------
TSlotCache::~TSlotCache() { TSlotCache::CacheMemFree(); }

void TSlotCache::CacheMemFree() {
    std::free(fBlock);
    fBlock = nullptr;
    fSlots = TPointerArray();
}

void TSlotCache::CacheMemAllocate(int32_t itemCount, int32_t elements) {
    // In counting units: A per alignment step, a stride S that is a multiple
    // of the alignment, and room for the counted header ahead of each slot
    // (32 bytes: 4 units of a float cache, 8 of an integer cache).
    const int64_t a = RovaneMemoryAlignment / fAlignDivisor;
    const int64_t room = fBaseOffsetBytes / fUnit;  // header room ahead of a slot, in units
    const int64_t stride = ((elements + room + a) / a) * a;
    DoubleCacheOffset = TIntegerArray(itemCount);
    CplxDoubleCacheOffset = TIntegerArray(itemCount);
    SingleCacheOffset = TIntegerArray(itemCount);
    CplxSingleCacheOffset = TIntegerArray(itemCount);
    fSlots = TPointerArray(itemCount);
    if (elements == 0 || itemCount == 0) return;
    const size_t units = static_cast<size_t>((elements + room + a) * itemCount + 5 + a);
    fBlock = std::malloc(units * static_cast<size_t>(fUnit));
    if (!fBlock) throw std::bad_alloc();
    char* base = static_cast<char*>(fBlock);
    const auto start = reinterpret_cast<uintptr_t>(base + fBaseOffsetBytes);
    const auto align = static_cast<uintptr_t>(RovaneMemoryAlignment);
    const int64_t o = static_cast<int64_t>(((start + align - 1) / align * align - start) / static_cast<uintptr_t>(fUnit));
    for (int32_t i = 0; i < itemCount; ++i) {
        char* slot = base + (i * stride + o + room) * fUnit;
        // The slot belongs to the cache's block: a null Block means that
        // no array handle ever frees it.
        new (slot - sizeof(TArrayHeader)) TArrayHeader{nullptr, nullptr, {1}, static_cast<int32_t>(elements + room)};
        fSlots[i] = slot;
    }
}

// Objects still out at the end of a cache are left to the program that
// holds them; a destructor must not raise.
TVecCache::~TVecCache() { FreeUnusedItems(); }
TMtxCache::~TMtxCache() { FreeUnusedItems(); }
TVecIntCache::~TVecIntCache() { FreeUnusedItems(); }
TMtxIntCache::~TMtxIntCache() { FreeUnusedItems(); }
TRovaneBase* TVecCache::NewItem() { return new TVec(); }
TRovaneBase* TMtxCache::NewItem() { return new TMtx(); }
TRovaneBase* TVecIntCache::NewItem() { return new TVecInt(); }
TRovaneBase* TMtxIntCache::NewItem() { return new TMtxInt(); }

// ---------------------------------------------------------------------------
// Pools.
// ---------------------------------------------------------------------------
TRovanePoolItem::TRovanePoolItem(int32_t poolIndex) { SetPoolIndex(poolIndex); }

TRovanePoolItem::~TRovanePoolItem() = default;

namespace {
// Bumped whenever a pool changes owner or the pools are rebuilt: a thread's
// remembered pool index is valid while the generation it read is current.
std::atomic<uint32_t> gPoolGeneration{1};
// Initial-exec: the library is loaded with the program, and the model saves
// a call per access.
__attribute__((tls_model("initial-exec"))) thread_local uint32_t tPoolGeneration = 0;
__attribute__((tls_model("initial-exec"))) thread_local int32_t tPoolIndex = 0;
}  // namespace

void TRovanePoolItem::SetThreadID(uint64_t id) {
    gPoolGeneration.fetch_add(1, std::memory_order_acq_rel);
    fThreadID = id;
    Vec.ThreadId = VecInt.ThreadId = Mtx.ThreadId = MtxInt.ThreadId = id;
}

void TRovanePoolItem::SetPoolIndex(int32_t index) {
    fPoolIndex = index;
    Vec.PoolIndex = VecInt.PoolIndex = Mtx.PoolIndex = MtxInt.PoolIndex = index;
}

// ---------------------------------------------------------------------------
// Controller.
// ---------------------------------------------------------------------------
TRovaneController::TRovaneController() {
    FThreadingMode = ttThroughput;
    fSuperConductive = true;
    MarkMainThread();
    SetThreadDimension(CpuCores() + 2);
}

TRovaneController::~TRovaneController() {
    // Objects still out at shutdown belong to a program that ends: leave
    // them rather than fail in a destructor.
    try {
        SetThreadDimension(0);
    } catch (const ERovaneException&) {
    }
    for (int32_t i = 0; i < Pool.Length(); ++i) delete Pool[i];
    Pool = TArray<TRovanePoolItem*>();
}

void TRovaneController::MarkMainThread() {
    MainThreadID = IntGetCurrentThreadId();
    gPoolGeneration.fetch_add(1, std::memory_order_acq_rel);
}

void TRovaneController::SetThreadDimension(int32_t value) {
    if (value == fThreadDimension && Pool.Length() > 0) return;
    int32_t sizes[4][2] = {};
    if (Pool.Length() > 0) {
        TRovanePoolItem& p0 = *Pool[0];
        const TAbstractRovaneCache* caches[4] = {&p0.Vec, &p0.Mtx, &p0.VecInt, &p0.MtxInt};
        for (int k = 0; k < 4; ++k) sizes[k][0] = caches[k]->FCacheSize, sizes[k][1] = caches[k]->fCacheElements;
    }
    SetVecCacheSize(0, 0);
    SetMtxCacheSize(0, 0);
    SetVecIntCacheSize(0, 0);
    SetMtxIntCacheSize(0, 0);
    fThreadDimension = std::max(value, 1);
    const int32_t old = Pool.Length();
    for (int32_t i = 1; i < old; ++i) delete Pool[i];
    TRovanePoolItem* pool0 = old > 0 ? Pool[0] : nullptr;
    Pool = TArray<TRovanePoolItem*>(fThreadDimension);
    Pool[0] = pool0 ? pool0 : new TRovanePoolItem(0);
    for (int32_t i = 1; i < fThreadDimension; ++i) {
        Pool[i] = new TRovanePoolItem(i);
        if (!fSuperConductive) Pool[i]->SetThreadID(MainThreadID);
    }
    Pool[0]->SetThreadID(MainThreadID);
    SetVecCacheSize(sizes[0][0], sizes[0][1]);
    SetMtxCacheSize(sizes[1][0], sizes[1][1]);
    SetVecIntCacheSize(sizes[2][0], sizes[2][1]);
    SetMtxIntCacheSize(sizes[3][0], sizes[3][1]);
}

template <class C>
C& TRovaneController::CacheOf(TRovanePoolItem& pool) {
    if constexpr (std::is_same_v<C, TVecCache>) return pool.Vec;
    else if constexpr (std::is_same_v<C, TMtxCache>) return pool.Mtx;
    else if constexpr (std::is_same_v<C, TVecIntCache>) return pool.VecInt;
    else return pool.MtxInt;
}

template <class C>
void TRovaneController::SetCacheSizes(int32_t itemCount, int32_t elements) {
    for (int32_t i = 0; i < Pool.Length(); ++i) CacheOf<C>(*Pool[i]).SetCacheSize(itemCount, elements);
}

void TRovaneController::SetVecCacheSize(int32_t n, int32_t e) { SetCacheSizes<TVecCache>(n, e); }
void TRovaneController::SetMtxCacheSize(int32_t n, int32_t e) { SetCacheSizes<TMtxCache>(n, e); }
void TRovaneController::SetVecIntCacheSize(int32_t n, int32_t e) { SetCacheSizes<TVecIntCache>(n, e); }
void TRovaneController::SetMtxIntCacheSize(int32_t n, int32_t e) { SetCacheSizes<TMtxIntCache>(n, e); }

void TRovaneController::SetVecConditionCheck(bool value) {
    VecConditionCheckDefault = value;
    for (int32_t i = 0; i < Pool.Length(); ++i) Pool[i]->Vec.SetConditionCheck(value);
}

void TRovaneController::SetMtxConditionCheck(bool value) {
    MtxConditionCheckDefault = value;
    for (int32_t i = 0; i < Pool.Length(); ++i) Pool[i]->Mtx.SetConditionCheck(value);
}

int32_t TRovaneController::FFTDescriptorCacheSize() const { return DFTIDescriptorCache().MaxCacheSize(); }
void TRovaneController::SetFFTDescriptorCacheSize(int32_t value) { DFTIDescriptorCache().SetMaxCacheSize(value); }
bool TRovaneController::FastFFTCache() const { return DFTIDescriptorCache().FastCache(); }
void TRovaneController::SetFastFFTCache(bool value) { DFTIDescriptorCache().SetFastCache(value); }

void TRovaneController::SetDenormalsAreZero(bool value) {
    if (value == FDenormalsAreZero) return;
    const IppStatus status = ippSetDenormAreZeros(value ? 1 : 0);
    if (status < 0) ERaise("TRovaneController.SetDenormalsAreZero: " + ippGetStatusStr(status));
    // Process-wide: the calling thread switched above, every loop worker and
    // library thread reads the flag at the start of its work.
    FDenormalsAreZero = value;
}

void TRovaneController::SetThreadingMode(TThreadingMode value) {
    if (value == FThreadingMode) return;
    FThreadingMode = value;
    static const char* const names[] = {"serial", "turnaround", "throughput"};
    setenv("KMP_LIBRARY", names[value], 1);
}

void TRovaneController::SetThreadWaitBeforeSleep(int32_t value) {
    if (value == FThreadWaitBeforeSleep) return;
    FThreadWaitBeforeSleep = std::clamp(value, 0, 1000);
}

void TRovaneController::SetSuperConductive(bool value) {
    if (value == fSuperConductive) return;
    fSuperConductive = value;
    for (int32_t i = 1; i < Pool.Length(); ++i)
        if (Pool[i]->Vec.CacheUsed() || Pool[i]->Mtx.CacheUsed())
            ERaiseFmt(
                "Controller.SuperConductive: Memory pool with Index %d is still being used. Free back all objects "
                "before changing this flag!",
                i);
    for (int32_t i = 1; i < Pool.Length(); ++i) {
        Pool[i]->SetThreadID(value ? 0 : MainThreadID);
        Pool[i]->Vec.FMaxCount = 0;
        Pool[i]->Mtx.FMaxCount = 0;
    }
}

int32_t TRovaneController::CpuType() const { return static_cast<int32_t>(CpuFeatureWord()); }
int32_t TRovaneController::CpuCores() const { return NumCoresOnDie(); }
int32_t TRovaneController::CpuFrequencyInMhz() const { return CpuFreqMhz(); }
int64_t TRovaneController::CpuCacheSizeInBytes() const { return MaxCacheSizeBytes(); }
int32_t TRovaneController::ThreadCount() const { return BlasThreadCount(); }
void TRovaneController::SetThreadCount(int32_t value) {
    SetBlasThreadCount(value);
    SetPrimitiveThreadCount(value);
}
int32_t TRovaneController::LapackThreadCount() const { return BlasThreadCount(); }
void TRovaneController::SetLapackThreadCount(int32_t value) { SetBlasThreadCount(value); }
int32_t TRovaneController::IppThreadCount() const { return PrimitiveThreadCount(); }
void TRovaneController::SetIppThreadCount(int32_t value) { SetPrimitiveThreadCount(value); }
int32_t TRovaneController::FftThreadCount() const { return PrimitiveThreadCount(); }
void TRovaneController::SetFftThreadCount(int32_t value) { SetPrimitiveThreadCount(value); }

bool TRovaneController::MarkThread() {
    if (!fSuperConductive) return false;
    const uint64_t me = IntGetCurrentThreadId();
    csLock.Enter();
    bool result = false;
    for (int32_t i = 0; i < Pool.Length() && !result; ++i) result = Pool[i]->ThreadID() == me;
    for (int32_t i = 0; i < Pool.Length() && !result; ++i)
        if (Pool[i]->ThreadID() == 0) {
            Pool[i]->SetThreadID(me);
            result = true;
        }
    csLock.Leave();
    return result;
}

void TRovaneController::UnMarkThread() {
    if (!fSuperConductive) return;
    const uint64_t me = IntGetCurrentThreadId();
    csLock.Enter();
    for (int32_t i = 1; i < Pool.Length(); ++i) {
        if (Pool[i]->ThreadID() != me) continue;
        Pool[i]->SetThreadID(0);
        if (Pool[i]->Vec.CacheUsed() || Pool[i]->Mtx.CacheUsed()) {
            csLock.Leave();
            ERaise(
                "TRovaneController.UnMarkThread: Attempt to release super conductive thread without releasing "
                "object cache items allocated by that thread!");
        }
        break;
    }
    csLock.Leave();
}

void TRovaneController::UnMarkThreads() {
    csLock.Enter();
    for (int32_t i = 0; i < Pool.Length(); ++i) Pool[i]->SetThreadID(0);
    csLock.Leave();
}

int32_t TRovaneController::UnusedThreadDimension() {
    csLock.Enter();
    int32_t n = 0;
    for (int32_t i = 1; i < Pool.Length(); ++i) n += Pool[i]->ThreadID() == 0;
    csLock.Leave();
    return n;
}

int32_t TRovaneController::GetPoolIndex() const {
    // The generation is read before the pools: a change after this point
    // bumps it again, so a stale answer is never remembered as current.
    const uint32_t generation = gPoolGeneration.load(std::memory_order_acquire);
    if (generation == tPoolGeneration) return tPoolIndex;
    const uint64_t me = IntGetCurrentThreadId();
    int32_t index = 0;
    if (me != MainThreadID)
        for (int32_t i = 1; i < Pool.Length(); ++i)
            if (Pool[i]->ThreadID() == me) {
                index = i;
                break;
            }
    tPoolIndex = index;
    tPoolGeneration = generation;
    return index;
}

template <class T>
TRovaneBase* TRovaneController::TakeFrom() {
    using C = std::conditional_t<std::is_same_v<T, TVec>, TVecCache,
                                 std::conditional_t<std::is_same_v<T, TMtx>, TMtxCache,
                                                    std::conditional_t<std::is_same_v<T, TVecInt>, TVecIntCache,
                                                                       TMtxIntCache>>>;
    if (fSuperConductive) {
        const int32_t index = GetPoolIndex();
        C& cache = CacheOf<C>(*Pool[index]);
        // Only pool 0 can be shared between threads.
        return index == 0 ? cache.LockedCreateItx() : cache.CreateItx();
    }
    // Pools as stripes: the first one whose lock can be taken serves.
    for (int32_t i = 0; i < Pool.Length(); ++i) {
        C& cache = CacheOf<C>(*Pool[i]);
        if (cache.csLock.IsFree() && cache.csLock.TryEnter()) {
            TRovaneBase* item;
            try {
                item = cache.CreateItx();
            } catch (...) {
                cache.csLock.Leave();
                throw;
            }
            cache.csLock.Leave();
            return item;
        }
    }
    return CacheOf<C>(*Pool[0]).LockedCreateItx();
}

template <class T>
void TRovaneController::CreateItx(T*& obj) {
    obj = static_cast<T*>(TakeFrom<T>());
}

TAbstractRovaneCache& TRovaneController::CacheFor(TRovanePoolItem& pool, TRovaneType type) {
    switch (type) {
        case rvTVec: return pool.Vec;
        case rvTMtx: return pool.Mtx;
        case rvTVecInt: return pool.VecInt;
        default: return pool.MtxInt;
    }
}

void TRovaneController::FreeItxBase(TRovaneBase* obj) {
    if (obj->fCacheIndex < 0) {
        delete obj;
        return;
    }
    TRovanePoolItem& pool = *Pool[obj->fPoolIndex];
    TAbstractRovaneCache& cache = CacheFor(pool, obj->fRovaneType);
    if (fSuperConductive && obj->fPoolIndex >= 1) {
        if (pool.ThreadID() != IntGetCurrentThreadId())
            ERaise("Rovane.FreeIt: Attempt to free object from thread other than used to create it!");
        obj->Reset();
        cache.FreeIty(obj);
    } else {
        obj->Reset();
        cache.LockedFreeIty(obj);
    }
}

void TRovaneController::ReplaceCachedItem(TRovaneBase* item) {
    if (item->fPoolIndex < 0 || item->fPoolIndex >= Pool.Length()) return;
    TAbstractRovaneCache& cache = CacheFor(*Pool[item->fPoolIndex], item->fRovaneType);
    const int32_t index = item->fCacheIndex;
    if (index < 0 || index >= cache.FCacheSize || cache.Cache[index].Item != item) return;
    TRovaneBase* fresh = cache.NewItem();
    fresh->fConditionCheck = cache.fConditionCheck;
    fresh->ThreadID = cache.ThreadId;
    fresh->CreateCached(cache.PoolIndex, cache.GetCacheInBytes(), item->fMemIndex, index);
    const bool shared = item->fPoolIndex == 0 || !fSuperConductive;
    if (shared) cache.csLock.Enter();
    cache.Cache[index].Item = fresh;
    const bool wasOut = cache.Cache[index].Used;
    if (shared) cache.csLock.Leave();
    if (wasOut) {
        if (shared)
            cache.LockedFreeIty(fresh);
        else
            cache.FreeIty(fresh);
    }
}

template <class T>
void TRovaneController::FreeItx(T*& obj) {
    if (!obj) return;
    FreeItxBase(obj);
    obj = nullptr;
}

// ---------------------------------------------------------------------------
// CreateIt and FreeIt in all arities.
// ---------------------------------------------------------------------------
namespace {
template <class... T>
void CreateAll(T*&... objs) {
    (Controller->CreateItx(objs), ...);
}
template <class... T>
void FreeAll(T*&... objs) {
    (Controller->FreeItx(objs), ...);
}
}  // namespace

#define ROVANE_CACHE_ENTRIES(T)                                                                   \
    void CreateIt(T*& a) { CreateAll(a); }                                                         \
    void CreateIt(T*& a, T*& b) { CreateAll(a, b); }                                               \
    void CreateIt(T*& a, T*& b, T*& c) { CreateAll(a, b, c); }                                     \
    void CreateIt(T*& a, T*& b, T*& c, T*& d) { CreateAll(a, b, c, d); }                           \
    void FreeIt(T*& a) { FreeAll(a); }                                                             \
    void FreeIt(T*& a, T*& b) { FreeAll(a, b); }                                                   \
    void FreeIt(T*& a, T*& b, T*& c) { FreeAll(a, b, c); }                                         \
    void FreeIt(T*& a, T*& b, T*& c, T*& d) { FreeAll(a, b, c, d); }
ROVANE_CACHE_ENTRIES(TVec)
ROVANE_CACHE_ENTRIES(TMtx)
ROVANE_CACHE_ENTRIES(TVecInt)
ROVANE_CACHE_ENTRIES(TMtxInt)
#undef ROVANE_CACHE_ENTRIES

// ---------------------------------------------------------------------------
// Module start and stop.
// ---------------------------------------------------------------------------
namespace {
int32_t containersInitCount = 0;
}

void InitContainers() {
    if (containersInitCount++ > 0) return;
    Controller = new TRovaneController();
    Controller->SetVecCacheSize(60, 4196);
    Controller->SetMtxCacheSize(60, 4196);
    Controller->SetVecIntCacheSize(60, 4196);
    Controller->SetMtxIntCacheSize(20, 4196);
}

void FinalizeContainers() {
    if (containersInitCount == 0 || --containersInitCount > 0) return;
    delete Controller;
    Controller = nullptr;
}

}  // namespace rovane
