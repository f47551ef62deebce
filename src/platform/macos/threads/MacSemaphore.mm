#include "platform/macos/threads/MacSemaphore.h"

#include "platform/macos/threads/DispatchTime.h"

namespace vantrel::macos {

// The system ends the process when a semaphore dies with a value below the one that it was created with. Created with
// zero it never does.
MacSemaphore::MacSemaphore(int value) : semaphore_(dispatch_semaphore_create(0)) {
    for (int count = 0; count < value; ++count) signal();
}

void MacSemaphore::signal() {
    dispatch_semaphore_signal(semaphore_);
}

bool MacSemaphore::wait(double timeoutSeconds) {
    return dispatch_semaphore_wait(semaphore_, timeFromNow(timeoutSeconds)) == 0;
}

}  // namespace vantrel::macos
