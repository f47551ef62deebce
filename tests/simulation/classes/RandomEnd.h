#pragma once

#include <string>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// What brings a lockdown to its end, sometimes several things at one moment.
class RandomEnd {
  public:
    RandomEnd(RandomNumbers numbers, WrittenClass& written, const Plan& plan)
        : numbers_(numbers), written_(written), plan_(plan) {}

    /// How long this lockdown lasts as a rule.
    Milliseconds drawDuration();
    /// Returns the moment after which nothing of it is to come.
    Milliseconds draw(Span lockdown, const std::string& code);

  private:
    void add(Milliseconds at, std::string action);
    Milliseconds way(Milliseconds at, const std::string& code);
    Milliseconds byServer(Milliseconds at, const std::string& code);
    Milliseconds byMenu(Milliseconds at);
    Milliseconds byBrowser(Milliseconds at);
    Milliseconds bySpace(Milliseconds at);
    Milliseconds byErrors(Span lockdown);

    RandomNumbers numbers_;
    WrittenClass& written_;
    const Plan& plan_;
    bool byErrors_ = false;
};

}  // namespace vantrel::simulation
