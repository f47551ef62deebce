#pragma once

#include "platform/portable/StandardOutputLog.h"

namespace vantrel::macos {

/// Lines on standard output. A reader that has gone away loses the lines and nothing else.
class MacLog final : public Log {
  public:
    MacLog();

    void print(std::string_view line) override { log_.print(line); }

  private:
    StandardOutputLog log_;
};

}  // namespace vantrel::macos
