// A while-loop on a loop object of its own, and a for-loop whose body takes
// its temporaries from the worker's memory pool, with one partial sum per
// worker.
#include <rovane/Rovane.h>

#include <cmath>
#include <vector>

using namespace rovane;

int main() {
    TMtxForLoop loop;
    loop.SetThreadCount(3);

    // Every worker repeats its body until it sets Stop: five rounds each.
    std::vector<int> rounds(loop.ThreadCount(), 0);
    DoWhileLoop([&](bool& stop, TLoopContext, int32_t worker) {
        stop = ++rounds[worker] == 5;
    }, &loop);
    for (int r : rounds)
        if (r != 5) return 1;

    // The sum of sin(x)^2 over a vector of 64 blocks.
    const int32_t blocks = 64, block = 1000;
    TVec x;
    x.Size(blocks * block);
    for (int32_t i = 0; i < x.Length(); ++i) x.Values[i] = 1e-4 * i;
    std::vector<double> partial(loop.ThreadCount(), 0.0);
    DoForLoop(0, blocks - 1, [&](int32_t b, TLoopContext, int32_t worker) {
        TVec* t = nullptr;
        CreateIt(t);                   // this worker's pool, no lock
        t->Size(block);
        t->Sin(x, b * block, 0, block);
        t->Sqr();
        for (int32_t i = 0; i < block; ++i) partial[worker] += t->Values[i];
        FreeIt(t);                     // back to the same pool
    }, &loop);

    double sum = 0, serial = 0;
    for (double p : partial) sum += p;
    for (int32_t i = 0; i < x.Length(); ++i) serial += std::sin(x.Values[i]) * std::sin(x.Values[i]);
    if (std::fabs(sum - serial) > 1e-9 * serial) return 2;
    if (loop.HasRaisedErrors()) return 3;  // every temporary went back in time
    return 0;
}
