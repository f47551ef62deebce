#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "platform/linux/guard/process/ClientState.h"
#include "platform/linux/guard/process/Covers.h"
#include "platform/linux/guard/process/KernelDeadline.h"
#include "platform/linux/guard/process/KeyWatch.h"
#include "platform/linux/system/FileDescriptor.h"
#include "platform/linux/x11/X11Connection.h"

namespace vantrel::linuxdesktop {

/// What a guard does: it watches the client and gives the person back what the client can no longer give back.
///
/// - The filter's thread does not answer after a key: the keyboard, after one second.
/// - The client is stopped: the covered displays, within half a second, and the keyboard half a second later. A stop
///   that is over by then costs nothing.
/// - The main thread has not run for longer than the end of a lockdown takes: the covered displays.
/// - The client is gone: the desktop that it made for the full-screen browser, and that window's size. Keyboard and
///   covers go with the client's connections.
///
/// The kernel ends a guard that is itself stopped. One thread.
class ClientWatch {
  public:
    /// How often the client is looked at.
    static constexpr std::chrono::milliseconds betweenLooks{500};
    static constexpr std::chrono::seconds mainThreadPatience{15};

    /// Null if there is no X server, or none that reports raw key presses.
    static std::unique_ptr<ClientWatch> create(pid_t client, FileDescriptor line);

    /// Returns when the client or the X server is gone.
    void run();

  private:
    using Time = std::chrono::steady_clock::time_point;

    ClientWatch(std::unique_ptr<KernelDeadline> deadline, std::unique_ptr<X11Connection> connection, pid_t client,
                FileDescriptor line);

    void wait();
    bool listen();
    void hearThatTheMainThreadRuns();
    void look(Time now);
    void expectToWait();
    void putDesktopsBack();

    const std::unique_ptr<KernelDeadline> deadline_;
    const std::unique_ptr<X11Connection> connection_;
    const pid_t client_;
    const ClientState state_;
    const FileDescriptor line_;
    std::unique_ptr<KeyWatch> keys_;
    Covers covers_;
    Time nextLook_;
    Time mainThreadRan_;
    bool wasStopped_ = false;
};

}  // namespace vantrel::linuxdesktop
