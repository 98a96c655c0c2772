// Temporaries from the object cache, and worker threads with pools of their own.
#include <rovane/Rovane.h>

#include <thread>
#include <vector>

using namespace rovane;

// A temporary from the calling thread's pool: CreateIt takes it, FreeIt gives
// it back, also when an exception passes.
double SumOfSquares(const TVec& x) {
    TVec* t;
    CreateIt(t);
    double s = 0;
    try {
        t->Sqr(x);
        for (int32_t i = 0; i < t->Length(); ++i) s += t->Values[i];
    } catch (...) {
        FreeIt(t);
        throw;
    }
    FreeIt(t);
    return s;
}

int main() {
    std::vector<double> results(4);
    std::vector<std::thread> workers;
    for (int k = 0; k < 4; ++k)
        workers.emplace_back([k, &results] {
            // A marked thread takes temporaries from its own pool, without a lock.
            const bool marked = Controller->MarkThread();
            TVec x;                                 // each object is used by one thread at a time
            x.SetIt({1.0 * k, 2.0 * k});
            results[k] = SumOfSquares(x);
            if (marked) Controller->UnMarkThread();  // all its temporaries are back
        });
    for (auto& w : workers) w.join();

    for (int k = 0; k < 4; ++k)
        if (results[k] != 5.0 * k * k) return 1;
    return 0;
}
