#pragma once

#include <cstddef>

namespace vantrel::virtualmac {

/// What the client has left behind.
struct Leftovers {
    std::size_t timers = 0;
    std::size_t observers = 0;
    /// Window objects, and those on the screen.
    std::size_t windows = 0;
    std::size_t visibleWindows = 0;
    std::size_t overlays = 0;
    std::size_t keyboardTaps = 0;
    std::size_t alerts = 0;
    std::size_t statusItems = 0;
    /// Blocks of the main thread that have not run, including delayed ones.
    std::size_t pendingBlocks = 0;
    /// Threads of the global queue that have not ended, including delayed ones.
    std::size_t workers = 0;
    std::size_t requests = 0;
    std::size_t prompts = 0;

    bool operator==(const Leftovers&) const = default;
};

}  // namespace vantrel::virtualmac
