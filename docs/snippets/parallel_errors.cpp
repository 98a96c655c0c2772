// An exception in a body ends that worker's part of the job; the loop
// reports it, and keeps the first message of every worker.
#include <rovane/Rovane.h>

#include <cstdio>
#include <string>

using namespace rovane;

int main() {
    TMtxForLoop loop;
    loop.SetThreadCount(2);
    // Worker 0 gets index 0, worker 1 index 1, which has no data.
    auto body = [](int32_t lo, int32_t, TLoopContext, int32_t) {
        if (lo == 1) ERaise("no data");
    };

    if (DoForLoop(0, 1, body, &loop))
        std::puts(loop.ErrorMessages().c_str());   // e.g. "; no data"

    if (!loop.HasRaisedErrors() || loop.ErrorMessages() != "; no data") return 1;
    if (loop.GetErrorMessage(0) != "" || loop.GetErrorMessage(1) != "no data") return 2;
    try {
        loop.GetErrorMessage(2);
        return 3;
    } catch (const std::exception& e) {
        if (std::string(e.what()) != "TMtxForLoop.GetErrorMessage: ThreadIndex > ThreadCount !") return 4;
    }

    // Four workers without an error.
    loop.SetThreadCount(4);
    if (DoForLoop(0, 9, [](int32_t, int32_t, TLoopContext, int32_t) {}, &loop)) return 5;
    if (loop.HasRaisedErrors() || loop.ErrorMessages() != "; ; ; ") return 6;

    // What is not a std::exception.
    if (!DoForLoop(0, 0, [](int32_t, TLoopContext, int32_t) { throw 7; }, &loop)) return 7;
    if (loop.ErrorMessages().find("Unknown exception") == std::string::npos) return 8;
    return 0;
}
