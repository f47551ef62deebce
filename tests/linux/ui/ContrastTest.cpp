#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>
#include <string>

#include "lockdown/BlackoutContentView.h"
#include "platform/linux/statusbar/StatusStrip.h"
#include "platform/linux/ui/AlertDialog.h"
#include "platform/linux/ui/Appearance.h"
#include "platform/linux/ui/LinuxWindow.h"
#include "session/EndScreen.h"
#include "session/JoinScreen.h"
#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

double linear(int channel) {
    const double share = channel / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(QRgb colour) {
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

/// The contrast ratio of WCAG 2, from 1 to 21.
double ratio(QRgb one, QRgb other) {
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// The colours on the screen, measured from what is painted. Letters are painted without smoothing, so that their
/// colour is there as it is.
class ContrastTest : public DesktopTest {
  protected:
    static constexpr double enoughForText = 4.5;
    static constexpr double enoughForShapes = 3;
    static constexpr int scale = 8;

    /// The ratio of the colour that most pixels have to the one that stands out most from it.
    static double measured(const QImage& image) {
        std::map<QRgb, int> count;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) ++count[image.pixel(x, y)];
        }
        const auto ground = std::max_element(count.begin(), count.end(),
                                             [](const auto& one, const auto& two) { return one.second < two.second; });
        double most = 1;
        for (const auto& [colour, pixels] : count) most = std::max(most, ratio(colour, ground->first));
        return most;
    }

    static QImage painted(QWidget& window) {
        QImage image(window.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        window.render(&image);
        image.setDevicePixelRatio(1);
        return image;
    }

    static QRect scaled(const QRect& place) { return {place.topLeft() * scale, place.size() * scale}; }

    /// Without the border.
    static void expectText(const char* what, QWidget& widget) {
        const QRect place(widget.mapTo(widget.window(), QPoint(0, 0)), widget.size());
        expectText(what, painted(*widget.window()).copy(scaled(place.adjusted(4, 3, -4, -3))));
    }

    static void expectText(const char* what, const QImage& image) {
        const double found = measured(image);
        std::cout << "  " << what << ": " << found << '\n';
        EXPECT_GE(found, enoughForText) << what;
    }

    /// How the border in the middle of the left edge stands out from what is beside it.
    static void expectFocusRing(const char* what, QWidget& widget) {
        widget.setFocus();
        const QImage all = painted(*widget.window());
        const QPoint edge = widget.mapTo(widget.window(), QPoint(0, widget.height() / 2)) * scale;
        const QRgb ring = all.pixel(edge + QPoint(scale, 0));
        const double outside = ratio(ring, all.pixel(edge - QPoint(3 * scale, 0)));
        const double within = ratio(ring, all.pixel(edge + QPoint(4 * scale, 0)));
        std::cout << "  " << what << ": " << outside << " and " << within << '\n';
        EXPECT_GE(outside, enoughForShapes) << what;
        EXPECT_GE(within, enoughForShapes) << what;
    }

    void open(const View& view) {
        WindowDescription description;
        description.contentRect = view.frame;
        description.styleMask = windowTitled;
        description.title = "Vantrel";
        description.views = {view};
        description.views.front().frame.origin = {};
        description.views.front().hidden = false;
        window = computer->windows.makeWindow(description, [](std::string_view) {});
        window->makeKeyAndOrderFront();
        ASSERT_TRUE(waitUntil([this] { return widget().isActiveWindow(); }));
    }

    QWidget& widget() const { return dynamic_cast<LinuxWindow&>(*window).widget(); }

    QWidget& child(std::string_view id) const {
        auto* found = widget().findChild<QWidget*>(qtText(id));
        EXPECT_NE(found, nullptr) << id;
        return *found;
    }

    /// The label that shows this text.
    QWidget& labelSaying(const QString& text) const {
        const auto all = widget().findChildren<QWidget*>();
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const QWidget* each) { return each->accessibleName() == text; });
        EXPECT_NE(found, all.end()) << text.toStdString();
        return **found;
    }

    static constexpr Rect frame{{100, 100}, {440, 460}};
    std::unique_ptr<Window> window;
};

