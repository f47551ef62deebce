#pragma once

#include "platform/desktop/WindowList.h"

namespace vantrel::macos {

class MacWindowList final : public WindowList {
  public:
    std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const override;
};

}  // namespace vantrel::macos
