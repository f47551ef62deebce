#pragma once

#include "tests/macos/standins/census/ObjectCensus.h"

namespace vantrel::standins {

/// Fails the running test if its end finds other objects than its creation.
class CensusGuard {
  public:
    CensusGuard() = default;
    ~CensusGuard();
    CensusGuard(const CensusGuard&) = delete;
    CensusGuard& operator=(const CensusGuard&) = delete;

  private:
    ObjectCensus census_;
};

}  // namespace vantrel::standins
