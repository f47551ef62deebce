#include "platform/linux/x11/XInputExtension.h"

#include <xcb/xinput.h>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

std::optional<std::uint8_t> xInputExtension(const X11Connection& connection) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return std::nullopt;
    const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr));
    if (!version || version->major_version < 2 || (version->major_version == 2 && version->minor_version < 1)) {
        return std::nullopt;
    }
    return extension->major_opcode;
}

}  // namespace vantrel::linuxdesktop
