#pragma once

#include "platform/virtual/journal/Event.h"
#include "rehearsal/transcript/EventEntry.h"

namespace vantrel::rehearsal {

// Describes what the Mac and the other applications do.

EventEntry entryOf(virtualmac::SystemEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::ProcessEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::ApplicationEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::AppWindowEvent kind, const virtualmac::Happening& event);
EventEntry entryOf(virtualmac::ElementEvent kind, const virtualmac::Happening& event);

}  // namespace vantrel::rehearsal
