#include <gmock/gmock.h>

#include <algorithm>

#include "session/MainWindowController.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// What happens to the browser in a whole session.
class BrowserOfSessionTest : public ClientTest {
  protected:
    ProcessIdentifier chrome() {
        const auto process = mac().processes().running("com.google.Chrome");
        return process ? process->processIdentifier() : 0;
    }
    void end() {
        askToEnd();
        participant().answerAlert("Termina");
        mac().runFor(10);
    }
};

TEST_F(BrowserOfSessionTest, IsEndedWithIt) {
    launch();
    enterLockdown();
    ASSERT_NE(chrome(), 0);
    EXPECT_TRUE(mac().desktop().windowsOf(chrome()).at(0).fullScreen);
    end();
    EXPECT_EQ(chrome(), 0);
    EXPECT_THAT(logLines(), Contains("[SESSION] Browser terminato"));
    EXPECT_FALSE(mac().spaces().isFullScreen());
    expectNothingLeft();
}

TEST_F(BrowserOfSessionTest, ThatHasEndedAlreadyIsNotEndedAgain) {
    launch();
    enterLockdown();
    mac().processes().exit(chrome());
    askToEnd();
    forgetEvents();
    participant().answerAlert("Termina");
    mac().runFor(10);
    EXPECT_THAT(logLines(), Not(Contains("[SESSION] Browser terminato")));
    EXPECT_THAT(logLines(), Not(Contains("[BROWSER] Kill Google Chrome")));
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

TEST_F(BrowserOfSessionTest, ThatRanBeforeGoesOnWithoutItsWindows) {
    const auto before = mac().processes().start(virtualmac::chromePath);
    mac().runFor(3);
    launch();
    enterLockdown();
    end();
    EXPECT_EQ(chrome(), before);
    EXPECT_THAT(mac().desktop().windowsOf(before), IsEmpty());
    EXPECT_THAT(logLines(),
                Contains("[BROWSER] Chiudo finestra lockdown (Google Chrome pre-existing, processo non killato)"));
    EXPECT_THAT(logLines(), Contains("[SESSION] Browser terminato"));
    EXPECT_THAT(events(ProcessEvent::signal), IsEmpty());
    expectNothingLeft();
}

TEST_F(BrowserOfSessionTest, ThatIgnoresTheRequestHoldsTheEndUpForTwoSecondsAtMost) {
    auto stubborn = virtualmac::chrome();
    stubborn.application.ignoresTerminate = true;
    mac().processes().install(virtualmac::chromePath, stubborn);
    launch();
    enterLockdown();
    askToEnd();
    participant().answerAlert("Termina");
    mac().runFor(2.25);
    EXPECT_EQ(screen(), "endView");
    mac().runFor(1);
    EXPECT_EQ(chrome(), 0);
}

TEST_F(BrowserOfSessionTest, ThatCannotBeStartedDoesNotStopTheLockdown) {
    mac().processes().failLaunches("Operazione non consentita.");
    launch();
    join();
    mac().runFor(5);
    EXPECT_EQ(screen(), "none");
    EXPECT_THAT(logLines(), Contains("[BROWSER] ❌ Errore lancio: Operazione non consentita."));
    EXPECT_THAT(logLines(), Contains("✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅"));
}

TEST_F(BrowserOfSessionTest, IsSafariWhereTheClientHearsOfAFailureInTheLogOnly) {
    mac().files().remove(virtualmac::chromePath);
    mac().opener().failWith("No.");
    launch();
    join();
    mac().runFor(20);
    EXPECT_THAT(logLines(), Contains("[BROWSER] ❌ Errore: No."));
    EXPECT_EQ(screen(), "none");
}

TEST_F(BrowserOfSessionTest, HoldsTheLockdownUpWhileItIsLaunched) {
    launch();
    join();
    mac().runFor(2.5);
    EXPECT_THAT(logLines(), Not(Contains("✅ Step 1/4: Fullscreen completato")));
    EXPECT_EQ(screen(), "joinView");
    mac().runFor(1);
    EXPECT_EQ(screen(), "none");
}

/// A lockdown that ends while its browser is being launched.
class EndDuringTheLaunch : public BrowserOfSessionTest {
  protected:
    /// Presses the join button. The launch begins at that moment.
    void startLaunch() {
        mac().onMain([this] {
            controller_ = MainWindowController::create(computer());
            controller_->window().makeKeyAndOrderFront();
        });
        mac().runFor(2);
        join();
        mac().runFor(0.1);
        ASSERT_THAT(logLines(), Contains("[BROWSER] Reset stato per nuova sessione"));
        start_ = timeOf("[BROWSER] Reset stato per nuova sessione");
    }
    /// At this many seconds after the launch began.
    void endAt(double moment) {
        mac().runUntil(start_ + moment);
        mac().onMain([this] { controller_->endSession(SessionEndReason::userRequest); });
        ASSERT_EQ(screen(), "endView");
        forgetEvents();
    }
    /// Makes the main thread busy then. When it runs what the launch has left for it, the launcher is gone.
    void keepMainBusyAt(double moment) {
        mac().runUntil(start_ + moment);
        mac().postToMain([this] { computer().threads.sleep(0.7); });
        mac().runFor(30);
    }
    double timeOf(std::string_view line) const {
        for (const auto& event : events(ClientEvent::log)) {
            if (event.text == line) return event.time;
        }
        return -1;
    }
    std::vector<std::string> lines(std::string_view tag) const {
        auto all = logLines();
        std::erase_if(all, [tag](const std::string& line) { return !line.starts_with(tag); });
        return all;
    }
    void expectNothingBroughtBack() {
        EXPECT_EQ(screen(), "endView");
        EXPECT_TRUE(isClosable());
        EXPECT_THAT(logLines(), Not(Contains("✅ Step 1/4: Fullscreen completato")));
        EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
        EXPECT_THAT(events(StatusItemEvent::installed), IsEmpty());
        EXPECT_THAT(events(ApplicationEvent::activate), IsEmpty());
        expectNothingLeft();
    }
    void TearDown() override {
        mac().onMain([this] { controller_.reset(); });
        BrowserOfSessionTest::TearDown();
    }

  private:
    std::shared_ptr<MainWindowController> controller_;
    double start_ = 0;
};

TEST_F(EndDuringTheLaunch, LeavesABrowserWhoseProcessIsNotKnownYetAlone) {
    startLaunch();
    endAt(0.5);
    const auto process = chrome();
    ASSERT_NE(process, 0);
    ASSERT_THAT(mac().desktop().windowsOf(process), IsEmpty());
    keepMainBusyAt(2.9);
    EXPECT_EQ(chrome(), process);
    const auto windows = mac().desktop().windowsOf(process);
    ASSERT_THAT(windows, SizeIs(1));
    EXPECT_FALSE(windows.front().fullScreen);
    EXPECT_THAT(lines("[BROWSER]"), ElementsAre("[BROWSER] Google Chrome PID (new): " + std::to_string(process)));
    expectNothingBroughtBack();
}

TEST_F(EndDuringTheLaunch, EndsABrowserWhoseProcessIsKnown) {
    startLaunch();
    endAt(2.5);
    EXPECT_EQ(chrome(), 0);
    keepMainBusyAt(2.95);
    EXPECT_EQ(chrome(), 0);
    EXPECT_THAT(lines("[BROWSER]"), IsEmpty());
    EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
    expectNothingBroughtBack();
}

TEST_F(EndDuringTheLaunch, LeavesSafariItsWindowThatIsStillLookedFor) {
    mac().files().remove(virtualmac::chromePath);
    auto slow = virtualmac::safari();
    slow.windows.front().after = 5;
    mac().processes().install(virtualmac::safariPath, slow);
    mac().opener().setAnswerDelay(3);
    startLaunch();
    endAt(2);
    const auto safari = mac().processes().running("com.apple.Safari");
    ASSERT_TRUE(safari);
    const auto process = safari->processIdentifier();
    ASSERT_THAT(mac().desktop().windowsOf(process), IsEmpty());
    // The look at 5.2 seconds finds the window, and the launch ends 3 seconds later.
    keepMainBusyAt(8.1);
    EXPECT_FALSE(safari->isTerminated());
    const auto windows = mac().desktop().windowsOf(process);
    ASSERT_THAT(windows, SizeIs(1));
    EXPECT_FALSE(windows.front().fullScreen);
    EXPECT_THAT(lines("[BROWSER]"), ElementsAre("[BROWSER] Safari PID: " + std::to_string(process),
                                                "[BROWSER] Nuova finestra #" + std::to_string(windows.front().number) +
                                                    ": 'https://meet.example/abc' pid=" + std::to_string(process)));
    EXPECT_THAT(events(ElementEvent::action), IsEmpty());
    EXPECT_THAT(events(ApplicationEvent::terminate), IsEmpty());
    expectNothingBroughtBack();
}

TEST_F(BrowserOfSessionTest, IsStartedOnceByTwoPressesUnderThePermissionPrompt) {
    mac().capture().setStatus(MediaType::audio, AuthorizationStatus::notDetermined);
    launch();
    join();
    mac().runFor(3);
    ASSERT_EQ(mac().capture().prompts(), 1u);
    participant().press("joinButton");
    mac().runFor(3);
    EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
    participant().answerPermissionPrompt(true);
    mac().runFor(10);
    EXPECT_THAT(events(ProcessEvent::started), SizeIs(1));
    const auto lines = logLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "🔒 Step 1/4: Fullscreen browser..."), 2);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[BROWSER] Reset stato per nuova sessione"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "✅ Step 1/4: Fullscreen completato"), 2);
    EXPECT_THAT(mac().desktop().windowsOf(chrome()), SizeIs(1));
    EXPECT_EQ(screen(), "none");
    end();
    EXPECT_EQ(chrome(), 0);
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

TEST_F(BrowserOfSessionTest, LaunchedTwiceByTwoPressesLeavesOneLauncher) {
    mac().accessibility().faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen",
                                        accessibilityFailure);
    launch();
    join();
    mac().runFor(1);
    participant().press("joinButton");
    mac().runFor(60);
    EXPECT_EQ(screen(), "none");
    // The first launcher's series ends with it: only one series of eight runs to its end.
    const auto lines = logLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[FULLSCREEN] Max retry raggiunti — rimango massimizzato"), 1);
    end();
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

}  // namespace
}  // namespace vantrel
