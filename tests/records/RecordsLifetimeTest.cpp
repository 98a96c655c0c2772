// Lifetime of the records: first touch from the cache, sharing and stealing,
// release by origin, the cache objects and heap allocations an expression
// chain takes, and release on a marked thread without a lock.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <atomic>
#include <cmath>
#include <chrono>
#include <cstdlib>
#include <future>
#include <new>
#include <string>
#include <thread>
#include <vector>

// Every C++ allocation of this binary (the library's included) is counted.
namespace {
std::atomic<long> gNews{0};
}
void* operator new(std::size_t n) {
    gNews.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(n ? n : 1)) return p;
    throw std::bad_alloc();
}
void* operator new[](std::size_t n) { return operator new(n); }
void* operator new(std::size_t n, std::align_val_t a) {
    gNews.fetch_add(1, std::memory_order_relaxed);
    const std::size_t al = static_cast<std::size_t>(a);
    if (void* p = std::aligned_alloc(al, (n + al - 1) / al * al)) return p;
    throw std::bad_alloc();
}
void* operator new[](std::size_t n, std::align_val_t a) { return operator new(n, a); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }

using namespace rovane;

namespace {

TVecCache& VecCache() { return Controller->Pool[Controller->GetPoolIndex()]->Vec; }
int32_t VecOut() { return VecCache().CacheUsedCount(); }

// The most cache objects out at one moment since the start of the scope,
// beyond those out at its start.
class PeakScope {
public:
    PeakScope() : fCache(VecCache()), fBase(fCache.fCacheUsedCount) { fCache.FMaxCount = fBase; }
    int32_t Peak() const { return fCache.FMaxCount - fBase; }

private:
    TVecCache& fCache;
    int32_t fBase;
};

Vector Filled(int32_t n, double start, double step) {
    Vector v;
    v.Size(n);
    for (int32_t i = 0; i < n; ++i) v[i] = start + step * i;
    return v;
}

// A vector that says when it is destroyed.
struct Probe : TVec {
    explicit Probe(bool* destroyed) : fDestroyed(destroyed) {}
    ~Probe() override { *fDestroyed = true; }
    bool* fDestroyed;
};

}  // namespace

TEST(RecordLifetime, UnbornRecordTakesItsObjectFromTheCacheOnFirstTouch) {
    const int32_t out = VecOut();
    {
        Vector v;
        EXPECT_FALSE(v.Born());
        EXPECT_EQ(VecOut(), out);
        v.Size(10);
        EXPECT_TRUE(v.Born());
        EXPECT_EQ(v.Length(), 10);
        EXPECT_GE(v.Data().CacheIndex(), 0);
        EXPECT_EQ(VecOut(), out + 1);
        // The cache's own reference and the record's.
        EXPECT_EQ(v.Data().fRefCount.load(), 2);
    }
    EXPECT_EQ(VecOut(), out);
}

TEST(RecordLifetime, CopySharesMoveStealsWithoutTouchingTheCount) {
    const int32_t out = VecOut();
    {
        Vector a = Filled(3, 1, 1);
        TRovaneBase* obj = a.Object();
        Vector b = a;
        EXPECT_EQ(b.Object(), obj);
        EXPECT_EQ(obj->fRefCount.load(), 3);
        EXPECT_TRUE(a.Shared());
        Vector c = std::move(a);
        EXPECT_FALSE(a.Born());
        EXPECT_EQ(c.Object(), obj);
        EXPECT_EQ(obj->fRefCount.load(), 3);
        c = std::move(c);  // self-move keeps the object
        EXPECT_EQ(c.Object(), obj);
        b = Vector();  // b lets go
        EXPECT_EQ(obj->fRefCount.load(), 2);
        EXPECT_FALSE(c.Shared());
        EXPECT_EQ(VecOut(), out + 1);
    }
    EXPECT_EQ(VecOut(), out);
}

TEST(RecordLifetime, ConstructorsMakeTheirObjectDirectlyUnlessAskedForTheCache) {
    const int32_t out = VecOut();
    Vector direct(5);
    EXPECT_LT(direct.Data().CacheIndex(), 0);
    EXPECT_EQ(direct.Data().fRefCount.load(), 1);
    EXPECT_EQ(direct.Length(), 5);
    Vector cplx(4, true, false);
    EXPECT_EQ(cplx.FloatPrecision(), rvSingleComplex);
    Vector byPrecision(3, rvDoubleComplex);
    EXPECT_EQ(byPrecision.FloatPrecision(), rvDoubleComplex);
    EXPECT_EQ(VecOut(), out);
    Vector plain(false), cached(true);
    EXPECT_LT(plain.Data().CacheIndex(), 0);
    EXPECT_GE(cached.Data().CacheIndex(), 0);
    EXPECT_EQ(VecOut(), out + 1);
    Matrix m(2, 3);
    EXPECT_EQ(m.Rows(), 2);
    EXPECT_EQ(m.Cols(), 3);
    EXPECT_LT(m.Data().CacheIndex(), 0);
}

