#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/desktop/Accessibility.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/Spaces.h"
#include "platform/desktop/WindowList.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

class CheckedScreens final : public Screens {
  public:
    CheckedScreens(Engine& engine, Screens& screens) : engine_(engine), screens_(screens) {}

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    bool screensHaveSeparateSpaces() const override;
    std::unique_ptr<Observation> observeScreenParametersDidChange(Block block) override;

  private:
    Engine& engine_;
    Screens& screens_;
};

class CheckedSpaces final : public Spaces {
  public:
    CheckedSpaces(Engine& engine, Spaces& spaces) : engine_(engine), spaces_(spaces) {}

    std::unique_ptr<Observation> observeActiveSpaceDidChange(Block block) override;

  private:
    Engine& engine_;
    Spaces& spaces_;
};

class CheckedWindowList final : public WindowList {
  public:
    CheckedWindowList(Engine& engine, const WindowList& list) : engine_(engine), list_(list) {}

    std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const override;

  private:
    Engine& engine_;
    const WindowList& list_;
};

class CheckedAccessibility final : public Accessibility {
  public:
    CheckedAccessibility(Engine& engine, Accessibility& accessibility)
        : engine_(engine), accessibility_(accessibility) {}

    std::shared_ptr<AccessibilityElement> application(ProcessIdentifier process) const override;
    std::unique_ptr<AccessibilityTimeLimit> limitTime() override;

  private:
    Engine& engine_;
    Accessibility& accessibility_;
};

}  // namespace vantrel::virtualmac
