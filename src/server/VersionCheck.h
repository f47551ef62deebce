#pragma once

#include <optional>
#include <string>

#include "platform/system/Log.h"
#include "server/ServerRequests.h"

namespace vantrel {

/// A newer client that the server offers. Texts missing in the reply are empty; the default severity is "info".
struct UpdateOffer {
    std::string severity;
    std::string latestVersion;
    std::string releaseNotes;
    std::string downloadUrl;
    bool operator==(const UpdateOffer&) const = default;
};

/// Asks the server once whether a newer client exists, and reads the reply. Any thread. Failures are only logged.
class VersionCheck {
  public:
    VersionCheck(ServerRequests requests, const URLs& urls, Log& log) : requests_(requests), urls_(urls), log_(log) {}

    /// Returns at once. The completion runs on the URL session's queue.
    void send(const std::string& baseAddress, const std::string& clientVersion,
              URLSession::Completion completion) const;

    /// The newer version, if the reply offers one.
    std::optional<UpdateOffer> read(const URLReply& reply) const;

  private:
    ServerRequests requests_;
    const URLs& urls_;
    Log& log_;
};

}  // namespace vantrel
