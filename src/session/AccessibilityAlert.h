#pragma once

#include "platform/apps/Workspace.h"
#include "platform/network/URLs.h"
#include "platform/ui/Alerts.h"

namespace vantrel {

/// Explains how to grant the Accessibility permission, and opens the pane for it if the user chooses so. Main thread;
/// returns after the alert has been dismissed.
void showAccessibilityAlert(Alerts& alerts, const URLs& urls, Workspace& workspace);

}  // namespace vantrel
