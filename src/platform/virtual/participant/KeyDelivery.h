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

/// Delivers a key that no tap has swallowed: to the system if it is one of its shortcuts, otherwise to the application
/// in front. The most important ones have the effect that they have on a Mac.
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

    /// World's thread. False if the key is for the client; the caller then delivers it.
    bool deliver(const KeyStroke& key);

    struct Received {
        KeyStroke key;
        /// 0 for the system.
        ProcessIdentifier process = 0;
        bool operator==(const Received&) const = default;
    };
    /// Driver-facing, any thread: the keys delivered so far, in order.
    std::vector<Received> received() const;

  private:
    using Applications = std::vector<std::shared_ptr<VirtualProcess>>;

    /// Applications that have been in front and still run, most recent first.
    Applications front() const;
    /// The action of a system shortcut. Null if the key is none.
    Block shortcut(const KeyStroke& key, const Applications& applications);
    void act(const KeyStroke& key, const Applications& applications);
    void hide(const Applications& applications);
    void showSpotlight();

    const Dependencies dependencies_;
    mutable std::mutex mutex_;
    std::vector<Received> received_;
};

}  // namespace vantrel::virtualmac
