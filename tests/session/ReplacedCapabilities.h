#pragma once

#include "platform/Computer.h"

namespace vantrel {

/// Capabilities that a test puts in the place of a computer's own; null for none.
struct ReplacedCapabilities {
    Application* application = nullptr;
    Alerts* alerts = nullptr;
    Windows* windows = nullptr;
    StatusBar* statusBar = nullptr;

    Computer in(const Computer& computer) const {
        return {application != nullptr ? *application : computer.application,
                alerts != nullptr ? *alerts : computer.alerts,
                windows != nullptr ? *windows : computer.windows,
                statusBar != nullptr ? *statusBar : computer.statusBar,
                computer.screens,
                computer.spaces,
                computer.overlays,
                computer.keyboardTaps,
                computer.windowList,
                computer.workspace,
                computer.applicationOpener,
                computer.frontmostApplication,
                computer.runningApplications,
                computer.processLauncher,
                computer.accessibility,
                computer.accessibilityTrust,
                computer.captureAuthorization,
                computer.dispatch,
                computer.mainRunLoop,
                computer.threads,
                computer.clock,
                computer.log,
                computer.userDefaults,
                computer.urls,
                computer.urlSession,
                computer.json,
                computer.unicode,
                computer.dates,
                computer.files,
                computer.mainBundle};
    }
};

}  // namespace vantrel
