#include <gmock/gmock.h>

#include "browser/WindowDiscovery.h"

namespace vantrel {
namespace {

using testing::ElementsAre;
using Windows = WindowDiscovery::Windows;

WindowEntry window(std::int64_t number, ProcessIdentifier owner, const std::string& ownerName) {
    WindowEntry entry;
    entry.number = number;
    entry.ownerPID = owner;
    entry.ownerName = ownerName;
    entry.name = "Lezione";
    entry.layer = 0;
    entry.bounds = Rect{{0, 0}, {800, 600}};
    entry.isOnscreen = true;
    return entry;
}

std::optional<std::int64_t> found(const Windows& windows, const WindowDiscovery::Numbers& known,
                                  std::optional<ProcessIdentifier> process, std::string_view name = "Safari") {
    const auto match = WindowDiscovery::newWindow(windows, known, process, name);
    if (!match) return std::nullopt;
    return match->number;
}

TEST(WindowDiscovery, KnowsTheNumbersOfWindowsThatHaveOne) {
    auto nameless = window(0, 1, "Safari");
    nameless.number.reset();
    EXPECT_THAT(WindowDiscovery::numbers({window(7, 1, "A"), nameless, window(3, 2, "B"), window(7, 1, "A")}),
                ElementsAre(3, 7));
}

TEST(WindowDiscovery, TakesTheFirstNewWindowOfTheProcess) {
    const Windows windows{window(1, 9, "Finder"), window(2, 600, "Other"), window(3, 600, "Other")};
    EXPECT_EQ(found(windows, {}, 600), 2);
    EXPECT_EQ(found(windows, {2}, 600), 3);
    EXPECT_EQ(found(windows, {2, 3}, 600), std::nullopt);
}

TEST(WindowDiscovery, TakesAWindowWhoseOwnersNameContainsTheBrowsers) {
    EXPECT_EQ(found({window(4, 700, "Safari")}, {}, std::nullopt), 4);
    EXPECT_EQ(found({window(4, 700, "Safari Technology Preview")}, {}, std::nullopt), 4);
    EXPECT_EQ(found({window(4, 700, "Old Safari")}, {}, 600), 4);
}

TEST(WindowDiscovery, TellsUpperCaseFromLowerCaseInTheOwnersName) {
    EXPECT_EQ(found({window(4, 700, "safari")}, {}, std::nullopt), std::nullopt);
    EXPECT_EQ(found({window(4, 700, "Safar")}, {}, std::nullopt), std::nullopt);
}

TEST(WindowDiscovery, TakesNoWindowOfAnotherProcessWithAnotherName) {
    EXPECT_EQ(found({window(4, 700, "Finder")}, {}, 600), std::nullopt);
    EXPECT_EQ(found({window(4, 700, "Finder")}, {}, std::nullopt), std::nullopt);
}

TEST(WindowDiscovery, NeverTakesAWindowWithoutANumber) {
    auto entry = window(4, 600, "Safari");
    entry.number.reset();
    EXPECT_EQ(found({entry}, {}, 600), std::nullopt);
}

TEST(WindowDiscovery, LooksNeitherAtTheLayerNorAtTheSize) {
    auto entry = window(4, 600, "Safari");
    entry.layer = 25;
    entry.bounds = Rect{{0, 0}, {1, 1}};
    EXPECT_EQ(found({entry}, {}, 600), 4);
    entry.layer.reset();
    entry.bounds.reset();
    entry.isOnscreen.reset();
    EXPECT_EQ(found({entry}, {}, 600), 4);
}

TEST(WindowDiscovery, TakesAMissingOwnerAsZeroAndMissingNamesAsEmpty) {
    auto entry = window(4, 600, "Safari");
    entry.ownerPID.reset();
    entry.name.reset();
    const auto match = WindowDiscovery::newWindow({entry}, {}, std::nullopt, "Safari");
    ASSERT_TRUE(match);
    EXPECT_EQ(match->owner, 0);
    EXPECT_EQ(match->title, "");
    entry.ownerName.reset();
    EXPECT_EQ(found({entry}, {}, 600), std::nullopt);
    EXPECT_EQ(found({entry}, {}, std::nullopt), std::nullopt);
}

}  // namespace
}  // namespace vantrel
