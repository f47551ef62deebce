#pragma once

#include "platform/ui/Menu.h"

class QMenu;

namespace vantrel::linuxdesktop {

class MainThread;
class Responder;
class RunLoopModes;

/// Makes Qt's menus from the client's. An open menu is tracked, which holds the run loop's timers; a chosen item acts
/// from an event of its own after its menu has gone. Main thread.
class MenuBuilder {
  public:
    MenuBuilder(MainThread& mainThread, RunLoopModes& modes, const Responder& responder)
        : mainThread_(mainThread), modes_(modes), responder_(responder) {}

    /// Empties the menu and fills it anew.
    void fill(QMenu& menu, const Menu& contents) const;

    /// Holds the timers whenever the menu is open. Once for each menu.
    void track(QMenu& menu) const;

  private:
    void addItem(QMenu& menu, const MenuItem& item) const;

    MainThread& mainThread_;
    RunLoopModes& modes_;
    const Responder& responder_;
};

}  // namespace vantrel::linuxdesktop
