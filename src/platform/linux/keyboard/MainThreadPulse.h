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
/// time. Everything but the answer happens on one thread.
class MainThreadPulse {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long an answer may take.
    static constexpr std::chrono::seconds patience{1};

    /// `post` runs a block on the main thread.
    explicit MainThreadPulse(std::function<void(Block)> post) : post_(std::move(post)) {}

    /// Asks, unless a question is already open.
    void ask(Time now);

    /// Whether an answer has been missing for too long. An answer that has arrived ends the question.
    bool isOverdue(Time now);

    /// When to call isOverdue() next. Empty if no question is open.
    std::optional<Time> due() const;

  private:
    const std::function<void(Block)> post_;
    const std::shared_ptr<std::atomic<bool>> answered_ = std::make_shared<std::atomic<bool>>(true);
    std::optional<Time> asked_;
};

}  // namespace vantrel::linuxdesktop
