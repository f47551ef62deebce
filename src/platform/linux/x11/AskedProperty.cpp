#include "platform/linux/x11/AskedProperty.h"

#include <utility>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::uint32_t mostValues = 1 << 16;

}  // namespace

AskedProperty::AskedProperty(X11Connection& connection, xcb_window_t window, std::string_view property)
    : connection_(connection),
      cookie_(xcb_get_property(connection.get(), 0, window, connection.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0,
                               mostValues)) {}

// An unread answer would stay with the connection.
AskedProperty::~AskedProperty() {
    if (!wasRead_) xcb_discard_reply(connection_.get(), cookie_.sequence);
}

std::vector<std::uint32_t> AskedProperty::values() {
    if (std::exchange(wasRead_, true)) return {};
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie_, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

std::optional<std::uint32_t> AskedProperty::value() {
    const auto all = values();
    if (all.empty()) return std::nullopt;
    return all.front();
}

}  // namespace vantrel::linuxdesktop
