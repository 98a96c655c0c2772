// The samples of the user's guide section on parallel loops, as one program:
// returns 0 when every sample gives what the guide says.
#include <rovane/Rovane.h>

#include <atomic>
#include <string>
#include <vector>

using namespace rovane;

namespace {
std::atomic<int> plainCount{0};
void CountIndex(int32_t, TLoopContext, int32_t) { plainCount++; }
}  // namespace

int main() {
    int failures = 0;
    auto check = [&](bool ok) { failures += !ok; };

    // Ranges: each worker gets one contiguous range.
    std::vector<double> y(1000);
    DoForLoop(0, 999, [&](int32_t lo, int32_t hi, TLoopContext, int32_t) {
        for (int32_t i = lo; i <= hi; ++i) y[i] = 2.0 * i;
    });
    check(y[999] == 1998.0);

    // One index at a time, from a shared counter; a plain function as body.
    DoForLoop(0, 99, CountIndex);
    check(plainCount == 100);

    // A loop object of its own, with temporaries from the workers' pools.
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    std::atomic<int> ownPool{0};
    DoForLoop(
        0, 9,
        [&](int32_t, TLoopContext, int32_t) {
            TVec* t = nullptr;
            CreateIt(t);
            ownPool += t->PoolIndex() >= 1;
            FreeIt(t);
        },
        &loop);
    check(ownPool > 0);

    // Context: references shared by all bodies.
    double scale = 3.0;
    std::vector<void*> context{&scale};
    std::atomic<int> seen{0};
    DoForLoop(
        0, 1,
        [&](int32_t, int32_t, TLoopContext ctx, int32_t) { seen += *static_cast<double*>(ctx[0]) == 3.0; },
        &loop, context);
    check(seen == 2);

    // While-loops: each worker repeats its body until it sets Stop.
    std::vector<int> rounds(2, 0);
    DoWhileLoop([&](bool& stop, TLoopContext, int32_t worker) { stop = ++rounds[worker] == 5; }, &loop);
    check(rounds[0] == 5 && rounds[1] == 5);

    // Errors: the result tells, the texts are kept per worker.
    const bool failed = DoForLoop(
        0, 1,
        [](int32_t lo, int32_t, TLoopContext, int32_t) {
            if (lo == 1) ERaise("no data");
        },
        &loop);
    check(failed && loop.ErrorMessages() == "; no data");

    // A busy object refuses a second job.
    try {
        DoForLoop(
            0, 0,
            [&](int32_t lo, int32_t, TLoopContext, int32_t) {
                if (lo == 0) DoForLoop(0, 0, CountIndex, &loop);
            },
            &loop);
        check(loop.GetErrorMessage(0) == "Thread object is busy computing!");
    } catch (const ERovaneException&) {
        check(false);
    }
    return failures == 0 ? 0 : 1;
}
