#pragma once

#include "platform/apps/FrontmostApplication.h"

namespace vantrel::macos {

class MacFrontmostApplication final : public FrontmostApplication {
  public:
    std::shared_ptr<RunningApplication> frontmostApplication() const override;
};

}  // namespace vantrel::macos
