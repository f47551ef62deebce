#include <signal.h>
#include <unistd.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <QProcess>
#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/guard/GuardSource.h"
#include "platform/linux/keyboard/KeyModifiers.h"
#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/keyboard/LinuxKeyboardTaps.h"
#include "platform/linux/threads/MainThread.h"
#include "tests/linux/keyboard/KeyboardClientProcess.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/support/ProcessStates.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/MasterPair.h"
#include "tests/linux/x11/TestKeyboard.h"

namespace vantrel::linuxdesktop {
namespace {

using Key = KeyWindow::Key;

constexpr xcb_keycode_t superKey = 133;

// The events that the decision has seen in the current test.
class Asked {
  public:
    static Asked& all() {
        static Asked asked;
        return asked;
    }

    void clear() {
        const std::lock_guard lock(mutex_);
        events_.clear();
    }
    void add(const KeyEvent& event) {
        const std::lock_guard lock(mutex_);
        events_.push_back(event);
    }
    std::vector<KeyEvent> events() const {
        const std::lock_guard lock(mutex_);
        return events_;
    }
    std::vector<std::int64_t> codes(KeyEventType type) const {
        std::vector<std::int64_t> found;
        for (const KeyEvent& event : events()) {
            if (event.type == type) found.push_back(event.keyCode);
        }
        return found;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<KeyEvent> events_;
};

std::string_view commandQorW(const KeyEvent& event) noexcept {
    Asked::all().add(event);
    if (event.type != KeyEventType::keyDown || (event.flags & commandFlag) == 0) return {};
    if (event.keyCode == 12) return "Cmd+Q";
    return event.keyCode == 13 ? "Cmd+W" : std::string_view();
}

std::string_view everyQ(const KeyEvent& event) noexcept {
    return event.type == KeyEventType::keyDown && event.keyCode == 12 ? "Q" : std::string_view();
}

// Another client that grabs every key as a filter does.
class OtherFilter {
  public:
    OtherFilter() : connection_(X11Connection::open()) {
        const auto query = xcb_input_xi_query_version(connection_->get(), 2, 2);
        const X11Reply<xcb_input_xi_query_version_reply_t> version(
            xcb_input_xi_query_version_reply(connection_->get(), query, nullptr));
    }

    bool grabsEveryKey() { return grabs(XCB_GRAB_ANY); }
    bool grabs(std::uint32_t position) {
        const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        constexpr std::uint32_t anyModifier = 0x80000000U;
        const auto cookie = xcb_input_xi_passive_grab_device(
            connection_->get(), XCB_CURRENT_TIME, connection_->root(), XCB_CURSOR_NONE, position, keyboard(), 1, 1,
            XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &anyModifier);
        const X11Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
            xcb_input_xi_passive_grab_device_reply(connection_->get(), cookie, nullptr));
        return reply && reply->num_modifiers == 0;
    }

