#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/virtual/VirtualMac.h"
#include "tests/macos/standins/MacInUse.h"

namespace vantrel::standins {
namespace {

/// Counts the lines that it reaches.
struct Witness {
    explicit Witness(int& count) : count_(count) {}
    ~Witness() { ++count_; }

    int& count_;
};

TEST(Termination, NoLineOfTheMainThreadRunsAfterTerminate) {
    // The main thread's stack refers to it for ever.
    static auto* const mac = new virtualmac::VirtualMac;
    static int reached = 0;
    static int worked = 0;
    {
        const MacInUse inUse(*mac);
        mac->application().exitWhenTerminated();
        mac->launch([](const Computer& computer) {
            const Witness frame(reached);
            const auto timer = computer.mainRunLoop.scheduledTimer(1, true, [] { ++reached; });
            computer.dispatch.mainQueue().async([&computer] {
                const Witness ofBlock(reached);
                computer.dispatch.userInitiatedQueue().asyncAfter(2, [] { ++worked; });
                dispatch_async(dispatch_get_main_queue(), ^{
                  ++reached;
                });
                [NSApp terminate:nil];
                ++reached;
            });
            [NSApplication.sharedApplication run];
            ++reached;
        });
        mac->runFor(60);
        EXPECT_FALSE(mac->isRunning());
        EXPECT_TRUE(mac->hasExited());
        EXPECT_EQ(mac->leftovers(), virtualmac::Leftovers{});
        EXPECT_TRUE(mac->end());
    }
    EXPECT_EQ(reached, 0);
    EXPECT_EQ(worked, 1) << "other threads go on";
}

}  // namespace
}  // namespace vantrel::standins
