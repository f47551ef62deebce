#include "platform/virtual/desktop/VirtualScreens.h"

#include <algorithm>
#include <utility>

#include "platform/portable/UTF8Validity.h"
#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

namespace {

std::vector<Screen>::iterator find(std::vector<Screen>& screens, std::string_view name) {
    return std::find_if(screens.begin(), screens.end(),
                        [name](const Screen& screen) { return screen.localizedName == name; });
}

void putPrimaryAtOrigin(Displays& displays) {
    if (displays.screens.empty()) return;
    const Point origin = displays.screens.front().frame.origin;
    for (Screen& screen : displays.screens) {
        screen.frame.origin.x -= origin.x;
        screen.frame.origin.y -= origin.y;
    }
}

/// As the system keeps them: the primary display at the origin, and no two at the same place. One whose place is taken
/// already goes to the right of all others.
void settle(Displays& displays) {
    putPrimaryAtOrigin(displays);
    auto& screens = displays.screens;
    for (auto screen = screens.begin(); screen != screens.end(); ++screen) {
        const bool isTaken = std::any_of(screens.begin(), screen, [screen](const Screen& earlier) {
            return earlier.frame.origin == screen->frame.origin;
        });
        if (!isTaken) continue;
        double right = 0;
        for (const Screen& each : screens) right = std::max(right, each.frame.origin.x + each.frame.size.width);
        screen->frame.origin = {right, 0};
    }
}

/// As the client sees them.
std::vector<Screen> listed(const Displays& displays) {
    std::vector<Screen> screens = displays.screens;
    for (Screen& screen : screens) screen.localizedName = repairedUTF8(screen.localizedName);
    return screens;
}

}  // namespace

std::vector<Screen> VirtualScreens::screens() const {
    return listed(displays());
}

std::optional<Screen> VirtualScreens::mainScreen() const {
    const Displays all = displays();
    if (all.screens.empty()) return std::nullopt;
    return listed(all)[std::min(all.main, all.screens.size() - 1)];
}

bool VirtualScreens::screensHaveSeparateSpaces() const {
    return displays().haveSeparateSpaces;
}

std::unique_ptr<Observation> VirtualScreens::observeScreenParametersDidChange(Block block) {
    return changes_.observe(std::move(block));
}

Displays VirtualScreens::displays() const {
    const std::lock_guard guard(mutex_);
    return displays_;
}

void VirtualScreens::setUp(Displays displays) {
    const std::lock_guard guard(mutex_);
    displays_ = std::move(displays);
}

void VirtualScreens::change(Displays displays) {
    Fields fields;
    for (const auto& screen : displays.screens) {
        fields.emplace_back(Field::screen, screen.localizedName + " " + describe(screen.frame));
    }
    int notices = 0;
    double every = 0;
    {
        const std::lock_guard guard(mutex_);
        displays_ = std::move(displays);
        notices = notices_;
        every = noticesEvery_;
    }
    engine_.journal.emit({SystemEvent::screensChanged, {}, std::move(fields)});
    onChange();
    if (notices > 0) changes_.post();
    for (int notice = 1; notice < notices; ++notice) engine_.world.after(notice * every, [this] { changes_.post(); });
}

void VirtualScreens::setNotices(int count, double every) {
    const std::lock_guard guard(mutex_);
    notices_ = count;
    noticesEvery_ = every;
}

void VirtualScreens::plug(Screen screen) {
    Displays next = displays();
    next.screens.push_back(std::move(screen));
    settle(next);
    change(std::move(next));
}

std::optional<VirtualScreens::Mirrored> VirtualScreens::take(Displays& displays, std::string_view name) {
    const auto found = find(displays.screens, name);
    if (found == displays.screens.end()) return std::nullopt;
    const auto index = static_cast<std::size_t>(found - displays.screens.begin());
    Mirrored taken{std::move(*found), index == 0, {}};
    displays.screens.erase(found);
    if (taken.wasPrimary && !displays.screens.empty()) taken.successor = displays.screens.front().frame.origin;
    if (displays.main == index) {
        displays.main = 0;
    } else if (displays.main > index) {
        --displays.main;
    }
    putPrimaryAtOrigin(displays);
    return taken;
}

void VirtualScreens::putBack(Displays& displays, Mirrored mirrored) {
    auto& screens = displays.screens;
    if (mirrored.wasPrimary && !screens.empty()) {
        for (Screen& screen : screens) {
            screen.frame.origin.x += mirrored.successor.x;
            screen.frame.origin.y += mirrored.successor.y;
        }
        // The focus does not change.
        ++displays.main;
    }
    screens.insert(mirrored.wasPrimary ? screens.begin() : screens.end(), std::move(mirrored.screen));
    settle(displays);
}

bool VirtualScreens::unplug(std::string_view name) {
    Displays next = displays();
    {
        const std::lock_guard guard(mutex_);
        if (std::erase_if(mirrored_, [name](const auto& each) { return each.screen.localizedName == name; }) > 0) {
            return true;
        }
        if (!take(next, name)) return false;
        if (next.screens.empty() && !mirrored_.empty()) {
            putBack(next, std::move(mirrored_.front()));
            mirrored_.erase(mirrored_.begin());
        }
    }
    change(std::move(next));
    return true;
}

bool VirtualScreens::setFrame(std::string_view name, const Rect& frame) {
    Displays next = displays();
    const auto found = find(next.screens, name);
    if (found == next.screens.end()) return false;
    found->frame = frame;
    settle(next);
    change(std::move(next));
    return true;
}

bool VirtualScreens::mirror(std::string_view name) {
    Displays next = displays();
    auto taken = take(next, name);
    if (!taken) return false;
    {
        const std::lock_guard guard(mutex_);
        mirrored_.push_back(*std::move(taken));
    }
    change(std::move(next));
    return true;
}

bool VirtualScreens::unmirror(std::string_view name) {
    Displays next = displays();
    {
        const std::lock_guard guard(mutex_);
        const auto found = std::find_if(mirrored_.begin(), mirrored_.end(),
                                        [name](const auto& each) { return each.screen.localizedName == name; });
        if (found == mirrored_.end()) return false;
        putBack(next, std::move(*found));
        mirrored_.erase(found);
    }
    change(std::move(next));
    return true;
}

bool VirtualScreens::focus(std::string_view name) {
    const std::lock_guard guard(mutex_);
    const auto found = find(displays_.screens, name);
    if (found == displays_.screens.end()) return false;
    displays_.main = static_cast<std::size_t>(found - displays_.screens.begin());
    return true;
}

}  // namespace vantrel::virtualmac
