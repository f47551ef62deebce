#include <gtest/gtest.h>

#include "browser/MeetingAddress.h"

namespace vantrel {
namespace {

TEST(MeetingAddress, OfABareCodeIsOnGoogleMeet) {
    EXPECT_EQ(meetingAddress("abc-defg-hij"), "https://meet.google.com/abc-defg-hij");
}

TEST(MeetingAddress, ThatBeginsWithHttpIsKept) {
    for (const char* address : {"https://meet.example/abc", "http://127.0.0.1:8080/meet", "http", "httpfoo"}) {
        EXPECT_EQ(meetingAddress(address), address);
    }
}

TEST(MeetingAddress, InUpperCaseIsTakenForACode) {
    EXPECT_EQ(meetingAddress("HTTPS://meet.example/abc"), "https://meet.google.com/HTTPS://meet.example/abc");
    EXPECT_EQ(meetingAddress("Http://meet.example"), "https://meet.google.com/Http://meet.example");
}

TEST(MeetingAddress, IsNotTrimmedNorChecked) {
    EXPECT_EQ(meetingAddress(" https://meet.example"), "https://meet.google.com/ https://meet.example");
    EXPECT_EQ(meetingAddress(""), "https://meet.google.com/");
    EXPECT_EQ(meetingAddress("/abc"), "https://meet.google.com//abc");
}

}  // namespace
}  // namespace vantrel
