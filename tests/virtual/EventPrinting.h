#pragma once

#include <ostream>

#include "platform/virtual/journal/Event.h"

namespace vantrel::virtualmac {

// Prints events in googletest when an expectation fails.

void PrintTo(const EventKind& kind, std::ostream* stream);
void PrintTo(const Happening& happening, std::ostream* stream);
void PrintTo(const Event& event, std::ostream* stream);

}  // namespace vantrel::virtualmac
