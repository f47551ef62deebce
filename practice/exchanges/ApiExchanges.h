#pragma once

#include <string>

#include "practice/configuration/PracticeConfiguration.h"
#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"
#include "practice/messages/RequestTarget.h"
#include "practice/state/PublishedVersion.h"
#include "practice/state/SessionRegistry.h"

namespace vantrel::practice {

/// The client's requests under /api: the session, the join, the heartbeat and the version check.
class ApiExchanges {
  public:
    ApiExchanges(SessionRegistry& registry, const PublishedVersion& version,
                 const PracticeConfiguration& configuration);

    /// `now` in seconds since 1970.
    PracticeReply handle(const PracticeRequest& request, const RequestTarget& target, double now);

  private:
    PracticeReply probe(const std::string& code) const;
    PracticeReply join(const std::string& code, const PracticeRequest& request, double now);
    PracticeReply heartbeat(const PracticeRequest& request, double now);
    PracticeReply latestVersion(const RequestTarget& target) const;
    std::string meetLink(const PracticeSession& session, const PracticeRequest& request) const;
    static bool isOutdated(const std::string& clientVersion, const VersionConfiguration& published);

    SessionRegistry& registry_;
    const PublishedVersion& version_;
    const PracticeConfiguration& configuration_;
};

}  // namespace vantrel::practice
