// The join and the replies of the server.
#include <algorithm>

#include "tests/simulation/model/acts/Background.h"
#include "tests/simulation/model/acts/End.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

constexpr std::int64_t longestWait = 10000;
// In place of the rest of a line that is not foreseen.
constexpr char anyRest = '\x01';

std::string joinedLines(const Entry& entry) {
    std::string text;
    for (const std::string_view line : entry.further) {
        if (!text.empty()) text += '\n';
        text += line;
    }
    return text;
}

/// As a transcript shows it.
std::string printable(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if ((byte < 0x20 && character != '\n') || byte == 0x7f) {
            shown += "\\x";
            shown += digits[byte >> 4];
            shown += digits[byte & 15];
        } else {
            shown += character;
        }
    }
    return shown;
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    for (char& letter : upper) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return upper;
}

bool isPlainCode(std::string_view code) {
    return code.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~") == code.npos;
}

bool isJoinBody(const Entry& request, const Client& client) {
    if (request.further.size() != 2 || request.further[0] != "Content-Type: application/json") return false;
    const auto body = JsonObject::read(request.further[1]);
    // A long body is shown in part.
    if (!body) return request.further[1].size() >= 200;
    return body->size() == 4 && body->text("clientVersion") == "2.0-macOS" && body->text("platform") == "darwin" &&
           printable(body->text("email").value_or("")) == client.savedEmail &&
           printable(body->text("fullName").value_or("")) == client.savedName;
}

/// As the server answers by itself.
bool isUsualSession(const std::string& text) {
    const auto body = JsonObject::read(text);
    return text.starts_with("{\"code\":\"") && body && body->size() == 3 && body->raw("status") && body->raw("title");
}

}  // namespace

void Background::sent(const Entry& request) {
    const std::size_t space = request.text.find(' ');
    const bool notice =
        request.further.size() == 2 && request.further[1].find("\"disconnecting\":true") != std::string_view::npos;
    requests_.push_back({request.text.substr(std::min(space + 1, request.text.size())), request.at, notice,
                         request.further.size() == 2 ? request.further[1] : std::string_view()});
}

void Background::joinBegins() {
    const Client& client = stage_.client();
    joinAt_ = stage_.now();
    joinBase_ = baseAddress(client);
    typedCode_ = trimmed(client.code);
    joinCode_ = upperCase(typedCode_);
    join_ = JoinStep::probe;
    if (isPlainAddress(joinBase_) && isPlainCode(joinCode_) && !stage_.world().bent()) return;
    Due due{.deed = Deed::joinResult, .way = Way::queue, .at = joinAt_};
    due.note = "*";
    stage_.add(due);
}

void Background::seeJoin(const Entry& entry) {
    stage_.turnTo("a join asks for the session and then joins it");
    if (entry.is("request")) sent(entry);
    const bool foreign = typedCode_.find_first_of("\x80\xc3") != std::string::npos || !isPlainCode(typedCode_);
    const std::string address = joinBase_ + "/api/sessions/" + joinCode_;
    if (entry.begins("request", "GET ")) {
        if (join_ != JoinStep::probe || entry.at != joinAt_) return stage_.depart(entry.line, "no join begins now");
        if (entry.text != "GET " + address && !foreign) return stage_.depart(entry.line, "another address");
        if (!entry.further.empty()) return stage_.depart(entry.line, "a probe has no header and no body");
        std::erase_if(stage_.dues(), [](const Due& due) { return due.deed == Deed::joinResult && due.note == "*"; });
        join_ = JoinStep::waitsForProbe;
    } else if (entry.begins("request", "POST ")) {
        if (!isAtStep(JoinStep::post, entry.at)) return stage_.depart(entry.line, "no session is joined now");
        if (entry.text != "POST " + address + "/join" && !foreign) return stage_.depart(entry.line, "another address");
        std::erase_if(stage_.dues(), [](const Due& due) { return due.deed == Deed::joinResult && due.note == "*"; });
        join_ = JoinStep::waitsForReply;
        if (!isJoinBody(entry, stage_.client())) stage_.depart(entry.line, "another body");
    } else if (isAtStep(JoinStep::ok, entry.at)) {
        const std::string said = printable("[SESSION] Join OK — " + joined_.title + ", MeetLink: " + joined_.link);
        std::string whole(entry.text);
        for (const std::string_view line : entry.further) whole += "\n" + std::string(line);
        if (whole != said) return stage_.depart(entry.line, "the join has given something else");
        Due due{.deed = Deed::joinResult,
                .way = Way::queue,
                .at = entry.at,
                .line = entry.line,
                .result = joined_,
                .success = true};
        due.note = typedCode_;
        stage_.add(due);
        join_ = JoinStep::none;
    } else {
        stage_.depart(entry.line, "no join has succeeded now");
    }
}

