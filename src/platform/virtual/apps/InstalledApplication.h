#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/virtual/world/AppWindow.h"

namespace vantrel::virtualmac {

/// Another application, or this one. Times are in seconds.
struct ApplicationDescription {
    /// Also the owner name of its windows. Empty: it has none.
    std::string name;
    std::optional<std::string> bundleIdentifier;
    /// Ignores a polite request to end, and signal 15.
    bool ignoresTerminate = false;
    /// Until it carries out a request to end.
    double exitDelay = 0;
    /// Whether it is listed among the running applications.
    bool isApplication = true;
    /// forceTerminate reports success, but nothing happens.
    bool ignoresForceTerminate = false;
    /// forceTerminate reports failure.
    bool refusesForceTerminate = false;
    /// Until signal 9 takes effect, which it always does in the end.
    double killDelay = 0;
    /// Its process becomes a zombie.
    bool leavesZombie = false;
    double activationDelay = 0.1;
    /// Accepts a request to come to the front, but does not come.
    bool declinesActivation = false;
    bool exitsWithLastWindow = false;
};

/// What happens when an executable is started.
struct InstalledApplication {
    ApplicationDescription application;
    /// The client cannot start it and gets this system error.
    std::optional<std::string> startFailure;
    /// Until it is listed among the running applications.
    double appearsAfter = 0.1;
    /// A second start hands over to the oldest running instance of the same bundle, which opens the windows. The
    /// started process ends after this time.
    std::optional<double> handsOverIn;
    /// The started process ends this many seconds after its start. Another one of the same bundle, which opens the
    /// windows, appears this many seconds after that start.
    struct Fork {
        double exitsAfter = 0.2;
        double goesOnAfter = 0.3;
    };
    std::optional<Fork> forks;
    /// It ends by itself after this time.
    std::optional<double> exitsAfter;
    /// They open only once it is listed.
    std::vector<NewWindow> windows;
};

/// What the executable does, depending on its arguments.
using ApplicationFactory = std::function<InstalledApplication(const std::vector<std::string>& arguments)>;

/// The browsers as on a participant's Mac: a window appears half a second to a second after the start, and a second
/// start hands over to the running instance.
InstalledApplication chrome();
InstalledApplication edge();
InstalledApplication firefox();
InstalledApplication safari();

inline constexpr const char* chromePath = "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
inline constexpr const char* edgePath = "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge";
inline constexpr const char* firefoxPath = "/Applications/Firefox.app/Contents/MacOS/firefox";
inline constexpr const char* safariPath = "/Applications/Safari.app/Contents/MacOS/Safari";

}  // namespace vantrel::virtualmac
