#include "platform/macos/threads/MacRunLoop.h"

#include <utility>

#include "platform/macos/threads/MainThread.h"
#include "platform/macos/threads/MainThreadWatch.h"

namespace vantrel::macos {

namespace {

id<NSObject> begunActivity() {
    @autoreleasepool {
        return [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                            reason:@"Sessione protetta"];
    }
}

}  // namespace

TimelyActivity::TimelyActivity() : token_(begunActivity()) {
    MainThreadWatch::begin();
}

TimelyActivity::~TimelyActivity() {
    MainThreadWatch::end();
    @autoreleasepool {
        [NSProcessInfo.processInfo endActivity:token_];
    }
}

namespace {

using Validity = std::shared_ptr<std::atomic<bool>>;

// Repeating timers last as long as a lockdown, while the client's own window is hidden. So the activity is held exactly
// when it is needed.
NSTimer* scheduled(double intervalSeconds, bool repeats, Block block, const Validity& validity) {
    // A copy: a block would keep the reference.
    const Validity valid = validity;  // NOLINT(performance-unnecessary-copy-initialization)
    const auto shared = std::make_shared<const Block>(std::move(block));
    const auto activity = repeats ? std::make_shared<const TimelyActivity>() : nullptr;
    return [NSTimer scheduledTimerWithTimeInterval:intervalSeconds
                                           repeats:repeats
                                             block:^(NSTimer*) {
                                               (void)activity;
                                               // The block may destroy its own timer, and this block with it.
                                               // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
                                               const auto running = shared;
                                               @autoreleasepool {
                                                   if (*valid) (*running)();
                                               }
                                             }];
}

}  // namespace

MacTimer::MacTimer(double intervalSeconds, bool repeats, Block block)
    : valid_(std::make_shared<std::atomic<bool>>(true)),
      timer_(scheduled(intervalSeconds, repeats, std::move(block), valid_)) {}

MacTimer::~MacTimer() {
    invalidate();
}

void MacTimer::invalidate() {
    if (!valid_->exchange(false)) return;
    NSTimer* timer = timer_;
    if (NSThread.isMainThread) {
        [timer invalidate];
    } else {
        // Only the thread of its run loop can remove it. Not by the main queue, which waits under an alert that one of
        // its blocks has opened.
        CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
          [timer invalidate];
        });
        CFRunLoopWakeUp(CFRunLoopGetMain());
    }
}

std::unique_ptr<Timer> MacRunLoop::scheduledTimer(double intervalSeconds, bool repeats, Block block) {
    requireMainThread("scheduledTimer");
    return std::make_unique<MacTimer>(intervalSeconds, repeats, std::move(block));
}

}  // namespace vantrel::macos
