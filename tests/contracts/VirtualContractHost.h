#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/virtual/VirtualMac.h"
#include "tests/contracts/ContractHost.h"
#include "tests/contracts/DisplayHost.h"
#include "tests/contracts/InterfaceHost.h"
#include "tests/contracts/KeyboardHost.h"
#include "tests/contracts/LaunchHost.h"
#include "tests/contracts/PermissionHost.h"
#include "tests/contracts/SpacesHost.h"
#include "tests/contracts/StoppingHost.h"
#include "tests/contracts/WorkspaceHost.h"

namespace vantrel::contracts {

/// A virtual Mac under test. Its computer() may be replaced by another one over the same Mac.
class VirtualContractHost : public ContractHost,
                            public KeyboardHost,
                            public DisplayHost,
                            public SpacesHost,
                            public InterfaceHost,
                            public LaunchHost,
                            public PermissionHost,
                            public StoppingHost,
                            public WorkspaceHost {
  public:
    VirtualContractHost();

    Computer& computer() override;
    void onMain(Block block) override;
    void postToMain(Block block) override;
    void letTimePass(double seconds) override;

    void pressAlertButton(const std::string& title) override;

    std::string serve(Server server) override;
    std::string refusingAddress() override;

    std::string peerExecutable() override;
    NamedPeer peerWhoseNameIsNotUTF8() override;
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) override;
    ProcessIdentifier startPeerWithoutWaiting() override;

    std::string plainFile() override;
    std::string existingFile() override;
    std::string existingFolder() override;
    std::string missingPath() override;

    void pressKey(std::int64_t macKeyCode, std::uint64_t flags) override;
    std::vector<std::int64_t> keysReceived() override;

    void setDisplays(const std::vector<Screen>& displays) override;
    std::vector<SeenOverlay> overlays() override;
    bool overlayIsInFrontAt(const Point& point) override;
    void clickAt(const Point& point, Click click) override;
    std::vector<std::string> statusItems() override;
    void openStatusMenu() override;

    bool statusMenuIsOpen() override;

    void chooseFromStatusMenu(const std::string& title) override;

    void showSpace(int place) override;

    ProcessIdentifier ownProcess() override;
    std::vector<std::string> windowsShown() override;
    std::optional<SeenControl> controlShown(const std::string& id) override;
    std::string accessibilityLabel(const std::string& id) override;
    std::vector<std::string> tabOrder() override;
    std::optional<std::vector<std::string>> announcements() override;
    void pressButton(const std::string& id) override;
    void pressReturn() override;
    void typeInto(const std::string& id, const std::string& text) override;
    Block heldPress(const std::string& id) override;
    bool isAvailableInMainMenu(const std::string& menu, const std::string& item) override;
    void chooseFromMainMenu(const std::string& menu, const std::string& item) override;

    void launch(std::function<void(Computer&)> main) override;
    bool hasEnded() override;

    void setTrusted(bool trusted) override;
    int trustPrompts() override;
    void setCaptureStatus(MediaType media, AuthorizationStatus status) override;
    std::size_t capturePrompts() override;
    void answerCapturePrompt(bool granted) override;

    void stop(ProcessIdentifier peer) override;

    void haveNoOpener() override;
    std::vector<std::string> addressesOpened() override;

  protected:
    virtualmac::VirtualMac& mac() { return mac_; }
    /// The window that a click there reaches. Empty if it is the desktop or the menu bar.
    std::optional<WindowEntry> topmostAt(const Point& point);

  private:
    virtualmac::VirtualMac mac_;
    ProcessIdentifier typedInto_ = 0;
};

}  // namespace vantrel::contracts
