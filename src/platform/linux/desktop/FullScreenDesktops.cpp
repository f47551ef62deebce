#include "platform/linux/desktop/FullScreenDesktops.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "platform/linux/apps/ProcessTable.h"
#include "platform/linux/x11/WindowManager.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowSurvey.h"
#include "platform/linux/x11/X11Windows.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr const char* fullScreenState = "_NET_WM_STATE_FULLSCREEN";
constexpr const char* record = "_VANTREL_FULL_SCREEN_DESKTOPS";

}  // namespace

FullScreenDesktops::FullScreenDesktops(Dependencies dependencies)
    : connection_(dependencies.connection),
      windows_(dependencies.windows),
      survey_(dependencies.survey),
      watch_(std::move(dependencies.watch)),
      guard_(std::move(dependencies.guard)),
      desktops_(connection_) {
    adopt();
}

FullScreenDesktops::~FullScreenDesktops() {
    putBackAll();
}

bool FullScreenDesktops::enter(const X11WindowFacts& window) {
    const std::lock_guard lock(mutex_);
    if (window.fullScreen) return true;
    if (!supportsFullScreen(connection_) || !window.mayBeFullScreen) return false;
    const bool madeBefore = find(window.window) != own_.end();
    if (!madeBefore && !makeDesktop(window) && window.desktop && *window.desktop != X11WindowFacts::allDesktops) {
        desktops_.switchTo(*window.desktop);
    }
    requestFullScreen(window.window, true);
    windows_.focus(window.window);
    return connection_.isAlive();
}

void FullScreenDesktops::leave(const X11WindowFacts& window) {
    const std::lock_guard lock(mutex_);
    requestFullScreen(window.window, false);
    if (find(window.window) != own_.end()) dissolve(window.window, true);
}

void FullScreenDesktops::putBackAll() {
    const std::lock_guard lock(mutex_);
    while (!own_.empty()) {
        const xcb_window_t window = own_.back().window;
        requestFullScreen(window, false);
        dissolve(window, true);
    }
}

bool FullScreenDesktops::makeDesktop(const X11WindowFacts& window) {
    const auto count = desktops_.count();
    const auto current = desktops_.current();
    if (!count || !current) return false;
    if (!desktops_.setCount(*count + 1)) {
        connection_.tellWindowManager(connection_.root(), "_NET_NUMBER_OF_DESKTOPS", {*count});
        return false;
    }
    guarded_ = guard_();
    const bool hasOrigin = window.desktop && *window.desktop != X11WindowFacts::allDesktops;
    own_.push_back({window.window, window.owner, *count, hasOrigin ? *window.desktop : *current, false});
    write();
    watch_(window.window);
    desktops_.move(window.window, *count);
    desktops_.switchTo(*count);
    return true;
}

// The window manager handles requests in order, but its properties lag behind: it may do so between two reads. Full
// screen is asked for last, so until the window has been seen so, the request that brings the person there counts as
// still to come, wherever the person seems to be.
void FullScreenDesktops::dissolve(xcb_window_t window, bool alive) {
    const auto found = find(window);
    Own own = *found;
    own_.erase(found);
    write();
    if (own_.empty()) guarded_.reset();
    const auto count = desktops_.count();
    auto current = desktops_.current();
    if (!count || !current || own.desktop >= *count) return;
    const bool wasThere = *current == own.desktop;
    // Go first and survey then: a window that is just being shown may still be placed on the desktop to be removed, and
    // the survey must see it.
    if (wasThere) desktops_.goTo(own.origin);
    const auto windows = survey_.frontToBack();
    if (!wasThere) current = desktops_.current();
    if (!windows || !current) return;

    std::optional<xcb_window_t> front;
    if (alive) front = window;
    for (const X11WindowFacts& facts : *windows) {
        if (facts.window == window) own.shown = own.shown || facts.fullScreen;
        if (facts.window == window || !facts.desktop || *facts.desktop == X11WindowFacts::allDesktops) continue;
        if (*facts.desktop == own.desktop) {
            desktops_.move(facts.window, own.origin);
            if (!front && !facts.hidden && facts.layer == 0) front = facts.window;
        }
        if (*facts.desktop > own.desktop) desktops_.move(facts.window, *facts.desktop - 1);
    }
    if (alive) desktops_.move(window, own.origin);
    if (*current == own.desktop || !own.shown) {
        desktops_.switchTo(own.origin);
        // The person continues with the window that was in front.
        if (front) windows_.focus(*front);
    } else if (*current > own.desktop) {
        desktops_.switchTo(*current - 1);
    }
    countWithout(own);
    write();
    desktops_.setCount(*count - 1);
}

