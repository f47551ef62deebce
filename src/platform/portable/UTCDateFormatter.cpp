#include "platform/portable/UTCDateFormatter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace vantrel {

namespace {

constexpr double firstSecond = -62167219200.0;  // 0000-01-01T00:00:00Z
constexpr double lastSecond = 253402300799.0;   // 9999-12-31T23:59:59Z

}  // namespace

std::string UTCDateFormatter::string(double secondsSince1970) const {
    using namespace std::chrono;
    const double finite = std::isnan(secondsSince1970) ? 0 : secondsSince1970;
    const sys_seconds moment{seconds(static_cast<long long>(std::clamp(std::floor(finite), firstSecond, lastSecond)))};
    const auto day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss time{moment - day};
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text.data();
}

}  // namespace vantrel
