#pragma once

#include <string_view>

#include "platform/keyboard/KeyboardTap.h"

namespace vantrel {

/// The name of the key combination, where it would leave, hide or double the meeting; empty where the key may pass.
/// Option is not looked at. Any thread; allocates nothing.
std::string_view blockedCombination(const KeyEvent& event) noexcept;

}  // namespace vantrel
