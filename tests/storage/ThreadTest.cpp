// Pools and threads: marked threads with pools of their own, unmarked threads
// sharing pool 0 under its lock, the owner check of FreeIt, exhaustion of the
// pools, and the striped mode without SuperConductive.
#include <algorithm>
#include <atomic>
#include <future>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include "StorageTestUtil.h"

using namespace rovane;
using namespace storage_test;

namespace {

// Five pools for every test, restored to the start state afterwards.
class ThreadPool : public ::testing::Test {
protected:
    void SetUp() override {
        fDimension = Controller->ThreadDimension();
        Controller->SetThreadDimension(5);
    }
    void TearDown() override {
        for (int32_t i = 0; i < Controller->Pool.Length(); ++i)
            EXPECT_FALSE(Controller->Pool[i]->CacheUsed()) << "pool " << i;
        Controller->SetSuperConductive(true);
        Controller->UnMarkThreads();
        // A new dimension rebuilds the pools and gives pool 0 to the main thread.
        Controller->SetThreadDimension(1);
        Controller->SetThreadDimension(fDimension);
        EXPECT_EQ(Controller->Pool[0]->ThreadID(), Controller->MainThreadID);
    }
    int32_t fDimension = 0;
};

// Takes and gives back vectors, matrices and integer vectors in a loop,
// checking that no other thread writes into them. Returns the pools seen.
std::set<int32_t> Churn(int32_t rounds, int32_t seed, std::atomic<int>& faults) {
    std::set<int32_t> pools;
    std::mt19937 rng(seed);
    std::vector<TVec*> held;
    for (int32_t r = 0; r < rounds; ++r) {
        TVec *a = nullptr, *b = nullptr;
        TMtx* m = nullptr;
        TVecInt* iv = nullptr;
        CreateIt(a, b);
        CreateIt(m);
        CreateIt(iv);
        pools.insert(a->PoolIndex());
        const int32_t n = 1 + int32_t(rng() % 300);
        a->Size(n);
        for (int32_t i = 0; i < n; ++i) a->Values[i] = seed * 1000.0 + i;
        b->Copy(*a);
        m->Size(2, 3);
        m->SetVal(seed);
        iv->Size(n);
        for (int32_t i = 0; i < n; ++i) iv->IValues[i] = seed;
        std::this_thread::yield();
        for (int32_t i = 0; i < n; ++i)
            if (b->Values[i] != seed * 1000.0 + i || iv->IValues[i] != seed) ++faults;
        if (m->Values[5] != seed) ++faults;
        // Hold a few for a while and give them back out of order, so that
        // the shared pool fragments and compacts.
        if (held.size() < 20) {
            held.push_back(a);
            a = nullptr;
        }
        if (held.size() == 20 || r + 1 == rounds) {
            std::shuffle(held.begin(), held.end(), rng);
            for (TVec*& h : held) FreeIt(h);
            held.clear();
        }
        FreeIt(a, b);
        FreeIt(m);
        FreeIt(iv);
    }
    return pools;
}

// Churns on `n` threads and on the main thread at once, expecting no fault;
// each thread runs `before(t)` first and churns only if it returns true.
// Returns the pools each thread saw; the main thread is last.
std::vector<std::set<int32_t>> ChurnTogether(int n, const std::function<bool(int)>& before = nullptr,
                                             const std::function<void()>& after = nullptr) {
    std::atomic<int> faults{0};
    std::vector<std::set<int32_t>> seen(n + 1);
    std::vector<std::thread> threads;
    for (int t = 0; t < n; ++t)
        threads.emplace_back([&, t] {
            if (before && !before(t)) return;
            seen[t] = Churn(1500, t + 1, faults);
            if (after) after();
        });
    seen[n] = Churn(1500, 99, faults);
    for (auto& th : threads) th.join();
    EXPECT_EQ(faults.load(), 0);
    return seen;
}

}  // namespace

TEST_F(ThreadPool, MarkedThreadsWorkInPoolsOfTheirOwn) {
    constexpr int kThreads = 4;
    std::vector<int32_t> marked(kThreads, -1);
    const auto seen = ChurnTogether(
        kThreads,
        [&](int t) {
            if (!Controller->MarkThread()) return false;
            marked[t] = Controller->GetPoolIndex();
            return true;
        },
        [] { Controller->UnMarkThread(); });
    EXPECT_EQ(seen[kThreads], std::set<int32_t>{0});
    std::set<int32_t> distinct;
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_GE(marked[t], 1);
        EXPECT_EQ(seen[t], std::set<int32_t>{marked[t]});
        distinct.insert(marked[t]);
    }
    EXPECT_EQ(distinct.size(), size_t(kThreads));
    EXPECT_EQ(Controller->UnusedThreadDimension(), 4);
}

TEST_F(ThreadPool, UnmarkedThreadsSharePoolZero) {
    for (const auto& s : ChurnTogether(3)) EXPECT_EQ(s, std::set<int32_t>{0});
    // An object of pool 0 may be given back by any thread.
    TVec* v = nullptr;
    std::thread([&] { CreateIt(v); }).join();
    EXPECT_EQ(v->PoolIndex(), 0);
    FreeIt(v);
    EXPECT_EQ(v, nullptr);
}

