#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <thread>

#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/desktop/AccessibilityTimeout.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MacRunLoop.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/foundation/Text.h"
#include "tests/macos/standins/runtime/AutoreleasePools.h"
#include "tests/macos/standins/runtime/Objects.h"

namespace vantrel::standins {
namespace {

/// Parts of the macOS platform that a contract cannot see into.
class AdaptersTest : public testing::Test {
  protected:
    virtualmac::VirtualMac mac_;
    MacInUse inUse_{mac_};
};

TEST_F(AdaptersTest, UptimeIsTheVirtualMacsToTheLastBit) {
    const macos::MacClock clock;
    // Steps that are no multiple of a millisecond. A deadline of exactly two seconds must not depend on the way.
    for (int step = 0; step < 2000; ++step) {
        mac_.runFor(0.000'123'457 * (step % 17 + 1));
        ASSERT_EQ(clock.uptime(), mac_.computer().clock.uptime());
    }
}

TEST_F(AdaptersTest, AnActivityNeedsNoPoolOfItsThread) {
    const long strays = autoreleasedWithoutPool();
    const auto count = [] { return livingObjects()["VantrelActivity"]; };
    const long before = count();
    long during = 0;
    std::thread([&] {
        const macos::TimelyActivity activity;
        during = count();
    }).join();
    EXPECT_EQ(during, before + 1);
    EXPECT_EQ(count(), before);
    EXPECT_EQ(autoreleasedWithoutPool(), strays);
}

TEST_F(AdaptersTest, AnErrorHasAText) {
    @autoreleasepool {
        EXPECT_FALSE(macos::platformError(static_cast<NSError*>(nil)).localizedDescription.empty());
        EXPECT_EQ(macos::platformError(macos::badURLError()).localizedDescription,
                  macos::bytesOf(macos::badURLError().localizedDescription));
    }
}

TEST_F(AdaptersTest, AnExceptionHasATextEvenWithoutAReason) {
    @autoreleasepool {
        @try {
            raise(@"NSInvalidArgumentException", @"no path");
        } @catch (NSException* exception) {
            EXPECT_EQ(macos::platformError(exception).localizedDescription, "no path");
        } @
        try {
            raise(@"NSInvalidArgumentException", nil);
        } @catch (NSException* exception) {
            EXPECT_EQ(macos::platformError(exception).localizedDescription, "NSInvalidArgumentException");
        }
    }
}

constexpr ProcessIdentifier silent = 4711;

// Runs after the destructors of all statics that were made after it was registered.
void askAtTheVeryEnd() {
    std::_Exit(macos::AccessibilityTimeout::refuses(silent, 1) ? 0 : 1);
}

// A browser may be asked on a background thread while the process exits.
TEST_F(AdaptersTest, AnApplicationThatDoesNotAnswerIsRememberedUntilTheProcessIsGone) {
    EXPECT_EXIT(
        {
            std::atexit(askAtTheVeryEnd);
            // As a keyboard tap that still stands.
            static const auto& timeout = *new macos::AccessibilityTimeout;
            (void)timeout;
            macos::AccessibilityTimeout::noteFailure(silent, limitedAccessibilityTimeout, 0.5);
            std::exit(2);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vantrel::standins
