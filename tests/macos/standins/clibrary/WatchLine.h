#pragma once

#include <string>

namespace vantrel::standins {

/// What a test lets the client do beside its process. As a rule it gets no watcher.
struct WatchLine {
    bool hasWatcher = false;
    /// What the client has said to it.
    std::string heard;
};

/// Main thread.
WatchLine& watchLine();

}  // namespace vantrel::standins
