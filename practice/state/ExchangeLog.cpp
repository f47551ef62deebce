#include "practice/state/ExchangeLog.h"

namespace vantrel::practice {

std::uint64_t ExchangeLog::record(const PracticeRequest& request, const PracticeReply& reply, bool bent, double now) {
    const bool atOnce = !reply.dropConnection && !reply.stallAfterHeaders && reply.delaySeconds <= 0;
    exchanges_.push_back({nextNumber_, now, request, reply.dropConnection ? 0 : reply.status, bent, atOnce});
    return nextNumber_++;
}

void ExchangeLog::noteDelivery(std::uint64_t number, bool delivered) {
    if (exchanges_.empty() || number < exchanges_.front().number || number >= nextNumber_) return;
    exchanges_[number - exchanges_.front().number].delivered = delivered;
}

void ExchangeLog::clear() {
    exchanges_.clear();
}

}  // namespace vantrel::practice
