#include "platform/virtual/threads/VirtualClock.h"

#include "platform/virtual/scheduler/NumberText.h"

namespace vantrel::virtualmac {

double VirtualClock::uptime() const {
    return toSeconds(engine_.scheduler.now());
}

double VirtualClock::secondsSince1970() const {
    return offset_ + toSeconds(engine_.scheduler.now());
}

void VirtualClock::closeLid(double seconds) {
    offset_ = offset_ + seconds;
    engine_.journal.emit({SystemEvent::lid, shortest(seconds)});
}

}  // namespace vantrel::virtualmac
