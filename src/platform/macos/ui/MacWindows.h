#pragma once

#include "platform/ui/Window.h"

namespace vantrel::macos {

class MacWindows final : public Windows {
  public:
    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                     ActionHandler onAction) override;
};

}  // namespace vantrel::macos
