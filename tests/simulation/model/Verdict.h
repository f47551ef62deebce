#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "tests/simulation/model/Judgement.h"

namespace vantrel::simulation {

/// Collects what is broken. One thread.
class Verdict {
  public:
    /// What is objected to from now on breaks this rule.
    void turnTo(std::string_view rule) { rule_ = rule; }

    void object(std::size_t line, std::string why) { broken_.push_back({std::string(rule_), line, std::move(why)}); }

    std::vector<BrokenRule> take() { return std::move(broken_); }

  private:
    std::string_view rule_;
    std::vector<BrokenRule> broken_;
};

}  // namespace vantrel::simulation
