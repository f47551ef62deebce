#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <atomic>
#include <memory>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/dispatch/VantrelQueue.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

@interface VantrelGroup : NSObject <OS_dispatch_group>
@end

@implementation VantrelGroup {
  @public
    std::shared_ptr<vantrel::DispatchGroup> _group;
    std::atomic<long> _underWay;
}

- (void)dealloc {
    if (_underWay != 0 && processGoesOn()) fatal("a dispatch group ends with work under way");
}

@end

@interface VantrelSemaphore : NSObject <OS_dispatch_semaphore>
@end

@implementation VantrelSemaphore {
  @public
    std::shared_ptr<vantrel::Semaphore> _semaphore;
    std::atomic<long> _value;
    long _original;
}

- (void)dealloc {
    if (_value < _original && processGoesOn()) fatal("a dispatch semaphore ends in use");
}

@end

extern "C" {

dispatch_group_t dispatch_group_create() {
    VantrelGroup* group = [[VantrelGroup alloc] init];
    group->_group = mac().parts().dispatch.makeGroup();
    return group;
}

void dispatch_group_enter(dispatch_group_t group) {
    ++((VantrelGroup*)group)->_underWay;
    ((VantrelGroup*)group)->_group->enter();
}

void dispatch_group_leave(dispatch_group_t group) {
    if (((VantrelGroup*)group)->_underWay-- == 0) fatal("dispatch_group_leave without dispatch_group_enter");
    ((VantrelGroup*)group)->_group->leave();
}

void dispatch_group_notify(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block) {
    ((VantrelGroup*)group)->_group->notify([(VantrelQueue*)queue queue], withPool(block));
}

dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) {
    if (value < 0) return nil;
    VantrelSemaphore* semaphore = [[VantrelSemaphore alloc] init];
    semaphore->_semaphore = mac().parts().dispatch.makeSemaphore(static_cast<int>(value));
    semaphore->_value = semaphore->_original = value;
    return semaphore;
}

intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
    ++((VantrelSemaphore*)semaphore)->_value;
    ((VantrelSemaphore*)semaphore)->_semaphore->signal();
    return 0;
}

intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout) {
    constexpr double forever = 1e18;
    constexpr intptr_t timedOut = 49;
    const double seconds = timeout == DISPATCH_TIME_FOREVER ? forever : secondsUntil(timeout);
    if (!((VantrelSemaphore*)semaphore)->_semaphore->wait(seconds)) return timedOut;
    --((VantrelSemaphore*)semaphore)->_value;
    return 0;
}

}  // extern "C"
