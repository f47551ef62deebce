#include "server/VersionCheck.h"

#include <utility>

#include "server/ServerReply.h"

namespace vantrel {
namespace {

constexpr double checkTimeoutSeconds = 8;

}  // namespace

void VersionCheck::send(const std::string& baseAddress, const std::string& clientVersion,
                        URLSession::Completion completion) const {
    auto request = requests_.request(baseAddress + "/api/version/latest?os=macos&current=" +
                                         urls_.addingPercentEncodingForQuery(clientVersion).value_or(clientVersion),
                                     "GET", checkTimeoutSeconds);
    if (request) requests_.send(*std::move(request), std::move(completion));
}

std::optional<UpdateOffer> VersionCheck::read(const URLReply& reply) const {
    if (reply.error) {
        log_.print("[UPDATE] Check fallito: " + reply.error->localizedDescription);
        return std::nullopt;
    }
    if (reply.statusCode != 200 || !reply.data) {
        log_.print("[UPDATE] Check: risposta non valida");
        return std::nullopt;
    }
    const auto object = requests_.object(reply);
    if (!object) {
        log_.print("[UPDATE] Check: JSON non parsabile");
        return std::nullopt;
    }
    if (booleanValue(*object, "updateAvailable") != true) {
        log_.print("[UPDATE] Versione corrente è l'ultima disponibile");
        return std::nullopt;
    }
    const auto text = [&object](std::string_view key, const char* absent) {
        return stringValue(*object, key).value_or(absent);
    };
    UpdateOffer offer{text("severity", "info"), text("latestVersion", ""), text("releaseNotes", ""),
                      text("downloadUrl", "")};
    log_.print("[UPDATE] Disponibile v" + offer.latestVersion + " (severity=" + offer.severity + ")");
    return offer;
}

}  // namespace vantrel
