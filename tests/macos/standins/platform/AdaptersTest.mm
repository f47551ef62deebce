#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <variant>
#include <vector>

#include "platform/macos/apps/MacApplicationOpener.h"
#include "platform/macos/bridge/ErrorBridge.h"
#include "platform/macos/bridge/FormedURL.h"
#include "platform/macos/bridge/Text.h"
#include "platform/macos/desktop/AccessibilityTimeout.h"
#include "platform/macos/desktop/MacAccessibility.h"
#include "platform/macos/keyboard/MacKeyboardTaps.h"
#include "platform/macos/threads/MacClock.h"
#include "platform/macos/threads/MacRunLoop.h"
#include "platform/macos/threads/MainThread.h"
#include "platform/macos/ui/MacWindows.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/accessibility/FocusQuestion.h"
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

TEST_F(AdaptersTest, ACallThatIsRefusedOnAnotherThreadRemovesTheTap) {
    const auto nothing = [](const KeyEvent&) noexcept { return std::string_view(); };
    std::unique_ptr<KeyboardTap> tap;
    mac_.onMain(withPool([&] { tap = macos::MacKeyboardTaps().create(nothing, {}); }));
    mac_.keyboard().setFreezing(true);
    mac_.trust().setTrusted(false);
    testing::internal::CaptureStderr();
    mac_.inBackground(withPool([] { macos::MacAccessibility().application(1)->attribute("AXWindows"); }));
    mac_.runFor(0.1);
    EXPECT_EQ(mac_.keyboard().taps(), 0U);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("the Accessibility permission was taken away"),
              std::string::npos);
    mac_.onMain(withPool([&] { tap.reset(); }));
}

// Several waits in a row would be too long for the tap, whether the looks begin them or the rules.
TEST_F(AdaptersTest, TheLooksForALostPermissionAndOtherCallsPauseForOneAnother) {
    const ProcessIdentifier chrome = mac_.processes().add({"Google Chrome", "com.google.Chrome"});
    mac_.desktop().bringToFront({chrome, "Google Chrome"});
    mac_.accessibility().setUnresponsive(chrome, true);
    focusIsAskedOfTheFront() = true;
    const auto nothing = [](const KeyEvent&) noexcept { return std::string_view(); };
    std::unique_ptr<KeyboardTap> tap;
    std::unique_ptr<AccessibilityTimeLimit> limit;
    mac_.onMain(withPool([&] {
        limit = macos::MacAccessibility().limitTime();
        tap = macos::MacKeyboardTaps().create(nothing, {});
    }));
    const auto ask = withPool([chrome] { macos::MacAccessibility().application(chrome)->attribute("AXWindows"); });
    const auto uptime = [this] { return mac_.computer().clock.uptime(); };
    const double start = uptime();
    const auto freeAt = [&] {
        double at = 0;
        mac_.onMain([&] { at = uptime() - start; });
        return at;
    };

    mac_.runFor(1.7);
    mac_.onMain(ask);
    // Due at 2, and late.
    mac_.runFor(0.01);
    EXPECT_NEAR(freeAt(), 2.21, 0.02) << "a look right after a call that was not answered waits for nobody";
    // Due at 4, when that is forgotten.
    mac_.runFor(2);
    EXPECT_NEAR(freeAt(), 4.5, 0.02) << "a look waits as long as any call";
    mac_.onMain(ask);
    EXPECT_NEAR(freeAt(), 4.5, 0.02) << "a call right after such a look waits for nobody";

    focusIsAskedOfTheFront() = false;
    mac_.onMain(withPool([&] {
        tap.reset();
        limit.reset();
    }));
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

// A rule forms its addresses. The system would raise an exception for null.
TEST_F(AdaptersTest, WhatIsNoAddressIsNotOpened) {
    const std::string said = macos::platformError(macos::badURLError()).localizedDescription;
    const URL browser{"file:///Applications/Google%20Chrome.app"};
    const URL address{"https://meet.example/"};
    const URL none{"not an address"};
    macos::MacApplicationOpener opener;
    std::vector<std::string> answers;
    const auto note = [&](const ApplicationOpener::Result& result) {
        const auto* error = std::get_if<PlatformError>(&result);
        answers.push_back(error != nullptr ? error->localizedDescription : "opened");
    };
    opener.open({address, none}, browser, true, note);
    opener.open({address}, none, true, note);
    EXPECT_TRUE(answers.empty()) << "it returns at once";
    mac_.runFor(1);
    EXPECT_EQ(answers, (std::vector{said, said}));
}

using AdaptersDeathTest = AdaptersTest;

TEST_F(AdaptersDeathTest, ACallOffTheMainThreadEndsTheProcessAndIsNamed) {
    EXPECT_DEATH(macos::requireMainThread("center"), "^vantrel: center was called off the main thread\n$");
}

// With a Mac of its own: the threads of another are not in the process that dies.
void callWindow(void (*call)(Window&)) {
    virtualmac::VirtualMac mac;
    const MacInUse inUse(mac);
    mac.onMain(withPool([call] {
        WindowDescription description;
        description.contentRect = {{0, 0}, {300, 200}};
        const auto window = macos::MacWindows().makeWindow(description, {});
        call(*window);
    }));
}

TEST(WindowsDeathTest, AnUnknownControlOrViewEndsTheProcessAndIsNamed) {
    EXPECT_DEATH(callWindow([](Window& window) { window.setText("nobody", "x"); }),
                 "vantrel: no control or view is called nobody\n");
    EXPECT_DEATH(callWindow([](Window& window) { window.setViewHidden("nowhere", true); }),
                 "vantrel: no control or view is called nowhere\n");
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
