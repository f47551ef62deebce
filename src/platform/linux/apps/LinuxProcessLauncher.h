#pragma once

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

/// Starts processes as startReaped() says. A path that is missing, a folder, not executable or of an unknown format is
/// told at once; a wrapper script that fails later is not.
class LinuxProcessLauncher final : public ProcessLauncher {
  public:
    std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                          const std::vector<std::string>& arguments) override;
    /// Zero and negative numbers, which name groups of processes, are refused.
    bool sendSignal(ProcessIdentifier process, int signal) override;
};

}  // namespace vantrel::linuxdesktop
