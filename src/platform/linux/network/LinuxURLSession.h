#pragma once

#include <QThread>
#include <memory>

#include "platform/linux/threads/SerialQueue.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

class NetworkWorker;

/// Requests over Qt's network access, on a thread of its own; completions on a second one, so that a completion that
/// waits holds up neither the network nor its time-outs. HTTP/1.1, no cache, no cookies kept; bodies up to 64 MiB. What
/// is still under way when the session dies fails.
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
