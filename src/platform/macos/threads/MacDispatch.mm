#include "platform/macos/threads/MacDispatch.h"

#include <cmath>
#include <cstdint>

namespace vantrel::macos {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr double longestSeconds = 1e9;

}  // namespace

dispatch_time_t timeFromNow(double seconds) {
    if (!(seconds > 0)) return dispatch_time(DISPATCH_TIME_NOW, 0);
    if (seconds >= longestSeconds) return DISPATCH_TIME_FOREVER;
    return dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(std::ceil(seconds * nanosecondsPerSecond)));
}

// The autorelease pools are for blocks that keep a thread of the global queue for many seconds.

void MacDispatchQueue::async(Block block) {
    dispatch_async(queue_, ^{
      @autoreleasepool {
          block();
      }
    });
}

void MacDispatchQueue::asyncAfter(double seconds, Block block) {
    dispatch_after(timeFromNow(seconds), queue_, ^{
      @autoreleasepool {
          block();
      }
    });
}

void MacDispatchGroup::enter() {
    dispatch_group_enter(group_);
}

void MacDispatchGroup::leave() {
    dispatch_group_leave(group_);
}

void MacDispatchGroup::notify(DispatchQueue& queue, Block block) {
    dispatch_group_notify(group_, static_cast<MacDispatchQueue&>(queue).get(), ^{
      @autoreleasepool {
          block();
      }
    });
}

// The system ends the process if a semaphore is destroyed with a lower value than it was created with. Created with
// zero, that cannot happen.
MacSemaphore::MacSemaphore(int value) : semaphore_(dispatch_semaphore_create(0)) {
    for (int count = 0; count < value; ++count) signal();
}

void MacSemaphore::signal() {
    dispatch_semaphore_signal(semaphore_);
}

bool MacSemaphore::wait(double timeoutSeconds) {
    return dispatch_semaphore_wait(semaphore_, timeFromNow(timeoutSeconds)) == 0;
}

MacDispatch::MacDispatch()
    : mainQueue_(dispatch_get_main_queue()),
      userInitiatedQueue_(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)) {}

DispatchQueue& MacDispatch::mainQueue() {
    return mainQueue_;
}

DispatchQueue& MacDispatch::userInitiatedQueue() {
    return userInitiatedQueue_;
}

std::shared_ptr<Semaphore> MacDispatch::makeSemaphore(int value) {
    return std::make_shared<MacSemaphore>(value);
}

std::shared_ptr<DispatchGroup> MacDispatch::makeGroup() {
    return std::make_shared<MacDispatchGroup>();
}

}  // namespace vantrel::macos
