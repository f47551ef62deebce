#pragma once

#include "platform/ui/Menu.h"

class QMenu;

namespace vantrel::linuxdesktop {

class MainThread;
class Responder;
class RunLoopModes;

/// Builds Qt's menus from the client's. An open menu is tracked, which stops the run loop's timers. A chosen item acts
/// in an event of its own, after its menu has closed, unless the item is gone by then. Main thread.
class MenuBuilder {
  public:
    MenuBuilder(MainThread& mainThread, RunLoopModes& modes, const Responder& responder)
        : mainThread_(mainThread), modes_(modes), responder_(responder) {}

    /// Replaces the menu's contents.
    void fill(QMenu& menu, const Menu& contents) const;

    /// Stops the timers whenever the menu is open. Call it once for each menu.
    void track(QMenu& menu) const;

  private:
    void addItem(QMenu& menu, const MenuItem& item) const;

    MainThread& mainThread_;
    RunLoopModes& modes_;
    const Responder& responder_;
};

}  // namespace vantrel::linuxdesktop
