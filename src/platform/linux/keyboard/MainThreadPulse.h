#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Checks whether the main thread still answers. It wakes nobody unless asked, and has only one question open at a
/// time. Time in which the main thread only waited for a processor does not count: a busy computer is no client that
/// hangs. Everything but the answer happens on one thread.
class MainThreadPulse {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long an answer may take.
    static constexpr std::chrono::seconds patience{1};

    /// `post` runs a block on the main thread. `waited` says how long the main thread has waited for a processor so
    /// far.
    MainThreadPulse(std::function<void(Block)> post, std::function<std::chrono::nanoseconds()> waited)
        : post_(std::move(post)), waited_(std::move(waited)) {}

    /// Asks, unless a question is already open.
    void ask(Time now);

    /// Whether an answer has been missing for too long. An answer that has arrived ends the question.
    bool isOverdue(Time now);

    /// When to call isOverdue() next. Empty if no question is open.
    std::optional<Time> due() const;

  private:
    const std::function<void(Block)> post_;
    const std::function<std::chrono::nanoseconds()> waited_;
    const std::shared_ptr<std::atomic<bool>> answered_ = std::make_shared<std::atomic<bool>>(true);
    std::optional<Time> asked_;
    std::chrono::nanoseconds waitedBefore_{0};
    // Of the open question's time.
    std::chrono::nanoseconds waitedSince_{0};
};

}  // namespace vantrel::linuxdesktop
