#include "tests/simulation/model/acts/FollowedClient.h"

#include "tests/simulation/model/acts/Alerts.h"
#include "tests/simulation/model/acts/Background.h"
#include "tests/simulation/model/acts/Dispatch.h"
#include "tests/simulation/model/acts/JoinScreen.h"
#include "tests/simulation/model/acts/Part.h"

namespace vantrel::simulation {

void followClient(const Transcript& transcript, const Scenario& scenario, Verdict& verdict) {
    const auto& entries = transcript.entries();
    if (!scenario.known || entries.empty() || entries.front().is("prelude")) return;
    Stage stage(transcript, scenario, verdict);
    Background background(stage);
    stage.client().microphone = scenario.begins ? std::nullopt : std::optional(scenario.microphone.value_or("granted"));
    stage.client().camera = scenario.begins ? std::nullopt : std::optional(scenario.camera.value_or("granted"));
    stage.client().trusted = scenario.begins ? std::nullopt : std::optional(scenario.accessibility != "refused");
    launchClient(stage);
    takeTurns(stage);
    while (const Entry* const next = stage.peek()) {
        if (partOf(*next) == Part::turn) {
            stage.turns().push_back(next);
            stage.skip();
        } else {
            dispatch(stage);
        }
        takeTurns(stage);
    }
}

}  // namespace vantrel::simulation
