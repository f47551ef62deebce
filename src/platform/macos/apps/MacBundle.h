#pragma once

#include "platform/apps/Bundle.h"

namespace vantrel::macos {

class MacBundle final : public Bundle {
  public:
    std::optional<std::string> identifier() const override;
};

}  // namespace vantrel::macos
