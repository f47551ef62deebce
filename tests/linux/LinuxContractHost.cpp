#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <stdlib.h>
#include <sys/socket.h>

#include <QApplication>
#include <QPushButton>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>
#include <utility>

#include "ContractServer.h"
#include "DesktopStage.h"
#include "KeyWindow.h"
#include "PeerBundle.h"
#include "TemporaryFolder.h"
#include "TestKeyboard.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/KeyPositions.h"
#include "platform/linux/LinuxKeyboardTaps.h"
#include "platform/linux/MainThread.h"
#include "tests/contracts/ContractHost.h"
#include "tests/contracts/KeyboardHost.h"

namespace vantrel::linuxdesktop {
namespace {

class LinuxContractHost final : public contracts::ContractHost, public contracts::KeyboardHost {
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
        onMain([this] { keyboardTaps_.reset(); });
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
        server_ = std::make_unique<ContractServer>(std::move(server));
        return server_->address();
    }

    std::string refusingAddress() override {
        // Bound and not listening: the port cannot be anybody else's meanwhile.
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
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) override {
        return peers_.argumentsReceived(peer);
    }

    std::string existingFile() override { return (folder_.path() / "file").string(); }
    std::string plainFile() override { return existingFile(); }
    std::string existingFolder() override { return folder_.path().string(); }
    std::string missingPath() override { return (folder_.path() / "missing").string(); }

    KeyboardTaps& keyboardTaps() override {
        if (!keyboardTaps_) onFirstThread([this] { keyboardTaps_ = std::make_unique<Taps>(); });
        return keyboardTaps_->taps;
    }

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

  private:
    struct Taps {
        MainThread mainThread;
        LinuxKeyboardTaps taps{mainThread};
    };

    void onFirstThread(const Block& block) {
        if (computer_->threads.isMainThread()) {
            block();
        } else {
            onMain(block);
        }
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

    // From an event of its own, as a click is: the alert's end may go on to other things.
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
    std::unique_ptr<ContractServer> server_;
    FileDescriptor refusing_;
    std::unique_ptr<Taps> keyboardTaps_;
    TestKeyboard keyboard_;
    std::unique_ptr<KeyWindow> keyWindow_;
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
