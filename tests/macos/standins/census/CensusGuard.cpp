#include "tests/macos/standins/census/CensusGuard.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel::standins {

CensusGuard::~CensusGuard() {
    const std::string difference = census_.difference();
    if (!difference.empty()) ADD_FAILURE() << "objects are left, or are missing:\n" << difference;
}

}  // namespace vantrel::standins
