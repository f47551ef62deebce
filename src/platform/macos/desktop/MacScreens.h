#pragma once

#include "platform/desktop/Screens.h"

namespace vantrel::macos {

class MacScreens final : public Screens {
  public:
    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    bool screensHaveSeparateSpaces() const override;
    [[nodiscard]] std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) override;
};

}  // namespace vantrel::macos
