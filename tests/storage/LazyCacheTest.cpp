// The object caches are filled at their first take: sizing a cache allocates
// nothing, a take fills only the cache it takes from, and what the take gets
// is the same as from a cache filled at once.
#include <thread>

#include "StorageTestUtil.h"

using namespace rovane;

namespace {

// Every cache of every pool, to check which ones are filled.
template <class Fn>
void ForEachCache(Fn fn) {
    for (int32_t i = 0; i < Controller->Pool.Length(); ++i) {
        TRovanePoolItem& p = *Controller->Pool[i];
        fn(i, "Vec", static_cast<TAbstractRovaneCache&>(p.Vec));
        fn(i, "Mtx", static_cast<TAbstractRovaneCache&>(p.Mtx));
        fn(i, "VecInt", static_cast<TAbstractRovaneCache&>(p.VecInt));
        fn(i, "MtxInt", static_cast<TAbstractRovaneCache&>(p.MtxInt));
    }
}

void DefaultSizes() {
    Controller->SetVecCacheSize(60, 4196);
    Controller->SetMtxCacheSize(60, 4196);
    Controller->SetVecIntCacheSize(60, 4196);
    Controller->SetMtxIntCacheSize(20, 4196);
}

TEST(LazyCache, SizingAllocatesNothingAndATakeFillsOnlyItsCache) {
    DefaultSizes();
    ForEachCache([](int32_t pool, const char* kind, TAbstractRovaneCache& c) {
        EXPECT_FALSE(c.Filled()) << kind << " of pool " << pool;
    });
    // The sizes read as set, before any fill.
    EXPECT_EQ(Controller->Pool[0]->Vec.CacheSize(), 60);
    EXPECT_EQ(Controller->Pool[0]->Vec.CacheElements(), 4196);
    EXPECT_EQ(Controller->Pool[0]->MtxInt.CacheSize(), 20);

    TVec* v;
    CreateIt(v);
    const int32_t mine = Controller->GetPoolIndex();
    EXPECT_EQ(v->CacheIndex(), 0);
    EXPECT_EQ(v->ValuesPointer, Controller->Pool[mine]->Vec.SlotPointer(v->fMemIndex));
    v->Size(4196);  // the whole slot, no heap block
    EXPECT_EQ(v->ValuesPointer, Controller->Pool[mine]->Vec.SlotPointer(v->fMemIndex));
    FreeIt(v);
    ForEachCache([mine](int32_t pool, const char* kind, TAbstractRovaneCache& c) {
        const bool taken = pool == mine && std::string(kind) == "Vec";
        EXPECT_EQ(c.Filled(), taken) << kind << " of pool " << pool;
    });

    // A marked thread fills its own pool's cache on its first take.
    std::thread worker([] {
        ASSERT_TRUE(Controller->MarkThread());
        const int32_t own = Controller->GetPoolIndex();
        EXPECT_GE(own, 1);
        EXPECT_FALSE(Controller->Pool[own]->Mtx.Filled());
        TMtx* m;
        CreateIt(m);
        EXPECT_TRUE(Controller->Pool[own]->Mtx.Filled());
        EXPECT_EQ(m->PoolIndex(), own);
        FreeIt(m);
        Controller->UnMarkThread();
    });
    worker.join();

    // Sizing again empties a filled cache; the next take fills it again.
    Controller->SetVecCacheSize(3, 10);
    EXPECT_FALSE(Controller->Pool[mine]->Vec.Filled());
    TVec* a;
    TVec* b;
    CreateIt(a, b);
    EXPECT_EQ(Controller->Pool[mine]->Vec.CacheUsedCount(), 2);
    FreeIt(a, b);
    DefaultSizes();
}

TEST(LazyCache, AnEmptyCacheServesFromTheHeapWithoutFilling) {
    Controller->SetVecCacheSize(0, 0);
    TVec* v;
    CreateIt(v);
    EXPECT_EQ(v->CacheIndex(), -1);
    v->Size(10);
    FreeIt(v);
    DefaultSizes();
}

}  // namespace
