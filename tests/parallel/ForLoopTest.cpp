// The parallel loop on real threads: range splitting, every index once in
// each mode, errors and their texts, the busy rule, the workers' pools,
// progress, thread settings, and the end of a loop object.
#include <dirent.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <rovane/Rovane.h>
#include <sched.h>
#include <sys/resource.h>
#include <xmmintrin.h>

#include <atomic>
#include <cmath>
#include <chrono>
#include <future>
#include <map>
#include <set>
#include <thread>
#include <vector>

#include "../storage/StorageTestUtil.h"

using namespace rovane;
using storage_test::Raises;

namespace {

// Enough pools for the workers of every test; the pools must be clean and
// unmarked when a test ends.
class Loop : public ::testing::Test {
protected:
    void SetUp() override {
        fDimension = Controller->ThreadDimension();
        Controller->SetThreadDimension(10);
    }
    void TearDown() override {
        for (int32_t i = 0; i < Controller->Pool.Length(); ++i) {
            EXPECT_FALSE(Controller->Pool[i]->CacheUsed()) << "pool " << i;
            if (i > 0) EXPECT_EQ(Controller->Pool[i]->ThreadID(), 0u) << "pool " << i;
        }
        Controller->SetThreadDimension(fDimension);
    }
    int32_t fDimension = 0;
};

struct Bounds {
    int32_t lo, hi;
    bool operator==(const Bounds&) const = default;
};

int ThreadsOfProcess() {
    int n = 0;
    if (DIR* d = opendir("/proc/self/task")) {
        while (dirent* e = readdir(d)) n += e->d_name[0] != '.';
        closedir(d);
    }
    return n;
}

// Waits (yielding) until `done` holds, at most a few seconds.
template <class F>
bool Eventually(F done) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
        if (std::chrono::steady_clock::now() > until) return false;
        std::this_thread::yield();
    }
    return true;
}

std::atomic<int> gPlainVisits[64];
void PlainIndexBody(int32_t i, TLoopContext, int32_t) { gPlainVisits[i]++; }
void PlainRangeBody(int32_t lo, int32_t hi, TLoopContext, int32_t) {
    for (int32_t i = lo; i <= hi; ++i) gPlainVisits[i]++;
}

}  // namespace

TEST_F(Loop, RangesFollowTheSplitRuleAndEmptyRangesAreStillCalled) {
    struct Case {
        int32_t min, max, threads;
        std::vector<Bounds> want;
    };
    const Case cases[] = {
        {0, 9, 4, {{0, 2}, {3, 5}, {6, 7}, {8, 9}}},
        {0, 1, 4, {{0, 0}, {1, 1}, {2, 1}, {2, 1}}},
        {5, 2, 3, {{5, 4}, {5, 4}, {5, 4}}},           // Count -2: quotient 0, remainder -2
        {4, -3, 2, {{4, 0}, {1, -3}}},                  // Count -6: quotient -3
        {-3, 4, 2, {{0, 2}, {3, 4}}},                   // Min clipped to 0
        {INT32_MAX - 1, INT32_MAX, 3, {{INT32_MAX - 1, INT32_MAX - 1}, {INT32_MAX, INT32_MAX}, {INT32_MAX, INT32_MAX - 1}}},
    };
    TMtxForLoop loop;
    for (const Case& c : cases) {
        loop.SetThreadCount(c.threads);
        std::vector<Bounds> got(c.threads, Bounds{-99, -99});
        std::vector<int> calls(c.threads, 0);
        EXPECT_FALSE(DoForLoop(
            c.min, c.max,
            [&](int32_t lo, int32_t hi, TLoopContext, int32_t t) {
                got[t] = {lo, hi};
                calls[t]++;
            },
            &loop));
        EXPECT_EQ(got, c.want) << c.min << ".." << c.max << " on " << c.threads;
        EXPECT_EQ(calls, std::vector<int>(c.threads, 1));
        for (int32_t t = 0; t < c.threads; ++t) {
            EXPECT_EQ(loop.GetThread(t)->Min, c.want[t].lo);
            EXPECT_EQ(loop.GetThread(t)->Max, c.want[t].hi);
        }
    }
}

