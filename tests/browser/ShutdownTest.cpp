#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Operation = virtualmac::AccessibilityFaults::Operation;

class Shutdown : public BrowserTest {
  protected:
    /// The meeting is open, in full screen.
    void openMeeting() {
        make(true);
        launch();
        mac().runFor(6);
        forgetEvents();
    }
    /// Chrome was running before with this many windows, one of them in full screen, in addition to the meeting's.
    ProcessIdentifier openMeetingInOwnChrome(int windows) {
        installChrome();
        const auto process = startChrome();
        for (int made = 1; made < windows; ++made) mac().applications().openWindow(process, {});
        openMeeting();
        return process;
    }
    void expectForgotten() {
        EXPECT_EQ(launcher().browserPID(), std::nullopt);
        EXPECT_EQ(launcher().browserApp(), nullptr);
        EXPECT_EQ(launcher().windowNumber(), std::nullopt);
        EXPECT_FALSE(launcher().wasPreExisting());
        EXPECT_FALSE(launcher().isConfirmedFullscreen());
        EXPECT_EQ(mac().leftovers().timers, 0u);
    }
};

TEST_F(Shutdown, EndsTheBrowserThatTheClientStarted) {
    installChrome();
    openMeeting();
    const auto process = launcher().browserPID().value_or(0);
    const double start = mac().now();
    close();
    EXPECT_THAT(lines("["), ElementsAre("[BROWSER] Kill Google Chrome"));
    EXPECT_FALSE(isRunning(process));
    EXPECT_THAT(events(ApplicationEvent::terminate), SizeIs(1));
    EXPECT_THAT(events(ApplicationEvent::forceTerminate), IsEmpty());
    // The browser takes 0.3 seconds to end and is checked every 0.2.
    EXPECT_NEAR(mac().now() - start, 0.4, 1e-6);
    expectForgotten();
}

TEST_F(Shutdown, StopsWaitingForABrowserThatEndsAtOnce) {
    installChrome([](auto& chrome) { chrome.application.exitDelay = 0.1; });
    openMeeting();
    const double start = mac().now();
    close();
    EXPECT_NEAR(mac().now() - start, 0.2, 1e-6);
}

TEST_F(Shutdown, ForcesABrowserThatIgnoresTheRequestAfterTwoSeconds) {
    installChrome([](auto& chrome) { chrome.application.ignoresTerminate = true; });
    openMeeting();
    const auto process = launcher().browserPID().value_or(0);
    const double start = mac().now();
    close();
    const auto forced = timesOf(ApplicationEvent::forceTerminate);
    ASSERT_THAT(forced, SizeIs(1));
    EXPECT_GE(forced.front() - start, 2.0 - 1e-6);
    EXPECT_LE(forced.front() - start, 2.2 + 1e-6);
    mac().runFor(1);
    EXPECT_FALSE(isRunning(process));
    expectForgotten();
}

TEST_F(Shutdown, ForgetsEvenABrowserThatCannotBeForced) {
    installChrome([](auto& chrome) {
        chrome.application.ignoresTerminate = true;
        chrome.application.refusesForceTerminate = true;
    });
    openMeeting();
    const auto process = launcher().browserPID().value_or(0);
    close();
    EXPECT_TRUE(isRunning(process));
    expectForgotten();
}

TEST_F(Shutdown, WaitsTwoSecondsForABrowserItKnowsByItsNumberOnlyAndSignalsNobody) {
    installChrome([](auto& chrome) {
        chrome.application.bundleIdentifier.reset();
        chrome.application.isApplication = false;
    });
    openMeeting();
    const auto process = launcher().browserPID().value_or(0);
    ASSERT_NE(process, 0);
    ASSERT_EQ(launcher().browserApp(), nullptr);
    const double start = mac().now();
    close();
    EXPECT_NEAR(mac().now() - start, 2.0, 0.2 + 1e-6);
    EXPECT_GE(mac().now() - start, 2.0 - 1e-6);
    EXPECT_THAT(events(ApplicationEvent::terminate), IsEmpty());
    EXPECT_THAT(events(ApplicationEvent::forceTerminate), IsEmpty());
    EXPECT_THAT(events(ProcessEvent::signal), IsEmpty());
    EXPECT_FALSE(mac().processes().find(process)->isTerminated());
    expectForgotten();
}

