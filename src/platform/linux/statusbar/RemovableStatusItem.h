#pragma once

#include "platform/ui/StatusBar.h"

namespace vantrel::linuxdesktop {

/// Any kind of status item on this desktop.
class RemovableStatusItem : public StatusItem {
  public:
    /// Takes it off the screen for good.
    virtual void remove() = 0;
};

}  // namespace vantrel::linuxdesktop
