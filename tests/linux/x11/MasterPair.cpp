#include "tests/linux/x11/MasterPair.h"

#include <xcb/xinput.h>

#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

MasterPair::MasterPair(xcb_connection_t* connection) : connection_(connection) {
    const auto before = masters();
    // xXIAddMasterInfo with the name "second".
    struct {
        std::uint16_t type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER;
        std::uint16_t length = 4;
        std::uint16_t nameLength = 6;
        std::uint8_t sendCore = 1;
        std::uint8_t enable = 1;
        char name[8] = {'s', 'e', 'c', 'o', 'n', 'd', 0, 0};
    } add;
    xcb_input_xi_change_hierarchy(connection_, 1, reinterpret_cast<xcb_input_hierarchy_change_t*>(&add));
    for (const auto& [device, type] : masters()) {
        if (before.contains({device, type})) continue;
        (type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD ? keyboard_ : pointer_) = device;
    }
}

MasterPair::~MasterPair() {
    struct {
        std::uint16_t type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_REMOVE_MASTER;
        std::uint16_t length = 3;
        std::uint16_t device = 0;
        std::uint8_t mode = XCB_INPUT_CHANGE_MODE_FLOAT;
        std::uint8_t pad = 0;
        std::uint16_t returnPointer = 0;
        std::uint16_t returnKeyboard = 0;
    } remove;
    remove.device = pointer_;
    xcb_input_xi_change_hierarchy(connection_, 1, reinterpret_cast<xcb_input_hierarchy_change_t*>(&remove));
    xcb_flush(connection_);
}

std::set<std::pair<std::uint16_t, std::uint16_t>> MasterPair::masters() {
    std::set<std::pair<std::uint16_t, std::uint16_t>> found;
    const auto cookie = xcb_input_xi_query_device(connection_, XCB_INPUT_DEVICE_ALL_MASTER);
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(connection_, cookie, nullptr));
    if (!reply) return found;
    auto each = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) found.insert({each.data->deviceid, each.data->type});
    return found;
}

}  // namespace vantrel::linuxdesktop
