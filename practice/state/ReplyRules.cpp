#include "practice/state/ReplyRules.h"

#include <algorithm>
#include <utility>

namespace vantrel::practice {

std::optional<std::uint64_t> ReplyRules::add(ReplyRule rule) {
    const std::lock_guard lock(mutex_);
    if (entries_.size() >= rulesKept) {
        const auto usedUp =
            std::find_if(entries_.begin(), entries_.end(), [](const Entry& entry) { return entry.isUsedUp(); });
        if (usedUp == entries_.end()) return std::nullopt;
        entries_.erase(usedUp);
    }
    entries_.push_back({nextNumber_, std::move(rule), 0});
    return nextNumber_++;
}

void ReplyRules::clear() {
    const std::lock_guard lock(mutex_);
    entries_.clear();
}

std::optional<ReplyRule> ReplyRules::ruleFor(const PracticeRequest& request) {
    const std::lock_guard lock(mutex_);
    for (Entry& entry : entries_) {
        if (entry.isUsedUp() || !entry.rule.matches(request)) continue;
        ++entry.used;
        return entry.rule;
    }
    return std::nullopt;
}

std::vector<ReplyRules::Entry> ReplyRules::entries() const {
    const std::lock_guard lock(mutex_);
    return entries_;
}

}  // namespace vantrel::practice
