#include <gtest/gtest.h>

#include <string>

#include "practice/configuration/SessionCode.h"

namespace vantrel::practice::test {
namespace {

TEST(SessionCode, StandsInAPathAsItIs) {
    EXPECT_TRUE(isSessionCode("Ab-9._~"));
    for (const std::string text : {"", "A B", "A/B", "A%", "È"}) EXPECT_FALSE(isSessionCode(text)) << text;
    EXPECT_EQ(upperCaseCode("ab-9ì"), "AB-9ì");
}

}  // namespace
}  // namespace vantrel::practice::test
