#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "platform/portable/PortableJSONSerialization.h"

namespace vantrel {
namespace {

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(JSON, ReadsEveryKindOfValue) {
    const auto value = PortableJSONSerialization().parse(
        R"( {"a":null,"b":true,"c":-1.5e2,"d":"è\u00e8\n","e":[1,{}],"f":{"g":[]}} )");
    ASSERT_TRUE(value);
    const JSONObject expected{{"a", JSONValue()},
                              {"b", true},
                              {"c", -150.0},
                              {"d", "èè\n"},
                              {"e", JSONArray{1.0, JSONObject()}},
                              {"f", JSONObject{{"g", JSONArray()}}}};
    EXPECT_EQ(JSONValue(expected), *value);
}

TEST(JSON, KeepsTrueAndOneApart) {
    const auto value = PortableJSONSerialization().parse("[true,1]");
    ASSERT_TRUE(value);
    EXPECT_NE(value->array()->at(0), value->array()->at(1));
    EXPECT_EQ(nullptr, value->array()->at(1).boolean());
}

TEST(JSON, TakesTheLastOfEqualKeys) {
    EXPECT_EQ(JSONValue(JSONObject{{"a", 2.0}}), PortableJSONSerialization().parse(R"({"a":1,"a":2})"));
}

TEST(JSON, RefusesATopLevelThatIsNeitherArrayNorObject) {
    for (const char* text : {"null", "true", "1", "\"a\"", "", " ", "\n"})
        EXPECT_FALSE(PortableJSONSerialization().parse(text)) << text;
}

TEST(JSON, RefusesWhatIsNotJSON) {
    for (const char* text : {"{", "[1,]", "{\"a\" 1}", "{a:1}", "[1] [2]", "[1]x", "[01]", "['a']", "[\"\t\"]", "[NaN]",
                             "[1e999]", "// x\n[]", "[\"\\ud800\"]", "<html>"}) {
        EXPECT_FALSE(PortableJSONSerialization().parse(text)) << text;
    }
}

TEST(JSON, RefusesAZeroByteAndWhatFollowsIt) {
    EXPECT_FALSE(PortableJSONSerialization().parse(std::string_view("{}\0", 3)));
    EXPECT_FALSE(PortableJSONSerialization().parse(std::string_view("{}\0garbage", 10)));
    EXPECT_TRUE(PortableJSONSerialization().parse("[\"\\u0000\"]"));
}

TEST(JSON, RefusesBytesThatAreNotUTF8) {
    for (const char* text : {"[\"\xff\"]", "[\"\xc0\xaf\"]", "[\"\xed\xa0\x80\"]", "[\"\xe8\"]", "\xff\xfe[]"}) {
        EXPECT_FALSE(PortableJSONSerialization().parse(text));
    }
}

TEST(JSON, ReadsAndWrites512LevelsAndNoMore) {
    EXPECT_TRUE(PortableJSONSerialization().parse(nested(512)));
    EXPECT_FALSE(PortableJSONSerialization().parse(nested(513)));
    EXPECT_FALSE(PortableJSONSerialization().parse(std::string(10'000'000, '[')));
    JSONValue deep = JSONArray();
    for (int level = 1; level < 511; ++level) deep = JSONArray{deep};
    EXPECT_TRUE(PortableJSONSerialization().serialise({{"a", deep}}));
    EXPECT_FALSE(PortableJSONSerialization().serialise({{"a", JSONArray{deep}}}));
}

/// An array of `count` zeros, at least 1.
std::string zeros(std::size_t count) {
    std::string text = "[0";
    for (std::size_t written = 1; written < count; ++written) text += ",0";
    return text + "]";
}

TEST(JSON, ReadsAMillionValuesAndNoMore) {
    EXPECT_TRUE(PortableJSONSerialization().parse(zeros(999'999)));
    EXPECT_FALSE(PortableJSONSerialization().parse(zeros(1'000'000)));
    EXPECT_FALSE(PortableJSONSerialization().parse(zeros(4'000'000)));
    std::string containers = "[[]";
    for (int written = 1; written < 1'000'000; ++written) containers += ",[]";
    EXPECT_FALSE(PortableJSONSerialization().parse(containers + "]"));
}

TEST(JSON, ReadsAReplyOfAMebibyte) {
    const std::string text(1'048'576, 'x');
    EXPECT_EQ(JSONValue(JSONObject{{"title", text}}),
              PortableJSONSerialization().parse(R"({"title":")" + text + R"("})"));
    EXPECT_TRUE(PortableJSONSerialization().parse(zeros(524'288)));
}

TEST(JSON, WritesCompactlyWithSortedKeysAndWholeNumbersWithoutAPoint) {
    const JSONObject object{{"z", 1.0},
                            {"a", JSONArray{true, JSONValue(), -2.5, "è\"\\\n/"}},
                            {"m", JSONObject{{"k", 9007199254740991.0}}}};
    EXPECT_EQ(R"({"a":[true,null,-2.5,"è\"\\\n\/"],"m":{"k":9007199254740991},"z":1})",
              PortableJSONSerialization().serialise(object));
    EXPECT_EQ("{}", PortableJSONSerialization().serialise({}));
}

TEST(JSON, DoesNotWriteWhatJSONCannotHold) {
    EXPECT_FALSE(PortableJSONSerialization().serialise({{"a", "\xff"}}));
    EXPECT_FALSE(PortableJSONSerialization().serialise({{"\xff", 1.0}}));
    EXPECT_FALSE(PortableJSONSerialization().serialise({{"a", std::numeric_limits<double>::infinity()}}));
    EXPECT_FALSE(PortableJSONSerialization().serialise({{"a", std::numeric_limits<double>::quiet_NaN()}}));
}

TEST(JSON, ReadsBackWhatItWrote) {
    const JSONObject object{{"text", "ß → 🔒\x01"}, {"number", 0.1}, {"large", 1e300}, {"no", false}};
    const auto text = PortableJSONSerialization().serialise(object);
    ASSERT_TRUE(text);
    EXPECT_EQ(JSONValue(object), PortableJSONSerialization().parse(*text));
}

}  // namespace
}  // namespace vantrel
