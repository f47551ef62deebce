#include <gtest/gtest.h>

#include "server/ServerReply.h"

namespace vantrel {
namespace {

const JSONObject object = {{"text", "a"}, {"yes", true}, {"one", 1.0}, {"null", JSONValue()}, {"list", JSONArray{"a"}}};

TEST(ServerReply, ReadsAStringWhereAStringIsExpected) {
    EXPECT_EQ(stringValue(object, "text"), "a");
    for (const auto* key : {"yes", "one", "null", "list", "absent"}) EXPECT_EQ(stringValue(object, key), std::nullopt);
}

TEST(ServerReply, ReadsABooleanWhereABooleanIsExpected) {
    EXPECT_EQ(booleanValue(object, "yes"), true);
    for (const auto* key : {"text", "one", "null", "list", "absent"}) {
        EXPECT_EQ(booleanValue(object, key), std::nullopt);
    }
}

}  // namespace
}  // namespace vantrel
