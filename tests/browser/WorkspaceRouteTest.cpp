#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WorkspaceRoute : public BrowserTest {
  protected:
    ProcessIdentifier safari() {
        const auto process = mac().processes().running("com.apple.Safari");
        return process ? process->processIdentifier() : 0;
    }
    /// Safari opens its window this many seconds after the request.
    void openWindowAfter(double seconds) {
        auto safari = virtualmac::safari();
        for (auto& window : safari.windows) window.after = seconds;
        install(virtualmac::safariPath, std::move(safari));
    }
    std::string windowLine() { return lines("[BROWSER] Nuova finestra #").at(0); }
};

TEST_F(WorkspaceRoute, OpensTheMeetingInSafariAndSaysSo) {
    make(true);
    launch();
    mac().runFor(20);
    const auto process = std::to_string(safari());
    const auto number = std::to_string(launcher().windowNumber().value_or(0));
    EXPECT_THAT(lines("["),
                ElementsAre("[BROWSER] Reset stato per nuova sessione", "[BROWSER] URL Meet: https://meet.example/abc",
                            "[BROWSER] Browser selezionato: Safari", "[BROWSER] Finestre prima: 0",
                            "[BROWSER] Safari PID: " + process,
                            "[BROWSER] Nuova finestra #" + number + ": 'https://meet.example/abc' pid=" + process,
                            "[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] ✅ Fullscreen attivato via AX",
                            "[MONITOR] Fullscreen confermato"));
    const auto opened = events(ApplicationEvent::opened);
    ASSERT_THAT(opened, SizeIs(1));
    EXPECT_EQ(opened.front().text, meeting);
    EXPECT_EQ(opened.front().field(Field::application), "file:///Applications/Safari.app");
    EXPECT_EQ(opened.front().field(Field::activates), "yes");
    EXPECT_EQ(launcher().browserPID(), safari());
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), safari());
    EXPECT_FALSE(launcher().wasPreExisting());
}

TEST_F(WorkspaceRoute, OpensABareCodeOnGoogleMeet) {
    launch("abc-defg-hij");
    mac().runFor(20);
    EXPECT_THAT(texts(ApplicationEvent::opened), ElementsAre("https://meet.google.com/abc-defg-hij"));
}

TEST_F(WorkspaceRoute, WaitsThreeSecondsAfterTheWindowThenActivatesThenHalfASecond) {
    openWindowAfter(1);
    const double start = mac().now();
    launch();
    mac().runFor(20);
    // The third look, at 1.2 seconds, finds it.
    EXPECT_NEAR(timeOf(windowLine()) - start, 1.2, 1e-6);
    const auto activations = timesOf(ApplicationEvent::activate);
    ASSERT_THAT(activations, SizeIs(1));
    EXPECT_NEAR(activations.front() - start, 4.2, 1e-6);
    EXPECT_THAT(activationOptions(), ElementsAre("0"));
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 4.7, 1e-6);
}

TEST_F(WorkspaceRoute, GoesOnWhenNoWindowComesWithinTwelveSeconds) {
    openWindowAfter(1000);
    const double start = mac().now();
    launch();
    mac().runFor(30);
    EXPECT_NEAR(timeOf("[BROWSER] ⚠ Finestra non trovata entro timeout") - start, 12, 1e-6);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 15.5, 1e-6);
    EXPECT_EQ(launcher().windowNumber(), std::nullopt);
}

TEST_F(WorkspaceRoute, FindsAWindowOnTheLastLook) {
    openWindowAfter(11.9);
    launch();
    mac().runFor(30);
    EXPECT_THAT(lines("[BROWSER] Nuova finestra #"), SizeIs(1));
    EXPECT_FALSE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
}

TEST_F(WorkspaceRoute, LooksForTwelveSecondsOfUptimeThoughTheLidIsClosedMeanwhile) {
    openWindowAfter(9);
    launch();
    mac().runFor(2);
    mac().clock().closeLid(600);
    mac().runFor(20);
    EXPECT_THAT(lines("[BROWSER] Nuova finestra #"), SizeIs(1));
}

TEST_F(WorkspaceRoute, FindsTheWindowBeforeTheApplicationIsKnown) {
    mac().opener().setAnswerDelay(2);
    launch();
    mac().runFor(1.5);
    EXPECT_THAT(lines("[BROWSER] Nuova finestra #"), SizeIs(1));
    EXPECT_FALSE(logged("[BROWSER] Safari PID: " + std::to_string(safari())));
    EXPECT_EQ(launcher().browserPID(), safari());
    EXPECT_EQ(launcher().browserApp(), nullptr);
    mac().runFor(1);
    EXPECT_TRUE(logged("[BROWSER] Safari PID: " + std::to_string(safari())));
    EXPECT_NE(launcher().browserApp(), nullptr);
}

