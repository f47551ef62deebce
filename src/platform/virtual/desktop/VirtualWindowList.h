#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/desktop/WindowList.h"
#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/desktop/VirtualScreens.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/ui/VirtualOverlays.h"
#include "platform/virtual/ui/VirtualWindows.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// The keys of an entry. isOnscreen is always missing if false.
enum class WindowKey { number, ownerPID, ownerName, name, layer, bounds, isOnscreen };

/// The windows of all applications, including the client's visible ones. The client's are on a desktop Space, in front
/// of the others while the client is in front or has put them there, and otherwise behind them, and have numbers below
/// 1000. Its overlays come first, except for windows above them.
class VirtualWindowList final : public WindowList {
  public:
    struct Dependencies {
        Engine& engine;
        const VirtualDesktop& desktop;
        const VirtualProcessLauncher& processes;
        const VirtualScreens& screens;
        const VirtualWindows& windows;
        const VirtualOverlays& overlays;
    };

    explicit VirtualWindowList(Dependencies dependencies) : dependencies_(dependencies) {}

    std::optional<std::vector<WindowEntry>> copy(WindowListOption option) const override;

    /// Driver-facing, any thread: the key is missing in every entry, or in those of one process.
    void withhold(WindowKey key, std::optional<ProcessIdentifier> owner = {});
    /// Nothing is withheld any more.
    void withholdNothing();
    /// Without the permission only the client's own windows have titles.
    void setScreenRecordingAllowed(bool allowed);
    /// From now on there is no list.
    void setFailing(bool failing);

  private:
    std::vector<WindowEntry> entries() const;
    std::vector<WindowEntry> ownEntries(bool onScreen) const;
    WindowEntry ownEntry(std::int64_t number, const std::string& title, int layer, const Rect& frame,
                         bool onScreen) const;
    void withhold(WindowEntry& entry) const;

    const Dependencies dependencies_;
    mutable std::mutex mutex_;
    bool failing_ = false;
    bool screenRecordingAllowed_ = true;
    std::set<WindowKey> withheld_;
    std::map<ProcessIdentifier, std::set<WindowKey>> withheldOf_;
};

}  // namespace vantrel::virtualmac
