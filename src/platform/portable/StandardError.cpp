#include "platform/portable/StandardError.h"

#include <poll.h>
#include <unistd.h>

namespace vantrel {

void sayOnStandardError(std::string_view line) {
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    if (poll(&errors, 1, 0) <= 0) return;
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}

}  // namespace vantrel
