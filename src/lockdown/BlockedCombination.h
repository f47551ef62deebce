#pragma once

#include <string_view>

#include "platform/keyboard/KeyboardTap.h"

namespace vantrel {

/// The name of the key combination if it would leave, hide or duplicate the meeting. Empty if the key may pass. Option
/// is ignored. Any thread; allocates nothing.
std::string_view blockedCombination(const KeyEvent& event) noexcept;

}  // namespace vantrel
