#include "browser/WindowDiscovery.h"

namespace vantrel {
namespace {

constexpr double timeout = 12.0;
constexpr double windowPollingInterval = 0.4;

}  // namespace

WindowDiscovery::Windows WindowDiscovery::onScreen() const {
    return list_.copy(WindowListOption::onScreenOnly).value_or(Windows());
}

std::optional<WindowDiscovery::Found> WindowDiscovery::waitForNewWindow(
    const Windows& before, const std::function<std::optional<ProcessIdentifier>()>& browserPID,
    std::string_view ownerName) const {
    const double deadline = clock_.uptime() + timeout;
    const Numbers known = numbers(before);
    while (clock_.uptime() < deadline) {
        threads_.sleep(windowPollingInterval);
        // Read the list first: the process may become known meanwhile.
        const auto windows = onScreen();
        if (auto found = newWindow(windows, known, browserPID(), ownerName)) return found;
    }
    return std::nullopt;
}

WindowDiscovery::Numbers WindowDiscovery::numbers(const Windows& windows) {
    Numbers numbers;
    for (const auto& window : windows) {
        if (window.number) numbers.insert(*window.number);
    }
    return numbers;
}

std::optional<WindowDiscovery::Found> WindowDiscovery::newWindow(const Windows& windows, const Numbers& known,
                                                                 std::optional<ProcessIdentifier> browserPID,
                                                                 std::string_view ownerName) {
    for (const auto& window : windows) {
        if (!window.number || known.contains(*window.number)) continue;
        const ProcessIdentifier owner = window.ownerPID.value_or(0);
        const bool isBrowsers =
            (browserPID && *browserPID == owner) ||
            (window.ownerName ? std::string_view(*window.ownerName) : std::string_view()).find(ownerName) !=
                std::string_view::npos;
        if (isBrowsers) return Found{*window.number, owner, window.name.value_or("")};
    }
    return std::nullopt;
}

}  // namespace vantrel
