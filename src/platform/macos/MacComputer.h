#pragma once

#include <memory>

#include "platform/Computer.h"

namespace vantrel::macos {

/// The Mac that the process runs on. Made and destroyed on the main thread, one at a time in a process; the application
/// object is made with it.
class MacComputer {
  public:
    MacComputer();
    ~MacComputer();
    MacComputer(const MacComputer&) = delete;
    MacComputer& operator=(const MacComputer&) = delete;

    Computer computer();

  private:
    struct Parts;

    const std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::macos
