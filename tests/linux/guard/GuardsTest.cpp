#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>
#include <string>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "tests/linux/keyboard/KeyboardClientProcess.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/ProcessStates.h"
#include "tests/linux/x11/ForeignWindow.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestKeyboard.h"

namespace vantrel::linuxdesktop {
namespace {

/// A client in another process that holds the keyboard and covers a part of the screen.
class GuardsTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (HasFatalFailure()) return;
        window = std::make_unique<KeyWindow>();
        ASSERT_TRUE(waitUntil([&] { return window->hasFocus(); }));
    }

    void TearDown() override {
        client.reset();
        window.reset();
        DesktopTest::TearDown();
    }

    void start(const std::string& argument = {}) {
        client = std::make_unique<KeyboardClientProcess>(VANTREL_HOLDING_CLIENT, argument);
        ASSERT_EQ(client->line(), "ready");
        ASSERT_TRUE(waitUntil([&] { return covered(); }));
        ASSERT_TRUE(waitUntil([&] {
            const auto all = guards();
            return all.size() == 2 && std::all_of(all.begin(), all.end(), isPresent);
        }));
    }

    bool covered() {
        for (const auto& child : view.named("Vantrel overlay")) {
            if (child.viewable) return true;
        }
        return false;
    }

    // Whether a key that is typed from now on reaches the window.
    bool keysPass(double seconds = 10) {
        window->forget();
        return waitUntil(
            [&] {
                keyboard.type(positionOfB);
                turnFor(0.05);
                return !window->pressed().empty();
            },
            seconds);
    }

    // Whether the tap of the client works.
    bool swallows() {
        window->forget();
        keyboard.type(positionOfQ, commandFlag);
        keyboard.type(positionOfA);
        if (!waitUntil([&] { return window->positions().size() >= 2; }, 3)) return false;
        for (const auto position : window->positions()) {
            if (position == positionOfQ) return false;
        }
        return true;
    }

    static std::filesystem::path guardProgram() {
        return std::filesystem::canonical(std::filesystem::path(VANTREL_HOLDING_CLIENT).parent_path() /
                                          "vantrel-guard");
    }

    std::set<pid_t> guards() const { return childrenOf(client->process()); }

    void stop(pid_t process) {
        kill(process, SIGSTOP);
        ASSERT_TRUE(waitUntil([&] { return stateOf(process) == 'T' || stateOf(process) == 'X'; }));
    }

    bool isFreed() {
        return waitUntil([&] { return !covered(); }) && keysPass();
    }

    ServerView view;
    TestKeyboard keyboard;
    std::unique_ptr<KeyWindow> window;
    std::unique_ptr<KeyboardClientProcess> client;
};

TEST_F(GuardsTest, GiveScreenAndKeyboardBackWhileTheClientIsStopped) {
    start();
    ASSERT_TRUE(swallows());
    stop(client->process());
    EXPECT_TRUE(isFreed());
    EXPECT_EQ(stateOf(client->process()), 'T');
}

TEST_F(GuardsTest, LoseNoKeyThatIsTypedOnceTheyHaveNoticedTheStop) {
    start();
    stop(client->process());
    ASSERT_TRUE(waitUntil([&] { return !covered(); }));
    turnFor(1.5);
    keyboard.type(positionOfA);
    keyboard.type(positionOfB);
    ASSERT_TRUE(waitUntil([&] { return window->pressed().size() >= 2; }));
    EXPECT_EQ(window->positions(), (std::vector<xcb_keycode_t>{positionOfA, positionOfB}));
}

TEST_F(GuardsTest, LetTheClientCoverAgainThatGoesOn) {
    start();
    stop(client->process());
    ASSERT_TRUE(waitUntil([&] { return !covered(); }));
    client->signal(SIGCONT);
    turnFor(1);
    EXPECT_FALSE(covered()) << "nobody has raised the cover yet";
    client->tell('r');
    EXPECT_TRUE(waitUntil([&] { return covered(); }));
    EXPECT_TRUE(client->isThere());
    turnFor(1);
    EXPECT_TRUE(covered());
}

TEST_F(GuardsTest, LeaveATapAloneWhoseClientIsStoppedForAMoment) {
    start();
    for (int i = 0; i < 5; ++i) {
        client->signal(SIGSTOP);
        turnFor(0.3);
        client->signal(SIGCONT);
        turnFor(0.8);
    }
    EXPECT_TRUE(swallows());
}

