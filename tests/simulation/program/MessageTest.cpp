#include <gtest/gtest.h>

#include "tests/simulation/program/Message.h"

namespace vantrel::simulation {
namespace {

TEST(Message, BringsAnyBytesInOneLine) {
    const std::vector<std::string> fields = {"", "a\tb", "c\nd\\n", "\\"};
    auto line = message(fields);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    line.pop_back();
    EXPECT_EQ(fieldsOf(line), fields);
}

}  // namespace
}  // namespace vantrel::simulation
