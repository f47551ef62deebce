#pragma once

#include "platform/apps/Workspace.h"

namespace vantrel::linuxdesktop {

/// Opens addresses with the desktop's default program.
class LinuxWorkspace final : public Workspace {
  public:
    bool open(const URL& url) override;
};

}  // namespace vantrel::linuxdesktop
