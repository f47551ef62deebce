// Plays a scenario through the Mac's own code: rules, platform headers, src/platform/macos, stand-ins, virtual Mac.
#include <memory>
#include <ostream>

#include "app/ApplicationMain.h"
#include "platform/macos/MacComputer.h"
#include "rehearsal/playing/Player.h"
#include "rehearsal/program/Rehearse.h"
#include "tests/macos/standins/MacInUse.h"

namespace {

using namespace vantrel;

rehearsal::Program clientOver(virtualmac::VirtualMac& mac) {
    const auto inUse = std::make_shared<standins::MacInUse>(mac);
    return [inUse](const Computer&) {
        standins::withPool([] {
            macos::MacComputer platform;
            applicationMain(platform.computer());
        })();
    };
}

}  // namespace

int main(int argc, char** argv) {
    return rehearsal::rehearse({argv + 1, argv + argc},
                               [](const rehearsal::Scenario& scenario, std::ostream& transcript, bool whole) {
                                   return rehearsal::play(scenario, transcript, {.make = clientOver, .whole = whole});
                               });
}
