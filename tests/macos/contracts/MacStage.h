#pragma once

#include <functional>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// AppKit insists on the process's first thread. That thread runs the application here, for tests that live on a second
/// one.
class MacStage {
  public:
    /// First thread: runs the application until the tests, run on a thread of their own, have ended; then the process
    /// ends with their result.
    [[noreturn]] static void serve(const std::function<int()>& tests);

    /// Any thread: runs the block on the first thread as an event would, also while an alert is up or a menu is
    /// tracked, and outside of the main queue.
    static void post(Block block);
    /// The same, and waits until the block has run. Not on the first thread.
    static void perform(const Block& block);
};

}  // namespace vantrel::macos
