#include "platform/macos/threads/MacDispatchQueue.h"

#include "platform/macos/threads/DispatchTime.h"

namespace vantrel::macos {

// The pools are for blocks that keep a thread of the global queue for many seconds.

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

}  // namespace vantrel::macos
