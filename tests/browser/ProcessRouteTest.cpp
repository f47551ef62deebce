#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using virtualmac::FileKind;

class ProcessRoute : public BrowserTest {};

std::string pid(ProcessIdentifier process) {
    return std::to_string(process);
}

TEST_F(ProcessRoute, StartsTheBrowserOnTheMeetingAndSaysSo) {
    installChrome();
    make(true);
    launch();
    mac().runFor(10);
    ASSERT_THAT(events(ProcessEvent::started), SizeIs(1));
    const auto process = events(ProcessEvent::started).front().field(Field::pid);
    EXPECT_THAT(logLines(),
                ElementsAre("[BROWSER] Reset stato per nuova sessione", "[BROWSER] URL Meet: https://meet.example/abc",
                            "[BROWSER] Browser selezionato: Google Chrome", "[BROWSER] Finestre prima: 0",
                            "[BROWSER] Lancio Google Chrome con args: --app=https://meet.example/abc --new-window",
                            "[BROWSER] Google Chrome PID (new): " + process, "[FULLSCREEN] Tentativo 1/8...",
                            "[FULLSCREEN] ✅ Fullscreen attivato via AX", "[MONITOR] Fullscreen confermato"));
    EXPECT_EQ(pid(launcher().browserPID().value_or(0)), process);
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), launcher().browserPID());
    EXPECT_EQ(launcher().windowNumber(), std::nullopt);
    EXPECT_EQ(launcher().detectedBrowser(), SupportedBrowser::chrome);
    EXPECT_FALSE(launcher().wasPreExisting());
}

TEST_F(ProcessRoute, GivesTheProcessItsEightArgumentsAsTheyStand) {
    installChrome();
    const std::string address = "https://meet.example/a b?c='\"&d=$(touch x);`y`|è\n#z";
    launch(address);
    mac().runFor(5);
    const auto started = events(ProcessEvent::started);
    ASSERT_THAT(started, SizeIs(1));
    EXPECT_EQ(started.front().text, virtualmac::chromePath);
    EXPECT_THAT(started.front().all(Field::argument),
                ElementsAre("--app=" + address, "--new-window", "--no-first-run", "--no-default-browser-check",
                            "--disable-extensions", "--disable-tab-strip", "--disable-session-crashed-bubble",
                            "--disable-infobars"));
}

TEST_F(ProcessRoute, OpensABareCodeOnGoogleMeet) {
    installChrome();
    launch("abc-defg-hij");
    mac().runFor(5);
    EXPECT_TRUE(logged("[BROWSER] URL Meet: https://meet.google.com/abc-defg-hij"));
    EXPECT_EQ(events(ProcessEvent::started).front().field(Field::argument),
              "--app=https://meet.google.com/abc-defg-hij");
}

TEST_F(ProcessRoute, CountsTheWindowsBeforeTheLaunch) {
    installChrome();
    startChrome();
    const auto finder = mac().applications().add({"Finder", "com.apple.finder"});
    mac().applications().openWindow(finder, {});
    launch();
    mac().runFor(1);
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 2"));
}

TEST_F(ProcessRoute, CountsNoWindowsWhereThereIsNoList) {
    installChrome();
    startChrome();
    mac().windowList().setFailing(true);
    launch();
    mac().runFor(5);
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 0"));
    EXPECT_TRUE(logged("[FULLSCREEN] Tentativo 1/8..."));
}

TEST_F(ProcessRoute, WaitsTwoSecondsForTheProcessAndOneMoreBeforeTheFirstAttempt) {
    installChrome();
    const double start = mac().now();
    launch();
    mac().runFor(10);
    const auto process = events(ProcessEvent::started).front().field(Field::pid);
    EXPECT_NEAR(timesOf(ProcessEvent::started).front() - start, 0, 1e-6);
    EXPECT_NEAR(timeOf("[BROWSER] Google Chrome PID (new): " + process) - start, 2, 1e-6);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 3, 1e-6);
}

TEST_F(ProcessRoute, TakesTheCandidateInTheHomeFolderWhereTheOtherDoesNotExist) {
    const std::string inHome = std::string("/Users/partecipante") + virtualmac::chromePath;
    install(inHome.c_str(), virtualmac::chrome());
    launch();
    mac().runFor(1);
    EXPECT_THAT(texts(ProcessEvent::started), ElementsAre(inHome));
}

TEST_F(ProcessRoute, TakesTheFirstCandidateThatExists) {
    installChrome();
    install((std::string("/Users/partecipante") + virtualmac::chromePath).c_str(), virtualmac::chrome());
    launch();
    mac().runFor(1);
    EXPECT_THAT(texts(ProcessEvent::started), ElementsAre(virtualmac::chromePath));
}