TEST(RecordLifetime, AWrappedObjectLivesWhileARecordHoldsItAndGoesByItsOrigin) {
    bool destroyed = false;
    auto* p = new Probe(&destroyed);
    {
        Vector v(static_cast<TVec*>(p));
        Vector w = v;
        EXPECT_EQ(p->fRefCount.load(), 2);
        v = Vector();
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);  // made directly: destroyed at 0

    const int32_t out = VecOut();
    TVec* q = nullptr;
    CreateIt(q);
    EXPECT_EQ(VecOut(), out + 1);
    {
        Vector v;
        v.Adopt(q);
        EXPECT_EQ(q->fRefCount.load(), 2);
    }
    // From the cache: back to its pool at 1, the cache's own reference.
    EXPECT_EQ(VecOut(), out);
    EXPECT_EQ(q->fRefCount.load(), 1);
}

TEST(RecordLifetime, SharingSeesChangesInPlaceAndAssignGivesIndependence) {
    Vector a = Filled(4, 1, 1);
    Vector shared = a;                 // record assignment shares
    Vector copy;
    copy.Assign(a);                    // deep copy
    Vector alias;
    alias.AssignWithoutCopy(a);
    a += 10.0;                         // in place: every sharer sees it
    EXPECT_EQ(shared[0], 11.0);
    EXPECT_EQ(alias[3], 14.0);
    EXPECT_EQ(copy[0], 1.0);
    a.Sin();                           // a chaining member works in place too
    EXPECT_EQ(shared[0], std::sin(11.0));

    // x = x + y makes a new object for x: the old sharer keeps the old values.
    Vector x = Filled(3, 1, 1), y = Filled(3, 5, 0);
    Vector oldX = x;
    x = x + y;
    EXPECT_EQ(x[0], 6.0);
    EXPECT_EQ(oldX[0], 1.0);
    EXPECT_NE(x.Object(), oldX.Object());
}

TEST(RecordLifetime, ATemporaryThatIsSharedIsNotChangedInPlace) {
    Vector a = Filled(3, 0.5, 0.25);
    const double before = a[1];
    Vector s = Sin(Vector(a));  // the temporary shares a's object
    EXPECT_EQ(a[1], before);
    EXPECT_EQ(s[1], std::sin(before));
    Vector t = Vector(a) + 1.0;
    EXPECT_EQ(a[1], before);
    EXPECT_EQ(t[1], before + 1.0);
    Vector u = -Vector(a);
    EXPECT_EQ(a[1], before);
    EXPECT_EQ(u[1], -before);
}

TEST(RecordLifetime, AChainOfOperatorsTakesAtMostTwoCacheObjects) {
    const int32_t n = 1000;
    Vector a = Filled(n, 1, 0.5), b = Filled(n, 2, 0.25), c = Filled(n, -1, 0.125), d = Filled(n, 3, -0.5);
    struct Case {
        const char* name;
        int32_t most;
        Vector (*run)(const Vector&, const Vector&, const Vector&, const Vector&);
    };
    const Case cases[] = {
        {"a*b + c*d", 2, [](auto& a, auto& b, auto& c, auto& d) { return a * b + c * d; }},
        {"a*b - c*d", 2, [](auto& a, auto& b, auto& c, auto& d) { return a * b - c * d; }},
        // The language leaves the order of the operands free: a+d may be made
        // before the product, so three temporaries can be alive at once.
        {"(a+b)*(c-d)/(a+d)", 3, [](auto& a, auto& b, auto& c, auto& d) { return (a + b) * (c - d) / (a + d); }},
        {"Sin(a)*2 + b", 1, [](auto& a, auto& b, auto&, auto&) { return Sin(a) * 2.0 + b; }},
        {"Sqrt(Abs(a*b + 1) + c*c)", 2, [](auto& a, auto& b, auto& c, auto&) { return Sqrt(Abs(a * b + 1.0) + c * c); }},
        {"-(a + b) / 3 - 1", 1, [](auto& a, auto& b, auto&, auto&) { return 1.0 - (-(a + b) / 3.0 - 1.0); }},
    };
    for (const Case& k : cases) {
        PeakScope peak;
        Vector r = k.run(a, b, c, d);
        EXPECT_LE(peak.Peak(), k.most) << k.name;
        EXPECT_EQ(r.Length(), n) << k.name;
    }
    // The values are the elementwise ones.
    Vector r = a * b + c * d;
    for (int32_t i = 0; i < n; i += 97) EXPECT_EQ(r[i], a[i] * b[i] + c[i] * d[i]) << i;
}

