#pragma once

#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/linux/network/CurlHandles.h"
#include "platform/network/URLSession.h"

namespace vantrel::linuxdesktop {

class SerialQueue;
class URLExchange;

/// The thread on which all requests are sent and all replies are read.
class NetworkWorker {
  public:
    explicit NetworkWorker(SerialQueue& completions);
    /// Fails all requests under way.
    ~NetworkWorker();
    NetworkWorker(const NetworkWorker&) = delete;
    NetworkWorker& operator=(const NetworkWorker&) = delete;

    /// Any thread.
    void start(URLRequest request, URLSession::Completion completion);

  private:
    struct Start {
        URLRequest request;
        URLSession::Completion completion;
    };
    using Exchanges = std::list<std::unique_ptr<URLExchange>>;

    void run();
    /// False when the thread is to end.
    bool takeStarts();
    void takeEnds();
    void giveUpIdle();
    void wait();
    void deliver(const URLSession::Completion& completion, URLReply reply);

    SerialQueue& completions_;
    const CurlMulti multi_;
    // The network thread's alone.
    Exchanges exchanges_;
    std::mutex mutex_;
    std::vector<Start> starts_;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
