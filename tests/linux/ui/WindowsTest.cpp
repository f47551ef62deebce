#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QThread>

#include "platform/linux/ui/LinuxWindow.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Windows.h"
#include "tests/linux/support/Builders.h"
#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"

namespace vantrel::linuxdesktop {
namespace {

class WindowsTest : public DesktopTest {
  protected:
    static WindowDescription form() {
        using Kind = Control::Kind;
        View join{"join", {{0, 0}, {440, 460}}, viewWidthSizable | viewHeightSizable, false, {}};
        join.controls = {control(Kind::label, "", "🔒 Vantrel", {{24, 408}, {392, 34}}),
                         control(Kind::textField, "field", "", {{24, 324}, {392, 24}}),
                         control(Kind::label, "error", "", {{24, 122}, {392, 18}}),
                         control(Kind::button, "go", "Avvia", {{24, 80}, {210, 32}})};
        join.controls[0].font = {26, true};
        join.controls[2].font = {12, false};
        join.controls[2].color = TextColor::systemRed;
        join.controls[3].keyEquivalent = "\r";
        View end{"end", {{0, 0}, {440, 460}}, viewWidthSizable | viewHeightSizable, true, {}};
        end.controls = {control(Kind::wrappingLabel, "message", "", {{24, 290}, {392, 80}}),
                        control(Kind::button, "again", "Nuova sessione", {{24, 230}, {160, 32}})};
        WindowDescription description;
        description.contentRect = {{0, 0}, {440, 460}};
        description.styleMask = windowTitled | windowClosable | windowMiniaturizable;
        description.title = "Vantrel";
        description.views = {join, end};
        return description;
    }

    void open() {
        window = computer->windows.makeWindow(form(), [this](std::string_view id) {
            pressed.emplace_back(id);
            if (onPress) onPress();
        });
        window->center();
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([this] { return widget().isActiveWindow(); }));
    }

    QWidget& widget() const { return dynamic_cast<LinuxWindow&>(*window).widget(); }

    template <typename T>
    T* child(const char* name) const {
        return widget().findChild<T*>(name);
    }

    QRect frameInWindow(const char* name) const {
        auto* found = child<QWidget>(name);
        return {found->mapTo(&widget(), QPoint(0, 0)), found->size()};
    }

    std::unique_ptr<Window> window;
    std::vector<std::string> pressed;
    Block onPress;
};

TEST_F(WindowsTest, PlacesControlsByTheirFramesFromTheBottomLeft) {
    open();
    EXPECT_EQ(widget().size(), QSize(440, 460));
    EXPECT_EQ(widget().minimumSize(), widget().maximumSize());
    EXPECT_EQ(widget().devicePixelRatio(), 1.0);
    EXPECT_EQ(frameInWindow("field"), QRect(24, 460 - 324 - 24, 392, 24));
    EXPECT_EQ(frameInWindow("error"), QRect(24, 460 - 122 - 18, 392, 18));
    EXPECT_EQ(frameInWindow("go"), QRect(24, 460 - 80 - 32, 210, 32));
}

TEST_F(WindowsTest, PutsTheMainMenuAboveTheContent) {
    Menu menu;
    menu.items.push_back(submenuItem({}));
    computer->application.setMainMenu(menu);
    open();
    const int bar = widget().height() - 460;
    EXPECT_GT(bar, 0);
    EXPECT_EQ(frameInWindow("go"), QRect(24, bar + 460 - 80 - 32, 210, 32));
}

TEST_F(WindowsTest, CentresOnTheMainScreen) {
    open();
    const auto screen = computer->screens.mainScreen();
    ASSERT_TRUE(screen);
    const QRect frame = widget().geometry();
    const double primaryLeft = frame.center().x() - (screen->frame.origin.x + screen->frame.size.width / 2);
    EXPECT_LE(std::abs(primaryLeft), 2.0);
}

TEST_F(WindowsTest, ReadsAndSetsTextsById) {
    open();
    QTest::keyClicks(child<QLineEdit>("field"), "abc");
    EXPECT_EQ(window->text("field"), "abc");
    window->setText("field", "Niccolò 🔒");
    EXPECT_EQ(window->text("field"), "Niccolò 🔒");
    window->setText("error", "❌ Errore");
    EXPECT_EQ(window->text("error"), "❌ Errore");
    EXPECT_EQ(window->text("message"), "");
    EXPECT_EQ(window->text("nobody"), std::nullopt);
    EXPECT_EQ(window->text(""), std::nullopt);
}

TEST_F(WindowsTest, KeepsATextWholeThatIsTooLongToBeShown) {
    open();
    const std::string text(std::size_t{4} << 20, 'x');
    window->setText("error", text);
    window->setText("message", text);
    turnFor(0.1);
    EXPECT_EQ(window->text("error"), text);
    EXPECT_EQ(window->text("message"), text);
}

TEST_F(WindowsTest, DrawsTextInItsColourInsideItsFrame) {
    open();
    const auto reddish = [this] {
        const QImage image = widget().grab(frameInWindow("error")).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.red() > 180 && colour.green() < 80 && colour.blue() < 80) ++count;
            }
        }
        return count;
    };
    EXPECT_EQ(reddish(), 0);
    window->setText("error", "Errore del server");
    EXPECT_GT(reddish(), 50);
}

