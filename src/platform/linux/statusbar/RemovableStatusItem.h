#pragma once

#include "platform/ui/StatusBar.h"

namespace vantrel::linuxdesktop {

/// A status item of this desktop, of whatever kind.
class RemovableStatusItem : public StatusItem {
  public:
    /// Takes it off the screen for good.
    virtual void remove() = 0;
};

}  // namespace vantrel::linuxdesktop
