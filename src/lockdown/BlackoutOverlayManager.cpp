#include "lockdown/BlackoutOverlayManager.h"

namespace vantrel {

void BlackoutOverlayManager::activate(const std::optional<Screen>&) {}

void BlackoutOverlayManager::deactivate() {}

}  // namespace vantrel
