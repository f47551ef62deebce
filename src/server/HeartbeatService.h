#pragma once

#include <functional>
#include <string>

#include "lockdown/SessionEndReason.h"

namespace vantrel {

/// Keeps the server informed while a lockdown is active. Belongs to the main thread. Its reports are still to come: the
/// operations below are called in their places and do nothing.
class HeartbeatService {
  public:
    HeartbeatService(std::string apiBaseUrl, std::string sessionCode, std::string userToken, std::string clientVersion);

    /// Sent with every heartbeat.
    bool lockdownActive = false;
    bool meetConnected = false;

    /// The server, or too many failures, ended the session. Called on the main queue. Set before start.
    std::function<void()> onSessionEnded;

    void start();
    void stop();

    /// Queues a violation for the next heartbeat. Any thread.
    void addViolation(const std::string& type, const std::string& detail);

    /// Tells the server that the participant leaves.
    void sendDisconnect(SessionEndReason reason);

  private:
    std::string apiBaseUrl_;
    std::string sessionCode_;
    std::string userToken_;
    std::string clientVersion_;
};

}  // namespace vantrel
