#include <sstream>

#include "rehearsal/playing/Player.h"
#include "tests/simulation/program/Simulate.h"

int main(int argc, char** argv) {
    using namespace vantrel;
    simulation::Players players;
    players.command = "script/simulate";
    players.play = [](const rehearsal::Scenario& scenario) {
        std::ostringstream transcript;
        rehearsal::play(scenario, transcript);
        return transcript.str();
    };
    return simulation::simulate({argv + 1, argv + argc}, players);
}
