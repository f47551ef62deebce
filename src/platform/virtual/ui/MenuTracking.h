#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/ui/Menu.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// The open menu, if there is one.
class MenuTracking {
  public:
    explicit MenuTracking(Engine& engine) : engine_(engine) {}

    /// Main thread, in an event: opens the menu and returns the chosen item once it is closed. Meanwhile timers stop.
    /// `statusItem` is the number of the status item that the menu belongs to, or 0.
    std::optional<MenuItem> track(const std::string& title, const Menu& menu, std::uint64_t statusItem = 0);

    /// Any thread.
    bool isOpen() const;
    /// Whether it is that status item's.
    bool isOpenAt(std::uint64_t statusItem) const;
    /// The number of the open menu (Engine::nextInFront), or 0 if none is open.
    std::uint64_t inFront() const;
    /// The open menu's contents.
    std::optional<Menu> menu() const;

    /// Done by the participant. Main thread, in an event. False if no menu is open or it has no such enabled item.
    bool choose(std::string_view itemTitle);
    bool close();

    /// Done by the client: closes that status item's menu if it is open. Main thread.
    void cancel(std::uint64_t statusItem);

  private:
    Engine& engine_;
    mutable std::mutex mutex_;
    std::optional<Menu> open_;
    std::uint64_t statusItem_ = 0;
    std::uint64_t number_ = 0;
    std::optional<MenuItem> chosen_;
};

/// The enabled action item with that title, in the menu or its submenus. Null if there is none.
const MenuItem* findItem(const Menu& menu, std::string_view title);

}  // namespace vantrel::virtualmac
