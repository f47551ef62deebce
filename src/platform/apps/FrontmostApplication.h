#pragma once

#include <memory>

#include "platform/apps/RunningApplications.h"

namespace vantrel {

/// NSWorkspace frontmostApplication. Main thread.
class FrontmostApplication {
  public:
    virtual ~FrontmostApplication() = default;

    /// Null if no application is in front.
    virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
};

}  // namespace vantrel
