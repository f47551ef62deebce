#import <Foundation/Foundation.h>

#include <memory>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"

using namespace vantrel::standins;

/// The run loop owns the timer, and the timer its block, until it is invalidated or, without repeats, has fired.
@implementation NSTimer {
    std::unique_ptr<vantrel::Timer> _timer;
    void (^_block)(NSTimer*);
}

+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer*))block {
    // Nobody runs the run loop of a queue's thread.
    requireMain("scheduledTimerWithTimeInterval:");
    NSTimer* timer = [[NSTimer alloc] init];
    timer->_block = block;
    timer->_timer = mac().parts().mainRunLoop.scheduledTimer(
        interval, repeats, [timer, repeats] { withPool([timer, repeats] { [timer vantrel_fireAndEnd:!repeats]; })(); });
    return timer;
}

// Apple does not say that a block which invalidates its timer is kept until it returns. So it is not.
- (void)vantrel_fireAndEnd:(BOOL)ends {
    __unsafe_unretained void (^const block)(NSTimer*) = _block;
    if (block == nil) return;
    block(self);
    if (ends) _block = nil;
}

- (BOOL)isValid {
    return _block != nil;
}

- (void)invalidate {
    requireMain("-[NSTimer invalidate]");
    // The run loop may own the last reference to it.
    NSTimer* const self_ = self;
    self_->_timer.reset();
    self_->_block = nil;
}

@end
