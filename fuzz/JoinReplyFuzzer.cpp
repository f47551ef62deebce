#include "fuzz/FuzzedReply.h"
#include "server/SessionJoin.h"
#include "tests/doubles/SingleThreadComputer.h"

using namespace vantrel;

/// Any bytes as the join's reply: the result is the three strings, or a message of the table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    singlethread::SingleThreadComputer computer;
    const auto reply = fuzz::fuzzedReply(data, size);
    computer.session.replies = {URLReply{{}, 200, R"({"status":"ACTIVE"})"}, reply};
    SessionJoin join(computer.requests(), computer.defaults, computer.unicode, computer.log, "2.0-macOS");
    bool outdated = false;
    join.onClientOutdated = [&outdated](const std::string&, const std::string&) { outdated = true; };
    const auto outcome = join.join("CODE", "N", "E");

    const fuzz::Reference reference(reply);
    const bool complete = !reply.error && reply.statusCode == 200 && reference.isString("meetLink") &&
                          reference.isString("userToken") && reference.isString("sessionTitle");
    const bool tooOld = !reply.error && reply.statusCode == 400 && reference.string("error") == "client_outdated";
    if (reference.isShallow) {
        fuzz::require(std::holds_alternative<JoinResult>(outcome) == complete,
                      "joined with the three strings, and only then");
        fuzz::require(outdated == tooOld, "outdated when the server says so, and only then");
    }
    if (const auto* error = std::get_if<VantrelError>(&outcome)) {
        const auto& text = error->message;
        fuzz::require(text.starts_with("Errore di rete: ") || text == "Risposta server non valida" ||
                          text == "Versione Vantrel non più supportata. Scarica la nuova versione." ||
                          (text.starts_with("Errore server (HTTP ") && text.ends_with(")")),
                      "a message of the table");
        fuzz::require(reply.error.has_value() == text.starts_with("Errore di rete: "),
                      "a network error is told as one");
    }
    return 0;
}
