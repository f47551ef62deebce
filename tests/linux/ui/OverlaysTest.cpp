#include <xcb/xfixes.h>

#include <QApplication>
#include <QMenu>
#include <QWidget>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "lockdown/BlackoutContentView.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"
#include "tests/linux/x11/MonitorLayout.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestPointer.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr int level = 1000;

/// Two displays of unequal size. The right one, which is to be covered, begins 100 pixels below the left one's top.
class OverlaysTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (!computer) return;
        layout.set({{"VTEST-A", {0, 0, 800, 700}}, {"VTEST-B", {800, 100, 700, 600}}});
        pointer.moveTo(400, 400);
    }

    void TearDown() override {
        overlay.reset();
        DesktopTest::TearDown();
    }

    void cover() {
        const Rect frame{{800, 0}, {700, 600}};
        overlay = computer->overlays.makeOverlay({frame, level, 0x51, BlackoutContentView::labels(frame.size)});
        overlay->orderFrontRegardless();
    }

    bool covers(int x, int y) {
        const auto top = view.topmostAt(x, y);
        return top && top->name == "Vantrel overlay";
    }

    bool coversSoon(int x, int y) {
        return waitUntil([&] { return covers(x, y); });
    }

    std::optional<xcb_window_t> active() { return X11Windows(view.connection()).active(); }

    bool focus(ForeignWindow& window) {
        X11Windows(view.connection()).activate(window.id());
        return waitUntil([&] { return active() == window.id() && view.focusedWindow() == window.id(); });
    }

    bool fullScreen(ForeignWindow& window) {
        const bool managed = waitUntil([&] { return active() == window.id(); });
        window.changeState(true, "_NET_WM_STATE_FULLSCREEN");
        return managed;
    }

    /// The area within `place` where something brighter than black is drawn.
    X11Rectangle drawnWithin(const X11Rectangle& place) {
        const auto pixels = view.pixels(place);
        X11Rectangle found{place.width, place.height, 0, 0};
        int right = -1;
        int bottom = -1;
        for (int y = 0; y < place.height; ++y) {
            for (int x = 0; x < place.width; ++x) {
                if (pixels.at(static_cast<std::size_t>(y * place.width + x)) == 0) continue;
                found.x = std::min(found.x, x);
                found.y = std::min(found.y, y);
                right = std::max(right, x);
                bottom = std::max(bottom, y);
            }
        }
        found.width = right - found.x + 1;
        found.height = bottom - found.y + 1;
        found.x += place.x;
        found.y += place.y;
        return found;
    }

    std::uint32_t brightestWithin(const X11Rectangle& place) {
        std::uint32_t found = 0;
        for (const std::uint32_t pixel : view.pixels(place)) found = std::max(found, pixel & 0xFF);
        return found;
    }

    MonitorLayout layout;
    ServerView view;
    TestPointer pointer;
    std::unique_ptr<Overlay> overlay;
};

TEST_F(OverlaysTest, CoversItsDisplayAndNothingElse) {
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    EXPECT_EQ(view.named("Vantrel overlay").front().frame, (X11Rectangle{800, 100, 700, 600}));
    EXPECT_FALSE(covers(799, 300));
    EXPECT_FALSE(covers(1000, 99));
}

TEST_F(OverlaysTest, IsBlackBeforeTheMainThreadComesToPaintingIt) {
    ForeignWindow below("Sotto", {850, 150, 500, 400});
    const std::uint32_t white = 0xFFFFFF;
    xcb_change_window_attributes(below.connection().get(), below.id(), XCB_CW_BACK_PIXEL, &white);
    xcb_clear_area(below.connection().get(), 0, below.id(), 0, 0, 0, 0);
    xcb_flush(below.connection().get());
    ASSERT_TRUE(waitUntil([this] { return view.pixel(1000, 300) == 0xFFFFFF; }));
    cover();
    // No event is handled here.
    EXPECT_TRUE(covers(1000, 300));
    EXPECT_EQ(view.pixel(1000, 300), 0U);
}

