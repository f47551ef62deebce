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

// As the system lists them, including disabled ones: those too slow down every key press.
std::vector<CGEventTapInformation> tapsOfThisProcess() {
    std::uint32_t count = 0;
    EXPECT_EQ(CGGetEventTapList(0, nullptr, &count), kCGErrorSuccess);
    std::vector<CGEventTapInformation> taps(count);
    EXPECT_EQ(CGGetEventTapList(count, taps.data(), &count), kCGErrorSuccess);
    taps.resize(std::min<std::size_t>(count, taps.size()));
    std::erase_if(taps, [](const auto& tap) { return tap.tappingProcess != getpid(); });
    return taps;
}

std::string_view nothing(const KeyEvent&) noexcept {
    return {};
}

TEST_F(MacTaps, LeaveNothingBehindAfterManyStarts) {
    const std::size_t before = tapsOfThisProcess().size();
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(eventually([&] { return tapsOfThisProcess().size() == before; }));
        host().onMain([&] {
            auto tap = computer().keyboardTaps.create(nothing, {});
            ASSERT_TRUE(tap);
            EXPECT_EQ(tapsOfThisProcess().size(), before + 1);
            tap.reset();
        });
    }
    EXPECT_TRUE(eventually([&] { return tapsOfThisProcess().size() == before; }));
}

TEST_F(MacTaps, AreAskedOfTheSessionForKeysAndModifiersAndMaySwallow) {
    ASSERT_TRUE(eventually([] { return tapsOfThisProcess().empty(); }));
    host().onMain([this] {
        const auto tap = computer().keyboardTaps.create(nothing, {});
        const auto taps = tapsOfThisProcess();
        ASSERT_EQ(taps.size(), 1U);
        EXPECT_EQ(taps.front().tapPoint, kCGSessionEventTap);
        EXPECT_EQ(taps.front().options, kCGEventTapOptionDefault);
        EXPECT_EQ(taps.front().eventsOfInterest, 0x1400U);
        EXPECT_TRUE(taps.front().enabled);
    });
}

}  // namespace
}  // namespace vantrel::macos