TEST_F(Loop, EveryIndexIsVisitedOnceInEachModeAndSplit) {
    TMtxForLoop loop;
    for (int32_t threads : {1, 2, 3, 5}) {
        loop.SetThreadCount(threads);
        for (auto [min, max] : {std::pair{0, 999}, {7, 7}, {3, 2}, {10, 12}}) {
            std::vector<std::atomic<int>> visits(1000);
            std::atomic<int> outside{0};
            auto hit = [&](int32_t i) {
                if (i < min || i > max) outside++;
                else visits[i]++;
            };
            // Greedy, from a closure; then ranges, from a closure.
            EXPECT_FALSE(DoForLoop(min, max, [&](int32_t i, TLoopContext, int32_t) { hit(i); }, &loop));
            EXPECT_FALSE(DoForLoop(
                min, max,
                [&](int32_t lo, int32_t hi, TLoopContext, int32_t) {
                    for (int32_t i = lo; i <= hi; ++i) hit(i);
                },
                &loop));
            for (int32_t i = 0; i < 1000; ++i)
                ASSERT_EQ(visits[i].load(), i >= min && i <= max ? 2 : 0)
                    << "index " << i << " of " << min << ".." << max << " on " << threads;
            EXPECT_EQ(outside.load(), 0);
        }
    }
}

TEST_F(Loop, EachBodyFormFillsItsSlotAndRunsOnce) {
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    std::atomic<int> visits[20] = {};
    const auto all = [&](int want) {
        for (int i = 0; i < 20; ++i)
            if (visits[i].exchange(0) != want) return false;
        return true;
    };
    // A method object, a plain function, a closure; index and range forms.
    const TForLoopEvent method = [&](int32_t i, TLoopContext, int32_t) { visits[i]++; };
    EXPECT_FALSE(DoForLoop(0, 19, method, &loop));
    EXPECT_TRUE(loop.OnForLoop() && !loop.OnForLoopAnn() && !loop.OnForLoopFun());
    EXPECT_EQ(loop.ThreadingMode(), tmGreedyForLoop);
    EXPECT_TRUE(all(1));
    const TForLoopRangeEvent rangeMethod = [&](int32_t lo, int32_t hi, TLoopContext, int32_t) {
        for (int32_t i = lo; i <= hi; ++i) visits[i]++;
    };
    EXPECT_FALSE(DoForLoop(0, 19, rangeMethod, &loop));
    EXPECT_TRUE(loop.OnForLoopRange() && !loop.OnForLoop());
    EXPECT_EQ(loop.ThreadingMode(), tmForLoop);
    EXPECT_TRUE(all(1));

    for (auto& v : gPlainVisits) v = 0;
    EXPECT_FALSE(DoForLoop(0, 19, PlainIndexBody, &loop));
    EXPECT_TRUE(loop.OnForLoopFun() && !loop.OnForLoopRange());
    EXPECT_FALSE(DoForLoop(0, 19, &PlainRangeBody, &loop));
    EXPECT_TRUE(loop.OnForLoopRangeFun() && !loop.OnForLoopFun());
    for (int i = 0; i < 20; ++i) EXPECT_EQ(gPlainVisits[i].load(), 2);

    // Set by hand, the plain index body takes the counter first and the
    // closure finds it spent; the range slots are all called.
    loop.ResetFunctions();
    loop.SetThreadingMode(tmGreedyForLoop);
    for (auto& v : gPlainVisits) v = 0;
    loop.SetOnForLoopFun(PlainIndexBody);
    loop.SetOnForLoopAnn([&](int32_t i, TLoopContext, int32_t) { visits[i]++; });
    loop.SetMin(0);
    loop.SetMax(19);
    loop.Start();
    loop.WaitForProcessingFinish(false);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(gPlainVisits[i].load(), 1);
    EXPECT_TRUE(all(0));
    loop.ResetFunctions();
    loop.SetThreadingMode(tmForLoop);
    loop.SetOnForLoopRange(rangeMethod);
    loop.SetOnForLoopRangeAnn([&](int32_t lo, int32_t hi, TLoopContext, int32_t) {
        for (int32_t i = lo; i <= hi; ++i) visits[i]++;
    });
    loop.Start();
    loop.WaitForProcessingFinish(false);
    EXPECT_TRUE(all(2));
}

