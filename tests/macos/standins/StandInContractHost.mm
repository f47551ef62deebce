#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/macos/MacComputer.h"
#include "tests/contracts/VirtualContractHost.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/appkit/Clicks.h"
#include "tests/macos/standins/census/CensusGuard.h"

namespace vantrel::contracts {
namespace {

/// The macOS platform under test, over the virtual Mac. The last base to be destroyed counts what is left.
class StandInContractHost final : private standins::CensusGuard, public VirtualContractHost {
  public:
    StandInContractHost() : inUse_(mac()) {
        mac().onMain(standins::withPool([this] {
            platform_ = std::make_unique<macos::MacComputer>();
            checked_ = std::make_unique<virtualmac::CheckedComputer>(mac().engine(), platform_->computer());
        }));
    }

    ~StandInContractHost() override {
        if (!hasEnded()) mac().onMain(standins::withPool([this] { forgetPlatform(); }));
        // What is left calls the stand-ins, which need the Mac.
        mac().end();
    }

    Computer& computer() override { return checked_->computer(); }
    void onMain(Block block) override { VirtualContractHost::onMain(standins::withPool(std::move(block))); }
    void postToMain(Block block) override { VirtualContractHost::postToMain(standins::withPool(std::move(block))); }

    // A process that ends takes its platform along.
    void launch(std::function<void(Computer&)> main) override {
        VirtualContractHost::postToMain(standins::withPool([this, main = std::move(main)] {
            main(computer());
            if (hasEnded()) forgetPlatform();
        }));
    }

    // The virtual Mac has an order of its own.
    std::vector<std::string> tabOrder() override {
        std::vector<std::string> order;
        onMain([&order] { order = standins::tabOrder(); });
        return order;
    }

    // The virtual Mac looks at no button that is hidden.
    void pressReturn() override { onMain(standins::pressReturn); }

    // The virtual Mac passes no clicks on to a cover.
    void clickAt(const Point& point, Click click) override {
        if (!overlayIsInFrontAt(point)) return VirtualContractHost::clickAt(point, click);
        onMain([point, click] { standins::clickOnCover(point, button(click)); });
    }

  private:
    // AppKit gives a view the click with the Control key as one with the right button.
    static standins::MouseButton button(Click click) {
        using Button = standins::MouseButton;
        if (click == Click::left) return Button::left;
        return click == Click::middle ? Button::other : Button::right;
    }

    void forgetPlatform() {
        checked_.reset();
        platform_.reset();
    }

    standins::MacInUse inUse_;
    std::unique_ptr<macos::MacComputer> platform_;
    std::unique_ptr<virtualmac::CheckedComputer> checked_;
};

}  // namespace

std::unique_ptr<ContractHost> makeContractHost() {
    return std::make_unique<StandInContractHost>();
}

}  // namespace vantrel::contracts
