#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace vantrel::linuxdesktop {

/// Answers every connection's request with the same bytes and hangs up; a server that misbehaves to the byte.
class OneAnswerServer {
  public:
    explicit OneAnswerServer(std::string answer);
    ~OneAnswerServer();

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }
    int requestCount() const { return requests_; }

  private:
    void serve();

    const std::string answer_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<int> requests_ = 0;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
