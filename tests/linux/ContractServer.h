#pragma once

#include <httplib.h>

#include <atomic>
#include <string>
#include <thread>

#include "tests/contracts/ContractHost.h"

namespace vantrel::linuxdesktop {

/// A real server on the loopback address that answers as a contract test asks.
class ContractServer {
  public:
    explicit ContractServer(contracts::Server server);
    ~ContractServer();

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }

  private:
    void answer(const httplib::Request& request, httplib::Response& response);
    void wait(double seconds) const;

    const contracts::Server server_;
    httplib::Server http_;
    int port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};

}  // namespace vantrel::linuxdesktop
