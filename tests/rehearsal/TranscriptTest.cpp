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

}  // namespace
}  // namespace vantrel::rehearsal
