#pragma once

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

class StartedBundles;

/// Starts processes with startReaped(). A path that is missing, a folder, not executable or of an unknown format is
/// reported at once. A wrapper script that fails later is not reported.
class LinuxProcessLauncher final : public ProcessLauncher {
  public:
    explicit LinuxProcessLauncher(StartedBundles& started) : started_(started) {}

    std::variant<ProcessIdentifier, PlatformError> launch(std::string_view executablePath,
                                                          const std::vector<std::string>& arguments) override;
    /// Refuses zero and negative numbers: they name process groups.
    bool sendSignal(ProcessIdentifier process, int signal) override;

  private:
    StartedBundles& started_;
};

}  // namespace vantrel::linuxdesktop
