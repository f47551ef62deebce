#include "platform/linux/apps/ProcFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

std::string readProcFile(const std::string& path) {
    constexpr std::size_t longest = std::size_t{4} << 20;
    std::string text;
    const FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 16384> buffer;
    while (descriptor.isOpen() && text.size() < longest) {
        const ssize_t count = read(descriptor.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

}  // namespace vantrel::linuxdesktop
