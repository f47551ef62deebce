#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/virtual/VirtualMac.h"
#include "tests/contracts/ContractHost.h"
#include "tests/contracts/DisplayHost.h"
#include "tests/contracts/KeyboardHost.h"
#include "tests/contracts/SpacesHost.h"

namespace vantrel::contracts {

/// A virtual Mac under test. Its computer() may be replaced by another one over the same Mac.
class VirtualContractHost : public ContractHost, public KeyboardHost, public DisplayHost, public SpacesHost {
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
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) override;

    std::string plainFile() override;
    std::string existingFile() override;
    std::string existingFolder() override;
    std::string missingPath() override;

    void pressKey(std::int64_t macKeyCode, std::uint64_t flags) override;
    std::vector<std::int64_t> keysReceived() override;

    void setDisplays(const std::vector<Screen>& displays) override;
    std::vector<SeenOverlay> overlays() override;
    bool overlayIsInFrontAt(const Point& point) override;
    std::vector<std::string> statusItems() override;
    void openStatusMenu() override;

    bool statusMenuIsOpen() override;

    void chooseFromStatusMenu(const std::string& title) override;

    void showSpace(int place) override;

  protected:
    virtualmac::VirtualMac& mac() { return mac_; }

  private:
    virtualmac::VirtualMac mac_;
    ProcessIdentifier typedInto_ = 0;
};

}  // namespace vantrel::contracts
