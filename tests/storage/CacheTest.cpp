// Object cache and controller on one thread: taking and giving back, slots
// and private memory, overflow, compaction, sizes, and the refusals.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

namespace {
TVecCache& VecCache0() { return Controller->Pool[0]->Vec; }
bool Aligned(const void* p) { return reinterpret_cast<uintptr_t>(p) % 128 == 0; }
constexpr int64_t kSlotBytes = 4196 * 8;

// Starts each test from fresh default caches of pool 0.
class Cache : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(Controller, nullptr);
        Controller->SetVecCacheSize(60, 4196);
        Controller->SetVecIntCacheSize(60, 4196);
    }
    void TearDown() override {
        bool clean = true;
        for (int32_t i = 0; i < Controller->Pool.Length(); ++i) {
            EXPECT_EQ(Controller->Pool[i]->Vec.CacheUsedCount(), 0) << "pool " << i;
            clean = clean && Controller->Pool[i]->Vec.CacheUsedCount() == 0;
        }
        if (clean) {
            Controller->SetVecCacheSize(60, 4196);
            Controller->SetVecIntCacheSize(60, 4196);
        }
    }
};
}  // namespace

TEST_F(Cache, StartupStateOfTheController) {
    EXPECT_EQ(Controller->ThreadDimension(), Controller->CpuCores() + 2);
    EXPECT_EQ(Controller->Pool.Length(), Controller->ThreadDimension());
    EXPECT_EQ(Controller->MainThreadID, IntGetCurrentThreadId());
    EXPECT_EQ(Controller->Pool[0]->ThreadID(), Controller->MainThreadID);
    EXPECT_TRUE(Controller->SuperConductive());
    EXPECT_EQ(Controller->GetPoolIndex(), 0);
    for (int32_t i = 0; i < Controller->Pool.Length(); ++i) {
        const TRovanePoolItem& p = *Controller->Pool[i];
        EXPECT_EQ(p.PoolIndex(), i);
        EXPECT_EQ(p.Mtx.CacheSize(), 60);
        EXPECT_EQ(p.MtxInt.CacheSize(), 20);
        EXPECT_EQ(p.Mtx.CacheElements(), 4196);
        if (i > 0) EXPECT_EQ(p.ThreadID(), 0u);
    }
    // The main thread is marked already, with pool 0; unmarking it does nothing.
    EXPECT_TRUE(Controller->MarkThread());
    Controller->UnMarkThread();
    EXPECT_EQ(Controller->Pool[0]->ThreadID(), Controller->MainThreadID);
    EXPECT_EQ(Controller->UnusedThreadDimension(), Controller->ThreadDimension() - 1);
}

TEST_F(Cache, CreateAndFreeInEveryArityClearTheCallersPointers) {
    TVec *a = nullptr, *b = nullptr, *c = nullptr, *d = nullptr;
    CreateIt(a, b, c, d);
    ASSERT_TRUE(a && b && c && d);
    EXPECT_TRUE(a != b && b != c && c != d);
    EXPECT_EQ(VecCache0().CacheUsedCount(), 4);
    for (TVec* v : {a, b, c, d}) {
        EXPECT_GE(v->CacheIndex(), 0);
        EXPECT_EQ(v->PoolIndex(), 0);
        EXPECT_EQ(v->Length(), 0);
        EXPECT_TRUE(v->IsDouble());
        EXPECT_EQ(v->fActualSizeInBytes, kSlotBytes);
        EXPECT_TRUE(Aligned(v->ValuesPointer));
        EXPECT_EQ(v->ValuesPointer, VecCache0().SlotPointer(v->fMemIndex));
    }
    FreeIt(a, b, c, d);
    EXPECT_TRUE(!a && !b && !c && !d);
    CreateIt(a, b, c);
    FreeIt(a, b, c);
    CreateIt(d, b);
    FreeIt(d, b);
    CreateIt(a);
    FreeIt(a);
    EXPECT_TRUE(!a && !b && !c && !d);
    FreeIt(a);  // null is ignored
    EXPECT_EQ(VecCache0().CacheUsedCount(), 0);

    TMtx *m1 = nullptr, *m2 = nullptr;
    CreateIt(m1, m2);
    m1->Size(10, 10);
    EXPECT_EQ(m1->ValuesPointer, Controller->Pool[0]->Mtx.SlotPointer(m1->fMemIndex));
    FreeIt(m1, m2);
    TVecInt *i1 = nullptr, *i2 = nullptr, *i3 = nullptr, *i4 = nullptr;
    CreateIt(i1, i2, i3, i4);
    EXPECT_EQ(Controller->Pool[0]->VecInt.CacheUsedCount(), 4);
    FreeIt(i1, i2, i3, i4);
    EXPECT_TRUE(!m1 && !m2 && !i1 && !i4);
    TMtxInt* mi = nullptr;
    CreateIt(mi);
    EXPECT_EQ(mi->CacheIndex(), 0);
    FreeIt(mi);
    EXPECT_EQ(Controller->Pool[0]->MtxInt.CacheUsedCount(), 0);
}

