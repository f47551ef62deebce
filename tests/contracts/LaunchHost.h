#pragma once

#include <functional>

#include "platform/Computer.h"

namespace vantrel::contracts {

/// A computer under test that the client can be launched on, to its end. Test thread.
class LaunchHost {
  public:
    virtual ~LaunchHost() = default;

    /// Runs the function on the main thread as the process's main. Returns without waiting.
    virtual void launch(std::function<void(Computer&)> main) = 0;
    /// Whether the process has ended.
    virtual bool hasEnded() = 0;
};

}  // namespace vantrel::contracts