TEST_F(Shutdown, WaitsForASafariItKnowsByItsWindowOnlyAndDoesNotAskItToEnd) {
    mac().opener().answerWithoutApplication(true);
    openMeeting();
    const auto process = launcher().browserPID().value_or(0);
    ASSERT_TRUE(isRunning(process));
    ASSERT_EQ(launcher().browserApp(), nullptr);
    const double start = mac().now();
    close();
    EXPECT_GE(mac().now() - start, 2.0 - 1e-6);
    EXPECT_LE(mac().now() - start, 2.2 + 1e-6);
    EXPECT_THAT(events(ApplicationEvent::terminate), IsEmpty());
    EXPECT_THAT(events(ApplicationEvent::forceTerminate), IsEmpty());
    EXPECT_TRUE(isRunning(process));
    expectForgotten();
}

TEST_F(Shutdown, SaysBrowserWhereNoneWasDetected) {
    installChrome();
    const auto process = startChrome();
    make();
    mac().onMain([this, process] {
        launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(process));
        launcher().closeBrowser();
    });
    EXPECT_EQ(logLines().back(), "[BROWSER] Kill browser");
    EXPECT_FALSE(isRunning(process));
}

TEST_F(Shutdown, ClosesEveryWindowOfABrowserThatRanBefore) {
    const auto process = openMeetingInOwnChrome(3);
    ASSERT_THAT(mac().desktop().windowsOf(process), SizeIs(4));
    close();
    mac().runFor(2);
    EXPECT_THAT(lines("["),
                ElementsAre("[BROWSER] Chiudo finestra lockdown (Google Chrome pre-existing, processo non killato)"));
    EXPECT_THAT(mac().desktop().windowsOf(process), IsEmpty());
    EXPECT_TRUE(isRunning(process));
    EXPECT_THAT(events(ApplicationEvent::terminate), IsEmpty());
    EXPECT_THAT(events(ApplicationEvent::forceTerminate), IsEmpty());
    EXPECT_THAT(events(ProcessEvent::signal), IsEmpty());
    expectForgotten();
}

TEST_F(Shutdown, NamesAnEdgeThatRanBefore) {
    install(virtualmac::edgePath, virtualmac::edge());
    const auto process = mac().processes().start(virtualmac::edgePath);
    mac().runFor(3);
    openMeeting();
    ASSERT_EQ(launcher().browserPID(), process);
    close();
    EXPECT_THAT(lines("["),
                ElementsAre("[BROWSER] Chiudo finestra lockdown (Microsoft Edge pre-existing, processo non killato)"));
}

TEST_F(Shutdown, TakesWindowsOutOfFullScreenFirstWithAPauseEach) {
    const auto process = openMeetingInOwnChrome(3);
    for (const auto& window : mac().desktop().windowsOf(process)) {
        if (window.fullScreen) continue;
        mac().desktop().setFullScreen(window.number, true);
        break;
    }
    mac().runFor(2);
    forgetEvents();
    const double start = mac().now();
    close();
    // Two windows in full screen, half a second each.
    EXPECT_NEAR(mac().now() - start, 1.0, 1e-6);
    const auto left = events(ElementEvent::set);
    ASSERT_THAT(left, SizeIs(2));
    for (const auto& each : left) EXPECT_EQ(each.text + "=" + each.field(Field::value), "AXFullScreen=false");
    EXPECT_NEAR(left[1].time - left[0].time, 0.5, 1e-6);
    EXPECT_THAT(texts(ElementEvent::action), ElementsAre("AXPress", "AXPress", "AXPress", "AXPress"));
    mac().runFor(2);
    EXPECT_THAT(mac().desktop().windowsOf(process), IsEmpty());
}

TEST_F(Shutdown, ClosesAWindowThatStaysInFullScreenAfterTheSamePause) {
    const auto process = openMeetingInOwnChrome(1);
    mac().accessibility().faults().fail(Operation::write, "AXFullScreen", accessibilityFailure);
    const double start = mac().now();
    close();
    EXPECT_NEAR(mac().now() - start, 0.5, 1e-6);
    EXPECT_THAT(texts(ElementEvent::action), ElementsAre("AXPress", "AXPress"));
    mac().runFor(2);
    EXPECT_THAT(mac().desktop().windowsOf(process), IsEmpty());
}

