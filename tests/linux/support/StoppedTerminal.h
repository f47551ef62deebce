#pragma once

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// A terminal that a person has stopped with Ctrl-S. Nobody reads what it shows.
class StoppedTerminal {
  public:
    StoppedTerminal();

    int get() const { return terminal_.get(); }
    /// From now on it shows what is written. As nobody reads, it soon takes some of a line only.
    void goOn() const;

  private:
    FileDescriptor other_;
    FileDescriptor terminal_;
};

}  // namespace vantrel::linuxdesktop
