#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/virtual/world/AppWindow.h"

namespace vantrel::virtualmac {

/// Another application, or this one. Times are seconds.
struct ApplicationDescription {
    /// Also the owner name of its windows. Empty: it has none.
    std::string name;
    std::optional<std::string> bundleIdentifier;
    /// A polite request to end is ignored, signal 15 included.
    bool ignoresTerminate = false;
    /// Until a request to end has been carried out.
    double exitDelay = 0;
    /// Whether it is listed among the running applications at all.
    bool isApplication = true;
    /// forceTerminate answers that it worked, and nothing happens.
    bool ignoresForceTerminate = false;
    /// forceTerminate answers that it failed.
    bool refusesForceTerminate = false;
    /// Until signal 9 has been carried out; nothing withstands it for ever.
    double killDelay = 0;
    /// Its process stays behind as a zombie.
    bool leavesZombie = false;
    double activationDelay = 0.1;
    /// Asked to come to the front, it answers that it will, and does not.
    bool declinesActivation = false;
    bool exitsWithLastWindow = false;
};

/// What happens when an executable is started.
struct InstalledApplication {
    ApplicationDescription application;
    /// It cannot be started by the client, and that is the system's error.
    std::optional<std::string> startFailure;
    /// Until it is listed among the running applications.
    double appearsAfter = 0.1;
    /// A second start hands over to the oldest running instance of the same bundle, which opens the windows; the
    /// started process ends this much later.
    std::optional<double> handsOverIn;
    /// The started process ends so many seconds after its start and another one of the same bundle, which opens the
    /// windows, goes on so many seconds after that start.
    struct Fork {
        double exitsAfter = 0.2;
        double goesOnAfter = 0.3;
    };
    std::optional<Fork> forks;
    /// It ends by itself.
    std::optional<double> exitsAfter;
    /// Not before it is listed.
    std::vector<NewWindow> windows;
};

/// What the executable is, by the arguments it is started with.
using ApplicationFactory = std::function<InstalledApplication(const std::vector<std::string>& arguments)>;

/// The browsers as a participant's Mac has them: a window half a second to a second after the start, a handing over to
/// the instance that runs.
InstalledApplication chrome();
InstalledApplication edge();
InstalledApplication firefox();
InstalledApplication safari();

inline constexpr const char* chromePath = "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome";
inline constexpr const char* edgePath = "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge";
inline constexpr const char* firefoxPath = "/Applications/Firefox.app/Contents/MacOS/firefox";
inline constexpr const char* safariPath = "/Applications/Safari.app/Contents/MacOS/Safari";

}  // namespace vantrel::virtualmac
