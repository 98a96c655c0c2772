// A loop object configured by hand: thread count, names and priority, and a
// job started, left to run and waited for.
#include <rovane/Rovane.h>

#include <pthread.h>

#include <atomic>
#include <cstring>
#include <vector>

using namespace rovane;

int main() {
    TMtxForLoop loop;                  // one worker per core
    loop.SetThreadCount(4);
    loop.SetNameOfThreadSet("Solver"); // workers are named Solver0, Solver1, ...
    loop.SetPriority(tpLower);

    // The body scales a vector by the double the context names, and notes
    // the name of every worker that runs it.
    const int32_t n = 10000;
    std::vector<double> y(n, 1.0);
    double scale = 3.0;
    std::vector<void*> context{&scale};
    std::atomic<int> named{0};
    TForLoopRangeEvent body = [&](int32_t lo, int32_t hi, TLoopContext ctx, int32_t worker) {
        const double s = *static_cast<double*>(ctx[0]);
        for (int32_t i = lo; i <= hi; ++i) y[i] *= s;
        char name[16] = {};
        pthread_getname_np(pthread_self(), name, sizeof(name));
        const std::string expect = "Solver" + std::to_string(worker);
        named += expect == name;
    };

    loop.SetMin(0);
    loop.SetMax(n - 1);
    loop.SetOnForLoopRange(body);          // or SetOnForLoopAnn(...), ...
    loop.SetThreadingMode(tmForLoop);      // tmGreedyForLoop, tmWhileLoop
    loop.Start(context, ContextHighAll);
    /* ... other work ... */
    loop.WaitForProcessingFinish(false);

    if (!loop.IsProcessingFinished() || loop.HasRaisedErrors()) return 1;
    for (double v : y)
        if (v != 3.0) return 2;
    if (named != 4) return 3;  // each of the four workers ran its range under its name
    if (loop.Priority() != tpLower) return 4;
    return 0;
}
