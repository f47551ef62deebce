#pragma once

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// The server at the launch: its sessions, the versions it tells, its latency, and replies that are bent.
class RandomServer {
  public:
    explicit RandomServer(RandomNumbers numbers) : numbers_(numbers) {}

    void draw(WrittenClass& written, Plan& plan);

  private:
    void drawSessions(WrittenClass& written, Plan& plan);
    void drawVersion(WrittenClass& written, Plan& plan);
    void drawReplies(WrittenClass& written);

    RandomNumbers numbers_;
};

}  // namespace vantrel::simulation
