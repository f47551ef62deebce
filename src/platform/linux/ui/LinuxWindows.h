#pragma once

#include "platform/linux/ui/LinuxWindow.h"
#include "platform/ui/Window.h"

namespace vantrel::linuxdesktop {

class LinuxWindows final : public Windows {
  public:
    explicit LinuxWindows(const WindowDependencies& dependencies) : dependencies_(dependencies) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                     ActionHandler onAction) override;

  private:
    const WindowDependencies dependencies_;
};

}  // namespace vantrel::linuxdesktop
