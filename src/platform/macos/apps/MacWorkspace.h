#pragma once

#include "platform/apps/Workspace.h"

namespace vantrel::macos {

class MacWorkspace final : public Workspace {
  public:
    bool open(const URL& url) override;
};

}  // namespace vantrel::macos
