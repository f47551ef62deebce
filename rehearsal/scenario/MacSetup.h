#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/Screens.h"
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

/// The Mac as it stands when the client is launched.
struct MacSetup {
    /// Empty: a bundle without an identifier.
    std::optional<std::string> bundleIdentifier = "biz.quorrin.vantrel";
    std::uint64_t seed = 0;
    /// Seconds since 1970 at the launch: 2026-03-02T08:00:00Z.
    double calendar = 1772438400;
    std::string home = "/Users/maria";
    /// The primary display first.
    std::vector<Screen> displays = {{"Schermo integrato", {{0, 0}, {1440, 900}}}};
    bool separateSpaces = true;
    bool accessibility = true;
    AuthorizationStatus microphone = AuthorizationStatus::authorized;
    AuthorizationStatus camera = AuthorizationStatus::authorized;
    std::map<std::string, std::string> settings;
    std::vector<InstalledBrowser> browsers = {InstalledBrowser::chrome};
    /// Of those that behave otherwise.
    std::map<InstalledBrowser, Behaviour> behaviours;
    /// Seconds that a change to or from full screen takes; the virtual Mac's own when empty.
    std::optional<double> fullScreenDuration;
    /// Seconds during which window flags are stale after a change of Space; the virtual Mac's own when empty.
    std::optional<double> flagDelay;
    std::vector<OtherApplication> applications;
};

}  // namespace vantrel::rehearsal
