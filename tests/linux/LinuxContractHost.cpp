#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <array>
#include <chrono>
#include <functional>
#include <future>
#include <stdexcept>
#include <thread>
#include <utility>

#include "platform/linux/keyboard/KeyPositions.h"
#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/portable/UTF8Validity.h"
#include "tests/contracts/ContractHost.h"
#include "tests/contracts/ContractServer.h"
#include "tests/contracts/DisplayHost.h"
#include "tests/contracts/InterfaceHost.h"
#include "tests/contracts/KeyboardHost.h"
#include "tests/contracts/SpacesHost.h"
#include "tests/contracts/WorkspaceHost.h"
#include "tests/linux/support/AddressOpener.h"
#include "tests/linux/support/DesktopStage.h"
#include "tests/linux/support/OwnWindows.h"
#include "tests/linux/support/PeerBundle.h"
#include "tests/linux/support/TemporaryFolder.h"
#include "tests/linux/x11/KeyWindow.h"
#include "tests/linux/x11/MonitorLayout.h"
#include "tests/linux/x11/ServerView.h"
#include "tests/linux/x11/TestKeyboard.h"
#include "tests/linux/x11/TestPointer.h"

namespace vantrel::linuxdesktop {
namespace {

constexpr std::int64_t macKeyControl = 59;

std::uint8_t button(contracts::DisplayHost::Click click) {
    using Click = contracts::DisplayHost::Click;
    if (click == Click::middle) return XCB_BUTTON_INDEX_2;
    return click == Click::right ? XCB_BUTTON_INDEX_3 : XCB_BUTTON_INDEX_1;
}

class LinuxContractHost final : public contracts::ContractHost,
                                public contracts::KeyboardHost,
                                public contracts::DisplayHost,
                                public contracts::SpacesHost,
                                public contracts::InterfaceHost,
                                public contracts::WorkspaceHost {
  public:
    LinuxContractHost() {
        setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1);
        writeContents(folder_.path() / "file", "contents");
        desktop_ = DesktopStage::shared().raise();
        if (desktop_ == nullptr) throw std::runtime_error("these tests need an X11 display: set DISPLAY");
        computer_ = std::make_unique<Computer>(desktop_->computer());
    }

    ~LinuxContractHost() override {
        peers_.endAll();
        for (const ProcessIdentifier child : children_) waitpid(child, nullptr, 0);
        DesktopStage::shared().lower();
    }

    Computer& computer() override { return *computer_; }

    void onMain(Block block) override {
        std::promise<void> done;
        desktop_->postEvent([&] {
            block();
            done.set_value();
        });
        done.get_future().get();
    }

    void postToMain(Block block) override { desktop_->postEvent(std::move(block)); }

    void letTimePass(double seconds) override { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

    void pressAlertButton(const std::string& title) override {
        bool pressed = false;
        for (int attempt = 0; attempt < 1000 && !pressed; ++attempt) {
            onMain([&] { pressed = press(title); });
            if (!pressed) letTimePass(0.01);
        }
        EXPECT_TRUE(pressed) << "no alert with the button " << title;
    }

    std::string serve(contracts::Server server) override {
        server_ = std::make_unique<contracts::ContractServer>(std::move(server));
        return server_->address();
    }

    std::string refusingAddress() override {
        // Bound and not listening, so that nobody else can get the port meanwhile.
        refusing_ = FileDescriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* address = reinterpret_cast<sockaddr*>(&place);
        socklen_t size = sizeof place;
        EXPECT_EQ(bind(refusing_.get(), address, size), 0);
        EXPECT_EQ(getsockname(refusing_.get(), address, &size), 0);
        return "http://127.0.0.1:" + std::to_string(ntohs(place.sin_port));
    }

    std::string peerExecutable() override { return peers_.executable().string(); }
    NamedPeer peerWhoseNameIsNotUTF8() override { return {peers_.copyCalled("Calc\xffolo").string(), "Calc\uFFFDolo"}; }
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) override {
        return peers_.argumentsReceived(peer);
    }

    // A child of the tests themselves, which the client knows nothing of.
    ProcessIdentifier startPeerWithoutWaiting() override {
        const std::string path = peerExecutable();
        std::array<char*, 2> arguments{const_cast<char*>(path.c_str()), nullptr};
        pid_t child = 0;
        EXPECT_EQ(posix_spawn(&child, path.c_str(), nullptr, nullptr, arguments.data(), environ), 0);
        children_.push_back(child);
        return child;
    }

    // A script may have handed the addresses to an application that has no name here.
    bool namesEveryOpenedApplication() override { return false; }