TEST_F(Cache, FreedEntriesAreReusedFromTheLowestIndex) {
    TVec *a, *b, *c, *d;
    CreateIt(a, b, c);
    EXPECT_EQ(a->CacheIndex(), 0);
    EXPECT_EQ(c->CacheIndex(), 2);
    TVec* const wasB = b;
    FreeIt(b);
    CreateIt(d);
    EXPECT_EQ(d, wasB);
    EXPECT_EQ(d->CacheIndex(), 1);
    FreeIt(c, d, a);
    EXPECT_EQ(VecCache0().CacheUsedCount(), 0);
    EXPECT_EQ(VecCache0().MaxCount(), 3);
}

TEST_F(Cache, OverflowGivesFreeObjectsThatFreeItDestroys) {
    std::vector<TVec*> out(63, nullptr);
    for (TVec*& v : out) CreateIt(v);
    for (int i = 0; i < 60; ++i) EXPECT_EQ(out[i]->CacheIndex(), i);
    for (int i = 60; i < 63; ++i) {
        EXPECT_EQ(out[i]->CacheIndex(), -1);
        EXPECT_EQ(out[i]->PoolIndex(), 0);
        EXPECT_FALSE(out[i]->FCacheOwned);
        out[i]->Size(100);  // an ordinary heap object
        out[i]->Values[99] = 1;
    }
    EXPECT_TRUE(VecCache0().CacheWasFull());
    EXPECT_EQ(VecCache0().CacheUsedCount(), 60);
    EXPECT_EQ(VecCache0().MaxCount(), 60);
    EXPECT_EQ(out[62]->DebugReport(3), "Cache item at index 3 has a FRefCount = 0");
    EXPECT_EQ(out[5]->DebugReport(5), "");
    for (int i = 62; i >= 0; --i) FreeIt(out[i]);
    EXPECT_EQ(VecCache0().CacheUsedCount(), 0);
    EXPECT_TRUE(VecCache0().CacheWasFull());
    // A free object of the application is destroyed by FreeIt too.
    TVec* own = new TVec;
    own->Size(10);
    FreeIt(own);
    EXPECT_EQ(own, nullptr);
}

TEST_F(Cache, LargeDataLeaveTheSlotAndResetBringsThemBack) {
    TVec* v;
    CreateIt(v);
    void* const slot = v->ValuesPointer;
    v->Size(100);
    EXPECT_EQ(v->fActualSizeInBytes, kSlotBytes);
    EXPECT_EQ(v->ipoint[1], 100);
    v->Size(5000);
    EXPECT_NE(v->ValuesPointer, slot);
    EXPECT_NE(v->aPoint, nullptr);
    EXPECT_EQ(v->fActualSizeInBytes, 40000);
    EXPECT_TRUE(Aligned(v->ValuesPointer));
    v->Values[4999] = 1;
    v->Size(10);  // back below the slot size: back into the slot
    EXPECT_EQ(v->ValuesPointer, slot);
    EXPECT_EQ(v->aPoint, nullptr);
    v->Size(9000, false, false);  // single data above the slot: private again
    EXPECT_NE(v->ValuesPointer, slot);
    const int32_t mem = v->fMemIndex;
    FreeIt(v);
    CreateIt(v);
    EXPECT_EQ(v->fMemIndex, mem);
    EXPECT_EQ(v->ValuesPointer, slot);
    EXPECT_EQ(v->Length(), 0);
    EXPECT_TRUE(v->IsDouble());
    EXPECT_EQ(v->fActualSizeInBytes, kSlotBytes);
    FreeIt(v);

    // Resize across the slot keeps the contents both ways.
    CreateIt(v);
    Ramp(*v, 100);
    for (int i = 100; i < 200; ++i) v->Values[i] = 7;  // slot memory beyond the length
    v->Resize(200, true);
    EXPECT_EQ(v->ValuesPointer, slot);
    EXPECT_EQ(v->Values[150], 0.0);
    v->Resize(5000, true);
    EXPECT_NE(v->ValuesPointer, slot);
    EXPECT_EQ(v->Values[99], 99.0);
    EXPECT_EQ(v->Values[4999], 0.0);
    v->Resize(50);
    EXPECT_EQ(v->ValuesPointer, slot);
    EXPECT_EQ(v->Values[49], 49.0);
    FreeIt(v);

    TVecInt* iv;
    CreateIt(iv);
    void* const islot = iv->ValuesPointer;
    iv->Size(4196);
    EXPECT_EQ(iv->ValuesPointer, islot);
    iv->Size(5000);
    EXPECT_NE(iv->ValuesPointer, islot);
    FreeIt(iv);
    CreateIt(iv);
    EXPECT_EQ(iv->ValuesPointer, islot);
    FreeIt(iv);
}

