#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/network/URLSession.h"
#include "platform/virtual/network/NetworkAnswer.h"
#include "practice/PracticeServer.h"
#include "rehearsal/scenario/ServerSetup.h"

namespace vantrel::rehearsal {

/// The virtual network with the practice server in it. Any thread.
class RehearsalNetwork {
  public:
    /// `calendar` in seconds since 1970.
    RehearsalNetwork(const ServerSetup& setup, std::function<double()> calendar);

    /// The answer to a request that is made now.
    virtualmac::NetworkAnswer answer(const URLRequest& request);

    /// Conditions that are not empty hold from now on.
    void apply(const ServerConditions& conditions);
    /// False if there is no such session.
    bool endSession(const std::string& code) { return server_.endSession(code); }
    /// Takes precedence over the existing rules.
    void add(ExchangeRule rule);
    void removeRules();

  private:
    struct Entry {
        ExchangeRule rule;
        std::uint64_t used = 0;
    };

    double latency();
    ExchangeRule ruleFor(const practice::PracticeRequest& request);

    const std::string address_;
    practice::PracticeServer server_;
    std::mutex mutex_;
    double latency_ = 0.05;
    /// The first one that matches and is not used up applies.
    std::vector<Entry> rules_;
};

}  // namespace vantrel::rehearsal
