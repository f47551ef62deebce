#include "rehearsal/playing/Player.h"
#include "rehearsal/program/Rehearse.h"

int main(int argc, char** argv) {
    using namespace vantrel::rehearsal;
    return rehearse({argv + 1, argv + argc}, [](const Scenario& scenario, std::ostream& transcript, bool whole) {
        return play(scenario, transcript, {.whole = whole});
    });
}
