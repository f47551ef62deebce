#pragma once

#include <functional>
#include <mutex>
#include <set>
#include <string>

#include "platform/FileManager.h"
#include "platform/virtual/Engine.h"

namespace vantrel::virtualmac {

/// A set of paths that exist.
class VirtualFiles final : public FileManager {
  public:
    explicit VirtualFiles(Engine& engine) : engine_(engine) {}

    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;

    /// Driver-facing, any thread. The folders above the path exist with it.
    void add(const std::string& path);
    /// With everything below it.
    void remove(const std::string& path);
    void setHomeDirectory(std::string path);

  private:
    Engine& engine_;
    mutable std::mutex mutex_;
    std::set<std::string, std::less<>> paths_{"/", "/Users", "/Users/partecipante", "/Applications"};
    std::string home_ = "/Users/partecipante";
};

}  // namespace vantrel::virtualmac
