#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "platform/macos/MacComputer.h"
#include "platform/macos/bridge/CFReference.h"
#include "platform/macos/bridge/Text.h"
#include "tests/contracts/ContractHost.h"
#include "tests/contracts/ContractServer.h"
#include "tests/contracts/InterfaceHost.h"
#include "tests/contracts/KeyboardHost.h"
#include "tests/contracts/StoppingHost.h"
#include "tests/macos/contracts/EmptyEvent.h"
#include "tests/macos/contracts/MacOwnWindows.h"
#include "tests/macos/contracts/MacPeers.h"
#include "tests/macos/contracts/MacPermissions.h"
#include "tests/macos/contracts/MacStage.h"

extern "C" char** environ;

namespace vantrel::macos {
namespace {

NSButton* buttonNamed(NSView* view, const std::string& title) {
    if ([view isKindOfClass:[NSButton class]] && bytesOf(static_cast<NSButton*>(view).title) == title) {
        return static_cast<NSButton*>(view);
    }
    for (NSView* child in view.subviews) {
        if (NSButton* found = buttonNamed(child, title)) return found;
    }
    return nil;
}

// An alert's loop checks after each event whether it has been answered.
void wakeAlert() {
    NSEvent* event = emptyEvent();
    if (event != nil) [NSApplication.sharedApplication postEvent:event atStart:NO];
}

class MacContractHost final : public contracts::ContractHost,
                              public contracts::KeyboardHost,
                              public contracts::InterfaceHost,
                              public contracts::StoppingHost {
  public:
    MacContractHost() {
        std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-test-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        std::ofstream(folder_ / "file") << "contents";
        MacStage::perform([this] { mac_ = std::make_unique<MacComputer>(); });
        computer_ = std::make_unique<Computer>(mac_->computer());
    }

    ~MacContractHost() override {
        peers_.endAll();
        for (const ProcessIdentifier child : children_) waitpid(child, nullptr, 0);
        if (refusing_ >= 0) close(refusing_);
        MacStage::perform([this] {
            for (const char* key : {"contract_key", "contract_0", "contract_1", "contract_2", "contract_3"}) {
                [NSUserDefaults.standardUserDefaults setObject:nil forKey:lenientText(key)];
            }
            mac_.reset();
        });
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    Computer& computer() override { return *computer_; }

    std::optional<std::string> obstacle(const std::string& suite) override { return MacPermissions::missingFor(suite); }

    std::optional<std::string> mayDeclineActivation() override { return MacPermissions::declinedActivation(); }
    std::optional<std::string> mayDeclineAlerts() override { return MacPermissions::declinedAlerts(); }

    void onMain(Block block) override { MacStage::perform(block); }
    void postToMain(Block block) override { MacStage::post(std::move(block)); }
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
        refusing_ = socket(AF_INET, SOCK_STREAM, 0);
        if (refusing_ < 0) {
            ADD_FAILURE() << "there is no socket";
            return {};
        }
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* address = reinterpret_cast<sockaddr*>(&place);
        socklen_t size = sizeof place;
        EXPECT_EQ(bind(refusing_, address, size), 0);
        EXPECT_EQ(getsockname(refusing_, address, &size), 0);
        return "http://127.0.0.1:" + std::to_string(ntohs(place.sin_port));
    }

    std::string peerExecutable() override { return peers_.executable().string(); }
    // A Mac's file systems refuse other names.
    NamedPeer peerWhoseNameIsNotUTF8() override { return {peerExecutable(), "Google Chrome"}; }
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

    void stop(ProcessIdentifier peer) override { EXPECT_EQ(kill(peer, SIGSTOP), 0); }

    std::string existingFile() override { return (folder_ / "file").string(); }
    std::string plainFile() override { return existingFile(); }
    std::string existingFolder() override { return folder_.string(); }
    std::string missingPath() override { return (folder_ / "missing").string(); }

    void pressKey(std::int64_t keyCode, std::uint64_t flags) override {
        focusKeyWindow();
        const auto held = modifierKeys(flags);
        CGEventFlags down{};
        for (const auto& [key, flag] : held) {
            down = static_cast<CGEventFlags>(down | flag);
            post(key, true, down);
        }
        post(static_cast<CGKeyCode>(keyCode), true, down);
        post(static_cast<CGKeyCode>(keyCode), false, down);
        for (auto last = held.rbegin(); last != held.rend(); ++last) {
            down = static_cast<CGEventFlags>(down & ~last->second);
            post(last->first, false, down);
        }
    }

    std::vector<std::int64_t> keysReceived() override {
        if (typedInto_ == 0) return {};
        return peers_.keysReceived(typedInto_);
    }

    ProcessIdentifier ownProcess() override { return getpid(); }

    std::vector<std::string> windowsShown() override {
        std::vector<std::string> titles;
        onMain([&] { titles = MacOwnWindows::shown(); });
        return titles;
    }

    std::optional<SeenControl> controlShown(const std::string& id) override {
        std::optional<SeenControl> seen;
        onMain([&] {
            NSControl* control = MacOwnWindows::control(id);
            if (control != nil) seen = SeenControl{MacOwnWindows::text(control), static_cast<bool>(control.enabled)};
        });
        return seen;
    }

    std::string accessibilityLabel(const std::string& id) override {
        std::string label;
        onMain([&] { label = bytesOf(MacOwnWindows::control(id).accessibilityLabel); });
        return label;
    }

    std::vector<std::string> tabOrder() override {
        std::vector<std::string> ids;
        onMain([&] { ids = MacOwnWindows::tabOrder(); });
        return ids;
    }

    // No public interface shows an application its own announcements.
    std::optional<std::vector<std::string>> announcements() override { return std::nullopt; }

    void pressButton(const std::string& id) override {
        onMain([&] { MacOwnWindows::press(id); });
    }

    void pressReturn() override {
        onMain([] { MacOwnWindows::pressReturn(); });
    }

    void typeInto(const std::string& id, const std::string& text) override {
        onMain([&] { MacOwnWindows::typeInto(id, text); });
    }

    Block heldPress(const std::string& id) override {
        Block release;
        onMain([&] { release = MacOwnWindows::heldPress(id); });
        return release;
    }

    bool isAvailableInMainMenu(const std::string& menu, const std::string& item) override {
        bool available = false;
        onMain([&] { available = MacOwnWindows::isAvailableInMainMenu(menu, item); });
        return available;
    }

    void chooseFromMainMenu(const std::string& menu, const std::string& item) override {
        onMain([&] { EXPECT_TRUE(MacOwnWindows::chooseFromMainMenu(menu, item)) << menu << ": " << item; });
    }

  private:
    using ModifierKey = std::pair<CGKeyCode, CGEventFlags>;

    // The keys on the left.
    static std::vector<ModifierKey> modifierKeys(std::uint64_t flags) {
        std::vector<ModifierKey> held;
        for (const auto& [key, flag] :
             {ModifierKey{0x38, kCGEventFlagMaskShift}, ModifierKey{0x3B, kCGEventFlagMaskControl},
              ModifierKey{0x3A, kCGEventFlagMaskAlternate}, ModifierKey{0x37, kCGEventFlagMaskCommand}}) {
            if ((flags & flag) != 0) held.emplace_back(key, flag);
        }
        return held;
    }

    static void post(CGKeyCode key, bool down, CGEventFlags flags) {
        const auto event = CFReference<CGEventRef>::created(CGEventCreateKeyboardEvent(nullptr, key, down));
        ASSERT_TRUE(event);
        CGEventSetFlags(event.get(), flags);
        CGEventPost(kCGHIDEventTap, event.get());
    }

    void focusKeyWindow() {
        if (typedInto_ != 0) return;
        const auto launched =
            computer_->processLauncher.launch(peerExecutable(), {"--window=Appunti,100,120,500,300", "--records-keys"});
        const auto* process = std::get_if<ProcessIdentifier>(&launched);
        ASSERT_NE(process, nullptr) << std::get<PlatformError>(launched).localizedDescription;
        typedInto_ = *process;
        // Not asked of the main thread, which may be asleep.
        bool focused = false;
        for (int attempt = 0; attempt < 1000 && !focused; ++attempt) {
            focused = peers_.recordsKeys(typedInto_);
            if (!focused) letTimePass(0.01);
        }
        EXPECT_TRUE(focused) << "the window that is typed into does not come to the front";
        // The application is in front a moment before its window takes keys.
        letTimePass(0.5);
    }

    static bool press(const std::string& title) {
        NSWindow* alert = NSApplication.sharedApplication.modalWindow;
        NSButton* button = alert.contentView != nil ? buttonNamed(alert.contentView, title) : nil;
        if (button == nil) return false;
        [button performClick:nil];
        wakeAlert();
        return true;
    }

    std::filesystem::path folder_;
    MacPeers peers_;
    std::unique_ptr<MacComputer> mac_;
    std::unique_ptr<Computer> computer_;
    std::unique_ptr<contracts::ContractServer> server_;
    std::vector<ProcessIdentifier> children_;
    int refusing_ = -1;
    ProcessIdentifier typedInto_ = 0;
};

}  // namespace
}  // namespace vantrel::macos

std::unique_ptr<vantrel::contracts::ContractHost> vantrel::contracts::makeContractHost() {
    return std::make_unique<macos::MacContractHost>();
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1 && std::string_view(argv[1]) == "--ask-permissions") {
        vantrel::macos::MacPermissions::ask();
        return 0;
    }
    if (vantrel::macos::MacPeers::realOneRuns()) {
        std::fputs("contracts-macos: quit Google Chrome first: the tests have an application of its name\n", stderr);
        return 1;
    }
    vantrel::macos::MacStage::serve([] { return RUN_ALL_TESTS(); });
}
