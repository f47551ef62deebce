#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vantrel::linuxdesktop {

/// Stands in for the desktop's opener of addresses, xdg-open, while it lives: the first one on PATH, which writes down
/// what it is asked to open.
class AddressOpener {
  public:
    /// Its files are in a folder of its own there.
    explicit AddressOpener(const std::filesystem::path& parent);
    ~AddressOpener();
    AddressOpener(const AddressOpener&) = delete;
    AddressOpener& operator=(const AddressOpener&) = delete;

    /// From now on there is no opener at all.
    void haveNone();

    /// In order.
    std::vector<std::string> opened() const;

  private:
    const std::filesystem::path folder_;
    const std::string before_;
};

}  // namespace vantrel::linuxdesktop
