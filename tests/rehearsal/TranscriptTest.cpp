#include <gtest/gtest.h>

#include <sstream>

#include "rehearsal/transcript/Transcript.h"

namespace vantrel::rehearsal {
namespace {

std::string entry(double seconds, const char* kind, const std::string& text,
                  const std::vector<std::string>& more = {}) {
    std::ostringstream stream;
    Transcript(stream).add(seconds, kind, text, more);
    return stream.str();
}

TEST(Transcript, PutsTimeKindAndTextInColumns) {
    EXPECT_EQ(entry(3.04, "log", "[SESSION] GET status HTTP: 200"),
              "    3.040  log          [SESSION] GET status HTTP: 200\n");
    EXPECT_EQ(entry(12345.6789, "status item", "is installed"), "12345.679  status item  is installed\n");
}

TEST(Transcript, RoundsToTheNearestMillisecond) {
    EXPECT_EQ(entry(0.0004, "log", "a"), "    0.000  log          a\n");
    EXPECT_EQ(entry(0.9996, "log", "a"), "    1.000  log          a\n");
}

TEST(Transcript, IndentsFurtherLines) {
    EXPECT_EQ(entry(1, "alert", "warning: A", {"first\n\nthird", "[OK]"}),
              "    1.000  alert        warning: A\n"
              "                        | first\n"
              "                        |\n"
              "                        | third\n"
              "                        | [OK]\n");
}

TEST(Transcript, ContinuesATextOfSeveralLines) {
    EXPECT_EQ(entry(1, "log", "a\nb\n"),
              "    1.000  log          a\n"
              "                        | b\n"
              "                        |\n");
}

TEST(Transcript, LeavesNoBlanksAtTheEndOfAnEntryWithoutText) {
    EXPECT_EQ(entry(1, "log", ""), "    1.000  log\n");
}

TEST(Transcript, HoldsEntriesBackUntilTheyAreTaken) {
    std::ostringstream stream;
    Transcript transcript(stream);
    transcript.hold();
    transcript.add(1, "log", "a");
    transcript.add(2, "log", "b", {"more"});
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(transcript.takeHeld(),
              "    1.000  log          a\n"
              "    2.000  log          b\n"
              "                        | more\n");
    transcript.add(3, "log", "c");
    EXPECT_EQ(transcript.takeHeld(), "");
    EXPECT_EQ(stream.str(), "    3.000  log          c\n");
}

}  // namespace
}  // namespace vantrel::rehearsal
