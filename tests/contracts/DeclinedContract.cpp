#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/contracts/ContractTest.h"

namespace vantrel::contracts {
namespace {

/// What a test reports about something that a system may decline.
class DeclinedContract : public ContractTest {
  protected:
    static std::vector<testing::TestPartResult> reported(bool done, const std::optional<std::string>& reason) {
        testing::TestPartResultArray results;
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        EXPECT_EQ(granted(done, reason), done);
        std::vector<testing::TestPartResult> all;
        for (int index = 0; index < results.size(); ++index) all.push_back(results.GetTestPartResult(index));
        return all;
    }
};

TEST_F(DeclinedContract, WhatIsGrantedIsNeitherSkippedNorFailed) {
    EXPECT_EQ(reported(true, std::nullopt).size(), 0U);
    EXPECT_EQ(reported(true, "it may").size(), 0U);
}

TEST_F(DeclinedContract, WhatMayBeDeclinedIsSkippedWithItsReason) {
    const auto results = reported(false, "it may");
    ASSERT_EQ(results.size(), 1U);
    EXPECT_TRUE(results[0].skipped());
    EXPECT_NE(std::string(results[0].message()).find("SKIPPED: declined: it may"), std::string::npos);
}

TEST_F(DeclinedContract, WhatMayNotBeDeclinedFails) {
    const auto results = reported(false, std::nullopt);
    ASSERT_EQ(results.size(), 1U);
    EXPECT_TRUE(results[0].failed());
}

}  // namespace
}  // namespace vantrel::contracts
