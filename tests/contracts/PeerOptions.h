#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vantrel::peer {

struct PeerWindowOption {
    std::string title;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// What the peer's arguments ask for; ContractHost::peerExecutable() lists them. Other arguments are left alone.
struct PeerOptions {
    std::vector<PeerWindowOption> windows;
    /// Of the windows, in WM_CLASS; --class=NAME, on Linux alone.
    std::string windowClass = "Vantrel-peer";
    bool exitsWithoutWindows = false;
    bool ignoresTerminate = false;
    bool exitsAtOnce = false;

    /// Empty when a window is described wrongly.
    static std::optional<PeerOptions> read(const std::vector<std::string>& arguments);
};

}  // namespace vantrel::peer
