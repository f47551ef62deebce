#pragma once

#include "platform/ui/Menu.h"

namespace vantrel {

/// The application's main menu. The Edit menu keeps its English titles. It makes cut, copy, paste and select all work
/// in the form. On a Mac its undo and redo do nothing, because fields answer only actions with a sender.
Menu mainMenu();

}  // namespace vantrel