TEST_F(ProcessRoute, DoesNotSeeABrokenLink) {
    mac().files().add(virtualmac::chromePath, FileKind::brokenLink);
    install(virtualmac::edgePath, virtualmac::edge());
    launch();
    mac().runFor(1);
    EXPECT_TRUE(logged("[BROWSER] Browser selezionato: Microsoft Edge"));
}

TEST_F(ProcessRoute, KeepsTheBrowserThatRunsAlready) {
    installChrome();
    const auto before = startChrome();
    launch();
    mac().runFor(2.5);
    EXPECT_TRUE(logged("[BROWSER] Chrome già in esecuzione, PID pre-launch: " + pid(before)));
    EXPECT_TRUE(logged("[BROWSER] Google Chrome PID (pre-existing): " + pid(before)));
    EXPECT_EQ(launcher().browserPID(), before);
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), before);
    EXPECT_TRUE(launcher().wasPreExisting());
    // The second one was started anyway.
    EXPECT_THAT(events(ProcessEvent::started), SizeIs(2));
}

TEST_F(ProcessRoute, NamesChromeForAnEdgeThatRunsAlready) {
    install(virtualmac::edgePath, virtualmac::edge());
    const auto before = mac().processes().start(virtualmac::edgePath);
    mac().runFor(3);
    launch();
    mac().runFor(2.5);
    EXPECT_TRUE(logged("[BROWSER] Chrome già in esecuzione, PID pre-launch: " + pid(before)));
    EXPECT_TRUE(logged("[BROWSER] Lancio Microsoft Edge con args: --app=https://meet.example/abc --new-window"));
    EXPECT_TRUE(logged("[BROWSER] Microsoft Edge PID (pre-existing): " + pid(before)));
}

TEST_F(ProcessRoute, TakesTheOldestOfSeveralThatRunAlready) {
    installChrome([](auto& chrome) { chrome.handsOverIn.reset(); });
    const auto first = startChrome();
    startChrome();
    launch();
    mac().runFor(2.5);
    EXPECT_EQ(launcher().browserPID(), first);
}

TEST_F(ProcessRoute, KeepsAPreExistingProcessThatHasEndedMeanwhile) {
    installChrome([](auto& chrome) { chrome.handsOverIn.reset(); });
    const auto before = startChrome();
    launch();
    mac().runFor(1);
    mac().applications().exit(before);
    mac().runFor(1.5);
    EXPECT_EQ(launcher().browserPID(), before);
    EXPECT_TRUE(launcher().wasPreExisting());
}

TEST_F(ProcessRoute, TakesTheProcessThatABrowserForksInto) {
    installChrome([](auto& chrome) { chrome.forks = {0.2, 0.3}; });
    launch();
    mac().runFor(2.5);
    const auto started = events(ProcessEvent::started).front().field(Field::pid);
    EXPECT_TRUE(launcher().browserPID().has_value());
    EXPECT_NE(pid(launcher().browserPID().value_or(0)), started);
    EXPECT_TRUE(logged("[BROWSER] Google Chrome PID (new): " + pid(launcher().browserPID().value_or(0))));
}

TEST_F(ProcessRoute, FallsBackOnTheStartedProcessWhenItHasEndedAtOnce) {
    installChrome([](auto& chrome) { chrome.exitsAfter = 0.1; });
    launch();
    mac().runFor(5);
    const auto started = events(ProcessEvent::started).front().field(Field::pid);
    EXPECT_TRUE(logged("[BROWSER] Google Chrome PID (fallback): " + started));
    EXPECT_EQ(pid(launcher().browserPID().value_or(0)), started);
    EXPECT_EQ(launcher().browserApp(), nullptr);
    EXPECT_TRUE(logged("[FULLSCREEN] Nessuna finestra AX — riprovo tra 2s"));
}

TEST_F(ProcessRoute, FallsBackOnAProcessWithoutABundle) {
    installChrome([](auto& chrome) { chrome.application.bundleIdentifier.reset(); });
    launch();
    mac().runFor(2.5);
    const auto started = events(ProcessEvent::started).front().field(Field::pid);
    EXPECT_TRUE(logged("[BROWSER] Google Chrome PID (fallback): " + started));
    ASSERT_NE(launcher().browserApp(), nullptr);
    EXPECT_EQ(pid(launcher().browserApp()->processIdentifier()), started);
}

TEST_F(ProcessRoute, TakesAZombieForGone) {
    installChrome([](auto& chrome) {
        chrome.exitsAfter = 0.5;
        chrome.application.leavesZombie = true;
    });
    launch();
    mac().runFor(5);
    EXPECT_EQ(launcher().browserApp(), nullptr);
    EXPECT_TRUE(
        logged("[BROWSER] Google Chrome PID (fallback): " + events(ProcessEvent::started).front().field(Field::pid)));
}

struct Unusable {
    const char* name;
    FileKind kind;
};

class UnusableExecutable : public BrowserTest, public testing::WithParamInterface<Unusable> {};

