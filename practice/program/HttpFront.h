#pragma once

#include <memory>
#include <optional>
#include <string>

#include "practice/PracticeServer.h"
#include "practice/program/HttpLimits.h"

namespace vantrel::practice {

/// Carries a PracticeServer's exchanges over HTTP, one exchange a connection, and does the waiting, dropping and
/// stalling that its replies ask for. A few threads serve all connections: one that is slow, silent, delayed or stalled
/// takes up a place and no thread. When all places are taken, the connection whose request has been awaited longest
/// makes place for a new one.
class HttpFront {
  public:
    /// The server has to outlive it.
    explicit HttpFront(PracticeServer& practice, HttpLimits limits = {});
    /// Ends everything under way.
    ~HttpFront();
    HttpFront(const HttpFront&) = delete;
    HttpFront& operator=(const HttpFront&) = delete;

    /// Starts listening on an IPv4 or IPv6 address and returns the port; 0 takes a free one. Empty when the two are not
    /// to be had.
    std::optional<int> listen(const std::string& address, int port);

  private:
    class Listener;

    std::unique_ptr<Listener> listener_;
};

}  // namespace vantrel::practice
