#include "platform/macos/bridge/NotificationObservation.h"

#include <utility>

namespace vantrel::macos {

namespace {

id<NSObject> observed(NSNotificationCenter* center, NSNotificationName name,
                      const std::shared_ptr<const Block>& block) {
    const std::weak_ptr<const Block> weak = block;
    return [center addObserverForName:name
                               object:nil
                                queue:NSOperationQueue.mainQueue
                           usingBlock:^(NSNotification*) {
                             if (const auto alive = weak.lock()) (*alive)();
                           }];
}

}  // namespace

NotificationObservation::NotificationObservation(NSNotificationCenter* center, NSNotificationName name, Block block)
    : center_(center),
      block_(std::make_shared<const Block>(std::move(block))),
      token_(observed(center, name, block_)) {}

NotificationObservation::~NotificationObservation() {
    [center_ removeObserver:token_];
}

}  // namespace vantrel::macos
