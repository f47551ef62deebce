#include <string>
#include <variant>
#include <vector>

#include "tests/virtual/desktop/DesktopTest.h"

namespace vantrel::virtualmac {
namespace {

using Element = std::shared_ptr<AccessibilityElement>;
using Elements = std::vector<Element>;
using Lines = std::vector<std::string>;
using Operation = AccessibilityFaults::Operation;

class AccessibilityTest : public DesktopTest {
  protected:
    Element app() { return computer().accessibility.application(process); }
    Elements windows() {
        const auto answer = app()->attribute("AXWindows");
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        const auto* elements = value == nullptr ? nullptr : std::get_if<Elements>(value);
        EXPECT_NE(nullptr, elements);
        return elements == nullptr ? Elements() : *elements;
    }
    Element first() { return windows().at(0); }
    static AccessibilityError error(const Element& element, std::string_view name) {
        const auto answer = element->attribute(name);
        const auto* code = std::get_if<AccessibilityError>(&answer);
        return code == nullptr ? accessibilitySuccess : *code;
    }
    template <class Value>
    static std::optional<Value> read(const Element& element, std::string_view name) {
        const auto answer = element->attribute(name);
        const auto* value = std::get_if<AccessibilityValue>(&answer);
        const auto* held = value == nullptr ? nullptr : std::get_if<Value>(value);
        return held == nullptr ? std::nullopt : std::optional(*held);
    }
};

TEST_F(AccessibilityTest, ListsAnApplicationsWindowsFrontToBackOnAllSpaces) {
    const auto second = mac().applications().openWindow(process, {"Davanti", {{7, 70}, {300, 200}}});
    mac().desktop().setFullScreen(window, true);
    settle();
    mac().desktop().raise(second);
    ASSERT_EQ(2U, windows().size());
    EXPECT_EQ((Point{7, 70}), read<Point>(windows()[0], "AXPosition"));
    EXPECT_EQ((Size{300, 200}), read<Size>(windows()[0], "AXSize"));
    EXPECT_EQ(false, read<bool>(windows()[0], "AXFullScreen"));
    EXPECT_EQ(true, read<bool>(windows()[1], "AXFullScreen"));
    EXPECT_EQ((Point{7, 70}), read<Point>(*read<Element>(app(), "AXFocusedWindow"), "AXPosition"));
}

TEST_F(AccessibilityTest, WritesAndActionsAreTold) {
    const Element element = first();
    EXPECT_EQ(accessibilitySuccess, element->setAttribute("AXPosition", Point{0, 0}));
    EXPECT_EQ(accessibilitySuccess, element->setAttribute("AXSize", Size{1440, 900}));
    EXPECT_EQ((Point{0, 24}), read<Point>(element, "AXPosition"));
    EXPECT_EQ(accessibilitySuccess, element->setAttribute("AXFullScreen", true));
    EXPECT_EQ(false, read<bool>(element, "AXFullScreen"));
    settle();
    EXPECT_EQ(true, read<bool>(element, "AXFullScreen"));
    EXPECT_EQ(accessibilitySuccess, element->setAttribute("AXPosition", Point{9, 9}));
    EXPECT_EQ((Point{0, 0}), read<Point>(element, "AXPosition"));
    EXPECT_EQ(accessibilitySuccess, read<Element>(element, "AXCloseButton").value()->performAction("AXPress"));
    EXPECT_TRUE(windows().empty());
    EXPECT_EQ(
        (Happenings{
            {ElementEvent::set, "AXPosition", {{Field::pid, "501"}, {Field::window, "1001"}, {Field::value, "0 0"}}},
            {AppWindowEvent::moved,
             "Lezione",
             {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "0 24 800 600"}}},
            {ElementEvent::set, "AXSize", {{Field::pid, "501"}, {Field::window, "1001"}, {Field::value, "1440 900"}}},
            {AppWindowEvent::moved,
             "Lezione",
             {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "0 24 1440 900"}}},
            {ElementEvent::set, "AXFullScreen", {{Field::pid, "501"}, {Field::window, "1001"}, {Field::value, "true"}}},
            {SystemEvent::spaceChanged, "Display integrato", {{Field::space, "full screen of Lezione"}}},
            {AppWindowEvent::fullScreen,
             "Lezione",
             {{Field::pid, "501"}, {Field::number, "1001"}, {Field::frame, "0 0 1440 900"}, {Field::on, "yes"}}},
            {ElementEvent::set, "AXPosition", {{Field::pid, "501"}, {Field::window, "1001"}, {Field::value, "9 9"}}},
            {ElementEvent::action, "AXPress", {{Field::pid, "501"}, {Field::window, "1001"}}},
            {AppWindowEvent::closed, "Lezione", {{Field::pid, "501"}, {Field::number, "1001"}}},
            {SystemEvent::spaceChanged, "Display integrato", {{Field::space, "desktop 1"}}},
        }),
        transcript());
}

