#include "platform/linux/system/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace vantrel::linuxdesktop {

void openMissingStandardStreams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        // All lower ones are open, so this is the lowest free number.
        if (open("/dev/null", O_RDWR) != descriptor) return;
    }
}

}  // namespace vantrel::linuxdesktop
