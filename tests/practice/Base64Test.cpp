#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "practice/messages/Base64.h"

namespace vantrel::practice::test {
namespace {

TEST(Base64, WritesAndReadsTheStandardsExamples) {
    const std::vector<std::pair<std::string, std::string>> examples{
        {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"foobar", "Zm9vYmFy"}};
    for (const auto& [bytes, text] : examples) {
        EXPECT_EQ(toBase64(bytes), text);
        EXPECT_EQ(fromBase64(text), bytes);
    }
}

TEST(Base64, RefusesWhatIsNone) {
    for (const std::string text : {"Z", "Zg", "Zg=", "Z===", "====", "Zm 9", "Zg==Zg=="}) {
        EXPECT_FALSE(fromBase64(text).has_value()) << text;
    }
}

}  // namespace
}  // namespace vantrel::practice::test
