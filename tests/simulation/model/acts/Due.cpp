#include "tests/simulation/model/acts/Due.h"

namespace vantrel::simulation {

std::string_view nameOf(Deed deed) {
    switch (deed) {
        case Deed::joinTap:
            return "the join button's action";
        case Deed::joinResult:
            return "the result of a join";
        case Deed::newSession:
            return "the way back to the join screen";
        case Deed::quitAnswer:
            return "the answer to a request to quit";
        case Deed::manualEnd:
            return "the question of the status menu";
        case Deed::end:
            return "the end of the session";
        case Deed::versionCheck:
            return "the version check";
        case Deed::updatePrompt:
            return "the prompt for an update";
        case Deed::requiredPrompt:
            return "the prompt for an outdated client";
        case Deed::firstAttempt:
            return "the first attempt at full screen";
        case Deed::attempt:
            return "an attempt at full screen";
        case Deed::retry:
            return "the next try of full screen";
        case Deed::bringSafari:
            return "Safari's activation";
        case Deed::completion:
            return "the steps after the launch";
        case Deed::spaceNotice:
            return "the word of a change of the Space";
        case Deed::spaceLook:
            return "the look after a change of the Space";
        case Deed::displayChange:
            return "new covers after a change of the displays";
    }
    return {};
}

}  // namespace vantrel::simulation
