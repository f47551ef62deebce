#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

using Element = std::shared_ptr<AccessibilityElement>;
using Elements = std::vector<Element>;

constexpr AccessibilityError illegalArgument = -25201;
constexpr AccessibilityError invalidElement = -25202;
constexpr AccessibilityError cannotComplete = -25204;
constexpr AccessibilityError attributeUnsupported = -25205;

/// Decorations and a menu bar may move a window by this many points.
constexpr double looseness = 60;

class WindowContract : public ContractTest {
  protected:
    void TearDown() override {
        host().onMain([this] { observation_.reset(); });
        ContractTest::TearDown();
    }

    ProcessIdentifier launch(const std::vector<std::string>& arguments) {
        const auto started = computer().processLauncher.launch(host().peerExecutable(), arguments);
        const auto* process = std::get_if<ProcessIdentifier>(&started);
        EXPECT_TRUE(process) << std::get<PlatformError>(started).localizedDescription;
        return process != nullptr ? *process : -1;
    }

    std::optional<WindowEntry> entry(const std::string& title, WindowListOption option = WindowListOption::all) {
        for (WindowEntry& entry : list(option)) {
            if (entry.name == title) return std::move(entry);
        }
        return std::nullopt;
    }

    std::vector<WindowEntry> list(WindowListOption option) {
        auto entries = computer().windowList.copy(option);
        EXPECT_TRUE(entries);
        return entries ? std::move(*entries) : std::vector<WindowEntry>();
    }

    bool appears(const std::string& title) {
        return eventually([&] { return entry(title, WindowListOption::onScreenOnly).has_value(); });
    }

    template <typename Value>
    static std::optional<Value> read(const AccessibilityElement& element, std::string_view name) {
        const auto answer = element.attribute(name);
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        if (value == nullptr || !std::holds_alternative<Value>(*value)) return std::nullopt;
        return std::get<Value>(*value);
    }

    /// 0 if the read succeeds.
    static AccessibilityError errorOf(const AccessibilityElement& element, std::string_view name) {
        const auto answer = element.attribute(name);
        const auto* error = std::get_if<AccessibilityError>(&answer);
        return error != nullptr ? *error : accessibilitySuccess;
    }

    Elements windows(ProcessIdentifier process) {
        return read<Elements>(*computer().accessibility.application(process), "AXWindows").value_or(Elements());
    }

    /// The only window of a new application.
    std::pair<ProcessIdentifier, Element> open(const std::vector<std::string>& further = {}) {
        std::vector<std::string> arguments{"--window=Lezione,100,120,800,600"};
        arguments.insert(arguments.end(), further.begin(), further.end());
        const ProcessIdentifier process = launch(arguments);
        EXPECT_TRUE(eventually([&] { return appears("Lezione") && windows(process).size() == 1; }));
        const Elements all = windows(process);
        if (all.empty()) return {process, computer().accessibility.application(process)};
        return {process, all.front()};
    }

    std::pair<ProcessIdentifier, Element> openFullScreen(const std::vector<std::string>& further = {}) {
        auto opened = open(further);
        observeSpaces();
        EXPECT_EQ(accessibilitySuccess, opened.second->setAttribute("AXFullScreen", true));
        EXPECT_TRUE(eventually([&] { return read<bool>(*opened.second, "AXFullScreen") == true; }));
        EXPECT_TRUE(noted(1));
        return opened;
    }

    void observeSpaces() {
        host().onMain(
            [this] { observation_ = computer().spaces.observeActiveSpaceDidChange([this] { note("space"); }); });
    }

    void press(const Element& window) {
        const auto button = read<Element>(*window, "AXCloseButton");
        ASSERT_TRUE(button);
        EXPECT_EQ(accessibilitySuccess, (*button)->performAction("AXPress"));
    }

    Rect primaryDisplay() {
        Rect frame;
        host().onMain([&] { frame = computer().screens.screens().at(0).frame; });
        return frame;
    }

    static bool near(double wanted, double found) { return std::abs(wanted - found) <= looseness; }

  private:
    std::unique_ptr<Observation> observation_;
};

TEST_F(WindowContract, ANewWindowIsListed) {
    const ProcessIdentifier process = launch({"--window=Lezione di chimica – «perché?»,100,120,800,600"});
    ASSERT_TRUE(appears("Lezione di chimica – «perché?»"));
    const auto found = entry("Lezione di chimica – «perché?»");
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->number);
    EXPECT_EQ(process, found->ownerPID);
    EXPECT_EQ("Google Chrome", found->ownerName);
    EXPECT_EQ(0, found->layer);
    EXPECT_EQ(true, found->isOnscreen);
    ASSERT_TRUE(found->bounds);
    EXPECT_PRED2(near, 100, found->bounds->origin.x);
    EXPECT_PRED2(near, 120, found->bounds->origin.y);
    EXPECT_PRED2(near, 800, found->bounds->size.width);
    EXPECT_PRED2(near, 600, found->bounds->size.height);
}

