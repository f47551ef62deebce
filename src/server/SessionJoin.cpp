#include "server/SessionJoin.h"

#include <mutex>
#include <optional>
#include <utility>

#include "platform/threads/Lock.h"
#include "server/ServerAddress.h"
#include "server/ServerReply.h"
#include "server/Whitespace.h"

namespace vantrel {
namespace {

constexpr double joinTimeoutSeconds = 8;
constexpr double waitSeconds = 10;

/// What a completion handler leaves for the waiting caller. A reply that comes after the wait still writes here,
/// unread, so it needs the lock.
template <typename Value>
class Box {
  public:
    explicit Box(Value initial) : value_(std::move(initial)) {}

    void put(Value value) {
        const std::scoped_lock guard(lock_);
        value_ = std::move(value);
    }

    Value get() {
        const std::scoped_lock guard(lock_);
        return value_;
    }

  private:
    Lock lock_;
    Value value_;
};

}  // namespace

JoinOutcome SessionJoin::join(const std::string& sessionCode, const std::string& fullName,
                              const std::string& email) const {
    const auto session = serverBaseAddress(defaults_) + "/api/sessions/" + unicode_.uppercased(sessionCode);

    auto probeRequest = requests_.request(session, "GET", joinTimeoutSeconds);
    if (!probeRequest) return VantrelError{"URL non valido"};
    const auto status = probe(*std::move(probeRequest));
    if (status.empty()) return VantrelError{"Codice sessione non trovato"};
    if (unicode_.uppercased(trimmed(status)) == "ENDED") return VantrelError{"Questa sessione è già terminata"};

    auto request = requests_.request(session + "/join", "POST", joinTimeoutSeconds);
    if (!request) return VantrelError{"URL join non valido"};
    if (!requests_.attach(
            *request,
            {{"fullName", fullName}, {"email", email}, {"platform", "darwin"}, {"clientVersion", clientVersion_}})) {
        return VantrelError{"Errore serializzazione"};
    }

    const auto box = std::make_shared<Box<JoinOutcome>>(VantrelError{"Nessuna risposta dal server"});
    requests_.sendAndWait(*std::move(request), waitSeconds,
                          [self = *this, box](const URLReply& reply) { box->put(self.classify(reply)); });
    auto outcome = box->get();
    if (const auto* result = std::get_if<JoinResult>(&outcome)) {
        log_.print("[SESSION] Join OK — " + result->sessionTitle + ", MeetLink: " + result->meetLink);
    }
    return outcome;
}

std::string SessionJoin::probe(URLRequest request) const {
    const auto box = std::make_shared<Box<std::string>>("");
    requests_.sendAndWait(std::move(request), waitSeconds, [self = *this, box](const URLReply& reply) {
        if (reply.error) {
            self.log_.print("[SESSION] GET error: " + reply.error->localizedDescription);
            return;
        }
        if (!reply.statusCode) {
            self.log_.print("[SESSION] GET: risposta non HTTP");
            return;
        }
        self.log_.print("[SESSION] GET status HTTP: " + std::to_string(*reply.statusCode));
        if (*reply.statusCode != 200 || !reply.data) return;
        self.log_.print("[SESSION] GET body: " +
                        (self.unicode_.isValidUTF8(*reply.data) ? *reply.data : std::string("(non leggibile)")));
        const auto object = self.requests_.object(reply);
        if (!object) return;
        if (auto status = stringValue(*object, "status")) {
            box->put(*status);
            self.log_.print("[SESSION] Status parsed: " + *status);
        }
    });
    return box->get();
}

JoinOutcome SessionJoin::classify(const URLReply& reply) const {
    if (reply.error) return VantrelError{"Errore di rete: " + reply.error->localizedDescription};
    if (!reply.statusCode) return VantrelError{"Risposta server non valida"};

    const bool isRead = *reply.statusCode == 200 || *reply.statusCode == 400;
    const auto object = isRead ? requests_.object(reply) : std::nullopt;
    if (*reply.statusCode == 400 && object && stringValue(*object, "error") == "client_outdated") {
        if (onClientOutdated) {
            onClientOutdated(stringValue(*object, "message").value_or("Versione Vantrel non più supportata."),
                             stringValue(*object, "downloadUrl").value_or(""));
        }
        return VantrelError{"Versione Vantrel non più supportata. Scarica la nuova versione."};
    }
    if (*reply.statusCode == 200 && reply.data) {
        if (!object) return VantrelError{"Risposta server non valida"};
        auto meetLink = stringValue(*object, "meetLink");
        auto userToken = stringValue(*object, "userToken");
        auto sessionTitle = stringValue(*object, "sessionTitle");
        if (!meetLink || !userToken || !sessionTitle) return VantrelError{"Risposta server non valida"};
        return JoinResult{*std::move(meetLink), *std::move(userToken), *std::move(sessionTitle)};
    }
    return VantrelError{"Errore server (HTTP " + std::to_string(*reply.statusCode) + ")"};
}

}  // namespace vantrel