TEST_F(Loop, WhileLoopsRunUntilEachWorkerStopsOrTheLoopIsCancelled) {
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    std::vector<int> rounds(3, 0);
    EXPECT_FALSE(DoWhileLoop(
        [&](bool& stop, TLoopContext, int32_t t) {
            stop = ++rounds[t] == 10 + t;
        },
        &loop));
    EXPECT_EQ(rounds, (std::vector<int>{10, 11, 12}));
    for (int32_t t = 0; t < 3; ++t) EXPECT_EQ(loop.GetThread(t)->LoopIndex.load(), 10 + t);

    // No body stops: only cancelling ends the job. The progress shows the
    // rounds done while it runs.
    std::atomic<int64_t> total{0};
    loop.SetOnWhileLoop([&](bool&, TLoopContext, int32_t) { total++; });
    loop.SetThreadingMode(tmWhileLoop);
    EXPECT_EQ(loop.CombinedLoopCount(), 0);
    EXPECT_EQ(loop.CombinedLoopIndex(), -1);
    loop.Start();
    ASSERT_TRUE(Eventually([&] { return loop.CombinedLoopCount() > 100; }));
    EXPECT_FALSE(loop.IsProcessingFinished());
    loop.CancelProcessing();
    loop.WaitForProcessingFinish(false);
    EXPECT_TRUE(loop.IsProcessingIdle());
    int64_t sum = 0;
    for (int32_t t = 0; t < 3; ++t) sum += loop.GetThread(t)->LoopIndex.load();
    EXPECT_EQ(sum, total.load());
    EXPECT_EQ(loop.CombinedLoopCount(), 0);  // idle again
}

TEST_F(Loop, ProgressWhileAGreedyJobRuns) {
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::atomic<int> entered{0};
    loop.SetOnForLoopAnn([&](int32_t, TLoopContext, int32_t) {
        entered++;
        released.wait();
    });
    loop.SetThreadingMode(tmGreedyForLoop);
    loop.SetMin(5);
    loop.SetMax(100);
    loop.Start();
    ASSERT_TRUE(Eventually([&] { return entered.load() == 2; }));
    // Two indexes taken from the counter, 5 and 6.
    EXPECT_EQ(loop.CombinedLoopIndex(), 6);
    EXPECT_EQ(loop.CombinedLoopCount(), 1);
    release.set_value();
    loop.WaitForProcessingFinish(false);
    EXPECT_EQ(entered.load(), 96);
    EXPECT_GT(loop.LoopRunningTime(), 0.0);
}

TEST_F(Loop, WaitingWithMessagesCallsTheHookBetweenRounds) {
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    int pumped = 0;  // called on this thread only
    loop.SetOnProcessMessages([&] { ++pumped; });
    loop.SetOnForLoopRangeAnn([](int32_t, int32_t, TLoopContext, int32_t) {
        std::this_thread::sleep_for(std::chrono::milliseconds(90));
    });
    loop.SetThreadingMode(tmForLoop);
    loop.Start();
    loop.WaitForProcessingFinish(true);
    EXPECT_TRUE(loop.IsProcessingFinished());
    EXPECT_GE(pumped, 2);  // rounds of 20 ms
    EXPECT_LT(pumped, 100);  // waits between calls, never spins
}

TEST_F(Loop, GreedyCancelRepeatsNothing) {
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    std::vector<std::atomic<int>> visits(10000);
    EXPECT_FALSE(DoForLoop(
        0, 9999,
        [&](int32_t i, TLoopContext, int32_t) {
            visits[i]++;
            if (i == 100) loop.CancelProcessing();
        },
        &loop));
    int done = 0;
    for (auto& v : visits) {
        EXPECT_LE(v.load(), 1);
        done += v.load();
    }
    EXPECT_GT(done, 100);
    EXPECT_LT(done, 10000);
}

