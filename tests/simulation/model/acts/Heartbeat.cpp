#include "tests/simulation/model/acts/Heartbeat.h"

#include <array>
#include <cstdio>
#include <utility>

#include "tests/simulation/model/acts/Part.h"
#include "tests/simulation/model/reading/JsonObject.h"

namespace vantrel::simulation {
namespace {

std::string dateOf(std::int64_t seconds) {
    std::int64_t days = seconds / 86400;
    const std::int64_t ofDay = seconds % 86400;
    days += 719468;  // from 1 March of the year 0
    const std::int64_t era = days / 146097;
    const std::int64_t ofEra = days % 146097;
    const std::int64_t year = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
    const std::int64_t ofYear = ofEra - (365 * year + year / 4 - year / 100);
    const std::int64_t shifted = (5 * ofYear + 2) / 153;
    const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ",
                  static_cast<int>(year + era * 400 + (month <= 2 ? 1 : 0)), static_cast<int>(month),
                  static_cast<int>(ofYear - (153 * shifted + 2) / 5 + 1), static_cast<int>(ofDay / 3600),
                  static_cast<int>(ofDay / 60 % 60), static_cast<int>(ofDay % 60));
    return text.data();
}

struct Flags {
    bool active;
    bool disconnecting;
};

void checkViolations(Stage& stage, const Entry& request, const JsonObject& body, std::vector<Violation> sent) {
    const auto records = JsonObject::elements(body.raw("violations").value_or(""));
    if (!records) return stage.depart(request.line, "the violations are no list");
    stage.turnTo("each violation is sent once, in its order, with its time");
    while (sent.size() > records->size() && !sent.front().sure) sent.erase(sent.begin());
    if (records->size() != sent.size()) {
        return stage.depart(request.line, std::to_string(sent.size()) + " violations have to be sent, not " +
                                              std::to_string(records->size()));
    }
    for (std::size_t index = 0; index < sent.size(); ++index) {
        const auto record = JsonObject::read((*records)[index]);
        const Violation& violation = sent[index];
        const bool right =
            record && record->size() == 3 && record->text("type") == violation.type &&
            (record->text("detail") == violation.detail) &&
            (record->text("at") == dateOf(stage.calendarAt(violation.at)) || stage.world().lidClosed() > 0);
        if (!right) return stage.depart(request.line, "a violation is not as it was");
    }
}

void checkBody(Stage& stage, const Entry& request, Flags flags, const std::vector<Violation>& sent) {
    const Heartbeats& heartbeats = stage.client().heartbeats;
    const auto depart = [&](const char* why) { stage.depart(request.line, why); };
    if (request.further.size() != 2 || request.further[0] != "Content-Type: application/json") {
        return depart("a heartbeat has one header and a body");
    }
    const auto body = JsonObject::read(request.further[1]);
    if (!body) {
        // A long body is shown in part.
        if (request.further[1].size() < 200) depart("the body is no object");
        return;
    }
    if (body->size() != 9) return depart("a heartbeat has nine keys");
    if (body->text("clientVersion") != "2.0-macOS" || body->text("platform") != "darwin") {
        return depart("the platform and the version are fixed");
    }
    const char* const active = flags.active ? "true" : "false";
    if (body->raw("lockdownActive") != active || body->raw("meetConnected") != active) return depart("a wrong flag");
    if (body->raw("disconnecting") != (flags.disconnecting ? "true" : "false")) return depart("a wrong flag");
    const bool plain = heartbeats.code.find('\\') == std::string::npos;
    if (plain && body->text("sessionCode") != heartbeats.code) return depart("the code is sent as it was typed");
    if (body->text("userToken") != heartbeats.token) return depart("the token is that of the join");
    if (body->text("timestamp") != dateOf(stage.calendarAt(request.at)) && stage.world().lidClosed() == 0) {
        return depart("the time stamp is not now");
    }
    checkViolations(stage, request, *body, sent);
}

/// The violations that the next heartbeat carries.
std::vector<Violation> drained(Stage& stage) {
    return std::exchange(stage.client().heartbeats.pending, {});
}

}  // namespace

