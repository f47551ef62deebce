#pragma once

#include <optional>
#include <string>

namespace vantrel::practice {

class StopSignal;

/// The connection of one client, seen from beside the HTTP library, which hands out no socket: found among the
/// process's descriptors by its two ends. Borrowed, never closed here. Good for as long as its exchange is being
/// answered.
class ClientConnection {
  public:
    /// An IPv4 client by its address and port, and the port it reached. Empty when it is not connected any more.
    static std::optional<ClientConnection> find(const std::string& address, int port, int localPort);

    /// Ends every connection to that port, so that nobody keeps waiting for one to say something.
    static void endAll(int localPort);

    enum class Wait { timePassed, clientGone, stopped };
    /// Blocks until the seconds have passed (none: for good), the client has gone, or the program is to end. A client
    /// that closed only its sending half counts as gone.
    Wait wait(std::optional<double> seconds, const StopSignal& stop) const;

    /// Ends the connection in both directions: whatever the library writes afterwards goes nowhere.
    void end() const;

  private:
    explicit ClientConnection(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
};

}  // namespace vantrel::practice
