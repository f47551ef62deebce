#include "tests/macos/contracts/MacStage.h"

#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>
#include <utility>

namespace vantrel::macos {

void MacStage::serve(const std::function<int()>& tests) {
    NSApplication* application = NSApplication.sharedApplication;
    [application setActivationPolicy:NSApplicationActivationPolicyRegular];
    std::thread([tests] {
        const int result = tests();
        std::fflush(nullptr);
        // Without the destructors of what the first thread and the system's own still use.
        std::_Exit(result);
    }).detach();
    [application run];
    std::abort();
}

void MacStage::post(Block block) {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      @autoreleasepool {
          block();
      }
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
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
