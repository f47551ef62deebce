#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <sstream>
#include <string>

#include "platform/linux/desktop/FullScreenDesktops.h"
#include "platform/linux/ui/LinuxWindow.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"
#include "tests/linux/x11/TestPointer.h"
#include "tests/linux/x11/WindowManagerPause.h"

namespace vantrel::linuxdesktop {
namespace {

class FullScreenDesktopsTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        server = X11Connection::open();
        ASSERT_TRUE(server);
        ASSERT_TRUE(waitUntil([this] { return desktops().count() && desktops().current(); }));
        desktops().switchTo(1);
        ASSERT_TRUE(waitUntil([this] { return desktops().current() == 1U; }));
        turnFor(0.05);
        countBefore = *desktops().count();
        ASSERT_GE(countBefore, 3U) << "the window manager is to have some desktops";
        notices = computer->spaces.observeActiveSpaceDidChange([this] { ++told; });
    }

    void TearDown() override {
        notices.reset();
        if (server) desktops().switchTo(0);
        DesktopTest::TearDown();
    }

    X11Desktops desktops() const { return X11Desktops(*server); }

    std::optional<X11WindowFacts> facts(xcb_window_t window) const {
        X11Windows windows(*server);
        return X11WindowSurvey(*server, windows).of(window);
    }

    bool fullScreenOn(xcb_window_t window, std::uint32_t desktop) const {
        const auto now = facts(window);
        return now && now->fullScreen && now->desktop == desktop && desktops().current() == desktop;
    }

    bool backOn(std::uint32_t desktop) const {
        return desktops().count() == countBefore && desktops().current() == desktop;
    }

    bool hasSizeOf(const AccessibilityElement& element, xcb_window_t window) const {
        const auto now = facts(window);
        const auto answer = element.attribute("AXSize");
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        const auto* size = value != nullptr ? std::get_if<Size>(value) : nullptr;
        return now && size != nullptr && *size == Size{double(now->frame.width), double(now->frame.height)};
    }

    // Through Accessibility, as the client does it.
    AccessibilityError setFullScreen(const ForeignWindow& window, bool fullScreen) {
        const auto index = [&]() -> std::optional<std::size_t> {
            X11Windows windows(*server);
            std::size_t i = 0;
            for (const xcb_window_t one : X11WindowSurvey(*server, windows).ofProcess(getpid())) {
                if (one == window.id()) return i;
                ++i;
            }
            return std::nullopt;
        };
        // A window that is just being activated may change places with this one, and back, while they are listed.
        std::shared_ptr<AccessibilityElement> element;
        EXPECT_TRUE(waitUntil([&] {
            const auto before = index();
            const auto answer = computer->accessibility.application(getpid())->attribute("AXWindows");
            if (!before || index() != before) return false;
            const auto& all =
                std::get<std::vector<std::shared_ptr<AccessibilityElement>>>(std::get<AccessibilityValue>(answer));
            if (*before >= all.size() || !hasSizeOf(*all[*before], window.id())) return false;
            element = all[*before];
            return true;
        }));
        return element ? element->setAttribute("AXFullScreen", fullScreen) : accessibilityFailure;
    }

    // The event loop then finds the window gone when it next turns, as after the wait for a browser's end.
    void waitUntilManagedNoLonger(xcb_window_t window) const {
        X11Windows windows(*server);
        for (int waited = 0; waited < 1000; ++waited) {
            const auto managed = windows.frontToBack();
            if (std::find(managed.begin(), managed.end(), window) == managed.end()) return;
            usleep(1000);
        }
        ADD_FAILURE() << "the window manager does not let the window go";
    }

    // The window that the server sends keys to.
    xcb_window_t focused() const {
        const auto cookie = xcb_get_input_focus(server->get());
        const X11Reply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(server->get(), cookie, nullptr));
        return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    bool hasKeyboard(xcb_window_t window) const {
        return focused() == window && X11Windows(*server).active() == window;
    }

