#include "platform/linux/x11/X11Monitors.h"

#include <algorithm>
#include <cstddef>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

namespace {

long long overlap(const X11Rectangle& a, const X11Rectangle& b) {
    const int width = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    const int height = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return width > 0 && height > 0 ? static_cast<long long>(width) * height : 0;
}

bool holds(const X11Rectangle& outer, const X11Rectangle& inner) {
    return outer.x <= inner.x && outer.y <= inner.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

}  // namespace

X11Monitors::Asked X11Monitors::ask() {
    xcb_connection_t* connection = connection_.get();
    const auto* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) return {};
    return {xcb_randr_get_monitors(connection, connection_.root(), 1)};
}

std::vector<X11Monitor> X11Monitors::all(const Asked& asked) {
    if (!asked.cookie) return wholeRoot();
    const X11Reply<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(connection_.get(), *asked.cookie, nullptr));
    if (!reply) return wholeRoot();

    std::vector<X11Monitor> monitors;
    std::size_t primary = 0;
    bool marked = false;
    for (auto item = xcb_randr_get_monitors_monitors_iterator(reply.get()); item.rem != 0;
         xcb_randr_monitor_info_next(&item)) {
        const xcb_randr_monitor_info_t& info = *item.data;
        if (info.width == 0 || info.height == 0) continue;
        const bool atTopLeft = info.x == 0 && info.y == 0;
        if (!marked && (info.primary != 0 || atTopLeft)) primary = monitors.size();
        marked = marked || info.primary != 0;
        monitors.push_back({repairedUTF8(connection_.nameOf(info.name)), {info.x, info.y, info.width, info.height}});
    }
    if (primary < monitors.size()) {
        const auto first = monitors.begin() + static_cast<std::ptrdiff_t>(primary);
        std::rotate(monitors.begin(), first, first + 1);
    }
    leaveOutMirrors(monitors);
    return monitors;
}

// Of equal displays the first stays. If the primary one shows a part of another display, that one becomes the primary.
void X11Monitors::leaveOutMirrors(std::vector<X11Monitor>& monitors) {
    for (std::size_t i = 0; i < monitors.size();) {
        std::size_t outer = 0;
        while (outer < monitors.size() && (outer == i || !holds(monitors[outer].frame, monitors[i].frame) ||
                                           (i < outer && monitors[outer].frame == monitors[i].frame))) {
            ++outer;
        }
        if (outer == monitors.size()) {
            ++i;
            continue;
        }
        if (i == 0) std::swap(monitors[0], monitors[outer]);
        monitors.erase(monitors.begin() + static_cast<std::ptrdiff_t>(i == 0 ? outer : i));
    }
}

std::optional<X11Monitor> X11Monitors::holding(const std::vector<X11Monitor>& monitors, const X11Rectangle& rectangle) {
    const auto most = std::max_element(monitors.begin(), monitors.end(), [&](const auto& a, const auto& b) {
        return overlap(a.frame, rectangle) < overlap(b.frame, rectangle);
    });
    if (most == monitors.end() || overlap(most->frame, rectangle) == 0) return std::nullopt;
    return *most;
}

std::vector<X11Monitor> X11Monitors::wholeRoot() {
    const auto cookie = xcb_get_geometry(connection_.get(), connection_.root());
    const X11Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection_.get(), cookie, nullptr));
    if (!reply) return {};
    return {{"X11", {0, 0, reply->width, reply->height}}};
}

}  // namespace vantrel::linuxdesktop
