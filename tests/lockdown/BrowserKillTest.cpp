#include <gmock/gmock.h>

#include "lockdown/BrowserKill.h"
#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BrowserKillTest : public BrowserTest {
  protected:
    void openChrome(const std::function<void(virtualmac::InstalledApplication&)>& change = {}) {
        installChrome(change);
        launch();
        mac().runFor(6);
        process_ = *launcher().browserPID();
        forgetEvents();
    }
    void kill() {
        begin_ = mac().now();
        mac().inBackground([this, weak = std::weak_ptr(sharedLauncher())] {
            auto& mac = computer();
            BrowserKill(mac.runningApplications, mac.processLauncher, mac.threads, mac.clock, mac.log).run(weak);
        });
        mac().runFor(4);
    }
    std::string line(const std::string& what) {
        return "[MONITOR] Kill browser PID " + std::to_string(process_) + ": " + what;
    }
    std::string confirmed() {
        return "[MONITOR] Kill browser: processo " + std::to_string(process_) + " confermato terminato";
    }
    /// Seconds from its start to its last line.
    double duration() { return timeOf(confirmed()) - begin_; }
    ProcessIdentifier process() const { return process_; }

  private:
    ProcessIdentifier process_ = 0;
    double begin_ = 0;
};

TEST_F(BrowserKillTest, ForcesTheBrowserToEnd) {
    openChrome();
    kill();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre(line("✅ OK"), confirmed()));
    EXPECT_THAT(texts(ApplicationEvent::forceTerminate), ElementsAre("Google Chrome"));
    EXPECT_THAT(texts(ProcessEvent::signal), IsEmpty());
    EXPECT_FALSE(isRunning(process()));
    EXPECT_LT(duration(), 0.5);
}

TEST_F(BrowserKillTest, SendsASignalWhenThatFails) {
    openChrome([](auto& chrome) { chrome.application.refusesForceTerminate = true; });
    kill();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre(line("⚠️ forceTerminate fallito, fallback SIGKILL"), confirmed()));
    EXPECT_THAT(texts(ProcessEvent::signal), ElementsAre("9"));
    EXPECT_FALSE(isRunning(process()));
}

TEST_F(BrowserKillTest, SendsASignalToAProcessThatIsNoApplication) {
    openChrome();
    const auto handle = computer().runningApplications.withProcessIdentifier(process());
    mac().processes().exit(process());
    kill();
    EXPECT_THAT(lines("[MONITOR]"),
                ElementsAre(line("NSRunningApplication non trovato, SIGKILL diretto"), confirmed()));
    EXPECT_THAT(texts(ProcessEvent::signal), ElementsAre("9"));
}

TEST_F(BrowserKillTest, LooksEveryTenthOfASecondWhetherItHasEnded) {
    openChrome([](auto& chrome) {
        chrome.application.refusesForceTerminate = true;
        chrome.application.killDelay = 0.65;
    });
    kill();
    EXPECT_NEAR(duration(), 0.7, 1e-6);
}

TEST_F(BrowserKillTest, SaysSoEvenOfAProcessThatWithstandsItAll) {
    openChrome([](auto& chrome) { chrome.application.ignoresForceTerminate = true; });
    kill();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre(line("✅ OK"), confirmed()));
    EXPECT_TRUE(isRunning(process()));
    EXPECT_NEAR(duration(), 1.5, 1e-6);
    // forceTerminate reported success, so nothing else is tried.
    EXPECT_THAT(texts(ProcessEvent::signal), IsEmpty());
}

TEST_F(BrowserKillTest, SaysSoOfAProcessThatOutlivesTheSignal) {
    openChrome([](auto& chrome) {
        chrome.application.refusesForceTerminate = true;
        chrome.application.killDelay = 60;
    });
    kill();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre(line("⚠️ forceTerminate fallito, fallback SIGKILL"), confirmed()));
    EXPECT_TRUE(isRunning(process()));
}

TEST_F(BrowserKillTest, WithoutAProcessSaysSoAndStops) {
    make();
    kill();
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre("[MONITOR] Kill browser: PID non disponibile"));
}

TEST_F(BrowserKillTest, WithoutALauncherSaysSoAndStops) {
    openChrome();
    auto& mac = computer();
    this->mac().inBackground(
        [&mac] { BrowserKill(mac.runningApplications, mac.processLauncher, mac.threads, mac.clock, mac.log).run({}); });
    this->mac().runFor(1);
    EXPECT_THAT(lines("[MONITOR]"), ElementsAre("[MONITOR] Kill browser: PID non disponibile"));
    EXPECT_TRUE(isRunning(process()));
}

TEST_F(BrowserKillTest, KeepsTheLauncherFromBringingTheWindowBack) {
    installChrome();
    mac().accessibility().faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen",
                                        accessibilityFailure);
    launch();
    mac().runFor(4);
    ASSERT_GT(mac().leftovers().timers, 0u);
    kill();
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(BrowserKillTest, LetsTheLauncherGoWhileItWaits) {
    openChrome([](auto& chrome) { chrome.application.ignoresForceTerminate = true; });
    mac().inBackground([this, weak = std::weak_ptr(sharedLauncher())] {
        auto& mac = computer();
        BrowserKill(mac.runningApplications, mac.processLauncher, mac.threads, mac.clock, mac.log).run(weak);
    });
    mac().runFor(0.5);
    release();
    EXPECT_FALSE(isAlive());
}

}  // namespace
}  // namespace vantrel
