#include "platform/virtual/threads/VirtualThreads.h"

namespace vantrel::virtualmac {

void VirtualThreads::sleep(double seconds) {
    const Moment wake = later(engine_.scheduler.now(), seconds);
    engine_.scheduler.wait([wake] { return Due::at(wake); }, Scheduler::Wait::blocked);
}

}  // namespace vantrel::virtualmac
