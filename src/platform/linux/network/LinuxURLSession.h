#pragma once

#include <utility>

#include "platform/linux/network/NetworkWorker.h"
#include "platform/linux/threads/SerialQueue.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

/// Requests through libcurl, on a thread of its own. Completions run on a second thread, so that one that waits delays
/// neither the network nor its timeouts. HTTP/1.1, a connection for each request, no cache, no cookies kept; bodies up
/// to 64 MiB, also when unpacked. An address of more than a million bytes is not valid. Requests still under way when
/// the session is destroyed fail.
class LinuxURLSession final : public URLSession {
  public:
    LinuxURLSession() : worker_(completions_) {}

    void dataTask(URLRequest request, Completion completion) override {
        worker_.start(std::move(request), std::move(completion));
    }

  private:
    // Runs what is left of the completions at its end, after the network's.
    SerialQueue completions_;
    NetworkWorker worker_;
};

}  // namespace vantrel::linuxdesktop
