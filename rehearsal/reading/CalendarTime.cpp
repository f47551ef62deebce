#include "rehearsal/reading/CalendarTime.h"

#include <chrono>

namespace vantrel::rehearsal {
namespace {

constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";

int digits(std::string_view text, std::size_t position, std::size_t count) {
    int value = 0;
    for (const char digit : text.substr(position, count)) value = value * 10 + (digit - '0');
    return value;
}

bool hasForm(std::string_view text) {
    if (text.size() != form.size()) return false;
    for (std::size_t index = 0; index < form.size(); ++index) {
        const bool isDigit = text[index] >= '0' && text[index] <= '9';
        if (form[index] == 'd' ? !isDigit : text[index] != form[index]) return false;
    }
    return true;
}

}  // namespace

std::optional<double> secondsSince1970(std::string_view text) {
    if (!hasForm(text)) return std::nullopt;
    using namespace std::chrono;
    const year_month_day date{year{digits(text, 0, 4)}, month{static_cast<unsigned>(digits(text, 5, 2))},
                              day{static_cast<unsigned>(digits(text, 8, 2))}};
    const int hour = digits(text, 11, 2);
    const int minute = digits(text, 14, 2);
    const int second = digits(text, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return static_cast<double>(sys_days{date}.time_since_epoch().count()) * 86400.0 + hour * 3600 + minute * 60 +
           second;
}

}  // namespace vantrel::rehearsal
