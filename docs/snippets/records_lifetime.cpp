// Lifetime of the records: first touch, sharing, Assign, what a change made
// through one record shows in another, and records on a worker thread.
#include <rovane/Rovane.h>

#include <cstdio>
#include <thread>

using namespace rovane;

int main() {
    bool ok = true;

    // An unborn record takes its object from the thread's cache when it is
    // first used, and gives it back when the last record that holds it goes.
    Vector v;
    ok = ok && !v.Born();
    v.Size(3);
    v.SetVal(1.0);
    ok = ok && v.Born();

    // Copying a record shares the object; Assign copies the data.
    Vector shared = v;
    Vector copy;
    copy.Assign(v);
    v += 1.0;                     // in place: seen through every sharer
    ok = ok && shared[0] == 2.0 && copy[0] == 1.0;

    // x = x + y makes a new object for x; the record that shared the old
    // object keeps the old values.
    Vector x = v, y = v;
    Vector before = x;
    x = x + y;
    ok = ok && x[0] == 4.0 && before[0] == 2.0;

    // Conversions to arrays share the block, and check the precision.
    TDoubleArray values(v);
    values[2] = 7.0;
    ok = ok && v[2] == 7.0;
    Vector single(3, false, false);
    bool refused = false;
    try {
        TDoubleArray wrong(single);
    } catch (const ERovaneException& e) {
        refused = std::string(e.what()) == "Vector to TDoubleArray: IsDouble = false!";
    }
    ok = ok && refused;

    // A worker thread that marks itself has a pool of its own: its records
    // come from that pool and go back to it without a lock. Let them go on
    // that thread, before it unmarks itself.
    double result = 0;
    std::thread worker([&] {
        Controller->MarkThread();
        {
            Vector a = {1.0, 2.0, 3.0};
            Vector b = a * a + 1.0;
            result = b[2];
        }
        Controller->UnMarkThread();
    });
    worker.join();
    ok = ok && result == 10.0;

    std::printf("shared %g, copy %g, worker %g\n", shared.Values(0), copy.Values(0), result);
    return ok ? 0 : 1;
}
