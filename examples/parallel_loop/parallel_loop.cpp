// The parallel loop: the sum of sin(x)^2 over a long vector, block by block
// on the loop's workers, each with temporaries from its own memory pool.
#include <rovane/Rovane.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

int main() {
    using namespace rovane;
    constexpr int32_t n = 2000000, block = 50000, blocks = n / block;
    TVec x;
    x.Size(n);
    for (int32_t i = 0; i < n; ++i) x.Values[i] = 1e-5 * i;

    TMtxForLoop loop;  // one worker per core
    std::vector<double> partial(static_cast<size_t>(loop.ThreadCount()), 0.0);

    // Index bodies run greedily: each worker takes the next block as it
    // becomes free. A body works on its own worker's partial sum, so the
    // bodies need no lock.
    const bool failed = DoForLoop(
        0, blocks - 1,
        [&](int32_t b, TLoopContext, int32_t worker) {
            TVec* t = nullptr;
            CreateIt(t);  // from this worker's pool, without a lock
            t->Size(block);
            t->Sin(x, b * block, 0, block);
            t->Sqr();
            double s = 0;
            for (int32_t i = 0; i < block; ++i) s += t->Values[i];
            partial[static_cast<size_t>(worker)] += s;
            FreeIt(t);  // back to the same pool
        },
        &loop);
    if (failed) {
        std::printf("A body failed: %s\n", loop.ErrorMessages().c_str());
        return 1;
    }
    double parallel = 0;
    for (double s : partial) parallel += s;

    double serial = 0;
    for (int32_t i = 0; i < n; ++i) serial += std::sin(x.Values[i]) * std::sin(x.Values[i]);

    std::printf("%d workers, %d blocks\nsum of sin(x)^2: loop %.10g, serial %.10g\n", loop.ThreadCount(), blocks,
                parallel, serial);
    return std::abs(parallel - serial) <= 1e-9 * serial ? 0 : 1;
}
