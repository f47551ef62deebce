#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::linuxdesktop {

/// The tests' own application, installed in a folder as "Google Chrome.app".
class PeerBundle {
  public:
    explicit PeerBundle(const std::filesystem::path& parent);

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path executable() const { return folder_ / "Contents/MacOS/Google Chrome"; }

    /// The executable of a copy beside it, "NAME.app".
    std::filesystem::path copyCalled(const std::string& name);

    /// Empty until it has read them.
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) const;

    /// Kills the processes that run from here and waits until they are gone.
    void endAll() const;

  private:
    std::filesystem::path folder_;
    std::vector<std::filesystem::path> executables_;
};

}  // namespace vantrel::linuxdesktop
