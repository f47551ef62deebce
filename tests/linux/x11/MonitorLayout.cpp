#include "tests/linux/x11/MonitorLayout.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vantrel::linuxdesktop {

namespace {

void run(const std::string& command) {
    [[maybe_unused]] const int status = std::system((command + " >/dev/null 2>&1").c_str());
}

std::string numbers(const X11Rectangle& frame) {
    const auto text = [](int number) { return std::to_string(number); };
    return text(frame.width) + "/" + text(frame.width / 4) + "x" + text(frame.height) + "/" + text(frame.height / 4) +
           "+" + text(frame.x) + "+" + text(frame.y);
}

}  // namespace

MonitorLayout::MonitorLayout() : connection_(X11Connection::open()), before_(now()) {}

MonitorLayout::~MonitorLayout() {
    set(before_);
}

std::vector<X11Monitor> MonitorLayout::now() {
    std::vector<X11Monitor> found;
    if (!connection_) return found;
    xcb_connection_t* connection = connection_->get();
    const auto cookie = xcb_randr_get_monitors(connection, connection_->root(), 1);
    const X11Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(connection, cookie, nullptr));
    if (!reply) return found;
    for (auto item = xcb_randr_get_monitors_monitors_iterator(reply.get()); item.rem != 0;
         xcb_randr_monitor_info_next(&item)) {
        const xcb_randr_monitor_info_t& info = *item.data;
        const X11Reply<xcb_get_atom_name_reply_t> name(
            xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, info.name), nullptr));
        if (!name) continue;
        X11Monitor monitor{
            {xcb_get_atom_name_name(name.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get()))},
            {info.x, info.y, info.width, info.height}};
        found.insert(info.primary != 0 ? found.begin() : found.end(), std::move(monitor));
    }
    return found;
}

// Only one monitor can have the display's output; the others have none. An existing name cannot be used again.
void MonitorLayout::set(const std::vector<X11Monitor>& monitors) {
    const auto before = now();
    if (before == monitors) return;
    for (const X11Monitor& old : before) run("xrandr --delmonitor '" + old.name + "'");
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        run("xrandr --setmonitor '" + std::string(i == 0 ? "*" : "") + monitors[i].name + "' " +
            numbers(monitors[i].frame) + (i == 0 ? " screen" : " none"));
    }
}

void MonitorLayout::setScreens(const std::vector<Screen>& screens) {
    double left = 0;
    double top = 0;
    for (const Screen& screen : screens) {
        left = std::min(left, screen.frame.origin.x);
        top = std::max(top, screen.frame.origin.y + screen.frame.size.height);
    }
    std::vector<X11Monitor> monitors;
    for (const Screen& screen : screens) {
        const Rect& frame = screen.frame;
        const auto pixels = [](double points) { return static_cast<int>(std::lround(points)); };
        monitors.push_back({screen.localizedName,
                            {pixels(frame.origin.x - left), pixels(top - frame.origin.y - frame.size.height),
                             pixels(frame.size.width), pixels(frame.size.height)}});
    }
    set(monitors);
}

}  // namespace vantrel::linuxdesktop
