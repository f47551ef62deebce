#include "platform/linux/x11/X11Connection.h"

#include <xcb/randr.h>

#include <algorithm>
#include <utility>

#include "platform/linux/x11/AskedProperty.h"

namespace vantrel::linuxdesktop {

std::unique_ptr<X11Connection> X11Connection::open() {
    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; screen.rem > 1 && screenNumber > 0; --screenNumber) xcb_screen_next(&screen);
    if (screen.rem == 0) return nullptr;
    const xcb_window_t root = screen.data->root;
    return std::unique_ptr<X11Connection>(new X11Connection(std::move(connection), root));
}

X11Connection::X11Connection(std::unique_ptr<xcb_connection_t, Disconnect> connection, xcb_window_t root)
    : connection_(std::move(connection)), root_(root) {}

xcb_atom_t X11Connection::atom(std::string_view name) {
    const std::lock_guard lock(mutex_);
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    const auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    if (!reply) return XCB_ATOM_NONE;
    atoms_.emplace(name, reply->atom);
    return reply->atom;
}

std::string X11Connection::nameOf(xcb_atom_t atom) {
    const std::lock_guard lock(mutex_);
    if (const auto known = names_.find(atom); known != names_.end()) return known->second;
    const auto cookie = xcb_get_atom_name(get(), atom);
    const X11Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(get(), cookie, nullptr));
    if (!reply) return {};
    const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()));
    return names_.emplace(atom, std::string(xcb_get_atom_name_name(reply.get()), length)).first->second;
}

std::vector<std::uint32_t> X11Connection::values(xcb_window_t window, std::string_view property) {
    return AskedProperty(*this, window, property).values();
}

void X11Connection::tellWindowManager(xcb_window_t window, std::string_view message,
                                      const std::vector<std::uint32_t>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5), event.data.data32);
    xcb_send_event(get(), 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(get());
}

bool X11Connection::hasExtension(std::string_view name) {
    const auto cookie = xcb_query_extension(get(), static_cast<std::uint16_t>(name.size()), name.data());
    const X11Reply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(get(), cookie, nullptr));
    return reply && reply->present != 0;
}

std::vector<std::string> X11Connection::outputNames() {
    const auto* extension = xcb_get_extension_data(get(), &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) return {};
    const auto cookie = xcb_randr_get_screen_resources_current(get(), root_);
    const X11Reply<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(get(), cookie, nullptr));
    if (!reply) return {};
    const xcb_randr_output_t* outputs = xcb_randr_get_screen_resources_current_outputs(reply.get());
    const int count = xcb_randr_get_screen_resources_current_outputs_length(reply.get());
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        const auto infoCookie = xcb_randr_get_output_info(get(), outputs[i], reply->config_timestamp);
        const X11Reply<xcb_randr_get_output_info_reply_t> info(
            xcb_randr_get_output_info_reply(get(), infoCookie, nullptr));
        if (!info) continue;
        names.emplace_back(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
                           static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
    }
    return names;
}

}  // namespace vantrel::linuxdesktop
