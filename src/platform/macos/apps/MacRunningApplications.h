#pragma once

#include "platform/apps/RunningApplications.h"

namespace vantrel::macos {

class MacRunningApplications final : public RunningApplications {
  public:
    std::vector<std::shared_ptr<RunningApplication>> withBundleIdentifier(std::string_view identifier) const override;
    std::shared_ptr<RunningApplication> withProcessIdentifier(ProcessIdentifier process) const override;
};

}  // namespace vantrel::macos
