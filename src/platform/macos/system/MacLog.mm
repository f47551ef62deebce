#include "platform/macos/system/MacLog.h"

#include <fcntl.h>
#include <unistd.h>

namespace vantrel::macos {

// Set on the descriptor instead of ignoring SIGPIPE, which the browser would inherit.
MacLog::MacLog() {
    fcntl(STDOUT_FILENO, F_SETNOSIGPIPE, 1);
    // A lost tap and dropped lines are said there.
    fcntl(STDERR_FILENO, F_SETNOSIGPIPE, 1);
}

}  // namespace vantrel::macos