    std::string existingFile() override { return (folder_.path() / "file").string(); }
    std::string plainFile() override { return existingFile(); }
    std::string existingFolder() override { return folder_.path().string(); }
    std::string missingPath() override { return (folder_.path() / "missing").string(); }

    void pressKey(std::int64_t keyCode, std::uint64_t flags) override {
        focusKeyWindow();
        keyboard_.type(TestKeyboard::position(keyCode), flags);
    }

    std::vector<std::int64_t> keysReceived() override {
        std::vector<std::int64_t> found;
        if (!keyWindow_) return found;
        for (const xcb_keycode_t position : keyWindow_->positions()) {
            const auto keyCode = macKeyCode(position);
            if (keyCode && !changesFlags(*keyCode)) found.push_back(*keyCode);
        }
        return found;
    }

    void setDisplays(const std::vector<Screen>& displays) override {
        if (!layout_) layout_ = std::make_unique<MonitorLayout>();
        layout_->setScreens(displays);
        std::vector<Screen> expected = displays;
        for (Screen& screen : expected) screen.localizedName = repairedUTF8(screen.localizedName);
        EXPECT_TRUE(soon([&] { return screens() == expected; })) << "the displays are not as they were set";
    }

    std::vector<SeenOverlay> overlays() override {
        std::vector<SeenOverlay> found;
        const X11Rectangle primary = primaryDisplay();
        for (const auto& child : view_.named("Vantrel overlay")) {
            const X11Rectangle& frame = child.frame;
            const double x = frame.x - primary.x;
            const double y = primary.y + primary.height - frame.y - frame.height;
            found.push_back(
                {{{x, y}, {static_cast<double>(frame.width), static_cast<double>(frame.height)}}, child.viewable});
        }
        return found;
    }

    bool overlayIsInFrontAt(const Point& point) override {
        const X11Rectangle primary = primaryDisplay();
        const auto child = view_.topmostAt(primary.x + static_cast<int>(point.x),
                                           primary.y + primary.height - 1 - static_cast<int>(point.y));
        return child && child->name == "Vantrel overlay";
    }

    void clickAt(const Point& point, Click click) override {
        const X11Rectangle primary = primaryDisplay();
        const xcb_keycode_t held = click == Click::leftWithControl ? TestKeyboard::position(macKeyControl) : 0;
        pointer_.moveTo(primary.x + static_cast<int>(point.x),
                        primary.y + primary.height - 1 - static_cast<int>(point.y));
        if (held != 0) keyboard_.press(held);
        pointer_.click(button(click));
        if (held != 0) keyboard_.release(held);
    }

    std::vector<std::string> statusItems() override {
        std::vector<std::string> found;
        for (const auto& child : view_.named("Vantrel status")) {
            if (!child.viewable) continue;
            onMain([&] {
                const QWidget* strip = QWidget::find(child.window);
                if (strip != nullptr) found.push_back(strip->accessibleName().toStdString());
            });
        }
        return found;
    }

    void openStatusMenu() override {
        std::vector<ServerView::Child> strips;
        EXPECT_TRUE(soon([&] {
            strips = view_.named("Vantrel status");
            return strips.size() == 1 && strips.front().viewable;
        })) << "there is not one status item";
        if (strips.size() != 1) return;
        const X11Rectangle& strip = strips.front().frame;
        pointer_.clickAt(strip.x + strip.width / 2, strip.y + strip.height / 2);
        EXPECT_TRUE(soon([&] { return statusMenuIsOpen(); })) << "the menu does not open";
    }

    bool statusMenuIsOpen() override {
        bool open = false;
        onMain([&] { open = openMenu() != nullptr; });
        return open;
    }

    void chooseFromStatusMenu(const std::string& title) override {
        QPoint entry;
        openStatusMenu();
        EXPECT_TRUE(soon([&] { return findEntry(title, entry); })) << "the menu has no entry " << title;
        pointer_.clickAt(entry.x(), entry.y());
        EXPECT_TRUE(soon([&] { return !statusMenuIsOpen(); }));
    }

    void showSpace(int place) override {
        X11Desktops desktops(view_.connection());
        const auto wanted = static_cast<std::uint32_t>(place);
        desktops.switchTo(wanted);
        EXPECT_TRUE(soon([&] { return desktops.current() == wanted; })) << "the window manager shows another desktop";
    }

    ProcessIdentifier ownProcess() override { return getpid(); }

    std::vector<std::string> windowsShown() override {
        std::vector<std::string> titles;
        onMain([&] {
            for (const QWidget* window : windows_.shown()) titles.push_back(window->windowTitle().toStdString());
        });
        return titles;
    }

