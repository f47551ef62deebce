#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Computer.h"

namespace vantrel::contracts {

struct ServedRequest {
    std::string method;
    /// Path and query.
    std::string target;
    /// Names in lower case.
    std::map<std::string, std::string> headers;
    std::string body;
};

struct ServedAnswer {
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    /// Pieces of the body, each sent so many seconds after what came before it.
    std::vector<std::pair<double, std::string>> body;
    /// Seconds before the headers are sent.
    double delay = 0;
    /// The headers promise a body that never comes.
    bool stalls = false;
};

using Server = std::function<ServedAnswer(const ServedRequest&)>;

/// A computer on trial, seen from the test's own thread, which is not its main thread. Every test has a new one; its
/// end leaves nothing running that could call back.
class ContractHost {
  public:
    virtual ~ContractHost() = default;

    virtual Computer& computer() = 0;

    /// Runs the block on the main thread, as a click or a key would, and returns when it has finished.
    virtual void onMain(Block block) = 0;
    /// The same without waiting.
    virtual void postToMain(Block block) = 0;

    /// At least that much uptime passes.
    virtual void letTimePass(double seconds) = 0;

    /// Presses that button of the alert in front, which is up or comes up soon.
    virtual void pressAlertButton(const std::string& title) = 0;

    /// Starts a server, which may be asked on any thread; the address without a slash at its end.
    virtual std::string serve(Server server) = 0;
    /// An address where connections are refused.
    virtual std::string refusingAddress() = 0;

    virtual std::string existingFile() = 0;
    virtual std::string existingFolder() = 0;
    virtual std::string missingPath() = 0;
};

/// Defined by each executable that runs the suite.
std::unique_ptr<ContractHost> makeContractHost();

}  // namespace vantrel::contracts
