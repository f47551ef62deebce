// Plays a scenario through the Mac's own code: main(), rules, platform headers, src/platform/macos, stand-ins, virtual
// Mac.
#include <memory>
#include <ostream>

#include "rehearsal/playing/Player.h"
#include "rehearsal/program/Rehearse.h"
#include "tests/macos/standins/MacInUse.h"

// The client's main(), renamed by the build.
extern "C" int vantrel_client_main();

namespace {

using namespace vantrel;

rehearsal::Program clientOver(virtualmac::VirtualMac& mac) {
    const auto inUse = std::make_shared<standins::MacInUse>(mac);
    mac.application().exitWhenTerminated();
    return [inUse](const Computer&) { standins::withPool([] { vantrel_client_main(); })(); };
}

}  // namespace

int main(int argc, char** argv) {
    return rehearsal::rehearse({argv + 1, argv + argc},
                               [](const rehearsal::Scenario& scenario, std::ostream& transcript, bool whole) {
                                   return rehearsal::play(scenario, transcript, {.make = clientOver, .whole = whole});
                               });
}
