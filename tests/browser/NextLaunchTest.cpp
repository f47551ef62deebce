#include <gmock/gmock.h>

#include <utility>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using Operation = virtualmac::AccessibilityFaults::Operation;

/// A launcher that has already had a session when it is launched again.
class NextLaunch : public BrowserTest {
  protected:
    /// The first launch detects that browser. The next one detects none, so that nothing replaces what it forgets.
    void makeForOneLaunchOf(SupportedBrowser browser) {
        make(false, [this, browser](const FileManager&) -> std::optional<SupportedBrowser> {
            detectedBefore_ = launcher().detectedBrowser();
            if (std::exchange(hasLaunched_, true)) return std::nullopt;
            return browser;
        });
    }
    /// What the launcher knew just before it looked for a browser.
    std::optional<SupportedBrowser> detectedBefore() const { return detectedBefore_; }
    void launchAgain() {
        launch();
        mac().runFor(0);
        ASSERT_EQ(logLines().back(), "[BROWSER] ❌ Nessun browser trovato");
    }

  private:
    bool hasLaunched_ = false;
    std::optional<SupportedBrowser> detectedBefore_;
};

TEST_F(NextLaunch, ForgetsTheProcessOfTheSessionBefore) {
    installChrome();
    makeForOneLaunchOf(SupportedBrowser::chrome);
    launch();
    mac().runFor(10);
    ASSERT_TRUE(launcher().browserPID());
    ASSERT_NE(launcher().browserApp(), nullptr);
    launchAgain();
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
    EXPECT_EQ(launcher().browserApp(), nullptr);
}

TEST_F(NextLaunch, ForgetsThatTheBrowserRanAlready) {
    installChrome();
    startChrome();
    makeForOneLaunchOf(SupportedBrowser::chrome);
    launch();
    mac().runFor(10);
    ASSERT_TRUE(launcher().wasPreExisting());
    launchAgain();
    EXPECT_FALSE(launcher().wasPreExisting());
}

TEST_F(NextLaunch, ForgetsTheConfirmationAndTheAttempts) {
    installChrome();
    makeForOneLaunchOf(SupportedBrowser::chrome);
    launch();
    mac().runFor(10);
    ASSERT_TRUE(launcher().isConfirmedFullscreen());
    ASSERT_EQ(launcher().fullscreenRetryCount(), 1);
    launchAgain();
    EXPECT_FALSE(launcher().isConfirmedFullscreen());
    EXPECT_EQ(launcher().fullscreenRetryCount(), 0);
}

TEST_F(NextLaunch, DropsThePendingRetry) {
    installChrome();
    mac().accessibility().faults().fail(Operation::write, "AXFullScreen", accessibilityFailure);
    makeForOneLaunchOf(SupportedBrowser::chrome);
    launch();
    mac().runFor(4);
    ASSERT_EQ(mac().leftovers().timers, 1u);
    launchAgain();
    EXPECT_EQ(mac().leftovers().timers, 0u);
    mac().runFor(30);
    EXPECT_EQ(lines("[FULLSCREEN] Tentativo"), std::vector<std::string>{"[FULLSCREEN] Tentativo 1/8..."});
}

TEST_F(NextLaunch, ForgetsTheWindow) {
    makeForOneLaunchOf(SupportedBrowser::safari);
    launch();
    mac().runFor(10);
    ASSERT_TRUE(launcher().windowNumber());
    launchAgain();
    EXPECT_EQ(launcher().windowNumber(), std::nullopt);
}

TEST_F(NextLaunch, ForgetsTheBrowserBeforeItLooksForOne) {
    installChrome();
    makeForOneLaunchOf(SupportedBrowser::chrome);
    launch();
    mac().runFor(10);
    ASSERT_EQ(launcher().detectedBrowser(), SupportedBrowser::chrome);
    launchAgain();
    EXPECT_EQ(detectedBefore(), std::nullopt);
}

}  // namespace
}  // namespace vantrel
