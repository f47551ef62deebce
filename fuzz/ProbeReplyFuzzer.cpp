#include "fuzz/FuzzedReply.h"
#include "server/SessionJoin.h"
#include "tests/doubles/SingleThreadComputer.h"

using namespace vantrel;

/// Any bytes as the probe's reply: the session is joined, not found, or ended.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    singlethread::SingleThreadComputer computer;
    const auto reply = fuzz::fuzzedReply(data, size);
    const URLReply joined{{}, 200, R"({"meetLink":"L","userToken":"T","sessionTitle":"S"})"};
    computer.session.replies = {reply, joined};
    const SessionJoin join(computer.requests(), computer.defaults, computer.unicode, computer.log, "2.0-macOS");
    const auto outcome = join.join("CODE", "N", "E");

    const fuzz::Reference reference(reply);
    const bool hasStatus = !reply.error && reply.statusCode == 200 && !reference.string("status").empty();
    if (const auto* error = std::get_if<VantrelError>(&outcome)) {
        const bool notFound = error->message == "Codice sessione non trovato";
        fuzz::require(notFound || error->message == "Questa sessione è già terminata", "a message of the table");
        if (reference.isShallow) fuzz::require(notFound != hasStatus, "not found without a status, and only then");
    } else {
        fuzz::require(!reference.isShallow || hasStatus, "joined only with a status");
    }
    return 0;
}
