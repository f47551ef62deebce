#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/portable/ICUText.h"
#include "platform/portable/UTCDateFormatter.h"

namespace vantrel {
namespace {

TEST(Text, UpperCasesAllOfUnicodeWithoutALanguage) {
    EXPECT_EQ("ABC123", ICUText().uppercased("abc123"));
    EXPECT_EQ("STRASSE ÈÀ", ICUText().uppercased("straße èà"));
    EXPECT_EQ("FI ΣΊΣΥΦΟΣ I", ICUText().uppercased("ﬁ σίσυφος i"));
    EXPECT_EQ("", ICUText().uppercased(""));
}

TEST(Text, KnowsUTF8) {
    for (const char* text : {"", "a", "è", "€", "🔒", "\xf4\x8f\xbf\xbf", "\xef\xbf\xbe"}) {
        EXPECT_TRUE(ICUText().isValidUTF8(text)) << text;
    }
    EXPECT_TRUE(ICUText().isValidUTF8(std::string_view("\0", 1)));
    for (const char* text : {"\x80", "\xc1\xbf", "\xc3", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xf0\x8f\xbf\xbf",
                             "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xe2\x82", "a\xff"}) {
        EXPECT_FALSE(ICUText().isValidUTF8(text));
    }
}

TEST(Dates, AreWrittenInUTCWithWholeSeconds) {
    const UTCDateFormatter dates;
    EXPECT_EQ("1970-01-01T00:00:00Z", dates.string(0));
    EXPECT_EQ("2024-05-17T09:41:07Z", dates.string(1715938867));
    EXPECT_EQ("2024-02-29T23:59:59Z", dates.string(1709251199.999));
    EXPECT_EQ("1969-12-31T23:59:59Z", dates.string(-0.25));
    EXPECT_EQ("2000-03-01T00:00:00Z", dates.string(951868800));
}

TEST(Dates, StayWithinFourDigitsOfYears) {
    const UTCDateFormatter dates;
    EXPECT_EQ("9999-12-31T23:59:59Z", dates.string(253402300799));
    EXPECT_EQ("9999-12-31T23:59:59Z", dates.string(1e300));
    EXPECT_EQ("9999-12-31T23:59:59Z", dates.string(std::numeric_limits<double>::infinity()));
    EXPECT_EQ("0000-01-01T00:00:00Z", dates.string(-1e300));
    EXPECT_EQ("1970-01-01T00:00:00Z", dates.string(std::nan("")));
}

}  // namespace
}  // namespace vantrel
