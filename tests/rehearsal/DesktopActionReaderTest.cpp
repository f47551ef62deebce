#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/rehearsal/Reading.h"

namespace vantrel::rehearsal {
namespace {

template <typename Kind>
Kind onDesktop(const std::string& step) {
    const auto what = as<DesktopAction>(step);
    if (const auto* kind = std::get_if<Kind>(&what)) return *kind;
    ADD_FAILURE() << step << " is another action of the desktop";
    return {};
}

TEST(DesktopActionReader, ReadsWhatTheParticipantDoesOnTheDesktop) {
    using virtualmac::KeyStroke;
    using What = DoToApplication::What;
    EXPECT_EQ(onDesktop<PressKeys>("key: cmd+q").key, (KeyStroke{12, KeyStroke::command}));
    EXPECT_EQ(onDesktop<PressKeys>("key: 4").key, (KeyStroke{21, 0}));
    EXPECT_EQ(onDesktop<PressKeys>("hold-key: {key: ctrl+left, times: 3}").times, 3);
    EXPECT_FALSE(onDesktop<ShowApplication>("application: Terminal").start);
    const auto started = onDesktop<ShowApplication>(
        "application: {name: T, bundle-identifier: com.t, window: [1, 2, 3, 4], ignores-quit: yes, killed-in: 2}");
    EXPECT_EQ(started.name, "T");
    EXPECT_EQ(started.start->window, (Rect{{1, 2}, {3, 4}}));
    EXPECT_TRUE(started.start->behaviour.ignoresTerminate);
    EXPECT_EQ(started.start->behaviour.killDelay, 2);
    const auto nobody = onDesktop<ShowApplication>("application: {name: none, bundle-identifier: none}");
    EXPECT_EQ(nobody.name, "");
    EXPECT_EQ(nobody.start->bundleIdentifier, std::nullopt);
    EXPECT_EQ(onDesktop<MoveWindow>("move-window: {of: A, to: [-5, 6]}").origin, (Point{-5, 6}));
    EXPECT_EQ(onDesktop<ResizeWindow>("resize-window: {of: A, to: [5, 6]}").size, (Size{5, 6}));
    EXPECT_EQ(onDesktop<OpenWindow>("open-window: A").window.title, "A");
    const auto opened = onDesktop<OpenWindow>("open-window: {of: A, title: T, frame: [1, 2, 3, 4], layer: 1000}");
    EXPECT_EQ(opened.window.frame, (Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(opened.window.title + std::to_string(opened.window.layer), "T1000");
    EXPECT_FALSE(onDesktop<Swipe>("swipe: right").left);
    for (const auto& [word, what] :
         std::vector<std::pair<std::string, What>>{{"quit", What::quit},
                                                   {"kill", What::kill},
                                                   {"minimise-window", What::minimise},
                                                   {"restore-window", What::restore},
                                                   {"close-window", What::close},
                                                   {"toggle-full-screen", What::toggleFullScreen},
                                                   {"hide-others", What::hideOthers}}) {
        EXPECT_EQ(onDesktop<DoToApplication>(word + ": A").what, what) << word;
        EXPECT_EQ(onDesktop<DoToApplication>(word + ": A").application, "A") << word;
    }
}

TEST(DesktopActionReader, ReadsWhatHappensToDisplaysAndWhatGoesWrong) {
    EXPECT_EQ(onDesktop<ArrangeDisplay>("arrange: {name: X, frame: [1, 2, 3, 4]}").display,
              (Screen{"X", {{1, 2}, {3, 4}}}));
    EXPECT_TRUE(onDesktop<MirrorDisplay>("mirror: X").mirrors);
    EXPECT_FALSE(onDesktop<MirrorDisplay>("unmirror: X").mirrors);
    EXPECT_EQ(onDesktop<SetDisplayNotices>("display-notices: {count: 8, every: 0.05}").count, 8);
    EXPECT_EQ(onDesktop<CloseCover>("close-cover: X").display, "X");
    EXPECT_FALSE(onDesktop<SetTaps>("taps: refused").work);
    EXPECT_TRUE(onDesktop<SetWindowList>("window-list: works").works);
    const auto fault = onDesktop<FailElements>("fail-elements: {read: AXWindows, error: -25204, times: 2}");
    EXPECT_EQ(fault.operation, virtualmac::AccessibilityFaults::Operation::read);
    EXPECT_EQ(fault.name, "AXWindows");
    EXPECT_EQ(fault.error, -25204);
    EXPECT_EQ(fault.times, 2);
    onDesktop<MendElements>("do: let elements work as usual");
    EXPECT_EQ(onDesktop<SilenceApplication>("silence: Safari").application, "Safari");
    EXPECT_TRUE(onDesktop<SilenceApplication>("silence: Safari").silent);
    EXPECT_FALSE(onDesktop<SilenceApplication>("unsilence: Safari").silent);
    EXPECT_EQ(onDesktop<HangClient>("hang: 1.5").seconds, 1.5);
}

TEST(DesktopActionReader, ReadsActionsOfOneInstant) {
    const auto timeline =
        good(head + "timeline:\n  - at: 1\n    together:\n      - press: A\n      - kill: B\n      - swipe: left\n")
            .timeline;
    ASSERT_EQ(timeline.size(), 1U);
    EXPECT_EQ(std::get<PressButton>(timeline[0].action).title, "A");
    EXPECT_EQ(timeline[0].together.size(), 2U);
    const auto step = [](const std::string& text) { return wrong(head + "timeline:\n  - at: 1\n    " + text + "\n"); };
    EXPECT_EQ(step("together: [press: A]"), "5: 'together' holds fewer than two actions\n");
    EXPECT_EQ(step("together: A"), "4: a step lacks what happens\n5: 'together' is not a list\n");
    EXPECT_EQ(step("together: [{press: A, key: a}, {press: B}]"),
              "5: each of 'together' is one action\n5: 'together' holds fewer than two actions\n");
    EXPECT_EQ(step("together: [{pres: A}, {press: B}, {press: C}]"), "5: unknown word 'pres' in a step\n");
    EXPECT_EQ(step("together: [{together: []}, {press: B}, {press: C}]"), "5: unknown word 'together' in a step\n");
}

TEST(DesktopActionReader, RefusesWordsOfTheDesktopThatMakeNoSense) {
    const auto step = [](const std::string& text) { return wrong(head + "timeline:\n  - at: 1\n    " + text + "\n"); };
    EXPECT_EQ(step("hold-key: {key: Return, times: 2}"), "5: 'key' is not a key such as cmd+shift+4\n");
    EXPECT_EQ(step("hold-key: {key: a}"), "5: 'hold-key' lacks 'times'\n");
    EXPECT_EQ(step("move-window: {of: A, to: 5}"), "5: 'to' is not two numbers such as [300, 200]\n");
    EXPECT_EQ(step("resize-window: {of: A, to: [0, 5]}"), "5: the first number is less than 1\n");
    EXPECT_EQ(step("swipe: up"), "5: 'swipe' is not one of: left, right\n");
    EXPECT_EQ(step("taps: off"), "5: 'taps' is not one of: given, refused\n");
    EXPECT_EQ(step("close-window: ''"), "5: 'close-window' is empty\n");
    EXPECT_EQ(step("fail-elements: {error: -25204}"), "5: 'fail-elements' lacks what fails: read, write or action\n");
    EXPECT_EQ(step("fail-elements: {read: A, write: B, error: 0}"), "5: a fault is of one kind\n");
    EXPECT_EQ(step("close-cover: ''"), "5: 'close-cover' is empty\n");
    EXPECT_EQ(step("application: {name: '', bundle-identifier: X}"), "5: 'name' is empty\n");
    EXPECT_EQ(step("application: {name: X}"), "5: an application lacks 'bundle-identifier'\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
