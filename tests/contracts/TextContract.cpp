#include <limits>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

class JSONContract : public ContractTest {};
class URLContract : public ContractTest {};
class UnicodeContract : public ContractTest {};
class DateContract : public ContractTest {};

TEST_F(JSONContract, ReadsArraysAndObjectsOnly) {
    EXPECT_TRUE(computer().json.parse("[]"));
    EXPECT_TRUE(computer().json.parse(" {\"a\": [1, \"b\", null, false]} "));
    for (const char* text : {"", "1", "true", "\"a\"", "null", "{", "[1,]", "{}x", "<p>"}) {
        EXPECT_FALSE(computer().json.parse(text)) << text;
    }
}

TEST_F(JSONContract, KeepsTrueAndOneApart) {
    const auto value = computer().json.parse(R"({"yes":true,"one":1})");
    ASSERT_TRUE(value);
    const JSONObject& object = *value->object();
    ASSERT_NE(nullptr, object.at("yes").boolean());
    EXPECT_TRUE(*object.at("yes").boolean());
    EXPECT_EQ(nullptr, object.at("one").boolean());
    EXPECT_EQ(JSONValue(1.0), object.at("one"));
}

TEST_F(JSONContract, RefusesBytesThatAreNotUTF8) {
    EXPECT_FALSE(computer().json.parse("[\"\xff\"]"));
    EXPECT_FALSE(computer().json.parse("[\"\xc0\x80\"]"));
}

TEST_F(JSONContract, RefusesDeepNesting) {
    EXPECT_TRUE(computer().json.parse(std::string(512, '[') + std::string(512, ']')));
    EXPECT_FALSE(computer().json.parse(std::string(513, '[') + std::string(513, ']')));
    EXPECT_FALSE(computer().json.parse(std::string(1'000'000, '[')));
}

// The queue's threads have small stacks, and the server chooses the depth.
// With the array itself. What is longer may be refused.
TEST_F(JSONContract, ReadsAMillionValues) {
    constexpr std::size_t most = 1'000'000;
    std::string document = "[1";
    for (std::size_t values = 2; values < most; ++values) document += ",1";
    const auto value = computer().json.parse(document + "]");
    ASSERT_TRUE(value && value->array());
    EXPECT_EQ(most - 1, value->array()->size());
}

TEST_F(JSONContract, ReadsTheDeepestNestingOnAQueueOfTheBackground) {
    for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{\"a\":", "}")}) {
        std::string text;
        for (int level = 0; level < 511; ++level) text += open;
        text += "[true]";
        for (int level = 0; level < 511; ++level) text += close;
        computer().dispatch.userInitiatedQueue().async([this, text] {
            const auto value = computer().json.parse(text);
            const JSONValue* innermost = value ? &*value : nullptr;
            int levels = 0;
            while (innermost != nullptr && innermost->boolean() == nullptr) {
                ++levels;
                innermost = innermost->array() != nullptr ? &innermost->array()->at(0) : &innermost->object()->at("a");
            }
            note(std::to_string(levels));
        });
    }
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"512", "512"}));
}

TEST_F(JSONContract, ReadsBackWhatItWrote) {
    const JSONObject object{{"text", "è \"🔒\"\n\t\x01"},
                            {"yes", true},
                            {"none", JSONValue()},
                            {"list", JSONArray{1.0, -2.5, JSONObject{{"k", "v"}}}}};
    const auto text = computer().json.serialise(object);
    ASSERT_TRUE(text);
    EXPECT_EQ(std::string::npos, text->find('\n'));
    const auto back = computer().json.parse(*text);
    ASSERT_TRUE(back);
    EXPECT_EQ(JSONValue(object), *back);
}

TEST_F(JSONContract, DoesNotWriteATextThatIsNotUTF8) {
    EXPECT_FALSE(computer().json.serialise({{"a", "\xff"}}));
}

TEST_F(JSONContract, DoesNotWriteANumberThatIsNotFinite) {
    using Limits = std::numeric_limits<double>;
    for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        EXPECT_FALSE(computer().json.serialise({{"a", number}})) << number;
        EXPECT_FALSE(computer().json.serialise({{"a", JSONArray{1.0, number}}})) << number;
    }
}

TEST_F(URLContract, FormsOnlyWhatStandsAsItIs) {
    for (const char* text : {"http://a.example:80/b?c=d", "https://a/%20", "a.example/api", "//a"}) {
        const auto url = computer().urls.form(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(text, url->absoluteString);
    }
    for (const char* text : {"", " ", "http://a b/", "http://a/\n", "http://è/", "http://a/%zz", "http://a/<>"}) {
        EXPECT_FALSE(computer().urls.form(text)) << text;
    }
}

TEST_F(URLContract, EncodesForAQuery) {
    EXPECT_EQ("a%20%C3%A8%25%23&=+/?", computer().urls.addingPercentEncodingForQuery("a è%#&=+/?"));
    EXPECT_FALSE(computer().urls.addingPercentEncodingForQuery("\xff"));
}

TEST_F(UnicodeContract, UpperCasesWithoutALanguage) {
    EXPECT_EQ("ABC-123", computer().unicode.uppercased("abc-123"));
    EXPECT_EQ("STRASSE È I", computer().unicode.uppercased("straße è i"));
}

TEST_F(UnicodeContract, EachByteThatIsNoUTF8IsReplaced) {
    EXPECT_EQ("A\uFFFDB", computer().unicode.uppercased("a\xff"
                                                        "b"));
    EXPECT_EQ("A\uFFFD\uFFFD", computer().unicode.uppercased("a\xe2\x82"));
}

TEST_F(UnicodeContract, AZeroCharacterIsACharacterAsAnyOther) {
    const std::string before("a\0b", 3);
    EXPECT_EQ(std::string("A\0B", 3), computer().unicode.uppercased(before));
    EXPECT_TRUE(computer().unicode.isValidUTF8(before));
}

TEST_F(UnicodeContract, KnowsUTF8) {
    EXPECT_TRUE(computer().unicode.isValidUTF8("è🔒"));
    EXPECT_TRUE(computer().unicode.isValidUTF8(""));
    for (const char* bytes : {"\xff", "\xc3", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        EXPECT_FALSE(computer().unicode.isValidUTF8(bytes));
    }
}

TEST_F(DateContract, WritesWholeSecondsInUTC) {
    EXPECT_EQ("1970-01-01T00:00:00Z", computer().dates.string(0));
    EXPECT_EQ("2024-05-17T09:41:07Z", computer().dates.string(1715938867.9));
}

TEST_F(DateContract, TheCalendarIsAfterTheYear2020) {
    EXPECT_GT(computer().clock.secondsSince1970(), 1577836800);
}

}  // namespace
}  // namespace vantrel::contracts
