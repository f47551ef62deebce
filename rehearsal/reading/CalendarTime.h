#pragma once

#include <optional>
#include <string_view>

namespace vantrel::rehearsal {

/// Seconds since 1970 for a time such as 2026-03-02T08:00:00Z. Empty for any other text.
std::optional<double> secondsSince1970(std::string_view text);

}  // namespace vantrel::rehearsal
