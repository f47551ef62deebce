#include "tests/linux/support/DesktopTest.h"

#include <QApplication>
#include <QTest>
#include <QThread>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace vantrel::linuxdesktop {

void DesktopTest::SetUp() {
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    NoComputer reason{};
    desktop = LinuxComputer::create({}, reason);
    ASSERT_TRUE(desktop) << "this test needs an X11 display with a window manager: set DISPLAY";
    computer = std::make_unique<Computer>(desktop->computer());
}

void DesktopTest::TearDown() {
    computer.reset();
    desktop.reset();
}

bool DesktopTest::waitUntil(const std::function<bool()>& condition, double seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    }
    return true;
}

void DesktopTest::turnFor(double seconds) {
    waitUntil([] { return false; }, seconds);
}

QWidget* DesktopTest::alert() {
    QWidget* widget = QApplication::activeModalWidget();
    return widget != nullptr && widget->objectName() == "alert" && widget->isVisible() ? widget : nullptr;
}

void DesktopTest::answerAlertLater(int key, Block whileShown) {
    desktop->postEvent([this, key, whileShown = std::move(whileShown)]() mutable {
        if (alert() == nullptr) {
            answerAlertLater(key, std::move(whileShown));
            return;
        }
        if (whileShown) whileShown();
        if (QWidget* shown = alert()) QTest::keyClick(shown, static_cast<Qt::Key>(key));
    });
}

}  // namespace vantrel::linuxdesktop
