#pragma once

#include <string>

#include "platform/ui/Alerts.h"
#include "platform/ui/Menu.h"

namespace vantrel {

inline constexpr const char* statusItemTitle = "🔒 Vantrel";

/// The menu of the status item: the running session, and the way to end it by hand.
Menu statusMenu(const std::string& sessionTitle, const std::string& sessionCode, Block onEndSession);

/// Asks whether to end the session. Main thread; returns after the alert has been dismissed.
bool confirmManualEnd(Alerts& alerts);

}  // namespace vantrel
