#include "platform/linux/ui/LinuxWindows.h"

#include <utility>

#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<Window> LinuxWindows::makeWindow(const WindowDescription& description, ActionHandler onAction) {
    MainThread::require("makeWindow");
    return std::make_unique<LinuxWindow>(description, std::move(onAction), dependencies_);
}

}  // namespace vantrel::linuxdesktop
