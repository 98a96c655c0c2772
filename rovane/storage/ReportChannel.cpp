// The report channel: one handler behind a mutex.
#include "rovane/storage/ReportChannel.h"

#include <cstdio>
#include <mutex>

namespace rovane {

namespace {
std::mutex& ReportLock() {
    static std::mutex m;
    return m;
}
TReportHandler& Handler() {
    static TReportHandler h;
    return h;
}
}  // namespace

void ReportText(const std::string& text) noexcept {
    try {
        std::lock_guard<std::mutex> lock(ReportLock());
        if (Handler())
            Handler()(text);
        else
            std::fprintf(stderr, "Rovane: %s\n", text.c_str());
    } catch (...) {
        // A report must never turn into a failure of its own.
    }
}

TReportHandler SetReportHandler(TReportHandler handler) {
    std::lock_guard<std::mutex> lock(ReportLock());
    TReportHandler old = std::move(Handler());
    Handler() = std::move(handler);
    return old;
}

}  // namespace rovane
