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

/// The options in the peer's arguments; ContractHost::peerExecutable() lists them. Other arguments are ignored.
struct PeerOptions {
    std::vector<PeerWindowOption> windows;
    /// The WM_CLASS of its windows; --class=NAME, on Linux only.
    std::string windowClass = "Vantrel-peer";
    bool exitsWithoutWindows = false;
    bool ignoresTerminate = false;
    bool exitsAtOnce = false;

    /// Empty if a window is described wrongly.
    static std::optional<PeerOptions> read(const std::vector<std::string>& arguments);
};

}  // namespace vantrel::peer
