#include <gtest/gtest.h>

#include "server/Whitespace.h"

namespace vantrel {
namespace {

TEST(Whitespace, TrimsSpacesAndTabsAtBothEnds) {
    EXPECT_EQ(trimmed(" \t a b\tc \t"), "a b\tc");
}

TEST(Whitespace, LeavesLineBreaksAlone) {
    EXPECT_EQ(trimmed(" \n a \r\n "), "\n a \r\n");
    EXPECT_EQ(trimmed("\v\fa\v"), "\v\fa\v");
}

TEST(Whitespace, TrimsEverySpaceSeparatorOfUnicode) {
    for (const std::string space :
         {"\u0020", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007",
          "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"}) {
        EXPECT_EQ(trimmed(space + space + "x" + space), "x");
    }
}

TEST(Whitespace, KeepsWhatOnlyLooksLikeASpace) {
    // Zero-width space, word joiner, byte order mark, next line, line and paragraph separators: these have other
    // categories.
    for (const std::string other : {"\u200B", "\u2060", "\uFEFF", "\u0085", "\u2028", "\u2029", "\u180E"}) {
        EXPECT_EQ(trimmed(other + "x" + other), other + "x" + other);
    }
}

TEST(Whitespace, MakesATextOfSpacesEmpty) {
    EXPECT_EQ(trimmed("\u00A0 \t\u3000"), "");
}

TEST(Whitespace, TakesBytesThatAreNotUTF8AsTheyAre) {
    EXPECT_EQ(trimmed(" \xA0\xC2 "), "\xA0\xC2");
    EXPECT_EQ(trimmed("\x80\x80"), "\x80\x80");
}

}  // namespace
}  // namespace vantrel
