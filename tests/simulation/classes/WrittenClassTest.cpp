#include <gtest/gtest.h>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {
namespace {

TEST(WrittenClass, IsWrittenInTheOrderOfTime) {
    WrittenClass written;
    written.title = "Una \"prova\"";
    written.mac = {"macos: 15"};
    written.browsers = {"edge"};
    written.sessions = {"{code: AAA}"};
    written.timeline = {{2'500, {"key: a", "key: b"}}, {1'000, {"type: {code: AAA}"}}};
    written.until = 3'010;
    EXPECT_EQ(written.text(),
              "title: \"Una \\\"prova\\\"\"\n"
              "\nmac:\n  macos: 15\n  browsers:\n    - edge\n"
              "\nserver:\n  sessions:\n    - {code: AAA}\n"
              "\ntimeline:\n  - {at: 1, type: {code: AAA}}\n"
              "  - at: 2.5\n    together:\n      - {key: a}\n      - {key: b}\n"
              "\nuntil: 3.01\n");
}

TEST(WrittenClass, WithoutAnythingHasAnEmptyTimeline) {
    EXPECT_EQ(WrittenClass().text(), "title: \"\"\n\ntimeline: []\n\nuntil: 0\n");
}

}  // namespace
}  // namespace vantrel::simulation
