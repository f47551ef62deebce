#include "rules/Door.h"

#include <array>

namespace door {
namespace {

constexpr std::array<std::string_view, 2> tickets = {"day", "night"};

constexpr bool isTicket(std::string_view text) {
    for (const auto ticket : tickets) {
        if (ticket == text) return true;
    }
    return false;
}

}  // namespace

bool Door::enter(std::string_view ticket) {
    if (!isTicket(ticket) || inside_ >= places) return false;
    ++inside_;
    print("in");
    print("greeted");
    return true;
}

Light Door::light() const {
    return inside_ < places ? Light::green : Light::red;
}

void Door::print(std::string_view line) {
    if (const auto log = log_.lock()) log->emplace_back(line);
}

std::string_view name(Light light) {
    switch (light) {
        case Light::green:
            return "green";
        case Light::red:
            return "red";
        case Light::off:
            break;
    }
    return {};
}

int paidFor(int coins) {
    int paid = 0;
    while (coins >= 2) {
        coins -= 2;
        ++paid;
    }
    return paid;
}

}  // namespace door