TEST_F(Loop, ErrorsReachTheCallerFirstPerWorkerJoinedInOrder) {
    TMtxForLoop loop;
    loop.SetThreadCount(4);
    std::vector<std::atomic<int>> visits(40);
    // Workers 1 and 3 raise at the start of their ranges, worker 2 throws a
    // foreign object; worker 0 finishes its range.
    const bool raised = DoForLoop(
        0, 39,
        [&](int32_t lo, int32_t hi, TLoopContext, int32_t t) {
            for (int32_t i = lo; i <= hi; ++i) {
                if (t == 1 || t == 3) ERaiseFmt("Body %d failed at %d", t, i);
                if (t == 2) throw 42;
                visits[i]++;
            }
        },
        &loop);
    EXPECT_TRUE(raised);
    EXPECT_TRUE(loop.HasRaisedErrors());
    EXPECT_EQ(loop.ErrorMessages(), "; Body 1 failed at 10; Unknown exception; Body 3 failed at 30");
    EXPECT_EQ(loop.GetErrorMessage(0), "");
    EXPECT_EQ(loop.GetErrorMessage(3), "Body 3 failed at 30");
    for (int32_t i = 0; i < 10; ++i) EXPECT_EQ(visits[i].load(), 1);
    for (int32_t bad : {4, 5, -1})
        EXPECT_TRUE(Raises<ERovaneException>([&] { loop.GetErrorMessage(bad); },
                                             "TMtxForLoop.GetErrorMessage: ThreadIndex > ThreadCount !"));

    // In greedy mode an error ends only the job of the worker that raised:
    // the others take every remaining index.
    std::atomic<int> runs{0};
    EXPECT_TRUE(DoForLoop(
        0, 999,
        [&](int32_t i, TLoopContext, int32_t) {
            runs++;
            if (i == 500) ERaise("first");
        },
        &loop));
    EXPECT_EQ(runs.load(), 1000);
    int failed = 0;
    for (int32_t t = 0; t < 4; ++t) failed += loop.GetErrorMessage(t) == "first";
    EXPECT_EQ(failed, 1);
    // The next job starts clean.
    EXPECT_FALSE(DoForLoop(0, 3, [](int32_t, TLoopContext, int32_t) {}, &loop));
    EXPECT_FALSE(loop.HasRaisedErrors());
    EXPECT_EQ(loop.ErrorMessages(), "; ; ; ");
}

TEST_F(Loop, NestedOrConcurrentStartIsBusy) {
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    // A body that starts or waits on its own loop.
    std::atomic<int> inner{0};
    EXPECT_TRUE(DoForLoop(
        0, 1,
        [&](int32_t lo, int32_t, TLoopContext, int32_t) {
            if (lo == 0) DoForLoop(0, 5, [&](int32_t, TLoopContext, int32_t) { inner++; }, &loop);
            else loop.WaitFor();
        },
        &loop));
    EXPECT_EQ(loop.ErrorMessages(), "Thread object is busy computing!; Thread object is busy computing!");
    EXPECT_EQ(inner.load(), 0);

    // The same with the shared default object.
    EXPECT_TRUE(DoForLoop(0, 0, [](int32_t, TLoopContext, int32_t) {
        DoForLoop(0, 0, [](int32_t, TLoopContext, int32_t) {});
    }));

    // A second caller while a job runs.
    std::promise<void> entered, release;
    std::shared_future<void> released = release.get_future().share();
    std::future<bool> first = std::async(std::launch::async, [&] {
        return DoForLoop(
            0, 0,
            [&](int32_t lo, int32_t, TLoopContext, int32_t) {
                if (lo == 0) entered.set_value();
                released.wait();
            },
            &loop);
    });
    entered.get_future().wait();
    EXPECT_FALSE(loop.IsProcessingIdle());
    EXPECT_TRUE(Raises<ERovaneException>(
        [&] { DoForLoop(0, 9, [](int32_t, TLoopContext, int32_t) {}, &loop); }, "Thread object is busy computing!"));
    EXPECT_TRUE(Raises<ERovaneException>([&] { DoWhileLoop([](bool& s, TLoopContext, int32_t) { s = true; }, &loop); },
                                         "Thread object is busy computing!"));
    release.set_value();
    EXPECT_FALSE(first.get());

    // Many callers at once: every call either runs or is refused, never both
    // on one job.
    std::atomic<int> ran{0}, refused{0}, indexes{0};
    std::vector<std::thread> callers;
    for (int c = 0; c < 4; ++c)
        callers.emplace_back([&] {
            for (int k = 0; k < 50; ++k) {
                try {
                    DoForLoop(0, 9, [&](int32_t, TLoopContext, int32_t) { indexes++; }, &loop);
                    ran++;
                } catch (const ERovaneException& e) {
                    EXPECT_STREQ(e.what(), "Thread object is busy computing!");
                    refused++;
                }
            }
        });
    for (auto& c : callers) c.join();
    EXPECT_EQ(ran + refused, 200);
    EXPECT_EQ(indexes.load(), 10 * ran.load());
}

