#pragma once

#include "platform/system/FileManager.h"

namespace vantrel::linuxdesktop {

/// What cannot be asked (a folder without rights, a loop of links) does not exist.
class LinuxFileManager final : public FileManager {
  public:
    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;
};

}  // namespace vantrel::linuxdesktop
