#pragma once

#include "platform/apps/ApplicationOpener.h"

namespace vantrel::macos {

/// The workspace is asked on the main thread, whatever thread the call comes from. The request goes through the run
/// loop, not the main queue: the main queue stops under an alert that one of its blocks has opened, and the opening
/// must not.
class MacApplicationOpener final : public ApplicationOpener {
  public:
    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;
};

}  // namespace vantrel::macos