void FullScreenDesktops::countWithout(const Own& gone) {
    for (Own& other : own_) {
        if (other.origin == gone.desktop) other.origin = gone.origin;
        if (other.origin > gone.desktop) --other.origin;
        if (other.desktop > gone.desktop) --other.desktop;
    }
}

void FullScreenDesktops::requestFullScreen(xcb_window_t window, bool fullScreen) {
    windows_.changeState(window, fullScreen, fullScreenState);
}

// A window is gone if it was destroyed or withdrawn. It is not gone if only the list lacks it for a moment because the
// window manager was restarted.
void FullScreenDesktops::check() {
    const std::lock_guard lock(mutex_);
    if (own_.empty()) return;
    const auto managed = windows_.frontToBack();
    const auto before = own_;
    for (const Own& own : before) {
        const auto facts = survey_.of(own.window);
        const bool listed = std::find(managed.begin(), managed.end(), own.window) != managed.end();
        if (!facts || facts->owner != own.owner || (!listed && facts->unmapped)) {
            if (connection_.isAlive()) dissolve(own.window, false);
        } else if (facts->fullScreen) {
            find(own.window)->shown = true;
        } else if (own.shown) {
            dissolve(own.window, true);
        }
    }
}

void FullScreenDesktops::adopt() {
    {
        const std::lock_guard lock(mutex_);
        takeOverRecord();
        if (!own_.empty()) guarded_ = guard_();
        for (Own& own : own_) {
            own.owner = windows_.owner(own.window);
            watch_(own.window);
        }
    }
    check();
}

// The guards of a client that was killed do this at the same time: whoever comes first has it all.
void FullScreenDesktops::takeOverRecord() {
    changeRecord([this](const Line& line) {
        const auto writer = static_cast<ProcessIdentifier>(line.front());
        const bool left = !ProcessTable::startTime(writer);
        if (left) own_.push_back({line[1], 0, line[2], line[3], true});
        return !left;
    });
}

void FullScreenDesktops::write() {
    changeRecord([](const Line&) { return true; });
}

// Another client may change its own part at the same time.
void FullScreenDesktops::changeRecord(const std::function<bool(const Line&)>& keeps) {
    const auto own = static_cast<std::uint32_t>(getpid());
    xcb_grab_server(connection_.get());
    const auto before = connection_.values(connection_.root(), record);
    std::vector<std::uint32_t> values;
    Line line{};
    for (std::size_t i = 0; i + line.size() <= before.size(); i += line.size()) {
        std::copy_n(before.data() + i, line.size(), line.begin());
        if (line.front() != own && keeps(line)) values.insert(values.end(), line.begin(), line.end());
    }
    for (const Own& one : own_) values.insert(values.end(), {own, one.window, one.desktop, one.origin});
    if (values != before) {
        xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, connection_.root(), connection_.atom(record),
                            XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(values.size()), values.data());
    }
    xcb_ungrab_server(connection_.get());
    xcb_flush(connection_.get());
}

std::vector<FullScreenDesktops::Own>::iterator FullScreenDesktops::find(xcb_window_t window) {
    return std::find_if(own_.begin(), own_.end(), [window](const Own& own) { return own.window == window; });
}

}  // namespace vantrel::linuxdesktop
