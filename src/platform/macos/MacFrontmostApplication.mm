#include "platform/macos/MacFrontmostApplication.h"

#include "platform/macos/MacRunningApplication.h"
#include "platform/macos/MainThread.h"

namespace vantrel::macos {

std::shared_ptr<RunningApplication> MacFrontmostApplication::frontmostApplication() const {
    requireMainThread("frontmostApplication");
    return MacRunningApplication::wrap(NSWorkspace.sharedWorkspace.frontmostApplication);
}

}  // namespace vantrel::macos
