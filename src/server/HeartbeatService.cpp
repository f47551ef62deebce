#include "server/HeartbeatService.h"

#include <utility>

namespace vantrel {

HeartbeatService::HeartbeatService(std::string apiBaseUrl, std::string sessionCode, std::string userToken,
                                   std::string clientVersion)
    : apiBaseUrl_(std::move(apiBaseUrl)),
      sessionCode_(std::move(sessionCode)),
      userToken_(std::move(userToken)),
      clientVersion_(std::move(clientVersion)) {}

void HeartbeatService::start() {}

void HeartbeatService::stop() {}

void HeartbeatService::addViolation(const std::string&, const std::string&) {}

void HeartbeatService::sendDisconnect(SessionEndReason) {}

}  // namespace vantrel