    // For a failure's message.
    std::string standing(xcb_window_t window) const {
        std::ostringstream text;
        text << "desktop " << desktops().current().value_or(99) << " of " << desktops().count().value_or(99);
        if (const auto now = facts(window)) {
            text << ", window on " << now->desktop.value_or(99) << (now->fullScreen ? ", full screen" : "")
                 << (now->unmapped ? ", unmapped" : "") << (hasKeyboard(window) ? ", with the keyboard" : "");
        } else {
            text << ", no window";
        }
        text << ", recorded:";
        for (const auto value : server->values(server->root(), "_VANTREL_FULL_SCREEN_DESKTOPS")) text << ' ' << value;
        return text.str();
    }

    // As by a person's click: our own window's wish for the keyboard may still be on its way.
    bool takesTheKeyboard(xcb_window_t window) {
        X11Windows(*server).activate(window);
        return waitUntil([&] { return hasKeyboard(window); });
    }

    // In milliseconds. On this system the servers take it from the kernel's clock.
    static std::uint32_t serverTime() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }

    std::unique_ptr<X11Connection> server;
    std::unique_ptr<Observation> notices;
    std::uint32_t countBefore = 0;
    int told = 0;
};

TEST_F(FullScreenDesktopsTest, GivesTheWindowADesktopOfItsOwnAndTakesItBack) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
    EXPECT_TRUE(waitUntil([&] { return told == 1; }));
    const auto screen = computer->screens.mainScreen();
    ASSERT_TRUE(screen);
    EXPECT_TRUE(waitUntil([&] {
        const X11Rectangle frame = facts(window.id())->frame;
        return frame.width == screen->frame.size.width && frame.height == screen->frame.size.height;
    }));
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess) << "once more changes nothing";
    EXPECT_EQ(desktops().count(), countBefore + 1);

    EXPECT_EQ(setFullScreen(window, false), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return backOn(1) && !facts(window.id())->fullScreen; }));
    EXPECT_EQ(facts(window.id())->desktop, 1U);
    EXPECT_TRUE(waitUntil([&] { return told == 2; }));
    turnFor(0.1);
    EXPECT_EQ(told, 2);
}

TEST_F(FullScreenDesktopsTest, BringsThePersonBackWhenTheWindowDies) {
    auto window = std::make_unique<ForeignWindow>("Lezione", X11Rectangle{100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(*window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window->id(), countBefore); }));
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return backOn(1); }));
    EXPECT_TRUE(waitUntil([&] { return told == 2; }));
}

TEST_F(FullScreenDesktopsTest, BringsThePersonBackWhenTheWindowIsWithdrawn) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
    window.unmap();
    EXPECT_TRUE(waitUntil([&] { return backOn(1); }));
}

TEST_F(FullScreenDesktopsTest, BringsThePersonBackWhenTheWindowLeavesFullScreenByItself) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
    turnFor(0.1);
    window.changeState(false, "_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(waitUntil([&] { return backOn(1) && facts(window.id())->desktop == 1U; }));
}

TEST_F(FullScreenDesktopsTest, LeavesAPersonAloneWhoHasGoneElsewhere) {
    auto window = std::make_unique<ForeignWindow>("Lezione", X11Rectangle{100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(*window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window->id(), countBefore); }));
    turnFor(0.1);
    desktops().switchTo(2);
    ASSERT_TRUE(waitUntil([&] { return desktops().current() == 2U; }));
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return backOn(2); }));
    turnFor(0.1);
    EXPECT_EQ(desktops().current(), 2U);
}

TEST_F(FullScreenDesktopsTest, TakesFullScreenBackBeforeItHasShown) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
        EXPECT_EQ(setFullScreen(window, false), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return backOn(1) && facts(window.id())->desktop == 1U; }))
            << i << ": " << standing(window.id());
        EXPECT_FALSE(facts(window.id())->fullScreen);
    }
}

TEST_F(FullScreenDesktopsTest, TakesFullScreenBackHoweverFarTheWindowManagerHasCome) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
        {
            const WindowManagerPause pause(*server, i * 0.001);
            EXPECT_EQ(setFullScreen(window, false), accessibilitySuccess);
        }
        ASSERT_TRUE(waitUntil([&] { return backOn(1) && facts(window.id())->desktop == 1U; }))
            << i << ": " << standing(window.id());
        EXPECT_TRUE(waitUntil([&] { return !facts(window.id())->fullScreen; })) << i;
    }
}

