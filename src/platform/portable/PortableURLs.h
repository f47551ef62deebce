#pragma once

#include "platform/network/URLs.h"

namespace vantrel {

/// Forms URLs by the grammar of RFC 3986. Any thread; no state.
class PortableURLs final : public URLs {
  public:
    std::optional<URL> form(std::string_view text) const override;
    std::optional<std::string> addingPercentEncodingForQuery(std::string_view text) const override;
};

}  // namespace vantrel
