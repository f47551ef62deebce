#include <gtest/gtest.h>

#include <sstream>

#include "rehearsal/transcript/EventLines.h"

namespace vantrel::rehearsal {
namespace {

using virtualmac::Event;

std::string lines(Event event) {
    event.time = 1;
    std::ostringstream stream;
    Transcript transcript(stream);
    write(event, transcript);
    return stream.str();
}

const std::string more = "                        | ";

TEST(EventLines, TellARequestWithItsHeadersAndBody) {
    EXPECT_EQ(lines({0, "request", "POST https://a/b", {{"header", "X: y"}, {"header", "Z: w"}, {"body", "{ }"}}}),
              "    1.000  request      POST https://a/b\n" + more + "X: y\n" + more + "Z: w\n" + more + "{}\n");
}

TEST(EventLines, TellAReplyOfEveryKind) {
    EXPECT_EQ(lines({0, "reply", "https://a", {{"status", "200"}, {"body", "x"}}}),
              "    1.000  reply        200 from https://a\n" + more + "x\n");
    EXPECT_EQ(lines({0, "reply", "https://a", {{"status", "204"}}}), "    1.000  reply        204 from https://a\n");
    EXPECT_EQ(lines({0, "reply", "https://a", {}}), "    1.000  reply        not HTTP from https://a\n");
    EXPECT_EQ(lines({0, "reply", "https://a", {{"error", "La richiesta è scaduta."}}}),
              "    1.000  reply        error from https://a\n" + more + "La richiesta è scaduta.\n");
}

TEST(EventLines, TellAnAlertWithoutInformation) {
    EXPECT_EQ(lines({0, "alert-shown", "A", {{"style", "critical"}, {"information", ""}, {"button", "OK"}}}),
              "    1.000  alert        critical: A\n" + more + "[OK]\n");
}

TEST(EventLines, NameTheBitsOfAStyle) {
    EXPECT_EQ(lines({0, "window-style", "V", {{"mask", "5"}}}),
              "    1.000  window       V has the style titled, miniaturizable\n");
    EXPECT_EQ(lines({0, "window-style", "V", {{"mask", "0"}}}), "    1.000  window       V has the style none\n");
}

TEST(EventLines, TellWhatTheParticipantDoesInWords) {
    EXPECT_EQ(lines({0, "participant", "type emailField", {{"value", " a "}}}),
              "    1.000  participant  types into emailField: \" a \"\n");
    EXPECT_EQ(lines({0, "participant", "command q", {}}), "    1.000  participant  presses Command-Q\n");
    EXPECT_EQ(lines({0, "participant", "command Z", {}}), "    1.000  participant  presses Command-Shift-Z\n");
    EXPECT_EQ(lines({0, "participant", "open-menu ", {}}), "    1.000  participant  opens the menu (untitled)\n");
    EXPECT_EQ(lines({0, "participant", "press X", {{"ignored", "it is disabled"}}}),
              "    1.000  participant  presses X\n" + more + "ignored: it is disabled\n");
}

TEST(EventLines, TellWhatTheParticipantDoesElsewhereInWords) {
    EXPECT_EQ(lines({0, "participant", "key cmd+q", {}}), "    1.000  participant  presses the key cmd+q\n");
    EXPECT_EQ(lines({0, "participant", "key cmd+w", {{"times", "3"}}}),
              "    1.000  participant  presses the key cmd+w, 3 times\n");
    EXPECT_EQ(lines({0, "participant", "move Google Chrome", {{"value", "300 200"}}}),
              "    1.000  participant  moves the window of Google Chrome to 300 200\n");
    EXPECT_EQ(lines({0, "participant", "swipe left", {{"ignored", "there is no Space beside this one"}}}),
              "    1.000  participant  swipes to the left\n" + more + "ignored: there is no Space beside this one\n");
    EXPECT_EQ(lines({0, "participant", "kill Google Chrome", {}}), "    1.000  participant  kills Google Chrome\n");
}

TEST(EventLines, TellWhereAKeyGoes) {
    EXPECT_EQ(lines({0, "key-swallowed", "cmd+4", {{"code", "21"}, {"flags", "1048576"}}}),
              "    1.000  key          cmd+4 is swallowed\n");
    EXPECT_EQ(lines({0, "key-delivered", "a", {{"application", "Terminal"}}}),
              "    1.000  key          a reaches Terminal\n");
    EXPECT_EQ(lines({0, "key-delivered", "cmd+tab", {}}), "    1.000  key          cmd+tab reaches the system\n");
}

TEST(EventLines, TellTheLifeOfATapAndAnOverlay) {
    EXPECT_EQ(lines({0, "keyboard-tap-created", "", {}}), "    1.000  tap          is installed\n");
    EXPECT_EQ(lines({0, "keyboard-tap-refused", "", {}}), "    1.000  tap          is refused\n");
    EXPECT_EQ(lines({0, "keyboard-tap-removed", "", {}}), "    1.000  tap          is removed\n");
    EXPECT_EQ(lines({0, "tap-disabled", "timeout", {}}),
              "    1.000  tap          is disabled by the system: timeout\n");
    EXPECT_EQ(lines({0, "overlay-shown", "0 0 1 2", {{"level", "1000"}, {"label", "A"}, {"label", "B"}}}),
              "    1.000  overlay      is shown at 0 0 1 2 on level 1000\n" + more + "A\n" + more + "B\n");
    EXPECT_EQ(lines({0, "overlay-level", "0 0 1 2", {{"level", "3"}}}),
              "    1.000  overlay      is on level 3 at 0 0 1 2\n");
    EXPECT_EQ(lines({0, "overlay-raised", "0 0 1 2", {}}), "    1.000  overlay      is raised at 0 0 1 2\n");
    EXPECT_EQ(lines({0, "overlay-hidden", "0 0 1 2", {}}), "    1.000  overlay      is hidden at 0 0 1 2\n");
    EXPECT_EQ(lines({0, "overlay-closed", "0 0 1 2", {}}), "    1.000  overlay      is closed at 0 0 1 2\n");
}

TEST(EventLines, TellHowAMenuWasClosed) {
    EXPECT_EQ(lines({0, "menu-closed", "M", {{"chosen", "Esci"}}}),
              "    1.000  menu         closed: M, chosen: Esci\n");
    EXPECT_EQ(lines({0, "menu-closed", "M", {}}), "    1.000  menu         closed: M, nothing chosen\n");
}

TEST(EventLines, NameTheMenusWithoutTitle) {
    EXPECT_EQ(lines({0, "main-menu", ",Edit", {}}), "    1.000  main menu    (untitled), Edit\n");
}

TEST(EventLines, ShowAnUnknownEventAsItIs) {
    EXPECT_EQ(lines({0, "tap", "enabled", {{"key", "12"}}}), "    1.000  tap          enabled\n" + more + "key: 12\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
