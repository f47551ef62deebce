#pragma once

#include <string>
#include <vector>

#include "platform/threads/Block.h"

namespace vantrel {

struct MenuItem;

/// NSMenu. Titles may be empty.
struct Menu {
    std::string title;
    std::vector<MenuItem> items;
};

/// NSMenuItem. An item without a target sends its action to the first responder that handles it (the focused field, the
/// application).
struct MenuItem {
    enum class Kind { action, separator, submenu };

    Kind kind = Kind::action;
    std::string title;
    /// The selector, such as "terminate:". Empty if the item does nothing.
    std::string action;
    /// Pressed together with Command. An upper-case letter also needs Shift. Empty for none.
    std::string keyEquivalent;
    bool enabled = true;
    /// The action's target. Called on the main thread after the menu has closed: in an event, so that the main queue
    /// goes on under an alert that it opens. Not called once the menu or its status item is gone.
    Block target;
    Menu submenu;

    /// Whether the user can choose it or open its submenu. An item that would do nothing is disabled, whatever
    /// `enabled` says (NSMenu's autoenablesItems).
    bool isAvailable() const {
        if (kind != Kind::action) return kind == Kind::submenu;
        return enabled && (target || !action.empty());
    }

    static MenuItem separator() {
        MenuItem item;
        item.kind = Kind::separator;
        item.enabled = false;
        return item;
    }
};

}  // namespace vantrel
