#import <Foundation/Foundation.h>

#include <memory>

#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/Classes.h"
#include "tests/macos/standins/runtime/Singletons.h"

using namespace vantrel::standins;

NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

/// The run loop owns the timer, and the timer its block, until it is invalidated or, without repeats, has fired.
@implementation NSTimer {
    std::unique_ptr<vantrel::Timer> _timer;
    void (^_block)(NSTimer*);
    NSTimeInterval _interval;
    bool _repeats;
    vantrel::virtualmac::TimerTable::State _state;
}

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval repeats:(BOOL)repeats block:(void (^)(NSTimer*))block {
    NSTimer* timer = [[NSTimer alloc] init];
    timer->_block = block;
    timer->_interval = interval;
    timer->_repeats = repeats;
    return timer;
}

// Its time runs from its creation, a moment before.
- (void)vantrel_fireInEveryMode {
    NSTimer* const timer = self;
    const bool ends = !_repeats;
    _state = mac().engine().mainLoop.addTimerInEveryMode(
        _interval, _repeats, [timer, ends] { withPool([timer, ends] { [timer vantrel_fireAndEnd:ends]; })(); });
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
    if (self_->_state) mac().engine().mainLoop.invalidate(*self_->_state);
    self_->_state.reset();
    self_->_block = nil;
}

@end

@interface NSTimer (VantrelEveryMode)
- (void)vantrel_fireInEveryMode;
@end

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop {
    static NSRunLoop* const loop = singleton([[NSRunLoop alloc] init]);
    return loop;
}

// In the default mode only, it would not fire under an alert.
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
    requireMain("addTimer:forMode:");
    if (![mode isEqualToString:NSRunLoopCommonModes]) fatal("a timer in a mode that is not stood in for");
    [timer vantrel_fireInEveryMode];
}

@end
