#pragma once

#include <mutex>

namespace vantrel {

/// The mutex of the rules (NSLock). It guards state for a few instructions and is never held across a wait: each thread
/// counts the locks it holds, so that a platform whose time is its own can refuse a wait made under one.
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

    /// How many locks the calling thread holds.
    static int heldByThisThread() { return held_; }

  private:
    std::mutex mutex_;
    inline static thread_local int held_ = 0;
};

}  // namespace vantrel