/// The step that a reply leads to; where it may have answered an earlier join, both go on.
void Background::stepJoin(JoinStep step, std::int64_t at) {
    if (perhapsOther_) {
        perhapsStep_ = step;
        perhapsAt_ = at;
    } else {
        join_ = step;
        joinAt_ = at;
    }
}

/// Whether a line of this step may come now. If it does, the join has taken the step.
bool Background::isAtStep(JoinStep step, std::int64_t at) {
    if (join_ == step && joinAt_ == at) return true;
    if (perhapsStep_ != step || perhapsAt_ != at) return false;
    perhapsStep_ = JoinStep::none;
    join_ = step;
    joinAt_ = at;
    return true;
}

void Background::joinIsOver() {
    join_ = perhapsStep_ = JoinStep::none;
}

void Background::failJoin(std::int64_t at, std::string message) {
    if (!perhapsOther_) join_ = JoinStep::none;
    Due due{.deed = Deed::joinResult, .way = Way::queue, .at = at, .sure = !perhapsOther_};
    due.text = std::move(message);
    stage_.add(due);
}

void Background::judgeProbe(std::int64_t at, std::string_view told) {
    if (told.empty()) return failJoin(at, "Codice sessione non trovato");
    std::string status = upperCase(told);
    constexpr std::string_view blank = " \t";
    status.erase(0, status.find_first_not_of(blank));
    status.erase(status.find_last_not_of(blank) + 1);
    if (status == "ENDED") return failJoin(at, "Questa sessione è già terminata");
    stepJoin(JoinStep::post, at);
    if (!stage_.world().bent()) return;
    Due due{.deed = Deed::joinResult, .way = Way::queue, .at = at};
    due.note = "*";
    stage_.add(due);
}

bool Background::isOfService(const Request& request) const {
    const Heartbeats& heartbeats = stage_.client().heartbeats;
    const std::string token = "\"userToken\":\"" + heartbeats.token + '"';
    return heartbeats.exist && request.body.find(token) != std::string_view::npos;
}

void Background::seeReply(const Entry& entry) {
    stage_.turnTo("a reply answers a request");
    const std::size_t from = entry.text.find(" from ");
    if (from == std::string_view::npos) return stage_.depart(entry.line, "a reply names its address");
    const std::string_view status = entry.text.substr(0, from);
    const std::string_view address = entry.text.substr(from + 6);
    const auto answered = [&](const Request& request) { return request.address == address; };
    const auto request = std::find_if(requests_.begin(), requests_.end(), answered);
    if (request == requests_.end()) return stage_.depart(entry.line, "nothing was sent there");
    const bool several = std::count_if(requests_.begin(), requests_.end(), answered) > 1;
    const bool notice = request->notice;
    // Of heartbeats of one service every one is answered alike.
    const bool alike = std::all_of(requests_.begin(), requests_.end(), [&](const Request& each) {
        return !answered(each) || (!each.notice && isOfService(each));
    });
    const std::int64_t sentAt = request->at;
    const bool mixed = request->mixed;
    // A long body is shown in part, without its token. A service that is gone hears nothing.
    const bool gone = request->body.find("\"userToken\":\"") != std::string_view::npos && !isOfService(*request);
    requests_.erase(request);
    for (Request& each : requests_) each.mixed = each.mixed || (several && !alike && answered(each));
    const Scenario& scenario = stage_.scenario();
    const bool plain = !scenario.bendsTimes && !several && address.starts_with(scenario.address + "/");
    if (plain && !latency_) latency_ = scenario.begins ? entry.at - sentAt : scenario.latency;
    if (plain && isLatencyKnown() && entry.at - sentAt != *latency_)
        stage_.depart(entry.line, "it comes after the server's latency");
    if (!following_.empty()) stage_.depart(followingLine_, "expected: " + following_.front());
    followingAt_ = entry.at;
    followingLine_ = entry.line;
    if (address.find("/api/version/latest") != address.npos) {
        replyToVersion(entry, status);
    } else if (address.ends_with("/join")) {
        perhapsOther_ = several;
        surelyOther_ = !several && sentAt != joinAt_;
        replyToJoin(entry, status);
    } else if (address.find("/api/sessions/") != address.npos) {
        perhapsOther_ = several;
        surelyOther_ = !several && sentAt != joinAt_;
        replyToProbe(entry, status);
    } else if (mixed || (several && !alike)) {
        // A service that is dropped in this moment may still count.
        if (ambiguousAt_ != entry.at) ambiguousErrors_ = stage_.client().heartbeats.errors;
        ambiguousAt_ = entry.at;
    } else if (!notice && !gone) {
        replyToHeartbeat(entry, status);
    }
}