TEST_P(UnusableExecutable, EndsTheLaunchWithAnErrorThoughItIsThere) {
    mac().files().add(virtualmac::chromePath, GetParam().kind);
    install(virtualmac::edgePath, virtualmac::edge());
    install((std::string("/Users/partecipante") + virtualmac::chromePath).c_str(), virtualmac::chrome());
    make();
    bool called = false;
    launcher().onSessionEnded = [&called](const std::string&) { called = true; };
    launch();
    mac().runFor(30);
    ASSERT_THAT(lines("[BROWSER] ❌ Errore lancio: "), SizeIs(1));
    EXPECT_GT(lines("[BROWSER] ❌ Errore lancio: ").front().size(), std::string("[BROWSER] ❌ Errore lancio: ").size());
    EXPECT_THAT(events(ProcessEvent::started), IsEmpty());
    EXPECT_THAT(lines("[FULLSCREEN]"), IsEmpty());
    EXPECT_FALSE(called);
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
    EXPECT_EQ(launcher().detectedBrowser(), SupportedBrowser::chrome);
}

INSTANTIATE_TEST_SUITE_P(ProcessRoute, UnusableExecutable,
                         testing::Values(Unusable{"folder", FileKind::folder}, Unusable{"plainFile", FileKind::file}),
                         [](const auto& info) { return info.param.name; });

TEST_F(ProcessRoute, EndsTheLaunchWhenTheProcessCannotBeStarted) {
    installChrome();
    mac().processes().failLaunches("Risorsa temporaneamente non disponibile.");
    launch();
    mac().runFor(0);
    // At once: the launch's thread does not wait.
    EXPECT_EQ(mac().leftovers().workers, 0u);
    mac().runFor(30);
    EXPECT_EQ(logLines().back(), "[BROWSER] ❌ Errore lancio: Risorsa temporaneamente non disponibile.");
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
}

TEST_F(ProcessRoute, EndsTheLaunchWhenTheExecutableHasGoneSinceTheDetection) {
    make(false, [](const FileManager&) { return SupportedBrowser::edge; });
    bool called = false;
    launcher().onSessionEnded = [&called](const std::string&) { called = true; };
    launch();
    mac().runFor(0);
    EXPECT_EQ(mac().leftovers().workers, 0u);
    mac().runFor(30);
    EXPECT_EQ(logLines().back(), "[BROWSER] ❌ Eseguibile non trovato per Microsoft Edge");
    EXPECT_FALSE(called);
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
}

TEST_F(ProcessRoute, EndsTheLaunchWithoutABrowser) {
    make(false, [](const FileManager&) { return std::nullopt; });
    launch();
    mac().runFor(30);
    EXPECT_THAT(logLines(),
                ElementsAre("[BROWSER] Reset stato per nuova sessione", "[BROWSER] URL Meet: https://meet.example/abc",
                            "[BROWSER] ❌ Nessun browser trovato"));
    EXPECT_EQ(launcher().detectedBrowser(), std::nullopt);
}

TEST_F(ProcessRoute, StartsTheSeriesOfAttemptsAnew) {
    installChrome([](auto& chrome) { chrome.windows.clear(); });
    make();
    launch();
    mac().runFor(0);
    // Full screen is requested while the browser is still being started.
    attempt();
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
    mac().runFor(4);
    EXPECT_EQ(count("[FULLSCREEN] Tentativo 1/8..."), 2u);
    EXPECT_EQ(launcher().fullscreenRetryCount(), 1);
}

TEST_F(ProcessRoute, AttemptsOnceMoreWhatWasConfirmedBeforeItsFirstAttempt) {
    installChrome();
    launch();
    mac().runFor(2.5);
    attempt();
    ASSERT_TRUE(launcher().isConfirmedFullscreen());
    mac().runFor(2);
    EXPECT_THAT(lines("[FULLSCREEN] Tentativo"),
                ElementsAre("[FULLSCREEN] Tentativo 1/8...", "[FULLSCREEN] Tentativo 1/8..."));
    EXPECT_TRUE(launcher().isConfirmedFullscreen());
}

TEST_F(ProcessRoute, OutlivesABrowserThatIsKilledAtAnyMomentOfTheLaunch) {
    installChrome();
    for (const double moment : {0.1, 0.3, 1.0, 1.9, 2.1, 2.9, 3.0, 3.2}) {
        make();
        launch();
        mac().runFor(moment);
        for (const auto& process : mac().processes().all()) {
            const auto identifier = process->processIdentifier();
            if (identifier != mac().applications().ownProcess()) mac().processes().exit(identifier);
        }
        mac().runFor(30);
        EXPECT_TRUE(launcher().isConfirmedFullscreen()) << moment;
        close();
        EXPECT_EQ(launcher().browserPID(), std::nullopt) << moment;
        release();
        mac().runFor(1);
        EXPECT_EQ(mac().leftovers().timers, 0u) << moment;
    }
}

}  // namespace
}  // namespace vantrel
