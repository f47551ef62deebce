#include "platform/linux/apps/LinuxFrontmostApplication.h"

#include "platform/linux/apps/LinuxRunningApplications.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

std::shared_ptr<RunningApplication> LinuxFrontmostApplication::frontmostApplication() const {
    MainThread::require("frontmostApplication");
    const auto active = windows_.activeWindow();
    return active ? applications_.ofWindow(active->window, active->owner) : nullptr;
}

}  // namespace vantrel::linuxdesktop
