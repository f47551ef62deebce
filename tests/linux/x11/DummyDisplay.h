#pragma once

#include <sys/types.h>

#include <string>

#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {

/// The tests' own X server, whose displays can really be plugged in and out. It starts with one of 1440 × 900 and ends
/// with this object. Its outputs are named DUMMY0, DUMMY1 and so on.
class DummyDisplay {
  public:
    DummyDisplay();
    ~DummyDisplay();
    DummyDisplay(const DummyDisplay&) = delete;
    DummyDisplay& operator=(const DummyDisplay&) = delete;

    /// The value for DISPLAY. Empty if the server did not start.
    const std::string& name() const { return name_; }

    /// Why it did not start.
    std::string log() const;

  private:
    TemporaryFolder folder_;
    std::string name_;
    pid_t server_ = 0;
};

}  // namespace vantrel::linuxdesktop
