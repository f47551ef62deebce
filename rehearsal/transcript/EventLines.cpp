#include "rehearsal/transcript/EventLines.h"

#include "rehearsal/transcript/ClientLines.h"
#include "rehearsal/transcript/DesktopLines.h"
#include "rehearsal/transcript/InputLines.h"
#include "rehearsal/transcript/ParticipantLines.h"

namespace vantrel::rehearsal {

void write(const virtualmac::Event& event, Transcript& transcript) {
    const EventEntry entry = event.kind.visit([&event](auto kind) { return entryOf(kind, event); });
    transcript.add(event.time, entry.kind, entry.text, entry.more);
}

}  // namespace vantrel::rehearsal
