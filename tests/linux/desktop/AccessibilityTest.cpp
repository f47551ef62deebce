#include <unistd.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "tests/linux/support/DesktopTest.h"
#include "tests/linux/x11/ForeignWindow.h"

namespace vantrel::linuxdesktop {
namespace {

using Elements = std::vector<std::shared_ptr<AccessibilityElement>>;
using Element = std::shared_ptr<AccessibilityElement>;

class AccessibilityTest : public DesktopTest {
  protected:
    template <typename Value>
    static std::optional<Value> read(const AccessibilityElement& element, std::string_view name) {
        const auto answer = element.attribute(name);
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        if (value == nullptr || !std::holds_alternative<Value>(*value)) return std::nullopt;
        return std::get<Value>(*value);
    }

    static AccessibilityError errorOf(const AccessibilityElement& element, std::string_view name) {
        const auto answer = element.attribute(name);
        const auto* error = std::get_if<AccessibilityError>(&answer);
        return error != nullptr ? *error : accessibilitySuccess;
    }

    Elements windows() const {
        return read<Elements>(*computer->accessibility.application(getpid()), "AXWindows").value_or(Elements());
    }

    // The only window, once it exists.
    Element element() {
        EXPECT_TRUE(waitUntil([this] { return windows().size() == 1; }));
        return windows().front();
    }

    Element shown(ForeignWindow& window) {
        Element found = element();
        EXPECT_TRUE(waitUntil([&] { return !window.connection().values(window.id(), "_NET_FRAME_EXTENTS").empty(); }));
        return found;
    }
};

TEST_F(AccessibilityTest, WritesPositionAndSizeOfTheFrame) {
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    EXPECT_EQ(element->setAttribute("AXPosition", Point{120, 90}), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return read<Point>(*element, "AXPosition") == Point{120, 90}; }));
    EXPECT_EQ(element->setAttribute("AXSize", Size{640, 480}), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return read<Size>(*element, "AXSize") == Size{640, 480}; }));
    EXPECT_EQ(read<Point>(*element, "AXPosition"), (Point{120, 90}));
}

TEST_F(AccessibilityTest, MovesAndSizesAMaximisedWindow) {
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    window.changeState(true, "_NET_WM_STATE_MAXIMIZED_VERT");
    window.changeState(true, "_NET_WM_STATE_MAXIMIZED_HORZ");
    ASSERT_TRUE(waitUntil([&] { return read<Size>(*element, "AXSize")->width > 1000; }));
    EXPECT_EQ(element->setAttribute("AXPosition", Point{60, 70}), accessibilitySuccess);
    EXPECT_EQ(element->setAttribute("AXSize", Size{640, 480}), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return read<Point>(*element, "AXPosition") == Point{60, 70}; }));
    // A maximised window has no handle below it. A busy window manager may restore the handle late.
    constexpr double handle = 10;
    EXPECT_TRUE(waitUntil([&] {
        const auto size = read<Size>(*element, "AXSize");
        return size && std::abs(size->width - 640) <= handle && std::abs(size->height - 480) <= handle;
    })) << read<Size>(*element, "AXSize")->width
        << "x" << read<Size>(*element, "AXSize")->height;
}

TEST_F(AccessibilityTest, RefusesNumbersThatAreNone) {
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(element->setAttribute("AXPosition", Point{nan, 0}), accessibilityIllegalArgument);
    EXPECT_EQ(element->setAttribute("AXSize", Size{infinite, 10}), accessibilityIllegalArgument);
    EXPECT_EQ(element->setAttribute("AXSize", Size{10, -1}), accessibilityIllegalArgument);
    EXPECT_EQ(element->setAttribute("AXPosition", Size{10, 10}), accessibilityIllegalArgument);
    // More than the protocol can express. It must do no harm.
    EXPECT_EQ(element->setAttribute("AXSize", Size{1e9, 1e9}), accessibilitySuccess);
    EXPECT_EQ(element->setAttribute("AXPosition", Point{-1e9, 1e9}), accessibilitySuccess);
    EXPECT_TRUE(computer->windowList.copy(WindowListOption::all));
}

