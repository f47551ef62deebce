#include "tests/simulation/classes/RandomNumbers.h"

#include <numeric>

namespace vantrel::simulation {

RandomNumbers RandomNumbers::branch() {
    return RandomNumbers(next());
}

std::size_t RandomNumbers::below(std::size_t count) {
    return static_cast<std::size_t>(next() % count);
}

long long RandomNumbers::from(long long least, long long most) {
    return least + static_cast<long long>(below(static_cast<std::size_t>(most - least + 1)));
}

std::size_t RandomNumbers::weighted(std::span<const int> weights) {
    auto drawn = static_cast<int>(below(static_cast<std::size_t>(std::accumulate(weights.begin(), weights.end(), 0))));
    std::size_t place = 0;
    while (drawn >= weights[place]) drawn -= weights[place++];
    return place;
}

/// A counter whose bits are mixed well.
std::uint64_t RandomNumbers::next() {
    state_ += 0x9e3779b97f4a7c15ULL;
    std::uint64_t value = state_;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31);
}

}  // namespace vantrel::simulation
