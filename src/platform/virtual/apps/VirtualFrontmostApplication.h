#pragma once

#include <memory>

#include "platform/apps/FrontmostApplication.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The application in front: the last one that came there and still runs. Initially none.
class VirtualFrontmostApplication final : public FrontmostApplication {
  public:
    VirtualFrontmostApplication(const VirtualDesktop& desktop, const VirtualProcessLauncher& processes)
        : desktop_(desktop), processes_(processes) {}

    std::shared_ptr<RunningApplication> frontmostApplication() const override {
        for (const FrontCandidate& candidate : desktop_.front()) {
            const auto process = processes_.find(candidate.process);
            if (process && process->isListed()) return process;
        }
        return nullptr;
    }

  private:
    const VirtualDesktop& desktop_;
    const VirtualProcessLauncher& processes_;
};

}  // namespace vantrel::virtualmac
