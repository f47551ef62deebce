#pragma once

#include <string>

#include "tests/simulation/classes/RandomNumbers.h"

namespace vantrel::simulation {

/// Reply rules of all kinds, as a server or a step has them.
class RandomReplies {
  public:
    explicit RandomReplies(RandomNumbers& numbers) : numbers_(numbers) {}

    std::string toVersionCheck();
    std::string toJoin();
    /// Never says that the session has ended.
    std::string toHeartbeat();
    static std::string thatEnds(long long times);

  private:
    std::string rule(const std::string& to, long long times, const std::string& body);
    std::string ending();

    RandomNumbers& numbers_;
};

}  // namespace vantrel::simulation
