#pragma once

#include <string>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomMoments.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// What happens around the participant: displays, permissions, replies, other programs, faults of the Mac, the lid.
class RandomWorld {
  public:
    RandomWorld(RandomNumbers numbers, WrittenClass& written, const Plan& plan)
        : numbers_(numbers), written_(written), plan_(plan) {}

    void draw(Span span, int count);

  private:
    void add(Milliseconds at, std::string action);
    void step(Milliseconds at);
    void changeDisplays(Milliseconds at);
    void changePermissions(Milliseconds at);
    void bendReplies(Milliseconds at);
    void startPrograms(Milliseconds at);
    void disturbKeyboard(Milliseconds at);
    void failElements(Milliseconds at);
    void failSystem(Milliseconds at);
    void closeLid(Milliseconds at);
    std::string display();

    RandomNumbers numbers_;
    WrittenClass& written_;
    const Plan& plan_;
};

}  // namespace vantrel::simulation
