#pragma once

#include "platform/system/FileManager.h"

namespace vantrel::linuxdesktop {

/// A path that cannot be checked (a folder without rights, a loop of links) counts as missing. A browser that the
/// system has installed exists where macOS has it; see installedBrowser().
class LinuxFileManager final : public FileManager {
  public:
    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;
};

}  // namespace vantrel::linuxdesktop
