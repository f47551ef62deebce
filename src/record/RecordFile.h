#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>

namespace vantrel {

/// A new file for a recording, which only its owner may read. It holds whole lines at every moment but for the last
/// one.
class RecordFile {
  public:
    /// Empty if there is such a file already, or it cannot be made.
    static std::optional<RecordFile> create(const std::filesystem::path& path);

    /// Adds the line and a line break. False if that fails.
    bool write(std::string_view line);

  private:
    explicit RecordFile(std::ofstream stream) : stream_(std::move(stream)) {}

    std::ofstream stream_;
};

}  // namespace vantrel