bool Background::isLatencyKnown() const {
    const Scenario& scenario = stage_.scenario();
    const bool changed = scenario.bendsTimes || repliesChange_ || (scenario.begins && scenario.setsLatency);
    return !changed && latency_ && stage_.world().lidClosed() == 0;
}

void Background::replyToVersion(const Entry& entry, std::string_view status) {
    if (status == "error") return follow("[UPDATE] Check fallito: " + joinedLines(entry));
    if (status != "200" || entry.further.empty()) return follow("[UPDATE] Check: risposta non valida");
    const std::string text = joinedLines(entry);
    const auto body = JsonObject::read(text);
    if (!body) return follow("[UPDATE] Check: JSON non parsabile");
    if (!body->isTrue("updateAvailable")) return follow("[UPDATE] Versione corrente è l'ultima disponibile");
    const std::string severity = body->text("severity").value_or("info");
    const std::string latest = body->text("latestVersion").value_or("");
    follow(printable("[UPDATE] Disponibile v" + latest + " (severity=" + severity + ")"));
    if (severity == "info") return;
    Due due{.deed = Deed::updatePrompt, .way = Way::queue, .at = entry.at, .line = entry.line};
    due.text = body->text("releaseNotes").value_or("");
    due.result = {.link = body->text("downloadUrl").value_or(""), .token = {}, .title = latest};
    due.note = severity;
    stage_.add(due);
}

void Background::replyToProbe(const Entry& entry, std::string_view status) {
    std::string found;
    if (status == "error") {
        follow("[SESSION] GET error: " + joinedLines(entry));
    } else if (status == "not HTTP") {
        follow("[SESSION] GET: risposta non HTTP");
    } else {
        follow("[SESSION] GET status HTTP: " + std::string(status));
        if (status == "200" && !entry.further.empty()) {
            const std::string text = joinedLines(entry);
            // A body that a rule gives is logged as it was sent, not as a transcript writes it.
            const bool bent = stage_.scenario().bendsReplies || repliesChange_;
            const bool open = bent && !isUsualSession(text);
            follow("[SESSION] GET body: " + (open ? std::string(1, anyRest) : text));
            const auto body = JsonObject::read(text);
            const auto told = body ? body->text("status") : std::nullopt;
            if (told) follow(printable("[SESSION] Status parsed: " + *told));
            found = told.value_or("");
        }
    }
    if (join_ != JoinStep::waitsForProbe || surelyOther_) return;
    judgeProbe(entry.at, found);
}

void Background::replyToJoin(const Entry& entry, std::string_view status) {
    const std::string text = joinedLines(entry);
    const auto body = JsonObject::read(text);
    const bool outdated = status == "400" && body && body->text("error") == "client_outdated";
    if (outdated) {
        Due due{.deed = Deed::requiredPrompt, .way = Way::queue, .at = entry.at, .line = entry.line};
        due.text = body->text("message").value_or("Versione Vantrel non più supportata.");
        due.note = body->text("downloadUrl").value_or("");
        stage_.add(due);
    }
    if (join_ != JoinStep::waitsForReply || surelyOther_) return;
    if (status == "error") return failJoin(entry.at, "Errore di rete: " + text);
    if (status == "not HTTP") return failJoin(entry.at, "Risposta server non valida");
    if (outdated) return failJoin(entry.at, "Versione Vantrel non più supportata. Scarica la nuova versione.");
    if (status != "200" || entry.further.empty())
        return failJoin(entry.at, "Errore server (HTTP " + std::string(status) + ")");
    const auto link = body ? body->text("meetLink") : std::nullopt;
    const auto token = body ? body->text("userToken") : std::nullopt;
    const auto title = body ? body->text("sessionTitle") : std::nullopt;
    if (!link || !token || !title) return failJoin(entry.at, "Risposta server non valida");
    joined_ = {*link, *token, *title};
    stepJoin(JoinStep::ok, entry.at);
}

