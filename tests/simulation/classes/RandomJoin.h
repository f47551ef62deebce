#pragma once

#include <string>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// The participant on the join screen: typing, mistakes, presses, prompts and alerts, until a lockdown should stand.
class RandomJoin {
  public:
    RandomJoin(RandomNumbers numbers, WrittenClass& written, Plan& plan)
        : numbers_(numbers), written_(written), plan_(plan) {}

    /// Begins at that moment, and returns when the lockdown stands if all goes well.
    Milliseconds draw(Milliseconds at, const std::string& code, bool isFirst);

  private:
    void add(Milliseconds at, std::string action);
    Milliseconds answerUpdate(Milliseconds at);
    Milliseconds mistakes(Milliseconds at);
    void type(Milliseconds at, const std::string& code, bool isFirst);
    void press(Milliseconds at);
    Milliseconds answerAccessibility(Milliseconds outcome);
    Milliseconds answerPrompts(Milliseconds outcome);
    void pressAgain(Milliseconds outcome, Milliseconds lockdown, const std::string& code);

    RandomNumbers numbers_;
    WrittenClass& written_;
    Plan& plan_;
};

}  // namespace vantrel::simulation
