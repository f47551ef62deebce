#pragma once

#include <httplib.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace vantrel::linuxdesktop {

/// A TLS server on the loopback address with a certificate for that address that nobody but itself has signed.
class SelfSignedServer {
  public:
    SelfSignedServer();
    ~SelfSignedServer();

    std::string address() const { return "https://127.0.0.1:" + std::to_string(port_); }
    /// Requests that a client has sent through TLS.
    int requestCount() const { return requests_; }

  private:
    std::atomic<int> requests_ = 0;
    std::unique_ptr<httplib::SSLServer> server_;
    int port_ = 0;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