TEST_F(ThreadPool, FreeFromAForeignThreadFailsAndLeavesTheObjectOut) {
    std::promise<TVec*> taken;
    std::promise<void> tried;
    std::atomic<bool> freedByOwner{false};
    std::thread owner([&] {
        ASSERT_TRUE(Controller->MarkThread());
        TVec* v = nullptr;
        CreateIt(v);
        v->Size(10);
        taken.set_value(v);
        tried.get_future().wait();
        FreeIt(v);
        freedByOwner = v == nullptr;
        Controller->UnMarkThread();
    });
    TVec* v = taken.get_future().get();
    const int32_t pool = v->PoolIndex();
    EXPECT_GE(pool, 1);
    EXPECT_RAISES(ERovaneException, FreeIt(v),
                  "Rovane.FreeIt: Attempt to free object from thread other than used to create it!");
    EXPECT_NE(v, nullptr);
    EXPECT_EQ(v->Length(), 10);  // not reset
    EXPECT_EQ(Controller->Pool[pool]->Vec.CacheUsedCount(), 1);
    tried.set_value();
    owner.join();
    EXPECT_TRUE(freedByOwner.load());
    EXPECT_EQ(Controller->Pool[pool]->Vec.CacheUsedCount(), 0);
}

TEST_F(ThreadPool, UnmarkWithObjectsOutRaisesButUnmarks) {
    std::thread([] {
        ASSERT_TRUE(Controller->MarkThread());
        const int32_t pool = Controller->GetPoolIndex();
        ASSERT_GE(pool, 1);
        TVec* v = nullptr;
        TMtx* m = nullptr;
        CreateIt(v);
        CreateIt(m);
        FreeIt(v);
        EXPECT_RAISES(ERovaneException, Controller->UnMarkThread(),
                      "TRovaneController.UnMarkThread: Attempt to release super conductive thread without "
                      "releasing object cache items allocated by that thread!");
        EXPECT_EQ(Controller->Pool[pool]->ThreadID(), 0u);
        EXPECT_EQ(Controller->GetPoolIndex(), 0);
        // The lock was released on that path: marking again works and gives
        // the same, first free pool back.
        ASSERT_TRUE(Controller->MarkThread());
        EXPECT_EQ(Controller->GetPoolIndex(), pool);
        FreeIt(m);
        Controller->UnMarkThread();
        EXPECT_EQ(Controller->Pool[pool]->ThreadID(), 0u);
    }).join();
}

TEST_F(ThreadPool, ExhaustedPoolsFallBackOnPoolZero) {
    Controller->SetThreadDimension(2);  // pool 0 and one pool to mark
    std::promise<void> markedA, doneB;
    std::thread a([&] {
        EXPECT_TRUE(Controller->MarkThread());
        EXPECT_TRUE(Controller->MarkThread());  // marked already: true again
        EXPECT_EQ(Controller->GetPoolIndex(), 1);
        markedA.set_value();
        doneB.get_future().wait();
        Controller->UnMarkThread();
    });
    markedA.get_future().wait();
    EXPECT_EQ(Controller->UnusedThreadDimension(), 0);
    std::thread b([] {
        EXPECT_FALSE(Controller->MarkThread());
        EXPECT_EQ(Controller->GetPoolIndex(), 0);
        TVec* v = nullptr;
        CreateIt(v);
        EXPECT_EQ(v->PoolIndex(), 0);
        FreeIt(v);
    });
    b.join();
    doneB.set_value();
    a.join();
    EXPECT_EQ(Controller->UnusedThreadDimension(), 1);
}

TEST_F(ThreadPool, StripedModeWithoutSuperConductive) {
    Controller->SetSuperConductive(false);
    for (int32_t i = 1; i < Controller->Pool.Length(); ++i)
        EXPECT_EQ(Controller->Pool[i]->ThreadID(), Controller->MainThreadID);
    ChurnTogether(3, [](int) {
        EXPECT_FALSE(Controller->MarkThread());
        return true;
    });
    for (int32_t i = 0; i < Controller->Pool.Length(); ++i) EXPECT_FALSE(Controller->Pool[i]->CacheUsed());
    Controller->SetSuperConductive(true);
    for (int32_t i = 1; i < Controller->Pool.Length(); ++i) EXPECT_EQ(Controller->Pool[i]->ThreadID(), 0u);
}

TEST_F(ThreadPool, SuperConductiveCannotChangeWhileAMarkedPoolIsInUse) {
    std::promise<void> taken, tried;
    int32_t pool = -1;
    std::thread owner([&] {
        ASSERT_TRUE(Controller->MarkThread());
        pool = Controller->GetPoolIndex();
        TVec* v = nullptr;
        CreateIt(v);
        taken.set_value();
        tried.get_future().wait();
        FreeIt(v);
    });
    taken.get_future().wait();
    EXPECT_RAISES(ERovaneException, Controller->SetSuperConductive(false),
                  FormatText("Controller.SuperConductive: Memory pool with Index %d is still being used. Free back "
                             "all objects before changing this flag!",
                             {pool}));
    tried.set_value();
    owner.join();
}
