#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace vantrel::linuxdesktop {

/// A misbehaving server: answers each connection's request with exactly these bytes and hangs up, or waits until the
/// client does. If there is an endless part, it repeats that as long as the client is connected, and serves nobody
/// else.
class OneAnswerServer {
  public:
    enum class Afterwards { hangsUp, waits };

    explicit OneAnswerServer(std::string answer, std::string endless = {});
    OneAnswerServer(std::string answer, Afterwards afterwards);
    ~OneAnswerServer();

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }
    int requestCount() const { return requests_; }
    /// The beginning of the newest request, with at least its headers. Empty before the first one.
    std::string newestRequest() const;

  private:
    OneAnswerServer(std::string answer, std::string endless, Afterwards afterwards);

    void serve();
    void sendEndless(int connection);

    const std::string answer_;
    const std::string endless_;
    const Afterwards afterwards_;
    std::atomic<bool> stopping_ = false;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<int> requests_ = 0;
    mutable std::mutex mutex_;
    std::string newest_;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
