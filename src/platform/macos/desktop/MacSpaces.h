#pragma once

#include "platform/desktop/Spaces.h"

namespace vantrel::macos {

class MacSpaces final : public Spaces {
  public:
    [[nodiscard]] std::unique_ptr<Observation> observeActiveSpaceDidChange(Block block) override;
};

}  // namespace vantrel::macos
