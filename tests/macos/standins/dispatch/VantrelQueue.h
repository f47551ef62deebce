#pragma once

#include <dispatch/dispatch.h>

#include "platform/threads/DispatchQueue.h"

/// The main queue, or the global one that serves every quality of service.
@interface VantrelQueue : NSObject <OS_dispatch_queue>
- (instancetype)initAsMain:(bool)isMain;
@property(readonly) bool isMain;
/// The virtual Mac's queue.
- (vantrel::DispatchQueue&)queue;
@end

namespace vantrel::standins {

/// Zero for a past moment.
double secondsUntil(dispatch_time_t moment);

}  // namespace vantrel::standins