void Background::replyToHeartbeat(const Entry& entry, std::string_view status) {
    Heartbeats& heartbeats = stage_.client().heartbeats;
    if (!heartbeats.exist) return;
    constexpr int mostErrors = 20;
    std::string cause;
    if (status == "error") {
        ++heartbeats.errors;
        follow("[HEARTBEAT] Errore (" + std::to_string(heartbeats.errors) + "/20): " + joinedLines(entry));
        if (heartbeats.errors < mostErrors) return;
        cause = "[HEARTBEAT] Troppi errori — fine sessione";
    } else {
        heartbeats.errors = 0;
        const std::string text = joinedLines(entry);
        const auto body = JsonObject::read(text);
        if (!body || !body->isTrue("sessionEnded")) return;
        cause = "[HEARTBEAT] Sessione terminata dal backend";
    }
    follow(cause);
    Due due{.deed = Deed::end, .way = Way::queue, .at = entry.at, .line = entry.line};
    due.text = messageOf(EndCause::user);
    stage_.add(due);
}

/// One of several requests was answered; the line tells which.
void Background::seeAmbiguous(const Entry& entry) {
    Heartbeats& heartbeats = stage_.client().heartbeats;
    Words words(entry.text);
    if (words.skip("[HEARTBEAT] Errore (")) {
        const auto errors = words.integer();
        if (errors != ambiguousErrors_ + 1 && errors != 1) return stage_.depart(entry.line, "another count");
        ambiguousErrors_ = static_cast<int>(*errors);
        if (heartbeats.exist) heartbeats.errors = ambiguousErrors_;
        return;
    }
    Due due{.deed = Deed::end, .way = Way::queue, .at = entry.at, .line = entry.line};
    due.text = messageOf(EndCause::user);
    stage_.add(due);
}

void Background::seeCompletion(const Entry& entry) {
    stage_.turnTo("what a reply means is logged at once");
    if (following_.empty() || entry.at != followingAt_) {
        const bool heartbeat = entry.text.starts_with("[HEARTBEAT]");
        if (heartbeat && entry.at == ambiguousAt_) return seeAmbiguous(entry);
        return stage_.depart(entry.line, "no reply says so now");
    }
    std::string& expected = following_.front();
    std::string whole(entry.text);
    for (const std::string_view line : entry.further) whole += "\n" + std::string(line);
    const bool open = expected.ends_with(anyRest);
    if (open) expected.pop_back();
    if (open ? !whole.starts_with(expected) : whole != expected) stage_.depart(entry.line, "expected: " + expected);
    following_.pop_front();
}

void Background::endThreads(std::int64_t at, std::int64_t next) {
    for (const Request& request : requests_) {
        const bool served = request.address.starts_with(stage_.scenario().address + "/");
        if (!served || !isLatencyKnown() || request.at + *latency_ >= next) continue;
        object("a request is answered after the server's latency", 0, "no reply from " + std::string(request.address));
    }
    if (!following_.empty()) {
        object("what a reply means is logged at once", followingLine_, "expected: " + following_.front());
    }
    const bool unsure = stage_.world().bent() || !isPlainAddress(joinBase_) || !isPlainCode(joinCode_);
    const bool late = (join_ == JoinStep::probe || join_ == JoinStep::post || join_ == JoinStep::ok) && joinAt_ <= at;
    if (late && unsure && join_ != JoinStep::ok) join_ = JoinStep::none;
    if (late && join_ != JoinStep::none)
        object("a join goes on without a pause", 0, "nothing is sent at " + std::to_string(joinAt_) + " ms");
    const bool waits = join_ == JoinStep::waitsForProbe || join_ == JoinStep::waitsForReply;
    perhapsStep_ = JoinStep::none;
    perhapsOther_ = false;
    if (waits && joinAt_ + longestWait <= next) {
        const std::int64_t over = joinAt_ + longestWait;
        // A reply may still come in the very moment in which the wait ends.
        perhapsOther_ = over == next;
        if (join_ == JoinStep::waitsForProbe) {
            judgeProbe(over, {});
        } else {
            failJoin(over, "Nessuna risposta dal server");
        }
        perhapsOther_ = false;
    }
    endLaunch(at, next);
}

}  // namespace vantrel::simulation
