#include "platform/portable/StandardOutputLog.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace vantrel {

void StandardOutputLog::print(std::string_view line) {
    std::string text;
    text.reserve(line.size() + 1);
    text.append(line).push_back('\n');

    const std::lock_guard lock(mutex_);
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t written = write(descriptor_, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            // The process that started the client may have left the stream non-blocking.
            pollfd stream{descriptor_, POLLOUT, 0};
            if (poll(&stream, 1, -1) < 0 && errno != EINTR) return;
        } else if (errno != EINTR) {
            return;
        }
    }
}

}  // namespace vantrel
