#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
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

    /// Why the suite of that name cannot be held here as things stand, such as a permission that nobody has granted;
    /// without a value it can.
    virtual std::optional<std::string> obstacle(const std::string& suite) {
        (void)suite;
        return std::nullopt;
    }

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

    /// The executable of an application of the tests' own: "Google Chrome", with the bundle identifier
    /// com.google.Chrome. It takes these arguments, any number of times and in any order:
    ///
    ///   --window=TITLE,X,Y,WIDTH,HEIGHT  opens a normal window there, in points from the top left of the primary
    ///                                    display; it closes when it is asked to
    ///   --exits-without-windows          the application ends with its last window (else it goes on without one)
    ///   --ignores-terminate              a polite request to end is ignored
    ///   --exits-at-once                  ends as soon as it has started
    ///
    /// It leaves any other argument alone, and ends by itself with the host.
    virtual std::string peerExecutable() = 0;

    /// The arguments that a process of the peer executable received, in order; without a value as long as it has not
    /// read them.
    virtual std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) = 0;

    virtual std::string existingFile() = 0;
    /// A file that is not executable.
    virtual std::string plainFile() = 0;
    virtual std::string existingFolder() = 0;
    virtual std::string missingPath() = 0;
};

/// Defined by each executable that runs the suite.
std::unique_ptr<ContractHost> makeContractHost();

}  // namespace vantrel::contracts