TEST_F(WorkspaceRoute, LetsTheAnswerOverwriteTheWindowsProcess) {
    mac().opener().setAnswerDelay(2);
    const auto impostor = mac().applications().add({"Safari Helper", "com.example.helper"});
    openWindowAfter(3);
    launch();
    mac().runFor(0.5);
    mac().applications().openWindow(impostor, {});
    mac().runFor(1);
    EXPECT_EQ(launcher().browserPID(), impostor);
    mac().runFor(2);
    EXPECT_EQ(launcher().browserPID(), safari());
    EXPECT_NE(safari(), impostor);
}

TEST_F(WorkspaceRoute, KeepsTheAnswersProcessWhenTheWindowComesLater) {
    mac().opener().setAnswerDelay(0.1);
    openWindowAfter(3);
    launch();
    mac().runFor(1);
    const auto known = safari();
    EXPECT_EQ(launcher().browserPID(), known);
    const auto impostor = mac().applications().add({"Safari Helper", "com.example.helper"});
    mac().applications().openWindow(impostor, {});
    mac().runFor(5);
    // Its owner's name contains Safari's, so its window is taken. The process does not change.
    EXPECT_TRUE(windowLine().ends_with("pid=" + std::to_string(impostor)));
    EXPECT_EQ(launcher().browserPID(), known);
}

TEST_F(WorkspaceRoute, TakesAnAnswerThatComesAfterTheDiscovery) {
    mac().opener().setAnswerDelay(14);
    launch();
    mac().runFor(30);
    EXPECT_TRUE(logged("[BROWSER] Safari PID: " + std::to_string(safari())));
    // There was nothing to activate after the pause: the window's process was known, but not its application.
    EXPECT_THAT(events(ApplicationEvent::activate), IsEmpty());
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
}

TEST_F(WorkspaceRoute, MakesNothingOfAnAnswerWithoutAnApplication) {
    mac().opener().answerWithoutApplication(true);
    launch();
    mac().runFor(20);
    EXPECT_THAT(lines("[BROWSER] Safari PID"), IsEmpty());
    EXPECT_EQ(launcher().browserPID(), safari());
    EXPECT_EQ(launcher().browserApp(), nullptr);
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
}

TEST_F(WorkspaceRoute, TellsOfAnErrorAndGoesOn) {
    mac().opener().failWith("L’applicazione non può essere aperta.");
    make();
    std::vector<std::string> reasons;
    bool onMain = false;
    bool loggedBefore = false;
    launcher().onSessionEnded = [&](const std::string& reason) {
        loggedBefore = logged("[BROWSER] ❌ Errore: L’applicazione non può essere aperta.");
        reasons.push_back(reason);
        onMain = computer().threads.isMainThread();
    };
    launch();
    mac().runFor(30);
    EXPECT_EQ(count("[BROWSER] ❌ Errore: L’applicazione non può essere aperta."), 1u);
    EXPECT_TRUE(loggedBefore);
    EXPECT_THAT(reasons, ElementsAre("Impossibile avviare Safari"));
    EXPECT_TRUE(onMain);
    EXPECT_TRUE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
    // One attempt, which finds no process and ends the series.
    EXPECT_THAT(lines("[FULLSCREEN]"), ElementsAre("[FULLSCREEN] Tentativo 1/8..."));
    EXPECT_FALSE(launcher().isConfirmedFullscreen());
}

TEST_F(WorkspaceRoute, OnlyLogsAnErrorThatNobodyHears) {
    mac().opener().failWith("No.");
    launch();
    mac().runFor(30);
    EXPECT_TRUE(logged("[BROWSER] ❌ Errore: No."));
}

TEST_F(WorkspaceRoute, ReturnsSilentlyForAnAddressThatFormsNoURL) {
    make();
    bool called = false;
    launcher().onSessionEnded = [&called](const std::string&) { called = true; };
    for (const char* address : {"http://[", "https://meet.example/a b"}) {
        forgetEvents();
        launch(address);
        mac().runFor(30);
        EXPECT_EQ(logLines().back(), "[BROWSER] Finestre prima: 0") << address;
        EXPECT_THAT(events(ApplicationEvent::opened), IsEmpty()) << address;
        EXPECT_EQ(launcher().browserPID(), std::nullopt) << address;
        EXPECT_FALSE(called) << address;
    }
}

TEST_F(WorkspaceRoute, ReturnsSilentlyWhenSafarisAddressFormsNoURL) {
    mac().urls().failFormingWhere(
        [](std::string_view text) { return text.find("Safari.app") != std::string_view::npos; });
    make();
    bool called = false;
    launcher().onSessionEnded = [&called](const std::string&) { called = true; };
    launch();
    mac().runFor(30);
    EXPECT_EQ(logLines().back(), "[BROWSER] Finestre prima: 0");
    EXPECT_THAT(events(ApplicationEvent::opened), IsEmpty());
    EXPECT_FALSE(called);
}

