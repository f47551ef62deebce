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
    /// As it stands in the request's first line.
    std::string target;
    /// Names in lower case.
    std::map<std::string, std::string> headers;
    std::string body;
};

struct ServedAnswer {
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    /// Pieces of the body, each with its delay in seconds after the previous part.
    std::vector<std::pair<double, std::string>> body;
    /// Seconds before the headers are sent.
    double delay = 0;
    /// The headers promise a body that never comes.
    bool stalls = false;
};

using Server = std::function<ServedAnswer(const ServedRequest&)>;

/// A computer under test, seen from the test's thread, which is not its main thread. Every test gets a new one. Its
/// destructor leaves nothing running that could call back.
class ContractHost {
  public:
    virtual ~ContractHost() = default;

    virtual Computer& computer() = 0;

    /// Why that suite cannot run here, such as a missing permission. Empty if it can run.
    virtual std::optional<std::string> obstacle(const std::string& suite) {
        (void)suite;
        return std::nullopt;
    }

    /// Why the system may decline to bring an application to the front, or accept it and not follow. Empty if it always
    /// does it.
    virtual std::optional<std::string> mayDeclineActivation() { return std::nullopt; }

    /// Why an alert may not be shown as it asks to be, or to nobody. Empty if it always is.
    virtual std::optional<std::string> mayDeclineAlerts() { return std::nullopt; }

    /// Runs the block on the main thread, as a click or a key would, and returns when it has finished.
    virtual void onMain(Block block) = 0;
    /// The same without waiting.
    virtual void postToMain(Block block) = 0;

    /// Lets at least that much uptime pass.
    virtual void letTimePass(double seconds) = 0;

    /// Presses that button of the front alert, which is shown or will be soon.
    virtual void pressAlertButton(const std::string& title) = 0;

    /// Starts a server, which may be called on any thread. Returns its address without a trailing slash.
    virtual std::string serve(Server server) = 0;
    /// An address where connections are refused.
    virtual std::string refusingAddress() = 0;

    /// The executable of the tests' own application: "Google Chrome", with the bundle identifier com.google.Chrome. It
    /// accepts these arguments, any number of times and in any order:
    ///
    ///   --window=TITLE,X,Y,WIDTH,HEIGHT  opens a normal window there, in points from the top left of the primary
    ///                                    display; it closes when asked to. In the title, %FF stands for
    ///                                    that byte, which is in no text
    ///   --exits-without-windows          the application ends with its last window (otherwise it continues without
    ///   one)
    ///   --ignores-terminate              ignores a polite request to end
    ///   --exits-at-once                  ends as soon as it has started
    ///
    /// It ignores other arguments, and ends with the host.
    virtual std::string peerExecutable() = 0;

    struct NamedPeer {
        std::string executable;
        /// As the client is to be told it.
        std::string localizedName;
    };
    /// The tests' own application under a name that is not UTF-8. Where no file can have such a name, as on a Mac, it
    /// is the application as it is.
    virtual NamedPeer peerWhoseNameIsNotUTF8() = 0;

    /// The arguments that a process of the peer executable has received, in order. Empty until it has read them.
    virtual std::optional<std::vector<std::string>> argumentsReceived(ProcessIdentifier peer) = 0;

    /// Starts the tests' own application, without arguments, from a parent that never waits for it: once it has ended
    /// it stays in the table of processes, as a zombie, at least until the host's end.
    virtual ProcessIdentifier startPeerWithoutWaiting() = 0;

    /// Whether a successful opening always names the application, even one that has ended since.
    virtual bool namesEveryOpenedApplication() { return true; }

    virtual std::string existingFile() = 0;
    /// A file that is not executable.
    virtual std::string plainFile() = 0;
    virtual std::string existingFolder() = 0;
    virtual std::string missingPath() = 0;
};

/// Defined by each executable that runs the suite.
std::unique_ptr<ContractHost> makeContractHost();

}  // namespace vantrel::contracts