    std::optional<SeenControl> controlShown(const std::string& id) override {
        std::optional<SeenControl> seen;
        onMain([&] {
            const QWidget* widget = windows_.widget(id);
            if (widget != nullptr) seen = SeenControl{OwnWindows::text(*widget), widget->isEnabled()};
        });
        return seen;
    }

    std::string accessibilityLabel(const std::string& id) override {
        std::string name;
        onMain([&] { name = OwnWindows::accessibleName(windows_.widget(id)); });
        return name;
    }

    std::vector<std::string> tabOrder() override {
        std::vector<std::string> names;
        onMain([&] { names = windows_.tabOrder(); });
        return names;
    }

    // Qt tells nothing while nobody listens on an accessibility bus. tests/live/keys_alone_test.py does.
    std::optional<std::vector<std::string>> announcements() override { return std::nullopt; }

    void pressButton(const std::string& id) override {
        onMain([&] { windows_.press(id); });
    }

    void pressReturn() override {
        onMain([&] { windows_.pressReturn(); });
    }

    void typeInto(const std::string& id, const std::string& text) override {
        onMain([&] { windows_.typeInto(id, text); });
    }

    Block heldPress(const std::string& id) override {
        Block release;
        onMain([&] { release = windows_.heldPress(id); });
        return release;
    }

    bool isAvailableInMainMenu(const std::string& menu, const std::string& item) override {
        bool available = false;
        onMain([&] { available = windows_.isAvailableInMenuBar(menu, item); });
        return available;
    }

    void chooseFromMainMenu(const std::string& menu, const std::string& item) override {
        onMain([&] { EXPECT_TRUE(windows_.chooseFromMenuBar(menu, item)) << menu << ": " << item; });
    }

    void haveNoOpener() override { opener_.haveNone(); }
    std::vector<std::string> addressesOpened() override { return opener_.opened(); }

  private:
    bool soon(const std::function<bool()>& condition) {
        for (int attempt = 0; attempt < 1000; ++attempt) {
            if (condition()) return true;
            letTimePass(0.01);
        }
        return false;
    }

    std::vector<Screen> screens() {
        std::vector<Screen> found;
        onMain([&] { found = computer_->screens.screens(); });
        return found;
    }

    X11Rectangle primaryDisplay() {
        const auto monitors = X11Monitors(view_.connection()).all();
        return monitors.empty() ? X11Rectangle() : monitors.front().frame;
    }

    static const QMenu* openMenu() {
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr && menu->isVisible() ? menu : nullptr;
    }

    bool findEntry(const std::string& title, QPoint& middle) {
        bool found = false;
        onMain([&] {
            const QMenu* menu = openMenu();
            if (menu == nullptr) return;
            for (QAction* action : menu->actions()) {
                if (action->text().toStdString() != title) continue;
                middle = menu->mapToGlobal(menu->actionGeometry(action).center());
                found = true;
            }
        });
        return found;
    }

    void focusKeyWindow() {
        if (!keyWindow_) keyWindow_ = std::make_unique<KeyWindow>();
        bool focused = false;
        for (int attempt = 0; attempt < 1000 && !focused; ++attempt) {
            focused = keyWindow_->hasFocus();
            if (!focused) letTimePass(0.01);
        }
        EXPECT_TRUE(focused) << "the window manager does not give the focus";
    }

    // In its own event, like a click, because more may follow when the alert ends.
    bool press(const std::string& title) {
        QWidget* alert = QApplication::activeModalWidget();
        if (alert == nullptr || !alert->isVisible()) return false;
        for (QPushButton* button : alert->findChildren<QPushButton*>()) {
            if (button->text().toStdString() != title) continue;
            button->click();
            return true;
        }
        return false;
    }

    TemporaryFolder folder_;
    PeerBundle peers_{folder_.path()};
    LinuxComputer* desktop_ = nullptr;
    std::unique_ptr<Computer> computer_;
    std::unique_ptr<contracts::ContractServer> server_;
    FileDescriptor refusing_;
    TestKeyboard keyboard_;
    std::unique_ptr<KeyWindow> keyWindow_;
    TestPointer pointer_;
    ServerView view_;
    OwnWindows windows_{view_.connection()};
    AddressOpener opener_{folder_.path()};
    std::vector<ProcessIdentifier> children_;
    std::unique_ptr<MonitorLayout> layout_;
};

}  // namespace
}  // namespace vantrel::linuxdesktop

std::unique_ptr<vantrel::contracts::ContractHost> vantrel::contracts::makeContractHost() {
    return std::make_unique<linuxdesktop::LinuxContractHost>();
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return vantrel::linuxdesktop::DesktopStage::shared().serve([] { return RUN_ALL_TESTS(); });
}
