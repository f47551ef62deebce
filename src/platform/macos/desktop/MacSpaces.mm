#include "platform/macos/desktop/MacSpaces.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/bridge/NotificationObservation.h"
#include "platform/macos/threads/MainThread.h"

namespace vantrel::macos {

std::unique_ptr<Observation> MacSpaces::observeActiveSpaceDidChange(Block block) {
    requireMainThread("observeActiveSpaceDidChange");
    // The workspace's own notification center: the default one gets no notifications of Spaces.
    return std::make_unique<NotificationObservation>(NSWorkspace.sharedWorkspace.notificationCenter,
                                                     NSWorkspaceActiveSpaceDidChangeNotification, std::move(block));
}

}  // namespace vantrel::macos
