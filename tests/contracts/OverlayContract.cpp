#include <algorithm>
#include <memory>
#include <utility>
#include <variant>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/DisplayHost.h"

namespace vantrel::contracts {
namespace {

class OverlayContract : public ContractTest {
  protected:
    using Overlaid = std::vector<std::pair<double, bool>>;

    void TearDown() override {
        host().onMain([this] { overlays.clear(); });
        ContractTest::TearDown();
    }

    DisplayHost& displays() { return dynamic_cast<DisplayHost&>(host()); }

    /// The left one is the primary display. The right one is lower; their bottom edges are level.
    void haveTwoDisplays() {
        displays().setDisplays({{"Sinistro", {{0, 0}, {640, 600}}}, {"Destro", {{640, 0}, {500, 480}}}});
    }

    static OverlayDescription covering(const Rect& frame) {
        constexpr int level = 1000;
        constexpr unsigned onAllSpaces = 0x51;
        OverlayLabel label;
        label.text = "Vantrel";
        label.fontSize = 28;
        label.bold = true;
        label.whiteLevel = 0.71;
        label.centreX = frame.size.width * 0.5;
        label.y = frame.size.height * 0.5;
        return {frame, level, onAllSpaces, {label}};
    }

    void make(const Rect& frame) {
        host().onMain([&] { overlays.push_back(computer().overlays.makeOverlay(covering(frame))); });
    }

    void show(const Rect& frame) {
        make(frame);
        host().onMain([&] { overlays.back()->orderFrontRegardless(); });
    }

    /// The left edge of each overlay and whether it is shown, from left to right.
    Overlaid seen() {
        Overlaid found;
        for (const auto& overlay : displays().overlays()) found.emplace_back(overlay.frame.origin.x, overlay.shown);
        std::sort(found.begin(), found.end());
        return found;
    }

    bool seenEventually(const Overlaid& wanted) {
        return eventually([&] { return seen() == wanted; });
    }

    bool inFront(double x, double y) {
        return eventually([&] { return displays().overlayIsInFrontAt({x, y}); });
    }

    bool notInFront(double x, double y) {
        return eventually([&] { return !displays().overlayIsInFrontAt({x, y}); });
    }

    /// Opens another application's window with its middle on the right display, and waits until it has the focus.
    ProcessIdentifier openWindowOnTheRight() { return openWindow("Appunti,700,200,300,250"); }

    ProcessIdentifier openWindow(const std::string& window) {
        // The primary display is 600 points high; window positions count from its top left.
        const auto launched = computer().processLauncher.launch(host().peerExecutable(), {"--window=" + window});
        const auto* started = std::get_if<ProcessIdentifier>(&launched);
        EXPECT_TRUE(started);
        const ProcessIdentifier process = started != nullptr ? *started : 0;
        EXPECT_TRUE(eventually([&] { return isBroughtToTheFront(process); }));
        return process;
    }

    /// Its window is there. Some systems leave it behind the application in front until it is asked for.
    bool isBroughtToTheFront(ProcessIdentifier process) {
        const auto windows = computer().windowList.copy(WindowListOption::onScreenOnly);
        const bool hasWindow = windows && std::any_of(windows->begin(), windows->end(), [process](const auto& window) {
                                   return window.ownerPID == process;
                               });
        if (!hasWindow || frontmost() == process) return hasWindow;
        const auto application = computer().runningApplications.withProcessIdentifier(process);
        if (application) application->activate(ActivationOptions::none);
        return frontmost() == process;
    }

    ProcessIdentifier frontmost() {
        ProcessIdentifier found = 0;
        host().onMain([&] {
            const auto application = computer().frontmostApplication.frontmostApplication();
            if (application) found = application->processIdentifier();
        });
        return found;
    }

