#include <memory>
#include <utility>

#include "platform/macos/MacComputer.h"
#include "tests/contracts/VirtualContractHost.h"
#include "tests/macos/standins/MacInUse.h"

namespace vantrel::contracts {
namespace {

/// The macOS platform under test, over the virtual Mac.
class StandInContractHost final : public VirtualContractHost {
  public:
    StandInContractHost() : inUse_(mac()) {
        mac().onMain(standins::withPool([this] {
            platform_ = std::make_unique<macos::MacComputer>();
            computer_ = std::make_unique<Computer>(platform_->computer());
        }));
    }

    ~StandInContractHost() override {
        mac().onMain(standins::withPool([this] {
            computer_.reset();
            platform_.reset();
        }));
        // What is left calls the stand-ins, which need the Mac.
        mac().end();
    }

    Computer& computer() override { return *computer_; }
    void onMain(Block block) override { VirtualContractHost::onMain(standins::withPool(std::move(block))); }
    void postToMain(Block block) override { VirtualContractHost::postToMain(standins::withPool(std::move(block))); }

  private:
    standins::MacInUse inUse_;
    std::unique_ptr<macos::MacComputer> platform_;
    std::unique_ptr<Computer> computer_;
};

}  // namespace

std::unique_ptr<ContractHost> makeContractHost() {
    return std::make_unique<StandInContractHost>();
}

}  // namespace vantrel::contracts