TEST_F(AccessibilityTest, HasTheSystemsErrors) {
    const Element element = first();
    EXPECT_EQ(-25205, error(app(), "AXColour"));
    EXPECT_EQ(-25205, error(element, "AXColour"));
    EXPECT_EQ(-25205, element->setAttribute("AXColour", true));
    EXPECT_EQ(-25205, app()->setAttribute("AXFullScreen", true));
    EXPECT_EQ(-25201, element->setAttribute("AXFullScreen", Point{}));
    EXPECT_EQ(-25201, element->setAttribute("AXPosition", true));
    EXPECT_EQ(-25201, element->setAttribute("AXSize", Size{-1, 5}));
    EXPECT_EQ(-25206, element->performAction("AXPress"));
    NewWindow bare{"Nuda"};
    bare.hasCloseButton = false;
    mac().applications().openWindow(process, bare);
    EXPECT_EQ(-25212, error(first(), "AXCloseButton"));
    const Element button = read<Element>(element, "AXCloseButton").value();
    mac().desktop().close(window);
    EXPECT_EQ(-25202, error(element, "AXFullScreen"));
    EXPECT_EQ(-25202, element->setAttribute("AXFullScreen", true));
    EXPECT_EQ(-25202, button->performAction("AXPress"));
    EXPECT_EQ("-25202", events(ElementEvent::action).back().field(Field::error));
    const Element application = app();
    mac().processes().exit(process);
    EXPECT_EQ(-25204, error(application, "AXWindows"));
    EXPECT_EQ(-25204, error(element, "AXFullScreen"));
    EXPECT_EQ(-25204, error(computer().accessibility.application(9999), "AXWindows"));
}

TEST_F(AccessibilityTest, IsDisabledWithoutTrust) {
    const Element element = first();
    mac().trust().setTrusted(false);
    EXPECT_EQ(-25211, error(app(), "AXWindows"));
    EXPECT_EQ(-25211, element->setAttribute("AXFullScreen", true));
    EXPECT_FALSE(mac().spaces().isFullScreen());
}

TEST_F(AccessibilityTest, AnApplicationWithoutAWindowHasNoFocusedOne) {
    mac().desktop().setMinimised(window, true);
    EXPECT_EQ(-25212, error(app(), "AXFocusedWindow"));
    EXPECT_EQ(1U, windows().size());
}

TEST_F(AccessibilityTest, WaitsSixSecondsForAnApplicationThatDoesNotAnswer) {
    mac().accessibility().setUnresponsive(process, true);
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    EXPECT_EQ(6.0, mac().now());
    mac().after(2, [this] { mac().accessibility().setUnresponsive(process, false); });
    EXPECT_EQ(1U, windows().size());
    EXPECT_EQ(8.0, mac().now());
}

// Otherwise the main thread's calls in a row would hold up a key for longer than the system tolerates from a tap.
TEST_F(AccessibilityTest, UnderALimitWaitsHalfASecondAndForASecondNotAgain) {
    std::unique_ptr<AccessibilityTimeLimit> limit;
    mac().onMain([&] { limit = computer().accessibility.limitTime(); });
    const Element element = first();
    mac().accessibility().setUnresponsive(process, true);
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    EXPECT_EQ(0.5, mac().now());
    mac().accessibility().setUnresponsive(process, false);
    EXPECT_EQ(-25204, error(element, "AXFullScreen"));
    EXPECT_EQ(-25204, element->setAttribute("AXSize", Size{5, 5}));
    mac().runFor(0.99);
    EXPECT_EQ(-25204, error(app(), "AXFocusedWindow"));
    EXPECT_EQ(1.49, mac().now());
    mac().runFor(0.01);
    EXPECT_EQ(accessibilitySuccess, error(app(), "AXFocusedWindow"));

    mac().accessibility().setUnresponsive(process, true);
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    EXPECT_EQ(2.0, mac().now());
    mac().onMain([&] { limit.reset(); });
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    EXPECT_EQ(8.0, mac().now()) << "without a limit the system's own time-out holds";
}

