#include <gmock/gmock.h>

#include "session/MainWindowController.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// What becomes of the browser in a whole session.
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
    EXPECT_THAT(events("signal"), IsEmpty());
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

TEST_F(BrowserOfSessionTest, LaunchedInALockdownThatHasEndedMeanwhileBringsNothingBack) {
    std::shared_ptr<MainWindowController> controller;
    mac().onMain([&] {
        controller = MainWindowController::create(computer());
        controller->window().makeKeyAndOrderFront();
    });
    for (const double moment : {0.5, 2.5}) {
        join();
        mac().runFor(1 + moment);
        ASSERT_THAT(logLines(), Contains("[BROWSER] Reset stato per nuova sessione"));
        mac().onMain([&] { controller->endSession(SessionEndReason::userRequest); });
        forgetEvents();
        mac().runFor(30);
        EXPECT_EQ(screen(), "endView") << moment;
        EXPECT_THAT(logLines(), Not(Contains("✅ Step 1/4: Fullscreen completato"))) << moment;
        EXPECT_THAT(events("status-item-installed"), IsEmpty()) << moment;
        EXPECT_EQ(mac().residue().timers, 0u) << moment;
        mac().onMain([&] { controller->resetToJoin(); });
    }
    mac().onMain([&] { controller.reset(); });
}

TEST_F(BrowserOfSessionTest, LaunchedTwiceByTwoPressesLeavesOneLauncher) {
    mac().accessibility().faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen",
                                        virtualmac::accessibilityFailure);
    launch();
    join();
    mac().runFor(1);
    participant().press("joinButton");
    mac().runFor(60);
    EXPECT_EQ(screen(), "none");
    // The first launcher's series ends with it: one series of eight is told to its end.
    const auto lines = logLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[FULLSCREEN] Max retry raggiunti — rimango massimizzato"), 1);
    end();
    EXPECT_EQ(screen(), "endView");
    expectNothingLeft();
}

}  // namespace
}  // namespace vantrel
