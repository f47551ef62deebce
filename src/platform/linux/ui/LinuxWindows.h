#pragma once

#include "platform/linux/ui/LinuxWindow.h"
#include "platform/ui/Window.h"

namespace vantrel::linuxdesktop {

class LinuxWindows final : public Windows {
  public:
    explicit LinuxWindows(const WindowSurroundings& surroundings) : surroundings_(surroundings) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description,
                                                     ActionHandler onAction) override;

  private:
    const WindowSurroundings surroundings_;
};

}  // namespace vantrel::linuxdesktop
