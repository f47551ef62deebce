#pragma once

#include "platform/apps/Bundle.h"

namespace vantrel::linuxdesktop {

/// Linux has no bundles. The client uses its identifier all the same.
class LinuxBundle final : public Bundle {
  public:
    std::optional<std::string> identifier() const override;
};

}  // namespace vantrel::linuxdesktop
