#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/virtual/network/NetworkAnswer.h"
#include "tests/virtual/MacTest.h"

namespace vantrel {

/// The whole client, launched on a virtual Mac of its own with Chrome, with a server that the test scripts.
class ClientTest : public virtualmac::MacTest {
  protected:
    static constexpr const char* server = "https://server.example";

    /// The saved settings of somebody who has been here before.
    static virtualmac::Options returningParticipant();

    explicit ClientTest(virtualmac::Options options = returningParticipant());

    /// What the server answers from now on to requests whose "METHOD ADDRESS" begins with `request`; the longest match
    /// counts.
    void answer(const std::string& request, virtualmac::NetworkAnswer answer);

    /// Starts the client and lets the version check pass.
    void launch();
    /// Types the session code and presses the join button.
    void join(const std::string& code = "NQRP5D");
    /// Joins, and waits until the lockdown is complete.
    void enterLockdown();
    /// Chooses the end item of the status menu; its question is then up.
    void askToEnd();

    std::string text(std::string_view controlId);
    bool isEnabled(std::string_view controlId);
    /// The view that is shown in the client's window; "none" when the window is hidden.
    std::string screen();
    bool isClosable();
    /// The texts of the alerts that are up.
    std::vector<std::string> alerts();
    /// "METHOD ADDRESS" of what was sent.
    std::vector<std::string> requests();
    /// The bodies sent to addresses that end in `path`.
    std::vector<std::string> bodies(std::string_view path);
    /// Fails unless nothing of a lockdown is left.
    void expectNothingLeft();

  private:
    std::map<std::string, virtualmac::NetworkAnswer> answers_;
};

}  // namespace vantrel
