// Plays random classes through the Mac's own code, and each once more without it: both must give the same transcript.
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "rehearsal/playing/Player.h"
#include "tests/macos/standins/ClientThroughMacOS.h"
#include "tests/macos/standins/MacInUse.h"
#include "tests/macos/standins/census/ObjectCensus.h"
#include "tests/simulation/program/Simulate.h"

namespace {

using namespace vantrel;

std::string transcript(const rehearsal::Scenario& scenario, const rehearsal::PlayOptions& options) {
    std::ostringstream text;
    rehearsal::play(scenario, text, options);
    return text.str();
}

}  // namespace

int main(int argc, char** argv) {
    simulation::Players players;
    players.command = "script/simulate --through macos";
    // The client that ends its process is the last one of this process, so it comes after the direct way.
    const auto census = std::make_shared<std::unique_ptr<standins::ObjectCensus>>();
    players.play = [](const rehearsal::Scenario& scenario) { return transcript(scenario, {}); };
    players.playOtherwise = [census](const rehearsal::Scenario& scenario) {
        *census = std::make_unique<standins::ObjectCensus>();
        return transcript(scenario, {.make = standins::clientThroughMacOS});
    };
    players.inspect = [census]() -> std::vector<simulation::BrokenRule> {
        const std::string difference = *census && !standins::isMacInUse() ? (*census)->difference() : "";
        if (difference.empty()) return {};
        return {{"A client leaves no objects of the platform", 0, difference}};
    };
    // As on a Mac, a process is one client: the platform's own state is made for one, too.
    players.isSpent = [] { return true; };
    return simulation::simulate({argv + 1, argv + argc}, players);
}
