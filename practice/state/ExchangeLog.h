#pragma once

#include <cstdint>
#include <vector>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/state/ReceivedExchange.h"

namespace vantrel::practice {

/// Every exchange in the order received. Not guarded: PracticeServer's mutex is.
class ExchangeLog {
  public:
    /// Returns the exchange's number. A reply that goes out at once counts as delivered until something else is heard.
    std::uint64_t record(const PracticeRequest& request, const PracticeReply& reply, bool bent, double now);
    /// A number from before the last clear is ignored.
    void noteDelivery(std::uint64_t number, bool delivered);
    /// Numbers go on counting.
    void clear();

    const std::vector<ReceivedExchange>& exchanges() const { return exchanges_; }

  private:
    std::vector<ReceivedExchange> exchanges_;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace vantrel::practice
