#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// The main thread is busy when the launch hands over to it: at 3 seconds on the process route; at 3.8 seconds on the
/// workspace route, 3 after the window was found; or when the workspace answers.
class BusyMainThread : public BrowserTest {
  protected:
    void expectNothingLeft() {
        EXPECT_FALSE(isAlive());
        EXPECT_EQ(mac().leftovers().timers, 0u);
        EXPECT_EQ(mac().leftovers().workers, 0u);
        EXPECT_EQ(mac().leftovers().pendingBlocks, 0u);
    }
};

TEST_F(BusyMainThread, DelaysTheFirstAttemptOnTheProcessRoute) {
    installChrome();
    const double start = mac().now();
    launch();
    mac().runFor(2.9);
    keepMainBusy(0.7);
    mac().runFor(5);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 3.6, 1e-6);
}

TEST_F(BusyMainThread, DelaysTheActivationOnTheWorkspaceRoute) {
    const double start = mac().now();
    launch();
    mac().runFor(3.7);
    keepMainBusy(0.7);
    mac().runFor(5);
    const auto activations = timesOf(ApplicationEvent::activate);
    ASSERT_THAT(activations, SizeIs(1));
    EXPECT_NEAR(activations.front() - start, 4.4, 1e-6);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 4.9, 1e-6);
}

TEST_F(BusyMainThread, DelaysTheAnswerOfTheWorkspace) {
    mac().opener().setAnswerDelay(20);
    const double start = mac().now();
    launch();
    mac().runFor(19.5);
    keepMainBusy(1);
    mac().runFor(10);
    const auto answers = lines("[BROWSER] Safari PID: ");
    ASSERT_THAT(answers, SizeIs(1));
    EXPECT_NEAR(timeOf(answers.front()) - start, 20.5, 1e-6);
    EXPECT_NE(launcher().browserApp(), nullptr);
}

TEST_F(BusyMainThread, HearsNoAnswerForALauncherThatItDropsMeanwhile) {
    mac().opener().setAnswerDelay(20);
    launch();
    mac().runFor(19.5);
    keepMainBusyAndRelease(1);
    mac().runFor(10);
    EXPECT_THAT(lines("[BROWSER] Safari PID"), IsEmpty());
    expectNothingLeft();
}

TEST_F(BusyMainThread, MakesNoAttemptForALauncherThatItDropsMeanwhileOnTheProcessRoute) {
    installChrome();
    launch();
    mac().runFor(2.9);
    keepMainBusyAndRelease(0.7);
    mac().runFor(30);
    EXPECT_THAT(lines("[BROWSER] Google Chrome PID (new): "), SizeIs(1));
    EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
    expectNothingLeft();
}

TEST_F(BusyMainThread, NeitherActivatesNorAttemptsForALauncherThatItDropsMeanwhileOnTheWorkspaceRoute) {
    launch();
    mac().runFor(3.7);
    keepMainBusyAndRelease(0.7);
    mac().runFor(30);
    EXPECT_THAT(lines("[BROWSER] Nuova finestra #"), SizeIs(1));
    EXPECT_THAT(events(ApplicationEvent::activate), IsEmpty());
    EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
    expectNothingLeft();
}

TEST_F(BusyMainThread, MakesNoAttemptForALauncherThatOnlyItsLaunchKeptAlive) {
    installChrome();
    for (const double moment : {0.0, 0.5, 1.9, 2.5}) {
        SCOPED_TRACE(moment);
        forgetEvents();
        launch();
        mac().runFor(moment);
        release();
        EXPECT_TRUE(isAlive());
        mac().runFor(2.9 - moment);
        // The launch has long ended when the main thread gets to its last block.
        keepMainBusy(0.7);
        mac().runFor(30);
        EXPECT_THAT(events(ProcessEvent::started), SizeIs(1));
        EXPECT_THAT(lines("[BROWSER] Google Chrome PID "), SizeIs(1));
        EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
        expectNothingLeft();
    }
}

}  // namespace
}  // namespace vantrel
