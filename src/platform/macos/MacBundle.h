#pragma once

#include "platform/Bundle.h"

namespace vantrel::macos {

class MacBundle final : public Bundle {
  public:
    std::optional<std::string> identifier() const override;
};

}  // namespace vantrel::macos
