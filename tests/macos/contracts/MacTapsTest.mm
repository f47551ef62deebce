#import <CoreGraphics/CoreGraphics.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tests/contracts/ContractTest.h"

namespace vantrel::macos {
namespace {

using MacTaps = contracts::ContractTest;

// The system's own count, disabled ones included: those too slow every key down.
std::ptrdiff_t tapsOfThisProcess() {
    std::uint32_t count = 0;
    if (CGGetEventTapList(0, nullptr, &count) != kCGErrorSuccess) return -1;
    std::vector<CGEventTapInformation> taps(count);
    if (CGGetEventTapList(count, taps.data(), &count) != kCGErrorSuccess) return -1;
    taps.resize(std::min<std::size_t>(count, taps.size()));
    return std::count_if(taps.begin(), taps.end(), [](const auto& tap) { return tap.tappingProcess == getpid(); });
}

std::string_view nothing(const KeyEvent&) noexcept {
    return {};
}

TEST_F(MacTaps, LeaveNothingBehindAfterManyStarts) {
    const std::ptrdiff_t before = tapsOfThisProcess();
    ASSERT_GE(before, 0);
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(eventually([&] { return tapsOfThisProcess() == before; }));
        host().onMain([&] {
            auto tap = computer().keyboardTaps.create(nothing, {});
            ASSERT_TRUE(tap);
            EXPECT_EQ(tapsOfThisProcess(), before + 1);
            tap.reset();
        });
    }
    EXPECT_TRUE(eventually([&] { return tapsOfThisProcess() == before; }));
}

}  // namespace
}  // namespace vantrel::macos
