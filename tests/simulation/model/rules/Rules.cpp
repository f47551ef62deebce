#include "tests/simulation/model/rules/Rules.h"

#include "tests/simulation/model/rules/Endings.h"

namespace vantrel::simulation {
namespace {

constexpr Rule rules[] = {
    {"the client misuses nothing", noMisuse},
    {"one end for each lockdown", oneEndForEachLockdown},
};

}  // namespace

std::span<const Rule> everyRule() {
    return rules;
}

}  // namespace vantrel::simulation
