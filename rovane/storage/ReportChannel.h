// The library's report channel: where texts go that cannot be raised, such as
// the misuse found while an object is being destroyed. By default each text
// is written to the standard error stream as one line; an application may
// install its own handler (a logger, a test collector).
#pragma once

#include <functional>
#include <string>

#include "rovane/scalars/Export.h"

namespace rovane {

using TReportHandler = std::function<void(const std::string& text)>;

// Sends one text to the installed handler. Never throws: a handler that
// raises is ignored. Safe to call from any thread.
ROVANE_API void ReportText(const std::string& text) noexcept;

// Installs a handler and returns the previous one; an empty handler restores
// the default (standard error).
ROVANE_API TReportHandler SetReportHandler(TReportHandler handler);

}  // namespace rovane
