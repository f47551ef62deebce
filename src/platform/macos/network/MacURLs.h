#pragma once

#include "platform/network/URLs.h"

namespace vantrel::macos {

class MacURLs final : public URLs {
  public:
    std::optional<URL> form(std::string_view text) const override;
    std::optional<std::string> addingPercentEncodingForQuery(std::string_view text) const override;
};

}  // namespace vantrel::macos
