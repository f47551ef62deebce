#include "rehearsal/scenario/Behaviour.h"

namespace vantrel::rehearsal {

void Behaviour::applyTo(virtualmac::ApplicationDescription& application) const {
    application.ignoresTerminate = ignoresTerminate;
    application.ignoresForceTerminate = ignoresForceTerminate;
    application.refusesForceTerminate = refusesForceTerminate;
    application.declinesActivation = declinesActivation;
    if (exitDelay) application.exitDelay = *exitDelay;
    if (killDelay) application.killDelay = *killDelay;
}

}  // namespace vantrel::rehearsal