TEST_F(Loop, BodiesTakeObjectsFromTheWorkersOwnPools) {
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    std::atomic<int> faults{0};
    std::set<int32_t> used;
    for (int job = 0; job < 5; ++job) {
        std::vector<std::set<int32_t>> pools(3);
        std::atomic<int> inside{0};
        EXPECT_FALSE(DoForLoop(
            0, 299,
            [&](int32_t lo, int32_t hi, TLoopContext, int32_t t) {
                // All three hold their pools at the same time.
                inside++;
                Eventually([&] { return inside.load() == 3; });
                for (int32_t i = lo; i <= hi; ++i) {
                    TVec *a = nullptr, *b = nullptr;
                    CreateIt(a, b);
                    const int32_t pool = Controller->GetPoolIndex();
                    if (a->PoolIndex() != pool || b->PoolIndex() != pool) faults++;
                    pools[t].insert(pool);
                    a->Size(50);
                    a->SetVal(i);
                    b->Sin(*a);
                    if (std::abs(b->Values[49] - std::sin(double(i))) > 1e-15) faults++;
                    FreeIt(a, b);
                }
            },
            &loop));
        std::set<int32_t> distinct;
        for (int32_t t = 0; t < 3; ++t) {
            ASSERT_EQ(pools[t].size(), 1u);  // one pool through a job
            const int32_t pool = *pools[t].begin();
            EXPECT_GE(pool, 1);
            EXPECT_EQ(loop.GetThread(t)->HeapIndex.load(), pool);
            distinct.insert(pool);
            used.insert(pool);
        }
        EXPECT_EQ(distinct.size(), 3u);  // no two workers share one
    }
    EXPECT_EQ(faults.load(), 0);
    for (int32_t i : used) EXPECT_GE(Controller->Pool[i]->Vec.MaxCount(), 2);
}

TEST_F(Loop, WorkersBeyondThePoolsShareThePoolOfTheMainThread) {
    Controller->SetThreadDimension(2);  // pool 0 and one more
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    std::atomic<int> own{0}, shared{0}, inside{0};
    EXPECT_FALSE(DoForLoop(
        0, 2,
        [&](int32_t, int32_t, TLoopContext, int32_t) {
            TVec* v = nullptr;
            CreateIt(v);
            (v->PoolIndex() == 0 ? shared : own)++;
            // All three hold their objects at once.
            inside++;
            Eventually([&] { return inside.load() == 3; });
            FreeIt(v);
        },
        &loop));
    EXPECT_EQ(own.load(), 1);
    EXPECT_EQ(shared.load(), 2);
}

TEST_F(Loop, AKeptObjectIsReportedAndCanBeGivenBackLater) {
    TMtxForLoop loop;
    loop.SetThreadCount(1);
    TVec* kept = nullptr;
    EXPECT_TRUE(DoForLoop(0, 0, [&](int32_t, TLoopContext, int32_t) { CreateIt(kept); }, &loop));
    EXPECT_EQ(loop.ErrorMessages(),
              "TRovaneController.UnMarkThread: Attempt to release super conductive thread without releasing object "
              "cache items allocated by that thread!");
    const int32_t pool = kept->PoolIndex();
    EXPECT_EQ(Controller->Pool[pool]->ThreadID(), 0u);
    // The next job of the single worker gets the first free pool, the same.
    EXPECT_FALSE(DoForLoop(0, 0, [&](int32_t, TLoopContext, int32_t) { FreeIt(kept); }, &loop));
    EXPECT_EQ(kept, nullptr);
}

