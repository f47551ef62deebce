#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "practice/messages/RequestTarget.h"

namespace vantrel::practice::test {
namespace {

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

}  // namespace
}  // namespace vantrel::practice::test