TEST_F(Shutdown, ClosesTheWindowsInTheirOrder) {
    const auto process = openMeetingInOwnChrome(4);
    std::vector<std::string> listed;
    for (const auto& window : mac().desktop().windowsOf(process)) listed.push_back(std::to_string(window.number));
    ASSERT_THAT(listed, SizeIs(5));
    close();
    std::vector<std::string> pressed;
    for (const auto& press : events(ElementEvent::action)) pressed.push_back(press.field(Field::window));
    EXPECT_EQ(pressed, listed);
}

TEST_F(Shutdown, GoesOnWithTheNextWindowWhenOneCannotBeClosed) {
    const auto process = openMeetingInOwnChrome(2);
    mac().accessibility().faults().fail(Operation::read, "AXCloseButton", accessibilityFailure, 1);
    mac().accessibility().faults().fail(Operation::action, "AXPress", accessibilityFailure, 1);
    close();
    mac().runFor(2);
    EXPECT_THAT(mac().desktop().windowsOf(process), SizeIs(2));
    EXPECT_TRUE(isRunning(process));
    expectForgotten();
}

TEST_F(Shutdown, LeavesAWindowWithoutACloseButtonOpen) {
    installChrome();
    const auto process = startChrome();
    virtualmac::NewWindow bare;
    bare.title = "Senza";
    bare.hasCloseButton = false;
    mac().applications().openWindow(process, bare);
    openMeeting();
    close();
    mac().runFor(2);
    ASSERT_THAT(mac().desktop().windowsOf(process), SizeIs(1));
    EXPECT_EQ(mac().desktop().windowsOf(process).front().title, "Senza");
}

TEST_F(Shutdown, DoesNotPauseForAWindowWhoseFullScreenCannotBeRead) {
    openMeetingInOwnChrome(1);
    mac().accessibility().faults().fail(Operation::read, "AXFullScreen", accessibilityFailure);
    const double start = mac().now();
    close();
    EXPECT_NEAR(mac().now() - start, 0, 1e-6);
    EXPECT_THAT(events(ElementEvent::set), IsEmpty());
}

TEST_F(Shutdown, ForgetsABrowserWhoseWindowsCannotBeRead) {
    const auto process = openMeetingInOwnChrome(1);
    mac().accessibility().faults().fail(Operation::read, "AXWindows", accessibilityCannotComplete);
    close();
    EXPECT_TRUE(isRunning(process));
    EXPECT_THAT(mac().desktop().windowsOf(process), SizeIs(2));
    expectForgotten();
}

TEST_F(Shutdown, SurvivesABrowserThatEndsWhileItsWindowsAreClosed) {
    const auto process = openMeetingInOwnChrome(3);
    mac().after(0.25, [this, process] { mac().processes().exit(process); });
    close();
    mac().runFor(1);
    expectForgotten();
}

TEST_F(Shutdown, EndsASafariThatRanBeforeAllTheSame) {
    const auto before = mac().processes().start(virtualmac::safariPath);
    mac().runFor(3);
    make();
    launch();
    mac().runFor(20);
    ASSERT_EQ(launcher().browserPID(), before);
    ASSERT_TRUE(launcher().windowNumber());
    close();
    EXPECT_TRUE(logged("[BROWSER] Kill Safari"));
    EXPECT_FALSE(isRunning(before));
    expectForgotten();
}

