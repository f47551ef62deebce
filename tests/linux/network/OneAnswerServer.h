#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace vantrel::linuxdesktop {

/// Answers every connection's request with the same bytes and hangs up; a server that misbehaves to the byte. With an
/// endless part it goes on with that for as long as the client is there, and serves nobody else.
class OneAnswerServer {
  public:
    explicit OneAnswerServer(std::string answer, std::string endless = {});
    ~OneAnswerServer();

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }
    int requestCount() const { return requests_; }
    /// What the newest request began with, at least its headers; empty before there was one.
    std::string newestRequest() const;

  private:
    void serve();
    void sendEndless(int connection);

    const std::string answer_;
    const std::string endless_;
    std::atomic<bool> stopping_ = false;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<int> requests_ = 0;
    mutable std::mutex mutex_;
    std::string newest_;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
