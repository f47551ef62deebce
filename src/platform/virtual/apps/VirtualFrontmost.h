#pragma once

#include <memory>

#include "platform/apps/FrontmostApplication.h"
#include "platform/virtual/apps/VirtualProcesses.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The application in front: the one that came there last and still runs. At first there is none.
class VirtualFrontmost final : public FrontmostApplication {
  public:
    VirtualFrontmost(Engine& engine, const VirtualDesktop& desktop, const VirtualProcesses& processes)
        : engine_(engine), desktop_(desktop), processes_(processes) {}

    std::shared_ptr<RunningApplication> frontmostApplication() const override {
        engine_.mainThreadCall("FrontmostApplication.frontmostApplication");
        for (const FrontCandidate& candidate : desktop_.front()) {
            const auto process = processes_.find(candidate.process);
            if (process && process->isListed()) return process;
        }
        return nullptr;
    }

  private:
    Engine& engine_;
    const VirtualDesktop& desktop_;
    const VirtualProcesses& processes_;
};

}  // namespace vantrel::virtualmac
