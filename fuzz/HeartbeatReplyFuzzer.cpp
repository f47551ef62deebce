#include "fuzz/FuzzedReply.h"
#include "server/HeartbeatService.h"
#include "tests/doubles/SingleThreadComputer.h"

using namespace vantrel;

/// Any bytes as a heartbeat's reply: only the boolean true ends the session.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    singlethread::SingleThreadComputer computer;
    const auto reply = fuzz::fuzzedReply(data, size);
    computer.session.replies = {reply};
    const auto service = std::make_shared<HeartbeatService>(
        HeartbeatService::Identity{"https://server.example", "CODE", "T", "2.0-macOS"}, computer.requests(),
        computer.dispatch, computer.runLoop, computer.clock, computer.dates, computer.log);
    int ended = 0;
    service->onSessionEnded = [&ended] { ++ended; };
    service->start();
    computer.dispatch.queue.runAll();

    const fuzz::Reference reference(reply);
    if (reference.isShallow) {
        fuzz::require((ended == 1) == (!reply.error && reference.isTrue("sessionEnded")),
                      "ended for true, and only then");
    }
    fuzz::require(ended <= 1, "ended once");
    return 0;
}
