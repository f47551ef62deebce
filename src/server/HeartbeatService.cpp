#include "server/HeartbeatService.h"

#include <mutex>
#include <utility>

#include "server/ServerReply.h"

namespace vantrel {
namespace {

constexpr double intervalSeconds = 15;
constexpr double heartbeatTimeout = 10;
constexpr double disconnectTimeout = 5;
constexpr double disconnectWait = 5;
constexpr std::int64_t maxConsecutiveErrors = 20;

}  // namespace

HeartbeatService::HeartbeatService(Identity identity, ServerRequests requests, Dispatch& dispatch, RunLoop& runLoop,
                                   Clock& clock, ISO8601DateFormatter& dates, Log& log)
    : identity_(std::move(identity)),
      requests_(requests),
      dispatch_(dispatch),
      runLoop_(runLoop),
      clock_(clock),
      dates_(dates),
      log_(log) {}

void HeartbeatService::start() {
    if (isRunning_) return;
    isRunning_ = true;
    consecutiveErrors_ = 0;
    log_.print("[HEARTBEAT] Avviato (ogni 15s) → " + identity_.apiBaseUrl);
    sendHeartbeat();
    timer_ = runLoop_.scheduledTimer(intervalSeconds, true, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->sendHeartbeat();
    });
}

void HeartbeatService::stop() {
    if (!isRunning_) return;
    timer_.reset();
    isRunning_ = false;
    log_.print("[HEARTBEAT] Fermato");
}

void HeartbeatService::addViolation(const std::string& type, const std::string& detail) {
    const std::scoped_lock guard(violationsLock_);
    pendingViolations_.push_back({type, detail, now()});
}

std::vector<HeartbeatService::Violation> HeartbeatService::drainViolations() {
    const std::scoped_lock guard(violationsLock_);
    return std::exchange(pendingViolations_, {});
}

void HeartbeatService::sendHeartbeat() {
    auto request = requests_.request(address(), "POST", heartbeatTimeout);
    if (!request) return;
    JSONArray violations;
    for (auto& violation : drainViolations()) {
        violations.emplace_back(JSONObject{{"type", std::move(violation.type)},
                                           {"detail", std::move(violation.detail)},
                                           {"at", std::move(violation.at)}});
    }
    if (!requests_.attach(*request, body(lockdownActive, meetConnected, std::move(violations), false))) return;
    requests_.send(*std::move(request), [weak = weak_from_this()](const URLReply& reply) {
        if (const auto self = weak.lock()) self->handleReply(reply);
    });
}

void HeartbeatService::handleReply(const URLReply& reply) {
    if (reply.error) {
        const auto errors = ++consecutiveErrors_;
        log_.print("[HEARTBEAT] Errore (" + std::to_string(errors) + "/" + std::to_string(maxConsecutiveErrors) +
                   "): " + reply.error->localizedDescription);
        if (errors < maxConsecutiveErrors) return;
        log_.print("[HEARTBEAT] Troppi errori — fine sessione");
        reportSessionEnded();
        return;
    }
    consecutiveErrors_ = 0;
    const auto object = requests_.object(reply);
    if (!object || booleanValue(*object, "sessionEnded") != true) return;
    log_.print("[HEARTBEAT] Sessione terminata dal backend");
    reportSessionEnded();
}

void HeartbeatService::reportSessionEnded() {
    dispatch_.mainQueue().async([weak = weak_from_this()] {
        if (const auto self = weak.lock(); self && self->onSessionEnded) self->onSessionEnded();
    });
}

void HeartbeatService::sendDisconnect(SessionEndReason reason) {
    auto request = requests_.request(address(), "POST", disconnectTimeout);
    if (!request || !requests_.attach(*request, body(false, false, {}, true))) return;
    requests_.sendAndWait(*std::move(request), disconnectWait, [](const URLReply&) {});
    log_.print("[HEARTBEAT] Disconnessione inviata: " + std::string(message(reason)));
}

JSONObject HeartbeatService::body(bool lockdown, bool meet, JSONArray violations, bool disconnecting) const {
    JSONObject object{{"sessionCode", identity_.sessionCode},
                      {"userToken", identity_.userToken},
                      {"timestamp", now()},
                      {"platform", "darwin"},
                      {"clientVersion", identity_.clientVersion},
                      {"lockdownActive", lockdown},
                      {"meetConnected", meet},
                      {"disconnecting", disconnecting}};
    // Not in the list above, which would copy them.
    object.emplace("violations", std::move(violations));
    return object;
}

std::string HeartbeatService::address() const {
    return identity_.apiBaseUrl + "/api/heartbeat";
}

std::string HeartbeatService::now() const {
    return dates_.string(clock_.secondsSince1970());
}

}  // namespace vantrel
