#pragma once

#include <string>
#include <utility>

#include "platform/ui/Menu.h"
#include "platform/ui/Window.h"

namespace vantrel::linuxdesktop {

inline MenuItem actionItem(std::string title, std::string action, std::string keyEquivalent = {}) {
    MenuItem item;
    item.title = std::move(title);
    item.action = std::move(action);
    item.keyEquivalent = std::move(keyEquivalent);
    return item;
}

inline MenuItem targetItem(std::string title, Block target) {
    MenuItem item;
    item.title = std::move(title);
    item.target = std::move(target);
    return item;
}

inline MenuItem informationItem(std::string title) {
    MenuItem item;
    item.title = std::move(title);
    item.enabled = false;
    return item;
}

inline MenuItem submenuItem(Menu submenu) {
    MenuItem item;
    item.kind = MenuItem::Kind::submenu;
    item.submenu = std::move(submenu);
    return item;
}

inline Control control(Control::Kind kind, std::string id, std::string text, Rect frame) {
    Control made;
    made.kind = kind;
    made.id = std::move(id);
    made.text = std::move(text);
    made.frame = frame;
    return made;
}

}  // namespace vantrel::linuxdesktop
