#pragma once

#include <memory>

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

/// One attempt at full screen, if its line comes next.
void attemptFullscreen(Stage& stage, const std::shared_ptr<Launcher>& launcher);
/// An attempt in whose place its first line was found.
void dueAttempt(Stage& stage);
/// The browser asked to the front, by the retry timer or after the launch of Safari.
void dueActivation(Stage& stage);
/// "NAME (PID) is asked to come to the front" of the launcher's browser, with what the platform does besides.
bool acceptActivation(Stage& stage, Launcher& launcher);
/// The same of the one that had the front before a question of the client's.
bool acceptFrontGivenBack(Stage& stage, const Launcher* launcher);
/// Safari's activation was due before this line and had nobody to ask.
void passOverSafari(Stage& stage, const std::shared_ptr<Launcher>& launcher);

}  // namespace vantrel::simulation