TEST_F(OverlaysTest, DrawsItsLabelsWhereTheyBelong) {
    cover();
    // The middle of the overlay is at 1150, 400.
    const X11Rectangle title{800, 400 - 20 - 40, 700, 41};
    const X11Rectangle subtitle{800, 400 + 10 - 17, 700, 17};
    const X11Rectangle notice{800, 400 + 70 - 40, 700, 41};
    ASSERT_TRUE(waitUntil([&] { return brightestWithin(title) > 0 && brightestWithin(notice) > 0; }));
    for (const X11Rectangle& place : {title, subtitle, notice}) {
        const X11Rectangle drawn = drawnWithin(place);
        EXPECT_NEAR(drawn.x + drawn.width / 2.0, 1150, 3);
        EXPECT_GT(drawn.width, 80);
    }
    // White levels 0.71, 0.55 and 0.37.
    EXPECT_NEAR(brightestWithin(title), 181, 2);
    EXPECT_NEAR(brightestWithin(subtitle), 140, 4);
    EXPECT_NEAR(brightestWithin(notice), 94, 4);
    // Two lines from the top of the notice's frame.
    const X11Rectangle lines = drawnWithin(notice);
    EXPECT_LE(lines.y, 400 + 30 + 6);
    EXPECT_GT(lines.height, 18);
    EXPECT_LE(lines.height, 32);
    // The lock, in its colours where the fonts have them.
    const X11Rectangle lock = drawnWithin({800, 400 - 80 - 80, 700, 80});
    EXPECT_GT(lock.width, 30);
    EXPECT_NEAR(lock.x + lock.width / 2.0, 1150, 4);
    // Nothing above and nothing below.
    EXPECT_EQ(brightestWithin({800, 100, 700, 100}), 0U);
    EXPECT_EQ(brightestWithin({800, 490, 700, 210}), 0U);
}

TEST_F(OverlaysTest, KeepsAClickFromTheWindowBelowAndLeavesTheFocusWhereItIs) {
    ForeignWindow below("Sotto", {850, 150, 500, 400});
    ForeignWindow browser("Browser", {100, 100, 400, 300});
    ASSERT_TRUE(waitUntil([&] { return active().has_value(); }));
    ASSERT_TRUE(focus(browser));
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    pointer.clickAt(1000, 300);
    pointer.click();
    turnFor(0.3);
    EXPECT_EQ(active(), browser.id());
    EXPECT_EQ(view.focusedWindow(), browser.id());
    EXPECT_TRUE(covers(1000, 300));
}

TEST_F(OverlaysTest, ShowsTheNotAllowedCursor) {
    xcb_connection_t* connection = view.connection().get();
    const X11Reply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(connection, xcb_xfixes_query_version(connection, 4, 0), nullptr));
    ASSERT_TRUE(version);
    const auto cursor = [connection] {
        const X11Reply<xcb_xfixes_get_cursor_image_and_name_reply_t> reply(xcb_xfixes_get_cursor_image_and_name_reply(
            connection, xcb_xfixes_get_cursor_image_and_name(connection), nullptr));
        if (!reply) return std::pair<std::string, std::vector<std::uint32_t>>();
        const std::uint32_t* image = xcb_xfixes_get_cursor_image_and_name_cursor_image(reply.get());
        return std::pair(
            std::string(xcb_xfixes_get_cursor_image_and_name_name(reply.get()),
                        static_cast<std::size_t>(xcb_xfixes_get_cursor_image_and_name_name_length(reply.get()))),
            std::vector(image, image + reply->width * reply->height));
    };
    pointer.moveTo(1000, 300);
    turnFor(0.05);
    const auto before = cursor();
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    EXPECT_TRUE(waitUntil([&] { return cursor().second != before.second; }));
    // The theme's cursor, or Qt's own if the theme has none.
    const auto [name, image] = cursor();
    EXPECT_TRUE(name.empty() || name == "crossed_circle" || name == "forbidden" || name == "not-allowed" ||
                name == "circle" || name == "03b6e0fcb3499374a867c041f52298f0")
        << name;
    EXPECT_FALSE(image.empty());
}

TEST_F(OverlaysTest, StaysInFrontOfAFullScreenWindowAndOnEveryDesktop) {
    cover();
    ForeignWindow window("Gioco", {850, 150, 500, 400});
    ASSERT_TRUE(fullScreen(window));
    turnFor(0.3);
    EXPECT_TRUE(covers(1000, 300));
    X11Desktops desktops(view.connection());
    const auto before = desktops.current();
    ASSERT_TRUE(before);
    desktops.switchTo(*before + 1);
    ASSERT_TRUE(waitUntil([&] { return desktops.current() == *before + 1; }));
    turnFor(0.1);
    EXPECT_TRUE(covers(1000, 300));
    desktops.switchTo(*before);
    ASSERT_TRUE(waitUntil([&] { return desktops.current() == before; }));
    turnFor(0.1);
    EXPECT_TRUE(covers(1000, 300));
}

