#include "fuzz/FuzzedReply.h"
#include "server/VersionCheck.h"
#include "tests/doubles/SingleThreadComputer.h"

using namespace vantrel;

/// Any bytes as the version check's reply: only the boolean true gives an offer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    singlethread::SingleThreadComputer computer;
    const auto reply = fuzz::fuzzedReply(data, size);
    const VersionCheck check(computer.requests(), computer.urls, computer.log);
    const auto offer = check.read(reply);

    const fuzz::Reference reference(reply);
    if (!reference.isShallow) return 0;
    const bool available = !reply.error && reply.statusCode == 200 && reference.isTrue("updateAvailable");
    fuzz::require(offer.has_value() == available, "an offer for true, and only then");
    if (offer) {
        fuzz::require(offer->severity == (reference.isString("severity") ? reference.string("severity") : "info"),
                      "the severity as sent, or info");
        fuzz::require(offer->downloadUrl == reference.string("downloadUrl"), "the download address as sent, or empty");
    }
    return 0;
}
