#include <signal.h>
#include <unistd.h>

#include <QApplication>
#include <QTest>
#include <vector>

#include "tests/linux/support/DesktopTest.h"

namespace vantrel::linuxdesktop {
namespace {

class Delegate final : public ApplicationDelegate {
  public:
    void applicationDidFinishLaunching() override {
        ++launches;
        if (onLaunch) onLaunch();
    }

    TerminateReply applicationShouldTerminate() override {
        ++questions;
        return reply;
    }

    Block onLaunch;
    int launches = 0;
    int questions = 0;
    TerminateReply reply = TerminateReply::now;
};

class ApplicationTest : public DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (computer) computer->application.setDelegate(delegate);
    }

    std::unique_ptr<Window> makeWindow(unsigned mask) {
        WindowDescription description;
        description.contentRect = {{0, 0}, {300, 200}};
        description.styleMask = mask;
        description.title = "Vantrel";
        auto window = computer->windows.makeWindow(description, [](std::string_view) {});
        window->setIsVisible(true);
        return window;
    }

    static QWidget* shownWindow() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "window" && widget->isVisible()) return widget;
        }
        return nullptr;
    }

    const std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
};

TEST_F(ApplicationTest, TellsOfTheLaunchOnceAndReturnsWhenItMayTerminate) {
    delegate->onLaunch = [this] { computer->application.terminate(); };
    computer->application.run();
    EXPECT_EQ(delegate->launches, 1);
    EXPECT_EQ(delegate->questions, 1);
}

TEST_F(ApplicationTest, StaysWhenTheDelegateRefuses) {
    delegate->reply = TerminateReply::cancel;
    delegate->onLaunch = [this] {
        computer->application.terminate();
        EXPECT_EQ(delegate->questions, 1);
        delegate->reply = TerminateReply::now;
        computer->dispatch.mainQueue().asyncAfter(0.1, [this] { computer->application.terminate(); });
    };
    computer->application.run();
    EXPECT_EQ(delegate->questions, 2);
}

TEST_F(ApplicationTest, AsksTheDelegateWhenAClosableWindowIsClosedAndOnlyThen) {
    delegate->reply = TerminateReply::cancel;
    const auto window = makeWindow(windowTitled | windowClosable);
    ASSERT_TRUE(shownWindow());
    shownWindow()->close();
    EXPECT_TRUE(waitUntil([&] { return delegate->questions == 1; }));
    EXPECT_TRUE(shownWindow()) << "the window stays when the answer is no";

    window->setStyleMask(windowTitled);
    shownWindow()->close();
    turnFor(0.2);
    EXPECT_EQ(delegate->questions, 1);
    EXPECT_TRUE(shownWindow());
}

TEST_F(ApplicationTest, DoesNotEndWithItsLastWindow) {
    bool stillRunning = false;
    delegate->onLaunch = [&] {
        auto window = std::make_shared<std::unique_ptr<Window>>(makeWindow(windowTitled | windowClosable));
        computer->dispatch.mainQueue().asyncAfter(0.1, [window] { (*window)->orderOut(); });
        computer->dispatch.mainQueue().asyncAfter(0.3, [&, window] {
            window->reset();
            computer->dispatch.mainQueue().asyncAfter(0.2, [&] {
                stillRunning = true;
                computer->application.terminate();
            });
        });
    };
    computer->application.run();
    EXPECT_TRUE(stillRunning);
}

TEST_F(ApplicationTest, AsksTheDelegateOnASignalToEnd) {
    delegate->reply = TerminateReply::cancel;
    int asked = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        kill(getpid(), signal);
        ++asked;
        EXPECT_TRUE(waitUntil([&] { return delegate->questions == asked; })) << signal;
    }
}

TEST_F(ApplicationTest, EndsUnderAnAlertToo) {
    std::vector<std::string> order;
    delegate->onLaunch = [&] {
        computer->dispatch.mainQueue().asyncAfter(0, [] {});
        postEvent([this] { answerAlertLater(Qt::Key_F1, [this] { computer->application.terminate(); }); });
        order.push_back(
            std::to_string(computer->alerts.runModal({AlertStyle::warning, "x", "", {"Termina", "Annulla"}})));
    };
    computer->application.run();
    EXPECT_EQ(order, std::vector<std::string>{"1"});
}

TEST(ApplicationDeathTest, EndsTheProcessWhenAWidgetIsTouchedOffTheMainThread) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            NoComputer reason{};
            const auto desktop = LinuxComputer::create({}, reason);
            Computer computer = desktop->computer();
            computer.dispatch.userInitiatedQueue().async([&computer] { computer.alerts.runModal({}); });
            pause();
        },
        "runModal was called off the main thread");
}

}  // namespace
}  // namespace vantrel::linuxdesktop
