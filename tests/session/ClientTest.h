#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/network/NetworkAnswer.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {

/// The whole client on its own virtual Mac with Chrome, and a server that the test scripts.
class ClientTest : public virtualmac::MacTest {
  protected:
    static constexpr const char* server = "https://server.example";

    /// The saved settings of a returning participant.
    static virtualmac::Options returningParticipant();

    explicit ClientTest(virtualmac::Options options = returningParticipant());

    /// Sets the server's answer to requests whose "METHOD ADDRESS" begins with `request`. The longest match counts.
    void answer(const std::string& request, virtualmac::NetworkAnswer answer);

    /// Starts the client and waits for the version check.
    void launch();
    /// Types the session code and presses the join button.
    void join(const std::string& code = "NQRP5D");
    /// Joins, and waits until the lockdown is complete.
    void enterLockdown();
    /// Chooses the end item of the status menu. Its question is then shown.
    void askToEnd();

    std::string text(std::string_view controlId);
    bool isEnabled(std::string_view controlId);
    /// The view shown in the client's window, or "none" if the window is hidden.
    std::string screen();
    bool isClosable();
    /// The texts of the alerts shown.
    std::vector<std::string> alerts();
    /// The requests sent, as "METHOD ADDRESS".
    std::vector<std::string> requests();
    /// The bodies sent to addresses that end in `path`.
    std::vector<std::string> bodies(std::string_view path);
    /// For how many seconds of uptime a read of another application that hangs blocks. Starts that application.
    double timeOfAReadThatHangs();
    /// Fails if anything of a lockdown is left.
    void expectNothingLeft();

  private:
    std::map<std::string, virtualmac::NetworkAnswer> answers_;
};

}  // namespace vantrel
