#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/X11Windows.h"
#include "platform/threads/Block.h"

class QAction;
class QPushButton;
class QWidget;

namespace vantrel::linuxdesktop {

/// The client's own windows as a person sees and uses them. Main thread.
class OwnWindows {
  public:
    explicit OwnWindows(X11Connection& connection) : windows_(connection) {}

    /// Front to back.
    std::vector<QWidget*> shown();

    /// A widget of the front window, if it is shown. Null otherwise.
    QWidget* widget(const std::string& name);
    /// What a person reads there.
    static std::string text(const QWidget& widget);
    /// What a screen reader calls it.
    static std::string accessibleName(QWidget* widget);

    /// The names of the widgets of the front window that Tab stops at, in order.
    std::vector<std::string> tabOrder();

    void press(const std::string& name);
    /// The release of a mouse button that has been pressed there. Without effect once the button is gone.
    Block heldPress(const std::string& name);
    /// Into the front window's field that has the keyboard, or else the window.
    void pressReturn();
    void typeInto(const std::string& name, const std::string& text);

    /// Whether a person can choose that item of the menu bar of the front window.
    bool isAvailableInMenuBar(const std::string& menu, const std::string& item);
    /// Chooses an enabled item from the menu bar of the front window. False if there is no such item.
    bool chooseFromMenuBar(const std::string& menu, const std::string& item);

  private:
    QAction* inMenuBar(const std::string& menu, const std::string& item);

    X11Windows windows_;
};

}  // namespace vantrel::linuxdesktop
