#include "platform/virtual/desktop/VirtualWindowList.h"

#include <algorithm>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::virtualmac {

namespace {

void remove(WindowEntry& entry, WindowKey key) {
    switch (key) {
        case WindowKey::number:
            return entry.number.reset();
        case WindowKey::ownerPID:
            return entry.ownerPID.reset();
        case WindowKey::ownerName:
            return entry.ownerName.reset();
        case WindowKey::name:
            return entry.name.reset();
        case WindowKey::layer:
            return entry.layer.reset();
        case WindowKey::bounds:
            return entry.bounds.reset();
        case WindowKey::isOnscreen:
            return entry.isOnscreen.reset();
    }
}

}  // namespace

std::optional<std::vector<WindowEntry>> VirtualWindowList::copy(WindowListOption option) const {
    {
        const std::lock_guard guard(mutex_);
        if (failing_) return std::nullopt;
    }
    std::vector<WindowEntry> list = entries();
    if (option == WindowListOption::onScreenOnly) {
        std::erase_if(list, [](const WindowEntry& entry) { return !entry.isOnscreen; });
    }
    for (WindowEntry& entry : list) withhold(entry);
    return list;
}

std::vector<WindowEntry> VirtualWindowList::entries() const {
    const ProcessIdentifier own = dependencies_.processes.ownProcess();
    const auto overlays = dependencies_.overlays.all();
    bool ownInFront = false;
    bool desktopIsShown = false;
    std::vector<WindowEntry> list;
    auto others = dependencies_.desktop.read([&](const DesktopState& state) {
        ownInFront = state.isFrontmost(own) || state.clientWindowsAbove;
        const SpaceRow& primary = state.spaces.rows().front();
        // A Space that has just gone was a full-screen one.
        desktopIsShown = !state.isHidden(own) && state.spaces.rowOf(primary.told) != nullptr &&
                         !state.spaces.isFullScreen(primary.told);
        std::vector<WindowEntry> made;
        for (const AppWindow& window : state.windows) {
            WindowEntry entry{
                window.number, window.owner, repairedUTF8(window.ownerName), repairedUTF8(window.title), window.layer,
                window.frame,  std::nullopt};
            if (window.ownerName.empty()) entry.ownerName.reset();
            if (state.isOnScreen(window)) entry.isOnscreen = true;
            const bool isAboveOverlays = std::any_of(overlays.begin(), overlays.end(),
                                                     [&](const auto& overlay) { return overlay.isUnder(window); });
            (isAboveOverlays ? list : made).push_back(std::move(entry));
        }
        return made;
    });
    for (auto overlay = overlays.rbegin(); overlay != overlays.rend(); ++overlay) {
        const auto& description = overlay->description;
        list.push_back(
            ownEntry(overlay->number, {}, description.level, description.frame, overlay->visible && overlay->isLetIn));
    }
    auto ownList = ownEntries(desktopIsShown);
    others.insert(ownInFront ? others.begin() : others.end(), ownList.begin(), ownList.end());
    list.insert(list.end(), others.begin(), others.end());
    return list;
}

WindowEntry VirtualWindowList::ownEntry(std::int64_t number, const std::string& title, int layer, const Rect& frame,
                                        bool onScreen) const {
    const auto screens = dependencies_.screens.displays().screens;
    const double height = screens.empty() ? 0 : screens.front().frame.size.height;
    Rect bounds = frame;
    bounds.origin.y = height - bounds.origin.y - bounds.size.height;
    WindowEntry entry{number, dependencies_.processes.ownProcess(), "Vantrel", title, layer, bounds, {}};
    if (onScreen) entry.isOnscreen = true;
    return entry;
}

std::vector<WindowEntry> VirtualWindowList::ownEntries(bool onScreen) const {
    std::vector<WindowEntry> made;
    for (const WindowState& window : dependencies_.windows.all()) {
        if (window.visible) made.push_back(ownEntry(window.number, window.title, 0, window.contentRect, onScreen));
    }
    return made;
}

void VirtualWindowList::withhold(WindowEntry& entry) const {
    const ProcessIdentifier owner = entry.ownerPID.value_or(0);
    const std::lock_guard guard(mutex_);
    if (!screenRecordingAllowed_ && owner != dependencies_.processes.ownProcess()) entry.name.reset();
    for (const WindowKey key : withheld_) remove(entry, key);
    const auto found = withheldOf_.find(owner);
    if (found == withheldOf_.end()) return;
    for (const WindowKey key : found->second) remove(entry, key);
}

void VirtualWindowList::withhold(WindowKey key, std::optional<ProcessIdentifier> owner) {
    const std::lock_guard guard(mutex_);
    (owner ? withheldOf_[*owner] : withheld_).insert(key);
}

void VirtualWindowList::withholdNothing() {
    const std::lock_guard guard(mutex_);
    withheld_.clear();
    withheldOf_.clear();
}

void VirtualWindowList::setScreenRecordingAllowed(bool allowed) {
    const std::lock_guard guard(mutex_);
    screenRecordingAllowed_ = allowed;
}

void VirtualWindowList::setFailing(bool failing) {
    const std::lock_guard guard(mutex_);
    failing_ = failing;
}

}  // namespace vantrel::virtualmac