TEST_F(Loop, ContextReachesEveryBodyAndIsClearedAfterTheJob) {
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    int a = 1, b = 2, c = 3;
    std::vector<void*> context{&a, &b, &c};
    struct Case {
        int32_t high;
        size_t want;
    };
    for (const Case& k : {Case{ContextHighAll, 3}, Case{1, 2}, Case{-1, 0}, Case{2, 3}}) {
        std::atomic<int> good{0};
        EXPECT_FALSE(DoForLoop(
            0, 1,
            [&](int32_t, int32_t, TLoopContext ctx, int32_t) {
                bool same = ctx.size() == k.want;
                for (size_t i = 0; same && i < ctx.size(); ++i) same = ctx[i] == context[i];
                good += same;
            },
            &loop, context, k.high));
        EXPECT_EQ(good.load(), 2) << k.high;
        for (int32_t t = 0; t < 2; ++t) EXPECT_TRUE(loop.GetThread(t)->Context.empty());
    }
    for (int32_t bad : {3, -3})
        EXPECT_TRUE(Raises<ERovaneRangeError>(
            [&] { DoForLoop(0, 1, [](int32_t, TLoopContext, int32_t) {}, &loop, context, bad); },
            FormatText("TMtxForLoop.Start: High = %d, High(Context) = %d", {bad, 2})));
    EXPECT_FALSE(DoForLoop(0, 1, [](int32_t, TLoopContext, int32_t) {}, &loop));  // still usable
}

TEST_F(Loop, ThreadSettingsReachTheWorkers) {
    TMtxForLoop loop;
    EXPECT_EQ(loop.ThreadCount(), Controller->CpuCores());
    EXPECT_EQ(loop.NameOfThreadSet(), "MtxForLoop");
    EXPECT_EQ(loop.Priority(), tpNormal);
    loop.SetThreadCount(0);
    EXPECT_EQ(loop.ThreadCount(), 1);
    loop.SetMin(-5);
    EXPECT_EQ(loop.Min(), 0);
    loop.SetThreadCount(2);

    auto names = [&] {
        std::vector<std::string> got(2);
        DoForLoop(
            0, 1,
            [&](int32_t, int32_t, TLoopContext, int32_t t) {
                char name[32] = {};
                pthread_getname_np(pthread_self(), name, sizeof name);
                got[t] = name;
            },
            &loop);
        return got;
    };
    EXPECT_EQ(names(), (std::vector<std::string>{"MtxForLoop0", "MtxForLoop1"}));
    loop.SetNameOfThreadSet("AVeryLongNameOfAThreadSet");
    EXPECT_EQ(names(), (std::vector<std::string>{"AVeryLongNameO0", "AVeryLongNameO1"}));

    // Lowering the priority needs no privilege.
    errno = 0;
    const int base = getpriority(PRIO_PROCESS, 0);
    loop.SetPriority(tpLower);
    std::vector<int> nice(2, -100);
    DoForLoop(0, 1, [&](int32_t, int32_t, TLoopContext, int32_t t) { nice[t] = getpriority(PRIO_PROCESS, 0); }, &loop);
    EXPECT_EQ(nice, std::vector<int>(2, std::min(base + 5, 19)));

    // The controller's denormal setting, per job.
    for (bool daz : {true, false}) {
        Controller->SetDenormalsAreZero(daz);
        std::atomic<int> set{0};
        DoForLoop(0, 1, [&](int32_t, int32_t, TLoopContext, int32_t) { set += (_mm_getcsr() & 0x8040u) == 0x8040u; },
                  &loop);
        EXPECT_EQ(set.load(), daz ? 2 : 0);
    }
}

