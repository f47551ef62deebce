#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// NSFileManager and NSHomeDirectory. Any thread. Paths are UTF-8.
class FileManager {
  public:
    virtual ~FileManager() = default;

    /// fileExistsAtPath:. True for a directory. Follows links, so false for a broken one.
    virtual bool fileExists(std::string_view path) const = 0;

    /// The user's home directory, without a trailing slash.
    virtual std::string homeDirectory() const = 0;
};

}  // namespace vantrel
