#include <gtest/gtest.h>

#include <string>

#include "practice/configuration/ClientVersion.h"

namespace vantrel::practice::test {
namespace {

TEST(ClientVersion, ComparesNumbersNotText) {
    EXPECT_LT(*ClientVersion::parse("2.9-macOS"), *ClientVersion::parse("2.10"));
    EXPECT_EQ(*ClientVersion::parse("2-macOS"), *ClientVersion::parse("2.0.0"));
    EXPECT_GT(*ClientVersion::parse("2.0.1"), *ClientVersion::parse("2.0-macOS"));
}

TEST(ClientVersion, RefusesWhatIsNone) {
    for (const std::string text : {"", "-", "macOS", "2.", ".2", "2..0", "2.x", "+2", "99999999999"}) {
        EXPECT_FALSE(ClientVersion::parse(text).has_value()) << text;
    }
}

}  // namespace
}  // namespace vantrel::practice::test
