#pragma once

#include <QThread>
#include <memory>

#include "platform/linux/threads/SerialQueue.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

class NetworkWorker;

/// Requests through Qt's network access, on a thread of its own. Completions run on a second thread, so that one that
/// waits delays neither the network nor its timeouts. HTTP/1.1, no cache, no cookies kept; bodies up to 64 MiB.
/// Requests still under way when the session is destroyed fail.
class LinuxURLSession final : public URLSession {
  public:
    LinuxURLSession();
    ~LinuxURLSession() override;

    void dataTask(URLRequest request, Completion completion) override;

  private:
    SerialQueue completions_;
    QThread thread_;
    std::unique_ptr<NetworkWorker> worker_;
};

}  // namespace vantrel::linuxdesktop
