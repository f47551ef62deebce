#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/state/ReceivedExchange.h"

namespace vantrel::practice {

/// The newest exchanges in the order received, as many as fit into both limits. Any thread.
class ExchangeLog {
  public:
    static constexpr std::size_t exchangesKept = 10000;
    /// The total of methods, paths, headers and bodies.
    static constexpr std::size_t bytesKept = std::size_t{32} * 1024 * 1024;

    /// Returns the exchange's number. A reply without delay counts as delivered unless something else is reported.
    std::uint64_t record(const PracticeRequest& request, const PracticeReply& reply, bool changed, double now);
    /// Ignores a number that is no longer kept.
    void noteDelivery(std::uint64_t number, bool delivered);
    /// Numbering continues.
    void clear();

    std::vector<ReceivedExchange> exchanges() const;

  private:
    mutable std::mutex mutex_;
    std::deque<ReceivedExchange> exchanges_;
    std::size_t bytes_ = 0;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace vantrel::practice
