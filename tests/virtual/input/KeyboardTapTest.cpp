#include <atomic>

#include "tests/virtual/input/KeyboardTest.h"

namespace vantrel::virtualmac {
namespace {

class KeyboardTapTest : public KeyboardTest {};

std::atomic<int> notices = 0;
std::atomic<std::uint32_t> lastNotice = 0;

/// Like everyShortcut; also records that the tap was disabled.
std::string_view watchful(const KeyEvent& event) noexcept {
    if (event.type == KeyEventType::tapDisabledByTimeout || event.type == KeyEventType::tapDisabledByUserInput) {
        ++notices;
        lastNotice = static_cast<std::uint32_t>(event.type);
    }
    return everyShortcut(event);
}

std::string_view swallowsNotices(const KeyEvent&) noexcept {
    return "all";
}

TEST_F(KeyboardTapTest, SwallowsWhatTheDecisionNamesAndDeliversTheRest) {
    startTap();
    forgetEvents();
    pressAndSee("a");
    pressAndSee("cmd+q");
    EXPECT_EQ((Happenings{
                  {DesktopDeed::pressKey, "a"},
                  {KeyboardEvent::delivered,
                   "a",
                   {{Field::code, "0"}, {Field::flags, "0"}, {Field::application, "Google Chrome"}}},
                  {DesktopDeed::pressKey, "cmd+q"},
                  {ClientEvent::log, "shortcut"},
                  {KeyboardEvent::swallowed, "cmd+q", {{Field::code, "12"}, {Field::flags, "1048576"}}},
              }),
              transcript());
    EXPECT_EQ(1U, mac().keys().received().size());
}

TEST_F(KeyboardTapTest, HearsAKeyThatIsHeldDownAgainAndAgain) {
    startTap();
    participant().pressKey(12, KeyStroke::command, 4);
    mac().runFor(1);
    EXPECT_EQ((Lines{"shortcut", "shortcut", "shortcut", "shortcut"}), logLines());
    EXPECT_NEAR(3 * DesktopParticipant::repeatInterval, events(KeyboardEvent::swallowed).back().time, 1e-9);
    EXPECT_EQ("4", events<DesktopDeed>().front().field(Field::times));
}

TEST_F(KeyboardTapTest, IsAskedUnderAnAlertAndAMenuAndWhileTimersStandStill) {
    startTap();
    std::unique_ptr<Timer> timer;
    std::unique_ptr<StatusItem> item;
    int ticks = 0;
    mac().onMain([&] {
        timer = computer().mainRunLoop.scheduledTimer(1, true, [&ticks] { ++ticks; });
        Menu menu;
        menu.items.resize(1);
        menu.items.front().title = "Termina";
        menu.items.front().target = [this] {
            computer().alerts.runModal({AlertStyle::warning, "Sicuro?", "", {"No"}});
        };
        item = computer().statusBar.statusItem(variableStatusItemLength);
        item->setMenu(menu);
    });
    participant().openStatusMenu();
    mac().runFor(60);
    pressAndSee("cmd+q");
    EXPECT_EQ(1U, logLines().size());
    participant().chooseMenuItem("Termina");
    mac().runFor(1);
    pressAndSee("cmd+tab");
    EXPECT_EQ(2U, logLines().size());
    EXPECT_EQ(chrome, mac().desktop().front().front().process);
    EXPECT_EQ(0, ticks);
    participant().answerAlert("No");
    mac().runFor(3);
    EXPECT_GE(ticks, 2);
    mac().onMain([&] {
        item.reset();
        timer.reset();
    });
}

TEST_F(KeyboardTapTest, IsDisabledWhenItsThreadDoesNotAnswerForASecondAndStaysSo) {
    notices = 0;
    startTap(watchful);
    forgetEvents();
    mac().postToMain([this] { computer().threads.sleep(3); });
    mac().runFor(0.5);
    press("cmd+m");
    press("cmd+w");
    mac().runFor(0.9);
    EXPECT_EQ(Lines{}, texts(KeyboardEvent::delivered));
    EXPECT_FALSE(state().minimised);
    mac().runFor(0.2);
    EXPECT_EQ(Lines{"timeout"}, texts(KeyboardEvent::tapDisabled));
    EXPECT_NEAR(1.5, events(KeyboardEvent::tapDisabled).front().time, 1e-9);
    EXPECT_EQ((Lines{"cmd+m", "cmd+w"}), texts(KeyboardEvent::delivered));
    mac().runFor(2);
    EXPECT_EQ(1, notices);
    EXPECT_EQ(static_cast<std::uint32_t>(KeyEventType::tapDisabledByTimeout), lastNotice);
    pressAndSee("cmd+space");
    EXPECT_EQ(3U, mac().keys().received().size());
    EXPECT_EQ(Lines{}, logLines());
    EXPECT_EQ(0U, mac().leftovers().keyboardTaps) << "it is removed with the notice";
    EXPECT_EQ(0U, mac().keyboard().enabledTaps());
}

TEST_F(KeyboardTapTest, AnswersInTimeAfterAShortSleep) {
    startTap();
    mac().postToMain([this] { computer().threads.sleep(0.9); });
    mac().runFor(0);
    press("cmd+q");
    mac().runFor(3);
    EXPECT_EQ(Lines{"shortcut"}, logLines());
    EXPECT_EQ(Lines{}, texts(KeyboardEvent::tapDisabled));
    EXPECT_EQ(1U, mac().keyboard().enabledTaps());
}

TEST_F(KeyboardTapTest, DeliversAKeyWhoseReportTakesTooLong) {
    mac().onMain([this] {
        tap =
            computer().keyboardTaps.create(everyShortcut, [this](std::string_view) { computer().threads.sleep(1.5); });
    });
    press("cmd+m");
    mac().runFor(2);
    EXPECT_EQ(Lines{"cmd+m"}, texts(KeyboardEvent::delivered));
    EXPECT_EQ(Lines{}, texts(KeyboardEvent::swallowed));
    EXPECT_TRUE(state().minimised);
}

TEST_F(KeyboardTapTest, IsDisabledWhenThePermissionIsRevoked) {
    notices = 0;
    startTap(watchful);
    mac().at(5, [this] { mac().trust().setTrusted(false); });
    mac().runUntil(4);
    pressAndSee("cmd+m");
    EXPECT_FALSE(state().minimised);
    mac().runUntil(6);
    EXPECT_EQ(Lines{"user input"}, texts(KeyboardEvent::tapDisabled));
    EXPECT_EQ(1, notices);
    EXPECT_EQ(static_cast<std::uint32_t>(KeyEventType::tapDisabledByUserInput), lastNotice);
    mac().trust().setTrusted(true);
    pressAndSee("cmd+m");
    EXPECT_TRUE(state().minimised);
}

TEST_F(KeyboardTapTest, LeavesTheSystemUnderAnAlertToo) {
    mac().keyboard().setFreezing(true);
    startTap();
    mac().postToMain([this] { computer().alerts.runModal({AlertStyle::warning, "Uno", "", {"A"}}); });
    mac().runFor(5);
    mac().trust().setTrusted(false);
    press("cmd+m");
    mac().runFor(2);
    EXPECT_EQ(0U, mac().leftovers().keyboardTaps);
    EXPECT_EQ(Lines{"cmd+m"}, texts(KeyboardEvent::delivered));
    participant().answerAlert("A");
    mac().runFor(0);
}

TEST_F(KeyboardTapTest, LeavesTheSystemWhenASecondOneIsRefusedThoughTheClientIsCalledTrusted) {
    mac().keyboard().setFreezing(true);
    mac().trust().setHiding(true);
    startTap();
    mac().trust().setTrusted(false);
    EXPECT_TRUE(computer().accessibilityTrust.isProcessTrusted());
    mac().runFor(2);
    EXPECT_EQ(1U, texts(KeyboardEvent::tapRefused).size());
    EXPECT_EQ(0U, mac().leftovers().keyboardTaps);
    mac().runFor(10);
    EXPECT_EQ(1U, texts(KeyboardEvent::tapRefused).size());
}

TEST_F(KeyboardTapTest, StaysWhenASecondOneIsGivenWhichIsNotAskedForOften) {
    startTap();
    for (int call = 0; call < 4; ++call) mac().onMain([this] { mac().keyboard().noteLostTrust(); });
    EXPECT_EQ(2U, texts(KeyboardEvent::tapCreated).size());
    mac().runFor(2);
    mac().onMain([this] { mac().keyboard().noteLostTrust(); });
    EXPECT_EQ(3U, texts(KeyboardEvent::tapCreated).size());
    EXPECT_EQ(1U, mac().leftovers().keyboardTaps);
}

TEST_F(KeyboardTapTest, IsRefusedWithoutThePermissionAndByAFault) {
    mac().trust().setTrusted(false);
    startTap();
    EXPECT_EQ(nullptr, tap);
    mac().trust().setTrusted(true);
    mac().keyboard().refuse(1);
    startTap();
    EXPECT_EQ(nullptr, tap);
    startTap();
    EXPECT_NE(nullptr, tap);
    mac().keyboard().refuse(VirtualKeyboardTaps::always);
    for (int attempt = 0; attempt < 3; ++attempt) {
        mac().onMain([this] { EXPECT_EQ(nullptr, computer().keyboardTaps.create(everyShortcut, {})); });
    }
    EXPECT_EQ(5U, texts(KeyboardEvent::tapRefused).size());
    EXPECT_EQ(1U, mac().leftovers().keyboardTaps);
}

TEST_F(KeyboardTapTest, LetsKeysPassAfterItsEndAlsoThoseThatWait) {
    startTap();
    mac().postToMain([this] {
        computer().threads.sleep(0.5);
        tap.reset();
    });
    mac().runFor(0);
    press("cmd+m");
    mac().runFor(0.4);
    EXPECT_FALSE(state().minimised);
    mac().runFor(0.2);
    EXPECT_EQ(Lines{"cmd+m"}, texts(KeyboardEvent::delivered));
    EXPECT_TRUE(state().minimised);
    EXPECT_EQ(0U, mac().leftovers().keyboardTaps);
    EXPECT_EQ(Lines{}, logLines());
}

TEST_F(KeyboardTapTest, IsAskedBeforeAnOlderOne) {
    startTap();
    std::unique_ptr<KeyboardTap> newer;
    const auto noLetterQ = [](const KeyEvent& event) noexcept {
        return event.type == KeyEventType::keyDown && event.keyCode == 12 ? std::string_view("Q") : std::string_view();
    };
    mac().onMain([&] {
        newer = computer().keyboardTaps.create(
            noLetterQ, [this](std::string_view name) { computer().log.print("newer " + std::string(name)); });
    });
    press("cmd+q");
    press("cmd+w");
    mac().runFor(0);
    EXPECT_EQ((Lines{"newer Q", "shortcut"}), logLines());
    mac().onMain([&] { newer.reset(); });
}

TEST_F(KeyboardTapTest, MayNotSwallowTheNoticeOfItsEnd) {
    startTap(swallowsNotices);
    expectMisuse();
    mac().trust().setTrusted(false);
    mac().runFor(0);
    EXPECT_EQ(Lines{"a keyboard tap swallows the notice of its end"}, expectedMisuse());
}

TEST_F(KeyboardTapTest, SeesTheKeyEquivalentsOfTheMenuToo) {
    int chosen = 0;
    mac().onMain([&] {
        Menu menu;
        MenuItem entry;
        entry.title = "Esci";
        entry.keyEquivalent = "q";
        entry.target = [&] { ++chosen; };
        Menu main;
        MenuItem submenu;
        submenu.kind = MenuItem::Kind::submenu;
        submenu.submenu.items = {entry};
        main.items = {submenu};
        computer().application.setMainMenu(main);
    });
    participant().pressCommand("q");
    mac().runFor(0);
    EXPECT_EQ(1, chosen);
    startTap();
    participant().pressCommand("q");
    mac().runFor(0);
    EXPECT_EQ(1, chosen);
    EXPECT_EQ(Lines{"cmd+q"}, texts(KeyboardEvent::swallowed));
    mac().onMain([this] { tap.reset(); });
    mac().onMain([this] { computer().application.activate(); });
    pressAndSee("cmd+q");
    EXPECT_EQ(2, chosen);
}

}  // namespace
}  // namespace vantrel::virtualmac
