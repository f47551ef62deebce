#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string_view>

#include "platform/Computer.h"
#include "rehearsal/playing/Player.h"

namespace vantrel::rehearsal {
namespace {

using testing::HasSubstr;
using testing::Not;

using What = DoToApplication::What;

std::string_view commandOnly(const KeyEvent& event) noexcept {
    constexpr std::uint64_t command = 0x100000;
    return event.type == KeyEventType::keyDown && (event.flags & command) != 0 ? "Command" : std::string_view();
}

/// The transcript of the steps. They run beside a program that installs a tap and shows an overlay, or one that does
/// nothing.
std::string played(std::vector<Step> timeline, double until, bool tapped = true) {
    Scenario scenario;
    scenario.title = "T";
    scenario.timeline = std::move(timeline);
    scenario.until = until;
    scenario.mac.displays.push_back({"Proiettore", {{1440, 0}, {1920, 1080}}});
    OtherApplication terminal{"Terminal", "com.apple.Terminal"};
    terminal.window = Rect{{100, 100}, {400, 300}};
    scenario.mac.applications.push_back(terminal);
    OtherApplication notes{"Note", "com.apple.Notes"};
    notes.window = Rect{{200, 200}, {400, 300}};
    scenario.mac.applications.push_back(notes);
    std::ostringstream stream;
    const auto program = [tapped](const Computer& computer) {
        std::unique_ptr<KeyboardTap> tap;
        if (tapped) tap = computer.keyboardTaps.create(commandOnly, {});
        computer.application.run();
    };
    EXPECT_TRUE(play(scenario, stream, {program}).clean);
    return stream.str();
}

PressKeys key(const char* text, int times = 1) {
    return {*virtualmac::KeyStroke::parse(text), times};
}

Step at(double time, DesktopAction action) {
    return {time, std::move(action)};
}

TEST(DesktopPerformer, PressesKeysThatATapSwallowsOrNot) {
    const auto text = played({at(1, key("cmd+q", 2)), at(2, key("a"))}, 3);
    EXPECT_THAT(text, HasSubstr("    0.000  tap          is installed\n"
                                "    1.000  participant  presses the key cmd+q, 2 times\n"
                                "    1.000  key          cmd+q is swallowed\n"
                                "    1.100  key          cmd+q is swallowed\n"
                                "    2.000  participant  presses the key a\n"
                                "    2.000  key          a reaches Note\n"));
    const auto untapped = played({at(1, key("cmd+q"))}, 3, false);
    EXPECT_THAT(untapped, HasSubstr("    1.000  key          cmd+q reaches Note\n"
                                    "    1.000  application  Note (502) exits\n"));
}

TEST(DesktopPerformer, ShowsRunningApplicationsAndStartsOthers) {
    const auto text = played({at(1, ShowApplication{"Terminal", {}}), at(2, ShowApplication{"Mail", {}}),
                              at(3, ShowApplication{"Mail", OtherApplication{"Mail", "com.apple.mail"}}),
                              at(4, ShowApplication{"Terminal", OtherApplication{"Terminal", "com.apple.Terminal"}})},
                             5);
    EXPECT_THAT(text, HasSubstr("    1.000  application  Terminal (501) is in front\n"));
    EXPECT_THAT(text, HasSubstr("    2.000  participant  brings to the front Mail\n"
                                "                        | ignored: it does not run\n"
                                "    3.000  participant  starts Mail\n"
                                "    3.000  application  Mail (503) starts\n"));
    EXPECT_THAT(text, HasSubstr("    3.000  application  Mail (503) is in front\n"));
    EXPECT_THAT(text, HasSubstr("    4.000  application  Terminal (501) is in front\n"));
}

TEST(DesktopPerformer, DoesToWindowsWhatIsSaid) {
    const auto text =
        played({at(1, MoveWindow{"Note", {300, 200}}), at(2, ResizeWindow{"Note", {500, 600}}),
                at(3, DoToApplication{What::minimise, "Note"}), at(4, DoToApplication{What::restore, "Note"}),
                at(5, DoToApplication{What::toggleFullScreen, "Note"}), at(7, Swipe{true}), at(8, Swipe{true}),
                at(9, Swipe{false}), at(10, DoToApplication{What::toggleFullScreen, "Note"}),
                at(12, DoToApplication{What::close, "Note"}), at(13, OpenWindow{"Note", {"Nuova"}}),
                at(14, DoToApplication{What::quit, "Note"}), at(15, DoToApplication{What::kill, "Terminal"}),
                at(16, DoToApplication{What::kill, "Terminal"})},
               17);
    for (const char* line :
         {"    1.000  app window   #1002 \"Note\" is now at 300 200 400 300\n",
          "    2.000  app window   #1002 \"Note\" is now at 300 200 500 600\n",
          "    3.000  app window   #1002 \"Note\" is minimised\n",
          "    4.000  app window   #1002 \"Note\" is restored\n",
          "    5.700  app window   #1002 \"Note\" is in full screen at 0 0 1440 900\n",
          "    7.000  space        Schermo integrato: desktop 1\n",
          ("    8.000  participant  swipes to the left\n"
           "                        | ignored: there is no Space beside this one\n"),
          "    9.000  space        Schermo integrato: full screen of Note\n",
          "   10.700  app window   #1002 \"Note\" has left full screen at 300 200 500 600\n",
          "   12.000  app window   #1002 \"Note\" closes\n", "   13.000  app window   #1003 \"Nuova\" opens at ",
          "   14.000  application  Note (502) exits\n",
          "   15.000  participant  kills Terminal\n   15.000  application  Terminal (501) exits\n",
          "   16.000  participant  kills Terminal\n                        | ignored: it does not run\n"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
}

TEST(DesktopPerformer, ArrangesAndMirrorsDisplays) {
    const auto text = played(
        {at(1, ArrangeDisplay{{"Proiettore", {{-800, 0}, {800, 600}}}}), at(2, MirrorDisplay{"Proiettore", true}),
         at(3, MirrorDisplay{"Proiettore", true}), at(4, MirrorDisplay{"Proiettore", false}),
         at(5, MirrorDisplay{"Proiettore", false}), at(6, ArrangeDisplay{{"X", {}}}), at(7, SetDisplayNotices{3, 0.2})},
        8);
    EXPECT_THAT(text, HasSubstr("    1.000  displays     are now\n"
                                "                        | Schermo integrato 0 0 1440 900\n"
                                "                        | Proiettore -800 0 800 600\n"
                                "    2.000  displays     are now\n"
                                "                        | Schermo integrato 0 0 1440 900\n"
                                "    3.000  ignored      display Proiettore mirrors: there is no other\n"
                                "    4.000  displays     are now\n"
                                "                        | Schermo integrato 0 0 1440 900\n"
                                "                        | Proiettore -800 0 800 600\n"
                                "    5.000  ignored      display Proiettore stops mirroring: it does not mirror\n"
                                "    6.000  ignored      display X is arranged: there is none\n"
                                "    7.000  displays     changes are noticed 3 times, every 0.2 s\n"));
}

TEST(DesktopPerformer, LetsThingsGoWrong) {
    using Operation = virtualmac::AccessibilityFaults::Operation;
    const auto text = played({at(1, FailElements{Operation::write, "AXFullScreen", -25204, 2}), at(2, MendElements{}),
                              at(3, SetWindowList{false}), at(4, SetWindowList{true}), at(5, HangClient{2}),
                              at(5.5, key("cmd+w")), at(8, key("cmd+m"))},
                             9);
    EXPECT_THAT(text, HasSubstr("    1.000  fault        writes of AXFullScreen give -25204, times: 2\n"
                                "    2.000  fault        elements work as usual\n"
                                "    3.000  fault        the window list cannot be read\n"
                                "    4.000  fault        the window list can be read again\n"
                                "    5.000  fault        the client's main thread hangs for 2 s\n"
                                "    5.500  participant  presses the key cmd+w\n"
                                "    6.500  tap          is disabled by the system: timeout\n"
                                "    6.500  key          cmd+w reaches Note\n"));
    EXPECT_THAT(text, HasSubstr("    8.000  key          cmd+m reaches Note\n"));
}

TEST(DesktopPerformer, StartsAnApplicationWithoutAName) {
    const OtherApplication nobody{"", "com.example.x"};
    const auto text = played({at(1, ShowApplication{"", nobody}), at(2, ShowApplication{"", nobody})}, 3);
    EXPECT_THAT(text, HasSubstr("    1.000  participant  starts an application without a name\n"
                                "    1.000  application  (503) starts\n"
                                "    1.000  application  (503) is in front\n"
                                "    2.000  participant  starts an application without a name\n"
                                "    2.000  application  (504) starts\n"));
}

TEST(DesktopPerformer, ClosesACover) {
    Scenario scenario;
    scenario.title = "T";
    scenario.until = 5;
    scenario.mac.displays.push_back({"Proiettore", {{1440, 0}, {1920, 1080}}});
    scenario.timeline = {at(1, CloseCover{"Proiettore"}), at(2, CloseCover{"Proiettore"}),
                         at(3, CloseCover{"Schermo integrato"}), at(4, CloseCover{"Nessuno"})};
    std::ostringstream stream;
    const auto program = [](const Computer& computer) {
        const auto cover = computer.overlays.makeOverlay({{{1440, 0}, {1920, 1080}}, 1000, 0, {}});
        cover->orderFrontRegardless();
        computer.application.run();
    };
    play(scenario, stream, {program});
    EXPECT_THAT(stream.str(),
                HasSubstr("    1.000  fault        the cover of display Proiettore is closed\n"
                          "    1.000  overlay      is hidden at 1440 0 1920 1080\n"
                          "    2.000  ignored      the cover of display Proiettore is closed: there is none\n"
                          "    3.000  ignored      the cover of display Schermo integrato is closed: there is none\n"
                          "    4.000  ignored      the cover of display Nessuno is closed: there is none\n"));
}

TEST(DesktopPerformer, RefusesTapsAndTakesThePermissionAway) {
    Scenario scenario;
    scenario.title = "T";
    scenario.until = 9;
    scenario.timeline = {
        {1, DesktopAction(SetTaps{false})}, {3, DesktopAction(SetTaps{true})}, {5, SetAccessibility{false}}};
    std::ostringstream stream;
    const auto program = [](const Computer& computer) {
        std::unique_ptr<KeyboardTap> tap;
        const auto timer = computer.mainRunLoop.scheduledTimer(2, true, [&] {
            if (!tap) tap = computer.keyboardTaps.create(commandOnly, {});
        });
        computer.application.run();
    };
    play(scenario, stream, {program});
    EXPECT_THAT(stream.str(), HasSubstr("    1.000  fault        no keyboard tap is given\n"
                                        "    2.000  tap          is refused\n"
                                        "    3.000  fault        keyboard taps are given again\n"
                                        "    4.000  tap          is installed\n"
                                        "    5.000  permission   accessibility is refused\n"
                                        "    5.000  tap          is disabled by the system: user input\n"
                                        "    5.000  tap          is removed\n"));
}

TEST(DesktopPerformer, DoesTogetherWhatIsSaidTogether) {
    const auto text = played({{1,
                               DesktopAction(DoToApplication{What::kill, "Note"}),
                               {DesktopAction(key("a")), PlugDisplay{{"X", {{0, 900}, {10, 10}}}}}}},
                             2);
    EXPECT_THAT(text, HasSubstr("    1.000  participant  kills Note\n"));
    EXPECT_THAT(text, HasSubstr("    1.000  key          a reaches "));
    EXPECT_THAT(text, HasSubstr("| X 0 900 10 10\n"));
    EXPECT_THAT(text, Not(HasSubstr("ignored")));
}

}  // namespace
}  // namespace vantrel::rehearsal
