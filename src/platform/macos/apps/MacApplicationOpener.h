#pragma once

#include "platform/apps/ApplicationOpener.h"

namespace vantrel::macos {

/// The workspace is asked on the main thread, whatever thread the call comes from, by its run loop: the main queue
/// stands still under an alert that a block of it has opened, and the opening must not.
class MacApplicationOpener final : public ApplicationOpener {
  public:
    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;
};

}  // namespace vantrel::macos
