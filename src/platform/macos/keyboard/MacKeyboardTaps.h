#pragma once

#include "platform/keyboard/KeyboardTap.h"

namespace vantrel::macos {

class MacKeyboardTaps final : public KeyboardTaps {
  public:
    [[nodiscard]] std::unique_ptr<KeyboardTap> create(KeyDecision decision, KeyReport report) override;
};

}  // namespace vantrel::macos