TEST_F(FullScreenDesktopsTest, KeepsTwoApartWhicheverLeavesFirst) {
    for (const bool firstLeavesFirst : {true, false}) {
        ForeignWindow first("Prima", {100, 100, 500, 400});
        EXPECT_EQ(setFullScreen(first, true), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return fullScreenOn(first.id(), countBefore); }));
        desktops().switchTo(1);
        ASSERT_TRUE(waitUntil([&] { return desktops().current() == 1U; }));
        ForeignWindow second("Seconda", {100, 100, 500, 400});
        EXPECT_EQ(setFullScreen(second, true), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return fullScreenOn(second.id(), countBefore + 1); }));
        turnFor(0.1);
        if (firstLeavesFirst) {
            first.destroy();
            EXPECT_TRUE(waitUntil([&] { return fullScreenOn(second.id(), countBefore); }));
            second.destroy();
        } else {
            second.destroy();
            EXPECT_TRUE(waitUntil([&] { return desktops().count() == countBefore + 1; }));
            first.destroy();
        }
        EXPECT_TRUE(waitUntil([&] { return backOn(1); })) << firstLeavesFirst;
    }
}

TEST_F(FullScreenDesktopsTest, BringsWindowsAlongThatWereOpenedBesideIt) {
    auto window = std::make_unique<ForeignWindow>("Lezione", X11Rectangle{100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(*window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window->id(), countBefore); }));
    ForeignWindow beside("Accanto", {100, 100, 300, 200});
    ASSERT_TRUE(waitUntil([&] {
        const auto now = facts(beside.id());
        return now && now->desktop == countBefore;
    }));
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return backOn(1) && facts(beside.id())->desktop == 1U; }));
}

TEST_F(FullScreenDesktopsTest, GivesTheKeyboardToOurWindowThatComesUpAsTheMeetingGoes) {
    WindowDescription description;
    description.contentRect = {{0, 0}, {300, 200}};
    description.styleMask = windowTitled | windowClosable;
    description.title = "Vantrel";
    const auto own = computer->windows.makeWindow(description, [](std::string_view) {});
    const QWidget& widget = dynamic_cast<LinuxWindow&>(*own).widget();
    ForeignWindow others("Appunti", {600, 100, 300, 200});
    for (int round = 0; round < 5; ++round) {
        own->makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([&] { return hasKeyboard(static_cast<xcb_window_t>(widget.winId())); })) << round;
        ForeignWindow meeting("Lezione", {100, 100, 500, 400});
        EXPECT_EQ(setFullScreen(meeting, true), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return fullScreenOn(meeting.id(), countBefore); }))
            << round << ": " << standing(meeting.id());
        ASSERT_TRUE(takesTheKeyboard(meeting.id())) << round << ": " << standing(meeting.id());
        own->orderOut();
        // The person has typed there since, so the window manager protects that window against others.
        meeting.setProperty("_NET_WM_USER_TIME", XCB_ATOM_CARDINAL, {serverTime()});
        turnFor(0.3);
        meeting.destroy();
        waitUntilManagedNoLonger(meeting.id());

        const WindowManagerPause pause(*server, round * 0.02);
        own->makeKeyAndOrderFront();
        computer->application.activate();
        const auto window = static_cast<xcb_window_t>(widget.winId());
        EXPECT_TRUE(waitUntil([&] { return backOn(1) && facts(window)->desktop == 1U && hasKeyboard(window); }))
            << round << ": " << standing(window) << "; active " << X11Windows(*server).active().value_or(0) << ", ours "
            << window << ", focus " << focused();
        turnFor(0.2);
        EXPECT_TRUE(hasKeyboard(window)) << round;
        EXPECT_TRUE(widget.isActiveWindow());
    }
}