TEST_F(Shutdown, WithoutAProcessLogsNothing) {
    make();
    close();
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(Shutdown, TwiceDoesNothingTheSecondTime) {
    installChrome();
    openMeeting();
    close();
    forgetEvents();
    const double start = mac().now();
    close();
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(mac().now(), start);
    expectForgotten();
}

TEST_F(Shutdown, DropsAPendingRetry) {
    installChrome();
    mac().accessibility().faults().fail(Operation::write, "AXFullScreen", accessibilityFailure);
    openMeeting();
    ASSERT_EQ(mac().leftovers().timers, 1u);
    close();
    expectForgotten();
    forgetEvents();
    mac().runFor(30);
    EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
}

TEST_F(Shutdown, LetsAnAttemptThatIsQueuedAlreadyFindNoProcess) {
    installChrome();
    mac().accessibility().faults().fail(Operation::write, "AXFullScreen", accessibilityFailure);
    make();
    launch();
    // The first attempt is at 3 seconds, the timer fires at 5, the second attempt is due at 5.5.
    mac().runFor(5.2);
    forgetEvents();
    close();
    mac().runFor(30);
    EXPECT_THAT(lines("[FULLSCREEN]"), ElementsAre("[FULLSCREEN] Tentativo 2/8..."));
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

TEST_F(Shutdown, KeepsWhatTheNextLaunchResets) {
    installChrome();
    openMeeting();
    close();
    EXPECT_EQ(launcher().detectedBrowser(), SupportedBrowser::chrome);
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
}

TEST_F(Shutdown, KeepsWhoHearsOfTheBrowser) {
    installChrome();
    make(true);
    std::vector<std::string> reasons;
    launcher().onSessionEnded = [&reasons](const std::string& reason) { reasons.push_back(reason); };
    launch();
    mac().runFor(6);
    close();
    EXPECT_EQ(launcher().windowMonitor.lock().get(), &monitor());
    ASSERT_TRUE(launcher().onSessionEnded);
    launcher().onSessionEnded("Prova");
    EXPECT_THAT(reasons, ElementsAre("Prova"));
}

class BringingToFront : public BrowserTest {};

TEST_F(BringingToFront, ActivatesTheBrowserAndNamesIt) {
    installChrome();
    make();
    launch();
    mac().runFor(6);
    const auto other = mac().applications().add({"Anteprima", "com.apple.Preview"});
    mac().applications().openWindow(other, {});
    mac().runFor(1);
    forgetEvents();
    mac().onMain([this] { launcher().bringToFront(); });
    mac().runFor(1);
    EXPECT_THAT(logLines(), ElementsAre("[BROWSER] Google Chrome portato in primo piano"));
    EXPECT_THAT(texts(ApplicationEvent::activate), ElementsAre("Google Chrome"));
    EXPECT_THAT(activationOptions(), ElementsAre("2"));
    mac().onMain([this] {
        EXPECT_EQ(computer().frontmostApplication.frontmostApplication()->localizedName(), "Google Chrome");
    });
}

TEST_F(BringingToFront, SaysBrowserWhereNoneWasDetected) {
    installChrome();
    const auto process = startChrome();
    make();
    mac().onMain([this, process] {
        launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(process));
        launcher().bringToFront();
    });
    EXPECT_EQ(logLines().back(), "[BROWSER] browser portato in primo piano");
}

TEST_F(BringingToFront, DoesNothingWithoutABrowser) {
    make();
    mac().onMain([this] { launcher().bringToFront(); });
    EXPECT_THAT(events(), IsEmpty());
}

class Adoption : public BrowserTest {};

TEST_F(Adoption, TakesTheNewProcessAndTellsBoth) {
    installChrome();
    make();
    launch();
    mac().runFor(6);
    const auto old = launcher().browserPID().value_or(0);
    const auto fresh = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    mac().onMain([this, fresh] {
        launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(fresh));
    });
    EXPECT_EQ(logLines().back(), "[BROWSER] PID aggiornato: " + std::to_string(old) + " → " + std::to_string(fresh) +
                                     " (recupero post-fork)");
    EXPECT_EQ(launcher().browserPID(), fresh);
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), fresh);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
}

TEST_F(Adoption, KeepsTheNumberOfTheMeetingsWindow) {
    make();
    launch();
    mac().runFor(10);
    const auto number = launcher().windowNumber();
    ASSERT_TRUE(number);
    const auto fresh = mac().applications().add({"Safari", "com.apple.Safari"});
    mac().onMain([this, fresh] {
        launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(fresh));
    });
    EXPECT_EQ(launcher().browserPID(), fresh);
    EXPECT_EQ(launcher().windowNumber(), number);
}

TEST_F(Adoption, TellsMinusOneWhereNoneWasKnown) {
    const auto fresh = mac().applications().add({"Google Chrome", "com.google.Chrome"});
    make();
    mac().onMain([this, fresh] {
        launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(fresh));
    });
    EXPECT_THAT(logLines(),
                ElementsAre("[BROWSER] PID aggiornato: -1 → " + std::to_string(fresh) + " (recupero post-fork)"));
}

}  // namespace
}  // namespace vantrel
