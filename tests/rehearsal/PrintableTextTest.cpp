#include <gtest/gtest.h>

#include "rehearsal/transcript/PrintableText.h"

namespace vantrel::rehearsal {
namespace {

TEST(Printable, ShowsControlCharactersButTheLineBreak) {
    EXPECT_EQ(printable("a\tb\x1B[2J\x7F\r\nc"), "a\\x09b\\x1B[2J\\x7F\\x0D\nc");
    EXPECT_EQ(printable("è già 🔒"), "è già 🔒");
}

TEST(PrintableBody, IsCompactWithSortedKeysWhenItIsJSON) {
    EXPECT_EQ(printableBody("{ \"b\" : [ 1, true ], \"a\" : \"è\" }"), R"({"a":"è","b":[1,true]})");
    EXPECT_EQ(printableBody(" [ ] "), "[]");
}

TEST(PrintableBody, IsLeftAsItIsWhenItIsOtherText) {
    EXPECT_EQ(printableBody("manutenzione  in corso"), "manutenzione  in corso");
    EXPECT_EQ(printableBody("{\"a\":tru"), "{\"a\":tru");
    EXPECT_EQ(printableBody(" 17 "), " 17 ");
}

TEST(PrintableBody, IsHexadecimalWhenItIsNoText) {
    EXPECT_EQ(printableBody("a\xFF"), "bytes 61FF");
}

TEST(PrintableBody, IsCutBetweenCharactersWhenItIsLong) {
    EXPECT_EQ(printableBody(std::string(2000, 'a')), std::string(2000, 'a'));
    EXPECT_EQ(printableBody(std::string(2001, 'a')), std::string(200, 'a') + "… (2001 bytes)");
    const auto shifted = "a" + [] {
        std::string text;
        for (int index = 0; index < 1000; ++index) text += "è";
        return text;
    }();
    const auto shown = printableBody(shifted);
    EXPECT_EQ(shown.size(), 199 + std::string("… (2001 bytes)").size());
    EXPECT_EQ(printableBody(std::string(2001, '\xFF')).size(), std::string("bytes ").size() + 400 + 16);
}

}  // namespace
}  // namespace vantrel::rehearsal
