#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel::macos {

/// An observer of a notification center, told on the main operation queue. Main thread.
class NotificationObservation final : public Observation {
  public:
    NotificationObservation(NSNotificationCenter* center, NSNotificationName name, Block block);
    ~NotificationObservation() override;

  private:
    NSNotificationCenter* const center_;
    // What is already queued holds the block weakly.
    const std::shared_ptr<const Block> block_;
    const id<NSObject> token_;
};

}  // namespace vantrel::macos
