#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/apps/ProcessTable.h"

namespace vantrel::linuxdesktop {

/// The processes that the client has started from folders `Name.app`. Such a process stays that application, whatever
/// programs its script becomes on the way to the browser. Any thread.
class StartedBundles {
  public:
    /// Does nothing if the executable lies in no such folder.
    void note(ProcessIdentifier process, const std::string& executable);

    /// The executable that the process was started from. Empty if the client has not started it.
    std::optional<std::string> executableOf(const ProcessEntry& entry) const;

    static bool liesInBundle(const std::string& path) { return path.find(".app/Contents/MacOS/") != std::string::npos; }

  private:
    void forgetThoseThatAreGone();

    mutable std::mutex mutex_;
    // With their start times: numbers of processes are used again.
    std::map<std::pair<ProcessIdentifier, std::uint64_t>, std::string> started_;
};

}  // namespace vantrel::linuxdesktop
