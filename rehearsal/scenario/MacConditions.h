#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/Geometry.h"
#include "platform/system/CaptureAuthorization.h"
#include "rehearsal/scenario/Behaviour.h"

namespace vantrel::rehearsal {

/// Another application that runs on the Mac.
struct OtherApplication {
    std::string name;
    std::string bundleIdentifier;
    Behaviour behaviour = {};
    /// Its window, in points from the top left of the primary display; none when empty.
    std::optional<Rect> window = {};
};

/// What can be installed beside Safari, which is part of the system.
enum class InstalledBrowser { chrome, edge, firefox };

/// What can change on the Mac while it runs. Empty values change nothing.
struct MacConditions {
    std::optional<bool> accessibility;
    std::optional<AuthorizationStatus> microphone;
    std::optional<AuthorizationStatus> camera;
    /// All that are installed.
    std::optional<std::vector<InstalledBrowser>> browsers;
    /// Of those that behave otherwise.
    std::map<InstalledBrowser, Behaviour> behaviours;
    /// Seconds that a change to or from full screen takes.
    std::optional<double> fullScreenDuration;
    /// Seconds during which window flags are stale after a change of Space.
    std::optional<double> flagDelay;
    /// Applications that start.
    std::vector<OtherApplication> applications;
};

}  // namespace vantrel::rehearsal
