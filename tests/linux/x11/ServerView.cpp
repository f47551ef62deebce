#include "tests/linux/x11/ServerView.h"

#include <algorithm>
#include <cstddef>

namespace vantrel::linuxdesktop {

std::vector<ServerView::Child> ServerView::children() {
    xcb_connection_t* connection = connection_->get();
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, connection_->root()), nullptr));
    std::vector<Child> found;
    if (!tree) return found;
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    const xcb_atom_t name = connection_->atom("_NET_WM_NAME");
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, windows[i]), nullptr));
        const X11Reply<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, windows[i]), nullptr));
        const X11Reply<xcb_get_property_reply_t> text(xcb_get_property_reply(
            connection, xcb_get_property(connection, 0, windows[i], name, XCB_GET_PROPERTY_TYPE_ANY, 0, 256), nullptr));
        if (!attributes || !place || !text || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) continue;
        found.push_back({windows[i],
                         {static_cast<const char*>(xcb_get_property_value(text.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(text.get()))},
                         {place->x, place->y, place->width, place->height},
                         attributes->map_state == XCB_MAP_STATE_VIEWABLE});
    }
    return found;
}

std::vector<ServerView::Child> ServerView::named(const std::string& name) {
    auto found = children();
    std::erase_if(found, [&name](const Child& child) { return child.name != name; });
    return found;
}

std::optional<ServerView::Child> ServerView::topmostAt(int x, int y) {
    const auto all = children();
    const auto found = std::find_if(all.rbegin(), all.rend(), [x, y](const Child& child) {
        const X11Rectangle& frame = child.frame;
        return child.viewable && x >= frame.x && y >= frame.y && x < frame.x + frame.width &&
               y < frame.y + frame.height;
    });
    if (found == all.rend()) return std::nullopt;
    return *found;
}

std::vector<std::uint32_t> ServerView::pixels(const X11Rectangle& place) {
    xcb_connection_t* connection = connection_->get();
    const auto cookie =
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, connection_->root(), static_cast<std::int16_t>(place.x),
                      static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), 0xFFFFFFFF);
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
    const auto count = static_cast<std::size_t>(place.width) * static_cast<std::size_t>(place.height);
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < count * 4) return {};
    const std::uint8_t* bytes = xcb_get_image_data(image.get());
    std::vector<std::uint32_t> found(count);
    for (std::size_t i = 0; i < count; ++i) {
        found[i] = static_cast<std::uint32_t>(bytes[i * 4] | bytes[i * 4 + 1] << 8 | bytes[i * 4 + 2] << 16);
    }
    return found;
}

std::uint32_t ServerView::pixel(int x, int y) {
    const auto found = pixels({x, y, 1, 1});
    constexpr std::uint32_t none = 0xFFFFFFFF;
    return found.empty() ? none : found.front();
}

xcb_window_t ServerView::focusedWindow() {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_->get(), xcb_get_input_focus(connection_->get()), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace vantrel::linuxdesktop
