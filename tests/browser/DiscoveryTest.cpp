#include <gmock/gmock.h>

#include "tests/browser/BrowserTest.h"

namespace vantrel {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// Which window the launch through the workspace takes. By default Safari opens one 0.6 seconds after the request. The
/// launch looks every 0.4 seconds.
class Discovery : public BrowserTest {
  protected:
    /// The launch looks for Firefox but Safari opens: only its process shows that the window is the meeting's.
    void makeForFirefox() {
        make(false, [](const FileManager&) { return SupportedBrowser::firefox; });
    }
    std::vector<std::string> windowLines() { return lines("[BROWSER] Nuova finestra #"); }
};

TEST_F(Discovery, TakesAWindowOfTheProcessThatTheAnswerNamed) {
    makeForFirefox();
    launch();
    mac().runFor(20);
    ASSERT_THAT(windowLines(), SizeIs(1));
    const auto safari = std::to_string(launcher().browserPID().value_or(0));
    EXPECT_TRUE(windowLines().front().ends_with("pid=" + safari)) << windowLines().front();
    EXPECT_TRUE(logged("[BROWSER] Safari PID: " + safari));
}

TEST_F(Discovery, TakesAWindowThatItHasSeenBeforeOnceTheAnswerNamesItsProcess) {
    mac().opener().setAnswerDelay(3);
    makeForFirefox();
    const double start = mac().now();
    launch();
    mac().runFor(20);
    ASSERT_THAT(windowLines(), SizeIs(1));
    EXPECT_NEAR(timeOf(windowLines().front()) - start, 3.2, 1e-6);
}

TEST_F(Discovery, TakesAnAnswerThatComesBeforeTheFirstLook) {
    mac().opener().setAnswerDelay(0);
    makeForFirefox();
    const double start = mac().now();
    launch();
    mac().runFor(20);
    const auto safari = std::to_string(launcher().browserPID().value_or(0));
    EXPECT_NEAR(timeOf("[BROWSER] Safari PID: " + safari) - start, 0, 1e-6);
    ASSERT_NE(launcher().browserApp(), nullptr);
    EXPECT_EQ(launcher().browserApp()->processIdentifier(), launcher().browserPID());
    ASSERT_THAT(windowLines(), SizeIs(1));
    EXPECT_NEAR(timeOf(windowLines().front()) - start, 0.8, 1e-6);
    EXPECT_NEAR(timeOf("[FULLSCREEN] Tentativo 1/8...") - start, 4.3, 1e-6);
}

TEST_F(Discovery, DoesNotTakeAWindowThatSafariHadBefore) {
    const auto safari = mac().processes().start(virtualmac::safariPath);
    mac().runFor(3);
    const auto old = mac().desktop().windowsOf(safari).at(0).number;
    const double start = mac().now();
    launch();
    mac().runFor(20);
    ASSERT_THAT(windowLines(), SizeIs(1));
    EXPECT_NEAR(timeOf(windowLines().front()) - start, 0.8, 1e-6);
    ASSERT_TRUE(launcher().windowNumber());
    EXPECT_NE(launcher().windowNumber(), old);
}

TEST_F(Discovery, KnowsTheWindowsAsTheyWereBeforeItFormedTheAddresses) {
    const auto helper = mac().applications().add({"Safari Helper", "com.example.helper"});
    mac().applications().openWindow(helper, {});
    std::int64_t opened = 0;
    mac().urls().failFormingWhere([this, helper, &opened](std::string_view text) {
        if (text == meeting) opened = mac().applications().openWindow(helper, {});
        return false;
    });
    const double start = mac().now();
    launch();
    mac().runFor(5);
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 1"));
    EXPECT_EQ(launcher().windowNumber(), opened);
    ASSERT_THAT(windowLines(), SizeIs(1));
    EXPECT_NEAR(timeOf(windowLines().front()) - start, 0.4, 1e-6);
}

TEST_F(Discovery, CountsTheWindowsOnTheScreenOnly) {
    const auto finder = mac().applications().add({"Finder", "com.apple.finder"});
    mac().applications().openWindow(finder, {});
    const auto minimised = mac().applications().openWindow(finder, {});
    mac().desktop().setMinimised(minimised, true);
    mac().runFor(2);
    launch();
    mac().runFor(0.1);
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 1"));
}

TEST_F(Discovery, CountsAWindowWithoutANumber) {
    mac().applications().openWindow(mac().applications().add({"Finder", "com.apple.finder"}), {});
    mac().windowList().withhold(virtualmac::WindowKey::number);
    launch();
    mac().runFor(0.1);
    EXPECT_TRUE(logged("[BROWSER] Finestre prima: 1"));
}

TEST_F(Discovery, DoesNotSeeAWindowThatIsNotOnTheScreen) {
    const auto helper = mac().applications().add({"Safari Helper", "com.example.helper"});
    mac().opener().failWith("No.");
    launch();
    mac().runFor(0.1);
    mac().desktop().setMinimised(mac().applications().openWindow(helper, {}), true);
    mac().runFor(20);
    EXPECT_THAT(windowLines(), IsEmpty());
    EXPECT_TRUE(logged("[BROWSER] ⚠ Finestra non trovata entro timeout"));
}

TEST_F(Discovery, LearnsNoProcessFromAWindowWhoseOwnerTheListDoesNotTell) {
    mac().windowList().withhold(virtualmac::WindowKey::ownerPID);
    mac().opener().answerWithoutApplication(true);
    launch();
    mac().runFor(3);
    EXPECT_TRUE(launcher().windowNumber().has_value());
    ASSERT_THAT(windowLines(), SizeIs(1));
    EXPECT_TRUE(windowLines().front().ends_with("pid=0")) << windowLines().front();
    EXPECT_EQ(launcher().browserPID(), std::nullopt);
}

}  // namespace
}  // namespace vantrel
