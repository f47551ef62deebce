#pragma once

#include <string>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomMoments.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// What the participant tries in a lockdown without ending it as a rule: keys, other applications, windows, menus.
class RandomParticipant {
  public:
    RandomParticipant(RandomNumbers numbers, WrittenClass& written, const Plan& plan)
        : numbers_(numbers), written_(written), plan_(plan) {}

    void draw(Span lockdown, int count);

  private:
    void add(Milliseconds at, std::string action);
    void step(Milliseconds at);
    void pressKey(Milliseconds at);
    void useApplication(Milliseconds at);
    void useWindow(Milliseconds at);
    void useMenu(Milliseconds at);
    void askToEnd(Milliseconds at);
    void quit(Milliseconds at);
    void pressAtRandom(Milliseconds at);
    /// The browser or another application.
    std::string someApplication();

    RandomNumbers numbers_;
    WrittenClass& written_;
    const Plan& plan_;
};

}  // namespace vantrel::simulation