    bool takesTheKeyboard() {
        const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        const auto cookie = xcb_input_xi_grab_device(connection_->get(), connection_->root(), XCB_CURRENT_TIME,
                                                     XCB_CURSOR_NONE, keyboard(), XCB_INPUT_GRAB_MODE_22_ASYNC,
                                                     XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1, &events);
        const X11Reply<xcb_input_xi_grab_device_reply_t> reply(
            xcb_input_xi_grab_device_reply(connection_->get(), cookie, nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

  private:
    std::uint16_t keyboard() {
        const auto cookie = xcb_input_xi_query_device(connection_->get(), XCB_INPUT_DEVICE_ALL_MASTER);
        const X11Reply<xcb_input_xi_query_device_reply_t> reply(
            xcb_input_xi_query_device_reply(connection_->get(), cookie, nullptr));
        auto each = xcb_input_xi_query_device_infos_iterator(reply.get());
        for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
            if (each.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) return each.data->deviceid;
        }
        return 0;
    }

    std::unique_ptr<X11Connection> connection_;
};

std::size_t entries(const char* folder) {
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

class KeyboardTapTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (HasFatalFailure()) return;
        Asked::all().clear();
        mainThread = std::make_unique<MainThread>();
        guards = std::make_unique<GuardSource>(*mainThread);
        taps = std::make_unique<LinuxKeyboardTaps>(*mainThread, *guards);
        window = std::make_unique<KeyWindow>();
        ASSERT_TRUE(waitUntil([&] { return window->hasFocus(); }));
    }

    void TearDown() override {
        tap.reset();
        window.reset();
        taps.reset();
        guards.reset();
        mainThread.reset();
        DesktopTest::TearDown();
    }

    void start(KeyDecision decision = commandQorW) {
        tap = taps->create(decision, [this](std::string_view name) {
            EXPECT_TRUE(mainThread->isCurrent());
            reports.emplace_back(name);
        });
        ASSERT_TRUE(tap);
    }

    // Whether the window receives exactly these keys, and no other one soon after.
    testing::AssertionResult received(const std::vector<xcb_keycode_t>& expected) {
        if (!waitUntil([&] { return window->pressed().size() >= expected.size(); })) {
            return testing::AssertionFailure() << window->pressed().size() << " keys instead of " << expected.size();
        }
        turnFor(0.1);
        if (window->positions() == expected) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "other keys: " << testing::PrintToString(window->positions());
    }

    // Whether a key typed now or soon reaches the window.
    bool keysPass(double seconds) {
        window->forget();
        return waitUntil(
            [&] {
                keyboard.type(positionOfB);
                turnFor(0.05);
                return !window->pressed().empty();
            },
            seconds);
    }

    // Whether a typed key is swallowed, which shows that the tap's filter works.
    bool swallows() {
        window->forget();
        const std::size_t before = reports.size();
        keyboard.type(positionOfQ, commandFlag);
        const bool reported = waitUntil([&] { return reports.size() > before; }, 2);
        turnFor(0.05);
        const auto seen = window->positions();
        return reported && std::find(seen.begin(), seen.end(), positionOfQ) == seen.end();
    }

    void expectSwallowedKeysInOrder() {
        start();
        keyboard.type(positionOfQ, commandFlag);
        keyboard.type(positionOfW, commandFlag);
        keyboard.type(positionOfQ, commandFlag | shiftFlag);
        keyboard.type(positionOfA);
        EXPECT_TRUE(received({superKey, superKey, 50, superKey, positionOfA}));
        EXPECT_TRUE(waitUntil([&] { return reports.size() == 3; }));
        EXPECT_EQ(reports, (std::vector<std::string>{"Cmd+Q", "Cmd+W", "Cmd+Q"}));
    }

    void expectNoReleaseOfASwallowedKey() {
        start(everyQ);
        keyboard.type(positionOfQ);
        keyboard.type(positionOfA);
        ASSERT_TRUE(received({positionOfA}));
        ASSERT_EQ(window->released().size(), 1U);
        EXPECT_EQ(window->released()[0].position, positionOfA);
    }

    void expectOthersWhileASwallowedKeyIsDown() {
        start(everyQ);
        keyboard.press(positionOfQ);
        keyboard.type(positionOfA);
        keyboard.type(positionOfB);
        keyboard.release(positionOfQ);
        keyboard.type(positionOfQ);
        keyboard.type(positionOfA);
        EXPECT_TRUE(received({positionOfA, positionOfB, positionOfA}));
    }

    std::unique_ptr<MainThread> mainThread;
    std::unique_ptr<GuardSource> guards;
    std::unique_ptr<LinuxKeyboardTaps> taps;
    std::unique_ptr<KeyWindow> window;
    TestKeyboard keyboard;
    std::vector<std::string> reports;
    std::unique_ptr<KeyboardTap> tap;
};

TEST_F(KeyboardTapTest, SwallowsWhatTheDecisionNamesAndReportsItInOrder) {
    expectSwallowedKeysInOrder();
}

TEST_F(KeyboardTapTest, LetsTheReleaseOfASwallowedKeyNotThroughEither) {
    expectNoReleaseOfASwallowedKey();
}

TEST_F(KeyboardTapTest, LetsModifiersThroughAndTheirReleases) {
    start();
    keyboard.type(positionOfQ, commandFlag);
    ASSERT_TRUE(received({superKey}));
    ASSERT_EQ(window->released().size(), 1U);
    EXPECT_EQ(window->released()[0].position, superKey);
}

TEST_F(KeyboardTapTest, LetsModifiersThroughThatComeUpBeforeTheSwallowedKey) {
    start();
    keyboard.press(superKey);
    keyboard.press(positionOfQ);
    keyboard.release(superKey);
    keyboard.release(positionOfQ);
    keyboard.type(positionOfA);
    ASSERT_TRUE(received({superKey, positionOfA}));
    EXPECT_EQ(window->pressed()[1].state & XCB_MOD_MASK_4, 0) << "the window believes that Super is still held";
    EXPECT_EQ(window->released()[0].position, superKey);
}

TEST_F(KeyboardTapTest, PassesAKeyThatIsPressedWhileASwallowedOneIsDown) {
    expectOthersWhileASwallowedKeyIsDown();
}

TEST_F(KeyboardTapTest, GivesTheDecisionTheFlagsOfMacOS) {
    start();
    keyboard.type(positionOfA, shiftFlag);
    keyboard.type(positionOfA, controlFlag);
    keyboard.type(positionOfA, optionFlag);
    keyboard.type(positionOfA, commandFlag);
    keyboard.type(positionOfA, shiftFlag | controlFlag | optionFlag | commandFlag);
    keyboard.type(positionOfA);
    ASSERT_TRUE(waitUntil([&] { return Asked::all().codes(KeyEventType::keyDown).size() == 6; }));
    std::vector<std::uint64_t> flags;
    for (const KeyEvent& event : Asked::all().events()) {
        if (event.type == KeyEventType::keyDown) flags.push_back(event.flags);
    }
    EXPECT_EQ(flags, (std::vector<std::uint64_t>{0x20000, 0x40000, 0x80000, 0x100000, 0x1E0000, 0}));
}

TEST_F(KeyboardTapTest, CallsModifierKeysFlagsChangedWithTheFlagsAfterwards) {
    start();
    keyboard.press(50);
    keyboard.press(superKey);
    keyboard.release(superKey);
    keyboard.release(50);
    ASSERT_TRUE(waitUntil([] { return Asked::all().events().size() == 2; }));
    const auto events = Asked::all().events();
    EXPECT_EQ(events[0].type, KeyEventType::flagsChanged);
    EXPECT_EQ(events[0].keyCode, 56);
    EXPECT_EQ(events[0].flags, shiftFlag);
    EXPECT_EQ(events[1].type, KeyEventType::flagsChanged);
    EXPECT_EQ(events[1].keyCode, 55);
    EXPECT_EQ(events[1].flags, shiftFlag | commandFlag);
}

TEST_F(KeyboardTapTest, GivesTheSameCodesUnderEveryLayout) {
    const auto setLayout = [](const QString& layout) {
        return QProcess::execute("setxkbmap", {"-layout", layout}) == 0;
    };
    std::vector<xcb_keycode_t> typed;
    std::vector<std::int64_t> codes;
    for (int position = 8; position < 256; ++position) {
        const auto code = macKeyCode(static_cast<xcb_keycode_t>(position));
        if (!code || changesFlags(*code)) continue;
        typed.push_back(static_cast<xcb_keycode_t>(position));
        codes.push_back(*code);
    }
    start();
    for (const char* layout : {"it", "de", "us"}) {
        ASSERT_TRUE(setLayout(layout));
        turnFor(0.3);
        Asked::all().clear();
        for (const xcb_keycode_t position : typed) keyboard.type(position);
        ASSERT_TRUE(waitUntil([&] { return Asked::all().codes(KeyEventType::keyDown).size() == codes.size(); }))
            << layout;
        EXPECT_EQ(Asked::all().codes(KeyEventType::keyDown), codes) << layout;
        EXPECT_TRUE(swallows()) << layout;
        // One press turns on the lock of the numeric keypad.
        keyboard.type(TestKeyboard::position(71));
    }
}

// Sets options of the keymap while this object exists.
class KeymapOption {
  public:
    explicit KeymapOption(const QString& option) { run({"-option", option}); }
    ~KeymapOption() { run({"-option"}); }
    KeymapOption(const KeymapOption&) = delete;
    KeymapOption& operator=(const KeymapOption&) = delete;