TEST_F(AccessibilityTest, HasNoCloseButtonWhereTheWindowCannotBeClosed) {
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    EXPECT_TRUE(read<Element>(*element, "AXCloseButton"));
    constexpr std::uint32_t functions = 1, move = 4;
    window.setProperty("_MOTIF_WM_HINTS", window.connection().atom("_MOTIF_WM_HINTS"), {functions, move, 0, 0, 0});
    EXPECT_TRUE(waitUntil([&] { return errorOf(*element, "AXCloseButton") == accessibilityNoValue; }));
}

TEST_F(AccessibilityTest, AsksAWindowToCloseAndLeavesItToTheWindow) {
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element button = read<Element>(*shown(window), "AXCloseButton").value();
    EXPECT_EQ(button->performAction("AXRaise"), accessibilityActionUnsupported);
    EXPECT_EQ(button->performAction("AXPress"), accessibilitySuccess);
    EXPECT_TRUE(waitUntil([&] { return window.wasAskedToClose(); }));
    EXPECT_EQ(windows().size(), 1U);
    window.destroy();
    EXPECT_TRUE(waitUntil([&] { return button->performAction("AXPress") == accessibilityInvalidElement; }));
}

TEST_F(AccessibilityTest, ListsOrdinaryWindowsOnly) {
    ForeignWindow dock("dock", {0, 0, 100, 30}, "DOCK");
    ForeignWindow window("finestra", {300, 200, 500, 400}, "DIALOG");
    const Element element = shown(window);
    turnFor(0.1);
    EXPECT_EQ(windows().size(), 1U);
    EXPECT_EQ(errorOf(*element, "AXTitle"), accessibilitySuccess);
}

TEST_F(AccessibilityTest, HasTheActiveWindowAsFocusedWindow) {
    const Element application = computer->accessibility.application(getpid());
    EXPECT_EQ(errorOf(*application, "AXFocusedWindow"), accessibilityNoValue);
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    ASSERT_TRUE(waitUntil([&] { return read<Element>(*application, "AXFocusedWindow").has_value(); }));
    const Element focused = *read<Element>(*application, "AXFocusedWindow");
    EXPECT_EQ(read<Point>(*focused, "AXPosition"), read<Point>(*element, "AXPosition"));
}

TEST_F(AccessibilityTest, TellsWhatIsGone) {
    EXPECT_EQ(errorOf(*computer->accessibility.application(0x7FFFFFFF), "AXWindows"), accessibilityCannotComplete);
    EXPECT_EQ(errorOf(*computer->accessibility.application(-1), "AXWindows"), accessibilityCannotComplete);
    EXPECT_EQ(errorOf(*computer->accessibility.application(0), "AXWindows"), accessibilityCannotComplete);
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    window.destroy();
    ASSERT_TRUE(waitUntil([&] { return errorOf(*element, "AXFullScreen") == accessibilityInvalidElement; }));
    EXPECT_EQ(element->setAttribute("AXFullScreen", true), accessibilityInvalidElement);
    EXPECT_EQ(element->setAttribute("AXPosition", Point{}), accessibilityInvalidElement);
    EXPECT_EQ(element->performAction("AXPress"), accessibilityInvalidElement);
    EXPECT_TRUE(windows().empty());
}

TEST_F(AccessibilityTest, NeverWaitsForTheApplication) {
    // The window belongs to this process, which answers nothing while the test runs.
    ForeignWindow window("finestra", {300, 200, 500, 400});
    const Element element = shown(window);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(element->setAttribute("AXFullScreen", true), accessibilitySuccess);
    EXPECT_EQ(element->setAttribute("AXFullScreen", false), accessibilitySuccess);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(500));
}

}  // namespace
}  // namespace vantrel::linuxdesktop
