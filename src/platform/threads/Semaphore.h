#pragma once

namespace vantrel {

/// A counting semaphore (dispatch_semaphore_t). Any thread.
class Semaphore {
  public:
    virtual ~Semaphore() = default;

    virtual void signal() = 0;

    /// Blocks the calling thread until signalled or until `timeoutSeconds` of uptime have passed. False on timeout.
    virtual bool wait(double timeoutSeconds) = 0;
};

}  // namespace vantrel
