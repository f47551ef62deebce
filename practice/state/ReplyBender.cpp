#include "practice/state/ReplyBender.h"

#include <utility>

namespace vantrel::practice {

std::uint64_t ReplyBender::add(BendRule rule) {
    entries_.push_back({nextNumber_, std::move(rule), 0});
    return nextNumber_++;
}

void ReplyBender::clear() {
    entries_.clear();
}

bool ReplyBender::bend(const PracticeRequest& request, PracticeReply& reply) {
    for (Entry& entry : entries_) {
        const bool usedUp = entry.rule.times && entry.used >= *entry.rule.times;
        if (usedUp || !entry.rule.matches(request)) continue;
        ++entry.used;
        entry.rule.applyTo(reply);
        return true;
    }
    return false;
}

}  // namespace vantrel::practice