void perhapsBeat(Stage& stage) {
    Heartbeats& heartbeats = stage.client().heartbeats;
    if (!stage.world().failsBodies()) return;
    heartbeats.perhapsSent = heartbeats.beats.next;
    for (Violation& violation : heartbeats.pending) violation.sure = false;
}

void loseViolations(Stage& stage, std::int64_t at) {
    const World& world = stage.world();
    if (!world.failsBodies()) return;
    const bool surely = !world.failsAddresses() && !stage.strange();
    Heartbeats& heartbeats = stage.client().heartbeats;
    auto& pending = heartbeats.pending;
    // Where it went out before the timers were held up, what came meanwhile is not lost.
    const std::int64_t lost = heartbeats.perhapsSent == heartbeats.beats.next ? heartbeats.perhapsSent : at;
    if (surely) std::erase_if(pending, [lost](const Violation& violation) { return violation.at < lost; });
    // While an application does not answer, it may go out somewhat later.
    const std::int64_t late = stage.strange() ? 1000 : 0;
    for (Violation& violation : pending) violation.sure = violation.sure && violation.at > at + late;
}

void beginHeartbeats(Stage& stage) {
    stage.turnTo("the first heartbeat goes out at once");
    Heartbeats& heartbeats = stage.client().heartbeats;
    stage.expectLog("[HEARTBEAT] Avviato (ogni 15s) → " + heartbeats.base);
    const Entry* const request = stage.accept("request", "POST " + heartbeats.base + "/api/heartbeat");
    if (request != nullptr) {
        checkBody(stage, *request, {.active = true, .disconnecting = false}, drained(stage));
    } else if (stage.world().failsRequests()) {
        loseViolations(stage, stage.now());
    } else {
        stage.departAtNext("the first heartbeat does not go out");
    }
    heartbeats.running = true;
    heartbeats.errors = 0;
    heartbeats.beats.start(stage.now(), 15000);
}

void beat(Stage& stage) {
    stage.turnTo("a heartbeat goes out every 15 seconds");
    Heartbeats& heartbeats = stage.client().heartbeats;
    const Entry* const request = stage.peek();
    const bool due = heartbeats.running && heartbeats.beats.next <= request->at;
    if (!due && !(heartbeats.running && stage.strange())) return stage.depart(request->line, "no heartbeat is due now");
    if (stage.isHeld()) return stage.depart(request->line, "timers stand still while an alert or a menu is open");
    if (request->text != "POST " + heartbeats.base + "/api/heartbeat") {
        return stage.depart(request->line, "heartbeats go to the address of the join");
    }
    stage.take(*request);
    heartbeats.beats.fire(request->at);
    checkBody(stage, *request, {.active = true, .disconnecting = false}, drained(stage));
}

void sendNotice(Stage& stage, std::string_view message) {
    Heartbeats& heartbeats = stage.client().heartbeats;
    if (!heartbeats.exist) return;
    const Entry* const request = stage.accept("request", "POST " + heartbeats.base + "/api/heartbeat");
    if (request == nullptr) {
        if (!stage.world().failsRequests()) return stage.departAtNext("no notice tells the server of the end");
    } else {
        checkBody(stage, *request, {.active = false, .disconnecting = true}, {});
        const Entry* next = stage.peek();
        while (next != nullptr && partOf(*next) == Part::turn) {
            stage.turns().push_back(next);
            stage.skip();
            next = stage.peek();
        }
        if (next == nullptr) return stage.giveUp();
        if (next->at - request->at > 5000) stage.depart(next->line, "the notice is waited for at most 5 seconds");
        stage.waitTo(next->at);
    }
    if (request == nullptr) {
        stage.acceptBeginning("log", "[HEARTBEAT] Disconnessione inviata: ");
    } else {
        stage.expectLog("[HEARTBEAT] Disconnessione inviata: " + std::string(message));
    }
    if (heartbeats.running) stage.expectLog("[HEARTBEAT] Fermato");
    heartbeats.running = false;
}

}  // namespace vantrel::simulation
