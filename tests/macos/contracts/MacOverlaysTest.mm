#include <unistd.h>

#include <memory>
#include <vector>

#include "tests/contracts/ContractTest.h"

namespace vantrel::macos {
namespace {

constexpr int coverLevel = 1000;

/// A cover over the existing display. A second display needs a person.
class MacOverlays : public contracts::ContractTest {
  protected:
    /// The sizes of this process's windows on the level of covers, including those that are not shown.
    std::vector<Size> covers(WindowListOption option = WindowListOption::all) {
        std::vector<Size> sizes;
        for (const WindowEntry& window : computer().windowList.copy(option).value_or(std::vector<WindowEntry>())) {
            if (window.ownerPID == getpid() && window.layer == coverLevel && window.bounds)
                sizes.push_back(window.bounds->size);
        }
        return sizes;
    }

    std::unique_ptr<Overlay> cover(const Screen& screen) {
        constexpr unsigned onAllSpacesStationaryOutOfTheCycle = 0x51;
        OverlayLabel label;
        label.text = "Vantrel";
        label.fontSize = 28;
        label.centreX = screen.frame.size.width * 0.5;
        label.y = screen.frame.size.height * 0.5;
        return computer().overlays.makeOverlay({screen.frame, coverLevel, onAllSpacesStationaryOutOfTheCycle, {label}});
    }
};

TEST_F(MacOverlays, CoverADisplayOnTheirLevelAndLeaveNothingBehind) {
    std::unique_ptr<Overlay> overlay;
    Size display;
    host().onMain([&] {
        const auto screens = computer().screens.screens();
        ASSERT_FALSE(screens.empty());
        display = screens.front().frame.size;
        overlay = cover(screens.front());
        overlay->orderFrontRegardless();
    });
    ASSERT_TRUE(overlay);
    EXPECT_TRUE(eventually([&] { return covers(WindowListOption::onScreenOnly) == std::vector{display}; }));
    host().onMain([&] { overlay->orderOut(); });
    EXPECT_TRUE(eventually([&] { return covers(WindowListOption::onScreenOnly).empty(); }));
    host().onMain([&] { overlay->orderFrontRegardless(); });
    EXPECT_TRUE(eventually([&] { return covers(WindowListOption::onScreenOnly) == std::vector{display}; }));
    host().onMain([&] { overlay.reset(); });
    EXPECT_TRUE(eventually([&] { return covers().empty(); }));
}

}  // namespace
}  // namespace vantrel::macos
