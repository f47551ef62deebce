#include <gtest/gtest.h>

#include <sstream>

#include "rehearsal/EventLines.h"

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
