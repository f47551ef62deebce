#pragma once

#include <string_view>

namespace vantrel {

/// Says on standard error that the keyboard tap is lost, when, and why: from then on every key passes, and no line of
/// the log tells. `moment` is an internet date-time. A reader that does not read holds nobody up; the line is then
/// lost. Any thread.
void sayThatTheTapIsLost(std::string_view moment, std::string_view why);

}  // namespace vantrel
