#pragma once

#include <QtGlobal>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

class MainThread;
class RunLoopModes;

/// Qt ends the process at once when the X server has closed its connection, as xkill makes it do. This comes in between
/// and lets the client end as its rules say, although nothing is shown any more: the main queue and the run loop's
/// timers go on, without alerts and menus, and the application is asked to terminate until it agrees. Nobody is held
/// for ever by a client that does not: the process ends after half a minute.
///
/// Main thread; one at a time in a process.
class LostDisplay {
  public:
    /// `terminate` asks. `endProcess` does not return.
    struct Ends {
        Block terminate;
        Block endProcess;
    };

    LostDisplay(MainThread& mainThread, RunLoopModes& modes, Ends ends);
    ~LostDisplay();
    LostDisplay(const LostDisplay&) = delete;
    LostDisplay& operator=(const LostDisplay&) = delete;

  private:
    static void hear(QtMsgType, const QMessageLogContext&, const QString& message);
    [[noreturn]] void goOnWithoutDisplay();

    MainThread& mainThread_;
    RunLoopModes& modes_;
    const Ends ends_;
    const QtMessageHandler former_;
};

}  // namespace vantrel::linuxdesktop
