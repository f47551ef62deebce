#pragma once

#include <ostream>

#include "platform/virtual/journal/Event.h"

namespace vantrel::virtualmac {

// How googletest shows events when an expectation on them fails.

void PrintTo(const EventKind& kind, std::ostream* stream);
void PrintTo(const Happening& happening, std::ostream* stream);
void PrintTo(const Event& event, std::ostream* stream);

}  // namespace vantrel::virtualmac
