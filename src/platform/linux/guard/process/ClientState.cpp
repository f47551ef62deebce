#include "platform/linux/guard/process/ClientState.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

// For the process as a whole the kernel would add up all threads at each look.
ClientState::ClientState(pid_t client)
    : file_(open(("/proc/" + std::to_string(client) + "/task/" + std::to_string(client) + "/stat").c_str(),
                 O_RDONLY | O_CLOEXEC)) {}

// The state follows the name, which is in brackets and may itself contain some.
bool ClientState::isStopped() const {
    std::array<char, 256> bytes;
    const ssize_t count = pread(file_.get(), bytes.data(), bytes.size(), 0);
    if (count <= 0) return false;
    const std::string_view text(bytes.data(), static_cast<std::size_t>(count));
    const std::size_t bracket = text.rfind(')');
    return bracket != std::string_view::npos && text.substr(bracket).starts_with(") T");
}

}  // namespace vantrel::linuxdesktop