TEST_F(FullScreenDesktopsTest, GivesTheKeyboardToOurWindowThatComesUpLongAfterTheMeeting) {
    WindowDescription description;
    description.contentRect = {{0, 0}, {300, 200}};
    description.styleMask = windowTitled | windowClosable;
    description.title = "Vantrel";
    const auto own = computer->windows.makeWindow(description, [](std::string_view) {});
    const QWidget& widget = dynamic_cast<LinuxWindow&>(*own).widget();
    ForeignWindow others("Appunti", {600, 100, 300, 200});
    for (int round = 0; round < 3; ++round) {
        own->makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([&] { return hasKeyboard(static_cast<xcb_window_t>(widget.winId())); })) << round;
        ForeignWindow meeting("Lezione", {100, 100, 500, 400});
        EXPECT_EQ(setFullScreen(meeting, true), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return fullScreenOn(meeting.id(), countBefore); }))
            << round << ": " << standing(meeting.id());
        ASSERT_TRUE(takesTheKeyboard(meeting.id())) << round << ": " << standing(meeting.id());
        own->orderOut();
        meeting.destroy();
        ASSERT_TRUE(waitUntil([&] { return backOn(1) && hasKeyboard(others.id()); }))
            << round << ": " << standing(others.id());
        // The person types there, so the window manager protects that window against new ones.
        others.setProperty("_NET_WM_USER_TIME", XCB_ATOM_CARDINAL, {serverTime()});
        turnFor(0.3);

        own->makeKeyAndOrderFront();
        computer->application.activate();
        const auto window = static_cast<xcb_window_t>(widget.winId());
        EXPECT_TRUE(waitUntil([&] { return hasKeyboard(window); }, 2)) << round;
        turnFor(0.2);
        EXPECT_TRUE(hasKeyboard(window)) << round;
        EXPECT_TRUE(widget.isActiveWindow());
    }
}

TEST_F(FullScreenDesktopsTest, LosesNoWindowThatComesUpWhileItsDesktopGoes) {
    ForeignWindow meeting("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(meeting, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(meeting.id(), countBefore); }));
    turnFor(0.1);
    meeting.destroy();
    waitUntilManagedNoLonger(meeting.id());
    const WindowManagerPause pause(*server, 0.05);
    ForeignWindow late("Tardi", {100, 100, 300, 200});
    EXPECT_TRUE(waitUntil([&] { return backOn(1) && facts(late.id())->desktop == 1U; }));
    turnFor(0.1);
    EXPECT_EQ(facts(late.id())->desktop, 1U);
    EXPECT_TRUE(facts(late.id())->viewable);
}

TEST_F(FullScreenDesktopsTest, LeavesAWindowOnItsDesktopThatWentFullScreenByItself) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return facts(window.id()).has_value() && facts(window.id())->viewable; }));
    window.changeState(true, "_NET_WM_STATE_FULLSCREEN");
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), 1); }));
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    turnFor(0.1);
    EXPECT_TRUE(backOn(1));
    EXPECT_EQ(setFullScreen(window, false), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return !facts(window.id())->fullScreen; }));
    EXPECT_EQ(told, 0);
}

TEST_F(FullScreenDesktopsTest, PutsEverythingBackWhenTheClientEnds) {
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
    notices.reset();
    DesktopTest::TearDown();
    EXPECT_TRUE(waitUntil([&] { return backOn(1) && !facts(window.id())->fullScreen; }));
    EXPECT_EQ(facts(window.id())->desktop, 1U);
}

TEST_F(FullScreenDesktopsTest, PutsBackWhatAKilledClientHasLeft) {
    // The record of a client whose process is gone.
    const pid_t gone = fork();
    if (gone == 0) _exit(0);
    ASSERT_EQ(waitpid(gone, nullptr, 0), gone);
    auto window = std::make_unique<ForeignWindow>("Lezione", X11Rectangle{100, 100, 500, 400});
    ASSERT_TRUE(desktops().setCount(countBefore + 1));
    desktops().move(window->id(), countBefore);
    desktops().switchTo(countBefore);
    window->changeState(true, "_NET_WM_STATE_FULLSCREEN");
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window->id(), countBefore); }));
    const std::vector<std::uint32_t> record{static_cast<std::uint32_t>(gone), window->id(), countBefore, 1};
    xcb_change_property(server->get(), XCB_PROP_MODE_REPLACE, server->root(),
                        server->atom("_VANTREL_FULL_SCREEN_DESKTOPS"), XCB_ATOM_CARDINAL, 32, 4, record.data());
    xcb_flush(server->get());
    turnFor(0.1);
    notices.reset();
    DesktopTest::TearDown();
    ASSERT_TRUE(fullScreenOn(window->id(), countBefore)) << "it was not this client's";
    DesktopTest::SetUp();
    turnFor(0.1);
    EXPECT_TRUE(fullScreenOn(window->id(), countBefore)) << "the window is well";
    window.reset();
    EXPECT_TRUE(waitUntil([&] { return backOn(1); }));
}

