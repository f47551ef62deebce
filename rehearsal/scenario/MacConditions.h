#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/system/CaptureAuthorization.h"
#include "platform/virtual/ui/AlertPanel.h"
#include "platform/virtual/world/Activations.h"
#include "rehearsal/scenario/Behaviour.h"
#include "rehearsal/scenario/InstalledBrowser.h"

namespace vantrel::rehearsal {

/// Another application that runs on the Mac.
struct OtherApplication {
    /// Empty: it has none.
    std::string name;
    /// Empty: it has none.
    std::optional<std::string> bundleIdentifier;
    Behaviour behaviour = {};
    /// Its window, in points from the top left of the primary display; none when empty.
    std::optional<Rect> window = {};
};

/// What becomes of the keys when the Accessibility permission is taken away under a standing tap.
enum class LostAccessibility {
    /// The system disables the tap.
    frees,
    /// Every key waits as long as the client has a tap.
    freezes,
    /// The same, and the system goes on calling the client trusted.
    hides,
};

/// What can change on the Mac while it runs. Empty values change nothing.
struct MacConditions {
    std::optional<bool> accessibility;
    std::optional<AuthorizationStatus> microphone;
    std::optional<AuthorizationStatus> camera;
    /// Empty: as the macOS does it.
    std::optional<virtualmac::ActivationAnswer> activation;
    /// How alerts are let in over another application's full screen.
    std::optional<virtualmac::AlertsLetIn> alertsLetIn;
    /// Whether the panel of an alert brings the client to the front although it asks not to.
    std::optional<bool> alertsActivate;
    std::optional<LostAccessibility> lostAccessibility;
    /// All that are installed. Safari, which is part of the system, is so without being among them.
    std::optional<InstalledBrowsers> browsers;
    /// Whether Safari is installed at all.
    std::optional<bool> safari;
    /// Seconds that a change to or from full screen takes.
    std::optional<double> fullScreenDuration;
    /// Seconds during which window flags are stale after a change of Space.
    std::optional<double> flagDelay;
    /// Applications that start.
    std::vector<OtherApplication> applications;
};

}  // namespace vantrel::rehearsal
