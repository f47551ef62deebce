#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/system/Log.h"
#include "platform/system/UnicodeText.h"
#include "platform/system/UserDefaults.h"
#include "server/JoinOutcome.h"
#include "server/ServerRequests.h"

namespace vantrel {

/// Registers a participant for a session: asks whether the session is open, then joins it.
class SessionJoin {
  public:
    /// Called when the server refused the client as too old, with its message and the download address; either may be
    /// empty. Runs on the URL session's queue.
    using ClientOutdated = std::function<void(std::string message, std::string downloadUrl)>;

    SessionJoin(ServerRequests requests, UserDefaults& defaults, UnicodeText& unicode, Log& log,
                std::string clientVersion)
        : requests_(requests),
          defaults_(defaults),
          unicode_(unicode),
          log_(log),
          clientVersion_(std::move(clientVersion)) {}

    /// Set before the first join.
    ClientOutdated onClientOutdated;

    /// Blocks the calling thread for at most about 20 seconds, so never call it on the main thread. The arguments are
    /// sent unchanged, except that the code becomes upper case. Nothing is retried.
    JoinOutcome join(const std::string& sessionCode, const std::string& fullName, const std::string& email) const;

  private:
    std::string probe(URLRequest request) const;
    JoinOutcome classify(const URLReply& reply) const;

    ServerRequests requests_;
    UserDefaults& defaults_;
    UnicodeText& unicode_;
    Log& log_;
    std::string clientVersion_;
};

}  // namespace vantrel
