#pragma once

namespace vantrel {

/// Facts about the calling thread (NSThread).
class Threads {
  public:
    virtual ~Threads() = default;

    virtual bool isMainThread() const = 0;

    /// +[NSThread sleepForTimeInterval:]: blocks the calling thread for `seconds` of uptime. On the main thread this
    /// stops everything else there.
    virtual void sleep(double seconds) = 0;
};

}  // namespace vantrel