TEST_F(Loop, AffinityGroupsFollowTheModes) {
    // Processor ranges: remainders of processors and workers go to the last group.
    struct Case {
        TThreadAffinityMode mode;
        int32_t processors, threads;
        std::vector<Bounds> want;
    };
    const Case cases[] = {
        {tamDefault, 4, 2, {{0, 3}, {0, 3}}},
        {tamSplit2, 3, 2, {{0, 0}, {1, 2}}},
        {tamSplit2, 8, 5, {{0, 3}, {0, 3}, {4, 7}, {4, 7}, {4, 7}}},
        {tamSplit4, 8, 4, {{0, 1}, {2, 3}, {4, 5}, {6, 7}}},
        {tamSplit4, 2, 2, {{0, 1}, {0, 1}}},
        {tamSplit4, 2, 4, {{0, -1}, {0, -1}, {0, -1}, {0, 1}}},
        {tamSplit8, 10, 9, {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 9}, {7, 9}}},
    };
    for (const Case& c : cases)
        for (int32_t t = 0; t < c.threads; ++t) {
            Bounds r{};
            TMtxForLoop::AffinityRange(c.mode, c.processors, c.threads, t, r.lo, r.hi);
            EXPECT_EQ(r, c.want[t]) << c.mode << " " << c.processors << " " << c.threads << " worker " << t;
        }

    // On this machine: each worker runs on the processors of its group.
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    cpu_set_t process;
    sched_getaffinity(getpid(), sizeof process, &process);
    const int processors = CPU_COUNT(&process);
    auto masks = [&] {
        std::vector<cpu_set_t> got(2);
        DoForLoop(0, 1, [&](int32_t, int32_t, TLoopContext, int32_t t) { sched_getaffinity(0, sizeof got[t], &got[t]); },
                  &loop);
        return got;
    };
    for (TThreadAffinityMode mode : {tamSplit2, tamSplit4, tamDefault}) {
        try {
            loop.SetThreadAffinityMode(mode);
        } catch (const ERovaneException& e) {
            // A process restricted to part of the machine, or too few processors.
            const std::string text = e.what();
            EXPECT_TRUE(text == "Process specific thread assignment is not supported!" ||
                        (text == "SetThreadAffinityMask returned an error!" && processors < 2))
                << text;
            GTEST_SKIP() << text;
        }
        EXPECT_EQ(loop.ThreadAffinityMode(), mode);
        const auto got = masks();
        for (int32_t t = 0; t < 2; ++t) {
            int32_t lo, hi;
            TMtxForLoop::AffinityRange(mode, processors, 2, t, lo, hi);
            EXPECT_EQ(CPU_COUNT(&got[t]), hi - lo + 1) << mode << " worker " << t;
        }
        cpu_set_t both;
        CPU_AND(&both, &got[0], &got[1]);
        EXPECT_EQ(CPU_COUNT(&both) == 0, mode == tamSplit2) << mode;
    }
}

TEST_F(Loop, EnterAndLeaveExcludeEachOther) {
    TMtxForLoop loop;
    loop.SetThreadCount(3);
    int64_t plain = 0;  // guarded by the loop's own lock only
    EXPECT_FALSE(DoForLoop(
        0, 29999,
        [&](int32_t, TLoopContext, int32_t) {
            loop.Enter();
            ++plain;
            loop.Leave();
        },
        &loop));
    EXPECT_EQ(plain, 30000);
}

TEST_F(Loop, AnEndedLoopLeavesNoThreadsAndNoPoolsBehind) {
    const int before = ThreadsOfProcess();
    auto threadsAre = [](int n) { return Eventually([n] { return ThreadsOfProcess() == n; }); };
    {
        TMtxForLoop idle;
        idle.SetThreadCount(3);
        EXPECT_TRUE(threadsAre(before + 3));
    }
    EXPECT_TRUE(threadsAre(before));
    {
        TMtxForLoop failed;
        failed.SetThreadCount(3);
        EXPECT_TRUE(DoForLoop(
            0, 99,
            [](int32_t i, TLoopContext, int32_t) {
                TVec* v = nullptr;
                CreateIt(v);
                v->Size(10);
                FreeIt(v);
                if (i % 7 == 0) ERaiseFmt("index %d", i);
            },
            &failed));
        // A job still running when the object ends: cancelled, then joined.
        failed.SetOnWhileLoop([](bool&, TLoopContext, int32_t) { std::this_thread::yield(); });
        failed.SetThreadingMode(tmWhileLoop);
        failed.Start();
    }
    EXPECT_TRUE(threadsAre(before));
    // Changing the count replaces the workers.
    TMtxForLoop loop;
    loop.SetThreadCount(4);
    loop.SetThreadCount(2);
    EXPECT_TRUE(threadsAre(before + 2));
    EXPECT_FALSE(DoForLoop(0, 9, [](int32_t, TLoopContext, int32_t) {}, &loop));
}
