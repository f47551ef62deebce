#pragma once

#include "platform/system/UnicodeText.h"

namespace vantrel {

/// Unicode text through ICU, in its root locale. Any thread; no state.
class ICUText final : public UnicodeText {
  public:
    std::string uppercased(std::string_view bytes) const override;
    bool isValidUTF8(std::string_view bytes) const override;
};

}  // namespace vantrel