TEST_F(Cache, FragmentationIsCompactedAndSlotsStayWithTheirObjects) {
    std::vector<TVec*> out(60, nullptr);
    for (TVec*& v : out) CreateIt(v);
    for (int i = 10; i < 20; ++i) {
        TVec* v = out[i];  // keep out[] for the checks below
        FreeIt(v);
    }
    EXPECT_EQ(VecCache0().CacheUsedCount(), 50);
    // Count is at the top with free entries below: the next request compacts.
    TVec* n;
    CreateIt(n);
    EXPECT_EQ(n, out[19]);  // the last free entry packed from the back
    EXPECT_EQ(n->CacheIndex(), 50);
    EXPECT_EQ(n->fMemIndex, 19);
    EXPECT_EQ(n->ValuesPointer, VecCache0().SlotPointer(19));
    EXPECT_EQ(out[9]->CacheIndex(), 9);
    EXPECT_EQ(out[20]->CacheIndex(), 10);
    EXPECT_EQ(out[59]->CacheIndex(), 49);
    EXPECT_EQ(out[59]->fMemIndex, 59);
    EXPECT_EQ(out[10]->CacheIndex(), 59);
    EXPECT_EQ(VecCache0().CacheUsedCount(), 51);
    // Giving back after the move clears the moved entries.
    for (int i = 20; i < 60; ++i) FreeIt(out[i]);
    FreeIt(n);
    for (int i = 0; i < 10; ++i) FreeIt(out[i]);
    EXPECT_EQ(VecCache0().DebugReport(), "");
    // All 60 can be taken again, each once.
    for (TVec*& v : out) CreateIt(v);
    std::vector<int> seen(60, 0);
    for (TVec* v : out) {
        ASSERT_GE(v->CacheIndex(), 0);
        ++seen[v->CacheIndex()];
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), 60);
    for (TVec*& v : out) FreeIt(v);
}

TEST_F(Cache, SizesCannotChangeWhileObjectsAreOut) {
    TVec *a, *b;
    CreateIt(a, b);
    EXPECT_RAISES(ERovaneException, Controller->SetVecCacheSize(60, 4196), "Cache[0] = Used");
    FreeIt(a);
    // Entries before the used one are released already: the cache must be
    // sized again before it is used.
    EXPECT_RAISES(ERovaneException, Controller->SetVecCacheSize(60, 4196), "Cache[1] = Used");
    EXPECT_EQ(VecCache0().DebugReport(), "Cache item at index 1 has Used = True\n");
    FreeIt(b);
    Controller->SetVecCacheSize(60, 4196);
    CreateIt(a);
    a->Size(10);
    FreeIt(a);
}

TEST_F(Cache, SlotLayout) {
    Controller->SetVecCacheSize(5, 100);
    TVecCache& c = VecCache0();
    EXPECT_EQ(c.GetCacheInBytes(), 800);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(Aligned(c.SlotPointer(i)));
        const TArrayHeader* h = detail::HeaderOf(c.SlotPointer(i));
        EXPECT_EQ(h->RefCount.load(), 1);
        EXPECT_EQ(h->Length, 104);
        if (i > 0)
            EXPECT_EQ(static_cast<char*>(c.SlotPointer(i)) - static_cast<char*>(c.SlotPointer(i - 1)),
                      ((100 + 4 + 32) / 32) * 32 * 8);
    }
    // The slot serves all four kinds of its size.
    TVec* v;
    CreateIt(v);
    for (TMtxFloatPrecision p : {rvSingle, rvDouble, rvSingleComplex, rvDoubleComplex}) {
        static const int32_t fit[] = {200, 100, 100, 50};
        v->Size(fit[p], p);
        EXPECT_EQ(v->ValuesPointer, c.SlotPointer(v->fMemIndex)) << p;
        v->Size(fit[p] + 1, p);
        EXPECT_NE(v->ValuesPointer, c.SlotPointer(v->fMemIndex)) << p;
    }
    FreeIt(v);
    Controller->SetVecCacheSize(0, 0);
    EXPECT_EQ(c.CacheSize(), 0);
    CreateIt(v);  // an empty cache still serves, with free objects
    EXPECT_EQ(v->CacheIndex(), -1);
    FreeIt(v);

    Controller->SetVecIntCacheSize(3, 100);
    TVecIntCache& ic = Controller->Pool[0]->VecInt;
    EXPECT_EQ(ic.GetCacheInBytes(), 400);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(Aligned(ic.SlotPointer(i)));
}

