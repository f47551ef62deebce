#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/dispatch/VantrelQueue.h"
#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

@implementation VantrelQueue

@synthesize isMain = _isMain;

- (instancetype)initAsMain:(bool)isMain {
    self = [super init];
    if (self != nil) _isMain = isMain;
    return self;
}

- (vantrel::DispatchQueue&)queue {
    vantrel::Dispatch& dispatch = mac().parts().dispatch;
    return _isMain ? dispatch.mainQueue() : dispatch.userInitiatedQueue();
}

@end

namespace {

constexpr double nanosecondsPerSecond = 1e9;

dispatch_time_t now() {
    return static_cast<dispatch_time_t>(mac().engine().scheduler.now());
}

}  // namespace

namespace vantrel::standins {

double secondsUntil(dispatch_time_t moment) {
    const dispatch_time_t start = now();
    return moment <= start ? 0 : static_cast<double>(moment - start) / nanosecondsPerSecond;
}

}  // namespace vantrel::standins

extern "C" {

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds) {
    if (when == DISPATCH_TIME_FOREVER) return when;
    // Never zero, which would again mean now.
    return (when == DISPATCH_TIME_NOW ? now() : when) + static_cast<dispatch_time_t>(nanoseconds);
}

dispatch_queue_t dispatch_get_main_queue() {
    static VantrelQueue* const queue = singleton([[VantrelQueue alloc] initAsMain:true]);
    return queue;
}

dispatch_queue_t dispatch_get_global_queue(intptr_t, uintptr_t) {
    static VantrelQueue* const queue = singleton([[VantrelQueue alloc] initAsMain:false]);
    return queue;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    [(VantrelQueue*)queue queue].async(withPool(block));
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block) {
    if (when == DISPATCH_TIME_FOREVER) return;
    [(VantrelQueue*)queue queue].asyncAfter(secondsUntil(when), withPool(block));
}

void dispatch_assert_queue(dispatch_queue_t queue) {
    if (((VantrelQueue*)queue).isMain != mac().engine().isMainThread()) fatal("a block on the wrong queue");
}

}  // extern "C"
