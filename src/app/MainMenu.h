#pragma once

#include "platform/Menu.h"

namespace vantrel {

/// The application's main menu. The Edit menu keeps its English titles; it is there so that the editing shortcuts work
/// in the form.
Menu mainMenu();

}  // namespace vantrel
