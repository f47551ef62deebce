#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/ui/Menu.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The menu that is open, if one is.
class MenuTracking {
  public:
    explicit MenuTracking(Engine& engine) : engine_(engine) {}

    /// Main thread, from an event: opens the menu and returns once it is closed, with the item that was chosen. Timers
    /// stand still meanwhile. A status item's menu bears the item's number, any other 0.
    std::optional<MenuItem> track(const std::string& title, const Menu& menu, std::uint64_t statusItem = 0);

    /// Any thread.
    bool isOpen() const;
    /// The number of the open menu (Engine::nextInFront); 0 when none is open.
    std::uint64_t inFront() const;
    /// What the open menu holds.
    std::optional<Menu> menu() const;

    /// The participant's part. Main thread, from an event. False when no menu is open, or it has no such enabled item.
    bool choose(std::string_view itemTitle);
    bool close();

    /// The client's part: closes the menu of that status item, if it is the one that is open. Main thread.
    void cancel(std::uint64_t statusItem);

  private:
    Engine& engine_;
    mutable std::mutex mutex_;
    std::optional<Menu> open_;
    std::uint64_t statusItem_ = 0;
    std::uint64_t number_ = 0;
    std::optional<MenuItem> chosen_;
};

/// The enabled action item of that title, in the menu or below it; null when there is none.
const MenuItem* findItem(const Menu& menu, std::string_view title);

}  // namespace vantrel::virtualmac
