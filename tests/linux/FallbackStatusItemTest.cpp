#include <QApplication>
#include <QSystemTrayIcon>
#include <QWidget>

#include "Builders.h"
#include "DesktopTest.h"
#include "ForeignWindow.h"
#include "TestPointer.h"
#include "platform/linux/FallbackStatusItem.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Windows.h"

namespace vantrel::linuxdesktop {
namespace {

struct Seen {
    std::string title;
    std::vector<std::string> menu;
    bool removed = false;
};

class SeenStatusItem final : public RemovableStatusItem {
  public:
    explicit SeenStatusItem(Seen& seen) : seen_(seen) {}
    void setButtonTitle(const std::string& title) override { seen_.title = title; }
    void setMenu(const Menu& menu) override {
        seen_.menu.clear();
        for (const MenuItem& item : menu.items) seen_.menu.push_back(item.title);
    }
    void remove() override { seen_.removed = true; }

  private:
    Seen& seen_;
};

class FallbackStatusItemTest : public DesktopTest {
  protected:
    std::unique_ptr<FallbackStatusItem> make() {
        return std::make_unique<FallbackStatusItem>(
            std::make_unique<SeenStatusItem>(tray), [this] { return available; },
            [this] {
                ++made;
                return std::make_unique<SeenStatusItem>(strip);
            });
    }

    static Menu menu(const std::string& title) {
        Menu made;
        made.items.push_back(informationItem(title));
        return made;
    }

    static bool stripIsShown() {
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "statusStrip" && widget->isVisible()) return true;
        }
        return false;
    }

    Seen tray;
    Seen strip;
    bool available = true;
    int made = 0;
};

TEST_F(FallbackStatusItemTest, StaysInTheTrayWhileThereIsOne) {
    const auto item = make();
    item->setButtonTitle("Titolo");
    turnFor(1.3);
    EXPECT_EQ(tray.title, "Titolo");
    EXPECT_FALSE(tray.removed);
    EXPECT_EQ(made, 0);
}

TEST_F(FallbackStatusItemTest, MovesOnceWithTitleAndMenuWhenTheTrayEnds) {
    const auto item = make();
    item->setButtonTitle("Titolo");
    item->setMenu(menu("Termina sessione"));
    available = false;
    ASSERT_TRUE(waitUntil([this] { return made == 1; }));
    EXPECT_TRUE(tray.removed);
    EXPECT_EQ(strip.title, "Titolo");
    EXPECT_EQ(strip.menu, std::vector<std::string>{"Termina sessione"});
    item->setButtonTitle("Altro");
    EXPECT_EQ(strip.title, "Altro");
    turnFor(1.3);
    EXPECT_EQ(made, 1);
    item->remove();
    EXPECT_TRUE(strip.removed);
}

TEST_F(FallbackStatusItemTest, DoesNotComeBackOnceRemoved) {
    const auto item = make();
    item->remove();
    EXPECT_TRUE(tray.removed);
    available = false;
    turnFor(1.3);
    EXPECT_EQ(made, 0);
}

TEST_F(FallbackStatusItemTest, ShowsTheStripWhenTheDesktopsTrayIsGone) {
    if (QSystemTrayIcon::isSystemTrayAvailable()) GTEST_SKIP() << "this desktop has a tray of its own";
    // A tray is whoever owns the selection; its window and the selection go with the connection.
    auto panel = X11Connection::open();
    ASSERT_TRUE(panel);
    const xcb_window_t window = xcb_generate_id(panel->get());
    xcb_create_window(panel->get(), XCB_COPY_FROM_PARENT, window, panel->root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(panel->get(), window, panel->atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    const xcb_window_t root = panel->root();
    xcb_client_message_event_t manager{};
    manager.response_type = XCB_CLIENT_MESSAGE;
    manager.format = 32;
    manager.window = root;
    manager.type = panel->atom("MANAGER");
    manager.data.data32[1] = panel->atom("_NET_SYSTEM_TRAY_S0");
    manager.data.data32[2] = window;
    xcb_send_event(panel->get(), 0, root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&manager));
    xcb_flush(panel->get());
    ASSERT_TRUE(waitUntil([] { return QSystemTrayIcon::isSystemTrayAvailable(); }));

    const auto item = computer->statusBar.statusItem(variableStatusItemLength);
    item->setButtonTitle("Titolo");
    turnFor(0.1);
    EXPECT_FALSE(stripIsShown());
    {
        // Over the panel.
        ForeignWindow browser("Lezione", {100, 100, 500, 400});
        X11Windows windows(browser.connection());
        ASSERT_TRUE(waitUntil([&] { return windows.active() == browser.id(); }));
        TestPointer pointer;
        pointer.moveTo(300, 400);
        browser.changeState(true, "_NET_WM_STATE_FULLSCREEN");
        ASSERT_TRUE(waitUntil([&] {
            const auto frame = windows.frame(browser.id());
            return frame && frame->x == 0 && frame->y == 0;
        }));
        turnFor(0.2);
        EXPECT_FALSE(stripIsShown());
        pointer.moveTo(300, 0);
        EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
    }
    EXPECT_TRUE(waitUntil([] { return !stripIsShown(); }));
    panel.reset();
    EXPECT_TRUE(waitUntil([] { return stripIsShown(); }));
    computer->statusBar.removeStatusItem(*item);
    EXPECT_FALSE(stripIsShown());
}

}  // namespace
}  // namespace vantrel::linuxdesktop
