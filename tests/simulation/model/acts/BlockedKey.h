#pragma once

#include <string_view>

namespace vantrel::simulation {

/// The name by which a key such as "cmd+shift+tab" is blocked; empty if it passes.
std::string_view blockedName(std::string_view key);

}  // namespace vantrel::simulation
