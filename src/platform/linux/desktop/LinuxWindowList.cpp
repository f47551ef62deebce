#include "platform/linux/desktop/LinuxWindowList.h"

#include <map>
#include <utility>

#include "platform/linux/x11/PrimaryOrigin.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11Monitors.h"
#include "platform/linux/x11/X11WindowSurvey.h"

namespace vantrel::linuxdesktop {

std::optional<std::vector<WindowEntry>> LinuxWindowList::copy(WindowListOption option) const {
    if (!hasDisplay_()) return std::nullopt;
    X11Monitors monitors(connection_);
    const auto displays = monitors.ask();
    AskedProperty desktop = X11Desktops(connection_).askCurrent();
    const auto windows = survey_.frontToBack();
    const PrimaryOrigin origin(monitors.all(displays));
    const auto currentDesktop = desktop.value();
    if (!windows) return std::nullopt;

    std::map<ProcessIdentifier, std::optional<std::string>> names;
    std::vector<WindowEntry> entries;
    for (const X11WindowFacts& facts : *windows) {
        const bool onScreen = facts.viewable && !facts.hidden && facts.isOnDesktop(currentDesktop);
        if (option == WindowListOption::onScreenOnly && !onScreen) continue;
        WindowEntry entry;
        entry.number = facts.window;
        entry.name = facts.title;
        entry.layer = facts.layer;
        entry.bounds = origin.toPoints(facts.frame);
        if (onScreen) entry.isOnscreen = true;
        if (facts.owner != 0) {
            entry.ownerPID = facts.owner;
            const auto [name, isNew] = names.try_emplace(facts.owner);
            if (isNew) {
                const auto application = applications_.withProcessIdentifier(facts.owner);
                if (application) name->second = application->localizedName();
            }
            entry.ownerName = name->second;
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

}  // namespace vantrel::linuxdesktop
