#pragma once

#include <memory>
#include <string>

#include "tests/contracts/ContractHost.h"

namespace vantrel::contracts {

/// A real server on the loopback address that answers as a contract test asks.
class ContractServer {
  public:
    explicit ContractServer(Server server);
    ~ContractServer();

    std::string address() const;

  private:
    class Listener;

    const std::unique_ptr<Listener> listener_;
};

}  // namespace vantrel::contracts
