#include "lockdown/KeyboardHookService.h"

namespace vantrel {

void KeyboardHookService::start() {}

void KeyboardHookService::stop() {}

}  // namespace vantrel
