#include <gtest/gtest.h>

#include "rehearsal/reading/CalendarTime.h"

namespace vantrel::rehearsal {
namespace {

TEST(CalendarTime, CountsSecondsSince1970) {
    EXPECT_EQ(secondsSince1970("1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(secondsSince1970("2026-03-02T08:00:00Z"), 1772438400);
    EXPECT_EQ(secondsSince1970("2024-02-29T23:59:59Z"), 1709251199);
    EXPECT_EQ(secondsSince1970("1969-12-31T23:59:59Z"), -1);
}

TEST(CalendarTime, TakesNoOtherForm) {
    for (const char* text :
         {"", "2026-03-02", "2026-03-02T08:00:00", "2026-03-02T08:00:00+00:00", "2026-3-02T08:00:00Z",
          "2026-03-02t08:00:00Z", "2026-03-02T08:00:00Z ", "dddd-dd-ddTdd:dd:ddZ"}) {
        EXPECT_EQ(secondsSince1970(text), std::nullopt) << text;
    }
}

TEST(CalendarTime, TakesNoMomentThatDoesNotExist) {
    for (const char* text : {"2026-02-29T08:00:00Z", "2026-13-01T08:00:00Z", "2026-00-01T08:00:00Z",
                             "2026-03-02T24:00:00Z", "2026-03-02T08:60:00Z", "2026-03-02T08:00:60Z"}) {
        EXPECT_EQ(secondsSince1970(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace vantrel::rehearsal
