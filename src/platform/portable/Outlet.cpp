#include "platform/portable/Outlet.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace vantrel {

namespace {

using Name = std::array<char, PATH_MAX>;

bool nameOf(int descriptor, Name& name) {
    if (isatty(descriptor) == 1) return ttyname_r(descriptor, name.data(), name.size()) == 0;
// Linux has names for pipes.
#ifdef F_GETPIPE_SZ
    constexpr std::string_view folder = "/proc/self/fd/";
    if (fcntl(descriptor, F_GETPIPE_SZ) <= 0) return false;
    std::copy(folder.begin(), folder.end(), name.begin());
    const auto [end, error] = std::to_chars(name.data() + folder.size(), name.data() + name.size() - 1, descriptor);
    return error == std::errc();
#else
    return false;
#endif
}

}  // namespace

Outlet::Outlet(int descriptor) : descriptor_(descriptor) {
    Name name{};
    if (nameOf(descriptor, name)) own_ = open(name.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

Outlet::~Outlet() {
    if (own_ >= 0) close(own_);
}

bool Outlet::takesAPiece() const {
    pollfd state{get(), POLLOUT, 0};
    return poll(&state, 1, 0) > 0;
}

// A pipe that takes anything takes PIPE_BUF bytes without waiting, unless somebody else has written there meanwhile.
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
