#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/WindowList.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Threads.h"

namespace vantrel {

/// Waits for the window that a browser opens for the meeting. On the launch's thread.
class WindowDiscovery {
  public:
    using Windows = std::vector<WindowEntry>;
    using Numbers = std::set<std::int64_t>;

    struct Found {
        std::int64_t number = 0;
        /// 0 if the list does not say.
        ProcessIdentifier owner = 0;
        std::string title;
    };

    WindowDiscovery(const WindowList& list, const Clock& clock, Threads& threads)
        : list_(list), clock_(clock), threads_(threads) {}

    /// The windows on the screen. None if the system gives no list.
    Windows onScreen() const;

    /// The first new window that belongs to the process that `browserPID` names by then, or whose owner's name contains
    /// `ownerName`. Looks every 0.4 seconds for 12 seconds of uptime; setting the calendar does not change that.
    std::optional<Found> waitForNewWindow(const Windows& before,
                                          const std::function<std::optional<ProcessIdentifier>()>& browserPID,
                                          std::string_view ownerName) const;

    /// The numbers of the windows that have one.
    static Numbers numbers(const Windows& windows);

    /// One look at the list.
    static std::optional<Found> newWindow(const Windows& windows, const Numbers& known,
                                          std::optional<ProcessIdentifier> browserPID, std::string_view ownerName);

  private:
    const WindowList& list_;
    const Clock& clock_;
    Threads& threads_;
};

}  // namespace vantrel