TEST_F(ContrastTest, TheJoinScreenCanBeRead) {
    open(JoinScreen::view(frame, "2.0-macOS"));
    expectText("a label", labelSaying("Nome e cognome:"));
    expectText("the subtitle (secondary label colour)", labelSaying("Inserisci i dati ricevuti dal formatore"));
    expectText("the footer (tertiary label colour)", labelSaying("v2.0-macOS — a cura del gruppo Vantrel"));
    window->setText(JoinScreen::errorLabel, "Errore di rete");
    expectText("the status (system red)", child(JoinScreen::errorLabel));
    expectText("a field's placeholder", child(JoinScreen::fullNameField));
    window->setText(JoinScreen::fullNameField, "Ada Neri");
    expectText("a field's text", child(JoinScreen::fullNameField));
    expectText("the button", child(JoinScreen::joinButton));
    window->setEnabled(JoinScreen::joinButton, false);
    expectText("the button while the server is asked", child(JoinScreen::joinButton));
    window->setEnabled(JoinScreen::joinButton, true);
    expectFocusRing("a field with the focus", child(JoinScreen::emailField));
    expectFocusRing("the button with the focus", child(JoinScreen::joinButton));
}

TEST_F(ContrastTest, TheEndScreenCanBeRead) {
    open(EndScreen::view(frame));
    window->setText(EndScreen::endMessageLabel, "Sessione terminata dall'utente");
    expectText("the title", labelSaying("Sessione terminata"));
    expectText("the reason (secondary label colour)", child(EndScreen::endMessageLabel));
    expectText("the button", child(EndScreen::newSessionButton));
    expectFocusRing("the button with the focus", child(EndScreen::newSessionButton));
}

TEST_F(ContrastTest, AnAlertCanBeRead) {
    AlertDialog dialog({AlertStyle::warning, "Terminare?", "Una riga.", {"Termina", "Annulla"}});
    dialog.show();
    ASSERT_TRUE(waitUntil([&] { return dialog.isActiveWindow(); }));
    for (const char* name : {"messageText", "informativeText", "button0", "button1"}) {
        expectText(name, *dialog.findChild<QWidget*>(name));
    }
    expectFocusRing("the other button with the focus", *dialog.findChild<QWidget*>("button1"));
    expectFocusRing("the first button with the focus", *dialog.findChild<QWidget*>("button0"));
}

TEST_F(ContrastTest, AMenuCanBeRead) {
    QMenu menu;
    QAction* information = menu.addAction("Corso [ABC]");
    information->setEnabled(false);
    QAction* entry = menu.addAction("Termina sessione");
    QAction* chosen = menu.addAction("Termina sessione");
    menu.popup({200, 200});
    ASSERT_TRUE(waitUntil([&] { return menu.isVisible(); }));
    menu.setActiveAction(chosen);
    const QImage image = painted(menu);
    const auto row = [&](QAction* action) {
        return image.copy(scaled(menu.actionGeometry(action).adjusted(6, 3, -6, -3)));
    };
    expectText("information", row(information));
    expectText("an entry", row(entry));
    expectText("a chosen entry", row(chosen));
    menu.close();
}

TEST_F(ContrastTest, TheStatusItemCanBeRead) {
    StatusStrip strip;
    strip.setTitle("Vantrel");
    expectText("at rest", strip);
    strip.setPressed(true);
    expectText("pressed", strip);
}

// The rules give these colours. docs/linux.md lists them.
TEST_F(ContrastTest, TheTextsOfACoverHaveTheContrastThatIsDocumented) {
    std::vector<double> found;
    for (const OverlayLabel& label : BlackoutContentView::labels({1440, 900})) {
        const auto level = static_cast<float>(label.whiteLevel);
        found.push_back(ratio(QColor::fromRgbF(level, level, level).rgb(), qRgb(0, 0, 0)));
    }
    ASSERT_EQ(found.size(), 4u);
    const std::vector<double> documented{4.76, 10.24, 6.25, 3.24};
    for (std::size_t index = 0; index < found.size(); ++index) EXPECT_NEAR(found[index], documented[index], 0.01);
}

}  // namespace
}  // namespace vantrel::linuxdesktop
