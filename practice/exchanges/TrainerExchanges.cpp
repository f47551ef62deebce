#include "practice/exchanges/TrainerExchanges.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "practice/configuration/SessionCode.h"
#include "practice/messages/JsonReply.h"
#include "practice/pages/TrainerPage.h"

namespace vantrel::practice {

namespace {

using nlohmann::json;

/// The page asks every second; of a long list it gets the newest.
constexpr std::size_t violationsShown = 200;

struct ViolationEntry {
    std::size_t participant;
    const ReceivedViolation* violation;
};

/// The newest first, by when they came in.
std::vector<ViolationEntry> newestViolations(const std::vector<PracticeParticipant>& participants,
                                             const std::string& sessionCode) {
    std::vector<ViolationEntry> entries;
    for (std::size_t index = 0; index < participants.size(); ++index) {
        if (participants[index].sessionCode != sessionCode) continue;
        const auto& violations = participants[index].violations;
        const std::size_t count = std::min(violations.size(), violationsShown);
        for (std::size_t back = 1; back <= count; ++back) {
            entries.push_back({index, &violations[violations.size() - back]});
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const ViolationEntry& one, const ViolationEntry& other) {
        return one.violation->receivedAt > other.violation->receivedAt;
    });
    if (entries.size() > violationsShown) entries.resize(violationsShown);
    return entries;
}

json jsonOf(const PracticeParticipant& participant, std::size_t number, Presence presence) {
    json value{{"number", number},
               {"fullName", participant.fullName},
               {"email", participant.email},
               {"clientVersion", participant.clientVersion},
               {"joinedAt", participant.joinedAt},
               {"presence", textOf(presence)},
               {"leftAt", participant.leftAt ? json(*participant.leftAt) : json()},
               {"lastHeartbeat", nullptr},
               {"violationCount", participant.violations.size()}};
    if (const ReceivedHeartbeat* last = ParticipantPresence::lastHeartbeat(participant)) {
        value["lastHeartbeat"] = {{"receivedAt", last->receivedAt},
                                  {"lockdownActive", last->lockdownActive},
                                  {"meetConnected", last->meetConnected}};
    }
    return value;
}

}  // namespace

TrainerExchanges::TrainerExchanges(SessionRegistry& registry, const PracticeConfiguration& configuration)
    : registry_(registry), presence_(configuration.contactLostAfterSeconds) {}

bool TrainerExchanges::isTrainer(const RequestTarget& target) {
    return target.path() == "/" || (!target.segments().empty() && target.segments().front() == "trainer");
}

PracticeReply TrainerExchanges::handle(const PracticeRequest& request, const RequestTarget& target, double now) {
    const auto& segments = target.segments();
    const bool isPost = request.method == "POST";
    const bool isGet = request.method == "GET";
    if (target.path() == "/") return isGet ? trainerPage() : methodNotAllowed("GET");
    if (target.path() == "/trainer/state") return isGet ? state(now) : methodNotAllowed("GET");
    if (segments.size() == 3 && segments[1] == "end") return isPost ? end(segments[2]) : methodNotAllowed("POST");
    return notFound();
}

PracticeReply TrainerExchanges::state(double now) const {
    const std::vector<PracticeParticipant>& all = registry_.participants();
    json sessions = json::array();
    for (const PracticeSession& session : registry_.sessions()) {
        json participants = json::array();
        std::size_t violationCount = 0;
        for (std::size_t index = 0; index < all.size(); ++index) {
            if (all[index].sessionCode != session.code) continue;
            participants.push_back(jsonOf(all[index], index + 1, presence_.of(all[index], now)));
            violationCount += all[index].violations.size();
        }
        json violations = json::array();
        for (const ViolationEntry& entry : newestViolations(all, session.code)) {
            violations.push_back({{"participant", entry.participant + 1},
                                  {"fullName", all[entry.participant].fullName},
                                  {"type", entry.violation->type},
                                  {"detail", entry.violation->detail},
                                  {"at", entry.violation->at},
                                  {"receivedAt", entry.violation->receivedAt}});
        }
        sessions.push_back({{"code", session.code},
                            {"title", session.title},
                            {"status", textOf(session.status)},
                            {"participants", std::move(participants)},
                            {"violationCount", violationCount},
                            {"violations", std::move(violations)}});
    }
    PracticeReply reply = jsonReply(200, {{"now", now}, {"sessions", std::move(sessions)}});
    reply.headers.emplace_back("Cache-Control", "no-store");
    return reply;
}

PracticeReply TrainerExchanges::end(const std::string& code) {
    const std::string upper = upperCaseCode(code);
    if (!registry_.end(upper)) return errorReply(404, "session_not_found");
    return jsonReply(200, {{"code", upper}, {"status", textOf(SessionStatus::ended)}});
}

}  // namespace vantrel::practice
