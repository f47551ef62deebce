#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lockdown/SessionEndReason.h"
#include "platform/system/ISO8601DateFormatter.h"
#include "platform/system/Log.h"
#include "platform/threads/Clock.h"
#include "platform/threads/Dispatch.h"
#include "platform/threads/Lock.h"
#include "platform/threads/RunLoop.h"
#include "server/ServerRequests.h"

namespace vantrel {

/// Keeps the server informed while a lockdown is active: one heartbeat every 15 seconds with the violations since the
/// last one, and a last message at the end. Main thread, except addViolation.
class HeartbeatService : public std::enable_shared_from_this<HeartbeatService> {
  public:
    /// The participant that the heartbeats are for.
    struct Identity {
        std::string apiBaseUrl;
        /// As the participant typed it.
        std::string sessionCode;
        std::string userToken;
        std::string clientVersion;
    };

    HeartbeatService(Identity identity, ServerRequests requests, Dispatch& dispatch, RunLoop& runLoop, Clock& clock,
                     ISO8601DateFormatter& dates, Log& log);

    /// Sent with every heartbeat.
    bool lockdownActive = false;
    bool meetConnected = false;

    /// Called when the server, or too many failures in a row, ended the session. Runs on the main queue, perhaps more
    /// than once. The service continues until it is stopped. Set before start.
    std::function<void()> onSessionEnded;

    bool isRunning() const { return isRunning_; }

    /// Sends a heartbeat at once and then every 15 seconds. Does nothing while running.
    void start();
    /// Does nothing while stopped.
    void stop();

    /// Queues a violation for the next heartbeat. Each is sent once, even if that heartbeat fails. Any thread.
    void addViolation(const std::string& type, const std::string& detail);

    /// Tells the server that the participant leaves. The reason appears in the log only. Blocks for at most 5 seconds.
    void sendDisconnect(SessionEndReason reason);

  private:
    struct Violation {
        std::string type;
        std::string detail;
        std::string at;
    };

    void sendHeartbeat();
    void handleReply(const URLReply& reply);
    void reportSessionEnded();
    std::vector<Violation> drainViolations();
    JSONObject body(bool lockdown, bool meet, JSONArray violations, bool disconnecting) const;
    std::string address() const;
    std::string now() const;

    const Identity identity_;
    const ServerRequests requests_;
    Dispatch& dispatch_;
    RunLoop& runLoop_;
    Clock& clock_;
    ISO8601DateFormatter& dates_;
    Log& log_;

    std::unique_ptr<Timer> timer_;
    bool isRunning_ = false;
    /// Incremented on the URL session's queue, reset on the main thread.
    std::atomic<std::int64_t> consecutiveErrors_ = 0;
    Lock violationsLock_;
    std::vector<Violation> pendingViolations_;
};

}  // namespace vantrel
