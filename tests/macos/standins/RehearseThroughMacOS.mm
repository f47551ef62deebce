// Plays a scenario through the Mac's own code: main(), rules, platform headers, src/platform/macos, stand-ins, virtual
// Mac.
#include <iostream>
#include <memory>
#include <ostream>
#include <string>

#include "app/ApplicationMain.h"
#include "platform/virtual/calls/CheckedComputer.h"
#include "rehearsal/playing/Player.h"
#include "rehearsal/program/Rehearse.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/census/ObjectCensus.h"

// The client's main() and its call of applicationMain(), renamed by the build.
extern "C" int vantrel_client_main();
extern "C" void vantrel_application_main(const vantrel::Computer& platform);

namespace {

using namespace vantrel;

rehearsal::Program clientOver(virtualmac::VirtualMac& mac) {
    const auto inUse = std::make_shared<standins::MacInUse>(mac);
    mac.application().exitWhenTerminated();
    return [inUse](const Computer&) { standins::withPool([] { vantrel_client_main(); })(); };
}

/// What is left of a client is checked unless it has ended its process, for then the system frees everything.
int judge(int status, const standins::ObjectCensus& census) {
    constexpr int objectsAreLeft = 5;
    const std::string difference = census.difference();
    if (standins::isMacInUse() || difference.empty()) return status;
    std::cerr << "vantrel-rehearse: objects are left, or are missing:\n" << difference;
    return status == 0 ? objectsAreLeft : status;
}

}  // namespace

// Before the platform, as before the virtual Mac's own parts, the seed chooses.
void vantrel_application_main(const vantrel::Computer& platform) {
    virtualmac::CheckedComputer checked(standins::mac().engine(), platform);
    applicationMain(checked.computer());
}

int main(int argc, char** argv) {
    const standins::ObjectCensus census;
    const int status = rehearsal::rehearse(
        {argv + 1, argv + argc}, [](const rehearsal::Scenario& scenario, std::ostream& transcript, bool whole) {
            return rehearsal::play(scenario, transcript, {.make = clientOver, .whole = whole});
        });
    return judge(status, census);
}
