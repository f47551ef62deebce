#pragma once

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// The Mac at the launch: its system, displays, permissions and settings.
class RandomMac {
  public:
    explicit RandomMac(RandomNumbers numbers) : numbers_(numbers) {}

    void draw(WrittenClass& written, Plan& plan);

  private:
    void drawSystem(WrittenClass& written);
    void drawDisplays(WrittenClass& written, Plan& plan);
    void drawPermissions(WrittenClass& written, Plan& plan);
    void drawSettings(WrittenClass& written, Plan& plan);
    void drawFront(WrittenClass& written);

    RandomNumbers numbers_;
};

}  // namespace vantrel::simulation
