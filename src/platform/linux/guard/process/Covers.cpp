#include "platform/linux/guard/process/Covers.h"

#include "platform/linux/guard/GuardMessage.h"

namespace vantrel::linuxdesktop {

void Covers::hide() {
    const auto cookie = xcb_query_tree(connection_.get(), connection_.root());
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_.get(), cookie, nullptr));
    if (!tree) return;
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    for (int i = 0; i < count; ++i) {
        const auto owner = connection_.values(windows[i], coverMark);
        if (!owner.empty() && owner.front() == client_) xcb_unmap_window(connection_.get(), windows[i]);
    }
    xcb_flush(connection_.get());
}

}  // namespace vantrel::linuxdesktop
