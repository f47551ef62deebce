#pragma once

#include <string_view>

namespace vantrel {

/// The version that the server is told and the join screen shows.
inline constexpr std::string_view fixedClientVersion = "2.0-macOS";

}  // namespace vantrel
