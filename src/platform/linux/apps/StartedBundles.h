#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/linux/apps/ProcessTable.h"

namespace vantrel::linuxdesktop {

/// The processes that the client has started from folders `Name.app`, or for them. Such a process stays that
/// application, whatever programs its script becomes on the way to the browser. Any thread.
class StartedBundles {
  public:
    /// Does nothing if the executable lies in no such folder.
    void note(ProcessIdentifier process, const std::string& executable);

    /// The executable that the process was started from. Empty if the client has not started it.
    std::optional<std::string> executableOf(const ProcessEntry& entry) const;

    /// The client takes this script for the browser that the script is to start: from now on that browser's windows
    /// count as the script's. Does nothing if the client has not started it.
    void takeForBrowser(const ProcessEntry& script);
    bool isTakenForBrowser(const ProcessEntry& entry) const;
    /// The script that is taken for this process, which is below it, or else the process itself.
    ProcessIdentifier takenFor(ProcessIdentifier process) const;

    static bool liesInBundle(const std::string& path) { return path.find(".app/Contents/MacOS/") != std::string::npos; }

  private:
    void forgetThoseThatAreGone();

    mutable std::mutex mutex_;
    // With their start times: numbers of processes are used again.
    using Key = std::pair<ProcessIdentifier, std::uint64_t>;
    std::map<Key, std::string> started_;
    std::set<Key> browsers_;
};

}  // namespace vantrel::linuxdesktop
