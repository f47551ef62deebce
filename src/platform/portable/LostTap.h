#pragma once

#include <string_view>

namespace vantrel {

/// Seconds. While a tap stands, a Mac looks so often whether the client has lost the Accessibility permission, under
/// alerts and menus too, and asks so seldom for a second tap if it cannot tell.
inline constexpr double betweenLooksForLostTrust = 2;

/// Says on standard error that the keyboard tap is lost, when, and why: from then on every key passes, and no line of
/// the log tells. `moment` is an internet date-time. A reader that does not read holds nobody up; the line is then
/// lost. Any thread.
void sayThatTheTapIsLost(std::string_view moment, std::string_view why);

}  // namespace vantrel
