#pragma once

#include <map>
#include <string>

namespace vantrel::simulation {

/// How often one situation came.
struct Count {
    long long times = 0;
    /// Of these, while a lockdown stood.
    long long inLockdown = 0;
    /// Classes in which it came.
    long long classes = 0;

    bool operator==(const Count&) const = default;
};

/// By group and situation, such as "ends: by the server".
using Counts = std::map<std::string, Count>;

void add(Counts& all, const Counts& more);

/// A table for people, by group; within a group what came most often comes first.
std::string table(const Counts& counts);

}  // namespace vantrel::simulation
