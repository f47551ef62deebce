#include "platform/portable/Outlet.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>

namespace vantrel {

Outlet::Outlet(int descriptor) : descriptor_(descriptor) {
    std::array<char, PATH_MAX> name{};
    if (isatty(descriptor) != 1 || ttyname_r(descriptor, name.data(), name.size()) != 0) return;
    terminal_ = open(name.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

Outlet::~Outlet() {
    if (terminal_ >= 0) close(terminal_);
}

bool Outlet::takesAPiece() const {
    pollfd state{get(), POLLOUT, 0};
    return poll(&state, 1, 0) > 0;
}

// A pipe that takes anything takes PIPE_BUF bytes without waiting.
Outlet::Taken Outlet::write(std::string_view& rest) const {
    while (!rest.empty()) {
        if (!takesAPiece()) return Taken::aPart;
        const ssize_t written = ::write(get(), rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            return Taken::aPart;
        } else if (errno != EINTR) {
            return Taken::nothingAnyMore;
        }
    }
    return Taken::everything;
}

}  // namespace vantrel