TEST(RecordLifetime, ALoopOfChainsAllocatesNothingFromTheHeapAfterItsFirstPass) {
    const int32_t n = 1000;
    Vector a = Filled(n, 1, 0.5), b = Filled(n, 2, 0.25), c = Filled(n, -1, 0.125), d = Filled(n, 3, -0.5);
    Vector r, y;
    const int32_t out = VecOut();
    long afterFirst = 0;
    for (int pass = 0; pass < 20; ++pass) {
        r = a * b + c * d;
        y = Sin(a) * 2.0 + b;
        y += r;
        y = Sqrt(Abs(y)) - c / d;
        if (pass == 0) afterFirst = gNews.load();
    }
    EXPECT_EQ(gNews.load() - afterFirst, 0);
    EXPECT_EQ(VecOut(), out + 2);  // r and y hold one object each
}

TEST(RecordLifetime, RecordsOfAMarkedThreadReleaseOnItsPoolWithoutALock) {
    // While this thread holds the lock of every pool's vector cache, a marked
    // thread can only finish its record work if it takes no lock at all.
    std::vector<TSpinLock*> locks;
    for (int32_t i = 0; i < Controller->Pool.Length(); ++i) locks.push_back(&Controller->Pool[i]->Vec.csLock);
    std::promise<void> go;
    std::shared_future<void> started = go.get_future().share();
    int32_t pool = -1, outDuring = -1, outAfter = -1;
    bool marked = false;
    std::thread worker([&] {
        marked = Controller->MarkThread();
        started.wait();
        {
            Vector a = Filled(100, 1, 1), b = Filled(100, 2, 0);
            Vector r = Sin(a * b) + a;
            pool = r.Data().PoolIndex();
            outDuring = Controller->Pool[pool]->Vec.CacheUsedCount();
        }
        outAfter = Controller->Pool[pool]->Vec.CacheUsedCount();
        Controller->UnMarkThread();
    });
    for (TSpinLock* l : locks) l->Enter();
    go.set_value();
    auto finished = std::async(std::launch::async, [&] { worker.join(); });
    const bool done = finished.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
    for (TSpinLock* l : locks) l->Leave();
    finished.wait();
    ASSERT_TRUE(marked);
    EXPECT_TRUE(done) << "the marked thread waited for a cache lock";
    EXPECT_GE(pool, 1);
    EXPECT_EQ(outDuring, 3);
    EXPECT_EQ(outAfter, 0);
}

TEST(RecordLifetime, ReleasingOnAnotherThreadReportsAndNeverThrows) {
    std::vector<std::string> reports;
    TReportHandler old = SetReportHandler([&](const std::string& t) { reports.push_back(t); });
    std::promise<Vector> handOver;
    std::promise<void> released;
    TVec* obj = nullptr;
    std::thread worker([&] {
        ASSERT_TRUE(Controller->MarkThread());
        Vector v = Filled(8, 1, 1);
        obj = &v.Data();
        handOver.set_value(std::move(v));
        released.get_future().wait();
        // The object is still out of this thread's pool: give it back here.
        FreeIt(obj);
        Controller->UnMarkThread();
    });
    {
        Vector v = handOver.get_future().get();
        EXPECT_NO_THROW(v = Vector());
    }
    released.set_value();
    worker.join();
    SetReportHandler(old);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0], "Rovane.FreeIt: Attempt to free object from thread other than used to create it!");
}

TEST(RecordLifetime, IntegerAndMatrixRecordsLiveTheSameWay) {
    TRovanePoolItem& pool = *Controller->Pool[Controller->GetPoolIndex()];
    const int32_t ints = pool.VecInt.CacheUsedCount(), mtx = pool.Mtx.CacheUsedCount();
    {
        VectorInt v = {1, 2, 3};
        VectorInt w = v;
        EXPECT_EQ(pool.VecInt.CacheUsedCount(), ints + 1);
        EXPECT_EQ(v.Data().fRefCount.load(), 3);
        Matrix a({{1, 2}, {3, 4}}), b({{5, 6}, {7, 8}});
        EXPECT_EQ(pool.Mtx.CacheUsedCount(), mtx + 2);
        const TRovaneBase* first = nullptr;
        Matrix r = (a * b + 1.0) - a / b;
        first = r.Object();
        EXPECT_EQ(pool.Mtx.CacheUsedCount(), mtx + 3);  // a, b and the one result
        EXPECT_NE(first, a.Object());
        MatrixInt direct(2, 3, prInt16);
        EXPECT_EQ(direct.Length(), 6);
        EXPECT_LT(direct.Data().CacheIndex(), 0);
    }
    EXPECT_EQ(pool.VecInt.CacheUsedCount(), ints);
    EXPECT_EQ(pool.Mtx.CacheUsedCount(), mtx);
}
