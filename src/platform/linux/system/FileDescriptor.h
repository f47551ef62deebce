#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vantrel::linuxdesktop {

/// Owns an open file. Negative values mean none.
class FileDescriptor {
  public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

    /// Zero, or the errno value of the failure. The file is closed in any case.
    int close() {
        if (descriptor_ < 0) return 0;
        return ::close(std::exchange(descriptor_, -1)) == 0 ? 0 : errno;
    }

  private:
    int descriptor_;
};

}  // namespace vantrel::linuxdesktop
