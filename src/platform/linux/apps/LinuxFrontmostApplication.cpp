#include "platform/linux/apps/LinuxFrontmostApplication.h"

#include "platform/linux/apps/LinuxRunningApplications.h"
#include "platform/linux/threads/MainThread.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

std::shared_ptr<RunningApplication> LinuxFrontmostApplication::frontmostApplication() const {
    MainThread::require("frontmostApplication");
    const auto window = windows_.active();
    // The window manager may still name a window that is gone; the server would then report the next owner of its
    // number.
    return window && windows_.frame(*window) ? applications_.ofWindow(*window, windows_.owner(*window)) : nullptr;
}

}  // namespace vantrel::linuxdesktop