TEST_F(WindowContract, WindowsAreListedFrontToBackForBothWhoAsk) {
    const ProcessIdentifier process = launch({"--window=Prima,100,120,500,300", "--window=Seconda,300,320,500,300"});
    ASSERT_TRUE(appears("Prima"));
    ASSERT_TRUE(appears("Seconda"));
    const auto titles = [this] {
        Notes found;
        for (const WindowEntry& entry : list(WindowListOption::all)) {
            if (entry.name == "Prima" || entry.name == "Seconda") found.push_back(*entry.name);
        }
        return found;
    };
    // The window opened last is in front.
    EXPECT_TRUE(eventually([&] { return titles() == Notes{"Seconda", "Prima"}; }));
    const Elements elements = windows(process);
    ASSERT_EQ(2U, elements.size());
    EXPECT_EQ(entry("Seconda")->bounds->origin, read<Point>(*elements[0], "AXPosition"));
    EXPECT_EQ(entry("Prima")->bounds->origin, read<Point>(*elements[1], "AXPosition"));
}

TEST_F(WindowContract, WindowsThatAreNotOnScreenAreNotListedAsSuch) {
    open();
    const auto shown = list(WindowListOption::onScreenOnly);
    EXPECT_FALSE(shown.empty());
    for (const WindowEntry& entry : shown) EXPECT_EQ(true, entry.isOnscreen);
    EXPECT_GE(list(WindowListOption::all).size(), shown.size());
}

TEST_F(WindowContract, AClosedWindowLeavesTheListAndTheApplicationGoesOn) {
    const auto [process, window] = open();
    press(window);
    EXPECT_TRUE(eventually([&] { return !entry("Lezione"); }));
    EXPECT_TRUE(eventually([&, process = process] { return windows(process).empty(); }));
    EXPECT_EQ(accessibilitySuccess, errorOf(*computer().accessibility.application(process), "AXWindows"));
    const auto application = computer().runningApplications.withProcessIdentifier(process);
    ASSERT_TRUE(application);
    EXPECT_FALSE(application->isTerminated());
}

TEST_F(WindowContract, PositionAndSizeAreThoseOfTheList) {
    const auto [process, window] = open();
    EXPECT_TRUE(eventually([&, window = window] {
        const auto listed = entry("Lezione");
        return listed && listed->bounds && listed->bounds->origin == read<Point>(*window, "AXPosition") &&
               listed->bounds->size == read<Size>(*window, "AXSize");
    }));
}

TEST_F(WindowContract, PositionAndSizeCanBeWritten) {
    const auto [process, window] = open();
    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXPosition", Point{240, 160}));
    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXSize", Size{640, 480}));
    EXPECT_TRUE(eventually([&, window = window] {
        const auto position = read<Point>(*window, "AXPosition");
        const auto size = read<Size>(*window, "AXSize");
        return position && size && near(240, position->x) && near(160, position->y) && near(640, size->width) &&
               near(480, size->height);
    }));
}

TEST_F(WindowContract, AWindowAtTheTopEdgeMayBeKeptBelowAMenuBar) {
    const auto [process, window] = open();
    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXPosition", Point{0, 0}));
    EXPECT_TRUE(eventually([&, window = window] {
        const auto position = read<Point>(*window, "AXPosition");
        return position && near(0, position->x) && near(0, position->y);
    }));
}

TEST_F(WindowContract, AFullScreenWindowCoversItsDisplayOnASpaceOfItsOwn) {
    const auto [process, window] = open();
    EXPECT_EQ(false, read<bool>(*window, "AXFullScreen"));
    const auto before = read<Size>(*window, "AXSize");
    observeSpaces();
    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXFullScreen", true));
    ASSERT_TRUE(eventually([&, window = window] { return read<bool>(*window, "AXFullScreen") == true; }));
    ASSERT_TRUE(noted(1));
    const Rect display = primaryDisplay();
    EXPECT_TRUE(eventually([&, window = window] {
        return read<Point>(*window, "AXPosition") == Point{0, 0} && read<Size>(*window, "AXSize") == display.size;
    }));
    EXPECT_TRUE(eventually([&] {
        const auto listed = entry("Lezione", WindowListOption::onScreenOnly);
        return listed && listed->bounds && listed->bounds->size == display.size;
    }));

    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXFullScreen", false));
    EXPECT_TRUE(eventually([&, window = window] { return read<bool>(*window, "AXFullScreen") == false; }));
    EXPECT_TRUE(noted(2));
    EXPECT_TRUE(eventually([&, window = window] { return read<Size>(*window, "AXSize") == before; }));
    EXPECT_TRUE(appears("Lezione"));
    EXPECT_EQ((Notes{"space", "space"}), notes());
}