TEST_F(WorkspaceRoute, OpensSafariForFirefoxAndLooksForAWindowOfFirefox) {
    mac().files().remove(virtualmac::safariPath);
    install(virtualmac::firefoxPath, virtualmac::firefox());
    const auto other = mac().applications().add({"Safari", "com.apple.Safari"});
    launch();
    mac().runFor(0.2);
    mac().applications().openWindow(other, {});
    mac().runFor(20);
    EXPECT_TRUE(logged("[BROWSER] Browser selezionato: Firefox"));
    EXPECT_EQ(events(ApplicationEvent::opened).at(0).field(Field::application), "file:///Applications/Safari.app");
    EXPECT_EQ(launcher().detectedBrowser(), SupportedBrowser::firefox);
    EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
    EXPECT_TRUE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
}

TEST_F(WorkspaceRoute, FindsAWindowOfFirefoxForFirefox) {
    mac().files().remove(virtualmac::safariPath);
    install(virtualmac::firefoxPath, virtualmac::firefox());
    launch();
    mac().runFor(0.2);
    const auto firefox = mac().processes().start(virtualmac::firefoxPath);
    mac().runFor(20);
    EXPECT_TRUE(windowLine().ends_with("pid=" + std::to_string(firefox)));
    EXPECT_EQ(launcher().browserPID(), firefox);
}

TEST_F(WorkspaceRoute, TakesASafariThatRunsAlreadyForItsOwn) {
    const auto before = mac().processes().start(virtualmac::safariPath);
    mac().runFor(3);
    launch();
    mac().runFor(20);
    EXPECT_EQ(launcher().browserPID(), before);
    EXPECT_FALSE(launcher().wasPreExisting());
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 1"));
}

TEST_F(WorkspaceRoute, NeverTakesAWindowWithoutANumber) {
    mac().windowList().withhold(virtualmac::WindowKey::number);
    launch();
    mac().runFor(20);
    EXPECT_TRUE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
}

TEST_F(WorkspaceRoute, TakesAWindowWithoutATitle) {
    mac().windowList().setScreenRecordingAllowed(false);
    launch();
    mac().runFor(20);
    EXPECT_TRUE(windowLine().ends_with(": '' pid=" + std::to_string(safari()))) << windowLine();
}

TEST_F(WorkspaceRoute, SurvivesAListThatFailsMeanwhile) {
    openWindowAfter(1);
    launch();
    mac().windowList().setFailing(true);
    mac().runFor(5);
    mac().windowList().setFailing(false);
    mac().runFor(15);
    EXPECT_THAT(lines("[BROWSER] Nuova finestra #"), SizeIs(1));
}

TEST_F(WorkspaceRoute, SurvivesABrowserThatIsKilledDuringTheDiscovery) {
    openWindowAfter(5);
    launch();
    mac().runFor(2);
    mac().processes().exit(safari());
    mac().runFor(60);
    EXPECT_TRUE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_EQ(count("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"), 8u);
}

TEST_F(WorkspaceRoute, DoesNotResetTheSeriesBeforeItsFirstAttempt) {
    openWindowAfter(1);
    launch();
    mac().runFor(2);
    mac().accessibility().faults().fail(virtualmac::AccessibilityFaults::Operation::write, "AXFullScreen",
                                        accessibilityFailure);
    attempt();
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
    mac().runFor(3);
    EXPECT_TRUE(logged("[FULLSCREEN] Tentativo 2/8..."));
    EXPECT_EQ(count("[FULLSCREEN] Tentativo 1/8..."), 1u);
}

TEST_F(WorkspaceRoute, LeavesAConfirmationThatCameBeforeItsFirstAttempt) {
    openWindowAfter(1);
    launch();
    mac().runFor(2);
    attempt();
    ASSERT_TRUE(launcher().isConfirmedFullscreen());
    mac().runFor(3);
    EXPECT_THAT(events(ApplicationEvent::activate), SizeIs(1));
    EXPECT_EQ(lines("[FULLSCREEN] Tentativo"), std::vector<std::string>{"[FULLSCREEN] Tentativo 1/8..."});
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
}

TEST_F(WorkspaceRoute, IgnoresAnAnswerForALauncherThatIsGone) {
    mac().opener().setAnswerDelay(20);
    launch();
    mac().runFor(18);
    release();
    mac().runFor(0);
    EXPECT_FALSE(isAlive());
    mac().runFor(10);
    EXPECT_THAT(lines("[BROWSER] Safari PID"), IsEmpty());
}

TEST_F(WorkspaceRoute, KeepsItsLauncherForTheDelayedAttemptOnly) {
    openWindowAfter(1);
    launch();
    // The activation is at 4.2 seconds, the attempt at 4.7.
    mac().runFor(4.4);
    release();
    EXPECT_TRUE(isAlive());
    mac().runFor(1);
    EXPECT_TRUE(logged("[FULLSCREEN] Tentativo 1/8..."));
    EXPECT_FALSE(isAlive());
    EXPECT_EQ(mac().leftovers().timers, 0u);
}

}  // namespace
}  // namespace vantrel
