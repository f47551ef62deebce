#pragma once

#include <utility>

#include "platform/apps/Bundle.h"

namespace vantrel::virtualmac {

/// The main bundle.
class VirtualBundle final : public Bundle {
  public:
    explicit VirtualBundle(std::optional<std::string> identifier) : identifier_(std::move(identifier)) {}

    std::optional<std::string> identifier() const override { return identifier_; }

  private:
    const std::optional<std::string> identifier_;
};

}  // namespace vantrel::virtualmac