TEST_F(GuardsTest, UncoverAScreenWhoseClientDoesNotAnswerForLongerThanAnEndTakes) {
    start();
    client->tell('h');
    turnFor(12);
    EXPECT_TRUE(covered());
    EXPECT_TRUE(waitUntil([&] { return !covered(); }, 12));
    ASSERT_TRUE(client->isThere());
    client->tell('r');
    EXPECT_TRUE(waitUntil([&] { return covered(); }));
}

TEST_F(GuardsTest, NeedOnlyOneOfThemWhateverBecomesOfTheOther) {
    for (const int signal : {SIGKILL, SIGSTOP}) {
        for (const bool guardFirst : {true, false}) {
            start();
            const pid_t guard = *guards().begin();
            if (guardFirst) kill(guard, signal);
            client->signal(SIGSTOP);
            if (!guardFirst) kill(guard, signal);
            EXPECT_TRUE(isFreed()) << signal << guardFirst;
            client->signal(SIGKILL);
            client.reset();
        }
    }
}

TEST_F(GuardsTest, AreReplacedWhenTheyAreKilledOrStopped) {
    start();
    for (const int signal : {SIGKILL, SIGSTOP}) {
        const auto before = guards();
        for (const pid_t guard : before) kill(guard, signal);
        EXPECT_TRUE(waitUntil([&] {
            const auto now = guards();
            for (const pid_t guard : before) {
                if (now.count(guard) != 0) return false;
            }
            return now.size() == 2;
        })) << signal;
        EXPECT_TRUE(client->isThere());
        EXPECT_TRUE(swallows());
        turnFor(1.5);
        EXPECT_TRUE(swallows());
    }
}

TEST_F(GuardsTest, WatchTheKeysAgainThoughAReplacementWasKilledBeforeItWatched) {
    start();
    const auto before = guards();
    const pid_t other = *before.rbegin();
    kill(*before.begin(), SIGKILL);
    // Some of these are killed before they can do anything.
    for (int i = 0; i < 5; ++i) {
        waitUntil([&] { return guards().size() == 2; }, 3);
        for (const pid_t guard : guards()) {
            if (guard != other) kill(guard, SIGKILL);
        }
    }
    turnFor(8);
    ASSERT_EQ(guards().size(), 2U);
    stop(client->process());
    kill(other, SIGKILL);
    EXPECT_TRUE(isFreed());
}

// The kernel continues a client whose guards have gone.
TEST_F(GuardsTest, LeaveNoStoppedClientBehindWithTheKeyboard) {
    start();
    const auto all = guards();
    client->signal(SIGSTOP);
    for (const pid_t guard : all) kill(guard, SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return stateOf(client->process()) != 'T'; }));
    EXPECT_TRUE(client->isThere());
    EXPECT_TRUE(keysPass());
    EXPECT_TRUE(waitUntil([&] { return guards().size() == 2; }));
}

// The kernel ends a guard that is stopped, and continues the client then.
TEST_F(GuardsTest, HoldNobodyWhenEveryProcessIsStoppedAtOnce) {
    start();
    const auto all = guards();
    for (const pid_t guard : all) kill(guard, SIGSTOP);
    client->signal(SIGSTOP);
    EXPECT_TRUE(keysPass());
    EXPECT_TRUE(waitUntil([&] { return guards().size() == 2 && guards() != all; }));
    EXPECT_TRUE(client->isThere());
}

TEST_F(GuardsTest, EndWithTheClient) {
    start();
    const auto all = guards();
    EXPECT_EQ(client->end(), 0);
    for (const pid_t guard : all) EXPECT_EQ(stateOf(guard), 'X');
}

// A wait for the end of one child lasts until all have ended where SIGCHLD is ignored.
TEST_F(GuardsTest, EndWithTheClientWhoseParentIgnoresItsChildren) {
    const auto before = ::signal(SIGCHLD, SIG_IGN);
    start();
    ::signal(SIGCHLD, before);
    const auto all = guards();
    kill(*all.begin(), SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return guards().size() == 2 && guards() != all; }));
    client->closeInput();
    EXPECT_TRUE(waitUntil([&] { return stateOf(client->process()) == 'Z'; }));
    EXPECT_EQ(client->end(), 0);
}

TEST_F(GuardsTest, AreSaidToHaveGivenTheKeyboardBack) {
    testing::internal::CaptureStderr();
    start();
    stop(client->process());
    ASSERT_TRUE(waitUntil([&] { return !covered(); }));
    turnFor(1.5);
    client->signal(SIGCONT);
    turnFor(0.5);
    EXPECT_TRUE(client->isThere());
    client->end();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("the client was stopped, and a guard has given the keyboard back"), std::string::npos) << said;
}

