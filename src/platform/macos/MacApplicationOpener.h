#pragma once

#include "platform/ApplicationOpener.h"

namespace vantrel::macos {

/// The workspace is asked from the main queue, whatever thread the call comes from.
class MacApplicationOpener final : public ApplicationOpener {
  public:
    void open(const std::vector<URL>& urls, const URL& application, bool activates, Completion completion) override;
};

}  // namespace vantrel::macos
