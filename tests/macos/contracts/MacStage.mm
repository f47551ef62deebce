#include "tests/macos/contracts/MacStage.h"

#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

namespace vantrel::macos {

namespace {

std::mutex waitingMutex;
std::deque<Block> waiting;

void performOne();

void wakeForOne() {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      performOne();
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

// A run loop takes all of its blocks at once and runs them in a row. If the first one opened an alert, the others would
// wait for its end. So each block passes the next one to the run loop.
void performOne() {
    Block block;
    {
        const std::lock_guard lock(waitingMutex);
        if (waiting.empty()) return;
        block = std::move(waiting.front());
        waiting.pop_front();
        if (!waiting.empty()) wakeForOne();
    }
    @autoreleasepool {
        block();
    }
}

}  // namespace

void MacStage::serve(const std::function<int()>& tests) {
    NSApplication* application = NSApplication.sharedApplication;
    [application setActivationPolicy:NSApplicationActivationPolicyRegular];
    std::thread([tests] {
        const int result = tests();
        std::fflush(nullptr);
        // Without destructors: the first thread and the system's threads still use these objects.
        std::_Exit(result);
    }).detach();
    [application run];
    std::abort();
}

void MacStage::post(Block block) {
    {
        const std::lock_guard lock(waitingMutex);
        waiting.push_back(std::move(block));
    }
    wakeForOne();
}

void MacStage::perform(const Block& block) {
    std::promise<void> done;
    post([&] {
        block();
        done.set_value();
    });
    done.get_future().get();
}

}  // namespace vantrel::macos