TEST_F(Cache, DirectDestructionIsRefusedAndTheCacheStaysWhole) {
    TVec* v;
    CreateIt(v);
    v->Size(10);
    const int32_t index = v->CacheIndex();
    const std::string text =
        "TRovaneBase.Destroy: fCacheOwned = True, Attempt to release memory of object-cache owned object. "
        "Use FreeIt to release object back to object-cache!";
    EXPECT_RAISES(ERovaneException, v->Free(), text);
    EXPECT_EQ(VecCache0().CacheUsedCount(), 1);  // refused: still out, still usable
    ReportCollector reports;
    delete v;
    EXPECT_EQ(reports.texts, std::vector<std::string>{text});
    // The entry has a fresh object and is free again.
    EXPECT_EQ(VecCache0().CacheUsedCount(), 0);
    TVec* w;
    CreateIt(w);
    EXPECT_EQ(w->CacheIndex(), index);
    EXPECT_TRUE(w->FCacheOwned);
    EXPECT_EQ(w->ValuesPointer, VecCache0().SlotPointer(w->fMemIndex));
    w->Size(20);
    FreeIt(w);

    TVec plain;
    EXPECT_RAISES(ERovaneException, plain.FreeCached(),
                  "TRovaneBase.Destroy: fCacheOwned = false, Attempt to release memory of object not owned by "
                  "object-cache!");
}

TEST_F(Cache, ConditionCheckDefaultsReachCachedObjects) {
    Controller->SetVecConditionCheck(false);
    TVec* v;
    CreateIt(v);
    TVec fresh;
    EXPECT_FALSE(v->ConditionCheck() || fresh.ConditionCheck());
    FreeIt(v);
    Controller->SetVecConditionCheck(true);
    CreateIt(v);
    v->SetConditionCheck(false);
    FreeIt(v);  // Reset gives back the class default
    CreateIt(v);
    EXPECT_TRUE(v->ConditionCheck());
    FreeIt(v);
}

TEST_F(Cache, ValueRecordCountsGiveTheObjectBack) {
    TVec* v;
    CreateIt(v);
    v->AddRefUsage();
    v->AddRefSubrange();
    v->ReleaseUsage();
    v->ReleaseSubrange();
    EXPECT_EQ(VecCache0().CacheUsedCount(), 1);
    v->ReleaseUsage();  // the sum reaches 0
    EXPECT_EQ(VecCache0().CacheUsedCount(), 0);
}

TEST(CachePool, ThreadDimensionZeroKeepsOnePool) {
    const int32_t dim = Controller->ThreadDimension();
    Controller->SetThreadDimension(0);
    EXPECT_EQ(Controller->ThreadDimension(), 1);
    EXPECT_EQ(Controller->Pool.Length(), 1);
    EXPECT_EQ(Controller->Pool[0]->Vec.CacheSize(), 60);
    EXPECT_EQ(Controller->Pool[0]->MtxInt.CacheSize(), 20);
    EXPECT_EQ(Controller->Pool[0]->ThreadID(), Controller->MainThreadID);
    EXPECT_EQ(Controller->UnusedThreadDimension(), 0);
    TVec* v;
    CreateIt(v);
    EXPECT_EQ(v->PoolIndex(), 0);
    EXPECT_RAISES(ERovaneException, Controller->SetThreadDimension(3), "Cache[0] = Used");
    FreeIt(v);
    Controller->SetThreadDimension(dim);
    ASSERT_EQ(Controller->Pool.Length(), dim);
    for (int32_t i = 0; i < dim; ++i) {
        EXPECT_EQ(Controller->Pool[i]->Vec.CacheSize(), 60);
        EXPECT_EQ(Controller->Pool[i]->PoolIndex(), i);
        EXPECT_EQ(Controller->Pool[i]->Vec.PoolIndex, i);
    }
}
