#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/virtual/apps/VirtualProcessLauncher.h"
#include "platform/virtual/desktop/VirtualSpaces.h"
#include "platform/virtual/keyboard/KeyStroke.h"
#include "platform/virtual/scheduler/Engine.h"
#include "platform/virtual/world/VirtualDesktop.h"

namespace vantrel::virtualmac {

/// Where a key goes that no tap has swallowed: to the system when it is one of its shortcuts, else to the application
/// in front, where the most telling ones have the effect that they have on a Mac.
///
///   system       Command-Tab  the application that was in front before     Control-left, -right  the Space beside
///                Command-Space  Spotlight
///   application  Command-Q quits   Command-W closes, Command-M minimises the front window   Command-H hides
///                Command-Control-F to full screen or back
class KeyDelivery {
  public:
    struct Dependencies {
        Engine& engine;
        VirtualDesktop& desktop;
        VirtualSpaces& spaces;
        VirtualProcessLauncher& processes;
    };

    explicit KeyDelivery(const Dependencies& dependencies) : dependencies_(dependencies) {}

    /// World's thread. False when it is for the client, which is left to the caller.
    bool deliver(const KeyStroke& key);

    struct Received {
        KeyStroke key;
        /// 0 for the system.
        ProcessIdentifier process = 0;
        bool operator==(const Received&) const = default;
    };
    /// Driver-facing, any thread: what has been delivered, in order.
    std::vector<Received> received() const;

  private:
    using Applications = std::vector<std::shared_ptr<VirtualProcess>>;

    /// Those that have been in front and still run, most recent first.
    Applications front() const;
    /// What the system's shortcut does; null when it is none.
    Block shortcut(const KeyStroke& key, const Applications& applications);
    void act(const KeyStroke& key, const Applications& applications);
    void hide(const Applications& applications);
    void showSpotlight();

    const Dependencies dependencies_;
    mutable std::mutex mutex_;
    std::vector<Received> received_;
};

}  // namespace vantrel::virtualmac
