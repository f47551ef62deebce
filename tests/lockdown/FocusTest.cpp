#include <gmock/gmock.h>

#include "lockdown/SystemProcessWhitelist.h"
#include "platform/virtual/apps/VirtualBundle.h"
#include "tests/lockdown/MonitorTest.h"

namespace vantrel {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Operation = virtualmac::AccessibilityFaults::Operation;

class Focus : public MonitorTest {
  protected:
    /// The meeting is in confirmed full screen, and its window stays on the current Space whatever comes to the front.
    void watch() {
        openInFullScreen();
        startMonitor();
    }
};

TEST_F(Focus, OfAnotherApplicationIsAViolationAndTheBrowserComesBack) {
    watch();
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
    EXPECT_THAT(violations(), ElementsAre("Note"));
    EXPECT_THAT(texts(ApplicationEvent::activate), ElementsAre("Google Chrome"));
    runTicks(3);
    EXPECT_THAT(violations(), ElementsAre("Note"));
    EXPECT_THAT(texts(ApplicationEvent::frontmost), testing::ElementsAre("Note", "Google Chrome"));
}

TEST_F(Focus, OfAnotherApplicationIsLoggedBeforeItIsToldAndToldBeforeTheBrowserComesBack) {
    watch();
    std::vector<std::string> before;
    mac().onMain([&] {
        monitor().onViolation = [&](const std::string&) {
            before = monitorLines();
            EXPECT_THAT(lines("[BROWSER] Google Chrome portato in primo piano"), IsEmpty());
        };
    });
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(before, ElementsAre("[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
    EXPECT_TRUE(logged("[BROWSER] Google Chrome portato in primo piano"));
}

TEST_F(Focus, OfAnotherApplicationIsAllThatCountsWhileItLasts) {
    watch();
    mac().desktop().setFullScreen(window(), false);
    mac().runFor(3);
    forgetEvents();
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
}

TEST_F(Focus, HeldOnToIsAViolationOnEveryTick) {
    installChrome([](auto& chrome) { chrome.application.declinesActivation = true; });
    launch();
    mac().runFor(6);
    startMonitor();
    bringForward("Note", "com.example.notes");
    runTicks(3);
    EXPECT_THAT(violations(), ElementsAre("Note", "Note", "Note"));
}

TEST_F(Focus, OfAnApplicationWithoutANameIsAViolationOfAnEmptyName) {
    watch();
    bringForward("", "com.example.nameless");
    runTicks(1);
    EXPECT_THAT(violations(), ElementsAre(""));
    EXPECT_THAT(monitorLines(), Contains("[MONITOR] Focus su  — riporto Google Chrome in primo piano"));
}

TEST_F(Focus, OfAnApplicationWithoutAnIdentifierIsAViolation) {
    watch();
    bringForward("Nudo", "");
    runTicks(1);
    EXPECT_THAT(violations(), ElementsAre("Nudo"));
}

TEST_F(Focus, OfNobodyIsNone) {
    openInFullScreen();
    startMonitor();
    mac().desktop().change([](virtualmac::DesktopState& state, auto&) { state.front.clear(); });
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(Focus, OfTheClientItselfIsAllowed) {
    watch();
    mac().onMain([this] { computer().application.activate(); });
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_F(Focus, OfTheClientUnderAnotherNameIsAllowed) {
    watch();
    bringForward("Altro nome", "biz.quorrin.vantrel");
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_F(Focus, OfTheClientIsKnownByTheIdentifierOfItsBundle) {
    openInFullScreen();
    virtualmac::VirtualBundle bundle("org.example.own");
    std::shared_ptr<WindowMonitorService> own;
    std::vector<std::string> details;
    mac().onMain([&] {
        own = makeMonitor(bundle);
        own->onViolation = [&](const std::string& detail) { details.push_back(detail); };
        own->startMonitoring(sharedLauncher());
    });
    mac().runFor(0.1);
    bringForward("Altro nome", "org.example.own");
    runTicks(2);
    EXPECT_THAT(details, IsEmpty());
    bringForward("Altro ancora", "biz.quorrin.vantrel");
    runTicks(1);
    EXPECT_THAT(details, ElementsAre("Altro ancora"));
    mac().onMain([&] { own.reset(); });
}

TEST_F(Focus, IsToldOfBeforeTheBrowserIsBroughtBack) {
    watch();
    std::vector<std::size_t> broughtBack;
    mac().onMain([&] {
        monitor().onViolation = [&](const std::string&) {
            broughtBack.push_back(count("[BROWSER] Google Chrome portato in primo piano"));
        };
    });
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(broughtBack, ElementsAre(0u));
    EXPECT_EQ(count("[BROWSER] Google Chrome portato in primo piano"), 1u);
}

TEST_F(Focus, WithNobodyToTellComesBackAllTheSame) {
    watch();
    mac().onMain([this] { monitor().onViolation = nullptr; });
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre("[MONITOR] Focus su Note — riporto Google Chrome in primo piano"));
    EXPECT_THAT(texts(ApplicationEvent::activate), ElementsAre("Google Chrome"));
}

TEST_F(Focus, OfAnotherBrowserIsAViolation) {
    watch();
    bringForward("Safari", "com.apple.Safari");
    runTicks(1);
    EXPECT_THAT(violations(), ElementsAre("Safari"));
}

class SystemProcess : public Focus, public testing::WithParamInterface<const char*> {};

TEST_P(SystemProcess, InFrontIsAllowedByItsName) {
    watch();
    bringForward(GetParam(), "com.example.other");
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_P(SystemProcess, InFrontIsAllowedByItsIdentifier) {
    watch();
    bringForward("Altro nome", GetParam());
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
    EXPECT_THAT(violations(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Each, SystemProcess,
                         testing::Values("loginwindow", "WindowServer", "Dock", "SystemUIServer", "NotificationCenter",
                                         "ControlCenter", "Spotlight", "universalaccessd", "CoreLocationAgent",
                                         "UserNotificationCenter", "Vantrel", "Sophos Home", "SophosUI", "Windows App",
                                         "Creative Cloud", "AdobeIPCBroker", "AGSService"));

TEST(SystemProcesses, AreSeventeenAndComparedToTheLetter) {
    EXPECT_EQ(systemProcessWhitelist.size(), 17u);
    EXPECT_FALSE(isWhitelisted("dock"));
    EXPECT_FALSE(isWhitelisted("Dock "));
    EXPECT_FALSE(isWhitelisted(""));
}

TEST_F(Focus, IsForeignForEveryoneWithoutADetectedBrowser) {
    openNothing();
    const auto process = bringForward("Google Chrome", "com.google.Chrome");
    mac().processes().openWindow(process, {"Riunione", {{0, 0}, {1440, 900}}});
    mac().onMain(
        [&] { launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(process)); });
    startMonitor();
    runTicks(1);
    EXPECT_THAT(violations(), ElementsAre("Google Chrome"));
    EXPECT_THAT(monitorLines(), Contains("[MONITOR] Focus su Google Chrome — riporto browser in primo piano"));
}

TEST_F(Focus, OfAnApplicationWithoutAnIdentifierIsTheBrowsersWhereNoneIsDetected) {
    openNothing();
    const auto process = bringForward("Nudo", "");
    mac().processes().openWindow(process, {"Riunione", {{0, 0}, {1440, 900}}});
    mac().onMain(
        [&] { launcher().adoptRunningApplication(computer().runningApplications.withProcessIdentifier(process)); });
    startMonitor();
    runTicks(1);
    EXPECT_THAT(monitorLines(), Not(Contains(testing::HasSubstr("Focus su"))));
    EXPECT_THAT(violations(), IsEmpty());
}

TEST_F(Focus, OfAForeignApplicationIsNotedBeforeFullScreenToo) {
    openInWindow();
    startMonitor();
    bringForward("Note", "com.example.notes");
    runTicks(1);
    EXPECT_THAT(violations(), ElementsAre("Note"));
}

class WrongWindow : public Focus {
  protected:
    static constexpr const char* line = "[MONITOR] Google Chrome frontmost ma finestra sbagliata — ripristino lockdown";
};

TEST_F(WrongWindow, OfTheBrowserInFrontIsPutRightWithoutAViolation) {
    watch();
    // The meeting stays in full screen, but another window of the browser has the focus.
    const auto app = computer().accessibility.application(chrome());
    std::shared_ptr<AccessibilityElement> other;
    const auto number = mac().processes().openWindow(chrome(), {"Altra", {{100, 100}, {400, 300}}});
    mac().runFor(0);
    const auto answer = app->attribute("AXWindows");
    other = std::get<std::vector<std::shared_ptr<AccessibilityElement>>>(std::get<AccessibilityValue>(answer)).at(0);
    faults().answer("AXFocusedWindow", other);
    ASSERT_NE(number, 0);
    forgetEvents();
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre(line));
    EXPECT_THAT(violations(), IsEmpty());
    EXPECT_THAT(texts(ApplicationEvent::activate), ElementsAre("Google Chrome"));
}

TEST_F(WrongWindow, ThatDoesNotTellItsStateIsWrong) {
    watch();
    faults().fail(Operation::read, "AXFullScreen", accessibilityFailure);
    runTicks(1);
    EXPECT_THAT(monitorLines(), ElementsAre(line));
}

TEST_F(WrongWindow, IsFollowedByAnAttemptHalfASecondLater) {
    // The launcher itself does not count it as confirmed. Otherwise it would make no attempt.
    openInWindow();
    startMonitor();
    mac().onMain([this] { monitor().setFullscreenConfirmed(true); });
    runTicks(1);
    EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
    const double tick = timeOf(line);
    mac().runFor(0.5);
    ASSERT_FALSE(lines("[FULLSCREEN]").empty());
    EXPECT_NEAR(timeOf(lines("[FULLSCREEN]").at(0)) - tick, 0.5, 1e-6);
}

TEST_F(WrongWindow, ThatCannotBeReadIsTakenForTheRightOne) {
    watch();
    faults().fail(Operation::read, "AXFocusedWindow", accessibilityFailure);
    faults().fail(Operation::read, "AXFullScreen", accessibilityFailure);
    runTicks(2);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

TEST_F(WrongWindow, IsNoMatterBeforeFullScreenIsConfirmed) {
    openInWindow();
    startMonitor();
    runTicks(3);
    EXPECT_THAT(monitorLines(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