TEST_F(WindowsTest, PressesAButtonByClickAndByReturnAnywhere) {
    open();
    QTest::mouseClick(child<QPushButton>("go"), Qt::LeftButton);
    QTest::keyClick(child<QLineEdit>("field"), Qt::Key_Return);
    QTest::keyClick(child<QLineEdit>("field"), Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&widget(), Qt::Key_Return);
    EXPECT_EQ(pressed, (std::vector<std::string>{"go", "go", "go", "go"}));
}

TEST_F(WindowsTest, PressesNothingByReturnWhenTheButtonIsDisabledOrHidden) {
    open();
    window->setEnabled("go", false);
    QTest::keyClick(child<QLineEdit>("field"), Qt::Key_Return);
    QTest::mouseClick(child<QPushButton>("go"), Qt::LeftButton);
    window->setEnabled("go", true);
    window->setViewHidden("join", true);
    window->setViewHidden("end", false);
    QTest::keyClick(&widget(), Qt::Key_Return);
    EXPECT_TRUE(pressed.empty());
    QTest::mouseClick(child<QPushButton>("again"), Qt::LeftButton);
    EXPECT_EQ(pressed, std::vector<std::string>{"again"});
}

TEST_F(WindowsTest, MayBeDestroyedInsideItsOwnAction) {
    open();
    onPress = [this] { window.reset(); };
    QTest::mouseClick(child<QPushButton>("go"), Qt::LeftButton);
    turnFor(0.1);
    EXPECT_EQ(pressed.size(), 1u);
    open();
    QTest::keyClick(child<QLineEdit>("field"), Qt::Key_Return);
    turnFor(0.1);
    EXPECT_EQ(pressed.size(), 2u);
    EXPECT_FALSE(window);
}

TEST_F(WindowsTest, MayBeHiddenShownAndDestroyedUnderAnAlert) {
    open();
    answerAlertLater(Qt::Key_Return, [this] {
        window->orderOut();
        turnFor(0.1);
        window->makeKeyAndOrderFront();
        turnFor(0.1);
        window.reset();
        turnFor(0.1);
    });
    EXPECT_EQ(computer->alerts.runModal({AlertStyle::warning, "x", "", {}}), 0u);
}

TEST_F(WindowsTest, KeepsItsStyleMaskThroughChangesWithoutHiding) {
    open();
    window->setStyleMask(windowTitled | windowMiniaturizable);
    EXPECT_EQ(window->styleMask(), unsigned{windowTitled | windowMiniaturizable});
    EXPECT_TRUE(widget().isVisible());
    window->orderOut();
    EXPECT_FALSE(widget().isVisible());
    window->setStyleMask(windowTitled | windowClosable | windowMiniaturizable);
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(widget().isVisible());
}

TEST_F(WindowsTest, TellsTheWindowManagerOfItsButtons) {
    open();
    const auto own = X11Connection::open();
    ASSERT_TRUE(own);
    const auto hints = [&] { return own->values(static_cast<xcb_window_t>(widget().winId()), "_MOTIF_WM_HINTS"); };
    constexpr std::uint32_t move = 4, minimize = 8, close = 32;
    constexpr std::uint32_t border = 2, title = 8, menu = 16, minimizeButton = 32;
    using Hints = std::vector<std::uint32_t>;
    const Hints withClose{3, move | minimize | close, border | title | menu | minimizeButton, 0, 0};
    EXPECT_EQ(hints(), withClose);
    window->setStyleMask(windowTitled | windowMiniaturizable);
    EXPECT_TRUE(waitUntil([&] { return hints() == Hints{3, move | minimize, border | title | minimizeButton, 0, 0}; }));
    window->setStyleMask(windowTitled);
    EXPECT_TRUE(waitUntil([&] { return hints() == Hints{3, move, border | title, 0, 0}; }));
    // Still so when it is shown again.
    window->orderOut();
    window->setStyleMask(windowTitled | windowClosable | windowMiniaturizable);
    window->makeKeyAndOrderFront();
    turnFor(0.1);
    EXPECT_EQ(hints(), withClose);
}

TEST_F(WindowsTest, IsActiveAgainWhenItComesBackAtOnce) {
    open();
    const auto server = X11Connection::open();
    ASSERT_TRUE(server);
    X11Windows windows(*server);
    // The event loop sees nothing of this before the window is back.
    const ForeignWindow other("Appunti", {600, 100, 300, 200});
    for (int waited = 0; waited < 1000 && windows.active() != other.id(); ++waited) QThread::msleep(1);
    ASSERT_EQ(windows.active(), other.id());
    window->orderOut();
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([&] { return windows.active() == static_cast<xcb_window_t>(widget().winId()); }));
    turnFor(0.3);
    EXPECT_EQ(windows.active(), static_cast<xcb_window_t>(widget().winId()));
    EXPECT_TRUE(widget().isActiveWindow()) << "keys come, but no shortcut works";
}

TEST_F(WindowsTest, SelectsTheFirstFieldWhenItIsShown) {
    open();
    EXPECT_EQ(widget().focusWidget(), child<QLineEdit>("field"));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
