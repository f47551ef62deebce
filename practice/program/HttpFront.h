#pragma once

#include <memory>
#include <optional>
#include <string>

#include "practice/PracticeServer.h"
#include "practice/program/HttpLimits.h"

namespace vantrel::practice {

/// Carries a PracticeServer's exchanges over HTTP, one exchange for each connection. It does the waiting, dropping and
/// stalling that the replies ask for. A few threads serve all connections: one that is slow, silent, delayed or stalled
/// uses a place but no thread. If all places are used, a new connection replaces the one that has waited longest for
/// its request.
class HttpFront {
  public:
    /// The server must outlive it.
    explicit HttpFront(PracticeServer& practice, HttpLimits limits = {});
    /// Ends everything under way.
    ~HttpFront();
    HttpFront(const HttpFront&) = delete;
    HttpFront& operator=(const HttpFront&) = delete;

    /// Starts listening on an IPv4 or IPv6 address and returns the port; 0 takes a free one. Empty if address and port
    /// are not available.
    std::optional<int> listen(const std::string& address, int port);

  private:
    class Listener;

    std::unique_ptr<Listener> listener_;
};

}  // namespace vantrel::practice