  private:
    static void run(const QStringList& arguments) { EXPECT_EQ(QProcess::execute("setxkbmap", arguments), 0); }
};

// Removes Super from the key that most keymaps have and no keyboard has.
bool removeSuper() {
    return QProcess::execute("xmodmap", {"-e", "keycode 206 = NoSymbol"}) == 0;
}

TEST_F(KeyboardTapTest, TakesMod4ForCommandWhereTheKeymapHasNoSuper) {
    for (const char* option : {"altwin:meta_win", "altwin:ctrl_win"}) {
        const KeymapOption keymap(option);
        ASSERT_TRUE(removeSuper());
        const KeyModifiers modifiers = KeyModifiers::read(keyboard.connection());
        EXPECT_EQ(modifiers.flags(XCB_MOD_MASK_4), commandFlag) << option;
        EXPECT_EQ(modifiers.flags(XCB_MOD_MASK_1), optionFlag) << option;
    }
    const KeymapOption keymap("altwin:meta_win");
    ASSERT_TRUE(removeSuper());
    start();
    EXPECT_TRUE(swallows());
}

TEST_F(KeyboardTapTest, LetsFiveHundredKeysThroughThatAreTypedWithoutDelay) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> any(0, 25);
    constexpr std::string_view letters(
        "\x26\x27\x28\x29\x2a\x2b\x2c\x2d\x2e\x18\x19\x1a\x1b\x1c\x1d\x1e\x1f\x20\x21"
        "\x34\x35\x36\x37\x38\x39\x3a");
    std::vector<Key> expected;
    start(+[](const KeyEvent&) noexcept { return std::string_view(); });
    constexpr xcb_keycode_t shift = 50;
    for (int i = 0; i < 500; ++i) {
        const auto position = static_cast<xcb_keycode_t>(letters[any(random)]);
        if (i % 10 == 9) {
            keyboard.press(shift);
            // A delayed key arrives with the later state.
            expected.push_back({shift, XCB_MOD_MASK_SHIFT});
        }
        keyboard.type(position);
        expected.push_back({position, static_cast<std::uint16_t>(i % 10 == 9 ? XCB_MOD_MASK_SHIFT : 0)});
        if (i % 10 == 9) keyboard.release(shift);
    }
    EXPECT_TRUE(waitUntil([&] { return window->pressed().size() >= expected.size(); }));
    EXPECT_EQ(window->pressed(), expected);
    EXPECT_TRUE(waitUntil([&] { return window->released().size() >= expected.size(); }));
    EXPECT_EQ(window->released().size(), expected.size());
}

TEST_F(KeyboardTapTest, LosesNoKeyWhenItComesAndGoes) {
    std::atomic<bool> done = false;
    std::vector<xcb_keycode_t> expected;
    std::thread person([&] {
        TestKeyboard own;
        for (std::size_t i = 0; !done; ++i) {
            expected.push_back(i % 2 == 0 ? positionOfA : positionOfB);
            own.type(expected.back());
        }
    });
    for (int i = 0; i < 50; ++i) {
        start();
        turnFor(0.01);
        tap.reset();
    }
    done = true;
    person.join();
    EXPECT_GT(expected.size(), 500U);
    EXPECT_TRUE(waitUntil([&] { return window->pressed().size() >= expected.size(); }));
    EXPECT_EQ(window->positions(), expected);
}

TEST_F(KeyboardTapTest, LetsRepeatedKeysThrough) {
    start();
    keyboard.press(positionOfA);
    EXPECT_TRUE(waitUntil([&] { return window->pressed().size() >= 10; })) << "this server repeats no keys";
    keyboard.release(positionOfA);
    turnFor(0.2);
    const auto positions = window->positions();
    EXPECT_EQ(std::count(positions.begin(), positions.end(), positionOfA),
              static_cast<std::ptrdiff_t>(positions.size()));
    EXPECT_EQ(Asked::all().codes(KeyEventType::keyDown).size(), positions.size());
    EXPECT_TRUE(reports.empty());
}

TEST_F(KeyboardTapTest, SwallowsAndReportsEachRepetition) {
    start();
    keyboard.press(superKey);
    keyboard.press(positionOfQ);
    EXPECT_TRUE(waitUntil([&] { return reports.size() >= 10; }));
    keyboard.release(positionOfQ);
    keyboard.release(superKey);
    EXPECT_TRUE(received({superKey}));
}

TEST_F(KeyboardTapTest, PassesKeysThatNoMacHas) {
    start(+[](const KeyEvent& event) noexcept {
        Asked::all().add(event);
        return std::string_view("everything");
    });
    constexpr xcb_keycode_t calculator = 148;
    keyboard.type(calculator);
    EXPECT_TRUE(received({calculator}));
    EXPECT_TRUE(Asked::all().events().empty());
}

TEST_F(KeyboardTapTest, IsRefusedWhileAnotherClientFiltersTheKeyboard) {
    {
        OtherFilter other;
        ASSERT_TRUE(other.grabsEveryKey());
        EXPECT_EQ(taps->create(commandQorW, {}), nullptr);
        EXPECT_TRUE(childrenOf(getpid()).empty());
    }
    EXPECT_TRUE(waitUntil([&] {
        tap = taps->create(commandQorW, {});
        return tap != nullptr;
    }));
}

TEST_F(KeyboardTapTest, IsRefusedBesideAnotherOneThatGoesOn) {
    start();
    EXPECT_EQ(taps->create(commandQorW, {}), nullptr);
    EXPECT_TRUE(swallows());
}

TEST_F(KeyboardTapTest, IsRefusedWithoutAGuard) {
    for (const std::string& executable : {(folder.path() / "missing").string(), std::string("/bin/true")}) {
        GuardSource none(*mainThread, executable);
        EXPECT_EQ(LinuxKeyboardTaps(*mainThread, none).create(commandQorW, {}), nullptr) << executable;
    }
    EXPECT_EQ(childrenOf(getpid()), std::set<pid_t>());
    EXPECT_TRUE(OtherFilter().grabsEveryKey());
}

TEST_F(KeyboardTapTest, LeavesNothingBehindTwoHundredTimes) {
    start();
    tap.reset();
    const std::size_t threads = entries("/proc/self/task");
    const std::size_t files = entries("/proc/self/fd");
    for (int i = 0; i < 200; ++i) {
        start();
        if (i % 10 == 0) {
            EXPECT_TRUE(swallows());
        }
        tap.reset();
    }
    EXPECT_EQ(entries("/proc/self/task"), threads);
    EXPECT_EQ(entries("/proc/self/fd"), files);
    EXPECT_EQ(childrenOf(getpid()), std::set<pid_t>());
    OtherFilter other;
    EXPECT_TRUE(other.grabsEveryKey());
    EXPECT_TRUE(other.takesTheKeyboard());
}

TEST_F(KeyboardTapTest, ReportsNothingAfterItsEnd) {
    start();
    keyboard.type(positionOfQ, commandFlag);
    keyboard.type(positionOfW, commandFlag);
    // Without turning the event loop.
    while (Asked::all().codes(KeyEventType::keyDown).size() < 2) usleep(1000);
    tap.reset();
    turnFor(0.2);
    EXPECT_EQ(reports, std::vector<std::string>());
    EXPECT_TRUE(keysPass(1));
}

TEST_F(KeyboardTapTest, MayEndInItsOwnReport) {
    tap = taps->create(commandQorW, [this](std::string_view name) {
        reports.emplace_back(name);
        tap.reset();
        reports.emplace_back("ended");
    });
    ASSERT_TRUE(tap);
    keyboard.type(positionOfQ, commandFlag);
    keyboard.type(positionOfW, commandFlag);
    EXPECT_TRUE(waitUntil([&] { return reports.size() >= 2; }));
    turnFor(0.2);
    EXPECT_EQ(reports, (std::vector<std::string>{"Cmd+Q", "ended"}));
    EXPECT_TRUE(keysPass(1));
}

TEST_F(KeyboardTapTest, LetsAHeldKeyGoAtItsEnd) {
    start(everyQ);
    keyboard.press(positionOfQ);
    ASSERT_TRUE(waitUntil([&] { return !reports.empty(); }));
    tap.reset();
    EXPECT_TRUE(keysPass(1));
    keyboard.release(positionOfQ);
}

TEST_F(KeyboardTapTest, IsDisabledForGoodWhenTheMainThreadHangs) {
    start();
    ASSERT_TRUE(swallows());
    keyboard.type(positionOfA);
    usleep(1500000);
    EXPECT_EQ(Asked::all().codes(KeyEventType::tapDisabledByTimeout).size(), 1U);
    window->forget();
    reports.clear();
    keyboard.type(positionOfQ, commandFlag);
    EXPECT_TRUE(received({superKey, positionOfQ}));
    turnFor(1);
    keyboard.type(positionOfQ, commandFlag);
    EXPECT_TRUE(received({superKey, positionOfQ, superKey, positionOfQ}));
    EXPECT_EQ(reports, std::vector<std::string>());
    EXPECT_TRUE(OtherFilter().grabsEveryKey());
}

TEST_F(KeyboardTapTest, OutlivesAMainThreadThatHangsWhileNobodyTypes) {
    start();
    usleep(1500000);
    EXPECT_TRUE(swallows());
}

TEST_F(KeyboardTapTest, OutlivesAMainThreadThatIsSlow) {
    start();
    for (int i = 0; i < 4; ++i) {
        keyboard.type(positionOfA);
        usleep(600000);
        turnFor(0.01);
    }
    EXPECT_TRUE(swallows());
}

TEST_F(KeyboardTapTest, StaysInForceThroughAStormOfKeymapChanges) {
    start();
    std::atomic<bool> done = false;
    std::thread storm([&] {
        const auto other = X11Connection::open();
        const auto cookie = xcb_get_keyboard_mapping(other->get(), positionOfA, 1);
        const X11Reply<xcb_get_keyboard_mapping_reply_t> mapping(
            xcb_get_keyboard_mapping_reply(other->get(), cookie, nullptr));
        while (!done) {
            xcb_change_keyboard_mapping(other->get(), 1, positionOfA, mapping->keysyms_per_keycode,
                                        xcb_get_keyboard_mapping_keysyms(mapping.get()));
            xcb_flush(other->get());
            usleep(15000);
        }
    });
    std::vector<xcb_keycode_t> expected;
    for (int i = 0; i < 200; ++i) {
        keyboard.type(positionOfB);
        expected.push_back(positionOfB);
        if (i % 10 == 0) {
            keyboard.type(positionOfQ, commandFlag);
            expected.push_back(superKey);
        }
        turnFor(0.005);
    }
    done = true;
    storm.join();
    EXPECT_TRUE(received(expected));
    EXPECT_EQ(reports.size(), 20U);
    // Until the window manager has recovered.
    KeyWindow next;
    EXPECT_TRUE(waitUntil([&] { return next.hasFocus(); }, 30));
}

// Window managers grab their keys again when the keymap changes, and the newest grab wins.
TEST_F(KeyboardTapTest, IsInForceAgainAfterAWindowManagerHasRenewedItsGrabs) {
    start();
    const auto manager = X11Connection::open();
    const auto grabQ = [&] {
        xcb_grab_key(manager->get(), 1, manager->root(), XCB_MOD_MASK_ANY, positionOfQ, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        xcb_flush(manager->get());
    };
    const auto managerSawAKey = [&] {
        bool saw = false;
        while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(manager->get())}) {
            saw = saw || (event->response_type & 0x7F) == XCB_KEY_PRESS;
        }
        return saw;
    };
    grabQ();
    turnFor(0.1);
    keyboard.type(positionOfQ, commandFlag);
    EXPECT_TRUE(waitUntil(managerSawAKey)) << "the newest grab does not win on this server";
    for (int change = 0; change < 3; ++change) {
        const auto cookie = xcb_get_keyboard_mapping(manager->get(), positionOfA, 1);
        const X11Reply<xcb_get_keyboard_mapping_reply_t> mapping(
            xcb_get_keyboard_mapping_reply(manager->get(), cookie, nullptr));
        xcb_change_keyboard_mapping(manager->get(), 1, positionOfA, mapping->keysyms_per_keycode,
                                    xcb_get_keyboard_mapping_keysyms(mapping.get()));
        turnFor(0.04);
        grabQ();
        turnFor(0.15);
        EXPECT_TRUE(swallows());
        EXPECT_FALSE(managerSawAKey());
    }
}

TEST_F(KeyboardTapTest, GetsAnotherGuardForEachThatWasKilledOrStopped) {
    start();
    for (const int signal : {SIGKILL, SIGSTOP}) {
        const auto before = childrenOf(getpid());
        ASSERT_EQ(before.size(), 2U);
        for (const pid_t guard : before) {
            kill(guard, signal);
            EXPECT_TRUE(waitUntil([&] {
                const auto now = childrenOf(getpid());
                return now.size() == 2 && now.count(guard) == 0;
            })) << signal;
            EXPECT_FALSE(exists(guard));
            EXPECT_TRUE(swallows());
        }
    }
    tap.reset();
    EXPECT_EQ(childrenOf(getpid()), std::set<pid_t>());
}

TEST_F(KeyboardTapTest, KeepsAGuardThatAnswersWhateverIsTyped) {
    start();
    const auto before = childrenOf(getpid());
    // A key that is held down: the guard sees only its first press.
    keyboard.press(positionOfA);
    turnFor(3);
    keyboard.release(positionOfA);
    for (int i = 0; i < 300; ++i) {
        keyboard.type(i % 10 == 0 ? positionOfQ : positionOfB, i % 10 == 0 ? commandFlag : 0);
        turnFor(0.005);
    }
    turnFor(3);
    EXPECT_EQ(childrenOf(getpid()), before);
    EXPECT_TRUE(swallows());
}

// A guard that works once and then does nothing.
TEST_F(KeyboardTapTest, LetsTheKeyboardGoWithoutHoldingKeysUpWhenNoGuardComesToWatch) {
    const auto marker = folder.path() / "started";
    const auto script = folder.path() / "guard";
    {
        std::ofstream file(script);
        file << "#!/bin/sh\n[ -e '" << marker.string() << "' ] && exec sleep 60\n: > '" << marker.string()
             << "'\nexec '" << GuardProcess::standardExecutable() << "' \"$@\"\n";
    }
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    guards = std::make_unique<GuardSource>(*mainThread, script.string());
    taps = std::make_unique<LinuxKeyboardTaps>(*mainThread, *guards);
    start();
    ASSERT_TRUE(swallows());
    const auto before = childrenOf(getpid());
    ASSERT_EQ(before.size(), 2U);
    for (const pid_t guard : before) kill(guard, SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return childrenOf(getpid()) != before; }));
    // Meanwhile keys pass and are swallowed as before.
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_TRUE(swallows());
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(700));
    EXPECT_TRUE(waitUntil([] { return Asked::all().codes(KeyEventType::tapDisabledByTimeout).size() == 1; }, 4));
    EXPECT_TRUE(keysPass(1));
    EXPECT_TRUE(waitUntil([] { return childrenOf(getpid()).empty(); }));
    EXPECT_TRUE(OtherFilter().grabsEveryKey());
}

