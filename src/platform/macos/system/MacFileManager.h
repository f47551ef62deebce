#pragma once

#include "platform/system/FileManager.h"

namespace vantrel::macos {

class MacFileManager final : public FileManager {
  public:
    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;
};

}  // namespace vantrel::macos
