#pragma once

#include "platform/portable/StandardOutputLog.h"

namespace vantrel::macos {

/// Lines on standard output. If the reader is gone, the lines are lost and nothing else happens.
class MacLog final : public Log {
  public:
    MacLog();

    void print(std::string_view line) override { log_.print(line); }

  private:
    StandardOutputLog log_;
};

}  // namespace vantrel::macos
