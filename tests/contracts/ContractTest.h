#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tests/contracts/ContractHost.h"

namespace vantrel::contracts {

/// A test that holds on every computer: it asserts order and lower bounds of time, never an upper bound.
class ContractTest : public testing::Test {
  protected:
    using Notes = std::vector<std::string>;

    ContractTest();
    ~ContractTest() override;

    /// Skips the test where there is an obstacle to its suite.
    void SetUp() override;

    /// Ends the computer while the test's own members still live. Who overrides it calls it last.
    void TearDown() override;

    Computer& computer() { return host_->computer(); }
    ContractHost& host() { return *host_; }

    /// Any thread.
    void note(std::string text);
    Notes notes() const;

    /// Lets time pass until the condition holds; false when it does not after half a minute.
    bool eventually(const std::function<bool()>& condition);
    /// Lets time pass until there are so many notes.
    bool noted(std::size_t count);

    /// Seconds of uptime.
    double now() { return computer().clock.uptime(); }

    /// Clocks of real computers are read a moment before or after what they measure.
    static constexpr double tolerance = 0.002;

  private:
    mutable std::mutex mutex_;
    Notes notes_;
    std::unique_ptr<ContractHost> host_;
};

}  // namespace vantrel::contracts
