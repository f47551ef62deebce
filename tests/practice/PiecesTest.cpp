#include <gtest/gtest.h>

#include "practice/configuration/ClientVersion.h"
#include "practice/configuration/SessionCode.h"
#include "practice/messages/Base64.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"

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

TEST(RequestTarget, KeepsEverySegmentAsSent) {
    using Segments = std::vector<std::string>;
    EXPECT_EQ(RequestTarget("/api/a%20b?x=/y").segments(), (Segments{"api", "a%20b"}));
    EXPECT_EQ(RequestTarget("//api/").segments(), (Segments{"", "api", ""}));
    EXPECT_EQ(RequestTarget("*").segments(), Segments{});
    EXPECT_EQ(RequestTarget("/a?b?c").path(), "/a");
}

TEST(RequestTarget, UndoesAQuerysEncoding) {
    const RequestTarget target("/?a=1%2E0&b=&c&d=%zz%4");
    EXPECT_EQ(target.query("a"), "1.0");
    EXPECT_EQ(target.query("b"), "");
    EXPECT_FALSE(target.query("c").has_value());
    EXPECT_EQ(target.query("d"), "%zz%4");
    EXPECT_FALSE(target.query("").has_value());
}

TEST(SessionCode, StandsInAPathAsItIs) {
    EXPECT_TRUE(isSessionCode("Ab-9._~"));
    for (const std::string text : {"", "A B", "A/B", "A%", "È"}) EXPECT_FALSE(isSessionCode(text)) << text;
    EXPECT_EQ(upperCaseCode("ab-9ì"), "AB-9ì");
}

TEST(PracticeRequest, FindsAHeaderInAnyCase) {
    const PracticeRequest request{"GET", "/", {{"hOST", "a"}, {"Host", "b"}}, ""};
    EXPECT_EQ(request.header("Host"), "a");
    EXPECT_EQ(request.header("Hos"), "");
}

}  // namespace
}  // namespace vantrel::practice::test
