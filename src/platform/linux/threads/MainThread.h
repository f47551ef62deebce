#pragma once

#include <memory>

#include "platform/threads/Block.h"

class QObject;

namespace vantrel::linuxdesktop {

/// The main thread and Qt's event loop on it. Created on the main thread, after the application object.
class MainThread {
  public:
    MainThread();
    ~MainThread();
    MainThread(const MainThread&) = delete;
    MainThread& operator=(const MainThread&) = delete;

    /// Any thread.
    bool isCurrent() const;

    /// Runs the block as an event, whatever the main queue is doing, even under a modal alert. Any thread; events keep
    /// their order.
    void post(Block event);

    /// Runs what has been posted, and no other event. Main thread.
    void runPosted();

    /// Ends the process with a message if the calling thread is not the main thread. Qt's widgets do not check this
    /// themselves.
    static void require(const char* operation);

  private:
    std::unique_ptr<QObject> receiver_;
};

}  // namespace vantrel::linuxdesktop
