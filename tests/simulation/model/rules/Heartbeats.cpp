#include "tests/simulation/model/rules/Heartbeats.h"

#include <set>
#include <string>

#include "tests/simulation/model/reading/JsonObject.h"

namespace vantrel::simulation {
namespace {

constexpr std::string_view path = "/api/heartbeat";

const char* whatIsWrong(const Entry& request, const std::set<std::string>& tokens) {
    if (request.further.size() != 2 || request.further[0] != "Content-Type: application/json")
        return "it has one header and a body";
    const auto body = JsonObject::read(request.further[1]);
    // A long body is shown in part.
    if (!body) return request.further[1].size() < 200 ? "the body is no object" : nullptr;
    if (body->size() != 9 || !body->raw("violations") || !body->raw("timestamp") || !body->raw("sessionCode"))
        return "it has nine keys";
    if (body->text("clientVersion") != "2.0-macOS" || body->text("platform") != "darwin")
        return "the platform and the version are fixed";
    if (tokens.count(body->text("userToken").value_or("")) == 0) return "no join has given this token";
    const bool leaves = body->isTrue("disconnecting");
    const std::string_view active = leaves ? "false" : "true";
    const bool right = body->raw("lockdownActive") == active && body->raw("meetConnected") == active &&
                       body->raw("disconnecting") == (leaves ? "true" : "false");
    return right ? nullptr : "a wrong flag";
}

}  // namespace

void heartbeatsHaveTheirForm(const Transcript& transcript, Verdict& verdict) {
    constexpr std::string_view begun = "[HEARTBEAT] Avviato (ogni 15s) → ";
    std::set<std::string> addresses;
    std::set<std::string> tokens;
    for (const Entry& entry : transcript.entries()) {
        if (entry.begins("log", begun)) addresses.insert(std::string(entry.text.substr(begun.size())));
        if (entry.is("reply") && entry.text.ends_with("/join") && !entry.further.empty()) {
            const auto body = JsonObject::read(entry.further[0]);
            const auto token = body ? body->text("userToken") : std::nullopt;
            if (token) tokens.insert(*token);
        }
        if (!entry.begins("request", "POST ") || entry.text.ends_with("/join")) continue;
        const std::string_view address = entry.text.substr(std::string_view("POST ").size());
        const bool known = address.ends_with(path) &&
                           addresses.count(std::string(address.substr(0, address.size() - path.size()))) > 0;
        // A notice may come of heartbeats that never began.
        const bool begins = addresses.empty() && address.ends_with(path);
        if (!known && !begins) verdict.object(entry.line, "no heartbeats go there");
        if (const char* const wrong = whatIsWrong(entry, tokens)) verdict.object(entry.line, wrong);
    }
}

}  // namespace vantrel::simulation