TEST_F(AccessibilityTest, ALimitThatInsistsMakesEveryCallAndAsksForAValueTwice) {
    std::unique_ptr<AccessibilityTimeLimit> limit;
    mac().onMain([&] { limit = computer().accessibility.limitTime(); });
    const Element element = first();
    mac().accessibility().setUnresponsive(process, true);
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    mac().onMain([&] { limit->insist(); });
    EXPECT_EQ(-25204, error(element, "AXFullScreen"));
    EXPECT_EQ(1.5, mac().now()) << "asked at once, and twice for half a second";
    EXPECT_EQ(-25204, element->setAttribute("AXFullScreen", true));
    EXPECT_EQ(2.0, mac().now()) << "what changes something is not repeated";
    mac().after(0.6, [this] { mac().accessibility().setUnresponsive(process, false); });
    EXPECT_EQ(false, read<bool>(element, "AXFullScreen"));
    EXPECT_EQ(2.6, mac().now());
    mac().onMain([&] { limit.reset(); });
}

TEST_F(AccessibilityTest, AnApplicationComesToTheFrontWhenItsAttributeIsWritten) {
    const auto other = mac().applications().add({"Note", "com.example.notes"});
    mac().processes().find(other)->comeToFront();
    const Element element = app();
    EXPECT_EQ(false, read<bool>(element, "AXFrontmost"));
    EXPECT_EQ(-25201, element->setAttribute("AXFrontmost", Size{1, 1}));
    EXPECT_EQ(0, element->setAttribute("AXFrontmost", true));
    settle();
    EXPECT_EQ(true, read<bool>(element, "AXFrontmost"));
    EXPECT_EQ(-25205, element->setAttribute("AXWindows", true));
}

TEST_F(AccessibilityTest, FailsAsOftenAsItIsToldTo) {
    auto& faults = mac().accessibility().faults();
    const Element element = first();
    faults.fail(Operation::write, "AXFullScreen", -25200, 2);
    faults.fail(Operation::write, "AXFullScreen", accessibilitySuccess, 1);
    faults.fail(Operation::write, "AXSize", -25204, AccessibilityFaults::always, process + 1);
    EXPECT_EQ(-25200, element->setAttribute("AXFullScreen", true));
    EXPECT_EQ(-25200, element->setAttribute("AXFullScreen", true));
    EXPECT_EQ(0, element->setAttribute("AXFullScreen", true));
    settle();
    EXPECT_EQ(false, read<bool>(element, "AXFullScreen")) << "accepted, and nothing happened";
    EXPECT_EQ(0, element->setAttribute("AXSize", Size{5, 5}));
    EXPECT_EQ(0, element->setAttribute("AXFullScreen", true));
    settle();
    EXPECT_EQ(true, read<bool>(element, "AXFullScreen"));
    faults.fail(Operation::read, "AXWindows", -25204);
    EXPECT_EQ(-25204, error(app(), "AXWindows"));
    faults.clear();
    faults.fail(Operation::action, "AXPress", -25200, 1);
    EXPECT_EQ(-25200, read<Element>(element, "AXCloseButton").value()->performAction("AXPress"));
    EXPECT_EQ(1U, windows().size());
}

TEST_F(AccessibilityTest, AnswersWithAnotherTypeWhenItIsToldTo) {
    mac().accessibility().faults().answer("AXFullScreen", Point{1, 2}, 1);
    EXPECT_EQ((Point{1, 2}), read<Point>(first(), "AXFullScreen"));
    EXPECT_EQ(false, read<bool>(first(), "AXFullScreen"));
}

TEST_F(AccessibilityTest, LetsAWindowDieBetweenTwoCalls) {
    mac().accessibility().faults().afterRead("AXFullScreen", [this] { mac().desktop().close(window); });
    const Element element = first();
    EXPECT_EQ(false, read<bool>(element, "AXFullScreen"));
    EXPECT_EQ(-25202, element->setAttribute("AXFullScreen", true));
}

TEST_F(AccessibilityTest, PressesACloseButtonInVainWhenAPageHoldsItsWindow) {
    NewWindow held{"Trattenuta"};
    held.refusesToClose = true;
    mac().applications().openWindow(process, held);
    EXPECT_EQ(0, read<Element>(first(), "AXCloseButton").value()->performAction("AXPress"));
    EXPECT_EQ(2U, windows().size());
}

}  // namespace
}  // namespace vantrel::virtualmac
