#pragma once

#include <string>

#include "tests/simulation/classes/Plan.h"
#include "tests/simulation/classes/RandomNumbers.h"
#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// The browsers with their manners, and what else runs on the Mac.
class RandomApplications {
  public:
    explicit RandomApplications(RandomNumbers numbers) : numbers_(numbers) {}

    void draw(WrittenClass& written, Plan& plan);

    /// Another application, as a step or a Mac has it.
    static std::string application(RandomNumbers& numbers, std::string* name = nullptr);

  private:
    void drawBrowser(WrittenClass& written, Plan& plan);
    std::string manners(bool isSafari);
    void drawOthers(WrittenClass& written, Plan& plan);

    RandomNumbers numbers_;
};

}  // namespace vantrel::simulation