TEST_F(KeyboardTapTest, FiltersAMasterKeyboardThatComesLater) {
    start();
    xcb_connection_t* typing = keyboard.connection();
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(typing, xcb_input_xi_query_version(typing, 2, 2), nullptr));
    {
        MasterPair second(typing);
        ASSERT_NE(second.keyboard(), 0);
        turnFor(0.2);
        xcb_input_xi_set_client_pointer(typing, XCB_WINDOW_NONE, second.pointer());
        xcb_input_xi_set_focus(typing, window->id(), XCB_CURRENT_TIME, second.keyboard());
        EXPECT_TRUE(swallows());
        const auto positions = window->positions();
        EXPECT_EQ(std::count(positions.begin(), positions.end(), superKey), 1);
    }
    turnFor(0.2);
    EXPECT_TRUE(swallows());
    EXPECT_TRUE(keysPass(1));
}

// A window manager that grabs its own keys by XInput2, as GNOME's does.
class KeyboardTapBesideSingleGrabs : public KeyboardTapTest {
  protected:
    void SetUp() override {
        KeyboardTapTest::SetUp();
        if (HasFatalFailure()) return;
        constexpr std::uint32_t f12 = 96;
        // The last one that there is, by which desktops switch radios off.
        constexpr std::uint32_t radio = 255;
        ASSERT_TRUE(windowManager.grabs(f12));
        ASSERT_TRUE(windowManager.grabs(radio));
    }