    std::vector<std::unique_ptr<Overlay>> overlays;
};

constexpr Rect right{{640, 0}, {500, 480}};

TEST_F(OverlayContract, AnOverlayIsOnlyThereOnceItIsOrderedToTheFront) {
    haveTwoDisplays();
    make(right);
    EXPECT_TRUE(seenEventually({{640, false}}));
    host().onMain([this] { overlays.back()->orderFrontRegardless(); });
    EXPECT_TRUE(seenEventually({{640, true}}));
}

TEST_F(OverlayContract, NoCallRunsWhatTheRunLoopHasToDo) {
    haveTwoDisplays();
    EXPECT_TRUE(keepTheRunLoopWaiting([this] {
        const auto overlay = computer().overlays.makeOverlay(covering(right));
        overlay->orderFrontRegardless();
        overlay->setLevel(0);
        overlay->orderFrontRegardless();
        overlay->orderOut();
        overlay->orderFrontRegardless();
        overlay->close();
    }));
}

TEST_F(OverlayContract, ItsFrameCountsFromTheBottomLeftOfThePrimaryDisplay) {
    haveTwoDisplays();
    show(right);
    ASSERT_TRUE(seenEventually({{640, true}}));
    EXPECT_EQ(right, displays().overlays().front().frame);
    EXPECT_TRUE(inFront(641, 1));
    EXPECT_TRUE(inFront(1139, 479));
    EXPECT_FALSE(displays().overlayIsInFrontAt({638, 240}));
}

TEST_F(OverlayContract, ADisplayAboveAndLeftOfThePrimaryOneIsCoveredThere) {
    displays().setDisplays({{"Sotto", {{0, 0}, {600, 400}}}, {"Sopra", {{-300, 400}, {500, 300}}}});
    show({{-300, 400}, {500, 300}});
    ASSERT_TRUE(seenEventually({{-300, true}}));
    EXPECT_EQ((Rect{{-300, 400}, {500, 300}}), displays().overlays().front().frame);
    EXPECT_TRUE(inFront(-299, 401));
    EXPECT_TRUE(inFront(199, 699));
    EXPECT_FALSE(displays().overlayIsInFrontAt({100, 399}));
}

TEST_F(OverlayContract, ItLiesInFrontOfWindowsThatWereThereBefore) {
    haveTwoDisplays();
    openWindowOnTheRight();
    EXPECT_FALSE(displays().overlayIsInFrontAt({850, 300}));
    show(right);
    EXPECT_TRUE(inFront(850, 300));
}

TEST_F(OverlayContract, ItLiesInFrontOfWindowsThatComeLater) {
    haveTwoDisplays();
    show(right);
    ASSERT_TRUE(inFront(850, 300));
    openWindowOnTheRight();
    EXPECT_TRUE(inFront(850, 300));
}

// Whether a window lies in front of an overlay of its own level, the system decides.
TEST_F(OverlayContract, AHigherLevelBringsItInFrontOfTheWindowsThatAreThere) {
    haveTwoDisplays();
    host().onMain([this] {
        OverlayDescription low = covering(right);
        low.level = 0;
        overlays.push_back(computer().overlays.makeOverlay(low));
        overlays.back()->orderFrontRegardless();
    });
    openWindowOnTheRight();
    host().onMain([this] { overlays.back()->setLevel(1000); });
    EXPECT_TRUE(inFront(850, 300));
}

TEST_F(OverlayContract, ItDoesNotTakeTheFocus) {
    haveTwoDisplays();
    const ProcessIdentifier process = openWindowOnTheRight();
    show(right);
    ASSERT_TRUE(inFront(850, 300));
    host().letTimePass(0.3);
    EXPECT_EQ(process, frontmost());
}

TEST_F(OverlayContract, AClickOnItReachesNeitherTheWindowBelowNorTheClient) {
    constexpr Point onTheRight{850, 300};
    haveTwoDisplays();
    const ProcessIdentifier covered = openWindowOnTheRight();
    const ProcessIdentifier used = openWindow("Lezione,60,200,300,250");
    displays().clickAt(onTheRight);
    ASSERT_TRUE(eventually([&] { return frontmost() == covered; })) << "without a cover the click arrives";
    displays().clickAt({200, 300});
    ASSERT_TRUE(eventually([&] { return frontmost() == used; }));
    show(right);
    ASSERT_TRUE(inFront(onTheRight.x, onTheRight.y));
    using Click = DisplayHost::Click;
    for (const Click click : {Click::left, Click::right, Click::middle, Click::leftWithControl}) {
        for (const Point& point : {onTheRight, Point{641, 1}, Point{890, 245}, Point{1139, 479}}) {
            displays().clickAt(point, click);
            host().letTimePass(0.3);
            EXPECT_EQ(frontmost(), used) << point.x << ", " << point.y << ", click " << static_cast<int>(click);
            EXPECT_TRUE(displays().overlayIsInFrontAt(point));
        }
    }
}

TEST_F(OverlayContract, OneThatIsOrderedOutMayComeBack) {
    haveTwoDisplays();
    show(right);
    ASSERT_TRUE(seenEventually({{640, true}}));
    host().onMain([this] { overlays.back()->orderOut(); });
    EXPECT_TRUE(seenEventually({{640, false}}));
    EXPECT_TRUE(notInFront(850, 300));
    host().onMain([this] {
        overlays.back()->setLevel(1000);
        overlays.back()->orderFrontRegardless();
    });
    EXPECT_TRUE(seenEventually({{640, true}}));
    EXPECT_TRUE(inFront(850, 300));
}

TEST_F(OverlayContract, AClosedOneIsGoneAndStaysSo) {
    haveTwoDisplays();
    show(right);
    show({{0, 0}, {640, 600}});
    ASSERT_TRUE(seenEventually({{0, true}, {640, true}}));
    host().onMain([this] {
        overlays.front()->orderOut();
        overlays.front()->close();
    });
    EXPECT_TRUE(seenEventually({{0, true}}));
    host().onMain([this] {
        overlays.front()->setLevel(1000);
        overlays.front()->orderFrontRegardless();
        overlays.front()->orderOut();
        overlays.front()->close();
    });
    host().letTimePass(0.2);
    EXPECT_EQ((Overlaid{{0, true}}), seen());
    EXPECT_TRUE(notInFront(850, 300));
}

TEST_F(OverlayContract, ADestroyedOneIsGone) {
    haveTwoDisplays();
    show(right);
    ASSERT_TRUE(seenEventually({{640, true}}));
    host().onMain([this] { overlays.clear(); });
    EXPECT_TRUE(seenEventually({}));
    EXPECT_TRUE(notInFront(850, 300));
}

TEST_F(OverlayContract, ManyRoundsLeaveNothingBehind) {
    haveTwoDisplays();
    for (int round = 0; round < 20; ++round) {
        show(right);
        host().onMain([this] { overlays.clear(); });
    }
    EXPECT_TRUE(seenEventually({}));
}

}  // namespace
}  // namespace vantrel::contracts
