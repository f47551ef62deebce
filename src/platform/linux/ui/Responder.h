#pragma once

#include <string>

#include "platform/threads/Block.h"

namespace vantrel::linuxdesktop {

/// Handles menu items that name no target: editing goes to the focused field, termination to the application. Main
/// thread.
class Responder {
  public:
    void setTerminate(Block terminate);
    void perform(const std::string& action) const;

  private:
    Block terminate_;
};

}  // namespace vantrel::linuxdesktop
