#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#include "platform/threads/Block.h"
#include "platform/threads/Observation.h"

namespace vantrel::macos {

/// An observer of a notification center, called on the main operation queue. Main thread.
class NotificationObservation final : public Observation {
  public:
    NotificationObservation(NSNotificationCenter* center, NSNotificationName name, Block block);
    ~NotificationObservation() override;

  private:
    NSNotificationCenter* const center_;
    // Blocks already queued hold it weakly.
    const std::shared_ptr<const Block> block_;
    const id<NSObject> token_;
};

}  // namespace vantrel::macos
