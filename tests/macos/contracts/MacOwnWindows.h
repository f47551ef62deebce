#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/threads/Block.h"

namespace vantrel::macos {

/// The client's own windows and its main menu as a person sees and uses them. Main thread.
class MacOwnWindows {
  public:
    /// The titles of those on the screen, front to back.
    static std::vector<std::string> shown();

    /// The control with that identifier in the front window. Nil if it is not on the screen.
    static NSControl* control(const std::string& identifier);
    static std::string text(NSControl* control);

    /// The identifiers of the controls on the screen, along the key view loop of the front window. Whether Tab stops at
    /// buttons is a setting of the user's.
    static std::vector<std::string> tabOrder();

    static void press(const std::string& identifier);
    /// The release of a mouse button that has been pressed there.
    static Block heldPress(const std::string& identifier);
    /// Asks the front window for a key equivalent.
    static void pressReturn();
    static void typeInto(const std::string& identifier, const std::string& text);

    static bool isAvailableInMainMenu(const std::string& menu, const std::string& item);
    /// False if the main menu has no such item.
    static bool chooseFromMainMenu(const std::string& menu, const std::string& item);
};

}  // namespace vantrel::macos
