#pragma once

#include <filesystem>
#include <mutex>

#include "platform/network/JSON.h"
#include "platform/system/UserDefaults.h"

namespace vantrel::linuxdesktop {

/// User defaults as one JSON object in a file of the user's own (mode 0600). Every change is on the disk before set()
/// returns, and never half of it: a temporary file is written, synchronised and renamed over the old one.
///
/// A damaged file (no JSON object, or more than 1 MiB) is renamed in its folder and counts as empty. A file that
/// cannot be read also counts as empty and is never overwritten. If the file cannot be written, the values stay in
/// memory. Each case prints one line on standard error. Values that are not strings count as absent and are kept. Any
/// thread.
class LinuxUserDefaults final : public UserDefaults {
  public:
    LinuxUserDefaults(std::filesystem::path file, const JSONSerialization& json);

    std::optional<std::string> string(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;

    /// `vantrel/defaults.json` in the user's configuration folder.
    static std::filesystem::path standardFile();

  private:
    void load();
    void setAside();
    void save();

    const std::filesystem::path file_;
    const JSONSerialization& json_;
    mutable std::mutex mutex_;
    JSONObject values_;
    bool writable_ = true;
};

}  // namespace vantrel::linuxdesktop
