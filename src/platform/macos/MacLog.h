#pragma once

#include <mutex>

#include "platform/Log.h"

namespace vantrel::macos {

/// Lines on standard output. A reader that has gone away loses the lines and nothing else.
class MacLog final : public Log {
  public:
    MacLog();

    void print(std::string_view line) override;

  private:
    std::mutex mutex_;
};

}  // namespace vantrel::macos
