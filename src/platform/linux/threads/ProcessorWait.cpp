#include "platform/linux/threads/ProcessorWait.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

ProcessorWait::ProcessorWait(pid_t thread)
    : file_(open(("/proc/self/task/" + std::to_string(thread) + "/schedstat").c_str(), O_RDONLY | O_CLOEXEC)) {}

// The file holds the nanoseconds on a processor, those of waiting for one, and a count.
std::chrono::nanoseconds ProcessorWait::total() const {
    std::array<char, 128> buffer{};
    const ssize_t count = pread(file_.get(), buffer.data(), buffer.size(), 0);
    const std::string_view text(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    const std::size_t space = text.find(' ');
    std::int64_t waited = 0;
    if (space != std::string_view::npos) std::from_chars(text.data() + space + 1, text.data() + text.size(), waited);
    return std::chrono::nanoseconds(waited);
}

}  // namespace vantrel::linuxdesktop