TEST_F(FullScreenDesktopsTest, LeavesTheDesktopsOfAnotherLivingClientAlone) {
    const std::vector<std::uint32_t> record{static_cast<std::uint32_t>(getppid()), 4711, countBefore - 1, 0};
    xcb_change_property(server->get(), XCB_PROP_MODE_REPLACE, server->root(),
                        server->atom("_VANTREL_FULL_SCREEN_DESKTOPS"), XCB_ATOM_CARDINAL, 32, 4, record.data());
    xcb_flush(server->get());
    notices.reset();
    DesktopTest::TearDown();
    DesktopTest::SetUp();
    turnFor(0.2);
    EXPECT_EQ(desktops().count(), countBefore);
    EXPECT_EQ(server->values(server->root(), "_VANTREL_FULL_SCREEN_DESKTOPS"), record);
    xcb_delete_property(server->get(), server->root(), server->atom("_VANTREL_FULL_SCREEN_DESKTOPS"));
    xcb_flush(server->get());
}

TEST_F(FullScreenDesktopsTest, KeepsWhatAnotherLivingClientHasRecorded) {
    const std::vector<std::uint32_t> record{static_cast<std::uint32_t>(getppid()), 4711, 7, 0};
    const auto recorded = [&] { return server->values(server->root(), "_VANTREL_FULL_SCREEN_DESKTOPS"); };
    xcb_change_property(server->get(), XCB_PROP_MODE_REPLACE, server->root(),
                        server->atom("_VANTREL_FULL_SCREEN_DESKTOPS"), XCB_ATOM_CARDINAL, 32, 4, record.data());
    xcb_flush(server->get());
    {
        const ForeignWindow window("Lezione", {100, 100, 500, 400});
        ASSERT_EQ(setFullScreen(window, true), accessibilitySuccess);
        ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
        const auto both = recorded();
        ASSERT_EQ(both.size(), 8U);
        EXPECT_TRUE(std::equal(record.begin(), record.end(), both.begin()));
    }
    EXPECT_TRUE(waitUntil([&] { return recorded() == record; }));
    xcb_delete_property(server->get(), server->root(), server->atom("_VANTREL_FULL_SCREEN_DESKTOPS"));
    xcb_flush(server->get());
}

TEST_F(FullScreenDesktopsTest, LetsTheStatusStripComeInFront) {
    const auto item = computer->statusBar.statusItem(variableStatusItemLength);
    item->setButtonTitle("🔒 Vantrel");
    QWidget* strip = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == "statusStrip" && widget->isVisible()) strip = widget;
    }
    if (strip == nullptr) GTEST_SKIP() << "this desktop has a tray of its own";
    ForeignWindow window("Lezione", {100, 100, 500, 400});
    EXPECT_EQ(setFullScreen(window, true), accessibilitySuccess);
    ASSERT_TRUE(waitUntil([&] { return fullScreenOn(window.id(), countBefore); }));
    TestPointer pointer;
    pointer.moveTo(strip->geometry().left(), strip->geometry().top());
    // The window that the pointer would touch in the middle of the strip.
    const QPoint middle = strip->geometry().center();
    const auto onTop = [&] {
        const auto cookie = xcb_query_tree(server->get(), server->root());
        const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(server->get(), cookie, nullptr));
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0; --i) {
            const auto now = facts(children[i]);
            if (!now || !now->viewable) continue;
            const X11Rectangle& frame = now->frame;
            if (QRect(frame.x, frame.y, frame.width, frame.height).contains(middle)) return children[i];
        }
        return xcb_window_t{XCB_WINDOW_NONE};
    };
    EXPECT_TRUE(waitUntil([&] { return onTop() == static_cast<xcb_window_t>(strip->winId()); }));
    turnFor(0.2);
    EXPECT_EQ(onTop(), static_cast<xcb_window_t>(strip->winId()));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
