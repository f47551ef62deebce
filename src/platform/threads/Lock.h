#pragma once

#include <mutex>

namespace vantrel {

/// The mutex of the rules (NSLock). It guards state for a few instructions and is never held across a wait. Each thread
/// counts the locks it holds, so that a platform with its own time can refuse a wait under a lock.
class Lock {
  public:
    void lock() {
        mutex_.lock();
        ++held_;
    }

    void unlock() {
        --held_;
        mutex_.unlock();
    }

    /// The number of locks that the calling thread holds.
    static int heldByThisThread() { return held_; }

  private:
    std::mutex mutex_;
    inline static thread_local int held_ = 0;
};

}  // namespace vantrel
