#include "platform/macos/apps/MacFrontmostApplication.h"

#include "platform/macos/apps/MacRunningApplications.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

std::shared_ptr<RunningApplication> MacFrontmostApplication::frontmostApplication() const {
    requireMainThread("frontmostApplication");
    return MacRunningApplication::wrap(NSWorkspace.sharedWorkspace.frontmostApplication);
}

}  // namespace vantrel::macos
