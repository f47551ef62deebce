#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include "practice/bodies/ReplyRule.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

/// The reply rules in the order they were added. Only the first one that matches and is not used up changes a reply.
/// Any thread.
class ReplyRules {
  public:
    static constexpr std::size_t rulesKept = 256;

    struct Entry {
        std::uint64_t number = 0;
        ReplyRule rule;
        std::uint64_t used = 0;

        bool isUsedUp() const { return rule.times && used >= *rule.times; }
    };

    /// Returns the rule's number, counted from 1. Rules that are used up stay until the list is full; then the oldest
    /// of them is removed. Empty if there is no place.
    std::optional<std::uint64_t> add(ReplyRule rule);
    void clear();
    /// The rule for this request's reply, if any. Counts one use of it.
    std::optional<ReplyRule> ruleFor(const PracticeRequest& request);

    std::vector<Entry> entries() const;

  private:
    mutable std::mutex mutex_;
    std::vector<Entry> entries_;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace vantrel::practice