TEST_F(OverlaysTest, LeavesTheClientsMenusAndAlertsInFront) {
    ForeignWindow below("Sotto", {850, 150, 500, 400});
    ASSERT_TRUE(waitUntil([&] { return active() == below.id(); }));
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    // The alert opens on the display of the focused window.
    bool alertInFront = false;
    bool alertStays = false;
    answerAlertLater(Qt::Key_Return, [&] {
        const QPoint middle = alert()->geometry().center();
        alertInFront = waitUntil([&] { return !covers(middle.x(), middle.y()); });
        xcb_circulate_window(view.connection().get(), XCB_CIRCULATE_RAISE_LOWEST, view.connection().root());
        xcb_flush(view.connection().get());
        ForeignWindow another("Altro", {820, 120, 300, 200});
        turnFor(0.4);
        alertStays = !covers(middle.x(), middle.y());
    });
    computer->alerts.runModal({AlertStyle::warning, "Terminare la sessione?", "Perché?", {"Termina", "Annulla"}});
    EXPECT_TRUE(alertInFront);
    EXPECT_TRUE(alertStays);

    QMenu menu;
    menu.addAction("Termina sessione");
    menu.popup(QPoint(1000, 300));
    ASSERT_TRUE(waitUntil([&] { return !covers(1005, 305); }));
    ForeignWindow another("Altro", {820, 120, 300, 200});
    turnFor(0.4);
    EXPECT_FALSE(covers(1005, 305));
}

TEST_F(OverlaysTest, AnswersAnOpponentEverMoreSlowlyAndWinsInTheEnd) {
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    std::atomic<bool> fights = true;
    std::atomic<int> raises = 0;
    const auto opponent = X11Connection::open();
    const xcb_window_t window = xcb_generate_id(opponent->get());
    constexpr std::uint32_t unmanaged = 1;
    xcb_create_window(opponent->get(), XCB_COPY_FROM_PARENT, window, opponent->root(), 900, 200, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    const std::uint32_t mask = XCB_EVENT_MASK_VISIBILITY_CHANGE;
    xcb_change_window_attributes(opponent->get(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_map_window(opponent->get(), window);
    xcb_flush(opponent->get());
    std::thread thread([&] {
        while (fights) {
            const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(opponent->get())};
            if (!event) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                continue;
            }
            if ((event->response_type & 0x7F) != XCB_VISIBILITY_NOTIFY) continue;
            const auto& seen = reinterpret_cast<const xcb_visibility_notify_event_t&>(*event);
            if (seen.state == XCB_VISIBILITY_UNOBSCURED) continue;
            ++raises;
            const std::uint32_t above = XCB_STACK_MODE_ABOVE;
            xcb_configure_window(opponent->get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
            xcb_flush(opponent->get());
        }
    });
    turnFor(5);
    EXPECT_GE(raises, 4);
    EXPECT_LE(raises, 15);
    fights = false;
    thread.join();
    EXPECT_TRUE(waitUntil([&] { return covers(1000, 300); }, 2));
    turnFor(0.5);
    EXPECT_TRUE(covers(1000, 300));
}

TEST_F(OverlaysTest, AsksCompositorsNotToStepAside) {
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    const auto shown = view.named("Vantrel overlay");
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(view.connection().values(shown.front().window, "_NET_WM_BYPASS_COMPOSITOR"),
              std::vector<std::uint32_t>{2});
}

TEST_F(OverlaysTest, IsGoneAtOnceThoughTheMainThreadIsBusy) {
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    overlay->orderOut();
    EXPECT_FALSE(covers(1000, 300));
    overlay->orderFrontRegardless();
    EXPECT_TRUE(covers(1000, 300));
    overlay->close();
    EXPECT_TRUE(view.named("Vantrel overlay").empty());
}

TEST_F(OverlaysTest, DoesNothingWhileNothingMoves) {
    cover();
    ASSERT_TRUE(coversSoon(1000, 300));
    turnFor(0.5);
    const auto watched = X11Connection::open();
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(watched->get(), watched->root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(watched->get());
    overlay->setLevel(level);
    overlay->orderFrontRegardless();
    turnFor(0.5);
    const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(watched->get())};
    EXPECT_FALSE(event);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