    OtherFilter windowManager;
};

TEST_F(KeyboardTapBesideSingleGrabs, SwallowsWhatTheDecisionNamesAndReportsItInOrder) {
    expectSwallowedKeysInOrder();
}

TEST_F(KeyboardTapBesideSingleGrabs, LetsTheReleaseOfASwallowedKeyNotThroughEither) {
    expectNoReleaseOfASwallowedKey();
}

TEST_F(KeyboardTapBesideSingleGrabs, PassesAKeyThatIsPressedWhileASwallowedOneIsDown) {
    expectOthersWhileASwallowedKeyIsDown();
}

TEST_F(KeyboardTapBesideSingleGrabs, LosesNoKeyWhenItComesAndGoes) {
    std::vector<xcb_keycode_t> expected;
    for (int i = 0; i < 200; ++i) {
        if (i % 10 == 0) start();
        if (i % 10 == 5) tap.reset();
        expected.push_back(i % 2 == 0 ? positionOfA : positionOfB);
        keyboard.type(expected.back());
    }
    EXPECT_TRUE(received(expected));
}

TEST_F(KeyboardTapBesideSingleGrabs, IsRefusedBesideAnotherOneThatGoesOn) {
    start();
    EXPECT_EQ(taps->create(commandQorW, {}), nullptr);
    EXPECT_TRUE(swallows());
}

