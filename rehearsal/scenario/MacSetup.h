#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/Screens.h"
#include "rehearsal/scenario/MacConditions.h"

namespace vantrel::rehearsal {

/// The Mac when the client is launched: what is fixed from then on, and its first conditions. Empty conditions have the
/// virtual Mac's defaults: everything granted, nothing else running.
struct MacSetup : MacConditions {
    /// Empty: a bundle without an identifier.
    std::optional<std::string> bundleIdentifier = "biz.quorrin.vantrel";
    std::uint64_t seed = 0;
    /// The system's major version.
    int macOS = 14;
    /// Seconds since 1970 at the launch: 2026-03-02T08:00:00Z.
    double calendar = 1772438400;
    std::string home = "/Users/maria";
    /// The primary display first.
    std::vector<Screen> displays = {{"Schermo integrato", {{0, 0}, {1440, 900}}}};
    bool separateSpaces = true;
    std::map<std::string, std::string> settings;

    MacSetup() { browsers.emplace()[BrowserName::chrome]; }
};

}  // namespace vantrel::rehearsal
