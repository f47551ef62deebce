#pragma once

#include "platform/system/UnicodeText.h"

namespace vantrel::macos {

class MacUnicodeText final : public UnicodeText {
  public:
    /// Bytes that are not UTF-8 become U+FFFD.
    std::string uppercased(std::string_view text) const override;
    bool isValidUTF8(std::string_view bytes) const override;
};

}  // namespace vantrel::macos