TEST_F(KeyboardTapBesideSingleGrabs, IsRefusedWhileAnotherClientFiltersTheKeyboard) {
    OtherFilter other;
    // The server would refuse this one too beside the window manager's grab.
    windowManager = OtherFilter();
    ASSERT_TRUE(other.grabsEveryKey());
    EXPECT_EQ(taps->create(commandQorW, {}), nullptr);
}

TEST_F(KeyboardTapBesideSingleGrabs, ReadsTheModifiersOfEachKey) {
    start();
    keyboard.type(positionOfA, shiftFlag | controlFlag | optionFlag | commandFlag);
    keyboard.type(positionOfA);
    ASSERT_TRUE(waitUntil([&] { return Asked::all().codes(KeyEventType::keyDown).size() == 2; }));
    std::vector<std::uint64_t> flags;
    for (const KeyEvent& event : Asked::all().events()) {
        if (event.type == KeyEventType::keyDown) flags.push_back(event.flags);
    }
    EXPECT_EQ(flags, (std::vector<std::uint64_t>{0x1E0000, 0}));
}

TEST_F(KeyboardTapBesideSingleGrabs, LeavesNothingBehind) {
    start();
    EXPECT_TRUE(swallows());
    tap.reset();
    EXPECT_TRUE(keysPass(1));
    EXPECT_TRUE(OtherFilter().takesTheKeyboard());
}