TEST_F(WindowContract, ATitleThatIsNoUTF8IsMadeSo) {
    launch({"--window=Lez%FFione,100,120,800,600"});
    EXPECT_TRUE(appears("Lez\uFFFDione"));
}

TEST_F(WindowContract, AWindowOnASpaceThatIsNotShownIsListedAndNotOnTheScreen) {
    launch({"--window=Appunti,140,160,500,400"});
    ASSERT_TRUE(appears("Appunti"));
    openFullScreen();
    EXPECT_TRUE(eventually([&] { return !entry("Appunti", WindowListOption::onScreenOnly); }));
    const auto hidden = entry("Appunti");
    ASSERT_TRUE(hidden);
    EXPECT_FALSE(hidden->isOnscreen.value_or(false));
}

TEST_F(WindowContract, AFullScreenWindowThatIsClosedGivesTheOldSpaceBack) {
    const auto [process, window] = openFullScreen();
    press(window);
    EXPECT_TRUE(eventually([&] { return !entry("Lezione"); }));
    EXPECT_TRUE(noted(2));
}

TEST_F(WindowContract, AnApplicationKilledInFullScreenGivesTheOldSpaceBack) {
    constexpr int kill = 9;
    const auto [process, window] = openFullScreen({"--ignores-terminate"});
    EXPECT_TRUE(computer().processLauncher.sendSignal(process, kill));
    EXPECT_TRUE(eventually([&] { return !entry("Lezione"); }));
    EXPECT_TRUE(noted(2));
    EXPECT_TRUE(eventually([&, window = window] { return errorOf(*window, "AXFullScreen") != accessibilitySuccess; }));
}

TEST_F(WindowContract, TheFocusedWindowIsAWindowOfTheApplication) {
    const auto [process, window] = open();
    const Element application = computer().accessibility.application(process);
    ASSERT_TRUE(eventually([&] { return read<Element>(*application, "AXFocusedWindow").has_value(); }));
    EXPECT_EQ(read<Point>(*window, "AXPosition"),
              read<Point>(**read<Element>(*application, "AXFocusedWindow"), "AXPosition"));
}

TEST_F(WindowContract, AnApplicationThatDoesNotExistCannotAnswer) {
    const Element application = computer().accessibility.application(0x7FFFFFFF);
    ASSERT_TRUE(application);
    EXPECT_EQ(cannotComplete, errorOf(*application, "AXWindows"));
    EXPECT_EQ(cannotComplete, errorOf(*application, "AXFocusedWindow"));
}

TEST_F(WindowContract, AnUnknownAttributeIsUnsupported) {
    const auto [process, window] = open();
    EXPECT_EQ(attributeUnsupported, errorOf(*window, "AXNonsense"));
    EXPECT_EQ(attributeUnsupported, window->setAttribute("AXNonsense", true));
    EXPECT_EQ(attributeUnsupported, errorOf(*computer().accessibility.application(process), "AXNonsense"));
}

TEST_F(WindowContract, AValueOfTheWrongTypeIsRefusedAndChangesNothing) {
    const auto [process, window] = open();
    const auto position = read<Point>(*window, "AXPosition");
    EXPECT_EQ(illegalArgument, window->setAttribute("AXFullScreen", Point{1, 1}));
    EXPECT_EQ(illegalArgument, window->setAttribute("AXPosition", Size{10, 10}));
    EXPECT_EQ(illegalArgument, window->setAttribute("AXSize", true));
    host().letTimePass(0.1);
    EXPECT_EQ(false, read<bool>(*window, "AXFullScreen"));
    EXPECT_EQ(position, read<Point>(*window, "AXPosition"));
}

TEST_F(WindowContract, AWindowThatIsGoneIsAnInvalidElement) {
    const auto [process, window] = open();
    const auto button = read<Element>(*window, "AXCloseButton");
    ASSERT_TRUE(button);
    press(window);
    ASSERT_TRUE(eventually([&, window = window] { return errorOf(*window, "AXFullScreen") == invalidElement; }));
    EXPECT_EQ(invalidElement, window->setAttribute("AXFullScreen", true));
    EXPECT_EQ(invalidElement, window->setAttribute("AXPosition", Point{}));
    EXPECT_EQ(invalidElement, (*button)->performAction("AXPress"));
}

TEST_F(WindowContract, ARemovedObserverOfSpacesHearsNothing) {
    const auto [process, window] = open();
    std::unique_ptr<Observation> removed;
    host().onMain([&] {
        removed = computer().spaces.observeActiveSpaceDidChange([this] { note("removed"); });
        removed.reset();
    });
    observeSpaces();
    EXPECT_EQ(accessibilitySuccess, window->setAttribute("AXFullScreen", true));
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(Notes{"space"}, notes());
}

}  // namespace
}  // namespace vantrel::contracts
