#pragma once

#include <memory>

#include "platform/Computer.h"

namespace vantrel::macos {

/// The Mac that the process runs on. Created and destroyed on the main thread, one at a time in a process. It creates
/// the application object.
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
