#include "practice/state/ExchangeLog.h"

#include <utility>

namespace vantrel::practice {

namespace {

std::size_t bytesOf(const PracticeRequest& request) {
    std::size_t bytes = request.method.size() + request.path.size() + request.body.size();
    // The containers of headers count too: many short headers need more memory than their text.
    for (const auto& header : request.headers) bytes += sizeof header + header.first.size() + header.second.size();
    return bytes;
}

}  // namespace

std::uint64_t ExchangeLog::record(const PracticeRequest& request, const PracticeReply& reply, bool changed,
                                  double now) {
    const bool atOnce = !reply.dropConnection && !reply.stallAfterHeaders && reply.delaySeconds <= 0;
    ReceivedExchange exchange{0, now, request, reply.dropConnection ? 0 : reply.status, changed, atOnce};
    const std::lock_guard lock(mutex_);
    exchange.number = nextNumber_++;
    bytes_ += bytesOf(exchange.request);
    exchanges_.push_back(std::move(exchange));
    while (exchanges_.size() > exchangesKept || bytes_ > bytesKept) {
        bytes_ -= bytesOf(exchanges_.front().request);
        exchanges_.pop_front();
    }
    return nextNumber_ - 1;
}

void ExchangeLog::noteDelivery(std::uint64_t number, bool delivered) {
    const std::lock_guard lock(mutex_);
    if (exchanges_.empty() || number < exchanges_.front().number || number >= nextNumber_) return;
    exchanges_[number - exchanges_.front().number].delivered = delivered;
}

void ExchangeLog::clear() {
    const std::lock_guard lock(mutex_);
    exchanges_.clear();
    bytes_ = 0;
}

std::vector<ReceivedExchange> ExchangeLog::exchanges() const {
    const std::lock_guard lock(mutex_);
    return {exchanges_.begin(), exchanges_.end()};
}

}  // namespace vantrel::practice