TEST_F(GuardsTest, AreNeededBeforeADisplayIsCovered) {
    const auto program = folder.path() / "client";
    std::filesystem::copy_file(VANTREL_HOLDING_CLIENT, program);
    client = std::make_unique<KeyboardClientProcess>(program.string());
    EXPECT_EQ(client->line(), "refused");
    client->tell('r');
    turnFor(1);
    EXPECT_FALSE(covered());
    std::filesystem::create_symlink(guardProgram(), folder.path() / "vantrel-guard");
    client->tell('r');
    EXPECT_TRUE(waitUntil([&] { return covered(); }));
    EXPECT_EQ(guards().size(), 2U);
}

TEST_F(GuardsTest, AreNeededAsLongAsADisplayIsCovered) {
    const auto program = folder.path() / "client";
    std::filesystem::copy_file(VANTREL_HOLDING_CLIENT, program);
    std::filesystem::create_symlink(guardProgram(), folder.path() / "vantrel-guard");
    client = std::make_unique<KeyboardClientProcess>(program.string());
    ASSERT_EQ(client->line(), "ready");
    ASSERT_TRUE(waitUntil([&] { return covered() && guards().size() == 2; }));
    std::filesystem::remove(folder.path() / "vantrel-guard");
    for (const pid_t guard : guards()) kill(guard, SIGKILL);
    EXPECT_TRUE(waitUntil([&] {
        client->tell('r');
        turnFor(0.2);
        return !covered();
    })) << "nobody could take the cover from a client that is stopped";
    std::filesystem::create_symlink(guardProgram(), folder.path() / "vantrel-guard");
    EXPECT_TRUE(waitUntil([&] {
        client->tell('r');
        turnFor(0.2);
        return covered();
    }));
    EXPECT_FALSE(guards().empty());
}

// A lease holds every opening of the file up, as a slow disk does.
TEST_F(GuardsTest, HoldNoKeyUpWhileTheyAreReadFromASlowDisk) {
    std::filesystem::copy_file(VANTREL_HOLDING_CLIENT, folder.path() / "client");
    std::filesystem::create_symlink(guardProgram(), folder.path() / "vantrel-guard");
    std::filesystem::copy_file(guardProgram(), folder.path() / "slow");
    client = std::make_unique<KeyboardClientProcess>((folder.path() / "client").string());
    ASSERT_EQ(client->line(), "ready");
    ASSERT_TRUE(swallows());
    const auto before = ::signal(SIGIO, SIG_IGN);
    FileDescriptor slow(open((folder.path() / "slow").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(fcntl(slow.get(), F_SETLEASE, F_WRLCK), 0);
    std::filesystem::rename(folder.path() / "slow", folder.path() / "vantrel-guard");
    const auto all = guards();
    kill(*all.begin(), SIGKILL);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(swallows());
        turnFor(1.2);
    }
    EXPECT_TRUE(client->isThere());
    EXPECT_NE(fcntl(slow.get(), F_GETLEASE), F_WRLCK) << "somebody waits for the file";
    EXPECT_EQ(guards().count(*all.rbegin()), 1U);
    slow.close();
    EXPECT_TRUE(waitUntil([&] { return guards().size() == 2 && guards().count(*all.begin()) == 0; }));
    turnFor(1.5);
    EXPECT_TRUE(swallows());
    ::signal(SIGIO, before);
}

TEST_F(GuardsTest, BringTheBrowserAndThePersonBackFromTheDesktopOfAKilledClient) {
    const auto server = X11Connection::open();
    X11Desktops desktops(*server);
    X11Windows windows(*server);
    X11WindowSurvey survey(*server, windows);
    desktops.switchTo(1);
    ASSERT_TRUE(waitUntil([&] { return desktops.current() == 1U; }));
    const auto before = desktops.count();
    window.reset();
    ForeignWindow browser("Lezione", {100, 100, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return survey.ofProcess(getpid()).size() == 1; }));
    start(std::to_string(getpid()));
    ASSERT_TRUE(waitUntil([&] { return survey.of(browser.id())->fullScreen && desktops.current() == *before; }));
    const auto all = guards();
    client->signal(SIGKILL);
    EXPECT_TRUE(waitUntil([&] {
        const auto now = survey.of(browser.id());
        return !now->fullScreen && now->desktop == 1U && desktops.current() == 1U && desktops.count() == before;
    }));
    for (const pid_t guard : all) {
        EXPECT_TRUE(waitUntil([&] { return !exists(guard); }));
    }
    EXPECT_EQ(desktops.count(), before) << "both guards have taken it away";
    EXPECT_FALSE(covered());
    desktops.switchTo(0);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
