#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system/FileManager.h"

namespace vantrel::virtualmac {

/// What is at a path. A broken link counts as missing.
enum class FileKind { folder, file, executable, brokenLink };

/// A tree of paths.
class VirtualFileManager final : public FileManager {
  public:
    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;

    /// Driver-facing, any thread. Adds the folders above the path too. If something is there already, it changes only
    /// if a kind is given.
    void add(const std::string& path);
    void add(const std::string& path, FileKind kind);
    /// Empty if nothing is there.
    std::optional<FileKind> kind(std::string_view path) const;
    /// With everything below it.
    void remove(const std::string& path);
    void setHomeDirectory(std::string path);

  private:
    mutable std::mutex mutex_;
    std::map<std::string, FileKind, std::less<>> paths_{{"/", FileKind::folder},
                                                        {"/Users", FileKind::folder},
                                                        {"/Users/partecipante", FileKind::folder},
                                                        {"/Applications", FileKind::folder}};
    std::string home_ = "/Users/partecipante";
};

}  // namespace vantrel::virtualmac
