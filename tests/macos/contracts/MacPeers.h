#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"

namespace vantrel::macos {

/// The tests' own application, "Google Chrome.app", which is beside the tests'. Test thread.
class MacPeers {
  public:
    MacPeers();

    std::filesystem::path executable() const;

    /// Whether the real application runs on this Mac: it would be taken for a peer.
    static bool realOneRuns();

    /// Empty until it has read them.
    std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) const;

    /// Whether a peer with --records-keys has come to the front.
    bool recordsKeys(ProcessIdentifier peer) const;
    /// The key codes of the presses that a peer with --records-keys has received so far, in order.
    std::vector<std::int64_t> keysReceived(ProcessIdentifier peer) const;

    /// Kills the running peers and waits until they are gone.
    void endAll() const;

  private:
    std::filesystem::path keyFile(ProcessIdentifier peer) const;

    std::filesystem::path bundle_;
};

}  // namespace vantrel::macos
