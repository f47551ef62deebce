#include "platform/linux/system/SmallFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr off_t largestFile = off_t{1} << 20;

int writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return fsync(descriptor) == 0 ? 0 : errno;
}

// The rename itself must reach the disk too. If the file system does not support this, nothing more can be done.
void synchroniseFolder(const std::filesystem::path& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) fsync(descriptor.get());
}

int makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) return 0;
    if (folder.has_parent_path() && folder.parent_path() != folder) {
        if (const int failure = makeFolder(folder.parent_path()); failure != 0) return failure;
    }
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? 0 : errno;
}

}  // namespace

int readSmallFile(const std::filesystem::path& file, std::string& bytes) {
    bytes.clear();
    const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen()) return errno;
    struct stat status {};
    if (fstat(descriptor.get(), &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = read(descriptor.get(), buffer.data(), buffer.size());
        if (count == 0) return 0;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (static_cast<off_t>(bytes.size()) > largestFile) return EFBIG;
    }
}

int replaceSmallFile(const std::filesystem::path& file, std::string_view bytes) {
    std::error_code ignored;
    const std::filesystem::path resolved = std::filesystem::canonical(file, ignored);
    const std::filesystem::path target = resolved.empty() ? file : resolved;
    if (const int error = makeFolder(target.parent_path()); error != 0) return error;

    // mkostemp creates the file for the user alone.
    std::string temporary = target.string() + ".XXXXXX";
    FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen()) return errno;
    int error = writeAll(descriptor.get(), bytes);
    if (const int closing = descriptor.close(); error == 0) error = closing;
    if (error == 0 && rename(temporary.c_str(), target.c_str()) != 0) error = errno;
    if (error != 0) {
        unlink(temporary.c_str());
        return error;
    }
    synchroniseFolder(target.parent_path());
    return 0;
}

}  // namespace vantrel::linuxdesktop
