#pragma once

#include "platform/Computer.h"

namespace vantrel {

/// The computer made of these parts: an object with a member for each capability, with the names that `Computer` uses.
/// The parts outlive every user of the computer.
template <class Parts>
Computer computerOf(Parts& parts) {
    return {.application = parts.application,
            .alerts = parts.alerts,
            .windows = parts.windows,
            .statusBar = parts.statusBar,
            .screens = parts.screens,
            .spaces = parts.spaces,
            .overlays = parts.overlays,
            .keyboardTaps = parts.keyboardTaps,
            .windowList = parts.windowList,
            .workspace = parts.workspace,
            .applicationOpener = parts.applicationOpener,
            .frontmostApplication = parts.frontmostApplication,
            .runningApplications = parts.runningApplications,
            .processLauncher = parts.processLauncher,
            .accessibility = parts.accessibility,
            .accessibilityTrust = parts.accessibilityTrust,
            .captureAuthorization = parts.captureAuthorization,
            .dispatch = parts.dispatch,
            .mainRunLoop = parts.mainRunLoop,
            .threads = parts.threads,
            .clock = parts.clock,
            .log = parts.log,
            .userDefaults = parts.userDefaults,
            .urls = parts.urls,
            .urlSession = parts.urlSession,
            .json = parts.json,
            .unicode = parts.unicode,
            .dates = parts.dates,
            .files = parts.files,
            .mainBundle = parts.mainBundle};
}

}  // namespace vantrel
