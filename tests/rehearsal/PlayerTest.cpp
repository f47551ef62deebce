#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <mutex>
#include <sstream>

#include "platform/Computer.h"
#include "platform/threads/Lock.h"
#include "rehearsal/playing/Player.h"

namespace vantrel::rehearsal {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

Scenario scenario(std::vector<Step> timeline, double until) {
    Scenario result;
    result.title = "T";
    result.timeline = std::move(timeline);
    result.until = until;
    return result;
}

struct Played {
    bool clean = false;
    std::string transcript;
};

Played played(const Scenario& scenario) {
    std::ostringstream stream;
    const bool clean = play(scenario, stream).clean;
    return {clean, stream.str()};
}

Played played(const Scenario& scenario, const std::function<void(const Computer&)>& program) {
    std::ostringstream stream;
    const bool clean = play(scenario, stream, {program}).clean;
    return {clean, stream.str()};
}

TEST(Player, EndsWithTheStateAndWhatIsLeft) {
    const auto run = played(scenario({}, 0.5));
    EXPECT_TRUE(run.clean);
    EXPECT_THAT(run.transcript, EndsWith("    0.500  end          the client is running\n"
                                         "                        | left: windows 1, visible windows 1, pending blocks "
                                         "1\n"));
}

TEST(Player, TellsAnAlertThatIsUpAtTheEnd) {
    auto second = scenario({}, 1);
    second.mac.applications.push_back({"Vantrel", "biz.quorrin.vantrel"});
    const auto run = played(second);
    EXPECT_TRUE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("    1.000  end          the client waits for an answer to: Vantrel è già in "
                                          "esecuzione.\n"));
}

TEST(Player, TellsThatStepsAfterTheEndOfTheClientAreIgnored) {
    const auto run = played(scenario({{2, PressKey{true, "q"}}, {3, PressButton{"Avvia sessione protetta"}}}, 4));
    EXPECT_TRUE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("    3.000  ignored      a step: the client has quit\n"));
    EXPECT_THAT(run.transcript, EndsWith("    4.000  end          the client has quit\n"
                                         "                        | left: nothing\n"));
}

TEST(Player, TellsStepsThatHaveNoEffect) {
    const auto run = played(scenario({{2, ExitApplication{"X"}},
                                      {2, UnplugDisplay{"X"}},
                                      {2, EndSession{"X"}},
                                      {2, AnswerAlert{"OK"}},
                                      {2, ChooseMenuItem{"X"}},
                                      {2, Deed::openStatusMenu},
                                      {2, Deed::closeMenu},
                                      {2, AnswerPermissionPrompt{true}},
                                      {2, PressButton{"X"}}},
                                     3));
    EXPECT_TRUE(run.clean);
    for (const char* line :
         {"ignored      X exits: it is not running\n", "ignored      display X is unplugged: there is none\n",
          "ignored      the server ends session X: there is none\n", "| ignored: no alert is up\n",
          "| ignored: no menu is open\n", "| ignored: there is no status item\n",
          "| ignored: no permission prompt is up\n", "| ignored: it is not on the screen\n"}) {
        EXPECT_THAT(run.transcript, HasSubstr(line));
    }
}

TEST(Player, PlugsInNoSecondDisplayOfOneName) {
    const Screen display{"Proiettore", {{1440, 0}, {1920, 1080}}};
    const auto run =
        played(scenario({{2, PlugDisplay{display}}, {3, PlugDisplay{display}}, {4, UnplugDisplay{"Proiettore"}}}, 5));
    EXPECT_THAT(run.transcript, HasSubstr("    3.000  ignored      display Proiettore is plugged in: there is one\n"));
    EXPECT_THAT(run.transcript, HasSubstr("    4.000  displays     are now\n"
                                          "                        | Schermo integrato 0 0 1440 900\n"
                                          "    5.000"));
}

TEST(Player, DoesWhatTheWorldDoes) {
    const auto run = played(scenario({{2, LaunchApplication{{"Anteprima", "com.apple.Preview"}}},
                                      {3, ExitApplication{"Anteprima"}},
                                      {4, PlugDisplay{{"Proiettore", {{1440, 0}, {1920, 1080}}}}},
                                      {5, UnplugDisplay{"Proiettore"}},
                                      {6, CloseLid{600}},
                                      {7, SetCapture{MediaType::audio, AuthorizationStatus::notDetermined}},
                                      {8, SetOpening{false}}},
                                     9));
    EXPECT_TRUE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("    2.000  application  Anteprima (501) starts\n"
                                          "    3.000  application  Anteprima (501) exits\n"
                                          "    4.000  displays     are now\n"
                                          "                        | Schermo integrato 0 0 1440 900\n"
                                          "                        | Proiettore 1440 0 1920 1080\n"
                                          "    5.000  displays     are now\n"
                                          "                        | Schermo integrato 0 0 1440 900\n"
                                          "    6.000  lid          is closed for 600 s\n"
                                          "    7.000  permission   microphone is set to undecided\n"
                                          "    8.000  fault        no address is opened\n"));
}

