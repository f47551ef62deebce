#pragma once

#include "platform/system/UserDefaults.h"

namespace vantrel::macos {

class MacUserDefaults final : public UserDefaults {
  public:
    std::optional<std::string> string(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;
};

}  // namespace vantrel::macos
