#include "platform/macos/threads/MacDispatchGroup.h"

#include "platform/macos/threads/MacDispatchQueue.h"

namespace vantrel::macos {

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

}  // namespace vantrel::macos
