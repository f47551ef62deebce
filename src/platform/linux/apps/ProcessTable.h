#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

/// One process, as the kernel describes it now.
struct ProcessEntry {
    ProcessIdentifier process = 0;
    /// Clock ticks since the computer started. Together with the number, this identifies a process for good.
    std::uint64_t startTime = 0;
    ProcessIdentifier parent = 0;
    /// The path of the executable, or of the script if a shell runs one from a path.
    std::string executablePath;
    /// A shell runs it.
    bool isScript = false;
    std::vector<std::string> arguments;
    /// The X display that the process was started for, as displayName() writes it. Empty if it is not known.
    std::string display;
};

/// The processes, from /proc. A zombie counts as gone. Any thread.
class ProcessTable {
  public:
    /// Any user's process. For another user's, perhaps only the arguments are known.
    static std::optional<ProcessEntry> find(ProcessIdentifier process);
    /// The processes of this user, oldest first.
    static std::vector<ProcessEntry> all();

    /// The start time of a process. Empty if there is none or it is a zombie.
    static std::optional<std::uint64_t> startTime(ProcessIdentifier process);

    /// Where a process comes from: its number, parent and start time alone. Empty as above. Cheap.
    static std::optional<ProcessEntry> origin(ProcessIdentifier process);

    /// A DISPLAY value without its screen and without a needless host: ":1.0", "unix:1" and ":1" are the same display.
    static std::string displayName(std::string value);
};

}  // namespace vantrel::linuxdesktop