class TappingClient : public KeyboardTapTest {
  protected:
    void SetUp() override {
        KeyboardTapTest::SetUp();
        client = std::make_unique<KeyboardClientProcess>();
        ASSERT_EQ(client->line(), "ready");
        itsGuards = childrenOf(client->process());
        ASSERT_EQ(itsGuards.size(), 2U);
        keyboard.type(positionOfQ, commandFlag);
        keyboard.type(positionOfA);
        ASSERT_TRUE(received({superKey, positionOfA})) << "the client filters nothing";
    }

    bool noneExists() const { return std::none_of(itsGuards.begin(), itsGuards.end(), exists); }
    bool guardsHaveGone() {
        return waitUntil([&] { return noneExists(); }, 5);
    }

    std::unique_ptr<KeyboardClientProcess> client;
    std::set<pid_t> itsGuards;
};

TEST_F(TappingClient, LeavesTheKeyboardWhenItIsKilled) {
    client->signal(SIGKILL);
    EXPECT_TRUE(keysPass(3));
    EXPECT_EQ(client->end(), -SIGKILL);
    EXPECT_TRUE(guardsHaveGone());
    EXPECT_TRUE(OtherFilter().grabsEveryKey());
}

TEST_F(TappingClient, LeavesTheKeyboardWhenItIsStoppedAndLivesOn) {
    client->signal(SIGSTOP);
    EXPECT_TRUE(keysPass(3));
    EXPECT_TRUE(OtherFilter().grabsEveryKey());
    client->signal(SIGCONT);
    EXPECT_TRUE(client->isThere());
    EXPECT_TRUE(keysPass(1));
    EXPECT_TRUE(guardsHaveGone());
    EXPECT_EQ(client->end(), 0);
}

