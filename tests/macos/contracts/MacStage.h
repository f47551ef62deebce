#pragma once

#include <functional>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// AppKit needs the process's first thread. So that thread runs the application, and the tests run on a second one.
class MacStage {
  public:
    /// First thread: runs the application until the tests, run on their own thread, have ended. Then the process ends
    /// with their result.
    [[noreturn]] static void serve(const std::function<int()>& tests);

    /// Any thread: runs the block on the first thread as an event would: outside the main queue, and even while an
    /// alert is shown or a menu is tracked.
    static void post(Block block);
    /// The same, and waits until the block has run. Not on the first thread.
    static void perform(const Block& block);
};

}  // namespace vantrel::macos