TEST(Player, StartsOnTheMacThatIsDescribed) {
    auto described = scenario({}, 1);
    described.mac.home = "/Users/altra";
    described.mac.displays = {{"A", {{0, 0}, {800, 600}}}};
    described.mac.separateSpaces = false;
    described.mac.accessibility = false;
    described.mac.microphone = AuthorizationStatus::restricted;
    described.mac.settings = {{"k", "v"}};
    described.mac.calendar = 60;
    described.mac.bundleIdentifier = "com.x";
    bool seen = false;
    played(described, [&seen](const Computer& computer) {
        seen = true;
        EXPECT_EQ(computer.files.homeDirectory(), "/Users/altra");
        EXPECT_EQ(computer.screens.mainScreen(), (Screen{"A", {{0, 0}, {800, 600}}}));
        EXPECT_FALSE(computer.screens.screensHaveSeparateSpaces());
        EXPECT_FALSE(computer.accessibilityTrust.isProcessTrusted());
        EXPECT_EQ(computer.captureAuthorization.status(MediaType::audio), AuthorizationStatus::restricted);
        EXPECT_EQ(computer.captureAuthorization.status(MediaType::video), AuthorizationStatus::authorized);
        EXPECT_EQ(computer.userDefaults.string("k"), "v");
        EXPECT_EQ(computer.clock.secondsSince1970(), 60);
        EXPECT_EQ(computer.mainBundle.identifier(), "com.x");
        EXPECT_EQ(computer.runningApplications.withBundleIdentifier("com.x").size(), 1U);
        computer.application.run();
    });
    EXPECT_TRUE(seen);
}

TEST(Player, ReportsAWaitThatNeverEnds) {
    const auto run = played(scenario({}, 1), [](const Computer& computer) {
        computer.dispatch.makeSemaphore(0)->wait(1e300);
        computer.application.run();
    });
    EXPECT_FALSE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("  misuse       "));
}

TEST(Player, ReportsAWaitUnderALock) {
    const auto run = played(scenario({}, 1), [](const Computer& computer) {
        Lock lock;
        lock.lock();
        computer.threads.sleep(0.1);
        lock.unlock();
        computer.application.run();
    });
    EXPECT_FALSE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("  misuse       "));
}

TEST(Player, ReportsARunLoopThatIsEnteredUnderALock) {
    const auto run = played(scenario({}, 1), [](const Computer& computer) {
        Lock lock;
        const std::scoped_lock guard(lock);
        computer.application.run();
    });
    EXPECT_FALSE(run.clean);
    EXPECT_THAT(run.transcript, HasSubstr("  misuse       a wait with a lock held\n"));
    EXPECT_THAT(run.transcript, Not(HasSubstr("broken off")));
}

TEST(PlayerDeathTest, GivesUpOnAClientThatMisusesWithoutEnd) {
    const auto hopeless = [] {
        const auto misuse = [](const Computer& computer) {
            Lock lock;
            const std::scoped_lock guard(lock);
            for (;;) computer.threads.sleep(0.1);
        };
        play(scenario({}, 1), std::cout, {misuse});
    };
    EXPECT_EXIT(hopeless(), testing::ExitedWithCode(1), "");
}

/// Plays a client in whose place the program ends, in a process of its own, and prints the transcript where death tests
/// look.
void playHere(const std::function<void(const Computer&)>& block) {
    const auto program = [&block](const Computer& computer) {
        computer.dispatch.userInitiatedQueue().async([computer, block] { block(computer); });
        computer.application.run();
    };
    play(scenario({}, 1), std::cerr, {program});
}

TEST(PlayerDeathTest, EndsTheRunWithAnInterfaceTouchedOffTheMainThread) {
    const auto touch = [](const Computer& computer) {
        computer.log.print("before");
        computer.alerts.runModal({});
        computer.log.print("after");
    };
    EXPECT_EXIT(playHere(touch), testing::ExitedWithCode(1),
                "^    0.000  log          before\n"
                "    0.000  misuse       Alerts.runModal off the main thread\n$");
}

TEST(PlayerDeathTest, WritesTheTranscriptOfAClientWhoseBackgroundWorkNeverEnds) {
    const auto sleeps = [](const Computer& computer) {
        for (;;) computer.threads.sleep(60);
    };
    EXPECT_EXIT(playHere(sleeps), testing::ExitedWithCode(1),
                "    1.000  end          the client is running\n"
                "                        . left: .*background work 1.*\n"
                "(.|\n)* misuse       something goes on and on\n"
                ".* misuse       a thread of the client does not end; the run is broken off\n");
    const auto waits = [](const Computer& computer) {
        for (;;) computer.dispatch.makeSemaphore(0)->wait(1e300);
    };
    EXPECT_EXIT(playHere(waits), testing::ExitedWithCode(1), " misuse       .*broken off\n");
}

TEST(Player, ReplaysASeedToTheByte) {
    auto seeded = scenario({{2, PressButton{"Avvia sessione protetta"}}}, 20);
    seeded.mac.seed = 77;
    const auto first = played(seeded);
    EXPECT_EQ(first.transcript, played(seeded).transcript);
    EXPECT_THAT(first.transcript, Not(HasSubstr("misuse")));
}

}  // namespace
}  // namespace vantrel::rehearsal
