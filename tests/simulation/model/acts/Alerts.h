#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tests/simulation/model/acts/Stage.h"

namespace vantrel::simulation {

struct AlertText {
    std::string_view style;
    std::string_view message;
    std::string informative;  // its lines joined by line breaks
    std::string buttons;      // "[A] [B]"
};

/// Reads an alert and everything until its answer. Empty if that does not come. From an alert that a block of the main
/// queue has opened, nothing else of the queue runs.
std::string runAlert(Stage& stage, const AlertText& alert, bool fromQueue);

/// Menus that opened or closed meanwhile.
void takeTurns(Stage& stage);

/// Whether the entry's further lines are this text's lines.
bool isText(std::span<const std::string_view> lines, std::string_view text);

void requiredPrompt(Stage& stage, const Due& due);
void updatePrompt(Stage& stage, const Due& due);
void accessibilityAlert(Stage& stage);
void secondInstance(Stage& stage);
/// The question of the status menu.
void manualEnd(Stage& stage);

}  // namespace vantrel::simulation
