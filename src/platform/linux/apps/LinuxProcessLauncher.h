#pragma once

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

class StartedBundles;

/// Starts processes with startReaped(). A path that is missing, a folder, not executable or of an unknown format is
/// reported at once. A wrapper script that fails later is not reported. For a browser's executable on macOS, the one
/// that the system has installed is started; see installedBrowser(). Its process is the application of macOS.
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
