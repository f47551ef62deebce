#pragma once

#include "platform/ui/Menu.h"

namespace vantrel {

/// The application's main menu. The Edit menu keeps its English titles; it is there so that cut, copy, paste and select
/// all work in the form. On a Mac its undo and redo find nobody: fields answer to actions with a sender.
Menu mainMenu();

}  // namespace vantrel
