#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/apps/ProcessLauncher.h"
#include "platform/threads/Block.h"

namespace vantrel::contracts {

/// A computer under test that shows the client's own windows and its main menu to the participant. Test thread.
class InterfaceHost {
  public:
    virtual ~InterfaceHost() = default;

    /// The process that the client runs in.
    virtual ProcessIdentifier ownProcess() = 0;

    /// The titles of the client's windows on the screen, front to back.
    virtual std::vector<std::string> windowsShown() = 0;

    struct SeenControl {
        std::string text;
        bool enabled = false;
        bool operator==(const SeenControl&) const = default;
    };
    /// The control with that id in the client's front window. Empty if the participant does not see it.
    virtual std::optional<SeenControl> controlShown(const std::string& id) = 0;

    /// What a screen reader calls that field of the front window.
    virtual std::string accessibilityLabel(const std::string& id) = 0;
    /// The ids of the fields and buttons of the front window that a person sees, as Tab goes through them.
    virtual std::vector<std::string> tabOrder() = 0;
    /// What a screen reader was told so far. Empty where a test cannot hear it.
    virtual std::optional<std::vector<std::string>> announcements() = 0;

    /// Clicks a button of the front window. Without effect if the participant does not see it or it is disabled.
    virtual void pressButton(const std::string& id) = 0;
    /// Presses Return in the front window, which has the keyboard.
    virtual void pressReturn() = 0;
    /// Replaces the text of a field in the front window, by typing.
    virtual void typeInto(const std::string& id, const std::string& text) = 0;

    /// Presses the mouse button on a button of the front window. The block is its release, which the system may deliver
    /// when the window is gone. Main thread.
    virtual Block heldPress(const std::string& id) = 0;

    /// Whether the participant can choose that item of the main menu.
    virtual bool isAvailableInMainMenu(const std::string& menu, const std::string& item) = 0;

    /// Chooses an item of the main menu. Without effect if it is disabled. The client shows a window, which it made
    /// after it set the menu.
    virtual void chooseFromMainMenu(const std::string& menu, const std::string& item) = 0;
};

}  // namespace vantrel::contracts
