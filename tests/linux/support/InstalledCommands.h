#pragma once

#include <filesystem>
#include <string>

namespace vantrel::linuxdesktop {

/// A folder of commands that comes first on PATH, and an empty home folder. PATH and HOME are put back with the object.
class InstalledCommands {
  public:
    explicit InstalledCommands(const std::filesystem::path& parent);
    ~InstalledCommands();
    InstalledCommands(const InstalledCommands&) = delete;
    InstalledCommands& operator=(const InstalledCommands&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    const std::filesystem::path& home() const { return home_; }

    /// Makes the PATH as it stands.
    static void search(const std::string& path);

    /// A shell script with these lines. Its path.
    std::string install(const std::string& command, const std::string& lines = "exit 0\n") const;

  private:
    const std::filesystem::path folder_;
    const std::filesystem::path home_;
    const std::string pathBefore_;
    const std::string homeBefore_;
};

}  // namespace vantrel::linuxdesktop
