#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

/// One process as the kernel tells of it now.
struct ProcessEntry {
    ProcessIdentifier process = 0;
    /// Clock ticks since the computer started: with the number it names a process once and for all.
    std::uint64_t startTime = 0;
    /// Of the executable; of the script where an interpreter runs one from a path.
    std::string executablePath;
    std::vector<std::string> arguments;
    /// The X display that the process was started for, as displayName() writes it; empty when it cannot be told.
    std::string display;
};

/// The processes, from /proc. A zombie is gone. Any thread.
class ProcessTable {
  public:
    /// Whoever's it is; of another user's only the arguments may be known.
    static std::optional<ProcessEntry> find(ProcessIdentifier process);
    /// Those of this user, oldest first.
    static std::vector<ProcessEntry> all();

    /// When the process was started; empty when there is none or it is a zombie.
    static std::optional<std::uint64_t> startTime(ProcessIdentifier process);

    /// A DISPLAY value without its screen and without a needless host: ":1.0", "unix:1" and ":1" are one display.
    static std::string displayName(std::string value);
};

}  // namespace vantrel::linuxdesktop
