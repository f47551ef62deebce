#pragma once

#include <filesystem>
#include <string>

namespace vantrel::linuxdesktop {

/// A folder that is removed with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

std::string contentsOf(const std::filesystem::path& file);
void writeContents(const std::filesystem::path& file, const std::string& contents);

}  // namespace vantrel::linuxdesktop
