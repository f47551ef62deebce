// Plays a scenario through the Mac's own code.
#include <iostream>
#include <ostream>
#include <string>

#include "rehearsal/playing/Player.h"
#include "rehearsal/program/Rehearse.h"
#include "tests/macos/standins/ClientThroughMacOS.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/census/ObjectCensus.h"

namespace {

using namespace vantrel;

/// What is left of a client is checked unless it has ended its process, for then the system frees everything.
int judge(int status, const standins::ObjectCensus& census) {
    constexpr int objectsAreLeft = 5;
    const std::string difference = census.difference();
    if (standins::isMacInUse() || difference.empty()) return status;
    std::cerr << "vantrel-rehearse: objects are left, or are missing:\n" << difference;
    return status == 0 ? objectsAreLeft : status;
}

}  // namespace

int main(int argc, char** argv) {
    const standins::ObjectCensus census;
    const int status = rehearsal::rehearse(
        {argv + 1, argv + argc}, [](const rehearsal::Scenario& scenario, std::ostream& transcript, bool whole) {
            return rehearsal::play(scenario, transcript, {.make = standins::clientThroughMacOS, .whole = whole});
        });
    return judge(status, census);
}
