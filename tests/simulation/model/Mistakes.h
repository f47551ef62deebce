#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace vantrel::simulation {

struct Mistake {
    std::string kind;  // "a line is dropped"
    std::string what;  // the line
    std::string transcript;
};

/// A mistake in a line of the client's, or in one that it has to act upon: dropped, repeated, exchanged with the next
/// of the same thread, moved, with another number, time or letter. None if the one that was drawn changes nothing.
std::optional<Mistake> makeMistake(const std::string& transcript, std::mt19937& random);

}  // namespace vantrel::simulation
