#include <gtest/gtest.h>

#include <sstream>

#include "rehearsal/transcript/EventLines.h"

namespace vantrel::rehearsal {
namespace {

using namespace virtualmac;

std::string lines(const Happening& happening) {
    std::ostringstream stream;
    Transcript transcript(stream);
    write({happening, 1}, transcript);
    return stream.str();
}

const std::string more = "                        | ";

TEST(EventLines, TellARequestWithItsHeadersAndBody) {
    EXPECT_EQ(lines({NetworkEvent::request,
                     "POST https://a/b",
                     {{Field::header, "X: y"}, {Field::header, "Z: w"}, {Field::body, "{ }"}}}),
              "    1.000  request      POST https://a/b\n" + more + "X: y\n" + more + "Z: w\n" + more + "{}\n");
}

TEST(EventLines, TellAReplyOfEveryKind) {
    EXPECT_EQ(lines({NetworkEvent::reply, "https://a", {{Field::status, "200"}, {Field::body, "x"}}}),
              "    1.000  reply        200 from https://a\n" + more + "x\n");
    EXPECT_EQ(lines({NetworkEvent::reply, "https://a", {{Field::status, "204"}}}),
              "    1.000  reply        204 from https://a\n");
    EXPECT_EQ(lines({NetworkEvent::reply, "https://a"}), "    1.000  reply        not HTTP from https://a\n");
    EXPECT_EQ(lines({NetworkEvent::reply, "https://a", {{Field::error, "La richiesta è scaduta."}}}),
              "    1.000  reply        error from https://a\n" + more + "La richiesta è scaduta.\n");
}

TEST(EventLines, TellAnAlertWithoutInformation) {
    EXPECT_EQ(
        lines({AlertEvent::shown, "A", {{Field::style, "critical"}, {Field::information, ""}, {Field::button, "OK"}}}),
        "    1.000  alert        critical: A\n" + more + "[OK]\n");
}

TEST(EventLines, NameTheBitsOfAStyle) {
    EXPECT_EQ(lines({WindowEvent::style, "V", {{Field::mask, "5"}}}),
              "    1.000  window       V has the style titled, miniaturizable\n");
    EXPECT_EQ(lines({WindowEvent::style, "V", {{Field::mask, "0"}}}), "    1.000  window       V has the style none\n");
}

TEST(EventLines, TellWhatTheParticipantDoesInWords) {
    EXPECT_EQ(lines({virtualmac::Deed::type, "emailField", {{Field::value, " a "}}}),
              "    1.000  participant  types into emailField: \" a \"\n");
    EXPECT_EQ(lines({virtualmac::Deed::pressCommand, "q"}), "    1.000  participant  presses Command-Q\n");
    EXPECT_EQ(lines({virtualmac::Deed::pressCommand, "Z"}), "    1.000  participant  presses Command-Shift-Z\n");
    EXPECT_EQ(lines({virtualmac::Deed::openMenu}), "    1.000  participant  opens the menu (untitled)\n");
    EXPECT_EQ(lines({virtualmac::Deed::press, "X", {{Field::ignored, "it is disabled"}}}),
              "    1.000  participant  presses X\n" + more + "ignored: it is disabled\n");
}

TEST(EventLines, TellWhatTheParticipantDoesElsewhereInWords) {
    EXPECT_EQ(lines({DesktopDeed::pressKey, "cmd+q"}), "    1.000  participant  presses the key cmd+q\n");
    EXPECT_EQ(lines({DesktopDeed::pressKey, "cmd+w", {{Field::times, "3"}}}),
              "    1.000  participant  presses the key cmd+w, 3 times\n");
    EXPECT_EQ(lines({DesktopDeed::moveWindow, "Google Chrome", {{Field::value, "300 200"}}}),
              "    1.000  participant  moves the window of Google Chrome to 300 200\n");
    EXPECT_EQ(lines({DesktopDeed::swipeLeft, {}, {{Field::ignored, "there is no Space beside this one"}}}),
              "    1.000  participant  swipes to the left\n" + more + "ignored: there is no Space beside this one\n");
    EXPECT_EQ(lines({DesktopDeed::hideOthers, "Note"}), "    1.000  participant  hides all but Note\n");
    EXPECT_EQ(lines({DesktopDeed::kill, "Google Chrome"}), "    1.000  participant  kills Google Chrome\n");
}

TEST(EventLines, TellWhereAKeyGoes) {
    EXPECT_EQ(lines({KeyboardEvent::swallowed, "cmd+4", {{Field::code, "21"}, {Field::flags, "1048576"}}}),
              "    1.000  key          cmd+4 is swallowed\n");
    EXPECT_EQ(lines({KeyboardEvent::delivered, "a", {{Field::application, "Terminal"}}}),
              "    1.000  key          a reaches Terminal\n");
    EXPECT_EQ(lines({KeyboardEvent::delivered, "cmd+tab"}), "    1.000  key          cmd+tab reaches the system\n");
}

TEST(EventLines, TellTheLifeOfATapAndAnOverlay) {
    EXPECT_EQ(lines({KeyboardEvent::tapCreated}), "    1.000  tap          is installed\n");
    EXPECT_EQ(lines({KeyboardEvent::tapRefused}), "    1.000  tap          is refused\n");
    EXPECT_EQ(lines({KeyboardEvent::tapRemoved}), "    1.000  tap          is removed\n");
    EXPECT_EQ(lines({KeyboardEvent::tapDisabled, "timeout"}),
              "    1.000  tap          is disabled by the system: timeout\n");
    EXPECT_EQ(
        lines({OverlayEvent::shown, "0 0 1 2", {{Field::level, "1000"}, {Field::label, "A"}, {Field::label, "B"}}}),
        "    1.000  overlay      is shown at 0 0 1 2 on level 1000\n" + more + "A\n" + more + "B\n");
    EXPECT_EQ(lines({OverlayEvent::level, "0 0 1 2", {{Field::level, "3"}}}),
              "    1.000  overlay      is on level 3 at 0 0 1 2\n");
    EXPECT_EQ(lines({OverlayEvent::raised, "0 0 1 2"}), "    1.000  overlay      is raised at 0 0 1 2\n");
    EXPECT_EQ(lines({OverlayEvent::hidden, "0 0 1 2"}), "    1.000  overlay      is hidden at 0 0 1 2\n");
    EXPECT_EQ(lines({OverlayEvent::closed, "0 0 1 2"}), "    1.000  overlay      is closed at 0 0 1 2\n");
}

TEST(EventLines, TellHowAMenuWasClosed) {
    EXPECT_EQ(lines({MenuEvent::closed, "M", {{Field::chosen, "Esci"}}}),
              "    1.000  menu         closed: M, chosen: Esci\n");
    EXPECT_EQ(lines({MenuEvent::closed, "M"}), "    1.000  menu         closed: M, nothing chosen\n");
}

TEST(EventLines, NameTheMenusWithoutTitle) {
    EXPECT_EQ(lines({ClientEvent::mainMenu, ",Edit"}), "    1.000  main menu    (untitled), Edit\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
