#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/WindowList.h"

namespace vantrel {

/// Why the recorder looked: it began, the timer fired, or a notice came.
enum class LookCause { start, time, space, screens };

struct FrontApplication {
    ProcessIdentifier process = 0;
    std::optional<std::string> bundle;
    std::optional<std::string> name;
};

/// What the computer showed at one moment. Coordinates as in the platform headers: screens count from the bottom left,
/// windows from the top left of the primary display.
struct Look {
    LookCause cause = LookCause::time;
    double uptime = 0;
    double secondsSince1970 = 0;
    std::optional<FrontApplication> front;
    std::vector<Screen> screens;
    std::optional<Screen> mainScreen;
    bool separateSpaces = false;
    /// Front to back. Empty optional if the system gave no list.
    std::optional<std::vector<WindowEntry>> windows;
};

}  // namespace vantrel
