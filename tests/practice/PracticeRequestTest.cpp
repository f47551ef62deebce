#include <gtest/gtest.h>

#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice::test {
namespace {

TEST(PracticeRequest, FindsAHeaderInAnyCase) {
    const PracticeRequest request{"GET", "/", {{"hOST", "a"}, {"Host", "b"}}, ""};
    EXPECT_EQ(request.header("Host"), "a");
    EXPECT_EQ(request.header("Hos"), "");
}

}  // namespace
}  // namespace vantrel::practice::test
