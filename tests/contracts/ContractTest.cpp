#include "tests/contracts/ContractTest.h"

#include <optional>
#include <utility>

namespace vantrel::contracts {

ContractTest::ContractTest() : host_(makeContractHost()) {}

ContractTest::~ContractTest() = default;

void ContractTest::SetUp() {
    const auto obstacle = host_->obstacle(testing::UnitTest::GetInstance()->current_test_suite()->name());
    if (obstacle) GTEST_SKIP() << "SKIPPED: " << *obstacle;
}

void ContractTest::TearDown() {
    host_.reset();
}

void ContractTest::note(std::string text) {
    const std::lock_guard guard(mutex_);
    notes_.push_back(std::move(text));
}

ContractTest::Notes ContractTest::notes() const {
    const std::lock_guard guard(mutex_);
    return notes_;
}

bool ContractTest::eventually(const std::function<bool()>& condition) {
    constexpr double step = 0.01;
    constexpr double limit = 30;
    for (double waited = 0; waited < limit; waited += step) {
        if (condition()) return true;
        host().letTimePass(step);
    }
    return condition();
}

bool ContractTest::noted(std::size_t count) {
    return eventually([this, count] { return notes().size() >= count; });
}

namespace {

void skipOrFail(const std::optional<std::string>& reason) {
    if (reason) GTEST_SKIP() << "SKIPPED: declined: " << *reason;
    FAIL() << "the system declined what it always does";
}

}  // namespace

void ContractTest::expectText(const PlatformError& failure) {
    EXPECT_FALSE(failure.localizedDescription.empty());
    EXPECT_TRUE(computer().unicode.isValidUTF8(failure.localizedDescription)) << failure.localizedDescription;
}

bool ContractTest::granted(bool done, const std::optional<std::string>& reason) {
    if (!done) skipOrFail(reason);
    return done;
}

bool ContractTest::keepTheRunLoopWaiting(const std::function<void()>& calls) {
    bool ran = false;
    host().onMain([&] {
        const auto timer = computer().mainRunLoop.scheduledTimer(0.01, true, [&ran] { ran = true; });
        computer().threads.sleep(0.05);
        calls();
        timer->invalidate();
    });
    return !ran;
}

}  // namespace vantrel::contracts