TEST_F(TappingClient, LeavesTheKeyboardWhenItIsStoppedInTheMiddleOfATypedText) {
    std::atomic<bool> done = false;
    std::thread person([&] {
        TestKeyboard own;
        while (!done) {
            own.type(positionOfA);
            usleep(2000);
        }
    });
    turnFor(0.1);
    client->signal(SIGSTOP);
    turnFor(2);
    window->forget();
    EXPECT_TRUE(waitUntil([&] { return window->pressed().size() > 10; }, 2));
    done = true;
    person.join();
    client->signal(SIGCONT);
    EXPECT_EQ(client->end(), 0);
    EXPECT_TRUE(guardsHaveGone());
}

TEST_F(TappingClient, KeepsItsTapThroughAShortStop) {
    client->signal(SIGSTOP);
    keyboard.type(positionOfB);
    turnFor(0.4);
    client->signal(SIGCONT);
    EXPECT_TRUE(received({superKey, positionOfA, positionOfB}));
    turnFor(1.2);
    keyboard.type(positionOfQ, commandFlag);
    EXPECT_TRUE(received({superKey, positionOfA, positionOfB, superKey}));
}

// Meanwhile the server does not answer the filter's requests. It would not answer this process's either, so the test
// must make none.
TEST_F(TappingClient, KeepsItsTapThoughAnotherClientKeptTheServerForItself) {
    const auto other = X11Connection::open();
    const auto cookie = xcb_get_keyboard_mapping(other->get(), positionOfA, 1);
    const X11Reply<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(other->get(), cookie, nullptr));
    xcb_grab_server(other->get());
    // So that the filter has to ask the server something.
    xcb_change_keyboard_mapping(other->get(), 1, positionOfA, mapping->keysyms_per_keycode,
                                xcb_get_keyboard_mapping_keysyms(mapping.get()));
    xcb_test_fake_input(other->get(), XCB_KEY_PRESS, positionOfB, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    xcb_test_fake_input(other->get(), XCB_KEY_RELEASE, positionOfB, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    xcb_flush(other->get());
    usleep(2500000);
    xcb_ungrab_server(other->get());
    xcb_flush(other->get());
    ASSERT_TRUE(received({superKey, positionOfA, positionOfB}));
    turnFor(1.5);
    keyboard.type(positionOfQ, commandFlag);
    EXPECT_TRUE(received({superKey, positionOfA, positionOfB, superKey}));
    EXPECT_TRUE(std::all_of(itsGuards.begin(), itsGuards.end(), exists));
}

TEST_F(TappingClient, TakesItsGuardsAlongWhenItEnds) {
    EXPECT_EQ(client->end(), 0);
    EXPECT_TRUE(noneExists());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
