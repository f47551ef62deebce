#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tests/contracts/ContractHost.h"

namespace vantrel::contracts {

/// A test that must pass on every computer. It asserts order and lower bounds of time, never an upper bound.
class ContractTest : public testing::Test {
  protected:
    using Notes = std::vector<std::string>;

    ContractTest();
    ~ContractTest() override;

    /// Skips the test if its suite cannot run here.
    void SetUp() override;

    /// Ends the computer while the test's own members still exist. An override must call it last.
    void TearDown() override;

    Computer& computer() { return host_->computer(); }
    ContractHost& host() { return *host_; }

    /// Any thread.
    void note(std::string text);
    Notes notes() const;

    /// Lets time pass until the condition holds. False if it does not within half a minute.
    bool eventually(const std::function<bool()>& condition);
    /// Lets time pass until there are `count` notes.
    bool noted(std::size_t count);

    /// A failure is told in UTF-8.
    void expectText(const PlatformError& failure);

    /// Whether the system did what it may decline. If not, the test has failed or, if there is a reason why the system
    /// may decline it, is skipped with that; either way it has nothing left to ask.
    static bool granted(bool done, const std::optional<std::string>& reason);
    /// The same of a request to bring an application to the front, or of its effect.
    bool activated(bool done) { return granted(done, host().mayDeclineActivation()); }

    /// Makes the calls on the main thread while a timer of its run loop is due. False if the timer ran meanwhile: what
    /// then runs may destroy the very object that is being called.
    bool keepTheRunLoopWaiting(const std::function<void()>& calls);

    /// Seconds of uptime.
    double now() { return computer().clock.uptime(); }

    /// A real computer's clock is read a moment before or after what it measures.
    static constexpr double tolerance = 0.002;

  private:
    mutable std::mutex mutex_;
    Notes notes_;
    std::unique_ptr<ContractHost> host_;
};

}  // namespace vantrel::contracts
