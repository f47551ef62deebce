#include "platform/macos/system/MacLog.h"

#include <fcntl.h>
#include <unistd.h>

namespace vantrel::macos {

// On the descriptor, not the signal: an ignored SIGPIPE would be handed down to the browser.
MacLog::MacLog() {
    fcntl(STDOUT_FILENO, F_SETNOSIGPIPE, 1);
}

}  // namespace vantrel::macos
