#include "practice/exchanges/ApiExchanges.h"

#include <nlohmann/json.hpp>
#include <variant>

#include "practice/bodies/HeartbeatBody.h"
#include "practice/bodies/JoinBody.h"
#include "practice/configuration/ClientVersion.h"
#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

ApiExchanges::ApiExchanges(SessionRegistry& registry, const PublishedVersion& version,
                           const PracticeConfiguration& configuration)
    : registry_(registry), version_(version), configuration_(configuration) {}

PracticeReply ApiExchanges::handle(const PracticeRequest& request, const RequestTarget& target, double now) {
    const auto& segments = target.segments();
    if (segments.size() < 2 || segments[0] != "api") return notFound();

    if (segments[1] == "sessions" && segments.size() == 3) {
        return request.method == "GET" ? probe(segments[2]) : methodNotAllowed("GET");
    }
    if (segments[1] == "sessions" && segments.size() == 4 && segments[3] == "join") {
        return request.method == "POST" ? join(segments[2], request, now) : methodNotAllowed("POST");
    }
    if (target.path() == "/api/heartbeat") {
        return request.method == "POST" ? heartbeat(request, now) : methodNotAllowed("POST");
    }
    if (target.path() == "/api/version/latest") {
        return request.method == "GET" ? latestVersion(target) : methodNotAllowed("GET");
    }
    return notFound();
}

PracticeReply ApiExchanges::probe(const std::string& code) const {
    const auto session = registry_.session(code);
    if (!session) return errorReply(404, "session_not_found");
    return jsonReply(200, {{"code", session->code}, {"title", session->title}, {"status", textOf(session->status)}});
}

PracticeReply ApiExchanges::join(const std::string& code, const PracticeRequest& request, double now) {
    const auto session = registry_.session(code);
    if (!session) return errorReply(404, "session_not_found");
    if (session->status == SessionStatus::ended) return errorReply(410, "session_ended");

    const auto body = JoinBody::read(request.body);
    if (const auto* error = std::get_if<BodyError>(&body)) return errorReply(400, "invalid_body", error->message);
    const JoinBody& join = std::get<JoinBody>(body);
    const VersionConfiguration version = version_.current();
    if (isOutdated(join.clientVersion, version)) {
        return jsonReply(
            400,
            {{"error", "client_outdated"}, {"message", version.minimumMessage}, {"downloadUrl", version.downloadUrl}});
    }
    const auto token = registry_.join(code, join, now);
    if (!token) return errorReply(503, "too_many_participants");
    return jsonReply(
        200, {{"meetLink", meetLink(*session, request)}, {"userToken", *token}, {"sessionTitle", session->title}});
}

PracticeReply ApiExchanges::heartbeat(const PracticeRequest& request, double now) {
    const auto body = HeartbeatBody::read(request.body);
    if (const auto* error = std::get_if<BodyError>(&body)) return errorReply(400, "invalid_body", error->message);
    switch (registry_.heartbeat(std::get<HeartbeatBody>(body), now)) {
        case SessionRegistry::Heard::unknownToken:
            return errorReply(401, "unknown_token");
        case SessionRegistry::Heard::otherSession:
            return errorReply(403, "other_session");
        case SessionRegistry::Heard::ended:
            return jsonReply(200, {{"sessionEnded", true}});
        case SessionRegistry::Heard::active:
            break;
    }
    return jsonReply(200, {{"sessionEnded", false}});
}

PracticeReply ApiExchanges::latestVersion(const RequestTarget& target) const {
    const auto system = target.query("os");
    const auto current = target.query("current");
    if (!system || system->empty()) return errorReply(400, "invalid_query", "\"os\" is missing");
    const auto currentVersion = ClientVersion::parse(current.value_or(std::string()));
    if (!currentVersion) return errorReply(400, "invalid_query", "\"current\" is not a version");

    const VersionConfiguration version = version_.current();
    const auto latest = ClientVersion::parse(version.latest);
    if (*system != "macos" || !latest || *latest <= *currentVersion)
        return jsonReply(200, {{"updateAvailable", false}});
    return jsonReply(200, {{"updateAvailable", true},
                           {"severity", version.severity},
                           {"latestVersion", version.latest},
                           {"releaseNotes", version.releaseNotes},
                           {"downloadUrl", version.downloadUrl}});
}

std::string ApiExchanges::meetLink(const PracticeSession& session, const PracticeRequest& request) const {
    if (!session.meetLink.empty()) return session.meetLink;
    std::string base = configuration_.publicAddress;
    if (base.empty()) {
        const std::string host = request.header("Host");
        base = "http://" + (host.empty() ? "localhost" : host);
    }
    if (base.back() == '/') base.pop_back();
    return base + "/meet/" + session.code;
}

bool ApiExchanges::isOutdated(const std::string& clientVersion, const VersionConfiguration& published) {
    const auto minimum = ClientVersion::parse(published.minimum);
    if (!minimum) return false;
    const auto version = ClientVersion::parse(clientVersion);
    return !version || *version < *minimum;
}

}  // namespace vantrel::practice
